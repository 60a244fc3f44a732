#include "lytFilterParser/filter/Filter.h"

#include <typeinfo>
#include <utility>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

using lytFilterParser::detail::fail;

namespace {

const std::string& tokenAt(strList& tokens, strIter cur) {
  static const std::string kNone;
  return cur == tokens.end() ? kNone : *cur;
}

void checkDepth(int depth) {
  if (depth > Filter::maxNestingDepth) {
    fail("Filter nesting is deeper than the limit of " + std::to_string(Filter::maxNestingDepth) + " levels");
  }
}

}  // namespace

Filter::Filter() : AbstractFilter(0), filterOperator(FILTER_AND) {}

Filter::Filter(strList& tokens, strIter& cur) : AbstractFilter(0), filterOperator(FILTER_AND) {
  parseAt(tokens, cur, 0);
}

Filter::Filter(std::list<AbstractFilter*>& list, FilterOperator op) : AbstractFilter(0), filterOperator(op) {
  children.reserve(list.size());
  for (AbstractFilter* child : list) {
    if (child != nullptr) children.emplace_back(child->clone());
  }
}

Filter::Filter(const Filter& other) : AbstractFilter(0), filterOperator(other.filterOperator) {
  cloneChildrenOf(other, 0);
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

void Filter::cloneChildrenOf(const Filter& other, int depth) {
  children.reserve(other.children.size());
  for (const std::unique_ptr<AbstractFilter>& child : other.children) {
    if (const Filter* inner = dynamic_cast<const Filter*>(child.get()); inner != nullptr && typeid(*inner) == typeid(Filter)) {
      std::unique_ptr<Filter> copy(new Filter());
      copy->filterOperator = inner->filterOperator;
      copy->cloneChildrenOf(*inner, depth + 1);
      children.push_back(std::move(copy));
    } else {
      children.emplace_back(child->clone());
    }
  }
}

void Filter::deleteFilterList() { children.clear(); }

void Filter::addParsedChild(std::unique_ptr<AbstractFilter> child) {
  // Most compound filters hold two or a few children: one allocation for them.
  if (children.capacity() == 0) children.reserve(4);
  children.push_back(std::move(child));
}

void Filter::addChild(std::unique_ptr<AbstractFilter> child) {
  if (child) children.push_back(std::move(child));
}

bool Filter::isOperator(const std::string& token) {
  using lytFilterParser::detail::is;
  return is(token, "or") || is(token, "OR") || is(token, "and") || is(token, "AND");
}

void Filter::parseOperator(strList& tokens, strIter& cur) {
  const std::string& token = tokenAt(tokens, cur);
  using lytFilterParser::detail::is;
  if (is(token, "or") || is(token, "OR")) {
    filterOperator = FILTER_OR;
  } else if (is(token, "and") || is(token, "AND")) {
    filterOperator = FILTER_AND;
  } else {
    fail("Not a valid operator: " + token);
  }
  ++cur;
}

void Filter::parse(strList& tokens, strIter& cur) { parseAt(tokens, cur, 0); }

void Filter::parseAt(strList& tokens, strIter& cur, int depth) {
  checkDepth(depth);
  parseOperator(tokens, cur);
  const bool bracketed = cur != tokens.end() && lytFilterParser::detail::isChar(*cur, '[');
  if (bracketed) ++cur;
  parseChildren(tokens, cur, depth, bracketed);
}

void Filter::parseConjunction(strList& tokens, strIter& cur) {
  filterOperator = FILTER_AND;
  parseChildren(tokens, cur, 0, true);
}

void Filter::parseChildren(strList& tokens, strIter& cur, int depth, bool bracketed) {
  while (cur != tokens.end() && lytFilterParser::detail::isOption(*cur, 'f')) {
    ++cur;
    if (cur != tokens.end() && isOperator(*cur)) {
      std::unique_ptr<Filter> inner(new Filter());
      inner->parseAt(tokens, cur, depth + 1);
      addParsedChild(std::move(inner));
    } else {
      addParsedChild(std::unique_ptr<AbstractFilter>(AtomFilter::getAtomFilter(tokens, cur)));
    }
  }
  if (bracketed) {
    if (cur == tokens.end()) fail("`]` expected");
    if (!lytFilterParser::detail::isChar(*cur, ']')) fail("`]` expected instead of: " + *cur);
    ++cur;
  }
}

std::string Filter::dumpOperator() const {
  switch (filterOperator) {
    case FILTER_AND: return "and";
    case FILTER_OR: return "or";
  }
  fail("dumpOperator:  not valid operator");
}

void Filter::appendAt(std::string& out, int depth) const {
  checkDepth(depth);
  const bool grouped = children.size() > 1;
  if (grouped) {
    out += "-f ";
    out += dumpOperator();
    out += " [ ";
  }
  for (const std::unique_ptr<AbstractFilter>& child : children) {
    const AbstractFilter& node = *child;
    const std::type_info& type = typeid(node);
    if (type == typeid(Filter)) {
      static_cast<const Filter&>(node).appendAt(out, depth + 1);
    } else if (type == typeid(ContentFilter)) {
      static_cast<const ContentFilter&>(node).appendTo(out);
    } else if (type == typeid(InterfaceAtomFilter)) {
      static_cast<const InterfaceAtomFilter&>(node).appendTo(out);
    } else {
      out += node.dump();
    }
    out += ' ';
  }
  if (grouped) out += ']';
  out += ' ';
}

void Filter::appendTo(std::string& out) const { appendAt(out, 0); }

std::string Filter::dump() const {
  std::string out;
  appendAt(out, 0);
  return out;
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
