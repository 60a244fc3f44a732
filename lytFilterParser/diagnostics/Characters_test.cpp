#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace {

using lytFilterParser::editDistance;
using lytFilterParser::invisibleAt;

TEST(Characters, EveryCharacterOfTheTableIsInvisibleAndItsNeighboursAreNot) {
  const std::vector<std::tuple<std::string, std::size_t, char32_t>> rows = {
      {"\t", 1, 0x09},
      {"\x7f", 1, 0x7F},
      {"\xc2\x80", 2, 0x80},
      {"\xc2\xa0", 2, 0xA0},
      {"\xc2\xad", 2, 0xAD},
      {"\xcd\x8f", 2, 0x34F},
      {"\xe1\x9a\x80", 3, 0x1680},
      {"\xe1\xa0\x8e", 3, 0x180E},
      {"\xe2\x80\x8b", 3, 0x200B},
      {"\xe2\x81\xa0", 3, 0x2060},
      {"\xe3\x80\x80", 3, 0x3000},
      {"\xef\xbb\xbf", 3, 0xFEFF},
      {"\xef\xbf\xb9", 3, 0xFFF9},
      {"\xf3\xa0\x80\x81", 4, 0xE0001},
      // visible: the blank, letters, the neighbours of ranges, broken UTF-8
      {" ", 0, 0},
      {"a", 0, 0},
      {"\xc2\xa1", 0, 0},
      {"\xe2\x80\x90", 0, 0},
      {"\xe2\x80", 0, 0},
      {"\xff", 0, 0},
      {"\xc3\xa9", 0, 0},
  };
  for (const auto& [text, length, codePoint] : rows) {
    const lytFilterParser::InvisibleCharacter found = invisibleAt(text, 0);
    EXPECT_EQ(found.length, length) << text;
    EXPECT_EQ(found.codePoint, codePoint) << text;
  }
  EXPECT_EQ(invisibleAt("ab", 2).length, 0u);
  char32_t previous = 0;
  for (const lytFilterParser::CodePointRange& range : lytFilterParser::invisibleCharacters()) {
    EXPECT_LE(range.first, range.last);
    EXPECT_TRUE(previous == 0 || range.first > previous + 1);  // ascending, apart
    previous = range.last;
  }
}

TEST(Characters, EditDistanceCountsUpToItsLimit) {
  const std::vector<std::tuple<std::string, std::string, std::size_t, std::size_t>> rows = {
      {"src", "src", 2, 0}, {"srcip", "src", 2, 2}, {"Src", "src", 2, 1},        {"acc=rates", "acc=rate", 2, 1},
      {"abc", "xyz", 2, 3}, {"", "abcd", 2, 3},     {"kitten", "sitting", 3, 3}, {"ab", "ba", 2, 2},
  };
  for (const auto& [a, b, limit, distance] : rows) EXPECT_EQ(editDistance(a, b, limit), distance) << a << " " << b;
}

}  // namespace
