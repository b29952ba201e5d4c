// A part's own outline fitted to its stack's rectangle: every element kind, the circle's
// minimum size and squaring, and its own colours against a given one.
#include <gtest/gtest.h>

#include "common/RecordingCanvasQueries.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::AddStack;
using test::PlacedDrawing;
using test::ViewJob;

// FLAT on pallet W 1003.7, L 840 at 1000 x 700: Scale 1.35, XMin -40.148, YMax 873.6,
// OriginDX 99, OriginDY 28. The stack: 240.3 x 150.7 at X 350.2, Y 30.5, screen rectangle
// {210, 540, 388, 652}; B0 = WorldToScreen(109.9, 30.5) = (111, 624). An element point
// (px, py) lands at (R.left + T.x - 111, R.bottom + T.y - 624), T = WorldToScreen(px +
// 109.9, py + 30.5); with R the stack's own rectangle that is (T.x + 99, T.y + 28).
//
// Points used: (10.3, 20.6) -> T = (trunc(118.78), trunc(609.26)) = (118, 609) -> (217, 637);
// (150.9, 120.2) -> T = (trunc(222.92), trunc(535.48)) = (222, 535) -> (321, 563);
// (10.3, 120.2) -> (217, 563); (150.9, 20.6) -> (321, 637).
constexpr IntRect kStack{210, 540, 388, 652};
constexpr uint32_t kOwnColour = 0x3366CC;  // red 0xCC, green 0x66, blue 0x33
constexpr Rgb kOwn{0xCC, 0x66, 0x33};

class Outlines : public ::testing::Test {
  protected:
    void SetUp() override {
        job.AddPallet("BLK", 1003.7, 840, 900);
        job.AddKoutei(1, "CUT", "BLK");
        block = job.AddBlock(1, 1, 0, 0, 1003.7, 840);
        part = &job.AddPart({.DisplayName = "PLATE", .SizeX = 240.3, .SizeY = 150.7});
        part->HasOutline = 1;
        record = &AddStack(job.app, *part, {.Block = block, .Pieces = 1, .X = 350.2, .Y = 30.5});
        DisplayList setUp;
        drawing.Refresh(setUp);
    }
    void AddElement(int32_t kind, std::initializer_list<std::pair<int, double>> params,
                    uint32_t colour = kOwnColour) {
        ShapeElement e;
        e.Kind = kind;
        e.Color = colour;
        for (const auto& [i, v] : params)
            e.Params[static_cast<size_t>(i)] = v;
        part->Shapes.push_back(e);
        part->ShapeCount = static_cast<int32_t>(part->Shapes.size());
    }
    std::vector<Primitive> Draw(const IntRect& r = kStack, std::optional<Rgb> colour = {}) {
        DisplayList list;
        drawing.DrawOutline(list, r, *record, colour);
        return list.Items();
    }

    ViewJob job;
    PlacedDrawing drawing{job};
    int32_t block = 0;
    PartsInfo* part = nullptr;
    HaichiInfo* record = nullptr;
};

void ExpectLine(const Primitive& p, IntPoint a, IntPoint b, Rgb colour) {
    EXPECT_EQ(PrimitiveKind::Line, p.Kind);
    EXPECT_EQ(a, p.A) << p.A.X << "," << p.A.Y;
    EXPECT_EQ(b, p.B) << p.B.X << "," << p.B.Y;
    EXPECT_EQ(colour, p.Pen);
    EXPECT_EQ(PenStyle::Solid, p.Style);
    EXPECT_EQ(1, p.Width);
}

TEST_F(Outlines, TheStackSitsWhereTheProjectionPutsIt) {
    EXPECT_EQ(kStack, drawing.ScreenRect(*record));
}

TEST_F(Outlines, ALineInItsOwnColour) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    const auto items = Draw();
    ASSERT_EQ(1u, items.size());
    ExpectLine(items[0], {217, 637}, {321, 563}, kOwn);
}

TEST_F(Outlines, TheOutlineFollowsAMovedRectangle) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    // (1000 + 118 - 111, 2100 + 609 - 624) and (1000 + 222 - 111, 2100 + 535 - 624).
    const auto items = Draw({1000, 2000, 1100, 2100});
    ASSERT_EQ(1u, items.size());
    ExpectLine(items[0], {1007, 2085}, {1111, 2011}, kOwn);
}

TEST_F(Outlines, ACounterClockwiseArc) {
    AddElement(kShapeCcwArc, {{0, 150.9},
                              {1, 120.2},
                              {2, 10.3},
                              {3, 20.6},
                              {7, 10.3},
                              {8, 120.2},
                              {9, 150.9},
                              {10, 20.6}});
    const auto items = Draw();
    ASSERT_EQ(1u, items.size());
    EXPECT_EQ(PrimitiveKind::Arc, items[0].Kind);
    EXPECT_EQ((IntRect{217, 563, 321, 637}), items[0].Rect);
    EXPECT_EQ((IntPoint{321, 563}), items[0].A);
    EXPECT_EQ((IntPoint{217, 637}), items[0].B);
    EXPECT_EQ(kOwn, items[0].Pen);
}

TEST_F(Outlines, ACircleIsMadeSquareByGrowingItsShorterSide) {
    // Centre (21.4, 60.2), r 20.3: corners (1.1, 80.5) -> T = (trunc(111.96), trunc(564.89))
    // = (111, 564) -> (210, 592); (41.7, 39.9) -> T = (trunc(142.04), trunc(594.96))
    // = (142, 594) -> (241, 622). 31 wide, 30 high: the height grows to 31.
    AddElement(kShapeCircle, {{0, 21.4}, {1, 60.2}, {2, 20.3}});
    const auto items = Draw();
    ASSERT_EQ(1u, items.size());
    EXPECT_EQ(PrimitiveKind::Arc, items[0].Kind);
    EXPECT_EQ((IntRect{210, 592, 241, 623}), items[0].Rect);
    // A full arc from and to the middle of the bottom edge: ((210 + 241)/2, 623).
    EXPECT_EQ((IntPoint{225, 623}), items[0].A);
    EXPECT_EQ((IntPoint{225, 623}), items[0].B);
    EXPECT_EQ(kOwn, items[0].Pen);
}

TEST_F(Outlines, ATinyCircleIsAtLeastTwoPixelsEachWay) {
    // Centre (100.4, 50), r 0.3: x 210.0 -> trunc(185.29), 210.6 -> trunc(185.74): both 185;
    // y 80.8 -> trunc(587.26), 80.2 -> trunc(587.70): both 587. Box (284, 615) grown to
    // (286, 617).
    AddElement(kShapeCircle, {{0, 100.4}, {1, 50.0}, {2, 0.3}});
    const auto items = Draw();
    ASSERT_EQ(1u, items.size());
    EXPECT_EQ((IntRect{284, 615, 286, 617}), items[0].Rect);
    EXPECT_EQ((IntPoint{285, 617}), items[0].A);
    EXPECT_EQ((IntPoint{285, 617}), items[0].B);
}

TEST_F(Outlines, ARectangleWithoutAngle) {
    AddElement(kShapeNoAngRect, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    const auto items = Draw();
    ASSERT_EQ(4u, items.size());
    ExpectLine(items[0], {217, 563}, {217, 637}, kOwn);
    ExpectLine(items[1], {217, 637}, {321, 637}, kOwn);
    ExpectLine(items[2], {321, 637}, {321, 563}, kOwn);
    ExpectLine(items[3], {321, 563}, {217, 563}, kOwn);
}

TEST_F(Outlines, ARectangleWithAngleRunsThroughItsFourCorners) {
    AddElement(kShapeAngRect, {{0, 10.3},
                               {1, 20.6},
                               {2, 10.3},
                               {3, 120.2},
                               {4, 150.9},
                               {5, 120.2},
                               {6, 150.9},
                               {7, 20.6}});
    const auto items = Draw();
    ASSERT_EQ(4u, items.size());
    ExpectLine(items[0], {217, 637}, {321, 637}, kOwn);
    ExpectLine(items[1], {321, 637}, {321, 563}, kOwn);
    ExpectLine(items[2], {321, 563}, {217, 563}, kOwn);
    ExpectLine(items[3], {217, 563}, {217, 637}, kOwn);
}

TEST_F(Outlines, PixelsUnscaledElementsAndUnknownKindsDrawNothing) {
    for (int32_t kind : {kShapeNone, kShapePixel, kShapeNoScalePixel, kShapeNoScaleCircle})
        AddElement(kind, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    EXPECT_TRUE(Draw().empty());
}

TEST_F(Outlines, AGivenColourOverridesTheElementsOwn) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}}, 0x0000FF);
    AddElement(kShapeCircle, {{0, 21.4}, {1, 60.2}, {2, 20.3}}, 0x00FF00);
    auto items = Draw(kStack, colour::kPicked);
    ASSERT_EQ(2u, items.size());
    EXPECT_EQ(colour::kPicked, items[0].Pen);
    EXPECT_EQ(colour::kPicked, items[1].Pen);
    // Each its own: red 0xFF for the line, green 0xFF for the circle.
    items = Draw();
    ASSERT_EQ(2u, items.size());
    EXPECT_EQ((Rgb{255, 0, 0}), items[0].Pen);
    EXPECT_EQ((Rgb{0, 255, 0}), items[1].Pen);
}

TEST_F(Outlines, DrawingModesUseTheOutlineOnlyWhenArrangedDirectly) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    job.app.Settings.IsDirect = 1;
    DisplayList direct;
    drawing.DrawParts(direct, DrawMode::All);
    EXPECT_TRUE(test::Rectangles(direct).empty());
    ASSERT_EQ(1u, test::Lines(direct).size());
    ExpectLine(test::Lines(direct)[0], {217, 637}, {321, 563}, kOwn);

    job.app.Settings.IsDirect = 0;
    DisplayList filled;
    drawing.DrawParts(filled, DrawMode::All);
    ASSERT_EQ(1u, test::Rectangles(filled).size());
    EXPECT_EQ(kStack, test::Rectangles(filled)[0].Rect);
    EXPECT_TRUE(test::Lines(filled).empty());
}

// On paper an outline in its file's colour may not show (white, yellow): the print
// palette draws every element with its dark pen.
TEST_F(Outlines, ThePrintPaletteDrawsOutlinesInItsOwnPen) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    job.app.Settings.IsDirect = 1;
    PlacedDrawing paper(job, colour::kPrintPalette);
    DisplayList setUp;
    paper.Refresh(setUp);
    const std::vector<Primitive> lines = test::Lines(setUp);
    ASSERT_EQ(1u, lines.size());
    ExpectLine(lines[0], {217, 637}, {321, 563}, *colour::kPrintPalette.OutlinePen);
}

TEST_F(Outlines, HighlightedOutlinesUseThePickedAndSamePartColours) {
    AddElement(kShapeLine, {{0, 10.3}, {1, 20.6}, {2, 150.9}, {3, 120.2}});
    AddStack(
        job.app, *part,
        {.Block = block, .Pieces = 2, .X = 900.6, .Y = 600.4});  // another piece of the same part
    job.app.Settings.IsDirect = 1;
    drawing.Select().SetPicked(record->Id);
    DisplayList canvas;
    drawing.DrawParts(canvas, DrawMode::Highlight);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(colour::kPicked, lines[0].Pen);
    EXPECT_EQ(colour::kSamePartLine, lines[1].Pen);
    EXPECT_TRUE(test::Rectangles(canvas).empty());
}

}  // namespace
}  // namespace kesto
