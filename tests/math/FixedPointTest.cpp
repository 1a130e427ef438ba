#include <gtest/gtest.h>

#include <limits>

#include "math/FixedPoint.h"

namespace {

const double kUnit = 1.0 / 65536.0;  // one 16.16 step
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

}  // namespace

TEST(RoundToFixed, WholeValuesAreExact) {
    EXPECT_EQ(roundToFixed(0.0), 0);
    EXPECT_EQ(roundToFixed(1.0), 65536);
    EXPECT_EQ(roundToFixed(-1.0), -65536);
    EXPECT_EQ(roundToFixed(128.0), 8388608);
    EXPECT_EQ(roundToFixed(0.5), 32768);
    EXPECT_EQ(roundToFixed(-2.25), -147456);
}

TEST(RoundToFixed, HalvesRoundAwayFromZero) {
    EXPECT_EQ(roundToFixed(0.5 * kUnit), 1);
    EXPECT_EQ(roundToFixed(-0.5 * kUnit), -1);
    EXPECT_EQ(roundToFixed(1.5 * kUnit), 2);
    EXPECT_EQ(roundToFixed(2.5 * kUnit), 3);  // not to even
    EXPECT_EQ(roundToFixed(-2.5 * kUnit), -3);
    EXPECT_EQ(roundToFixed(10.0 + 0.5 * kUnit), 655361);
}

TEST(RoundToFixed, JustBelowAHalfRoundsDown) {
    // The largest double below 1/2 (in 16.16 units): adding 0.5 would round it up to 1.
    const double below_half = 0.49999999999999994;
    EXPECT_EQ(roundToFixed(below_half * kUnit), 0);
    EXPECT_EQ(roundToFixed(-below_half * kUnit), 0);
    EXPECT_EQ(roundToFixed((4194304.0 + 0.5) * kUnit), 4194305);
    EXPECT_EQ(roundToFixed(-(4194304.0 + 0.5) * kUnit), -4194305);
}

TEST(RoundToFixed, EdgesOfTheRange) {
    EXPECT_EQ(roundToFixed(2147483647.49 * kUnit), 2147483647);
    EXPECT_EQ(roundToFixed(2147483647.5 * kUnit), PF_Fixed_MAXVAL);
    EXPECT_EQ(roundToFixed(-2147483647.49 * kUnit), -2147483647);
    EXPECT_EQ(roundToFixed(-2147483647.5 * kUnit), PF_Fixed_MINVAL);
    EXPECT_EQ(roundToFixed(-2147483648.4 * kUnit), PF_Fixed_MINVAL);
}

TEST(RoundToFixed, BelowHalfRoundsToNearest) {
    EXPECT_EQ(roundToFixed(0.49 * kUnit), 0);
    EXPECT_EQ(roundToFixed(-0.49 * kUnit), 0);
    EXPECT_EQ(roundToFixed(0.51 * kUnit), 1);
    EXPECT_EQ(roundToFixed(-1.51 * kUnit), -2);
}

TEST(RoundToFixed, OutOfRangeSaturates) {
    EXPECT_EQ(roundToFixed(32767.99999), 2147483647);  // rounds to 2^31 - 1 exactly
    EXPECT_EQ(roundToFixed(40000.0), PF_Fixed_MAXVAL);
    EXPECT_EQ(roundToFixed(kInf), PF_Fixed_MAXVAL);
    EXPECT_EQ(roundToFixed(-32768.0), PF_Fixed_MINVAL);
    EXPECT_EQ(roundToFixed(-40000.0), PF_Fixed_MINVAL);
    EXPECT_EQ(roundToFixed(-kInf), PF_Fixed_MINVAL);
    EXPECT_EQ(roundToFixed(kNaN), PF_Fixed_MINVAL);
}

TEST(ClampSampleRadius, AtLeastOneUnit) {
    EXPECT_EQ(clampSampleRadius(0.0), 1);
    EXPECT_EQ(clampSampleRadius(-5.0), 1);
    EXPECT_EQ(clampSampleRadius(0.49 * kUnit), 1);
    EXPECT_EQ(clampSampleRadius(kNaN), 1);
    EXPECT_EQ(clampSampleRadius(-kInf), 1);
}

TEST(ClampSampleRadius, AtMost128Pixels) {
    EXPECT_EQ(clampSampleRadius(128.0), 8388608);
    EXPECT_EQ(clampSampleRadius(128.0 + 0.49 * kUnit), 8388608);
    EXPECT_EQ(clampSampleRadius(128.0 + 0.5 * kUnit), 8388608);
    EXPECT_EQ(clampSampleRadius(1000.0), 8388608);
    EXPECT_EQ(clampSampleRadius(1e12), 8388608);
    EXPECT_EQ(clampSampleRadius(kInf), 8388608);
}

TEST(ClampSampleRadius, InRangeIsTheRoundedValue) {
    EXPECT_EQ(clampSampleRadius(1.5 * kUnit), 2);
    EXPECT_EQ(clampSampleRadius(1.0), 65536);
    EXPECT_EQ(clampSampleRadius(127.0 + 0.5 * kUnit), 127 * 65536 + 1);
}
