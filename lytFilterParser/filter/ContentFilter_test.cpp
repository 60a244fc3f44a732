// Reading, writing, comparing and copying content atoms; their module names
// are walked in NetworkKovaRequest_test.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

ContentFilter parsedFilter(const std::string& text) { return parsed<ContentFilter>(text); }

TEST(ContentFilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the type keyword on | written text "|" tokens left
      {"src 1.2.3.4", "-f src  1.2.3.4  |"},
      {"svc NOT http ftp", "-f svc not http ftp  |"},  // negation words are exact
      {"svc Not http", "-f svc  Not http  |"},
      {"dst not a -k svc", "-f dst not a  |-k svc"},
      {"ip a b ] -f src", "-f ip  a b  |] -f src"},
      {"src", "-f src   |"},
      {"", "<fault> Expected type at this point but there is no data"},
      {"not src a", "<fault> Invalid type: not"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<ContentFilter>(c.first)) << c.first;
}

TEST(ContentFilterTest, EqualityLooksAtTypeNegationAndEntitiesNotTheirOrderAndCloneKeepsAll) {
  const ContentFilter base = parsedFilter("src a b");
  EXPECT_TRUE(base == parsedFilter("src b a"));
  for (const char* other : {"src not a b", "dst a b", "src a b c", "src a b<>B"}) {
    EXPECT_FALSE(base == parsedFilter(other)) << other;
  }
  std::unique_ptr<AbstractFilter> cloned(parsedFilter("dst not a b").clone());
  EXPECT_EQ("-f dst not a b  ", cloned->dump());
}

}  // namespace
