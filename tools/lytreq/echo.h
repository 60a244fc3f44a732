// The request echoed under a message, as an operator can read it: every
// character that does not show (a tab, a no-break space, a zero-width
// space, a control character, a byte that is not UTF-8) written as an
// escape, the "^~~~" marker under the place in terminal columns (wide
// characters take two), and a long line cut around the place.
#ifndef LYTREQ_ECHO_H
#define LYTREQ_ECHO_H

#include <cstddef>
#include <string>

#include "caret.h"

namespace lytreq {

struct Echo {
  std::string line;    // the request as shown
  std::string marker;  // "^~~~" under the span, or a single "^" for an empty span
};

// Lines longer than this many columns are cut around the place, each cut
// shown by an ellipsis.
constexpr std::size_t kEchoWidth = 76;

// The request `text` shown with the marker under `span`.
Echo echoRequest(const std::string& text, Span span);

}  // namespace lytreq

#endif
