#include "lytFilterParser/diagnostics/Conversion.h"

#include <algorithm>
#include <cstddef>
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

bool isLegacy(TavVersion peer) { return peer == TAV_VERSION_LEGACY_1 || peer == TAV_VERSION_LEGACY_2; }

std::string_view textOf(std::string_view line, Span span) { return line.substr(span.start, span.length); }

std::string partName(Part part) {
  switch (part) {
    case Part::Accumulation: return "an accumulation mode";
    case Part::SortWord: return "a sort word, which a key column ignores";
    default: return "a column option";
  }
}

// What each decision of the translation means for the converted request.
void describe(std::string_view line, const LegacyEvent& event, Findings& found) {
  const std::string word = quoted(textOf(line, event.span));
  const std::string plain(legacyNegationFlag(false)), negated(legacyNegationFlag(true));
  switch (event.kind) {
    case LegacyEvent::WordSkipped: {
      const bool several = textOf(line, event.span).find(' ') != std::string_view::npos;
      found.add(Code::WordSkipped, event.span,
                word + (several ? " are" : " is") + " no legacy syntax and the conversion skips " +
                    (several ? "them" : "it"));
      break;
    }
    case LegacyEvent::FilterDropped:
      found.add(
          Code::FilterDropped, event.span,
          word + " is not read: its first word names no legacy filter, and the converted request has no filter for it");
      break;
    case LegacyEvent::OperatorSkipped:
      found.add(Code::OperatorChanged, event.span,
                word + " is skipped: the legacy filters are joined by " +
                    quoted(wordOf<FilterOperator>(kFilterOperators, FILTER_AND)));
      break;
    case LegacyEvent::OptionLonger:
      found.add(Code::WordMisread, event.span, word + " is read as " + quoted(textOf(line, event.span).substr(0, 2)));
      break;
    case LegacyEvent::FirstLetter: {
      const std::string_view argument = textOf(line, event.span);
      const std::string option(legacyOptionWord(static_cast<LegacyOption>(event.option)));
      found.add(Code::WordMisread, event.span,
                word + " is read as " + quoted(option + " " + std::string(argument.substr(0, 1))) +
                    ": only its first letter counts");
      break;
    }
    case LegacyEvent::FlagMisread:
      found.add(Code::WordMisread, event.span,
                word + " is read as " + quoted(plain) + ": only " + quoted(negated) + " negates a legacy filter");
      break;
    case LegacyEvent::BracketSkipped:
      found.add(
          Code::WordSkipped, event.span,
          word + " stands where the filter's " + quoted(std::string(1, kOpenBracket)) + " belongs and is skipped");
      break;
    case LegacyEvent::PassedFilter:
      found.add(
          Code::FilterDropped, event.span,
          word +
              " follows a plain group, after which the line is read as the current syntax: as names, not as a filter");
      break;
    case LegacyEvent::PassedWord:
      found.add(Code::WordMisread, event.span,
                word +
                    " follows a plain group, after which the line is read as the current syntax: the key column takes "
                    "it as " +
                    partName(event.part));
      break;
    case LegacyEvent::OptionRepeated:
      found.add(Code::OptionDoubled, event.span,
                word + " gives the request a second " + (event.option == LEGACY_VALUE ? "value" : "key") +
                    " column, which the older peers do not serve");
      break;
  }
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
  // A refusal that follows from what the translation skipped or misread is
  // told by those findings; one that nothing else explains is told here.
  std::string message;
  auto& request = static_cast<NetworkKovaRequest&>(*back.request);
  if (found.empty() && !request.isValid(TavVersion(TAV_VERSION_CURRENT), message)) {
    found.add(Code::ConvertedRefused, whole, "the converted request is refused for the current peer: " + message);
  }
}

// Convert's refusal of `line`, on the word where it stands.
Refusal refusal(std::string_view line, TavVersion peer, const std::string& error) {
  const Span end{line.size(), 0};
  if (peer == TAV_VERSION_CURRENT) {
    const Reading reading = readText(line, false);
    return reading.fault == error ? refusalAt(error, reading.at, reading.record.expected, line)
                                  : refusalAt(error, end, 0, line);
  }
  if (!isLegacy(peer)) return refusalAt(error, Span{0, line.size()}, 0, line);
  TextTokens tokens(line);
  WordTokens translated;
  std::string fault;
  LegacyTrace trace;
  if (!translateLegacy(tokens, translated, fault, &trace)) return refusalAt(error, trace.faultAt, trace.expected, line);
  Reader reader;
  Record record;
  reader.record = &record;
  NetworkKovaRequest request(Filter(), TavColumnArray(), TavColumnArray(), TAV_SORT_NONE, 1);
  WordTokens::iterator cur = translated.begin();
  if (reader.request(request, translated, cur) || reader.fault != error) return refusalAt(error, end, 0, line);
  return refusalAt(error, translated.span(cur), record.expected, line);
}

}  // namespace
}  // namespace detail

Conversion convertWithDiagnostics(const std::string& line, TavVersion peer) {
  using namespace detail;
  Conversion conversion;
  std::string error;
  conversion.request = LYTKovaRequest::convert(line, peer, error);
  if (!error.empty()) {
    conversion.refusal = refusal(line, peer, error);
    return conversion;
  }
  if (!isLegacy(peer)) return conversion;
  TextTokens tokens(line);
  WordTokens translated;
  std::string fault;
  LegacyTrace trace;
  translateLegacy(tokens, translated, fault, &trace);
  Findings found;
  for (const LegacyEvent& event : trace.events) describe(line, event, found);
  checkConverted(line, conversion.request, found);
  conversion.diagnostics = found.finish();
  return conversion;
}

}  // namespace lytFilterParser
