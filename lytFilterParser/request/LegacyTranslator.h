// The legacy reader's first step: legacy option tokens ("-g topsrc -y b
// src 0 [ 10.0.0.1 ]") translated into words of the current syntax, which
// the current-syntax reader then reads. Internal: not installed.
#ifndef LYTFILTERPARSER_REQUEST_LEGACYTRANSLATOR_H
#define LYTFILTERPARSER_REQUEST_LEGACYTRANSLATOR_H

#include "lytFilterParser/Export.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/request/Record.h"

namespace lytFilterParser {
namespace detail {

// A decision of the translation that may change what the line means, with
// the bytes of the line it is about (a translation of a strList has no
// places: its spans are empty).
struct LegacyEvent {
  enum Kind : unsigned char {
    WordSkipped,      // words that are no legacy syntax, skipped (one event for a run of them)
    FilterDropped,    // a bracketed group whose first word names no legacy filter, skipped
    OperatorSkipped,  // the filter list's operator, not "and": the filters are joined by "and"
    OptionLonger,     // "-ybx": read as its first two characters
    FirstLetter,      // "-y bytes", "-a ix": only the first letter counts
    FlagMisread,      // a negation flag neither "0" nor "1": read as "0"
    BracketSkipped,   // a word where a filter's "[" belongs, skipped
    PassedFilter,     // a legacy filter after a plain group, which the current syntax reads as names
    PassedWord,       // a word after a plain group that the column reader takes as a column word
    OptionRepeated    // a second "-g", "-y" or "-a" key: the older peers serve one
  };
  Kind kind;
  Span span;
  Part part = Part::Name;  // PassedWord: the column word it is taken as
  char option = 0;         // FirstLetter, OptionRepeated: the legacy option's letter ('g', 'y', 'a')
};

// What a translation decided, for a caller that asks: its events in the
// order of the line, and where it stopped when it refused (length 0 at the
// end of the line) with the kinds of word it would have taken there.
struct LegacyTrace {
  std::vector<LegacyEvent> events;
  Span faultAt;
  WordKinds expected = 0;
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
