// Current request syntax of NetworkKovaRequest: reading, exact written text,
// faults, dump/parse round trips and the module-name walk.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

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

TEST(NetworkKovaRequestSyntax, WritesExactTextOrRefuses) {
  // Blanks are part of the text: atoms end in two blanks, a compound filter
  // with one child adds two more, an empty filter writes one.
  const std::pair<const char*, const char*> cases[] = {
      {"-f src not 10.0.0.1 10.0.0.2 -k svc -v wb acc=rate -s top",
       "-f src not 10.0.0.1 10.0.0.2    -k svc acc=replace -v wb acc=rate -s top "},
      // Sort: the index only with two or more value columns, updates only when not 50.
      {"-v wb -s bottom index=4 updates=-5", " -v wb acc=rate -s bottom "},
      {"-v wb -v ab -s bottom index=+4 updates=7", " -v wb acc=rate -v ab acc=rate -s bottom index=4 updates=7 "},
      {"-v wb -v ab -s none index=3 updates=7", " -v wb acc=rate -v ab acc=rate "},
      // The number is read from position 6 of the token, wherever "index=" stands.
      {"-v wb -v ab -s top xindex=2", " -v wb acc=rate -v ab acc=rate -s top index=0 "},
      // A later "-s" forgets the numbers of an earlier one.
      {"-v wb -v ab -s top index=2 updates=9 -s bottom", " -v wb acc=rate -v ab acc=rate -s bottom index=1 "},
      // Sort requested inside a value column: its 1-based position; only the exact words count.
      {"-v wb -v ab sort=bottom", " -v wb acc=rate -v ab acc=rate -s bottom index=2 "},
      {"-v wb sort=top -v ab sort=none", " -v wb acc=rate -v ab acc=rate -s top index=1 "},
      {"-v wb -v ab xsort=top", " -v wb acc=rate -v ab acc=rate "},
      {"-k src sort=bottom -v wb", " -k src acc=replace -v wb acc=rate "},
      // Consecutive "-f" options are one conjunction; a later "-f" appends to
      // the same root, and an operator word after it sets the root's operator.
      {"-f src a -f dst b -k src", "-f and [ -f src  a   -f dst  b   ] -k src acc=replace "},
      {"-f src a -k svc -f dst b", "-f and [ -f src  a   -f dst  b   ] -k svc acc=replace "},
      // Faults.
      {"-filter [ and ]", "<fault> Invalid option: -filter"},
      {"+k src", "<fault> Invalid option: +k"},
      {"-K src", "<fault> Invalid option: -K"},
      {"-k src -f", "<fault> Expected type at this point but there is no data"},
      {"-s", "<fault> Sort type expected"},
      {"-s TOP", "<fault> Invalid sort type: TOP"},
      {"-s top index=2 5", "<fault> Invalid option: 5"},
      {"-f xor a", "<fault> Invalid type: xor"},
  };
  for (const auto& c : cases) EXPECT_EQ(requestText(c.first), c.second) << c.first;
  auto read = readRequest("-k src -v wb -v ab -v pkt sort=bottom -s top index=3 updates=120");
  EXPECT_EQ(read->getSortType(), TAV_SORT_TOP);
  EXPECT_EQ(read->getSortIndex(), 3);
  EXPECT_EQ(read->getMaxUpdates(), 120);
}

// A request built from parts writes the update count set on it, as a read
// one writes the count it read.
TEST(NetworkKovaRequestSyntax, BuiltRequestWritesItsUpdateCount) {
  TavColumnArray keys;
  keys.push_back(TavColumn(TAV_KEY, TAV_SRC, TAV_ACC_REPLACE, TavColumnFilter()));
  TavColumnArray values;
  values.push_back(TavColumn(TAV_VALUE, TAV_WB, TAV_ACC_RATE, TavColumnFilter()));
  values.push_back(TavColumn(TAV_VALUE, TAV_AB, TAV_ACC_RATE, TavColumnFilter()));
  NetworkKovaRequest built(Filter(), keys, values, TAV_SORT_BOTTOM, 2);
  EXPECT_EQ(built.getMaxUpdates(), NetworkKovaRequest::defaultMaxUpdates);
  built.setMaxUpdates(7);
  EXPECT_EQ(built.getMaxUpdates(), 7);
  const std::string text = " -k src acc=replace -v wb acc=rate -v ab acc=rate -s bottom index=2 updates=7 ";
  EXPECT_EQ(built.dump(), text);
  EXPECT_EQ(readRequest(text)->dump(), text);
  std::string error;
  EXPECT_TRUE(built.isValid(error)) << error;
  built.setMaxUpdates(NetworkKovaRequest::defaultMaxUpdates);
  EXPECT_EQ(built.dump(), " -k src acc=replace -v wb acc=rate -v ab acc=rate -s bottom index=2 ");
  built.setMaxUpdates(300);
  EXPECT_FALSE(built.isValid(error));
  EXPECT_EQ(error, "Invalid maxUpdates");
}

// Between them, every option, column option, value type and mode.
TEST(NetworkKovaRequestSyntax, WrittenTextReadsBackToTheSameText) {
  for (const char* text : {
           "-f src not h1<>10.0.0.1 h2 -f dst NOT d1 -f svc http -f ip 10.0.0.0/8 -k src dir=in enc=yes comp=no "
           "cprint=no url_mod=scheme_host -v wb dir=out enc=no comp=yes cprint=yes url_mod=path -s top",
           "-f interface not eth0,in eth1,out eth2 -f fwrule r1 -f qsrule q1 -f connId 17 -f url u -k svc -k dst "
           "-k connId -k url url_mod=host_path -v ab acc=sum -v pkt acc=max -v conn acc=concurrent -v session acc=new "
           "-v wb acc=lineUtil -v wb acc=min -s bottom index=3 updates=10",
           "-f or [ -f and [ -f src a -f svc http ] -f and [ -f dst b -f svc ftp ] ] -k ip -k interface "
           "-k orientation -k pktRange 0-64 65-128 -v conn acc=new -v pkt acc=replace",
           "-f tunnel t1<>gw1 -f tunnelType ipsec -f orientation x -f wdAttack w1 -k tunnel t1<>10.1.1.1 t2 "
           "-k tunnelType -k citrix -k wdAttack -k qsrule -k fwrule -v wb -s none index=5 updates=9",
           "-k src [ a b ] -v wb -v ab sort=bottom",
       }) {
    const std::string first = readRequest(text)->dump();
    EXPECT_EQ(first, readRequest(first)->dump()) << text;
  }
}

// Key column written before the filter: the walk still takes the filter first.
const char* const kNamedRequest = "-k src h3 -f src h1 h2 -f svc http -f interface eth0 -v wb v1";

TEST(NetworkKovaRequestModuleNames, CollectsFilterThenKeyColumns) {
  EXPECT_EQ(readRequest(kNamedRequest)->getModuleNames(), (strList{"h1", "h2", "h3"}));
  // Source, destination, ip and tunnel atoms, depth first; every key column.
  EXPECT_EQ(readRequest("-f src a -f svc b -f or [ -f dst c -f interface eth0 ] -f tunnel t -f ip d -f fwrule r "
                        "-k svc s1 -k connId 5 -v wb")
                ->getModuleNames(),
            (strList{"a", "c", "t", "d", "s1", "5"}));
  auto request = readRequest("-f svc http -f interface eth0 -k src -v wb x");
  EXPECT_TRUE(request->getModuleNames().empty());
  strList none, alsoNone;
  EXPECT_TRUE(request->setModuleNames(none, alsoNone));
}

// Nothing is rolled back after a fault.
TEST(NetworkKovaRequestModuleNames, SubstitutesResolvedNamesOrThrows) {
  const std::string tail = "   -f svc  http   -f interface   eth0  ] -k src acc=replace ";
  const std::string untouched = "-f and [ -f src  h1 h2" + tail + "h3 -v wb acc=rate v1 ";
  const struct {
    strList oldNames, newNames;
    std::string message, written;  // message "": substituted
  } cases[] = {
      {{"h1", "h2", "h3", "extra"},
       {"a", "b", "c", "d"},
       "",
       "-f and [ -f src  h1<>a h2<>b" + tail + "h3<>c -v wb acc=rate v1 "},
      {{"h1", "X", "h3"}, {"a", "b", "c"}, "X", "-f and [ -f src  h1<>a h2" + tail + "h3 -v wb acc=rate v1 "},
      {{"h1", "h2"},
       {"a", "b", "c"},
       "setModuleNames: the request has 3 module names but 2 old names were given",
       untouched},
      {{"h1", "h2", "h3"},
       {"a", "b"},
       "setModuleNames: the request has 3 module names but 2 new names were given",
       untouched},
  };
  for (auto c : cases) {
    auto request = readRequest(kNamedRequest);
    try {
      EXPECT_TRUE(request->setModuleNames(c.oldNames, c.newNames));
      EXPECT_EQ("", c.message);
    } catch (const std::string& message) {
      EXPECT_EQ(message, c.message);
    }
    EXPECT_EQ(request->dump(), c.written) << c.message;
  }
}

}  // namespace
