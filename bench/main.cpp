// Benchmarks of lytFilterParser on a fixed corpus (tests/support/corpus.cpp), with two
// floors measured in the same run on the same texts:
//   floor_split  cutting the text on blanks into a std::list<std::string>
//                with a plain loop (floor (a), the reference of every ratio);
//   floor_copy   copying the text (floor (b)).
// Benchmark names are "<operation>/<case>". Every benchmark also times
// floor (a) on its own text, alternating with its operation (see runPaired),
// and reports the ratio of the two; bench/report.py runs this binary with
// JSON output and prints the tables.
//
// Counters on every benchmark:
//   op_ns, floor_ns, ratio  CPU time of one operation, of floor (a) on the
//                 same text measured alongside, and their ratio
//   accepted_ns, vs_accepted  on refusals ("refused/...", "refused_convert/..."):
//                 the same operation on an accepted text of the same length,
//                 measured alongside, instead of floor (a), and the ratio
//   tokens        tokens of the text as the library's tokenizer cuts it
//   blank_tokens  tokens of the text as floor (a) cuts it (on blanks only)
//   allocs        heap allocations of one operation (operator new calls)
//   bytes         bytes requested by those allocations
//   entities / levels   size of a large, deep or scaling case
#include <benchmark/benchmark.h>

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <lytFilterParser/lytFilterParser.h>

#include "alloc_counter.h"
#include "tests/support/corpus.h"

namespace {

using bench::CaseKind;
using bench::TextCase;

std::size_t tokenCount(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return tokens.size();
}

std::size_t blankTokenCount(const std::string& text) {
  std::size_t count = 0;
  bool inToken = false;
  for (char ch : text) {
    if (ch != ' ' && !inToken) ++count;
    inToken = ch != ' ';
  }
  return count;
}

// --- the operations ---------------------------------------------------------

void floorSplit(const std::string& text) {
  std::list<std::string> tokens;
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p != end) {
    if (*p == ' ') {
      ++p;
      continue;
    }
    const char* const start = p;
    while (p != end && *p != ' ') ++p;
    tokens.emplace_back(start, p);
  }
  benchmark::DoNotOptimize(tokens);
  benchmark::ClobberMemory();
}

void floorCopy(const std::string& text) {
  std::string copy(text);
  benchmark::DoNotOptimize(copy.data());
  benchmark::ClobberMemory();
}

void tokenize(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  benchmark::DoNotOptimize(tokens);
  benchmark::ClobberMemory();
}

void roundTrip(const std::string& text) {
  std::string error;
  LYTKovaRequest* request = LYTKovaRequest::getLYTKovaRequest(text, error);
  std::string out = request->dump();
  benchmark::DoNotOptimize(out.data());
  delete request;
}

// Reading alone, as a caller checking operator input does: a refused text
// gives its message, an accepted one a request that is then deleted.
void readRequest(const std::string& text) {
  std::string error;
  LYTKovaRequest* request = LYTKovaRequest::getLYTKovaRequest(text, error);
  benchmark::DoNotOptimize(request);
  benchmark::DoNotOptimize(error.data());
  delete request;
}

// What a caller pays for asking: the text read once more, its items
// recorded with their places (lytFilterParser::lint).
void lintText(const std::string& text) {
  std::vector<lytFilterParser::Diagnostic> found = lytFilterParser::lint(text);
  benchmark::DoNotOptimize(found.data());
}

// What explain asks of one input, reading it once: the request with its
// record, its lint, and fidelity and validation for every peer.
void explainText(const std::string& text) {
  const lytFilterParser::RecordedRequest recorded(text);
  std::vector<lytFilterParser::Diagnostic> found = recorded.lint();
  benchmark::DoNotOptimize(found.data());
  for (int peer = 1; peer <= 3; ++peer) {
    found = recorded.fidelity(TavVersion(peer));
    benchmark::DoNotOptimize(found.data());
    std::optional<lytFilterParser::Refusal> refusal = recorded.validate(TavVersion(peer));
    benchmark::DoNotOptimize(refusal);
  }
}

void convertLegacy(const std::string& text) {
  std::string error;
  std::string out = LYTKovaRequest::convert(text, error);
  benchmark::DoNotOptimize(out.data());
}

// --- paired timing -------------------------------------------------------------
//
// The machine these benchmarks run on is small and shared, so the load can
// change between two benchmarks. Every benchmark therefore times its
// operation and floor (a) on the same text in alternating batches of about
// 100 us each, in thread CPU time: the ratio of the two comes from the same
// moments of the run. The loop's iteration time (manual time) is one batch
// of the operation; the counters carry the figures per operation:
//   op_ns     CPU time of one operation
//   floor_ns  CPU time of floor (a) on the same text, measured alongside
//   ratio     op_ns / floor_ns

double threadCpuNs() {
  timespec ts;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
  return static_cast<double>(ts.tv_sec) * 1e9 + static_cast<double>(ts.tv_nsec);
}

// How many calls of `body` take about `targetNs`.
template <typename Body>
long batchSize(Body& body, double targetNs) {
  using Clock = std::chrono::steady_clock;
  long calls = 0;
  const Clock::time_point start = Clock::now();
  double elapsed = 0;
  do {
    body();
    ++calls;
    elapsed = static_cast<double>(std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - start).count());
  } while (elapsed < targetNs / 4 && calls < 1000000);
  const double perCall = elapsed / static_cast<double>(calls);
  return std::max(1L, static_cast<long>(targetNs / std::max(perCall, 1.0)));
}

struct Expected {
  std::size_t tokens;
  std::size_t blankTokens;
  long scale;
  CaseKind kind;
};

void setCounters(benchmark::State& state, const Expected& expected, const bench::AllocStats& allocs) {
  state.counters["tokens"] = static_cast<double>(expected.tokens);
  state.counters["blank_tokens"] = static_cast<double>(expected.blankTokens);
  state.counters["allocs"] = static_cast<double>(allocs.allocations);
  state.counters["bytes"] = static_cast<double>(allocs.bytes);
  if (expected.kind == CaseKind::ScaleKeys || expected.kind == CaseKind::Large) {
    state.counters["entities"] = static_cast<double>(expected.scale);
  }
  if (expected.kind == CaseKind::ScaleDepth || expected.kind == CaseKind::Deep) {
    state.counters["levels"] = static_cast<double>(expected.scale);
  }
}

// Runs the paired loop: `body` is one operation, `partner` the one it is
// compared with (floor (a) on the same text, or reading the accepted text
// of a refusal). One call warms up, one counted call gives the allocations,
// then the timed batches. The partner's time and the ratio go to the
// counters named `partnerName` and `ratioName`.
template <typename Body, typename Partner>
void runPaired(benchmark::State& state, const Expected& expected, Body body, Partner partner,
               const char* partnerName = "floor_ns", const char* ratioName = "ratio") {
  constexpr double kBatchNs = 100e3;
  body();
  partner();
  const bench::AllocStats allocs = bench::countAllocations(body);
  const long opBatch = batchSize(body, kBatchNs);
  const long partnerBatch = batchSize(partner, kBatchNs);
  double opTotal = 0;
  double partnerTotal = 0;
  for (auto _ : state) {
    const double t0 = threadCpuNs();
    for (long i = 0; i < opBatch; ++i) body();
    const double t1 = threadCpuNs();
    for (long i = 0; i < partnerBatch; ++i) partner();
    const double t2 = threadCpuNs();
    opTotal += t1 - t0;
    partnerTotal += t2 - t1;
    state.SetIterationTime((t1 - t0) * 1e-9);
  }
  const double iterations = static_cast<double>(state.iterations());
  const double opNs = opTotal / (iterations * static_cast<double>(opBatch));
  const double partnerNs = partnerTotal / (iterations * static_cast<double>(partnerBatch));
  state.counters["op_ns"] = opNs;
  state.counters[partnerName] = partnerNs;
  state.counters[ratioName] = partnerNs > 0 ? opNs / partnerNs : 0;
  state.counters["batch"] = static_cast<double>(opBatch);
  setCounters(state, expected, allocs);
}

template <typename Body>
void runPaired(benchmark::State& state, const std::string& text, const Expected& expected, Body body) {
  runPaired(state, expected, body, [&text] { floorSplit(text); });
}

// --- registration -------------------------------------------------------------

// A benchmark of `op` on one text.
void registerTextBenchmark(const std::string& name, const TextCase& c, void (*op)(const std::string&)) {
  const Expected expected{tokenCount(c.text), blankTokenCount(c.text), c.scale, c.kind};
  const std::string text = c.text;
  benchmark::RegisterBenchmark(name.c_str(), [text, expected, op](benchmark::State& state) {
    runPaired(state, text, expected, [&text, op] { op(text); });
  })->UseManualTime();
}

// A benchmark of `op` on a request read once outside the loop. `op` runs once
// before the loop, so a request that validation completes in place is
// measured in its completed form.
template <typename Request>
void registerRequestBenchmark(const std::string& name, const TextCase& c, std::function<void(Request&)> op) {
  const Expected expected{tokenCount(c.text), blankTokenCount(c.text), c.scale, c.kind};
  const std::string text = c.text;
  benchmark::RegisterBenchmark(name.c_str(), [text, expected, op](benchmark::State& state) {
    std::string error;
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
    Request* typed = dynamic_cast<Request*>(request.get());
    if (typed == nullptr) {
      state.SkipWithError(("not the expected kind of request: " + error).c_str());
      for (auto _ : state) {
      }
      return;
    }
    op(*typed);  // completes the request in place where validation does
    runPaired(state, text, expected, [typed, &op] { op(*typed); });
  })->UseManualTime();
}

// A refusal of `op`, paired with `op` on the accepted text of the same length.
void registerRefusal(const std::string& name, const TextCase& c, void (*op)(const std::string&)) {
  const Expected expected{tokenCount(c.text), blankTokenCount(c.text), c.scale, c.kind};
  const std::string refused = c.text;
  const std::string accepted = c.accepted;
  benchmark::RegisterBenchmark(name.c_str(), [refused, accepted, expected, op](benchmark::State& state) {
    runPaired(
        state, expected, [&refused, op] { op(refused); }, [&accepted, op] { op(accepted); }, "accepted_ns",
        "vs_accepted");
  })->UseManualTime();
}

void registerError(const std::string& name, const std::string& message) {
  benchmark::RegisterBenchmark(name.c_str(), [message](benchmark::State& state) {
    state.SkipWithError(message.c_str());
    for (auto _ : state) {
    }
  });
}

// A refusal is refused, its partner accepted, and both have the same length.
bool checkRefusal(const TextCase& c, std::string& problem) {
  const bool legacy = c.kind == CaseKind::LegacyRefused;
  const auto accepts = [legacy](const std::string& text) {
    std::string error;
    if (legacy) return !LYTKovaRequest::convert(text, error).empty() && error.empty();
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
    return request != nullptr;
  };
  if (c.text.size() != c.accepted.size()) problem = "the refused text is not as long as the accepted one";
  if (accepts(c.text)) problem = "not refused";
  if (!accepts(c.accepted)) problem = "the accepted text is refused";
  return problem.empty();
}

// Checks that a case reads (or converts) as the corpus means it to, so that
// no benchmark silently measures the error path.
bool checkCase(const TextCase& c, std::string& problem) {
  std::string error;
  if (c.kind == CaseKind::Refused || c.kind == CaseKind::LegacyRefused) return checkRefusal(c, problem);
  if (c.kind == CaseKind::Legacy) {
    if (LYTKovaRequest::convert(c.text, error).empty()) {
      problem = "convert failed: " + error;
      return false;
    }
    return true;
  }
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(c.text, error));
  if (!request) {
    problem = "read failed: " + error;
    return false;
  }
  const std::string first = request->dump();
  std::unique_ptr<LYTKovaRequest> again(LYTKovaRequest::getLYTKovaRequest(first, error));
  if (!again || again->dump() != first) {
    problem = "written text does not read back: " + first;
    return false;
  }
  return true;
}

void registerCase(const TextCase& c) {
  const std::string& n = c.name;
  std::string problem;
  if (!checkCase(c, problem)) {
    registerError("error/" + n, problem);
    return;
  }
  if (c.kind == CaseKind::Refused) {
    registerRefusal("refused/" + n, c, readRequest);
    return;
  }
  if (c.kind == CaseKind::LegacyRefused) {
    registerRefusal("refused_convert/" + n, c, convertLegacy);
    registerTextBenchmark("convert/" + n, c, convertLegacy);
    return;
  }
  registerTextBenchmark("floor_split/" + n, c, floorSplit);
  registerTextBenchmark("floor_copy/" + n, c, floorCopy);
  registerTextBenchmark("tokenize/" + n, c, tokenize);
  if (c.kind == CaseKind::Legacy) {
    registerTextBenchmark("convert/" + n, c, convertLegacy);
    return;
  }
  registerTextBenchmark("roundtrip/" + n, c, roundTrip);
  // Lint of a typical request costs at most one more round trip: compare lint/ with roundtrip/.
  if (c.kind == CaseKind::Typical) registerTextBenchmark("lint/" + n, c, lintText);
  if (c.kind == CaseKind::Typical) registerTextBenchmark("explain/" + n, c, explainText);
  if (c.kind == CaseKind::ScaleKeys || c.kind == CaseKind::ScaleDepth) return;

  if (c.kind != CaseKind::VirtualLink) {
    registerRequestBenchmark<NetworkKovaRequest>("isvalid/" + n, c, [](NetworkKovaRequest& r) {
      std::string error;
      bool valid = r.isValid(error);
      benchmark::DoNotOptimize(valid);
    });
    registerRequestBenchmark<NetworkKovaRequest>("minversion/" + n, c, [](NetworkKovaRequest& r) {
      std::string error;
      int version = r.getMinimalValidVersion(error);
      benchmark::DoNotOptimize(version);
    });
  }
  registerRequestBenchmark<LYTKovaRequest>("dump_v1/" + n, c, [](LYTKovaRequest& r) {
    std::string out = r.dump(TavVersion(1));
    benchmark::DoNotOptimize(out.data());
  });
  if (c.kind != CaseKind::VirtualLink) {
    registerRequestBenchmark<NetworkKovaRequest>("kova_columns/" + n, c, [](NetworkKovaRequest& r) {
      std::vector<std::string> columns = r.getKovaColumns();
      benchmark::DoNotOptimize(columns.data());
    });
  }
  // Resolved names for the request's own module names, made once.
  auto resolved = std::make_shared<strList>();
  {
    std::string error;
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(c.text, error));
    for (const std::string& name : request->getModuleNames()) resolved->push_back("r-" + name);
  }
  registerRequestBenchmark<LYTKovaRequest>("module_names/" + n, c, [resolved](LYTKovaRequest& r) {
    strList names = r.getModuleNames();
    bool done = r.setModuleNames(names, *resolved);
    benchmark::DoNotOptimize(done);
  });
}

}  // namespace

int main(int argc, char** argv) {
  for (const TextCase& c : bench::buildCorpus()) registerCase(c);

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
