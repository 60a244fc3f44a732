// Validation for a peer with the place of its refusal in the request text.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_VALIDATION_H
#define LYTFILTERPARSER_DIAGNOSTICS_VALIDATION_H

#include <optional>
#include <string>

#include "lytFilterParser/Export.h"
#include "lytFilterParser/base/TavVersion.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace lytFilterParser {

// Runs request.isValid(peer, message), which completes the request as it
// always does, and returns nothing when it accepts. When it refuses, the
// refusal carries exactly isValid's message and the bytes of `text` (from
// which the caller read `request`) of the item that made it fail: the fifth
// key column for "Number of keys reach the max number", the second value
// column for "Support only one value column", the word of a refused type,
// mode, column option, name, "index=" or "updates="; the end of the text
// for a missing key or value column, the whole text where no item is to
// blame ("This version is not supported") or when `request` is not what
// `text` reads as. No suggestions. Throws what isValid throws ("Not a
// valid argument for type" for a telNumber key with a session value).
LFP_API std::optional<Refusal> validate(const std::string& text, NetworkKovaRequest& request, TavVersion peer);

}  // namespace lytFilterParser

#endif
