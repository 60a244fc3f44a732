// A read-only view of a table's rows, so that a table defined in one source
// file can be walked with a range-for anywhere. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_ROWS_H
#define LYTFILTERPARSER_DETAIL_ROWS_H

#include <cstddef>

namespace lytFilterParser {
namespace detail {

template <class Row>
struct Rows {
  const Row* first;
  const Row* last;

  template <std::size_t N>
  constexpr Rows(const Row (&table)[N]) : first(table), last(table + N) {}  // NOLINT: implicit by design

  constexpr const Row* begin() const { return first; }
  constexpr const Row* end() const { return last; }
  constexpr std::size_t size() const { return static_cast<std::size_t>(last - first); }
  constexpr const Row& operator[](std::size_t i) const { return first[i]; }
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
