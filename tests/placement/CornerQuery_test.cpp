#include "placement/CornerQuery.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

// SmallBlocksJob: blocks (0,0)-(100,100) and (200,0)-(300,100) on pallet 1, one on pallet 2.
class CornerQueryTest : public PlacementTest {
  protected:
    CornerQueryTest() {
        koutei = &SmallBlocksJob();
        other = &AddPart({.SizeX = 20, .SizeY = 20, .Quantity = 1});
        part = &AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    }
    CornerQuery Query(const PartsInfo* of) const {
        return CornerQuery(*app, nullptr, koutei, of, ProcessBounds(*app, koutei));
    }

    KouteiInfo* koutei = nullptr;
    PartsInfo* other = nullptr;
    PartsInfo* part = nullptr;
};

TEST_F(CornerQueryTest, ABlockHeldByAnotherPartRefusesAPlacementButNotADrag) {
    app->Blocks[0].Occupant = other->Seq;
    EXPECT_EQ(Query(part).TestCorner(CornerTestMode::Placing, 0, kCornerMinMin), 0);
    EXPECT_EQ(Query(part).TestCorner(CornerTestMode::Dragging, 0, kCornerMinMin), 1);
    EXPECT_EQ(Query(other).TestCorner(CornerTestMode::Placing, 0, kCornerMinMin), 1);
}

TEST_F(CornerQueryTest, WithoutAPartOrProcessNoCornerTakesAStackAndNoRectangleIsRefused) {
    EXPECT_EQ(Query(nullptr).TestCorner(CornerTestMode::Placing, 0, kCornerMinMin), 0);
    const CornerQuery none(*app, nullptr, nullptr, part, ProcessBounds(*app, nullptr));
    EXPECT_EQ(none.TestCorner(CornerTestMode::Placing, 0, kCornerMinMin), 0);
    app->Blocks[0].Occupant = other->Seq;
    EXPECT_EQ(none.TestRect(-1, -1, 1000, 1000, 1, part), 1);
}

TEST_F(CornerQueryTest, ARectangleOverACornerOfAnotherPartsBlockIsRefused) {
    app->Blocks[1].Occupant = other->Seq;
    // (200, 0) is the block's lower left corner: open at the low side, so x0 = 200 misses it.
    EXPECT_EQ(Query(part).TestRect(150, -1, 250, 50, 1, part), 0);
    EXPECT_EQ(Query(part).TestRect(200, -1, 250, 50, 1, part), 1);
    EXPECT_EQ(Query(part).TestRect(150, -1, 250, 50, 1, other), 1);
    // Pallet 2's block is no obstacle to a rectangle on pallet 1.
    app->Blocks[2].Occupant = other->Seq;
    EXPECT_EQ(Query(part).TestRect(-10, -10, 10, 10, 1, part), 1);
}

TEST_F(CornerQueryTest, TheNextCornerIsTheFirstFreeOneInSearchOrder) {
    uint8_t blocked = 0;
    CornerPlace at;
    EXPECT_EQ(Query(part).NextCorner(0, blocked, at), kCornerMaxMin);
    EXPECT_DOUBLE_EQ(at.X, 100);
    EXPECT_DOUBLE_EQ(at.Y, 0);
    app->Blocks[0].CornerMask = kCornerMaxMin | kCornerMaxMax;
    EXPECT_EQ(Query(part).NextCorner(0, blocked, at), kCornerMinMin);
    EXPECT_EQ(blocked, 0);
}

TEST_F(CornerQueryTest, ABlockCouldHoldAStackOnlyWhereThePalletAndTheAreaAllowIt) {
    const CornerQuery q = Query(part);
    const PalletInfo& pal = *koutei->Pallet;
    EXPECT_TRUE(q.CouldHold(app->Blocks[0], 50, 50, pal, false));
    // Wider than the process's area: only "anywhere" lets it in, and the pallet must hold it.
    EXPECT_FALSE(q.CouldHold(app->Blocks[0], 400, 50, pal, false));
    EXPECT_TRUE(q.CouldHold(app->Blocks[0], 400, 50, pal, true));
    EXPECT_FALSE(q.CouldHold(app->Blocks[0], 1200, 50, pal, true));
    EXPECT_TRUE(q.CoversArea(300, 1));
    EXPECT_FALSE(q.CoversArea(299, 99));
}

TEST_F(CornerQueryTest, AskingChangesNothingInTheJob) {
    AddStack(*app, *other, {.Block = 0, .Pieces = 1, .X = 20, .Y = 0, .Corner = kCornerMinMin});
    app->Blocks[1].Occupant = other->Seq;
    app->Blocks[1].CornerMask = kCornerMinMax;
    auto blocks = [&] {
        std::vector<std::pair<int32_t, uint8_t>> state;
        for (const BlockInfo& b : app->Blocks.FilledBlocks())
            state.emplace_back(b.Occupant, b.CornerMask);
        return state;
    };
    const auto before = blocks();
    const CornerQuery q = Query(part);
    uint8_t blocked = 0;
    CornerPlace at;
    q.NextCorner(0, blocked, at);
    q.NextCorner(1, blocked, at);
    q.TestRect(0, 0, 1000, 1000, 1, part);
    q.TestCorner(CornerTestMode::Placing, 1, kCornerMaxMax);
    EXPECT_EQ(blocks(), before);
    EXPECT_EQ(app->HaichiList.size(), 1u);
    EXPECT_EQ(part->PiecesPlaced, 0);
}

TEST_F(CornerQueryTest, RoomForListsTheBlocksThatFitAndWhetherOneIsFree) {
    const PlacementIndex index(*app);
    for (const PlacementIndex* with : {static_cast<const PlacementIndex*>(nullptr), &index}) {
        const BlockRoom room = RoomFor(*app, with, *koutei, *part);
        EXPECT_EQ(room.Fitting, (std::vector<int>{0, 1, 2}));
        EXPECT_TRUE(room.Free);
    }
}

TEST_F(CornerQueryTest, RoomForFindsNoFreeBlockWhenAnotherPartHoldsThemAll) {
    for (int i = 0; i < 3; ++i)
        app->Blocks[i].Occupant = other->Seq;
    const PlacementIndex index(*app);
    for (const PlacementIndex* with : {static_cast<const PlacementIndex*>(nullptr), &index}) {
        const BlockRoom room = RoomFor(*app, with, *koutei, *part);
        EXPECT_EQ(room.Fitting.size(), 3u);
        EXPECT_FALSE(room.Free);
    }
}

// CouldHold as the corners define it: some corner whose footprint keeps on the pallet and,
// unless the part fits anywhere, within the process's area.
bool HoldsInSomeCorner(const CornerQuery& q, const BlockInfo& b, double sx, double sy,
                       const PalletInfo& pal, bool anywhere) {
    for (uint8_t c : kCornerSearchOrder) {
        const LengthRect f = Footprint(b, c, sx, sy);
        if (OnPallet(f, pal) && (anywhere || q.WithinBounds(f.X1, f.Y0, sx, sy)))
            return true;
    }
    return false;
}

TEST_F(CornerQueryTest, ABlockCouldHoldAStackExactlyWhenSomeCornerCould) {
    std::mt19937_64 random(5);
    const double values[] = {-50, 0,   0.005,   10,   99.999, 100, 150,     200,
                             290, 300, 300.005, 1000, 1200,   NAN, INFINITY};
    auto pick = [&] { return values[random() % std::size(values)]; };
    PalletInfo pal = *koutei->Pallet;
    for (int n = 0; n < 20000; ++n) {
        BlockInfo b;
        b.MinX = pick();
        b.MaxX = pick();
        b.MinY = pick();
        b.MaxY = pick();
        pal.MarginY = n % 2 == 0 ? 0 : 10;
        const double sx = pick(), sy = pick();
        const CornerQuery q = Query(part);
        for (const bool anywhere : {false, true}) {
            EXPECT_EQ(q.CouldHold(b, sx, sy, pal, anywhere),
                      HoldsInSomeCorner(q, b, sx, sy, pal, anywhere))
                << b.MinX << ".." << b.MaxX << " x " << b.MinY << ".." << b.MaxY << ", " << sx
                << " x " << sy;
        }
    }
}

TEST_F(CornerQueryTest, BlocksOfOneRectangleShareOneShapeInTableOrder) {
    // Block 2 on pallet 2 has the rectangle of block 0 on pallet 1.
    const BlockShapes shapes = BlockShapesOf(*app, nullptr, *koutei);
    EXPECT_EQ(shapes.Blocks, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(shapes.ShapeOf, (std::vector<int>{0, 1, 0}));
    EXPECT_EQ(shapes.Firsts, (std::vector<int>{0, 1}));
    // Both rectangles span y 0..100: two spans across, one along.
    EXPECT_EQ(shapes.AcrossOf, (std::vector<int>{0, 1}));
    EXPECT_EQ(shapes.AlongOf, (std::vector<int>{0, 0}));
    EXPECT_EQ(shapes.AcrossFirsts, (std::vector<int>{0, 1}));
    EXPECT_EQ(shapes.AlongFirsts, (std::vector<int>{0}));
    const PlacementIndex index(*app);
    const BlockShapes indexed = BlockShapesOf(*app, &index, *koutei);
    EXPECT_EQ(indexed.Blocks, shapes.Blocks);
    EXPECT_EQ(indexed.ShapeOf, shapes.ShapeOf);
}

TEST_F(CornerQueryTest, AShapeHoldsAStackExactlyWhenEachOfItsBlocksCould) {
    const BlockShapes shapes = BlockShapesOf(*app, nullptr, *koutei);
    for (const auto& [sx, sy] : std::vector<std::pair<double, double>>{
             {50, 50}, {100, 100}, {250, 50}, {400, 50}, {1200, 50}, {50, 900}}) {
        PartsInfo& sized = AddPart({.SizeX = sx, .SizeY = sy, .Quantity = 1});
        const CornerQuery q = Query(&sized);
        const std::vector<char> holding = q.HoldingShapes(shapes);
        ASSERT_EQ(holding.size(), shapes.Firsts.size());
        for (size_t k = 0; k < shapes.Blocks.size(); ++k) {
            const bool could = q.CouldHold(app->Blocks[shapes.Blocks[k]], sx, sy, *koutei->Pallet,
                                           q.CoversArea(sx, sy));
            EXPECT_EQ(holding[static_cast<size_t>(shapes.ShapeOf[k])] != 0, could)
                << sx << " x " << sy << " block " << shapes.Blocks[k];
        }
    }
}

TEST_F(CornerQueryTest, TheNextStackGoesOnlyIntoAFreeBlockOrOneThePartHolds) {
    app->Blocks[0].Occupant = other->Seq;
    app->Blocks[1].Occupant = other->Seq;
    EXPECT_FALSE(Query(part).TakesNext(std::vector<int>{0, 1}));
    EXPECT_TRUE(Query(other).TakesNext(std::vector<int>{0, 1}));
    EXPECT_TRUE(Query(part).TakesNext(std::vector<int>{0, 1, 2}));
    EXPECT_FALSE(Query(nullptr).TakesNext(std::vector<int>{2}));
}

TEST(Collides, AStackMeetsAFootprintThatTouchesItWithinTheTolerance) {
    PartsInfo p = MakePart({.SizeX = 20, .SizeY = 20});
    HaichiInfo h;
    h.Part = &p;
    h.X = 60;
    h.Y = 40;  // (40,40)-(60,60)
    EXPECT_TRUE(Collides(h, {50, 50, 100, 100}, 0, 0));
    EXPECT_FALSE(Collides(h, {61, 61, 100, 100}, 0, 0));
    // The gap widens the stack.
    EXPECT_TRUE(Collides(h, {61, 61, 100, 100}, 2, 2));
}

}  // namespace
}  // namespace kesto::test
