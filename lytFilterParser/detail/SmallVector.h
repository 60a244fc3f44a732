// A vector whose first N elements live in the object itself: the record of
// an ordinary request is kept without an allocation. Past N the elements
// move to the heap together. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_SMALLVECTOR_H
#define LYTFILTERPARSER_DETAIL_SMALLVECTOR_H

#include <cstddef>
#include <new>
#include <type_traits>
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
  std::size_t size() const { return count; }
  bool empty() const { return count == 0; }
  // The elements stay in place up to N of them: only the N+1-th moves them.
  T* begin() { return count <= N ? near.items : far.data(); }
  T* end() { return begin() + count; }
  const T* begin() const { return count <= N ? near.items : far.data(); }
  const T* end() const { return begin() + count; }
  T& operator[](std::size_t i) { return begin()[i]; }
  const T& operator[](std::size_t i) const { return begin()[i]; }
  const T& front() const { return *begin(); }
  T& back() { return end()[-1]; }
  const T& back() const { return end()[-1]; }

  // The element added; valid until the next one is added.
  T& push_back(const T& value) {
    if (count < N) return *new (&near.items[count++]) T(value);
    if (count == N) {
      far.reserve(4 * N);
      far.assign(near.items, near.items + N);
    }
    far.push_back(value);
    ++count;
    return far.back();
  }

 private:
  // The first elements, until they spill; constructed as they are added.
  union Near {
    Near() {}
    T items[N];
  } near;
  std::size_t count = 0;
  std::vector<T> far;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
