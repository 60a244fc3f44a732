// Texts across the border: UTF-8 in, places in characters out, and the
// library's messages as RequestError.
#include <exception>
#include <vector>

#include "binding.h"
#include "lytFilterParser/lytFilterParser.h"

namespace lfp_python {

namespace {

// lytfilterparser.RequestError, held for the life of the process: the class
// must outlive every module object that could raise it.
PyObject* errorClass = nullptr;

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u; }

std::size_t countCharacters(const std::string& text, std::size_t from, std::size_t to) {
  std::size_t count = 0;
  for (std::size_t i = from; i < to && i < text.size(); ++i) {
    if (!isContinuationByte(text[i])) ++count;
  }
  return count;
}

// The byte span of a token of a list that LYTKovaRequest::fillFilterList
// cut from a text.
struct Span {
  std::size_t start;
  std::size_t length;
};

// The spans of `tokens` in `text`: the tokenizer separates only by blanks
// and cuts brackets off, so each token starts at the first non-blank byte
// after the one before. Empty when the list does not come from the text.
std::vector<Span> tokenSpans(const std::string& text, const strList& tokens) {
  std::vector<Span> spans;
  spans.reserve(tokens.size());
  std::size_t pos = 0;
  for (const std::string& token : tokens) {
    while (pos < text.size() && text[pos] == ' ') ++pos;
    if (text.compare(pos, token.size(), token) != 0) return {};
    spans.push_back(Span{pos, token.size()});
    pos += token.size();
  }
  return spans;
}

// The span of the token under `cur` after a parse that may have inserted
// tokens into the list: the first original token from the cursor on (the
// originals are known by their addresses, in order), or the end of the text.
Place placeOfCursor(const std::string& text, const strList& tokens, strIter cur,
                    const std::vector<const std::string*>& originals, const std::vector<Span>& spans) {
  std::size_t next = 0;  // originals before the node being looked at
  bool reached = false;
  for (auto it = tokens.begin(); it != tokens.end(); ++it) {
    reached = reached || it == cur;
    if (next < originals.size() && &*it == originals[next]) {
      if (reached) return characters(text, spans[next].start, spans[next].length);
      ++next;
    }
  }
  return characters(text, text.size(), 0);
}

}  // namespace

std::string_view virtualLinkWord() {
  // The vl words are listed in the order they stand in a request.
  for (const lytFilterParser::Word& word : lytFilterParser::vocabulary()) {
    if (word.kind == lytFilterParser::WordKind::VirtualLink) return word.text;
  }
  return {};
}

std::string utf8(const py::str& text) {
  Py_ssize_t size = 0;
  const char* data = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
  if (data == nullptr) throw py::error_already_set();
  return std::string(data, static_cast<std::size_t>(size));
}

Place characters(const std::string& text, std::size_t start, std::size_t length) {
  return Place{countCharacters(text, 0, start), countCharacters(text, start, start + length)};
}

void setRequestError(const std::string& message, const std::optional<Place>& place) {
  py::object start = py::none();
  py::object length = py::none();
  if (place) {
    start = py::int_(place->start);
    length = py::int_(place->length);
  }
  py::object error = py::reinterpret_borrow<py::object>(errorClass)(message, start, length);
  PyErr_SetObject(errorClass, error.ptr());
}

void raiseRequestError(const std::string& message, const std::optional<Place>& place) {
  setRequestError(message, place);
  throw py::error_already_set();
}

void translateLibraryMessages() {
  errorClass = py::object(py::module_::import("lytfilterparser._error").attr("RequestError")).release().ptr();
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const std::string& message) {
      setRequestError(message, std::nullopt);  // a translator reports by leaving the error set
    }
  });
}

std::optional<Place> readingFault(const std::string& text, const std::string& message) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  const std::vector<Span> spans = tokenSpans(text, tokens);
  if (tokens.empty() || spans.size() != tokens.size()) return std::nullopt;
  std::vector<const std::string*> originals;
  originals.reserve(tokens.size());
  for (const std::string& token : tokens) originals.push_back(&token);

  strIter cur = tokens.begin();
  try {
    if (*cur == virtualLinkWord()) {
      // E2EKovaRequest(strList&) takes the word after "vl" as the name, then
      // reads the options after it.
      if (++cur == tokens.end()) return characters(text, text.size(), 0);
      E2EKovaRequest request(std::string(), E2E_DATA_WIRE);
      request.parseFilter(tokens, ++cur);
    } else {
      strList none;
      NetworkKovaRequest request(none);
      request.parse(tokens, cur);
    }
  } catch (const std::string& thrown) {
    if (thrown == message) return placeOfCursor(text, tokens, cur, originals, spans);
  }
  return std::nullopt;
}

}  // namespace lfp_python
