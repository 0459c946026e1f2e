// Environment switches as the executor reads them.

#include <cstdlib>
#include <gtest/gtest.h>
#include <zelvane/executor/Utility.h>

namespace {

using ZelvaneGraph::Executor::Utility::getEnvBool;

constexpr const char* kName = "ZELVANE_EXECUTOR_TEST_SWITCH";

// Read afresh each time: the values follow one another.
TEST(GetEnvBool, ReadsTheUsualSpellingsOfOnAndOff) {
    for (const char* on : {"1", "true", "TRUE", "Yes", "on"}) {
        ::setenv(kName, on, 1);
        EXPECT_TRUE(getEnvBool(kName, false)) << on;
    }
    for (const char* off : {"0", "false", "No", "OFF", ""}) {
        ::setenv(kName, off, 1);
        EXPECT_FALSE(getEnvBool(kName, true)) << off;
    }
    ::unsetenv(kName);
}

TEST(GetEnvBool, FallsBackToTheDefaultWhenUnsetOrUnreadable) {
    ::unsetenv(kName);
    EXPECT_TRUE(getEnvBool(kName, true));
    EXPECT_FALSE(getEnvBool(kName, false));
    ::setenv(kName, "maybe", 1);
    EXPECT_TRUE(getEnvBool(kName, true));
    EXPECT_FALSE(getEnvBool(kName, false));
    ::unsetenv(kName);
    EXPECT_FALSE(getEnvBool(nullptr, false));
}

} // namespace
