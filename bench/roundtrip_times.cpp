// Times the C++ round trip (getLYTKovaRequest, dump, delete) on the
// corpus's typical, vl, large and deep requests the way python_roundtrip.py
// times parse and dump from Python (and web/bench/bench.mjs from
// JavaScript), and prints one JSON object per case: {"name", "kind", "text",
// "ns"}, ns the fastest batch's time per round trip. With case names as
// arguments, only those; with --list, no times (ns 0); with --typical, only
// the typical requests; with --lint, also "lintNs", the time of lint; with
// --read, also "readNs", the time of reading alone (getLYTKovaRequest and
// delete), which old and new libraries are compared on.
#include <chrono>
#include <cstdio>
#include <memory>
#include <set>
#include <string>

#include "lytFilterParser/lytFilterParser.h"
#include "tests/support/corpus.h"

namespace {

volatile std::size_t sink;

void roundTrip(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  sink = request->dump().size();
}

void read(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  sink = error.size();
}

// Nanoseconds per call of `work`: the fastest of 9 batches of at least 20 ms.
template <class Work>
double timeNs(const Work& work) {
  const auto batchNs = [&](long count) {
    const auto start = std::chrono::steady_clock::now();
    for (long i = 0; i < count; ++i) work();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
  };
  long count = 1;
  while (batchNs(count) < 20e6) count *= 2;
  double best = 0;
  for (int batch = 0; batch < 9; ++batch) {
    const double ns = batchNs(count) / static_cast<double>(count);
    if (batch == 0 || ns < best) best = ns;
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

bool measured(bench::CaseKind kind) {
  using bench::CaseKind;
  return kind == CaseKind::Typical || kind == CaseKind::VirtualLink || kind == CaseKind::Large ||
         kind == CaseKind::Deep;
}

}  // namespace

int main(int argc, char** argv) {
  std::set<std::string> names(argv + 1, argv + argc);
  const auto flag = [&](const char* name) { return names.erase(name) != 0; };
  const bool list = flag("--list");
  const bool typical = flag("--typical");
  const bool lint = flag("--lint");
  const bool reading = flag("--read");
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (!measured(c.kind) || (typical && c.kind != bench::CaseKind::Typical)) continue;
    if (!list && !names.empty() && names.count(c.name) == 0) continue;
    std::printf("{\"name\": %s, \"kind\": %s, \"text\": %s, \"ns\": %.1f", jsonString(c.name).c_str(),
                jsonString(bench::kindLabel(c.kind)).c_str(), jsonString(c.text).c_str(),
                list ? 0.0 : timeNs([&] { roundTrip(c.text); }));
    if (lint)
      std::printf(", \"lintNs\": %.1f", list ? 0.0 : timeNs([&] { sink = lytFilterParser::lint(c.text).size(); }));
    if (reading) std::printf(", \"readNs\": %.1f", list ? 0.0 : timeNs([&] { read(c.text); }));
    std::printf("}\n");
    std::fflush(stdout);
  }
  return 0;
}
