// One entity: its split at "<>", its text and its equality.
#include "lytFilterParser/entity/TavEntity.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(TavEntity, SplitsAtTheFirstSeparator) {
  const struct {
    const char *text, *name, *resolved, *dump;
  } cases[] = {
      {"host1<>10.0.0.1", "host1", "10.0.0.1", "host1<>10.0.0.1"},
      {"a<>b<>c", "a", "b<>c", "a<>b<>c"},
      {"<>x", "", "x", "<>x"},
      {"x<>", "x", "", "x"},  // the trailing separator is lost on output
      {"a<b>c", "a<b>c", "", "a<b>c"},
  };
  for (const auto& c : cases) {
    const TavEntity entity{std::string(c.text)};
    EXPECT_EQ(entity.getName() + "|" + entity.getResolvedName() + "|" + entity.dump(),
              std::string(c.name) + "|" + c.resolved + "|" + c.dump)
        << c.text;
  }
}

TEST(TavEntity, SetFilterStringWithoutSeparatorKeepsTheResolvedName) {
  TavEntity entity("x", "z");
  entity.setFilterString("y");
  EXPECT_EQ(entity.dump(), "y<>z");
  entity.setFilterString("r<>");
  EXPECT_EQ(entity.dump(), "r");
  // The static dump takes the resolved name first; the pair constructor does not split.
  EXPECT_EQ(TavEntity::dump("10.0.0.1", "host1"), "host1<>10.0.0.1");
  EXPECT_EQ(TavEntity("a<>b", "").getName(), "a<>b");
}

TEST(TavEntity, EqualityNeedsBothFieldsExactly) {
  EXPECT_TRUE(TavEntity("a<>b") == TavEntity("a", "b"));
  EXPECT_TRUE(TavEntity("x<>") == TavEntity("x"));
  EXPECT_FALSE(TavEntity("Host1") == TavEntity("host1"));
  EXPECT_FALSE(TavEntity("a<>b") == TavEntity("a", "c"));
  EXPECT_FALSE(TavEntity("a<>b") == TavEntity("b", "a"));
}

}  // namespace
