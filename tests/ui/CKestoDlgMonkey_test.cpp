// A random operator (WindowMonkey.h) on the sample job's window, from a fixed seed. After every
// step the job keeps its invariants. KESTO_MONKEY_STEPS sets the number of steps (the normal
// suite runs a short walk; make test-asan runs 10,000); KESTO_SOAK_SECONDS instead walks for
// that long (the soak runs it as a process and watches its memory). KESTO_MONKEY_SEED walks
// another way; KESTO_MONKEY_JOURNAL names a file that gets every command of the session, after
// the number of the step that gave it, to find the way to a step that failed.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "common/EditInvariants.h"
#include "common/EditingWindow.h"
#include "common/RecordedJournal.h"
#include "common/WindowJob.h"
#include "common/WindowMonkey.h"
#include "session/CommandJournal.h"
#include "ui/dialogs/CKs_MaiDlg.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto {
namespace {

constexpr int kDefaultSteps = 2000;
constexpr uint32_t kDefaultSeed = 20261123;

int EnvNumber(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::max(0, std::atoi(value)) : 0;
}

uint32_t Seed() {
    const char* value = std::getenv("KESTO_MONKEY_SEED");
    return value != nullptr && *value != '\0'
               ? static_cast<uint32_t>(std::strtoul(value, nullptr, 10))
               : kDefaultSeed;
}

// The session's commands in the journal's words, each after the step that gave it. Written
// as they come and flushed by the failure, so that a walk of millions of steps keeps no more
// of them in memory than the last line.
class StepJournal : public CommandJournal {
  public:
    explicit StepJournal(const std::string& path) : out_(path) {}
    void Write(const JournalCommand& command) override {
        out_ << Step << ' ' << FormatJournalCommand(command) << '\n';
    }
    void Flush() { out_.flush(); }
    int Step = 0;

  private:
    std::ofstream out_;
};

// Whether the walk goes on after `done` steps: a number of steps, or a time.
class Walk {
  public:
    Walk()
        : steps_(EnvNumber("KESTO_MONKEY_STEPS")),
          seconds_(EnvNumber("KESTO_SOAK_SECONDS")),
          start_(std::chrono::steady_clock::now()) {
        if (steps_ == 0 && seconds_ == 0)
            steps_ = kDefaultSteps;
    }
    bool GoesOn(int done) const {
        if (seconds_ > 0)
            return std::chrono::steady_clock::now() - start_ < std::chrono::seconds(seconds_);
        return done < steps_;
    }

  private:
    int steps_;
    int seconds_;
    std::chrono::steady_clock::time_point start_;
};

TEST(CKestoDlgMonkey, RandomOperatorKeepsTheJobWhole) {
    const uint32_t seed = Seed();
    std::unique_ptr<StepJournal> journal;  // outlives the session that writes to it
    test::WindowJob job;
    ASSERT_TRUE(test::OpenSampleJob(job) && test::ShowLaidOut(*job.Dialog, 1600, 900));
    test::WindowMonkey monkey(job, seed);
    if (const char* path = std::getenv("KESTO_MONKEY_JOURNAL"); path != nullptr && *path != '\0') {
        journal = std::make_unique<StepJournal>(path);
        monkey.Session().JournalIn(journal.get());
    }
    const Walk walk;
    int i = 0;
    for (; walk.GoesOn(i); ++i) {
        if (journal)
            journal->Step = i;
        monkey.Step();
        ASSERT_FALSE(monkey.D().isHidden()) << "the window closed at step " << i;
        const std::string bad = monkey.Check();
        if (!bad.empty() && journal)
            journal->Flush();
        ASSERT_TRUE(bad.empty()) << "seed " << seed << ", step " << i << ": " << bad;
    }
    std::printf(
        "monkey: seed %u, %d steps, %d drags moved a stack, %d steps taken back, %d done "
        "again\n",
        seed, i, monkey.Moves(), monkey.TakenBack(), monkey.DoneAgain());
    EXPECT_GT(monkey.Moves(), 0);
    EXPECT_GT(monkey.TakenBack(), 0);
    // The operator's OK still ends the job when nothing is set aside.
    auto* ok = monkey.D().findChild<QPushButton*>("B-OK");
    if (ok->isEnabled()) {
        QTest::mouseClick(ok, Qt::LeftButton);
        EXPECT_TRUE(monkey.D().Ended());
    }
}

// The shortest way to what the walk once stopped at ("part 1 counts -19 placed pieces, its
// stacks hold 0"), on the job of EditingWindow.h: one piece a stack gives A1 four stacks, four
// pieces placed, and its ten pieces shared out over them; left takes all ten off while it
// counted four; Retry reads the job anew; Ctrl+Z brings back the job from before it, which the
// walk must know as the one in which A1 was shared out. The journal words the way there.
TEST(CKestoDlgMonkey, APartSharedOutAndSetAsideIsKnownAgainWhenUndoTakesRetryBack) {
    test::RecordedJournal journal;  // outlives the session that writes to it
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    JobSession& session = *w.job.Session;
    session.JournalIn(&journal);
    test::SharedOutParts sharedOut;
    auto check = [&] {
        sharedOut.Settle(session.History());
        return test::CheckCounts(w.App(), sharedOut.Now());
    };
    auto key = [&](Qt::Key k) {
        sharedOut.BeforeUndoOrRedo(session.History());
        w.Key(k, Qt::ControlModifier);
        sharedOut.AfterUndoOrRedo(session.History());
    };
    // The part of Seq 1 as the job holds it now: Retry and Undo put new records in place.
    auto a1 = [&]() -> const PartsInfo& { return *w.App().PartsList.begin(); };
    ASSERT_EQ(a1().Seq, 1);

    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});  // A1's stack at X 950, Y 50
    QTimer::singleShot(0, w.job.Dialog.get(), [&w] {
        auto* mai = w.job.Dialog->findChild<CKs_MaiDlg*>();
        ASSERT_NE(mai, nullptr);
        auto* edit = mai->findChild<QLineEdit*>("MaiSet");
        edit->selectAll();
        QTest::keyClicks(edit, "1");
        QTest::mouseClick(mai->findChild<QPushButton*>("ButtonOk"), Qt::LeftButton);
    });
    QTest::mouseClick(w.Button("B-MAICHG"), Qt::LeftButton);
    EXPECT_EQ(a1().PiecesPlaced, 4);
    EXPECT_EQ(check(), "");
    EXPECT_EQ(sharedOut.Now()->count(1), 1u);

    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    EXPECT_EQ(a1().PiecesPlaced, -6);
    EXPECT_EQ(a1().PiecesSetAside, 10);
    EXPECT_EQ(check(), "");

    QTest::mouseClick(w.Button("B-RETRY"), Qt::LeftButton);
    sharedOut.Reloaded();
    EXPECT_EQ(a1().PiecesPlaced, 10);
    EXPECT_EQ(check(), "");
    EXPECT_TRUE(sharedOut.Now()->empty());

    key(Qt::Key_Z);
    EXPECT_EQ(a1().PiecesPlaced, -6);
    EXPECT_EQ(check(), "");
    // What the walk said when it forgot, at the Retry, the parts shared out before it.
    EXPECT_EQ(test::CheckCounts(w.App()), "part 1 counts -6 placed pieces, its stacks hold 0");

    key(Qt::Key_Y);
    EXPECT_EQ(a1().PiecesPlaced, 10);
    EXPECT_EQ(check(), "");
    EXPECT_TRUE(sharedOut.Now()->empty());
    EXPECT_EQ(journal.Lines, std::vector<std::string>({"hit single", "sheets 0 1", "left 2 3 4 5",
                                                       "retry", "undo", "redo"}));
}

}  // namespace
}  // namespace kesto
