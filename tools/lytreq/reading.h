// Reading request text through the library's entry points; when the library
// refuses a text, its message, place and suggestions come from the library's
// diagnostics (readRefusal, convertWithDiagnostics).
#ifndef LYTREQ_READING_H
#define LYTREQ_READING_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "caret.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

namespace lytreq {

using lytFilterParser::Diagnostic;

// A message of the library (or of the tool), where in the request text it
// applies when that is known, and the words the refused word may have meant.
struct Fault {
  std::string message;
  std::optional<Span> where;
  std::vector<std::string> suggestions;
};

// True when the text holds no token at all.
bool isBlank(const std::string& text);

struct Reading {
  std::unique_ptr<LYTKovaRequest> request;  // null when `fault` is set
  std::optional<Fault> fault;
};

// Reads a current-syntax request, or a "vl" request, with
// LYTKovaRequest::getLYTKovaRequest; a refusal is placed by readRefusal.
Reading readRequest(const std::string& text);

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
