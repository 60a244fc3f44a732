#include "lytFilterParser/entity/TavEntityArray.h"

#include <tuple>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/Unordered.h"

TavEntityArray::TavEntityArray(strList& tokens) {
  entities.reserve(tokens.size());
  for (const std::string& token : tokens) entities.emplace_back(token);
}

bool TavEntityArray::operator==(const TavEntityArray& other) const {
  if (entities.size() != other.entities.size()) return false;
  return lytFilterParser::detail::everyItemIn(entities, other.entities, [](const TavEntity& a, const TavEntity& b) {
    return std::tie(a.getName(), a.getResolvedName()) < std::tie(b.getName(), b.getResolvedName());
  });
}

void TavEntityArray::getModuleNames(strList& names) const {
  for (const TavEntity& entity : entities) names.push_back(entity.getName());
}

bool TavEntityArray::setModuleNames(strIter& oldName, strIter& newName) {
  for (TavEntity& entity : entities) {
    if (entity.getName() != *oldName) lytFilterParser::detail::fail(*oldName);
    entity.setResolvedName(*newName);
    ++oldName;
    ++newName;
  }
  return true;
}
