// A canvas moved by an offset: every primitive reaches the target moved, nothing else changed.
#include "view/ShiftedCanvas.h"

#include <gtest/gtest.h>

#include "view/DisplayList.h"

namespace kesto {
namespace {

TEST(ShiftedCanvas, MovesEveryPrimitiveByItsOffset) {
    DisplayList target;
    ShiftedCanvas shifted(target, 30, -5);
    shifted.FillRectangle({1, 2, 3, 4}, Rgb{1, 1, 1}, Rgb{2, 2, 2});
    shifted.DrawArcPrim({0, 0, 10, 10}, {10, 5}, {5, 0}, Rgb{3, 3, 3}, Rgb{4, 4, 4});
    shifted.DrawLinePrim({1, 1}, {9, 9}, Rgb{5, 5, 5}, PenStyle::Dotted, 2);
    shifted.DrawLabel(LabelMode::Left, "x", 6, {7, 8}, {7, 8, 70, 30}, Rgb{6, 6, 6});

    DisplayList expected;
    expected.FillRectangle({31, -3, 33, -1}, Rgb{1, 1, 1}, Rgb{2, 2, 2});
    expected.DrawArcPrim({30, -5, 40, 5}, {40, 0}, {35, -5}, Rgb{3, 3, 3}, Rgb{4, 4, 4});
    expected.DrawLinePrim({31, -4}, {39, 4}, Rgb{5, 5, 5}, PenStyle::Dotted, 2);
    expected.DrawLabel(LabelMode::Left, "x", 6, {37, 3}, {37, 3, 100, 25}, Rgb{6, 6, 6});
    EXPECT_EQ(target.Items(), expected.Items());
}

TEST(ShiftedCanvas, MovesAClipByItsOffsetAndLiftsItAsIs) {
    DisplayList target;
    ShiftedCanvas shifted(target, 30, -5);
    shifted.SetClip(IntRect{0, 10, 100, 50});
    shifted.SetClip(std::nullopt);
    DisplayList expected;
    expected.SetClip(IntRect{30, 5, 130, 45});
    expected.SetClip(std::nullopt);
    EXPECT_EQ(target.Items(), expected.Items());
}

}  // namespace
}  // namespace kesto
