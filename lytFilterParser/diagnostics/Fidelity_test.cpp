#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"
#include "tests/support/corpus.h"

namespace {

using lfptest::spelled;
using lytFilterParser::fidelity;

struct Row {
  std::string text;
  int peer;
  std::vector<std::string> expected;  // "code:WORD" in the order of the text (TestSupport.h)
};

const Row kRows[] = {
    {"-f or [ -f src 10.0.0.1 -f dst 10.0.0.2 ] -k src -v wb", 2, {"operator-changed:or"}},
    {"-f and [ -f src a -f or [ -f dst b -f dst c ] ] -k src -v wb", 1, {"filter-dropped:-f or [ -f dst b -f dst c ]"}},
    {"-f wb 1000 -f src a -k src -v wb", 2, {"filter-dropped:-f wb 1000"}},
    {"-f src not a -k src -v wb", 1, {}},
    {"-f interface eth0 -k src -v wb", 1, {"item-changed:eth0"}},
    {"-f interface eth0,in eth1,out -k src -v wb", 2, {"item-dropped:eth1,out"}},
    {"-k src h1 -v wb dir=in -s bottom updates=10",
     2,
     {"option-changed:dir=in", "sort-changed:bottom", "sort-changed:updates=10"}},
    {"-k src -v conn", 2, {"column-changed:conn"}},
    {"-k src -v wb acc=lineUtil", 1, {"mode-changed:acc=lineUtil"}},
    {"-k src -k connId -v wb", 2, {"column-moved:-k connId"}},
    {"-k src -k dst -v wb -v pkt", 1, {"column-dropped:-k dst", "column-dropped:-v pkt"}},
    {"-k fwrule r1 -v pkt", 1, {"sort-changed:-k fwrule r1", "item-dropped:r1"}},
    {"-k svc -v wb", 1, {}},
    // what the current syntax itself cannot carry
    {"-k src -v wb -s none updates=20", 3, {"sort-changed:updates=20"}},
    // The text leaves out an index with one value column, or without a sort.
    {"-k src h1 -v wb -s top index=3", 3, {"sort-changed:index=3"}},
    {"-k src -v wb -s top index=2", 3, {"sort-changed:index=2"}},
    // Validating a telNumber value throws: the index is reported without a verdict.
    {"-s none updates=1 index=2 -v telNumber -k tunnel",
     1,
     {"sort-changed:updates=1", "sort-changed:index=2", "column-changed:telNumber", "column-dropped:-k tunnel"}},
    {"-k src -v wb -v pkt -s none index=2 updates=20", 3, {"sort-changed:index=2", "sort-changed:updates=20"}},
    {"-k src -v wb -v pkt -s bottom index=2 updates=20", 3, {}},
    {"-f ip not 10.0.0.5 10.0.0.6 -k svc -v wb -s top", 3, {}},
    {"-k src -v wb -v pkt -s bottom index=2", 1, {"column-dropped:-v pkt", "sort-changed:bottom"}},
    {"-f src <> a -k svc -v wb", 3, {"item-dropped:<>"}},
    {"-f and [ -f or [ ] -f src a -f dst b ] -k svc -v wb", 3, {"filter-dropped:-f or [ ]"}},
    {"-f and [ -f or [ -f src a ] -f dst b ] -k svc -v wb", 3, {}},
    {"-k src -v wb", 0, {"peer-unsupported:-k src -v wb"}},
    {"-k src -v wb", 4, {"peer-unsupported:-k src -v wb"}},
    {"vl link -t app", 2, {"peer-unsupported:vl link -t app"}},
    {"vl link -t app", 3, {}},
    {"-k src -v", 2, {}},  // refused: nothing to write
};

TEST(Fidelity, EachLossIsNamedAtTheItemItLoses) {
  for (const Row& row : kRows) {
    EXPECT_EQ(spelled(row.text, fidelity(row.text, TavVersion(row.peer))), row.expected)
        << row.text << " peer " << row.peer;
  }
}

TEST(Fidelity, AValidatedRequestIsComparedAsValidationCompletedIt) {
  const std::string text = "-k src -v conn";
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  auto& network = dynamic_cast<NetworkKovaRequest&>(*request);
  ASSERT_TRUE(network.isValid(TavVersion(2), error));
  EXPECT_TRUE(fidelity(text, network, TavVersion(2)).empty());  // conn acc=concurrent is "-y C"
  const std::unique_ptr<LYTKovaRequest> other(LYTKovaRequest::getLYTKovaRequest("-k dst -k connId -v pkt", error));
  EXPECT_EQ(spelled(text, fidelity(text, *other, TavVersion(1))), std::vector<std::string>{"column-moved:" + text})
      << "a request that is not the text's is placed on the whole text";
}

TEST(Fidelity, TheCurrentPeerKeepsEveryRequestOfTheBenchmarkCorpus) {
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind == bench::CaseKind::Legacy || c.kind == bench::CaseKind::LegacyRefused || c.text.size() > 100000)
      continue;
    EXPECT_TRUE(fidelity(c.text, TavVersion(3)).empty()) << c.name;
  }
}

}  // namespace
