#include "lytFilterParser/filter/AtomFilter.h"

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

namespace {

// Value types a filter can test, by value.
constexpr bool kAcceptedInFilter[] = {
    true,  true,  true,  true,  true,  true,  true,  true,  // svc src dst ip fwrule qsrule connId url
    false, true,  true,                                     // telNumber interface orientation
    false, false, false, false, false, false,               // ab wb pkt conn session pktRange
    true,  true,  false, true,                              // tunnel tunnelType citrix wdAttack
};

}  // namespace

bool AtomFilter::isValid(std::string& err) const {
  const unsigned index = static_cast<unsigned>(filterType);
  if (index < sizeof kAcceptedInFilter / sizeof kAcceptedInFilter[0] && kAcceptedInFilter[index]) return true;
  // dumpValueType throws for types without a keyword; that fault escapes.
  std::string message = "Invalid Filter Type: " + lytFilterParser::dumpValueType(filterType);
  err = std::move(message);
  return false;
}

void AtomFilter::parseNot(strList& tokens, strIter& cur) {
  negation = false;
  if (cur == tokens.end()) return;
  const std::string& token = *cur;
  if (lytFilterParser::detail::is(token, "not") || lytFilterParser::detail::is(token, "NOT")) {
    negation = true;
    ++cur;
  }
}

std::string AtomFilter::dumpNot() const { return negation ? "not" : ""; }

AtomFilter* AtomFilter::getAtomFilter(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) lytFilterParser::detail::fail("Expected type at this point but there is no data");
  if (lytFilterParser::detail::is(*cur, "interface")) return new InterfaceAtomFilter(tokens, cur);
  return new ContentFilter(tokens, cur);
}
