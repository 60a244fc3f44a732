// Comparison of lists whose order does not count: entity lists and interface
// item lists compare equal when every item of one has an equal item in the
// other. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_UNORDERED_H
#define LYTFILTERPARSER_DETAIL_UNORDERED_H

#include <algorithm>
#include <cstddef>
#include <vector>

namespace lytFilterParser {
namespace detail {

// Whether every item of `mine` has an equal one in `theirs`. `less` must
// order items so that neither is less exactly when they are equal. Short
// lists are searched directly; long ones through a sorted index of `theirs`,
// so that comparing two lists of n items takes n log n steps, not n * n.
template <class T, class Less>
bool everyItemIn(const std::vector<T>& mine, const std::vector<T>& theirs, Less less) {
  constexpr std::size_t kDirectSearch = 16;
  if (theirs.size() <= kDirectSearch) {
    for (const T& item : mine) {
      if (std::find(theirs.begin(), theirs.end(), item) == theirs.end()) return false;
    }
    return true;
  }
  std::vector<const T*> index;
  index.reserve(theirs.size());
  for (const T& item : theirs) index.push_back(&item);
  const auto byItem = [&less](const T* a, const T* b) { return less(*a, *b); };
  std::sort(index.begin(), index.end(), byItem);
  for (const T& item : mine) {
    const auto at = std::lower_bound(index.begin(), index.end(), &item, byItem);
    if (at == index.end() || less(item, **at)) return false;
  }
  return true;
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
