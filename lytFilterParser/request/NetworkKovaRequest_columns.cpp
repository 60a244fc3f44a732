// Mapping of a request's columns to the query interface's column catalogue.

#include <algorithm>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/vocab/ColumnAllocation.h"
#include "lytFilterParser/vocab/ColumnCatalogue.h"

namespace detail = lytFilterParser::detail;

std::vector<std::string> NetworkKovaRequest::getKovaColumns() const {
  std::vector<std::string> positions;
  positions.reserve(keys.size() + values.size());
  // One request's reset and allocations must not interleave with another's.
  std::lock_guard<std::mutex> lock(detail::columnAllocationMutex());
  detail::nextOpenColumnLocked(QULET_VT_NONE);
  for (const TavColumnArray* columns : {&keys, &values}) {
    for (const TavColumn& column : *columns) {
      const int index = detail::nextOpenColumnLocked(lytFilterParser::getKovaType(column.getValueType()));
      if (index < 0) detail::fail("failed to map kova columns");
      positions.push_back(std::to_string(index + 1));
    }
  }
  return positions;
}

std::vector<int> NetworkKovaRequest::getKovaColumns(TavVersion version) const {
  std::vector<int> result;
  if (version == 3) {
    const std::vector<std::string> positions = getKovaColumns();
    result.reserve(positions.size());
    for (const std::string& position : positions) result.push_back(detail::readInt(position, 0));
    return result;
  }
  if (version != 1 && version != 2) detail::fail("failed to map kova columns");
  result.push_back(2);
  if (values.empty()) return result;
  const TavAccType acc = values[0].getAccType();
  if (acc == TAV_ACC_NEW) result.push_back(7);
  if (acc == TAV_ACC_RATE) result.push_back(values[0].getValueType() == TAV_PKT ? 5 : 4);
  if (acc == TAV_ACC_CONCURRENT || acc == TAV_ACC_LINEUTIL) result.push_back(6);
  return result;
}

bool NetworkKovaRequest::mapKovaColumn(std::vector<int>& positions) const {
  if (positions.size() != keys.size() + values.size()) return false;
  std::size_t searchFrom[detail::kTypeCodes] = {};
  std::vector<int> ordered;
  ordered.reserve(positions.size());
  for (const TavColumnArray* columns : {&keys, &values}) {
    for (const TavColumn& column : *columns) {
      const unsigned type = static_cast<unsigned>(column.getValueType());
      if (type > TAV_WDATTACK) return false;
      const QULET_VT code = lytFilterParser::getKovaType(column.getValueType());
      std::size_t& from = searchFrom[code];
      std::size_t found = from;
      while (found < positions.size() && lytFilterParser::getKovaColumnType(positions[found]) != code) ++found;
      if (found == positions.size()) return false;
      from = found + 1;
      ordered.push_back(positions[found]);
    }
  }
  positions.swap(ordered);
  return true;
}

bool NetworkKovaRequest::isDynamic() const {
  return std::all_of(keys.begin(), keys.end(), [](const TavColumn& key) { return key.getEntities().empty(); });
}
