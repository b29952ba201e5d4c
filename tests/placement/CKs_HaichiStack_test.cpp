#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

class StackPartTest : public PlacementTest {
  protected:
    Outcome Stack(KouteiInfo& k, PartsInfo& p, Stacking mode) {
        CKs_Haichi h(*app, services, CandidatePallets(shown, app->Settings.PalletCount));
        return h.StackPart(&k, &p, mode);
    }
    std::array<int, 4> Candidates(PalletView mode, int count, int current) {
        shown.SetMode(mode);
        app->Settings.PalletCount = count;
        shown.SetPallet(current);
        return CandidatePallets(shown, app->Settings.PalletCount);
    }
};

using Cand = std::array<int, 4>;

TEST_F(StackPartTest, QuantityTenWithFourPerStackGivesStacksOfFourThreeThree) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{4, 3, 3}));
    EXPECT_EQ(p.PiecesPlaced, 10);
}

TEST_F(StackPartTest, QuantityThatIsAMultipleOfNum4GetsStacksOfExactlyNum4) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 12, .PerStackLimit = 4});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{4, 4, 4}));
}

TEST_F(StackPartTest, FirstStackStandsInCornerFourOfTheFirstBlock) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 100, .SizeY = 50, .Quantity = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    const HaichiInfo& h = *StacksOf(p).at(0);
    EXPECT_EQ(h.Corner, 4);
    EXPECT_EQ(h.BlockIndex, 0);
    EXPECT_DOUBLE_EQ(h.X, 990);
    EXPECT_DOUBLE_EQ(h.Y, 10);
    EXPECT_EQ(app->Blocks[0].Occupant, p.Seq);
}

TEST_F(StackPartTest, HeightLimitBelowOnePieceRecordsEmptyStacksInTheFirstBlock) {
    KouteiInfo& k = GridJob();
    app->PalletList.begin()->MaxStackHeight = 0.5;
    PartsInfo& p = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 10, .PieceHeight = 1.0});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    std::vector<int> flags, blocks;
    for (const HaichiInfo* h : StacksOf(p)) {
        flags.push_back(h->Corner);
        blocks.push_back(h->BlockIndex);
    }
    EXPECT_EQ(flags, (std::vector<int>{4, 8, 1, 2}));
    EXPECT_EQ(blocks, (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{0, 0, 0, 0}));
    EXPECT_EQ(p.PiecesPlaced, 0);
}

TEST_F(StackPartTest, PieceWithoutHeightSetsNoCap) {
    KouteiInfo& k = GridJob();
    app->PalletList.begin()->MaxStackHeight = -5;
    PartsInfo& p = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 3, .PieceHeight = 0.0});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3}));
}

TEST_F(StackPartTest, HeightCapCutsPiecesToWhatThePalletHolds) {
    KouteiInfo& k = GridJob();
    app->PalletList.begin()->MaxStackHeight = 10;
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 7, .PieceHeight = 3.0});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3, 3, 1}));
}

TEST_F(StackPartTest, BlockServingAnotherPartIsNeverUsed) {
    KouteiInfo& k = GridJob();
    PartsInfo& other = AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1});
    PartsInfo& p = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    app->Blocks[0].Occupant = other.Seq;
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 1);
}

TEST_F(StackPartTest, ClearanceOverAnotherPartsBlockCornerRefusesTheBlock) {
    KouteiInfo& k = GridJob();
    app->PalletList.begin()->StackGapX = 20;
    PartsInfo& other = AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1});
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    app->Blocks[3].Occupant = other.Seq;
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 1);
}

TEST_F(StackPartTest, StackOutsideTheProcessAreaIsRefused) {
    AddPallet(GridPallet("PAL"));
    KouteiInfo& k = AddKoutei(1, "PAL");
    k.Pallet = &*app->PalletList.begin();
    AddBlock(1, 1, 100, 10, 400, 210);
    AddBlock(1, 1, 410, 10, 710, 210);
    PartsInfo& p = AddPart({.SizeX = 350, .SizeY = 100, .Quantity = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 1);
}

TEST_F(StackPartTest, PartAsLargeAsTheAreaIsAcceptedWhereverItFalls) {
    AddPallet(GridPallet("PAL"));
    KouteiInfo& k = AddKoutei(1, "PAL");
    k.Pallet = &*app->PalletList.begin();
    AddBlock(1, 1, 100, 10, 400, 210);
    PartsInfo& p = AddPart({.SizeX = 350, .SizeY = 100, .Quantity = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    ASSERT_EQ(StacksOf(p).size(), 1u);
    EXPECT_DOUBLE_EQ(StacksOf(p)[0]->X, 400);
}

TEST_F(StackPartTest, ProcessWithoutPalletPlacesNothing) {
    KouteiInfo& k = AddKoutei(1, "PAL");
    AddBlock(1, 1, 100, 10, 400, 210);
    PartsInfo& p = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    EXPECT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(StackPartTest, CandidatesOfFourPalletsKeepTheUnwrappedFourth) {
    EXPECT_EQ(Candidates(PalletView::FourPallet, 4, 1), (Cand{1, 2, 3, 4}));
    EXPECT_EQ(Candidates(PalletView::FourPallet, 4, 2), (Cand{2, 3, 4, 5}));
    EXPECT_EQ(Candidates(PalletView::FourPallet, 4, 3), (Cand{3, 4, 1, 2}));
    EXPECT_EQ(Candidates(PalletView::FourPallet, 4, 4), (Cand{4, 1, 2, 3}));
}

TEST_F(StackPartTest, CandidatesOfFewerThanFourPalletsDoNotWrap) {
    EXPECT_EQ(Candidates(PalletView::FourPallet, 3, 2), (Cand{2, 3, -1, -1}));
    EXPECT_EQ(Candidates(PalletView::FourPallet, 1, 1), (Cand{1, -1, -1, -1}));
}

TEST_F(StackPartTest, CandidatesOfOtherViews) {
    EXPECT_EQ(Candidates(PalletView::Flat, 4, 3), (Cand{3, -1, -1, -1}));
    EXPECT_EQ(Candidates(PalletView::Danmen, 4, 2), (Cand{2, -1, -1, -1}));
    EXPECT_EQ(Candidates(PalletView::TwoPallet, 4, 2), (Cand{2, 3, -1, -1}));
    EXPECT_EQ(Candidates(PalletView::TwoPallet, 4, 4), (Cand{4, 1, -1, -1}));
    EXPECT_EQ(Candidates(PalletView::TwoPallet, 1, 1), (Cand{1, -1, -1, -1}));
    EXPECT_EQ(Candidates(static_cast<PalletView>(7), 4, 1), (Cand{-1, -1, -1, -1}));
}

TEST_F(StackPartTest, FourPalletViewFromPalletTwoNeverReachesPalletOne) {
    app->Settings.PalletCount = 4;
    KouteiInfo& k = GridJob();
    shown.SetMode(PalletView::FourPallet);
    shown.SetPallet(2);
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 40, .PerStackLimit = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::PalletsInView).Ok());
    std::set<int> pallets;
    for (const HaichiInfo* h : StacksOf(p))
        pallets.insert(app->Blocks[h->BlockIndex].PalletNo);
    EXPECT_EQ(pallets, (std::set<int>{2, 3, 4}));
    EXPECT_EQ(StacksOf(p).size(), 27u);
}

TEST_F(StackPartTest, ModeOneSharesTheQuantityOverThisCallsStacksOnly) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 5, .PerStackLimit = 2});
    HaichiInfo& older =
        AddStack(*app, p, {.Block = 8, .Pieces = 1, .X = 370, .Y = 430, .Corner = kCornerMaxMin});
    app->Blocks[8].Occupant = p.Seq;
    p.PiecesPlaced = 1;
    ASSERT_TRUE(Stack(k, p, Stacking::PalletsInView).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{1, 3, 2}));
    EXPECT_EQ(older.Pieces, 1);
    EXPECT_EQ(p.PiecesPlaced, 5);
}

TEST_F(StackPartTest, ModeOneDoesNotSharePiecesPlacedAsTheyAre) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart(
        {.SizeX = 300, .SizeY = 200, .Quantity = 5, .PiecesSetAside = 1, .PerStackLimit = 2});
    ASSERT_TRUE(CKs_Haichi(*app, services, CandidatePallets(shown, app->Settings.PalletCount))
                    .PlaceOnePart(&p, &k, Stacking::PalletsInView, QuantityShare::AsPlaced)
                    .Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{2, 2}));
}

TEST_F(StackPartTest, ModeOneCapsAtNum4AndShares) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart(
        {.SizeX = 300, .SizeY = 200, .Quantity = 5, .PiecesSetAside = 1, .PerStackLimit = 2});
    ASSERT_TRUE(Stack(k, p, Stacking::PalletsInView).Ok());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3, 2}));
}

TEST_F(StackPartTest, ModeTwoUsesEveryPalletAndModeOneOnlyTheCurrent) {
    app->Settings.PalletCount = 2;
    KouteiInfo& k = GridJob();
    shown.SetPallet(2);
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    PartsInfo& q = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPalletsCapped).Ok());
    ASSERT_TRUE(Stack(k, q, Stacking::PalletsInView).Ok());
    EXPECT_EQ(app->Blocks[StacksOf(p).at(0)->BlockIndex].PalletNo, 1);
    EXPECT_EQ(app->Blocks[StacksOf(q).at(0)->BlockIndex].PalletNo, 2);
}

TEST_F(StackPartTest, OnlyTheFirstThousandStacksOfACallAreShared) {
    PalletInfo pal = GridPallet("PAL");
    SetDims(pal, {0, 0, 450, 350, 1000, 10, 10, 10, 10, 1, 1});
    pal.CellsX = 40;
    pal.CellsY = 30;
    AddPallet(pal);
    KouteiInfo& k = AddKoutei(1, "PAL");
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    ASSERT_EQ(app->Blocks.Count(), 1200);
    PartsInfo& p = AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1100, .PerStackLimit = 1});
    ASSERT_TRUE(Stack(k, p, Stacking::PalletsInView).Ok());
    const std::vector<int32_t> values = ValuesOf(p);
    ASSERT_EQ(values.size(), 1100u);
    EXPECT_EQ(values[0], 2);
    EXPECT_EQ(values[99], 2);
    EXPECT_EQ(values[100], 1);
    EXPECT_EQ(values[999], 1);
    EXPECT_EQ(values[1099], 1);
}

TEST_F(StackPartTest, PartDoneStopsBeforeTheNextBlock) {
    KouteiInfo& k = GridJob();
    PartsInfo& p = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 2, .PiecesPlaced = 2});
    ASSERT_TRUE(Stack(k, p, Stacking::AllPallets).Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

}  // namespace
}  // namespace kesto::test
