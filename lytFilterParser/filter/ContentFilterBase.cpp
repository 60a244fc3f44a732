#include "lytFilterParser/filter/ContentFilterBase.h"

#include "lytFilterParser/vocab/ValueTypeTable.h"

ContentFilterBase::ContentFilterBase() : AtomFilter(TAV_NO_TYPE, false) {}

ContentFilterBase::ContentFilterBase(TavValType type, bool negated, const TavEntityArray& list)
    : AtomFilter(type, negated), entities(list) {}

ContentFilterBase::~ContentFilterBase() = default;

bool ContentFilterBase::compare(const ContentFilterBase& other) const {
  return filterType == other.filterType && negation == other.negation && entities == other.entities;
}

bool ContentFilterBase::operator==(const ContentFilterBase& other) const { return compare(other); }

bool ContentFilterBase::takesModuleNames() const {
  return lytFilterParser::detail::hasPlace(filterType, lytFilterParser::detail::kModuleNames);
}

void ContentFilterBase::getModuleNames(strList& names) const {
  if (takesModuleNames()) entities.getModuleNames(names);
}

bool ContentFilterBase::setModuleNames(strIter& oldName, strIter& newName) {
  if (takesModuleNames()) entities.setModuleNames(oldName, newName);
  return true;
}
