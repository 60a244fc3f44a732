// Negation, validity of the filter type and the atom factory.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

TEST(AtomFilterTest, AFreshReadClearsAnEarlierNegation) {
  ContentFilter filter(TAV_SRC, true, TavEntityArray());
  strList tokens{"a"};
  strIter cur = tokens.begin();
  filter.parseNot(tokens, cur);
  EXPECT_EQ("", filter.dumpNot());
  EXPECT_EQ("a", *cur);
}

TEST(AtomFilterTest, IsValidRefusesCounterTypesAndThrowsWithoutKeyword) {
  std::string err = "untouched";
  EXPECT_TRUE(ContentFilter(TAV_WDATTACK, false, TavEntityArray()).isValid(err));
  EXPECT_EQ("untouched", err);
  EXPECT_FALSE(parsed<ContentFilter>("wb a").isValid(err));  // read without complaint
  EXPECT_EQ("Invalid Filter Type: wb", err);
  err = "untouched";
  const ContentFilter tel(TAV_TELNUMBER, false, TavEntityArray());
  EXPECT_EQ("Not a valid argument for type", thrownMessage([&] { tel.isValid(err); }));
  EXPECT_EQ("untouched", err);
}

TEST(AtomFilterTest, FactoryChoosesTheLeafClassByTheExactKeyword) {
  strList tokens = tokensOf("interface eth0 -f src a");
  strIter cur = tokens.begin();
  std::unique_ptr<AtomFilter> atom(AtomFilter::getAtomFilter(tokens, cur));
  EXPECT_NE(nullptr, dynamic_cast<InterfaceAtomFilter*>(atom.get()));
  EXPECT_EQ("-f", *cur++);
  atom.reset(AtomFilter::getAtomFilter(tokens, cur));
  EXPECT_EQ(TAV_SRC, atom->getFilterType());
  EXPECT_TRUE(cur == tokens.end());
  tokens = tokensOf("Interface eth0");
  cur = tokens.begin();
  EXPECT_EQ("Invalid type: Interface", thrownMessage([&] { delete AtomFilter::getAtomFilter(tokens, cur); }));
}

}  // namespace
