// One key column (what rows are grouped by) or value column (what is
// measured): its value type, accumulation mode, entities and options.
#ifndef LYTFILTERPARSER_COLUMN_TAVCOLUMN_H
#define LYTFILTERPARSER_COLUMN_TAVCOLUMN_H

#include "lytFilterParser/column/TavColumnFilter.h"
#include "lytFilterParser/entity/TavEntityArray.h"
#include "lytFilterParser/vocab/Codes.h"
#include "lytFilterParser/vocab/ValueType.h"

class LFP_API TavColumn {
 public:
  TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavEntityArray& entities,
            const TavColumnFilter& filter);
  TavColumn(KeyOrValue role, TavValType type, TavAccType acc, const TavColumnFilter& filter);
  // Reads a column from the type token on (the "-k"/"-v" already consumed).
  // A sort token among the options is copied to `sortOption`. Throws
  // "Expected type at this point but there is no data" at the end, "Invalid
  // type: " + the type token, and what parseAccumulationMode and
  // TavColumnFilter::parse throw for its options.
  TavColumn(KeyOrValue role, strList& tokens, strIter& cur, std::string& sortOption);
  TavColumn(const TavColumn& other) = default;
  TavColumn(TavColumn&& other) noexcept = default;
  TavColumn& operator=(const TavColumn& other) = default;
  TavColumn& operator=(TavColumn&& other) noexcept = default;
  virtual ~TavColumn();

  // A heap copy the caller owns.
  TavColumn* clone() const;

  // Role, type, mode, options, entities; every item followed by a blank.
  std::string dump() const;
  std::string dumpkeyOrValue() const;
  std::string dumpAccumulationMode() const;
  // Reads one exact "acc=..." token at the cursor and advances past it.
  // Throws "Invalid accumulation mode: " + the token.
  void parseAccumulationMode(strList& tokens, strIter& cur);

  void setKeyOrValue(KeyOrValue role) { keyOrValue = role; }
  void setValueType(TavValType type) { valueType = type; }
  void setAccType(TavAccType acc) { accType = acc; }
  void setColumnFilter(const TavColumnFilter& filter) { columnFilter = filter; }
  void addEntity(const TavEntity& entity) { entities.add(entity); }

  KeyOrValue getKeyOrValue() const { return keyOrValue; }
  TavValType getValueType() const { return valueType; }
  TavAccType getAccType() const { return accType; }
  const TavEntityArray& getEntities() const { return entities; }
  const TavColumnFilter& getColumnFilter() const { return columnFilter; }

  void getModuleNames(strList& names) const;
  bool setModuleNames(strIter& oldName, strIter& newName);

 private:
  friend struct lytFilterParser::detail::Reader;
  // A column of `role` with the role's default type and mode, for the readers to fill.
  LFP_HIDDEN explicit TavColumn(KeyOrValue role);

  KeyOrValue keyOrValue;
  TavValType valueType;
  TavAccType accType;
  TavEntityArray entities;
  TavColumnFilter columnFilter;
};

#endif
