#include "lytFilterParser/filter/ContentFilter.h"

ContentFilter::ContentFilter(strList& tokens, strIter& cur) : ContentFilterBase(tokens, cur) {}

ContentFilter::ContentFilter(TavValType type, bool negated, const TavEntityArray& list)
    : ContentFilterBase(type, negated, list) {}

ContentFilter::~ContentFilter() = default;

AbstractFilter* ContentFilter::clone() const { return new ContentFilter(filterType, negation, entities); }
