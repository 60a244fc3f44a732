// The words of the legacy option syntax that older peers read and write
// ("-g topsrc -y b -a i"), each set one table used by both the legacy
// reader and the legacy writer. Its filter words are value-type keywords
// (ValueTypeTable.h). Internal: not installed.
#ifndef LYTFILTERPARSER_VOCAB_LEGACYSYNTAX_H
#define LYTFILTERPARSER_VOCAB_LEGACYSYNTAX_H

#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// The legacy options. The reader knows an option by a token's first two
// characters; "-filter" is only written.
enum LegacyOption : char { LEGACY_GROUP = 'g', LEGACY_VALUE = 'y', LEGACY_AGGREGATE = 'a', LEGACY_FILTER = 'f' };

inline constexpr Word<LegacyOption> kLegacyOptions[] = {
    {"-g", LEGACY_GROUP, "group (key): a -g word"},
    {"-y", LEGACY_VALUE, "value: a -y letter"},
    {"-a", LEGACY_AGGREGATE, "aggregation: i for one row per connection"},
    {"-filter", LEGACY_FILTER, "filter list, written for older peers"},
};
constexpr std::string_view legacyOptionWord(LegacyOption option) {
  return wordOf<LegacyOption>(kLegacyOptions, option);
}

// "-g" words: the key type each groups by, and whether it also sorts top.
struct LegacyGroup {
  std::string_view word;
  TavValType keyType;
  bool top;
};
inline constexpr LegacyGroup kLegacyGroups[] = {
    {"topfw", TAV_FWRULE, true},     {"topsrc", TAV_SRC, true},     {"topdst", TAV_DST, true}, {"topip", TAV_IP, true},
    {"topqsrule", TAV_QSRULE, true}, {"topsvc", TAV_SVC, true},     {"src", TAV_SRC, false},   {"dst", TAV_DST, false},
    {"svc", TAV_SVC, false},         {"qsrule", TAV_QSRULE, false}, {"ip", TAV_IP, false},
};
// The row of `word` (exact), or nullptr.
constexpr const LegacyGroup* legacyGroup(std::string_view word) {
  for (const LegacyGroup& group : kLegacyGroups) {
    if (sameWord(word, group.word)) return &group;
  }
  return nullptr;
}
// The word written for a first key of `type`: the top form, or the plain
// form for a key with entities where there is one. Empty when none.
constexpr std::string_view legacyGroupWord(TavValType type, bool top) {
  const LegacyGroup* topForm = nullptr;
  for (const LegacyGroup& group : kLegacyGroups) {
    if (group.keyType != type) continue;
    if (group.top == top) return group.word;
    if (group.top) topForm = &group;
  }
  return topForm != nullptr ? topForm->word : std::string_view();
}

// "-y" letters: the value type and the mode each stands for. A type or
// mode of -1 matches any and is not read into the request.
struct LegacyValue {
  char letter;
  int type;
  int acc;
  bool read;  // the reader takes it; the others are only written
};
// In the writer's order of preference.
inline constexpr LegacyValue kLegacyValues[] = {
    {'b', TAV_WB, -1, true},
    {'l', -1, TAV_ACC_LINEUTIL, false},
    {'p', TAV_PKT, -1, true},
    {'c', TAV_CONN, TAV_ACC_NEW, true},
    {'C', TAV_CONN, TAV_ACC_CONCURRENT, true},
};
constexpr const LegacyValue* legacyValueRead(char letter) {
  for (const LegacyValue& value : kLegacyValues) {
    if (value.read && value.letter == letter) return &value;
  }
  return nullptr;
}
// The first row that describes a value column of `type` and `acc`, or nullptr.
constexpr const LegacyValue* legacyValueWritten(TavValType type, TavAccType acc) {
  for (const LegacyValue& value : kLegacyValues) {
    if ((value.type < 0 || value.type == type) && (value.acc < 0 || value.acc == acc)) return &value;
  }
  return nullptr;
}

// "-a" letters: "i" adds a connection-id key; "a" is written otherwise.
inline constexpr Word<int> kLegacyAggregates[] = {
    {"i", TAV_CONNID, "one row per connection"},
    {"a", -1, "aggregated rows"},
};

// The negation flag of a legacy filter: "1" negated, "0" not.
constexpr std::string_view legacyNegationFlag(bool negated) { return negated ? "1" : "0"; }

}  // namespace detail
}  // namespace lytFilterParser

#endif
