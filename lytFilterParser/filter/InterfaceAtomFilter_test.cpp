// Interface items, their lists and the interface atom.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

TEST(InterfaceInfoTest, ReadsOneTokenWithoutMovingTheCursor) {
  const struct {
    const char* token;
    const char* name;
    TavFilterDirType direction;
    const char* dump;
  } cases[] = {
      {"eth0", "eth0", TAV_DIR_BOTH, "eth0"},          {"eth0,in", "eth0", TAV_DIR_IN, "eth0,in"},
      {"eth0,Inbound", "eth0", TAV_DIR_IN, "eth0,in"}, {"eth0,O", "eth0", TAV_DIR_OUT, "eth0,out"},
      {"eth0,x", "eth0", TAV_DIR_BOTH, "eth0"},        {"eth0,", "eth0,", TAV_DIR_BOTH, "eth0,"},
      {"eth0,,in", "eth0", TAV_DIR_BOTH, "eth0"},      {",in", "", TAV_DIR_IN, ",in"},
      {",", ",", TAV_DIR_BOTH, ","},                   {"a,b,out", "a", TAV_DIR_BOTH, "a"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.token);
    strList tokens{c.token, "next"};
    strIter cur = tokens.begin();
    const InterfaceInfo item(tokens, cur);
    EXPECT_TRUE(cur == tokens.begin());
    EXPECT_EQ(c.name, item.getName());
    EXPECT_EQ(c.direction, item.getDirection());
    EXPECT_EQ(c.dump, item.dump());
  }
}

TEST(InterfaceInfoTest, OrderIsByteWiseNameThenDirection) {
  const struct {
    InterfaceInfo left, right;
    bool less;
  } cases[] = {
      {{"eth0", TAV_DIR_BOTH}, {"eth1", TAV_DIR_IN}, true}, {{"eth1", TAV_DIR_IN}, {"eth0", TAV_DIR_BOTH}, false},
      {{"eth", TAV_DIR_BOTH}, {"eth0", TAV_DIR_IN}, true},  {{"B", TAV_DIR_IN}, {"a", TAV_DIR_IN}, true},
      {{"z", TAV_DIR_IN}, {"\xe9", TAV_DIR_IN}, true},      {{"x", TAV_DIR_IN}, {"x", TAV_DIR_OUT}, true},
      {{"x", TAV_DIR_OUT}, {"x", TAV_DIR_BOTH}, true},      {{"x", TAV_DIR_IN}, {"x", TAV_DIR_IN}, false},
  };
  for (const auto& c : cases) EXPECT_EQ(c.less, c.left < c.right) << c.left.dump() << " < " << c.right.dump();
  EXPECT_TRUE(InterfaceInfo("x", TAV_DIR_IN) == InterfaceInfo("x", TAV_DIR_IN));
  EXPECT_FALSE(InterfaceInfo("x", TAV_DIR_IN) == InterfaceInfo("x", TAV_DIR_BOTH));
  EXPECT_FALSE(InterfaceInfo("x", TAV_DIR_IN) == InterfaceInfo("x ", TAV_DIR_IN));
}

InterfaceInfoList listOf(std::initializer_list<InterfaceInfo> items) {
  InterfaceInfoList list;
  for (const InterfaceInfo& item : items) list.push_back(item);
  return list;
}

TEST(InterfaceInfoListTest, EqualityIgnoresOrderAndDoesNotPairItems) {
  const InterfaceInfo a("a", TAV_DIR_BOTH), b("b", TAV_DIR_BOTH), aIn("a", TAV_DIR_IN);
  EXPECT_TRUE(listOf({a, a, b}) == listOf({a, b, b}));
  EXPECT_TRUE(listOf({a, b}) == listOf({b, a}));
  EXPECT_FALSE(listOf({a, b}) == listOf({a, b, b}));
  EXPECT_FALSE(listOf({a}) == listOf({aIn}));
  // Only this list's items are looked up in the other one.
  EXPECT_TRUE(listOf({a, a}) == listOf({a, b}));
  EXPECT_FALSE(listOf({a, b}) == listOf({a, a}));
  // Long lists go through a sorted index: the same answers.
  InterfaceInfoList forward, backward, other;
  for (int i = 0; i < 40; ++i) {
    forward.push_back(InterfaceInfo("eth" + std::to_string(i), TAV_DIR_IN));
    backward.push_back(InterfaceInfo("eth" + std::to_string(39 - i), TAV_DIR_IN));
    other.push_back(InterfaceInfo("eth" + std::to_string(i), i == 7 ? TAV_DIR_OUT : TAV_DIR_IN));
  }
  EXPECT_TRUE(forward == backward);
  EXPECT_FALSE(forward == other);
  EXPECT_FALSE(other == backward);
}

TEST(InterfaceAtomFilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the "interface" keyword on | written text "|" tokens left
      {"interface eth0,in eth1", "-f interface   eth0,in  eth1 |"},
      {"interface not eth0,out -k", "-f interface not  eth0,out |-k"},
      {"interface Not eth0", "-f interface   Not  eth0 |"},
      {"interface ] x", "-f interface  |] x"},
      {"interface -eth0 eth1", "-f interface  |-eth0 eth1"},
      {"interface eth0, ,in eth0,,in", "-f interface   eth0,  ,in  eth0 |"},
      {"interface [ a", "-f interface   [  a |"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<InterfaceAtomFilter>(c.first)) << c.first;
  EXPECT_EQ(TAV_INTERFACE, parsed<InterfaceAtomFilter>("interface a").getFilterType());
}

TEST(InterfaceAtomFilterTest, BuiltFromItemsClonedAndLeftOutOfModuleNames) {
  auto source = std::make_unique<InterfaceAtomFilter>(listOf({{"eth0", TAV_DIR_IN}, {"eth1", TAV_DIR_BOTH}}), false);
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  source.reset();
  EXPECT_EQ("-f interface   eth0,in  eth1 ", cloned->dump());

  InterfaceAtomFilter single(InterfaceInfo("wan", TAV_DIR_OUT), true);
  EXPECT_EQ("-f interface not  wan,out ", single.dump());
  EXPECT_EQ(" wan,out ", single.dumpInterfaceInfoList());
  std::string err = "untouched";
  EXPECT_TRUE(single.isValid(err));
  EXPECT_EQ("untouched", err);
  // Interface names are not module names: neither collected nor substituted.
  strList names{"wan"};
  single.getModuleNames(names);
  strIter oldCur = names.begin(), newCur = names.begin();
  EXPECT_TRUE(single.setModuleNames(oldCur, newCur));
  EXPECT_TRUE(names.size() == 1 && oldCur == names.begin() && newCur == names.begin());
}

}  // namespace
