#include "render/FontTable.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "common/GuiApplication.h"

namespace kesto {
namespace {

CKestoApp AppWithFonts() {
    test::EnsureGuiApplication();
    CKestoApp app;
    app.Settings.FontHeight = {0, 16, -20, 12, 0};
    app.Settings.FontCharSet = {0, 0, 128, 0, 0};
    app.Settings.FontNames = {"", "DejaVu Sans", "DejaVu Sans", "", ""};
    return app;
}

TEST(FontTable, PositiveHeightIsThePixelSize) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    ASSERT_TRUE(fonts.Defined(1));
    EXPECT_EQ(fonts.Font(1).pixelSize(), 16);
    EXPECT_EQ(fonts.Font(1).families().value(0), "DejaVu Sans");
    EXPECT_EQ(fonts.PixelHeight(1), 16);
}

TEST(FontTable, NegativeHeightGivesItsMagnitude) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    EXPECT_EQ(fonts.PixelHeight(2), 20);
}

TEST(FontTable, CharacterSet128AddsTheCjkFallback) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    EXPECT_EQ(fonts.Font(2).families(), QStringList({"DejaVu Sans", kCjkFallbackFamily}));
    EXPECT_EQ(fonts.Font(1).families().size(), 1);
}

TEST(FontTable, ThreeColumnFontHasHeightAndNoFaceName) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    ASSERT_TRUE(fonts.Defined(3));
    EXPECT_EQ(fonts.PixelHeight(3), 12);
}

TEST(FontTable, HeightZeroAndNumbersOutOfRangeAreUndefined) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    EXPECT_FALSE(fonts.Defined(0));
    EXPECT_FALSE(fonts.Defined(4));
    EXPECT_FALSE(fonts.Defined(5));
    EXPECT_FALSE(fonts.Defined(-1));
    EXPECT_EQ(fonts.PixelHeight(9), 0);
}

TEST(FontTable, SaturatedHeightIsCutToAUsableSize) {
    CKestoApp app = AppWithFonts();
    app.Settings.FontHeight[4] = INT32_MIN;
    FontTable fonts;
    fonts.Build(app);
    EXPECT_EQ(fonts.PixelHeight(4), 32767);
}

TEST(FontTable, APicturesOwnFontsTakeTheSlotsAfterTheSettings) {
    FontTable fonts;
    fonts.Build(AppWithFonts());
    fonts.Set(7, 26, 128, "DejaVu Sans", true);
    ASSERT_TRUE(fonts.Defined(7));
    EXPECT_EQ(fonts.PixelHeight(7), 26);
    EXPECT_TRUE(fonts.Font(7).bold());
    EXPECT_EQ(fonts.Font(7).families(), QStringList({"DejaVu Sans", kCjkFallbackFamily}));
    EXPECT_FALSE(fonts.Font(1).bold());
    // Height 0 and slots beyond the canvas's leave nothing defined.
    fonts.Set(7, 0, 0, "DejaVu Sans", false);
    EXPECT_FALSE(fonts.Defined(7));
    fonts.Set(kCanvasFontSlots, 20, 0, "DejaVu Sans", false);
    EXPECT_FALSE(fonts.Defined(kCanvasFontSlots));
    // A rebuild from the settings forgets them.
    fonts.Set(6, 20, 0, "", false);
    fonts.Build(AppWithFonts());
    EXPECT_FALSE(fonts.Defined(6));
}

TEST(FontTable, RebuildForgetsFontsThatAreGone) {
    CKestoApp app = AppWithFonts();
    FontTable fonts;
    fonts.Build(app);
    app.Settings.FontHeight[1] = 0;
    fonts.Build(app);
    EXPECT_FALSE(fonts.Defined(1));
}

}  // namespace
}  // namespace kesto
