// Small helpers shared by the readers and writers. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_TEXT_H
#define LYTFILTERPARSER_DETAIL_TEXT_H

#include <climits>
#include <cstdlib>
#include <string>
#include <utility>

#include "lytFilterParser/request/Assert.h"

namespace lytFilterParser {
namespace detail {

// Raises a fault through Assert; tells the compiler that control ends here.
[[noreturn]] inline void fail(std::string message) {
  Assert(false, std::move(message));
  std::abort();  // not reached: Assert(false, ...) always throws
}

// One-character tokens such as "[" and "]".
inline bool isChar(const std::string& token, char c) { return token.size() == 1 && token[0] == c; }

// Two-character option words such as "-f".
inline bool isOption(const std::string& token, char letter) {
  return token.size() == 2 && token[0] == '-' && token[1] == letter;
}

// Containment and prefix tests against string literals, whose length the
// compiler knows.
template <std::size_t N>
bool contains(const std::string& token, const char (&word)[N]) {
  return token.find(word, 0, N - 1) != std::string::npos;
}

template <std::size_t N>
bool startsWith(const std::string& token, const char (&prefix)[N]) {
  return token.size() >= N - 1 && token.compare(0, N - 1, prefix, N - 1) == 0;
}

template <std::size_t N>
bool is(const std::string& token, const char (&word)[N]) {
  return token.size() == N - 1 && token.compare(0, N - 1, word, N - 1) == 0;
}

// Reads a decimal integer the way the C library's atoi does (leading blanks
// and a sign allowed, reading stops at the first other character, no digits
// gives 0), but saturates at the int range instead of overflowing.
inline int readInt(const std::string& text, std::size_t from) {
  if (from >= text.size()) return 0;
  const char* p = text.c_str() + from;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
  bool negative = false;
  if (*p == '+' || *p == '-') negative = (*p++ == '-');
  long long value = 0;
  for (; *p >= '0' && *p <= '9'; ++p) {
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
