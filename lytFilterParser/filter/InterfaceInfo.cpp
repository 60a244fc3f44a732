#include "lytFilterParser/filter/InterfaceInfo.h"

#include <utility>

InterfaceInfo::InterfaceInfo(std::string name_, TavFilterDirType dir) : name(std::move(name_)), direction(dir) {}

bool InterfaceInfo::operator==(const InterfaceInfo& other) const {
  return name == other.name && direction == other.direction;
}

bool InterfaceInfo::operator<(const InterfaceInfo& other) const {
  const int order = name.compare(other.name);
  return order != 0 ? order < 0 : direction < other.direction;
}
