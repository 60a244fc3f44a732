// The ordered entities of one content filter or one column: read from a run
// of tokens, written back in order, compared ignoring order.
#ifndef LYTFILTERPARSER_ENTITY_TAVENTITYARRAY_H
#define LYTFILTERPARSER_ENTITY_TAVENTITYARRAY_H

#include <cstddef>
#include <vector>

#include "lytFilterParser/base/TokenList.h"
#include "lytFilterParser/entity/TavEntity.h"

class LFP_API TavEntityArray {
 public:
  TavEntityArray() = default;
  // One entity from every token of the list; the list is not changed.
  explicit TavEntityArray(strList& tokens);
  TavEntityArray(strList& tokens, strIter& cursor);

  // Reads entities up to the end of the list, a token beginning with "-" or
  // a token "]"; that token is left under the cursor.
  void parse(strList& tokens, strIter& cursor);

  // Every entity followed by one blank.
  std::string dump() const;

  // Same length, and every entity of this list has an equal one in `other`
  // (order and multiplicity are not looked at).
  bool operator==(const TavEntityArray& other) const;

  // Module-name collection and substitution: appends every name; checks each
  // name against the old-name cursor (throwing the old name on a mismatch),
  // stores the new name as resolved name and advances both cursors.
  void getModuleNames(strList& names) const;
  bool setModuleNames(strIter& oldName, strIter& newName);

  void add(const TavEntity& entity) { entities.push_back(entity); }
  void add(TavEntity&& entity) { entities.push_back(std::move(entity)); }
  std::size_t size() const { return entities.size(); }
  bool empty() const { return entities.empty(); }
  const TavEntity& operator[](std::size_t i) const { return entities[i]; }
  std::vector<TavEntity>::const_iterator begin() const { return entities.begin(); }
  std::vector<TavEntity>::const_iterator end() const { return entities.end(); }

 private:
  friend struct lytFilterParser::detail::Reader;

  std::vector<TavEntity> entities;
};

#endif
