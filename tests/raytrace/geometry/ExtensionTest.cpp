#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "render/RenderInfo.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;

namespace {

// Copies of the texture beyond its own height on a closed cylinder.
class CylinderExtensionTest : public ::testing::Test {
protected:
    CylinderExtensionTest() : info(nullptr)
    {
        setShapeSize(info, 100.0f, 100.0f, 0.0f);
        info.texture_height = 200.0;
        info.open_scale = 1.0;
        info.extension.head_extensions = 0;
        info.extension.tail_extensions = 2;
        info.extension.flip_vertical = false;
        info.extension.screw = 0.0;
        info.extension.interval = 0.5;
    }

    // Maps (u, v) in place and returns them.
    std::pair<double, double> mapped(double u, double v) const
    {
        info.extension.modifyUVByExtendedCylinder(Vector3(100.0f, 0.0f, 0.0f), info, u, v);
        return {u, v};
    }

    RenderInfo info;
};

// Texture 1, gap 0.5: copy k starts at v = 1.5 k.
TEST_F(CylinderExtensionTest, CopiesMapBackIntoTheTextureWithFlipAndScrew)
{
    const struct {
        const char* name;
        int head;
        bool flip;
        double screw, interval, open_scale, u, v, expected_u, expected_v;
    } cases[] = {
        {"gap after the texture", 0, false, 0, 0.5, 1, 0.3, 1.2, 0.3, 1.2},
        {"copy 1", 0, false, 0, 0.5, 1, 0.3, 1.6, 0.3, 0.1},
        {"copy 2", 0, false, 0, 0.5, 1, 0.3, 3.1, 0.3, 0.1},
        {"copy 1's trailing gap", 0, false, 0, 0.5, 1, 0.3, 2.8, 0.3, 1.3},
        {"copy 3 of 2", 0, false, 0, 0.5, 1, 0.3, 4.6, 0.3, 4.6},
        {"flipped copy 1", 0, true, 0, 0.5, 1, 0.3, 1.6, 0.3, 0.9},
        {"unflipped copy 2", 0, true, 0, 0.5, 1, 0.3, 3.1, 0.3, 0.1},
        {"below without a head count", 0, false, 0, 0, 1, 0.3, -0.2, 0.3, -0.2},
        {"copy -1", 1, false, 0, 0, 1, 0.3, -0.2, 0.3, 0.8},
        {"flipped copy -1 (odd)", 1, true, 0, 0, 1, 0.3, -0.2, 0.3, 0.2},
        {"screw copy 1", 0, false, 0.25, 0.5, 1, 0.9, 1.6, 0.15, 0.1},   // 0.9 + 0.25
        {"screw copy 2", 0, false, 0.25, 0.5, 1, 0.9, 3.1, 0.4, 0.1},    // 0.9 + 0.5
        {"screw texture", 0, false, 0.25, 0.5, 1, 0.9, 0.5, 0.9, 0.5},
        {"screw copy -3", 3, false, 0.25, 0.5, 1, 0.1, -4.0, 0.35, 0.5},  // 0.1 - 0.75
        {"screw wraps by K", 0, false, 0.25, 0.5, 2, 1.9, 1.6, 0.15, 0.1},  // 2.15 wrapped by 2
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        info.extension.head_extensions = c.head;
        info.extension.flip_vertical = c.flip;
        info.extension.screw = c.screw;
        info.extension.interval = c.interval;
        info.open_scale = c.open_scale;
        const auto uv = mapped(c.u, c.v);
        EXPECT_NEAR(uv.first, c.expected_u, 1e-12);
        EXPECT_NEAR(uv.second, c.expected_v, 1e-12);
    }
}

// An extreme or non-finite v lies in no copy, with every count at its largest: the copy index
// is held far out instead of wrapping round to a copy that exists.
TEST_F(CylinderExtensionTest, ExtremeAndNonFiniteVLieInNoCopy)
{
    info.extension.head_extensions = 32767;
    info.extension.tail_extensions = 32767;
    const double inf = std::numeric_limits<double>::infinity();
    for (const double v : {-1e300, -3e9, 3e9, 1e300, -inf, inf}) {
        const auto uv = mapped(0.3, v);
        EXPECT_DOUBLE_EQ(uv.first, 0.3) << v;
        EXPECT_DOUBLE_EQ(uv.second, v) << v;
    }
    EXPECT_TRUE(std::isnan(mapped(0.3, std::nan("")).second));
    EXPECT_EQ(copyIndexOf(-1e300, 1.5), -copyIndexOf(1e300, 1.5));
    EXPECT_EQ(copyIndexOf(-2.9, 1.5), -2);
}

}  // namespace
