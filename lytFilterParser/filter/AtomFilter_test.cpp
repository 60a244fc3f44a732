// Negation, validity of the filter type and the atom factory.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

// The negation words themselves are in the content filter's table.
TEST(AtomFilterTest, AFreshReadClearsAnEarlierNegation) {
  EXPECT_TRUE(parsed<ContentFilter>("src NOT a").isNegated());
  ContentFilter filter(TAV_SRC, true, TavEntityArray());
  strList tokens{"a"};
  strIter cur = tokens.begin();
  filter.parseNot(tokens, cur);
  EXPECT_FALSE(filter.isNegated());
  EXPECT_EQ("", filter.dumpNot());
  EXPECT_EQ("a", *cur);
}

TEST(AtomFilterTest, IsValidAcceptsOnlyTypesAFilterCanTestAndThrowsWithoutKeyword) {
  for (TavValType type : {TAV_SVC, TAV_SRC, TAV_DST, TAV_IP, TAV_FWRULE, TAV_QSRULE, TAV_CONNID, TAV_URL,
                          TAV_INTERFACE, TAV_ORIENTATION, TAV_TUNNEL, TAV_TUNNELTYPE, TAV_WDATTACK}) {
    std::string err = "untouched";
    EXPECT_TRUE(ContentFilter(type, false, TavEntityArray()).isValid(err)) << type;
    EXPECT_EQ("untouched", err);
  }
  for (const char* keyword : {"ab", "wb", "pkt", "conn", "session", "pktRange", "citrix"}) {
    const ContentFilter filter = parsed<ContentFilter>(std::string(keyword) + " a");  // read without complaint
    std::string err = "untouched";
    EXPECT_FALSE(filter.isValid(err)) << keyword;
    EXPECT_EQ("Invalid Filter Type: " + std::string(keyword), err);
  }
  for (TavValType type : {TAV_TELNUMBER, TAV_NO_TYPE}) {
    const ContentFilter filter(type, false, TavEntityArray());
    std::string err = "untouched";
    EXPECT_EQ("Not a valid argument for type", thrownMessage([&] { filter.isValid(err); })) << type;
    EXPECT_EQ("untouched", err);
  }
}

TEST(AtomFilterTest, FactoryChoosesTheLeafClassByTheExactKeyword) {
  strList tokens = tokensOf("interface eth0 -f src a");
  strIter cur = tokens.begin();
  std::unique_ptr<AtomFilter> atom(AtomFilter::getAtomFilter(tokens, cur));
  EXPECT_NE(nullptr, dynamic_cast<InterfaceAtomFilter*>(atom.get()));
  EXPECT_EQ(1, atom->getIsAtom());
  EXPECT_EQ("-f", *cur++);
  atom.reset(AtomFilter::getAtomFilter(tokens, cur));
  EXPECT_NE(nullptr, dynamic_cast<ContentFilter*>(atom.get()));
  EXPECT_EQ(TAV_SRC, atom->getFilterType());
  EXPECT_TRUE(cur == tokens.end());

  tokens = tokensOf("Interface eth0");
  cur = tokens.begin();
  EXPECT_EQ("Invalid type: Interface", thrownMessage([&] { delete AtomFilter::getAtomFilter(tokens, cur); }));
  cur = tokens.end();
  EXPECT_EQ("Expected type at this point but there is no data",
            thrownMessage([&] { delete AtomFilter::getAtomFilter(tokens, cur); }));
}

}  // namespace
