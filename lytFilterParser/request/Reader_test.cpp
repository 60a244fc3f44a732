#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lytFilterParser/request/Record.h"
#include "tests/support/TestSupport.h"

namespace {

using lytFilterParser::WordKind;
using lytFilterParser::detail::Keep;
using lytFilterParser::detail::kindBit;
using lytFilterParser::detail::Reading;
using lytFilterParser::detail::readText;
using lytFilterParser::detail::WordKinds;

std::string names(WordKinds kinds) {
  std::string out;
  for (int k = 0; k < 32; ++k) {
    if ((kinds >> k & 1u) != 0) out += (out.empty() ? "" : ", ") + std::string(wordKindName(static_cast<WordKind>(k)));
  }
  return out;
}

// At a fault the reader records the kinds of word that the refusing rule
// takes there; none where a word is missing, or where no kind of word would do.
TEST(Reader, AFaultRecordsTheKindsOfWordItsRuleTakesThere) {
  struct Row {
    std::string text;
    std::vector<WordKind> kinds;
  };
  const Row rows[] = {
      {"-x", {WordKind::Option}},
      {"-k svc -q", {WordKind::Option}},
      {"-f and [ -f src a ] index=2", {WordKind::Option}},
      {"-k svc -v wb -s top indx=2", {WordKind::Option, WordKind::SortOption}},
      {"-s top index=2 -index=3", {WordKind::Option, WordKind::SortOption}},
      {"-s top -k svc -index=3", {WordKind::Option}},
      {"-f adn [ -f src a ]", {WordKind::ValueType, WordKind::FilterOperator}},
      {"-f or [ -f srcc a ]", {WordKind::ValueType, WordKind::FilterOperator}},
      {"-k srcc -v wb", {WordKind::ValueType}},
      {"-k svc -v wbb", {WordKind::ValueType}},
      {"-k svc -v wb acc=rates", {WordKind::AccumulationMode}},
      {"-k svc -v wb dir=up", {WordKind::ColumnOption}},
      {"-k svc -v wb url_mod=x", {WordKind::ColumnOption}},
      {"-k svc -v wb foo=1", {WordKind::ColumnOption}},
      {"-k svc -v wb -s topp", {WordKind::SortType}},
      {"vl x -t both", {WordKind::VirtualLink}},
      {"-k", {}},
      {"-k svc -v wb -s", {}},
      {"-f and [ -f src a -k svc", {}},
      {"-f and [ -f src a", {}},
      {"vl", {}},
      {"-k svc -v wb", {}},
  };
  for (const Row& row : rows) {
    WordKinds expected = 0;
    for (const WordKind kind : row.kinds) expected |= kindBit(kind);
    for (const Keep keep : {Keep::Request, Keep::RequestAndRecord, Keep::Record}) {
      const Reading reading = readText(row.text, true, keep);
      EXPECT_EQ(names(reading.record.expected), names(expected)) << row.text << " keeping " << int(keep);
    }
  }
}

}  // namespace
