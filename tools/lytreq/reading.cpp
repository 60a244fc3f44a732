#include "reading.h"

#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "words.h"

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

  if (tokens.front() == virtualLinkWord()) {
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

using lytFilterParser::vocabulary;

// A fault of the legacy reader in the argument of an option, and the kind
// of word that option takes. The reader knows a "-y" letter by the first
// character of its argument, a "-g" word as it stands.
struct ArgumentFault {
  const char* message;
  WordKind kind;
  bool firstCharacter;
};

const ArgumentFault kArgumentFaults[] = {
    {"Invalid value type", WordKind::LegacyValue, true},
    {"Invalid key type", WordKind::LegacyGroup, false},
};

bool startsWith(const std::string& token, std::string_view prefix) {
  return token.compare(0, prefix.size(), prefix) == 0;
}

// The legacy option whose argument is a word of `kind`.
const Word* optionTaking(WordKind kind) {
  for (const Word& word : vocabulary()) {
    if (word.kind == WordKind::LegacyOption && word.code == static_cast<int>(kind)) return &word;
  }
  return nullptr;
}

bool takes(const ArgumentFault& fault, const std::string& argument) {
  for (const Word& word : vocabulary()) {
    if (word.kind != fault.kind || !word.readable) continue;
    if (fault.firstCharacter ? startsWith(argument, word.text) : argument == word.text) return true;
  }
  return false;
}

// The first argument of the option for `fault` that the reader refuses, or
// the end of the text when the option ends it.
Span locateArgument(strList& tokens, const TokenMap& map, const ArgumentFault& fault) {
  const Word* option = optionTaking(fault.kind);
  if (option == nullptr) return map.end();
  for (strIter it = tokens.begin(); it != tokens.end(); ++it) {
    if (!startsWith(*it, option->text)) continue;
    const strIter argument = std::next(it);
    if (argument == tokens.end()) return map.end();
    if (!takes(fault, *argument)) return map.locate(tokens, argument);
  }
  return map.end();
}

}  // namespace

Span locateLegacyFault(const std::string& text, const std::string& message) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  const TokenMap map(text, tokens);

  for (const ArgumentFault& fault : kArgumentFaults) {
    if (message == fault.message) return locateArgument(tokens, map, fault);
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
