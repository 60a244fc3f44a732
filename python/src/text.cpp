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

void setRequestError(const Fault& fault) {
  py::object start = py::none();
  py::object length = py::none();
  if (fault.place) {
    start = py::int_(fault.place->start);
    length = py::int_(fault.place->length);
  }
  py::object error =
      py::reinterpret_borrow<py::object>(errorClass)(pythonText(fault.message), start, length, fault.suggestions);
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

Place Characters::operator()(std::size_t start, std::size_t length) {
  const std::size_t first = before(start);
  return Place{first, before(start + length) - first};
}

std::size_t Characters::before(std::size_t to) {
  to = std::min(to, text.size());
  for (; byte < to; ++byte) count += isContinuationByte(text[byte]) ? 0 : 1;
  for (; byte > to; --byte) count -= isContinuationByte(text[byte - 1]) ? 0 : 1;
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
