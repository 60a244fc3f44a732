// The characters that a request may hold without showing them, as one
// table for everything that reports or shows them (lint's
// invisible-character, the suggestions of a refusal, a tool's echo of the
// request), and the edit distance that suggestions are chosen by.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_CHARACTERS_H
#define LYTFILTERPARSER_DIAGNOSTICS_CHARACTERS_H

#include <cstddef>
#include <string_view>

#include "lytFilterParser/Export.h"

namespace lytFilterParser {

struct CodePointRange {
  char32_t first;
  char32_t last;  // included
};

// The invisible characters, in ascending order: the C0 controls (tab, line
// feed and carriage return among them), DEL and the C1 controls, the
// no-break and other spaces but the blank, the soft hyphen, zero-width and
// joining characters, direction marks and isolates, fillers, the byte order
// mark, interlinear annotation marks and the tag characters. Throws nothing.
struct CodePointTable {
  const CodePointRange* ranges;
  std::size_t count;
  const CodePointRange* begin() const { return ranges; }
  const CodePointRange* end() const { return ranges + count; }
};
LFP_API CodePointTable invisibleCharacters();

// A character of a UTF-8 text that the table holds.
struct InvisibleCharacter {
  std::size_t length;  // bytes; 0 when the character at `at` is visible (or no valid UTF-8)
  char32_t codePoint;
};

// The invisible character that starts at text[at], if one does. Throws nothing.
LFP_API InvisibleCharacter invisibleAt(std::string_view text, std::size_t at);

// The edit distance (insertions, deletions, substitutions of bytes) of `a`
// and `b`, or `limit` + 1 when it is more than `limit`; at most
// O(|a| * (2 * limit + 1)) work. Throws std::bad_alloc.
LFP_API std::size_t editDistance(std::string_view a, std::string_view b, std::size_t limit);

}  // namespace lytFilterParser

#endif
