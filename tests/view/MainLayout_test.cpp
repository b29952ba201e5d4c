#include "view/MainLayout.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

using R = ControlRect;

TEST(ComputeMainLayout, LeftColumnAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(kSmallBoxLabel), (R{2, 2, 288, 22}));
    EXPECT_EQ(l.Controls.at(kSmallBoxList), (R{2, 24, 288, 135}));
    EXPECT_EQ(l.Controls.at(kPagePrevious), (R{290, 24, 32, 27}));
    EXPECT_EQ(l.Controls.at(kBoxButton1), (R{290, 51, 32, 27}));
    EXPECT_EQ(l.Controls.at(kBoxButton2), (R{290, 78, 32, 27}));
    EXPECT_EQ(l.Controls.at(kBoxButton3), (R{290, 105, 32, 27}));
    EXPECT_EQ(l.Controls.at(kPageNext), (R{290, 132, 32, 27}));
    EXPECT_EQ(l.Controls.at(kDownButton), (R{2, 159, 144, 36}));
    EXPECT_EQ(l.Controls.at(kUpButton), (R{146, 159, 144, 36}));
    EXPECT_EQ(l.Controls.at(kToriokiLabel), (R{2, 197, 288, 22}));
    EXPECT_EQ(l.Controls.at(kToriokiList), (R{2, 219, 288, 225}));
    EXPECT_EQ(l.Controls.at(kLeftButton), (R{290, 219, 32, 112}));
    EXPECT_EQ(l.Controls.at(kRightButton), (R{290, 331, 32, 112}));
    EXPECT_EQ(l.Controls.at(kPartViewPlace), (R{2, 446, 320, 108}));
    EXPECT_EQ(l.Controls.at(kAllPartsLabel), (R{2, 556, 320, 22}));
    EXPECT_EQ(l.Controls.at(kAllPartsList), (R{2, 578, 320, 320}));
}

TEST(ComputeMainLayout, SecondColumnAndRectanglesAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(kScheduleLabel), (R{324, 2, 240, 22}));
    EXPECT_EQ(l.Controls.at(kScheduleList), (R{324, 24, 240, 171}));
    EXPECT_EQ(l.Controls.at(kPalletCombo), (R{324, 199, 240, 30}));
    EXPECT_EQ(l.AreaPlacement.Left, 324);
    EXPECT_EQ(l.AreaPlacement.Top, 231);
    EXPECT_EQ(l.AreaPlacement.Right, 1598);
    EXPECT_EQ(l.AreaPlacement.Bottom, 898);
    EXPECT_EQ(l.ViewPlacement.Left, 2);
    EXPECT_EQ(l.ViewPlacement.Top, 446);
    EXPECT_EQ(l.ViewPlacement.Right, 322);
    EXPECT_EQ(l.ViewPlacement.Bottom, 554);
    EXPECT_EQ(l.InfoPlacement.Left, 681);
    EXPECT_EQ(l.InfoPlacement.Top, 2);
    EXPECT_EQ(l.InfoPlacement.Right, 1598);
    EXPECT_EQ(l.InfoPlacement.Bottom, 104);
}

TEST(ComputeMainLayout, ButtonStripAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(kRetryButton), (R{564, 24, 115, 42}));
    EXPECT_EQ(l.Controls.at(kAutoButton), (R{564, 66, 115, 42}));
    EXPECT_EQ(l.Controls.at(kMaiChgButton), (R{564, 108, 115, 84}));
    EXPECT_EQ(l.Controls.at(kHitLabel), (R{679, 108, 230, 42}));
    EXPECT_EQ(l.Controls.at(kHitByBlock), (R{679, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(kHitSingle), (R{794, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(k3DToggle), (R{909, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(kGridToggle), (R{909, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(kBlockDrawToggle), (R{1024, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(kNestToggle), (R{1024, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(kInfoButton), (R{1139, 108, 115, 84}));
    EXPECT_EQ(l.Controls.at(kFlatButton), (R{1254, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(kDanmenButton), (R{1254, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(kTwoPalletButton), (R{1369, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(kFourPalletButton), (R{1369, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(kCancel), (R{1484, 108, 57, 84}));
    EXPECT_EQ(l.Controls.at(kOk), (R{1541, 108, 57, 84}));
    EXPECT_EQ(l.Controls.at(kInfoPlace), (R{681, 2, 917, 102}));
}

TEST(ComputeMainLayout, ProductsTruncateAt1280x1024) {
    const MainLayout l = ComputeMainLayout(1280, 1024, 30);
    EXPECT_EQ(l.Controls.at(kSmallBoxList), (R{2, 27, 230, 153}));
    EXPECT_EQ(l.Controls.at(kPagePrevious), (R{232, 27, 26, 30}));
    EXPECT_EQ(l.Controls.at(kAllPartsList), (R{2, 654, 256, 368}));
    EXPECT_EQ(l.Controls.at(kPalletCombo), (R{260, 224, 192, 30}));
    EXPECT_EQ(l.Controls.at(kRetryButton), (R{452, 27, 92, 48}));
    EXPECT_EQ(l.Controls.at(kOk), (R{1233, 123, 45, 96}));
    EXPECT_EQ(l.Controls.at(kInfoPlace), (R{546, 2, 732, 117}));
    EXPECT_EQ(l.AreaPlacement.Top, 256);
    EXPECT_EQ(l.AreaPlacement.Right, 1278);
    EXPECT_EQ(l.InfoPlacement.Bottom, 119);
}

TEST(ComputeMainLayout, DrawingAreaStartsBelowTheComboBoxOfItsPresentHeight) {
    EXPECT_EQ(ComputeMainLayout(1600, 900, 50).AreaPlacement.Top, 251);
}

TEST(ComputeMainLayout, TinyClientGivesNegativeSizesUnclamped) {
    const MainLayout l = ComputeMainLayout(40, 10, 30);
    EXPECT_EQ(l.Controls.at(kAllPartsList).Height, -4);
    EXPECT_EQ(l.Controls.at(kInfoPlace).Height, -4);
    EXPECT_EQ(l.InfoPlacement.Bottom, -2);
    EXPECT_EQ(l.Controls.at(kSmallBoxList).Height, 1);
}

TEST(ComputeMainLayout, EveryControlOfTheWindowIsPlaced) {
    EXPECT_EQ(ComputeMainLayout(800, 600, 20).Controls.size(), 37u);
}

TEST(ComputeMainLayout, PlacesEveryControlOfTheControlTable) {
    const MainLayout l = ComputeMainLayout(800, 600, 20);
    for (const ControlEntry& entry : kControls)
        EXPECT_EQ(l.Controls.count(entry.Id), 1u) << entry.Id;
}

}  // namespace
}  // namespace kesto
