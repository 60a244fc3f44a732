#include "lytFilterParser/diagnostics/Validation.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Outline.h"
#include "lytFilterParser/diagnostics/Words.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

// What made validation fail, by its message.
enum class Culprit {
  End, Whole, KeyCount, ValueCount, EntryCount, KeyEntries, KeyType, FirstOnlyKey, SecondFirstOnlyKey,
  ValueType, ValueMode, ValueNames, SortIndex, PktRangeKey, MaxUpdates, ConnIdKey, QsruleKey, InterfaceKey,
  NonSessionValue, FilterType, SessionKey
};

struct Blame {
  std::string_view message;
  bool head;  // the message starts with it and a keyword follows
  Culprit culprit;
};

// Validation's messages (request/NetworkKovaRequest_validation.cpp, Filter).
constexpr Blame kBlames[] = {
    {"At least one key is required", false, Culprit::End},
    {"At least one value is required", false, Culprit::End},
    {"Number of keys reach the max number", false, Culprit::KeyCount},
    {"Support only one key", false, Culprit::KeyCount},
    {"Number of vals reach the max number", false, Culprit::ValueCount},
    {"Support only one value column", false, Culprit::ValueCount},
    {"Number of entries reach the max number", false, Culprit::EntryCount},
    {"Number of entries for each key must be equal", false, Culprit::KeyEntries},
    {"Invalid type for key: ", true, Culprit::KeyType},
    {"The following types (IP, Tunnel, wdAttack) can be used only as the first key", false, Culprit::FirstOnlyKey},
    {"Can't use more than ones of the following keys (IP, Tunnel)", false, Culprit::SecondFirstOnlyKey},
    {"Invalid type for value: ", true, Culprit::ValueType},
    {"Invalid accumulation mode", false, Culprit::ValueMode},
    {"Invalid options for value", false, Culprit::ValueNames},
    {"Invalid Sort index", false, Culprit::SortIndex},
    {"Packet size distribution key must followed by ranges entities", false, Culprit::PktRangeKey},
    {"Invalid maxUpdates", false, Culprit::MaxUpdates},
    {"Can't use Concurrent Connections with Individual views", false, Culprit::ConnIdKey},
    {"Can't use Concurrent Connections views with QS rules", false, Culprit::QsruleKey},
    {"Can't use Concurrent Connections views with Interface", false, Culprit::InterfaceKey},
    {"Can't use wdAttack or url with none session value: ", true, Culprit::NonSessionValue},
    {"Invalid Filter Type: ", true, Culprit::FilterType},
    {"This version is not supported", false, Culprit::Whole},
    {"Can't use ", true, Culprit::SessionKey},  // "Can't use KEYWORD with session value", last: the others start alike
};

std::string_view keywordOf(const TavColumn& column) {
  const ValueTypeRow* row = valueTypeRow(column.getValueType());
  return row != nullptr ? row->keyword : std::string_view();
}

// The place of the item of a refused request, found in its outline.
class Locator {
 public:
  Locator(const Outline& outline, const NetworkKovaRequest& request, TavVersion peer, std::string_view message)
      : outline(outline), request(request), peer(peer), message(message) {}

  Span locate(const Blame& blame, std::string_view keyword) const;
  Span filteredValue() const;

 private:
  Span end() const { return Span{outline.text.size(), 0}; }
  Span whole() const { return Span{0, outline.text.size()}; }

  // The smallest count of keys, values or names per key for which the
  // request still gets `message`; the counts of these messages only grow.
  std::size_t smallestFailing(std::size_t total, Culprit culprit) const;
  NetworkKovaRequest cut(std::size_t count, Culprit culprit) const;

  Span locateValue(const Blame& blame, std::string_view keyword) const;

  // The first key from `from` on that `blamed` blames; the key count for none.
  template <class Blamed>
  std::size_t firstKey(Blamed blamed, std::size_t from = 0) const {
    for (std::size_t k = from; k < request.getKeys().size(); ++k) {
      if (blamed(request.getKeys()[k], k)) return k;
    }
    return request.getKeys().size();
  }
  Span keyOfType(TavValType type) const {
    return keyType(firstKey([type](const TavColumn& key, std::size_t) { return key.getValueType() == type; }));
  }
  Span keyType(std::size_t k) const { return k < outline.keys.size() ? outline.keys[k].type : whole(); }
  Span keyWhole(std::size_t k) const { return k < outline.keys.size() ? outline.keys[k].whole : whole(); }
  Span keyName(std::size_t n) const;
  Span valueType(std::size_t v) const { return v < outline.values.size() ? outline.values[v].type : whole(); }
  Span valueWord(std::size_t v, Part part) const;
  Span sortWord(Part part) const;
  Span valueMode() const;
  Span filterType(std::string_view keyword) const;

  const Outline& outline;
  const NetworkKovaRequest& request;
  TavVersion peer;
  std::string_view message;
};

// The request with its first `count` keys, values, or names of every key.
NetworkKovaRequest Locator::cut(std::size_t count, Culprit culprit) const {
  TavColumnArray keys, values;
  for (std::size_t k = 0; k < request.getKeys().size() && (culprit != Culprit::KeyCount || k < count); ++k) {
    const TavColumn& key = request.getKeys()[k];
    if (culprit != Culprit::EntryCount) {
      keys.push_back(key);
      continue;
    }
    TavEntityArray names;
    for (std::size_t n = 0; n < count && n < key.getEntities().size(); ++n) names.add(key.getEntities()[n]);
    keys.push_back(TavColumn(key.getKeyOrValue(), key.getValueType(), key.getAccType(), names, key.getColumnFilter()));
  }
  for (std::size_t v = 0; v < request.getValues().size() && (culprit != Culprit::ValueCount || v < count); ++v) {
    values.push_back(request.getValues()[v]);
  }
  return NetworkKovaRequest(Filter(), keys, values, request.getSortType(), 1);
}

std::size_t Locator::smallestFailing(std::size_t total, Culprit culprit) const {
  std::size_t low = 1, high = total;
  while (low < high) {
    const std::size_t middle = low + (high - low) / 2;
    NetworkKovaRequest probe = cut(middle, culprit);
    std::string got;
    if (!probe.isValid(peer, got) && got == message) {
      high = middle;
    } else {
      low = middle + 1;
    }
  }
  return low;
}

// Name `n` of the first key.
Span Locator::keyName(std::size_t n) const {
  if (outline.keys.empty()) return whole();
  const ColumnOutline& key = outline.keys[0];
  std::size_t seen = 0;
  for (std::uint32_t w = key.firstWord; w < key.firstWord + key.wordCount; ++w) {
    if (outline.words[w].part == Part::Name && seen++ == n) return outline.words[w].span;
  }
  return key.type;
}

// The last word of `part` in value column `v`, else its type.
Span Locator::valueWord(std::size_t v, Part part) const {
  if (v >= outline.values.size()) return whole();
  const ColumnOutline& column = outline.values[v];
  Span found = column.type;
  for (std::uint32_t w = column.firstWord; w < column.firstWord + column.wordCount; ++w) {
    if (outline.words[w].part == part) found = outline.words[w].span;
    if (part == Part::Name && outline.words[w].part == part) break;
  }
  return found;
}

// The last "index=" or "updates=" word of the last "-s", else that "-s".
Span Locator::sortWord(Part part) const {
  Span found = end();
  for (const SortSetting& setting : outline.sorts) {
    if (setting.column >= 0) continue;
    found = setting.type;
    for (std::uint32_t w = setting.firstWord; w < setting.firstWord + setting.wordCount; ++w) {
      if (outline.words[w].part == part) found = outline.words[w].span;
    }
  }
  return found;
}

Span Locator::valueMode() const {
  const TavColumnArray& values = request.getValues();
  for (std::size_t v = 0; v < values.size(); ++v) {
    const ValueTypeRow* row = valueTypeRow(values[v].getValueType());
    const unsigned mode = static_cast<unsigned>(values[v].getAccType());
    if (row != nullptr && (mode >= 32 || (row->valueModes & (1u << mode)) == 0)) return valueWord(v, Part::Accumulation);
  }
  return valueWord(0, Part::Accumulation);
}

Span Locator::filterType(std::string_view keyword) const {
  for (std::size_t n = 1; n < outline.nodes.size(); ++n) {
    if (!outline.nodes[n].compound && outline.textOf(outline.nodes[n].head) == keyword) return outline.nodes[n].head;
  }
  return whole();
}

Span Locator::locate(const Blame& blame, std::string_view keyword) const {
  const TavColumnArray& keys = request.getKeys();
  const TavColumnArray& values = request.getValues();
  switch (blame.culprit) {
    case Culprit::End: return end();
    case Culprit::Whole: return whole();
    case Culprit::KeyCount: return keyWhole(smallestFailing(keys.size(), blame.culprit) - 1);
    case Culprit::ValueCount: {
      const std::size_t v = smallestFailing(values.size(), blame.culprit) - 1;
      return v < outline.values.size() ? outline.values[v].whole : whole();
    }
    case Culprit::EntryCount: return keyName(smallestFailing(keys[0].getEntities().size(), blame.culprit) - 1);
    case Culprit::KeyEntries:
      return keyWhole(firstKey([&](const TavColumn& key, std::size_t) {
        return key.getEntities().size() != keys[0].getEntities().size();
      }));
    case Culprit::KeyType:
    case Culprit::SessionKey:
      return keyType(firstKey([&](const TavColumn& key, std::size_t) { return keywordOf(key) == keyword; }));
    case Culprit::FirstOnlyKey:
      return keyType(firstKey([](const TavColumn& key, std::size_t k) {
        return k > 0 && hasPlace(key.getValueType(), kFirstKeyOnly);
      }));
    case Culprit::SecondFirstOnlyKey: {
      const auto firstOnly = [](const TavColumn& key, std::size_t) { return hasPlace(key.getValueType(), kFirstKeyOnly); };
      return keyType(firstKey(firstOnly, firstKey(firstOnly) + 1));
    }
    case Culprit::PktRangeKey: return keyOfType(TAV_PKTRANGE);
    case Culprit::ConnIdKey: return keyOfType(TAV_CONNID);
    case Culprit::QsruleKey: return keyOfType(TAV_QSRULE);
    case Culprit::InterfaceKey: return keyOfType(TAV_INTERFACE);
    default: return locateValue(blame, keyword);
  }
}

Span Locator::locateValue(const Blame& blame, std::string_view keyword) const {
  const TavColumnArray& values = request.getValues();
  switch (blame.culprit) {
    case Culprit::ValueType:
    case Culprit::NonSessionValue:
      for (std::size_t v = 0; v < values.size(); ++v) {
        if (keywordOf(values[v]) == keyword) return valueType(v);
      }
      return whole();
    case Culprit::ValueMode: return valueMode();
    case Culprit::ValueNames:
      for (std::size_t v = 0; v < values.size(); ++v) {
        if (!values[v].getEntities().empty()) return valueWord(v, Part::Name);
      }
      return whole();
    case Culprit::SortIndex: return sortWord(Part::Index);
    case Culprit::MaxUpdates: return sortWord(Part::Updates);
    case Culprit::FilterType: return filterType(keyword);
    default: return whole();
  }
}

// "Can't use Per Connection with column filter" and its like: the first
// option of the value column that restricts its traffic.
Span Locator::filteredValue() const {
  const TavColumnArray& values = request.getValues();
  for (std::size_t v = 0; v < values.size() && v < outline.values.size(); ++v) {
    const ValueTypeRow* row = valueTypeRow(values[v].getValueType());
    if (row == nullptr || row->filteredMessage == nullptr || message != row->filteredMessage) continue;
    const ColumnOutline& column = outline.values[v];
    for (std::uint32_t w = column.firstWord; w < column.firstWord + column.wordCount; ++w) {
      const std::string_view word = outline.textOf(outline.words[w].span);
      const std::size_t option = outline.words[w].option;
      if (outline.words[w].part != Part::ColumnOption || option == COLUMN_URL) continue;
      const Word<int>* value = columnOptionValue(word, option);
      if (value != nullptr && value->code != kColumnOptions[option].unrestricted) return outline.words[w].span;
    }
    return column.type;
  }
  return whole();
}

}  // namespace
}  // namespace detail

std::optional<Refusal> validate(const std::string& text, NetworkKovaRequest& request, TavVersion peer) {
  using namespace detail;
  std::string message;
  if (request.isValid(peer, message)) return std::nullopt;
  Outline outline;
  Span at{0, text.size()};
  if (outline.read(text) && outline.matches(request)) {
    const Locator locator(outline, request, peer, message);
    bool filtered = false;
    for (const ValueTypeRow& row : valueTypeRows()) filtered = filtered || (row.filteredMessage != nullptr && message == row.filteredMessage);
    for (const Blame& blame : kBlames) {
      if (filtered) {
        at = locator.filteredValue();
        break;
      }
      const bool same = blame.head ? message.compare(0, blame.message.size(), blame.message) == 0 : message == blame.message;
      if (!same) continue;
      std::string_view keyword = std::string_view(message).substr(blame.message.size());
      if (blame.culprit == Culprit::SessionKey) keyword = keyword.substr(0, keyword.find(' '));
      at = locator.locate(blame, keyword);
      break;
    }
  }
  return Refusal{std::move(message), at.start, at.length, {}};
}

}  // namespace lytFilterParser
