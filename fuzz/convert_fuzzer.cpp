// Legacy command lines through both forms of convert, for every peer version
// around the valid ones; the current text they give must read back, and must
// be what the legacy-reading constructor makes of fillFilterList's tokens;
// and convert with diagnostics for every peer version.
#include <cstddef>
#include <cstdint>

#include "FuzzCommon.h"
#include "FuzzDiagnostics.h"

namespace {

// convert's result, "|" and its error; or "<message> " and what writing threw.
std::string converted(const std::string& text, TavVersion version) {
  std::string error;
  std::string current;
  if (!fuzz::allowMessage([&] { current = LYTKovaRequest::convert(text, version, error); })) {
    return "<message from dump>";
  }
  return current + "|" + error;
}

// The same through a token list and the constructor that reads it.
std::string throughTokenList(const std::string& text, TavVersion version) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  if (tokens.empty()) return "|";
  std::unique_ptr<NetworkKovaRequest> request;
  try {
    request.reset(new NetworkKovaRequest(tokens, version));
  } catch (const std::string& message) {
    return "|" + message;
  }
  std::string current;
  if (!fuzz::allowMessage([&] { current = request->dump(); })) return "<message from dump>";
  return current + "|";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (int version = -1; version <= 4; ++version) {
    const std::string inPlace = converted(text, TavVersion(version));
    const std::string listed = throughTokenList(text, TavVersion(version));
    if (inPlace != listed)
      fuzz::failure("convert and the token-list reader disagree", text + "\n" + inPlace + "\n" + listed);
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
  fuzz::checkConversionDiagnostics(text);
  return 0;
}
