#include "caret.h"

#include "words.h"

namespace lytreq {

namespace {

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u; }

}  // namespace

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

TokenMap::TokenMap(const std::string& text, const strList& tokens) : textSize(text.size()) {
  const std::vector<Span> found = tokenSpans(text);
  std::size_t i = 0;
  for (const std::string& token : tokens) {
    // A list that does not match the text gets no places: every cursor then
    // maps to the end of the text.
    if (i == found.size() || text.compare(found[i].start, found[i].length, token) != 0) {
      spans.clear();
      return;
    }
    spans.emplace(&token, found[i]);
    ++i;
  }
}

Span TokenMap::locate(const strList& tokens, strIter cur) const {
  for (; cur != tokens.end(); ++cur) {
    const auto it = spans.find(&*cur);
    if (it != spans.end()) return it->second;
  }
  return end();
}

bool TokenMap::find(const strList& tokens, const std::string& token, Span& span) const {
  for (const std::string& node : tokens) {
    if (node != token) continue;
    const auto it = spans.find(&node);
    if (it == spans.end()) continue;
    span = it->second;
    return true;
  }
  return false;
}

std::size_t characterCount(const std::string& text, std::size_t from, std::size_t to) {
  if (to > text.size()) to = text.size();
  std::size_t count = 0;
  for (std::size_t i = from; i < to; ++i) {
    if (!isContinuationByte(text[i])) ++count;
  }
  return count;
}

}  // namespace lytreq
