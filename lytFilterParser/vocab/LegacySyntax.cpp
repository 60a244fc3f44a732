#include "lytFilterParser/vocab/LegacySyntax.h"

namespace lytFilterParser {
namespace detail {
namespace {

constexpr Word<LegacyOption> kLegacyOptions[] = {
    {"-g", LEGACY_GROUP, "group (key): a -g word"},
    {"-y", LEGACY_VALUE, "value: a -y letter"},
    {"-a", LEGACY_AGGREGATE, "aggregation: i for one row per connection"},
    {"-filter", LEGACY_FILTER, "filter list, written for older peers"},
};

constexpr LegacyGroup kLegacyGroups[] = {
    {"topfw", TAV_FWRULE, true},   {"topsrc", TAV_SRC, true}, {"topdst", TAV_DST, true}, {"topip", TAV_IP, true},
    {"topqsrule", TAV_QSRULE, true}, {"topsvc", TAV_SVC, true}, {"src", TAV_SRC, false},  {"dst", TAV_DST, false},
    {"svc", TAV_SVC, false},       {"qsrule", TAV_QSRULE, false}, {"ip", TAV_IP, false},
};

// In the writer's order of preference.
constexpr LegacyValue kLegacyValues[] = {
    {'b', TAV_WB, -1, true},
    {'l', -1, TAV_ACC_LINEUTIL, false},
    {'p', TAV_PKT, -1, true},
    {'c', TAV_CONN, TAV_ACC_NEW, true},
    {'C', TAV_CONN, TAV_ACC_CONCURRENT, true},
};

constexpr Word<int> kLegacyAggregates[] = {
    {"i", TAV_CONNID, "one row per connection"},
    {"a", -1, "aggregated rows"},
};

}  // namespace

Rows<Word<LegacyOption>> legacyOptions() { return kLegacyOptions; }

std::string_view legacyOptionWord(LegacyOption option) { return wordOf<LegacyOption>(kLegacyOptions, option); }

Rows<LegacyGroup> legacyGroups() { return kLegacyGroups; }

const LegacyGroup* legacyGroup(std::string_view word) {
  for (const LegacyGroup& group : kLegacyGroups) {
    if (group.word == word) return &group;
  }
  return nullptr;
}

std::string_view legacyGroupWord(TavValType type, bool top) {
  const LegacyGroup* topForm = nullptr;
  for (const LegacyGroup& group : kLegacyGroups) {
    if (group.keyType != type) continue;
    if (group.top == top) return group.word;
    if (group.top) topForm = &group;
  }
  return topForm != nullptr ? topForm->word : std::string_view();
}

Rows<LegacyValue> legacyValues() { return kLegacyValues; }

const LegacyValue* legacyValueRead(char letter) {
  for (const LegacyValue& value : kLegacyValues) {
    if (value.read && value.letter == letter) return &value;
  }
  return nullptr;
}

const LegacyValue* legacyValueWritten(TavValType type, TavAccType acc) {
  for (const LegacyValue& value : kLegacyValues) {
    if ((value.type < 0 || value.type == type) && (value.acc < 0 || value.acc == acc)) return &value;
  }
  return nullptr;
}

Rows<Word<int>> legacyAggregates() { return kLegacyAggregates; }

std::string_view legacyNegationFlag(bool negated) { return negated ? "1" : "0"; }

}  // namespace detail
}  // namespace lytFilterParser
