// The tokenizer, the fault primitive and the two entry points.
#include "lytFilterParser/request/LYTKovaRequest.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using lfptest::thrownMessage;

TEST(FillFilterList, CutsTextIntoTokensAndAppends) {
  EXPECT_EQ(lfptest::tokensOf("  a]b x[y  [] "), (strList{"a", "]", "b", "x", "[", "y", "[", "]"}));
  EXPECT_EQ(lfptest::tokensOf("\ta\t b\n"), (strList{"\ta\t", "b\n"}));  // only the blank separates
  strList tokens = {"keep"};
  LYTKovaRequest::fillFilterList(tokens, "a ]b");
  LYTKovaRequest::fillFilterList(tokens, "   ");
  EXPECT_EQ(tokens, (strList{"keep", "a", "]", "b"}));
}

TEST(Assert, ThrowsTheMessageAsAStringOnlyWhenFalse) {
  EXPECT_NO_THROW(lytFilterParser::Assert(true, "never thrown"));
  EXPECT_EQ(thrownMessage([&] { lytFilterParser::Assert(false, ""); }), "");
}

// What the entry point gives: the written request, "<null>" with the error
// left alone, or "<error> " and the message it assigned.
std::string entryPoint(const std::string& text) {
  std::string error = "untouched";
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  if (request) return error == "untouched" ? request->dump() : "<error set too> " + error;
  return error == "untouched" ? "<null>" : "<error> " + error;
}

// What the token-list readers give for the same text: the parsing
// constructors, NetworkKovaRequest(tokens, 2) for legacy text.
std::string listReaders(const std::string& text, bool legacy) {
  strList tokens = lfptest::tokensOf(text);
  try {
    std::unique_ptr<LYTKovaRequest> request;
    if (legacy) {
      request.reset(new NetworkKovaRequest(tokens, TavVersion(2)));
    } else if (!tokens.empty() && tokens.front() == "vl") {
      tokens.pop_front();
      request.reset(new E2EKovaRequest(tokens));
    } else if (!tokens.empty()) {
      request.reset(new NetworkKovaRequest(tokens));
    }
    return request ? request->dump() : "<null>";
  } catch (const std::string& message) {
    return "<error> " + message;
  }
}

// The entry points read the text in place, without a token list: they must
// give what the list readers give. Bare atom lists are closed by a "]" that
// exists only for the reader (a stray "]" of the text can meet it); the
// legacy translation composes interface items, which must stay one token.
TEST(EntryPoints, ReadTheTextInPlaceAsTheTokenListReadersDo) {
  const struct {
    bool legacy;
    const char* text;
    const char* result;
  } cases[] = {
      {false, "     ", "<null>"},
      {false, "  vl branch-link -t application ", "vl branch-link -t application"},
      // Only the exact, lower-case "vl" makes an end-to-end request.
      {false, "VL link", "<error> Invalid option: VL"},
      {false, "vl2 link", "<error> Invalid option: vl2"},
      {false, "vl", "<error> No virtual link name after vl"},
      {false, "-f src a -f or [ -f dst b -f dst c ] -f svc d -v wb",
       "-f and [ -f src  a   -f or [ -f dst  b   -f dst  c   ]  -f svc  d   ] -v wb acc=rate "},
      {false, "-f src -f and [ -f dst b ] -k svc", "-f and [ -f src    -f dst  b     ] -k svc acc=replace "},
      {false, "-f src a [ -k svc", "-f src  a [    -k svc acc=replace "},
      {false, "-f src a -k svc -f or -f dst b", "-f or [ -f src  a   -f dst  b   ] -k svc acc=replace "},
      // The stray "]" closes the conjunction; the implied one is left over.
      {false, "-f src a ] -f dst b -k svc", "<error> Invalid option: ]"},
      {false, "-f interface not eth0,in ]", "<error> Invalid option: ]"},
      // Every bare list adds an implied "]" before "-k"; six of them.
      {false, "-f src a ] -f src b ] -f src c ] -f src d ] -f src e ] -f src f -k svc", "<error> Invalid option: ]"},
      // The implied "]" is the next token when no atom text follows "-f".
      {false, "-f -v wb", "<error> Invalid type: ]"},
      {false, "-k src a ] b -v wb acc=sum sort=top", " -k src acc=replace a ] b -v wb acc=sum -s top "},
      {false, "-s top index=2 updates=0 -v wb -v pkt", " -v wb acc=rate -v pkt acc=rate -s top index=2 "},
      {true, "-filter [ and [[interface 0 [[ ] in]]]] -y b", "-f interface   ],in   -v wb acc=rate "},
      {true, "-g topsrc -y c src 1 [ 10.0.0.1 ]", "-f src not 10.0.0.1    -k src acc=replace -v conn acc=new -s top "},
      {true, "-g src -f src a", "-f src  a    -k src acc=replace -v wb acc=rate "},
      {true, "src 0 [ a", "<error> Invalid filter"},
  };
  for (const auto& c : cases) {
    std::string error;
    const std::string inPlace = c.legacy ? LYTKovaRequest::convert(c.text, TavVersion(2), error) : entryPoint(c.text);
    EXPECT_EQ(error.empty() ? inPlace : "<error> " + error, c.result) << c.text;
    EXPECT_EQ(listReaders(c.text, c.legacy), c.result) << c.text;
  }
}

TEST(Convert, ReadsForAnOlderPeerByDefaultAndLetsWritingFaultsThrough) {
  std::string error = "untouched";
  EXPECT_EQ(LYTKovaRequest::convert("   ", TavVersion(7), error), "");  // no version check without tokens
  EXPECT_EQ(LYTKovaRequest::convert("-g topsvc -y p", error), " -k svc acc=replace -v pkt acc=rate -s top ");
  // A message from writing reaches the caller: after a plain group the rest
  // of the line is read as it stands, so a telNumber key column gets in.
  EXPECT_EQ(thrownMessage([&] { LYTKovaRequest::convert("-g src -k telNumber", error); }),
            "Not a valid argument for type");
  EXPECT_EQ(error, "untouched");
}

}  // namespace
