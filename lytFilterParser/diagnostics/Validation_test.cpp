#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using lfptest::spelled;
using lytFilterParser::Refusal;

// "message:WORD" (TestSupport.h), or "valid".
std::string outcome(const std::string& text, int peer) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
  auto& network = dynamic_cast<NetworkKovaRequest&>(*request);
  const std::optional<Refusal> refusal = lytFilterParser::validate(text, network, TavVersion(peer));
  return refusal ? spelled(text, refusal->start, refusal->length, refusal->message) : "valid";
}

std::string names(const char* prefix, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += " " + std::string(prefix) + std::to_string(i);
  return text;
}

TEST(Validation, TheRefusalStandsOnTheItemThatMadeItFail) {
  const std::vector<std::tuple<std::string, int, std::string>> rows = {
      {"-k src -v wb -v pkt", 1, "Support only one value column:-v pkt"},
      {"-k src -k connId -k dst -v wb", 2, "Support only one key:-k dst"},
      {"-k src -k dst -k svc -k qsrule -k fwrule -k ip -v wb", 3, "Number of keys reach the max number:-k fwrule"},
      {"-k src" + names("e", 101) + " -v wb", 3, "Number of entries reach the max number:e100"},
      {"-k src h1 -k dst -v wb", 3, "Number of entries for each key must be equal:-k dst"},
      {"-k src -k ip -v wb", 3, "The following types (IP, Tunnel, wdAttack) can be used only as the first key:ip"},
      {"-k wb -v wb", 3, "Invalid type for key: wb:wb"},
      {"-k src -v ab", 1, "Invalid type for value: ab:ab"},
      {"-k src -v wb acc=new", 3, "Invalid accumulation mode:acc=new"},
      {"-k src -v conn url_mod=host dir=in", 3, "Can't use Per Connection with column filter:dir=in"},
      // The option that counts is the later one; the URL mode restricts nothing.
      {"-k src -v conn dir=in enc=yes dir=out", 3, "Can't use Per Connection with column filter:dir=out"},
      {"-k src -v conn enc=both comp=yes", 3, "Can't use Per Connection with column filter:comp=yes"},
      {"-f src a -f or [ -f dst b -f wb 1 ] -k svc -v pkt", 3, "Invalid Filter Type: wb:wb"},
      {"-k src -v wb h1 h2", 3, "Invalid options for value:h1"},
      {"-k svc -v wb -v pkt -s top index=1 index=3", 3, "Invalid Sort index:index=3"},
      {"-k pktRange -v wb", 3, "Packet size distribution key must followed by ranges entities:pktRange"},
      {"-k src -v wb -s top updates=300", 3, "Invalid maxUpdates:updates=300"},
      {"-k connId -v conn", 3, "Can't use Concurrent Connections with Individual views:connId"},
      {"-k src -k fwrule -v session", 3, "Can't use fwrule with session value:fwrule"},
      {"-k url -v session -v wb", 3, "Can't use wdAttack or url with none session value: wb:wb"},
      {"-f src a -f wb 1000 -k svc -v pkt", 3, "Invalid Filter Type: wb:wb"},
      {"-v wb", 3, "At least one key is required:$"},
      {"-k src -v wb", 0, "This version is not supported:-k src -v wb"},
      {"-k src -v wb", 1, "valid"},
  };
  for (const auto& [text, peer, expected] : rows) EXPECT_EQ(outcome(text, peer), expected) << text;
}

TEST(Validation, TheRequestIsCompletedAsIsValidCompletesIt) {
  std::string error;
  std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest("-k src -v conn", error));
  EXPECT_FALSE(lytFilterParser::validate("-k src -v conn", dynamic_cast<NetworkKovaRequest&>(*request), TavVersion(3)));
  EXPECT_EQ(request->dump(), " -k src acc=replace -v conn acc=concurrent -s top ");
}

}  // namespace
