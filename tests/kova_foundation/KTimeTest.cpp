#include <gtest/gtest.h>
#include <kova/KTime.h>

namespace {

// Restores the process-wide user-interface unit after each test.
class KTimeTest : public ::testing::Test {
protected:
    void TearDown() override { ASSERT_TRUE(KTime::setUIUnit(KTime::k24FPS)); }
};

} // namespace

TEST_F(KTimeTest, ConvertsBetweenUnitsExactlyThroughWholeTicks) {
    const KTime t(48.0, KTime::k24FPS);
    EXPECT_EQ(t.as(KTime::kSeconds), 2.0);
    EXPECT_EQ(t.asUnits(KTime::kMilliseconds), 2000.0);
    EXPECT_EQ(t.asTicks(), 2 * KTime::ticksPerSecond());
    EXPECT_EQ(KTime(1.0, KTime::kSeconds).as(KTime::k24FPS), 24.0);
    EXPECT_EQ(1.0 / KTime(1.0, KTime::kSeconds).as(KTime::k24FPS), t.as(KTime::kSeconds) / 48.0);
    EXPECT_EQ(KTime(25.0, KTime::k25FPS).as(KTime::k30FPS), 30.0);
    EXPECT_EQ(KTime(5.0, KTime::k24FPS).as(KTime::k30FPS), 6.25);
    EXPECT_EQ(KTime(90.0, KTime::kMinutes).as(KTime::kHours), 1.5);
    EXPECT_EQ(KTime(1.0, KTime::kInvalid).as(KTime::kSeconds), 0.0);
    EXPECT_EQ(KTime(1.0, static_cast<KTime::Unit>(999)).unit(), KTime::kInvalid);
    // Every unit is a whole number of ticks.
    EXPECT_EQ(KTime::ticksPerSecond(), 141120000);
    for (int u = KTime::kHours; u < KTime::kLast; ++u) {
        const auto unit = static_cast<KTime::Unit>(u);
        ASSERT_GT(KTime::ticksPerUnit(unit), 0) << u;
        EXPECT_EQ(KTime(1.0, unit).asTicks(), KTime::ticksPerUnit(unit)) << u;
    }
    EXPECT_EQ(KTime::ticksPerUnit(KTime::k30FPS), 4704000);
    EXPECT_EQ(KTime::ticksPerUnit(KTime::k44100FPS), 3200);
}

TEST_F(KTimeTest, UiUnitIsTheDefaultOfNewTimesAndRejectsInvalidUnits) {
    EXPECT_EQ(KTime::uiUnit(), KTime::k24FPS);
    EXPECT_EQ(KTime(3.0).unit(), KTime::k24FPS);
    ASSERT_TRUE(KTime::setUIUnit(KTime::k30FPS));
    EXPECT_EQ(KTime(3.0).unit(), KTime::k30FPS);
    EXPECT_EQ(KTime(1.0, KTime::kSeconds).asUnits(KTime::uiUnit()), 30.0);
    EXPECT_EQ(KTime::setUIUnit(KTime::kInvalid).statusCode(), KStatus::kInvalidParameter);
    EXPECT_EQ(KTime::uiUnit(), KTime::k30FPS);
}

TEST_F(KTimeTest, ComparesAndAddsAcrossUnits) {
    const KTime frames(48.0, KTime::k24FPS);
    const KTime seconds(2.0, KTime::kSeconds);
    EXPECT_EQ(frames, seconds);
    EXPECT_LT(frames, KTime(49.0, KTime::k24FPS));
    EXPECT_GT(KTime(61.0, KTime::k30FPS), seconds);
    const KTime sum = frames + KTime(0.5, KTime::kSeconds);
    EXPECT_EQ(sum.unit(), KTime::k24FPS);
    EXPECT_EQ(sum.value(), 60.0);
    EXPECT_EQ((seconds - frames).value(), 0.0);
    KTime t(1.0, KTime::kSeconds);
    ASSERT_TRUE(t.setUnit(KTime::k24FPS));
    EXPECT_EQ(t.value(), 1.0); // reinterpreted, not converted
    EXPECT_FALSE(t.setUnit(KTime::kInvalid));
}
