#include "lytFilterParser/filter/InterfaceAtomFilter.h"

#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Text.h"

InterfaceAtomFilter::InterfaceAtomFilter(strList& tokens, strIter& cur) : AtomFilter(TAV_INTERFACE, false) {
  lytFilterParser::detail::Reader::interfaceFilter(*this, tokens, cur);
}

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfoList& list, bool negated)
    : AtomFilter(TAV_INTERFACE, negated), interfaces(list) {}

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfo& item, bool negated) : AtomFilter(TAV_INTERFACE, negated) {
  interfaces.push_back(item);
}

InterfaceAtomFilter::~InterfaceAtomFilter() = default;

void InterfaceAtomFilter::parseInterfaceInfoList(strList& tokens, strIter& cur) {
  lytFilterParser::detail::Reader::interfaces(*this, tokens, cur);
}

template <class Tokens>
void lytFilterParser::detail::Reader::interfaceFilter(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  // The factory chose this class by the keyword under the cursor.
  if (cur != tokens.end()) ++cur;
  negation(filter, tokens, cur);
  interfaces(filter, tokens, cur);
}

LFP_INSTANTIATE_READER(interfaceFilter, InterfaceAtomFilter&);

template <class Tokens>
void lytFilterParser::detail::Reader::interfaces(InterfaceAtomFilter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  while (cur != tokens.end()) {
    const std::string_view token = *cur;
    if (firstChar(token) == '-' || isChar(token, ']')) break;
    InterfaceInfo item(std::string(), TAV_DIR_BOTH);
    interfaceInfo(item, tokens, cur);
    filter.interfaces.push_back(std::move(item));
    ++cur;
  }
}

LFP_INSTANTIATE_READER(interfaces, InterfaceAtomFilter&);

namespace {

void appendItems(const InterfaceInfoList& items, lytFilterParser::detail::Writer& out) {
  for (const InterfaceInfo& item : items) {
    out << ' ';
    item.appendTo(out);
    out << ' ';
  }
}

}  // namespace

std::string InterfaceAtomFilter::dumpInterfaceInfoList() const {
  lytFilterParser::detail::Writer out;
  appendItems(interfaces, out);
  return out.finish();
}

void InterfaceAtomFilter::appendTo(lytFilterParser::detail::Writer& out) const {
  out << (negation ? "-f interface not " : "-f interface  ");
  appendItems(interfaces, out);
}

std::string InterfaceAtomFilter::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

void InterfaceAtomFilter::getModuleNames(strList&) const {}

bool InterfaceAtomFilter::setModuleNames(strIter&, strIter&) { return true; }

AbstractFilter* InterfaceAtomFilter::clone() const { return new InterfaceAtomFilter(interfaces, negation); }

std::string InterfaceAtomFilter::dumpFilterType() const { return "interface"; }
