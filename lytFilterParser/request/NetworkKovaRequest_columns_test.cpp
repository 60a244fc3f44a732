// Mapping of a network request's columns to the query interface's column
// catalogue: getKovaColumns, mapKovaColumn and isDynamic.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace {

std::unique_ptr<NetworkKovaRequest> readRequest(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return std::make_unique<NetworkKovaRequest>(tokens);
}

std::string mappingFault(const NetworkKovaRequest& request, int version) {
  try {
    if (version == -100) {
      request.getKovaColumns();
    } else {
      request.getKovaColumns(TavVersion(version));
    }
  } catch (const std::string& message) {
    return message;
  }
  return "<no fault>";
}

typedef std::vector<std::string> Numbers;

struct Mapping {
  const char* text;
  Numbers columns;  // 1-based catalogue positions
};

// After a reset: strings take rows 22.., 32-bit integers 10.., 64-bit integers 16...
const Mapping kMappings[] = {
    {"", {}},
    {"-k src -v wb", {"23", "17"}},
    {"-k src -k connId -v wb -v pkt", {"23", "11", "17", "18"}},
    {"-k svc -k dst -k orientation -k tunnelType -v ab -v conn -v session",
     {"23", "24", "11", "12", "17", "18", "19"}},
    {"-v wb -k ip", {"23", "17"}},
    {"-k src -k dst -k svc -k ip -k fwrule -k url -v wb -v ab -v pkt -v conn -v session -v wb",
     {"23", "24", "25", "26", "27", "28", "17", "18", "19", "20", "21", "22"}},
    {"-k connId -k orientation -k tunnelType -k connId -v wb",
     {"11", "12", "13", "14", "17"}},
};

TEST(NetworkKovaRequestColumns, CataloguePositionsOfKeysThenValues) {
  for (const Mapping& row : kMappings) {
    SCOPED_TRACE(row.text);
    auto request = readRequest(row.text);
    EXPECT_EQ(request->getKovaColumns(), row.columns);
    // Each call starts its own allocation.
    EXPECT_EQ(request->getKovaColumns(), row.columns);
    std::vector<int> numbers;
    for (const std::string& column : row.columns) numbers.push_back(std::stoi(column));
    EXPECT_EQ(request->getKovaColumns(TavVersion(3)), numbers);
  }
}

TEST(NetworkKovaRequestColumns, StartsFromAResetAllocation) {
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_STRING);
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_STRING);
  lytFilterParser::getNextOpenKovaCoulmn(QULET_VT_INT64);
  EXPECT_EQ(readRequest("-k src -v wb")->getKovaColumns(), (Numbers{"23", "17"}));
}

TEST(NetworkKovaRequestColumns, FailsWhenGenericColumnsRunOut) {
  const char* const tooMany[] = {
      "-k src -k dst -k svc -k ip -k fwrule -k qsrule -k url -v wb",
      "-k src -v wb -v ab -v pkt -v conn -v session -v wb -v ab",
      "-k connId -k connId -k connId -k connId -k connId -k orientation -k tunnelType -v wb",
  };
  for (const char* text : tooMany) {
    SCOPED_TRACE(text);
    auto request = readRequest(text);
    EXPECT_EQ(mappingFault(*request, -100), "failed to map kova columns");
    EXPECT_EQ(mappingFault(*request, 3), "failed to map kova columns");
  }
}

struct FixedSet {
  const char* text;
  std::vector<int> columns;
};

const FixedSet kFixedSets[] = {
    {"-k src -v pkt", {2, 5}},
    {"-k src -v pkt acc=rate -v wb acc=new", {2, 5}},
    {"-k src -v wb", {2, 4}},
    {"-k src -v conn", {2, 4}},
    {"-k src -v ab", {2, 4}},
    {"-k src -v conn acc=concurrent", {2, 6}},
    {"-k src -v wb acc=lineUtil", {2, 6}},
    {"-k src -v conn acc=new", {2, 7}},
    {"-k src -v session acc=new", {2, 7}},
    {"-k src -v wb acc=sum", {2}},
    {"-k src -v wb acc=replace", {2}},
    {"-k src -v wb acc=max", {2}},
};

TEST(NetworkKovaRequestColumns, FixedSetsForOlderPeers) {
  for (const FixedSet& row : kFixedSets) {
    SCOPED_TRACE(row.text);
    auto request = readRequest(row.text);
    EXPECT_EQ(request->getKovaColumns(TavVersion(1)), row.columns);
    EXPECT_EQ(request->getKovaColumns(TavVersion(2)), row.columns);
  }
}

TEST(NetworkKovaRequestColumns, OtherVersionsCannotBeMapped) {
  auto request = readRequest("-k src -v wb");
  for (int version : {0, 4, 5, -1}) {
    SCOPED_TRACE(version);
    EXPECT_EQ(mappingFault(*request, version), "failed to map kova columns");
  }
}

struct Reorder {
  const char* text;
  std::vector<int> given;  // 0-based catalogue rows
  bool mapped;
  std::vector<int> result;
};

const Reorder kReorders[] = {
    {"-k src -k connId -v wb -v pkt", {16, 22, 17, 10}, true, {22, 10, 16, 17}},
    {"-k src -k dst -v wb", {23, 22, 16}, true, {23, 22, 16}},
    {"-k src -k dst -v wb", {16, 23, 22}, true, {23, 22, 16}},
    {"-k src -v wb -v pkt", {3, 1, 5}, true, {1, 3, 5}},
    {"-k connId -k orientation -v wb", {2, 16, 11}, true, {2, 11, 16}},
    {"", {}, true, {}},
    // Wrong count, or no free position of a column's code.
    {"-k src -k connId -v wb -v pkt", {16, 22, 17}, false, {16, 22, 17}},
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
  EXPECT_TRUE(readRequest("")->isDynamic());
  EXPECT_TRUE(readRequest("-v wb")->isDynamic());
  EXPECT_TRUE(readRequest("-k src -k dst -v wb x")->isDynamic());
  EXPECT_TRUE(readRequest("-f src a -k src -v wb")->isDynamic());
  EXPECT_FALSE(readRequest("-k src a -v wb")->isDynamic());
  EXPECT_FALSE(readRequest("-k src -k dst d1 -v wb")->isDynamic());
}

TEST(NetworkKovaRequestColumns, ConcurrentMappingGivesEachThreadItsOwnResult) {
  const char* const texts[] = {
      "-k src -v wb",
      "-k src -k connId -v wb -v pkt",
      "-k svc -k dst -k orientation -k tunnelType -v ab -v conn -v session",
      "-k connId -k orientation -k tunnelType -k connId -v wb",
      "-k src -k dst -k svc -k ip -k fwrule -k url -v wb -v ab -v pkt -v conn -v session -v wb",
      "-k url -v session",
      "-k tunnel t1 -k tunnelType -v wb -v wb -v wb",
      "-k src -k dst -k svc -v pkt -v conn",
  };
  std::vector<std::unique_ptr<NetworkKovaRequest>> requests;
  std::vector<Numbers> alone;
  for (const char* text : texts) {
    requests.push_back(readRequest(text));
    alone.push_back(requests.back()->getKovaColumns());
  }
  std::vector<int> mismatches(requests.size(), 0);
  std::atomic<int> ready(0);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < requests.size(); ++i) {
    threads.emplace_back([&, i] {
      // Start together so that the calls overlap.
      ++ready;
      while (ready.load() < static_cast<int>(requests.size())) std::this_thread::yield();
      for (int round = 0; round < 2000; ++round) {
        if (requests[i]->getKovaColumns() != alone[i]) ++mismatches[i];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < requests.size(); ++i) {
    SCOPED_TRACE(texts[i]);
    EXPECT_EQ(mismatches[i], 0);
  }
}

}  // namespace
