// How the reader takes a column option word apart, for the diagnostics that
// explain or locate one (the reader's own rule is in request/Reader.cpp;
// these follow it word for word), and the characters that a word may hold
// without showing them. Internal: not installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_WORDS_H
#define LYTFILTERPARSER_DIAGNOSTICS_WORDS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "lytFilterParser/vocab/Syntax.h"

namespace lytFilterParser {
namespace detail {

// The column option of a word containing "=" (an index of kColumnOptions,
// the first whose name the word contains), or COLUMN_OPTION_COUNT for none.
inline std::size_t columnOptionOf(std::string_view token) {
  for (std::size_t o = 0; o < COLUMN_OPTION_COUNT; ++o) {
    const std::string_view name = kColumnOptions[o].name;
    for (std::size_t at = token.find('=', name.size() - 1); at != std::string_view::npos; at = token.find('=', at + 1)) {
      if (token.compare(at + 1 - name.size(), name.size(), name) == 0) return o;
    }
  }
  return COLUMN_OPTION_COUNT;
}

// The value the reader finds in a word of column option `option`: the first
// of the option's values the word contains after the name's length; nullptr
// for none.
inline const Word<int>* columnOptionValue(std::string_view token, std::size_t option) {
  for (const Word<int>& value : kColumnOptions[option].values) {
    if (token.find(value.text, kColumnOptions[option].valueFrom) != std::string_view::npos) return &value;
  }
  return nullptr;
}

// "dir=in": the word of `option` for `code`.
inline std::string columnOptionWord(std::size_t option, int code) {
  std::string word(kColumnOptions[option].name);
  word += wordOf<int>(kColumnOptions[option].values, code);
  return word;
}

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
