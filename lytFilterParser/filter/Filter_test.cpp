// The compound filter: grammar, text, validation, module names, ownership
// and the nesting limit.
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "lytFilterParser/detail/TestSupport.h"

namespace {

using namespace lfptest;

Filter parsedFilter(const std::string& text) { return parsed<Filter>(text); }

TEST(FilterTest, ReadsAndWritesWithEveryBlank) {
  const std::pair<const char*, const char*> cases[] = {
      // tokens from the operator on | written text "|" tokens left
      {"and [ ]", " |"},
      {"and -k svc", " |-k svc"},
      {"AND -f src a", "-f src  a    |"},
      {"and -f src a ] x", "-f src  a    |] x"},
      {"and -f src a -f svc b", "-f and [ -f src  a   -f svc  b   ] |"},
      {"or [ -f and -f src a -f dst b ]", "-f and [ -f src  a   -f dst  b   ]   |"},
      {"OR [ -f src a -f interface eth0 ] -k svc", "-f or [ -f src  a   -f interface   eth0  ] |-k svc"},
      {"or -f and [ -f src a -f dst b ] -f svc c", "-f or [ -f and [ -f src  a   -f dst  b   ]  -f svc  c   ] |"},
      {"and [ -f or [ ] ]", "   |"},
      {"and [ -f src not a -f interface not eth0,in ] -v wb",
       "-f and [ -f src not a   -f interface not  eth0,in  ] |-v wb"},
      {"", "<fault> Not a valid operator: "},
      {"Or -f src a", "<fault> Not a valid operator: Or"},
      {"[ -f src a ]", "<fault> Not a valid operator: ["},
      {"and [ -f src a", "<fault> `]` expected"},
      {"and [ -f src a -k", "<fault> `]` expected instead of: -k"},
      {"and [ x ]", "<fault> `]` expected instead of: x"},
      {"and [ -f or [ -f src a ]", "<fault> `]` expected"},
      {"and -f", "<fault> Expected type at this point but there is no data"},
      {"and -f -f src a", "<fault> Invalid type: -f"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, readWrite<Filter>(c.first)) << c.first;
  EXPECT_EQ(0, parsedFilter("and -f src a").getIsAtom());
}

TEST(FilterTest, OperatorKeywords) {
  for (const char* word : {"and", "AND", "or", "OR"}) EXPECT_TRUE(Filter::isOperator(word)) << word;
  for (const char* word : {"And", "Or", "xor", "", "-f", "[", "and "}) EXPECT_FALSE(Filter::isOperator(word)) << word;

  Filter filter = parsedFilter("and -f src a -f dst b");
  filter.setOperator(static_cast<FilterOperator>(2));
  EXPECT_EQ("dumpOperator:  not valid operator", thrownMessage([&] { filter.dump(); }));
}

TEST(FilterTest, IsValidStopsAtTheFirstRefusedChild) {
  ContentFilter src(TAV_SRC, false, TavEntityArray());
  ContentFilter wb(TAV_WB, false, TavEntityArray());
  ContentFilter tel(TAV_TELNUMBER, false, TavEntityArray());  // would throw if visited
  std::list<AbstractFilter*> children{&src, &wb, &tel};
  Filter filter(children, FILTER_OR);
  std::string err = "untouched";
  EXPECT_FALSE(filter.isValid(err));
  EXPECT_EQ("Invalid Filter Type: wb", err);

  err = "untouched";
  EXPECT_TRUE(parsedFilter("and -f src a -f or -f svc b -f interface eth0").isValid(err));
  EXPECT_EQ("untouched", err);
  EXPECT_FALSE(parsedFilter("and -f src a -f or -f pkt b").isValid(err));
  EXPECT_EQ("Invalid Filter Type: pkt", err);
}

TEST(FilterTest, ModuleNamesWalkTheTreeInOrder) {
  Filter filter = parsedFilter(
      "and -f src a -f svc b -f or [ -f dst c -f interface eth0 ] -f tunnel t -f ip d -f fwrule r");
  strList names;
  filter.getModuleNames(names);
  EXPECT_EQ(strList({"a", "c", "t", "d"}), names);

  strList newNames{"A", "C", "T", "D", "unused"};
  strIter oldCur = names.begin(), newCur = newNames.begin();
  EXPECT_TRUE(filter.setModuleNames(oldCur, newCur));
  EXPECT_TRUE(oldCur == names.end());
  EXPECT_EQ("unused", *newCur);
  EXPECT_EQ(
      "-f and [ -f src  a<>A   -f svc  b   -f or [ -f dst  c<>C   -f interface   eth0  ]  "
      "-f tunnel  t<>T   -f ip  d<>D   -f fwrule  r   ] ",
      filter.dump());

  // A mismatch throws the expected old name; what was set stays set.
  filter = parsedFilter("and -f src a -f dst c");
  strList oldNames{"a", "wrong"};
  oldCur = oldNames.begin();
  newCur = newNames.begin();
  EXPECT_EQ("wrong", thrownMessage([&] { filter.setModuleNames(oldCur, newCur); }));
  EXPECT_EQ("-f and [ -f src  a<>A   -f dst  c   ] ", filter.dump());
}

TEST(FilterTest, ChildrenGivenToTheConstructorStayWithTheCaller) {
  auto atom = std::make_unique<ContentFilter>(TAV_SRC, false, TavEntityArray());
  Filter inner = parsedFilter("or -f dst x -f dst y");
  std::list<AbstractFilter*> children{atom.get(), &inner};
  Filter filter(children, FILTER_AND);
  atom.reset();
  inner.deleteFilterList();
  EXPECT_EQ(2u, filter.getChildren().size());
  EXPECT_EQ("-f and [ -f src    -f or [ -f dst  x   -f dst  y   ]  ] ", filter.dump());
}

TEST(FilterTest, CopiesAreDeep) {
  const std::string text = "or -f and [ -f src a -f interface eth0,out ] -f svc c";
  auto source = std::make_unique<Filter>(parsedFilter(text));
  const std::string expected = source->dump();
  Filter copied(*source);
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  Filter assigned = parsedFilter("and -f dst z");
  assigned = *source;
  EXPECT_NE(source->getChildren()[0].get(), copied.getChildren()[0].get());
  source.reset();
  EXPECT_EQ(expected, copied.dump());
  EXPECT_EQ(expected, cloned->dump());
  EXPECT_EQ(expected, assigned.dump());
  EXPECT_EQ(FILTER_OR, assigned.getOperator());
}

TEST(FilterTest, SelfAssignmentLeavesNoChildren) {
  Filter filter = parsedFilter("or -f src a -f dst b");
  Filter& same = filter;
  filter = same;
  EXPECT_TRUE(filter.getChildren().empty());
  EXPECT_EQ(FILTER_OR, filter.getOperator());
  EXPECT_EQ(" ", filter.dump());
}

TEST(FilterTest, FaultInANestedChildLeavesNothingBehind) {
  // Run under LeakSanitizer: the two atoms and the inner filter built before
  // the fault must be freed.
  strList tokens = tokensOf("and [ -f src a -f or [ -f dst b -f bogus c ] ]");
  strIter cur = tokens.begin();
  EXPECT_EQ("Invalid type: bogus", thrownMessage([&] { Filter filter(tokens, cur); }));
  EXPECT_EQ("bogus", *cur);
}

std::string nestedText(int levels, bool bracketed) {
  std::string text = "and";
  for (int i = 0; i < levels; ++i) text += bracketed ? " [ -f and" : " -f and";
  text += bracketed ? " [ -f src a ]" : " -f src a";
  if (bracketed) {
    for (int i = 0; i < levels; ++i) text += " ]";
  }
  return text;
}

TEST(FilterTest, NestingWorksAtTheLimitAndIsRefusedBeyondIt) {
  const std::string limit = std::to_string(Filter::maxNestingDepth);
  for (bool bracketed : {false, true}) {
    SCOPED_TRACE(bracketed);
    EXPECT_EQ("<fault> Filter nesting is deeper than the limit of " + limit + " levels",
              readWrite<Filter>(nestedText(Filter::maxNestingDepth + 1, bracketed)));
    // Every level has one child: the atom's text and two blanks per level.
    const std::string expected = "-f src  a  " + std::string(2 * (Filter::maxNestingDepth + 1), ' ');
    EXPECT_EQ(expected + "|", readWrite<Filter>(nestedText(Filter::maxNestingDepth, bracketed)));
    auto filter = std::make_unique<Filter>(parsedFilter(nestedText(Filter::maxNestingDepth, bracketed)));
    Filter copied(*filter);
    std::unique_ptr<AbstractFilter> cloned(filter->clone());
    Filter assigned;
    assigned = *filter;
    filter.reset();
    EXPECT_EQ(expected, copied.dump());
    EXPECT_EQ(expected, cloned->dump());
    EXPECT_EQ(expected, assigned.dump());
    strList names;
    assigned.getModuleNames(names);
    EXPECT_EQ(strList{"a"}, names);
  }
}

}  // namespace
