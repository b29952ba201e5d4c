// Font slots as the drawing sees them: a pixel height, or none.
#include "view/Canvas.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(FontSlots, DefinedSlotsGiveTheirPixelHeight) {
    CKestoApp app;
    app.Settings.FontHeight = {0, 12, 14, 0, 15};
    EXPECT_EQ(12, FontPixelHeight(app, 1));
    EXPECT_EQ(14, FontPixelHeight(app, 2));
    EXPECT_EQ(15, FontPixelHeight(app, 4));
    EXPECT_TRUE(FontDefined(app, 1));
    EXPECT_TRUE(FontDefined(app, 4));
}

TEST(FontSlots, AHeightOfZeroIsNoFont) {
    CKestoApp app;
    app.Settings.FontHeight = {0, 12, 14, 0, 15};
    EXPECT_EQ(0, FontPixelHeight(app, 0));
    EXPECT_EQ(0, FontPixelHeight(app, 3));
    EXPECT_FALSE(FontDefined(app, 0));
    EXPECT_FALSE(FontDefined(app, 3));
}

TEST(FontSlots, SlotsOutsideTheTableAreNoFont) {
    CKestoApp app;
    app.Settings.FontHeight = {9, 12, 14, 20, 15};
    for (int32_t slot : {-1, 5, 100, -1000}) {
        EXPECT_EQ(0, FontPixelHeight(app, slot)) << slot;
        EXPECT_FALSE(FontDefined(app, slot)) << slot;
    }
}

TEST(FontSlots, ANewApplicationHasNoFonts) {
    const CKestoApp app;
    for (int32_t slot = 0; slot < 5; ++slot)
        EXPECT_FALSE(FontDefined(app, slot)) << slot;
}

}  // namespace
}  // namespace kesto
