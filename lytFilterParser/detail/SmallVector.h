// A vector whose first N elements live in the object itself: the record of
// an ordinary request is kept without an allocation. Past N the elements
// move to the heap together. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_SMALLVECTOR_H
#define LYTFILTERPARSER_DETAIL_SMALLVECTOR_H

#include <cstddef>
#include <utility>
#include <vector>

namespace lytFilterParser {
namespace detail {

template <class T, std::size_t N>
class SmallVector {
 public:
  std::size_t size() const { return spilled ? far.size() : count; }
  bool empty() const { return size() == 0; }
  T* begin() { return spilled ? far.data() : near; }
  T* end() { return begin() + size(); }
  const T* begin() const { return spilled ? far.data() : near; }
  const T* end() const { return begin() + size(); }
  T& operator[](std::size_t i) { return begin()[i]; }
  const T& operator[](std::size_t i) const { return begin()[i]; }
  const T& front() const { return *begin(); }
  T& back() { return end()[-1]; }
  const T& back() const { return end()[-1]; }

  // The element added; valid until the next one is added.
  T& push_back(T value) {
    if (!spilled && count < N) {
      near[count] = std::move(value);
      return near[count++];
    }
    if (!spilled) {
      far.reserve(4 * N);
      for (std::size_t i = 0; i < count; ++i) far.push_back(std::move(near[i]));
      spilled = true;
    }
    far.push_back(std::move(value));
    return far.back();
  }

 private:
  T near[N];  // the first elements, until they spill
  std::size_t count = 0;
  bool spilled = false;
  std::vector<T> far;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
