#include <gtest/gtest.h>

#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

// SmallBlocksJob: one process on a 1000 x 1000 pallet without gaps; block 0 is (0,0)-(100,100).
class CornerTest : public PlacementTest {
  protected:
    CornerTest() : h(*app, services) {
        koutei = &SmallBlocksJob();
        other = &AddPart({.SizeX = 20, .SizeY = 20, .Quantity = 1});
        part = &AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    }
    // TestCorner for `part` in process 1 as a placement asks it.
    int Placing(int block, int corner) {
        return h.TestCorner(koutei, part, CornerTestMode::Placing, block, corner, selection);
    }
    // As a drop asks it, passing over `selection`.
    int Dragging(int block, int corner) {
        return h.TestCorner(koutei, part, CornerTestMode::Dragging, block, corner, selection);
    }
    // A stack of `other` whose rectangle (no gaps) is (x0,y0)-(x1,y1), in block `block`.
    HaichiInfo& Obstacle(double x0, double y0, double x1, double y1, int block = 1) {
        PartsInfo& p = AddPart({.SizeX = x1 - x0, .SizeY = y1 - y0, .Quantity = 1});
        return AddStack(*app, p,
                        {.Block = block, .Pieces = 1, .X = x1, .Y = y0, .Corner = kCornerMaxMin});
    }

    CKs_Haichi h;
    std::vector<HaichiInfo*> selection;
    KouteiInfo* koutei = nullptr;
    PartsInfo* other = nullptr;
    PartsInfo* part = nullptr;
};

TEST_F(CornerTest, FreeCornerPasses) {
    Obstacle(600, 600, 700, 700);
    EXPECT_EQ(Placing(0, kCornerMinMin), 1);
}

TEST_F(CornerTest, FootprintCornerInsideAStackCollides) {
    Obstacle(40, 40, 60, 60);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
}

TEST_F(CornerTest, StackInsideTheFootprintCollides) {
    Obstacle(10, 10, 20, 20);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
}

TEST_F(CornerTest, FootprintSpanningInYWithAnEdgeCrossingInXCollides) {
    Obstacle(40, 10, 60, 20);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
}

TEST_F(CornerTest, FootprintSpanningInXWithAnEdgeCrossingInYCollides) {
    Obstacle(10, 40, 20, 60);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
}

TEST_F(CornerTest, ClearanceGapsWidenTheStack) {
    app->PalletList.begin()->StackGapX = 15;
    Obstacle(60, 10, 80, 20);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
    app->PalletList.begin()->StackGapX = 5;
    EXPECT_EQ(Placing(0, kCornerMinMin), 1);
}

TEST_F(CornerTest, StacksOnAnotherPalletOrProcessDoNotCollide) {
    Obstacle(40, 40, 60, 60, 2);
    Obstacle(40, 40, 60, 60, 3);
    EXPECT_EQ(Placing(0, kCornerMinMin), 1);
}

TEST_F(CornerTest, SelectedStacksArePassedOverOnlyWhileDragging) {
    HaichiInfo& s = Obstacle(40, 40, 60, 60);
    selection = {&s};
    EXPECT_EQ(Dragging(0, kCornerMinMin), 1);
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
}

TEST_F(CornerTest, BlockServedByAnotherPartIsRefusedUnlessDragging) {
    app->Blocks[0].Occupant = other->Seq;
    EXPECT_EQ(Placing(0, kCornerMaxMin), 0);
    EXPECT_EQ(Dragging(0, kCornerMaxMin), 1);
}

TEST_F(CornerTest, UnknownCornerCodeIsRefused) {
    EXPECT_EQ(Placing(0, 3), 0);  // 3 names no corner
}

TEST_F(CornerTest, FootprintBeyondThePalletIsRefused) {
    app->PalletList.begin()->LengthX = 90;
    EXPECT_EQ(Placing(0, kCornerMinMin), 1);
    EXPECT_EQ(Placing(0, kCornerMaxMin), 0);
    app->PalletList.begin()->MarginY = 5;
    EXPECT_EQ(Placing(0, kCornerMinMin), 0);
    EXPECT_EQ(Placing(0, kCornerMinMax), 1);
}

TEST_F(CornerTest, BlockIndexOutsideTheTableIsRefused) {
    EXPECT_EQ(Placing(-1, kCornerMinMin), 0);
    EXPECT_EQ(Placing(4, kCornerMinMin), 0);
}

TEST_F(CornerTest, StackWithBlockOutsideTheTableIsPassedOver) {
    Obstacle(40, 40, 60, 60, 99);
    EXPECT_EQ(Placing(0, kCornerMinMin), 1);
}

TEST_F(CornerTest, CornerOnTheLowEdgeIsOutsideAndOnTheHighEdgeInside) {
    h.MarkCorners(koutei, 0, 0, 50, 50, 1, part);
    EXPECT_EQ(app->Blocks[0].CornerMask, 0);
    h.MarkCorners(koutei, -1, -1, 0, 0, 1, part);
    EXPECT_EQ(app->Blocks[0].CornerMask, 1);
}

TEST_F(CornerTest, MarkCornersSetsTheBitOfEachCoveredCorner) {
    h.MarkCorners(koutei, -10, 50, 10, 150, 1, part);
    EXPECT_EQ(app->Blocks[0].CornerMask, 2);
    h.MarkCorners(koutei, 90, 50, 110, 150, 1, part);
    EXPECT_EQ(app->Blocks[0].CornerMask, 2 | 8);
    h.MarkCorners(koutei, 90, -10, 110, 10, 1, part);
    EXPECT_EQ(app->Blocks[0].CornerMask, 2 | 8 | 4);
    EXPECT_EQ(app->Blocks[0].Occupant, part->Seq);
    EXPECT_EQ(app->Blocks[2].CornerMask, 0);
    EXPECT_EQ(app->Blocks[3].CornerMask, 0);
}

TEST_F(CornerTest, MarkCornersKeepsAnExistingOccupant) {
    app->Blocks[0].Occupant = other->Seq;
    h.MarkCorners(koutei, 90, 90, 110, 110, 1, part);
    EXPECT_EQ(app->Blocks[0].Occupant, other->Seq);
    EXPECT_EQ(app->Blocks[0].CornerMask, 8);
}

TEST_F(CornerTest, TestRectRefusesACornerOfABlockServedByAnotherPart) {
    app->Blocks[1].Occupant = other->Seq;
    EXPECT_EQ(h.TestRect(koutei, 150, 0, 200, 10, 1, part), 1);
    EXPECT_EQ(h.TestRect(koutei, 150, -10, 200, 10, 1, part), 0);
    EXPECT_EQ(h.TestRect(koutei, 150, -10, 200, 10, 1, other), 1);
    EXPECT_EQ(h.TestRect(koutei, 150, -10, 200, 10, 2, part), 1);
}

TEST_F(CornerTest, RebuildCornersMarksFromTheStacks) {
    app->PalletList.begin()->StackGapX = 10;
    app->PalletList.begin()->StackGapY = 10;
    app->Blocks[1].Occupant = other->Seq;
    app->Blocks[1].CornerMask = 15;
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 3, .X = 100, .Y = 50, .Corner = kCornerMaxMax});
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[0].CornerMask, 8);
    EXPECT_EQ(app->Blocks[0].Occupant, part->Seq);
    EXPECT_EQ(app->Blocks[1].Occupant, kNoOccupant);
    EXPECT_EQ(app->Blocks[1].CornerMask, 0);
    h.RebuildCorners(koutei, {&s});
    EXPECT_EQ(app->Blocks[0].CornerMask, 0);
    EXPECT_EQ(app->Blocks[0].Occupant, kNoOccupant);
}

TEST_F(CornerTest, RebuildCornersOfAStackInCornerFourLeavesItsOwnCornerOpen) {
    AddStack(*app, *part, {.Block = 0, .Pieces = 3, .X = 100, .Y = 0, .Corner = kCornerMaxMin});
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[0].CornerMask, 0);
    EXPECT_EQ(app->Blocks[0].Occupant, kNoOccupant);
}

TEST_F(CornerTest, RebuildCornersAddsTheGapsOnTheSidesAwayFromTheCorner) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 3, .X = 190, .Y = 45, .Corner = kCornerMinMin});
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[1].CornerMask, 0);
    app->PalletList.begin()->StackGapX = 10;
    app->PalletList.begin()->StackGapY = 10;
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[1].CornerMask, 2);
    s.Corner = 4;
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[1].CornerMask, 0);
}

TEST_F(CornerTest, RebuildCornersLeavesOtherProcessesAlone) {
    app->Blocks[3].CornerMask = 5;
    h.RebuildCorners(koutei, {});
    EXPECT_EQ(app->Blocks[3].CornerMask, 5);
    h.RebuildCorners(nullptr, {});
    EXPECT_EQ(app->Blocks[3].CornerMask, 5);
}

}  // namespace
}  // namespace kesto::test
