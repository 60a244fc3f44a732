// Where each item of a request stands in its text. The readers build objects
// and forget the text; an outline walks the same text by the same grammar
// (request/Reader.cpp) and keeps, for every item the reader makes, the bytes
// it was read from, in the order the reader makes them. An item of the
// request object is found in its outline by that order: the n-th key column,
// the n-th filter node in pre-order. matches() checks that an outline and a
// request agree before anything relies on it. Internal: not installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_OUTLINE_H
#define LYTFILTERPARSER_DIAGNOSTICS_OUTLINE_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "lytFilterParser/diagnostics/DiagnosticTable.h"

class NetworkKovaRequest;

namespace lytFilterParser {
namespace detail {

// What a word after a column's type, an atom's type or a sort type is.
enum class Part : unsigned char {
  Name,          // an entity or an interface item (a "]" kept by a column included)
  Accumulation,  // a word containing "acc"
  SortWord,      // a word containing "sort" in a column
  ColumnOption,  // another word containing "="
  Index,         // "index=" after a sort type
  Updates        // "updates=" after a sort type
};

struct OutlineWord {
  Span span;
  Part part;
  unsigned char option = 0;  // a column option word's option, an index of kColumnOptions
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
  std::uint32_t end = 0;  // the index after its last descendant
};

// A "-f" option of the request itself; the options after the first add to the root.
struct FilterOption {
  Span option;  // the "-f"
  Span op;      // its operator word; length 0 for an atom list, which is an implied "and"
  Span whole;   // up to the last word it read
};

struct ColumnOutline {
  Span option;  // "-k" or "-v"
  Span type;
  Span whole;
  std::uint32_t firstWord = 0;  // its words: words[firstWord, firstWord + wordCount)
  std::uint32_t wordCount = 0;
};

// A word that sets the request's sort: a "-s" option, or "sort=top" or
// "sort=bottom" in a value column.
struct SortSetting {
  Span option;  // "-s", or the column's sort word
  Span type;    // the sort type word, or the column's sort word
  int column = -1;              // the value column of a sort word, -1 for "-s"
  std::uint32_t firstWord = 0;  // the "index=" and "updates=" words after "-s"
  std::uint32_t wordCount = 0;
};

// A "-t" word of a "vl" request and the data-type word after it.
struct DataTypeOption {
  Span option;
  Span type;
};

class Outline {
 public:
  // Walks `text`; false exactly when the reader refuses it (the outline is
  // then incomplete). An empty text gives an empty outline. The text must
  // outlive the outline's use of it.
  bool read(std::string_view text);
  // Whether `request` is what the reader made of the text: the same filter
  // tree shape, columns and name counts.
  bool matches(const NetworkKovaRequest& request) const;

  std::string_view text;
  bool virtualLink = false;
  std::vector<FilterNode> nodes;
  std::vector<FilterOption> filterOptions;
  std::vector<ColumnOutline> keys;
  std::vector<ColumnOutline> values;
  std::vector<SortSetting> sorts;
  std::vector<OutlineWord> words;
  Span vlName;
  std::vector<DataTypeOption> dataTypes;

  std::string_view textOf(Span span) const { return text.substr(span.start, span.length); }
  // The first child of compound node `node` is node + 1; the next sibling of `child` is nodes[child].end.
  std::uint32_t nextSibling(std::uint32_t child) const { return nodes[child].end; }
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
