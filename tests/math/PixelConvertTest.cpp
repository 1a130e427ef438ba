#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "math/PixelConvert.h"

namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();
const float kInf = std::numeric_limits<float>::infinity();

struct ChannelCase {
    float value;
    int expected;
};

}  // namespace

TEST(PixelToFloat, WhiteIs255Or32768AndFloatPassesThrough) {
    EXPECT_EQ(channelToFloat<PF_Pixel>(0), 0.0f);
    EXPECT_EQ(channelToFloat<PF_Pixel>(255), 1.0f);
    EXPECT_FLOAT_EQ(channelToFloat<PF_Pixel>(51), 0.2f);
    EXPECT_EQ(channelToFloat<PF_Pixel16>(0), 0.0f);
    EXPECT_EQ(channelToFloat<PF_Pixel16>(32768), 1.0f);
    EXPECT_EQ(channelToFloat<PF_Pixel16>(16384), 0.5f);
    EXPECT_EQ(channelToFloat<PF_Pixel16>(1), 1.0f / 32768.0f);
    EXPECT_EQ(channelToFloat<PF_PixelFloat>(-0.25f), -0.25f);
    EXPECT_EQ(channelToFloat<PF_PixelFloat>(3.5f), 3.5f);
}

TEST(PixelFromFloat, EightBitTruncatesClampsAndMapsNaNToZero) {
    const ChannelCase cases[] = {
        {0.999f, 254}, {1.0f, 255}, {0.5f, 127} /* 127.5 */, {1.0f / 255.0f * 0.99f, 0}, {0.0f, 0},
        {-0.1f, 0}, {-kInf, 0}, {kNaN, 0}, {1.5f, 255}, {kInf, 255}, {1e30f, 255},
    };
    for (const ChannelCase& c : cases) EXPECT_EQ(channelFromFloat<PF_Pixel>(c.value), c.expected) << c.value;
}

TEST(PixelFromFloat, SixteenBitTruncatesAndClampsAt32768) {
    const ChannelCase cases[] = {
        {1.0f, 32768}, {2.0f, 32768}, {kInf, 32768}, {0.5f, 16384},
        {0.99999f, 32767} /* 32767.67 */, {-0.1f, 0}, {kNaN, 0},
    };
    for (const ChannelCase& c : cases) EXPECT_EQ(channelFromFloat<PF_Pixel16>(c.value), c.expected) << c.value;
}

TEST(PixelFromFloat, FloatIsUnclamped) {
    const PF_PixelFloat out = fromFloatPixel<PF_PixelFloat>(PF_PixelFloat{1.5f, -0.25f, 0.5f, 1e6f});
    EXPECT_EQ(out.alpha, 1.5f);
    EXPECT_EQ(out.red, -0.25f);
    EXPECT_EQ(out.green, 0.5f);
    EXPECT_EQ(out.blue, 1e6f);
    EXPECT_TRUE(std::isnan(channelFromFloat<PF_PixelFloat>(kNaN)));
}

TEST(PixelRoundTrip, EveryEightAndSixteenBitLevelSurvives) {
    // Truncation would lose a level if c / white * white came out a hair below c.
    for (int c = 0; c <= 255; ++c) {
        const auto level = static_cast<A_u_char>(c);
        ASSERT_EQ(channelFromFloat<PF_Pixel>(channelToFloat<PF_Pixel>(level)), level);
    }
    for (int c = 0; c <= 32768; ++c) {
        const auto level = static_cast<A_u_short>(c);
        ASSERT_EQ(channelFromFloat<PF_Pixel16>(channelToFloat<PF_Pixel16>(level)), level);
    }
}
