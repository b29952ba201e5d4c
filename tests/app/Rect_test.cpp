// Points in rectangles and rectangles around rectangles, in pixels.
#include "app/Rect.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(Rect, APointOnAnEdgeIsInside) {
    const IntRect r{10, 20, 110, 70};
    EXPECT_TRUE(Contains(r, 10, 20));
    EXPECT_TRUE(Contains(r, 110, 70));
    EXPECT_TRUE(Contains(r, 60, 45));
    EXPECT_FALSE(Contains(r, 9, 45));
    EXPECT_FALSE(Contains(r, 111, 45));
    EXPECT_FALSE(Contains(r, 60, 19));
    EXPECT_FALSE(Contains(r, 60, 71));
}

TEST(Rect, TheUnionIsTheSmallestRectangleAroundBoth) {
    EXPECT_EQ(Union(IntRect{10, 20, 110, 70}, IntRect{-5, 30, 50, 90}), (IntRect{-5, 20, 110, 90}));
    EXPECT_EQ(Union(IntRect{0, 0, 5, 5}, IntRect{1, 1, 2, 2}), (IntRect{0, 0, 5, 5}));
}

}  // namespace
}  // namespace kesto
