// A journal's commands carried out again on the grid job of EditFixture.h (see DrawingEdit_test
// for the stacks' pixels): a at place 0, b at place 1, a2 at place 2 of the stack list.
#include "session/JournalReplay.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"

namespace kesto::test {
namespace {

constexpr const char* kJob = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";

class JournalReplayTest : public TwoPartsTest {
  protected:
    JournalReplayTest() { edit.RecordStepsIn(&session); }

    // The journal of these command lines, each at the same time.
    static JournalFile Journal(const std::vector<std::string>& commands) {
        return ReadJournal(JournalText(kJob, commands));
    }
    ReplayOutcome Replay(const std::vector<std::string>& commands) {
        JournalReplay replay(session, drawing, edit, relay, answers);
        return replay.Run(Journal(commands));
    }

    RecordingOperator answers;
    OperatorRelay relay{testServices.Op};
};

TEST_F(JournalReplayTest, ADropMovesTheStackAsTheMouseDid) {
    const ReplayOutcome outcome = Replay({"drop 1080 900 780 808 880 858 0"});
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 1);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(a.BlockIndex, 0);
    EXPECT_EQ(a.Edits, kEditMoved);
}

// The window drags a stack picked before Direct was switched with an empty pick history: nothing
// moves, and the drop is carried out all the same.
TEST_F(JournalReplayTest, ADropWithoutPicksMovesNothingAndIsCarriedOut) {
    const ReplayOutcome outcome = Replay({"drop 1080 900 780 808 880 858"});
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 1);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_EQ(a.Edits, 0);
}

TEST_F(JournalReplayTest, ADropIsMadeOnTheDrawingLaidOutAtTheSizeOfItsLine) {
    drawing.SetArea({0, 0, 500, 300});
    Replay({"drop 1080 900 780 808 880 858 0"});
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_EQ(drawing.Area(), (IntRect{0, 0, 1080, 900}));
}

// The cells of pallet 2's blocks as a drawing of the two pallets at width x height holds them.
std::vector<IntRect> TwoPalletCells(const CKestoApp& app, const ViewState& shown,
                                    const MessageTable& messages, int32_t width, int32_t height) {
    ViewState two = shown;
    two.SetMode(PalletView::TwoPallet);
    PalletDrawing drawing{app, two, messages};
    drawing.SetArea({0, 0, width, height});
    DisplayList canvas;
    drawing.Refresh(canvas);
    std::vector<IntRect> cells;
    for (const int32_t e : app.Blocks.OfPallet(1, 2))
        cells.push_back(drawing.BlockRects.at(static_cast<size_t>(e)));
    return cells;
}

std::vector<IntRect> CellsOfPallet2(const CKestoApp& app, const PalletDrawing& drawing) {
    std::vector<IntRect> cells;
    for (const int32_t e : app.Blocks.OfPallet(1, 2)) {
        const auto at = static_cast<size_t>(e);
        cells.push_back(at < drawing.BlockRects.size() ? drawing.BlockRects[at] : IntRect{});
    }
    return cells;
}

// A free drop scales by cells of blocks the view no longer shows: they keep where the last
// picture that showed them drew them, so the replay lays the drawing out after every command,
// as the window paints it.
TEST_F(JournalReplayTest, TheCellsOfAViewLeftBehindAreThoseItsLastPictureDrew) {
    const std::vector<IntRect> expected =
        TwoPalletCells(app, shown, testServices.Messages, 800, 600);
    ASSERT_NE(CellsOfPallet2(app, drawing), expected);
    const ReplayOutcome outcome = Replay({"area 800 600", "view 2pallet", "view flat"});
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 3);
    EXPECT_EQ(shown.Mode(), PalletView::Flat);
    EXPECT_EQ(CellsOfPallet2(app, drawing), expected);
    EXPECT_EQ(drawing.Area(), (IntRect{0, 0, 800, 600}));
}

// A journal without an area line is laid out from its start at the size of its first drop.
TEST_F(JournalReplayTest, BeforeAnyAreaLineTheDrawingHasTheSizeOfTheFirstDrop) {
    drawing.SetArea({0, 0, 500, 300});
    const std::vector<IntRect> expected =
        TwoPalletCells(app, shown, testServices.Messages, 1080, 900);
    EXPECT_TRUE(Replay({"view 2pallet", "view flat", "drop 1080 900 780 808 880 858 0"}).Ok());
    EXPECT_EQ(CellsOfPallet2(app, drawing), expected);
    EXPECT_DOUBLE_EQ(a.X, 790);
}

TEST_F(JournalReplayTest, AnAreaOfNoSizeStopsTheReplay) {
    const ReplayOutcome outcome = Replay({"grid 0", "area 0 600", "grid 1"});
    EXPECT_EQ(outcome.BadLine, 4);
    EXPECT_EQ(outcome.Why, "line 4: no drawing area of that size");
    EXPECT_EQ(outcome.Commands, 1);
}

TEST_F(JournalReplayTest, ABandDropMovesEveryEntryByTheShift) {
    const ReplayOutcome outcome =
        Replay({"direct 1", "banddrop 1080 900 0 -100 0 930 808 1030 858 1 620 808 720 858 /"});
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(app.Settings.IsDirect.Stored(), 1);
    EXPECT_DOUBLE_EQ(a.Y, 110);
    EXPECT_DOUBLE_EQ(b.Y, 110);
}

TEST_F(JournalReplayTest, LeftSetsThePickedStacksAside) {
    EXPECT_TRUE(Replay({"left 0"}).Ok());
    EXPECT_EQ(partA.PiecesSetAside, 3);
    EXPECT_EQ(job.StacksOf(partA), std::vector<HaichiInfo*>({&a2}));
}

// The window's pick outlives a Direct switch that empties the history: left then sets nothing
// aside, and still takes its step.
TEST_F(JournalReplayTest, LeftWithoutStacksSetsNothingAsideAndIsAStep) {
    EXPECT_TRUE(Replay({"left"}).Ok());
    EXPECT_EQ(partA.PiecesSetAside, 0);
    EXPECT_EQ(job.StacksOf(partA).size(), 2u);
    EXPECT_EQ(session.History().UndoSteps(), 1u);
}

TEST_F(JournalReplayTest, TheViewCommandsChooseWhatTheyName) {
    EXPECT_TRUE(Replay({"view 4pallet", "grid 0", "3d 1", "hit block", "pallet 2"}).Ok());
    EXPECT_EQ(shown.Mode(), PalletView::FourPallet);
    EXPECT_FALSE(shown.Grid());
    EXPECT_TRUE(shown.Is3D());
    EXPECT_EQ(shown.Hit(), HitBy::Block);
    EXPECT_EQ(shown.Pallet(), 2);
}

TEST_F(JournalReplayTest, ALineNamingAStackBeyondTheListStopsThereAfterTheLinesBefore) {
    const ReplayOutcome outcome = Replay({"view danmen", "left 9", "view flat"});
    EXPECT_FALSE(outcome.Ok());
    EXPECT_EQ(outcome.BadLine, 4);  // the two header lines, then the commands
    EXPECT_EQ(outcome.Why, "line 4: no stack at place 9");
    EXPECT_EQ(outcome.Commands, 1);
    EXPECT_EQ(shown.Mode(), PalletView::Danmen);
    EXPECT_EQ(partA.PiecesSetAside, 0);
}

TEST_F(JournalReplayTest, APartNotInTheListTheCommandTakesFromStopsTheReplay) {
    const ReplayOutcome outcome = Replay({"right " + std::to_string(partA.Seq)});
    EXPECT_EQ(outcome.BadLine, 3);
    EXPECT_EQ(outcome.Why, "line 3: part 1 is not set aside");
    EXPECT_EQ(Replay({"process 7"}).Why, "line 3: no process 7");
    EXPECT_EQ(Replay({"box 99"}).Why, "line 3: no small box 99");
}

TEST_F(JournalReplayTest, AnUnknownCommandIsPassedOverAndTold) {
    const ReplayOutcome outcome = Replay({"zoom 2", "view danmen"});
    EXPECT_TRUE(outcome.Ok());
    EXPECT_EQ(outcome.Skipped, std::vector<std::string>({"line 3: unknown command zoom"}));
    EXPECT_EQ(shown.Mode(), PalletView::Danmen);
}

// The command of a write cut short was never shown to the operator: passed over, and told.
TEST_F(JournalReplayTest, ALastLineCutShortIsPassedOverAndTold) {
    JournalReplay replay(session, drawing, edit, relay, answers);
    const ReplayOutcome outcome = replay.Run(
        ReadJournal(JournalText(kJob, {"view danmen"}) + "2026-11-26T10:00:01.000 left 0"));
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 1);
    EXPECT_EQ(outcome.Skipped,
              std::vector<std::string>(
                  {"line 4: the last line has no line end: its write was cut short"}));
    EXPECT_EQ(partA.PiecesSetAside, 0);
}

TEST_F(JournalReplayTest, TheEndLineEndsTheReplayAndIsLeftToTheCaller) {
    const ReplayOutcome outcome = Replay({"view danmen", "cancel", "view flat"});
    EXPECT_EQ(outcome.End, OkCancel::Cancel);
    EXPECT_EQ(shown.Mode(), PalletView::Danmen);
    EXPECT_FALSE(session.Ended());
}

TEST_F(JournalReplayTest, WhatIsReplayedIsNotWrittenAgainAndTheJournalGoesOnAfterIt) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    Replay({"view danmen", "left 0"});
    EXPECT_TRUE(journal.Lines.empty());
    session.ChooseView(PalletView::Flat);
    EXPECT_EQ(journal.Lines, std::vector<std::string>({"view flat"}));
}

// The step puts back copies of the records: the part is found again by its Seq.
TEST_F(JournalReplayTest, UndoTakesBackAReplayedCorrection) {
    EXPECT_TRUE(Replay({"left 0", "undo"}).Ok());
    EXPECT_EQ(session.FindPart(1, true)->PiecesSetAside, 0);
    EXPECT_EQ(app.HaichiList.size(), 3u);
    EXPECT_TRUE(Replay({"redo"}).Ok());
    EXPECT_EQ(session.FindPart(1, true)->PiecesSetAside, 3);
}

}  // namespace
}  // namespace kesto::test
