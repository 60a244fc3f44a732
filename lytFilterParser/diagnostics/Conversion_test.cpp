#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bench/corpus.h"
#include "lytFilterParser/diagnostics/TestSupport.h"

namespace {

using lytFilterParser::Conversion;
using lytFilterParser::convertWithDiagnostics;
using lfptest::spelled;

struct Row {
  std::string line;
  int peer;
  std::vector<std::string> expected;  // diagnostics, or the refusal as "message:WORD" and its suggestions
};

std::vector<std::string> outcome(const std::string& line, const Conversion& conversion) {
  if (!conversion.refusal) return spelled(line, conversion.diagnostics);
  std::vector<std::string> out = {spelled(line, conversion.refusal->start, conversion.refusal->length, conversion.refusal->message)};
  out.insert(out.end(), conversion.refusal->suggestions.begin(), conversion.refusal->suggestions.end());
  return out;
}

const Row kRows[] = {
    {"garbage words here", 2, {"word-skipped:garbage words here"}},
    {"-g topsrc -y b -n 20", 2, {"word-skipped:-n 20"}},
    {"-filter [ and [[foo 1 [x]]]] -a a -y b -g topsrc", 1, {"filter-dropped:[foo 1 [x]]"}},
    {"-filter [ and [[interface 0 [[eth0 in][eth1 out]]]]] -a i -y C -g topfw", 2, {"filter-dropped:[eth1 out]"}},
    {"-filter [ or [[src 0 [a ]][dst 0 [b ]]]] -a a -y b -g topsrc", 2, {"operator-changed:or"}},
    {"-ybx bytes -a ix -g topsrc", 2, {"word-misread:-ybx", "word-misread:bytes", "word-misread:ix"}},
    {"src 2 [ a ] interface x [[eth0 in]]", 1, {"word-misread:2", "word-misread:x"}},
    {"dst 0 a b ] interface 1 eth0 eth1 out", 2, {"word-skipped:a", "word-skipped:eth0"}},
    {"-g src src 0 [ a [ b ] ]", 2, {"filter-dropped:src 0 [ a [ b ] ]"}},
    {"-g topsrc -y b -g src dst 1 [ a", 2, {"filter-dropped:dst 1 [ a"}},
    {"-g src -f src a -v pkt", 2, {}},  // the current syntax after a plain group means what it says
    {"-g topsrc -y x", 2, {"Invalid value type:x"}},
    {"-g topsrcc", 1, {"Invalid key type:topsrcc", "topsrc"}},
    {"-g src 10.0.0.1 -ybx p", 2, {"Invalid option: -ybx:-ybx"}},  // no suggestion for a word of the vocabulary
    {"-g src 10.0.0.1 10.0.0.2 -y p", 2, {"Invalid option: -y:-y"}},
    {"src 0 [ a", 2, {"Invalid filter:$"}},
    {"-k Src -v wb", 3, {"Invalid type: Src:Src", "src"}},
    {"-k src -v wb", 5, {"NetworkKovaRequest: Invalid version:-k src -v wb"}},
    {"anything at all", 0, {}},
};

TEST(Conversion, SkippedWordsDroppedFiltersAndRefusalsStandAtTheirWords) {
  for (const Row& row : kRows) {
    std::string error;
    const std::string converted = LYTKovaRequest::convert(row.line, TavVersion(row.peer), error);
    const Conversion conversion = convertWithDiagnostics(row.line, TavVersion(row.peer));
    EXPECT_EQ(conversion.request, converted) << row.line;
    EXPECT_EQ(conversion.refusal ? conversion.refusal->message : std::string(), error) << row.line;
    EXPECT_EQ(outcome(row.line, conversion), row.expected) << row.line << " peer " << row.peer;
  }
}

TEST(Conversion, TheLegacyLinesOfTheBenchmarkCorpusLoseOnlyWhatTheyLose) {
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind != bench::CaseKind::Legacy) continue;
    const std::vector<std::string> found = spelled(c.text, convertWithDiagnostics(c.text, TavVersion(2)).diagnostics);
    // The legacy reader takes the first interface of a legacy interface filter only.
    const bool secondInterface = c.text.find("][eth1 out]") != std::string::npos;
    EXPECT_EQ(found, secondInterface ? std::vector<std::string>{"filter-dropped:[eth1 out]"} : std::vector<std::string>())
        << c.name;
  }
}

}  // namespace
