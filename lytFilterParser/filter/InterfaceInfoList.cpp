#include "lytFilterParser/filter/InterfaceInfoList.h"

#include <algorithm>

bool InterfaceInfoList::operator==(const InterfaceInfoList& other) const {
  if (items.size() != other.items.size()) return false;
  for (const InterfaceInfo& item : items) {
    if (std::find(other.items.begin(), other.items.end(), item) == other.items.end()) return false;
  }
  return true;
}
