#include "reading.h"

#include "lytFilterParser/diagnostics/Conversion.h"
#include "lytFilterParser/diagnostics/Refusal.h"

namespace lytreq {

namespace {

Fault faultOf(const lytFilterParser::Refusal& refusal) {
  return Fault{refusal.message, Span{refusal.start, refusal.length}, refusal.suggestions};
}

}  // namespace

// Blanks alone separate tokens: any other character is part of one.
bool isBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

Reading readRequest(const std::string& text) {
  Reading reading;
  if (isBlank(text)) {
    reading.fault = Fault{"empty request", std::nullopt, {}};
    return reading;
  }
  {
    // The message may hold a word as long as the request: it is let go
    // before the refusal makes its own.
    std::string error;
    reading.request.reset(LYTKovaRequest::getLYTKovaRequest(text, error));
    if (reading.request) return reading;
  }
  std::optional<lytFilterParser::Refusal> refusal = lytFilterParser::readRefusal(text);
  if (refusal) {
    reading.fault = Fault{std::move(refusal->message), Span{refusal->start, refusal->length},
                          std::move(refusal->suggestions)};
    return reading;
  }
  std::string error;
  // A refusal without a place (rare): read again for the message.
  std::unique_ptr<LYTKovaRequest>(LYTKovaRequest::getLYTKovaRequest(text, error));
  reading.fault = Fault{std::move(error), std::nullopt, {}};
  return reading;
}

LegacyConversion convertLegacy(const std::string& text, TavVersion peer) {
  LegacyConversion conversion;
  if (isBlank(text)) {
    conversion.fault = Fault{"empty request", std::nullopt, {}};
    return conversion;
  }
  try {
    lytFilterParser::Conversion converted = lytFilterParser::convertWithDiagnostics(text, peer);
    if (converted.refusal) {
      conversion.fault = faultOf(*converted.refusal);
    } else {
      conversion.request = std::move(converted.request);
    }
    conversion.diagnostics = std::move(converted.diagnostics);
  } catch (const std::string& message) {
    // Thrown while writing the converted request: not a reading fault.
    conversion.fault = Fault{message, std::nullopt, {}};
  }
  return conversion;
}

std::optional<Span> findToken(const std::string& text, const std::string& token) {
  for (const Span& span : tokenSpans(text)) {
    if (text.compare(span.start, span.length, token) == 0) return span;
  }
  return std::nullopt;
}

}  // namespace lytreq
