// The library's own work on a batch of requests, the work `lytreq check`
// does for each line of its input: getLYTKovaRequest, isValid for peer 3
// and getMinimalValidVersion, on lines held in memory. tool_batch.py sets the
// tool's batch path beside it.
//
// Usage: lytFilterParser_batch_times FILE COUNT
// Writes COUNT lines (the corpus's typical requests, in turn) to FILE, then
// prints {"lines": COUNT, "ns": N}: nanoseconds per line, the fastest of 5
// passes over all of them.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"
#include "tests/support/corpus.h"

namespace {

volatile int sink;

void check(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  auto* network = dynamic_cast<NetworkKovaRequest*>(request.get());
  if (network == nullptr) return;
  try {
    sink = network->getMinimalValidVersion(error) + (network->isValid(TavVersion(3), error) ? 1 : 0);
  } catch (const std::string&) {
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s FILE COUNT\n", argv[0]);
    return 2;
  }
  std::vector<std::string> typical;
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind == bench::CaseKind::Typical) typical.push_back(c.text);
  }
  const long count = std::atol(argv[2]);
  std::vector<std::string> lines;
  std::ofstream file(argv[1]);
  for (long i = 0; i < count; ++i) {
    lines.push_back(typical[static_cast<std::size_t>(i) % typical.size()]);
    file << lines.back() << '\n';
  }
  file.close();
  double best = 0;
  for (int pass = 0; pass < 5; ++pass) {
    const auto start = std::chrono::steady_clock::now();
    for (const std::string& line : lines) check(line);
    const double ns = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
    if (pass == 0 || ns < best) best = ns;
  }
  std::printf("{\"lines\": %ld, \"ns\": %.1f}\n", count, best / static_cast<double>(count));
  return 0;
}
