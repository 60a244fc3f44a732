// Legacy command lines through both forms of convert, for every peer version
// around the valid ones; the current text they give must read back.
#include <cstddef>
#include <cstdint>

#include "FuzzCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (int version = -1; version <= 4; ++version) {
    std::string error;
    std::string current;
    fuzz::allowMessage([&] { current = LYTKovaRequest::convert(text, TavVersion(version), error); });
    if (current.empty() || version < 1 || version > 2) continue;
    std::unique_ptr<LYTKovaRequest> request;
    fuzz::allowMessage([&] { request.reset(LYTKovaRequest::getLYTKovaRequest(current, error)); });
    if (request) fuzz::checkRoundTrip(*request);
  }
  std::string error;
  fuzz::allowMessage([&] { (void)LYTKovaRequest::convert(text, error); });
  return 0;
}
