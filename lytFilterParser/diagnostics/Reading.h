// The refusal of a text at the place where its reader stopped, and the
// record of a text that a caller's request was read from. Internal: not
// installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_READING_H
#define LYTFILTERPARSER_DIAGNOSTICS_READING_H

#include <string>
#include <string_view>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Record.h"

namespace lytFilterParser {
namespace detail {

// The refusal with `message` at `at` of `text`, with the suggestions for
// the word there that the message calls for (Refusal.cpp).
Refusal refusalAt(std::string message, Span at, std::string_view text);

// Reads `text` with its record; true when `request` is what the reader
// makes of it (the same filter tree shape, columns and name counts), so
// that the record's places are the request's.
bool recordFor(std::string_view text, const NetworkKovaRequest& request, Reading& reading);

}  // namespace detail
}  // namespace lytFilterParser

#endif
