// Guarantees every reader relies on: independent requests on many threads,
// very large and very deeply bracketed texts, and the few texts that do not
// read back to themselves.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using lfptest::onSmallStack;
using lfptest::testDepth;

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

TEST(LargeInput, AMillionBracketsAreRefusedWithAMessage) {
  EXPECT_EQ(writeOf("-f and " + repeated("[ ", 1000000)), "error: `]` expected instead of: [");
  EXPECT_EQ(writeOf("-f " + repeated("[ ", 1000000)), "error: Invalid type: [");
}

// --- any depth ---------------------------------------------------------------
//
// Every operation on a deep tree runs on a thread with a 256 KiB stack: one
// frame per level would overflow it long before the last level. The depth is
// 1,000,000 unless LFP_TEST_DEPTH says otherwise (memcheck runs fewer).

// `levels` compound filters, each holding the next, the innermost an atom.
std::string nestedRequest(int levels, bool bracketed) {
  const std::string head = bracketed ? "-f or [ " : "-f or ";
  return repeated(head, levels) + "-f src 10.0.0.1 " + (bracketed ? repeated("] ", levels) : "") + "-k svc -v wb";
}

// Each more nesting level with a single child writes two more blanks after
// the atom; everything else is written as at depth 2.
std::string deepened(const std::string& atDepth2, int levels) {
  const std::size_t afterAtom = atDepth2.find("10.0.0.1") + 8;
  return atDepth2.substr(0, afterAtom) + std::string(2 * (levels - 2), ' ') + atDepth2.substr(afterAtom);
}

// What a request gives besides its text: the legacy syntax, validation for
// every peer, and its module names.
std::string everything(NetworkKovaRequest& request) {
  std::string out = request.dump(TavVersion(1)) + '\n';
  for (int peer = 1; peer <= 3; ++peer) {
    NetworkKovaRequest completed(request);
    std::string message;
    out += completed.isValid(TavVersion(peer), message) ? "valid " : message + ' ';
  }
  std::string message;
  out += std::to_string(request.getMinimalValidVersion(message));
  for (const std::string& name : request.getModuleNames()) out += ' ' + name;
  return out;
}

TEST(AnyDepth, DeepRequestTextIsReadWrittenValidatedConvertedAndDestroyed) {
  const int levels = testDepth();
  for (bool bracketed : {true, false}) {
    onSmallStack([&] {
      const std::unique_ptr<NetworkKovaRequest> shallow = lfptest::readRequest(nestedRequest(2, bracketed));
      const std::unique_ptr<NetworkKovaRequest> deep = lfptest::readRequest(nestedRequest(levels, bracketed));
      ASSERT_TRUE(deep) << bracketed;
      EXPECT_EQ(deep->dump(), deepened(shallow->dump(), levels));
      EXPECT_EQ(everything(*deep), everything(*shallow));
      std::string error;
      EXPECT_EQ(LYTKovaRequest::convert(nestedRequest(levels, bracketed), error),
                LYTKovaRequest::convert(nestedRequest(2, bracketed), error));
    });
  }
}

TEST(AnyDepth, DeepTreeBuiltInCodeIsCopiedComparedWalkedWrittenAndDestroyed) {
  const int levels = testDepth();
  onSmallStack([&] {
    std::unique_ptr<Filter> root = lfptest::deepFilterTree(levels);
    const std::unique_ptr<NetworkKovaRequest> shallow = lfptest::readRequest(nestedRequest(2, false));
    NetworkKovaRequest deep(*root, shallow->getKeys(), shallow->getValues(), TAV_SORT_NONE, 1);
    root.reset();
    Filter assigned;
    assigned = deep.getFilter();
    std::unique_ptr<AbstractFilter> cloned(assigned.clone());
    EXPECT_EQ(deep.dump(), deepened(shallow->dump(), levels));
    EXPECT_EQ(cloned->dump(), deep.getFilter().dump());
    EXPECT_EQ(deep.dump(TavVersion(1)), shallow->dump(TavVersion(1)));
    EXPECT_EQ(deep.getModuleNames(), shallow->getModuleNames());
    strList oldNames{"10.0.0.1", "svc"}, newNames{"gw", "x"};
    ASSERT_TRUE(deep.setModuleNames(oldNames, newNames));
    EXPECT_NE(deep.dump().find("10.0.0.1<>gw "), std::string::npos);
  });
}

TEST(AnyDepth, DeepLegacyLineIsConverted) {
  const auto line = [](int levels) {
    return "-filter [ and " + repeated("[", levels) + "src 1 [ 10.0.0.1 ]" + repeated("]", levels) + " -y b";
  };
  onSmallStack([&] {
    std::string error;
    EXPECT_EQ(LYTKovaRequest::convert(line(testDepth()), error), LYTKovaRequest::convert(line(1), error));
  });
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
