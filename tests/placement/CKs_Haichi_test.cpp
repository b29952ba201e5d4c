#include "placement/CKs_Haichi.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "JobGenerator.h"
#include "common/AllocFailure.h"
#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

using Kaku = std::vector<std::pair<int, int>>;

std::vector<int32_t> Values(const std::vector<HaichiInfo>& stacks) {
    std::vector<int32_t> out;
    for (const HaichiInfo& h : stacks)
        out.push_back(h.Pieces);
    return out;
}

std::vector<int32_t> Shared(size_t n, int32_t quantity) {
    std::vector<HaichiInfo> stacks(n);
    std::vector<HaichiInfo*> ptrs;
    for (HaichiInfo& h : stacks) {
        h.Pieces = 77;
        ptrs.push_back(&h);
    }
    ShareOut(ptrs, quantity);
    return Values(stacks);
}

TEST(ShareOut, EarlierStacksHoldTheMore) {
    EXPECT_EQ(Shared(3, 10), (std::vector<int32_t>{4, 3, 3}));
    EXPECT_EQ(Shared(3, 2), (std::vector<int32_t>{1, 1, 0}));
}

TEST(ShareOut, QuantityZeroLeavesOnePieceInTheFirstStack) {
    EXPECT_EQ(Shared(3, 0), (std::vector<int32_t>{1, 0, 0}));
    EXPECT_EQ(Shared(2, -4), (std::vector<int32_t>{1, 0}));
}

TEST(ShareOut, SingleStackIsLeftAlone) {
    EXPECT_EQ(Shared(1, 10), (std::vector<int32_t>{77}));
}

TEST(PlaceInCorner, ReferencePointAndClearanceFollowTheCorner) {
    BlockInfo b;
    b.MinX = 100;
    b.MinY = 10;
    b.MaxX = 400;
    b.MaxY = 210;
    const CornerPlace c1 = PlaceInCorner(b, kCornerMinMin, 50, 20, 5, 3);
    EXPECT_DOUBLE_EQ(c1.X, 150);
    EXPECT_DOUBLE_EQ(c1.Y, 10);
    EXPECT_DOUBLE_EQ(c1.Clear.X1, 155);
    EXPECT_DOUBLE_EQ(c1.Clear.Y1, 33);
    const CornerPlace c2 = PlaceInCorner(b, kCornerMinMax, 50, 20, 5, 3);
    EXPECT_DOUBLE_EQ(c2.Y, 190);
    EXPECT_DOUBLE_EQ(c2.Clear.Y0, 187);
    const CornerPlace c4 = PlaceInCorner(b, kCornerMaxMin, 50, 20, 5, 3);
    EXPECT_DOUBLE_EQ(c4.X, 400);
    EXPECT_DOUBLE_EQ(c4.Clear.X0, 345);
    const CornerPlace c8 = PlaceInCorner(b, kCornerMaxMax, 50, 20, 5, 3);
    EXPECT_DOUBLE_EQ(c8.Y, 190);
    EXPECT_DOUBLE_EQ(c8.Clear.X0, 345);
    EXPECT_DOUBLE_EQ(c8.Clear.Y0, 187);
    EXPECT_DOUBLE_EQ(c8.Clear.Y1, 210);
}

TEST(TruncToInt32, CutsToTheRangeAndTruncates) {
    EXPECT_EQ(TruncToInt32(2.9), 2);
    EXPECT_EQ(TruncToInt32(-2.9), -2);
    EXPECT_EQ(TruncToInt32(1e20), INT32_MAX);
    EXPECT_EQ(TruncToInt32(0.0 / 0.0), 0);
    EXPECT_EQ(AddClamped(INT32_MAX, 5), INT32_MAX);
}

class PlaceAllTest : public PlacementTest {
  protected:
    // PlaceAll on a new engine.
    Outcome PlaceAll(PlacedCounts counts = PlacedCounts::Quantity,
                     SavedPlacement saved = SavedPlacement::Ignore) {
        return CKs_Haichi(*app, services).PlaceAll(counts, saved);
    }
};

TEST_F(PlaceAllTest, EmptyProcessListSucceedsWithoutMessage) {
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 5});
    EXPECT_TRUE(PlaceAll().Ok());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(PlaceAllTest, FullyPlacedJobShowsNoMessage) {
    GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4});
    EXPECT_TRUE(PlaceAll().Ok());
    EXPECT_EQ(p.PiecesPlaced, 10);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{4, 3, 3}));
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(PlaceAllTest, PartLeftShortShowsMessageEight) {
    GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 20, .PerStackLimit = 1});
    EXPECT_TRUE(PlaceAll().Ok());
    EXPECT_EQ(p.PiecesPlaced, 9);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{8, 0}}));
}

TEST_F(PlaceAllTest, PartialPlacementShowsNoMessageAndKeepsTheQuantity) {
    GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 20, .PerStackLimit = 1});
    p.PartialQuantity = 3;
    EXPECT_TRUE(PlaceAll(PlacedCounts::Kept).Ok());
    EXPECT_EQ(p.PiecesPlaced, 3);
    EXPECT_EQ(p.Quantity, 20);
    EXPECT_EQ(p.PartialQuantity, 3);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(PlaceAllTest, BoundsCoverTheBlocksOfTheProcess) {
    GridJob();
    EXPECT_TRUE(
        CKs_Haichi(*app, services).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore).Ok());
    const LengthRect bounds = ProcessBounds(*app, app->KouteiAt(1));
    EXPECT_DOUBLE_EQ(bounds.X0, 70);
    EXPECT_DOUBLE_EQ(bounds.X1, 990);
    EXPECT_DOUBLE_EQ(bounds.Y0, 10);
    EXPECT_DOUBLE_EQ(bounds.Y1, 630);
}

TEST_F(PlaceAllTest, NoProcessHasTheEmptyBounds) {
    GridJob();
    const LengthRect bounds = ProcessBounds(*app, nullptr);
    EXPECT_DOUBLE_EQ(bounds.X0, kNoBound);
    EXPECT_DOUBLE_EQ(bounds.Y0, kNoBound);
    EXPECT_DOUBLE_EQ(bounds.X1, -kNoBound);
    EXPECT_DOUBLE_EQ(bounds.Y1, -kNoBound);
}

TEST_F(PlaceAllTest, StackThatCannotBeAllocatedFailsThePlacement) {
    GridJob();
    AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4});
    Outcome result;
    {
        ScopedAllocFailure fail(sizeof(HaichiInfo));
        result = PlaceAll();
    }
    EXPECT_EQ(result, Outcome::Failed(9015));
    EXPECT_TRUE(app->HaichiList.Empty());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(PlaceAllTest, PartsOfSmallBoxesAndOtherProcessesAreSkipped) {
    GridJob();
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 5, .Destination = 100});
    PartsInfo& stranger = AddPart({.KouteiNo = 9, .SizeX = 10, .SizeY = 10, .Quantity = 5});
    EXPECT_TRUE(PlaceAll().Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
    EXPECT_EQ(stranger.PiecesPlaced, 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{8, 0}}));
}

TEST_F(PlaceAllTest, RestoreSkipsRestoredPartsThatNeedNothingMore) {
    GridJob();
    PartsInfo& restored =
        AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 5, .PiecesPlaced = 5, .SaveKey = 3});
    PartsInfo& fresh = AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 2});
    EXPECT_TRUE(PlaceAll(PlacedCounts::Quantity, SavedPlacement::Restore).Ok());
    EXPECT_TRUE(StacksOf(restored).empty());
    EXPECT_EQ(fresh.PiecesPlaced, 2);
}

TEST_F(PlaceAllTest, RestoreValueTwoSkipsEveryPart) {
    GridJob();
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 2});
    EXPECT_TRUE(PlaceAll(PlacedCounts::Quantity, static_cast<SavedPlacement>(2)).Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(PlaceAllTest, SharingSpreadsTheQuantityOverAllStacksOfThePart) {
    GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 7, .PieceHeight = 3.0});
    app->PalletList.begin()->MaxStackHeight = 10;
    EXPECT_TRUE(PlaceAll().Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3, 2, 2}));
    EXPECT_EQ(p.PiecesPlaced, 7);
}

TEST_F(PlaceAllTest, PartialSharingWithQuantityZeroLeavesOnePieceInTheFirstStack) {
    GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 15});
    for (int i = 0; i < 3; ++i)
        AddStack(*app, p,
                 {.Block = i, .Pieces = 5, .X = 990, .Y = 10 + 210.0 * i, .Corner = kCornerMaxMin});
    p.PiecesPlaced = 15;
    EXPECT_TRUE(PlaceAll(PlacedCounts::Kept).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{1, 0, 0}));
    EXPECT_EQ(p.Quantity, 15);
}

TEST_F(PlaceAllTest, PlaceOnePartWithModeZeroPlacesNothing) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 2});
    EXPECT_TRUE(CKs_Haichi(*app, services, CandidatePallets(shown, app->Settings.PalletCount))
                    .PlaceOnePart(&p, &k, Stacking::AllPallets, QuantityShare::SharedOut)
                    .Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(PlaceAllTest, PlaceOnePartClearsCornerMarksWhenNoStackExists) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    app->Blocks[0].CornerMask = 15;
    EXPECT_TRUE(CKs_Haichi(*app, services, CandidatePallets(shown, app->Settings.PalletCount))
                    .PlaceOnePart(&p, &k, Stacking::PalletsInView, QuantityShare::SharedOut)
                    .Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 0);
}

TEST_F(PlaceAllTest, PlaceOnePartWithEmptyPartsListReturnsOne) {
    KouteiInfo& k = GridJob();
    PartsInfo stray;
    EXPECT_TRUE(CKs_Haichi(*app, services, CandidatePallets(shown, app->Settings.PalletCount))
                    .PlaceOnePart(&stray, &k, Stacking::PalletsInView, QuantityShare::SharedOut)
                    .Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

// Every stack inside its pallet, no block serving two parts, and the placed count equal to
// the stacks' sum, on seeded jobs of every size. (That the same jobs pass the whole job check
// is a test of the session, tests/session/JobCheck_test.cpp.)
class GeneratedJobTest : public PlacementTest, public ::testing::WithParamInterface<JobShape> {};

TEST_P(GeneratedJobTest, PlacementKeepsTheInvariants) {
    FillApp(*app, GenerateJob(GetParam()));
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    ASSERT_TRUE(
        CKs_Haichi(*app, services).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore).Ok());
    std::map<int, const PartsInfo*> server;
    std::map<const PartsInfo*, int64_t> sums;
    for (const HaichiInfo& h : app->HaichiList) {
        ASSERT_GE(h.BlockIndex, 0);
        ASSERT_NE(app->Blocks.At(h.BlockIndex), nullptr);
        const BlockInfo& b = app->Blocks[h.BlockIndex];
        const PalletInfo& pal = *app->KouteiAt(h.Part->KouteiNo)->Pallet;
        EXPECT_GE(h.X - h.Part->SizeX, -kLengthTolerance);
        EXPECT_LE(h.X, pal.LengthX + kLengthTolerance);
        EXPECT_GE(h.Y, pal.MarginY - kLengthTolerance);
        EXPECT_LE(h.Y + h.Part->SizeY, pal.LengthY + kLengthTolerance);
        EXPECT_EQ(b.KouteiNo, h.Part->KouteiNo);
        auto [it, fresh] = server.emplace(h.BlockIndex, h.Part);
        EXPECT_EQ(it->second, h.Part) << "block " << h.BlockIndex << " serves two parts";
        sums[h.Part] += h.Pieces;
    }
    int placed = 0;
    for (const PartsInfo& p : app->PartsList) {
        if (p.Destination >= 100)
            continue;
        EXPECT_EQ(p.PiecesPlaced, p.Quantity) << p.Code;
        EXPECT_EQ(sums[&p], p.PiecesPlaced) << p.Code;
        placed += p.PiecesPlaced == p.Quantity ? 1 : 0;
    }
    EXPECT_GT(placed, 0);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

std::string SizeName(const ::testing::TestParamInfo<JobShape>& info) {
    static const char* const names[] = {"Small", "Medium", "Largest", "SampleLike"};
    return names[info.index];
}

INSTANTIATE_TEST_SUITE_P(Sizes, GeneratedJobTest,
                         ::testing::Values(SmallJobShape(), MediumJobShape(), LargestJobShape(),
                                           SampleLikeJobShape()),
                         SizeName);

}  // namespace
}  // namespace kesto::test
