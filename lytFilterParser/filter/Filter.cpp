#include "lytFilterParser/filter/Filter.h"

#include <new>
#include <utility>

#include "lytFilterParser/filter/FilterVisit.h"

Filter::Filter() : AbstractFilter(0), filterOperator(FILTER_AND) {}

Filter::Filter(std::list<AbstractFilter*>& list, FilterOperator op) : AbstractFilter(0), filterOperator(op) {
  children.reserve(list.size());
  for (AbstractFilter* child : list) {
    if (child != nullptr) addChild(std::unique_ptr<AbstractFilter>(child->clone()));
  }
}

// Compound children are copied by the walk, atoms and filters of other
// classes through clone(). What is copied already hangs in this filter, so a
// failing clone leaves nothing behind when the members are destroyed.
Filter::Filter(const Filter& other) : AbstractFilter(0), filterOperator(other.filterOperator) {
  children.reserve(other.children.size());
  lytFilterParser::detail::SmallStack<Filter*, 16> into;
  into.push(this);
  lytFilterParser::detail::walkFilter(
      other,
      [&into](const Filter& from) {
        std::unique_ptr<Filter> copy(new Filter());
        copy->filterOperator = from.filterOperator;
        copy->children.reserve(from.children.size());
        Filter* const raw = copy.get();
        into.top()->children.push_back(std::move(copy));
        into.push(raw);
        return true;
      },
      [&into](const Filter&) {
        into.pop();
        return true;
      },
      [&into](const AbstractFilter& node) {
        into.top()->addChild(std::unique_ptr<AbstractFilter>(node.clone()));
        return true;
      });
}

Filter& Filter::operator=(const Filter& other) {
  filterOperator = other.filterOperator;
  // Build the copy first so that a failing clone leaves this filter as it was
  // apart from the operator; a filter assigned to itself keeps no children.
  Children copied;
  if (this != &other) copied = std::move(Filter(other).children);
  children = std::move(copied);
  return *this;
}

// A deep tree is taken apart here, level by level: the children of every
// compound child move up into this filter's list before that child goes, so
// no destructor below runs with compound children of its own.
Filter::~Filter() {
  while (!children.empty()) {
    std::unique_ptr<AbstractFilter> child = std::move(children.back());
    children.pop_back();
    if (!child || !lytFilterParser::detail::isExactly<Filter>(*child)) continue;
    Children& grandchildren = static_cast<Filter&>(*child).children;
    if (children.empty()) {
      children.swap(grandchildren);
      continue;
    }
    try {
      for (std::unique_ptr<AbstractFilter>& grandchild : grandchildren) children.push_back(std::move(grandchild));
    } catch (const std::bad_alloc&) {
      // Out of memory: what did not move is destroyed by its own filter.
    }
  }
}

void Filter::deleteFilterList() { children.clear(); }

void Filter::addChild(std::unique_ptr<AbstractFilter> child) {
  if (child) children.push_back(std::move(child));
}

bool Filter::isValid(std::string& err) const {
  return lytFilterParser::detail::walkNodes(*this, [&err](const AbstractFilter& node) { return node.isValid(err); });
}

void Filter::getModuleNames(strList& names) const {
  lytFilterParser::detail::walkNodes(*this, [&names](const AbstractFilter& node) {
    node.getModuleNames(names);
    return true;
  });
}

bool Filter::setModuleNames(strIter& oldName, strIter& newName) {
  bool all = true;
  lytFilterParser::detail::walkNodes(*this, [&](AbstractFilter& node) {
    if (!node.setModuleNames(oldName, newName)) all = false;
    return true;
  });
  return all;
}

AbstractFilter* Filter::clone() const { return new Filter(*this); }
