// Places in the request text: byte ranges, as the library gives them for
// refusals and diagnostics (echo.h draws the marker under the text).
#ifndef LYTREQ_CARET_H
#define LYTREQ_CARET_H

#include <cstddef>
#include <string>
#include <vector>

namespace lytreq {

// A byte range of the request text. A span of length 0 stands just before
// `start`: past the end of the text when `start` is its size.
struct Span {
  std::size_t start = 0;
  std::size_t length = 0;
};

// The spans of the tokens LYTKovaRequest::fillFilterList cuts from `text`,
// in order: blanks separate, "[" and "]" are tokens of their own.
std::vector<Span> tokenSpans(const std::string& text);

}  // namespace lytreq

#endif
