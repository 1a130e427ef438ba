// Pixel converters of effect worlds and the 16.16 conversions.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "AE_MyLib/AEObject/AEO_Rect.h"

namespace {

using AEO::EffectWorld;

PF_Pixel to8(float a, float r, float g, float b)
{
    PF_Pixel p;
    EffectWorld::setToU8(&p, PF_PixelFloat{a, r, g, b});
    return p;
}

PF_Pixel16 to16(float a, float r, float g, float b)
{
    PF_Pixel16 p;
    EffectWorld::setToU16(&p, PF_PixelFloat{a, r, g, b});
    return p;
}

TEST(PixelConverters, EightBitTruncatesAndClamps)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const PF_Pixel p = to8(1.0f, 0.5f, -0.25f, nan);
    EXPECT_EQ(p.alpha, 255);
    EXPECT_EQ(p.red, 127);  // 127.5 truncated
    EXPECT_EQ(p.green, 0);
    EXPECT_EQ(p.blue, 0);
    EXPECT_EQ(to8(3.0f, 0.999f, 0.0f, 1.0f / 255.0f).alpha, 255);
    EXPECT_EQ(to8(3.0f, 0.999f, 0.0f, 1.0f / 255.0f).red, 254);
}

TEST(PixelConverters, SixteenBitWhiteIs32768)
{
    const PF_Pixel16 p = to16(1.0f, 0.5f, 1.5f, 0.25f);
    EXPECT_EQ(p.alpha, 32768);
    EXPECT_EQ(p.red, 16384);
    EXPECT_EQ(p.green, 32768);
    EXPECT_EQ(p.blue, 8192);
}

TEST(PixelConverters, ReadingScalesToOne)
{
    const PF_Pixel p8 = {255, 51, 0, 255};
    const PF_PixelFloat f8 = EffectWorld::FromU8(&p8);
    EXPECT_FLOAT_EQ(f8.alpha, 1.0f);
    EXPECT_FLOAT_EQ(f8.red, 0.2f);
    const PF_Pixel16 p16 = {32768, 16384, 0, 1};
    const PF_PixelFloat f16 = EffectWorld::FromU16(&p16);
    EXPECT_FLOAT_EQ(f16.alpha, 1.0f);
    EXPECT_FLOAT_EQ(f16.red, 0.5f);
    const PF_PixelFloat wide = {2.0f, -1.0f, 0.5f, 0.0f};
    PF_PixelFloat copy;
    EffectWorld::setToF32(&copy, wide);
    EXPECT_EQ(EffectWorld::FromF32(&copy).alpha, 2.0f) << "float is not clamped";
    EXPECT_EQ(EffectWorld::FromF32(&copy).red, -1.0f);
}

TEST(Fixed, RoundsHalfAwayFromZero)
{
    EXPECT_EQ(AEO::Float2Fix(1.5), 98304);
    EXPECT_EQ(AEO::Float2Fix(0.5 / 65536.0), 1);
    EXPECT_EQ(AEO::Float2Fix(-0.5 / 65536.0), -1);
    EXPECT_EQ(AEO::Float2Fix(0.49 / 65536.0), 0);
    EXPECT_EQ(AEO::Float2Fix(-100.0), -6553600);
    EXPECT_DOUBLE_EQ(AEO::Fix2Float(-98304), -1.5);
}

TEST(Fixed, RectanglesConvertBothWays)
{
    const PF_FixedRect fixed = AEO::toFixedRect(AEO::FloatRect{-1.25, 0.5, 10.0, 20.75});
    EXPECT_EQ(fixed.left, -81920);
    EXPECT_EQ(fixed.bottom, 1359872);
    const AEO::FloatRect back = AEO::toFloatRect(fixed);
    EXPECT_DOUBLE_EQ(back.width(), 11.25);
    const PF_LRect whole = AEO::enclosingLRect(back);
    EXPECT_EQ(whole.left, -2);
    EXPECT_EQ(whole.top, 0);
    EXPECT_EQ(whole.right, 10);
    EXPECT_EQ(whole.bottom, 21);
    EXPECT_TRUE((AEO::FloatRect{1, 1, 1, 5}).empty());
}

TEST(Fixed, OutOfRangeValuesAreGuarded)
{
#ifdef NDEBUG
    GTEST_SKIP() << "assertions are compiled out";
#else
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(AEO::Float2Fix(40000.0), "f<=Fix2Float\\(PF_Fixed_MAXVAL\\)");
    EXPECT_DEATH(AEO::Float2Fix(-40000.0), "f>=Fix2Float\\(PF_Fixed_MINVAL\\)");
#endif
}

}  // namespace
