#include "lytFilterParser/request/NetworkKovaRequest.h"

#include <optional>
#include <typeinfo>
#include <utility>

#include "lytFilterParser/filter/ContentFilter.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

#include "lytFilterParser/detail/Reader.h"
#include "lytFilterParser/detail/Writer.h"
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

NetworkKovaRequest::NetworkKovaRequest() : sortType(TAV_SORT_NONE), sortIndex(1), maxUpdates(defaultMaxUpdates) {}

NetworkKovaRequest::NetworkKovaRequest(strList& tokens) : NetworkKovaRequest() {
  strIter cur = tokens.begin();
  lytFilterParser::detail::Reader::request(*this, tokens, cur);
}

NetworkKovaRequest::~NetworkKovaRequest() = default;

void NetworkKovaRequest::parse(strList& tokens, strIter& cur) { lytFilterParser::detail::Reader::request(*this, tokens, cur); }

void NetworkKovaRequest::parseSort(strList& tokens, strIter& cur) { lytFilterParser::detail::Reader::sort(*this, tokens, cur); }

template <class Tokens>
void lytFilterParser::detail::Reader::request(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  // Where the bare atom lists read so far end: the first option that is not
  // "-f". Nothing but this loop reads past it, so it holds until the loop
  // takes another option.
  std::optional<Iter<Tokens>> listEnd;
  while (cur != tokens.end()) {
    const std::string_view option = *cur;
    if (option.size() != 2 || option[0] != '-') fail(message("Invalid option: ", option));
    if (option[1] != 'f') listEnd.reset();
    switch (option[1]) {
      case 'k': {
        ++cur;
        std::string ignoredSort;
        TavColumn key(TAV_KEY);
        column(key, tokens, cur, ignoredSort);
        request.keys.push_back(std::move(key));
        break;
      }
      case 'v': {
        ++cur;
        std::string sortOption;
        TavColumn value(TAV_VALUE);
        column(value, tokens, cur, sortOption);
        request.values.push_back(std::move(value));
        if (!sortOption.empty()) {
          const TavSortType type = NetworkKovaRequest::getSortType(sortOption);
          if (type != TAV_SORT_NONE) {
            request.sortType = type;
            request.sortIndex = static_cast<int>(request.values.size());
          }
        }
        break;
      }
      case 's':
        ++cur;
        sort(request, tokens, cur);
        break;
      case 'f':
        ++cur;
        filterOption(request, tokens, cur, listEnd);
        break;
      default:
        fail(message("Invalid option: ", option));
    }
  }
}

LFP_INSTANTIATE_READER(request, NetworkKovaRequest&);

template <class Tokens>
void lytFilterParser::detail::Reader::filterOption(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur,
                                                   std::optional<Iter<Tokens>>& listEnd) {
  if (cur == tokens.end()) fail("Expected type at this point but there is no data");
  if (isOperatorWord(*cur)) {
    compound(request.filter, tokens, cur, 0);
    return;
  }
  // A bare atom list: "-f A ... -f B ..." is read as "-f and [ -f A ... -f B ... ]",
  // one conjunction of every consecutive atom. Only the closing "]" goes into
  // the list, before the first option that is not "-f": the readers of the
  // atoms and of nested filters stop there. The "and" and the "[" are implied,
  // and the conjunction starts at the "-f" just consumed.
  const auto endsList = [&](const Iter<Tokens>& at) {
    return at == tokens.end() || (firstChar(*at) == '-' && !isOption(*at, 'f'));
  };
  Iter<Tokens> close = cur;
  if (!endsList(cur)) {
    // A list closed early by a "]" of the text leaves the reader before the
    // same option as the list before it: look for that option only once, so
    // that many such lists do not walk the rest of the text each.
    if (listEnd) {
      close = *listEnd;
    } else {
      do ++close;
      while (!endsList(close));
      listEnd = close;
    }
  }
  const Iter<Tokens> bracket = tokens.insert(close, "]");
  // With no atom text at all, the bracket is what the atom reader meets.
  if (close == cur) cur = bracket;
  // The "-f" itself is not read again: the conjunction's first atom is the
  // one under the cursor.
  request.filter.filterOperator = FILTER_AND;
  request.filter.addParsedChild(atom(tokens, cur));
  children(request.filter, tokens, cur, 0, true);
}

template <class Tokens>
void lytFilterParser::detail::Reader::sort(NetworkKovaRequest& request, Tokens& tokens, Iter<Tokens>& cur) {
  if (cur == tokens.end()) fail("Sort type expected");
  const std::string_view type = *cur;
  if (is(type, "top")) {
    request.sortType = TAV_SORT_TOP;
  } else if (is(type, "bottom")) {
    request.sortType = TAV_SORT_BOTTOM;
  } else if (is(type, "none")) {
    request.sortType = TAV_SORT_NONE;
  } else {
    fail(message("Invalid sort type: ", type));
  }
  ++cur;
  request.sortIndex = 1;
  request.maxUpdates = NetworkKovaRequest::defaultMaxUpdates;
  while (cur != tokens.end() && firstChar(*cur) != '-') {
    const std::string_view option = *cur;
    if (contains(option, "index=")) {
      // The number is read from where the name would stand at the start.
      request.sortIndex = readInt(option, 6);
    } else if (contains(option, "updates=")) {
      const int updates = readInt(option, 8);
      request.maxUpdates = updates > 0 ? updates : NetworkKovaRequest::defaultMaxUpdates;
    } else {
      fail(message("Invalid option: ", option));
    }
    ++cur;
  }
}

LFP_INSTANTIATE_READER(sort, NetworkKovaRequest&);

TavSortType NetworkKovaRequest::getSortType(const std::string& option) {
  if (lytFilterParser::detail::is(option, "sort=top")) return TAV_SORT_TOP;
  if (lytFilterParser::detail::is(option, "sort=bottom")) return TAV_SORT_BOTTOM;
  return TAV_SORT_NONE;
}

void NetworkKovaRequest::appendSort(lytFilterParser::detail::Writer& out) const {
  switch (sortType) {
    case TAV_SORT_TOP: out << "-s top "; break;
    case TAV_SORT_BOTTOM: out << "-s bottom "; break;
    case TAV_SORT_NONE: return;
    default: break;
  }
  if (values.size() > 1) out << "index=" << sortIndex << ' ';
  if (maxUpdates != defaultMaxUpdates) out << "updates=" << maxUpdates << ' ';
}

std::string NetworkKovaRequest::dumpSort() const {
  lytFilterParser::detail::Writer out;
  appendSort(out);
  return out.finish();
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
  lytFilterParser::detail::Writer out(estimate);
  filter.appendTo(out);
  keys.appendTo(out);
  values.appendTo(out);
  appendSort(out);
  return out.finish();
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
