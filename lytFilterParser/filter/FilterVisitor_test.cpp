// The public walk over a filter tree: what each handler sees, in which
// order and at which depth, that a handler ends the walk, and any depth.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "lytFilterParser/filter/FilterVisitor.h"
#include "tests/support/TestSupport.h"

namespace {

using lytFilterParser::FilterVisitor;
using lytFilterParser::walkFilterTree;

std::string valueTypeName(const ContentFilter& atom) { return lytFilterParser::dumpValueType(atom.getFilterType()); }

// Writes every event as "<depth><kind> ", and ends the walk at the
// `stopAt`-th event (counting from 1; 0: never).
class Trace : public FilterVisitor {
 public:
  explicit Trace(int stopAt = 0) : stopAt_(stopAt) {}
  std::string text;

  bool enter(const Filter& filter, std::size_t depth) override {
    return add(depth, filter.getOperator() == FILTER_AND ? "and" : "or");
  }
  bool leave(const Filter&, std::size_t depth) override { return add(depth, "/"); }
  bool content(const ContentFilter& atom, std::size_t depth) override {
    return add(depth, (atom.isNegated() ? "!" : "") + valueTypeName(atom) + std::to_string(atom.getEntities().size()));
  }
  bool interfaces(const InterfaceAtomFilter& atom, std::size_t depth) override {
    return add(depth, "if" + std::to_string(atom.getInterfaces().size()));
  }
  bool other(const AbstractFilter&, std::size_t depth) override { return add(depth, "other"); }

 private:
  bool add(std::size_t depth, const std::string& kind) {
    text += std::to_string(depth) + kind + ' ';
    return ++events_ != stopAt_;
  }
  int stopAt_;
  int events_ = 0;
};

std::string traced(const std::string& filterText, int stopAt = 0, bool* walked = nullptr) {
  const Filter filter = lfptest::parsed<Filter>(filterText);
  Trace trace(stopAt);
  const bool through = walkFilterTree(filter, trace);
  if (walked != nullptr) *walked = through;
  return trace.text;
}

TEST(FilterVisitorTest, EveryNodeInOrderWithItsDepth) {
  const std::pair<const char*, const char*> cases[] = {
      {"and [ ]", "0and 0/ "},
      {"and -f src a", "0and 1src1 0/ "},
      {"or [ -f src a b -f svc not http ]", "0or 1src2 1!svc1 0/ "},
      {"and [ -f interface eth0,in eth1 -f or [ -f dst x -f and [ -f ip y ] ] -f src z ]",
       "0and 1if2 1or 2dst1 2and 3ip1 2/ 1/ 1src1 0/ "},
  };
  for (const auto& c : cases) EXPECT_EQ(c.second, traced(c.first)) << c.first;
}

TEST(FilterVisitorTest, AHandlerEndsTheWalk) {
  const char* const text = "and [ -f src a -f or [ -f dst b ] -f src c ]";
  const std::string all = "0and 1src1 1or 2dst1 1/ 1src1 0/ ";
  bool walked = false;
  EXPECT_EQ(all, traced(text, 0, &walked));
  EXPECT_TRUE(walked);
  // Ended at the n-th event: the first n events, and false.
  std::size_t end = 0;
  for (int stop = 1; stop <= 7; ++stop) {
    end = all.find(' ', end) + 1;
    EXPECT_EQ(all.substr(0, end), traced(text, stop, &walked)) << stop;
    EXPECT_FALSE(walked) << stop;
  }
}

// A node of a class of the caller's own goes to other(), and is not entered.
class Own : public Filter {};

TEST(FilterVisitorTest, ACallersOwnClassGoesToOther) {
  Filter root;
  auto own = std::make_unique<Own>();
  own->addChild(std::make_unique<ContentFilter>(TAV_SRC, false, TavEntityArray()));
  root.addChild(std::move(own));
  Trace trace;
  EXPECT_TRUE(walkFilterTree(root, trace));
  EXPECT_EQ("0and 1other 0/ ", trace.text);
}

// Counts what it sees and keeps the deepest depth.
class Deepest : public FilterVisitor {
 public:
  std::size_t compounds = 0, atoms = 0, deepest = 0;
  bool enter(const Filter&, std::size_t depth) override {
    ++compounds;
    deepest = std::max(deepest, depth);
    return true;
  }
  bool content(const ContentFilter& atom, std::size_t depth) override {
    atoms += atom.getEntities().size();
    deepest = std::max(deepest, depth);
    return true;
  }
};

TEST(FilterVisitorTest, AnyDepthOnASmallStack) {
  const int levels = lfptest::testDepth();
  lfptest::onSmallStack([&] {
    std::unique_ptr<Filter> root = lfptest::deepFilterTree(levels);
    Deepest deepest;
    EXPECT_TRUE(walkFilterTree(*root, deepest));
    EXPECT_EQ(static_cast<std::size_t>(levels), deepest.compounds);
    EXPECT_EQ(1u, deepest.atoms);
    EXPECT_EQ(static_cast<std::size_t>(levels), deepest.deepest);
  });
}

}  // namespace
