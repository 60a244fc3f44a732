// The value types as one table: every property of a type on its row, for the
// readers, writers, validation, the legacy translator and the vocabulary.
// Internal: not installed.
#ifndef LYTFILTERPARSER_VOCAB_VALUETYPETABLE_H
#define LYTFILTERPARSER_VOCAB_VALUETYPETABLE_H

#include "lytFilterParser/detail/Rows.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/ValueType.h"

namespace lytFilterParser {
namespace detail {

// Where a value type may stand, and what it brings there (bits of ValueTypeRow::places).
enum ValueTypePlace : unsigned {
  kInFilter = 1u << 0,            // an atom filter may test it
  kAsKey = 1u << 1,               // a key column may have it
  kAsValue = 1u << 2,             // a value column may have it
  kLegacyKey = 1u << 3,           // older peers group by it
  kLegacyValue = 1u << 4,         // older peers measure it
  kLegacyFilter = 1u << 5,        // a filter word of the legacy syntax
  kModuleNames = 1u << 6,         // a content filter's entities take part in module-name substitution
  kFirstKeyOnly = 1u << 7,        // a key only in the first place
  kNeedsSessionValues = 1u << 8,  // as a key, every value must be a session count
  kNotWithSession = 1u << 9,      // as a key, no session value may be grouped by it
};

struct ValueTypeRow {
  TavValType type;
  std::string_view keyword;
  bool written;  // telNumber is read, never written
  QULET_VT kovaCode;
  unsigned places;
  unsigned valueModes;          // accumulation modes a value column takes, a bit per TavAccType
  int rateBecomes;              // what validation completes "rate" to; -1 keeps it
  const char* filteredMessage;  // refusal of column options that restrict traffic; nullptr allows them
  std::string_view meaning;
};

constexpr unsigned accumulationBit(TavAccType acc) { return 1u << static_cast<unsigned>(acc); }

inline constexpr unsigned kAddressPlaces = kInFilter | kAsKey | kLegacyKey | kLegacyFilter | kModuleNames;
inline constexpr unsigned kByteModes =
    accumulationBit(TAV_ACC_RATE) | accumulationBit(TAV_ACC_LINEUTIL) | accumulationBit(TAV_ACC_SUM);

// Every value type on one row, by code. Adding a type is adding a row here
// (and its code to TavValType).
inline constexpr ValueTypeRow kValueTypes[] = {
    {TAV_SVC, "svc", true, QULET_VT_STRING, kInFilter | kAsKey | kLegacyKey | kLegacyFilter, 0, -1, nullptr, "service"},
    {TAV_SRC, "src", true, QULET_VT_STRING, kAddressPlaces, 0, -1, nullptr, "source: address, subnet or module name"},
    {TAV_DST, "dst", true, QULET_VT_STRING, kAddressPlaces, 0, -1, nullptr,
     "destination: address, subnet or module name"},
    {TAV_IP, "ip", true, QULET_VT_STRING, kAddressPlaces | kFirstKeyOnly, 0, -1, nullptr,
     "address on either side; only the first key"},
    {TAV_FWRULE, "fwrule", true, QULET_VT_STRING, kInFilter | kAsKey | kLegacyKey | kNotWithSession, 0, -1, nullptr,
     "firewall rule"},
    {TAV_QSRULE, "qsrule", true, QULET_VT_STRING, kInFilter | kAsKey | kLegacyKey | kNotWithSession, 0, -1, nullptr,
     "quality-of-service rule"},
    {TAV_CONNID, "connId", true, QULET_VT_INT32, kInFilter | kAsKey | kNotWithSession, 0, -1, nullptr,
     "connection id: one row per connection"},
    {TAV_URL, "url", true, QULET_VT_STRING, kInFilter | kAsKey | kNeedsSessionValues, 0, -1, nullptr,
     "URL; as a key, with session values only"},
    {TAV_TELNUMBER, "telNumber", false, QULET_VT_STRING, kAsKey | kNotWithSession, 0, -1, nullptr, "telephone number"},
    {TAV_INTERFACE, "interface", true, QULET_VT_STRING, kInFilter | kAsKey, 0, -1, nullptr,
     "network interface; in a filter, NAME or NAME,in or NAME,out"},
    {TAV_ORIENTATION, "orientation", true, QULET_VT_INT32, kInFilter | kAsKey | kNotWithSession, 0, -1, nullptr,
     "traffic orientation"},
    {TAV_AB, "ab", true, QULET_VT_INT64, kAsValue, kByteModes, -1, nullptr, "application bytes"},
    {TAV_WB, "wb", true, QULET_VT_INT64, kAsValue | kLegacyValue, kByteModes, -1, nullptr, "wire bytes"},
    {TAV_PKT, "pkt", true, QULET_VT_INT64, kAsValue | kLegacyValue,
     accumulationBit(TAV_ACC_RATE) | accumulationBit(TAV_ACC_SUM), -1, nullptr, "packets"},
    {TAV_CONN, "conn", true, QULET_VT_INT64, kAsValue | kLegacyValue,
     accumulationBit(TAV_ACC_CONCURRENT) | accumulationBit(TAV_ACC_NEW), TAV_ACC_CONCURRENT,
     "Can't use Per Connection with column filter", "connections: concurrent or new"},
    {TAV_SESSION, "session", true, QULET_VT_INT64, kAsValue, accumulationBit(TAV_ACC_NEW), TAV_ACC_NEW,
     "Can't use Per Session with column filter", "new sessions"},
    {TAV_PKTRANGE, "pktRange", true, QULET_VT_STRING, kAsKey | kNotWithSession, 0, -1, nullptr,
     "packet size range; as a key, with range entities"},
    {TAV_TUNNEL, "tunnel", true, QULET_VT_STRING, kInFilter | kAsKey | kModuleNames | kFirstKeyOnly | kNotWithSession,
     0, -1, nullptr, "tunnel; only the first key"},
    {TAV_TUNNELTYPE, "tunnelType", true, QULET_VT_INT32, kInFilter | kAsKey | kNotWithSession, 0, -1, nullptr,
     "tunnel type"},
    {TAV_CITRIX, "citrix", true, QULET_VT_STRING, kAsKey | kNotWithSession, 0, -1, nullptr, "citrix application"},
    {TAV_WDATTACK, "wdAttack", true, QULET_VT_STRING, kInFilter | kAsKey | kFirstKeyOnly | kNeedsSessionValues, 0, -1,
     nullptr, "web defence attack; only the first key, with session values only"},
};

constexpr bool rowsInCodeOrder() {
  int code = 0;
  for (const ValueTypeRow& row : kValueTypes) {
    if (row.type != code++) return false;
  }
  return true;
}
static_assert(rowsInCodeOrder(), "valueTypeRow looks a type up by its code");

// The row of `type`; nullptr outside 0..20.
inline const ValueTypeRow* valueTypeRow(TavValType type) {
  const unsigned index = static_cast<unsigned>(type);
  return index < sizeof kValueTypes / sizeof kValueTypes[0] ? &kValueTypes[index] : nullptr;
}
// Whether `type` has a row with every bit of `place`.
inline bool hasPlace(TavValType type, unsigned place) {
  const ValueTypeRow* row = valueTypeRow(type);
  return row != nullptr && (row->places & place) == place;
}

// Throws "Not a valid argument for type".
[[noreturn]] LFP_HIDDEN void refuseValueType();

// The written keyword of `type`; throws "Not a valid argument for type" for
// a type without one, as dumpValueType does.
inline std::string_view valueTypeKeyword(TavValType type) {
  const ValueTypeRow* row = valueTypeRow(type);
  if (row == nullptr || !row->written) refuseValueType();
  return row->keyword;
}

// The row of an exact, case-sensitive keyword, or nullptr.
inline const ValueTypeRow* findValueType(std::string_view keyword) {
  for (const ValueTypeRow& row : kValueTypes) {
    if (sameWord(keyword, row.keyword)) return &row;
  }
  return nullptr;
}

// getValueType for a token read in place.
LFP_HIDDEN TavValType valueType(std::string_view keyword);

}  // namespace detail
}  // namespace lytFilterParser

#endif
