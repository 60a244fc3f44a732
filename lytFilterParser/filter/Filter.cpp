#include "lytFilterParser/filter/Filter.h"

#include <utility>

#include "lytFilterParser/filter/FilterVisit.h"

namespace {

// Copies the children of `from` into `into`: compound children through this
// walk, atoms and filters of other classes through clone().
void copyChildren(Filter& into, const Filter& from) {
  for (const std::unique_ptr<AbstractFilter>& child : from.getChildren()) {
    lytFilterParser::detail::visit(*child, [&into](const auto& node) {
      if constexpr (std::is_same_v<std::decay_t<decltype(node)>, Filter>) {
        std::unique_ptr<Filter> copy(new Filter());
        copy->setOperator(node.getOperator());
        copyChildren(*copy, node);
        into.addChild(std::move(copy));
      } else {
        into.addChild(std::unique_ptr<AbstractFilter>(node.clone()));
      }
    });
  }
}

}  // namespace

Filter::Filter() : AbstractFilter(0), filterOperator(FILTER_AND) {}

Filter::Filter(std::list<AbstractFilter*>& list, FilterOperator op) : AbstractFilter(0), filterOperator(op) {
  children.reserve(list.size());
  for (AbstractFilter* child : list) {
    if (child != nullptr) children.emplace_back(child->clone());
  }
}

Filter::Filter(const Filter& other) : AbstractFilter(0), filterOperator(other.filterOperator) {
  children.reserve(other.children.size());
  copyChildren(*this, other);
}

Filter& Filter::operator=(const Filter& other) {
  filterOperator = other.filterOperator;
  if (this == &other) {
    deleteFilterList();
    return *this;
  }
  // Build the copy first so that a failing clone leaves this filter as it was
  // apart from the operator.
  Filter copy(other);
  deleteFilterList();
  children = std::move(copy.children);
  return *this;
}

Filter::~Filter() = default;

void Filter::deleteFilterList() { children.clear(); }

void Filter::addChild(std::unique_ptr<AbstractFilter> child) {
  if (child) children.push_back(std::move(child));
}

bool Filter::isValid(std::string& err) const {
  for (const std::unique_ptr<AbstractFilter>& child : children) {
    if (!child->isValid(err)) return false;
  }
  return true;
}

void Filter::getModuleNames(strList& names) const {
  for (const std::unique_ptr<AbstractFilter>& child : children) child->getModuleNames(names);
}

bool Filter::setModuleNames(strIter& oldName, strIter& newName) {
  bool all = true;
  for (const std::unique_ptr<AbstractFilter>& child : children) {
    if (!child->setModuleNames(oldName, newName)) all = false;
  }
  return all;
}

AbstractFilter* Filter::clone() const { return new Filter(*this); }
