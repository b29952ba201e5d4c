#include "placement/CKs_Block.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "common/AllocFailure.h"
#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

class BlockTest : public PlacementTest {
  protected:
    std::vector<std::pair<double, double>> Columns() {
        std::vector<std::pair<double, double>> out;
        for (int i = 0; i < app->Blocks.Count(); ++i) {
            const auto c = std::make_pair(app->Blocks[i].MinX, app->Blocks[i].MaxX);
            if (out.empty() || out.back() != c)
                out.push_back(c);
        }
        return out;
    }
    std::vector<double> RowsOfFirstColumn() {
        std::vector<double> out;
        for (int i = 0; i < app->Blocks.Count(); ++i) {
            if (app->Blocks[i].MinX != app->Blocks[0].MinX)
                break;
            out.push_back(app->Blocks[i].MinY);
        }
        return out;
    }
};

using Span = std::pair<double, double>;

TEST_F(BlockTest, StartCornerZeroNumbersColumnsFromTheLeftEndingAtTheRightMargin) {
    GridJob(0);
    EXPECT_EQ(Columns(), (std::vector<Span>{{70, 370}, {380, 680}, {690, 990}}));
}

TEST_F(BlockTest, StartCornerOneAlsoEndsTheColumnsAtTheRightMargin) {
    GridJob(1);
    EXPECT_EQ(Columns(), (std::vector<Span>{{70, 370}, {380, 680}, {690, 990}}));
}

TEST_F(BlockTest, StartCornerTwoNumbersTheSameColumnsFromTheRight) {
    GridJob(2);
    EXPECT_EQ(Columns(), (std::vector<Span>{{690, 990}, {380, 680}, {70, 370}}));
}

TEST_F(BlockTest, RowsStartAt10_220_430FromTheBottomForCorners0And3) {
    for (int corner : {0, 3}) {
        app->KouteiList.Clear();
        app->PalletList.Clear();
        GridJob(corner);
        EXPECT_EQ(RowsOfFirstColumn(), (std::vector<double>{10, 220, 430})) << corner;
    }
}

TEST_F(BlockTest, RowsStartAt430_220_10FromTheTopForCorners1And2) {
    for (int corner : {1, 2}) {
        app->KouteiList.Clear();
        app->PalletList.Clear();
        GridJob(corner);
        EXPECT_EQ(RowsOfFirstColumn(), (std::vector<double>{430, 220, 10})) << corner;
    }
}

TEST_F(BlockTest, CellsAreTwoHundredDeepAndFilledWithProcessAndPallet) {
    GridJob(3);
    ASSERT_EQ(app->Blocks.Count(), 9);
    const BlockInfo& b = app->Blocks[0];
    EXPECT_EQ(b.KouteiNo, 1);
    EXPECT_EQ(b.PalletNo, 1);
    EXPECT_DOUBLE_EQ(b.MinX, 690);
    EXPECT_DOUBLE_EQ(b.MaxX, 990);
    EXPECT_DOUBLE_EQ(b.MinY, 10);
    EXPECT_DOUBLE_EQ(b.MaxY, 210);
    EXPECT_EQ(b.CornerMask, 0);
    EXPECT_EQ(b.Occupant, kNoOccupant);
}

TEST_F(BlockTest, TableIsOrderedByProcessThenPalletThenColumnThenRow) {
    AddPallet(GridPallet("A"));
    AddPallet(GridPallet("B"));
    AddKoutei(7, "B");
    AddKoutei(3, "A");
    app->Settings.PalletCount = 2;
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    ASSERT_EQ(app->Blocks.Count(), 36);
    EXPECT_EQ(app->Blocks.Capacity(), 100);
    EXPECT_EQ(app->Blocks[0].KouteiNo, 7);
    EXPECT_EQ(app->Blocks[9].KouteiNo, 7);
    EXPECT_EQ(app->Blocks[9].PalletNo, 2);
    EXPECT_EQ(app->Blocks[18].KouteiNo, 3);
    EXPECT_EQ(app->Blocks[18].PalletNo, 1);
    EXPECT_DOUBLE_EQ(app->Blocks[1].MinY, 220);
    EXPECT_DOUBLE_EQ(app->Blocks[3].MinX, 380);
}

TEST_F(BlockTest, SetUpLinksEachProcessToTheFirstPalletOfItsName) {
    PalletInfo& first = AddPallet(GridPallet("PAL"));
    AddPallet(GridPallet("PAL"));
    KouteiInfo& k = AddKoutei(1, "PAL");
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    EXPECT_EQ(k.Pallet, &first);
}

TEST_F(BlockTest, ZeroColumnsYieldNoBlocks) {
    PalletInfo p = GridPallet("PAL");
    p.CellsX = 0;
    AddPallet(p);
    AddKoutei(1, "PAL");
    app->Settings.StartCorner = 0;
    EXPECT_EQ(CKs_Block(*app, services).SetUp(), Outcome::Done());
    EXPECT_EQ(app->Blocks.Count(), 0);
}

TEST_F(BlockTest, ProcessWithoutPalletShowsMessageOneAndBuildsNothing) {
    AddPallet(GridPallet("PAL"));
    AddKoutei(1, "PAL");
    AddKoutei(2, "NONE");
    EXPECT_FALSE(CKs_Block(*app, services).SetUp().Ok());
    EXPECT_EQ(op.KakuNumbers, (std::vector<std::pair<int, int>>{{1, 0}}));
    EXPECT_EQ(app->Blocks.Count(), 0);
}

TEST_F(BlockTest, MoreCellsThanTheCapacityShowCountOverAnd9102) {
    AddPallet(GridPallet("PAL"));
    KouteiInfo& k = AddKoutei(1, "PAL");
    k.Pallet = &*app->PalletList.begin();
    app->Blocks.SetCapacity(4);
    EXPECT_EQ(CKs_Block(*app, services).Build(), Outcome::Failed(9102));
    EXPECT_EQ(app->Blocks.Count(), 4);
    EXPECT_EQ(op.Messages, (std::vector<std::string>{"Block Data Area Set Count Over"}));
}

TEST_F(BlockTest, AbsurdCapacityFailsWith9101WithoutAllocating) {
    PalletInfo p = GridPallet("PAL");
    p.CellsX = 100000;
    p.CellsY = 100000;
    AddPallet(p);
    AddKoutei(1, "PAL");
    EXPECT_EQ(CKs_Block(*app, services).SetUp(), Outcome::Failed(9101));
    EXPECT_TRUE(op.Messages.empty());
}

TEST_F(BlockTest, TableThatCannotBeAllocatedFailsWith9101) {
    app->Blocks.SetCapacity(100);
    Outcome result;
    {
        ScopedAllocFailure fail(50 * sizeof(BlockInfo));
        result = CKs_Block(*app, services).Build();
    }
    EXPECT_EQ(result, Outcome::Failed(9101));
}

TEST_F(BlockTest, NegativeCapacityFailsWith9101) {
    app->Blocks.SetCapacity(-1);
    EXPECT_EQ(CKs_Block(*app, services).Build(), Outcome::Failed(9101));
}

TEST_F(BlockTest, EmptyProcessListBuildsNothingAndSucceeds) {
    app->Blocks.SetCapacity(10);
    EXPECT_TRUE(CKs_Block(*app, services).Build().Ok());
    EXPECT_EQ(app->Blocks.Size(), 10u);
    EXPECT_EQ(app->Blocks.Count(), 0);
}

TEST_F(BlockTest, ZeroPalletsGiveAnEmptyTable) {
    app->Settings.PalletCount = 0;
    GridJob(3);
    EXPECT_EQ(app->Blocks.Capacity(), 0);
    EXPECT_EQ(app->Blocks.Count(), 0);
}

}  // namespace
}  // namespace kesto::test
