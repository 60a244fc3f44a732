// The words of the current request syntax other than value types, each
// closed set one table: request options, filter operators, negation,
// interface directions, accumulation modes, column options, sort words and
// the words of a "vl" request. Readers, writers and the vocabulary look
// words up here. The tables are constexpr in this header so that the
// readers' lookups compile to a few inlined comparisons. Internal: not
// installed.
#ifndef LYTFILTERPARSER_VOCAB_SYNTAX_H
#define LYTFILTERPARSER_VOCAB_SYNTAX_H

#include <cstddef>
#include <string_view>

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

// The code of `text` in `words` (exact match), or nullptr.
template <class Code>
constexpr const Code* codeOf(Rows<Word<Code>> words, std::string_view text) {
  for (const Word<Code>& word : words) {
    if (sameWord(text, word.text)) return &word.code;
  }
  return nullptr;
}

// The first word of `code` in `words`, or an empty view.
template <class Code>
constexpr std::string_view wordOf(Rows<Word<Code>> words, Code code) {
  for (const Word<Code>& word : words) {
    if (word.code == code) return word.text;
  }
  return std::string_view();
}

// What joins an entity's name and its resolved name in one token.
inline constexpr std::string_view kEntitySeparator = "<>";

// The option words that start each part of a request: "-" and the code.
enum RequestOption : char { OPTION_FILTER = 'f', OPTION_KEY = 'k', OPTION_VALUE = 'v', OPTION_SORT = 's' };
inline constexpr Word<RequestOption> kRequestOptions[] = {
    {"-f", OPTION_FILTER, "filter: an atom (TYPE [not] NAME...) or OPERATOR [ -f ... ]"},
    {"-k", OPTION_KEY, "key column: TYPE [NAME...] [options]"},
    {"-v", OPTION_VALUE, "value column: TYPE [acc=MODE] [options] [sort=top|bottom]"},
    {"-s", OPTION_SORT, "sort: top, bottom or none, then index=N, updates=N"},
};
constexpr std::string_view optionWord(RequestOption option) { return wordOf<RequestOption>(kRequestOptions, option); }
// Whether `token` is exactly the word of `option`.
constexpr bool isOption(std::string_view token, RequestOption option) {
  return token.size() == 2 && token[0] == '-' && token[1] == option;
}

inline constexpr Word<FilterOperator> kFilterOperators[] = {
    {"and", FILTER_AND, "every child filter matches"},
    {"or", FILTER_OR, "some child filter matches"},
    {"AND", FILTER_AND, "as and"},
    {"OR", FILTER_OR, "as or"},
};
constexpr bool isOperatorWord(std::string_view token) {
  return codeOf<FilterOperator>(kFilterOperators, token) != nullptr;
}

// The words that negate an atom filter; the first is written.
inline constexpr Word<bool> kNegationWords[] = {
    {"not", true, "negates the atom filter it follows"},
    {"NOT", true, "as not"},
};
constexpr bool isNegation(std::string_view token) { return codeOf<bool>(kNegationWords, token) != nullptr; }

// "both" is also a value of the yes/no column options.
inline constexpr std::string_view kBoth = "both";

// The directions of an interface item ("eth0,in") and of the "dir=" column
// option, in the column option's order of search.
inline constexpr Word<int> kDirections[] = {
    {"out", TAV_DIR_OUT, "outbound traffic"},
    {"in", TAV_DIR_IN, "inbound traffic"},
    {kBoth, TAV_DIR_BOTH, "both directions (no restriction)"},
};
// What separates an interface name from its direction.
inline constexpr char kDirectionSeparator = ',';
// An interface item's direction from the text after the separator: a
// word's first letter in either case; anything else is both.
constexpr TavFilterDirType itemDirection(std::string_view suffix) {
  const char first = suffix.empty() ? '\0' : suffix[0];
  const char lower = first >= 'A' && first <= 'Z' ? static_cast<char>(first - 'A' + 'a') : first;
  for (const Word<int>& word : kDirections) {
    if (word.code != TAV_DIR_BOTH && lower == word.text[0]) return static_cast<TavFilterDirType>(word.code);
  }
  return TAV_DIR_BOTH;
}

// "acc=..." words in the reader's order; "acc" anywhere in a column's token
// marks an accumulation mode.
inline constexpr Word<TavAccType> kAccumulationModes[] = {
    {"acc=replace", TAV_ACC_REPLACE, "the latest value (key columns)"},
    {"acc=rate", TAV_ACC_RATE, "per second"},
    {"acc=new", TAV_ACC_NEW, "new in the interval"},
    {"acc=sum", TAV_ACC_SUM, "total"},
    {"acc=concurrent", TAV_ACC_CONCURRENT, "concurrent at the moment"},
    {"acc=min", TAV_ACC_MIN, "minimum"},
    {"acc=max", TAV_ACC_MAX, "maximum"},
    {"acc=lineUtil", TAV_ACC_LINEUTIL, "line utilisation"},
};
inline constexpr std::string_view kAccumulationName = kAccumulationModes[0].text.substr(0, 3);
// The written word of `acc` (the second concurrent kind is written as the
// first); empty for a code that has none.
constexpr std::string_view accumulationWord(TavAccType acc) {
  return wordOf<TavAccType>(kAccumulationModes, acc == TAV_ACC_CONCURRENT2 ? TAV_ACC_CONCURRENT : acc);
}

inline constexpr Word<int> kYesNo[] = {
    {"no", 0, "only traffic without it"},
    {"yes", 1, "only traffic with it"},
    {kBoth, 2, "all traffic (no restriction)"},
};

inline constexpr Word<int> kUrlModes[] = {
    {"full", 0, "the whole URL"}, {"host_path", 4, "host and path"}, {"scheme_host", 5, "scheme and host"},
    {"host", 1, "the host"},      {"path", 2, "the path"},           {"scheme", 3, "the scheme"},
};

// One column option: its name (ending in "="), where the search for its
// value starts, the value words tried in order (containment, so longer
// words that contain shorter ones come first), the code that restricts
// nothing (not written) and the refusal when no value is found. The order
// of the options is the order of precedence when a token contains several
// names.
struct ColumnOption {
  std::string_view name;
  std::size_t valueFrom;
  Rows<Word<int>> values;
  int unrestricted;
  const char* message;
  std::string_view meaning;
};
enum { COLUMN_DIR, COLUMN_ENC, COLUMN_COMP, COLUMN_CPRINT, COLUMN_URL, COLUMN_OPTION_COUNT };
inline constexpr ColumnOption kColumnOptions[COLUMN_OPTION_COUNT] = {
    {"dir=", 4, kDirections, TAV_DIR_BOTH, "Unexpected type of direction", "direction"},
    {"enc=", 4, kYesNo, 2, "Unexpected type of encryption mode", "encrypted traffic"},
    {"comp=", 5, kYesNo, 2, "Unexpected type of compresstion mode", "compressed traffic"},
    {"cprint=", 7, kYesNo, 2, "Unexpected type of citrix-print mode", "citrix print traffic"},
    {"url_mod=", 8, kUrlModes, 0, "Unexpected type of url mode", "the part of a URL that counts"},
};

// "-s" sort types, then the words that may follow them.
inline constexpr Word<TavSortType> kSortTypes[] = {
    {"top", TAV_SORT_TOP, "largest first"},
    {"bottom", TAV_SORT_BOTTOM, "smallest first"},
    {"none", TAV_SORT_NONE, "unsorted"},
};
constexpr std::string_view sortTypeWord(TavSortType type) { return wordOf<TavSortType>(kSortTypes, type); }
// "sort=" and a sort type, inside a value column; "sort" anywhere marks it.
inline constexpr std::string_view kSortColumnPrefix = "sort=";
inline constexpr std::string_view kSortColumnName = kSortColumnPrefix.substr(0, kSortColumnPrefix.size() - 1);
enum SortOption { SORT_INDEX, SORT_UPDATES };
inline constexpr Word<SortOption> kSortOptions[] = {
    {"index=", SORT_INDEX, "the value column to sort by, from 1"},
    {"updates=", SORT_UPDATES, "how many updates the view sends (default 50, at most 200)"},
};

// The end-to-end request: its leading word, the data-type option and the
// data types, read by their first letter.
inline constexpr std::string_view kVirtualLinkWord = "vl";
inline constexpr std::string_view kDataTypeOption = "-t";
inline constexpr Word<tLytpE2eDataType> kDataTypes[] = {
    {"wire", E2E_DATA_WIRE, "counters as seen on the wire"},
    {"application", E2E_DATA_APPLICATION, "counters as seen by the application"},
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
