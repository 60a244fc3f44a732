#include "lytFilterParser/filter/InterfaceAtomFilter.h"

#include "lytFilterParser/detail/Text.h"

InterfaceAtomFilter::InterfaceAtomFilter(strList& tokens, strIter& cur) : AtomFilter(TAV_INTERFACE, false) {
  // The factory chose this class by the keyword under the cursor.
  if (cur != tokens.end()) ++cur;
  parseNot(tokens, cur);
  parseInterfaceInfoList(tokens, cur);
}

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfoList& list, bool negated)
    : AtomFilter(TAV_INTERFACE, negated), interfaces(list) {}

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfo& item, bool negated) : AtomFilter(TAV_INTERFACE, negated) {
  interfaces.push_back(item);
}

InterfaceAtomFilter::~InterfaceAtomFilter() = default;

void InterfaceAtomFilter::parseInterfaceInfoList(strList& tokens, strIter& cur) {
  while (cur != tokens.end()) {
    const std::string& token = *cur;
    if (token[0] == '-' || lytFilterParser::detail::isChar(token, ']')) break;
    interfaces.push_back(InterfaceInfo(tokens, cur));
    ++cur;
  }
}

namespace {

void appendItems(const InterfaceInfoList& items, std::string& out) {
  for (const InterfaceInfo& item : items) {
    out += ' ';
    item.appendTo(out);
    out += ' ';
  }
}

}  // namespace

std::string InterfaceAtomFilter::dumpInterfaceInfoList() const {
  std::string out;
  appendItems(interfaces, out);
  return out;
}

void InterfaceAtomFilter::appendTo(std::string& out) const {
  out += negation ? "-f interface not " : "-f interface  ";
  appendItems(interfaces, out);
}

std::string InterfaceAtomFilter::dump() const {
  std::string out;
  appendTo(out);
  return out;
}

void InterfaceAtomFilter::getModuleNames(strList&) const {}

bool InterfaceAtomFilter::setModuleNames(strIter&, strIter&) { return true; }

AbstractFilter* InterfaceAtomFilter::clone() const { return new InterfaceAtomFilter(interfaces, negation); }

std::string InterfaceAtomFilter::dumpFilterType() const { return "interface"; }
