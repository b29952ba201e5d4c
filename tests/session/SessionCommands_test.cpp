// The deciding commands of the main window on a job filled in code: Down, Up and
// the table of placed counts that Auto carries over.
#include <gtest/gtest.h>

#include <numeric>

#include "common/RecordedJournal.h"
#include "common/SessionFixture.h"

namespace kesto::test {
namespace {

// --- why a part is short --------------------------------------------------------------------

class WhyShortTextTest : public SessionTest {};

TEST_F(WhyShortTextTest, APartSetAsideWhollyOnThePalletsSideSaysSo) {
    PartsInfo& p = AddPart({.Quantity = 4, .PiecesSetAside = 4});
    EXPECT_EQ(session.WhyShortText(p.Seq), "Pieces set aside by the operator: 4");
}

TEST_F(WhyShortTextTest, APartOfAnyProcessIsFoundAndOneNotShortSaysNothing) {
    PartsInfo& p = AddPart({.KouteiNo = 2, .Quantity = 4, .PiecesPlaced = 3, .PiecesSetAside = 1});
    EXPECT_EQ(session.WhyShortText(p.Seq), "Pieces set aside by the operator: 1");
    p.PiecesPlaced = 4;
    EXPECT_EQ(session.WhyShortText(p.Seq), "");
    EXPECT_EQ(session.WhyShortText(999), "");
}

class DownTest : public SessionTest {};

TEST_F(DownTest, NoSelectedLineShowsMessageSeven) {
    PartsInfo& p = AddPart({.Quantity = 4, .Destination = 100});
    EXPECT_FALSE(session.Down(std::nullopt));
    EXPECT_EQ(op.KakuNumbers, (Kaku{{7, 0}}));
    EXPECT_EQ(p.Destination, 100);
    EXPECT_EQ(p.PiecesSetAside, 0);
}

TEST_F(DownTest, SetsThePartAsideWithAllItsPieces) {
    AddPart({.Quantity = 3, .Destination = 100});
    PartsInfo& p = AddPart({.Quantity = 4, .Destination = 100});
    EXPECT_TRUE(session.Down(p.Seq));
    EXPECT_EQ(p.Destination, 1000);
    EXPECT_EQ(p.PiecesSetAside, 4);
    EXPECT_EQ(p.PiecesPlaced, 0);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(DownTest, PartOfAnotherProcessIsNotFoundAndNothingChanges) {
    PartsInfo& p = AddPart({.KouteiNo = 2, .Quantity = 4, .Destination = 100});
    EXPECT_TRUE(session.Down(p.Seq));
    EXPECT_EQ(p.Destination, 100);
    EXPECT_EQ(p.PiecesSetAside, 0);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

// Small box 1 (code 100) takes parts from 100 to 200 wide and from 150 to 250 deep.
class UpTest : public SessionTest {
  protected:
    UpTest() {
        BoxInfo& box = job.AddBox(100, 3);
        box.PartSizes = {100, 200, 150, 250};
        shown.SetBox(100);
    }
    // A part of the size named set aside by Down: four pieces, destination 1000, every piece set
    // aside.
    PartsInfo& SetAside(PartFields fields) {
        fields.Quantity = 4;
        fields.Destination = 1000;
        fields.PiecesSetAside = 4;
        return AddPart(fields);
    }
};

TEST_F(UpTest, CurrentBoxOutsideTheSmallBoxesShowsMessageFour) {
    PartsInfo& p = SetAside({.SizeX = 150, .SizeY = 200});
    for (int32_t box : {99, 199, 1000}) {
        op.KakuNumbers.clear();
        shown.SetBox(box);
        EXPECT_FALSE(session.Up(p.Seq)) << box;
        EXPECT_EQ(op.KakuNumbers, (Kaku{{4, 0}})) << box;
    }
    EXPECT_EQ(p.Destination, 1000);
    EXPECT_EQ(p.PiecesSetAside, 4);
}

TEST_F(UpTest, TheBoxIsCheckedBeforeTheSelection) {
    shown.SetBox(99);
    EXPECT_FALSE(session.Up(std::nullopt));
    EXPECT_EQ(op.KakuNumbers, (Kaku{{4, 0}}));
}

TEST_F(UpTest, NoSelectedLineShowsMessageSeven) {
    EXPECT_FALSE(session.Up(std::nullopt));
    EXPECT_EQ(op.KakuNumbers, (Kaku{{7, 0}}));
}

TEST_F(UpTest, PartThatFitsGoesIntoTheSmallBox) {
    PartsInfo& p = SetAside({.SizeX = 150, .SizeY = 200});
    EXPECT_TRUE(session.Up(p.Seq));
    EXPECT_EQ(p.Destination, 100);
    EXPECT_EQ(p.PiecesPlaced, 0);
    EXPECT_EQ(p.PiecesSetAside, 0);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(UpTest, SizeBoundsAreInclusive) {
    PartsInfo& largest = SetAside({.SizeX = 200, .SizeY = 250});
    PartsInfo& smallest = SetAside({.SizeX = 100, .SizeY = 150});
    EXPECT_TRUE(session.Up(largest.Seq));
    EXPECT_TRUE(session.Up(smallest.Seq));
    EXPECT_EQ(largest.Destination, 100);
    EXPECT_EQ(smallest.Destination, 100);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(UpTest, PartOutsideTheSizeRangeShowsMessagesFiveAndSix) {
    PartsInfo& wide = SetAside({.SizeX = 200.5, .SizeY = 200});
    PartsInfo& narrow = SetAside({.SizeX = 99.5, .SizeY = 200});
    PartsInfo& deep = SetAside({.SizeX = 150, .SizeY = 250.5});
    PartsInfo& shallow = SetAside({.SizeX = 150, .SizeY = 149.5});
    for (PartsInfo* p : {&wide, &narrow, &deep, &shallow}) {
        op.KakuNumbers.clear();
        EXPECT_FALSE(session.Up(p->Seq)) << p->Seq;
        EXPECT_EQ(op.KakuNumbers, (Kaku{{5, 6}})) << p->Seq;
        EXPECT_EQ(p->Destination, 1000);
        EXPECT_EQ(p->PiecesSetAside, 4);
    }
}

TEST_F(UpTest, BoxWithoutARecordChecksNoSize) {
    shown.SetBox(101);
    PartsInfo& p = SetAside({.SizeX = 900, .SizeY = 900});
    EXPECT_TRUE(session.Up(p.Seq));
    EXPECT_EQ(p.Destination, 101);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(UpTest, PartWithPiecesOnThePalletsShowsElevenAndTwelveAndStays) {
    PartsInfo& p = SetAside({.SizeX = 150, .SizeY = 200});
    p.Destination = 0;
    p.PiecesPlaced = 1;
    p.PiecesSetAside = 0;
    EXPECT_TRUE(session.Up(p.Seq));
    EXPECT_EQ(op.KakuNumbers, (Kaku{{11, 12}}));
    EXPECT_EQ(p.Destination, 0);
    EXPECT_EQ(p.PiecesPlaced, 1);
    EXPECT_EQ(p.PiecesSetAside, 0);
}

TEST_F(UpTest, PartOfAnotherProcessIsNotFoundAndNothingChanges) {
    PartsInfo& p = SetAside({.SizeX = 150, .SizeY = 200});
    p.KouteiNo = 2;
    EXPECT_TRUE(session.Up(p.Seq));
    EXPECT_EQ(p.Destination, 1000);
    EXPECT_EQ(p.PiecesSetAside, 4);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

// --- the journal --------------------------------------------------------------------------

class JournalTest : public SessionTest {
  protected:
    JournalTest() { session.JournalIn(&journal); }
    RecordedJournal journal;
};

TEST_F(JournalTest, TheViewCommandsAreWrittenDownWithWhatTheyChose) {
    session.ChooseKoutei(2);
    session.ChoosePallet(3);
    session.ChooseBox(101);
    session.ChooseView(PalletView::Danmen);
    session.ChooseView(PalletView::FourPallet);
    session.SetGrid(true);
    session.Set3D(false);
    session.SetHit(HitBy::Single);
    session.SetHit(HitBy::Block);
    EXPECT_EQ(journal.Lines, (Lines{"process 2", "pallet 3", "box 101", "view danmen",
                                    "view 4pallet", "grid 1", "3d 0", "hit single", "hit block"}));
}

TEST_F(JournalTest, TheBlockCellSwitchIsWrittenDownWithItsValueAfterIt) {
    shown.SetStoredBlockDraw(2);
    session.SwitchBlockDraw();
    session.SwitchBlockDraw();
    EXPECT_EQ(journal.Lines, (Lines{"blockdraw 0", "blockdraw 1"}));
}

TEST_F(JournalTest, DownAndUpAreWrittenDownOnlyWhenTheyMoveThePart) {
    BoxInfo& box = job.AddBox(100, 3);
    box.PartSizes = {100, 400, 100, 400};
    PartsInfo& p = AddPart({.Quantity = 4, .Destination = 100});
    PartsInfo& other = AddPart({.KouteiNo = 2, .Quantity = 4, .Destination = 100});
    shown.SetBox(5);             // a pallet box
    session.Down(std::nullopt);  // message 7
    session.Down(other.Seq);     // not of the process in view
    session.Down(p.Seq);
    session.Up(p.Seq);  // the box in view is no small box: message 4
    session.ChooseBox(100);
    session.Up(p.Seq);
    EXPECT_EQ(journal.Lines, (Lines{"down 1", "box 100", "up 1"}));
}

TEST_F(JournalTest, NoJournalGivenWritesNothingAndChangesNothing) {
    session.JournalIn(nullptr);
    PartsInfo& p = AddPart({.Quantity = 4, .Destination = 100});
    session.Down(p.Seq);
    EXPECT_EQ(p.PiecesSetAside, 4);
    EXPECT_TRUE(journal.Lines.empty());
}

class KeepTableTest : public SessionTest {};

TEST_F(KeepTableTest, HoldsThePlacedCountOfEachPartBySeq) {
    AddPart({.Quantity = 5, .PiecesPlaced = 3});
    AddPart({.Quantity = 5});
    PartsInfo& last = AddPart({.Quantity = 9, .PiecesPlaced = 7});
    last.Seq = 999;
    const std::vector<int> keep = session.KeepTable();
    ASSERT_EQ(keep.size(), 1000u);
    EXPECT_EQ(keep[1], 3);
    EXPECT_EQ(keep[2], 0);
    EXPECT_EQ(keep[999], 7);
    EXPECT_EQ(std::accumulate(keep.begin(), keep.end(), 0), 10);
}

TEST_F(KeepTableTest, PartsNumberedBeyondTheTableAreLeftOut) {
    PartsInfo& beyond = AddPart({.Quantity = 5, .PiecesPlaced = 4});
    beyond.Seq = 1000;
    PartsInfo& negative = AddPart({.Quantity = 5, .PiecesPlaced = 4});
    negative.Seq = -1;
    const std::vector<int> keep = session.KeepTable();
    ASSERT_EQ(keep.size(), 1000u);
    EXPECT_EQ(std::accumulate(keep.begin(), keep.end(), 0), 0);
}

}  // namespace
}  // namespace kesto::test
