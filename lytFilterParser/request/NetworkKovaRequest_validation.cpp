// What a peer of a given version can serve. Which types may stand where, and
// which modes a value type takes, are the value-type table's; the checks
// below run in a fixed order, and the first that fails gives the message.
#include "lytFilterParser/request/NetworkKovaRequest.h"

#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace {

using lytFilterParser::detail::hasPlace;
using lytFilterParser::detail::ValueTypeRow;
using lytFilterParser::detail::valueTypeRow;
namespace place = lytFilterParser::detail;

constexpr std::size_t kMaxKeys = 4;
constexpr std::size_t kMaxValues = 6;
constexpr std::size_t kMaxEntriesPerKey = 100;
constexpr int kMaxUpdatesLimit = 200;

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
  int qsrule = 0, connId = 0, interfaces = 0, pktRange = 0, firstOnly = 0, needsSession = 0;
};

bool checkCounts(const TavColumnArray& keys, const TavColumnArray& values, std::string& error) {
  if (keys.size() > kMaxKeys) return refuse(error, "Number of keys reach the max number");
  if (values.size() > kMaxValues) return refuse(error, "Number of vals reach the max number");
  return true;
}

bool checkKeys(const TavColumnArray& keys, Keys& found, std::string& error) {
  found.entries = keys[0].getEntities().size();
  for (std::size_t position = 0; position < keys.size(); ++position) {
    const TavValType type = keys[position].getValueType();
    if (keys[position].getEntities().size() != found.entries) {
      return refuse(error, "Number of entries for each key must be equal");
    }
    if (!hasPlace(type, place::kAsKey)) return refuse(error, "Invalid type for key: ", type);
    found.qsrule += type == TAV_QSRULE;
    found.connId += type == TAV_CONNID;
    found.interfaces += type == TAV_INTERFACE;
    found.pktRange += type == TAV_PKTRANGE;
    found.needsSession += hasPlace(type, place::kNeedsSessionValues);
    if (hasPlace(type, place::kFirstKeyOnly)) {
      ++found.firstOnly;
      if (position != 0) {
        return refuse(error, "The following types (IP, Tunnel, wdAttack) can be used only as the first key");
      }
    }
  }
  if (found.firstOnly > 1) return refuse(error, "Can't use more than ones of the following keys (IP, Tunnel)");
  return true;
}

// Completes "rate" to the mode the type counts in, then checks the mode,
// the column options and the entities of every value column.
bool checkValues(TavColumnArray& values, int& sessions, int& concurrent, std::string& error) {
  for (TavColumn& value : values) {
    const TavValType type = value.getValueType();
    const ValueTypeRow* row = valueTypeRow(type);
    if (row == nullptr || (row->places & place::kAsValue) == 0) return refuse(error, "Invalid type for value: ", type);
    if (value.getAccType() == TAV_ACC_RATE && row->rateBecomes >= 0) {
      value.setAccType(static_cast<TavAccType>(row->rateBecomes));
    }
    const unsigned acc = static_cast<unsigned>(value.getAccType());
    if (acc >= 32 || (row->valueModes & (1u << acc)) == 0) return refuse(error, "Invalid accumulation mode");
    if (row->filteredMessage != nullptr && value.getColumnFilter().restrictsTraffic()) {
      return refuse(error, row->filteredMessage);
    }
    sessions += type == TAV_SESSION;
    concurrent += value.getAccType() == TAV_ACC_CONCURRENT;
    if (!value.getEntities().empty()) return refuse(error, "Invalid options for value");
  }
  return true;
}

// A dynamic view (keys without entities) is sorted, top unless told.
bool checkView(const Keys& keys, std::size_t valueCount, TavSortType& sortType, int sortIndex, std::string& error) {
  if (keys.entries == 0) {
    if (sortType == TAV_SORT_NONE) sortType = TAV_SORT_TOP;
    if (sortIndex < 1 || static_cast<std::size_t>(sortIndex) > valueCount) return refuse(error, "Invalid Sort index");
    if (keys.pktRange > 0) return refuse(error, "Packet size distribution key must followed by ranges entities");
  } else if (keys.entries > kMaxEntriesPerKey) {
    return refuse(error, "Number of entries reach the max number");
  }
  return true;
}

bool checkCombinations(const Keys& found, const TavColumnArray& keys, const TavColumnArray& values, int sessions,
                       int concurrent, std::string& error) {
  if (concurrent > 0) {
    if (found.connId > 0) return refuse(error, "Can't use Concurrent Connections with Individual views");
    if (found.qsrule > 0) return refuse(error, "Can't use Concurrent Connections views with QS rules");
    if (found.interfaces > 0) return refuse(error, "Can't use Concurrent Connections views with Interface");
  }
  if (sessions > 0) {
    for (const TavColumn& key : keys) {
      if (hasPlace(key.getValueType(), place::kNotWithSession)) {
        // telNumber has no keyword: the value-type writer's fault escapes here.
        std::string message = "Can't use " + lytFilterParser::dumpValueType(key.getValueType()) + " with session value";
        error = std::move(message);
        return false;
      }
    }
  }
  if (found.needsSession > 0) {
    for (const TavColumn& value : values) {
      if (value.getValueType() != TAV_SESSION) {
        return refuse(error, "Can't use wdAttack or url with none session value: ", value.getValueType());
      }
    }
  }
  return true;
}

// Older peers serve one key (or a key and a connection id) and one value,
// of the types and modes they know.
bool checkLegacy(const TavColumnArray& keys, const TavColumnArray& values, std::string& error) {
  if (keys.size() > 1 && !(keys.size() == 2 && keys[1].getValueType() == TAV_CONNID)) {
    return refuse(error, "Support only one key");
  }
  if (values.size() > 1) return refuse(error, "Support only one value column");
  if (!hasPlace(keys[0].getValueType(), place::kLegacyKey)) {
    return refuse(error, "Invalid type for key: ", keys[0].getValueType());
  }
  if (!hasPlace(values[0].getValueType(), place::kLegacyValue)) {
    return refuse(error, "Invalid type for value: ", values[0].getValueType());
  }
  if (values[0].getAccType() == TAV_ACC_SUM) return refuse(error, "Invalid accumulation mode");
  return true;
}

}  // namespace

bool NetworkKovaRequest::isValid(TavVersion version, std::string& error) {
  if (keys.empty()) return refuse(error, "At least one key is required");
  if (values.empty()) return refuse(error, "At least one value is required");
  if (version <= TAV_VERSION_CURRENT) {
    Keys found;
    int sessions = 0, concurrent = 0;
    if (!checkCounts(keys, values, error) || !checkKeys(keys, found, error) ||
        !checkValues(values, sessions, concurrent, error) || !checkView(found, values.size(), sortType, sortIndex, error) ||
        (maxUpdates > kMaxUpdatesLimit && !refuse(error, "Invalid maxUpdates")) ||
        !checkCombinations(found, keys, values, sessions, concurrent, error)) {
      return false;
    }
    if (version >= TAV_VERSION_UNSUPPORTED && version <= TAV_VERSION_LEGACY_2 && !checkLegacy(keys, values, error)) {
      return false;
    }
  }
  if (version <= TAV_VERSION_UNSUPPORTED) return refuse(error, "This version is not supported");
  return filter.isValid(error);
}

bool NetworkKovaRequest::isValid(std::string& error) { return isValid(TavVersion(TAV_VERSION_CURRENT), error); }

int NetworkKovaRequest::getMinimalValidVersion(std::string& error) {
  for (int version = TAV_VERSION_UNSUPPORTED; version <= TAV_VERSION_CURRENT; ++version) {
    if (isValid(TavVersion(version), error)) return version;
  }
  return TAV_VERSION_NONE;
}
