// The library's diagnostics as lytfilterparser.Diagnostic values, placed in
// characters of the text they are about.
#include <pybind11/stl.h>

#include <tuple>

#include "binding.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace {

// lytfilterparser.Diagnostic and DiagnosticCode, held for the life of the
// process as RequestError is.
PyObject* diagnosticClass = nullptr;
PyObject* codeClass = nullptr;

py::str severity(lytFilterParser::Severity severity) {
  const std::string_view name = lytFilterParser::severityName(severity);
  return py::str(name.data(), name.size());
}

py::list lint(const py::str& text) {
  const std::string bytes = utf8(text);
  return pythonDiagnostics(withoutGilIf(bytes.size() >= kReleaseGilAt, [&] {
    std::vector<lytFilterParser::Diagnostic> found = lytFilterParser::lint(bytes);
    inCharacters(found, bytes);
    return found;
  }));
}

// The conversion and its diagnostics; a refusal raises as convert's does.
py::tuple convertWithDiagnostics(const py::str& text, int peer) {
  peerIn(peer, TAV_VERSION_LEGACY_1, TAV_VERSION_LEGACY_2);
  const std::string bytes = utf8(text);
  std::optional<Fault> fault;
  lytFilterParser::Conversion conversion = withoutGilIf(bytes.size() >= kReleaseGilAt, [&] {
    lytFilterParser::Conversion done = lytFilterParser::convertWithDiagnostics(bytes, TavVersion(peer));
    if (done.refusal) fault = faultOf(done.refusal->message, done.refusal, bytes);
    inCharacters(done.diagnostics, bytes);
    return done;
  });
  if (fault) raiseRequestError(*fault);
  return py::make_tuple(pythonText(conversion.request), pythonDiagnostics(conversion.diagnostics));
}

py::list diagnosticCodes() {
  py::list codes;
  const py::handle make(codeClass);
  for (const lytFilterParser::DiagnosticCode& entry : lytFilterParser::diagnosticCodes()) {
    codes.append(make(py::str(entry.code.data(), entry.code.size()), severity(entry.severity),
                      py::str(entry.meaning.data(), entry.meaning.size())));
  }
  return codes;
}

}  // namespace

void inCharacters(std::vector<lytFilterParser::Diagnostic>& diagnostics, const std::string& text) {
  Characters characters(text);
  for (lytFilterParser::Diagnostic& diagnostic : diagnostics) {
    const Span place = characters(diagnostic.start, diagnostic.length);
    diagnostic.start = place.start;
    diagnostic.length = place.length;
  }
}

py::list pythonDiagnostics(const std::vector<lytFilterParser::Diagnostic>& diagnostics) {
  py::list list;
  const py::handle make(diagnosticClass);
  for (const lytFilterParser::Diagnostic& diagnostic : diagnostics) {
    list.append(make(diagnostic.code, severity(diagnostic.severity), pythonText(diagnostic.message), diagnostic.start,
                     diagnostic.length));
  }
  return list;
}

void bindDiagnostics(py::module_& module) {
  const py::module_ values = py::module_::import("lytfilterparser._diagnostic");
  diagnosticClass = py::object(values.attr("Diagnostic")).release().ptr();
  codeClass = py::object(values.attr("DiagnosticCode")).release().ptr();
  module.def("lint", &lint, py::arg("text"),
             "lint(text: str) -> List[Diagnostic]\n\nWhat the reader accepts in a text but may surprise, placed in "
             "characters of it.");
  module.def("convert_with_diagnostics", &convertWithDiagnostics, py::arg("text"),
             py::arg("peer") = int(TAV_VERSION_LEGACY_2),
             "convert_with_diagnostics(text: str, peer: int = 2) -> Tuple[str, List[Diagnostic]]\n\n"
             "convert(text, peer) and what the translation skipped or changed, placed in the line.");
  module.def("diagnostic_codes", &diagnosticCodes,
             "diagnostic_codes() -> List[DiagnosticCode]\n\nEvery code a Diagnostic may have.");
}

}  // namespace lfp_python
