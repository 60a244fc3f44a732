// A vector whose first N elements live in the object itself: the record of
// an ordinary request is kept without an allocation. Past N the elements
// move to the heap together. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_SMALLVECTOR_H
#define LYTFILTERPARSER_DETAIL_SMALLVECTOR_H

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

namespace lytFilterParser {
namespace detail {

template <class T, std::size_t N>
class SmallVector {
  // The items are plain records: the places not yet filled are left
  // unwritten (a reading would otherwise clear a kilobyte and more of them
  // before reading a word), and a copy copies the bytes.
  static_assert(std::is_trivially_copyable<T>::value && std::is_trivially_destructible<T>::value,
                "SmallVector keeps plain records");

 public:
  std::size_t size() const { return spilled ? far.size() : count; }
  bool empty() const { return size() == 0; }
  T* begin() { return spilled ? far.data() : near.items; }
  T* end() { return begin() + size(); }
  const T* begin() const { return spilled ? far.data() : near.items; }
  const T* end() const { return begin() + size(); }
  T& operator[](std::size_t i) { return begin()[i]; }
  const T& operator[](std::size_t i) const { return begin()[i]; }
  const T& front() const { return *begin(); }
  T& back() { return end()[-1]; }
  const T& back() const { return end()[-1]; }

  // The element added; valid until the next one is added.
  T& push_back(T value) {
    if (!spilled && count < N) {
      T* const slot = new (&near.items[count]) T(std::move(value));
      ++count;
      return *slot;
    }
    if (!spilled) {
      far.reserve(4 * N);
      for (std::size_t i = 0; i < count; ++i) far.push_back(std::move(near.items[i]));
      spilled = true;
    }
    far.push_back(std::move(value));
    return far.back();
  }

 private:
  // The first elements, until they spill; constructed as they are added.
  union Near {
    Near() {}
    T items[N];
  } near;
  std::size_t count = 0;
  bool spilled = false;
  std::vector<T> far;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
