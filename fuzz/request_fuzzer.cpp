// Request text through the factory, then everything a caller may do with the
// object, checking that only message strings leave the library and that
// written text reads back to itself; and the diagnostics of the text.
#include <cstddef>
#include <cstdint>

#include "FuzzCommon.h"
#include "FuzzDiagnostics.h"

namespace {

// What a request writes, or "<message> " and what writing threw.
std::string written(const LYTKovaRequest& request) {
  std::string out;
  if (!fuzz::allowMessage([&] { out = request.dump(); })) return "<message from dump>";
  return out;
}

// The factory reads the text in place; the parsing constructors read the
// token list fillFilterList makes of it. Both must give the same request or
// the same message.
std::string throughTokenList(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  if (tokens.empty()) return "<no request>";
  std::unique_ptr<LYTKovaRequest> request;
  try {
    if (tokens.front() == "vl") {
      tokens.pop_front();
      request.reset(new E2EKovaRequest(tokens));
    } else {
      request.reset(new NetworkKovaRequest(tokens));
    }
  } catch (const std::string& message) {
    return "<message> " + message;
  }
  return written(*request);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::string error;
  std::unique_ptr<LYTKovaRequest> request;
  fuzz::allowMessage([&] { request.reset(LYTKovaRequest::getLYTKovaRequest(text, error)); });
  const std::string inPlace = request ? written(*request) : error.empty() ? "<no request>" : "<message> " + error;
  const std::string listed = throughTokenList(text);
  if (inPlace != listed)
    fuzz::failure("the text and token-list readers disagree", text + "\n" + inPlace + "\n" + listed);
  fuzz::checkRequestDiagnostics(text);
  if (!request) return 0;

  fuzz::checkRoundTrip(*request);
  for (int version = -1; version <= 4; ++version) {
    fuzz::allowMessage([&] { (void)request->dump(TavVersion(version)); });
  }

  if (NetworkKovaRequest* network = dynamic_cast<NetworkKovaRequest*>(request.get())) {
    for (int version = -1; version <= 4; ++version) {
      fuzz::allowMessage([&] { (void)network->isValid(TavVersion(version), error); });
      fuzz::allowMessage([&] { (void)network->getKovaColumns(TavVersion(version)); });
    }
    fuzz::allowMessage([&] { (void)network->getMinimalValidVersion(error); });
    std::vector<std::string> columns;
    fuzz::allowMessage([&] { columns = network->getKovaColumns(); });
    std::vector<int> positions;
    for (const std::string& column : columns) positions.push_back(std::atoi(column.c_str()) - 1);
    fuzz::allowMessage([&] { (void)network->mapKovaColumn(positions); });
    (void)network->isDynamic();
    // Validation completes the request; its text must still read back.
    fuzz::checkRoundTrip(*network);
    NetworkKovaRequest copy(*network);
    fuzz::allowMessage([&] { (void)copy.dump(); });
  }

  // Resolved names are the caller's and are written as they stand, so the
  // text after substitution need not read back (a name may hold "[").
  strList names;
  fuzz::allowMessage([&] { names = request->getModuleNames(); });
  strList same = names;
  fuzz::allowMessage([&] { (void)request->setModuleNames(names, same); });
  strList reversed(names.rbegin(), names.rend());
  fuzz::allowMessage([&] { (void)request->setModuleNames(names, reversed); });
  strList shorter = names;
  if (!shorter.empty()) shorter.pop_back();
  fuzz::allowMessage([&] { (void)request->setModuleNames(shorter, shorter); });
  return 0;
}
