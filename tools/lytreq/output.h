// Writing reports: text for people, one JSON object per request for scripts.
#ifndef LYTREQ_OUTPUT_H
#define LYTREQ_OUTPUT_H

#include <ostream>

#include <nlohmann/json.hpp>

#include "commands.h"

namespace lytreq {

// JSON objects keep their fields in the order they are written.
typedef nlohmann::ordered_json Json;

// The report as one JSON object: "input", then the fields the subcommand
// filled ("request", "valid", "message", "minimalPeer", "columns", "names"),
// or "error" with "errorStart" and "errorLength" (character offset and
// length in "input"; length 0 just past its end) when the place is known.
Json reportJson(const Report& report);

// A JSON value as one line of text; text that is not UTF-8 is replaced, not
// refused.
std::string jsonLine(const Json& value);

// Writes a report. Text: the result to `out`, each line after "N:" (its
// input line number) with `lineNumbers` in batch input; a fault to `err` as
// "line N: message" (batch) or "lytreq: message", followed by the request
// and a "^~~~" marker under the place. JSON: one line to `out`, and for a
// fault in batch input "line N: message" to `err`.
void writeReport(const Report& report, bool json, bool lineNumbers, std::ostream& out, std::ostream& err);

// The text the report writes to standard output. A check of batch input
// writes a verdict line also for a request it could not check:
// "error: MESSAGE".
void writeText(const Report& report, std::ostream& out);
// The text the report writes for its fault.
void writeFault(const Report& report, std::ostream& err);

}  // namespace lytreq

#endif
