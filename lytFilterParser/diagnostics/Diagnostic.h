// Diagnostics: what the library notices about a request beyond accepting or
// refusing it. The readers, writers and checks stay as they are, their texts
// and messages included; a diagnostic is a separate finding that is worked
// out only when a caller asks for it (lint, fidelity, convertWithDiagnostics,
// readRefusal, validate), so callers that do not ask pay nothing.
//
// A diagnostic names a stable code, says how serious it is, explains itself
// to people, and points at the bytes of the text it is about: the request
// text, or the legacy line for a conversion. docs/diagnostics.md describes
// every code and how to change a request so that it goes away.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_DIAGNOSTIC_H
#define LYTFILTERPARSER_DIAGNOSTICS_DIAGNOSTIC_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/Export.h"

namespace lytFilterParser {

enum class Severity : int {
  Warning,  // the request may not mean what it says
  Note      // harmless, but probably not meant
};

// "warning" or "note".
LFP_API std::string_view severityName(Severity severity);

struct Diagnostic {
  std::string code;     // kebab-case, one of diagnosticCodes(); stable across releases
  Severity severity;    // the code's severity
  std::string message;  // for people; its wording may change
  std::size_t start;    // first byte of the text it is about
  std::size_t length;   // bytes; 0 marks the place just before `start` (the end of the text when start is its size)
};

// One code a diagnostic may carry.
struct DiagnosticCode {
  std::string_view code;
  Severity severity;
  std::string_view meaning;  // one line for people
};

// Every code, in the order of docs/diagnostics.md. Throws nothing.
LFP_API const std::vector<DiagnosticCode>& diagnosticCodes();

// The entry of `code`, or nullptr for a code that is not one. Throws nothing.
LFP_API const DiagnosticCode* findDiagnosticCode(std::string_view code);

}  // namespace lytFilterParser

#endif
