// NetworkKovaRequest::isValid and getMinimalValidVersion: one message per
// refusal, the order of the checks, and the settings the check completes.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace {

std::unique_ptr<NetworkKovaRequest> readRequest(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return std::make_unique<NetworkKovaRequest>(tokens);
}

std::string keyWithEntities(const char* type, int count) {
  std::string text = std::string("-k ") + type;
  for (int i = 1; i <= count; ++i) text += " e" + std::to_string(i);
  return text;
}

struct Verdict {
  std::string text;
  int version;
  bool valid;
  std::string message;  // "" when valid
};

std::vector<Verdict> verdicts() {
  const std::string fourKeys = "-k svc -k src -k dst -k fwrule ";
  const std::string sixValues = "-v wb -v ab -v pkt -v conn acc=new -v wb acc=sum -v ab acc=lineUtil ";
  return {
      {"-k src -v wb", 3, true, ""},
      {"-k src -v wb", 1, true, ""},
      {"-k src -v wb", 0, false, "This version is not supported"},
      {"-k src -v wb", -1, false, "This version is not supported"},
      {"-v wb", 3, false, "At least one key is required"},
      {"-v wb", 0, false, "At least one key is required"},
      {"-k src", 3, false, "At least one value is required"},
      {fourKeys + sixValues, 3, true, ""},
      {fourKeys + "-k qsrule " + sixValues, 3, false, "Number of keys reach the max number"},
      {fourKeys + sixValues + "-v pkt", 3, false, "Number of vals reach the max number"},
      {"-k src a b -k dst c -v wb", 3, false, "Number of entries for each key must be equal"},
      {"-k wb -v wb", 3, false, "Invalid type for key: wb"},
      {"-k src -k session -v wb", 3, false, "Invalid type for key: session"},
      {"-k ip -k src -v wb", 3, true, ""},
      {"-k src -k ip -v wb", 3, false, "The following types (IP, Tunnel, wdAttack) can be used only as the first key"},
      {"-k src -k wdAttack -v session acc=new", 3, false,
       "The following types (IP, Tunnel, wdAttack) can be used only as the first key"},
      {"-k src -v src", 3, false, "Invalid type for value: src"},
      {"-k src -v wb acc=new", 3, false, "Invalid accumulation mode"},
      {"-k src -v pkt acc=lineUtil", 3, false, "Invalid accumulation mode"},
      {"-k src -v conn acc=sum", 3, false, "Invalid accumulation mode"},
      {"-k src -v session acc=concurrent", 3, false, "Invalid accumulation mode"},
      {"-k src -v ab acc=lineUtil -v wb acc=sum -v pkt acc=sum -v conn -v session", 3, true, ""},
      {"-k src -v conn acc=new dir=in", 3, false, "Can't use Per Connection with column filter"},
      {"-k src -v conn acc=new cprint=no", 3, false, "Can't use Per Connection with column filter"},
      {"-k src -v conn acc=new url_mod=host dir=both", 3, true, ""},
      {"-k src -v session enc=yes", 3, false, "Can't use Per Session with column filter"},
      {"-k src -v wb dir=in comp=yes", 3, true, ""},
      {"-k src -v wb x", 3, false, "Invalid options for value"},
      {"-k src -v wb -v ab -s top index=3", 3, false, "Invalid Sort index"},
      {"-k src -v wb -v ab -s top index=0", 3, false, "Invalid Sort index"},
      {"-k src -v wb -v ab -s top index=2", 3, true, ""},
      {"-k src a -v wb -v ab -s top index=5", 3, true, ""},
      {"-k pktRange -v wb", 3, false, "Packet size distribution key must followed by ranges entities"},
      {"-k pktRange 0-64 -v wb", 3, true, ""},
      {keyWithEntities("src", 100) + " -v wb", 1, true, ""},
      {keyWithEntities("src", 101) + " -v wb", 3, false, "Number of entries reach the max number"},
      {"-k src -v wb -s top updates=200", 3, true, ""},
      {"-k src -v wb -s top updates=201", 3, false, "Invalid maxUpdates"},
      {"-k src -k connId -v conn acc=concurrent", 3, false, "Can't use Concurrent Connections with Individual views"},
      {"-k qsrule -v conn", 3, false, "Can't use Concurrent Connections views with QS rules"},
      {"-k interface -v wb -v conn acc=concurrent", 3, false, "Can't use Concurrent Connections views with Interface"},
      {"-k interface -v conn acc=new", 3, true, ""},
      {"-k src -k fwrule -v session acc=new", 3, false, "Can't use fwrule with session value"},
      {"-k src -k orientation -k citrix -v session", 3, false, "Can't use orientation with session value"},
      {"-k tunnel -v session acc=new", 3, false, "Can't use tunnel with session value"},
      {"-k url -v wb", 3, false, "Can't use wdAttack or url with none session value: wb"},
      {"-k wdAttack -v session acc=new -v pkt", 3, false, "Can't use wdAttack or url with none session value: pkt"},
      {"-k url -v session acc=new", 3, true, ""},
      {"-k src -k dst -v wb", 1, false, "Support only one key"},
      {"-k src -k connId -v wb", 1, true, ""},
      {"-k connId -k src -v wb", 2, false, "Support only one key"},
      {"-k src -v wb -v pkt", 2, false, "Support only one value column"},
      {"-k connId -v wb", 1, false, "Invalid type for key: connId"},
      {"-k src -v ab", 1, false, "Invalid type for value: ab"},
      {"-k src -v session acc=new", 2, false, "Invalid type for value: session"},
      {"-k src -v wb acc=sum", 1, false, "Invalid accumulation mode"},
      {"-f wb x -k src -v wb", 3, false, "Invalid Filter Type: wb"},
      {"-f src a -f citrix c -k src -v wb", 1, false, "Invalid Filter Type: citrix"},
      // Above the current version only the first two checks and the filter's apply.
      {fourKeys + "-k qsrule -k connId " + sixValues + "-v session", 4, true, ""},
      {"-k src", 5, false, "At least one value is required"},
      {"-f pkt 1 -k src -v wb", 4, false, "Invalid Filter Type: pkt"},
      // Two rules would fire: the earlier check decides.
      {"", 3, false, "At least one key is required"},
      {fourKeys + "-k qsrule " + sixValues + "-v pkt", 3, false, "Number of keys reach the max number"},
      {"-k src a -k wb -v wb", 3, false, "Number of entries for each key must be equal"},
      {"-k ip -k tunnel -v wb", 3, false, "The following types (IP, Tunnel, wdAttack) can be used only as the first key"},
      {"-k src -v src -v wb acc=new", 3, false, "Invalid type for value: src"},
      {"-k src -v wb x -v wb -s top index=9", 3, false, "Invalid options for value"},
      {"-k pktRange -v wb -v ab -s top index=3", 3, false, "Invalid Sort index"},
      {"-k qsrule -k connId -k interface -v conn", 3, false, "Can't use Concurrent Connections with Individual views"},
      {"-k qsrule -k interface -v conn", 3, false, "Can't use Concurrent Connections views with QS rules"},
      {"-k url -k fwrule -v wb -v session", 3, false, "Can't use fwrule with session value"},
      {"-k url -v wb -v pkt", 1, false, "Can't use wdAttack or url with none session value: wb"},
      {"-k src -k dst -v ab -v pkt", 1, false, "Support only one key"},
      {"-k src -v wb -s top updates=201", 0, false, "Invalid maxUpdates"},
  };
}

TEST(NetworkKovaRequestValidation, GivesOneVerdictPerRequest) {
  for (const Verdict& row : verdicts()) {
    SCOPED_TRACE(row.text + " @" + std::to_string(row.version));
    auto request = readRequest(row.text);
    for (int run = 0; run < 2; ++run) {
      std::string error;
      EXPECT_EQ(request->isValid(TavVersion(row.version), error), row.valid) << "run " << run;
      EXPECT_EQ(error, row.message) << "run " << run;
    }
  }
}

TEST(NetworkKovaRequestValidation, OneArgumentFormChecksTheCurrentVersion) {
  std::string error = "untouched";
  EXPECT_TRUE(readRequest("-k src -v wb -v ab")->isValid(error));
  EXPECT_EQ(error, "untouched");
  EXPECT_FALSE(readRequest("-k src -v wb -v ab -s top index=3")->isValid(error));
  EXPECT_EQ(error, "Invalid Sort index");
}

struct Completion {
  const char* text;
  bool valid;
  const char* writtenAfter;
};

const Completion kCompletions[] = {
    {"-k src -v conn", true, " -k src acc=replace -v conn acc=concurrent -s top "},
    {"-k src a -v session", true, " -k src acc=replace a -v session acc=new "},
    {"-k src -v wb", true, " -k src acc=replace -v wb acc=rate -s top "},
    {"-k src -v wb -v pkt", true, " -k src acc=replace -v wb acc=rate -v pkt acc=rate -s top index=1 "},
    {"-k src -v wb -s bottom", true, " -k src acc=replace -v wb acc=rate -s bottom "},
    {"-k src a -v wb", true, " -k src acc=replace a -v wb acc=rate "},
    // The changes stay when a later check refuses the request.
    {"-k src -v conn dir=in", false, " -k src acc=replace -v conn acc=concurrent dir=in "},
    {"-k src -v wb -v ab -s none index=3", false, " -k src acc=replace -v wb acc=rate -v ab acc=rate -s top index=3 "},
    {"-k src -k connId -v wb -v conn", false,
     " -k src acc=replace -k connId acc=replace -v wb acc=rate -v conn acc=concurrent -s top index=1 "},
};

TEST(NetworkKovaRequestValidation, CompletesTheRequestInPlace) {
  for (const Completion& row : kCompletions) {
    SCOPED_TRACE(row.text);
    auto request = readRequest(row.text);
    std::string error;
    EXPECT_EQ(request->isValid(error), row.valid) << error;
    EXPECT_EQ(request->dump(), row.writtenAfter);
  }
}

struct Minimal {
  const char* text;
  int version;
  const char* message;
};

const Minimal kMinimal[] = {
    {"-k src -v wb", 1, ""},
    {"-k dst a -v conn", 1, ""},
    {"-k src -k connId -v pkt", 1, ""},
    {"-k src -v wb -v pkt", 3, ""},
    {"-k src -v ab", 3, ""},
    {"-k url -v session acc=new", 3, ""},
    {"-v wb", 4, "At least one key is required"},
    {"-k src -v wb -s top updates=201", 4, "Invalid maxUpdates"},
};

TEST(NetworkKovaRequestValidation, MinimalValidVersion) {
  for (const Minimal& row : kMinimal) {
    SCOPED_TRACE(row.text);
    std::string error;
    EXPECT_EQ(readRequest(row.text)->getMinimalValidVersion(error), row.version);
    if (row.version == 4) {
      EXPECT_EQ(error, row.message);
    }
  }
}

TEST(NetworkKovaRequestValidation, TelNumberKeyWithSessionValueThrows) {
  auto request = readRequest("-k telNumber -v session acc=new");
  std::string error;
  try {
    request->isValid(error);
    ADD_FAILURE() << "no fault";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "Not a valid argument for type");
  }
  // Without a session value the key passes.
  EXPECT_TRUE(readRequest("-k telNumber -v wb")->isValid(error)) << error;
}

}  // namespace
