// Reads the version record the way support tools do: from the built shared
// library file, through the dynamic symbol table.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "lytFilterParser/version/VersionInfo.h"

namespace {

// The record's layout as the library's header declares it; the data come
// from the built file, not from linking the library.
typedef lytFilterParserVersionInfo Record;

class VersionRecord : public ::testing::Test {
 protected:
  void SetUp() override {
    handle = dlopen(LFP_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(handle, nullptr) << dlerror();
  }
  void TearDown() override {
    if (handle != nullptr) dlclose(handle);
  }
  void* symbol(const char* name) {
    void* address = dlsym(handle, name);
    EXPECT_NE(address, nullptr) << name;
    return address;
  }
  void* handle = nullptr;
};

TEST_F(VersionRecord, TextFormLineByLine) {
  const char* text = static_cast<const char*>(symbol("lytFilterParser_version_info_str"));
  ASSERT_NE(text, nullptr);
  const std::vector<std::string> expected = {
      std::string("KLDR Magic Signiture=-\x01l\x02o\x03V\x04") + "E%.",
      "KLDR version=5",
      "Name=lytFilterParser",
      "Type=library",
      "Module Name=vexal",
      "Build Number=730620005",
      std::string("Major Release=") + LFP_EXPECTED_RELEASE_NAME,
      "Major Release Number=5",
      std::string("Minor Release=") + LFP_EXPECTED_RELEASE_LABEL,
      "Minor Release Number=0",
      "Option Pack Number=5",
      std::string("Version String=") + LFP_EXPECTED_RELEASE_NAME,
      "Interface Version=0",
      "Comments=",
      std::string("Company Name=") + LFP_EXPECTED_COMPANY_NAME,
      std::string("Legal Copyright=") + LFP_EXPECTED_COPYRIGHT,
      "Internal Name=lytFilterParser",
      "Configuration=linux30/release.dynamic",
      "Dependent Libraries=OS::",
      "Dependent Libraries Info:",
      std::string("OS:I:") + LFP_EXPECTED_RELEASE_LABEL,
  };
  std::istringstream lines(text);
  std::string line;
  std::size_t index = 0;
  while (std::getline(lines, line)) {
    ASSERT_LT(index, expected.size()) << "extra line: " << line;
    EXPECT_EQ(line, expected[index]) << "line " << index + 1;
    ++index;
  }
  EXPECT_EQ(index, expected.size());
  EXPECT_EQ(text[std::strlen(text) - 1], '\n');
}

TEST_F(VersionRecord, BinaryRecordAndPointer) {
  const Record* record = static_cast<const Record*>(symbol("lytFilterParser_version_info"));
  const Record* const* pointer = static_cast<const Record* const*>(symbol("__lytFilterParser_version_info"));
  ASSERT_NE(record, nullptr);
  ASSERT_NE(pointer, nullptr);
  EXPECT_EQ(*pointer, record);
  EXPECT_EQ(record->recordVersion, 5);
  EXPECT_EQ(std::memcmp(record->signature, "-\x01K\x02L\x03" "D\x04R%.\0", 12), 0);
  EXPECT_STREQ(record->name, "lytFilterParser");
  EXPECT_EQ(record->typeCode, 1);
  EXPECT_STREQ(record->moduleName, "vexal");
  EXPECT_EQ(record->buildNumber, 730620005);
  EXPECT_STREQ(record->majorRelease, LFP_EXPECTED_RELEASE_NAME);
  EXPECT_EQ(record->interfaceVersion, 0);
  EXPECT_STREQ(record->comments, "");
  EXPECT_STREQ(record->companyName, LFP_EXPECTED_COMPANY_NAME);
  EXPECT_STREQ(record->legalCopyright, LFP_EXPECTED_COPYRIGHT);
  EXPECT_STREQ(record->internalName, "lytFilterParser");
  EXPECT_STREQ(record->configuration, "linux30/release.dynamic");
  EXPECT_STREQ(record->dependentLibraries, "OS::");
  EXPECT_STREQ(record->minorRelease, LFP_EXPECTED_RELEASE_LABEL);
  ASSERT_NE(record->dependentLibraryTable, nullptr);
  EXPECT_EQ(record->majorReleaseNumber, 5);
  EXPECT_EQ(record->minorReleaseNumber, 0);
  EXPECT_EQ(record->optionPackNumber, 5);
  EXPECT_STREQ(record->versionString, LFP_EXPECTED_RELEASE_NAME);
}

}  // namespace
