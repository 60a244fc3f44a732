#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "lytFilterParser/lytFilterParser.h"

namespace {

// docs/diagnostics.md has a heading for every code ("### `code`", several
// codes may share one), in the order diagnosticCodes() lists them, and no
// heading for a code the library does not have.
TEST(Diagnostic, EveryCodeIsDocumentedAndEveryDocumentedCodeExists) {
  std::ifstream page(std::string(LFP_SOURCE_DIR) + "/docs/diagnostics.md");
  ASSERT_TRUE(page);
  std::vector<std::string> documented;
  for (std::string line; std::getline(page, line);) {
    if (line.rfind("### ", 0) != 0) continue;
    for (std::size_t open = line.find('`'); open != std::string::npos;) {
      const std::size_t close = line.find('`', open + 1);
      if (close == std::string::npos) break;
      documented.push_back(line.substr(open + 1, close - open - 1));
      open = line.find('`', close + 1);
    }
  }
  std::vector<std::string> codes;  // in the order of the page
  for (const lytFilterParser::DiagnosticCode& code : lytFilterParser::diagnosticCodes()) {
    codes.push_back(std::string(code.code));
    EXPECT_EQ(lytFilterParser::findDiagnosticCode(code.code), &code);
  }
  EXPECT_EQ(documented, codes);
  EXPECT_EQ(lytFilterParser::findDiagnosticCode("no-such-code"), nullptr);
}

}  // namespace
