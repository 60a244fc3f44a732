#include "lytFilterParser/filter/InterfaceAtomFilter.h"

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfoList& list, bool negated)
    : AtomFilter(TAV_INTERFACE, negated), interfaces(list) {}

InterfaceAtomFilter::InterfaceAtomFilter(const InterfaceInfo& item, bool negated) : AtomFilter(TAV_INTERFACE, negated) {
  interfaces.push_back(item);
}

InterfaceAtomFilter::~InterfaceAtomFilter() = default;

void InterfaceAtomFilter::getModuleNames(strList&) const {}

bool InterfaceAtomFilter::setModuleNames(strIter&, strIter&) { return true; }

AbstractFilter* InterfaceAtomFilter::clone() const { return new InterfaceAtomFilter(interfaces, negation); }
