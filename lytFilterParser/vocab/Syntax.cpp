#include "lytFilterParser/vocab/Syntax.h"

namespace lytFilterParser {
namespace detail {
namespace {

constexpr Word<RequestOption> kRequestOptions[] = {
    {"-f", OPTION_FILTER, "filter: an atom (TYPE [not] NAME...) or OPERATOR [ -f ... ]"},
    {"-k", OPTION_KEY, "key column: TYPE [NAME...] [options]"},
    {"-v", OPTION_VALUE, "value column: TYPE [acc=MODE] [options] [sort=top|bottom]"},
    {"-s", OPTION_SORT, "sort: top, bottom or none, then index=N, updates=N"},
};

constexpr bool optionWordsAreDashAndCode() {
  for (const Word<RequestOption>& word : kRequestOptions) {
    if (word.text.size() != 2 || word.text[0] != '-' || word.text[1] != word.code) return false;
  }
  return true;
}
static_assert(optionWordsAreDashAndCode(), "isOption tests a token against the option's code");

constexpr Word<FilterOperator> kFilterOperators[] = {
    {"and", FILTER_AND, "every child filter matches"},
    {"or", FILTER_OR, "some child filter matches"},
    {"AND", FILTER_AND, "as and"},
    {"OR", FILTER_OR, "as or"},
};

constexpr Word<bool> kNegation[] = {
    {"not", true, "negates the atom filter it follows"},
    {"NOT", true, "as not"},
};

// "both" is also a value of the yes/no column options.
constexpr std::string_view kBoth = "both";

constexpr Word<int> kDirections[] = {
    {"out", TAV_DIR_OUT, "outbound traffic"},
    {"in", TAV_DIR_IN, "inbound traffic"},
    {kBoth, TAV_DIR_BOTH, "both directions (no restriction)"},
};

constexpr Word<TavAccType> kAccumulationModes[] = {
    {"acc=replace", TAV_ACC_REPLACE, "the latest value (key columns)"},
    {"acc=rate", TAV_ACC_RATE, "per second"},
    {"acc=new", TAV_ACC_NEW, "new in the interval"},
    {"acc=sum", TAV_ACC_SUM, "total"},
    {"acc=concurrent", TAV_ACC_CONCURRENT, "concurrent at the moment"},
    {"acc=min", TAV_ACC_MIN, "minimum"},
    {"acc=max", TAV_ACC_MAX, "maximum"},
    {"acc=lineUtil", TAV_ACC_LINEUTIL, "line utilisation"},
};

constexpr Word<int> kYesNo[] = {
    {"no", 0, "only traffic without it"},
    {"yes", 1, "only traffic with it"},
    {kBoth, 2, "all traffic (no restriction)"},
};

constexpr Word<int> kUrlModes[] = {
    {"full", 0, "the whole URL"},
    {"host_path", 4, "host and path"},
    {"scheme_host", 5, "scheme and host"},
    {"host", 1, "the host"},
    {"path", 2, "the path"},
    {"scheme", 3, "the scheme"},
};

constexpr ColumnOption kColumnOptions[] = {
    {"dir=", 4, kDirections, TAV_DIR_BOTH, "Unexpected type of direction", "direction"},
    {"enc=", 4, kYesNo, 2, "Unexpected type of encryption mode", "encrypted traffic"},
    {"comp=", 5, kYesNo, 2, "Unexpected type of compresstion mode", "compressed traffic"},
    {"cprint=", 7, kYesNo, 2, "Unexpected type of citrix-print mode", "citrix print traffic"},
    {"url_mod=", 8, kUrlModes, 0, "Unexpected type of url mode", "the part of a URL that counts"},
};

constexpr bool optionNamesEndWithEquals() {
  for (const ColumnOption& option : kColumnOptions) {
    if (option.name.empty() || option.name.back() != '=') return false;
  }
  return true;
}
static_assert(optionNamesEndWithEquals(), "the column reader looks for option names only where a '=' stands");

constexpr Word<TavSortType> kSortTypes[] = {
    {"top", TAV_SORT_TOP, "largest first"},
    {"bottom", TAV_SORT_BOTTOM, "smallest first"},
    {"none", TAV_SORT_NONE, "unsorted"},
};

constexpr std::string_view kSortColumnPrefix = "sort=";

constexpr Word<SortOption> kSortOptions[] = {
    {"index=", SORT_INDEX, "the value column to sort by, from 1"},
    {"updates=", SORT_UPDATES, "how many updates the view sends (default 50, at most 200)"},
};

constexpr Word<tLytpE2eDataType> kDataTypes[] = {
    {"wire", E2E_DATA_WIRE, "counters as seen on the wire"},
    {"application", E2E_DATA_APPLICATION, "counters as seen by the application"},
};

std::string_view nameOf(std::string_view word) { return word.substr(0, word.find('=')); }

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

Rows<Word<RequestOption>> requestOptions() { return kRequestOptions; }

std::string_view optionWord(RequestOption option) { return wordOf<RequestOption>(kRequestOptions, option); }

bool isOption(std::string_view token, RequestOption option) {
  return token.size() == 2 && token[0] == '-' && token[1] == option;
}

Rows<Word<FilterOperator>> filterOperators() { return kFilterOperators; }

bool isOperatorWord(std::string_view token) { return codeOf<FilterOperator>(kFilterOperators, token) != nullptr; }

Rows<Word<bool>> negationWords() { return kNegation; }

bool isNegation(std::string_view token) { return codeOf<bool>(kNegation, token) != nullptr; }

Rows<Word<int>> directionWords() { return kDirections; }

TavFilterDirType itemDirection(std::string_view suffix) {
  const char first = lower(suffix.empty() ? '\0' : suffix[0]);
  for (const Word<int>& word : kDirections) {
    if (word.code != TAV_DIR_BOTH && first == word.text[0]) return static_cast<TavFilterDirType>(word.code);
  }
  return TAV_DIR_BOTH;
}

Rows<Word<TavAccType>> accumulationModes() { return kAccumulationModes; }

std::string_view accumulationName() { return nameOf(kAccumulationModes[0].text); }

std::string_view accumulationWord(TavAccType acc) {
  return wordOf<TavAccType>(kAccumulationModes, acc == TAV_ACC_CONCURRENT2 ? TAV_ACC_CONCURRENT : acc);
}

Rows<ColumnOption> columnOptions() { return kColumnOptions; }

std::string_view columnOptionWord(int option, int code) { return wordOf<int>(kColumnOptions[option].values, code); }

Rows<Word<TavSortType>> sortTypes() { return kSortTypes; }

std::string_view sortTypeWord(TavSortType type) { return wordOf<TavSortType>(kSortTypes, type); }

std::string_view sortColumnPrefix() { return kSortColumnPrefix; }

std::string_view sortColumnName() { return nameOf(kSortColumnPrefix); }

Rows<Word<SortOption>> sortOptions() { return kSortOptions; }

std::string_view virtualLinkWord() { return "vl"; }

std::string_view dataTypeOption() { return "-t"; }

Rows<Word<tLytpE2eDataType>> dataTypes() { return kDataTypes; }

}  // namespace detail
}  // namespace lytFilterParser
