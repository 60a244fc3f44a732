#include "lytFilterParser/entity/TavEntity.h"

#include <utility>

// Reading ("name<>resolved") and writing are with the rest of the syntax,
// in request/Reader.cpp and request/Printer.cpp.

TavEntity::TavEntity(std::string name_, std::string resolvedName_)
    : name(std::move(name_)), resolvedName(std::move(resolvedName_)) {}

bool TavEntity::operator==(const TavEntity& other) const {
  return resolvedName == other.resolvedName && name == other.name;
}
