// The network column catalogue, the hand-out of free columns by type, and the
// mapping of a peer's column list.
#include "lytFilterParser/vocab/ColumnCatalogue.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

using lytFilterParser::getNextOpenKovaCoulmn;

struct Row {
  std::string name;
  int type;
  int flag;
};

TEST(ColumnCatalogue, NetworkRowsByIndexAndOutOfRangeIndexes) {
  std::vector<Row> rows = {
      {"time", 16, 1},          {"EntryName", 17, 1},       {"ConnectionID", 28, 0},
      {"bandwithBytes", 30, 0}, {"bandwithPackets", 30, 0}, {"concurrentConnection", 30, 0},
      {"connectionPerSecond", 30, 0}, {"LineUtilization", 30, 0}, {"diffFromUTC", 28, 0},
      {"messageID", 29, 0},
  };
  for (const auto& generic : std::vector<std::pair<std::string, int>>{{"VAL32_", 28}, {"VAL64_", 30}, {"STR_", 17}}) {
    for (int i = 1; i <= 6; ++i) rows.push_back({generic.first + std::to_string(i), generic.second, 0});
  }
  ASSERT_EQ(lytFilterParser::networkArraySize, 28);
  ASSERT_EQ(rows.size(), 28u);
  for (int i = 0; i < 28; ++i) {
    SCOPED_TRACE(i);
    EXPECT_STREQ(lytFilterParser::getKovaColumnName(i), rows[i].name.c_str());
    EXPECT_EQ(lytFilterParser::getKovaColumnType(i), rows[i].type);
    EXPECT_STREQ(lytFilterParser::networkColumnArray[i].name, rows[i].name.c_str());
    EXPECT_EQ(lytFilterParser::networkColumnArray[i].flag, rows[i].flag);
  }
  for (int index : {28, 29, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(lytFilterParser::getKovaColumnName(index), nullptr) << index;
    EXPECT_EQ(lytFilterParser::getKovaColumnType(index), 0) << index;
  }
}

std::vector<int> allocate(int type, int times) {
  std::vector<int> out;
  for (int i = 0; i < times; ++i) out.push_back(getNextOpenKovaCoulmn(QULET_VT(type)));
  return out;
}

TEST(ColumnAllocation, AfterResetHandsOutGenericColumnsInTurnPerType) {
  EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(0)), -1);
  EXPECT_EQ(allocate(28, 8), (std::vector<int>{10, 11, 12, 13, 14, 15, -1, -1}));
  EXPECT_EQ(allocate(30, 7), (std::vector<int>{16, 17, 18, 19, 20, 21, -1}));
  EXPECT_EQ(allocate(17, 7), (std::vector<int>{22, 23, 24, 25, 26, 27, -1}));
  // Rows before the generic ones are not reached after a reset; codes without
  // columns or beyond the table give -1.
  for (int type : {29, 16, 5, 39, 40, 1000, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(type)), -1) << type;
  }
  // A reset restarts every type.
  EXPECT_EQ(getNextOpenKovaCoulmn(QULET_VT(0)), -1);
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

std::vector<int> mapNames(const std::vector<const char*>& names) {
  std::vector<DravoColumnDefinition> columns;
  for (const char* name : names) columns.push_back(DravoColumnDefinition{name});
  return lytFilterParser::mapKovaColumn(columns.data(), static_cast<unsigned>(columns.size()));
}

TEST(MapKovaColumn, MapsNamesToCatalogueIndexes) {
  struct Case {
    std::vector<const char*> names;
    std::vector<int> indexes;
  };
  const std::vector<Case> cases = {
      {{"time", "bandwithBytes", "STR_2"}, {3, 23}},
      {{"VAL32_1", "EntryName", "VAL32_1"}, {10, 1, 10}},
      {{"time", "diffFromUTC", "messageID"}, {}},
      {{"bandwithBytes", "foo"}, {}},  // one unknown column voids the mapping
      {{"Time", "STR_1"}, {}},         // names are compared exactly
      {{}, {}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(mapNames(c.names), c.indexes) << ::testing::PrintToString(std::vector<std::string>(c.names.begin(), c.names.end()));
  }
  // Only `count` definitions are read.
  const DravoColumnDefinition columns[] = {{"STR_1"}, {"LineUtilization"}, {"foo"}};
  EXPECT_EQ(lytFilterParser::mapKovaColumn(columns, 2), (std::vector<int>{22, 7}));
  EXPECT_EQ(lytFilterParser::mapKovaColumn(columns, 0), std::vector<int>());
  EXPECT_EQ(lytFilterParser::mapKovaColumn(nullptr, 0), std::vector<int>());
}

}  // namespace
