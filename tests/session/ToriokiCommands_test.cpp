// left and right: stacks from the pallets to the set-aside area and back, on the grid job of
// EditFixture.h (one 300 x 200 stack fills a cell; the pallet box is box 0).
#include <gtest/gtest.h>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "view/Colours.h"

namespace kesto::test {
namespace {

// --- left -------------------------------------------------------------------------------------

class LeftTest : public TwoPartsTest {
  protected:
    ChangeSet Left() { return session.Left(drawing, canvas); }
};

TEST_F(LeftTest, PickedStackGoesToTheSetAsideArea) {
    ASSERT_FALSE(session.AnyPartSetAside());
    Click(980, 833);  // a, (930, 808)-(1030, 858)
    const ChangeSet change = Left();
    EXPECT_TRUE(change);
    EXPECT_TRUE(session.AnyPartSetAside());
    EXPECT_EQ(partA.PiecesPlaced, 3);
    EXPECT_EQ(partA.PiecesSetAside, 3);
    EXPECT_EQ(job.StacksOf(partA), std::vector<HaichiInfo*>({&a2}));
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().LastPicked(), kNoStack);
    EXPECT_TRUE(drawing.Selected().PickHistory().empty());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(LeftTest, PickIsDrawnBackBeforeItsStacksGo) {
    Click(980, 833);
    canvas.Clear();
    Left();
    // The pick and the part's other stack, (310, 808)-(410, 858), in the normal colour.
    EXPECT_TRUE(PickedIn(canvas, IntRect{930, 808, 1030, 858}, colour::kPartNormal));
    EXPECT_TRUE(PickedIn(canvas, IntRect{310, 808, 410, 858}, colour::kPartNormal));
}

TEST_F(LeftTest, CornersOfTheProcessAreRebuiltFromTheStacksThatRemain) {
    Click(980, 833);
    app.Blocks[0].Occupant = partA.Seq;
    app.Blocks[0].CornerMask = kCornerMaxMin;
    Left();
    EXPECT_EQ(app.Blocks[0].Occupant, kNoOccupant);
    EXPECT_EQ(app.Blocks[0].CornerMask, 0);
}

TEST_F(LeftTest, RubberBandInForceShowsMessage15AndChangesNothing) {
    Click(980, 833);
    drawing.Select().SetBand(BandState::InForce);
    const ChangeSet change = Left();
    EXPECT_TRUE(change.Empty());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{15, 0}}));
    EXPECT_EQ(partA.PiecesPlaced, 6);
    EXPECT_EQ(job.StacksOf(partA).size(), 2u);
}

TEST_F(LeftTest, WithoutAPickNothingHappens) {
    Click(500, 300);
    const ChangeSet change = Left();
    EXPECT_TRUE(change.Empty());
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_EQ(app.HaichiList.size(), 3u);
}

// Three stacks in block 0, picked by block: all three go, and the set-aside list that was empty
// now has lines, so OK is to be disabled.
TEST_F(LeftTest, ThreePickedStacksAllGoAndTheListIsNoLongerEmpty) {
    shown.SetHit(HitBy::Block);
    PartsInfo& c = test::AddPart(app, {.SizeX = 100, .SizeY = 50, .Quantity = 1, .PieceHeight = 1});
    PartsInfo& d = test::AddPart(app, {.SizeX = 100, .SizeY = 50, .Quantity = 4, .PieceHeight = 1});
    HaichiInfo& sc = AddStack(app, c,
                              {.Block = 0,
                               .Pieces = 1,
                               .X = 990,
                               .Y = 160,
                               .Corner = kCornerMaxMax,
                               .CountOnPart = true});
    HaichiInfo& sd = AddStack(
        app, d,
        {.Block = 0, .Pieces = 4, .X = 790, .Y = 10, .Corner = kCornerMinMin, .CountOnPart = true});
    Show();
    ASSERT_FALSE(session.AnyPartSetAside());
    Click(980, 833);
    ASSERT_EQ(drawing.Selected().PickHistory(), std::vector<StackId>({a.Id, sc.Id, sd.Id}));
    const ChangeSet change = Left();
    EXPECT_TRUE(change);
    EXPECT_TRUE(session.AnyPartSetAside());
    EXPECT_EQ(c.PiecesSetAside, 1);
    EXPECT_EQ(d.PiecesSetAside, 4);
    EXPECT_EQ(d.PiecesPlaced, 0);
    EXPECT_EQ(app.HaichiList.size(), 2u);
}

TEST_F(LeftTest, StackPickedTwiceIsSetAsideOnce) {
    drawing.Select().SetPicked(a.Id);
    for (HaichiInfo* h : {&a, &b, &a})
        drawing.Select().AddToHistory(h->Id);
    Left();
    EXPECT_EQ(partA.PiecesSetAside, 3);
    EXPECT_EQ(partA.PiecesPlaced, 3);
    EXPECT_EQ(partB.PiecesSetAside, 2);
    EXPECT_EQ(app.HaichiList.size(), 1u);
}

TEST_F(LeftTest, RecordThatIsNoLongerAStackIsLeftAlone) {
    HaichiInfo stray;
    stray.Part = &partB;
    stray.Pieces = 2;
    drawing.Select().SetPicked(a.Id);
    for (HaichiInfo* h : {&stray, &a})
        drawing.Select().AddToHistory(h->Id);
    Left();
    EXPECT_EQ(partB.PiecesSetAside, 0);
    EXPECT_EQ(partA.PiecesSetAside, 3);
}

TEST_F(LeftTest, PartsLeftShortAreNotSetAsideButAnyProcessesSetAsidePiecesAre) {
    partA.KouteiNo = 2;
    partA.PiecesPlaced = 1;
    partB.PiecesPlaced = 1;
    EXPECT_FALSE(session.AnyPartSetAside());
    partA.PiecesSetAside = 1;
    EXPECT_TRUE(session.AnyPartSetAside());
}

TEST_F(LeftTest, IsWrittenDownWithThePickedStacksPlacesBeforeTheyGo) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    Click(980, 833);  // a, the first of a, b, a2
    Left();
    Click(980, 833);  // nothing there any more
    Left();
    Click(360, 833);  // a2, now the second
    drawing.Select().SetBand(BandState::InForce);
    Left();  // message 15
    EXPECT_EQ(journal.Lines, (Lines{"left 0"}));
}

// --- right ------------------------------------------------------------------------------------

class RightTest : public EditTest {
  protected:
    RightTest() { app.BoxList.begin()->PartSizes = {0, 2000, 0, 2000}; }
    // A part as named set aside whole, as Down leaves it.
    PartsInfo& SetAside(PartFields fields) {
        fields.Destination = destination::kTorioki;
        fields.PiecesSetAside = fields.Quantity;
        return AddPart(fields);
    }
    // Every cell of pallet 1 but the first `free` serves another part.
    void FillPalletOne(int free) {
        PartsInfo& other =
            test::AddPart(app, {.SizeX = 10, .SizeY = 10, .Quantity = 1, .PieceHeight = 1});
        for (int i = free; i < 9; ++i)
            app.Blocks[static_cast<size_t>(i)].Occupant = other.Seq;
    }
};

TEST_F(RightTest, PartGoesBackOntoThePalletsAndTheListEmpties) {
    PartsInfo& p = SetAside({.Quantity = 2});
    const ChangeSet change = session.Right(p.Seq);
    EXPECT_TRUE(change);
    EXPECT_FALSE(session.AnyPartSetAside());
    EXPECT_EQ(p.Destination, 0);
    EXPECT_EQ(p.PiecesSetAside, 0);
    EXPECT_EQ(p.PiecesPlaced, 2);
    EXPECT_EQ(job.ValuesOf(p), std::vector<int32_t>({2}));
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(RightTest, IsWrittenDownBeforeTheChangeIsShown) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    PartsInfo& p = SetAside({.Quantity = 2});
    session.Right(std::nullopt);  // message 7
    std::vector<std::string> whenShown;
    session.Right(p.Seq, [&](ChangeSet) { whenShown = journal.Lines; });
    EXPECT_EQ(whenShown, (Lines{"right " + std::to_string(p.Seq)}));
    EXPECT_EQ(journal.Lines, whenShown);
}

TEST_F(RightTest, StacksBroughtBackAreMarkedAsTheOperators) {
    PartsInfo& p = SetAside({.Quantity = 5, .PerStackLimit = 4});
    session.Right(p.Seq);
    const std::vector<HaichiInfo*> stacks = job.StacksOf(p);
    ASSERT_EQ(stacks.size(), 2u);
    for (const HaichiInfo* h : stacks)
        EXPECT_EQ(h->Edits, kEditReturned);
}

// Five pieces, four a stack: 4 and then 1, left as placed (sharing out would give 3 and 2).
TEST_F(RightTest, PiecesPlacedBackAreNotSharedOut) {
    PartsInfo& p = SetAside({.Quantity = 5, .PerStackLimit = 4});
    session.Right(p.Seq);
    EXPECT_EQ(job.ValuesOf(p), std::vector<int32_t>({4, 1}));
    EXPECT_EQ(p.PiecesPlaced, 5);
}

TEST_F(RightTest, NoSelectedLineShowsMessage7) {
    PartsInfo& p = SetAside({.Quantity = 2});
    EXPECT_TRUE(session.Right(std::nullopt).Empty());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{7, 0}}));
    EXPECT_EQ(p.Destination, destination::kTorioki);
}

TEST_F(RightTest, EmptyPartListDoesNothing) {
    EXPECT_TRUE(session.Right(std::nullopt).Empty());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(RightTest, PartOfAnotherProcessIsNotFound) {
    PartsInfo& p = SetAside({.Quantity = 2});
    p.KouteiNo = 2;
    EXPECT_TRUE(session.Right(p.Seq).Empty());
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_EQ(p.PiecesSetAside, 2);
}

TEST_F(RightTest, PartFittingNoPalletBoxShowsMessage13And14AndStaysSetAside) {
    PartsInfo& p = SetAside({.Quantity = 2});
    job.AddBox(1).PartSizes = {0, 299, 0, 2000};
    EXPECT_TRUE(session.Right(p.Seq).Empty());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{13, 14}}));
    EXPECT_EQ(p.Destination, destination::kTorioki);
    EXPECT_EQ(p.PiecesSetAside, 2);
    EXPECT_TRUE(job.StacksOf(p).empty());
}

TEST_F(RightTest, PalletBoxBoundsAreInclusiveAndSmallBoxesAreNotChecked) {
    PartsInfo& p = SetAside({.Quantity = 1});
    app.BoxList.begin()->PartSizes = {300, 300, 200, 200};
    job.AddBox(100).PartSizes = {0, 1, 0, 1};
    EXPECT_TRUE(session.Right(p.Seq));
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_EQ(p.PiecesPlaced, 1);
}

TEST_F(RightTest, NothingPlacedShowsMessage9) {
    PartsInfo& p = SetAside({.Quantity = 2});
    FillPalletOne(0);
    const ChangeSet change = session.Right(p.Seq);
    EXPECT_TRUE(change);
    // Its pieces are no longer set aside: left short, it does not hold OK back.
    EXPECT_FALSE(session.AnyPartSetAside());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{9, 0}}));
    EXPECT_EQ(p.Destination, 0);
    EXPECT_EQ(p.PiecesSetAside, 0);
}

// The window shows the lists and the drawing again before the message reports the outcome.
TEST_F(RightTest, TheRefreshComesBeforeMessage9) {
    PartsInfo& p = SetAside({.Quantity = 2});
    FillPalletOne(0);
    std::vector<std::string> order;
    op.OnAsk = [&](int no1) { order.push_back("message " + std::to_string(no1)); };
    session.Right(p.Seq, [&](ChangeSet) { order.push_back("refresh"); });
    EXPECT_EQ(order, (std::vector<std::string>{"refresh", "message 9"}));
}

// Two pieces, one a stack, and one free cell: the second stack finds no corner left in it.
TEST_F(RightTest, SomePiecesPlacedShowsMessage10) {
    PartsInfo& p = SetAside({.Quantity = 2, .PerStackLimit = 1});
    FillPalletOne(1);
    session.Right(p.Seq);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{10, 0}}));
    EXPECT_EQ(p.PiecesPlaced, 1);
}

TEST_F(RightTest, OtherPartsStillSetAsideKeepTheListFull) {
    PartsInfo& p = SetAside({.Quantity = 1});
    SetAside({.Quantity = 1});
    const ChangeSet change = session.Right(p.Seq);
    EXPECT_TRUE(change);
    EXPECT_TRUE(session.AnyPartSetAside());
}

}  // namespace
}  // namespace kesto::test
