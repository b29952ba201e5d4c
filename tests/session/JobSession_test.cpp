// A job session from the first placement to the exit code, on a job filled in code: LoadAndPlace
// with its check, restore and placement; OK, Cancel and Close with the offset check and the
// files; the exit codes.
#include "session/JobSession.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "common/RecordedJournal.h"
#include "common/SessionFixture.h"
#include "common/TestFiles.h"
#include "common/TestInstallation.h"
#include "common/TestServices.h"
#include "view/PalletDrawing.h"

namespace kesto::test {
namespace {

using UserValues = std::map<std::string, std::string>;

// --- LoadAndPlace --------------------------------------------------------------------

class LoadAndPlaceTest : public SessionTest {};

TEST_F(LoadAndPlaceTest, ResetsTheSelectionStateAndReadsThePalletChoice) {
    shown.SetHit(HitBy::Single);
    shown.SetGrid(false);
    shown.SetKoutei(3);
    shown.SetPallet(2);
    app.Settings.PalletCount = 4;
    app.BoxFlags[2] = 1;
    app.BoxFlags[3] = 1;
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Ignore, {}), 1);
    EXPECT_EQ(shown.Hit(), HitBy::Block);
    EXPECT_EQ(shown.Grid(), 1);
    EXPECT_EQ(shown.Koutei(), 1);
    EXPECT_EQ(shown.Box(), 101);
    EXPECT_EQ(app.Settings.PalletCount, 1);
    EXPECT_EQ(app.Settings.PalletPrefix, "P");
    EXPECT_EQ(shown.Pallet(), 1);
}

TEST_F(LoadAndPlaceTest, APlacementMadeAnewForgetsAnEarlierSheetCountChange) {
    PartsInfo& a = AddPart({.Quantity = 2});
    a.OperatorPerStack = 1;
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Ignore, {}), 1);
    EXPECT_EQ(a.OperatorPerStack, 0);
}

TEST_F(LoadAndPlaceTest, CurrentBoxStaysWhenNoneOfTheFirstThreeBoxesIsDefined) {
    shown.SetBox(150);
    app.BoxFlags[4] = 1;
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Ignore, {}), 1);
    EXPECT_EQ(shown.Box(), 150);
}

TEST_F(LoadAndPlaceTest, KeptCountsBecomeThePartialQuantities) {
    PartsInfo& a = AddPart({.Quantity = 9});
    PartsInfo& boxed = AddPart({.Quantity = 9, .Destination = 100});
    PartsInfo& beyond = AddPart({.Quantity = 9});
    beyond.PartialQuantity = 1;
    job.AddBox(100);
    app.BoxFlags[1] = 1;
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Kept, SavedPlacement::Ignore, {0, 2, 3}), 1);
    EXPECT_FALSE(session.Ended());
    EXPECT_EQ(a.PartialQuantity, 2);
    EXPECT_EQ(a.PiecesPlaced, 2);
    EXPECT_EQ(boxed.PartialQuantity, 3);
    EXPECT_EQ(boxed.Destination, 0);
    EXPECT_EQ(boxed.PiecesPlaced, 3);
    EXPECT_EQ(beyond.PartialQuantity, 1);
    EXPECT_EQ(beyond.PiecesPlaced, 1);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(LoadAndPlaceTest, FullRunRestoresTheSaveFileBeforePlacing) {
    PartsInfo& a = AddPart({.Quantity = 2, .SaveKey = 1});
    PartsInfo& b = AddPart({.Quantity = 1});
    WriteFile(Out("save.csv"),
              "A1,1,N,1,2,690.0000,10.0000,-1,T,300.0000,200.0000,1.0000,0,0,A1,0,4\n");
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {}), 1);
    ASSERT_EQ(job.StacksOf(a).size(), 1u);
    EXPECT_EQ(job.StacksOf(a)[0]->BlockIndex, 0);
    EXPECT_EQ(a.PiecesPlaced, 2);
    EXPECT_EQ(job.StacksOf(b).at(0)->BlockIndex, 1);
}

TEST_F(LoadAndPlaceTest, SaveFileOfAnUnplacedPartFailsTheRun) {
    AddPart({.Quantity = 2, .SaveKey = 1});
    WriteFile(Out("save.csv"),
              "A1,1,N,0,2,0.0000,0.0000,-1,T,300.0000,200.0000,1.0000,0,-1,A1,-1,-1\n");
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {}), 0);
    EXPECT_TRUE(app.HaichiList.Empty());
}

TEST_F(LoadAndPlaceTest, WithoutFullRunTheSaveFileIsNotRead) {
    PartsInfo& a = AddPart({.Quantity = 2, .SaveKey = 1});
    WriteFile(Out("save.csv"),
              "A1,1,N,0,2,0.0000,0.0000,-1,T,300.0000,200.0000,1.0000,0,-1,A1,-1,-1\n");
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Ignore, {}), 1);
    EXPECT_EQ(a.PiecesPlaced, 2);
}

class CountingView : public SessionView {
  public:
    void ShowResetJob() override { ++Resets; }
    void ShowPlacedJob() override { ++Placed; }
    int Resets = 0;
    int Placed = 0;
};

TEST_F(LoadAndPlaceTest, ViewIsShownThePlacedJobOnlyAfterASuccess) {
    CountingView view;
    session.SetView(&view);
    AddPart({.Quantity = 2, .SaveKey = 1});
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Ignore, {}), 1);
    EXPECT_EQ(view.Resets, 1);
    EXPECT_EQ(view.Placed, 1);
    WriteFile(Out("save.csv"),
              "A1,1,N,0,2,0.0000,0.0000,-1,T,300.0000,200.0000,1.0000,0,-1,A1,-1,-1\n");
    EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {}), 0);
    EXPECT_EQ(view.Resets, 2);
    EXPECT_EQ(view.Placed, 1);
}

// --- a failed check: the Cancel handling, then still the placement -------------------

class FailedCheckTest : public SessionTest {};

// Part 2 names box 5, which the job does not define: message 2. The Cancel handling writes
// the files as the job stands before anything is placed (the parts have no SaveKey, so the
// restore that follows ignores what was just written), and the placement still runs.
TEST_F(FailedCheckTest, CancelHandlingWritesTheFilesAndThePlacementStillRuns) {
    PartsInfo& a = AddPart({.Quantity = 2});
    PartsInfo& b = AddPart({.Quantity = 1, .Destination = 5});
    EXPECT_TRUE(session.Init());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
    EXPECT_TRUE(session.Ended());
    EXPECT_FALSE(session.Aborted());
    EXPECT_EQ(ReadLines(Out("res.csv_tmp")), (Lines{"0001,1,N1,0,2", "0002,1,N2,0,1"}));
    EXPECT_EQ(ReadLines(Out("res.csv")),
              (Lines{"A1,1,N1,0,2,PLT001-G1,1,A1", "A2,1,N2,0,1,PLT001-G1,1,A2"}));
    const Lines saved{
        "A1,1,N1,0,2,0.0000,0.0000,10,T1,  300.0000,  200.0000,    1.0000,0,-1,A1,-1,-1",
        "A2,1,N2,0,1,0.0000,0.0000,-1,T2,  300.0000,  200.0000,    1.0000,0,-1,A2,-1,-1"};
    EXPECT_EQ(ReadLines(Out("save.csv")), saved);
    EXPECT_EQ(a.PiecesPlaced, 2);
    EXPECT_EQ(b.PiecesPlaced, 1);

    // The job has ended: OK changes nothing any more, and the exit code is that of Cancel.
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(ReadLines(Out("save.csv")), saved);
    EXPECT_EQ(session.Exit(), 100);
}

// With save keys (as every part read from a job file has), the restore that follows reads the
// save file the Cancel handling has just written: part 1's line has no block (-1) and the part
// is bound for a pallet, so the restore fails and nothing is placed.
TEST_F(FailedCheckTest, PartsWithSaveKeysFailTheRestoreOfTheFileJustWritten) {
    PartsInfo& a = AddPart({.Quantity = 2, .SaveKey = 1});
    AddPart({.Quantity = 1, .Destination = 5, .SaveKey = 2});
    EXPECT_FALSE(session.Init());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
    EXPECT_TRUE(session.Ended());
    EXPECT_EQ(ReadLines(Out("save.csv")).size(), 2u);
    EXPECT_TRUE(app.HaichiList.Empty());
    EXPECT_EQ(a.PiecesPlaced, 0);
    EXPECT_EQ(session.Exit(), 100);
}

TEST_F(FailedCheckTest, OffsetStopDuringTheCancelHandlingAbortsWithoutWritingOrPlacing) {
    PartsInfo& a = AddPart({.Quantity = 2, .SensitiveSides = "0001"});
    AddPart({.Quantity = 1, .Destination = 5});
    // A stack whose right edge 990 lies beyond the right limit 1000 - 20.
    AddStack(app, a, {.Block = 0, .Pieces = 2, .X = 990, .Y = 10, .Corner = kCornerMaxMin});
    app.Settings.OffsetSet = 1;
    pallet->LimitRight = 20;
    op.Answer = OkCancel::Cancel;
    EXPECT_FALSE(session.Init());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
    EXPECT_EQ(op.Warnings, (Lines{"Offset over"}));
    EXPECT_TRUE(session.Ended());
    EXPECT_TRUE(session.Aborted());
    EXPECT_TRUE(NothingWritten());
    EXPECT_EQ(job.StacksOf(a).size(), 1u);
    EXPECT_EQ(session.Exit(), 999);
    EXPECT_TRUE(testServices.Host.UserValues.empty());
}

// --- outlines read beside the placement -------------------------------------------------

// The job on files names a readable, a missing and an unopenable outline. Read beside the
// placement, they are there once Init returns, with the flags and the code a reading before
// the placement leaves; the placement is the same.
TEST(OutlinesBeside, InitEndsWithTheOutlinesTheirFlagsAndCodeAsReadFirst) {
    struct Run {
        std::vector<int32_t> Flags;
        std::vector<size_t> Shapes;
        int32_t Code = 0;
        size_t Stacks = 0;
    };
    auto run = [](OutlineFiles outlines) {
        TestInstallation install;
        std::string job = install.Read("job/job.txt");
        const std::string shapes = install.Path("shape").string();
        job.replace(job.find("0000,,0,,X0,10\nA2"), 14, "0000," + shapes + "/a.txt,1,,X0,10");
        job.replace(job.find("0000,,0,,X0,10\nA3"), 14, "0000," + shapes + "/none.txt,1,,X0,10");
        job.replace(job.find("0000,,0,,X0,10\n#End"), 14, "0000," + shapes + "/c.sock,1,,X0,10");
        install.Write("job/job.txt", job);
        install.Write("shape/a.txt", "Line 0 0 0 0 0 0 20 10\nCircle 0 0 0 0 5 5 3\n");
        MakeUnopenable(shapes + "/c.sock");
        TestServices svc(install.Root().string());
        ViewState shown;
        JobSession session(svc.Get(), install.CommandLine(), shown);
        EXPECT_TRUE(session.StartUp(outlines));
        EXPECT_TRUE(session.Init());
        Run r;
        for (const PartsInfo& p : session.App().PartsList) {
            r.Flags.push_back(p.HasOutline);
            r.Shapes.push_back(p.Shapes.size());
        }
        r.Code = session.ErrorCode();
        r.Stacks = session.App().HaichiList.size();
        return r;
    };
    const Run first = run(OutlineFiles::Read);
    const Run beside = run(OutlineFiles::Beside);
    EXPECT_EQ(first.Code, 9026);
    EXPECT_EQ(std::count(first.Flags.begin(), first.Flags.end(), 1), 1);
    EXPECT_EQ(std::count(first.Shapes.begin(), first.Shapes.end(), 2u), 1);
    EXPECT_GT(first.Stacks, 0u);
    EXPECT_EQ(beside.Flags, first.Flags);
    EXPECT_EQ(beside.Shapes, first.Shapes);
    EXPECT_EQ(beside.Code, first.Code);
    EXPECT_EQ(beside.Stacks, first.Stacks);
}

// --- Init ---------------------------------------------------------------------------------

class InitTest : public SessionTest {};

TEST_F(InitTest, JobWithoutProcessesEndsThroughCancel) {
    app.KouteiList.Clear();
    app.KouteiList.Count = 0;
    EXPECT_FALSE(session.Init());
    EXPECT_TRUE(session.Ended());
    EXPECT_TRUE(NothingWritten());
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_EQ(session.Exit(), 100);
}

// The save file restores part 1's stack, then fails on the line of part 2, which is bound for
// a pallet but saved without a block (-1). The initialisation stops there; OK still writes
// the job as far as it was restored.
TEST_F(InitTest, FailedRestoreStopsTheInitialisationButOkWritesWhatWasRestored) {
    PartsInfo& a = AddPart({.Quantity = 2, .SaveKey = 1});
    PartsInfo& b = AddPart({.Quantity = 1, .SaveKey = 2});
    WriteFile(Out("save.csv"),
              "A1,1,N1,1,2,690.0000,10.0000,10,T1,300.0000,200.0000,1.0000,0,1,A1,0,4\n"
              "A2,1,N2,0,1,0.0000,0.0000,10,T2,300.0000,200.0000,1.0000,0,-1,A2,-1,-1\n");
    EXPECT_FALSE(session.Init());
    EXPECT_FALSE(session.Ended());
    EXPECT_TRUE(op.KakuNumbers.empty());
    ASSERT_EQ(job.StacksOf(a).size(), 1u);
    const HaichiInfo& stack = *job.StacksOf(a)[0];
    EXPECT_EQ(stack.BlockIndex, 0);
    EXPECT_EQ(stack.Pieces, 2);
    EXPECT_DOUBLE_EQ(stack.X, 990);
    EXPECT_DOUBLE_EQ(stack.Y, 10);
    EXPECT_EQ(stack.Corner, 4);
    EXPECT_EQ(a.PiecesPlaced, 2);
    EXPECT_TRUE(job.StacksOf(b).empty());

    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_EQ(ReadLines(Out("res.csv_tmp")), (Lines{"A1,1,N1,1,2", "0002,1,N2,0,1"}));
    EXPECT_EQ(ReadLines(Out("res.csv")),
              (Lines{"A1,1,N1,1001,2,PLT001-G1,1,A1", "A2,1,N2,0,1,PLT001-G1,1,A2"}));
    EXPECT_EQ(ReadLines(Out("save.csv")),
              (Lines{"A1,1,N1,1,2,  690.0000,   10.0000,10,T1,  300.0000,  200.0000,    "
                     "1.0000,0,1,A1,0,4",
                     "A2,1,N2,0,1,0.0000,0.0000,10,T2,  300.0000,  200.0000,    "
                     "1.0000,0,-1,A2,-1,-1"}));
    EXPECT_EQ(session.Exit(), 0);
}

// --- finishing: OK, Cancel, Close and the exit code --------------------------------------

// Part 1 (two pieces) placed by the session into the first block: one stack at (990, 10).
class FinishTest : public SessionTest {
  protected:
    FinishTest() : part(AddPart({.Quantity = 2})) {
        EXPECT_EQ(session.LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {}), 1);
    }

    // Part 1's right side is checked against a right limit of 1000 - 20: its stack violates it.
    void StackBeyondTheOffset() {
        part.SensitiveSides = "0001";
        app.Settings.OffsetSet = 1;
        pallet->LimitRight = 20;
    }
    void ExpectPlacedFiles() {
        EXPECT_EQ(ReadLines(Out("res.csv_tmp")), (Lines{"A1,1,N1,1,2"}));
        EXPECT_EQ(ReadLines(Out("res.csv")), (Lines{"A1,1,N1,1001,2,PLT001-G1,1,A1"}));
        EXPECT_EQ(ReadLines(Out("save.csv")),
                  (Lines{"A1,1,N1,1,2,  690.0000,   10.0000,10,T1,  300.0000,  200.0000,    "
                         "1.0000,0,1,A1,0,4"}));
    }

    PartsInfo& part;
};

TEST_F(FinishTest, OkWritesTheFilesAndExitsWithZero) {
    ASSERT_EQ(job.StacksOf(part).size(), 1u);
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_TRUE(session.Ended());
    EXPECT_FALSE(session.Aborted());
    EXPECT_EQ(app.Run.DialogEnd, OkCancel::Ok);
    ExpectPlacedFiles();
    EXPECT_TRUE(op.KakuNumbers.empty());
    EXPECT_TRUE(op.Warnings.empty());
    EXPECT_EQ(session.Exit(), 0);
    // The exit saves the per-user values, frees the job and the message table.
    EXPECT_EQ(testServices.Host.UserValues, (UserValues{{"IsBlockDraw", "0"}, {"IsDirect", "-1"}}));
    EXPECT_TRUE(app.PartsList.Empty());
    EXPECT_FALSE(testServices.Messages.Loaded());
}

TEST_F(FinishTest, TheEndIsWrittenDownOnceTheFilesAreWritten) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    ASSERT_TRUE(session.Down(part.Seq));
    // Part 1 is short now: refusing message 208 keeps the job open, and nothing ended.
    op.Answer = OkCancel::Cancel;
    EXPECT_FALSE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(journal.Lines, (Lines{"down 1"}));
    op.Answer = OkCancel::Ok;
    EXPECT_TRUE(session.Close());
    EXPECT_EQ(journal.Lines, (Lines{"down 1", "cancel"}));
    // An ended job is not ended again.
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(journal.Lines, (Lines{"down 1", "cancel"}));
}

class JournalSettingsTest : public SessionTest {};

TEST_F(JournalSettingsTest, DirectAndTheBlockCellsAreWrittenDownAsTheLinesThatSetThem) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    app.Settings.IsDirect = 1;
    shown.SetStoredBlockDraw(0);
    session.JournalSettings();
    EXPECT_EQ(journal.Lines, (Lines{"direct 1", "blockdraw 0"}));
}

// A number the per-user store may hold but no line can say is left to the replay's own.
TEST_F(JournalSettingsTest, StoredNumbersOtherThanZeroAndOneHaveNoLine) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    app.Settings.IsDirect = 2;
    shown.SetStoredBlockDraw(5);
    session.JournalSettings();
    EXPECT_TRUE(journal.Lines.empty());
    app.Settings.IsDirect = 0;
    session.JournalSettings();
    EXPECT_EQ(journal.Lines, (Lines{"direct 0"}));
}

// The drawing area's size is written when it is new to the journal: a resize's many layouts at
// one size are one line, and a journal taken up again (after a replay) names it once more.
TEST_F(JournalSettingsTest, TheDrawingAreaIsWrittenWhenItsSizeChanges) {
    RecordedJournal journal;
    session.JournalArea(900, 500);  // no journal yet
    session.JournalIn(&journal);
    session.JournalArea(1274, 675);
    session.JournalArea(1274, 675);
    session.JournalArea(1000, 675);
    session.JournalIn(nullptr);
    session.JournalIn(&journal);
    session.JournalArea(1000, 675);
    EXPECT_EQ(journal.Lines, (Lines{"area 1274 675", "area 1000 675", "area 1000 675"}));
}

TEST_F(FinishTest, OkIsWrittenDownAsOk) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(journal.Lines, (Lines{"ok"}));
}

TEST_F(FinishTest, AnOffsetStopEndsTheJobWithoutAnEndInTheJournal) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    StackBeyondTheOffset();
    op.Answer = OkCancel::Cancel;  // the offset warning's Cancel stops the job
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_TRUE(session.Aborted());
    EXPECT_TRUE(journal.Lines.empty());
}

TEST_F(FinishTest, UndoAndRedoAreWrittenDownWhenThereIsAStepToTake) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    PalletDrawing drawing{app, shown, testServices.Messages};
    session.Redo(drawing);  // nothing to redo
    ASSERT_TRUE(session.Down(part.Seq));
    session.Undo(drawing);
    session.Undo(drawing);  // nothing more to undo
    session.Redo(drawing);
    EXPECT_EQ(journal.Lines, (Lines{"down 1", "undo", "redo"}));
}

TEST_F(FinishTest, CancelWritesTheSameFilesAndExitsWithHundred) {
    EXPECT_TRUE(session.Finish(OkCancel::Cancel));
    EXPECT_TRUE(session.Ended());
    EXPECT_EQ(app.Run.DialogEnd, OkCancel::Cancel);
    ExpectPlacedFiles();
    EXPECT_EQ(session.Exit(), 100);
}

TEST_F(FinishTest, CloseEndsThroughCancel) {
    EXPECT_TRUE(session.Close());
    EXPECT_TRUE(session.Ended());
    ExpectPlacedFiles();
    EXPECT_EQ(session.Exit(), 100);
}

TEST_F(FinishTest, EndedJobIsNotFinishedAgain) {
    EXPECT_TRUE(session.Finish(OkCancel::Cancel));
    std::filesystem::remove(Out("save.csv"));
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_TRUE(session.Close());
    EXPECT_FALSE(Exists("save.csv"));
    EXPECT_EQ(session.Exit(), 100);
}

// Part 1 set aside after the placement is short: the result writer asks message 208.
TEST_F(FinishTest, RefusedResultKeepsTheJobOpen) {
    ASSERT_TRUE(session.Down(part.Seq));
    op.Answer = OkCancel::Cancel;
    EXPECT_FALSE(session.Finish(OkCancel::Ok));
    EXPECT_FALSE(session.Ended());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{208, 0}}));
    EXPECT_TRUE(Exists("res.csv_tmp"));
    EXPECT_FALSE(Exists("res.csv"));
    EXPECT_FALSE(Exists("save.csv"));

    op.Answer = OkCancel::Ok;
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_TRUE(session.Ended());
    EXPECT_FALSE(Exists("res.csv"));
    EXPECT_EQ(ReadLines(Out("save.csv")),
              (Lines{"A1,1,N1,0,2,0.0000,0.0000,-1,T1,  300.0000,  200.0000,    "
                     "1.0000,0,-1,A1,-1,-1"}));
    EXPECT_EQ(session.Exit(), 0);
}

// The writers' codes reach the session: a result that cannot be created leaves 9021, and the
// operator's refusal of message 208 later, which leaves no code, keeps it.
TEST_F(FinishTest, ResultThatCannotBeWrittenLeavesItsCodeUntilAnotherIsLeft) {
    EXPECT_EQ(session.ErrorCode(), error::kNone);
    std::filesystem::remove_all(root.Path() / "out");
    WriteFile(root / "out", "a file where the folder should be");
    EXPECT_FALSE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(session.ErrorCode(), 9021);

    std::filesystem::remove(root.Path() / "out");
    std::filesystem::create_directories(root.Path() / "out");
    ASSERT_TRUE(session.Down(part.Seq));
    op.Answer = OkCancel::Cancel;
    EXPECT_FALSE(session.Finish(OkCancel::Ok));
    EXPECT_FALSE(session.Ended());
    EXPECT_EQ(session.ErrorCode(), 9021);
}

TEST_F(FinishTest, OffsetWarningAnsweredOkGoesOnWriting) {
    StackBeyondTheOffset();
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(op.Warnings, (Lines{"Offset over"}));
    EXPECT_FALSE(session.Aborted());
    ExpectPlacedFiles();
    EXPECT_EQ(session.Exit(), 0);
}

TEST_F(FinishTest, OffsetStopAtOkEndsWith999AndWritesNothing) {
    StackBeyondTheOffset();
    op.Answer = OkCancel::Cancel;
    EXPECT_TRUE(session.Finish(OkCancel::Ok));
    EXPECT_EQ(op.Warnings, (Lines{"Offset over"}));
    EXPECT_TRUE(session.Ended());
    EXPECT_TRUE(session.Aborted());
    EXPECT_TRUE(NothingWritten());
    EXPECT_EQ(session.Exit(), 999);
    EXPECT_TRUE(testServices.Host.UserValues.empty());
}

TEST_F(FinishTest, CloseChecksTheOffsetsAndCancelChecksThemAgain) {
    StackBeyondTheOffset();
    EXPECT_TRUE(session.Close());
    EXPECT_EQ(op.Warnings, (Lines{"Offset over", "Offset over"}));
    EXPECT_FALSE(session.Aborted());
    ExpectPlacedFiles();
    EXPECT_EQ(session.Exit(), 100);
}

TEST_F(FinishTest, OffsetStopAtCloseEndsWith999AndWritesNothing) {
    StackBeyondTheOffset();
    op.Answer = OkCancel::Cancel;
    EXPECT_TRUE(session.Close());
    EXPECT_EQ(op.Warnings, (Lines{"Offset over"}));
    EXPECT_TRUE(session.Aborted());
    EXPECT_TRUE(NothingWritten());
    EXPECT_EQ(session.Exit(), 999);
}

}  // namespace
}  // namespace kesto::test
