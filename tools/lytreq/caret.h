// Where in the request text the reader stopped: the character span of each
// token of a token list, kept across the changes the parsers make to the
// list (echo.h draws the marker under the text).
#ifndef LYTREQ_CARET_H
#define LYTREQ_CARET_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "lytFilterParser/request/TokenList.h"

namespace lytreq {

// A byte range of the request text. A span of length 0 stands just past the
// end of the text: the reader ran out of tokens.
struct Span {
  std::size_t start = 0;
  std::size_t length = 0;
};

// The spans of the tokens LYTKovaRequest::fillFilterList cuts from `text`,
// in order: blanks separate, "[" and "]" are tokens of their own.
std::vector<Span> tokenSpans(const std::string& text);

// Remembers the span of every node of a freshly cut token list, keyed by the
// node's address, so that a cursor the parsers moved (and a list they added
// tokens to) can be mapped back to the text.
class TokenMap {
 public:
  // `tokens` must be the list fillFilterList made from `text`, unchanged.
  TokenMap(const std::string& text, const strList& tokens);

  // The span of the token at `cur`. A token the parsers inserted has no
  // place in the text: the next original token after it is used, or the end
  // of the text when none follows. The end of the list is the end of the text.
  Span locate(const strList& tokens, strIter cur) const;

  // The end of the text.
  Span end() const { return Span{textSize, 0}; }

  // The first token equal to `token`, if there is one.
  bool find(const strList& tokens, const std::string& token, Span& span) const;

 private:
  std::unordered_map<const std::string*, Span> spans;
  std::size_t textSize;
};

// Number of characters (UTF-8 code points) in text[from, to).
std::size_t characterCount(const std::string& text, std::size_t from, std::size_t to);

}  // namespace lytreq

#endif
