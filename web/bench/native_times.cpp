// Times the native library on the benchmark corpus's typical requests the
// way bench.mjs times the WebAssembly package: the round trip
// (getLYTKovaRequest, dump, delete) and lint, each the fastest of 9 batches
// of at least 20 ms. Prints one JSON object a case: {"name", "text",
// "roundTripNs", "lintNs"}; with --list, no times.
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "lytFilterParser/lytFilterParser.h"
#include "tests/support/corpus.h"

namespace {

volatile std::size_t sink;

template <class Work>
double fastestNs(Work&& work) {
  auto batch = [&](long count) {
    const auto start = std::chrono::steady_clock::now();
    for (long i = 0; i < count; ++i) work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
  };
  long count = 1;
  while (batch(count) < 20e6) count *= 2;
  double best = 0;
  for (int i = 0; i < 9; ++i) {
    const double ns = batch(count) / static_cast<double>(count);
    if (i == 0 || ns < best) best = ns;
  }
  return best;
}

std::string jsonString(const std::string& text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

}  // namespace

int main(int argc, char** argv) {
  const bool list = argc > 1 && std::strcmp(argv[1], "--list") == 0;
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind != bench::CaseKind::Typical) continue;
    double roundTrip = 0;
    double lint = 0;
    if (!list) {
      roundTrip = fastestNs([&] {
        std::string error;
        std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(c.text, error));
        sink = request->dump().size();
      });
      lint = fastestNs([&] { sink = lytFilterParser::lint(c.text).size(); });
    }
    std::printf("{\"name\": %s, \"text\": %s, \"roundTripNs\": %.1f, \"lintNs\": %.1f}\n", jsonString(c.name).c_str(),
                jsonString(c.text).c_str(), roundTrip, lint);
    std::fflush(stdout);
  }
  return 0;
}
