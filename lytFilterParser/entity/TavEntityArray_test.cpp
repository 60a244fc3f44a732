// Entity lists: reading a run of tokens, writing, comparing, and module names.
#include "lytFilterParser/entity/TavEntityArray.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

namespace {

TavEntityArray wholeList(strList tokens) { return TavEntityArray(tokens); }

std::string thrownBy(TavEntityArray& entities, strList& oldNames, strList& newNames, bool bounded) {
  strIter oldName = oldNames.begin(), newName = newNames.begin();
  try {
    if (bounded) {
      entities.setModuleNames(oldName, oldNames.end(), newName, newNames.end());
    } else {
      entities.setModuleNames(oldName, newName);
    }
  } catch (const std::string& message) {
    return message;
  }
  ADD_FAILURE() << "nothing thrown";
  return "";
}

struct ParseCase {
  strList tokens;
  int start;
  std::string dump;
  int stop;  // index of the cursor afterwards
};

TEST(TavEntityArray, ParseStopsBeforeOptionBracketOrEnd) {
  const std::vector<ParseCase> cases = {
      {{"h1", "h2<>x", "-k", "src"}, 0, "h1 h2<>x ", 2},
      {{"h1", "]", "]"}, 0, "h1 ", 1},
      {{"]", "a"}, 0, "", 0},
      {{"-k", "a"}, 0, "", 0},
      {{}, 0, "", 0},
      {{"h1", "-1", "h2"}, 0, "h1 ", 1},  // a negative number is an option too
      {{"a", "[", "b"}, 0, "a [ b ", 3},  // an opening bracket is an entity
      {{"a]", "b-c", "any"}, 0, "a] b-c any ", 3},
      {{"-k", "src", "h", "-v"}, 1, "src h ", 3},
      {{"h1"}, 1, "", 1},
  };
  for (const ParseCase& c : cases) {
    strList tokens = c.tokens;
    SCOPED_TRACE(::testing::PrintToString(std::vector<std::string>(tokens.begin(), tokens.end())));
    strIter cursor = std::next(tokens.begin(), c.start);
    const TavEntityArray entities(tokens, cursor);
    EXPECT_EQ(entities.dump(), c.dump);
    EXPECT_EQ(std::distance(tokens.begin(), cursor), c.stop);
    EXPECT_EQ(tokens, c.tokens);
  }
}

TEST(TavEntityArray, ParseAppendsToEntitiesAlreadyRead) {
  strList tokens = {"a", "-k", "b"};
  strIter cursor = tokens.begin();
  TavEntityArray entities(tokens, cursor);
  ++cursor;
  entities.parse(tokens, cursor);
  EXPECT_EQ(entities.dump(), "a b ");
  EXPECT_EQ(entities.size(), 2u);
}

TEST(TavEntityArray, WholeListConstructorTakesEveryToken) {
  strList tokens = {"-x", "]", "a<>b"};
  const TavEntityArray entities(tokens);
  EXPECT_EQ(entities.size(), 3u);
  EXPECT_EQ(entities.dump(), "-x ] a<>b ");
  EXPECT_EQ(entities[2].getResolvedName(), "b");
  EXPECT_EQ(tokens, (strList{"-x", "]", "a<>b"}));
  EXPECT_EQ(TavEntityArray().dump(), "");
}

TEST(TavEntityArray, EqualityIgnoresOrderAndMultiplicity) {
  struct Case {
    strList left, right;
    bool equal;
  };
  const std::vector<Case> cases = {
      {{"a", "b"}, {"b", "a"}, true},
      {{"a", "a"}, {"a", "b"}, true},   // multiplicity is not counted
      {{"a", "b"}, {"a", "a"}, false},  // but every left entity needs a partner
      {{"a"}, {"a", "a"}, false},
      {{}, {}, true},
      {{"a"}, {}, false},
      {{"A"}, {"a"}, false},
      {{"a<>x"}, {"a"}, false},
      {{"a<>x", "b"}, {"b", "a<>x"}, true},
  };
  for (const Case& c : cases) {
    const TavEntityArray left = wholeList(c.left), right = wholeList(c.right);
    EXPECT_EQ(left == right, c.equal) << left.dump() << "== " << right.dump();
  }
}

TEST(TavEntityArray, CollectsNamesWithoutResolvedNames) {
  const TavEntityArray entities = wholeList({"h1", "h2<>x", "h1"});
  strList names = {"before"};
  entities.getModuleNames(names);
  EXPECT_EQ(names, (strList{"before", "h1", "h2", "h1"}));
}

TEST(TavEntityArray, SubstitutesResolvedNamesAndAdvancesBothCursors) {
  for (bool bounded : {false, true}) {
    SCOPED_TRACE(bounded ? "bounded" : "unbounded");
    TavEntityArray entities = wholeList({"h1", "h2<>old"});
    strList oldNames = {"h1", "h2", "next"}, newNames = {"a", "b", "c"};
    strIter oldName = oldNames.begin(), newName = newNames.begin();
    const bool done = bounded ? entities.setModuleNames(oldName, oldNames.end(), newName, newNames.end())
                              : entities.setModuleNames(oldName, newName);
    EXPECT_TRUE(done);
    EXPECT_EQ(entities.dump(), "h1<>a h2<>b ");
    EXPECT_EQ(*oldName, "next");
    EXPECT_EQ(*newName, "c");
  }
}

TEST(TavEntityArray, MismatchThrowsTheOldNameWithoutRollback) {
  for (bool bounded : {false, true}) {
    SCOPED_TRACE(bounded ? "bounded" : "unbounded");
    TavEntityArray entities = wholeList({"h1", "h2"});
    strList oldNames = {"h1", "H2"}, newNames = {"a", "b"};
    EXPECT_EQ(thrownBy(entities, oldNames, newNames, bounded), "H2");
    EXPECT_EQ(entities.dump(), "h1<>a h2 ");
  }
}

TEST(TavEntityArray, BoundedSubstitutionThrowsWhenAListRunsOut) {
  TavEntityArray entities = wholeList({"h1", "h2"});
  strList oldNames = {"h1"}, newNames = {"a", "b"};
  EXPECT_EQ(thrownBy(entities, oldNames, newNames, true),
            "setModuleNames: the list of old names is shorter than the module names");
  EXPECT_EQ(entities.dump(), "h1<>a h2 ");

  oldNames = {"h1", "h2"};
  newNames = {"x"};
  EXPECT_EQ(thrownBy(entities, oldNames, newNames, true),
            "setModuleNames: the list of new names is shorter than the module names");

  TavEntityArray none;
  strList empty;
  strIter oldName = empty.begin(), newName = empty.begin();
  EXPECT_TRUE(none.setModuleNames(oldName, empty.end(), newName, empty.end()));
}

}  // namespace
