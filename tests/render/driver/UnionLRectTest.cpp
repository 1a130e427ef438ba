#include <gtest/gtest.h>

#include "render/SmartRender.h"

namespace {

bool same(const PF_LRect& a, const PF_LRect& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

TEST(UnionLRect, EmptyDestinationTakesTheSourceEvenWhenEmpty)
{
    PF_LRect dst{0, 0, 0, 0};
    const PF_LRect src{2, 3, 10, 8};
    UnionLRect(&src, &dst);
    EXPECT_TRUE(same(dst, src));

    PF_LRect inverted{5, 5, 4, 9};  // left >= right: empty
    const PF_LRect empty_src{7, 7, 7, 20};
    UnionLRect(&empty_src, &inverted);
    EXPECT_TRUE(same(inverted, empty_src));
}

TEST(UnionLRect, GrowsToHoldBoth)
{
    PF_LRect dst{0, 5, 10, 8};
    const PF_LRect src{-4, 6, 3, 12};
    UnionLRect(&src, &dst);
    EXPECT_TRUE(same(dst, PF_LRect{-4, 5, 10, 12}));
}

TEST(UnionLRect, EmptySourceLeavesTheDestination)
{
    PF_LRect dst{1, 2, 3, 4};
    const PF_LRect src{-100, -100, 100, -100};  // top >= bottom
    UnionLRect(&src, &dst);
    EXPECT_TRUE(same(dst, PF_LRect{1, 2, 3, 4}));
}

}  // namespace
