// The refusal of a text at the place where its reader stopped, and the
// bytes of a legacy line that a translated word stands for. Internal: not
// installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_READING_H
#define LYTFILTERPARSER_DIAGNOSTICS_READING_H

#include <cstdint>
#include <string>
#include <string_view>

#include "lytFilterParser/base/Span.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Record.h"

namespace lytFilterParser {
namespace detail {

// The refusal with `message` at `at` of `text`, with the suggestions for
// the word there that the message calls for (Refusal.cpp).
Refusal refusalAt(std::string message, Span at, std::string_view text);

// Reads `text` with its record; true when `request` is what the reader
// makes of it (the same filter tree shape, columns and name counts), so
// that the record's places are the request's.
bool recordFor(std::string_view text, const NetworkKovaRequest& request, Reading& reading);

// Whether `token` views bytes of `text`.
inline bool inText(std::string_view text, std::string_view token) {
  const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(token.data());
  const std::uintptr_t base = reinterpret_cast<std::uintptr_t>(text.data());
  return !token.empty() && at >= base && at - base < text.size();
}

// The bytes of `text` under the token at `at` of a translation whose words
// view the legacy line. A word that is not from the line (a "]" the reader
// inserted, a word the translation composed) stands where the next word
// from the line starts, with length 0; the end stands after the line.
template <class Tokens>
Span tokenSpan(std::string_view text, const Tokens& tokens, typename Tokens::iterator at) {
  const auto offset = [&](std::string_view token) { return static_cast<std::size_t>(token.data() - text.data()); };
  if (at != tokens.end() && inText(text, *at)) return Span{offset(*at), (*at).size()};
  while (at != tokens.end() && !inText(text, *at)) ++at;
  return Span{at == tokens.end() ? text.size() : offset(*at), 0};
}

}  // namespace detail
}  // namespace lytFilterParser

#endif
