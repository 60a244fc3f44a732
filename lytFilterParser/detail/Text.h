// Small helpers shared by the readers and writers. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_TEXT_H
#define LYTFILTERPARSER_DETAIL_TEXT_H

#include <climits>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "lytFilterParser/base/Assert.h"

namespace lytFilterParser {
namespace detail {

// Raises a fault through Assert; tells the compiler that control ends here.
[[noreturn]] inline void fail(std::string message) {
  Assert(false, std::move(message));
  std::abort();  // not reached: Assert(false, ...) always throws
}

// The brackets that group the children of a compound filter; the tokenizer
// makes each a token of its own.
constexpr char kOpenBracket = '[';
constexpr char kCloseBracket = ']';

// The first character, '\0' for an empty token: a caller's token list may
// hold empty strings, which std::string reads as '\0' too.
inline char firstChar(std::string_view token) { return token.empty() ? '\0' : token.front(); }

// One-character tokens such as "[" and "]".
inline bool isChar(std::string_view token, char c) { return token.size() == 1 && token[0] == c; }

// Reads a decimal integer the way the C library's atoi does (leading blanks
// and a sign allowed, reading stops at the first other character, no digits
// gives 0), but saturates at the int range instead of overflowing.
inline int readInt(std::string_view text, std::size_t from) {
  if (from >= text.size()) return 0;
  const char* p = text.data() + from;
  const char* const end = text.data() + text.size();
  while (p != end && (*p == ' ' || (*p >= '\t' && *p <= '\r'))) ++p;
  bool negative = false;
  if (p != end && (*p == '+' || *p == '-')) negative = (*p++ == '-');
  long long value = 0;
  for (; p != end && *p >= '0' && *p <= '9'; ++p) {
    value = value * 10 + (*p - '0');
    if (value > static_cast<long long>(INT_MAX) + 1) value = static_cast<long long>(INT_MAX) + 1;
  }
  if (negative) value = -value;
  if (value > INT_MAX) value = INT_MAX;
  if (value < INT_MIN) value = INT_MIN;
  return static_cast<int>(value);
}

// A message followed by a token.
inline std::string message(const char* text, std::string_view token) {
  std::string out(text);
  out += token;
  return out;
}

// The invisible and control characters: the C0 controls and DEL, U+0080 to
// U+00A0 and U+00AD, and the blank and format characters of U+2000 to
// U+200F, U+2028 to U+202F, U+205F to U+206F, U+3000 and U+FEFF.
struct Invisible {
  std::size_t length;  // bytes; 0 for a visible character
  unsigned codePoint;
};

// The invisible or control character that starts at text[i], if one does.
inline Invisible invisibleAt(std::string_view text, std::size_t i) {
  if (i >= text.size()) return {0, 0};
  const auto byte = [&](std::size_t k) { return i + k < text.size() ? static_cast<unsigned char>(text[i + k]) : 0u; };
  const unsigned b0 = byte(0), b1 = byte(1), b2 = byte(2);
  if (b0 < 0x20 || b0 == 0x7F) return {1, b0};
  if (b0 == 0xC2 && (b1 <= 0xA0 || b1 == 0xAD) && b1 >= 0x80) return {2, b1};
  const unsigned three = (b0 & 0x0Fu) << 12 | (b1 & 0x3Fu) << 6 | (b2 & 0x3Fu);
  const bool continued = (b1 & 0xC0u) == 0x80 && (b2 & 0xC0u) == 0x80;
  if (!continued || (b0 & 0xF0u) != 0xE0) return {0, 0};
  const bool invisible = (three >= 0x2000 && three <= 0x200F) || (three >= 0x2028 && three <= 0x202F) ||
                         (three >= 0x205F && three <= 0x206F) || three == 0x3000 || three == 0xFEFF;
  return invisible ? Invisible{3, three} : Invisible{0, 0};
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
