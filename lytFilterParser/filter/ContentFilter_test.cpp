// Reading, writing, comparing, copying and module names of content atoms.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/lytFilterParser.h"

namespace {

strList tokensOf(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return tokens;
}

std::string rest(const strList& tokens, strList::const_iterator cur) {
  std::string out;
  for (; cur != tokens.end(); ++cur) out += (out.empty() ? "" : " ") + *cur;
  return out;
}

template <class F>
std::string thrownMessage(F&& action) {
  try {
    action();
  } catch (const std::string& message) {
    return message;
  }
  ADD_FAILURE() << "no message was thrown";
  return "<nothing thrown>";
}

ContentFilter parsed(const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  return ContentFilter(tokens, cur);
}

TEST(ContentFilterTest, ReadsAndWritesWithEveryBlank) {
  const struct {
    const char* tokens;  // from the type keyword on
    const char* dump;
    const char* left;  // what the reader did not take
  } cases[] = {
      {"src 1.2.3.4", "-f src  1.2.3.4  ", ""},
      {"svc NOT http ftp", "-f svc not http ftp  ", ""},
      {"dst not a -k svc", "-f dst not a  ", "-k svc"},
      {"ip a b ] -f src", "-f ip  a b  ", "] -f src"},
      {"src", "-f src   ", ""},
      {"fwrule -f src a", "-f fwrule   ", "-f src a"},
      {"tunnel h<>H [ x", "-f tunnel  h<>H [ x  ", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tokens);
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    ContentFilter filter(tokens, cur);
    EXPECT_EQ(c.dump, filter.dump());
    EXPECT_EQ(c.left, rest(tokens, cur));
  }
}

TEST(ContentFilterTest, ReadFaults) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "Expected type at this point but there is no data"},
      {"foo a", "Invalid type: foo"},
      {"Src a", "Invalid type: Src"},
      {"not src a", "Invalid type: not"},
  };
  for (const auto& c : cases) {
    strList tokens = tokensOf(c.first);
    strIter cur = tokens.begin();
    EXPECT_EQ(c.second, thrownMessage([&] { ContentFilter filter(tokens, cur); })) << c.first;
  }
}

TEST(ContentFilterTest, EqualityLooksAtTypeNegationAndEntitiesNotTheirOrder) {
  const ContentFilter base = parsed("src a b");
  EXPECT_TRUE(base == parsed("src b a"));
  EXPECT_FALSE(base == parsed("src not a b"));
  EXPECT_FALSE(base == parsed("dst a b"));
  EXPECT_FALSE(base == parsed("src a b c"));
  EXPECT_FALSE(base == parsed("src a c"));
  EXPECT_FALSE(base == parsed("src a b<>B"));
}

TEST(ContentFilterTest, CloneAndCopiesAreDeep) {
  auto source = std::make_unique<ContentFilter>(parsed("dst not a b"));
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  ContentFilter assigned = parsed("svc x");
  assigned = *source;
  source->setEntities(TavEntityArray());
  source->setNegation(false);
  EXPECT_EQ("-f dst   ", source->dump());
  source.reset();
  EXPECT_EQ("-f dst not a b  ", cloned->dump());
  EXPECT_EQ("-f dst not a b  ", assigned.dump());
}

TEST(ContentFilterTest, OnlySourceDestinationIpAndTunnelTakeModuleNames) {
  for (const char* type : {"src", "dst", "ip", "tunnel", "svc", "fwrule", "qsrule", "connId", "url",
                           "orientation", "tunnelType", "wdAttack", "interface"}) {
    SCOPED_TRACE(type);
    const bool takesPart = std::string("src dst ip tunnel").find(type) != std::string::npos;
    ContentFilter filter = parsed(std::string(type) + " n1 n2");
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
  ContentFilter filter = parsed("src a b");
  strList oldNames{"a", "x"}, newNames{"A", "B"};
  strIter oldCur = oldNames.begin(), newCur = newNames.begin();
  EXPECT_EQ("x", thrownMessage([&] { filter.setModuleNames(oldCur, newCur); }));
  EXPECT_EQ("-f src  a<>A b  ", filter.dump());
}

}  // namespace
