#include "ui/draw/CKs_DrawArea.h"

#include <gtest/gtest.h>

#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(CKs_DrawArea, TakesTheDrawingAreaRectangle) {
    test::EnsureQApplication();
    CKestoApp app;
    QWidget parent;
    CKs_DrawArea area(app, &parent);
    app.AreaRect = {324, 231, 1598, 898};
    area.Place();
    EXPECT_EQ(area.geometry(), QRect(324, 231, 1274, 667));
    EXPECT_EQ(area.objectName(), "CKs_DrawArea");
}

TEST(CKs_DrawArea, ResetSelectionForgetsBandAndPicks) {
    test::EnsureQApplication();
    CKestoApp app;
    CKs_DrawArea area(app, nullptr);
    HaichiInfo stack;
    area.BandActive = 1;
    area.Picked = &stack;
    area.LastPicked = &stack;
    area.PickHistory = {&stack, &stack};
    area.BandList = {&stack};
    area.ResetSelection();
    EXPECT_EQ(area.BandActive, 0);
    EXPECT_EQ(area.Picked, nullptr);
    EXPECT_EQ(area.LastPicked, nullptr);
    EXPECT_TRUE(area.PickHistory.empty());
    EXPECT_TRUE(area.BandList.empty());
}

}  // namespace
}  // namespace kesto
