// The request echoed under a message, as an operator can read it: every
// character that does not show (a tab, a no-break space, a zero-width
// space, a control character, a byte that is not UTF-8) written as an
// escape, the "^~~~" marker under the place in terminal columns (wide
// characters take two), and a long line cut around the place. Messages get
// the same escapes for what could act on a terminal (shown()).
#ifndef LYTREQ_ECHO_H
#define LYTREQ_ECHO_H

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "lytFilterParser/base/Span.h"

namespace lytreq {

using lytFilterParser::Span;

struct Echo {
  std::string line;    // the request as shown
  std::string marker;  // "^~~~" under the span, or a single "^" for an empty span
};

// Lines longer than this many columns are cut around the place, each cut
// shown by an ellipsis.
constexpr std::size_t kEchoWidth = 76;

// A request text made ready to be echoed under any number of places: one
// pass over the text when built, then each echo costs the width of the shown
// line plus a bounded scan, so that many findings in a long line stay linear.
// Keeps a view of `text`, which must outlive it.
class EchoText {
 public:
  explicit EchoText(std::string_view text);

  // The request shown with the marker under `span`.
  Echo echo(Span span) const;

 private:
  // A cell start and the columns of everything before it.
  struct Mark {
    std::size_t byte;
    std::size_t column;
  };

  // The columns of the cells that end at or before byte `pos`.
  std::size_t columnAt(std::size_t pos) const;
  // The first cell that starts at or after column `column`, as a mark.
  Mark cellAtColumn(std::size_t column) const;

  std::string_view text_;
  std::size_t total_ = 0;    // columns of the whole text
  std::vector<Mark> marks_;  // a cell start at least every few hundred bytes
};

// `text` with every control character (a tab included) and every byte that
// is not UTF-8 written as the echo writes it ("\x1B", "\t"); other text as
// it is. For the lines written for people: messages, warnings, verdicts.
std::string shown(std::string_view text);
// `text` as shown() gives it, written to `out` without a copy of it.
void writeShown(std::ostream& out, std::string_view text);

}  // namespace lytreq

#endif
