// Mapping of a network request's columns to the query interface's column
// catalogue: getKovaColumns, mapKovaColumn and isDynamic.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

std::string joined(const std::vector<int>& positions) {
  std::string out;
  for (int position : positions) out += (out.empty() ? "" : " ") + std::to_string(position);
  return out;
}

// The catalogue positions for a peer of `version`, or "<fault> " and the message.
std::string columnsFor(const std::string& text, int version) {
  try {
    return joined(readRequest(text)->getKovaColumns(TavVersion(version)));
  } catch (const std::string& message) {
    return "<fault> " + message;
  }
}

const char* const kFailed = "<fault> failed to map kova columns";

TEST(NetworkKovaRequestColumns, CataloguePositionsByPeerVersion) {
  const struct {
    const char* text;
    int version;
    const char* columns;
  } cases[] = {
      // Keys, then values, 1-based; after a reset strings take rows 22..27,
      // 32-bit integers 10..15, 64-bit integers 16..21.
      {"-k src -k connId -v wb -v pkt", 3, "23 11 17 18"},
      {"-k svc -k dst -k orientation -k tunnelType -v ab -v conn -v session", 3, "23 24 11 12 17 18 19"},
      {"-k src -k dst -k svc -k ip -k fwrule -k url -v wb -v ab -v pkt -v conn -v session -v wb", 3,
       "23 24 25 26 27 28 17 18 19 20 21 22"},
      {"-k src -k dst -k svc -k ip -k fwrule -k qsrule -k url -v wb", 3, kFailed},
      {"-k connId -k connId -k connId -k connId -k connId -k orientation -k tunnelType -v wb", 3, kFailed},
      // Older peers: fixed sets decided by the first value column; other versions fail.
      {"-k src -v pkt", 1, "2 5"},
      {"-k src -v conn", 1, "2 4"},
      {"-k src -v conn acc=concurrent", 2, "2 6"},
      {"-k src -v wb acc=lineUtil", 1, "2 6"},
      {"-k src -v session acc=new", 2, "2 7"},
      {"-k src -v wb acc=sum", 1, "2"},
      {"-k src -v wb", 0, kFailed},
      {"-k src -v wb", 4, kFailed},
  };
  for (const auto& c : cases) EXPECT_EQ(columnsFor(c.text, c.version), c.columns) << c.text << " @" << c.version;
  // The text form gives the same positions; an earlier allocation does not carry over.
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_STRING);
  EXPECT_EQ(readRequest("-k src -v wb")->getKovaColumns(), (std::vector<std::string>{"23", "17"}));
}

TEST(NetworkKovaRequestColumns, ReordersGivenPositionsIntoColumnOrder) {
  const struct {
    const char* text;
    std::vector<int> given;  // 0-based catalogue rows
    bool mapped;
    std::vector<int> result;
  } cases[] = {
      {"-k src -k connId -v wb -v pkt", {16, 22, 17, 10}, true, {22, 10, 16, 17}},
      {"-k src -k dst -v wb", {16, 23, 22}, true, {23, 22, 16}},
      // Wrong count, or no free position of a column's code.
      {"-k src -v wb", {16, 22, 17}, false, {16, 22, 17}},
      {"-k src -k dst", {22, 16}, false, {22, 16}},
  };
  for (const auto& c : cases) {
    std::vector<int> positions = c.given;
    EXPECT_EQ(readRequest(c.text)->mapKovaColumn(positions), c.mapped) << c.text;
    EXPECT_EQ(positions, c.result) << c.text;
  }
}

TEST(NetworkKovaRequestColumns, IsDynamicWhenNoKeyHasEntities) {
  for (const char* text : {"", "-k src -k dst -v wb x", "-f src a -k src -v wb"}) {
    EXPECT_TRUE(readRequest(text)->isDynamic()) << text;
  }
  EXPECT_FALSE(readRequest("-k src -k dst d1 -v wb")->isDynamic());
}

}  // namespace
