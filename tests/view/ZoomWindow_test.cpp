// The zoom's geometry on a 1000 x 500 mm pallet in FLAT, in the tests' 1000 x 700 area.
//
// Worked out by hand: the caption strip is trunc(0.04 x 700) = 28, so the plan's share is
// (0, 28)-(1000, 700), 1000 x 672 pixels. The whole pallet's window is x -40..1040,
// y -20..520 (margins of 4 %), at max(1080 / 1000, 540 / 672) = 1.08 mm a pixel. The frame
// (0, 0)-(1000, 500) projects to 37..962 x 18..481, 925 x 463 pixels, centred at left 37 and
// top (672 - 463) / 2 + 28 = 132: the origin is (0, 114), and pixel (px, py) shows
// x = -40 + 1.08 px, y = 520 - 1.08 (py - 114).
#include "view/ZoomWindow.h"

#include <gtest/gtest.h>

#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::PlacedDrawing;
using test::ViewJob;

class ZoomWindowTest : public ::testing::Test {
  protected:
    ZoomWindowTest() {
        job.AddPallet("P", 1000, 500, 100);
        job.AddKoutei(1, "Cut", "P");
        Lay();
    }
    // The area cleared (which sets the caption strip), then laid out alone.
    void Lay() {
        drawing.ClearArea(canvas);
        canvas.Clear();
        drawing.SetUpView(canvas);
    }
    void ExpectWindow(const std::optional<WorldWindow>& w, double xMin, double xMax, double yMin,
                      double yMax) {
        ASSERT_TRUE(w.has_value());
        EXPECT_NEAR(w->XMin, xMin, 1e-9);
        EXPECT_NEAR(w->XMax, xMax, 1e-9);
        EXPECT_NEAR(w->YMin, yMin, 1e-9);
        EXPECT_NEAR(w->YMax, yMax, 1e-9);
    }

    ViewJob job;
    PlacedDrawing drawing{job};
    DisplayList canvas;
};

TEST_F(ZoomWindowTest, TheWholePalletsWindowAndScaleAreThoseOfTheUnzoomedView) {
    EXPECT_EQ(drawing.PlanZone, (IntRect{0, 28, 1000, 700}));
    EXPECT_EQ(drawing.WholeWindow, (WorldWindow{-40, 1040, -20, 520}));
    EXPECT_DOUBLE_EQ(drawing.WholeScale, 1.08);
    EXPECT_EQ(drawing.OriginDX, 0);
    EXPECT_EQ(drawing.OriginDY, 114);
    EXPECT_FALSE(drawing.Zoomed());
}

TEST_F(ZoomWindowTest, TwiceAsCloseAboutThePlansCentreKeepsItsMillimetresThere) {
    // Pixel (500, 364) shows (500, 250); at 0.54 mm a pixel the window starts 500 pixels to
    // the left and 336 above: x 230..770, y 431.44 - 672 x 0.54 = 68.56..431.44.
    const auto [x, y] = drawing.ScreenToWorld(500, 364);
    EXPECT_NEAR(x, 500, 1e-9);
    EXPECT_NEAR(y, 250, 1e-9);
    ExpectWindow(WindowAround(drawing, x, y, {500, 364}, 0.54), 230, 770, 68.56, 431.44);
}

TEST_F(ZoomWindowTest, AWindowRunningOffThePalletIsMovedBackOntoIt) {
    // Pixel (10, 40) shows (-29.2, 599.92), above the whole window: x -34.6..505.4 stays,
    // y 243.52..606.4 comes down to end at 520.
    const auto [x, y] = drawing.ScreenToWorld(10, 40);
    ExpectWindow(WindowAround(drawing, x, y, {10, 40}, 0.54), -34.6, 505.4, 520 - 362.88, 520);
}

TEST_F(ZoomWindowTest, NoCloserThanTwentyPixelsToTenMillimetres) {
    const std::optional<WorldWindow> w = WindowAround(drawing, 500, 250, {500, 364}, 0.01);
    ASSERT_TRUE(w.has_value());
    EXPECT_NEAR(w->XMax - w->XMin, 1000 * kClosestScale, 1e-9);
    EXPECT_NEAR(w->YMax - w->YMin, 672 * kClosestScale, 1e-9);
}

TEST_F(ZoomWindowTest, TheWholePalletsScaleOrCoarserIsTheWholePallet) {
    EXPECT_FALSE(WindowAround(drawing, 500, 250, {500, 364}, 1.08).has_value());
    EXPECT_FALSE(WindowAround(drawing, 500, 250, {500, 364}, 3).has_value());
}

TEST_F(ZoomWindowTest, TheZoomedViewShowsItsWindowCentredInThePlan) {
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    Lay();
    EXPECT_TRUE(drawing.Zoomed());
    EXPECT_NEAR(drawing.Scale, 0.54, 1e-12);
    // (500, 250) comes back at the plan's centre, within the pixel the truncation takes.
    const IntPoint p = drawing.WorldToScreen(500, 250);
    EXPECT_NEAR(p.X + drawing.OriginDX, 500, 1);
    EXPECT_NEAR(p.Y + drawing.OriginDY, 364, 1);
    // The pallet's frame is 1000 / 0.54 = 1851 pixels wide and starts 230 / 0.54 = 425
    // pixels left of the area.
    EXPECT_NEAR(drawing.PalletRect[0].Left, -425, 1);
    EXPECT_NEAR(drawing.PalletRect[0].Right - drawing.PalletRect[0].Left, 1851, 1);
}

TEST_F(ZoomWindowTest, AZoomedPictureIsClippedToThePlanAndTheClipLifted) {
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    Lay();
    const std::vector<Primitive>& items = canvas.Items();
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items.front().Kind, PrimitiveKind::Clip);
    EXPECT_EQ(items.front().Rect, (IntRect{0, 28, 1000, 700}));
    EXPECT_EQ(items.front().Width, 1);
    EXPECT_EQ(items.back().Kind, PrimitiveKind::Clip);
    EXPECT_EQ(items.back().Width, 0);
}

TEST_F(ZoomWindowTest, TheWholePalletDrawsNoClip) {
    for (const Primitive& p : canvas.Items())
        EXPECT_NE(p.Kind, PrimitiveKind::Clip);
}

TEST_F(ZoomWindowTest, AnotherViewProcessOrPalletShowsTheWholePalletAgain) {
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    EXPECT_TRUE(job.shown.SetMode(PalletView::Danmen).Has(Change::Zoom));
    EXPECT_FALSE(job.shown.Zoom().has_value());
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    EXPECT_TRUE(job.shown.SetKoutei(2).Has(Change::Zoom));
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    EXPECT_TRUE(job.shown.SetPallet(2).Has(Change::Zoom));
    EXPECT_FALSE(job.shown.Zoom().has_value());
}

TEST_F(ZoomWindowTest, FourAndTwoPalletsDoNotZoom) {
    job.shown.SetMode(PalletView::FourPallet);
    EXPECT_TRUE(job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44}).Empty());
    EXPECT_FALSE(job.shown.Zoom().has_value());
}

TEST_F(ZoomWindowTest, DanmensPlanIsTheUpperHalfAndTheSectionStartsBelowIt) {
    job.shown.SetMode(PalletView::Danmen);
    Lay();
    // (700 - 28) / 2 + 28 = 364.
    EXPECT_EQ(drawing.PlanZone, (IntRect{0, 28, 1000, 364}));
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    Lay();
    EXPECT_TRUE(drawing.Zoomed());
    EXPECT_EQ(drawing.SectionBase, 364);
}

TEST_F(ZoomWindowTest, ReprojectedCarriesPixelsToWhereTheSameMillimetresShow) {
    const Projection whole = ProjectionOf(drawing);
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    Lay();
    const Projection zoomed = ProjectionOf(drawing);
    // (500, 364) shows (500, 250) in both.
    const IntRect r = Reprojected(IntRect{500, 364, 500, 364}, whole, zoomed);
    EXPECT_NEAR(r.Left, 500, 1);
    EXPECT_NEAR(r.Top, 364, 1);
    // 54 pixels of the whole view (58.32 mm) are 108 of the zoomed one.
    const IntRect wide = Reprojected(IntRect{500, 364, 554, 418}, whole, zoomed);
    EXPECT_NEAR(wide.Right - wide.Left, 108, 1);
    EXPECT_NEAR(wide.Bottom - wide.Top, 108, 1);
}

TEST_F(ZoomWindowTest, TheOverviewShowsTheWindowInThePalletInThePlansCorner) {
    EXPECT_FALSE(Overview(drawing).has_value());
    job.shown.SetZoom(WorldWindow{230, 770, 68.56, 431.44});
    Lay();
    const std::optional<OverviewMap> map = Overview(drawing);
    ASSERT_TRUE(map.has_value());
    // 160 pixels for 1080 mm (6.75 mm a pixel), 540 mm high: 80 pixels, 8 from the corner.
    EXPECT_EQ(map->Whole, (IntRect{832, 612, 992, 692}));
    // The pallet, x 0..1000 from -40 and y 500..0 from 520: 837..986 and 614..689.
    EXPECT_EQ(map->Pallet, (IntRect{837, 614, 986, 689}));
    // x 230..770 from -40: 40..120; y 431.44..68.56 from 520: 13..66.
    EXPECT_EQ(map->Shown, (IntRect{872, 625, 952, 678}));
}

}  // namespace
}  // namespace kesto
