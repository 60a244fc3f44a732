// The words of the current request syntax other than value types, each
// closed set one table: request options, filter operators, negation,
// interface directions, accumulation modes, column options, sort words and
// the words of a "vl" request. Readers, writers and the vocabulary look
// words up here. Internal: not installed.
#ifndef LYTFILTERPARSER_VOCAB_SYNTAX_H
#define LYTFILTERPARSER_VOCAB_SYNTAX_H

#include <cstddef>
#include <string_view>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/detail/Rows.h"
#include "lytFilterParser/vocab/Codes.h"

namespace lytFilterParser {
namespace detail {

// A word and the code it stands for. Where several words stand for one
// code, the first of them is the one written.
template <class Code>
struct Word {
  std::string_view text;
  Code code;
  std::string_view meaning;
};

// Returns the code of `text` in `words` (exact match), or nullptr.
template <class Code>
const Code* codeOf(Rows<Word<Code>> words, std::string_view text) {
  for (const Word<Code>& word : words) {
    if (word.text == text) return &word.code;
  }
  return nullptr;
}

// Returns the first word of `code` in `words`, or an empty view.
template <class Code>
std::string_view wordOf(Rows<Word<Code>> words, Code code) {
  for (const Word<Code>& word : words) {
    if (word.code == code) return word.text;
  }
  return std::string_view();
}

// What joins an entity's name and its resolved name in one token.
constexpr std::string_view kEntitySeparator = "<>";

// The option words that start each part of a request.
enum RequestOption : char { OPTION_FILTER = 'f', OPTION_KEY = 'k', OPTION_VALUE = 'v', OPTION_SORT = 's' };
LFP_HIDDEN Rows<Word<RequestOption>> requestOptions();
LFP_HIDDEN std::string_view optionWord(RequestOption option);
// Whether `token` is exactly the option word of `option`.
LFP_HIDDEN bool isOption(std::string_view token, RequestOption option);

LFP_HIDDEN Rows<Word<FilterOperator>> filterOperators();
// Whether `token` is an operator word of a compound filter.
LFP_HIDDEN bool isOperatorWord(std::string_view token);

// The words that negate an atom filter; the first is written.
LFP_HIDDEN Rows<Word<bool>> negationWords();
LFP_HIDDEN bool isNegation(std::string_view token);

// The directions of an interface item ("eth0,in") and of the "dir=" column
// option, in the column option's order of search.
LFP_HIDDEN Rows<Word<int>> directionWords();
// What separates an interface name from its direction.
constexpr char kDirectionSeparator = ',';
// An interface item's direction from the text after the separator: a word's
// first letter in either case; anything else is both.
LFP_HIDDEN TavFilterDirType itemDirection(std::string_view suffix);

// "acc=..." words in the reader's order; "acc" anywhere in a column's token
// marks an accumulation mode.
LFP_HIDDEN Rows<Word<TavAccType>> accumulationModes();
LFP_HIDDEN std::string_view accumulationName();
// The written word of `acc` (the second concurrent kind is written as the
// first); empty for a code that has none.
LFP_HIDDEN std::string_view accumulationWord(TavAccType acc);

// One column option: its name (ending in "="), where the search for its
// value starts, the value words tried in order (containment, so longer
// words that contain shorter ones come first) and the refusal when none is
// found. The order of the options is the order of precedence when a token
// contains several names.
struct ColumnOption {
  std::string_view name;
  std::size_t valueFrom;
  Rows<Word<int>> values;
  int unrestricted;  // the code that restricts nothing, which is not written
  const char* message;
  std::string_view meaning;
};
enum { COLUMN_DIR, COLUMN_ENC, COLUMN_COMP, COLUMN_CPRINT, COLUMN_URL, COLUMN_OPTION_COUNT };
LFP_HIDDEN Rows<ColumnOption> columnOptions();
// The written word of `code` among an option's values; empty when none.
LFP_HIDDEN std::string_view columnOptionWord(int option, int code);

// "-s" sort types, then the words that may follow them.
LFP_HIDDEN Rows<Word<TavSortType>> sortTypes();
LFP_HIDDEN std::string_view sortTypeWord(TavSortType type);
// "sort=" + a sort type, inside a value column; "sort" anywhere marks it.
LFP_HIDDEN std::string_view sortColumnPrefix();
LFP_HIDDEN std::string_view sortColumnName();
enum SortOption { SORT_INDEX, SORT_UPDATES };
LFP_HIDDEN Rows<Word<SortOption>> sortOptions();

// The end-to-end request: its leading word, the data-type option and the
// data types, read by their first letter.
LFP_HIDDEN std::string_view virtualLinkWord();
LFP_HIDDEN std::string_view dataTypeOption();
LFP_HIDDEN Rows<Word<tLytpE2eDataType>> dataTypes();

}  // namespace detail
}  // namespace lytFilterParser

#endif
