// The content atom the filter parser builds; writes itself in the current
// syntax ("-f", type, "not" or nothing, entities, each part followed by a blank).
#ifndef LYTFILTERPARSER_FILTER_CONTENTFILTER_H
#define LYTFILTERPARSER_FILTER_CONTENTFILTER_H

#include "lytFilterParser/filter/ContentFilterBase.h"

class LFP_API ContentFilter : public ContentFilterBase {
 public:
  ContentFilter(strList& tokens, strIter& cur);
  ContentFilter(TavValType type, bool negated, const TavEntityArray& list);
  ContentFilter(const ContentFilter& other) = default;
  ContentFilter& operator=(const ContentFilter& other) = default;
  ~ContentFilter() override;

  std::string dump() const override;
  AbstractFilter* clone() const override;
};

#endif
