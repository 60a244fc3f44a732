// The compound filter: grammar, text, validation, module names, ownership
// and the nesting limit.
#include <gtest/gtest.h>

#include <chrono>
#include <list>
#include <memory>
#include <string>

#include "lytFilterParser/lytFilterParser.h"

namespace {

strList tokensOf(const std::string& text) {
  strList tokens;
  LYTKovaRequest::fillFilterList(tokens, text);
  return tokens;
}

std::string rest(const strList& tokens, strList::const_iterator cur) {
  std::string out;
  for (; cur != tokens.end(); ++cur) out += (out.empty() ? "" : " ") + *cur;
  return out;
}

template <class F>
std::string thrownMessage(F&& action) {
  try {
    action();
  } catch (const std::string& message) {
    return message;
  }
  ADD_FAILURE() << "no message was thrown";
  return "<nothing thrown>";
}

Filter parsed(const std::string& text) {
  strList tokens = tokensOf(text);
  strIter cur = tokens.begin();
  return Filter(tokens, cur);
}

TEST(FilterTest, ReadsAndWritesWithEveryBlank) {
  const struct {
    const char* tokens;  // from the operator on
    const char* dump;
    const char* left;
  } cases[] = {
      {"and [ ]", " ", ""},
      {"and", " ", ""},
      {"and -k svc", " ", "-k svc"},
      {"AND -f src a", "-f src  a    ", ""},
      {"and -f src a ] x", "-f src  a    ", "] x"},
      {"and -f src a -f svc b", "-f and [ -f src  a   -f svc  b   ] ", ""},
      {"or [ -f and -f src a -f dst b ]", "-f and [ -f src  a   -f dst  b   ]   ", ""},
      {"OR [ -f src a -f interface eth0 ] -k svc", "-f or [ -f src  a   -f interface   eth0  ] ", "-k svc"},
      {"or -f and [ -f src a -f dst b ] -f svc c",
       "-f or [ -f and [ -f src  a   -f dst  b   ]  -f svc  c   ] ", ""},
      {"and [ -f or [ ] ]", "   ", ""},
      {"and [ -f src not a -f interface not eth0,in ] -v wb",
       "-f and [ -f src not a   -f interface not  eth0,in  ] ", "-v wb"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tokens);
    strList tokens = tokensOf(c.tokens);
    strIter cur = tokens.begin();
    Filter filter(tokens, cur);
    EXPECT_EQ(c.dump, filter.dump());
    EXPECT_EQ(c.left, rest(tokens, cur));
    EXPECT_EQ(0, filter.getIsAtom());
  }
}

TEST(FilterTest, ReadFaults) {
  const std::pair<const char*, const char*> cases[] = {
      {"xor", "Not a valid operator: xor"},
      {"", "Not a valid operator: "},
      {"Or -f src a", "Not a valid operator: Or"},
      {"[ -f src a ]", "Not a valid operator: ["},
      {"and [ -f src a", "`]` expected"},
      {"and [ -f src a -k", "`]` expected instead of: -k"},
      {"and [ x ]", "`]` expected instead of: x"},
      {"and [ -f or [ -f src a ]", "`]` expected"},
      {"and [ -f and [ -f src a ] -s top", "`]` expected instead of: -s"},
      {"and [ -f", "Expected type at this point but there is no data"},
      {"and -f", "Expected type at this point but there is no data"},
      {"and -f Interface eth0", "Invalid type: Interface"},
      {"and -f -f src a", "Invalid type: -f"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.first);
    strList tokens = tokensOf(c.first);
    strIter cur = tokens.begin();
    EXPECT_EQ(c.second, thrownMessage([&] { Filter filter(tokens, cur); }));
  }
}

TEST(FilterTest, OperatorKeywords) {
  for (const char* word : {"and", "AND", "or", "OR"}) EXPECT_TRUE(Filter::isOperator(word)) << word;
  for (const char* word : {"And", "Or", "xor", "", "-f", "[", "and "}) EXPECT_FALSE(Filter::isOperator(word)) << word;

  Filter filter = parsed("and -f src a -f dst b");
  strList empty;
  strIter end = empty.end();
  EXPECT_EQ("Not a valid operator: ", thrownMessage([&] { filter.parseOperator(empty, end); }));
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
  EXPECT_TRUE(parsed("and -f src a -f or -f svc b -f interface eth0").isValid(err));
  EXPECT_TRUE(Filter().isValid(err));
  EXPECT_EQ("untouched", err);
  EXPECT_FALSE(parsed("and -f src a -f or -f pkt b").isValid(err));
  EXPECT_EQ("Invalid Filter Type: pkt", err);
}

TEST(FilterTest, ModuleNamesWalkTheTreeInOrder) {
  Filter filter = parsed(
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
  filter = parsed("and -f src a -f dst c");
  strList oldNames{"a", "wrong"};
  oldCur = oldNames.begin();
  newCur = newNames.begin();
  EXPECT_EQ("wrong", thrownMessage([&] { filter.setModuleNames(oldCur, newCur); }));
  EXPECT_EQ("-f and [ -f src  a<>A   -f dst  c   ] ", filter.dump());
}

TEST(FilterTest, ChildrenGivenToTheConstructorStayWithTheCaller) {
  auto atom = std::make_unique<ContentFilter>(TAV_SRC, false, TavEntityArray());
  Filter inner = parsed("or -f dst x -f dst y");
  std::list<AbstractFilter*> children{atom.get(), &inner};
  Filter filter(children, FILTER_AND);
  atom.reset();
  inner.deleteFilterList();
  EXPECT_EQ(2u, filter.getChildren().size());
  EXPECT_EQ("-f and [ -f src    -f or [ -f dst  x   -f dst  y   ]  ] ", filter.dump());
}

TEST(FilterTest, CopiesAreDeep) {
  const std::string text = "or -f and [ -f src a -f interface eth0,out ] -f svc c";
  auto source = std::make_unique<Filter>(parsed(text));
  const std::string expected = source->dump();
  Filter copied(*source);
  std::unique_ptr<AbstractFilter> cloned(source->clone());
  Filter assigned = parsed("and -f dst z");
  assigned = *source;
  EXPECT_NE(source->getChildren()[0].get(), copied.getChildren()[0].get());
  source.reset();
  EXPECT_EQ(expected, copied.dump());
  EXPECT_EQ(expected, cloned->dump());
  EXPECT_EQ(expected, assigned.dump());
  EXPECT_EQ(FILTER_OR, assigned.getOperator());
}

TEST(FilterTest, SelfAssignmentLeavesNoChildren) {
  Filter filter = parsed("or -f src a -f dst b");
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

TEST(FilterTest, NestingAtTheLimitWorks) {
  for (bool bracketed : {false, true}) {
    SCOPED_TRACE(bracketed);
    strList tokens = tokensOf(nestedText(Filter::maxNestingDepth, bracketed));
    strIter cur = tokens.begin();
    auto filter = std::make_unique<Filter>(tokens, cur);
    EXPECT_TRUE(cur == tokens.end());
    // Every level has one child: the atom's text and two blanks per level.
    const std::string expected = "-f src  a  " + std::string(2 * (Filter::maxNestingDepth + 1), ' ');
    EXPECT_EQ(expected, filter->dump());
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

TEST(FilterTest, NestingBeyondTheLimitIsRefused) {
  const std::string limit = std::to_string(Filter::maxNestingDepth);
  for (bool bracketed : {false, true}) {
    SCOPED_TRACE(bracketed);
    strList tokens = tokensOf(nestedText(Filter::maxNestingDepth + 1, bracketed));
    strIter cur = tokens.begin();
    const std::string message = thrownMessage([&] { Filter filter(tokens, cur); });
    EXPECT_NE(std::string::npos, message.find(limit)) << message;
  }
}

TEST(FilterTest, VeryDeepTextFailsFastWithoutExhaustingTheStack) {
  strList tokens = tokensOf(nestedText(200000, false));
  strIter cur = tokens.begin();
  const auto start = std::chrono::steady_clock::now();
  const std::string message = thrownMessage([&] { Filter filter(tokens, cur); });
  const auto elapsed = std::chrono::steady_clock::now() - start;
  EXPECT_NE(std::string::npos, message.find(std::to_string(Filter::maxNestingDepth))) << message;
  EXPECT_LT(elapsed, std::chrono::seconds(2));
}

}  // namespace
