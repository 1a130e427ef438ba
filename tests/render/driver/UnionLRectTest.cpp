#include <tuple>

#include <gtest/gtest.h>

#include "render/SmartRender.h"

namespace {

// An empty rectangle (left >= right or top >= bottom) adds nothing; an empty destination is
// replaced by the source, even an empty one.
TEST(UnionLRect, HoldsBothUnlessOneIsEmpty)
{
    struct Row {
        const char* what;
        PF_LRect dst, src, expected;
    };
    const Row rows[] = {
        {"zero destination", {0, 0, 0, 0}, {2, 3, 10, 8}, {2, 3, 10, 8}},
        {"inverted destination, empty source", {5, 5, 4, 9}, {7, 7, 7, 20}, {7, 7, 7, 20}},
        {"overlapping", {0, 5, 10, 8}, {-4, 6, 3, 12}, {-4, 5, 10, 12}},
        {"empty source", {1, 2, 3, 4}, {-100, -100, 100, -100}, {1, 2, 3, 4}},
    };
    for (const Row& row : rows) {
        PF_LRect dst = row.dst;
        UnionLRect(&row.src, &dst);
        const PF_LRect& want = row.expected;
        EXPECT_EQ(std::tie(dst.left, dst.top, dst.right, dst.bottom),
                  std::tie(want.left, want.top, want.right, want.bottom)) << row.what;
    }
}

}  // namespace
