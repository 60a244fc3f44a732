#include "lytFilterParser/diagnostics/Reading.h"

#include <utility>

#include "lytFilterParser/detail/TokenSequence.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"
#include "lytFilterParser/request/Reader.h"
#include "lytFilterParser/vocab/Syntax.h"

namespace lytFilterParser {
namespace detail {

Reading readText(std::string_view text, bool virtualLinks) {
  Reading reading;
  TextTokens tokens(text);
  TextTokens::iterator cur = tokens.begin();
  if (cur == tokens.end()) return reading;
  Reader reader;
  bool read = false;
  if (virtualLinks && *cur == kVirtualLinkWord) {
    ++cur;
    std::unique_ptr<E2EKovaRequest> request(new E2EKovaRequest(std::string(), E2E_DATA_WIRE));
    read = reader.virtualLink(*request, tokens, cur);
    reading.request = std::move(request);
  } else {
    std::unique_ptr<NetworkKovaRequest> request(
        new NetworkKovaRequest(Filter(), TavColumnArray(), TavColumnArray(), TAV_SORT_NONE, 1));
    read = reader.request(*request, tokens, cur);
    reading.request = std::move(request);
  }
  if (!read) {
    reading.request.reset();
    reading.fault = std::move(reader.fault);
    reading.at = tokenSpan(text, tokens, cur);
  }
  return reading;
}

}  // namespace detail
}  // namespace lytFilterParser
