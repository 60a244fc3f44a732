#include "lytFilterParser/request/NetworkKovaRequest.h"

#include <charconv>
#include <typeinfo>
#include <utility>

#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

#include "lytFilterParser/detail/Text.h"

using lytFilterParser::detail::fail;

NetworkKovaRequest::NetworkKovaRequest(const Filter& filter_, const TavColumnArray& keys_, const TavColumnArray& values_,
                                       TavSortType sortType_, int sortIndex_)
    : filter(filter_),
      keys(keys_),
      values(values_),
      sortType(sortType_),
      sortIndex(sortIndex_),
      maxUpdates(defaultMaxUpdates) {}

NetworkKovaRequest::NetworkKovaRequest(strList& tokens)
    : sortType(TAV_SORT_NONE), sortIndex(1), maxUpdates(defaultMaxUpdates) {
  if (tokens.empty()) return;
  strIter cur = tokens.begin();
  parse(tokens, cur);
}

NetworkKovaRequest::~NetworkKovaRequest() = default;

void NetworkKovaRequest::parse(strList& tokens, strIter& cur) {
  while (cur != tokens.end()) {
    const std::string& option = *cur;
    if (option.size() != 2 || option[0] != '-') fail("Invalid option: " + option);
    switch (option[1]) {
      case 'k': {
        ++cur;
        std::string ignoredSort;
        keys.push_back(TavColumn(TAV_KEY, tokens, cur, ignoredSort));
        break;
      }
      case 'v': {
        ++cur;
        std::string sortOption;
        values.push_back(TavColumn(TAV_VALUE, tokens, cur, sortOption));
        if (!sortOption.empty()) {
          const TavSortType type = getSortType(sortOption);
          if (type != TAV_SORT_NONE) {
            sortType = type;
            sortIndex = static_cast<int>(values.size());
          }
        }
        break;
      }
      case 's':
        ++cur;
        parseSort(tokens, cur);
        break;
      case 'f':
        ++cur;
        parseFilterOption(tokens, cur);
        break;
      default:
        fail("Invalid option: " + option);
    }
  }
}

void NetworkKovaRequest::parseFilterOption(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  if (Filter::isOperator(*cur)) {
    filter.parse(tokens, cur);
    return;
  }
  // A bare atom list: "-f A ... -f B ..." is read as "-f and [ -f A ... -f B ... ]",
  // one conjunction of every consecutive atom. Only the closing "]" goes into
  // the list, before the first option that is not "-f": the readers of the
  // atoms and of nested filters stop there. The "and" and the "[" are implied.
  --cur;
  strIter close = cur;
  while (close != tokens.end() && ((*close)[0] != '-' || lytFilterParser::detail::isOption(*close, 'f'))) ++close;
  tokens.insert(close, "]");
  filter.parseConjunction(tokens, cur);
}

void NetworkKovaRequest::parseSort(strList& tokens, strIter& cur) {
  if (cur == tokens.end()) fail("Sort type expected");
  const std::string& type = *cur;
  if (lytFilterParser::detail::is(type, "top")) {
    sortType = TAV_SORT_TOP;
  } else if (lytFilterParser::detail::is(type, "bottom")) {
    sortType = TAV_SORT_BOTTOM;
  } else if (lytFilterParser::detail::is(type, "none")) {
    sortType = TAV_SORT_NONE;
  } else {
    fail("Invalid sort type: " + type);
  }
  ++cur;
  sortIndex = 1;
  maxUpdates = defaultMaxUpdates;
  while (cur != tokens.end() && (*cur)[0] != '-') {
    const std::string& option = *cur;
    if (lytFilterParser::detail::contains(option, "index=")) {
      // The number is read from where the name would stand at the start.
      sortIndex = lytFilterParser::detail::readInt(option, 6);
    } else if (lytFilterParser::detail::contains(option, "updates=")) {
      const int updates = lytFilterParser::detail::readInt(option, 8);
      maxUpdates = updates > 0 ? updates : defaultMaxUpdates;
    } else {
      fail("Invalid option: " + option);
    }
    ++cur;
  }
}

TavSortType NetworkKovaRequest::getSortType(const std::string& option) {
  if (lytFilterParser::detail::is(option, "sort=top")) return TAV_SORT_TOP;
  if (lytFilterParser::detail::is(option, "sort=bottom")) return TAV_SORT_BOTTOM;
  return TAV_SORT_NONE;
}

namespace {

// Writes name, the number in decimal ("%d") and a blank.
void appendNumber(std::string& out, const char* name, int value) {
  char buffer[16];
  const std::to_chars_result end = std::to_chars(buffer, buffer + sizeof buffer, value);
  out += name;
  out.append(buffer, end.ptr);
  out += ' ';
}

}  // namespace

void NetworkKovaRequest::appendSort(std::string& out) const {
  switch (sortType) {
    case TAV_SORT_TOP: out += "-s top "; break;
    case TAV_SORT_BOTTOM: out += "-s bottom "; break;
    case TAV_SORT_NONE: return;
    default: break;
  }
  if (values.size() > 1) appendNumber(out, "index=", sortIndex);
  if (maxUpdates != defaultMaxUpdates) appendNumber(out, "updates=", maxUpdates);
}

std::string NetworkKovaRequest::dumpSort() const {
  std::string out;
  appendSort(out);
  return out;
}

namespace {

std::size_t entityTextSize(const TavEntityArray& entities) {
  std::size_t size = 0;
  for (const TavEntity& entity : entities) size += entity.getName().size() + entity.getResolvedName().size() + 3;
  return size;
}

// An upper estimate of the filter tree's text, so that writing a large
// request fills one buffer instead of regrowing it.
std::size_t filterTextSize(const Filter& filter, int depth) {
  std::size_t size = 16;
  if (depth > Filter::maxNestingDepth) return size;
  for (const std::unique_ptr<AbstractFilter>& child : filter.getChildren()) {
    const AbstractFilter& node = *child;
    const std::type_info& type = typeid(node);
    if (type == typeid(Filter)) {
      size += filterTextSize(static_cast<const Filter&>(node), depth + 1);
    } else if (type == typeid(ContentFilter)) {
      size += 32 + entityTextSize(static_cast<const ContentFilter&>(node).getEntities());
    } else {
      size += 64;
    }
  }
  return size;
}

}  // namespace

std::string NetworkKovaRequest::dump() const {
  std::size_t estimate = 64 + filterTextSize(filter, 0);
  for (const TavColumnArray* columns : {&keys, &values}) {
    for (const TavColumn& column : *columns) estimate += 96 + entityTextSize(column.getEntities());
  }
  std::string out;
  out.reserve(estimate);
  filter.appendTo(out);
  keys.appendTo(out);
  values.appendTo(out);
  appendSort(out);
  return out;
}

void NetworkKovaRequest::addColumn(bool isKey, const TavColumn& column) {
  if (isKey) {
    keys.push_back(column);
  } else {
    values.push_back(column);
  }
}

namespace {

// The number of names the filter tree hands to the module-name walk.
std::size_t countFilterNames(const AbstractFilter& node) {
  const std::type_info& type = typeid(node);
  if (type == typeid(Filter)) {
    std::size_t count = 0;
    for (const std::unique_ptr<AbstractFilter>& child : static_cast<const Filter&>(node).getChildren()) {
      count += countFilterNames(*child);
    }
    return count;
  }
  if (type == typeid(ContentFilter)) {
    const ContentFilter& content = static_cast<const ContentFilter&>(node);
    return content.takesModuleNames() ? content.getEntitiesCount() : 0;
  }
  if (type == typeid(InterfaceAtomFilter)) return 0;
  strList names;  // a filter class of the caller's own: ask it
  node.getModuleNames(names);
  return names.size();
}

}  // namespace

std::size_t NetworkKovaRequest::countModuleNames() const {
  std::size_t count = countFilterNames(filter);
  for (const TavColumn& key : keys) count += key.getEntities().size();
  return count;
}

strList NetworkKovaRequest::getModuleNames() const {
  strList names;
  filter.getModuleNames(names);
  keys.getModuleNames(names);
  return names;
}

bool NetworkKovaRequest::setModuleNames(strList& oldNames, strList& newNames) {
  // The walk itself cannot see the ends of the lists: check their lengths first.
  const std::size_t needed = countModuleNames();
  if (oldNames.size() < needed || newNames.size() < needed) {
    fail("setModuleNames: the request has " + std::to_string(needed) + " module names but " +
         std::to_string(oldNames.size() < needed ? oldNames.size() : newNames.size()) + " " +
         (oldNames.size() < needed ? "old" : "new") + " names were given");
  }
  strIter oldName = oldNames.begin();
  strIter newName = newNames.begin();
  const bool filterDone = filter.setModuleNames(oldName, newName);
  const bool keysDone = keys.setModuleNames(oldName, newName);
  return filterDone && keysDone;
}
