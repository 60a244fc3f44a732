// Reading request text through the library's entry points, and finding the
// place in the text where the library stopped when it rejects a request.
#ifndef LYTREQ_READING_H
#define LYTREQ_READING_H

#include <memory>
#include <optional>
#include <string>

#include "caret.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

namespace lytreq {

// A message of the library (or of the tool), and where in the request text
// it applies when that is known.
struct Fault {
  std::string message;
  std::optional<Span> where;
};

// True when the text holds no token at all.
bool isBlank(const std::string& text);

struct Reading {
  std::unique_ptr<LYTKovaRequest> request;  // null when `fault` is set
  std::optional<Fault> fault;
};

// Reads a current-syntax request, or a "vl" request, with
// LYTKovaRequest::getLYTKovaRequest.
Reading readRequest(const std::string& text);

struct Conversion {
  std::string request;  // the current syntax, when `fault` is not set
  std::optional<Fault> fault;
};

// Converts a legacy command line for peer `peer` with LYTKovaRequest::convert.
Conversion convertLegacy(const std::string& text, TavVersion peer);

// Where reading stopped when the library rejected `text` with `message`:
// the parse is run again with a cursor the tool holds. Empty when the parse
// gives another message (the fault did not come from reading).
std::optional<Span> locateReadFault(const std::string& text, const std::string& message);

// The same for a legacy command line. The legacy reader keeps its cursor to
// itself: the place is found from the message (the token it names, or the
// argument of the "-y" or "-g" option it refuses), else the end of the text.
Span locateLegacyFault(const std::string& text, const std::string& message);

// The first token of `text` equal to `token`, if there is one.
std::optional<Span> findToken(const std::string& text, const std::string& token);

}  // namespace lytreq

#endif
