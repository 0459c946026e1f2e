// The version banner printed while the plug-in loads, observed from a separate process.

#include "ProbeRun.h"

#include <CommitHash.h>
#include <gtest/gtest.h>
#include <string>

namespace {

const std::string kExpectedBanner = std::string("ZelvaneObjectBoardPlugin: Zelvane Plugin version "
                                                "2.11.0.0 (Tue 07/23/2024, 202407230842, build "
                                                "86, commit ") +
                                    std::string(ZEL_COMMIT_HASH).substr(0, 7) +
                                    ", branch release)\n";

TEST(VersionBanner, IsSilentWhenTheVariableIsUnsetEmptyOrZero) {
    for (const char* value : {"", "MERIDAN_DUMP_VERSION_INFO=", "MERIDAN_DUMP_VERSION_INFO=0",
                              "MERIDAN_DUMP_VERSION_INFO=00", "MERIDAN_DUMP_VERSION_INFO=off"}) {
        const ProbeResult result = runProbe(value, PLUGIN_PATH);
        EXPECT_EQ(result.exitCode, 0) << value;
        EXPECT_EQ(result.standardError, "") << value;
    }
}

TEST(VersionBanner, PrintsOneExactLineForAnyNonZeroNumber) {
    for (const char* value : {"MERIDAN_DUMP_VERSION_INFO=1", "MERIDAN_DUMP_VERSION_INFO=42",
                              "MERIDAN_DUMP_VERSION_INFO=-3"}) {
        const ProbeResult result = runProbe(value, PLUGIN_PATH);
        EXPECT_EQ(result.exitCode, 0) << value;
        EXPECT_EQ(result.standardError, kExpectedBanner) << value;
    }
}

TEST(VersionBanner, NamesTheCommitTheLibraryWasBuiltFrom) {
    const std::string hash = ZEL_COMMIT_HASH;
    ASSERT_EQ(hash.size(), 40u);
    EXPECT_EQ(hash.find_first_not_of("0123456789abcdef"), std::string::npos);
}

} // namespace
