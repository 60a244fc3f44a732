// The legacy option syntax of older peers: the reader (the NetworkKovaRequest
// constructor with a version, reached through LYTKovaRequest::convert) and the
// writer dump(TavVersion).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

// What the legacy reader makes of `text`, written in the current syntax, or
// "<fault> " and the message. Reads through convert and through the
// constructor, which must agree.
std::string translated(const std::string& text, int version) {
  std::string error = "untouched";
  const std::string converted = LYTKovaRequest::convert(text, TavVersion(version), error);
  strList tokens = tokensOf(text);
  std::string direct;
  try {
    direct = NetworkKovaRequest(tokens, TavVersion(version)).dump();
  } catch (const std::string& message) {
    direct = "<fault> " + message;
  }
  if (error == "untouched") return converted == direct ? converted : "<differs> " + converted + "|" + direct;
  return converted.empty() && direct == "<fault> " + error ? direct : "<differs> " + converted + "|" + direct;
}

struct Translation {
  const char* legacy;
  int version;
  const char* current;
};

const Translation kTranslations[] = {
    {"-y b", 1, " -v wb acc=rate "},
    {"-y C", 2, " -v conn acc=concurrent "},
    {"-y c", 1, " -v conn acc=new "},
    {"-ybx p", 1, " -v pkt acc=rate "},
    {"-y b -y p", 1, " -v wb acc=rate -v pkt acc=rate "},
    // The "top" groups also ask for sort top.
    {"-g topfw -g topdst -g topip", 1,
     " -k fwrule acc=replace -k dst acc=replace -k ip acc=replace -v wb acc=rate -s top "},
    {"-g topsrc -gx topqsrule -g topsvc", 2,
     " -k src acc=replace -k qsrule acc=replace -k svc acc=replace -v wb acc=rate -s top "},
    {"-g src", 1, " -k src acc=replace -v wb acc=rate "},
    {"-g dst h1 h2", 2, " -k dst acc=replace h1 h2 -v wb acc=rate "},
    {"-g qsrule q1", 1, " -k qsrule acc=replace q1 -v wb acc=rate "},
    {"-g ip 10.0.0.1", 1, " -k ip acc=replace 10.0.0.1 -v wb acc=rate "},
    // After a plain group the rest is copied as it stands, and "-v wb" is still added.
    {"-g svc http -v pkt", 1, " -k svc acc=replace http -v pkt acc=rate -v wb acc=rate "},
    {"-g src -y b", 2, "<fault> Invalid option: -y"},
    {"-a ix -g topsrc", 1, " -k connId acc=replace -k src acc=replace -v wb acc=rate -s top "},
    {"-a a -y p", 1, " -v pkt acc=rate "},
    {"-y c -a", 1, " -v conn acc=new "},
    // The token after "-a" is not an option any more: "-y" is skipped, "p" ignored.
    {"-a -y p", 1, " -v wb acc=rate "},
    // "-a" hands the next token to the filter rules.
    {"-a src 0 [ h1 ]", 1, "-f src  h1    -v wb acc=rate "},
    {"src 1 [ 10.0.0.1 ]", 1, "-f src not 10.0.0.1    -v wb acc=rate "},
    {"src 0 [ ]", 1, "-f src     -v wb acc=rate "},
    {"svc 0 [ http ] ip 1 [ h1 ] dst 0 [ a b ]", 2,
     "-f and [ -f svc  http   -f ip not h1   -f dst  a b   ] -v wb acc=rate "},
    {"interface 1 [ [ eth0 out ] ]", 1, "-f interface not  eth0,out   -v wb acc=rate "},
    {"interface 0 [ eth0 in ]", 1, "-f interface   eth0,in   -v wb acc=rate "},
    {"interface 0 [[eth0 in][eth1 out]]", 2, "-f interface   eth0,in   -v wb acc=rate "},
    // The writer's own text reads back.
    {"-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc ", 2,
     "-f src not 10.0.0.1    -k src acc=replace -v wb acc=rate -s top "},
    // Version 3 reads the current syntax, without translation or default value.
    {"-k src -v pkt", 3, " -k src acc=replace -v pkt acc=rate "},
    {"-g topsrc", 3, "<fault> Invalid option: -g"},
    // Version 0 gives the empty request whatever the text.
    {"-y x -g nonsense", 0, " "},
    // Faults.
    {"-y", 1, "<fault> Invalid value type"},
    {"-y x", 2, "<fault> Invalid value type"},
    {"-y l", 1, "<fault> Invalid value type"},
    {"-g", 2, "<fault> Invalid key type"},
    {"-g fw", 1, "<fault> Invalid key type"},
    {"interface", 2, "<fault> Invalid interface filter"},
    {"interface 0", 1, "<fault> Invalid interface filter"},
    {"interface 0 [", 2, "<fault> Invalid interface filter"},
    {"interface 0 [ [", 1, "<fault> Invalid interface filter"},
    {"interface 0 [ [ eth0", 2, "<fault> Invalid interface filter"},
    {"src", 1, "<fault> Invalid filter"},
    {"ip 1", 2, "<fault> Invalid filter"},
    {"src 0 [ a b", 1, "<fault> Invalid filter"},
    {"-g src -x", 2, "<fault> Invalid option: -x"},
    {"-g src -k", 1, "<fault> Invalid type: -v"},
    {"-y b", 4, "<fault> NetworkKovaRequest: Invalid version"},
};

TEST(NetworkKovaRequestLegacyReader, TranslatesToCurrentSyntax) {
  for (const Translation& row : kTranslations) {
    EXPECT_EQ(translated(row.legacy, row.version), row.current) << row.legacy << " @" << row.version;
  }
}

TEST(NetworkKovaRequestLegacyReader, EmptyListByVersion) {
  strList empty;
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(1)).dump(), " -v wb acc=rate ");
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(2)).dump(), " -v wb acc=rate ");
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(3)).dump(), " ");
  EXPECT_EQ(thrownMessage([&] { NetworkKovaRequest request(empty, TavVersion(4)); }), "NetworkKovaRequest: Invalid version");
}

TEST(NetworkKovaRequestLegacyReader, LeavesTheCallersListUntouched) {
  strList tokens = tokensOf("-g topsrc -y c src 1 [ 10.0.0.1 ] interface 0 [ [ eth0 in ] ] -a i");
  const strList copy = tokens;
  NetworkKovaRequest request(tokens, TavVersion(2));
  EXPECT_EQ(tokens, copy);
  EXPECT_EQ(request.dump(), "-f and [ -f src not 10.0.0.1   -f interface   eth0,in  ] "
                            "-k src acc=replace -k connId acc=replace -v conn acc=new -s top ");
}

struct LegacyWritten {
  const char* current;
  const char* legacy;
};

const LegacyWritten kLegacyWritten[] = {
    // "-y": decided by the first value column.
    {"-k src -v wb acc=lineUtil", "-filter [ and []] -a a -y b -g topsrc "},
    {"-k src -v pkt acc=lineUtil", "-filter [ and []] -a a -y l -g topsrc "},
    {"-k src -v pkt -v wb", "-filter [ and []] -a a -y p -g topsrc "},
    {"-k src -v conn acc=new", "-filter [ and []] -a a -y c -g topsrc "},
    {"-k src -v conn acc=concurrent", "-filter [ and []] -a a -y C -g topsrc "},
    {"-k src -v conn", "-filter [ and []] -a a -g topsrc "},
    {"-k src -v ab -v wb", "-filter [ and []] -a a -g topsrc "},
    // "-g": decided by the first key column; top form without entities.
    {"-k svc http ftp -v wb", "-filter [ and []] -a a -y b -g svc http ftp "},
    {"-k src h1<>10.0.0.1 -v wb", "-filter [ and []] -a a -y b -g src h1<>10.0.0.1 "},
    {"-k dst -v wb", "-filter [ and []] -a a -y b -g topdst "},
    {"-k ip i1 -v wb", "-filter [ and []] -a a -y b -g ip i1 "},
    {"-k qsrule -v wb", "-filter [ and []] -a a -y b -g topqsrule "},
    {"-k fwrule r1 r2 -v wb", "-filter [ and []] -a a -y b -g topfw r1 r2 "},
    {"-k url -v wb", "-filter [ and []] -a a -y b "},
    {"-k tunnel t1 -v wb", "-filter [ and []] -a a -y b t1 "},
    // "-a i" only for exactly two keys, one of them connId.
    {"-k src -k connId -v wb", "-filter [ and []] -a i -y b -g topsrc "},
    {"-k connId -k src -v wb", "-filter [ and []] -a i -y b "},
    {"-k src -k dst -k connId -v wb", "-filter [ and []] -a a -y b -g topsrc "},
    // Filters: atoms only, "both" written as "out", compound children dropped.
    {"-f or [ -f src a -f dst b c ] -k src -v wb", "-filter [ and [[src 0 [a ]][dst 0 [b c ]]]] -a a -y b -g topsrc "},
    {"-f interface not eth0,in eth1,out eth2 -k src -v wb",
     "-filter [ and [[interface 1 [[eth0 in][eth1 out][eth2 out]]]]] -a a -y b -g topsrc "},
    {"-f and [ -f svc http -f or [ -f dst b -f dst c ] -f src s<>x ] -k src -v wb",
     "-filter [ and [[svc 0 [http ]][src 0 [s<>x ]]]] -a a -y b -g topsrc "},
    {"-f or [ -f and [ -f src a -f dst b ] ] -k src -v wb", "-filter [ and []] -a a -y b -g topsrc "},
    // No key or value column: no -g or -y.
    {"", "-filter [ and []] -a a "},
    {"-k src", "-filter [ and []] -a a -g topsrc "},
};

TEST(NetworkKovaRequestLegacyWriter, WritesLegacyOptions) {
  for (const LegacyWritten& row : kLegacyWritten) {
    SCOPED_TRACE(row.current);
    auto request = readRequest(row.current);
    EXPECT_EQ(request->dump(TavVersion(1)), row.legacy);
    EXPECT_EQ(request->dump(TavVersion(2)), row.legacy);
  }
}

TEST(NetworkKovaRequestLegacyWriter, VersionDispatch) {
  auto request = readRequest("-f src a -k src -v wb -v pkt -s bottom index=2 updates=9");
  EXPECT_EQ(request->dump(TavVersion(3)), request->dump());
  EXPECT_EQ(request->dump(TavVersion(-1)), "4.1 and under is not supported");
  EXPECT_EQ(request->dump(TavVersion(4)), "");
  // Sort, index, updates and further value columns have no legacy form.
  EXPECT_EQ(request->dump(TavVersion(1)), "-filter [ and [[src 0 [a ]]]] -a a -y b -g topsrc ");
}

struct LegacyRoundTrip {
  const char* current;
  const char* afterRoundTrip;  // nullptr: the same text as before
};

const LegacyRoundTrip kLegacyRoundTrips[] = {
    {"-f src not 10.0.0.1 -f dst a b -k src -v conn acc=new -s top", nullptr},
    {"-f svc http -f ip 10.0.0.0/8 -k svc -v pkt -s top", nullptr},
    {"-f interface not eth0,in -k dst -v conn acc=concurrent -s top", nullptr},
    {"-k src h1<>10.0.0.1 -v wb", nullptr},
    // What the legacy syntax cannot carry is lost or changed.
    {"-f interface eth0 -k src -v wb -s top", "-f interface   eth0,out   -k src acc=replace -v wb acc=rate -s top "},
    {"-k fwrule r1 -v wb", " -k fwrule acc=replace -v wb acc=rate -s top "},
    {"-k src -k connId -v wb -s top", " -k connId acc=replace -k src acc=replace -v wb acc=rate -s top "},
    {"-f or [ -f src a -f tunnel t ] -k src -v wb acc=sum dir=in -v pkt -s top updates=9",
     "-f src  a    -k src acc=replace -v wb acc=rate -s top "},
};

TEST(NetworkKovaRequestLegacyWriter, LegacyTextReadsBack) {
  for (const LegacyRoundTrip& row : kLegacyRoundTrips) {
    SCOPED_TRACE(row.current);
    auto request = readRequest(row.current);
    const std::string legacy = request->dump(TavVersion(1));
    EXPECT_EQ(translated(legacy, 1), row.afterRoundTrip != nullptr ? row.afterRoundTrip : request->dump()) << legacy;
  }
}

}  // namespace
