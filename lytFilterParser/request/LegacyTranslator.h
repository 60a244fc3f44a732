// The legacy reader's first step: legacy option tokens ("-g topsrc -y b
// src 0 [ 10.0.0.1 ]") translated into words of the current syntax, which
// the current-syntax reader then reads. Internal: not installed.
#ifndef LYTFILTERPARSER_REQUEST_LEGACYTRANSLATOR_H
#define LYTFILTERPARSER_REQUEST_LEGACYTRANSLATOR_H

#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/detail/TokenSequence.h"

namespace lytFilterParser {
namespace detail {

// What a translation passed over, for a caller that asks: the tokens it
// skipped, in order, and the token it stopped on when it refused one
// (empty when the tokens ended too early).
struct LegacyTrace {
  std::vector<std::string_view> skipped;
  std::string_view faultAt;
  std::vector<std::string_view> flags;     // negation flags neither "0" nor "1": read as "0"
  std::vector<std::string_view> brackets;  // words skipped where a filter's "[" belongs, other than "["
  std::vector<std::string_view> passed;    // first words of legacy filters after a plain group, which
                                           // the current syntax reads as names
};

// Appends the translation of `tokens` to `out`: views of the tokens that
// pass through (which must outlive `out`), vocabulary words, and the
// interface items it composes. Words it does not know are skipped. Returns
// false with "Invalid value type", "Invalid key type", "Invalid interface
// filter" or "Invalid filter" in `fault` for an option or filter that ends
// early or names no legacy word. Fills `trace` when one is given. Defined
// for strList and TextTokens.
template <class Tokens>
LFP_HIDDEN bool translateLegacy(Tokens& tokens, WordTokens& out, std::string& fault, LegacyTrace* trace = nullptr);

}  // namespace detail
}  // namespace lytFilterParser

#endif
