// A read-only view of a table's rows, so that a table defined in one source
// file can be walked with a range-for anywhere. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_ROWS_H
#define LYTFILTERPARSER_DETAIL_ROWS_H

#include <cstddef>
#include <string_view>

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

// Whether a token is exactly a table's word. Most tokens differ from most
// words in length or in their first byte: comparing in place finds that
// without a call to memcmp for every row.
constexpr bool sameWord(std::string_view token, std::string_view word) {
  if (token.size() != word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (token[i] != word[i]) return false;
  }
  return true;
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
