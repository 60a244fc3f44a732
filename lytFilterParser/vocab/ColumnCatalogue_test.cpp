// The hand-out of free catalogue columns by type, lookups outside the
// catalogue, and the mapping of a peer's column list.
#include "lytFilterParser/vocab/ColumnCatalogue.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using lytFilterParser::getNextOpenKovaCoulmn;

std::vector<int> allocate(int type, int times) {
  std::vector<int> out;
  for (int i = 0; i < times; ++i) out.push_back(getNextOpenKovaCoulmn(QULET_VT(type)));
  return out;
}

TEST(ColumnAllocation, AfterResetHandsOutGenericColumnsInTurnPerType) {
  EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(0)), -1);
  EXPECT_EQ(allocate(28, 7), (std::vector<int>{10, 11, 12, 13, 14, 15, -1}));
  EXPECT_EQ(allocate(17, 7), (std::vector<int>{22, 23, 24, 25, 26, 27, -1}));
  // Rows before the generic ones are not reached after a reset; codes
  // without columns or beyond the table give -1.
  for (int type : {29, 16, 40, -1}) EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(type)), -1) << type;
  EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(0)), -1);  // a reset restarts every type
  EXPECT_EQ(allocate(17, 1), std::vector<int>{22});
}

// The calls of the no-reset test, written to standard error for its parent.
[[noreturn]] void reportSequenceWithoutReset() {
  std::string seen = "sequence:";
  for (int type : {17, 17, 28, 28, 28, 29, 29, 16, 16, 30}) {
    seen += ' ' + std::to_string(getNextOpenKovaCoulmn(QULET_VT(type)));
  }
  std::fprintf(stderr, "%s;\n", seen.c_str());
  std::exit(0);
}

// Without a reset the scan starts at row 0. The allocation state is
// process-wide, so this runs in a freshly started copy of the test program.
TEST(ColumnAllocationDeathTest, WithoutResetScanStartsAtTheFirstRow) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(reportSequenceWithoutReset(), ::testing::ExitedWithCode(0), "sequence: 1 22 2 8 10 9 -1 0 -1 3;");
}

TEST(ColumnCatalogue, LookupsOutsideTheCatalogue) {
  for (int index : {28, -1, INT_MIN}) {
    EXPECT_EQ(lytFilterParser::getKovaColumnName(index), nullptr) << index;
    EXPECT_EQ(lytFilterParser::getKovaColumnType(index), 0) << index;
  }
}

TEST(MapKovaColumn, MapsNamesToCatalogueIndexes) {
  const std::pair<std::vector<const char*>, std::vector<int>> cases[] = {
      {{"time", "bandwithBytes", "STR_2", "VAL32_1", "EntryName", "VAL32_1"}, {3, 23, 10, 1, 10}},
      {{"time", "diffFromUTC", "messageID"}, {}},
      {{"bandwithBytes", "foo"}, {}},  // one unknown column voids the mapping
      {{"Time", "STR_1"}, {}},         // names are compared exactly
  };
  for (const auto& c : cases) {
    std::vector<DravoColumnDefinition> columns;
    for (const char* name : c.first) columns.push_back(DravoColumnDefinition{name});
    EXPECT_EQ(lytFilterParser::mapKovaColumn(columns.data(), static_cast<unsigned>(columns.size())), c.second)
        << ::testing::PrintToString(std::vector<std::string>(c.first.begin(), c.first.end()));
  }
  // Only `count` definitions are read.
  const DravoColumnDefinition columns[] = {{"STR_1"}, {"LineUtilization"}, {"foo"}};
  EXPECT_EQ(lytFilterParser::mapKovaColumn(columns, 2), (std::vector<int>{22, 7}));
  EXPECT_EQ(lytFilterParser::mapKovaColumn(nullptr, 0), std::vector<int>());
}

}  // namespace
