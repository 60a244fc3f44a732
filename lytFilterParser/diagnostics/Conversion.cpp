#include "lytFilterParser/diagnostics/Conversion.h"

#include <string_view>
#include <utility>

#include "lytFilterParser/detail/Text.h"
#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/diagnostics/DiagnosticTable.h"
#include "lytFilterParser/diagnostics/Reading.h"
#include "lytFilterParser/request/LegacyTranslator.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"
#include "lytFilterParser/vocab/LegacySyntax.h"

namespace lytFilterParser {
namespace detail {
namespace {

constexpr char kPassed[] = " follows a plain group, after which the line is read as the current syntax: ";

// What a decision of the translation about `word` means for the converted
// request: its code, and what the message says after the quoted word.
std::pair<Code, std::string> meaning(std::string_view word, const LegacyEvent& event) {
  switch (event.kind) {
    case LegacyEvent::WordSkipped:
      return {Code::WordSkipped, word.find(' ') == std::string_view::npos
                                     ? " is no legacy syntax and the conversion skips it"
                                     : " are no legacy syntax and the conversion skips them"};
    case LegacyEvent::FilterDropped:
      return {Code::FilterDropped,
              " is not read: its first word names no legacy filter, and the converted request has no filter for it"};
    case LegacyEvent::OperatorSkipped:
      return {Code::OperatorChanged, " is skipped: the legacy filters are joined by " +
                                         quoted(wordOf<FilterOperator>(kFilterOperators, FILTER_AND))};
    case LegacyEvent::OptionLonger: return {Code::WordMisread, " is read as " + quoted(word.substr(0, 2))};
    case LegacyEvent::FirstLetter: {
      const std::string option(legacyOptionWord(static_cast<LegacyOption>(event.option)));
      return {Code::WordMisread, " is read as " + quoted(option + " " + std::string(word.substr(0, 1))) +
                                     ": only its first letter counts"};
    }
    case LegacyEvent::FlagMisread:
      return {Code::WordMisread, " is read as " + quoted(legacyNegationFlag(false)) + ": only " +
                                     quoted(legacyNegationFlag(true)) + " negates a legacy filter"};
    case LegacyEvent::BracketSkipped:
      return {Code::WordSkipped,
              " stands where the filter's " + quoted(std::string(1, kOpenBracket)) + " belongs and is skipped"};
    case LegacyEvent::PassedFilter: return {Code::FilterDropped, std::string(kPassed) + "as names, not as a filter"};
    case LegacyEvent::PassedWord:
      return {Code::WordMisread, std::string(kPassed) + "the key column takes it as " +
                                     (event.part == Part::Accumulation ? "an accumulation mode"
                                      : event.part == Part::SortWord   ? "a sort word, which a key column ignores"
                                                                       : "a column option")};
    case LegacyEvent::OptionRepeated:
      return {Code::OptionDoubled, std::string(" gives the request a second ") +
                                       (event.option == LEGACY_VALUE ? "value" : "key") +
                                       " column, which the older peers do not serve"};
  }
  return {Code::WordSkipped, std::string()};
}

// The converted text read back as the current reader reads it, and the
// request checked for the current peer, which the conversion is for (the
// legacy peers order a connection-id key otherwise than their writer).
void checkConverted(std::string_view line, const std::string& converted, Findings& found) {
  const Span whole{0, line.size()};
  Reading back = readText(converted, false);
  if (!back.request) {
    if (!back.fault.empty()) {
      found.add(Code::ConvertedUnreadable, whole,
                "the converted text " + quoted(converted) + " is refused by the reader: " + back.fault);
    }
    return;
  }
  // Told beside what the translation skipped or misread, which may or may
  // not be why: the caller learns that no peer serves the result.
  std::string message;
  auto& request = static_cast<NetworkKovaRequest&>(*back.request);
  if (!request.isValid(TavVersion(TAV_VERSION_CURRENT), message)) {
    found.add(Code::ConvertedRefused, whole, "the converted request is refused for the current peer: " + message);
  }
}

// Convert's refusal of `line` for a peer other than 1 and 2, on the word
// where it stands.
Refusal otherRefusal(std::string_view line, TavVersion peer, const std::string& error) {
  if (peer != TAV_VERSION_CURRENT) return refusalAt(error, Span{0, line.size()}, 0, line);
  const Reading reading = readText(line, false);
  return reading.fault == error ? refusalAt(error, reading.at, reading.record.expected, line)
                                : refusalAt(error, Span{line.size(), 0}, 0, line);
}

// Convert's refusal of a legacy line whose translation the current-syntax
// reader refuses with `error`; at the end of the line when it does not.
Refusal readerRefusal(std::string_view line, WordTokens& translated, const std::string& error) {
  Reader reader;
  Record record;
  reader.record = &record;
  NetworkKovaRequest request(Filter(), TavColumnArray(), TavColumnArray(), TAV_SORT_NONE, 1);
  WordTokens::iterator cur = translated.begin();
  if (reader.request(request, translated, cur) || reader.fault != error) {
    return refusalAt(error, Span{line.size(), 0}, 0, line);
  }
  return refusalAt(error, translated.span(cur), record.expected, line);
}

}  // namespace
}  // namespace detail

Conversion convertWithDiagnostics(const std::string& line, TavVersion peer) {
  using namespace detail;
  Conversion conversion;
  std::string error;
  conversion.request = LYTKovaRequest::convert(line, peer, error);
  if (peer != TAV_VERSION_LEGACY_1 && peer != TAV_VERSION_LEGACY_2) {
    if (!error.empty()) conversion.refusal = otherRefusal(line, peer, error);
    return conversion;
  }
  TextTokens tokens(line);
  WordTokens translated;
  std::string fault;
  LegacyTrace trace;
  const bool complete = translateLegacy(tokens, translated, fault, &trace);
  if (!error.empty()) {
    conversion.refusal =
        complete ? readerRefusal(line, translated, error) : refusalAt(error, trace.faultAt, trace.expected, line);
    return conversion;
  }
  Findings found;
  for (const LegacyEvent& event : trace.events) {
    const std::string_view word = std::string_view(line).substr(event.span.start, event.span.length);
    std::pair<Code, std::string> said = meaning(word, event);
    found.add(said.first, event.span, quoted(word) + said.second);
  }
  checkConverted(line, conversion.request, found);
  conversion.diagnostics = found.finish();
  return conversion;
}

}  // namespace lytFilterParser
