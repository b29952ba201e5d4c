// A random operator on a window: clicks, drags and Shift-clicks in the drawing, zooms and pans,
// key presses, buttons, list lines, the sheet-count dialog, Ctrl+Z and Ctrl+Y, Retry and Auto,
// from a seed;
// and the job's invariants after each of its steps. The window's questions are answered by the
// job's recording operator.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "common/EditInvariants.h"
#include "common/RandomOperator.h"
#include "common/WheelEvents.h"
#include "common/WindowJob.h"
#include "ui/dialogs/CKs_MaiDlg.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto::test {

// Every button of the main window but OK and Cancel, which end the job.
inline const char* const kMonkeyButtons[] = {
    "B-FLAT",      "B-DANMEN", "B-PALLET4", "B-PALLET2", "B-GRID",  "B-3D",    "B-NEST-A",
    "B-BLOCKDRAW", "B-HITB",   "B-HITS",    "B-INFO",    "B-PTOT",  "B-TTOP",  "B-STOT",
    "B-TTOS",      "B-SBOX1",  "B-SBOX2",   "B-SBOX3",   "B-SBOXN", "B-SBOXP", "B-MAICHG"};
inline const char* const kMonkeyLists[] = {"LIST-SCH", "LIST-TORIOKI", "LIST-SBOX", "LIST-PTALL",
                                           "LIST"};
inline const char* const kMonkeySortButtons[] = {"BT1", "BT2", "BT3", "BT4", "BT5"};
// Keys that move and type but never press a focused button or end the dialog.
inline const Qt::Key kMonkeyKeys[] = {
    Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left, Qt::Key_Right,   Qt::Key_Home, Qt::Key_End,
    Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_A,    Qt::Key_7};

// Walks the window of job, which is open and shown.
class WindowMonkey : private RandomOperator {
  public:
    WindowMonkey(WindowJob& job, uint32_t seed) : RandomOperator(seed), job_(job) {}

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
            {4, [this] { Zoom(); }},
            {1, [this] { Reload(); }},
        });
    }

    // The invariants after a step; empty when they hold.
    std::string Check() {
        const PalletDrawing& drawing = Area().Drawing();
        sharedOut_.Settle(Session().History());
        std::string bad = CheckReferences(App(), drawing);
        if (bad.empty())
            bad = CheckCounts(App(), sharedOut_.Now());
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

    // The wheel turned with Ctrl held, in or out, or the view dragged with the middle button.
    void Zoom() {
        const QPoint at = SomePoint();
        if (Chance(70)) {
            SendWheel(Area(), at, 120 * Uniform(-2, 3));
            return;
        }
        QTest::mousePress(&Area(), Qt::MiddleButton, {}, at);
        const QPoint to = SomePoint();
        QTest::mouseMove(&Area(), to);
        QTest::mouseRelease(&Area(), Qt::MiddleButton, {}, to);
    }

    void PressButton() {
        const char* name = kMonkeyButtons[Uniform(0, std::size(kMonkeyButtons) - 1)];
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
        auto* list =
            D().findChild<QListWidget*>(kMonkeyLists[Uniform(0, std::size(kMonkeyLists) - 1)]);
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
        QTest::keyClick(target != nullptr ? target : &D(),
                        kMonkeyKeys[Uniform(0, std::size(kMonkeyKeys) - 1)]);
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
        auto* button = D().findChild<QPushButton*>(kMonkeySortButtons[Uniform(0, 4)]);
        if (button != nullptr && button->isVisible())
            QTest::mouseClick(button, Qt::LeftButton);
    }

    // Retry or Auto: the job is read again, so the parts seen shared out are new parts.
    void Reload() {
        QTest::mouseClick(D().findChild<QPushButton*>(Chance(50) ? "B-RETRY" : "B-AUTO"),
                          Qt::LeftButton);
        sharedOut_.Reloaded();
    }

    WindowJob& job_;
    SharedOutParts sharedOut_;
    int moves_ = 0;      // drags that moved a stack
    int takenBack_ = 0;  // steps taken back by Ctrl+Z
    int doneAgain_ = 0;  // and done again by Ctrl+Y or Ctrl+Shift+Z
};

}  // namespace kesto::test
