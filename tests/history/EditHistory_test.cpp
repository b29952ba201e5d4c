// The edit history: its names, its limit, redo dropped by a new step, and random corrections
// on a generated job taken back and done again down to the bytes of the files OK writes.
#include "history/EditHistory.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "common/RandomOperator.h"
#include "common/UndoFixture.h"
#include "rules/ListLines.h"
#include "rules/MaiChoice.h"

namespace kesto::test {
namespace {

// A job whose parts' set-aside counts mark the steps: step n sets the first part's to n.
class HistoryTest : public ::testing::Test {
  protected:
    HistoryTest() { FillApp(app, GenerateJob(SmallJobShape())); }
    int32_t Mark() { return app.PartsList.Items.front().PiecesSetAside; }
    void Step(EditHistory& history, const std::string& name, int32_t mark) {
        history.Record(name, app, selection);
        app.PartsList.Items.front().PiecesSetAside = mark;
    }

    CKestoApp app;
    Selection selection;
};

TEST_F(HistoryTest, AStepIsShownWhereItWasTakenAndDoneAgainWhereItWasTakenBack) {
    EditHistory history;
    history.Record(step::kMove, app, selection, ViewPlace{2, 3});
    history.Record(step::kRetry, app, selection, ViewPlace{3, 1});
    ViewPlace view{1, 1};  // Retry shows the first process
    ASSERT_TRUE(history.Undo(app, selection, &view));
    EXPECT_EQ(view.Koutei, 3);
    EXPECT_EQ(view.Pallet, 1);
    view = {2, 2};  // the operator looks elsewhere, then undoes the move
    ASSERT_TRUE(history.Undo(app, selection, &view));
    EXPECT_EQ(view.Koutei, 2);
    EXPECT_EQ(view.Pallet, 3);
    ASSERT_TRUE(history.Redo(app, selection, &view));
    EXPECT_EQ(view.Koutei, 2);
    EXPECT_EQ(view.Pallet, 2);
    // Without a place to show, the history keeps none.
    ASSERT_TRUE(history.Redo(app, selection));
    ASSERT_TRUE(history.Undo(app, selection, &view));
    EXPECT_EQ(view.Koutei, 0);
    EXPECT_EQ(view.Pallet, 0);
}

TEST_F(HistoryTest, UndoAndRedoGiveBackTheStatesAndNameTheSteps) {
    EditHistory history;
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.CanRedo());
    EXPECT_EQ(history.UndoName(), "");
    EXPECT_FALSE(history.Undo(app, selection));
    Step(history, step::kMove, 1);
    Step(history, step::kLeft, 2);
    Step(history, step::kSheetCount, 3);
    EXPECT_EQ(history.UndoName(), "Sheet count");
    EXPECT_EQ(history.UndoNames(), (std::vector<std::string>{"Move", "Left", "Sheet count"}));

    EXPECT_TRUE(history.Undo(app, selection));
    EXPECT_EQ(Mark(), 2);
    EXPECT_EQ(history.UndoName(), "Left");
    EXPECT_EQ(history.RedoName(), "Sheet count");
    EXPECT_TRUE(history.Undo(app, selection));
    EXPECT_TRUE(history.Undo(app, selection));
    EXPECT_EQ(Mark(), 0);
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.Undo(app, selection));
    EXPECT_EQ(history.RedoName(), "Move");

    EXPECT_TRUE(history.Redo(app, selection));
    EXPECT_EQ(Mark(), 1);
    EXPECT_EQ(history.UndoName(), "Move");
    EXPECT_EQ(history.RedoName(), "Left");
    EXPECT_TRUE(history.Redo(app, selection));
    EXPECT_TRUE(history.Redo(app, selection));
    EXPECT_EQ(Mark(), 3);
    EXPECT_FALSE(history.CanRedo());
    EXPECT_FALSE(history.Redo(app, selection));
}

// A drop's step is begun before the stacks move and kept only when they did: a cancelled one
// leaves the history, the redo steps included, as it was.
TEST_F(HistoryTest, ACancelledStepLeavesTheHistoryAsItWas) {
    EditHistory history;
    Step(history, step::kLeft, 1);
    ASSERT_TRUE(history.Undo(app, selection));
    history.Begin(step::kMove, app, selection);
    history.Cancel();
    history.Commit();  // nothing pending: nothing happens
    EXPECT_EQ(history.UndoSteps(), 0u);
    EXPECT_EQ(history.RedoName(), step::kLeft);
    history.Begin(step::kMove, app, selection);
    app.PartsList.Items.front().PiecesSetAside = 7;
    history.Commit();
    EXPECT_EQ(history.UndoName(), step::kMove);
    EXPECT_FALSE(history.CanRedo());
    ASSERT_TRUE(history.Undo(app, selection));
    EXPECT_EQ(Mark(), 0);
}

// The background menu's items: the message file's words where it has them, English where not.
TEST_F(HistoryTest, MenuTextsNameTheStepInTheMessageFilesWords) {
    TempFolder folder;
    RecordingOperator op;
    MessageTable english;
    EditHistory history;
    EXPECT_EQ(UndoMenuText(history, english), "Undo");
    EXPECT_EQ(RedoMenuText(history, english), "Redo");
    Step(history, step::kToSetAside, 1);
    EXPECT_EQ(UndoMenuText(history, english), "Undo To set-aside");
    const std::string path = (folder.Path() / "Kesto.ini").string();
    WriteFile(path, "[MainDlg]\nM-UNDO=1,Back\nM-REDO=1,Again\nSTEP-TO-SET-ASIDE=1,Aside\n");
    MessageTable words;
    ASSERT_EQ(words.Load(path, op), 0);
    EXPECT_EQ(UndoMenuText(history, words), "Back Aside");
    ASSERT_TRUE(history.Undo(app, selection));
    EXPECT_EQ(UndoMenuText(history, words), "Back");
    EXPECT_EQ(RedoMenuText(history, words), "Again Aside");
}

TEST_F(HistoryTest, NewStepAfterUndoDropsTheRedoSteps) {
    EditHistory history;
    Step(history, step::kMove, 1);
    Step(history, step::kRight, 2);
    history.Undo(app, selection);
    history.Undo(app, selection);
    EXPECT_EQ(history.RedoSteps(), 2u);
    Step(history, step::kRetry, 7);
    EXPECT_FALSE(history.CanRedo());
    EXPECT_EQ(history.RedoName(), "");
    EXPECT_EQ(history.UndoNames(), (std::vector<std::string>{"Retry"}));
    history.Undo(app, selection);
    EXPECT_EQ(Mark(), 0);
}

TEST_F(HistoryTest, KeepsAHundredStepsAndDropsTheOldest) {
    EditHistory history;
    for (int32_t i = 1; i <= 130; ++i)
        Step(history, "step " + std::to_string(i), i);
    EXPECT_EQ(history.UndoSteps(), kEditHistorySteps);
    EXPECT_EQ(history.UndoNames().front(), "step 31");
    while (history.Undo(app, selection)) {
    }
    // The oldest step kept gives back the state before step 31.
    EXPECT_EQ(Mark(), 30);
    EXPECT_EQ(history.RedoSteps(), kEditHistorySteps);
}

TEST_F(HistoryTest, ByteLimitDropsTheOldestButKeepsOne) {
    EditHistory history(kEditHistorySteps, 1);
    Step(history, step::kAuto, 1);
    Step(history, step::kToSmallBox, 2);
    EXPECT_EQ(history.UndoNames(), (std::vector<std::string>{"To small box"}));
    EXPECT_TRUE(history.Undo(app, selection));
    EXPECT_EQ(Mark(), 1);
}

// The count follows the steps as they come and go: one step holds its snapshot's bytes, its
// parts counted once however many steps share them, and an empty history holds nothing more.
TEST_F(HistoryTest, BytesFollowEveryStepThatComesAndGoes) {
    EditHistory history;
    const size_t empty = history.Bytes();
    Step(history, step::kMove, 1);
    const size_t one = history.Bytes();
    const JobSnapshot alone = JobSnapshot::Take(app);
    EXPECT_GT(one - empty, alone.OwnBytes());
    Step(history, step::kRight, 2);
    Step(history, step::kLeft, 3);
    // Only the first part changed: the later steps share every other part with the first.
    EXPECT_LT(history.Bytes() - one, 2 * (one - empty));
    history.Undo(app, selection);
    history.Undo(app, selection);
    history.Redo(app, selection);
    Step(history, step::kRetry, 7);  // drops the step left to redo
    while (history.Undo(app, selection)) {
    }
    EXPECT_GT(history.Bytes(), one);
    history.Clear();
    EXPECT_EQ(history.Bytes(), empty);
}

TEST_F(HistoryTest, UndoGivesBackTheSelection) {
    app.HaichiList.Append().Part = &app.PartsList.Items.front();
    app.HaichiList.Append().Part = &app.PartsList.Items.back();
    EditHistory history;
    selection.SetPicked(app.HaichiList.back().Id);
    history.Record(step::kLeft, app, selection);
    app.HaichiList.Remove(&app.HaichiList.back());
    selection.Reset();
    ASSERT_TRUE(history.Undo(app, selection));
    ASSERT_EQ(app.HaichiList.size(), 2u);
    EXPECT_EQ(selection.Picked(), app.HaichiList.back().Id);
    EXPECT_EQ(app.HaichiList.Find(selection.Picked())->Part, &app.PartsList.Items.back());
    ASSERT_TRUE(history.Redo(app, selection));
    EXPECT_EQ(selection.Picked(), kNoStack);
}

// Random corrections on a placed generated job, each recorded as a step before it runs.
class UndoRun : private RandomOperator {
  public:
    explicit UndoRun(const JobShape& shape) : RandomOperator(shape.Seed), job_(shape) {}

    PlacedJob& Job() { return job_; }
    EditHistory& History() { return history_; }

    // Picks a stack (not a step), then one correction.
    void RandomCorrection() {
        Pick();
        RunOneOf({
            {30, [this] { Move(); }},
            {10, [this] { Left(); }},
            {10, [this] { Right(); }},
            {5, [this] { Down(); }},
            {5, [this] { Up(); }},
            {8, [this] { SheetCount(); }},
            {2, [this] { Reload(true); }},
            {2, [this] { Reload(false); }},
        });
    }

  private:
    CKestoApp& App() { return job_.App(); }
    Selection& Sel() { return job_.Drawing().Select(); }
    void Record(const char* name) { history_.Record(name, App(), Sel()); }

    IntPoint StackPoint() {
        std::vector<IntRect> shown;
        for (const HaichiInfo& h : App().HaichiList) {
            if (const std::optional<IntRect> r = job_.Drawing().ScreenRect(h))
                shown.push_back(*r);
        }
        if (shown.empty())
            return {Uniform(0, 1200), Uniform(0, 800)};
        const IntRect& r =
            shown[static_cast<size_t>(Uniform(0, static_cast<int>(shown.size()) - 1))];
        return {(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2};
    }
    std::optional<int32_t> AnySeq(bool (*which)(const PartsInfo&, int32_t), int32_t box) {
        std::vector<int32_t> seqs;
        for (const PartsInfo& p : App().PartsList) {
            if (p.KouteiNo == job_.Shown().Koutei() && which(p, box))
                seqs.push_back(p.Seq);
        }
        if (seqs.empty())
            return std::nullopt;
        return seqs[static_cast<size_t>(Uniform(0, static_cast<int>(seqs.size()) - 1))];
    }
    static bool SetAside(const PartsInfo& p, int32_t) { return InTorioki(p); }
    static bool InBox(const PartsInfo& p, int32_t box) { return InSmallBox(p, box); }

    void Pick() {
        const IntPoint p = StackPoint();
        job_.Edit().Press(job_.Canvas(), p.X, p.Y, false);
        job_.Edit().Release(job_.Canvas(), p.X, p.Y);
    }
    void Move() {
        const IntPoint from = StackPoint();
        const IntPoint to{Uniform(0, 1200), Uniform(0, 800)};
        Record(step::kMove);
        DrawingEdit& edit = job_.Edit();
        edit.Press(job_.Canvas(), from.X, from.Y, false);
        edit.Move(job_.Canvas(), from.X + 1, from.Y, true);
        edit.Move(job_.Canvas(), to.X, to.Y, true);
        edit.Release(job_.Canvas(), to.X, to.Y);
    }
    void Left() {
        Record(step::kLeft);
        job_.Session().Left(job_.Drawing(), job_.Canvas());
        job_.View().Refresh();
    }
    void Right() {
        Record(step::kRight);
        job_.Session().Right(AnySeq(SetAside, 0));
        job_.View().Refresh();
    }
    void Down() {
        job_.Shown().SetBox(SmallBoxCode(Uniform(1, std::max(job_.Job().SmallBoxes, 1))));
        Record(step::kToSetAside);
        job_.Session().Down(AnySeq(InBox, job_.Shown().Box()));
    }
    void Up() {
        job_.Shown().SetBox(SmallBoxCode(Uniform(1, std::max(job_.Job().SmallBoxes, 1))));
        Record(step::kToSmallBox);
        job_.Session().Up(AnySeq(SetAside, 0));
    }
    void SheetCount() {
        const std::optional<SheetCountStart> start = job_.Session().BeginSheetCount(job_.Drawing());
        if (!start)
            return;
        MaiChoice choice(App(), *job_.Drawing().PickedStack(),
                         job_.Drawing().ViewPallet.MaxStackHeight);
        choice.Type(std::to_string(Uniform(1, 30)));
        Record(step::kSheetCount);
        job_.Session().ApplySheetCount(job_.Drawing(), *start, choice.Count());
        job_.View().Refresh();
    }
    void Reload(bool retry) {
        Record(retry ? step::kRetry : step::kAuto);
        if (retry)
            job_.Session().Retry();
        else
            job_.Session().Auto();
        // The window's steps after a reload.
        job_.Edit().JobReloaded();
        job_.View().Refresh();
    }

    PlacedJob job_;
    EditHistory history_;
};

TEST(EditHistoryProperty, UndoAllGivesBackTheStartAndRedoAllTheEnd) {
    for (uint32_t seed : {3u, 17u, 29u}) {
        JobShape shape = MediumJobShape();
        shape.Seed = seed;
        UndoRun run(shape);
        ASSERT_TRUE(run.Job().Started());
        const JobFiles start = run.Job().Files();
        constexpr int kSteps = 60;
        for (int i = 0; i < kSteps; ++i)
            run.RandomCorrection();
        const size_t steps = run.History().UndoSteps();
        ASSERT_GT(steps, 0u);
        const JobFiles end = run.Job().Files();
        EXPECT_NE(end, start) << "seed " << seed << ": the corrections changed nothing";
        for (size_t i = 0; i < steps; ++i)
            ASSERT_TRUE(run.History().Undo(run.Job().App(), run.Job().Drawing().Select()));
        EXPECT_FALSE(run.History().CanUndo());
        EXPECT_EQ(run.Job().Files(), start) << "seed " << seed;
        for (size_t i = 0; i < steps; ++i)
            ASSERT_TRUE(run.History().Redo(run.Job().App(), run.Job().Drawing().Select()));
        EXPECT_FALSE(run.History().CanRedo());
        EXPECT_EQ(run.Job().Files(), end) << "seed " << seed;
    }
}

// A history of corrections on the largest job, for the record: bytes per step.
TEST(EditHistoryProperty, LargestJobBytesPerStep) {
    UndoRun run(LargestJobShape());
    ASSERT_TRUE(run.Job().Started());
    for (int i = 0; i < 40; ++i)
        run.RandomCorrection();
    const size_t steps = run.History().UndoSteps();
    ASSERT_GT(steps, 0u);
    const size_t bytes = run.History().Bytes();
    std::cout << "largest job: " << steps << " steps hold " << bytes << " bytes, " << bytes / steps
              << " bytes per step\n";
    RecordProperty("bytes_per_step", static_cast<int>(bytes / steps));
    EXPECT_LT(bytes, kEditHistoryBytes);
}

}  // namespace
}  // namespace kesto::test
