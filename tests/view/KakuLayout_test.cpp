#include "view/KakuLayout.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

using R = ControlRect;

// Worked out by hand: 40 bytes at 16 pixels give 40 x 16 / 7 x 4 = 91 x 4 = 364 wide; ten
// lines of 16 are below the least height of 200. Centred on a 1600 x 900 window at (0, 0).
TEST(LayOutKakuDlg, AQuestionIsSizedByItsTextAndCentredOnItsWindow) {
    const KakuLayout l = LayOutKakuDlg(40, 16, R{0, 0, 1600, 900}, false);
    EXPECT_EQ(l.Box, (R{800 - 182, 450 - 100, 364, 200}));
    EXPECT_EQ(l.Line1, (R{0, 50, 364, 32}));
    EXPECT_EQ(l.Line2, (R{0, 92, 364, 32}));
    EXPECT_EQ(l.Ok, (R{182 - 105, 165, 100, 30}));
    ASSERT_TRUE(l.Cancel.has_value());
    EXPECT_EQ(*l.Cancel, (R{187, 165, 100, 30}));
}

TEST(LayOutKakuDlg, AMessageThatOnlyInformsHasOneWideOk) {
    const KakuLayout l = LayOutKakuDlg(40, 16, R{0, 0, 1600, 900}, true);
    EXPECT_EQ(l.Ok, (R{77, 165, 205, 30}));
    EXPECT_FALSE(l.Cancel.has_value());
}

TEST(LayOutKakuDlg, AShortTextKeepsTheLeastSize) {
    const KakuLayout l = LayOutKakuDlg(3, 14, R{100, 50, 400, 300}, true);
    // 3 x 14 / 7 x 4 = 24, below 300; 140 below 200; centred on (300, 200).
    EXPECT_EQ(l.Box, (R{150, 100, 300, 200}));
}

TEST(LayOutKakuDlg, ATallFontMakesTheBoxTallerThanTheLeast) {
    const KakuLayout l = LayOutKakuDlg(100, 24, R{0, 0, 1920, 1080}, false);
    // 100 x 24 / 7 = 342, x 4 = 1368 wide; 240 high.
    EXPECT_EQ(l.Box, (R{960 - 684, 540 - 120, 1368, 240}));
    EXPECT_EQ(l.Ok.Y, 240 - 35);
}

}  // namespace
}  // namespace kesto
