// One entity: its split at "<>", its text and its equality.
#include "lytFilterParser/entity/TavEntity.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct SplitCase {
  std::string text;
  std::string name;
  std::string resolved;
  std::string dump;
};

TEST(TavEntity, SplitsAtTheFirstSeparator) {
  const std::vector<SplitCase> cases = {
      {"host1", "host1", "", "host1"},
      {"host1<>10.0.0.1", "host1", "10.0.0.1", "host1<>10.0.0.1"},
      {"a<>b<>c", "a", "b<>c", "a<>b<>c"},
      {"a<><>", "a", "<>", "a<><>"},
      {"<>x", "", "x", "<>x"},
      {"x<>", "x", "", "x"},  // the trailing separator is lost on output
      {"<>", "", "", ""},
      {"a<b>c", "a<b>c", "", "a<b>c"},
      {"a><b", "a><b", "", "a><b"},
  };
  for (const SplitCase& c : cases) {
    SCOPED_TRACE(c.text);
    const TavEntity entity(c.text);
    EXPECT_EQ(entity.getName(), c.name);
    EXPECT_EQ(entity.getResolvedName(), c.resolved);
    EXPECT_EQ(entity.dump(), c.dump);
  }
}

TEST(TavEntity, SetFilterStringWithoutSeparatorKeepsTheResolvedNameAndStaticDump) {
  TavEntity entity("x", "z");
  entity.setFilterString("y");
  EXPECT_EQ(entity.getName(), "y");
  EXPECT_EQ(entity.getResolvedName(), "z");
  EXPECT_EQ(entity.dump(), "y<>z");

  entity.setFilterString("p<>q");
  EXPECT_EQ(entity.dump(), "p<>q");
  entity.setFilterString("r<>");
  EXPECT_EQ(entity.getName(), "r");
  EXPECT_EQ(entity.getResolvedName(), "");
  // The static dump takes the resolved name first.
  EXPECT_EQ(TavEntity::dump("10.0.0.1", "host1"), "host1<>10.0.0.1");
  EXPECT_EQ(TavEntity::dump("", "host1"), "host1");
  EXPECT_EQ(TavEntity::dump("r", ""), "<>r");
  // The pair constructor does not split.
  EXPECT_EQ(TavEntity("a<>b", "").getName(), "a<>b");
}

TEST(TavEntity, EqualityNeedsBothFieldsExactly) {
  struct Case {
    TavEntity left, right;
    bool equal;
  };
  const std::vector<Case> cases = {
      {TavEntity("host1"), TavEntity("host1"), true},
      {TavEntity("Host1"), TavEntity("host1"), false},
      {TavEntity("a<>b"), TavEntity("a", "b"), true},
      {TavEntity("a<>b"), TavEntity("a", "c"), false},
      {TavEntity("a<>b"), TavEntity("c", "b"), false},
      {TavEntity("x<>"), TavEntity("x"), true},
      {TavEntity("a<>b"), TavEntity("b", "a"), false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.left.dump() + " vs " + c.right.dump());
    EXPECT_EQ(c.left == c.right, c.equal);
    EXPECT_EQ(c.right == c.left, c.equal);
  }
}

}  // namespace
