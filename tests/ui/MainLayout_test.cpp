#include "ui/main/MainLayout.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

using R = ControlRect;

TEST(ComputeMainLayout, LeftColumnAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(1004), (R{2, 2, 288, 22}));
    EXPECT_EQ(l.Controls.at(1000), (R{2, 24, 288, 135}));
    EXPECT_EQ(l.Controls.at(1042), (R{290, 24, 32, 27}));
    EXPECT_EQ(l.Controls.at(1037), (R{290, 51, 32, 27}));
    EXPECT_EQ(l.Controls.at(1038), (R{290, 78, 32, 27}));
    EXPECT_EQ(l.Controls.at(1039), (R{290, 105, 32, 27}));
    EXPECT_EQ(l.Controls.at(1041), (R{290, 132, 32, 27}));
    EXPECT_EQ(l.Controls.at(1007), (R{2, 159, 144, 36}));
    EXPECT_EQ(l.Controls.at(1008), (R{146, 159, 144, 36}));
    EXPECT_EQ(l.Controls.at(1005), (R{2, 197, 288, 22}));
    EXPECT_EQ(l.Controls.at(1002), (R{2, 219, 288, 225}));
    EXPECT_EQ(l.Controls.at(1012), (R{290, 219, 32, 112}));
    EXPECT_EQ(l.Controls.at(1013), (R{290, 331, 32, 112}));
    EXPECT_EQ(l.Controls.at(1014), (R{2, 446, 320, 108}));
    EXPECT_EQ(l.Controls.at(1006), (R{2, 556, 320, 22}));
    EXPECT_EQ(l.Controls.at(1003), (R{2, 578, 320, 320}));
}

TEST(ComputeMainLayout, SecondColumnAndRectanglesAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(1015), (R{324, 2, 240, 22}));
    EXPECT_EQ(l.Controls.at(1001), (R{324, 24, 240, 171}));
    EXPECT_EQ(l.Controls.at(1044), (R{324, 199, 240, 30}));
    EXPECT_EQ(l.AreaRect.Left, 324);
    EXPECT_EQ(l.AreaRect.Top, 231);
    EXPECT_EQ(l.AreaRect.Right, 1598);
    EXPECT_EQ(l.AreaRect.Bottom, 898);
    EXPECT_EQ(l.ViewRect.Left, 2);
    EXPECT_EQ(l.ViewRect.Top, 446);
    EXPECT_EQ(l.ViewRect.Right, 322);
    EXPECT_EQ(l.ViewRect.Bottom, 554);
    EXPECT_EQ(l.InfoRect.Left, 681);
    EXPECT_EQ(l.InfoRect.Top, 2);
    EXPECT_EQ(l.InfoRect.Right, 1598);
    EXPECT_EQ(l.InfoRect.Bottom, 104);
}

TEST(ComputeMainLayout, ButtonStripAt1600x900) {
    const MainLayout l = ComputeMainLayout(1600, 900, 30);
    EXPECT_EQ(l.Controls.at(1016), (R{564, 24, 115, 42}));
    EXPECT_EQ(l.Controls.at(1017), (R{564, 66, 115, 42}));
    EXPECT_EQ(l.Controls.at(1018), (R{564, 108, 115, 84}));
    EXPECT_EQ(l.Controls.at(1019), (R{679, 108, 230, 42}));
    EXPECT_EQ(l.Controls.at(1035), (R{679, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(1036), (R{794, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(1029), (R{909, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(1028), (R{909, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(1032), (R{1024, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(1031), (R{1024, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(1024), (R{1139, 108, 115, 84}));
    EXPECT_EQ(l.Controls.at(1025), (R{1254, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(1026), (R{1254, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(1027), (R{1369, 108, 115, 42}));
    EXPECT_EQ(l.Controls.at(1030), (R{1369, 150, 115, 42}));
    EXPECT_EQ(l.Controls.at(2), (R{1484, 108, 57, 84}));
    EXPECT_EQ(l.Controls.at(1), (R{1541, 108, 57, 84}));
    EXPECT_EQ(l.Controls.at(1040), (R{681, 2, 917, 102}));
}

TEST(ComputeMainLayout, ProductsTruncateAt1280x1024) {
    const MainLayout l = ComputeMainLayout(1280, 1024, 30);
    EXPECT_EQ(l.Controls.at(1000), (R{2, 27, 230, 153}));
    EXPECT_EQ(l.Controls.at(1042), (R{232, 27, 26, 30}));
    EXPECT_EQ(l.Controls.at(1003), (R{2, 654, 256, 368}));
    EXPECT_EQ(l.Controls.at(1044), (R{260, 224, 192, 30}));
    EXPECT_EQ(l.Controls.at(1016), (R{452, 27, 92, 48}));
    EXPECT_EQ(l.Controls.at(1), (R{1233, 123, 45, 96}));
    EXPECT_EQ(l.Controls.at(1040), (R{546, 2, 732, 117}));
    EXPECT_EQ(l.AreaRect.Top, 256);
    EXPECT_EQ(l.AreaRect.Right, 1278);
    EXPECT_EQ(l.InfoRect.Bottom, 119);
}

TEST(ComputeMainLayout, DrawingAreaStartsBelowTheComboBoxOfItsPresentHeight) {
    EXPECT_EQ(ComputeMainLayout(1600, 900, 50).AreaRect.Top, 251);
}

TEST(ComputeMainLayout, TinyClientGivesNegativeSizesUnclamped) {
    const MainLayout l = ComputeMainLayout(40, 10, 30);
    EXPECT_EQ(l.Controls.at(1003).Height, -4);
    EXPECT_EQ(l.Controls.at(1040).Height, -4);
    EXPECT_EQ(l.InfoRect.Bottom, -2);
    EXPECT_EQ(l.Controls.at(1000).Height, 1);
}

TEST(ComputeMainLayout, EveryControlOfTheWindowIsPlaced) {
    EXPECT_EQ(ComputeMainLayout(800, 600, 20).Controls.size(), 37u);
}

}  // namespace
}  // namespace kesto
