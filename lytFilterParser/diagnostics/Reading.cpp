#include "lytFilterParser/diagnostics/Reading.h"

#include "lytFilterParser/filter/ContentFilterBase.h"
#include "lytFilterParser/filter/FilterVisit.h"
#include "lytFilterParser/filter/InterfaceAtomFilter.h"

namespace lytFilterParser {
namespace detail {
namespace {

// The same number of columns, and of names in each.
bool columnsMatch(const Record& record, const RecordColumns& columns, const TavColumnArray& made) {
  if (columns.size() != made.size()) return false;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    std::size_t names = 0;
    for (std::uint32_t w = columns[c].firstWord; w < columns[c].firstWord + columns[c].wordCount; ++w)
      names += record.words[w].part == Part::Name;
    if (names != made[c].getEntities().size()) return false;
  }
  return true;
}

}  // namespace

bool recordFor(std::string_view text, const NetworkKovaRequest& request, Reading& reading) {
  reading = readText(text, true, Keep::Record);
  const Record& record = reading.record;
  if (!reading.accepted || record.virtualLink || record.nodes.empty() ||
      !columnsMatch(record, record.keys, request.getKeys()) ||
      !columnsMatch(record, record.values, request.getValues())) {
    return false;
  }
  const Filter& root = request.getFilter();
  if (record.nodes[0].childCount != root.getChildren().size()) return false;
  std::size_t next = 1;
  const auto compound = [&](const Filter& filter) {
    if (next >= record.nodes.size() || !record.nodes[next].compound) return false;
    return record.nodes[next++].childCount == filter.getChildren().size();
  };
  const auto atom = [&](const AbstractFilter& filter) {
    if (next >= record.nodes.size() || record.nodes[next].compound) return false;
    const FilterNode& node = record.nodes[next++];
    if (const auto* content = dynamic_cast<const ContentFilterBase*>(&filter)) {
      return !node.interface && node.wordCount == content->getEntitiesCount();
    }
    const auto* interfaces = dynamic_cast<const InterfaceAtomFilter*>(&filter);
    return interfaces != nullptr && node.interface && node.wordCount == interfaces->getInterfaces().size();
  };
  const auto leave = [](const Filter&) { return true; };
  return walkFilter(root, compound, leave, atom) && next == record.nodes.size();
}

}  // namespace detail
}  // namespace lytFilterParser
