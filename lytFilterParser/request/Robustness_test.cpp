// Guarantees every reader relies on: independent requests on many threads,
// very large and very deeply bracketed texts, and the few texts that do not
// read back to themselves.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

// What the request read from `text` writes, or "error: " and the message.
std::string writeOf(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  return request ? request->dump() : "error: " + error;
}

// Everything a reader thread produces for one request and one legacy line;
// the column mapping's allocation is the one state requests share.
std::string runOne(const std::string& text, const std::string& legacyLine) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (!request) return "error: " + error;
  std::string outcome = request->dump() + '\n' + request->dump(TavVersion(1)) + '\n';
  if (auto* network = dynamic_cast<NetworkKovaRequest*>(request.get())) {
    std::string message;
    outcome += (network->isValid(TavVersion(2), message) ? "valid" : message) + '\n';
    outcome += std::to_string(network->getMinimalValidVersion(message)) + '\n';
    for (const std::string& column : network->getKovaColumns()) outcome += column + ' ';
  }
  return outcome + LYTKovaRequest::convert(legacyLine, TavVersion(1), error);
}

TEST(Threads, IndependentRequestsGiveTheSameResultsAsAlone) {
  const std::vector<std::pair<std::string, std::string>> work = {
      {"-f or [ -f and -f src a -f dst b ] -k src -v conn", "-g topsrc -y c src 1 [ 10.0.0.1 ]"},
      {"-f interface not eth0,in -k src h1 h2 -k connId 1 2 -v pkt acc=sum", "interface 1 [ [ eth0 out ] ]"},
      {"-k src -k svc -v wb -v ab sort=bottom -s top index=2 updates=9", "-a i -g topdst -y p"},
      {"-k svc -k dst -k orientation -k tunnelType -v ab -v conn -v session", "-y C"},
      {"vl branch-link -t application", "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc"},
      {"-f src [ -k", "-y"},
  };
  std::vector<std::string> alone;
  for (const auto& w : work) alone.push_back(runOne(w.first, w.second));
  constexpr int kThreads = 8;
  std::vector<int> mismatches(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < 200; ++round) {
        const std::size_t i = static_cast<std::size_t>(t + round) % work.size();
        if (runOne(work[i].first, work[i].second) != alone[i]) ++mismatches[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(mismatches[t], 0) << "thread " << t;
}

std::string repeated(const std::string& unit, std::size_t count) {
  std::string text;
  text.reserve(unit.size() * count + 16);
  for (std::size_t i = 0; i < count; ++i) text += unit;
  return text;
}

TEST(LargeInput, AMillionBracketsOrDeepNestingAreRefusedWithAMessage) {
  EXPECT_EQ(writeOf("-f and " + repeated("[ ", 1000000)), "error: `]` expected instead of: [");
  EXPECT_EQ(writeOf("-f " + repeated("[ ", 1000000)), "error: Invalid type: [");
  EXPECT_EQ(writeOf(repeated("-f and ", 200000) + "-f src a"),
            "error: Filter nesting is deeper than the limit of " + std::to_string(Filter::maxNestingDepth) + " levels");
}

// Written text reads back to itself, except where the text form cannot carry
// what was read; the fuzz targets skip exactly these cases.
TEST(TextForm, CasesThatDoNotReadBackToTheSameText) {
  const struct {
    const char *input, *written, *rewritten;
  } cases[] = {
      // An entity whose text is empty vanishes.
      {"-k src <>", " -k src acc=replace  ", " -k src acc=replace "},
      // A compound filter with one child lifts it and drops two blanks.
      {"-f or [ -f and -f src a -f dst b ]", "-f and [ -f src  a   -f dst  b   ]   ",
       "-f and [ -f src  a   -f dst  b   ] "},
      // An interface item named "not" reads back as the negation.
      {"-f interface not,t eth0", "-f interface   not  eth0   ", "-f interface not  eth0   "},
      // So does an entity named "not" at the head of a filter that is not negated.
      {"-f src not<> a", "-f src  not a    ", "-f src not a    "},
  };
  for (const auto& c : cases) {
    const std::string written = writeOf(c.input);
    EXPECT_EQ(written, c.written) << c.input;
    EXPECT_EQ(writeOf(written), c.rewritten) << c.input;
  }
}

}  // namespace
