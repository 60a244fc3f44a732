// One place that tells the library's filter classes apart: visit() hands a
// node to the overload for its exact class, and any other class (a caller's
// own) to the AbstractFilter overload. Internal: not installed.
#ifndef LYTFILTERPARSER_FILTER_FILTERVISIT_H
#define LYTFILTERPARSER_FILTER_FILTERVISIT_H

#include <string>
#include <typeinfo>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/filter/AbstractFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

namespace lytFilterParser {
namespace detail {

template <class Visitor>
decltype(auto) visit(const AbstractFilter& node, Visitor&& visitor) {
  const std::type_info& type = typeid(node);
  if (type == typeid(Filter)) return visitor(static_cast<const Filter&>(node));
  if (type == typeid(ContentFilter)) return visitor(static_cast<const ContentFilter&>(node));
  if (type == typeid(InterfaceAtomFilter)) return visitor(static_cast<const InterfaceAtomFilter&>(node));
  return visitor(node);
}

// Refuses a compound filter nested deeper than the readers and writers go.
inline void checkNesting(int depth) {
  if (depth > Filter::maxNestingDepth) {
    fail("Filter nesting is deeper than the limit of " + std::to_string(Filter::maxNestingDepth) + " levels");
  }
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
