#include "lytFilterParser/filter/ContentFilterBase.h"

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/ValueTypeTable.h"

ContentFilterBase::ContentFilterBase() : AtomFilter(TAV_NO_TYPE, false) {}

ContentFilterBase::ContentFilterBase(strList& tokens, strIter& cur) : AtomFilter(TAV_NO_TYPE, false) {
  lytFilterParser::detail::Reader::content(*this, tokens, cur);
}

ContentFilterBase::ContentFilterBase(TavValType type, bool negated, const TavEntityArray& list)
    : AtomFilter(type, negated), entities(list) {}

ContentFilterBase::~ContentFilterBase() = default;

void ContentFilterBase::parseFilterType(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) lytFilterParser::detail::fail("Expected type at this point but there is no data");
  filterType = lytFilterParser::getValueType(*cur);
  ++cur;
}

void ContentFilterBase::parseEntities(strList& tokens, strIter& cur) { entities.parse(tokens, cur); }

// Overridable in steps; the parsing constructor reads without the virtual calls.
void ContentFilterBase::parse(strList& tokens, strIter& cur) {
  parseFilterType(tokens, cur);
  parseNot(tokens, cur);
  parseEntities(tokens, cur);
}

template <class Tokens>
void lytFilterParser::detail::Reader::content(ContentFilterBase& filter, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  filter.filterType = valueType(*cur);
  ++cur;
  negation(filter, tokens, cur);
  entities(filter.entities, tokens, cur);
}

LFP_INSTANTIATE_READER(content, ContentFilterBase&);

std::string ContentFilterBase::dumpFilterType() const { return lytFilterParser::dumpValueType(filterType); }

std::string ContentFilterBase::dumpEntities() const { return entities.dump(); }

bool ContentFilterBase::compare(const ContentFilterBase& other) const {
  return filterType == other.filterType && negation == other.negation && entities == other.entities;
}

bool ContentFilterBase::operator==(const ContentFilterBase& other) const { return compare(other); }

bool ContentFilterBase::takesModuleNames() const {
  return filterType == TAV_SRC || filterType == TAV_DST || filterType == TAV_IP || filterType == TAV_TUNNEL;
}

void ContentFilterBase::getModuleNames(strList& names) const {
  if (takesModuleNames()) entities.getModuleNames(names);
}

bool ContentFilterBase::setModuleNames(strIter& oldName, strIter& newName) {
  if (takesModuleNames()) entities.setModuleNames(oldName, newName);
  return true;
}
