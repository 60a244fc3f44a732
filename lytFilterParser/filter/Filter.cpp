#include "lytFilterParser/filter/Filter.h"

#include <typeinfo>
#include <utility>

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/filter/AtomFilter.h"
#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

using lytFilterParser::detail::fail;

namespace {

void checkDepth(int depth) {
  if (depth > Filter::maxNestingDepth) {
    fail("Filter nesting is deeper than the limit of " + std::to_string(Filter::maxNestingDepth) + " levels");
  }
}

}  // namespace

Filter::Filter() : AbstractFilter(0), filterOperator(FILTER_AND) {}

Filter::Filter(strList& tokens, strIter& cur) : AbstractFilter(0), filterOperator(FILTER_AND) {
  lytFilterParser::detail::Reader::compound(*this, tokens, cur, 0);
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

bool Filter::isOperator(const std::string& token) { return lytFilterParser::detail::isOperatorWord(token); }

void Filter::parseOperator(strList& tokens, strIter& cur) {
  lytFilterParser::detail::Reader::filterOperator(*this, tokens, cur);
}

void Filter::parse(strList& tokens, strIter& cur) { lytFilterParser::detail::Reader::compound(*this, tokens, cur, 0); }

template <class Tokens>
void lytFilterParser::detail::Reader::filterOperator(Filter& filter, Tokens& tokens, Iter<Tokens>& cur) {
  const std::string_view token = cur == tokens.end() ? std::string_view() : std::string_view(*cur);
  if (is(token, "or") || is(token, "OR")) {
    filter.filterOperator = FILTER_OR;
  } else if (is(token, "and") || is(token, "AND")) {
    filter.filterOperator = FILTER_AND;
  } else {
    fail(message("Not a valid operator: ", token));
  }
  ++cur;
}

LFP_INSTANTIATE_READER(filterOperator, Filter&);

template <class Tokens>
void lytFilterParser::detail::Reader::compound(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth) {
  checkDepth(depth);
  filterOperator(filter, tokens, cur);
  const bool bracketed = cur != tokens.end() && isChar(*cur, '[');
  if (bracketed) ++cur;
  children(filter, tokens, cur, depth, bracketed);
}

#define LFP_INSTANTIATE_COMPOUND(Tokens) \
  template void lytFilterParser::detail::Reader::compound<Tokens>(Filter&, Tokens&, Tokens::iterator&, int);
LFP_FOR_EACH_TOKEN_SEQUENCE(LFP_INSTANTIATE_COMPOUND)
#undef LFP_INSTANTIATE_COMPOUND

template <class Tokens>
void lytFilterParser::detail::Reader::children(Filter& filter, Tokens& tokens, Iter<Tokens>& cur, int depth,
                                               bool bracketed) {
  while (cur != tokens.end() && isOption(*cur, 'f')) {
    ++cur;
    if (cur != tokens.end() && isOperatorWord(*cur)) {
      std::unique_ptr<Filter> inner(new Filter());
      compound(*inner, tokens, cur, depth + 1);
      filter.addParsedChild(std::move(inner));
    } else {
      filter.addParsedChild(atom(tokens, cur));
    }
  }
  if (bracketed) {
    if (cur == tokens.end()) fail("`]` expected");
    const std::string_view token = *cur;
    if (!isChar(token, ']')) fail(message("`]` expected instead of: ", token));
    ++cur;
  }
}

// The request reader starts the conjunction of a bare atom list here too.
#define LFP_INSTANTIATE_CHILDREN(Tokens) \
  template void lytFilterParser::detail::Reader::children<Tokens>(Filter&, Tokens&, Tokens::iterator&, int, bool);
LFP_FOR_EACH_TOKEN_SEQUENCE(LFP_INSTANTIATE_CHILDREN)
#undef LFP_INSTANTIATE_CHILDREN

namespace {

std::string_view operatorWord(FilterOperator op) {
  switch (op) {
    case FILTER_AND: return "and";
    case FILTER_OR: return "or";
  }
  fail("dumpOperator:  not valid operator");
}

}  // namespace

std::string Filter::dumpOperator() const { return std::string(operatorWord(filterOperator)); }

void Filter::appendAt(lytFilterParser::detail::Writer& out, int depth) const {
  checkDepth(depth);
  const bool grouped = children.size() > 1;
  if (grouped) {
    out << "-f " << operatorWord(filterOperator) << " [ ";
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
      out << node.dump();
    }
    out << ' ';
  }
  if (grouped) out << ']';
  out << ' ';
}

void Filter::appendTo(lytFilterParser::detail::Writer& out) const { appendAt(out, 0); }

std::string Filter::dump() const {
  lytFilterParser::detail::Writer out;
  appendAt(out, 0);
  return out.finish();
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
