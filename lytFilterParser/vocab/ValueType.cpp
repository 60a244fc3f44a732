#include "lytFilterParser/vocab/ValueType.h"

#include <cstring>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/ValueTypeTable.h"

namespace lytFilterParser {
namespace {

struct KeywordEntry {
  const char* keyword;
  TavValType type;
};

// The reader's order of comparison; telNumber is accepted here only.
constexpr KeywordEntry kReadOrder[] = {
    {"svc", TAV_SVC},           {"src", TAV_SRC},
    {"dst", TAV_DST},           {"ip", TAV_IP},
    {"fwrule", TAV_FWRULE},     {"qsrule", TAV_QSRULE},
    {"connId", TAV_CONNID},     {"url", TAV_URL},
    {"telNumber", TAV_TELNUMBER}, {"interface", TAV_INTERFACE},
    {"ab", TAV_AB},             {"wb", TAV_WB},
    {"pkt", TAV_PKT},           {"conn", TAV_CONN},
    {"session", TAV_SESSION},   {"pktRange", TAV_PKTRANGE},
    {"tunnel", TAV_TUNNEL},     {"tunnelType", TAV_TUNNELTYPE},
    {"orientation", TAV_ORIENTATION}, {"citrix", TAV_CITRIX},
    {"wdAttack", TAV_WDATTACK},
};

// Kova codes by value.
constexpr QULET_VT kKovaCodes[] = {
    QULET_VT_STRING, QULET_VT_STRING, QULET_VT_STRING, QULET_VT_STRING,  // svc src dst ip
    QULET_VT_STRING, QULET_VT_STRING, QULET_VT_INT32,  QULET_VT_STRING,  // fwrule qsrule connId url
    QULET_VT_STRING, QULET_VT_STRING, QULET_VT_INT32,  QULET_VT_INT64,   // telNumber interface orientation ab
    QULET_VT_INT64,  QULET_VT_INT64,  QULET_VT_INT64,  QULET_VT_INT64,   // wb pkt conn session
    QULET_VT_STRING, QULET_VT_STRING, QULET_VT_INT32,  QULET_VT_STRING,  // pktRange tunnel tunnelType citrix
    QULET_VT_STRING,                                                     // wdAttack
};

}  // namespace

namespace detail {

const char* valueTypeKeyword(TavValType type) {
  static constexpr const char* kKeywords[] = {
      "svc",      "src",    "dst",       "ip",          "fwrule", "qsrule",  "connId",
      "url",      nullptr,  "interface", "orientation", "ab",     "wb",      "pkt",
      "conn",     "session", "pktRange", "tunnel",      "tunnelType", "citrix", "wdAttack",
  };
  const unsigned index = static_cast<unsigned>(type);
  return index < sizeof kKeywords / sizeof kKeywords[0] ? kKeywords[index] : nullptr;
}

}  // namespace detail

std::string dumpValueType(TavValType type) {
  const char* keyword = detail::valueTypeKeyword(type);
  if (keyword == nullptr) detail::fail("Not a valid argument for type");
  return keyword;
}

TavValType getValueType(const std::string& keyword) {
  for (const KeywordEntry& entry : kReadOrder) {
    if (keyword == entry.keyword) return entry.type;
  }
  detail::fail("Invalid type: " + keyword);
}

QULET_VT getKovaType(TavValType type) {
  const unsigned index = static_cast<unsigned>(type);
  if (index >= sizeof kKovaCodes / sizeof kKovaCodes[0]) detail::fail("not a valid argument for getKovaType");
  return kKovaCodes[index];
}

}  // namespace lytFilterParser
