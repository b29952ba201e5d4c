// A random operator on the sample job's window: clicks, drags and Shift-clicks in the drawing,
// key presses, buttons, list lines and the sheet-count dialog, from a fixed seed. After every
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
#include "common/RandomOperator.h"
#include "common/RecordedJournal.h"
#include "common/WindowJob.h"
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

// Every button of the main window but OK and Cancel, which end the job.
const char* const kButtons[] = {
    "B-FLAT",      "B-DANMEN", "B-PALLET4", "B-PALLET2", "B-GRID",  "B-3D",    "B-NEST-A",
    "B-BLOCKDRAW", "B-HITB",   "B-HITS",    "B-INFO",    "B-PTOT",  "B-TTOP",  "B-STOT",
    "B-TTOS",      "B-SBOX1",  "B-SBOX2",   "B-SBOX3",   "B-SBOXN", "B-SBOXP", "B-MAICHG"};
const char* const kLists[] = {"LIST-SCH", "LIST-TORIOKI", "LIST-SBOX", "LIST-PTALL", "LIST"};
const char* const kSortButtons[] = {"BT1", "BT2", "BT3", "BT4", "BT5"};
// Keys that move and type but never press a focused button or end the dialog.
const Qt::Key kKeys[] = {Qt::Key_Up,   Qt::Key_Down,    Qt::Key_Left,   Qt::Key_Right,
                         Qt::Key_Home, Qt::Key_End,     Qt::Key_PageUp, Qt::Key_PageDown,
                         Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_A,      Qt::Key_7};

class Monkey : private test::RandomOperator {
  public:
    explicit Monkey(uint32_t seed) : RandomOperator(seed) {
        opened_ = test::OpenSampleJob(job_) && test::ShowLaidOut(D(), 1600, 900);
    }

    bool Opened() const { return opened_; }
    CKestoApp& App() { return job_.App(); }
    JobSession& Session() { return *job_.Session; }
    CKestoDlg& D() { return *job_.Dialog; }
    CKs_DrawArea& Area() { return *D().DrawArea(); }
    int Moves() const { return moves_; }
    int TakenBack() const { return takenBack_; }
    int DoneAgain() const { return doneAgain_; }

    void Step() {
        RunOneOf({
            {25, [this] { ClickArea(); }},
            {25, [this] { DragArea(); }},
            {20, [this] { PressButton(); }},
            {10, [this] { SelectLine(); }},
            {6, [this] { PressKey(); }},
            {4, [this] { UndoOrRedo(); }},
            {3, [this] { ChoosePallet(); }},
            {3, [this] { Sort(); }},
            {1, [this] { Reload(); }},
        });
    }

    // The invariants after a step; empty when they hold.
    std::string Check() {
        const PalletDrawing& drawing = Area().Drawing();
        sharedOut_.Settle(Session().History());
        std::string bad = test::CheckReferences(App(), drawing);
        if (bad.empty())
            bad = test::CheckCounts(App(), sharedOut_.Now());
        return bad;
    }

  private:
    // A point on a stack most of the time, anywhere in and a little around the area else.
    QPoint SomePoint() {
        std::vector<IntRect> stacks;
        for (const HaichiInfo& h : App().HaichiList) {
            if (const auto r = Area().Drawing().ScreenRect(h))
                stacks.push_back(*r);
        }
        if (!stacks.empty() && Chance(60)) {
            const IntRect& r = stacks[static_cast<size_t>(Uniform(0, int(stacks.size()) - 1))];
            return {Uniform(r.Left, std::max(r.Left, r.Right)),
                    Uniform(r.Top, std::max(r.Top, r.Bottom))};
        }
        return {Uniform(-5, Area().width() + 5), Uniform(-5, Area().height() + 5)};
    }
    Qt::KeyboardModifiers SomeKeys() {
        return Chance(25) ? Qt::KeyboardModifiers(Qt::ShiftModifier) : Qt::KeyboardModifiers();
    }

    void ClickArea() { QTest::mouseClick(&Area(), Qt::LeftButton, SomeKeys(), SomePoint()); }

    // Where every stack stands, to tell a drag that moved something.
    std::vector<std::pair<double, double>> Positions() {
        std::vector<std::pair<double, double>> at;
        for (const HaichiInfo& h : App().HaichiList)
            at.emplace_back(h.X, h.Y);
        return at;
    }

    void DragArea() {
        const auto before = Positions();
        const QPoint from = SomePoint();
        QTest::mousePress(&Area(), Qt::LeftButton, SomeKeys(), from);
        QPoint at = from;
        for (int i = Uniform(0, 4); i > 0; --i) {
            at = SomePoint();
            QTest::mouseMove(&Area(), at);
        }
        QTest::mouseRelease(&Area(), Qt::LeftButton, {}, at);
        moves_ += Positions() != before ? 1 : 0;
    }

    void PressButton() {
        const char* name = kButtons[Uniform(0, std::size(kButtons) - 1)];
        auto* button = D().findChild<QPushButton*>(name);
        if (button == nullptr || !button->isEnabled())
            return;
        if (std::string(name) == "B-MAICHG")
            AnswerSheetCount();
        QTest::mouseClick(button, Qt::LeftButton);
    }

    // The sheet-count dialog, when it opens, gets a typed count and OK, or Cancel.
    void AnswerSheetCount() {
        const bool ok = Chance(70);
        const QString count = QString::number(Uniform(-1, 30));
        QTimer::singleShot(0, &D(), [this, ok, count] {
            auto* mai = D().findChild<CKs_MaiDlg*>();
            if (mai == nullptr)
                return;
            if (ok) {
                auto* edit = mai->findChild<QLineEdit*>("MaiSet");
                edit->selectAll();
                QTest::keyClicks(edit, count);
            }
            QTest::mouseClick(mai->findChild<QPushButton*>(ok ? "ButtonOk" : "ButtonCan"),
                              Qt::LeftButton);
        });
    }

    void SelectLine() {
        auto* list = D().findChild<QListWidget*>(kLists[Uniform(0, std::size(kLists) - 1)]);
        if (list == nullptr || !list->isVisible() || list->count() == 0)
            return;
        const int row = Uniform(0, list->count() - 1);
        const QRect r = list->visualItemRect(list->item(row));
        if (r.isValid() && Chance(70))
            QTest::mouseClick(list->viewport(), Qt::LeftButton, SomeKeys(), r.center());
        else
            list->setCurrentRow(row);
    }

    void PressKey() {
        QWidget* target = QApplication::focusWidget();
        QTest::keyClick(target != nullptr ? target : &D(), kKeys[Uniform(0, std::size(kKeys) - 1)]);
    }

    // Ctrl+Z, Ctrl+Y or Ctrl+Shift+Z to the main window, as the operator presses them.
    void UndoOrRedo() {
        D().activateWindow();
        // The activation reaches the window through the event loop; until it has, the
        // window's shortcuts do not take the keys.
        QApplication::processEvents();
        const int which = Uniform(0, 2);
        const Qt::Key key = which == 1 ? Qt::Key_Y : Qt::Key_Z;
        const Qt::KeyboardModifiers keys =
            which == 2 ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier;
        const size_t redoSteps = Session().History().RedoSteps();
        sharedOut_.BeforeUndoOrRedo(Session().History());
        QTest::keyClick(&D(), key, keys);
        sharedOut_.AfterUndoOrRedo(Session().History());
        takenBack_ += Session().History().RedoSteps() > redoSteps ? 1 : 0;
        doneAgain_ += Session().History().RedoSteps() < redoSteps ? 1 : 0;
    }

    void ChoosePallet() {
        auto* combo = D().findChild<QComboBox*>("LIST-PALLET-SEL");
        if (combo != nullptr && combo->count() > 0)
            combo->setCurrentIndex(Uniform(0, combo->count() - 1));
    }

    void Sort() {
        auto* button = D().findChild<QPushButton*>(kSortButtons[Uniform(0, 4)]);
        if (button != nullptr && button->isVisible())
            QTest::mouseClick(button, Qt::LeftButton);
    }

    // Retry or Auto: the job is read again, so the parts seen shared out are new parts.
    void Reload() {
        QTest::mouseClick(D().findChild<QPushButton*>(Chance(50) ? "B-RETRY" : "B-AUTO"),
                          Qt::LeftButton);
        sharedOut_.Reloaded();
    }

    test::WindowJob job_;
    bool opened_ = false;
    test::SharedOutParts sharedOut_;
    int moves_ = 0;      // drags that moved a stack
    int takenBack_ = 0;  // steps taken back by Ctrl+Z
    int doneAgain_ = 0;  // and done again by Ctrl+Y or Ctrl+Shift+Z
};

TEST(CKestoDlgMonkey, RandomOperatorKeepsTheJobWhole) {
    const uint32_t seed = Seed();
    std::unique_ptr<StepJournal> journal;  // outlives the session that writes to it
    Monkey monkey(seed);
    ASSERT_TRUE(monkey.Opened());
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
