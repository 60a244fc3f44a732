// The inner node of a filter tree: "and" or "or" over an ordered list of
// child filters, which it owns. A network request holds one as its root.
// Every operation on a tree (reading, writing, copying, validating, the
// module-name walks, destruction) runs in constant stack depth, however deep
// the tree.
#ifndef LYTFILTERPARSER_FILTER_FILTER_H
#define LYTFILTERPARSER_FILTER_FILTER_H

#include <list>
#include <memory>
#include <vector>

#include "lytFilterParser/Internals.h"
#include "lytFilterParser/filter/AbstractFilter.h"
#include "lytFilterParser/vocab/Codes.h"

class LFP_API Filter : public AbstractFilter {
 public:
  typedef std::vector<std::unique_ptr<AbstractFilter>> Children;

  // An "and" filter without children.
  Filter();
  // Reads one compound filter from the operator under the cursor on. Throws
  // "Not a valid operator: " + the token (nothing after the colon at the
  // end), "`]` expected" at the end or "`]` expected instead of: " + the
  // token where its "]" should stand, and what getAtomFilter throws for its
  // atoms. Compound filters nest to any depth.
  Filter(strList& tokens, strIter& cur);
  // Stores `op` and a clone of every child; the children stay the caller's.
  Filter(std::list<AbstractFilter*>& children, FilterOperator op);
  Filter(const Filter& other);
  // Copies the operator, deletes its own children, then clones the other's:
  // assigning a filter to itself leaves it without children.
  Filter& operator=(const Filter& other);
  ~Filter() override;

  std::string dump() const override;
  // Checks the children in order; the first failure's message stays in `err`.
  bool isValid(std::string& err) const override;
  void getModuleNames(strList& names) const override;
  bool setModuleNames(strIter& oldName, strIter& newName) override;
  AbstractFilter* clone() const override;

  // Reads operator, optional "[", the "-f" items and the matching "]".
  void parse(strList& tokens, strIter& cur);
  void parseOperator(strList& tokens, strIter& cur);
  static bool isOperator(const std::string& token);
  std::string dumpOperator() const;
  void setOperator(FilterOperator op) { filterOperator = op; }
  FilterOperator getOperator() const { return filterOperator; }
  void deleteFilterList();

  const Children& getChildren() const { return children; }
  // Takes ownership of `child`.
  void addChild(std::unique_ptr<AbstractFilter> child);

 private:
  friend struct lytFilterParser::detail::Reader;

  FilterOperator filterOperator;
  Children children;
};

#endif
