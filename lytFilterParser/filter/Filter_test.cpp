// The compound filter: grammar, text, validation and ownership. Depth is
// tested in request/Robustness_test.cpp.
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "tests/support/TestSupport.h"

namespace {

using namespace lfptest;

Filter parsedFilter(const std::string& text) { return parsed<Filter>(text); }

TEST(FilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the operator on | written text "|" tokens left
      {"and [ ]", " |"},
      {"AND -f src a", "-f src  a    |"},
      {"and -f src a ] x", "-f src  a    |] x"},
      {"and -f src a -f svc b", "-f and [ -f src  a   -f svc  b   ] |"},
      {"or [ -f and -f src a -f dst b ]", "-f and [ -f src  a   -f dst  b   ]   |"},
      {"OR [ -f src a -f interface not eth0,in ] -k svc", "-f or [ -f src  a   -f interface not  eth0,in  ] |-k svc"},
      {"or -f and [ -f src a -f dst b ] -f svc c", "-f or [ -f and [ -f src  a   -f dst  b   ]  -f svc  c   ] |"},
      {"", "<fault> Not a valid operator: "},
      {"Or -f src a", "<fault> Not a valid operator: Or"},
      {"and [ -f src a", "<fault> `]` expected"},
      {"and [ -f src a -k", "<fault> `]` expected instead of: -k"},
      {"and [ -f or [ -f src a ]", "<fault> `]` expected"},
      {"and -f -f src a", "<fault> Invalid type: -f"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<Filter>(c.first)) << c.first;
}

TEST(FilterTest, OperatorKeywords) {
  for (const char* word : {"and", "AND", "or", "OR"}) EXPECT_TRUE(Filter::isOperator(word)) << word;
  for (const char* word : {"And", "Or", "xor", ""}) EXPECT_FALSE(Filter::isOperator(word)) << word;
  Filter filter = parsedFilter("and -f src a -f dst b");
  filter.setOperator(static_cast<FilterOperator>(2));
  EXPECT_EQ("dumpOperator:  not valid operator", thrownMessage([&] { filter.dump(); }));
}

TEST(FilterTest, IsValidStopsAtTheFirstRefusedChild) {
  ContentFilter src(TAV_SRC, false, TavEntityArray()), wb(TAV_WB, false, TavEntityArray());
  ContentFilter tel(TAV_TELNUMBER, false, TavEntityArray());  // would throw if visited
  std::list<AbstractFilter*> children{&src, &wb, &tel};
  std::string err;
  EXPECT_FALSE(Filter(children, FILTER_OR).isValid(err));
  EXPECT_EQ("Invalid Filter Type: wb", err);
  EXPECT_FALSE(parsedFilter("and -f src a -f or -f pkt b").isValid(err));
  EXPECT_EQ("Invalid Filter Type: pkt", err);
}

TEST(FilterTest, CopiesAreDeep) {
  const std::string expected = "-f and [ -f or [ -f src  a   -f interface   eth0,out  ]  -f svc not c   ] ";
  auto source = std::make_unique<Filter>(parsedFilter("and -f or [ -f src a -f interface eth0,out ] -f svc not c"));
  Filter copied(*source);
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  Filter assigned = parsedFilter("or -f dst z");
  assigned = *source;
  // Children given to the list constructor are cloned and stay the caller's.
  std::list<AbstractFilter*> children{source.get()};
  const Filter wrapped(children, FILTER_OR);
  source.reset();
  EXPECT_EQ(expected, copied.dump());
  EXPECT_EQ(expected, cloned->dump());
  EXPECT_EQ(expected, assigned.dump());
  EXPECT_EQ(expected + "  ", wrapped.dump());
  // Assigning a filter to itself leaves it without children.
  Filter& same = assigned;
  assigned = same;
  EXPECT_EQ(" ", assigned.dump());
}

}  // namespace
