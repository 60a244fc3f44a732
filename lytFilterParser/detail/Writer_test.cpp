// The writers' buffer: pieces in order across growth, numbers as "%d".
#include "lytFilterParser/detail/Writer.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

TEST(Writer, KeepsEveryPieceInOrderWhateverTheEstimate) {
  const std::string name(100, 'n');
  for (std::size_t estimate : {0u, 16u, 17u, 4096u}) {
    lytFilterParser::detail::Writer out(estimate);
    out << "-f " << name << ' ' << "" << std::string("src") << ' ' << -7 << ' ' << INT_MIN;
    for (int i = 0; i < 20; ++i) out << 'x';  // one character at a time
    EXPECT_EQ(out.finish(), "-f " + name + " src -7 -2147483648" + std::string(20, 'x')) << estimate;
  }
}

}  // namespace
