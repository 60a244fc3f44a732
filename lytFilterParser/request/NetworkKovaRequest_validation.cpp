// What a peer of a given version can serve. Which types may stand where, and
// which modes a value type takes, are the value-type table's; the checks
// below run in a fixed order, and the first that fails gives the message
// and, when asked, the item it blames.
#include "lytFilterParser/request/NetworkKovaRequest.h"

#include "lytFilterParser/filter/FilterVisit.h"
#include "lytFilterParser/request/Validator.h"
#include "lytFilterParser/vocab/Syntax.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace {

using lytFilterParser::detail::Blame;
using lytFilterParser::detail::hasPlace;
using lytFilterParser::detail::ValueTypeRow;
using lytFilterParser::detail::valueTypeRow;
namespace place = lytFilterParser::detail;

constexpr std::size_t kMaxKeys = 4;
constexpr std::size_t kMaxValues = 6;
constexpr std::size_t kMaxEntriesPerKey = 100;
constexpr int kMaxUpdatesLimit = 200;

// Where a check keeps what it blames: nowhere for the public isValid, whose
// accepted requests never reach a refusal and so pay nothing for it.
struct Culprit {
  Blame* blame;
  void operator()(Blame::Item item, std::size_t index = 0, std::size_t option = 0) const {
    if (blame != nullptr) *blame = Blame{item, index, option};
  }
};

// Assigning into the caller's string reuses its buffer, so repeated checks
// (getMinimalValidVersion) do not allocate for the fixed messages.
bool refuse(std::string& error, const char* message) {
  error.assign(message);
  return false;
}

bool refuse(std::string& error, const char* head, TavValType type) {
  const std::string keyword = lytFilterParser::dumpValueType(type);  // may throw: leave `error` alone
  error.assign(head);
  error += keyword;
  return false;
}

// What the key columns hold, for the checks that look at keys and values together.
struct Keys {
  std::size_t entries = 0;  // entities of every key
  int qsrule = 0, connId = 0, interfaces = 0, pktRange = 0, needsSession = 0;
};

// The first key of `type`.
std::size_t keyOfType(const TavColumnArray& keys, TavValType type) {
  std::size_t k = 0;
  while (k < keys.size() && keys[k].getValueType() != type) ++k;
  return k;
}

bool checkCounts(const TavColumnArray& keys, const TavColumnArray& values, std::string& error, Culprit blame) {
  if (keys.size() > kMaxKeys)
    return blame(Blame::KeyColumn, kMaxKeys), refuse(error, "Number of keys reach the max number");
  if (values.size() > kMaxValues)
    return blame(Blame::ValueColumn, kMaxValues), refuse(error, "Number of vals reach the max number");
  return true;
}

bool checkKeys(const TavColumnArray& keys, Keys& found, std::string& error, Culprit blame) {
  found.entries = keys[0].getEntities().size();
  for (std::size_t position = 0; position < keys.size(); ++position) {
    const TavValType type = keys[position].getValueType();
    if (keys[position].getEntities().size() != found.entries)
      return blame(Blame::KeyColumn, position), refuse(error, "Number of entries for each key must be equal");
    if (!hasPlace(type, place::kAsKey))
      return blame(Blame::KeyType, position), refuse(error, "Invalid type for key: ", type);
    found.qsrule += type == TAV_QSRULE;
    found.connId += type == TAV_CONNID;
    found.interfaces += type == TAV_INTERFACE;
    found.pktRange += type == TAV_PKTRANGE;
    found.needsSession += hasPlace(type, place::kNeedsSessionValues);
    // A second first-only key stands after the first key and is refused
    // here, so "Can't use more than ones of the following keys (IP, Tunnel)"
    // has no request left to refuse.
    if (hasPlace(type, place::kFirstKeyOnly) && position != 0) {
      blame(Blame::KeyType, position);
      return refuse(error, "The following types (IP, Tunnel, wdAttack) can be used only as the first key");
    }
  }
  return true;
}

// The first column option that narrows the traffic a value column counts
// (kColumnOptions order); the URL mode only shapes what is shown.
std::size_t restrictingOption(const TavColumnFilter& filter) {
  int o = 0;
  while (o < TavColumnFilter::URL_MODE && filter.option(TavColumnFilter::Option(o)) == TavColumnFilter::BOTH) ++o;
  return o;
}

// Completes "rate" to the mode the type counts in, then checks the mode,
// the column options and the entities of every value column.
bool checkValues(TavColumnArray& values, int& sessions, int& concurrent, std::string& error, Culprit blame) {
  for (std::size_t v = 0; v < values.size(); ++v) {
    TavColumn& value = values[v];
    const TavValType type = value.getValueType();
    const ValueTypeRow* row = valueTypeRow(type);
    if (row == nullptr || (row->places & place::kAsValue) == 0)
      return blame(Blame::ValueType, v), refuse(error, "Invalid type for value: ", type);
    if (value.getAccType() == TAV_ACC_RATE && row->rateBecomes >= 0) {
      value.setAccType(static_cast<TavAccType>(row->rateBecomes));
    }
    const unsigned acc = static_cast<unsigned>(value.getAccType());
    if (acc >= 32 || (row->valueModes & (1u << acc)) == 0)
      return blame(Blame::ValueMode, v), refuse(error, "Invalid accumulation mode");
    if (row->filteredMessage != nullptr && value.getColumnFilter().restrictsTraffic()) {
      blame(Blame::ValueOption, v, restrictingOption(value.getColumnFilter()));
      return refuse(error, row->filteredMessage);
    }
    sessions += type == TAV_SESSION;
    concurrent += value.getAccType() == TAV_ACC_CONCURRENT;
    if (!value.getEntities().empty()) return blame(Blame::ValueNames, v), refuse(error, "Invalid options for value");
  }
  return true;
}

// A dynamic view (keys without entities) is sorted, top unless told.
bool checkView(const Keys& keys, const TavColumnArray& keyColumns, std::size_t valueCount, TavSortType& sortType,
               int sortIndex, std::string& error, Culprit blame) {
  if (keys.entries == 0) {
    if (sortType == TAV_SORT_NONE) sortType = TAV_SORT_TOP;
    if (sortIndex < 1 || static_cast<std::size_t>(sortIndex) > valueCount)
      return blame(Blame::SortIndex), refuse(error, "Invalid Sort index");
    if (keys.pktRange > 0) {
      blame(Blame::KeyType, keyOfType(keyColumns, TAV_PKTRANGE));
      return refuse(error, "Packet size distribution key must followed by ranges entities");
    }
  } else if (keys.entries > kMaxEntriesPerKey) {
    return blame(Blame::KeyName, kMaxEntriesPerKey), refuse(error, "Number of entries reach the max number");
  }
  return true;
}

bool checkCombinations(const Keys& found, const TavColumnArray& keys, const TavColumnArray& values, int sessions,
                       int concurrent, std::string& error, Culprit blame) {
  if (concurrent > 0) {
    const char* message = found.connId > 0       ? "Can't use Concurrent Connections with Individual views"
                          : found.qsrule > 0     ? "Can't use Concurrent Connections views with QS rules"
                          : found.interfaces > 0 ? "Can't use Concurrent Connections views with Interface"
                                                 : nullptr;
    const TavValType culprit = found.connId > 0 ? TAV_CONNID : found.qsrule > 0 ? TAV_QSRULE : TAV_INTERFACE;
    if (message != nullptr) return blame(Blame::KeyType, keyOfType(keys, culprit)), refuse(error, message);
  }
  for (std::size_t k = 0; sessions > 0 && k < keys.size(); ++k) {
    if (hasPlace(keys[k].getValueType(), place::kNotWithSession)) {
      // telNumber has no keyword: the value-type writer's fault escapes here.
      error = "Can't use " + lytFilterParser::dumpValueType(keys[k].getValueType()) + " with session value";
      blame(Blame::KeyType, k);
      return false;
    }
  }
  for (std::size_t v = 0; found.needsSession > 0 && v < values.size(); ++v) {
    if (values[v].getValueType() != TAV_SESSION) {
      blame(Blame::ValueType, v);
      return refuse(error, "Can't use wdAttack or url with none session value: ", values[v].getValueType());
    }
  }
  return true;
}

// Older peers serve one key (or a key and a connection id) and one value,
// of the types and modes they know.
bool checkLegacy(const TavColumnArray& keys, const TavColumnArray& values, std::string& error, Culprit blame) {
  if (keys.size() > 1 && !(keys.size() == 2 && keys[1].getValueType() == TAV_CONNID)) {
    // The key that a peer of one key (and a connection id) has no room for.
    return blame(Blame::KeyColumn, keys[1].getValueType() == TAV_CONNID ? 2 : 1), refuse(error, "Support only one key");
  }
  if (values.size() > 1) return blame(Blame::ValueColumn, 1), refuse(error, "Support only one value column");
  if (!hasPlace(keys[0].getValueType(), place::kLegacyKey))
    return blame(Blame::KeyType, 0), refuse(error, "Invalid type for key: ", keys[0].getValueType());
  if (!hasPlace(values[0].getValueType(), place::kLegacyValue))
    return blame(Blame::ValueType, 0), refuse(error, "Invalid type for value: ", values[0].getValueType());
  if (values[0].getAccType() == TAV_ACC_SUM)
    return blame(Blame::ValueMode, 0), refuse(error, "Invalid accumulation mode");
  return true;
}

// The filter's atoms check themselves; the node that refuses is counted in
// pre-order, the root being node 0.
bool checkFilter(const Filter& filter, std::string& error, Culprit blame) {
  if (blame.blame == nullptr) return filter.isValid(error);
  std::size_t node = 0;
  const auto enter = [&node](const Filter&) { return ++node, true; };
  const auto leave = [](const Filter&) { return true; };
  const auto atom = [&](const AbstractFilter& child) {
    ++node;
    if (child.isValid(error)) return true;
    blame(Blame::FilterAtom, node);
    return false;
  };
  return lytFilterParser::detail::walkFilter(filter, enter, leave, atom);
}

}  // namespace

namespace lytFilterParser {
namespace detail {

bool Validator::isValid(NetworkKovaRequest& request, TavVersion version, std::string& error, Blame* blamed) {
  const Culprit blame{blamed};
  const TavColumnArray& keys = request.keys;
  TavColumnArray& values = request.values;
  if (keys.empty()) return blame(Blame::End), refuse(error, "At least one key is required");
  if (values.empty()) return blame(Blame::End), refuse(error, "At least one value is required");
  if (version <= TAV_VERSION_CURRENT) {
    Keys found;
    int sessions = 0, concurrent = 0;
    if (!checkCounts(keys, values, error, blame) || !checkKeys(keys, found, error, blame) ||
        !checkValues(values, sessions, concurrent, error, blame) ||
        !checkView(found, keys, values.size(), request.sortType, request.sortIndex, error, blame) ||
        (request.maxUpdates > kMaxUpdatesLimit && (blame(Blame::MaxUpdates), !refuse(error, "Invalid maxUpdates"))) ||
        !checkCombinations(found, keys, values, sessions, concurrent, error, blame) ||
        (version >= TAV_VERSION_UNSUPPORTED && version <= TAV_VERSION_LEGACY_2 &&
         !checkLegacy(keys, values, error, blame))) {
      return false;
    }
  }
  if (version <= TAV_VERSION_UNSUPPORTED) return blame(Blame::Whole), refuse(error, "This version is not supported");
  return checkFilter(request.filter, error, blame);
}

}  // namespace detail
}  // namespace lytFilterParser

bool NetworkKovaRequest::isValid(TavVersion version, std::string& error) {
  return lytFilterParser::detail::Validator::isValid(*this, version, error, nullptr);
}

bool NetworkKovaRequest::isValid(std::string& error) { return isValid(TavVersion(TAV_VERSION_CURRENT), error); }

int NetworkKovaRequest::getMinimalValidVersion(std::string& error) {
  for (int version = TAV_VERSION_UNSUPPORTED; version <= TAV_VERSION_CURRENT; ++version) {
    if (isValid(TavVersion(version), error)) return version;
  }
  return TAV_VERSION_NONE;
}
