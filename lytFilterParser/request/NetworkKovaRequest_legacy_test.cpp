// The legacy option syntax of older peers: the reader (the NetworkKovaRequest
// constructor with a version, reached through LYTKovaRequest::convert) and the
// writer dump(TavVersion).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/lytFilterParser.h"

namespace {

std::unique_ptr<NetworkKovaRequest> readRequest(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return std::make_unique<NetworkKovaRequest>(tokens);
}

std::string legacyFault(const std::string& text, int version) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  try {
    NetworkKovaRequest request(tokens, TavVersion(version));
  } catch (const std::string& message) {
    return message;
  }
  return "<no fault>";
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
    {"-y p", 2, " -v pkt acc=rate "},
    {"-ybx bytes", 1, " -v wb acc=rate "},
    {"-y b -y p", 1, " -v wb acc=rate -v pkt acc=rate "},
    {"-g topfw", 1, " -k fwrule acc=replace -v wb acc=rate -s top "},
    {"-g topsrc", 2, " -k src acc=replace -v wb acc=rate -s top "},
    {"-g topdst", 1, " -k dst acc=replace -v wb acc=rate -s top "},
    {"-g topip", 1, " -k ip acc=replace -v wb acc=rate -s top "},
    {"-g topqsrule", 1, " -k qsrule acc=replace -v wb acc=rate -s top "},
    {"-g topsvc", 1, " -k svc acc=replace -v wb acc=rate -s top "},
    {"-g topsrc -g topdst", 1, " -k src acc=replace -k dst acc=replace -v wb acc=rate -s top "},
    {"-gx topsvc", 1, " -k svc acc=replace -v wb acc=rate -s top "},
    {"-g src", 1, " -k src acc=replace -v wb acc=rate "},
    {"-g dst h1 h2", 2, " -k dst acc=replace h1 h2 -v wb acc=rate "},
    {"-g qsrule q1", 1, " -k qsrule acc=replace q1 -v wb acc=rate "},
    {"-g ip 10.0.0.1", 1, " -k ip acc=replace 10.0.0.1 -v wb acc=rate "},
    // After a plain group the rest is copied as it stands, and "-v wb" is still added.
    {"-g svc http -v pkt", 1, " -k svc acc=replace http -v pkt acc=rate -v wb acc=rate "},
    {"-g svc http -y p", 1, "<fault> Invalid option: -y"},
    {"-g src -y b", 2, "<fault> Invalid option: -y"},
    {"-a i", 1, " -k connId acc=replace -v wb acc=rate "},
    {"-a ix -g topsrc", 1, " -k connId acc=replace -k src acc=replace -v wb acc=rate -s top "},
    {"-a a -y p", 1, " -v pkt acc=rate "},
    {"-y c -a", 1, " -v conn acc=new "},
    // The token after "-a" is not an option any more: "-y" is skipped, "p" ignored.
    {"-a -y p", 1, " -v wb acc=rate "},
    // "-a" hands the next token to the filter rules.
    {"-a src 0 [ h1 ]", 1, "-f src  h1    -v wb acc=rate "},
    {"src 1 [ 10.0.0.1 ]", 1, "-f src not 10.0.0.1    -v wb acc=rate "},
    {"dst 0 [ a b ]", 2, "-f dst  a b    -v wb acc=rate "},
    {"src 0 [ ]", 1, "-f src     -v wb acc=rate "},
    {"svc 0 [ http ] ip 1 [ h1 ]", 1, "-f and [ -f svc  http   -f ip not h1   ] -v wb acc=rate "},
    {"interface 1 [ [ eth0 out ] ]", 1, "-f interface not  eth0,out   -v wb acc=rate "},
    {"interface 0 [ eth0 in ]", 1, "-f interface   eth0,in   -v wb acc=rate "},
    {"interface 0 [[eth0 in][eth1 out]]", 2, "-f interface   eth0,in   -v wb acc=rate "},
    {"-filter [ and [ ] ] -y p", 1, " -v pkt acc=rate "},
    {"-g topsrc -y c src 1 [ 10.0.0.1 ]", 1, "-f src not 10.0.0.1    -k src acc=replace -v conn acc=new -s top "},
    // The writer's own text reads back.
    {"-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc ", 2,
     "-f src not 10.0.0.1    -k src acc=replace -v wb acc=rate -s top "},
    // Version 3 reads the current syntax, without translation or default value.
    {"-k src -v pkt", 3, " -k src acc=replace -v pkt acc=rate "},
    {"-k src", 3, " -k src acc=replace "},
    {"-g topsrc", 3, "<fault> Invalid option: -g"},
    // Version 0 gives the empty request whatever the text.
    {"-y x -g nonsense", 0, " "},
};

TEST(NetworkKovaRequestLegacyReader, TranslatesToCurrentSyntax) {
  for (const Translation& row : kTranslations) {
    SCOPED_TRACE(std::string(row.legacy) + " @" + std::to_string(row.version));
    std::string error = "untouched";
    const std::string written = LYTKovaRequest::convert(row.legacy, TavVersion(row.version), error);
    const std::string expected = row.current;
    if (expected.rfind("<fault> ", 0) == 0) {
      EXPECT_EQ(written, "");
      EXPECT_EQ(error, expected.substr(8));
    } else {
      EXPECT_EQ(written, expected);
      EXPECT_EQ(error, "untouched");
    }
  }
}

TEST(NetworkKovaRequestLegacyReader, ConvertWithoutVersionReadsForVersionTwo) {
  std::string error;
  EXPECT_EQ(LYTKovaRequest::convert("-g topdst -y C", error), " -k dst acc=replace -v conn acc=concurrent -s top ");
  EXPECT_EQ(error, "");
}

struct LegacyFault {
  const char* legacy;
  const char* message;
};

const LegacyFault kLegacyFaults[] = {
    {"-y", "Invalid value type"},
    {"-y x", "Invalid value type"},
    {"-y B", "Invalid value type"},
    {"-y l", "Invalid value type"},
    {"-g", "Invalid key type"},
    {"-g fw", "Invalid key type"},
    {"-g TOPSRC", "Invalid key type"},
    {"-g topsrc -g", "Invalid key type"},
    {"interface", "Invalid interface filter"},
    {"interface 0", "Invalid interface filter"},
    {"interface 0 [", "Invalid interface filter"},
    {"interface 0 [ [", "Invalid interface filter"},
    {"interface 0 [ [ eth0", "Invalid interface filter"},
    {"src", "Invalid filter"},
    {"ip 1", "Invalid filter"},
    {"src 0 [ a b", "Invalid filter"},
    {"-g src -x", "Invalid option: -x"},
    {"-g src -k", "Invalid type: -v"},
};

TEST(NetworkKovaRequestLegacyReader, RefusesBadLegacyText) {
  for (const LegacyFault& row : kLegacyFaults) {
    SCOPED_TRACE(row.legacy);
    EXPECT_EQ(legacyFault(row.legacy, 1), row.message);
    EXPECT_EQ(legacyFault(row.legacy, 2), row.message);
    std::string error;
    EXPECT_EQ(LYTKovaRequest::convert(row.legacy, TavVersion(1), error), "");
    EXPECT_EQ(error, row.message);
  }
}

TEST(NetworkKovaRequestLegacyReader, VersionDispatch) {
  strList empty;
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(1)).dump(), " -v wb acc=rate ");
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(2)).dump(), " -v wb acc=rate ");
  EXPECT_EQ(NetworkKovaRequest(empty, TavVersion(3)).dump(), " ");

  strList garbage{"-y", "x", "[", "-g"};
  NetworkKovaRequest unsupported(garbage, TavVersion(0));
  EXPECT_TRUE(unsupported.getKeys().empty());
  EXPECT_TRUE(unsupported.getValues().empty());
  EXPECT_TRUE(unsupported.getFilter().getChildren().empty());

  EXPECT_EQ(legacyFault("-y b", 4), "NetworkKovaRequest: Invalid version");
  EXPECT_EQ(legacyFault("-y b", -1), "NetworkKovaRequest: Invalid version");
  EXPECT_EQ(legacyFault("", 4), "NetworkKovaRequest: Invalid version");
  std::string error;
  EXPECT_EQ(LYTKovaRequest::convert("-y b", TavVersion(4), error), "");
  EXPECT_EQ(error, "NetworkKovaRequest: Invalid version");
}

TEST(NetworkKovaRequestLegacyReader, LeavesTheCallersListUntouched) {
  for (int version : {1, 2}) {
    strList tokens;
    LYTKovaRequest::fillFilterList(tokens, "-g topsrc -y c src 1 [ 10.0.0.1 ] interface 0 [ [ eth0 in ] ] -a i");
    const strList copy = tokens;
    NetworkKovaRequest request(tokens, TavVersion(version));
    EXPECT_EQ(tokens, copy);
    ASSERT_EQ(request.getKeys().size(), 2u);
    EXPECT_EQ(request.getKeys()[0].getValueType(), TAV_SRC);
    EXPECT_EQ(request.getKeys()[1].getValueType(), TAV_CONNID);
    ASSERT_EQ(request.getValues().size(), 1u);
    EXPECT_EQ(request.getValues()[0].getValueType(), TAV_CONN);
    EXPECT_EQ(request.getValues()[0].getAccType(), TAV_ACC_NEW);
    EXPECT_EQ(request.getSortType(), TAV_SORT_TOP);
    EXPECT_EQ(request.getFilter().getChildren().size(), 2u);
  }
}

struct LegacyWritten {
  const char* current;
  const char* legacy;
};

const LegacyWritten kLegacyWritten[] = {
    // "-y": decided by the first value column.
    {"-k src -v wb acc=sum", "-filter [ and []] -a a -y b -g topsrc "},
    {"-k src -v wb acc=lineUtil", "-filter [ and []] -a a -y b -g topsrc "},
    {"-k src -v ab acc=lineUtil", "-filter [ and []] -a a -y l -g topsrc "},
    {"-k src -v pkt acc=lineUtil", "-filter [ and []] -a a -y l -g topsrc "},
    {"-k src -v pkt -v wb", "-filter [ and []] -a a -y p -g topsrc "},
    {"-k src -v conn acc=new", "-filter [ and []] -a a -y c -g topsrc "},
    {"-k src -v conn acc=concurrent", "-filter [ and []] -a a -y C -g topsrc "},
    {"-k src -v conn", "-filter [ and []] -a a -g topsrc "},
    {"-k src -v ab -v wb", "-filter [ and []] -a a -g topsrc "},
    {"-k src -v session acc=new", "-filter [ and []] -a a -g topsrc "},
    // "-g": decided by the first key column; top form without entities.
    {"-k svc -v wb", "-filter [ and []] -a a -y b -g topsvc "},
    {"-k svc http ftp -v wb", "-filter [ and []] -a a -y b -g svc http ftp "},
    {"-k src h1<>10.0.0.1 -v wb", "-filter [ and []] -a a -y b -g src h1<>10.0.0.1 "},
    {"-k dst -v wb", "-filter [ and []] -a a -y b -g topdst "},
    {"-k dst d1 -v wb", "-filter [ and []] -a a -y b -g dst d1 "},
    {"-k ip -v wb", "-filter [ and []] -a a -y b -g topip "},
    {"-k ip i1 -v wb", "-filter [ and []] -a a -y b -g ip i1 "},
    {"-k qsrule -v wb", "-filter [ and []] -a a -y b -g topqsrule "},
    {"-k qsrule q1 -v wb", "-filter [ and []] -a a -y b -g qsrule q1 "},
    {"-k fwrule -v wb", "-filter [ and []] -a a -y b -g topfw "},
    {"-k fwrule r1 r2 -v wb", "-filter [ and []] -a a -y b -g topfw r1 r2 "},
    {"-k url -v wb", "-filter [ and []] -a a -y b "},
    {"-k tunnel t1 -v wb", "-filter [ and []] -a a -y b t1 "},
    // "-a i" only for exactly two keys, one of them connId.
    {"-k src -k connId -v wb", "-filter [ and []] -a i -y b -g topsrc "},
    {"-k connId -k src -v wb", "-filter [ and []] -a i -y b "},
    {"-k connId -v wb", "-filter [ and []] -a a -y b "},
    {"-k src -k dst -k connId -v wb", "-filter [ and []] -a a -y b -g topsrc "},
    // Filters: atoms only, "both" written as "out", compound children dropped.
    {"-f src not 10.0.0.1 -k src -v wb", "-filter [ and [[src 1 [10.0.0.1 ]]]] -a a -y b -g topsrc "},
    {"-f or [ -f src a -f dst b c ] -k src -v wb", "-filter [ and [[src 0 [a ]][dst 0 [b c ]]]] -a a -y b -g topsrc "},
    {"-f interface not eth0,in eth1,out eth2 -k src -v wb",
     "-filter [ and [[interface 1 [[eth0 in][eth1 out][eth2 out]]]]] -a a -y b -g topsrc "},
    {"-f and [ -f svc http -f or [ -f dst b -f dst c ] -f src s<>x ] -k src -v wb",
     "-filter [ and [[svc 0 [http ]][src 0 [s<>x ]]]] -a a -y b -g topsrc "},
    {"-f or [ -f and [ -f src a -f dst b ] ] -k src -v wb", "-filter [ and []] -a a -y b -g topsrc "},
    // No key or value column: no -g or -y.
    {"", "-filter [ and []] -a a "},
    {"-f src a", "-filter [ and [[src 0 [a ]]]] -a a "},
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
  EXPECT_EQ(request->dump(TavVersion(0)), "4.1 and under is not supported");
  EXPECT_EQ(request->dump(TavVersion(-1)), "4.1 and under is not supported");
  EXPECT_EQ(request->dump(TavVersion(4)), "");
  EXPECT_EQ(request->dump(TavVersion(7)), "");
  // Sort, index, updates and further value columns have no legacy form.
  EXPECT_EQ(request->dump(TavVersion(1)), "-filter [ and [[src 0 [a ]]]] -a a -y b -g topsrc ");
}

struct LegacyRoundTrip {
  const char* current;
  const char* afterRoundTrip;  // nullptr: the same text as before
};

const LegacyRoundTrip kLegacyRoundTrips[] = {
    {"-f src not 10.0.0.1 -k src -v wb -s top", nullptr},
    {"-f src not 10.0.0.1 -f dst a b -k src -v conn acc=new -s top", nullptr},
    {"-f svc http -f ip 10.0.0.0/8 -k svc -v pkt -s top", nullptr},
    {"-f interface not eth0,in -k dst -v conn acc=concurrent -s top", nullptr},
    {"-k dst h1 h2 -v pkt", nullptr},
    {"-k qsrule q1 -v wb", nullptr},
    {"-k src h1<>10.0.0.1 -v wb", nullptr},
    // What the legacy syntax cannot carry is lost or changed.
    {"-f interface eth0 -k src -v wb -s top", "-f interface   eth0,out   -k src acc=replace -v wb acc=rate -s top "},
    {"-k src -v wb", " -k src acc=replace -v wb acc=rate -s top "},
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
    std::string error;
    const std::string converted = LYTKovaRequest::convert(legacy, TavVersion(1), error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(converted, row.afterRoundTrip != nullptr ? row.afterRoundTrip : request->dump()) << legacy;
  }
}

}  // namespace
