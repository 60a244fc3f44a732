#include "reading.h"

#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace lytreq {

bool isBlank(const std::string& text) { return tokenSpans(text).empty(); }

Reading readRequest(const std::string& text) {
  Reading reading;
  if (isBlank(text)) {
    reading.fault = Fault{"empty request", std::nullopt};
    return reading;
  }
  std::string error;
  try {
    reading.request.reset(LYTKovaRequest::getLYTKovaRequest(text, error));
  } catch (const std::string& message) {
    error = message;
  }
  if (!reading.request) reading.fault = Fault{error, locateReadFault(text, error)};
  return reading;
}

Conversion convertLegacy(const std::string& text, TavVersion peer) {
  Conversion conversion;
  if (isBlank(text)) {
    conversion.fault = Fault{"empty request", std::nullopt};
    return conversion;
  }
  std::string error;
  try {
    conversion.request = LYTKovaRequest::convert(text, peer, error);
  } catch (const std::string& message) {
    // Thrown while writing the converted request: not a reading fault.
    conversion.fault = Fault{message, std::nullopt};
    return conversion;
  }
  if (!error.empty()) conversion.fault = Fault{error, locateLegacyFault(text, error)};
  return conversion;
}

std::optional<Span> locateReadFault(const std::string& text, const std::string& message) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  const TokenMap map(text, tokens);
  if (tokens.empty()) return std::nullopt;

  if (tokens.front() == "vl") {
    // E2EKovaRequest(strList&) takes the name, then reads the options.
    tokens.pop_front();
    if (tokens.empty()) return map.end();
    E2EKovaRequest request(std::string(), E2E_DATA_WIRE);
    strIter cur = tokens.begin();
    ++cur;
    try {
      request.parseFilter(tokens, cur);
    } catch (const std::string& thrown) {
      if (thrown == message) return map.locate(tokens, cur);
    }
    return std::nullopt;
  }

  strList none;
  NetworkKovaRequest request(none);
  strIter cur = tokens.begin();
  try {
    request.parse(tokens, cur);
  } catch (const std::string& thrown) {
    if (thrown == message) return map.locate(tokens, cur);
  }
  return std::nullopt;
}

namespace {

bool startsWith(const std::string& token, const char* prefix) { return token.rfind(prefix, 0) == 0; }

bool isLegacyValueLetter(const std::string& token) {
  const char first = token[0];
  return first == 'b' || first == 'C' || first == 'c' || first == 'p';
}

bool isLegacyGroupWord(const std::string& token) {
  static const char* const kWords[] = {"topfw", "topsrc", "topdst", "topip", "topqsrule", "topsvc",
                                       "src",   "dst",    "svc",    "qsrule", "ip"};
  for (const char* word : kWords) {
    if (token == word) return true;
  }
  return false;
}

}  // namespace

Span locateLegacyFault(const std::string& text, const std::string& message) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  const TokenMap map(text, tokens);

  const bool valueFault = message == "Invalid value type";
  const bool keyFault = message == "Invalid key type";
  if (valueFault || keyFault) {
    for (strIter it = tokens.begin(); it != tokens.end(); ++it) {
      if (!startsWith(*it, valueFault ? "-y" : "-g")) continue;
      const strIter argument = std::next(it);
      if (argument == tokens.end()) return map.end();
      if (valueFault ? !isLegacyValueLetter(*argument) : !isLegacyGroupWord(*argument)) {
        return map.locate(tokens, argument);
      }
    }
    return map.end();
  }

  // "Invalid option: -x", "Invalid type: foo" ...: the token the message names.
  const std::size_t colon = message.rfind(": ");
  Span span;
  if (colon != std::string::npos && map.find(tokens, message.substr(colon + 2), span)) return span;
  return map.end();
}

std::optional<Span> findToken(const std::string& text, const std::string& token) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  const TokenMap map(text, tokens);
  Span span;
  if (map.find(tokens, token, span)) return span;
  return std::nullopt;
}

}  // namespace lytreq
