// The explicit stack of the library's tree walks: the first levels live in
// the object itself, so that the shallow trees of ordinary requests are
// walked without an allocation; deeper levels go to the heap, so that no
// depth exhausts the call stack. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_SMALLSTACK_H
#define LYTFILTERPARSER_DETAIL_SMALLSTACK_H

#include <cstddef>
#include <utility>
#include <vector>

namespace lytFilterParser {
namespace detail {

template <class T, std::size_t N>
class SmallStack {
 public:
  bool empty() const { return count == 0; }
  // The top entry; valid until the next push or pop.
  T& top() { return count <= N ? near[count - 1] : far.back(); }
  void push(T value) {
    if (count < N) {
      near[count] = std::move(value);
    } else {
      // A tree that goes past the first levels usually goes far: grow in
      // large steps from the start.
      if (far.empty()) far.reserve(4 * N);
      far.push_back(std::move(value));
    }
    ++count;
  }
  // Removes the top entry and returns it.
  T pop() {
    --count;
    if (count >= N) {
      T value = std::move(far.back());
      far.pop_back();
      return value;
    }
    return std::exchange(near[count], T());
  }

 private:
  T near[N];  // entries past `count` hold nothing of value
  std::vector<T> far;
  std::size_t count = 0;
};

}  // namespace detail
}  // namespace lytFilterParser

#endif
