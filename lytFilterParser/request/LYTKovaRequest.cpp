#include "lytFilterParser/request/LYTKovaRequest.h"

#include <memory>
#include <string_view>
#include <utility>

#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"

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
  lytFilterParser::detail::Reader reader;
  std::unique_ptr<LYTKovaRequest> request = reader.whole(tokens, cur, true);
  if (!reader.fault.empty()) error = std::move(reader.fault);
  return request.release();
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
