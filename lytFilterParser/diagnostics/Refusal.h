// Why and where the library refuses a request: the reader's message as the
// entry points give it, the bytes of the text where reading stopped, and
// words of the vocabulary that the refused word may have meant.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_REFUSAL_H
#define LYTFILTERPARSER_DIAGNOSTICS_REFUSAL_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/vocab/Vocabulary.h"

namespace lytFilterParser {

struct Refusal {
  std::string message;                   // exactly the library's message
  std::size_t start;                     // bytes of the text: the word the message is about,
  std::size_t length;                    // or (length 0) the end when the text ends too early
  std::vector<std::string> suggestions;  // at most 3 vocabulary words, the closest first
};

// Why getLYTKovaRequest refuses `text`, or nothing when it accepts it or the
// text has no word. `message` is the error getLYTKovaRequest gives; the
// place is the word the reader stopped on (a "]" the reader adds to an atom
// list stands where the next word starts, with length 0); the suggestions
// are for the word there, among the kinds of word the reader would have
// taken at that place, when it is no word of the vocabulary ("Invalid type:
// Src" suggests "src"; see suggestWords). Throws nothing of its own.
LFP_API std::optional<Refusal> readRefusal(const std::string& text);

// Up to three readable words of the vocabulary of the kinds in `kinds` (all
// kinds when empty) that `word` may have meant, the closest first: the same
// word in another case, then words at an edit distance of 1, then 2 (and
// less than the length of either word), only those as close as the
// closest. Invisible and control characters in `word` are left out
// before comparing. Nothing for a word of those kinds. Throws nothing of
// its own.
LFP_API std::vector<std::string> suggestWords(std::string_view word, const std::vector<WordKind>& kinds);

}  // namespace lytFilterParser

#endif
