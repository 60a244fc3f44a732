// Value-type keywords: what is refused, and the one keyword that is read but
// never written.
#include "lytFilterParser/vocab/ValueType.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lytFilterParser;
using lfptest::thrownMessage;

TEST(ValueType, TelNumberIsReadButNeverWritten) {
  EXPECT_EQ(getValueType("telNumber"), TAV_TELNUMBER);
  EXPECT_EQ(getKovaType(TAV_TELNUMBER), QULET_VT_STRING);
  EXPECT_EQ(thrownMessage([] { dumpValueType(TAV_TELNUMBER); }), "Not a valid argument for type");
}

TEST(ValueType, OutOfRangeCodesAndUnknownKeywordsThrow) {
  for (int type : {21, -1, INT_MIN}) {
    EXPECT_EQ(thrownMessage([type] { dumpValueType(TavValType(type)); }), "Not a valid argument for type") << type;
    EXPECT_EQ(thrownMessage([type] { getKovaType(TavValType(type)); }), "not a valid argument for getKovaType") << type;
  }
  for (const std::string keyword : {"Src", "src ", "", "telnumber"}) {
    EXPECT_EQ(thrownMessage([&keyword] { getValueType(keyword); }), "Invalid type: " + keyword);
  }
}

}  // namespace
