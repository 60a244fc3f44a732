// One place that tells the library's filter classes apart and walks their
// trees: visit() hands a node to the overload for its exact class, and any
// other class (a caller's own) to the AbstractFilter overload; walkFilter()
// goes through a tree of any depth without recursion. Internal: not installed.
#ifndef LYTFILTERPARSER_FILTER_FILTERVISIT_H
#define LYTFILTERPARSER_FILTER_FILTERVISIT_H

#include <cstddef>
#include <type_traits>
#include <typeinfo>

#include "lytFilterParser/detail/SmallStack.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/Filter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

namespace lytFilterParser {
namespace detail {

// Whether `node` is of class T exactly. The library's filter classes have
// their vtables, and so their type_info, in the library alone: comparing the
// addresses is exact, and spares the name comparison that std::type_info's
// operator== falls back to whenever the addresses differ.
template <class T>
bool isExactly(const AbstractFilter& node) {
  return &typeid(node) == &typeid(T);
}

template <class Visitor>
decltype(auto) visit(const AbstractFilter& node, Visitor&& visitor) {
  if (isExactly<ContentFilter>(node)) return visitor(static_cast<const ContentFilter&>(node));
  if (isExactly<Filter>(node)) return visitor(static_cast<const Filter&>(node));
  if (isExactly<InterfaceAtomFilter>(node)) return visitor(static_cast<const InterfaceAtomFilter&>(node));
  return visitor(node);
}

// Walks the tree below `root` depth first, children in order, holding the
// path from the root on an explicit stack, so that any depth is walked in
// constant stack space. A compound filter of the library's own class is
// entered: enter(child) before its children, leave(child) after them; every
// other node goes to node(child). The root itself is neither entered nor
// left. A handler returning false ends the walk, and walkFilter returns false.
template <class Root, class Enter, class Leave, class Node>
bool walkFilter(Root& root, Enter&& enter, Leave&& leave, Node&& node) {
  using Compound = std::conditional_t<std::is_const_v<Root>, const Filter, Filter>;
  using Any = std::conditional_t<std::is_const_v<Root>, const AbstractFilter, AbstractFilter>;
  struct Frame {
    Compound* filter;
    std::size_t next;
  };
  SmallStack<Frame, 16> path;
  path.push(Frame{&root, 0});
  while (!path.empty()) {
    Frame& frame = path.top();
    if (frame.next == frame.filter->getChildren().size()) {
      Compound* const done = path.pop().filter;
      if (!path.empty() && !leave(*done)) return false;
      continue;
    }
    Any& child = *frame.filter->getChildren()[frame.next++];
    if (isExactly<Filter>(child)) {
      Compound& compound = static_cast<Compound&>(child);
      if (!enter(compound)) return false;
      path.push(Frame{&compound, 0});
    } else if (!node(child)) {
      return false;
    }
  }
  return true;
}

// walkFilter for a walk that needs no handler on compound filters.
template <class Root, class Node>
bool walkNodes(Root& root, Node&& node) {
  const auto pass = [](const Filter&) { return true; };
  return walkFilter(root, pass, pass, node);
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
