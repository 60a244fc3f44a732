#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "bench/corpus.h"
#include "lytFilterParser/detail/TestSupport.h"
#include "lytFilterParser/diagnostics/Outline.h"

namespace {

using lytFilterParser::Diagnostic;
using lytFilterParser::detail::Outline;
using lfptest::onSmallStack;

// The words of `text` with word `i` left out, doubled, or swapped with the next.
std::vector<std::string> variations(const std::string& text) {
  const strList tokens = lfptest::tokensOf(text);
  const std::vector<std::string> words(tokens.begin(), tokens.end());
  std::vector<std::string> out;
  for (std::size_t i = 0; i < words.size(); ++i) {
    for (int change = 0; change < 3; ++change) {
      std::vector<std::string> changed = words;
      if (change == 0) changed.erase(changed.begin() + static_cast<long>(i));
      if (change == 1) changed.insert(changed.begin() + static_cast<long>(i), words[i]);
      if (change == 2 && i + 1 < words.size()) std::swap(changed[i], changed[i + 1]);
      std::string joined;
      for (const std::string& word : changed) joined += word + " ";
      out.push_back(joined);
    }
  }
  return out;
}

// The outline walks the reader's grammar on its own: it must refuse what
// the reader refuses, and where the reader accepts a text, read it too and
// find the same items.
TEST(Outline, AgreesWithTheReaderOnEveryVariationOfTheCorpus) {
  std::vector<std::string> texts = {
      "-f src a ] -f dst b ] -k svc -v wb", "-f or -f src a -f and -f dst b -f dst c -k svc -v wb",
      "-f src a -k svc ] -f dst b -v wb", "-k src a ] b acc=sum ] -v wb sort=top x -s top index=2",
      "-f interface not eth0,in , -f or [ ] -k svc -v wb", "-k src -v wb dir=up enc=yes url_mod=x",
      "vl link -t app x -t w", "vl link x-ty wire"};
  for (const bench::TextCase& c : bench::buildCorpus()) {
    if (c.kind == bench::CaseKind::Typical || c.kind == bench::CaseKind::Refused || c.kind == bench::CaseKind::VirtualLink) {
      texts.push_back(c.text);
    }
  }
  std::size_t accepted = 0;
  for (const std::string& base : texts) {
    for (const std::string& text : variations(base)) {
      std::string error;
      std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
      Outline outline;
      EXPECT_EQ(outline.read(text), request != nullptr) << text;
      const auto* network = dynamic_cast<const NetworkKovaRequest*>(request.get());
      if (network == nullptr) continue;
      ++accepted;
      EXPECT_TRUE(outline.matches(*network)) << text;
    }
  }
  EXPECT_GT(accepted, 300u);
}

// --- any depth ---------------------------------------------------------------
//
// The diagnostics walk a tree as the library does, with stacks of their own:
// on a thread with a 256 KiB stack they reach the deepest atom of a request
// nested 1,000,000 levels (LFP_TEST_DEPTH to change).

bool has(const std::vector<Diagnostic>& found, const std::string& code, std::size_t start) {
  return std::any_of(found.begin(), found.end(), [&](const Diagnostic& d) { return d.code == code && d.start == start; });
}

TEST(AnyDepth, DiagnosticsReachTheDeepestAtom) {
  const int levels = lfptest::testDepth();
  std::string text;
  for (int level = 1; level < levels; ++level) text += "-f or [ -f src a ";
  const std::size_t second = text.find("-f or", 1), deepest = text.size();
  text += "-f wb x or ";
  for (int level = 1; level < levels; ++level) text += "] ";
  text += "-k svc -v wb";
  onSmallStack([&] {
    const std::vector<Diagnostic> linted = lytFilterParser::lint(text);
    EXPECT_EQ(linted.size(), 1u);
    EXPECT_TRUE(has(linted, "entity-keyword", deepest + 8));
    EXPECT_TRUE(lytFilterParser::fidelity(text, TavVersion(3)).empty());
    EXPECT_TRUE(has(lytFilterParser::fidelity(text, TavVersion(1)), "filter-dropped", second));
    std::string error;
    std::unique_ptr<LYTKovaRequest> request(LYTKovaRequest::getLYTKovaRequest(text, error));
    const auto refusal = lytFilterParser::validate(text, dynamic_cast<NetworkKovaRequest&>(*request), TavVersion(3));
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->start, deepest + 3);
  });
}

}  // namespace
