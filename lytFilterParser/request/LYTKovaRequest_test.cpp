// The tokenizer, the fault primitive and the two entry points.
#include "lytFilterParser/request/LYTKovaRequest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/request/Assert.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace {

std::vector<std::string> tokenize(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return std::vector<std::string>(tokens.begin(), tokens.end());
}

struct TokenCase {
  std::string text;
  std::vector<std::string> tokens;
};

TEST(FillFilterList, CutsTextIntoTokens) {
  const std::vector<TokenCase> cases = {
      {"", {}},
      {"     ", {}},
      {"a", {"a"}},
      {"  a   b  ", {"a", "b"}},
      {"[]", {"[", "]"}},
      {"][", {"]", "["}},
      {"a]b", {"a", "]", "b"}},
      {"x[y", {"x", "[", "y"}},
      {"[x", {"[", "x"}},
      {"x]", {"x", "]"}},
      {"[[x]]", {"[", "[", "x", "]", "]"}},
      {"a [ ] b", {"a", "[", "]", "b"}},
      {"a\tb", {"a\tb"}},                // only the blank separates
      {"a\t b\n", {"a\t", "b\n"}},
      {"\t", {"\t"}},
      {"h1<>10.0.0.1 acc=rate", {"h1<>10.0.0.1", "acc=rate"}},
      {"eth1,in", {"eth1,in"}},
      {" -filter [and [[interface  0 [[any inbound]]]]] -k src",
       {"-filter", "[", "and", "[", "[", "interface", "0", "[", "[", "any", "inbound", "]", "]", "]", "]", "]", "-k",
        "src"}},
  };
  for (const TokenCase& c : cases) {
    SCOPED_TRACE("text: \"" + c.text + "\"");
    EXPECT_EQ(tokenize(c.text), c.tokens);
  }
}

TEST(FillFilterList, AppendsToWhatTheListAlreadyHolds) {
  strList tokens = {"keep", "[", "this"};
  LYTKovaRequest::fillFilterList(tokens, "a ]b");
  EXPECT_EQ(tokens, (strList{"keep", "[", "this", "a", "]", "b"}));
  LYTKovaRequest::fillFilterList(tokens, "   ");
  EXPECT_EQ(tokens.size(), 6u);
}

TEST(Assert, TrueConditionReturns) { EXPECT_NO_THROW(lytFilterParser::Assert(true, "never thrown")); }

TEST(Assert, FalseConditionThrowsTheMessageAsAString) {
  for (const std::string message : {"", "Invalid type: foo", "with\ttab and blanks  "}) {
    try {
      lytFilterParser::Assert(false, message);
      ADD_FAILURE() << "nothing thrown for \"" << message << "\"";
    } catch (const std::string& thrown) {
      EXPECT_EQ(thrown, message);
    }
  }
}

// --- getLYTKovaRequest ---

struct Built {
  std::unique_ptr<LYTKovaRequest> request;
  std::string error;
};

Built build(const std::string& text) {
  Built built;
  built.error = "untouched";
  built.request.reset(LYTKovaRequest::getLYTKovaRequest(text, built.error));
  return built;
}

TEST(GetLYTKovaRequest, EmptyTextGivesNullAndLeavesErrorAlone) {
  for (const char* text : {"", " ", "     "}) {
    Built built = build(text);
    EXPECT_EQ(built.request, nullptr) << '"' << text << '"';
    EXPECT_EQ(built.error, "untouched");
  }
}

TEST(GetLYTKovaRequest, CurrentSyntaxBuildsANetworkRequest) {
  Built built = build("-f src 10.0.0.1 -k svc -v wb acc=rate -s top");
  ASSERT_NE(built.request, nullptr) << built.error;
  EXPECT_EQ(built.error, "untouched");
  EXPECT_NE(dynamic_cast<NetworkKovaRequest*>(built.request.get()), nullptr);
  EXPECT_EQ(built.request->getModuleNames(), (strList{"10.0.0.1"}));
  // The written text reads back to the same text.
  Built again = build(built.request->dump());
  ASSERT_NE(again.request, nullptr) << again.error;
  EXPECT_EQ(again.request->dump(), built.request->dump());
}

TEST(GetLYTKovaRequest, LeadingVlBuildsAnEndToEndRequestFromTheRest) {
  Built built = build("  vl branch-link -t application ");
  ASSERT_NE(built.request, nullptr) << built.error;
  EXPECT_EQ(built.error, "untouched");
  auto* e2e = dynamic_cast<E2EKovaRequest*>(built.request.get());
  ASSERT_NE(e2e, nullptr);
  EXPECT_EQ(e2e->getVLName(), "branch-link");
  EXPECT_EQ(e2e->getDataType(), E2E_DATA_APPLICATION);
  EXPECT_EQ(built.request->dump(), "vl branch-link -t application");
}

struct FaultCase {
  std::string text;
  std::string message;
};

TEST(GetLYTKovaRequest, BuildingFaultGivesNullAndAssignsTheMessage) {
  const std::vector<FaultCase> cases = {
      // Only the exact, lower-case "vl" selects the end-to-end request.
      {"VL link", "Invalid option: VL"},
      {"vl2 link", "Invalid option: vl2"},
      {"-filter [and]", "Invalid option: -filter"},
      {"-s", "Sort type expected"},
      {"vl link -t", "No data after direction argument"},
      {"vl link -t x", "Not a valid argument for dataType"},
      {"vl", "No virtual link name after vl"},
  };
  for (const FaultCase& c : cases) {
    SCOPED_TRACE(c.text);
    std::string error = "an earlier message that must be replaced";
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(c.text, error));
    EXPECT_EQ(request, nullptr);
    EXPECT_EQ(error, c.message);
  }
}

// --- convert ---

TEST(Convert, EmptyTextGivesEmptyResultAndLeavesErrorAlone) {
  for (const char* text : {"", "   "}) {
    std::string error = "untouched";
    EXPECT_EQ(LYTKovaRequest::convert(text, error), "");
    EXPECT_EQ(LYTKovaRequest::convert(text, TavVersion(1), error), "");
    EXPECT_EQ(LYTKovaRequest::convert(text, TavVersion(7), error), "");  // no version check without tokens
    EXPECT_EQ(error, "untouched");
  }
}

TEST(Convert, LegacyLineComesBackInTheCurrentSyntax) {
  std::string error = "untouched";
  const std::string converted = LYTKovaRequest::convert("-g topsrc -y c src 1 [ 10.0.0.1 ]", error);
  EXPECT_EQ(error, "untouched");
  Built expected = build("-k src -s top -v conn acc=new -f src not 10.0.0.1");
  ASSERT_NE(expected.request, nullptr) << expected.error;
  EXPECT_EQ(converted, expected.request->dump());
  EXPECT_FALSE(converted.empty());
}

TEST(Convert, WithoutVersionReadsForAnOlderPeer) {
  const std::string text = "-g topsvc -y p";
  std::string error2, errorDefault, error3;
  const std::string atTwo = LYTKovaRequest::convert(text, TavVersion(2), error2);
  EXPECT_EQ(LYTKovaRequest::convert(text, errorDefault), atTwo);
  EXPECT_FALSE(atTwo.empty());
  EXPECT_EQ(errorDefault, "");
  // The current peer reads the same tokens untranslated, and rejects them.
  EXPECT_EQ(LYTKovaRequest::convert(text, TavVersion(3), error3), "");
  EXPECT_EQ(error3, "Invalid option: -g");
}

TEST(Convert, BuildingFaultGivesEmptyResultAndAssignsTheMessage) {
  struct Case {
    std::string text;
    int version;
    std::string message;
  };
  const std::vector<Case> cases = {
      {"-g", 2, "Invalid key type"},
      {"-g fw", 1, "Invalid key type"},
      {"-y x", 2, "Invalid value type"},
      {"src 0 [ a b", 2, "Invalid filter"},
      {"interface 1 [", 2, "Invalid interface filter"},
      {"-g topsrc", 4, "NetworkKovaRequest: Invalid version"},
      {"-g topsrc", -1, "NetworkKovaRequest: Invalid version"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text + " @" + std::to_string(c.version));
    std::string error = "an earlier message that must be replaced";
    EXPECT_EQ(LYTKovaRequest::convert(c.text, TavVersion(c.version), error), "");
    EXPECT_EQ(error, c.message);
  }
}

}  // namespace
