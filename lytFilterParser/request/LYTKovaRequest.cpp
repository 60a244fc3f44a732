#include "lytFilterParser/request/LYTKovaRequest.h"

#include <memory>
#include <string_view>

#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"
#include "lytFilterParser/vocab/Syntax.h"

LYTKovaRequest::~LYTKovaRequest() = default;

void LYTKovaRequest::fillFilterList(strList& tokens, const std::string& text) {
  const lytFilterParser::detail::TextTokens source(text);
  for (const std::string_view token : source) tokens.emplace_back(token);
}

LYTKovaRequest* LYTKovaRequest::getLYTKovaRequest(const std::string& text, std::string& error) {
  // Read in place: no token list is built, the text is only looked at.
  using lytFilterParser::detail::Reader;
  using lytFilterParser::detail::TextTokens;
  TextTokens tokens(text);
  TextTokens::iterator cur = tokens.begin();
  if (cur == tokens.end()) return nullptr;
  try {
    if (*cur == lytFilterParser::detail::kVirtualLinkWord) {
      ++cur;
      std::unique_ptr<E2EKovaRequest> request(new E2EKovaRequest(std::string(), E2E_DATA_WIRE));
      Reader::virtualLink(*request, tokens, cur);
      return request.release();
    }
    std::unique_ptr<NetworkKovaRequest> request(new NetworkKovaRequest());
    Reader::request(*request, tokens, cur);
    return request.release();
  } catch (const std::string& message) {
    error = message;
    return nullptr;
  }
}

std::string LYTKovaRequest::convert(const std::string& text, TavVersion version, std::string& error) {
  std::string result;
  lytFilterParser::detail::TextTokens tokens(text);
  if (tokens.begin() == tokens.end()) return result;
  // Only messages from reading go to `error`; one thrown while writing
  // reaches the caller, after the request (which lives only for this call)
  // is gone.
  bool read = false;
  try {
    NetworkKovaRequest request;
    lytFilterParser::detail::Reader::legacyRequest(request, tokens, version);
    read = true;
    result = request.dump();
  } catch (const std::string& message) {
    if (read) throw;
    error = message;
  }
  return result;
}

std::string LYTKovaRequest::convert(const std::string& text, std::string& error) {
  return convert(text, TavVersion(2), error);
}
