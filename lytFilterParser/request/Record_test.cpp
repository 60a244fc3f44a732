#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "lytFilterParser/request/Record.h"
#include "tests/support/TestSupport.h"
#include "tests/support/corpus.h"

namespace {

using lytFilterParser::Span;
using lytFilterParser::detail::Keep;
using lytFilterParser::detail::Part;
using lytFilterParser::detail::Reading;
using lytFilterParser::detail::readText;
using lytFilterParser::detail::Record;

std::string at(const Record& record, Span span) { return std::string(record.textOf(span)); }

// The word at `span`, "$" for the end, "WORD#2" for its second occurrence.
std::string wordAt(const std::string& text, Span span) {
  if (span.length == 0) return span.start == text.size() ? "$" : "@" + std::to_string(span.start);
  const std::string word = text.substr(span.start, span.length);
  int occurrence = 1;
  for (std::size_t i = text.find(word); i != std::string::npos && i < span.start; i = text.find(word, i + 1))
    ++occurrence;
  return word + (occurrence > 1 ? "#" + std::to_string(occurrence) : "");
}

// Every item the reader builds is recorded with the words it read it from.
TEST(Record, EveryItemStandsOnTheWordsItWasReadFrom) {
  const std::string text =
      "-f src a b -f or [ -f dst c -f interface not eth0,in ] -k svc -v wb acc=rate dir=in "
      "sort=top -v pkt h -s top index=2 updates=5";
  const Reading reading = readText(text, true, Keep::RequestAndRecord);
  ASSERT_TRUE(reading.request);
  const Record& record = reading.record;
  ASSERT_EQ(record.nodes.size(), 5u);          // the root, "src", "or", its "dst" and "interface"
  EXPECT_EQ(record.nodes[0].head.length, 0u);  // an atom list: an implied "and"
  EXPECT_EQ(at(record, record.nodes[0].whole), text.substr(0, text.find(" -k")));
  EXPECT_EQ(record.nodes[0].childCount, 2u);
  EXPECT_EQ(at(record, record.nodes[1].whole), "-f src a b");
  EXPECT_EQ(record.nodes[1].wordCount, 2u);
  EXPECT_EQ(at(record, record.nodes[2].whole), "-f or [ -f dst c -f interface not eth0,in ]");
  EXPECT_TRUE(record.nodes[2].compound);
  EXPECT_EQ(record.nodes[2].end, 5u);
  EXPECT_EQ(at(record, record.nodes[2].head), "or");  // a compound's head is its operator word
  EXPECT_EQ(at(record, record.nodes[3].head), "dst");
  EXPECT_EQ(record.nodes[3].negation.length, 0u);
  EXPECT_EQ(at(record, record.nodes[4].negation), "not");
  EXPECT_TRUE(record.nodes[4].interface);
  EXPECT_EQ(at(record, record.words[record.nodes[4].firstWord].span), "eth0,in");
  ASSERT_EQ(record.filterOptions.size(), 1u);  // the list reads the later "-f" itself
  EXPECT_EQ(at(record, record.filterOptions[0].whole), at(record, record.nodes[0].whole));
  ASSERT_EQ(record.keys.size(), 1u);
  EXPECT_EQ(at(record, record.keys[0].whole), "-k svc");
  ASSERT_EQ(record.values.size(), 2u);
  EXPECT_EQ(at(record, record.values[0].whole), "-v wb acc=rate dir=in sort=top");
  EXPECT_EQ(at(record, record.values[1].type), "pkt");
  const std::vector<Part> parts = {Part::Accumulation, Part::ColumnOption, Part::SortWord};
  for (std::size_t w = 0; w < parts.size(); ++w) EXPECT_EQ(record.words[record.values[0].firstWord + w].part, parts[w]);
  ASSERT_EQ(record.sorts.size(), 2u);  // the column's "sort=top", then "-s top"
  EXPECT_EQ(record.sorts[0].column, 0);
  EXPECT_EQ(at(record, record.sorts[1].option), "-s");
  EXPECT_EQ(record.sorts[1].wordCount, 2u);
  EXPECT_EQ(record.words[record.sorts[1].firstWord + 1].part, Part::Updates);
}

TEST(Record, AnOperatorOfTheRequestIsTheRootsHead) {
  const Reading reading = readText("-f or [ -f src a ] -k svc -f and -f dst b -v wb", true, Keep::RequestAndRecord);
  ASSERT_TRUE(reading.request);
  const Record& record = reading.record;
  ASSERT_EQ(record.filterOptions.size(), 2u);
  EXPECT_EQ(at(record, record.filterOptions[0].op), "or");
  EXPECT_EQ(at(record, record.filterOptions[0].whole), "-f or [ -f src a ]");
  EXPECT_EQ(at(record, record.nodes[0].head), "and");  // the operator read last
  EXPECT_EQ(at(record, record.nodes[0].whole), "-f or [ -f src a ] -k svc -f and -f dst b");
  EXPECT_EQ(record.nodes[0].childCount, 2u);
}

TEST(Record, AVirtualLinkRecordsItsNameAndDataTypes) {
  const Reading reading = readText("vl link1 x -t app -tw wire", true, Keep::RequestAndRecord);
  ASSERT_TRUE(reading.request);
  EXPECT_TRUE(reading.record.virtualLink);
  EXPECT_EQ(at(reading.record, reading.record.vlName), "link1");
  ASSERT_EQ(reading.record.dataTypes.size(), 2u);
  EXPECT_EQ(at(reading.record, reading.record.dataTypes[1].option), "-tw");
  EXPECT_EQ(at(reading.record, reading.record.dataTypes[1].type), "wire");
}

// A refusal stands on the word the message names, or at the end.
TEST(Record, AFaultStandsWhereTheReaderStopped) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"-k svc -v wb acc=rates", "acc=rates"},
      {"-f and [ -f src a", "$"},
      {"-k svc -x", "-x"},
      {"-f src a -k Svc -v wb", "Svc"},
      {"-f and [ -f src a ] ] -k svc", "]#2"},
  };
  for (const auto& [text, word] : rows) {
    const Reading reading = readText(text, true);
    EXPECT_FALSE(reading.request) << text;
    EXPECT_EQ(wordAt(text, reading.at), word) << text;
  }
}

std::ostream& operator<<(std::ostream& out, Span span) { return out << span.start << '+' << span.length << ' '; }

// Every field of a record, for comparing two.
std::string described(const Reading& reading) {
  std::ostringstream out;
  const Record& record = reading.record;
  out << reading.accepted << reading.fault << reading.at << record.expected << record.virtualLink << "\nnodes ";
  for (const auto& n : record.nodes) {
    out << n.whole << n.head << n.negation << n.compound << n.interface << n.firstWord << ' ' << n.wordCount << ' '
        << n.childCount << ' ' << n.end << "; ";
  }
  out << "\noptions ";
  for (const auto& o : record.filterOptions) out << o.option << o.op << o.whole << "; ";
  for (const auto* columns : {&record.keys, &record.values}) {
    out << "\ncolumns ";
    for (const auto& c : *columns) out << c.option << c.type << c.whole << c.firstWord << ' ' << c.wordCount << "; ";
  }
  out << "\nsorts ";
  for (const auto& o : record.sorts) out << o.option << o.type << o.column << ' ' << o.firstWord << ' ' << o.wordCount;
  out << "\nwords ";
  for (const auto& w : record.words)
    out << w.span << int(w.part) << ' ' << int(w.option) << ' ' << int(w.value) << "; ";
  out << "\nvl " << record.vlName;
  for (const auto& d : record.dataTypes) out << d.option << d.type << "; ";
  return out.str();
}

// Reading for the record alone (lint) builds no request, and takes and
// refuses the same texts with the same record as reading the request.
TEST(Record, TheRecordAloneIsTheRecordOfTheRequestsReading) {
  std::vector<std::string> texts = {
      "-f src a b -f or [ -f dst c -f interface not eth0,in eth1 ] -k svc x ] y -v wb acc=rate dir=in sort=top",
      "-f and [ -f src a -f or [ -f dst b ] -f interface ] -k src -v wb -s top index=2 updates=5",
      "-f src a -f dst b ] -f svc c -k svc -v wb",
      "-f src a <> -k src h1<>one h2 -v wb",
      "-f src a ] ] -k svc",
      "-f and [ -f src a",
      "-k svc -v wb acc=rates",
      "-k svc -v wb dir=up",
      "-f interface eth0 -k svc -s top indx=2",
      "vl link1 x -t app -tw wire",
      "vl x -t both",
      "",
  };
  for (const bench::TextCase& c : bench::buildCorpus()) texts.push_back(c.text);
  for (const std::string& text : texts) {
    const Reading alone = readText(text, true, Keep::Record);
    const Reading both = readText(text, true, Keep::RequestAndRecord);
    EXPECT_FALSE(alone.request) << text;
    EXPECT_EQ(alone.accepted, both.request != nullptr) << text;
    EXPECT_EQ(described(alone), described(both)) << text;
  }
}

// Reading without a record records nothing.
TEST(Record, WithoutARecordNothingIsKept) {
  const Reading reading = readText("-f src a -k svc -v wb", true);
  ASSERT_TRUE(reading.request);
  EXPECT_TRUE(reading.record.nodes.empty());
  EXPECT_TRUE(reading.record.words.empty());
  EXPECT_TRUE(reading.record.keys.empty());
}

}  // namespace
