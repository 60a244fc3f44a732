// Per-column options: reading one name=value token, writing in fixed order.
#include <gtest/gtest.h>

#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

// Reads every token of `text` as one option each.
TavColumnFilter readAll(const std::string& text) {
  TavColumnFilter filter;
  strList tokens = tokensOf(text);
  for (strIter cur = tokens.begin(); cur != tokens.end();) {
    const strIter before = cur;
    filter.parse(tokens, cur);
    EXPECT_EQ(1, std::distance(before, cur)) << *before;
  }
  return filter;
}

TEST(TavColumnFilterTest, ReadsOneOptionPerTokenAndWritesInFixedOrder) {
  const std::pair<const char*, const char*> cases[] = {
      {"cprint=no url_mod=scheme_host comp=yes enc=no dir=out",
       "dir=out enc=no comp=yes cprint=no url_mod=scheme_host "},
      {"url_mod=host_path cprint=yes comp=no enc=yes dir=in", "dir=in enc=yes comp=no cprint=yes url_mod=host_path "},
      {"dir=both enc=both comp=both cprint=both url_mod=full", ""},
      {"url_mod=host xdir=in", "dir=in url_mod=host "},         // the name may stand anywhere in the token
      {"url_mod=scheme dir=inout", "dir=out url_mod=scheme "},  // "out" is tried before "in"
      {"url_mod=fullhost", ""},                                 // "full" is tried first
      {"enc=dir=in", "dir=in "},                                // "dir=" takes precedence over "enc="
      {"dir=in dir=out", "dir=out "},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readAll(c.first).dump()) << c.first;
}

TEST(TavColumnFilterTest, ReadFaultsKeepCursorAndCodes) {
  const std::pair<const char*, const char*> cases[] = {
      {"DIR=in", "Expected filter type"},
      {"dir=sideways", "Unexpected type of direction"},
      {"indir=x", "Unexpected type of direction"},  // the value is looked for behind the name only
      {"enc=maybe", "Unexpected type of encryption mode"},
      {"comp=maybe", "Unexpected type of compresstion mode"},
      {"cprint=x", "Unexpected type of citrix-print mode"},
      {"url_mod=x", "Unexpected type of url mode"},
  };
  for (const auto& c : cases) {
    TavColumnFilter filter = readAll("dir=out enc=yes");
    strList tokens{c.first};
    strIter cur = tokens.begin();
    EXPECT_EQ(c.second, thrownMessage([&] { filter.parse(tokens, cur); })) << c.first;
    EXPECT_TRUE(cur == tokens.begin());
    EXPECT_EQ("dir=out enc=yes ", filter.dump());
  }
  TavColumnFilter filter;
  strList empty;
  strIter end = empty.end();
  EXPECT_EQ("Error: Expected end of line", thrownMessage([&] { filter.parse(empty, end); }));
  EXPECT_EQ("", TavColumnFilter(7, -1, 3, 9, 6).dump());  // codes out of range write nothing
}

}  // namespace
