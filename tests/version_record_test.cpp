// Reads the version record the way support tools do: from the built shared
// library file, through the dynamic symbol table, with the values the build
// gave it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "lytFilterParser/version/VersionInfo.h"

namespace {

TEST(VersionRecord, ExportedAndReadableThroughDlsym) {
  void* handle = dlopen(LFP_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(handle, nullptr) << dlerror();
  const auto* record = static_cast<const lytFilterParserVersionInfo*>(dlsym(handle, "lytFilterParser_version_info"));
  const auto* pointer =
      static_cast<const lytFilterParserVersionInfo* const*>(dlsym(handle, "__lytFilterParser_version_info"));
  const char* text = static_cast<const char*>(dlsym(handle, "lytFilterParser_version_info_str"));
  ASSERT_TRUE(record != nullptr && pointer != nullptr && text != nullptr);
  EXPECT_EQ(*pointer, record);
  EXPECT_STREQ(record->majorRelease, LFP_EXPECTED_RELEASE_NAME);
  EXPECT_STREQ(record->minorRelease, LFP_EXPECTED_RELEASE_LABEL);
  EXPECT_STREQ(record->companyName, LFP_EXPECTED_COMPANY_NAME);
  EXPECT_STREQ(record->legalCopyright, LFP_EXPECTED_COPYRIGHT);
  const std::string expected =
      std::string("\nCompany Name=") + LFP_EXPECTED_COMPANY_NAME + "\nLegal Copyright=" + LFP_EXPECTED_COPYRIGHT + "\n";
  EXPECT_NE(std::string(text).find(expected), std::string::npos) << text;
  dlclose(handle);
}

}  // namespace
