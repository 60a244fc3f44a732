#include "reading.h"

#include "lytFilterParser/diagnostics/Conversion.h"
#include "lytFilterParser/diagnostics/Refusal.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "words.h"

namespace lytreq {

namespace {

Fault faultOf(lytFilterParser::Refusal refusal) {
  return Fault{std::move(refusal.message), Span{refusal.start, refusal.length}, std::move(refusal.suggestions)};
}

std::unique_ptr<LYTKovaRequest> copyOf(const LYTKovaRequest& request) {
  if (const auto* network = dynamic_cast<const NetworkKovaRequest*>(&request)) {
    return std::make_unique<NetworkKovaRequest>(*network);
  }
  return std::make_unique<E2EKovaRequest>(dynamic_cast<const E2EKovaRequest&>(request));
}

// A refused text, placed by its record when the record has a place.
void refuse(Reading& reading, const std::string& text) {
  std::optional<lytFilterParser::Refusal> refusal = reading.recorded->refusal();
  if (refusal) {
    reading.fault = faultOf(std::move(*refusal));
    return;
  }
  // A refusal without a place (rare): read again for the message.
  std::string error;
  std::unique_ptr<LYTKovaRequest>(LYTKovaRequest::getLYTKovaRequest(text, error));
  reading.fault = Fault{std::move(error), std::nullopt, {}};
}

}  // namespace

// Blanks alone separate tokens: any other character is part of one.
bool isBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

const LYTKovaRequest* Reading::request() const {
  if (owned) return owned.get();
  return recorded ? recorded->request() : nullptr;
}

LYTKovaRequest* Reading::changeable() {
  if (!owned && recorded && recorded->request() != nullptr) owned = copyOf(*recorded->request());
  return owned.get();
}

Reading readRequest(const std::string& text, bool record) {
  Reading reading;
  if (isBlank(text)) {
    reading.fault = Fault{"empty request", std::nullopt, {}};
    return reading;
  }
  if (record) {
    reading.recorded.emplace(text);
    if (reading.recorded->request() == nullptr) refuse(reading, text);
    return reading;
  }
  {
    // The message may hold a word as long as the request: it is let go
    // before the refusal makes its own.
    std::string error;
    reading.owned.reset(LYTKovaRequest::getLYTKovaRequest(text, error));
    if (reading.owned) return reading;
  }
  reading.recorded.emplace(text);
  refuse(reading, text);
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
      conversion.fault = faultOf(std::move(*converted.refusal));
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

// The tokens getLYTKovaRequest cuts from `text`, in order: blanks separate,
// "[" and "]" are tokens of their own.
std::optional<Span> findToken(const std::string& text, const std::string& token) {
  const std::size_t size = text.size();
  std::size_t pos = 0;
  for (;;) {
    while (pos < size && text[pos] == ' ') ++pos;
    if (pos == size) return std::nullopt;
    std::size_t end = pos + 1;
    if (!isBracket(text[pos])) {
      while (end < size && text[end] != ' ' && !isBracket(text[end])) ++end;
    }
    if (text.compare(pos, end - pos, token) == 0) return Span{pos, end - pos};
    pos = end;
  }
}

}  // namespace lytreq
