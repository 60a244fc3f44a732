// A keyword with its length known at compile time, so that readers compare
// tokens with one length check and one memcmp instead of strlen and strcmp.
#ifndef LYTFILTERPARSER_DETAIL_KEYWORD_H
#define LYTFILTERPARSER_DETAIL_KEYWORD_H

#include <cstddef>
#include <cstring>
#include <string_view>

namespace lytFilterParser {
namespace detail {

struct Keyword {
  const char* text;
  std::size_t size;
};

constexpr Keyword keyword(const char* text) {
  std::size_t size = 0;
  while (text[size] != '\0') ++size;
  return Keyword{text, size};
}

inline bool equals(std::string_view token, const Keyword& word) {
  return token.size() == word.size && std::memcmp(token.data(), word.text, word.size) == 0;
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
