#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using lfptest::spelled;
using lytFilterParser::RecordedRequest;
using lytFilterParser::Refusal;

std::string shown(const std::string& text, const std::optional<Refusal>& refusal) {
  if (!refusal) return "none";
  std::string out = spelled(text, refusal->start, refusal->length, refusal->message);
  for (const std::string& word : refusal->suggestions) out += " " + word;
  return out;
}

// One reading gives what the functions that read the text themselves give.
TEST(RecordedRequest, OneReadingGivesWhatEachFunctionGives) {
  const std::vector<std::string> texts = {
      "-f src a -f or -k svc -v wb",
      "-f or [ -f src a -f dst b ] -k svc -f svc c -v wb dir=in -s top index=2 updates=10",
      "-f interface eth0 -k src h1 -v wb -v pkt",
      "-k src -k connId -k dst -v wb acc=new",
      "-f src 10.0.0.1 -f src not 10.0.0.1 -k svc -v wb",
      "-k Src -v wb",
      "-k svc -v wb acc=rates",
      "vl link -t app",
      "",
  };
  for (const std::string& text : texts) {
    const RecordedRequest recorded(text);
    EXPECT_EQ(recorded.text(), text);
    std::string error;
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
    EXPECT_EQ(recorded.request() != nullptr, request != nullptr) << text;
    if (request) {
      EXPECT_EQ(recorded.request()->dump(), request->dump()) << text;
    }
    EXPECT_EQ(spelled(text, recorded.lint()), spelled(text, lytFilterParser::lint(text))) << text;
    EXPECT_EQ(shown(text, recorded.refusal()), shown(text, lytFilterParser::readRefusal(text))) << text;
    for (int peer = 1; peer <= 3; ++peer) {
      EXPECT_EQ(spelled(text, recorded.fidelity(TavVersion(peer))),
                spelled(text, lytFilterParser::fidelity(text, TavVersion(peer))))
          << text << " peer " << peer;
      auto* network = dynamic_cast<NetworkKovaRequest*>(request.get());
      if (network == nullptr) continue;
      NetworkKovaRequest copy(*network);
      EXPECT_EQ(shown(text, recorded.validate(TavVersion(peer))),
                shown(text, lytFilterParser::validate(text, copy, TavVersion(peer))))
          << text << " peer " << peer;
      // A copy validated in place, then its fidelity, as a tool asks.
      NetworkKovaRequest completed(*network), again(*network);
      try {
        EXPECT_EQ(shown(text, recorded.validate(completed, TavVersion(peer))),
                  shown(text, lytFilterParser::validate(text, again, TavVersion(peer))))
            << text << " peer " << peer;
      } catch (const std::string&) {
        continue;
      }
      EXPECT_EQ(completed.dump(), again.dump()) << text << " peer " << peer;
      EXPECT_EQ(spelled(text, recorded.fidelity(completed, TavVersion(peer))),
                spelled(text, lytFilterParser::fidelity(text, completed, TavVersion(peer))))
          << text << " peer " << peer;
    }
  }
}

}  // namespace
