// The drawing's keys in the window, on the job of common/EditingWindow.h: Tab and Shift+Tab
// walk the stacks in view, Delete sets the pick aside, Escape lets a drag go and otherwise
// cancels the job.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <fstream>
#include <sstream>

#include "common/EditingWindow.h"
#include "common/TestFiles.h"
#include "common/WheelEvents.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::EditingWindow;

// A key as the operator presses it: to the widget that has the focus.
void Press(EditingWindow& w, Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    w.job.Dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.job.Dialog.get()));
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::keyClick(focus, key, keys);
}

void FocusDrawing(EditingWindow& w) {
    w.job.Dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.job.Dialog.get()));
    w.Area().setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(w.Area().hasFocus());
}

StackId Picked(EditingWindow& w) {
    return w.Drawing().Selected().Picked();
}

// The drawing given the keyboard and A1's front stack, the first in the sheet's order, picked
// with Tab.
void TabToTheFrontStack(EditingWindow& w) {
    FocusDrawing(w);
    Press(w, Qt::Key_Tab);
    ASSERT_EQ(Picked(w), w.StackNo(0).Id);
}

// Pallet 1 in FLAT holds A1's two stacks in its one cell: the front one (pixels (670,
// 618)-(990, 818)) in the cell's right front corner, the back one ((670, 118)-(990, 318)) in
// its right back corner; the sheet lists the front corner first.
TEST(CKestoDlgKeys, TabWalksThePalletsStacksInTheSheetsOrderThenLeavesTheDrawing) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    FocusDrawing(w);
    Press(w, Qt::Key_Tab);
    EXPECT_EQ(Picked(w), w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    EXPECT_EQ(w.Picture(680, 128), colour::kSamePart);
    ASSERT_EQ(w.Selected("LIST-PTALL").size(), 1);
    EXPECT_TRUE(w.Selected("LIST-PTALL").value(0).startsWith("001"));
    EXPECT_TRUE(w.Area().hasFocus());
    Press(w, Qt::Key_Tab);
    EXPECT_EQ(Picked(w), w.StackNo(1).Id);
    EXPECT_EQ(w.Picture(680, 128), colour::kPicked);
    EXPECT_EQ(w.Picture(680, 628), colour::kSamePart);
    // Past the last stack the focus goes on to the next control; the pick stays.
    Press(w, Qt::Key_Tab);
    EXPECT_FALSE(w.Area().hasFocus());
    EXPECT_EQ(Picked(w), w.StackNo(1).Id);
    FocusDrawing(w);
    Press(w, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Picked(w), w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    Press(w, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_FALSE(w.Area().hasFocus());
    EXPECT_EQ(Picked(w), w.StackNo(0).Id);
}

TEST(CKestoDlgKeys, ShiftTabWithNothingPickedStartsAtTheLastStack) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    FocusDrawing(w);
    Press(w, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Picked(w), w.StackNo(1).Id);
    EXPECT_TRUE(w.Area().hasFocus());
}

// In 4PALLET the two pallets are walked one after the other: A1's stacks, then A2's.
TEST(CKestoDlgKeys, TabWalksEveryPalletInViewInTurn) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-PALLET4"), Qt::LeftButton);
    FocusDrawing(w);
    for (int n = 0; n < 4; ++n) {
        Press(w, Qt::Key_Tab);
        EXPECT_EQ(Picked(w), w.StackNo(n).Id) << n;
        const std::optional<IntRect> r = w.Drawing().ScreenRect(w.StackNo(n));
        ASSERT_TRUE(r.has_value());
        EXPECT_EQ(w.Picture(r->Left + 3, r->Top + 3), colour::kPicked) << n;
    }
}

// A1's front stack picked with Tab, (670, 618)-(990, 818) in its cell's right front corner:
// the rectangle k pixels to the left is k from that corner and 580 - k from the cell's left
// front corner (left edge 90), so the first step that lands left is k = 292: X 50 + 320. The
// stack stays picked alone (the block's other stack stays), and Right takes it back.
TEST(CKestoDlgKeys, TheArrowsMoveThePickToTheNextCornerThatWay) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    TabToTheFrontStack(w);
    Press(w, Qt::Key_Left);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_DOUBLE_EQ(w.StackNo(1).X, 950);
    EXPECT_TRUE(w.Area().hasFocus());
    EXPECT_EQ(Picked(w), w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(100, 628), colour::kPicked);
    EXPECT_EQ(w.Drawing().Selected().PickRect(), (IntRect{90, 618, 410, 818}));
    Press(w, Qt::Key_Right);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    // Down from the pallet's front edge: nothing moves, and the status line says why.
    Press(w, Qt::Key_Down);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_TRUE(w.Area().StatusLine()->isVisible());
    // Each move is a step that Ctrl+Z takes back.
    Press(w, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
}

// + is a step of 1.25 closer (0.8 mm a pixel: a window 864 mm wide on the 1080-pixel plan), -
// a step back, which reaches the whole pallet; 0 is the whole pallet from any zoom.
TEST(CKestoDlgKeys, PlusMinusAndZeroZoomTheDrawing) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    FocusDrawing(w);
    Press(w, Qt::Key_Plus);
    ASSERT_TRUE(w.Shown().Zoom().has_value());
    EXPECT_NEAR(w.Shown().Zoom()->XMax - w.Shown().Zoom()->XMin, 864, 1e-9);
    EXPECT_NEAR(w.Drawing().Scale, 0.8, 1e-9);
    Press(w, Qt::Key_Minus);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    Press(w, Qt::Key_Plus);
    Press(w, Qt::Key_Plus);
    EXPECT_NEAR(w.Drawing().Scale, 0.64, 1e-9);
    Press(w, Qt::Key_0);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    EXPECT_DOUBLE_EQ(w.Drawing().Scale, 1);
    EXPECT_TRUE(w.Area().hasFocus());
}

// Zoomed with the wheel, the drawing has the keys: 0 and the space bar go to it, not to the
// button that had the focus before.
TEST(CKestoDlgKeys, TheWheelGivesTheDrawingTheKeys) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.job.Dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.job.Dialog.get()));
    w.Button("B-RETRY")->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(w.Button("B-RETRY")->hasFocus());
    const QPoint at(400, 468);
    test::SendWheel(w.Area(), at, 120);
    ASSERT_TRUE(w.Shown().Zoom().has_value());
    EXPECT_TRUE(w.Area().hasFocus());
    Press(w, Qt::Key_0);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
}

// In 4PALLET the keys change nothing.
TEST(CKestoDlgKeys, FourPalletsDoNotZoom) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-PALLET4"), Qt::LeftButton);
    FocusDrawing(w);
    Press(w, Qt::Key_Plus);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
}

TEST(CKestoDlgKeys, DeleteSetsThePickAside) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    TabToTheFrontStack(w);
    Press(w, Qt::Key_Delete);
    EXPECT_EQ(w.App().HaichiList.size(), 3u);
    ASSERT_EQ(w.List("LIST-TORIOKI")->count(), 1);
    EXPECT_TRUE(w.List("LIST-TORIOKI")->item(0)->text().startsWith("001    5/10"));
    EXPECT_FALSE(w.Button("B-OK")->isEnabled());
    EXPECT_EQ(w.Picture(680, 628), colour::kPalletFrame);
}

TEST(CKestoDlgKeys, EscapeDuringADragLetsItGoAndOnlyThenCancels) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mousePress(&w.Area(), Qt::LeftButton, {}, QPoint(830, 718));
    QTest::mouseMove(&w.Area(), QPoint(831, 718));
    QTest::mouseMove(&w.Area(), QPoint(260, 718));
    ASSERT_FALSE(w.Area().DragImage().empty());
    // Delete in the middle of the drag sets nothing aside.
    Press(w, Qt::Key_Delete);
    EXPECT_EQ(w.App().HaichiList.size(), 4u);
    Press(w, Qt::Key_Escape);
    EXPECT_FALSE(w.job.Dialog->Ended());
    EXPECT_TRUE(w.Area().DragImage().empty());
    EXPECT_EQ(Picked(w), kNoStack);
    QTest::mouseRelease(&w.Area(), Qt::LeftButton, {}, QPoint(260, 718));
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_FALSE(w.Area().Flashing());
    EXPECT_FALSE(w.job.Dialog->Ended());
    // With no drag, Escape is the dialog's Cancel.
    Press(w, Qt::Key_Escape);
    EXPECT_TRUE(w.job.Dialog->Ended());
}

// --- what a screen reader says ----------------------------------------------------------------

TEST(CKestoDlgKeys, EveryControlHasAnAccessibleNameAndDescription) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    CKestoDlg& dialog = *w.job.Dialog;
    for (const ControlEntry& entry : kControls) {
        QWidget* control = entry.Key != nullptr ? dialog.Control(entry.Id) : nullptr;
        if (control == nullptr)
            continue;
        EXPECT_FALSE(control->accessibleName().isEmpty()) << entry.Key;
        EXPECT_FALSE(control->accessibleDescription().isEmpty()) << entry.Key;
    }
    // A caption in words is the name; English describes what the test's file does not.
    EXPECT_EQ(w.Button("B-PTOT")->accessibleName(), "LeftX");
    EXPECT_EQ(w.Button("B-PTOT")->text(), "LeftX");
    EXPECT_EQ(w.Button("B-PTOT")->accessibleDescription(), "Sets the picked stacks aside (Delete)");
    EXPECT_EQ(w.Area().accessibleName(), "Pallet drawing");
    EXPECT_EQ(dialog.PartsInfoPanel()->accessibleName(), "Info");
    EXPECT_FALSE(dialog.PartsViewPanel()->accessibleDescription().isEmpty());
}

// The Japanese sample's Shift_JIS message file: the names and descriptions in its words.
TEST(CKestoDlgKeys, AccessibleTextsSpeakTheInstallationsLanguage) {
    std::ifstream in(test::SourceDir() / "examples/ja/install/Kesto.ini", std::ios::binary);
    std::stringstream ini;
    ini << in.rdbuf();
    test::WindowJob job;
    job.Install.Write("msg/Kesto.ini", ini.str());
    ASSERT_TRUE(job.Open());
    QPushButton* left = job.Dialog->findChild<QPushButton*>("B-PTOT");
    ASSERT_NE(left, nullptr);
    EXPECT_EQ(left->accessibleName(), QString::fromUtf8("取置へ"));
    EXPECT_EQ(left->accessibleDescription(), QString::fromUtf8("選んだ山を取置へ移す (Delete)"));
    EXPECT_EQ(job.Dialog->DrawArea()->accessibleName(), QString::fromUtf8("パレット図"));
    QComboBox* pallets = job.Dialog->findChild<QComboBox*>("LIST-PALLET-SEL");
    ASSERT_NE(pallets, nullptr);
    EXPECT_EQ(pallets->accessibleName(), QString::fromUtf8("パレット"));
    // The dialogs over the window speak it too, from their own sections.
    EXPECT_EQ(job.Dialog->PartsAllDialog()->List()->accessibleName(), QString::fromUtf8("全部品"));
    EXPECT_EQ(job.Dialog->PartsAllDialog()->findChild<QPushButton*>("BT5")->accessibleDescription(),
              QString::fromUtf8("名前で並べる"));
}

}  // namespace
}  // namespace kesto
