// A random operator on the sample job's window: clicks, drags and Shift-clicks in the drawing,
// key presses, buttons, list lines and the sheet-count dialog, from a fixed seed. After every
// step the job keeps its invariants. KESTO_MONKEY_STEPS sets the number of steps (the normal
// suite runs a short walk; make test-asan runs 10,000); KESTO_SOAK_SECONDS instead walks for
// that long (the soak runs it as a process and watches its memory).
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
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "common/EditInvariants.h"
#include "common/RandomOperator.h"
#include "common/WindowJob.h"
#include "ui/dialogs/CKs_MaiDlg.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto {
namespace {

constexpr int kDefaultSteps = 2000;

int EnvNumber(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::max(0, std::atoi(value)) : 0;
}

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
    CKestoDlg& D() { return *job_.Dialog; }
    CKs_DrawArea& Area() { return *D().DrawArea(); }
    int SharedOut() const { return sharedOutSeen_; }
    int Moves() const { return moves_; }

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
        std::string bad = test::CheckReferences(App(), drawing);
        if (bad.empty())
            bad = test::CheckCounts(App(), &sharedOut_);
        sharedOutSeen_ = std::max<int>(sharedOutSeen_, static_cast<int>(sharedOut_.size()));
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
        const int which = Uniform(0, 2);
        const Qt::Key key = which == 1 ? Qt::Key_Y : Qt::Key_Z;
        const Qt::KeyboardModifiers keys =
            which == 2 ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier;
        QTest::keyClick(&D(), key, keys);
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
        sharedOutSeen_ += static_cast<int>(sharedOut_.size());
        sharedOut_.clear();
    }

    test::WindowJob job_;
    bool opened_ = false;
    std::set<int32_t> sharedOut_;
    int sharedOutSeen_ = 0;
    int moves_ = 0;  // drags that moved a stack
};

TEST(CKestoDlgMonkey, RandomOperatorKeepsTheJobWhole) {
    Monkey monkey(20261123);
    ASSERT_TRUE(monkey.Opened());
    const Walk walk;
    int i = 0;
    for (; walk.GoesOn(i); ++i) {
        monkey.Step();
        ASSERT_FALSE(monkey.D().isHidden()) << "the window closed at step " << i;
        const std::string bad = monkey.Check();
        ASSERT_TRUE(bad.empty()) << "step " << i << ": " << bad;
    }
    std::printf("monkey: %d steps, %d drags moved a stack\n", i, monkey.Moves());
    EXPECT_GT(monkey.Moves(), 0);
    // The operator's OK still ends the job when nothing is set aside.
    auto* ok = monkey.D().findChild<QPushButton*>("B-OK");
    if (ok->isEnabled()) {
        QTest::mouseClick(ok, Qt::LeftButton);
        EXPECT_TRUE(monkey.D().Ended());
    }
}

}  // namespace
}  // namespace kesto
