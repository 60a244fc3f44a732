// The writers' buffer: pieces in order, across growth, numbers as "%d".
#include "lytFilterParser/detail/Writer.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using lytFilterParser::detail::Writer;

TEST(Writer, KeepsEveryPieceInOrderWhateverTheEstimate) {
  const std::string name(100, 'n');
  for (std::size_t estimate : {0u, 1u, 16u, 17u, 64u, 4096u}) {
    Writer out(estimate);
    out << "-f " << name << ' ' << "" << std::string("src") << ' ';
    EXPECT_EQ(out.finish(), "-f " + name + " src ") << estimate;
  }
  Writer nothing;
  EXPECT_EQ(nothing.finish(), "");
}

TEST(Writer, GrowsOneCharacterAtATime) {
  Writer out(16);
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    const char c = static_cast<char>('a' + i % 26);
    out << c;
    expected += c;
  }
  EXPECT_EQ(out.finish(), expected);
}

TEST(Writer, WritesNumbersAsPrintfDoes) {
  Writer out;
  out << 0 << ' ' << -7 << ' ' << 50 << ' ' << INT_MAX << ' ' << INT_MIN;
  EXPECT_EQ(out.finish(), "0 -7 50 2147483647 -2147483648");
}

}  // namespace
