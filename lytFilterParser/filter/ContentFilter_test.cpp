// Reading, writing, comparing, copying and module names of content atoms.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

ContentFilter parsedFilter(const std::string& text) { return parsed<ContentFilter>(text); }

TEST(ContentFilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the type keyword on | written text "|" tokens left
      {"src 1.2.3.4", "-f src  1.2.3.4  |"},
      {"svc NOT http ftp", "-f svc not http ftp  |"},  // negation words are exact
      {"svc Not http", "-f svc  Not http  |"},
      {"svc http not", "-f svc  http not  |"},
      {"src not", "-f src not  |"},
      {"dst not a -k svc", "-f dst not a  |-k svc"},
      {"ip a b ] -f src", "-f ip  a b  |] -f src"},
      {"src", "-f src   |"},
      {"tunnel h<>H [ x", "-f tunnel  h<>H [ x  |"},
      {"", "<fault> Expected type at this point but there is no data"},
      {"Src a", "<fault> Invalid type: Src"},
      {"not src a", "<fault> Invalid type: not"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<ContentFilter>(c.first)) << c.first;
}

TEST(ContentFilterTest, EqualityLooksAtTypeNegationAndEntitiesNotTheirOrderAndCloneKeepsAll) {
  const ContentFilter base = parsedFilter("src a b");
  EXPECT_TRUE(base == parsedFilter("src b a"));
  for (const char* other : {"src not a b", "dst a b", "src a b c", "src a c", "src a b<>B"}) {
    EXPECT_FALSE(base == parsedFilter(other)) << other;
  }
  std::unique_ptr<AbstractFilter> cloned(parsedFilter("dst not a b").clone());
  EXPECT_EQ("-f dst not a b  ", cloned->dump());
}

TEST(ContentFilterTest, OnlySourceDestinationIpAndTunnelTakeModuleNames) {
  for (const char* type : {"src", "dst", "ip", "tunnel", "svc", "fwrule", "qsrule", "connId", "url",
                           "orientation", "tunnelType", "wdAttack", "interface"}) {
    SCOPED_TRACE(type);
    const bool takesPart = std::string("src dst ip tunnel").find(type) != std::string::npos;
    ContentFilter filter = parsedFilter(std::string(type) + " n1 n2");
    strList names{"before"};
    filter.getModuleNames(names);
    EXPECT_EQ(takesPart ? strList({"before", "n1", "n2"}) : strList({"before"}), names);

    strList oldNames{"n1", "n2"}, newNames{"N1", "N2"};
    strIter oldCur = oldNames.begin(), newCur = newNames.begin();
    EXPECT_TRUE(filter.setModuleNames(oldCur, newCur));
    EXPECT_EQ(takesPart ? 2 : 0, std::distance(oldNames.begin(), oldCur));
    EXPECT_EQ(takesPart ? 2 : 0, std::distance(newNames.begin(), newCur));
    EXPECT_EQ(takesPart ? "n1<>N1 n2<>N2 " : "n1 n2 ", filter.dumpEntities());
  }
  // A mismatch throws the expected old name; what was set stays set.
  ContentFilter filter = parsedFilter("src a b");
  strList oldNames{"a", "x"}, newNames{"A", "B"};
  strIter oldCur = oldNames.begin(), newCur = newNames.begin();
  EXPECT_EQ("x", thrownMessage([&] { filter.setModuleNames(oldCur, newCur); }));
  EXPECT_EQ("-f src  a<>A b  ", filter.dump());
}

}  // namespace
