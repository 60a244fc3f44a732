// Per-column options: reading one name=value token, writing in fixed order.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

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

namespace {

// Programs built with an earlier header read the options through the inline
// getters at the places of the former fields: encryption, compression,
// direction, citrix print, url mode, five ints in that order.
TEST(TavColumnFilterTest, TheOptionsStayWhereTheFormerFieldsStood) {
  static_assert(sizeof(TavColumnFilter) == 5 * sizeof(int), "five ints, no more");
  const int given[5] = {TavColumnFilter::YES, TavColumnFilter::NO, TavColumnFilter::BOTH, TavColumnFilter::YES,
                        TavColumnFilter::URL_SCHEME_HOST};
  const TavColumnFilter filter(given[0], given[1], given[2], given[3], given[4]);
  int stored[5];
  std::memcpy(stored, &filter, sizeof stored);
  EXPECT_EQ(std::vector<int>(stored, stored + 5), std::vector<int>(given, given + 5));
  EXPECT_EQ(std::vector<int>({filter.getEncryptionMode(), filter.getCompressionMode(), filter.getDirection(),
                              filter.getCitrixPrintMode(), filter.getUrlMode()}),
            std::vector<int>(given, given + 5));
}

}  // namespace
