#include "lytFilterParser/diagnostics/Diagnostic.h"

#include "lytFilterParser/diagnostics/DiagnosticTable.h"

namespace lytFilterParser {

std::string_view severityName(Severity severity) { return severity == Severity::Note ? "note" : "warning"; }

const std::vector<DiagnosticCode>& diagnosticCodes() {
  static const std::vector<DiagnosticCode> codes(std::begin(detail::kCodes), std::end(detail::kCodes));
  return codes;
}

const DiagnosticCode* findDiagnosticCode(std::string_view code) {
  for (const DiagnosticCode& entry : diagnosticCodes()) {
    if (entry.code == code) return &entry;
  }
  return nullptr;
}

}  // namespace lytFilterParser
