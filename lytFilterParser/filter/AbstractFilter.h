// A node of a request's filter tree: a compound Filter joining children with
// "and"/"or", or an atom filter testing one value type.
#ifndef LYTFILTERPARSER_FILTER_ABSTRACTFILTER_H
#define LYTFILTERPARSER_FILTER_ABSTRACTFILTER_H

#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TokenList.h"

class LFP_API AbstractFilter {
 public:
  // Deleting a node deletes the subtree below it.
  virtual ~AbstractFilter();
  virtual std::string dump() const = 0;
  virtual bool isValid(std::string& err) const = 0;
  virtual void getModuleNames(strList& names) const = 0;
  virtual bool setModuleNames(strIter& oldName, strIter& newName) = 0;
  // A deep copy that the caller owns.
  virtual AbstractFilter* clone() const = 0;

  // 1 for atom filters, 0 for compound filters.
  int getIsAtom() const { return isAtom; }

 protected:
  explicit AbstractFilter(int atom) : isAtom(atom) {}
  AbstractFilter(const AbstractFilter&) = default;
  AbstractFilter& operator=(const AbstractFilter&) = default;

  int isAtom;
};

#endif
