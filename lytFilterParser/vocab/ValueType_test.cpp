// Value-type keywords and their query-interface codes.
#include "lytFilterParser/vocab/ValueType.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

namespace {

template <class F>
std::string thrownBy(F f) {
  try {
    f();
  } catch (const std::string& message) {
    return message;
  }
  ADD_FAILURE() << "nothing thrown";
  return "";
}

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

TEST(ValueType, KeywordsRoundTrip) {
  for (const TypeRow& row : kWrittenTypes) {
    SCOPED_TRACE(row.keyword);
    EXPECT_EQ(lytFilterParser::getValueType(row.keyword), row.type);
    EXPECT_EQ(lytFilterParser::dumpValueType(TavValType(row.type)), row.keyword);
  }
}

TEST(ValueType, KovaCodes) {
  for (const TypeRow& row : kWrittenTypes) {
    EXPECT_EQ(lytFilterParser::getKovaType(TavValType(row.type)), row.kovaCode) << row.keyword;
  }
  EXPECT_EQ(lytFilterParser::getKovaType(TAV_TELNUMBER), 17);
}

TEST(ValueType, TelNumberIsReadButNeverWritten) {
  EXPECT_EQ(lytFilterParser::getValueType("telNumber"), 8);
  EXPECT_EQ(thrownBy([] { lytFilterParser::dumpValueType(TavValType(8)); }), "Not a valid argument for type");
}

TEST(ValueType, DumpOutsideTheRangeThrows) {
  for (int type : {21, 22, 100, -1, INT_MIN, INT_MAX}) {
    EXPECT_EQ(thrownBy([type] { lytFilterParser::dumpValueType(TavValType(type)); }),
              "Not a valid argument for type")
        << type;
  }
}

TEST(ValueType, UnknownKeywordThrowsItBack) {
  for (const std::string keyword :
       {"Src", "SRC", "src ", " src", "", "tel", "telnumber", "interfaces", "tunnel-type", "connid", "acc=rate"}) {
    EXPECT_EQ(thrownBy([&keyword] { lytFilterParser::getValueType(keyword); }), "Invalid type: " + keyword);
  }
}

TEST(ValueType, KovaCodeOutsideTheRangeThrows) {
  for (int type : {21, 40, -1, INT_MIN}) {
    EXPECT_EQ(thrownBy([type] { lytFilterParser::getKovaType(TavValType(type)); }),
              "not a valid argument for getKovaType")
        << type;
  }
}

}  // namespace
