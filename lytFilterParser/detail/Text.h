// Small helpers shared by the readers and writers. Internal: not installed.
#ifndef LYTFILTERPARSER_DETAIL_TEXT_H
#define LYTFILTERPARSER_DETAIL_TEXT_H

#include <climits>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "lytFilterParser/request/Assert.h"

namespace lytFilterParser {
namespace detail {

// Raises a fault through Assert; tells the compiler that control ends here.
[[noreturn]] inline void fail(std::string message) {
  Assert(false, std::move(message));
  std::abort();  // not reached: Assert(false, ...) always throws
}

// The first character, '\0' for an empty token: a caller's token list may
// hold empty strings, which std::string reads as '\0' too.
inline char firstChar(std::string_view token) { return token.empty() ? '\0' : token.front(); }

// One-character tokens such as "[" and "]".
inline bool isChar(std::string_view token, char c) { return token.size() == 1 && token[0] == c; }

// Two-character option words such as "-f".
inline bool isOption(std::string_view token, char letter) {
  return token.size() == 2 && token[0] == '-' && token[1] == letter;
}

// The operator words of a compound filter.
inline bool isOperatorWord(std::string_view token) {
  return token == "or" || token == "OR" || token == "and" || token == "AND";
}

// Containment and prefix tests against string literals, whose length the
// compiler knows.
template <std::size_t N>
bool contains(std::string_view token, const char (&word)[N]) {
  return token.find(std::string_view(word, N - 1)) != std::string_view::npos;
}

template <std::size_t N>
bool startsWith(std::string_view token, const char (&prefix)[N]) {
  return token.size() >= N - 1 && token.compare(0, N - 1, std::string_view(prefix, N - 1)) == 0;
}

template <std::size_t N>
bool is(std::string_view token, const char (&word)[N]) {
  return token == std::string_view(word, N - 1);
}

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

}  // namespace detail
}  // namespace lytFilterParser

#endif
