#include "render/FontTable.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "common/GuiApplication.h"

namespace kesto {
namespace {

CKestoApp AppWithFonts() {
    test::EnsureGuiApplication();
    CKestoApp app;
    app.FontHeight = {0, 16, -20, 12, 0};
    app.FontCharSet = {0, 0, 128, 0, 0};
    app.FontNames = {"", "DejaVu Sans", "DejaVu Sans", "", ""};
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
    app.FontHeight[4] = INT32_MIN;
    FontTable fonts;
    fonts.Build(app);
    EXPECT_EQ(fonts.PixelHeight(4), 32767);
}

TEST(FontTable, RebuildForgetsFontsThatAreGone) {
    CKestoApp app = AppWithFonts();
    FontTable fonts;
    fonts.Build(app);
    app.FontHeight[1] = 0;
    fonts.Build(app);
    EXPECT_FALSE(fonts.Defined(1));
}

}  // namespace
}  // namespace kesto
