// Reading request text through the library's entry points; when the library
// refuses a text, its message, place and suggestions come from the library's
// diagnostics (a RecordedRequest's refusal, convertWithDiagnostics).
#ifndef LYTREQ_READING_H
#define LYTREQ_READING_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/diagnostics/RecordedRequest.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

namespace lytreq {

using lytFilterParser::Diagnostic;
using lytFilterParser::Span;

// A message of the library (or of the tool), where in the request text it
// applies when that is known, and the words the refused word may have meant.
struct Fault {
  std::string message;
  std::optional<Span> where;
  std::vector<std::string> suggestions;
};

// True when the text holds no token at all.
bool isBlank(const std::string& text);

// One reading of a request text: the request, and with diagnostics asked for
// the record of the reading, which every diagnostic of the text reads.
struct Reading {
  std::optional<lytFilterParser::RecordedRequest> recorded;  // when read with a record
  std::unique_ptr<LYTKovaRequest> owned;  // read without a record, or a copy of the recorded one to change
  std::optional<Fault> fault;             // set when there is no request

  // The request; null when `fault` is set.
  const LYTKovaRequest* request() const;
  // The request to change (validation completes it): the recorded request
  // is copied the first time, as the record keeps it as read.
  LYTKovaRequest* changeable();
};

// Reads a current-syntax request, or a "vl" request, as
// LYTKovaRequest::getLYTKovaRequest does; with `record` the reading keeps
// its record (a RecordedRequest). A refusal is placed by the record (read
// for it when `record` is not asked).
Reading readRequest(const std::string& text, bool record);

struct LegacyConversion {
  std::string request;  // the current syntax, when `fault` is not set
  std::optional<Fault> fault;
  std::vector<Diagnostic> diagnostics;  // what the translation skipped, in bytes of the line
};

// Converts a legacy command line for peer `peer` with convertWithDiagnostics.
LegacyConversion convertLegacy(const std::string& text, TavVersion peer);

// The first token of `text` equal to `token`, if there is one.
std::optional<Span> findToken(const std::string& text, const std::string& token);

}  // namespace lytreq

#endif
