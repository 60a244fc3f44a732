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
// of "input". Bytes of the request that are not UTF-8 are U+FFFD in
// "input", and every place counts bytes of that "input" as written. A check that refuses the request has "errorStart"
// and "errorLength" after its "message" when the place is known.
Json reportJson(const Report& report);

// A JSON value as one line of text; text that is not UTF-8 is replaced, not
// refused.
std::string jsonLine(const Json& value);

// How reports are written.
struct WriteOptions {
  bool json = false;
  bool lineNumbers = false;  // -n: "N:" before each line of a result (1 for a request given as argument)
  bool separate = false;     // results of several lines: an empty line between those of two requests
};

// Writes the reports of one call. Text: the result to `out`, each line after
// "N:" with `lineNumbers`; a fault to `err` as "lytreq: MESSAGE" or, in batch
// input, "FILE:LINE:COLUMN: error: MESSAGE" (COLUMN, in bytes from 1, left
// out when the place is not known), followed by the request, a "^~~~" marker
// under the place and "Did you mean: ..." when the library suggests words;
// then every diagnostic the same way as "... warning: MESSAGE [CODE]" (or
// "note:"). JSON: one line to `out`, and for a fault in batch input its
// "FILE:LINE:COLUMN: error: MESSAGE" to `err`. Messages show control
// characters escaped (shown()).
class ReportWriter {
 public:
  ReportWriter(WriteOptions options, std::ostream& out, std::ostream& err);
  void write(const Report& report);

 private:
  WriteOptions options_;
  std::ostream& out_;
  std::ostream& err_;
  bool wrote_ = false;  // a result has been written (separate)
};

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
