// Current request syntax of NetworkKovaRequest: reading, exact written text,
// faults, dump/parse round trips and the module-name walk.
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

std::string readFault(const std::string& text) {
  try {
    readRequest(text);
  } catch (const std::string& message) {
    return message;
  }
  return "<no fault>";
}

struct Written {
  const char* text;
  const char* expected;
};

// Blanks are part of the text: atoms end in two blanks, a compound filter
// with one child adds two more, an empty filter writes one.
const Written kWritten[] = {
    {"-k src", " -k src acc=replace "},
    {"-v wb", " -v wb acc=rate "},
    {"  -k   src   ", " -k src acc=replace "},
    {"-f src 10.0.0.1", "-f src  10.0.0.1    "},
    {"-f src not 10.0.0.1 10.0.0.2 -k svc -v wb acc=rate -s top",
     "-f src not 10.0.0.1 10.0.0.2    -k svc acc=replace -v wb acc=rate -s top "},
    {"-k src h1<>10.0.0.1 -v wb", " -k src acc=replace h1<>10.0.0.1 -v wb acc=rate "},
    {"-k src [ a b ] -v wb", " -k src acc=replace [ a b ] -v wb acc=rate "},
    {"-v wb dir=in acc=sum", " -v wb acc=sum dir=in "},
    {"-f interface eth0,in eth1", "-f interface   eth0,in  eth1   "},
    // Sort: the index only with two or more value columns, updates only when not 50.
    {"-v wb -s bottom index=4", " -v wb acc=rate -s bottom "},
    {"-v wb -v ab -s bottom index=4", " -v wb acc=rate -v ab acc=rate -s bottom index=4 "},
    {"-v wb -s top updates=0", " -v wb acc=rate -s top "},
    {"-v wb -s top updates=-5", " -v wb acc=rate -s top "},
    {"-v wb -s top updates=7", " -v wb acc=rate -s top updates=7 "},
    {"-v wb -s top updates=50", " -v wb acc=rate -s top "},
    {"-v wb -v ab -s none index=3 updates=7", " -v wb acc=rate -v ab acc=rate "},
    {"-v wb -v ab -s top index=+3", " -v wb acc=rate -v ab acc=rate -s top index=3 "},
    // The number is read from position 6 of the token, wherever "index=" stands.
    {"-v wb -v ab -s top xindex=2", " -v wb acc=rate -v ab acc=rate -s top index=0 "},
    // A later "-s" forgets the numbers of an earlier one.
    {"-s top index=2 updates=9 -s bottom", " -s bottom "},
    // Sort requested inside a value column: its 1-based position.
    {"-v wb sort=top -v ab", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
    {"-v wb -v ab sort=bottom", " -v wb acc=rate -v ab acc=rate -s bottom index=2 "},
    {"-v wb sort=top -v ab sort=none", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
    {"-v wb -v ab sort=bottom -s top", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
    {"-k src sort=bottom -v wb", " -k src acc=replace -v wb acc=rate "},
    // Consecutive "-f" options are one conjunction.
    {"-f src a -f dst b -k src", "-f and [ -f src  a   -f dst  b   ] -k src acc=replace "},
    // A later "-f" appends to the same root ...
    {"-f src a -k svc -f dst b", "-f and [ -f src  a   -f dst  b   ] -k svc acc=replace "},
    // ... and an operator word after it sets the root's operator.
    {"-f src a -k svc -f or -f dst b", "-f or [ -f src  a   -f dst  b   ] -k svc acc=replace "},
    {"-f or [ -f src a -f dst b ] -k src", "-f or [ -f src  a   -f dst  b   ] -k src acc=replace "},
    {"-f or [ -f and [ -f src a -f dst b ] -f svc http ]",
     "-f or [ -f and [ -f src  a   -f dst  b   ]  -f svc  http   ] "},
};

TEST(NetworkKovaRequestSyntax, WritesExactText) {
  for (const Written& row : kWritten) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(readRequest(row.text)->dump(), row.expected);
  }
}

TEST(NetworkKovaRequestSyntax, EmptyListGivesDefaults) {
  strList tokens;
  NetworkKovaRequest request(tokens);
  EXPECT_EQ(request.dump(), " ");
  EXPECT_TRUE(request.getFilter().getChildren().empty());
  EXPECT_TRUE(request.getKeys().empty());
  EXPECT_TRUE(request.getValues().empty());
  EXPECT_EQ(request.getSortType(), TAV_SORT_NONE);
  EXPECT_EQ(request.getSortIndex(), 1);
  EXPECT_EQ(request.getMaxUpdates(), 50);
}

TEST(NetworkKovaRequestSyntax, ReadsSortFields) {
  auto request = readRequest("-k src -v wb -v ab -v pkt sort=bottom -s bottom index=3 updates=120");
  EXPECT_EQ(request->getSortType(), TAV_SORT_BOTTOM);
  EXPECT_EQ(request->getSortIndex(), 3);
  EXPECT_EQ(request->getMaxUpdates(), 120);
  request = readRequest("-v wb -s top updates=-5");
  EXPECT_EQ(request->getMaxUpdates(), 50);
}

struct Fault {
  const char* text;
  const char* message;
};

const Fault kFaults[] = {
    {"-c", "Invalid option: -c"},
    {"-filter [ and ]", "Invalid option: -filter"},
    {"-k src -kv wb", "Invalid option: -kv"},
    {"src 10.0.0.1", "Invalid option: src"},
    {"-", "Invalid option: -"},
    {"-x", "Invalid option: -x"},
    {"-K src", "Invalid option: -K"},
    {"-f", "Expected type at this point but there is no data"},
    {"-k src -f", "Expected type at this point but there is no data"},
    {"-s", "Sort type expected"},
    {"-s up", "Invalid sort type: up"},
    {"-s TOP", "Invalid sort type: TOP"},
    {"-s top foo", "Invalid option: foo"},
    {"-s top index=2 5", "Invalid option: 5"},
    {"-k", "Expected type at this point but there is no data"},
    {"-k foo", "Invalid type: foo"},
    {"-v wb acc=rates", "Invalid accumulation mode: acc=rates"},
    {"-v wb enc=maybe", "Unexpected type of encryption mode"},
    {"-v wb foo=1", "Expected filter type"},
    {"-f xor a", "Invalid type: xor"},
    {"-f and [ -f src a", "`]` expected"},
    {"-f and [ -f src a -k src", "`]` expected instead of: -k"},
};

TEST(NetworkKovaRequestSyntax, RefusesBadText) {
  for (const Fault& row : kFaults) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(readFault(row.text), row.message);
  }
}

// Requests covering every option, column option and value type.
const char* const kRoundTrip[] = {
    "-k src -v wb",
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
    "-k src -v wb -v ab -s top index=2 updates=1",
    "-k src -v wb -v ab sort=bottom",
    "-k src -v wb -v ab -s bottom index=-4",
    "-k src -v wb -s none index=5 updates=9",
    "-k svc -v ab acc=replace -v wb acc=max",
    "-k src -k dst -v wb -v ab acc=lineUtil -v pkt acc=sum -s top index=2 updates=50",
    "-f src 10.0.0.1 -k svc -v wb acc=rate -s top",
    "-f src not h1<>10.0.0.1 h2 -f dst NOT d1 -k src -v wb",
    "-f svc http https -f ip 10.0.0.0/8 -k src -v pkt",
    "-f src -k svc -v wb",
    "-f interface not eth0,in eth1,out eth2 -k svc -v wb",
    "-f interface -k src -v wb",
    "-f or [ -f src a -f dst b ] -k src -v wb",
    "-f and [ -f src a -f or [ -f dst b -f dst c ] -f interface eth0,out ] -k src -v wb",
    "-f or [ -f and [ -f src a -f svc http ] -f and [ -f dst b -f svc ftp ] ] -k dst -v conn acc=new",
    "-f or -f src a -f dst b -k src -v wb",
    "-f fwrule not r1 r2 -f qsrule q1 -f connId 17 -f url www.example.com -k svc -v wb",
    "-f tunnel t1<>gw1 -f tunnelType ipsec -f orientation x -f wdAttack w1 -k src -v session acc=new",
    "-k src [ a b ] -v wb",
    "-f src a -k svc -f dst b -v wb -s top",
    "-f src a -k svc -f or -f dst b -v wb",
    "-v wb",
    "-f src a",
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
  EXPECT_TRUE(readRequest("-f svc http -f interface eth0 -k src -v wb x")->getModuleNames().empty());
}

TEST(NetworkKovaRequestModuleNames, SubstitutesResolvedNames) {
  auto request = readRequest(kNamedRequest);
  strList oldNames{"h1", "h2", "h3", "extra"};
  strList newNames{"a", "b", "c", "d"};
  EXPECT_TRUE(request->setModuleNames(oldNames, newNames));
  EXPECT_EQ(request->dump(),
            "-f and [ -f src  h1<>a h2<>b   -f svc  http   -f interface   eth0  ] "
            "-k src acc=replace h3<>c -v wb acc=rate v1 ");
  EXPECT_EQ(request->getModuleNames(), (strList{"h1", "h2", "h3"}));
}

TEST(NetworkKovaRequestModuleNames, MismatchThrowsTheOldNameWithoutRollback) {
  auto request = readRequest(kNamedRequest);
  strList oldNames{"h1", "X", "h3"};
  strList newNames{"a", "b", "c"};
  try {
    request->setModuleNames(oldNames, newNames);
    ADD_FAILURE() << "no fault";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "X");
  }
  EXPECT_EQ(request->dump().substr(0, 30), "-f and [ -f src  h1<>a h2   -f");

  request = readRequest(kNamedRequest);
  oldNames = {"h1", "h2", "Y"};
  try {
    request->setModuleNames(oldNames, newNames);
    ADD_FAILURE() << "no fault";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "Y");
  }
  EXPECT_NE(request->dump().find("h1<>a h2<>b "), std::string::npos);
  EXPECT_NE(request->dump().find("-k src acc=replace h3 -v"), std::string::npos);
}

TEST(NetworkKovaRequestModuleNames, ShortListsThrowAMessage) {
  auto request = readRequest(kNamedRequest);
  const std::string before = request->dump();
  strList full{"h1", "h2", "h3"};
  strList shorter{"h1", "h2"};
  try {
    request->setModuleNames(shorter, full);
    ADD_FAILURE() << "no fault";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "setModuleNames: the request has 3 module names but 2 old names were given");
  }
  try {
    request->setModuleNames(full, shorter);
    ADD_FAILURE() << "no fault";
  } catch (const std::string& message) {
    EXPECT_EQ(message, "setModuleNames: the request has 3 module names but 2 new names were given");
  }
  EXPECT_EQ(request->dump(), before);

  strList none;
  strList alsoNone;
  EXPECT_TRUE(readRequest("-f svc http -k connId -v wb x")->setModuleNames(none, alsoNone));
}

}  // namespace
