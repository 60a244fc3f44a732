#include "lytFilterParser/vocab/ValueType.h"

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/vocab/ValueTypeTable.h"

namespace lytFilterParser {
namespace detail {
namespace {

constexpr unsigned mode(TavAccType acc) { return 1u << static_cast<unsigned>(acc); }

constexpr unsigned kAddressPlaces = kInFilter | kAsKey | kLegacyKey | kLegacyFilter | kModuleNames;
constexpr unsigned kByteModes = mode(TAV_ACC_RATE) | mode(TAV_ACC_LINEUTIL) | mode(TAV_ACC_SUM);

// Every value type on one row, by code. Adding a type is adding a row here
// (and its code to TavValType).
constexpr ValueTypeRow kValueTypes[] = {
    {TAV_SVC, "svc", true, QULET_VT_STRING, kInFilter | kAsKey | kLegacyKey | kLegacyFilter, 0, -1, nullptr,
     "service"},
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
    {TAV_TELNUMBER, "telNumber", false, QULET_VT_STRING, kAsKey | kNotWithSession, 0, -1, nullptr,
     "telephone number"},
    {TAV_INTERFACE, "interface", true, QULET_VT_STRING, kInFilter | kAsKey, 0, -1, nullptr,
     "network interface; in a filter, NAME or NAME,in or NAME,out"},
    {TAV_ORIENTATION, "orientation", true, QULET_VT_INT32, kInFilter | kAsKey | kNotWithSession, 0, -1, nullptr,
     "traffic orientation"},
    {TAV_AB, "ab", true, QULET_VT_INT64, kAsValue, kByteModes, -1, nullptr, "application bytes"},
    {TAV_WB, "wb", true, QULET_VT_INT64, kAsValue | kLegacyValue, kByteModes, -1, nullptr, "wire bytes"},
    {TAV_PKT, "pkt", true, QULET_VT_INT64, kAsValue | kLegacyValue, mode(TAV_ACC_RATE) | mode(TAV_ACC_SUM), -1,
     nullptr, "packets"},
    {TAV_CONN, "conn", true, QULET_VT_INT64, kAsValue | kLegacyValue, mode(TAV_ACC_CONCURRENT) | mode(TAV_ACC_NEW),
     TAV_ACC_CONCURRENT, "Can't use Per Connection with column filter", "connections: concurrent or new"},
    {TAV_SESSION, "session", true, QULET_VT_INT64, kAsValue, mode(TAV_ACC_NEW), TAV_ACC_NEW,
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

}  // namespace

Rows<ValueTypeRow> valueTypeRows() { return kValueTypes; }

const ValueTypeRow* valueTypeRow(TavValType type) {
  const unsigned index = static_cast<unsigned>(type);
  return index < sizeof kValueTypes / sizeof kValueTypes[0] ? &kValueTypes[index] : nullptr;
}

bool hasPlace(TavValType type, unsigned place) {
  const ValueTypeRow* row = valueTypeRow(type);
  return row != nullptr && (row->places & place) == place;
}

std::string_view valueTypeKeyword(TavValType type) {
  const ValueTypeRow* row = valueTypeRow(type);
  if (row == nullptr || !row->written) fail("Not a valid argument for type");
  return row->keyword;
}

TavValType valueType(std::string_view keyword) {
  for (const ValueTypeRow& row : kValueTypes) {
    if (row.keyword == keyword) return row.type;
  }
  fail(message("Invalid type: ", keyword));
}

}  // namespace detail

std::string dumpValueType(TavValType type) { return std::string(detail::valueTypeKeyword(type)); }

TavValType getValueType(const std::string& keyword) { return detail::valueType(keyword); }

QULET_VT getKovaType(TavValType type) {
  const detail::ValueTypeRow* row = detail::valueTypeRow(type);
  if (row == nullptr) detail::fail("not a valid argument for getKovaType");
  return row->kovaCode;
}

}  // namespace lytFilterParser
