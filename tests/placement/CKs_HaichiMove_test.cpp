#include <gtest/gtest.h>

#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

// The grid job drawn at half scale into slot 0 (0,0)-(500,400), y growing downward.
class MoveTest : public PlacementTest {
  protected:
    MoveTest()
        : koutei(GridJob()), h(*app, services, CandidatePallets(shown, app->Settings.PalletCount)) {
        for (const BlockInfo& b : app->Blocks.Entries()) {
            blockRects.push_back(
                {static_cast<int32_t>(b.MinX / 2), static_cast<int32_t>(400 - b.MaxY / 2),
                 static_cast<int32_t>(b.MaxX / 2), static_cast<int32_t>(400 - b.MinY / 2)});
        }
        drop.Slots[0] = {0, 0, 500, 400};
        drop.BlockRects = blockRects;
        part = &AddPart({.SizeX = 100, .SizeY = 50, .Quantity = 1});
        second = &AddPart({.SizeX = 100, .SizeY = 50, .Quantity = 1});
    }
    // Picks the stacks up as the drawing area does before a drop; a probe only reports the
    // pallet it would land on in probed.
    int Drop(const std::vector<HaichiInfo*>& stacks, int left, int top, int right, int bottom,
             int freeMove = 0) {
        drop.Selection = stacks;
        h.RebuildCorners(&koutei, stacks);
        const DropResult r = h.MoveGroup(&koutei, stacks, left, top, right, bottom,
                                         DropPlacementFor(freeMove), drop);
        probed = r.Target;
        return r.Result;
    }

    KouteiInfo& koutei;
    CKs_Haichi h;
    std::vector<IntRect> blockRects;  // each block's cell as the drawing area laid it out
    DropInput drop;
    int32_t probed = 0;
    PartsInfo* part = nullptr;
    PartsInfo* second = nullptr;
};

TEST_F(MoveTest, SnapsToTheNearestFreeCorner) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    EXPECT_EQ(Drop({&s}, 288, 192, 338, 217), 1);
    EXPECT_DOUBLE_EQ(s.X, 680);
    EXPECT_DOUBLE_EQ(s.Y, 370);
    EXPECT_EQ(s.BlockIndex, 4);
    EXPECT_EQ(app->Blocks[4].CornerMask, 8);
    EXPECT_EQ(app->Blocks[4].Occupant, kMovedGroup);
}

TEST_F(MoveTest, CornerTakenByAnotherStackIsNotChosen) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    AddStack(*app, *second, {.Block = 4, .Pieces = 1, .X = 680, .Y = 370, .Corner = kCornerMaxMax});
    EXPECT_EQ(Drop({&s}, 288, 192, 338, 217), 1);
    EXPECT_NE(s.BlockIndex, 4);
    EXPECT_NE(s.BlockIndex, 0);
}

TEST_F(MoveTest, ProbeReportsTheTargetAndMovesNothing) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    drop.Probe = true;
    EXPECT_EQ(Drop({&s}, 288, 192, 338, 217), 0);
    EXPECT_EQ(probed, 1);
    EXPECT_DOUBLE_EQ(s.X, 990);
    EXPECT_EQ(s.BlockIndex, 0);
}

TEST_F(MoveTest, DropOutsideEverySlotMovesNothing) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    EXPECT_EQ(Drop({&s}, 600, 600, 650, 650), 0);
    EXPECT_DOUBLE_EQ(s.X, 990);
    EXPECT_DOUBLE_EQ(s.Y, 10);
    drop.Probe = true;
    EXPECT_EQ(Drop({&s}, 600, 600, 650, 650), 0);
    EXPECT_EQ(probed, -1);
}

TEST_F(MoveTest, SlotWithoutACandidatePalletMovesNothing) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    drop.Slots[1] = {600, 0, 1100, 400};
    EXPECT_EQ(Drop({&s}, 700, 100, 750, 125), 0);
    EXPECT_DOUBLE_EQ(s.X, 990);
}

TEST_F(MoveTest, MoveAddsTheOffsetThatTheTestTakesOff) {
    HaichiInfo& s1 = AddStack(
        *app, *part, {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    HaichiInfo& s2 = AddStack(
        *app, *second, {.Block = 0, .Pieces = 1, .X = 790, .Y = 10, .Corner = kCornerMinMin});
    EXPECT_EQ(Drop({&s1, &s2}, 190, 370, 340, 395), 1);
    EXPECT_DOUBLE_EQ(s1.X, 680);
    EXPECT_DOUBLE_EQ(s2.X, 480);
    EXPECT_DOUBLE_EQ(s2.Y, 10);
    EXPECT_EQ(s2.BlockIndex, 3);
}

TEST_F(MoveTest, StackThatWouldLeaveTheAreaStaysWhereItWas) {
    HaichiInfo& s1 = AddStack(
        *app, *part, {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    HaichiInfo& s2 = AddStack(
        *app, *second, {.Block = 3, .Pieces = 1, .X = 480, .Y = 10, .Corner = kCornerMinMin});
    EXPECT_EQ(Drop({&s1, &s2}, 35, 370, 340, 395), 1);
    EXPECT_DOUBLE_EQ(s1.X, 680);
    EXPECT_EQ(s1.BlockIndex, 3);
    EXPECT_DOUBLE_EQ(s2.X, 480);
    EXPECT_DOUBLE_EQ(s2.Y, 10);
}

TEST_F(MoveTest, FreeMoveScalesPixelsByTheFirstAndLastBlock) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    EXPECT_EQ(Drop({&s}, 150, 275, 200, 300, 1), 1);
    EXPECT_DOUBLE_EQ(s.X, 400);
    EXPECT_DOUBLE_EQ(s.Y, 200);
    EXPECT_EQ(s.BlockIndex, 8);
    EXPECT_EQ(app->Blocks[3].CornerMask, 2);
    EXPECT_EQ(app->Blocks[3].Occupant, kMovedGroup);
}

TEST_F(MoveTest, FreeMoveWithoutPixelDistanceDoesNotStretch) {
    for (IntRect& r : blockRects)
        r.Left = r.Bottom = 0;
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    EXPECT_EQ(Drop({&s}, 150, 275, 200, 300, 1), 1);
    EXPECT_DOUBLE_EQ(s.X, 690);
    EXPECT_DOUBLE_EQ(s.Y, 10);
}

TEST_F(MoveTest, FreeMoveCoveringABlockTakesIt) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    PartsInfo& big = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    s.Part = &big;
    s.X = 990;
    EXPECT_EQ(Drop({&s}, 195, 295, 340, 395, 1), 1);
    EXPECT_DOUBLE_EQ(s.X, 680);
    EXPECT_DOUBLE_EQ(s.Y, 10);
    EXPECT_EQ(s.BlockIndex, 3);
}

// Two stacks of different parts moved together: the blocks the group marked are not given to
// the first stack's part, whose other pieces could otherwise be stacked there. The free move
// scales by 620 / 310 = 2 and shifts both by (200 - 345) x 2 + 690 - 990 = -590 in x and
// 10 - (300 - 395) x 2 - 10 = +190 in y: s1 covers (300, 200)-(400, 250) and marks corner 2 of
// block 3 at (380, 210), as the lone move does.
TEST_F(MoveTest, BlocksMarkedByAGroupGetTheMarkerNotTheFirstStacksPart) {
    HaichiInfo& s1 = AddStack(
        *app, *part, {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    HaichiInfo& s2 = AddStack(
        *app, *second, {.Block = 0, .Pieces = 1, .X = 790, .Y = 10, .Corner = kCornerMinMin});
    EXPECT_EQ(Drop({&s1, &s2}, 150, 275, 200, 300, 1), 1);
    EXPECT_DOUBLE_EQ(s1.X, 400);
    EXPECT_DOUBLE_EQ(s1.Y, 200);
    EXPECT_DOUBLE_EQ(s2.X, 200);
    EXPECT_EQ(app->Blocks[3].CornerMask, 2);
    EXPECT_EQ(app->Blocks[3].Occupant, kMovedGroup);
    for (const BlockInfo& b : app->Blocks.Entries()) {
        EXPECT_NE(b.Occupant, part->Seq);
        EXPECT_NE(b.Occupant, second->Seq);
    }
}

TEST_F(MoveTest, TheMarkersOfAGroupAreNoPartOfTheJobAndNotFree) {
    EXPECT_NE(kMovedGroup, kGroupMoving);
    for (const int32_t marker : {kMovedGroup, kGroupMoving}) {
        EXPECT_NE(marker, kNoOccupant);
        for (const PartsInfo& p : app->PartsList)
            EXPECT_NE(OccupantOf(&p), marker);
    }
}

TEST_F(MoveTest, NoBlockKeepsTheMarkOfTheGroupWhileMovingAfterTheMove) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    ASSERT_EQ(Drop({&s}, 288, 192, 338, 217), 1);
    for (const BlockInfo& b : app->Blocks.Entries())
        EXPECT_NE(b.Occupant, kGroupMoving);
}

// The marked block (block 4, x 380..680, y 220..420) refuses a part until the corners are
// rebuilt from the stacks; then it serves the moved stack's own part again.
TEST_F(MoveTest, MarkedBlockRefusesOtherPartsUntilTheCornersAreRebuilt) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    ASSERT_EQ(Drop({&s}, 288, 192, 338, 217), 1);
    ASSERT_EQ(s.BlockIndex, 4);
    EXPECT_EQ(h.TestCorner(&koutei, second, CornerTestMode::Placing, 4, 4), 0);
    h.RebuildCorners(&koutei, {});
    EXPECT_EQ(app->Blocks[4].Occupant, part->Seq);
    EXPECT_EQ(h.TestCorner(&koutei, part, CornerTestMode::Placing, 4, 4), 1);
}

TEST_F(MoveTest, ProbeMarksNothing) {
    HaichiInfo& s = AddStack(*app, *part,
                             {.Block = 0, .Pieces = 1, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    drop.Probe = true;
    EXPECT_EQ(Drop({&s}, 288, 192, 338, 217), 0);
    for (const BlockInfo& b : app->Blocks.Entries())
        EXPECT_NE(b.Occupant, kMovedGroup);
}

}  // namespace
}  // namespace kesto::test
