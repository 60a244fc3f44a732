#include "lytFilterParser/entity/TavEntityArray.h"

#include <algorithm>
#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/Unordered.h"

TavEntityArray::TavEntityArray(strList& tokens) {
  entities.reserve(tokens.size());
  for (const std::string& token : tokens) entities.emplace_back(token);
}

TavEntityArray::TavEntityArray(strList& tokens, strIter& cursor) { parse(tokens, cursor); }

void TavEntityArray::parse(strList& tokens, strIter& cursor) { lytFilterParser::detail::Reader::entities(*this, tokens, cursor); }

namespace {

bool endsEntities(std::string_view token) { return lytFilterParser::detail::firstChar(token) == '-' || lytFilterParser::detail::isChar(token, ']'); }

}  // namespace

template <class Tokens>
void lytFilterParser::detail::Reader::entities(TavEntityArray& array, Tokens& tokens, Iter<Tokens>& cur) {
  // Count first so that a long run of entities is stored without regrowth.
  std::size_t count = 0;
  for (Iter<Tokens> scan = cur; scan != tokens.end() && !endsEntities(*scan); ++scan) ++count;
  if (count == 0) return;
  std::vector<TavEntity>& entities = array.entities;
  const std::size_t needed = entities.size() + count;
  if (needed > entities.capacity()) entities.reserve(std::max(needed, 2 * entities.capacity()));
  for (; count > 0; --count, ++cur) entities.emplace_back(*cur, TavEntity::FromToken());
}

LFP_INSTANTIATE_READER(entities, TavEntityArray&);

void TavEntityArray::appendTo(lytFilterParser::detail::Writer& out) const {
  for (const TavEntity& entity : entities) {
    entity.appendTo(out);
    out << ' ';
  }
}

std::string TavEntityArray::dump() const {
  lytFilterParser::detail::Writer out;
  appendTo(out);
  return out.finish();
}

bool TavEntityArray::operator==(const TavEntityArray& other) const {
  if (entities.size() != other.entities.size()) return false;
  return lytFilterParser::detail::everyItemIn(entities, other.entities, [](const TavEntity& a, const TavEntity& b) {
    const int order = a.getName().compare(b.getName());
    return order != 0 ? order < 0 : a.getResolvedName() < b.getResolvedName();
  });
}

void TavEntityArray::getModuleNames(strList& names) const {
  for (const TavEntity& entity : entities) names.push_back(entity.getName());
}

namespace {

// The substitution walk; `bounded` says whether the list ends are known.
bool substitute(std::vector<TavEntity>& entities, strIter& oldName, const strIter* oldEnd, strIter& newName,
                const strIter* newEnd) {
  for (TavEntity& entity : entities) {
    if (oldEnd != nullptr && oldName == *oldEnd) {
      lytFilterParser::detail::fail("setModuleNames: the list of old names is shorter than the module names");
    }
    if (newEnd != nullptr && newName == *newEnd) {
      lytFilterParser::detail::fail("setModuleNames: the list of new names is shorter than the module names");
    }
    if (entity.getName() != *oldName) lytFilterParser::detail::fail(*oldName);
    entity.setResolvedName(*newName);
    ++oldName;
    ++newName;
  }
  return true;
}

}  // namespace

bool TavEntityArray::setModuleNames(strIter& oldName, strIter& newName) {
  return substitute(entities, oldName, nullptr, newName, nullptr);
}

bool TavEntityArray::setModuleNames(strIter& oldName, strIter oldEnd, strIter& newName, strIter newEnd) {
  return substitute(entities, oldName, &oldEnd, newName, &newEnd);
}
