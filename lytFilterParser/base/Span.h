// A range of bytes of a text: where the library found a word, an item or a
// fault. Offsets count bytes of the UTF-8 text from 0.
#ifndef LYTFILTERPARSER_BASE_SPAN_H
#define LYTFILTERPARSER_BASE_SPAN_H

#include <cstddef>

namespace lytFilterParser {

struct Span {
  std::size_t start = 0;
  std::size_t length = 0;  // 0 marks the place just before `start`
  std::size_t end() const { return start + length; }
};

// From the start of `first` to the end of `last`; `first` when `last` ends before it.
inline Span cover(Span first, Span last) {
  return last.end() > first.start ? Span{first.start, last.end() - first.start} : first;
}

}  // namespace lytFilterParser

#endif
