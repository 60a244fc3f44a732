#include "lytFilterParser/request/NetworkKovaRequest.h"

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/filter/FilterVisit.h"

// Reading (current and legacy syntax) and writing are with the rest of the
// syntax, in Reader.cpp and Printer.cpp; validation and column mapping have
// files of their own.

NetworkKovaRequest::NetworkKovaRequest(const Filter& filter_, const TavColumnArray& keys_,
                                       const TavColumnArray& values_, TavSortType sortType_, int sortIndex_)
    : filter(filter_), keys(keys_), values(values_), sortType(sortType_), sortIndex(sortIndex_) {}

NetworkKovaRequest::NetworkKovaRequest() = default;

NetworkKovaRequest::~NetworkKovaRequest() = default;

void NetworkKovaRequest::addColumn(bool isKey, const TavColumn& column) { (isKey ? keys : values).push_back(column); }

namespace {

// The number of names the module-name walk visits: the filter tree's, then the keys'.
std::size_t countModuleNames(const NetworkKovaRequest& request) {
  std::size_t count = 0;
  lytFilterParser::detail::walkNodes(request.getFilter(), [&count](const AbstractFilter& node) {
    if (lytFilterParser::detail::isExactly<ContentFilter>(node)) {
      const ContentFilter& atom = static_cast<const ContentFilter&>(node);
      count += atom.takesModuleNames() ? atom.getEntitiesCount() : 0;
    } else if (!lytFilterParser::detail::isExactly<InterfaceAtomFilter>(node)) {
      strList names;  // a filter class of the caller's own: ask it
      node.getModuleNames(names);
      count += names.size();
    }
    return true;
  });
  for (const TavColumn& key : request.getKeys()) count += key.getEntities().size();
  return count;
}

}  // namespace

strList NetworkKovaRequest::getModuleNames() const {
  strList names;
  filter.getModuleNames(names);
  keys.getModuleNames(names);
  return names;
}

bool NetworkKovaRequest::setModuleNames(strList& oldNames, strList& newNames) {
  // The walk itself cannot see the ends of the lists: check their lengths first.
  const std::size_t needed = countModuleNames(*this);
  if (oldNames.size() < needed || newNames.size() < needed) {
    lytFilterParser::detail::fail("setModuleNames: the request has " + std::to_string(needed) + " module names but " +
                                  std::to_string(oldNames.size() < needed ? oldNames.size() : newNames.size()) + " " +
                                  (oldNames.size() < needed ? "old" : "new") + " names were given");
  }
  strIter oldName = oldNames.begin();
  strIter newName = newNames.begin();
  const bool filterDone = filter.setModuleNames(oldName, newName);
  return keys.setModuleNames(oldName, newName) && filterDone;
}
