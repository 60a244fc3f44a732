#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"
#include "tests/support/corpus.h"

namespace {

using lfptest::spelled;
using lytFilterParser::lint;

struct Row {
  std::string text;
  std::vector<std::string> expected;  // "code:WORD" in the order of the text (TestSupport.h)
};

// Each surprising request yields its codes at its words; the ordinary ones
// at the end yield none.
const Row kRows[] = {
    {"-f src a -f or -k svc -v wb", {"operator-ignored:-f or"}},
    {"-f and [ ] -k svc -v wb", {"operator-ignored:-f and [ ]"}},
    {"-f and [ -f or [ ] -f src a ] -k svc -v wb", {"operator-ignored:-f or [ ]"}},
    {"-f or [ -f src a -f dst b ] -k svc -f svc c -v wb", {"operator-changed:or", "filter-appended:-f svc c"}},
    {"-f src a -k svc -f dst b -v wb", {"filter-appended:-f dst b"}},
    {"-f src a -f dst b -k svc -f or -f svc c -v wb", {"filter-appended:-f or -f svc c", "operator-changed:or"}},
    {"-k svc -v wb -s top index=abc", {"value-defaulted:index=abc"}},
    {"-k svc -v wb -s top index=99999999999999999999", {"value-clamped:index=99999999999999999999"}},
    {"-k svc -v wb -s top index=-99999999999", {"value-clamped:index=-99999999999"}},
    {"-k svc -v wb -s top updates=0", {"value-defaulted:updates=0"}},
    {"-k svc -v wb -s top updates=", {"value-defaulted:updates="}},
    {"-k svc -v wb -s top index=2x", {"word-misread:index=2x"}},
    {"-k svc -v wb -s top xindex=2", {"word-misread:xindex=2"}},
    {"-f src 10.0.0.1\xc2\xa0-k svc -v wb", {"invisible-character:\xc2\xa0", "entity-keyword:svc"}},
    {"-k src a\xef\xbb\xbf\xe2\x80\x8b"
     "b -v wb",
     {"invisible-character:\xef\xbb\xbf\xe2\x80\x8b"}},
    {"-k src a\tb -v wb", {"invisible-character:\t"}},
    {"-k src ab\x7f"
     "c -v wb",
     {"invisible-character:\x7f"}},
    {"-k src -v wb\r\n", {"invisible-character:\r\n"}},                  // at the very end
    {"\xef\xbb\xbf-k src -v wb", {"invisible-character:\xef\xbb\xbf"}},  // refused, and why it is
    {"-k src # comment -v wb", {"inline-comment:# comment"}},
    {"-f src a # not really -k svc -v wb", {"inline-comment:# not really", "entity-keyword:not"}},
    {"-k src -v wb acc=rate acc=sum", {"option-repeated:acc=rate"}},
    {"-k src -v wb dir=in dir=out", {"option-repeated:dir=in"}},
    {"-k src -v wb -s top -s bottom", {"option-repeated:top"}},
    {"-k src -v wb sort=top -s bottom", {"option-repeated:sort=top"}},
    {"-k src -v wb -s none updates=20 -v pkt sort=bottom", {"option-repeated:none"}},
    {"-k src -v wb -s top index=1 index=1", {"option-repeated:index=1"}},
    {"-k src sort=top -v wb", {"word-ignored:sort=top"}},
    {"-k src -v wb sort=none", {"word-ignored:sort=none"}},
    {"-k svc -v wb dir=outbound", {"word-misread:dir=outbound"}},
    {"-k svc -v wb dir=in,enc=yes", {"word-misread:dir=in,enc=yes"}},
    {"-f interface eth0,inbound eth1,x -k svc -v wb", {"word-misread:eth0,inbound", "word-misread:eth1,x"}},
    {"-f interface eth0, -k svc -v wb", {"word-misread:eth0,"}},
    {"-k src a ] -v wb", {"word-misread:]"}},
    {"-k src h1 wb -v wb", {"entity-keyword:wb"}},
    {"-k src h1 acc=sum -v wb", {"entity-keyword:acc=sum"}},
    {"-f src a or b -k svc -v wb", {"entity-keyword:or"}},
    {"-k src <>x -v wb", {"entity-empty:<>x"}},
    {"-f interface ,in -k svc -v wb", {"entity-empty:,in"}},
    {"-f src a b a<>x -k svc -v wb", {"entity-duplicate:a<>x"}},
    {"vl link -t wxyz", {"word-misread:wxyz"}},
    {"vl link x-ty wire", {"word-misread:x-ty"}},
    {"vl link -t wire -t app", {"option-repeated:wire"}},
    {"-k src a\xe1\x9a\x80"
     "b -v wb",
     {"invisible-character:\xe1\x9a\x80"}},                                        // U+1680
    {"-k src a\xf3\xa0\x80\x81 -v wb", {"invisible-character:\xf3\xa0\x80\x81"}},  // a tag character
    {"-k src a\xc2\x85 -v wb", {"invisible-character:\xc2\x85"}},                  // a C1 control
    {"-f src 10.0.0.1 -f src not 10.0.0.1 -k svc -v wb", {"filter-unsatisfiable:-f src 10.0.0.1"}},
    {"-f and [ -f dst not b c -f svc x -f dst c b ] -k svc -v wb", {"filter-unsatisfiable:-f dst c b"}},
    {"-f src a -f or [ -f src not a ] -k svc -v wb", {}},  // not under one "and"
    {"-f or [ -f src a -f src not a ] -k svc -v wb", {}},  // joined by "or"
    {"-f src a b -f src not a -k svc -v wb", {}},          // b may match
    {"-f src a -f dst not a -k svc -v wb", {}},            // another type
    {"-f src a -f src b -k svc -v wb", {}},                // names may be subnets
    {"-f src -k svc -v wb", {"atom-empty:-f src"}},
    {"-f and [ -f interface not ] -k svc -v wb", {"atom-empty:-f interface not"}},
    {"-f src a,b -k svc c,d -v wb", {"entity-comma:a,b", "entity-comma:c,d"}},
    // ordinary requests
    {"-f src 10.0.0.1 -k svc -v wb acc=rate -s top", {}},
    {"-k src -v wb -v pkt -s bottom index=2 updates=20", {}},
    {"-f ip not 10.0.0.5 10.0.0.6 -k svc -v wb -s top", {}},
    {"-f interface not eth0,in eth1,OUT eth2 -k svc -v wb", {}},
    {"-f AND -f src NOT 10.0.0.1 -k svc -v wb", {}},
    {"-f or -f src a -f and [ -f dst b -f dst c ] -k svc -v wb", {}},
    {"-f url http://example.com/?a=b -k svc -v wb", {}},
    {"-k src -v wb -v pkt -s bottom index=2 updates=200", {}},
    {"vl link7 -t app", {}},
    {"   ", {}},
    {"-k src -v", {}},  // refused
};

TEST(Lint, EachSurpriseIsNamedAtItsWords) {
  for (const Row& row : kRows) EXPECT_EQ(spelled(row.text, lint(row.text)), row.expected) << row.text;
}

// Past the few excluded names looked up in place, the names are kept in
// maps: the same findings there.
TEST(Lint, ManyExcludedNamesAreJudgedAsFew) {
  std::string excluded;
  for (int i = 0; i < 40; ++i) excluded += " n" + std::to_string(i);
  const std::string text = "-f and [ -f dst not" + excluded + " -f dst n3 n7 -f dst n3 other -f src n3 ] -k svc -v wb";
  EXPECT_EQ(spelled(text, lint(text)), std::vector<std::string>{"filter-unsatisfiable:-f dst n3 n7"});
}

TEST(Lint, TheBenchmarkCorpusDrawsNoFalseAlarm) {
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind == bench::CaseKind::Legacy || c.kind == bench::CaseKind::LegacyRefused) continue;
    EXPECT_TRUE(lint(c.text).empty()) << c.name;
  }
}

// The examples of the request syntax page, run through lytreq there; those
// that show a surprise on purpose carry it.
TEST(Lint, TheExamplesOfTheSyntaxPageDrawOnlyTheSurprisesTheyShow) {
  const std::map<std::string, std::vector<std::string>> surprising = {
      {"-f or [ -f src 10.0.0.1 -f dst 10.0.0.2 ] -k svc -f svc http -v wb",
       {"operator-changed:or", "filter-appended:-f svc http"}},
      {"-k svc -v wb url_mod=host_path cprint=both enc=yes dir=outbound", {"word-misread:dir=outbound"}},
      {"-k svc -v wb -s top index=2 updates=0", {"value-defaulted:updates=0"}},
      {"-k svc -v wb -f or", {"operator-ignored:-f or"}},
  };
  std::ifstream page(std::string(LFP_SOURCE_DIR) + "/docs/request-syntax.md");
  ASSERT_TRUE(page) << "docs/request-syntax.md";
  std::size_t examples = 0, shown = 0;
  for (std::string line; std::getline(page, line);) {
    const std::size_t open = line.find(" '");
    if (line.rfind("$ lytreq ", 0) != 0 || line.find(" convert ") != std::string::npos || open == std::string::npos)
      continue;
    const std::string text = line.substr(open + 2, line.rfind('\'') - open - 2);
    const auto surprise = surprising.find(text);
    ++examples;
    shown += surprise != surprising.end();
    EXPECT_EQ(spelled(text, lint(text)), surprise == surprising.end() ? std::vector<std::string>() : surprise->second)
        << text;
  }
  EXPECT_GT(examples, 30u);
  EXPECT_EQ(shown, surprising.size());
}

}  // namespace
