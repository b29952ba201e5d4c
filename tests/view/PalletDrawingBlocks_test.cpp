// Block cells, their colours and stored pixel rectangles, block location, grid marks and
// rack lines. Expected pixels are worked out by hand from the cell layout and the projection.
#include <gtest/gtest.h>

#include "common/RecordingCanvasQueries.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::PlacedDrawing;
using test::ViewJob;

constexpr IntRect kNotFound{-1, -1, -1, -1};

// Pallet "BLK": W 1003.7, L 840, margins 12.4 / 9.7, cells 297.5 x 203.8, gaps 11.2 / 8.9,
// 5 x 5 cells asked for. Columns (right edges) 373.9, 682.6, 991.3 for every corner (the
// fourth, 65.2, is narrower than a cell); rows (lower edges) 9.7, 222.4, 435.1 (the fourth,
// 647.8, passes L - d = 636.2).
//
// FLAT in 1000 x 700: cap 28; world x -40.148 .. 1043.848, y -33.6 .. 873.6;
// sx = 1083.996/1000, sy = 907.2/672 = 1.35: Scale 1.35.
// A = (trunc(40.148/1.35), trunc(873.6/1.35)) = (29, 647); B = (trunc(1043.848/1.35),
// trunc(33.6/1.35)) = (773, 24); pw 744, ph 623; top = (672 - 623)/2 + 28 = 52;
// left = (1000 - 744)/2 = 128; OriginDX = 99, OriginDY = 28.
// Cell columns in pixels: x 76.4 -> trunc(86.33) = 86, 373.9 -> trunc(306.70) = 306,
// 385.1 -> trunc(314.998) = 314, 682.6 -> trunc(535.37) = 535, 693.8 -> trunc(543.67) = 543,
// 991.3 -> trunc(764.04) = 764; plus 99.
// Cell rows: y 9.7 -> trunc(639.93) = 639, 213.5 -> trunc(488.96) = 488, 222.4 ->
// trunc(482.37) = 482, 426.2 -> trunc(331.41) = 331, 435.1 -> trunc(324.81) = 324,
// 638.9 -> trunc(173.85) = 173; plus 28.
constexpr int32_t kC0L = 185, kC0R = 405, kC1L = 413, kC1R = 634, kC2L = 642, kC2R = 863;
constexpr int32_t kR0T = 516, kR0B = 667, kR1T = 359, kR1B = 510, kR2T = 201, kR2B = 352;

constexpr IntRect Cell(int32_t column, int32_t row) {
    const int32_t left[] = {kC0L, kC1L, kC2L};
    const int32_t right[] = {kC0R, kC1R, kC2R};
    const int32_t top[] = {kR0T, kR1T, kR2T};
    const int32_t bottom[] = {kR0B, kR1B, kR2B};
    return IntRect{left[column], top[row], right[column], bottom[row]};
}

struct WorldCell {
    double MinX, MinY, MaxX, MaxY;
};
constexpr double kColumnRight[] = {373.9, 682.6, 991.3};
constexpr double kRowBottom[] = {9.7, 222.4, 435.1};
WorldCell World(int column, int row) {
    return {kColumnRight[column] - 297.5, kRowBottom[row], kColumnRight[column],
            kRowBottom[row] + 203.8};
}

class BlockCells : public ::testing::Test {
  protected:
    void SetUp() override {
        PalletInfo& p = job.AddPallet("BLK", 1003.7, 840, 900);
        p.MarginX = 12.4;
        p.MarginY = 9.7;
        p.CellWidth = 297.5;
        p.CellDepth = 203.8;
        p.CellGapX = 11.2;
        p.CellGapY = 8.9;
        p.CellsX = 5;
        p.CellsY = 5;
        job.AddKoutei(1, "CUT", "BLK");
        job.app.Settings.PalletCount = 4;
        job.shown.SetStoredBlockDraw(1);
        // Decoys first: another process and another pallet over cell (0, 0).
        const WorldCell c00 = World(0, 0);
        job.AddBlock(2, 1, c00.MinX, c00.MinY, c00.MaxX, c00.MaxY, 0x0F);
        job.AddBlock(1, 2, c00.MinX, c00.MinY, c00.MaxX, c00.MaxY, 0x01);
        // Pallet 1, column by column, rows from the bottom: indexes 2 .. 10.
        const uint8_t masks[3][3] = {{0x01, 0x00, 0x10}, {0x08, 0x00, 0x02}, {0x04, 0xF0, 0x00}};
        for (int c = 0; c < 3; ++c) {
            for (int r = 0; r < 3; ++r) {
                const WorldCell w = World(c, r);
                index[c][r] = job.AddBlock(1, 1, w.MinX, w.MinY, w.MaxX, w.MaxY, masks[c][r]);
            }
        }
    }
    bool Marked(int c, int r) const {
        return (c == 0 && r == 0) || (c == 1 && r == 0) || (c == 1 && r == 2) || (c == 2 && r == 0);
    }
    Primitive CellFill(int c, int r) const {
        Primitive p;
        p.Kind = PrimitiveKind::Rectangle;
        p.Rect = Cell(c, r);
        p.Fill = Marked(c, r) ? colour::kBlockMarked : colour::kBlockPlain;
        p.Pen = colour::kBlockPlain;
        return p;
    }
    // The rectangles DrawBlocks alone draws, after a Refresh laid the view out.
    std::vector<Primitive> DrawnRectangles() {
        DisplayList setUp;
        drawing.Refresh(setUp);
        DisplayList cells;
        drawing.DrawBlocks(cells);
        return test::Rectangles(cells);
    }
    // Those of them that are cells: the zone's shading left out.
    std::vector<Primitive> DrawnCells() {
        std::vector<Primitive> cells;
        for (const Primitive& p : DrawnRectangles()) {
            if (p.Fill != colour::kOutsideZone)
                cells.push_back(p);
        }
        return cells;
    }
    void ExpectOrder(const std::vector<std::pair<int, int>>& order) {
        const std::vector<Primitive> cells = DrawnCells();
        ASSERT_EQ(order.size(), cells.size());
        for (size_t i = 0; i < order.size(); ++i) {
            const Primitive expected = CellFill(order[i].first, order[i].second);
            EXPECT_EQ(expected.Rect, cells[i].Rect) << "cell " << i;
            EXPECT_EQ(expected.Fill, cells[i].Fill) << "cell " << i;
            EXPECT_EQ(expected.Pen, cells[i].Pen) << "cell " << i;
        }
    }

    ViewJob job;
    PlacedDrawing drawing{job};
    int32_t index[3][3]{};
};

TEST_F(BlockCells, FrameOfTheBlockPallet) {
    DisplayList canvas;
    drawing.Refresh(canvas);
    EXPECT_DOUBLE_EQ(907.2 / 672, drawing.Scale);
    EXPECT_EQ((IntRect{128, 52, 872, 675}), drawing.PalletRect[0]);
    EXPECT_EQ(99, drawing.OriginDX);
    EXPECT_EQ(28, drawing.OriginDY);
}

// The blocks of process 1 on pallet 1 span x 76.4 .. 991.3 and y 9.7 .. 638.9: pixels 185 ..
// 863 and 201 .. 667 (the cells' outer edges above). The frame 128, 52, 872, 675 keeps its
// outline; inside it, the rest is shaded, above, below, left and right of that zone, before
// the cells are drawn.
TEST_F(BlockCells, ThePalletOutsideTheProcesssBlocksIsShadedInsideItsFrame) {
    job.app.Settings.StartCorner = 0;
    std::vector<IntRect> shaded;
    const std::vector<Primitive> drawn = DrawnRectangles();
    for (const Primitive& p : drawn) {
        if (p.Fill == colour::kOutsideZone) {
            EXPECT_EQ(colour::kOutsideZone, p.Pen);
            shaded.push_back(p.Rect);
        }
    }
    EXPECT_EQ(shaded, (std::vector<IntRect>{{129, 53, 871, 201},
                                            {129, 667, 871, 674},
                                            {129, 201, 185, 667},
                                            {863, 201, 871, 667}}));
    ASSERT_EQ(13u, drawn.size());
    EXPECT_EQ(colour::kOutsideZone, drawn[3].Fill);  // the cells come after
    EXPECT_EQ(Cell(0, 0), drawn[4].Rect);
}

// Shaded whether the cells are drawn or not; the printed sheet's palette shades nothing, its
// white cells on the grey pallet tell the zone apart.
TEST_F(BlockCells, TheZoneIsShadedWithoutBlockDisplayAndNotInPrint) {
    job.shown.SetStoredBlockDraw(0);
    EXPECT_EQ(4u, DrawnRectangles().size());
    PlacedDrawing print(job, colour::kPrintPalette);
    DisplayList setUp;
    print.Refresh(setUp);
    DisplayList cells;
    print.DrawBlocks(cells);
    EXPECT_TRUE(test::Rectangles(cells).empty());
}

TEST_F(BlockCells, CornerZeroCountsColumnsFromTheLeftAndRowsFromTheBottom) {
    job.app.Settings.StartCorner = 0;
    ExpectOrder({{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}, {2, 0}, {2, 1}, {2, 2}});
}

TEST_F(BlockCells, CornerOneCountsColumnsFromTheLeftAndRowsFromTheTop) {
    // Rows: origin L - 435.1 = 404.9, y = 840 - 404.9 - j * 212.7 = 435.1, 222.4, 9.7.
    job.app.Settings.StartCorner = 1;
    ExpectOrder({{0, 2}, {0, 1}, {0, 0}, {1, 2}, {1, 1}, {1, 0}, {2, 2}, {2, 1}, {2, 0}});
}

TEST_F(BlockCells, CornerTwoCountsColumnsFromTheRightAndRowsFromTheTop) {
    // Columns: x = 1003.7 - 12.4 - i * 308.7 = 991.3, 682.6, 373.9 (65.2 is not > 297.5).
    job.app.Settings.StartCorner = 2;
    ExpectOrder({{2, 2}, {2, 1}, {2, 0}, {1, 2}, {1, 1}, {1, 0}, {0, 2}, {0, 1}, {0, 0}});
}

TEST_F(BlockCells, CornerThreeCountsColumnsFromTheRightAndRowsFromTheBottom) {
    job.app.Settings.StartCorner = 3;
    ExpectOrder({{2, 0}, {2, 1}, {2, 2}, {1, 0}, {1, 1}, {1, 2}, {0, 0}, {0, 1}, {0, 2}});
}

TEST_F(BlockCells, ThePrintPaletteDrawsCellsWhiteOrGreyWithAGreyOutline) {
    job.app.Settings.StartCorner = 0;
    PlacedDrawing paper(job, colour::kPrintPalette);
    DisplayList setUp;
    paper.Refresh(setUp);
    DisplayList drawn;
    paper.DrawBlocks(drawn);
    const std::vector<Primitive> cells = test::Rectangles(drawn);
    ASSERT_EQ(9u, cells.size());
    EXPECT_EQ(Cell(0, 0), cells[0].Rect);
    EXPECT_EQ(colour::kPrintPalette.BlockMarked, cells[0].Fill);
    EXPECT_EQ(Cell(0, 1), cells[1].Rect);
    EXPECT_EQ(colour::kPrintPalette.BlockPlain, cells[1].Fill);
    for (const Primitive& cell : cells)
        EXPECT_EQ(colour::kPrintPalette.BlockPen, cell.Pen);
}

TEST_F(BlockCells, EachBlockStoresItsPixelRectangle) {
    job.app.Settings.StartCorner = 0;
    DrawnCells();
    for (int c = 0; c < 3; ++c) {
        for (int r = 0; r < 3; ++r) {
            EXPECT_EQ(Cell(c, r), drawing.BlockRects[static_cast<size_t>(index[c][r])])
                << c << "," << r;
        }
    }
    // The decoys of process 2 and of pallet 2 are not on the view.
    EXPECT_EQ(0, drawing.BlockRects[0].Left);
    EXPECT_EQ(0, drawing.BlockRects[1].Right);
}

TEST_F(BlockCells, WithoutBlockDisplayNothingIsDrawnButPixelRectanglesAreStored) {
    job.shown.SetStoredBlockDraw(0);
    EXPECT_TRUE(DrawnCells().empty());
    EXPECT_EQ(Cell(2, 1), drawing.BlockRects[static_cast<size_t>(index[2][1])]);
}

TEST_F(BlockCells, TheFirstMatchingEntryColoursTheCell) {
    // A later entry over cell (0, 1) with corner bits does not make it marked, and keeps
    // its pixel rectangle at 0.
    const WorldCell w = World(0, 1);
    const int32_t late = job.AddBlock(1, 1, w.MinX, w.MinY, w.MaxX, w.MaxY, 0x0F);
    job.app.Settings.StartCorner = 0;
    const std::vector<Primitive> cells = DrawnCells();
    ASSERT_EQ(9u, cells.size());
    EXPECT_EQ(Cell(0, 1), cells[1].Rect);
    EXPECT_EQ(colour::kBlockPlain, cells[1].Fill);
    EXPECT_EQ(0, drawing.BlockRects[static_cast<size_t>(late)].Top);
    // Locating runs on past entries of other indexes, so the late entry is found.
    EXPECT_EQ(Cell(0, 1), drawing.LocateBlock(late));
}

// An entry may hold more than one cell: each cell it is the first to hold shows it, and its
// pixel rectangle is that of the last of them laid out.
TEST_F(BlockCells, AnEntryOverTwoCellsFillsBothAndKeepsTheLastOnesRectangle) {
    BlockInfo& wide = job.app.Blocks[index[0][0]];  // marked (0x01)
    wide.MaxY = World(0, 1).MaxY;
    job.app.Settings.StartCorner = 0;
    const std::vector<Primitive> cells = DrawnCells();
    ASSERT_EQ(9u, cells.size());
    EXPECT_EQ(Cell(0, 0), cells[0].Rect);
    EXPECT_EQ(colour::kBlockMarked, cells[0].Fill);
    EXPECT_EQ(Cell(0, 1), cells[1].Rect);
    EXPECT_EQ(colour::kBlockMarked, cells[1].Fill);
    EXPECT_EQ(Cell(0, 1), drawing.BlockRects[static_cast<size_t>(index[0][0])]);
    EXPECT_EQ(IntRect{}, drawing.BlockRects[static_cast<size_t>(index[0][1])]);
}

TEST_F(BlockCells, LocateBlockFindsShownBlocksOnly) {
    DisplayList canvas;
    drawing.Refresh(canvas);
    EXPECT_EQ(Cell(0, 0), drawing.LocateBlock(index[0][0]));
    EXPECT_EQ(Cell(2, 2), drawing.LocateBlock(index[2][2]));
    EXPECT_EQ(Cell(1, 2), drawing.LocateBlock(index[1][2]));
    EXPECT_EQ(kNotFound, drawing.LocateBlock(0));   // another process
    EXPECT_EQ(kNotFound, drawing.LocateBlock(1));   // pallet 2 is not shown in FLAT
    EXPECT_EQ(kNotFound, drawing.LocateBlock(99));  // no such entry
}

TEST_F(BlockCells, TheCurrentPalletChoosesTheBlocksOfSlotOne) {
    job.shown.SetPallet(2);
    const std::vector<Primitive> cells = DrawnCells();
    // Only cell (0, 0) has an entry on pallet 2; its mask 0x01 marks it.
    ASSERT_EQ(1u, cells.size());
    EXPECT_EQ(Cell(0, 0), cells[0].Rect);
    EXPECT_EQ(colour::kBlockMarked, cells[0].Fill);
    EXPECT_EQ(Cell(0, 0), drawing.LocateBlock(1));
    EXPECT_EQ(kNotFound, drawing.LocateBlock(index[0][0]));
}

TEST_F(BlockCells, FourPalletSlotsWrapTheirPalletNumbersAndAddTheQuadrantOffsets) {
    const WorldCell c00 = World(0, 0);
    const int32_t onThree = job.AddBlock(1, 3, c00.MinX, c00.MinY, c00.MaxX, c00.MaxY);
    const int32_t onFour = job.AddBlock(1, 4, c00.MinX, c00.MinY, c00.MaxX, c00.MaxY);
    job.shown.SetMode(PalletView::FourPallet);
    job.shown.SetPallet(2);
    drawing.SetArea({0, 0, 1000, 701});
    DisplayList canvas;
    drawing.Refresh(canvas);
    // World x -80.296 .. 2087.696, y -67.2 .. 1747.2; sy = 1814.4/645 > sx = 2.167992.
    // A = (trunc(28.55), trunc(621.11)) = (28, 621); B = (trunc(385.35), trunc(322.5))
    // = (385, 322); pw 357, ph 299; top = (322 - 299)/2 + 28 = 39; left = (500 - 357)/2 = 71.
    // OriginDX = 43, OriginDY = -283; HalfW 500, HalfH 350.
    EXPECT_EQ((IntRect{71, 39, 428, 338}), drawing.PalletRect[0]);
    // Cell (0, 0): x 76.4 -> trunc(55.70) = 55, 373.9 -> trunc(161.46) = 161;
    // y 9.7 -> trunc(617.66) = 617, 213.5 -> trunc(545.21) = 545.
    // Slots show pallets 2, 3, 4, 1.
    EXPECT_EQ((IntRect{98, 262, 204, 334}), drawing.LocateBlock(1));
    EXPECT_EQ((IntRect{598, 262, 704, 334}), drawing.LocateBlock(onThree));
    EXPECT_EQ((IntRect{98, 612, 204, 684}), drawing.LocateBlock(onFour));
    EXPECT_EQ((IntRect{598, 612, 704, 684}), drawing.LocateBlock(index[0][0]));
}

// --- grid marks ---------------------------------------------------------------------------

std::vector<IntRect> MarksOf(const IntRect& c) {
    return {{c.Left, c.Bottom - 3, c.Left + 3, c.Bottom},
            {c.Left, c.Top, c.Left + 3, c.Top + 3},
            {c.Right - 3, c.Bottom - 3, c.Right, c.Bottom},
            {c.Right - 3, c.Top, c.Right, c.Top + 3}};
}

TEST_F(BlockCells, GridMarksSitInsideEveryCellLaidOutFromTheRight) {
    job.shown.SetGrid(true);
    job.shown.SetStoredBlockDraw(0);
    job.app.Settings.StartCorner = 0;  // the marks ignore the start corner
    DisplayList setUp;
    drawing.Refresh(setUp);
    DisplayList canvas;
    drawing.DrawBlocks(canvas);
    const std::vector<IntRect> marks = test::RectsFilled(canvas, colour::kGridMark);
    ASSERT_EQ(36u, marks.size());
    // First cell: x = 1003.7 - 12.4 = 991.3 (column 2), y = 9.7 (row 0) = {642, 516, 863, 667}.
    const std::vector<IntRect> first{
        {642, 664, 645, 667}, {642, 516, 645, 519}, {860, 664, 863, 667}, {860, 516, 863, 519}};
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(first[i], marks[i]) << i;
    // Then the rows of column 2 upward, then columns 1 and 0.
    const std::vector<std::pair<int, int>> order{{2, 0}, {2, 1}, {2, 2}, {1, 0}, {1, 1},
                                                 {1, 2}, {0, 0}, {0, 1}, {0, 2}};
    for (size_t n = 0; n < order.size(); ++n) {
        const std::vector<IntRect> expected = MarksOf(Cell(order[n].first, order[n].second));
        for (size_t i = 0; i < 4; ++i)
            EXPECT_EQ(expected[i], marks[n * 4 + i]) << "cell " << n << " mark " << i;
    }
    for (const Primitive& p : test::Rectangles(canvas)) {
        if (p.Fill != colour::kOutsideZone) {
            EXPECT_EQ(colour::kGridMark, p.Pen);
        }
    }
}

TEST_F(BlockCells, NoGridMarksWithoutTheGridFlag) {
    job.shown.SetGrid(false);
    job.shown.SetStoredBlockDraw(0);
    EXPECT_TRUE(DrawnCells().empty());
}

TEST_F(BlockCells, TenByTenCellsShowNoGridMarks) {
    job.shown.SetGrid(true);
    job.shown.SetStoredBlockDraw(0);
    job.app.PalletList.Head()->CellsX = 10;
    job.app.PalletList.Head()->CellsY = 10;
    EXPECT_TRUE(DrawnCells().empty());
    // 9 x 11 = 99 cells asked for: the marks are back (still only 3 x 3 fit).
    job.app.PalletList.Head()->CellsX = 9;
    job.app.PalletList.Head()->CellsY = 11;
    EXPECT_EQ(36u, DrawnCells().size());
}

// --- rack lines ---------------------------------------------------------------------------

TEST_F(BlockCells, RackLinesRunPastThePalletByThePitch) {
    PalletInfo& p = *job.app.PalletList.Head();
    p.RackXCount = 1;
    p.RackX[0] = 517.3;
    p.RackYCount = 1;
    p.RackY[0] = 402.6;
    p.RackPitch = 30;
    job.shown.SetStoredBlockDraw(0);
    DisplayList setUp;
    drawing.Refresh(setUp);
    DisplayList canvas;
    drawing.DrawBlocks(canvas);
    // After the four strips of the shaded zone.
    ASSERT_EQ(6u, canvas.Items().size());
    // x line: (517.3, -30) -> (trunc(412.92) + 99, trunc(669.33) + 28) = (511, 697);
    // (517.3, 870) -> (511, trunc(2.67) + 28) = (511, 30).
    const Primitive& x = canvas.Items()[4];
    EXPECT_EQ(PrimitiveKind::Line, x.Kind);
    EXPECT_EQ((IntPoint{511, 697}), x.A);
    EXPECT_EQ((IntPoint{511, 30}), x.B);
    EXPECT_EQ(colour::kRackLine, x.Pen);
    EXPECT_EQ(PenStyle::Dotted, x.Style);
    EXPECT_EQ(1, x.Width);
    // y line: (-30, 402.6) -> (trunc(7.52) + 99, trunc(348.89) + 28) = (106, 376);
    // (1033.7, 402.6) -> (trunc(795.44) + 99, 376) = (894, 376).
    const Primitive& y = canvas.Items()[5];
    EXPECT_EQ((IntPoint{106, 376}), y.A);
    EXPECT_EQ((IntPoint{894, 376}), y.B);
    EXPECT_EQ(colour::kRackLine, y.Pen);
    EXPECT_EQ(PenStyle::Dotted, y.Style);
    EXPECT_EQ(1, y.Width);
}

// --- a pallet in inches --------------------------------------------------------------------

TEST(InchBlockCells, APalletInInchesIsLaidOutLikeAnyOther) {
    ViewJob job;
    PalletInfo& p = job.AddPallet("INCH", 39.52, 33.6, 35.43);
    p.MarginX = 0.49;
    p.MarginY = 0.38;
    p.CellWidth = 11.71;
    p.CellDepth = 8.02;
    p.CellGapX = 0.44;
    p.CellGapY = 0.35;
    p.CellsX = 3;
    p.CellsY = 3;
    job.AddKoutei(1, "CUT", "INCH");
    job.app.Settings.InchMode = 1;
    job.shown.SetStoredBlockDraw(1);
    job.app.Settings.StartCorner = 0;
    // Columns: v = 39.03, 26.88, 14.73 never reach 11.71, so the origin is the last v,
    // 14.73: cells 3.02..14.73, 15.17..26.88, 27.32..39.03. Rows 0.38, 8.75, 17.12.
    const int32_t low = job.AddBlock(1, 1, 3.02, 0.38, 14.73, 8.4, 0x00);
    const int32_t high = job.AddBlock(1, 1, 27.32, 17.12, 39.03, 25.14, 0x04);
    PlacedDrawing drawing(job);
    DisplayList setUp;
    drawing.Refresh(setUp);
    // World x -1.5808 .. 41.1008, y -1.344 .. 34.944; sy = 36.288/672 = 0.054 > sx.
    // A = (trunc(29.27), trunc(647.11)) = (29, 647); B = (trunc(761.13), trunc(24.89))
    // = (761, 24); pw 732, ph 623; top 52, left 134; OriginDX 105, OriginDY 28.
    EXPECT_DOUBLE_EQ(36.288 / 672, drawing.Scale);
    EXPECT_EQ((IntRect{134, 52, 866, 675}), drawing.PalletRect[0]);
    DisplayList canvas;
    drawing.DrawBlocks(canvas);
    // First the zone's shading: the blocks span x 3.02 .. 39.03 and y 0.38 .. 25.14, pixels
    // 190 .. 857 and 209 .. 668 (below); inside the frame's outline, the rest.
    std::vector<Primitive> cells;
    std::vector<IntRect> shaded;
    for (const Primitive& drawn : test::Rectangles(canvas)) {
        if (drawn.Fill == colour::kOutsideZone)
            shaded.push_back(drawn.Rect);
        else
            cells.push_back(drawn);
    }
    EXPECT_EQ(shaded, (std::vector<IntRect>{{135, 53, 865, 209},
                                            {135, 668, 865, 674},
                                            {135, 209, 190, 668},
                                            {857, 209, 865, 668}}));
    ASSERT_EQ(2u, cells.size());
    // Low cell: x 3.02 -> trunc(85.2) = 85, 14.73 -> trunc(302.05) = 302;
    // y 0.38 -> trunc(640.07) = 640, 8.4 -> trunc(491.56) = 491.
    EXPECT_EQ((IntRect{190, 519, 407, 668}), cells[0].Rect);
    EXPECT_EQ(colour::kBlockPlain, cells[0].Fill);
    // High cell: x 27.32 -> 535, 39.03 -> trunc(752.05) = 752; y 17.12 -> trunc(330.07) = 330,
    // 25.14 -> trunc(181.56) = 181.
    EXPECT_EQ((IntRect{640, 209, 857, 358}), cells[1].Rect);
    EXPECT_EQ(colour::kBlockMarked, cells[1].Fill);
    EXPECT_EQ((IntRect{190, 519, 407, 668}), drawing.LocateBlock(low));
    EXPECT_EQ((IntRect{640, 209, 857, 358}), drawing.LocateBlock(high));
}

}  // namespace
}  // namespace kesto
