// The data and the reading of a content atom: a value type, an optional
// negation and the entities that the traffic's value of that type must match.
#ifndef LYTFILTERPARSER_FILTER_CONTENTFILTERBASE_H
#define LYTFILTERPARSER_FILTER_CONTENTFILTERBASE_H

#include <cstddef>

#include "lytFilterParser/entity/TavEntityArray.h"
#include "lytFilterParser/filter/AtomFilter.h"

class LFP_API ContentFilterBase : public AtomFilter {
 public:
  ~ContentFilterBase() override;

  void getModuleNames(strList& names) const override;
  bool setModuleNames(strIter& oldName, strIter& newName) override;
  std::string dumpFilterType() const override;

  // Reads type, negation and entities from the cursor on; throws as
  // AtomFilter::getAtomFilter does.
  virtual void parse(strList& tokens, strIter& cur);
  virtual bool operator==(const ContentFilterBase& other) const;
  // Same type, same negation, equal entity lists.
  virtual bool compare(const ContentFilterBase& other) const;

  void parseFilterType(strList& tokens, strIter& cur);
  void parseEntities(strList& tokens, strIter& cur);
  std::string dumpEntities() const;

  TavEntityArray& getEntities() { return entities; }
  const TavEntityArray& getEntities() const { return entities; }
  std::size_t getEntitiesCount() const { return entities.size(); }
  void setEntities(const TavEntityArray& list) { entities = list; }

  // Whether the module-name walk visits this filter's entities.
  bool takesModuleNames() const;

 protected:
  friend struct lytFilterParser::detail::Reader;

  ContentFilterBase();
  ContentFilterBase(strList& tokens, strIter& cur);
  ContentFilterBase(TavValType type, bool negated, const TavEntityArray& list);
  ContentFilterBase(const ContentFilterBase& other) = default;
  ContentFilterBase& operator=(const ContentFilterBase& other) = default;

  TavEntityArray entities;
};

#endif
