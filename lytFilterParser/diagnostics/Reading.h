// The refusal of a text at the place where its reader stopped, and the
// record of a text that a caller's request was read from. Internal: not
// installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_READING_H
#define LYTFILTERPARSER_DIAGNOSTICS_READING_H

#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/diagnostics/Diagnostic.h"

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Record.h"
#include "lytFilterParser/request/Validator.h"

namespace lytFilterParser {
namespace detail {

// The refusal with `message` at `at` of `text`, with the suggestions for
// the word there among the kinds `expected` there (Refusal.cpp).
Refusal refusalAt(std::string message, Span at, WordKinds expected, std::string_view text);

// What lint, fidelity and validate find in a reading with its record (the
// public functions of the same names read the text first).
std::vector<Diagnostic> lintReading(const Reading& reading);
std::vector<Diagnostic> compare(const LYTKovaRequest& request, const Reading& reading, bool located, TavVersion peer);
// The place of the item validation blamed.
Span blamedPlace(const Record& record, const Blame& blame);
// Word `nth` (or the last, kLastWord) of `part` in `column`, else the
// column's type. A column option's word counts only for its own `option`.
constexpr std::size_t kLastWord = static_cast<std::size_t>(-1);
Span columnWord(const Record& outline, const RecordColumn& column, Part part, std::size_t nth, std::size_t option);

// Reads `text` for its record alone; true when `request` is what the reader
// makes of it (the same filter tree shape, columns and name counts), so
// that the record's places are the request's.
bool recordFor(std::string_view text, const NetworkKovaRequest& request, Reading& reading);

}  // namespace detail
}  // namespace lytFilterParser

#endif
