// Reading a request text as the entry points read it, keeping the place
// where the reader stopped; and the bytes of a text that a reader's token
// stands for. Internal: not installed.
#ifndef LYTFILTERPARSER_DIAGNOSTICS_READING_H
#define LYTFILTERPARSER_DIAGNOSTICS_READING_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/LYTKovaRequest.h"

namespace lytFilterParser {
namespace detail {

struct Reading {
  std::unique_ptr<LYTKovaRequest> request;  // null for a refused or an empty text
  std::string fault;                        // the reader's message; empty when it has none
  Span at;                                  // where the reader stopped on a fault
};

// Reads `text` as getLYTKovaRequest does when `virtualLinks` ("vl" first: an
// end-to-end request), otherwise as convert reads it for the current peer.
// The message is the entry points' own.
Reading readText(std::string_view text, bool virtualLinks);

// The refusal with `message` at `at` of `text`, with the suggestions for
// the word there that the message calls for (Refusal.cpp).
Refusal refusalAt(std::string message, Span at, std::string_view text);

// Whether `token` views bytes of `text`.
inline bool inText(std::string_view text, std::string_view token) {
  const std::uintptr_t at = reinterpret_cast<std::uintptr_t>(token.data());
  const std::uintptr_t base = reinterpret_cast<std::uintptr_t>(text.data());
  return !token.empty() && at >= base && at - base < text.size();
}

// The bytes of `text` under the token at `at` of a sequence whose tokens
// view the text. A token that is not from the text (a "]" the reader
// inserted, a word a translation composed) stands where the next token from
// the text starts, with length 0; the end stands after the text.
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
