// The Python extension _lytfilterparser: the library's entry points and
// requests as Python callables and objects. The pure-Python package
// lytfilterparser gives them their public face (python/lytfilterparser/).
//
// How the binding treats the library:
// - Texts go in and out as UTF-8 bytes, unchanged: what the library writes
//   and the messages it gives reach Python exactly.
// - Every message the library throws becomes lytfilterparser.RequestError,
//   a ValueError whose .message is the library's text.
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
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lfp_python {

namespace py = pybind11;

constexpr std::size_t kReleaseGilAt = 4096;

// The UTF-8 bytes of a Python str. A str that has no UTF-8 form (a lone
// surrogate) raises UnicodeEncodeError.
std::string utf8(const py::str& text);

// A place in a text, counted in characters (code points) of the Python str.
struct Place {
  std::size_t start = 0;
  std::size_t length = 0;
};

// The place of the bytes [start, start + length) of the UTF-8 `text`.
Place characters(const std::string& text, std::size_t start, std::size_t length);

// The word that opens an end-to-end request.
std::string_view virtualLinkWord();

// Raises lytfilterparser.RequestError with the library's `message`, and its
// place in the text the caller passed when there is one.
[[noreturn]] void raiseRequestError(const std::string& message, const std::optional<Place>& place);

// Makes every std::string the library throws a RequestError without a place.
void translateLibraryMessages();

// Runs `work`, which touches no Python object, without the GIL when `large`.
template <class Work>
auto withoutGilIf(bool large, Work&& work) {
  if (!large) return work();
  py::gil_scoped_release release;
  return work();
}

// Where getLYTKovaRequest stopped on `text` when it refused it with
// `message`, found by reading again through the public parsing members,
// whose cursor the library leaves on the token a message names or at the
// end. Nothing when that reading gives another message.
std::optional<Place> readingFault(const std::string& text, const std::string& message);

void bindRequests(py::module_& module);
void bindVocabulary(py::module_& module);

}  // namespace lfp_python

#endif
