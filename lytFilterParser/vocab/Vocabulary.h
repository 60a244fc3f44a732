// Every word of the request syntax, read-only, with what it is and which
// peers take it: for tools that list, complete, explain or suggest words.
// The readers and writers use the same tables, so this list is the syntax.
#ifndef LYTFILTERPARSER_VOCAB_VOCABULARY_H
#define LYTFILTERPARSER_VOCAB_VOCABULARY_H

#include <string_view>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"

namespace lytFilterParser {

// What part of the syntax a word belongs to, in the order of the list.
enum class WordKind : int {
  Option,              // "-f", "-k", "-v", "-s"
  ValueType,           // "src", "wb" ...
  FilterOperator,      // "and", "or" ...
  Negation,            // "not", "NOT"
  Bracket,             // "[", "]"
  InterfaceDirection,  // ",in", ",out" behind an interface name
  AccumulationMode,    // "acc=rate" ...
  ColumnOption,        // "dir=in", "url_mod=host" ...
  SortInColumn,        // "sort=top", "sort=bottom" in a value column
  SortType,            // "top", "bottom", "none" after "-s"
  SortOption,          // "index=", "updates=" after the sort type, each followed by a number
  VirtualLink,         // "vl", "-t", "wire", "application"
  LegacyOption,        // "-g", "-y", "-a", "-filter"
  LegacyGroup,         // "topsrc" ... after "-g"
  LegacyValue,         // "b", "C", "c", "p", "l" after "-y"
  LegacyAggregate      // "i", "a" after "-a"
};

// Where a value type may stand (bits of Word::places).
enum WordPlace : unsigned { PLACE_FILTER = 1u << 0, PLACE_KEY = 1u << 1, PLACE_VALUE = 1u << 2 };

struct Word {
  std::string_view text;  // as it stands in a request
  WordKind kind;
  int code;                  // the enumerator it stands for (TavValType, TavAccType ...), -1 for none;
                             // for a legacy option, the WordKind of the words it takes
  std::string_view meaning;  // one line for people
  unsigned peers;            // bit v set when a peer of version v (1..3) takes it
  unsigned places;           // value types: the WordPlace bits of where validation takes it; options: the
                             // place of the value type that follows ("-s" takes none: 0); 0 for other words
  bool readable;             // the readers take it ("-filter" and two legacy letters are only written)
  bool written;              // the writers write it ("telNumber", "AND", "NOT", "sort=top" ... are only read)

  bool takenBy(TavVersion peer) const {
    return peer >= 1 && peer <= 3 && (peers & (1u << static_cast<unsigned>(peer))) != 0;
  }
};

// Every word, grouped by kind in the order of WordKind, those only read and
// those only written included. Built on the first call.
LFP_API const std::vector<Word>& vocabulary();

// A short name of `kind` for people ("value type", "legacy option" ...).
LFP_API std::string_view wordKindName(WordKind kind);

// The words exactly equal to `text`, in list order (several kinds share
// some words, "src" is a value type and a legacy group).
LFP_API std::vector<const Word*> findWords(std::string_view text);

}  // namespace lytFilterParser

#endif
