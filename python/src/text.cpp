// Texts across the border: UTF-8 in, places in characters out, and the
// library's messages as RequestError.
#include <pybind11/stl.h>

#include <algorithm>
#include <exception>

#include "binding.h"

namespace lfp_python {

namespace {

// lytfilterparser.RequestError, held for the life of the process: the class
// must outlive every module object that could raise it.
PyObject* errorClass = nullptr;

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u; }

// The length of the well-formed UTF-8 sequence that starts at `at`, 0 when
// none does (a stray or overlong byte, a surrogate, a sequence cut short).
std::size_t sequenceAt(const std::string& text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(at);
  std::size_t length = 0;
  unsigned low = 0x80, high = 0xBF;  // the range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return lead < 0x80 ? 1 : 0;
  }
  if (at + length > text.size() || byte(at + 1) < low || byte(at + 1) > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if (!isContinuationByte(text[at + i])) return 0;
  }
  return length;
}

// Whether the byte at `at` starts a character of the str the text decodes
// to: a well-formed sequence is one character, and every byte of an
// ill-formed one is a character of its own (a lone surrogate of the
// "surrogateescape" error handler).
bool startsCharacter(const std::string& text, std::size_t at) {
  if (!isContinuationByte(text[at])) return true;
  for (std::size_t back = 1; back <= 3 && back <= at; ++back) {
    if (isContinuationByte(text[at - back])) continue;
    return sequenceAt(text, at - back) <= back;
  }
  return true;
}

void setRequestError(const Fault& fault, const char* note = nullptr) {
  py::object start = py::none();
  py::object length = py::none();
  if (fault.place) {
    start = py::int_(fault.place->start);
    length = py::int_(fault.place->length);
  }
  py::object error =
      py::reinterpret_borrow<py::object>(errorClass)(pythonText(fault.message), start, length, fault.suggestions);
  if (note != nullptr) error.attr("add_note")(note);
  PyErr_SetObject(errorClass, error.ptr());
}

}  // namespace

std::string utf8(const py::str& text) {
  Py_ssize_t size = 0;
  const char* data = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
  if (data != nullptr) return std::string(data, static_cast<std::size_t>(size));
  // Bytes that were no UTF-8, kept as lone surrogates, go back as they were.
  if (!PyErr_ExceptionMatches(PyExc_UnicodeEncodeError)) throw py::error_already_set();
  PyErr_Clear();
  const py::object bytes =
      py::reinterpret_steal<py::object>(PyUnicode_AsEncodedString(text.ptr(), "utf-8", "surrogateescape"));
  if (!bytes) throw py::error_already_set();
  return std::string(PyBytes_AS_STRING(bytes.ptr()), static_cast<std::size_t>(PyBytes_GET_SIZE(bytes.ptr())));
}

py::str pythonText(const std::string& text) {
  PyObject* made = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape");
  if (made == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(made);
}

Span Characters::operator()(std::size_t start, std::size_t length) {
  const std::size_t first = before(start);
  return Span{first, before(start + length) - first};
}

std::size_t Characters::before(std::size_t to) {
  to = std::min(to, text.size());
  for (; byte < to; ++byte) count += startsCharacter(text, byte) ? 1 : 0;
  for (; byte > to; --byte) count -= startsCharacter(text, byte - 1) ? 1 : 0;
  return count;
}

Fault faultOf(const std::string& message, const std::optional<lytFilterParser::Refusal>& refusal,
              const std::string& text) {
  Fault fault{message, std::nullopt, {}};
  if (refusal && refusal->message == message) {
    fault.place = Characters(text)(refusal->start, refusal->length);
    fault.suggestions = refusal->suggestions;
  }
  return fault;
}

void raiseRequestError(const std::string& message) { raiseRequestError(Fault{message, std::nullopt, {}}); }

void raiseRequestError(const Fault& fault) {
  setRequestError(fault);
  throw py::error_already_set();
}

void raiseRequestError(const Fault& fault, const std::string& text) {
  // A line read from a file with its line end keeps it in its last word, so
  // that a well-formed request is refused for a word it does not show.
  const bool lineEnd = !text.empty() && (text.back() == '\n' || text.back() == '\r');
  setRequestError(fault, lineEnd ? "the text ends in a line end, which is part of its last word: strip it, or read "
                                   "files with read_requests()"
                                 : nullptr);
  throw py::error_already_set();
}

void translateLibraryMessages() {
  errorClass = py::object(py::module_::import("lytfilterparser._error").attr("RequestError")).release().ptr();
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const std::string& message) {
      setRequestError(Fault{message, std::nullopt, {}});  // a translator reports by leaving the error set
    }
  });
}

}  // namespace lfp_python
