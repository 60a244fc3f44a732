// Current request syntax of NetworkKovaRequest: reading, exact written text,
// faults, dump/parse round trips and the module-name walk.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

// What the request read from `text` writes, or "<fault> " and the message.
std::string requestText(const std::string& text) {
  try {
    return readRequest(text)->dump();
  } catch (const std::string& message) {
    return "<fault> " + message;
  }
}

// Blanks are part of the text: atoms end in two blanks, a compound filter
// with one child adds two more, an empty filter writes one.
const std::pair<const char*, const char*> kWritten[] = {
    {"  -k   src   ", " -k src acc=replace "},
    {"-f src 10.0.0.1", "-f src  10.0.0.1    "},
    {"-f src not 10.0.0.1 10.0.0.2 -k svc -v wb acc=rate -s top",
     "-f src not 10.0.0.1 10.0.0.2    -k svc acc=replace -v wb acc=rate -s top "},
    // Sort: the index only with two or more value columns, updates only when not 50.
    {"-v wb -s bottom index=4", " -v wb acc=rate -s bottom "},
    {"-v wb -v ab -s bottom index=4", " -v wb acc=rate -v ab acc=rate -s bottom index=4 "},
    {"-v wb -s top updates=-5", " -v wb acc=rate -s top "},
    {"-v wb -s top updates=7", " -v wb acc=rate -s top updates=7 "},
    {"-v wb -v ab -s none index=3 updates=7", " -v wb acc=rate -v ab acc=rate "},
    {"-v wb -v ab -s top index=+3", " -v wb acc=rate -v ab acc=rate -s top index=3 "},
    // The number is read from position 6 of the token, wherever "index=" stands.
    {"-v wb -v ab -s top xindex=2", " -v wb acc=rate -v ab acc=rate -s top index=0 "},
    // A later "-s" forgets the numbers of an earlier one.
    {"-s top index=2 updates=9 -s bottom", " -s bottom "},
    // Sort requested inside a value column: its 1-based position; only the exact words count.
    {"-v wb -v ab sort=bottom", " -v wb acc=rate -v ab acc=rate -s bottom index=2 "},
    {"-v wb sort=top -v ab sort=none", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
    {"-v wb -v ab xsort=top", " -v wb acc=rate -v ab acc=rate "},
    {"-v wb -v ab sort=bottom -s top", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
    {"-k src sort=bottom -v wb", " -k src acc=replace -v wb acc=rate "},
    // Consecutive "-f" options are one conjunction.
    {"-f src a -f dst b -k src", "-f and [ -f src  a   -f dst  b   ] -k src acc=replace "},
    // A later "-f" appends to the same root ...
    {"-f src a -k svc -f dst b", "-f and [ -f src  a   -f dst  b   ] -k svc acc=replace "},
    // ... and an operator word after it sets the root's operator.
    {"-f src a -k svc -f or -f dst b", "-f or [ -f src  a   -f dst  b   ] -k svc acc=replace "},
    // Faults.
    {"-filter [ and ]", "<fault> Invalid option: -filter"},
    {"+k src", "<fault> Invalid option: +k"},
    {"-", "<fault> Invalid option: -"},
    {"-K src", "<fault> Invalid option: -K"},
    {"-k src -f", "<fault> Expected type at this point but there is no data"},
    {"-s", "<fault> Sort type expected"},
    {"-s TOP", "<fault> Invalid sort type: TOP"},
    {"-s top index=2 5", "<fault> Invalid option: 5"},
    {"-v wb foo=1", "<fault> Expected filter type"},
    {"-f xor a", "<fault> Invalid type: xor"},
    {"-f and [ -f src a -k src", "<fault> `]` expected instead of: -k"},
};

TEST(NetworkKovaRequestSyntax, WritesExactTextOrRefuses) {
  for (const auto& row : kWritten) EXPECT_EQ(requestText(row.first), row.second) << row.first;
}

TEST(NetworkKovaRequestSyntax, SortDefaultsAndFields) {
  EXPECT_EQ(readRequest("-v wb")->getSortType(), TAV_SORT_NONE);
  auto read = readRequest("-k src -v wb -v ab -v pkt sort=bottom -s top index=3 updates=120");
  EXPECT_EQ(read->getSortType(), TAV_SORT_TOP);
  EXPECT_EQ(read->getSortIndex(), 3);
  EXPECT_EQ(read->getMaxUpdates(), 120);
}

// Requests covering every option, column option and value type.
const char* const kRoundTrip[] = {
    "-k svc -v ab acc=sum -s top",
    "-k dst -v pkt acc=rate -s bottom",
    "-k ip -v conn acc=concurrent",
    "-k fwrule -v conn acc=new -s top updates=10",
    "-k qsrule -v session acc=new",
    "-k connId -v wb acc=lineUtil",
    "-k url url_mod=host_path -v session acc=new",
    "-k interface -v wb acc=replace",
    "-k orientation -v pkt acc=min",
    "-k pktRange 0-64 65-128 -v pkt acc=max",
    "-k tunnel t1<>10.1.1.1 t2 -v wb",
    "-k tunnelType -v ab",
    "-k citrix -v wb cprint=yes",
    "-k wdAttack -v session acc=new",
    "-k src dir=in enc=yes comp=no cprint=no url_mod=scheme_host -v wb dir=out enc=no comp=yes cprint=yes url_mod=path",
    "-k src url_mod=scheme -v wb url_mod=host dir=both enc=both",
    "-k src h1 h2 h3 -k dst d1 d2 d3 -v wb -v pkt -v conn acc=concurrent -s bottom index=3",
    "-k src -k dst -k svc -k connId -v ab -v wb -v pkt -v conn -v session -v wb acc=sum -s top index=6 updates=200",
    "-k src -v wb -v ab sort=bottom",
    "-k src -v wb -s none index=5 updates=9",
    "-f src 10.0.0.1 -k svc -v wb acc=rate -s top",
    "-f src not h1<>10.0.0.1 h2 -f dst NOT d1 -k src -v wb",
    "-f svc http https -f ip 10.0.0.0/8 -k src -v pkt",
    "-f interface not eth0,in eth1,out eth2 -k svc -v wb",
    "-f or [ -f src a -f dst b ] -k src -v wb",
    "-f and [ -f src a -f or [ -f dst b -f dst c ] -f interface eth0,out ] -k src -v wb",
    "-f or [ -f and [ -f src a -f svc http ] -f and [ -f dst b -f svc ftp ] ] -k dst -v conn acc=new",
    "-f fwrule not r1 r2 -f qsrule q1 -f connId 17 -f url www.example.com -k svc -v wb",
    "-f tunnel t1<>gw1 -f tunnelType ipsec -f orientation x -f wdAttack w1 -k src -v session acc=new",
    "-k src [ a b ] -v wb",
    "-f src a -k svc -f dst b -v wb -s top",
    "-f src a -k svc -f or -f dst b -v wb",
};

TEST(NetworkKovaRequestSyntax, WrittenTextReadsBackToTheSameText) {
  for (const char* text : kRoundTrip) {
    SCOPED_TRACE(text);
    const std::string first = readRequest(text)->dump();
    const std::string second = readRequest(first)->dump();
    EXPECT_EQ(first, second);
    std::string error;
    std::unique_ptr<LYTKovaRequest> viaEntry(LYTKovaRequest::getLYTKovaRequest(first, error));
    ASSERT_NE(viaEntry, nullptr) << error;
    EXPECT_EQ(viaEntry->dump(), first);
  }
}

// Key column written before the filter: the walk still takes the filter first.
const char* const kNamedRequest = "-k src h3 -f src h1 h2 -f svc http -f interface eth0 -v wb v1";

TEST(NetworkKovaRequestModuleNames, CollectsFilterThenKeyColumns) {
  EXPECT_EQ(readRequest(kNamedRequest)->getModuleNames(), (strList{"h1", "h2", "h3"}));
  EXPECT_EQ(readRequest("-f dst d1 -f ip i1 -f tunnel t1 -f fwrule r1 -f url u1 -k svc s1 -k connId 5 -v wb")
                ->getModuleNames(),
            (strList{"d1", "i1", "t1", "s1", "5"}));
  auto request = readRequest("-f svc http -f interface eth0 -k src -v wb x");
  EXPECT_TRUE(request->getModuleNames().empty());
  strList none, alsoNone;
  EXPECT_TRUE(request->setModuleNames(none, alsoNone));
}

const std::string kFilterTail = "   -f svc  http   -f interface   eth0  ] -k src acc=replace ";

// Nothing is rolled back after a fault.
TEST(NetworkKovaRequestModuleNames, SubstitutesResolvedNamesOrThrows) {
  const std::string untouched = "-f and [ -f src  h1 h2" + kFilterTail + "h3 -v wb acc=rate v1 ";
  const struct {
    strList oldNames, newNames;
    std::string message, written;  // message "": substituted
  } cases[] = {
      {{"h1", "h2", "h3", "extra"}, {"a", "b", "c", "d"}, "",
       "-f and [ -f src  h1<>a h2<>b" + kFilterTail + "h3<>c -v wb acc=rate v1 "},
      {{"h1", "X", "h3"}, {"a", "b", "c"}, "X", "-f and [ -f src  h1<>a h2" + kFilterTail + "h3 -v wb acc=rate v1 "},
      {{"h1", "h2", "Y"}, {"a", "b", "c"}, "Y", "-f and [ -f src  h1<>a h2<>b" + kFilterTail + "h3 -v wb acc=rate v1 "},
      {{"h1", "h2"}, {"a", "b", "c"}, "setModuleNames: the request has 3 module names but 2 old names were given",
       untouched},
      {{"h1", "h2", "h3"}, {"a", "b"}, "setModuleNames: the request has 3 module names but 2 new names were given",
       untouched},
  };
  for (auto c : cases) {
    SCOPED_TRACE(c.message);
    auto request = readRequest(kNamedRequest);
    try {
      EXPECT_TRUE(request->setModuleNames(c.oldNames, c.newNames));
      EXPECT_EQ("", c.message);
    } catch (const std::string& message) {
      EXPECT_EQ(message, c.message);
    }
    EXPECT_EQ(request->dump(), c.written);
    EXPECT_EQ(request->getModuleNames(), (strList{"h1", "h2", "h3"}));
  }
}

}  // namespace
