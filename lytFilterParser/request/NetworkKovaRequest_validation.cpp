// What a peer of a given version can serve. The rules that are tables stay
// tables here; the order of the checks decides which message a request gets.
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace {

constexpr unsigned bit(TavValType type) { return 1u << static_cast<unsigned>(type); }
constexpr unsigned accBit(TavAccType acc) { return 1u << static_cast<unsigned>(acc); }

bool hasType(unsigned mask, TavValType type) {
  const unsigned index = static_cast<unsigned>(type);
  return index < 32 && (mask & (1u << index)) != 0;
}

constexpr std::size_t kMaxKeys = 4;
constexpr std::size_t kMaxValues = 6;
constexpr std::size_t kMaxEntriesPerKey = 100;
constexpr int kMaxUpdatesLimit = 200;

// Types a key column may have.
constexpr unsigned kKeyTypes = bit(TAV_SVC) | bit(TAV_SRC) | bit(TAV_DST) | bit(TAV_IP) | bit(TAV_FWRULE) |
                               bit(TAV_QSRULE) | bit(TAV_CONNID) | bit(TAV_URL) | bit(TAV_TELNUMBER) |
                               bit(TAV_INTERFACE) | bit(TAV_ORIENTATION) | bit(TAV_PKTRANGE) | bit(TAV_TUNNEL) |
                               bit(TAV_TUNNELTYPE) | bit(TAV_CITRIX) | bit(TAV_WDATTACK);
// Keys that may stand only first.
constexpr unsigned kFirstOnlyKeys = bit(TAV_IP) | bit(TAV_TUNNEL) | bit(TAV_WDATTACK);
// Keys that need session values.
constexpr unsigned kUrlLikeKeys = bit(TAV_URL) | bit(TAV_WDATTACK);
// Keys a session value cannot be grouped by.
constexpr unsigned kSessionIncompatibleKeys = bit(TAV_FWRULE) | bit(TAV_QSRULE) | bit(TAV_TELNUMBER) |
                                              bit(TAV_CONNID) | bit(TAV_PKTRANGE) | bit(TAV_TUNNEL) |
                                              bit(TAV_TUNNELTYPE) | bit(TAV_ORIENTATION) | bit(TAV_CITRIX);
// Types and modes older peers take.
constexpr unsigned kLegacyKeyTypes =
    bit(TAV_SVC) | bit(TAV_SRC) | bit(TAV_DST) | bit(TAV_IP) | bit(TAV_FWRULE) | bit(TAV_QSRULE);
constexpr unsigned kLegacyValueTypes = bit(TAV_WB) | bit(TAV_PKT) | bit(TAV_CONN);

// Accumulation modes by value type, and the mode that "rate" becomes.
struct ValueRule {
  TavValType type;
  unsigned allowedModes;
  int rateBecomes;  // -1: rate stays rate
  const char* filterMessage;  // nullptr: column options are allowed
};

constexpr ValueRule kValueRules[] = {
    {TAV_AB, accBit(TAV_ACC_RATE) | accBit(TAV_ACC_LINEUTIL) | accBit(TAV_ACC_SUM), -1, nullptr},
    {TAV_WB, accBit(TAV_ACC_RATE) | accBit(TAV_ACC_LINEUTIL) | accBit(TAV_ACC_SUM), -1, nullptr},
    {TAV_PKT, accBit(TAV_ACC_RATE) | accBit(TAV_ACC_SUM), -1, nullptr},
    {TAV_CONN, accBit(TAV_ACC_CONCURRENT) | accBit(TAV_ACC_NEW), TAV_ACC_CONCURRENT,
     "Can't use Per Connection with column filter"},
    {TAV_SESSION, accBit(TAV_ACC_NEW), TAV_ACC_NEW, "Can't use Per Session with column filter"},
};

const ValueRule* valueRule(TavValType type) {
  for (const ValueRule& rule : kValueRules) {
    if (rule.type == type) return &rule;
  }
  return nullptr;
}

bool allowsMode(const ValueRule& rule, TavAccType acc) {
  const unsigned index = static_cast<unsigned>(acc);
  return index < 32 && (rule.allowedModes & (1u << index)) != 0;
}

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

}  // namespace

bool NetworkKovaRequest::isValid(TavVersion version, std::string& error) {
  if (keys.empty()) return refuse(error, "At least one key is required");
  if (values.empty()) return refuse(error, "At least one value is required");

  if (version <= 3) {
    if (keys.size() > kMaxKeys) return refuse(error, "Number of keys reach the max number");
    if (values.size() > kMaxValues) return refuse(error, "Number of vals reach the max number");

    const std::size_t entriesPerKey = keys[0].getEntities().size();
    int qsruleKeys = 0, connIdKeys = 0, interfaceKeys = 0, pktRangeKeys = 0, firstOnlyKeys = 0, urlLikeKeys = 0;
    for (std::size_t position = 0; position < keys.size(); ++position) {
      const TavColumn& key = keys[position];
      const TavValType type = key.getValueType();
      if (key.getEntities().size() != entriesPerKey) return refuse(error, "Number of entries for each key must be equal");
      if (!hasType(kKeyTypes, type)) return refuse(error, "Invalid type for key: ", type);
      qsruleKeys += type == TAV_QSRULE;
      connIdKeys += type == TAV_CONNID;
      interfaceKeys += type == TAV_INTERFACE;
      pktRangeKeys += type == TAV_PKTRANGE;
      firstOnlyKeys += hasType(kFirstOnlyKeys, type);
      urlLikeKeys += hasType(kUrlLikeKeys, type);
      if (hasType(kFirstOnlyKeys, type) && position != 0) {
        return refuse(error, "The following types (IP, Tunnel, wdAttack) can be used only as the first key");
      }
    }
    if (firstOnlyKeys > 1) return refuse(error, "Can't use more than ones of the following keys (IP, Tunnel)");

    int sessionValues = 0, concurrentValues = 0;
    for (TavColumn& value : values) {
      const TavValType type = value.getValueType();
      const ValueRule* rule = valueRule(type);
      if (rule == nullptr) return refuse(error, "Invalid type for value: ", type);
      if (value.getAccType() == TAV_ACC_RATE && rule->rateBecomes >= 0) {
        value.setAccType(static_cast<TavAccType>(rule->rateBecomes));
      }
      if (!allowsMode(*rule, value.getAccType())) return refuse(error, "Invalid accumulation mode");
      if (rule->filterMessage != nullptr && value.getColumnFilter().restrictsTraffic()) {
        return refuse(error, rule->filterMessage);
      }
      sessionValues += type == TAV_SESSION;
      concurrentValues += value.getAccType() == TAV_ACC_CONCURRENT;
      if (!value.getEntities().empty()) return refuse(error, "Invalid options for value");
    }

    if (entriesPerKey == 0) {
      if (sortType == TAV_SORT_NONE) sortType = TAV_SORT_TOP;
      if (sortIndex < 1 || static_cast<std::size_t>(sortIndex) > values.size()) return refuse(error, "Invalid Sort index");
      if (pktRangeKeys > 0) return refuse(error, "Packet size distribution key must followed by ranges entities");
    } else if (entriesPerKey > kMaxEntriesPerKey) {
      return refuse(error, "Number of entries reach the max number");
    }

    if (maxUpdates > kMaxUpdatesLimit) return refuse(error, "Invalid maxUpdates");

    if (concurrentValues > 0) {
      if (connIdKeys > 0) return refuse(error, "Can't use Concurrent Connections with Individual views");
      if (qsruleKeys > 0) return refuse(error, "Can't use Concurrent Connections views with QS rules");
      if (interfaceKeys > 0) return refuse(error, "Can't use Concurrent Connections views with Interface");
    }

    if (sessionValues > 0) {
      for (const TavColumn& key : keys) {
        if (hasType(kSessionIncompatibleKeys, key.getValueType())) {
          // telNumber has no keyword: the value-type writer's fault escapes here.
          std::string message = "Can't use " + lytFilterParser::dumpValueType(key.getValueType()) + " with session value";
          error = std::move(message);
          return false;
        }
      }
    }

    if (urlLikeKeys > 0) {
      for (const TavColumn& value : values) {
        if (value.getValueType() != TAV_SESSION) {
          return refuse(error, "Can't use wdAttack or url with none session value: ", value.getValueType());
        }
      }
    }

    if (version >= 0 && version <= 2) {
      if (keys.size() > 1 && !(keys.size() == 2 && keys[1].getValueType() == TAV_CONNID)) {
        return refuse(error, "Support only one key");
      }
      if (values.size() > 1) return refuse(error, "Support only one value column");
      if (!hasType(kLegacyKeyTypes, keys[0].getValueType())) {
        return refuse(error, "Invalid type for key: ", keys[0].getValueType());
      }
      if (!hasType(kLegacyValueTypes, values[0].getValueType())) {
        return refuse(error, "Invalid type for value: ", values[0].getValueType());
      }
      if (values[0].getAccType() == TAV_ACC_SUM) return refuse(error, "Invalid accumulation mode");
    }
  }

  if (version <= 0) return refuse(error, "This version is not supported");
  return filter.isValid(error);
}

bool NetworkKovaRequest::isValid(std::string& error) { return isValid(TavVersion(3), error); }

int NetworkKovaRequest::getMinimalValidVersion(std::string& error) {
  for (int version = 0; version <= 3; ++version) {
    if (isValid(TavVersion(version), error)) return version;
  }
  return 4;
}
