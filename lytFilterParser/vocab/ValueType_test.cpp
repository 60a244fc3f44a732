// Value-type keywords and their query-interface codes.
#include "lytFilterParser/vocab/ValueType.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using lfptest::thrownMessage;

struct TypeRow {
  const char* keyword;
  int type;
  int kovaCode;
};

// telNumber (8) is left out: it is read but never written.
const std::vector<TypeRow> kWrittenTypes = {
    {"svc", 0, 17},      {"src", 1, 17},     {"dst", 2, 17},          {"ip", 3, 17},
    {"fwrule", 4, 17},   {"qsrule", 5, 17},  {"connId", 6, 28},       {"url", 7, 17},
    {"interface", 9, 17}, {"orientation", 10, 28}, {"ab", 11, 30},    {"wb", 12, 30},
    {"pkt", 13, 30},     {"conn", 14, 30},   {"session", 15, 30},     {"pktRange", 16, 17},
    {"tunnel", 17, 17},  {"tunnelType", 18, 28}, {"citrix", 19, 17}, {"wdAttack", 20, 17},
};

TEST(ValueType, KeywordsRoundTripWithTheirKovaCodes) {
  for (const TypeRow& row : kWrittenTypes) {
    SCOPED_TRACE(row.keyword);
    EXPECT_EQ(lytFilterParser::getValueType(row.keyword), row.type);
    EXPECT_EQ(lytFilterParser::dumpValueType(TavValType(row.type)), row.keyword);
    EXPECT_EQ(lytFilterParser::getKovaType(TavValType(row.type)), row.kovaCode);
  }
}

TEST(ValueType, TelNumberIsReadButNeverWritten) {
  EXPECT_EQ(lytFilterParser::getValueType("telNumber"), 8);
  EXPECT_EQ(lytFilterParser::getKovaType(TAV_TELNUMBER), 17);
  EXPECT_EQ(thrownMessage([] { lytFilterParser::dumpValueType(TavValType(8)); }), "Not a valid argument for type");
}

TEST(ValueType, OutOfRangeCodesAndUnknownKeywordsThrow) {
  for (int type : {21, -1, INT_MIN, INT_MAX}) {
    SCOPED_TRACE(type);
    EXPECT_EQ(thrownMessage([type] { lytFilterParser::dumpValueType(TavValType(type)); }),
              "Not a valid argument for type");
    EXPECT_EQ(thrownMessage([type] { lytFilterParser::getKovaType(TavValType(type)); }),
              "not a valid argument for getKovaType");
  }
  for (const std::string keyword : {"Src", "src ", " src", "", "telnumber", "interfaces", "acc=rate"}) {
    EXPECT_EQ(thrownMessage([&keyword] { lytFilterParser::getValueType(keyword); }), "Invalid type: " + keyword);
  }
}

}  // namespace
