// What the reader records when asked (Reader::record): every item it builds,
// with the bytes of the text it read it from, in the order it builds them,
// and where it stopped at a fault. An item of the request object is found by
// that order: the n-th key column, the n-th filter node in pre-order. The
// entry points read without a record and pay nothing for it. Internal: not
// installed; the diagnostics read it.
#ifndef LYTFILTERPARSER_REQUEST_RECORD_H
#define LYTFILTERPARSER_REQUEST_RECORD_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/detail/SmallVector.h"
#include "lytFilterParser/vocab/Vocabulary.h"

class LYTKovaRequest;

namespace lytFilterParser {
namespace detail {

// Kinds of word, a bit for each WordKind.
typedef std::uint32_t WordKinds;
constexpr WordKinds kindBit(WordKind kind) { return WordKinds{1} << static_cast<unsigned>(kind); }

// What a word after a column's type, an atom's type or a sort type is.
enum class Part : unsigned char {
  Name,          // an entity or an interface item (a "]" kept by a column included)
  Accumulation,  // a word containing "acc"
  SortWord,      // a word containing "sort" in a column
  ColumnOption,  // another word containing "="
  Index,         // "index=" after a sort type
  Updates        // "updates=" after a sort type
};

struct RecordWord {
  Span span;
  Part part;
  unsigned char option = 0;  // a column option word's option, an index of kColumnOptions
  unsigned char value = 0;   // and the index of the value the reader found in it
};

// A node of the filter tree, in pre-order; node 0 is the request's root.
struct FilterNode {
  Span whole;     // from its "-f" to its last word
  Span head;      // a compound's operator word, an atom's type word; the root: the last operator read for it
  Span negation;  // length 0 when not negated
  bool compound = false;
  bool interface = false;
  std::uint32_t firstWord = 0;  // an atom's names: words[firstWord, firstWord + wordCount)
  std::uint32_t wordCount = 0;
  std::uint32_t childCount = 0;
  // The index after its last descendant: a compound's first child is the
  // node after it, and the next sibling of a child is its `end`.
  std::uint32_t end = 0;
};

// A "-f" option of the request itself; the options after the first add to the root.
struct FilterOption {
  Span option;  // the "-f"
  Span op;      // its operator word; length 0 for an atom list, which is an implied "and"
  Span whole;   // up to the last word it read
};

struct RecordColumn {
  Span option;  // "-k" or "-v"
  Span type;
  Span whole;
  std::uint32_t firstWord = 0;  // its words: words[firstWord, firstWord + wordCount)
  std::uint32_t wordCount = 0;
};

// A word that sets the request's sort: a "-s" option, or "sort=top" or
// "sort=bottom" in a value column.
struct SortSetting {
  Span option;                  // "-s", or the column's sort word
  Span type;                    // the sort type word, or the column's sort word
  int column = -1;              // the value column of a sort word, -1 for "-s"
  std::uint32_t firstWord = 0;  // the "index=" and "updates=" words after "-s"
  std::uint32_t wordCount = 0;
};

// A "-t" word of a "vl" request and the data-type word after it.
struct DataTypeOption {
  Span option;
  Span type;
};

// The lists hold an ordinary request's items in place (SmallVector).
typedef SmallVector<RecordColumn, 4> RecordColumns;

struct Record {
  std::string_view text;
  bool virtualLink = false;
  SmallVector<FilterNode, 8> nodes;
  SmallVector<FilterOption, 2> filterOptions;
  RecordColumns keys;
  RecordColumns values;
  SmallVector<SortSetting, 2> sorts;
  SmallVector<RecordWord, 16> words;
  Span vlName;
  SmallVector<DataTypeOption, 2> dataTypes;
  WordKinds expected = 0;  // at a fault: the kinds of word the reader would have taken there

  // The reader's spans lie inside the text.
  std::string_view textOf(Span span) const { return std::string_view(text.data() + span.start, span.length); }
};

// A text read as the entry points read it, with what the reader recorded.
struct Reading {
  std::unique_ptr<LYTKovaRequest> request;  // null for a refused or an empty text, or when not kept
  std::string fault;                        // the reader's message; empty when it has none
  Span at;                                  // where the reader stopped on a fault
  Record record;                            // complete when the text is accepted
  bool accepted = false;                    // the reader took a text of at least one word
};

// What readText keeps: the request, the request and its record, or the
// record alone. The reader refuses the same texts in each, but for the
// record alone it builds no request (lint looks at the record only).
enum class Keep : unsigned char { Request, RequestAndRecord, Record };

// Reads `text` as getLYTKovaRequest does when `virtualLinks` ("vl" first: an
// end-to-end request), otherwise as convert reads it for the current peer.
// The message is the entry points' own.
Reading readText(std::string_view text, bool virtualLinks, Keep keep = Keep::Request);

}  // namespace detail
}  // namespace lytFilterParser

#endif
