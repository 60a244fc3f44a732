#include "lytFilterParser/request/LYTKovaRequest.h"

#include <memory>
#include <string_view>
#include <utility>

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
  // Read in place: no token list is built, the text is only looked at. The
  // reader reports a fault by its result, so a refused request throws
  // nothing here.
  lytFilterParser::detail::TextTokens tokens(text);
  auto cur = tokens.begin();
  if (cur == tokens.end()) return nullptr;
  lytFilterParser::detail::Reader reader;
  if (*cur == lytFilterParser::detail::kVirtualLinkWord) {
    ++cur;
    std::unique_ptr<E2EKovaRequest> request(new E2EKovaRequest(std::string(), E2E_DATA_WIRE));
    if (reader.virtualLink(*request, tokens, cur)) return request.release();
  } else {
    std::unique_ptr<NetworkKovaRequest> request(new NetworkKovaRequest());
    if (reader.request(*request, tokens, cur)) return request.release();
  }
  error = std::move(reader.fault);
  return nullptr;
}

std::string LYTKovaRequest::convert(const std::string& text, TavVersion version, std::string& error) {
  lytFilterParser::detail::TextTokens tokens(text);
  if (tokens.begin() == tokens.end()) return std::string();
  // Only messages from reading go to `error`; one thrown while writing
  // reaches the caller, after the request (which lives only for this call)
  // is gone.
  lytFilterParser::detail::Reader reader;
  NetworkKovaRequest request;
  if (!reader.legacyRequest(request, tokens, version)) {
    error = std::move(reader.fault);
    return std::string();
  }
  return request.dump();
}

std::string LYTKovaRequest::convert(const std::string& text, std::string& error) {
  return convert(text, TavVersion(2), error);
}
