// Entity lists: reading a run of tokens, writing, comparing, and module names.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

TavEntityArray wholeList(strList tokens) { return TavEntityArray(tokens); }

TEST(TavEntityArray, ParseStopsBeforeOptionBracketOrEnd) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens | written text "|" tokens left
      {"h1 h2<>x -k src", "h1 h2<>x |-k src"},
      {"h1 ] ]", "h1 |] ]"},
      {"h1 -1 h2", "h1 |-1 h2"},  // a negative number is an option too
      {"a [ b-c", "a [ b-c |"},   // an opening bracket is an entity; only a leading "-" ends the list
      {"", "|"},
  };
  for (const auto& c : cases) EXPECT_EQ(lfptest::readWrite<TavEntityArray>(c.first), c.second) << c.first;
  // parse appends; the whole-list constructor takes every token.
  strList tokens = {"a", "-k", "b"};
  strIter cursor = tokens.begin();
  TavEntityArray entities(tokens, cursor);
  entities.parse(tokens, ++cursor);
  EXPECT_EQ(entities.dump(), "a b ");
  EXPECT_EQ(wholeList({"-x", "]", "a<>b"}).dump(), "-x ] a<>b ");
}

TEST(TavEntityArray, EqualityIgnoresOrderAndMultiplicity) {
  const struct {
    strList left, right;
    bool equal;
  } cases[] = {
      {{"a", "b"}, {"b", "a"}, true},  {{"a", "a"}, {"a", "b"}, true},  // multiplicity is not counted
      {{"a", "b"}, {"a", "a"}, false},                                  // but every left entity needs a partner
      {{"a"}, {"a", "a"}, false},      {{"a<>x"}, {"a"}, false},
  };
  // The same cases between long lists, which are compared through a sorted
  // index instead of a search per entity: twenty shared entities on each side.
  for (const bool padded : {false, true}) {
    for (const auto& c : cases) {
      strList leftNames = c.left, rightNames = c.right;
      for (int i = 0; padded && i < 20; ++i) {
        leftNames.push_back("pad" + std::to_string(i));
        rightNames.push_front("pad" + std::to_string(19 - i));
      }
      const TavEntityArray left = wholeList(leftNames), right = wholeList(rightNames);
      EXPECT_EQ(left == right, c.equal) << left.dump() << "== " << right.dump();
    }
  }
}

// Substitutes resolved names into "h1 h2<>old": gives the text afterwards and
// the old and new names the cursors stop at, or the fault and the text.
std::string substituted(strList oldNames, strList newNames) {
  TavEntityArray entities = wholeList({"h1", "h2<>old"});
  strIter oldName = oldNames.begin(), newName = newNames.begin();
  try {
    EXPECT_TRUE(entities.setModuleNames(oldName, newName));
  } catch (const std::string& message) {
    return "<fault> " + message + "|" + entities.dump();
  }
  return entities.dump() + "|" + lfptest::rest(oldNames, oldName) + "|" + lfptest::rest(newNames, newName);
}

TEST(TavEntityArray, CollectsNamesAndSubstitutesResolvedNamesWithoutRollback) {
  strList names = {"before"};
  wholeList({"h1", "h2<>x", "h1"}).getModuleNames(names);
  EXPECT_EQ(names, (strList{"before", "h1", "h2", "h1"}));
  EXPECT_EQ(substituted({"h1", "h2", "next"}, {"a", "b", "c"}), "h1<>a h2<>b |next|c");
  EXPECT_EQ(substituted({"h1", "H2"}, {"a", "b"}), "<fault> H2|h1<>a h2<>old ");
}

}  // namespace
