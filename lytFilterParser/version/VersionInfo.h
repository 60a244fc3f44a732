// The build-identification record the library exports, as a binary record
// and as text, so that installation and support tools can read a module's
// identity from the file.
#ifndef LYTFILTERPARSER_VERSION_VERSIONINFO_H
#define LYTFILTERPARSER_VERSION_VERSIONINFO_H

#include <stdint.h>

#include "lytFilterParser/Export.h"

extern "C" {

struct lytFilterParserVersionInfo {
  int32_t recordVersion;
  char signature[12];
  const char* name;
  int32_t typeCode;
  const char* moduleName;
  int32_t buildNumber;
  const char* majorRelease;
  int32_t interfaceVersion;
  const char* comments;
  const char* companyName;
  const char* legalCopyright;
  const char* internalName;
  const char* configuration;
  const char* dependentLibraries;
  const char* minorRelease;
  const char* const* dependentLibraryTable;
  int32_t majorReleaseNumber;
  int32_t minorReleaseNumber;
  int32_t optionPackNumber;
  const char* versionString;
};

LFP_API extern const struct lytFilterParserVersionInfo lytFilterParser_version_info;
LFP_API extern const struct lytFilterParserVersionInfo* const __lytFilterParser_version_info;
LFP_API extern const char lytFilterParser_version_info_str[];

}  // extern "C"

#endif
