// The Python extension _lytfilterparser: the library's entry points and
// requests as Python callables and objects. The pure-Python package
// lytfilterparser gives them their public face (python/lytfilterparser/).
//
// How the binding treats the library:
// - Texts go in and out as UTF-8 bytes, unchanged: what the library writes
//   and the messages it gives reach Python exactly.
// - Every message the library throws becomes lytfilterparser.RequestError,
//   a ValueError whose .message is the library's text.
// - Places in a text (of a refusal, of a diagnostic) go out in characters
//   of the str the caller passed, not in the library's bytes.
// - Work on a text of kReleaseGilAt bytes or more runs without the GIL, so
//   other Python threads go on meanwhile; below that, giving the GIL up
//   would cost more than the work.
// - Each request object has a lock of its own: operations on one object
//   never overlap, operations on different objects run in parallel as the
//   library allows.
#ifndef LYTFILTERPARSER_PYTHON_BINDING_H
#define LYTFILTERPARSER_PYTHON_BINDING_H

#include <pybind11/pybind11.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Diagnostic.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace py = pybind11;

constexpr std::size_t kReleaseGilAt = 4096;

// The UTF-8 bytes of a Python str; lone surrogates of the "surrogateescape"
// error handler stand for the bytes they escape, other lone surrogates raise
// UnicodeEncodeError.
std::string utf8(const py::str& text);
// The str of UTF-8 bytes that the library gives back; bytes that are no
// UTF-8 become lone surrogates, which utf8() turns back into them.
py::str pythonText(const std::string& text);

// Places in a text are the library's Span, counted in characters (code
// points) of the Python str where they go out to Python, in bytes inside.
using lytFilterParser::Span;

// Places in characters of the bytes of one UTF-8 text. Each call counts on
// from the place before, so places in the order of the text cost one pass
// over it together.
class Characters {
 public:
  explicit Characters(const std::string& text) : text(text) {}

  // The place of the bytes [start, start + length), clamped to the text.
  Span operator()(std::size_t start, std::size_t length);

 private:
  std::size_t before(std::size_t byte);  // characters before `byte`

  const std::string& text;
  std::size_t byte = 0;
  std::size_t count = 0;  // characters before `byte`
};

// A fault to raise as RequestError: the library's message, its place in
// characters of the text the caller passed when there is one, and words the
// faulty word may have meant.
struct Fault {
  std::string message;
  std::optional<Span> place;  // in characters
  std::vector<std::string> suggestions;
};

// The fault of `message`, which the library gave for `text`, with the place
// and suggestions of `refusal` when the refusal is about that message.
Fault faultOf(const std::string& message, const std::optional<lytFilterParser::Refusal>& refusal,
              const std::string& text);

// Raises lytfilterparser.RequestError with the library's `message` and no
// place, or with what `fault` holds.
[[noreturn]] void raiseRequestError(const std::string& message);
[[noreturn]] void raiseRequestError(const Fault& fault);
// raiseRequestError(fault) for a refusal of `text`, with a note (beside the
// library's message) when the text ends in a line end.
[[noreturn]] void raiseRequestError(const Fault& fault, const std::string& text);

// Makes the diagnostics' places places in characters of `text`, their
// subject (do this before the GIL is taken back for a large text).
void inCharacters(std::vector<lytFilterParser::Diagnostic>& diagnostics, const std::string& text);

// lytfilterparser.Diagnostic values of `diagnostics`, placed in characters.
py::list pythonDiagnostics(const std::vector<lytFilterParser::Diagnostic>& diagnostics);

// Makes every std::string the library throws a RequestError without a place.
void translateLibraryMessages();

// Runs `work`, which touches no Python object, without the GIL when `large`.
template <class Work>
auto withoutGilIf(bool large, Work&& work) {
  if (!large) return work();
  py::gil_scoped_release release;
  return work();
}

// The model of a request: a NetworkModel or an E2EModel of the package's
// classes (model.cpp), and the request that a model describes. buildRequest
// raises TypeError or ValueError for what is no model.
py::object networkModel(const NetworkKovaRequest& request);
py::object linkModel(const E2EKovaRequest& request);
std::unique_ptr<LYTKovaRequest> buildRequest(py::handle model);

// `peer` when it lies in [low, high]; ValueError naming the range otherwise.
int peerIn(int peer, int low, int high);

void bindModel(py::module_& module);
void bindRequests(py::module_& module);
void bindVocabulary(py::module_& module);
void bindDiagnostics(py::module_& module);

}  // namespace lfp_python

#endif
