// Mapping of a network request's columns to the query interface's column
// catalogue: getKovaColumns, mapKovaColumn and isDynamic.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

template <class T>
std::string joined(const std::vector<T>& positions) {
  std::ostringstream out;
  const char* separator = "";
  for (const T& position : positions) {
    out << separator << position;
    separator = " ";
  }
  return out.str();
}

// The catalogue positions for a peer of `version`, joined by blanks, or
// "<fault> " and the message. For version 3 the text and the number forms,
// each call starting its own allocation, must agree.
std::string columnsFor(const std::string& text, int version) {
  const auto request = readRequest(text);
  try {
    const std::string numbers = joined(request->getKovaColumns(TavVersion(version)));
    if (version != 3) return numbers;
    const std::string texts = joined(request->getKovaColumns());
    return texts == numbers ? texts : "<differs> " + texts + " | " + numbers;
  } catch (const std::string& message) {
    return "<fault> " + message;
  }
}

const char* const kFailed = "<fault> failed to map kova columns";

struct Mapping {
  const char* text;
  int version;
  const char* columns;
};

const Mapping kMappings[] = {
    // Keys, then values, 1-based; after a reset strings take rows 22..27,
    // 32-bit integers 10..15, 64-bit integers 16..21.
    {"", 3, ""},
    {"-k src -k connId -v wb -v pkt", 3, "23 11 17 18"},
    {"-k svc -k dst -k orientation -k tunnelType -v ab -v conn -v session", 3, "23 24 11 12 17 18 19"},
    {"-k src -k dst -k svc -k ip -k fwrule -k url -v wb -v ab -v pkt -v conn -v session -v wb", 3,
     "23 24 25 26 27 28 17 18 19 20 21 22"},
    {"-k connId -k orientation -k tunnelType -k connId -v wb", 3, "11 12 13 14 17"},
    {"-k tunnel t1 -k tunnelType -v wb -v wb -v wb", 3, "23 11 17 18 19"},
    {"-k src -k dst -k svc -k ip -k fwrule -k qsrule -k url -v wb", 3, kFailed},
    {"-k src -v wb -v ab -v pkt -v conn -v session -v wb -v ab", 3, kFailed},
    {"-k connId -k connId -k connId -k connId -k connId -k orientation -k tunnelType -v wb", 3, kFailed},
    // Older peers: fixed sets decided by the first value column.
    {"-k src -v pkt", 1, "2 5"},
    {"-k src -v pkt acc=rate -v wb acc=new", 2, "2 5"},
    {"-k src -v conn", 1, "2 4"},
    {"-k src -v conn acc=concurrent", 2, "2 6"},
    {"-k src -v wb acc=lineUtil", 1, "2 6"},
    {"-k src -v session acc=new", 2, "2 7"},
    {"-k src -v wb acc=sum", 1, "2"},
    {"-k src", 2, "2"},
    // Other versions cannot be mapped.
    {"-k src -v wb", 0, kFailed},
    {"-k src -v wb", 4, kFailed},
    {"-k src -v wb", -1, kFailed},
};

TEST(NetworkKovaRequestColumns, CataloguePositionsByPeerVersion) {
  for (const Mapping& row : kMappings) {
    EXPECT_EQ(columnsFor(row.text, row.version), row.columns) << row.text << " @" << row.version;
  }
  // An earlier allocation does not carry over.
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_STRING);
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_INT64);
  EXPECT_EQ(readRequest("-k src -v wb")->getKovaColumns(), (std::vector<std::string>{"23", "17"}));
}

struct Reorder {
  const char* text;
  std::vector<int> given;  // 0-based catalogue rows
  bool mapped;
  std::vector<int> result;
};

const Reorder kReorders[] = {
    {"-k src -k connId -v wb -v pkt", {16, 22, 17, 10}, true, {22, 10, 16, 17}},
    {"-k src -k dst -v wb", {16, 23, 22}, true, {23, 22, 16}},
    {"-k src -v wb -v pkt", {3, 1, 5}, true, {1, 3, 5}},
    {"-k connId -k orientation -v wb", {2, 16, 11}, true, {2, 11, 16}},
    {"", {}, true, {}},
    // Wrong count, or no free position of a column's code.
    {"-k src -v wb", {16, 22, 17}, false, {16, 22, 17}},
    {"-k src -v wb", {16, 10}, false, {16, 10}},
    {"-k src -k dst", {22, 16}, false, {22, 16}},
    {"-k src -v wb", {22, 99}, false, {22, 99}},
};

TEST(NetworkKovaRequestColumns, ReordersGivenPositionsIntoColumnOrder) {
  for (const Reorder& row : kReorders) {
    SCOPED_TRACE(row.text);
    std::vector<int> positions = row.given;
    EXPECT_EQ(readRequest(row.text)->mapKovaColumn(positions), row.mapped);
    EXPECT_EQ(positions, row.result);
  }
}

TEST(NetworkKovaRequestColumns, IsDynamicWhenNoKeyHasEntities) {
  for (const char* text : {"", "-k src -k dst -v wb x", "-f src a -k src -v wb"}) {
    EXPECT_TRUE(readRequest(text)->isDynamic()) << text;
  }
  EXPECT_FALSE(readRequest("-k src a -v wb")->isDynamic());
  EXPECT_FALSE(readRequest("-k src -k dst d1 -v wb")->isDynamic());
}

TEST(NetworkKovaRequestColumns, ConcurrentMappingGivesEachThreadItsOwnResult) {
  const std::size_t count = 6;  // the first rows of kMappings
  std::vector<int> mismatches(count, 0);
  std::atomic<std::size_t> ready(0);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      const auto request = readRequest(kMappings[i].text);
      // Start together so that the calls overlap.
      ++ready;
      while (ready.load() < count) std::this_thread::yield();
      for (int round = 0; round < 2000; ++round) {
        if (joined(request->getKovaColumns()) != kMappings[i].columns) ++mismatches[i];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < count; ++i) EXPECT_EQ(mismatches[i], 0) << kMappings[i].text;
}

}  // namespace
