// Writing reports: text for people, one JSON object per request for scripts.
#ifndef LYTREQ_OUTPUT_H
#define LYTREQ_OUTPUT_H

#include <ostream>

#include "commands.h"
#include "json.h"

namespace lytreq {

// The report as one JSON object: "input", then the fields the subcommand
// filled ("request", "valid", "message", "minimalPeer", "peers", the
// explanation, "columns", "names"), or "error" with "errorStart" and
// "errorLength" (byte offset and length in "input"; length 0 just past its
// end) when the place is known and "suggestions"; last "warnings", every
// diagnostic as {"code", "severity", "message", "start", "length"} in bytes
// of "input". A check that refuses the request has "errorStart" and
// "errorLength" after its "message" when the place is known.
Json reportJson(const Report& report);

// A JSON value as one line of text; text that is not UTF-8 is replaced, not
// refused.
std::string jsonLine(const Json& value);

// Writes a report. Text: the result to `out`, each line after "N:" (its
// input line number) with `lineNumbers` in batch input; a fault to `err` as
// "line N: message" (batch) or "lytreq: message", followed by the request,
// a "^~~~" marker under the place and "Did you mean: ..." when the library
// suggests words; then every diagnostic the same way as "... warning:
// MESSAGE [CODE]" (or "note:"). JSON: one line to `out`, and for a fault in
// batch input "line N: message" to `err`.
void writeReport(const Report& report, bool json, bool lineNumbers, std::ostream& out, std::ostream& err);

// The text the report writes to standard output. A check of batch input
// writes a verdict line also for a request it could not check:
// "error: MESSAGE".
void writeText(const Report& report, std::ostream& out);
// The text the report writes for its fault.
void writeFault(const Report& report, std::ostream& err);
// The text the report writes for its diagnostics.
void writeDiagnostics(const Report& report, std::ostream& err);

}  // namespace lytreq

#endif
