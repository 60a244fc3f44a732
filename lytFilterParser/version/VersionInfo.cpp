#include "lytFilterParser/version/VersionInfo.h"

// Release name, label, maker and copyright come from the build.
#include "lytFilterParser/LibraryVersion.h"

#define LFP_STR2(x) #x
#define LFP_STR(x) LFP_STR2(x)

// const: internal to this file.
const char* const kDependentLibraryTable[] = {"OS:I:" LFP_RELEASE_LABEL, nullptr};

extern "C" {

const struct lytFilterParserVersionInfo lytFilterParser_version_info = {
    5,
    {'-', '\x01', 'K', '\x02', 'L', '\x03', 'D', '\x04', 'R', '%', '.', '\0'},
    "lytFilterParser",
    1,
    "vexal",
    LFP_BUILD_NUMBER,
    LFP_RELEASE_NAME,
    0,
    "",
    LFP_COMPANY_NAME,
    LFP_COPYRIGHT,
    "lytFilterParser",
    "linux30/release.dynamic",
    "OS::",
    LFP_RELEASE_LABEL,
    kDependentLibraryTable,
    LFP_LIBRARY_VERSION_MAJOR,
    LFP_LIBRARY_VERSION_MINOR,
    LFP_LIBRARY_VERSION_PATCH,
    LFP_RELEASE_NAME,
};

const struct lytFilterParserVersionInfo* const __lytFilterParser_version_info = &lytFilterParser_version_info;

const char lytFilterParser_version_info_str[] =
    "KLDR Magic Signiture=-\x01l\x02o\x03V\x04" "E%.\n"
    "KLDR version=5\n"
    "Name=lytFilterParser\n"
    "Type=library\n"
    "Module Name=vexal\n"
    "Build Number=" LFP_STR(LFP_BUILD_NUMBER) "\n"
    "Major Release=" LFP_RELEASE_NAME "\n"
    "Major Release Number=" LFP_STR(LFP_LIBRARY_VERSION_MAJOR) "\n"
    "Minor Release=" LFP_RELEASE_LABEL "\n"
    "Minor Release Number=" LFP_STR(LFP_LIBRARY_VERSION_MINOR) "\n"
    "Option Pack Number=" LFP_STR(LFP_LIBRARY_VERSION_PATCH) "\n"
    "Version String=" LFP_RELEASE_NAME "\n"
    "Interface Version=0\n"
    "Comments=\n"
    "Company Name=" LFP_COMPANY_NAME "\n"
    "Legal Copyright=" LFP_COPYRIGHT "\n"
    "Internal Name=lytFilterParser\n"
    "Configuration=linux30/release.dynamic\n"
    "Dependent Libraries=OS::\n"
    "Dependent Libraries Info:\n"
    "OS:I:" LFP_RELEASE_LABEL "\n";

}  // extern "C"
