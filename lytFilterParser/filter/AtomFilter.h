// A leaf of the filter tree: one condition on one value type, optionally
// negated. getAtomFilter builds the right leaf class from request tokens.
#ifndef LYTFILTERPARSER_FILTER_ATOMFILTER_H
#define LYTFILTERPARSER_FILTER_ATOMFILTER_H

#include "lytFilterParser/Internals.h"
#include "lytFilterParser/filter/AbstractFilter.h"
#include "lytFilterParser/vocab/ValueType.h"

class LFP_API AtomFilter : public AbstractFilter {
 public:
  // False with "Invalid Filter Type: " + keyword for types a filter cannot
  // test; throws for types without a keyword.
  bool isValid(std::string& err) const override;
  // Reads an optional "not" or "NOT".
  virtual void parseNot(strList& tokens, strIter& cur);
  virtual std::string dumpFilterType() const = 0;

  void setFilterType(TavValType type) { filterType = type; }
  TavValType getFilterType() const { return filterType; }
  bool isNegated() const { return negation; }
  void setNegation(bool negated) { negation = negated; }
  // "not" when negated, else "".
  std::string dumpNot() const;

  // Reads the atom at the cursor (its "-f" already consumed): an
  // InterfaceAtomFilter for "interface", a ContentFilter otherwise. The
  // caller owns the result. Throws "Expected type at this point but there is
  // no data" at the end and "Invalid type: " + the token for an unknown type.
  static AtomFilter* getAtomFilter(strList& tokens, strIter& cur);

 protected:
  friend struct lytFilterParser::detail::Reader;

  AtomFilter(TavValType type, bool negated) : AbstractFilter(1), filterType(type), negation(negated) {}
  AtomFilter(const AtomFilter&) = default;
  AtomFilter& operator=(const AtomFilter&) = default;

  TavValType filterType;
  bool negation;
};

#endif
