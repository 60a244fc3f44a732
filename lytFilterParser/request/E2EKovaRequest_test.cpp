// The end-to-end (virtual link) request: "vl NAME [-t wire|application]".
#include "lytFilterParser/request/E2EKovaRequest.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using lfptest::thrownMessage;

// Builds the request from the text that follows "vl".
E2EKovaRequest fromText(const std::string& text) {
  strList tokens = lfptest::tokensOf(text);
  return E2EKovaRequest(tokens);
}

TEST(E2EKovaRequest, ReadsNameAndDataType) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      // what follows "vl" | the written request
      {"branch-link -t application", "vl branch-link -t application"},
      {"branch-link", "vl branch-link -t wire"},
      {"l -t apps", "vl l -t application"},  // only the first letter counts
      {"l -t w", "vl l -t wire"},
      {"l x-t application", "vl l -t application"},  // "-t" anywhere in a token
      {"l -type app", "vl l -t application"},
      {"l -x 42 [ y ]", "vl l -t wire"},  // other tokens are ignored
      {"l -T application", "vl l -t wire"},
      {"l t- application", "vl l -t wire"},             // "-" as last character
      {"l a-b-t application", "vl l -t wire"},          // only the first "-" is looked at
      {"l -t application -t wire", "vl l -t wire"},     // the last one wins
      {"l -t a-tx", "vl l -t application"},             // the argument is skipped, not reread
      {"-t application", "vl -t -t wire"},              // the first token is the name, whatever it is
  };
  for (const auto& c : cases) EXPECT_EQ(fromText(c.first).dump(), c.second) << "vl " << c.first;
  const E2EKovaRequest request = fromText("my-link -t app");
  EXPECT_EQ(request.getVLName(), "my-link");
  EXPECT_EQ(request.dumpVLName(), "my-link");
  EXPECT_EQ(request.getDataType(), E2E_DATA_APPLICATION);
}

TEST(E2EKovaRequest, FaultsAreThrownWordForWord) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "No virtual link name after vl"},
      {"l -t", "No data after direction argument"},
      {"l -t x", "Not a valid argument for dataType"},
      {"l -t -t", "Not a valid argument for dataType"},
      {"l -t app -t", "No data after direction argument"},
  };
  for (const auto& c : cases) EXPECT_EQ(thrownMessage([&] { fromText(c.first); }), c.second) << "vl " << c.first;
}

TEST(E2EKovaRequest, ValueConstructorDataTypeKeywordsAndPeerVersions) {
  EXPECT_EQ(E2EKovaRequest("n", E2E_DATA_WIRE).dumpDataType(), "wire");
  EXPECT_EQ(E2EKovaRequest("n", E2E_DATA_APPLICATION).dumpDataType(), "application");
  const E2EKovaRequest other("my link", tLytpE2eDataType(7));
  EXPECT_EQ(other.getVLName(), "my link");
  EXPECT_EQ(other.getDataType(), 7);
  EXPECT_EQ(other.dumpDataType(), "");
  EXPECT_EQ(other.dump(), "vl my link -t ");  // no blank is added after an unknown type

  const E2EKovaRequest request("branch-link", E2E_DATA_APPLICATION);
  const LYTKovaRequest& base = request;
  EXPECT_EQ(base.dump(TavVersion(3)), "vl branch-link -t application");
  for (int version : {0, INT_MIN}) EXPECT_EQ(base.dump(TavVersion(version)), "4.1 and under is not supported");
  for (int version : {1, 2, 4, INT_MAX}) EXPECT_EQ(base.dump(TavVersion(version)), "") << version;
}

TEST(E2EKovaRequest, CarriesNoModuleNames) {
  E2EKovaRequest request = fromText("host1 -t app");
  EXPECT_TRUE(request.getModuleNames().empty());
  strList none, names = {"host1"}, resolved = {"10.0.0.1"};
  EXPECT_TRUE(request.setModuleNames(none, resolved));
  EXPECT_FALSE(request.setModuleNames(names, resolved));
}

struct Row {
  int index;
  const char* name;
  int type;
  int flag;
};

TEST(E2EKovaRequest, VirtualLinkColumnCatalogue) {
  const std::vector<Row> rows = {
      {0, "time", 16, 1},  {1, "A2BBandwithBytes", 30, 0},  {2, "A2BBandwithPackets", 30, 0},
      {3, "AfromBBandwithBytes", 30, 0},  {4, "AfromBBandwithPackets", 30, 0},  {5, "B2ABandwithBytes", 30, 0},
      {6, "B2ABandwithPackets", 30, 0},  {7, "BfromABandwithBytes", 30, 0},  {8, "BfromABandwithPackets", 30, 0},
      {9, "A2BBandwithLossPercent_Bytes", 28, 0},  {10, "B2ABandwithLossPercent_Bytes", 28, 0},
      {11, "A2BBandwithLossPercent_Packets", 28, 0},  {12, "B2ABandwithLossPercent_Packets", 28, 0},
      {13, "RoundTripTime", 28, 0},  {14, "diffFromUTC", 29, 0},
  };
  ASSERT_EQ(E2EKovaRequest::vlArraySize, 15);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.index);
    EXPECT_STREQ(E2EKovaRequest::vlColumnArray[row.index].name, row.name);
    EXPECT_EQ(E2EKovaRequest::vlColumnArray[row.index].type, row.type);
    EXPECT_EQ(E2EKovaRequest::vlColumnArray[row.index].flag, row.flag);
    EXPECT_EQ(E2EKovaRequest::getKovaColumnType(row.index), row.type);
  }
  for (int index : {15, 16, -1, INT_MIN, INT_MAX}) EXPECT_EQ(E2EKovaRequest::getKovaColumnType(index), 0) << index;
}

}  // namespace
