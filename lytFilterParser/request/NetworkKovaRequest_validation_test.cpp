// NetworkKovaRequest::isValid and getMinimalValidVersion: one message per
// refusal, the order of the checks, and the settings the check completes.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

std::string keyWithEntities(int count) {
  std::string text = "-k src";
  for (int i = 1; i <= count; ++i) text += " e" + std::to_string(i);
  return text + " -v wb";
}

TEST(NetworkKovaRequestValidation, GivesOneVerdictPerRequest) {
  const std::string fourKeys = "-k svc -k src -k dst -k fwrule ";
  const std::string sixValues = "-v wb -v ab -v pkt -v conn acc=new -v wb acc=sum -v ab acc=lineUtil ";
  const struct {
    std::string text;
    int version;
    std::string message;                 // "" when valid
    const char* writtenAfter = nullptr;  // what the request writes after the check, if given
  } cases[] = {
      {"-k src -v wb", 0, "This version is not supported"},
      {"-v wb", 3, "At least one key is required"},
      {"-k src", 5, "At least one value is required"},
      {fourKeys + sixValues, 3, ""},
      {fourKeys + "-k qsrule " + sixValues, 3, "Number of keys reach the max number"},
      {fourKeys + sixValues + "-v pkt", 3, "Number of vals reach the max number"},
      {"-k src a b -k dst c -v wb", 3, "Number of entries for each key must be equal"},
      {"-k wb -v wb", 3, "Invalid type for key: wb"},
      {"-k ip -k src -v wb", 3, ""},
      {"-k src -k ip -v wb", 3, "The following types (IP, Tunnel, wdAttack) can be used only as the first key"},
      {"-k src -v src", 3, "Invalid type for value: src"},
      {"-k src -v pkt acc=lineUtil", 3, "Invalid accumulation mode"},
      {"-k src -v ab acc=lineUtil -v wb acc=sum -v pkt acc=sum -v conn -v session", 3, ""},
      {"-k src -v conn acc=new cprint=no", 3, "Can't use Per Connection with column filter"},
      {"-k src -v session enc=yes", 3, "Can't use Per Session with column filter"},
      {"-k src -v wb dir=in comp=yes", 3, ""},
      {"-k src -v wb x", 3, "Invalid options for value"},
      {"-k src -v wb -v ab -s top index=3", 3, "Invalid Sort index"},
      {"-k src -v wb -v ab -s top index=2", 3, ""},
      // The check completes the request: a dynamic view's sort none becomes
      // top, a rate of connections or sessions the mode they allow; the
      // changes stay when a later check refuses the request.
      {"-k src a -v session", 3, "", " -k src acc=replace a -v session acc=new "},
      {"-k src -v wb -v pkt", 3, "", " -k src acc=replace -v wb acc=rate -v pkt acc=rate -s top index=1 "},
      {"-k src -k connId -v wb -v conn", 3, "Can't use Concurrent Connections with Individual views",
       " -k src acc=replace -k connId acc=replace -v wb acc=rate -v conn acc=concurrent -s top index=1 "},
      {"-k src a -v wb -v ab -s top index=5", 3, ""},
      {"-k pktRange -v wb", 3, "Packet size distribution key must followed by ranges entities"},
      {"-k pktRange 0-64 -v wb", 3, ""},
      {keyWithEntities(100), 1, ""},
      {keyWithEntities(101), 3, "Number of entries reach the max number"},
      {"-k src -v wb -s top updates=200", 3, ""},
      {"-k src -v wb -s top updates=201", 0, "Invalid maxUpdates"},
      {"-k src -k connId -v conn acc=concurrent", 3, "Can't use Concurrent Connections with Individual views"},
      {"-k qsrule -v conn", 3, "Can't use Concurrent Connections views with QS rules"},
      {"-k interface -v wb -v conn acc=concurrent", 3, "Can't use Concurrent Connections views with Interface"},
      {"-k src -k fwrule -v session acc=new", 3, "Can't use fwrule with session value"},
      {"-k wdAttack -v session acc=new -v pkt", 3, "Can't use wdAttack or url with none session value: pkt"},
      {"-k src -k dst -v wb", 1, "Support only one key"},
      {"-k src -k connId -v wb", 1, ""},
      {"-k src -v wb -v pkt", 2, "Support only one value column"},
      {"-k connId -v wb", 1, "Invalid type for key: connId"},
      {"-k src -v ab", 1, "Invalid type for value: ab"},
      {"-k src -v wb acc=sum", 1, "Invalid accumulation mode"},
      {"-f src a -f citrix c -k src -v wb", 1, "Invalid Filter Type: citrix"},
      // Above the current version only the first two checks and the filter's apply.
      {fourKeys + "-k qsrule -k connId " + sixValues + "-v session", 4, ""},
      {"-f pkt 1 -k src -v wb", 4, "Invalid Filter Type: pkt"},
      // Two rules would fire: the earlier check decides.
      {"-k src a -k wb -v wb", 3, "Number of entries for each key must be equal"},
      {"-k ip -k tunnel -v wb", 3, "The following types (IP, Tunnel, wdAttack) can be used only as the first key"},
      {"-k src -v wb x -v wb -s top index=9", 3, "Invalid options for value"},
      {"-k qsrule -k connId -k interface -v conn", 3, "Can't use Concurrent Connections with Individual views"},
      {"-k url -k fwrule -v wb -v session", 3, "Can't use fwrule with session value"},
      {"-k url -v wb -v pkt", 1, "Can't use wdAttack or url with none session value: wb"},
  };
  for (const auto& c : cases) {
    auto request = readRequest(c.text);
    for (int run = 0; run < 2; ++run) {
      std::string error;
      EXPECT_EQ(request->isValid(TavVersion(c.version), error), c.message.empty()) << c.text << " @" << c.version;
      EXPECT_EQ(error, c.message) << c.text << " @" << c.version << " run " << run;
    }
    if (c.writtenAfter != nullptr) {
      EXPECT_EQ(request->dump(), c.writtenAfter);
    }
  }
}

TEST(NetworkKovaRequestValidation, MinimalValidVersion) {
  const std::pair<const char*, int> cases[] = {
      {"-k src -k connId -v pkt", 1},
      {"-k src -v ab", 3},
      {"-k url -v session acc=new", 3},
      {"-v wb", 4},
  };
  std::string error;
  for (const auto& c : cases) EXPECT_EQ(readRequest(c.first)->getMinimalValidVersion(error), c.second) << c.first;
  EXPECT_EQ(error, "At least one key is required");
}

TEST(NetworkKovaRequestValidation, TelNumberKeyWithSessionValueThrows) {
  auto request = readRequest("-k telNumber -v session acc=new");
  std::string error;
  EXPECT_EQ(thrownMessage([&] { request->isValid(error); }), "Not a valid argument for type");
  EXPECT_TRUE(readRequest("-k telNumber -v wb")->isValid(error)) << error;  // without a session value it passes
}

}  // namespace
