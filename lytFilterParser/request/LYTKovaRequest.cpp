#include "lytFilterParser/request/LYTKovaRequest.h"

#include <memory>

#include "lytFilterParser/detail/Text.h"

#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

LYTKovaRequest::~LYTKovaRequest() = default;

void LYTKovaRequest::fillFilterList(strList& tokens, const std::string& text) {
  const char* const data = text.data();
  const std::size_t size = text.size();
  std::size_t pos = 0;
  for (;;) {
    while (pos < size && data[pos] == ' ') ++pos;
    if (pos == size) return;
    std::size_t end = pos + 1;
    if (data[pos] != '[' && data[pos] != ']') {
      while (end < size && data[end] != ' ' && data[end] != '[' && data[end] != ']') ++end;
    }
    tokens.emplace_back(data + pos, end - pos);
    pos = end;
  }
}

LYTKovaRequest* LYTKovaRequest::getLYTKovaRequest(const std::string& text, std::string& error) {
  strList tokens;
  fillFilterList(tokens, text);
  if (tokens.empty()) return nullptr;
  try {
    std::unique_ptr<LYTKovaRequest> request;
    if (lytFilterParser::detail::is(tokens.front(), "vl")) {
      tokens.pop_front();
      request.reset(new E2EKovaRequest(tokens));
    } else {
      request.reset(new NetworkKovaRequest(tokens));
    }
    return request.release();
  } catch (const std::string& message) {
    error = message;
    return nullptr;
  }
}

std::string LYTKovaRequest::convert(const std::string& text, TavVersion version, std::string& error) {
  std::string result;
  strList tokens;
  fillFilterList(tokens, text);
  if (tokens.empty()) return result;
  // Only messages from reading go to `error`; one thrown while writing
  // reaches the caller, after the request (which lives only for this call)
  // is gone.
  bool read = false;
  try {
    // The token list is the converter's own: the reader may take its nodes.
    NetworkKovaRequest request(tokens, version, NetworkKovaRequest::OwnedTokens());
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
