// The part view at 320 x 108 showing 200 x 150 mm: world x -20..220, y -15..165; scale
// max(240 / 320, 180 / 88); the rectangle 98 x 73 with free space 222 x 35 sits at
// (111, 22)-(209, 95).
#include "ui/dialogs/CKs_PartsView.h"

#include <gtest/gtest.h>

#include "common/WindowJob.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::PixelAt;

struct ViewJob {
    ViewJob() {
        job.Install.Write("msg/Kesto.ini", test::KestoIniWithDrawing());
        opened = job.Open();
        Panel().PlacePanel({0, 0, 320, 108});
    }
    CKs_PartsView& Panel() { return *job.Dialog->PartsViewPanel(); }
    Rgb At(int x, int y) { return PixelAt(Panel().Image(), x, y); }
    int Count(int x0, int y0, int x1, int y1, Rgb colour) {
        int n = 0;
        for (int y = y0; y < y1; ++y) {
            for (int x = x0; x < x1; ++x)
                n += At(x, y) == colour ? 1 : 0;
        }
        return n;
    }

    test::WindowJob job;
    bool opened = false;
};

TEST(CKs_PartsView, PlacePanelTakesThePlacementAndStoresTheClientRectangle) {
    ViewJob view;
    ASSERT_TRUE(view.opened);
    view.Panel().PlacePanel({2, 446, 322, 554});
    EXPECT_EQ(view.Panel().geometry(), QRect(2, 446, 320, 108));
    EXPECT_EQ(view.Panel().Panel().Client(), (IntRect{0, 0, 320, 108}));
    EXPECT_EQ(view.Panel().objectName(), "CKs_PartsView");
}

TEST(CKs_PartsView, PartRectangleSitsCentredTwoThirdsDown) {
    ViewJob view;
    ASSERT_TRUE(view.opened);
    view.Panel().ShowSize(200, 150);
    EXPECT_EQ(view.At(111, 50), colour::kPanelPartPen);
    EXPECT_EQ(view.At(208, 50), colour::kPanelPartPen);
    EXPECT_EQ(view.At(150, 22), colour::kPanelPartPen);
    EXPECT_EQ(view.At(150, 94), colour::kPanelPartPen);
    EXPECT_EQ(view.At(150, 60), colour::kPanelPart);
    EXPECT_EQ(view.At(110, 50), colour::kPanelBackground);
    EXPECT_EQ(view.At(209, 50), colour::kPanelBackground);
    EXPECT_EQ(view.At(150, 21), colour::kPanelBackground);
    EXPECT_EQ(view.At(150, 95), colour::kPanelBackground);
    // The size is written in white in the 20-pixel strip above.
    EXPECT_GT(view.Count(0, 0, 320, 20, colour::kPanelText), 20);
    EXPECT_EQ(view.Count(0, 20, 320, 108, colour::kPanelText), 0);
    EXPECT_DOUBLE_EQ(view.Panel().SizeX(), 200);
    EXPECT_DOUBLE_EQ(view.Panel().SizeY(), 150);
    EXPECT_EQ(view.Panel().Panel().Shown, 1);
}

TEST(CKs_PartsView, NoPartSizeOnlyClearsThePanel) {
    ViewJob view;
    ASSERT_TRUE(view.opened);
    view.Panel().ShowSize(200, 150);
    view.Panel().ShowSize(kNoPartSize, kNoPartSize);
    EXPECT_EQ(view.Count(0, 0, 320, 108, colour::kPanelBackground), 320 * 108);
    EXPECT_DOUBLE_EQ(view.Panel().SizeX(), -0.1);
    EXPECT_EQ(view.Panel().Panel().Shown, 1);
}

TEST(CKs_PartsView, PlacingThePanelAgainShowsTheLastSize) {
    ViewJob view;
    ASSERT_TRUE(view.opened);
    view.Panel().ShowSize(200, 150);
    view.Panel().PlacePanel({0, 0, 320, 108});
    EXPECT_EQ(view.At(150, 60), colour::kPanelPart);
    EXPECT_EQ(view.At(111, 50), colour::kPanelPartPen);
}

TEST(CKs_PartsView, BeforeAnySizeTheRepaintOnlyClears) {
    ViewJob view;
    ASSERT_TRUE(view.opened);
    view.Panel().Repaint();
    EXPECT_EQ(view.Count(0, 0, 320, 108, colour::kPanelBackground), 320 * 108);
}

}  // namespace
}  // namespace kesto
