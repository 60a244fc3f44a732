// The end-to-end (virtual link) request: "vl NAME [-t wire|application]".
#include "lytFilterParser/request/E2EKovaRequest.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>

#include "tests/support/TestSupport.h"

namespace {

using lfptest::thrownMessage;

// Builds the request from the text that follows "vl".
E2EKovaRequest fromText(const std::string& text) {
  strList tokens = lfptest::tokensOf(text);
  return E2EKovaRequest(tokens);
}

TEST(E2EKovaRequest, ReadsNameAndDataType) {
  const std::pair<const char*, const char*> cases[] = {
      // what follows "vl" | the written request, or the message thrown
      {"branch-link -t application", "vl branch-link -t application"},
      {"branch-link", "vl branch-link -t wire"},
      {"l x-t apps", "vl l -t application"},             // "-t" anywhere in a token; the first letter counts
      {"l -x 42 [ y ] -T application", "vl l -t wire"},  // other tokens are ignored
      {"l t- application", "vl l -t wire"},              // "-" as last character
      {"l a-b-t application", "vl l -t wire"},           // only the first "-" is looked at
      {"l -t a -type w", "vl l -t wire"},                // the last one wins
      {"l -t a-tx", "vl l -t application"},              // the argument is skipped, not reread
      {"-t application", "vl -t -t wire"},               // the first token is the name, whatever it is
      {"", "No virtual link name after vl"},
      {"l -t", "No data after direction argument"},
      {"l -t x", "Not a valid argument for dataType"},
      {"l -t -t", "Not a valid argument for dataType"},
  };
  for (const auto& c : cases) {
    std::string result;
    try {
      result = fromText(c.first).dump();
    } catch (const std::string& message) {
      result = message;
    }
    EXPECT_EQ(result, c.second) << "vl " << c.first;
  }
}

TEST(E2EKovaRequest, PeerVersionsModuleNamesAndColumnTypes) {
  EXPECT_EQ(E2EKovaRequest("my link", tLytpE2eDataType(7)).dump(), "vl my link -t ");  // no blank after an unknown type
  E2EKovaRequest request("branch-link", E2E_DATA_APPLICATION);
  const LYTKovaRequest& base = request;
  EXPECT_EQ(base.dump(TavVersion(3)), "vl branch-link -t application");
  for (int version : {0, INT_MIN}) EXPECT_EQ(base.dump(TavVersion(version)), "4.1 and under is not supported");
  for (int version : {1, 2, 4}) EXPECT_EQ(base.dump(TavVersion(version)), "") << version;
  // No module names: setModuleNames is true exactly for no old names.
  EXPECT_TRUE(request.getModuleNames().empty());
  strList none, names = {"host1"}, resolved = {"10.0.0.1"};
  EXPECT_TRUE(request.setModuleNames(none, resolved));
  EXPECT_FALSE(request.setModuleNames(names, resolved));
  for (int index : {15, -1, INT_MIN}) EXPECT_EQ(E2EKovaRequest::getKovaColumnType(index), 0) << index;
}

}  // namespace
