#include "lytFilterParser/filter/ContentFilter.h"

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/ValueTypeTable.h"

ContentFilter::ContentFilter(strList& tokens, strIter& cur) : ContentFilterBase(tokens, cur) {}

ContentFilter::ContentFilter(TavValType type, bool negated, const TavEntityArray& list)
    : ContentFilterBase(type, negated, list) {}

ContentFilter::~ContentFilter() = default;

void ContentFilter::appendTo(lytFilterParser::detail::Writer& out) const {
  out << "-f " << lytFilterParser::detail::valueTypeKeyword(filterType);
  out << (negation ? " not " : "  ");
  entities.appendTo(out);
  out << ' ';
}

std::string ContentFilter::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

AbstractFilter* ContentFilter::clone() const { return new ContentFilter(filterType, negation, entities); }
