#include "lytFilterParser/filter/InterfaceInfoList.h"

#include "lytFilterParser/detail/Unordered.h"

bool InterfaceInfoList::operator==(const InterfaceInfoList& other) const {
  if (items.size() != other.items.size()) return false;
  return lytFilterParser::detail::everyItemIn(items, other.items,
                                              [](const InterfaceInfo& a, const InterfaceInfo& b) { return a < b; });
}
