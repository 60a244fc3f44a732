#include "caret.h"

#include "words.h"

namespace lytreq {

std::vector<Span> tokenSpans(const std::string& text) {
  std::vector<Span> spans;
  const std::size_t size = text.size();
  std::size_t pos = 0;
  for (;;) {
    while (pos < size && text[pos] == ' ') ++pos;
    if (pos == size) return spans;
    std::size_t end = pos + 1;
    if (!isBracket(text[pos])) {
      while (end < size && text[end] != ' ' && !isBracket(text[end])) ++end;
    }
    spans.push_back(Span{pos, end - pos});
    pos = end;
  }
}

}  // namespace lytreq
