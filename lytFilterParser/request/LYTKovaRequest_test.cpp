// The tokenizer, the fault primitive and the two entry points.
#include "lytFilterParser/request/LYTKovaRequest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/request/Assert.h"
#include "lytFilterParser/request/E2EKovaRequest.h"
#include "lytFilterParser/detail/TestSupport.h"
#include "lytFilterParser/request/NetworkKovaRequest.h"

namespace {

using lfptest::thrownMessage;

std::vector<std::string> tokenize(const std::string& text) {
  const strList tokens = lfptest::tokensOf(text);
  return std::vector<std::string>(tokens.begin(), tokens.end());
}

TEST(FillFilterList, CutsTextIntoTokens) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"", {}},
      {"a", {"a"}},
      {"  a   b  ", {"a", "b"}},
      {"[]", {"[", "]"}},
      {"a]b", {"a", "]", "b"}},
      {"x[y", {"x", "[", "y"}},
      {"[[x]]", {"[", "[", "x", "]", "]"}},
      {"a\t b\n", {"a\t", "b\n"}},  // only the blank separates
      {" -filter [and [[interface  0 [[any inbound]]]]] -k src",
       {"-filter", "[", "and", "[", "[", "interface", "0", "[", "[", "any", "inbound", "]", "]", "]", "]", "]", "-k",
        "src"}},
  };
  for (const auto& c : cases) EXPECT_EQ(tokenize(c.first), c.second) << '"' << c.first << '"';
}

TEST(FillFilterList, AppendsToWhatTheListAlreadyHolds) {
  strList tokens = {"keep", "[", "this"};
  LYTKovaRequest::fillFilterList(tokens, "a ]b");
  EXPECT_EQ(tokens, (strList{"keep", "[", "this", "a", "]", "b"}));
  LYTKovaRequest::fillFilterList(tokens, "   ");
  EXPECT_EQ(tokens.size(), 6u);
}

TEST(Assert, ThrowsTheMessageAsAStringOnlyWhenFalse) {
  EXPECT_NO_THROW(lytFilterParser::Assert(true, "never thrown"));
  for (const std::string message : {"", "with\ttab and blanks  "}) {
    EXPECT_EQ(thrownMessage([&] { lytFilterParser::Assert(false, message); }), message);
  }
}

// What the entry point gives: the written request, "<null>" with the error
// left alone, or "<error> " and the message it assigned.
std::string entryPoint(const std::string& text) {
  std::string error = "untouched";
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (request) return error == "untouched" ? request->dump() : "<error set too> " + error;
  return error == "untouched" ? "<null>" : "<error> " + error;
}

TEST(GetLYTKovaRequest, BuildsTheRequestOrAssignsTheMessage) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "<null>"},
      {"     ", "<null>"},
      {"-f src 10.0.0.1 -k svc -v wb -s top", "-f src  10.0.0.1    -k svc acc=replace -v wb acc=rate -s top "},
      {"  vl branch-link -t application ", "vl branch-link -t application"},
      // Only the exact, lower-case "vl" selects the end-to-end request.
      {"VL link", "<error> Invalid option: VL"},
      {"vl2 link", "<error> Invalid option: vl2"},
      {"-s", "<error> Sort type expected"},
      {"vl link -t", "<error> No data after direction argument"},
      {"vl", "<error> No virtual link name after vl"},
  };
  for (const auto& c : cases) EXPECT_EQ(entryPoint(c.first), c.second) << c.first;
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest("-k src", error));
  EXPECT_NE(dynamic_cast<NetworkKovaRequest*>(request.get()), nullptr);
  request.reset(LYTKovaRequest::getLYTKovaRequest("vl x", error));
  EXPECT_NE(dynamic_cast<E2EKovaRequest*>(request.get()), nullptr);
}

// The factory reads the text in place; the parsing constructors read a
// token list. What the list readers give for the same text: the written
// request, or "<error> " and the message.
std::string listReaders(const std::string& text) {
  strList tokens = lfptest::tokensOf(text);
  if (tokens.empty()) return "<null>";
  try {
    std::unique_ptr<LYTKovaRequest> request;
    if (tokens.front() == "vl") {
      tokens.pop_front();
      request.reset(new E2EKovaRequest(tokens));
    } else {
      request.reset(new NetworkKovaRequest(tokens));
    }
    return request->dump();
  } catch (const std::string& message) {
    return "<error> " + message;
  }
}

TEST(GetLYTKovaRequest, ReadsTheTextInPlaceAsTheTokenListReadersDo) {
  // {text, what both give}: the bare atom list is closed by a bracket that
  // exists only for the reader; a stray "]" can meet it.
  const std::pair<const char*, const char*> cases[] = {
      {"-f src a", "-f src  a    "},
      {"-f src a -f dst b -k svc", "-f and [ -f src  a   -f dst  b   ] -k svc acc=replace "},
      {"-f src a -f or [ -f dst b -f dst c ] -f svc d -v wb",
       "-f and [ -f src  a   -f or [ -f dst  b   -f dst  c   ]  -f svc  d   ] -v wb acc=rate "},
      {"-f src -f and [ -f dst b ] -k svc", "-f and [ -f src    -f dst  b     ] -k svc acc=replace "},
      {"-f src a [ -k svc", "-f src  a [    -k svc acc=replace "},
      // The stray "]" closes the conjunction; the implied one is left over.
      {"-f src a ] -k svc", "<error> Invalid option: ]"},
      {"-f src a ] -f dst b -k svc", "<error> Invalid option: ]"},
      {"-f interface not eth0,in ]", "<error> Invalid option: ]"},
      // Every bare list adds an implied "]" before "-k"; six of them.
      {"-f src a ] -f src b ] -f src c ] -f src d ] -f src e ] -f src f -k svc", "<error> Invalid option: ]"},
      // The implied "]" is the next token when no atom text follows "-f".
      {"-f src a -f", "<error> Invalid type: ]"},
      {"-f -v wb", "<error> Invalid type: ]"},
      {"-f", "<error> Expected type at this point but there is no data"},
      {"-f and [ -f src a", "<error> `]` expected"},
      {"-k src a ] b -v wb acc=sum sort=top", " -k src acc=replace a ] b -v wb acc=sum -s top "},
      {"-s top index=2 updates=0 -v wb -v pkt", " -v wb acc=rate -v pkt acc=rate -s top index=2 "},
      {"vl x -t wire -t app", "vl x -t application"},
      {"vl x -t", "<error> No data after direction argument"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(entryPoint(c.first), c.second) << c.first;
    EXPECT_EQ(listReaders(c.first), c.second) << c.first;
  }
}

TEST(Convert, ReadsForAnOlderPeerByDefaultAndAssignsFaults) {
  std::string error = "untouched";
  for (const char* text : {"", "   "}) {
    EXPECT_EQ(LYTKovaRequest::convert(text, error), "");
    EXPECT_EQ(LYTKovaRequest::convert(text, TavVersion(7), error), "");  // no version check without tokens
  }
  EXPECT_EQ(LYTKovaRequest::convert("-g topsvc -y p", error), " -k svc acc=replace -v pkt acc=rate -s top ");
  EXPECT_EQ(error, "untouched");
  // The current peer reads the same tokens untranslated, and rejects them.
  EXPECT_EQ(LYTKovaRequest::convert("-g topsvc -y p", TavVersion(3), error), "");
  EXPECT_EQ(error, "Invalid option: -g");
  EXPECT_EQ(LYTKovaRequest::convert("-g topsrc", TavVersion(-1), error), "");
  EXPECT_EQ(error, "NetworkKovaRequest: Invalid version");
}

TEST(Convert, ReadsTheTextInPlaceAsTheLegacyListReaderDoes) {
  // {legacy text, what convert and NetworkKovaRequest(tokens, 2) give}: the
  // translated words are views of the text, except the interface items the
  // translation composes, which must stay one token even when they hold a
  // bracket.
  const std::pair<const char*, const char*> cases[] = {
      {"-filter [ and [[interface 0 [[ ] in]]]] -y b", "-f interface   ],in   -v wb acc=rate "},
      {"-filter [ and [[interface 1 [eth0 [ ]]]] -y b", "-f interface not  eth0   -v wb acc=rate "},
      {"-g topsrc -y c src 1 [ 10.0.0.1 ]", "-f src not 10.0.0.1    -k src acc=replace -v conn acc=new -s top "},
      {"-g src -f src a", "-f src  a    -k src acc=replace -v wb acc=rate "},
      {"src 0 [ a", "<error> Invalid filter"},
  };
  for (const auto& c : cases) {
    std::string error;
    const std::string converted = LYTKovaRequest::convert(c.first, TavVersion(2), error);
    EXPECT_EQ(error.empty() ? converted : "<error> " + error, c.second) << c.first;
    strList tokens = lfptest::tokensOf(c.first);
    try {
      EXPECT_EQ(NetworkKovaRequest(tokens, TavVersion(2)).dump(), c.second) << c.first;
    } catch (const std::string& message) {
      EXPECT_EQ("<error> " + message, c.second) << c.first;
    }
  }
}

TEST(Convert, AMessageFromWritingReachesTheCaller) {
  // After a plain group the rest of the line is read as it stands, so a
  // telNumber key column gets in; it has no written keyword.
  std::string error = "untouched";
  try {
    LYTKovaRequest::convert("-g src -k telNumber", error);
    FAIL() << "expected the writer's message";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "Not a valid argument for type");
  }
  EXPECT_EQ(error, "untouched");
}

}  // namespace
