// Walking a filter tree without casts and without recursion: derive from
// FilterVisitor, override the handlers for what you look for, and hand the
// root to walkFilterTree. The walk keeps the path from the root on the heap,
// so a tree of any depth (a million nested "and" filters) is walked in
// constant stack space, which a recursive walk over getChildren() is not.
#ifndef LYTFILTERPARSER_FILTER_FILTERVISITOR_H
#define LYTFILTERPARSER_FILTER_FILTERVISITOR_H

#include <cstddef>

#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

namespace lytFilterParser {

// The handlers of a walk, one per kind of node, each given the node and its
// depth (0 for the root, 1 for its children ...). Every handler returns true
// to go on and false to end the walk there. The defaults do nothing and go on.
class LFP_API FilterVisitor {
 public:
  virtual ~FilterVisitor();

  // A compound filter ("and", "or"; getOperator()), before its children.
  virtual bool enter(const Filter& filter, std::size_t depth);
  // The same compound filter after its children.
  virtual bool leave(const Filter& filter, std::size_t depth);
  // An atom on names: "-f src a b", "-f svc not http" (getFilterType(),
  // isNegated(), getEntities()).
  virtual bool content(const ContentFilter& atom, std::size_t depth);
  // An atom on interfaces: "-f interface eth0,in" (getInterfaces()).
  virtual bool interfaces(const InterfaceAtomFilter& atom, std::size_t depth);
  // A node of a class of the caller's own, derived from AbstractFilter
  // (never entered, even when it has children of its own).
  virtual bool other(const AbstractFilter& node, std::size_t depth);
};

// Walks the tree under `root` depth first, children in order: enter(root),
// then each child (a compound filter entered, its children walked and left
// again), then leave(root). Returns false when a handler ended the walk,
// true when it went through. Changes nothing and throws nothing of its own;
// what a handler throws leaves the walk. The tree must not change during the
// walk. Takes memory for the path from the root to the deepest node, none
// for the nodes beside it.
LFP_API bool walkFilterTree(const Filter& root, FilterVisitor& visitor);

}  // namespace lytFilterParser

#endif
