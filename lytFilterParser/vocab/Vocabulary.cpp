#include "lytFilterParser/vocab/Vocabulary.h"

#include <deque>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/vocab/LegacySyntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace {

using detail::Rows;

constexpr unsigned peer(int version) { return 1u << static_cast<unsigned>(version); }
constexpr unsigned kAllPeers = peer(1) | peer(2) | peer(3);
constexpr unsigned kCurrentPeer = peer(3);
constexpr unsigned kLegacyPeers = peer(1) | peer(2);

// The list and the texts it composes ("dir=in", ",out" ...), which the
// words view.
class Builder {
 public:
  std::vector<Word> words;

  void add(std::string_view text, WordKind kind, int code, std::string_view meaning, unsigned peers,
           bool readable = true, bool written = true, unsigned places = 0) {
    words.push_back(Word{text, kind, code, meaning, peers, places, readable, written});
  }
  std::string_view keep(std::string text) {
    texts.push_back(std::move(text));
    return texts.back();
  }
  // Every word of `table`; where several stand for one code, only the first is written.
  template <class Code, std::size_t N>
  void addAll(const detail::Word<Code> (&table)[N], WordKind kind, unsigned peers) {
    for (const detail::Word<Code>& word : table) {
      const bool written = detail::wordOf<Code>(Rows<detail::Word<Code>>(table), word.code) == word.text;
      add(word.text, kind, static_cast<int>(word.code), word.meaning, peers, true, written);
    }
  }

 private:
  std::deque<std::string> texts;  // elements do not move, so views of them stay valid
};

// The table's first three place bits are the public ones.
static_assert(unsigned{PLACE_FILTER} == detail::kInFilter && unsigned{PLACE_KEY} == detail::kAsKey &&
              unsigned{PLACE_VALUE} == detail::kAsValue);
constexpr unsigned kPublicPlaces = PLACE_FILTER | PLACE_KEY | PLACE_VALUE;

// Where the value type that follows an option stands; the sort option takes none.
constexpr unsigned optionPlace(detail::RequestOption option) {
  return option == detail::OPTION_FILTER  ? unsigned{PLACE_FILTER}
         : option == detail::OPTION_KEY   ? unsigned{PLACE_KEY}
         : option == detail::OPTION_VALUE ? unsigned{PLACE_VALUE}
                                          : 0;
}

void addCurrentSyntax(Builder& list) {
  for (const detail::Word<detail::RequestOption>& option : detail::kRequestOptions) {
    list.add(option.text, WordKind::Option, -1, option.meaning, kAllPeers, true, true, optionPlace(option.code));
  }
  for (const detail::ValueTypeRow& row : detail::kValueTypes) {
    // A filter may test its type at every peer; older peers group and
    // measure by fewer types than the current one.
    unsigned peers = 0;
    if (row.places & detail::kInFilter) peers |= kAllPeers;
    if (row.places & detail::kAsKey) peers |= row.places & detail::kLegacyKey ? kAllPeers : kCurrentPeer;
    if (row.places & detail::kAsValue) peers |= row.places & detail::kLegacyValue ? kAllPeers : kCurrentPeer;
    list.add(row.keyword, WordKind::ValueType, row.type, row.meaning, peers, true, row.written,
             row.places & kPublicPlaces);
  }
  list.addAll(detail::kFilterOperators, WordKind::FilterOperator, kAllPeers);
  list.addAll(detail::kNegationWords, WordKind::Negation, kAllPeers);
  list.add(list.keep(std::string(1, detail::kOpenBracket)), WordKind::Bracket, -1,
           "opens the children of a compound filter", kAllPeers);
  list.add(list.keep(std::string(1, detail::kCloseBracket)), WordKind::Bracket, -1, "closes them", kAllPeers);
  for (const detail::Word<int>& word : detail::kDirections) {
    if (word.code == TAV_DIR_BOTH) continue;  // an item without a direction is both
    list.add(list.keep(detail::kDirectionSeparator + std::string(word.text)), WordKind::InterfaceDirection, word.code,
             word.meaning, kAllPeers);
  }
  list.addAll(detail::kAccumulationModes, WordKind::AccumulationMode, kAllPeers);
  for (const detail::ColumnOption& option : detail::kColumnOptions) {
    for (const detail::Word<int>& value : option.values) {
      list.add(list.keep(std::string(option.name) + std::string(value.text)), WordKind::ColumnOption, value.code,
               list.keep(std::string(option.meaning) + ": " + std::string(value.meaning)), kAllPeers, true,
               value.code != option.unrestricted);
    }
  }
  for (const detail::Word<TavSortType>& type : detail::kSortTypes) {
    if (type.code == TAV_SORT_NONE) continue;  // any other word after "sort=" is no sort
    list.add(list.keep(std::string(detail::kSortColumnPrefix) + std::string(type.text)), WordKind::SortInColumn,
             type.code, list.keep("sort the view by this value column, " + std::string(type.meaning)), kAllPeers, true,
             false);
  }
  for (const detail::Word<TavSortType>& type : detail::kSortTypes) {
    list.add(type.text, WordKind::SortType, type.code, type.meaning, kAllPeers, true, type.code != TAV_SORT_NONE);
  }
  list.addAll(detail::kSortOptions, WordKind::SortOption, kAllPeers);
  list.add(detail::kVirtualLinkWord, WordKind::VirtualLink, -1, "end-to-end request: vl NAME [-t TYPE]", kCurrentPeer);
  list.add(detail::kDataTypeOption, WordKind::VirtualLink, -1, "the data type of the virtual link's counters",
           kCurrentPeer);
  list.addAll(detail::kDataTypes, WordKind::VirtualLink, kCurrentPeer);
}

void addLegacySyntax(Builder& list) {
  for (const detail::Word<detail::LegacyOption>& option : detail::kLegacyOptions) {
    const WordKind takes = option.code == detail::LEGACY_GROUP   ? WordKind::LegacyGroup
                           : option.code == detail::LEGACY_VALUE ? WordKind::LegacyValue
                                                                 : WordKind::LegacyAggregate;
    const bool read = option.code != detail::LEGACY_FILTER;
    list.add(option.text, WordKind::LegacyOption, read ? static_cast<int>(takes) : -1, option.meaning, kLegacyPeers,
             read);
  }
  for (const detail::LegacyGroup& group : detail::kLegacyGroups) {
    std::string meaning = "group by " + std::string(detail::valueTypeKeyword(group.keyType));
    if (group.top) meaning += ", sorted top";
    list.add(group.word, WordKind::LegacyGroup, group.keyType, list.keep(std::move(meaning)), kLegacyPeers);
  }
  for (const detail::LegacyValue& value : detail::kLegacyValues) {
    std::string meaning;
    if (value.type >= 0) meaning = std::string(detail::valueTypeKeyword(static_cast<TavValType>(value.type)));
    if (value.acc >= 0) {
      if (!meaning.empty()) meaning += ' ';
      meaning += detail::accumulationWord(static_cast<TavAccType>(value.acc));
    }
    list.add(list.keep(std::string(1, value.letter)), WordKind::LegacyValue, value.type, list.keep(std::move(meaning)),
             kLegacyPeers, value.read);
  }
  for (const detail::Word<int>& letter : detail::kLegacyAggregates) {
    list.add(letter.text, WordKind::LegacyAggregate, letter.code, letter.meaning, kLegacyPeers, letter.code >= 0);
  }
}

}  // namespace

const std::vector<Word>& vocabulary() {
  static const Builder list = [] {
    Builder made;
    addCurrentSyntax(made);
    addLegacySyntax(made);
    return made;
  }();
  return list.words;
}

std::string_view wordKindName(WordKind kind) {
  switch (kind) {
    case WordKind::Option: return "option";
    case WordKind::ValueType: return "value type";
    case WordKind::FilterOperator: return "filter operator";
    case WordKind::Negation: return "negation";
    case WordKind::Bracket: return "bracket";
    case WordKind::InterfaceDirection: return "interface direction";
    case WordKind::AccumulationMode: return "accumulation mode";
    case WordKind::ColumnOption: return "column option";
    case WordKind::SortInColumn: return "sort in a value column";
    case WordKind::SortType: return "sort type";
    case WordKind::SortOption: return "sort option";
    case WordKind::VirtualLink: return "vl request";
    case WordKind::LegacyOption: return "legacy option";
    case WordKind::LegacyGroup: return "legacy group (-g)";
    case WordKind::LegacyValue: return "legacy value (-y)";
    case WordKind::LegacyAggregate: return "legacy aggregation (-a)";
  }
  return "";
}

std::vector<const Word*> findWords(std::string_view text) {
  std::vector<const Word*> found;
  for (const Word& word : vocabulary()) {
    if (word.text == text) found.push_back(&word);
  }
  return found;
}

}  // namespace lytFilterParser
