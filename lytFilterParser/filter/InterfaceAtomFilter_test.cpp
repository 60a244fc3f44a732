// Interface items, their lists and the interface atom.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

TEST(InterfaceInfoTest, ReadsOneTokenWithoutMovingTheCursor) {
  const struct {
    const char* token;
    const char* name;
    TavFilterDirType direction;
    const char* dump;
  } cases[] = {
      {"eth0", "eth0", TAV_DIR_BOTH, "eth0"},
      {"eth0,Inbound", "eth0", TAV_DIR_IN, "eth0,in"},
      {"eth0,out", "eth0", TAV_DIR_OUT, "eth0,out"},
      {"eth0,x", "eth0", TAV_DIR_BOTH, "eth0"},
      {"eth0,", "eth0,", TAV_DIR_BOTH, "eth0,"},
      {"eth0,,in", "eth0", TAV_DIR_BOTH, "eth0"},
      {",in", "", TAV_DIR_IN, ",in"},
  };
  for (const auto& c : cases) {
    strList tokens{c.token, "next"};
    strIter cur = tokens.begin();
    const InterfaceInfo item(tokens, cur);
    EXPECT_TRUE(cur == tokens.begin());
    EXPECT_EQ(std::string(c.name) + "|" + c.dump, item.getName() + "|" + item.dump()) << c.token;
    EXPECT_EQ(c.direction, item.getDirection()) << c.token;
  }
}

InterfaceInfoList listOf(std::initializer_list<InterfaceInfo> items) {
  InterfaceInfoList list;
  for (const InterfaceInfo& item : items) list.push_back(item);
  return list;
}

TEST(InterfaceInfoListTest, OrderByNameThenDirectionAndEqualityIgnoringOrder) {
  EXPECT_TRUE(InterfaceInfo("B", TAV_DIR_OUT) < InterfaceInfo("a", TAV_DIR_IN));  // byte-wise names
  EXPECT_TRUE(InterfaceInfo("x", TAV_DIR_OUT) < InterfaceInfo("x", TAV_DIR_BOTH));
  EXPECT_FALSE(InterfaceInfo("x", TAV_DIR_IN) < InterfaceInfo("x", TAV_DIR_IN));
  const InterfaceInfo a("a", TAV_DIR_BOTH), b("b", TAV_DIR_BOTH), aIn("a", TAV_DIR_IN);
  EXPECT_TRUE(listOf({a, b}) == listOf({b, a}));
  EXPECT_FALSE(listOf({a, b}) == listOf({a, b, b}));
  EXPECT_FALSE(listOf({a}) == listOf({aIn}));
  // Items are not paired: only this list's items are looked up in the other.
  EXPECT_TRUE(listOf({a, a}) == listOf({a, b}));
  EXPECT_FALSE(listOf({a, b}) == listOf({a, a}));
}

TEST(InterfaceAtomFilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the "interface" keyword on | written text "|" tokens left
      {"interface eth0,in eth1", "-f interface   eth0,in  eth1 |"},
      {"interface NOT eth0,out -k", "-f interface not  eth0,out |-k"},
      {"interface Not eth0", "-f interface   Not  eth0 |"},
      {"interface ] x", "-f interface  |] x"},
      {"interface -eth0 eth1", "-f interface  |-eth0 eth1"},
      {"interface [ a", "-f interface   [  a |"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<InterfaceAtomFilter>(c.first)) << c.first;
}

TEST(InterfaceAtomFilterTest, BuiltFromItemsAndCloned) {
  auto source = std::make_unique<InterfaceAtomFilter>(listOf({{"eth0", TAV_DIR_IN}, {"eth1", TAV_DIR_BOTH}}), true);
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  source.reset();
  EXPECT_EQ("-f interface not  eth0,in  eth1 ", cloned->dump());
  InterfaceAtomFilter single(InterfaceInfo("wan", TAV_DIR_OUT), false);
  std::string err = "untouched";
  EXPECT_TRUE(single.isValid(err));
  EXPECT_EQ("untouched", err);
}

}  // namespace
