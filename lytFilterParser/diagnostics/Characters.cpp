#include "lytFilterParser/diagnostics/Characters.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace lytFilterParser {
namespace {

constexpr CodePointRange kInvisible[] = {
    {0x0000, 0x001F}, {0x007F, 0x00A0}, {0x00AD, 0x00AD}, {0x034F, 0x034F},   {0x115F, 0x1160}, {0x1680, 0x1680},
    {0x180E, 0x180E}, {0x2000, 0x200F}, {0x2028, 0x202F}, {0x205F, 0x206F},   {0x3000, 0x3000}, {0x3164, 0x3164},
    {0xFEFF, 0xFEFF}, {0xFFA0, 0xFFA0}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
};

// The length of the UTF-8 sequence at text[at] and its code point; 0 for a
// byte that starts no valid sequence.
std::size_t decode(std::string_view text, std::size_t at, char32_t& c) {
  const unsigned char lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = lead < 0x80           ? 1
                             : (lead >> 5) == 0x6  ? 2
                             : (lead >> 4) == 0xE  ? 3
                             : (lead >> 3) == 0x1E ? 4
                                                   : 0;
  if (length == 0 || at + length > text.size()) return 0;
  c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
  for (std::size_t k = 1; k < length; ++k) {
    const unsigned char next = static_cast<unsigned char>(text[at + k]);
    if ((next & 0xC0u) != 0x80u) return 0;
    c = (c << 6) | (next & 0x3Fu);
  }
  return length;
}

}  // namespace

CodePointTable invisibleCharacters() { return CodePointTable{kInvisible, std::size(kInvisible)}; }

InvisibleCharacter invisibleAt(std::string_view text, std::size_t at) {
  if (at >= text.size()) return {0, 0};
  char32_t c = 0;
  const std::size_t length = decode(text, at, c);
  if (length == 0) return {0, 0};
  const CodePointRange* range = std::lower_bound(std::begin(kInvisible), std::end(kInvisible), c,
                                                 [](const CodePointRange& r, char32_t x) { return r.last < x; });
  return range != std::end(kInvisible) && range->first <= c ? InvisibleCharacter{length, c} : InvisibleCharacter{0, 0};
}

std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit) {
  const std::size_t over = limit + 1;
  if (a.size() > b.size() + limit || b.size() > a.size() + limit) return over;
  std::vector<std::size_t> previous(b.size() + 1), current(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) previous[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    current[0] = i;
    std::size_t best = current[0];
    for (std::size_t j = 1; j <= b.size(); ++j) {
      current[j] = std::min({previous[j] + 1, current[j - 1] + 1, previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      best = std::min(best, current[j]);
    }
    if (best > limit) return over;
    std::swap(previous, current);
  }
  return std::min(previous[b.size()], over);
}

}  // namespace lytFilterParser
