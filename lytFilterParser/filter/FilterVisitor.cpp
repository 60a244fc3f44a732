#include "lytFilterParser/filter/FilterVisitor.h"

#include "lytFilterParser/filter/FilterVisit.h"

namespace lytFilterParser {

FilterVisitor::~FilterVisitor() = default;

bool FilterVisitor::enter(const Filter&, std::size_t) { return true; }
bool FilterVisitor::leave(const Filter&, std::size_t) { return true; }
bool FilterVisitor::content(const ContentFilter&, std::size_t) { return true; }
bool FilterVisitor::interfaces(const InterfaceAtomFilter&, std::size_t) { return true; }
bool FilterVisitor::other(const AbstractFilter&, std::size_t) { return true; }

bool walkFilterTree(const Filter& root, FilterVisitor& visitor) {
  // The library's own walk enters and leaves the compound filters below the
  // root; the depth follows it.
  std::size_t depth = 0;
  if (!visitor.enter(root, depth)) return false;
  const bool walked = detail::walkFilter(
      root, [&](const Filter& filter) { return visitor.enter(filter, ++depth); },
      [&](const Filter& filter) { return visitor.leave(filter, depth--); },
      [&](const AbstractFilter& node) {
        struct Atom {
          FilterVisitor& visitor;
          std::size_t depth;
          bool operator()(const ContentFilter& atom) { return visitor.content(atom, depth); }
          bool operator()(const InterfaceAtomFilter& atom) { return visitor.interfaces(atom, depth); }
          // Also a Filter, which walkFilter never hands here.
          bool operator()(const AbstractFilter& other) { return visitor.other(other, depth); }
        };
        return detail::visit(node, Atom{visitor, depth + 1});
      });
  return walked && visitor.leave(root, 0);
}

}  // namespace lytFilterParser
