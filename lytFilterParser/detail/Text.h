// Small helpers shared by the readers and writers. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_TEXT_H
#define LYTFILTERPARSER_DETAIL_TEXT_H

#include <climits>
#include <cstdlib>
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

}  // namespace detail
}  // namespace lytFilterParser

#endif
