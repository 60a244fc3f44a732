#include "lytFilterParser/filter/AtomFilter.h"

#include "lytFilterParser/detail/Reader.h"
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

void AtomFilter::parseNot(strList& tokens, strIter& cur) { lytFilterParser::detail::Reader::negation(*this, tokens, cur); }

std::string AtomFilter::dumpNot() const { return negation ? "not" : ""; }

AtomFilter* AtomFilter::getAtomFilter(strList& tokens, strIter& cur) {
  return lytFilterParser::detail::Reader::atom(tokens, cur).release();
}

template <class Tokens>
void lytFilterParser::detail::Reader::negation(AtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  filter.negation = false;
  if (cur == tokens.end()) return;
  const std::string_view token = *cur;
  if (is(token, "not") || is(token, "NOT")) {
    filter.negation = true;
    ++cur;
  }
}

LFP_INSTANTIATE_READER(negation, AtomFilter&);

template <class Tokens>
std::unique_ptr<AtomFilter> lytFilterParser::detail::Reader::atom(Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  if (is(*cur, "interface")) {
    std::unique_ptr<InterfaceAtomFilter> filter(new InterfaceAtomFilter(InterfaceInfoList(), false));
    interfaceFilter(*filter, tokens, cur);
    return filter;
  }
  std::unique_ptr<ContentFilter> filter(new ContentFilter(TAV_NO_TYPE, false, TavEntityArray()));
  content(*filter, tokens, cur);
  return filter;
}

#define LFP_INSTANTIATE_ATOM(Tokens) \
  template std::unique_ptr<AtomFilter> lytFilterParser::detail::Reader::atom<Tokens>(Tokens&, Tokens::iterator&);
LFP_FOR_EACH_TOKEN_SEQUENCE(LFP_INSTANTIATE_ATOM)
#undef LFP_INSTANTIATE_ATOM
