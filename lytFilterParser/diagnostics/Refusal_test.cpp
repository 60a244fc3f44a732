#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"
#include "tests/support/corpus.h"

namespace {

using lfptest::spelled;
using lytFilterParser::readRefusal;
using lytFilterParser::Refusal;
using lytFilterParser::WordKind;

// "message:WORD" (TestSupport.h), then the suggestions.
std::vector<std::string> outcome(const std::string& text) {
  const std::optional<Refusal> refusal = readRefusal(text);
  if (!refusal) return {};
  std::vector<std::string> out = {spelled(text, refusal->start, refusal->length, refusal->message)};
  out.insert(out.end(), refusal->suggestions.begin(), refusal->suggestions.end());
  return out;
}

TEST(Refusal, TheFaultStandsOnItsWordWithTheWordsItMayHaveMeant) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
      {"-k Src -v wb", {"Invalid type: Src:Src", "src"}},
      {"-f srcip 10.0.0.1 -k svc -v wb", {"Invalid type: srcip:srcip", "src"}},
      {"-f Or [ -f src a ]", {"Invalid type: Or:Or", "or", "OR"}},
      {"-k src -v wb acc=rates", {"Invalid accumulation mode: acc=rates:acc=rates", "acc=rate"}},
      {"-k svc -v wb dir=up", {"Unexpected type of direction:dir=up", "dir=out", "dir=in"}},
      {"-k src\xc2\xa0 -v wb", {"Invalid type: src\xc2\xa0:src\xc2\xa0", "src"}},
      {"-x", {"Invalid option: -x:-x", "-f", "-k", "-v"}},
      {"-k svc -v wb -s top indx=2", {"Invalid option: indx=2:indx=2", "index="}},
      {"-k svc -v wb -s top -index=2", {"Invalid option: -index=2:-index=2", "index="}},
      {"index=2 -k svc", {"Invalid option: index=2:index=2"}},  // no sort to take it
      {"-k sr -v wb", {"Invalid type: sr:sr", "src"}},          // no operator after "-k"
      {"-f sr a", {"Invalid type: sr:sr", "src", "or"}},
      {"-k svc -v wb -s", {"Sort type expected:$"}},
      {"-f and [ -f src 10.0.0.1 -k svc", {"`]` expected instead of: -k:-k"}},
      {"-f src a ] -k svc -v wb", {"Invalid option: ]:@11"}},  // the "]" the reader adds before -k
      {"vl", {"No virtual link name after vl:$"}},
      {"vl x -t both", {"Not a valid argument for dataType:both"}},
      {"-k src -v wb", {}},
      {"  ", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(outcome(row.first), row.second) << row.first;
}

TEST(Refusal, TheMessageIsTheEntryPointsOwnForEveryRefusedRequestOfTheCorpus) {
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind != bench::CaseKind::Refused) continue;
    std::string error;
    EXPECT_EQ(LYTKovaRequest::getLYTKovaRequest(c.text, error), nullptr);
    const std::optional<Refusal> refusal = readRefusal(c.text);
    ASSERT_TRUE(refusal) << c.name;
    EXPECT_EQ(refusal->message, error);
    EXPECT_LE(refusal->start + refusal->length, c.text.size());
    EXPECT_LE(refusal->suggestions.size(), 3u);
  }
}

TEST(Refusal, SuggestionsAreCloseWordsOfTheKindsAsked) {
  EXPECT_EQ(lytFilterParser::suggestWords("SRC", {WordKind::ValueType}), std::vector<std::string>{"src"});
  EXPECT_EQ(lytFilterParser::suggestWords("topsrcc", {WordKind::LegacyGroup}), std::vector<std::string>{"topsrc"});
  EXPECT_TRUE(lytFilterParser::suggestWords("src", {WordKind::ValueType}).empty()) << "a word of the kind";
  EXPECT_TRUE(lytFilterParser::suggestWords("xy", {WordKind::ValueType}).empty()) << "two edits make any short word";
  EXPECT_TRUE(lytFilterParser::suggestWords("acc=rates", {WordKind::ValueType}).empty());
}

}  // namespace
