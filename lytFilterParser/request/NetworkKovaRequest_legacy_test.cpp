// The legacy option syntax of older peers: the reader (the NetworkKovaRequest
// constructor with a version, reached through LYTKovaRequest::convert) and the
// writer dump(TavVersion).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

// What the legacy reader makes of `text`, written in the current syntax, or
// "<fault> " and the message.
std::string translated(const std::string& text, int version) {
  std::string error;
  const std::string converted = LYTKovaRequest::convert(text, TavVersion(version), error);
  return error.empty() ? converted : "<fault> " + error;
}

TEST(NetworkKovaRequestLegacyReader, TranslatesToCurrentSyntax) {
  const struct {
    const char* legacy;
    int version;
    const char* current;
  } cases[] = {
      {"-y C -ybx p", 2, " -v conn acc=concurrent -v pkt acc=rate "},
      {"-y c", 1, " -v conn acc=new "},
      // The "top" groups also ask for sort top.
      {"-g topfw -g topdst -g topip", 1,
       " -k fwrule acc=replace -k dst acc=replace -k ip acc=replace -v wb acc=rate -s top "},
      {"-g topsrc -gx topqsrule -g topsvc", 2,
       " -k src acc=replace -k qsrule acc=replace -k svc acc=replace -v wb acc=rate -s top "},
      // After a plain group the rest is copied as it stands, and "-v wb" is still added.
      {"-g svc http -v pkt", 1, " -k svc acc=replace http -v pkt acc=rate -v wb acc=rate "},
      {"-g src -y b", 2, "<fault> Invalid option: -y"},
      {"-a ix -g topsrc", 1, " -k connId acc=replace -k src acc=replace -v wb acc=rate -s top "},
      // The token after "-a" is not an option any more: "-y" is skipped, "p"
      // ignored; a filter word there is read as one.
      {"-a -y p", 1, " -v wb acc=rate "},
      {"-a src 0 [ h1 ]", 1, "-f src  h1    -v wb acc=rate "},
      {"svc 0 [ http ] ip 1 [ h1 ] dst 0 [ a b ]", 2,
       "-f and [ -f svc  http   -f ip not h1   -f dst  a b   ] -v wb acc=rate "},
      {"interface 1 [ [ eth0 out ] ]", 1, "-f interface not  eth0,out   -v wb acc=rate "},
      {"interface 0 [[eth0 in][eth1 out]]", 2, "-f interface   eth0,in   -v wb acc=rate "},
      // Version 3 reads the current syntax; version 0 gives the empty request.
      {"-k src -v pkt", 3, " -k src acc=replace -v pkt acc=rate "},
      {"-g topsrc", 3, "<fault> Invalid option: -g"},
      {"-y x -g nonsense", 0, " "},
      // Faults.
      {"-y l", 1, "<fault> Invalid value type"},
      {"-g fw", 1, "<fault> Invalid key type"},
      {"interface 0 [ [ eth0", 2, "<fault> Invalid interface filter"},
      {"ip 1", 2, "<fault> Invalid filter"},
      {"-g src -k", 1, "<fault> Invalid type: -v"},
      {"-y b", 4, "<fault> NetworkKovaRequest: Invalid version"},
      {"-y b", -1, "<fault> NetworkKovaRequest: Invalid version"},
  };
  for (const auto& c : cases) EXPECT_EQ(translated(c.legacy, c.version), c.current) << c.legacy << " @" << c.version;
}

TEST(NetworkKovaRequestLegacyReader, ListReaderByVersionLeavesTheListUntouched) {
  strList empty;
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(1)).dump(), " -v wb acc=rate ");
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(3)).dump(), " ");
  strList tokens = tokensOf("-g topsrc -y c src 1 [ 10.0.0.1 ] interface 0 [ [ eth0 in ] ] -a i");
  const strList copy = tokens;
  NetworkKovaRequest request(tokens, TavVersion(2));
  EXPECT_EQ(tokens, copy);
  EXPECT_EQ(request.dump(),
            "-f and [ -f src not 10.0.0.1   -f interface   eth0,in  ] "
            "-k src acc=replace -k connId acc=replace -v conn acc=new -s top ");
}

TEST(NetworkKovaRequestLegacyWriter, WritesLegacyOptions) {
  const std::pair<const char*, const char*> cases[] = {
      // "-y": decided by the first value column.
      {"-k src -v wb acc=lineUtil", "-filter [ and []] -a a -y b -g topsrc "},
      {"-k src -v pkt acc=lineUtil", "-filter [ and []] -a a -y l -g topsrc "},
      {"-k src -v pkt -v wb", "-filter [ and []] -a a -y p -g topsrc "},
      {"-k src -v conn acc=new", "-filter [ and []] -a a -y c -g topsrc "},
      {"-k src -v conn acc=concurrent", "-filter [ and []] -a a -y C -g topsrc "},
      {"-k src -v conn", "-filter [ and []] -a a -g topsrc "},
      // "-g": decided by the first key column; top form without entities.
      {"-k svc http ftp -v wb", "-filter [ and []] -a a -y b -g svc http ftp "},
      {"-k qsrule -v wb", "-filter [ and []] -a a -y b -g topqsrule "},
      {"-k fwrule r1 r2 -v wb", "-filter [ and []] -a a -y b -g topfw r1 r2 "},
      {"-k tunnel t1 -v wb", "-filter [ and []] -a a -y b t1 "},
      // "-a i" only for exactly two keys, one of them connId.
      {"-k connId -k src -v wb", "-filter [ and []] -a i -y b "},
      {"-k src -k connId -k dst -v wb", "-filter [ and []] -a a -y b -g topsrc "},
      // Filters: atoms only, "both" written as "out", compound children dropped.
      {"-f interface not eth0,in eth1,out eth2 -k src -v wb",
       "-filter [ and [[interface 1 [[eth0 in][eth1 out][eth2 out]]]]] -a a -y b -g topsrc "},
      {"-f and [ -f svc http -f or [ -f dst b -f dst c ] -f src s<>x ] -k src -v wb",
       "-filter [ and [[svc 0 [http ]][src 0 [s<>x ]]]] -a a -y b -g topsrc "},
      {"", "-filter [ and []] -a a "},
  };
  for (const auto& c : cases) {
    auto request = readRequest(c.first);
    EXPECT_EQ(request->dump(TavVersion(1)), c.second) << c.first;
    EXPECT_EQ(request->dump(TavVersion(2)), c.second) << c.first;
  }
  auto request = readRequest("-f src a -k src -v wb -v pkt -s bottom index=2 updates=9");
  EXPECT_EQ(request->dump(TavVersion(3)), request->dump());
  EXPECT_EQ(request->dump(TavVersion(0)), "4.1 and under is not supported");
  EXPECT_EQ(request->dump(TavVersion(4)), "");
}

TEST(NetworkKovaRequestLegacyWriter, LegacyTextReadsBack) {
  const std::pair<const char*, const char*> cases[] = {
      // current syntax | read back from its legacy text; "" for the same text
      {"-f src not 10.0.0.1 -f dst a b -k src -v conn acc=new -s top", ""},
      {"-f interface not eth0,in -k dst -v conn acc=concurrent -s top", ""},
      // What the legacy syntax cannot carry is lost or changed.
      {"-f interface eth0 -k src -v wb -s top", "-f interface   eth0,out   -k src acc=replace -v wb acc=rate -s top "},
      {"-k src -k connId -v wb -s top", " -k connId acc=replace -k src acc=replace -v wb acc=rate -s top "},
      {"-f or [ -f src a -f tunnel t ] -k src -v wb acc=sum dir=in -v pkt -s top updates=9",
       "-f src  a    -k src acc=replace -v wb acc=rate -s top "},
  };
  for (const auto& c : cases) {
    auto request = readRequest(c.first);
    EXPECT_EQ(translated(request->dump(TavVersion(1)), 1), *c.second ? c.second : request->dump()) << c.first;
  }
}

}  // namespace
