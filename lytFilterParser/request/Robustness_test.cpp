// Guarantees every reader relies on: independent requests on many threads,
// very large and very deeply bracketed texts, in time linear in their size.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"
#include "lytFilterParser/lytFilterParser.h"

namespace {

// Everything a reader thread produces for one request, one field per line.
std::string runOne(const std::string& text, const std::string& legacyLine) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (!request) return "error: " + error;
  std::string outcome = request->dump() + '\n' + request->dump(TavVersion(1)) + '\n';
  if (auto* network = dynamic_cast<NetworkKovaRequest*>(request.get())) {
    std::string message;
    outcome += (network->isValid(TavVersion(2), message) ? "valid" : message) + '\n';
    outcome += std::to_string(network->getMinimalValidVersion(message)) + '\n';
  }
  return outcome + LYTKovaRequest::convert(legacyLine, TavVersion(1), error);
}

const std::vector<std::pair<std::string, std::string>> kWork = {
    {"-f src 10.0.0.1 -k svc -v wb", "-g topsrc -y c src 1 [ 10.0.0.1 ]"},
    {"-f or [ -f and -f src a -f dst b ] -k src -v conn", "-g src -y b h1 h2"},
    {"-f interface not eth0,in -k src h1 h2 -k connId 1 2 -v pkt acc=sum", "interface 1 [ [ eth0 out ] ]"},
    {"-k src -k svc -v wb -v ab sort=bottom -s top index=2 updates=9", "-a i -g topdst -y p"},
    {"vl branch-link -t application", "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc"},
    {"-k url -v session", "-g topqsrule -y C dst 0 [ a b ]"},
    {"-f src [ -k", "-y"},
    {"-k ip -k tunnel -v wb", "-g fw"},
};

TEST(Threads, IndependentRequestsGiveTheSameResultsAsAlone) {
  std::vector<std::string> alone;
  for (const auto& work : kWork) alone.push_back(runOne(work.first, work.second));

  constexpr int kThreads = 8;
  constexpr int kRounds = 200;
  std::vector<int> mismatches(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int round = 0; round < kRounds; ++round) {
        const std::size_t i = static_cast<std::size_t>(t + round) % kWork.size();
        if (runOne(kWork[i].first, kWork[i].second) != alone[i]) ++mismatches[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(mismatches[t], 0) << "thread " << t;
}

std::string repeated(const std::string& head, const std::string& unit, std::size_t count) {
  std::string text = head;
  text.reserve(head.size() + unit.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += unit;
  return text;
}

TEST(LargeInput, AMillionBracketsOrDeepNestingAreRefusedWithAMessage) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(
      LYTKovaRequest::getLYTKovaRequest(repeated("-f and ", "[ ", 1000000), error));
  EXPECT_EQ(request, nullptr);
  EXPECT_EQ(error, "`]` expected instead of: [");

  request.reset(LYTKovaRequest::getLYTKovaRequest(repeated("-f ", "[ ", 1000000), error));
  EXPECT_EQ(request, nullptr);
  EXPECT_EQ(error, "Invalid type: [");

  request.reset(LYTKovaRequest::getLYTKovaRequest(repeated("", "-f and ", 200000) + "-f src a", error));
  EXPECT_EQ(request, nullptr);
  EXPECT_NE(error.find(std::to_string(Filter::maxNestingDepth)), std::string::npos) << error;
}

double secondsFor(std::size_t entities) {
  std::string text = "-k src ";
  text.reserve(entities * 17 + 16);
  for (std::size_t i = 0; i < entities; ++i) {
    text += "host";
    text += std::to_string(1000000000 + i);
    text += ' ';
  }
  text += "-v wb";
  const auto start = std::chrono::steady_clock::now();
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  EXPECT_NE(request, nullptr) << error;
  if (!request) return 0;
  auto* network = static_cast<NetworkKovaRequest*>(request.get());
  std::string message;
  EXPECT_FALSE(network->isValid(message));
  EXPECT_EQ(message, "Number of entries reach the max number");
  const std::string written = request->dump();
  // The empty filter writes one blank; the columns add their modes.
  EXPECT_EQ(written.size(), text.size() + std::string(" " " acc=replace acc=rate ").size());
  request.reset();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(LargeInput, SixteenMegabytesReadValidateAndWriteInLinearTime) {
  const double small = secondsFor(100000);
  const double large = secondsFor(1000000);  // about 16 MiB of text
  // Ten times the text may take at most twenty times as long (linear with
  // room for allocator and cache effects); quadratic work would take ~100x.
  EXPECT_LT(large, 20 * small + 0.5) << "100k: " << small << " s, 1M: " << large << " s";
}

// Bare atom lists closed early by a "]" of the text: every one of them ends
// before the same option, which the reader must not look for again each time.
double secondsForEarlyClosedLists(std::size_t lists) {
  const std::string text = repeated("", "-f src a ] ", lists) + "-k svc";
  const auto start = std::chrono::steady_clock::now();
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  EXPECT_EQ(request, nullptr);
  EXPECT_EQ(error, "Invalid option: ]");
  strList tokens = lfptest::tokensOf(text);
  EXPECT_EQ(lfptest::thrownMessage([&] { NetworkKovaRequest fromList(tokens); }), "Invalid option: ]");
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(LargeInput, ManyEarlyClosedAtomListsReadInLinearTime) {
  const double small = secondsForEarlyClosedLists(1000);
  const double large = secondsForEarlyClosedLists(10000);
  EXPECT_LT(large, 20 * small + 0.5) << "1k: " << small << " s, 10k: " << large << " s";
}

}  // namespace

namespace {

// Written text reads back to itself, except where the text form cannot carry
// what was read; the fuzz targets skip exactly these cases. Each row: input,
// its written text, and that text written again after reading it back.
struct Lossy {
  const char* input;
  const char* written;
  const char* rewritten;
};

const Lossy kLossy[] = {
    // An entity whose text is empty vanishes.
    {"-k src <>", " -k src acc=replace  ", " -k src acc=replace "},
    // A compound filter with one child lifts it and drops two blanks.
    {"-f or [ -f and -f src a -f dst b ]", "-f and [ -f src  a   -f dst  b   ]   ", "-f and [ -f src  a   -f dst  b   ] "},
    // An interface item named "not" reads back as the negation.
    {"-f interface not,t eth0", "-f interface   not  eth0   ", "-f interface not  eth0   "},
    // So does an entity named "not" at the head of a filter that is not negated.
    {"-f src not<> a", "-f src  not a    ", "-f src not a    "},
};

std::string writeOf(const std::string& text) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  return request ? request->dump() : "error: " + error;
}

TEST(TextForm, CasesThatDoNotReadBackToTheSameText) {
  for (const Lossy& row : kLossy) {
    const std::string written = writeOf(row.input);
    EXPECT_EQ(written, row.written) << row.input;
    EXPECT_EQ(writeOf(written), row.rewritten) << row.input;
  }
}

}  // namespace
