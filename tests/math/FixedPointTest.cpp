#include <gtest/gtest.h>

#include <limits>

#include "math/FixedPoint.h"

namespace {

const double kUnit = 1.0 / 65536.0;  // one 16.16 step
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

struct FixedCase {
    double value;
    PF_Fixed expected;
};

}  // namespace

TEST(RoundToFixed, RoundsHalvesAwayFromZeroAndSaturates) {
    // The largest double below 1/2 (in 16.16 units): adding 0.5 would round it up to 1.
    const double below_half = 0.49999999999999994;
    const FixedCase cases[] = {
        // Whole and exact values.
        {0.0, 0}, {1.0, 65536}, {-1.0, -65536}, {128.0, 8388608}, {0.5, 32768}, {-2.25, -147456},
        // Halves away from zero, not to even.
        {0.5 * kUnit, 1}, {-0.5 * kUnit, -1}, {1.5 * kUnit, 2}, {2.5 * kUnit, 3}, {-2.5 * kUnit, -3},
        {10.0 + 0.5 * kUnit, 655361},
        {below_half * kUnit, 0}, {-below_half * kUnit, 0},
        {(4194304.0 + 0.5) * kUnit, 4194305}, {-(4194304.0 + 0.5) * kUnit, -4194305},
        // Nearest otherwise.
        {0.49 * kUnit, 0}, {-0.49 * kUnit, 0}, {0.51 * kUnit, 1}, {-1.51 * kUnit, -2},
        // Edges of the range and beyond.
        {2147483647.49 * kUnit, 2147483647}, {2147483647.5 * kUnit, PF_Fixed_MAXVAL},
        {-2147483647.49 * kUnit, -2147483647}, {-2147483647.5 * kUnit, PF_Fixed_MINVAL},
        {-2147483648.4 * kUnit, PF_Fixed_MINVAL},
        {32767.99999, 2147483647},  // rounds to 2^31 - 1 exactly
        {40000.0, PF_Fixed_MAXVAL}, {kInf, PF_Fixed_MAXVAL}, {-32768.0, PF_Fixed_MINVAL},
        {-40000.0, PF_Fixed_MINVAL}, {-kInf, PF_Fixed_MINVAL}, {kNaN, PF_Fixed_MINVAL},
    };
    for (const FixedCase& c : cases) EXPECT_EQ(roundToFixed(c.value), c.expected) << "value " << c.value;
}

TEST(ClampSampleRadius, RoundsIntoOneUnitTo128Pixels) {
    const FixedCase cases[] = {
        {0.0, 1}, {-5.0, 1}, {0.49 * kUnit, 1}, {kNaN, 1}, {-kInf, 1},
        {1.5 * kUnit, 2}, {1.0, 65536}, {127.0 + 0.5 * kUnit, 127 * 65536 + 1},
        {128.0, 8388608}, {128.0 + 0.49 * kUnit, 8388608}, {128.0 + 0.5 * kUnit, 8388608},
        {1000.0, 8388608}, {1e12, 8388608}, {kInf, 8388608},
    };
    for (const FixedCase& c : cases) EXPECT_EQ(clampSampleRadius(c.value), c.expected) << "value " << c.value;
}
