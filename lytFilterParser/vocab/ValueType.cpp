#include "lytFilterParser/vocab/ValueType.h"

#include <cstring>

#include "lytFilterParser/detail/Keyword.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/ValueTypeTable.h"

namespace lytFilterParser {
namespace {

using detail::keyword;

struct KeywordEntry {
  detail::Keyword word;
  TavValType type;
};

// The reader's order of comparison; telNumber is accepted here only.
constexpr KeywordEntry kReadOrder[] = {
    {keyword("svc"), TAV_SVC},           {keyword("src"), TAV_SRC},
    {keyword("dst"), TAV_DST},           {keyword("ip"), TAV_IP},
    {keyword("fwrule"), TAV_FWRULE},     {keyword("qsrule"), TAV_QSRULE},
    {keyword("connId"), TAV_CONNID},     {keyword("url"), TAV_URL},
    {keyword("telNumber"), TAV_TELNUMBER}, {keyword("interface"), TAV_INTERFACE},
    {keyword("ab"), TAV_AB},             {keyword("wb"), TAV_WB},
    {keyword("pkt"), TAV_PKT},           {keyword("conn"), TAV_CONN},
    {keyword("session"), TAV_SESSION},   {keyword("pktRange"), TAV_PKTRANGE},
    {keyword("tunnel"), TAV_TUNNEL},     {keyword("tunnelType"), TAV_TUNNELTYPE},
    {keyword("orientation"), TAV_ORIENTATION}, {keyword("citrix"), TAV_CITRIX},
    {keyword("wdAttack"), TAV_WDATTACK},
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

std::string_view valueTypeKeyword(TavValType type) {
  static constexpr std::string_view kKeywords[] = {
      "svc",      "src",    "dst",       "ip",          "fwrule", "qsrule",  "connId",
      "url",      {},       "interface", "orientation", "ab",     "wb",      "pkt",
      "conn",     "session", "pktRange", "tunnel",      "tunnelType", "citrix", "wdAttack",
  };
  const unsigned index = static_cast<unsigned>(type);
  const std::string_view keyword = index < sizeof kKeywords / sizeof kKeywords[0] ? kKeywords[index] : std::string_view();
  if (keyword.empty()) fail("Not a valid argument for type");
  return keyword;
}

}  // namespace detail

std::string dumpValueType(TavValType type) {
  return std::string(detail::valueTypeKeyword(type));
}

namespace detail {

TavValType valueType(std::string_view keyword) {
  for (const KeywordEntry& entry : kReadOrder) {
    if (equals(keyword, entry.word)) return entry.type;
  }
  fail(message("Invalid type: ", keyword));
}

}  // namespace detail

TavValType getValueType(const std::string& keyword) { return detail::valueType(keyword); }

QULET_VT getKovaType(TavValType type) {
  const unsigned index = static_cast<unsigned>(type);
  if (index >= sizeof kKovaCodes / sizeof kKovaCodes[0]) detail::fail("not a valid argument for getKovaType");
  return kKovaCodes[index];
}

}  // namespace lytFilterParser
