// The drawing area's mouse editing in the window, and the left and right buttons, on the
// job of common/EditingWindow.h.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include "common/E2eCases.h"
#include "common/EditingWindow.h"
#include "common/EventCounter.h"
#include "common/WindowJob.h"
#include "ui/dialogs/CKs_MaiDlg.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::EditingWindow;
using test::PixelAt;

int PanelTextPixels(const QImage& image) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            n += PixelAt(image, x, y) == colour::kPanelText ? 1 : 0;
    }
    return n;
}

TEST(CKestoDlgEditing, TheJobStandsAsWorkedOut) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    ASSERT_EQ(w.App().HaichiList.size(), 4u);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_DOUBLE_EQ(w.StackNo(1).Y, 550);
    EXPECT_EQ(w.StackNo(0).Part->Code, "A1");
    EXPECT_EQ(w.StackNo(2).Part->Code, "A2");
    EXPECT_EQ(w.StackNo(2).BlockIndex, 1);
    EXPECT_EQ(w.Picture(680, 628), colour::kPartNormal);
    EXPECT_EQ(w.Picture(100, 628), colour::kPalletFrame);
}

TEST(CKestoDlgEditing, AStackAcrossAnOffsetLineIsFramedInRed) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    // The lower offset line at y 100, pixel row 768: A1's first stack (y 50 to 250, pixels
    // (670, 618)-(990, 818)) lies across it, the second (y 550 to 750) does not.
    w.App().PalletList.begin()->OffsetB = 100;
    w.Area().Refresh();
    EXPECT_EQ(w.Picture(500, 768), colour::kOffsetLine);
    EXPECT_EQ(w.Picture(670, 700), colour::kOffsetLine);
    EXPECT_EQ(w.Picture(830, 618), colour::kOffsetLine);
    EXPECT_NE(w.Picture(670, 200), colour::kOffsetLine);
    EXPECT_NE(w.Picture(830, 118), colour::kOffsetLine);
    // Dragged to the cell's corner 1 (still y 50), the frame goes with it to (90, 618)-(410,
    // 818).
    w.Drag({830, 718}, {260, 718});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_NE(w.Picture(670, 700), colour::kOffsetLine);
    EXPECT_EQ(w.Picture(410, 700), colour::kOffsetLine);
    EXPECT_EQ(w.Picture(250, 618), colour::kOffsetLine);
}

TEST(CKestoDlgEditing, ClickPicksTheStackAndShowsItInTheListAndThePanel) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    EXPECT_EQ(PanelTextPixels(w.job.Dialog->PartsInfoPanel()->Image()), 0);
    w.Click({830, 718});
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    EXPECT_EQ(w.Picture(680, 128), colour::kSamePart);
    EXPECT_EQ(w.Selected("LIST-PTALL").size(), 1);
    EXPECT_TRUE(w.Selected("LIST-PTALL").value(0).startsWith("001"));
    EXPECT_GT(PanelTextPixels(w.job.Dialog->PartsInfoPanel()->Image()), 30);
    // Released: no drag image is left over the picture.
    EXPECT_TRUE(w.Area().DragImage().empty());
    EXPECT_EQ(w.Seen(670, 700), colour::kPartPen);
}

TEST(CKestoDlgEditing, PressShowsTheDragImageOverThePictureOnly) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mousePress(&w.Area(), Qt::LeftButton, {}, QPoint(830, 718));
    ASSERT_EQ(w.Area().DragImage().size(), 1u);
    // The left edge of the stack's rectangle, column 670, is red on screen, white in the image;
    // the red is 2 pixels wide between white borders, so it shows on every colour below.
    EXPECT_EQ(w.Seen(670, 700), kDragImageColour);
    EXPECT_EQ(w.Picture(670, 700), colour::kPartPen);
    EXPECT_EQ(w.Seen(669, 700), kDragImageColour);
    const Rgb white{255, 255, 255};
    for (const int x : {667, 668, 671, 672})
        EXPECT_EQ(w.Seen(x, 700), white) << x;
    QTest::mouseRelease(&w.Area(), Qt::LeftButton, {}, QPoint(830, 718));
    EXPECT_EQ(w.Seen(670, 700), colour::kPartPen);
}

TEST(CKestoDlgEditing, ClickOrOneMoveIsAPickOnly) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Click({830, 718});
    QTest::mousePress(&w.Area(), Qt::LeftButton, {}, QPoint(830, 718));
    QTest::mouseMove(&w.Area(), QPoint(300, 700));
    QTest::mouseRelease(&w.Area(), Qt::LeftButton, {}, QPoint(300, 700));
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
}

// Pressed at (830, 718), the rectangle's corner is 160 left and 100 up; released at (260, 718)
// the drop rectangle is (100, 618)-(420, 818), 10 pixels from the cell's corner 1 at (90, 818):
// X = 50 + 320, Y = 50, pixels (90, 618)-(410, 818).
TEST(CKestoDlgEditing, DragMovesTheStackToAnotherCornerOfThePallet) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Drag({830, 718}, {260, 718});
    HaichiInfo& moved = w.StackNo(0);
    EXPECT_DOUBLE_EQ(moved.X, 370);
    EXPECT_DOUBLE_EQ(moved.Y, 50);
    EXPECT_EQ(moved.BlockIndex, 0);
    EXPECT_EQ(w.Picture(100, 628), colour::kPicked);
    EXPECT_EQ(w.Picture(90, 700), colour::kPartPen);
    EXPECT_EQ(w.Picture(980, 700), colour::kPalletFrame);
    EXPECT_TRUE(w.Area().DragImage().empty());
}

// Held at (260, 718) before the release, the drag shows the landing of the test above: the
// footprint (90, 618)-(410, 818) outlined in the landing colour beside the red drag outline at
// (100, 618)-(420, 818), and that of the block's other stack, picked with it and carried along,
// at (90, 118)-(410, 318); nothing has moved yet.
TEST(CKestoDlgEditing, TheDragShowsTheLandingBeforeTheRelease) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mousePress(&w.Area(), Qt::LeftButton, {}, QPoint(830, 718));
    QTest::mouseMove(&w.Area(), QPoint(831, 718));
    QTest::mouseMove(&w.Area(), QPoint(260, 718));
    ASSERT_TRUE(w.Area().Landing().has_value());
    EXPECT_EQ(w.Area().Landing()->Landing,
              std::vector<IntRect>({{90, 618, 410, 818}, {90, 118, 410, 318}}));
    // Their left edges, columns 89 and 90; the drag outline over them elsewhere.
    EXPECT_EQ(w.Seen(90, 700), colour::kLanding);
    EXPECT_EQ(w.Seen(89, 700), colour::kLanding);
    EXPECT_EQ(w.Seen(90, 200), colour::kLanding);
    EXPECT_EQ(w.Seen(100, 700), kDragImageColour);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    QTest::mouseRelease(&w.Area(), Qt::LeftButton, {}, QPoint(260, 718));
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_DOUBLE_EQ(w.StackNo(1).X, 370);
    EXPECT_DOUBLE_EQ(w.StackNo(1).Y, 550);
    EXPECT_FALSE(w.Area().Landing().has_value());
    EXPECT_NE(w.Seen(90, 700), colour::kLanding);
}

// Ctrl+Z while the button is held takes nothing back: the drag's landing is worked out on the
// job as it stood at the press. Let go, the move is taken back as usual.
TEST(CKestoDlgEditing, CtrlZWaitsForTheDragToEnd) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Drag({830, 718}, {260, 718});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    QTest::mousePress(&w.Area(), Qt::LeftButton, {}, QPoint(250, 718));
    QTest::mouseMove(&w.Area(), QPoint(251, 718));
    QTest::mouseMove(&w.Area(), QPoint(600, 718));
    w.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    w.Key(Qt::Key_Escape, {});
    QTest::mouseRelease(&w.Area(), Qt::LeftButton, {}, QPoint(600, 718));
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_FALSE(w.job.Dialog->Ended());
    w.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
}

// The window's OK writes what the model holds: the moved stack's save line, which kesto-batch
// then restores to the same place and writes back unchanged.
TEST(CKestoDlgEditing, AMovedStackIsWhatOkWritesAndTheBatchToolRestores) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Drag({830, 718}, {260, 718});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    QTest::mouseClick(w.Button("B-OK"), Qt::LeftButton);
    ASSERT_TRUE(w.job.Session->Ended());
    const std::string saved = w.job.Install.Read("out/haichi.csv");
    // The save line gives the stack's left and lower edges: X - SizeX = 370 - 320 = 50, Y 550
    // became 50 (the pallet's save offsets are 0).
    EXPECT_NE(saved.find("A1,1,PartA,1,5,   50.0000,   50.0000,"), std::string::npos) << saved;
    EXPECT_EQ(saved.find("A1,1,PartA,1,5,  630.0000,  550.0000,"), std::string::npos) << saved;
    const auto log = w.job.Install.Path("batch.log");
    EXPECT_EQ(test::RunBatchProcess(w.job.Install.Root(), "ok",
                                    w.job.Install.Path("pallet.txt").string() + " 0 0 0 0 1", log),
              0)
        << test::ReadFile(log);
    EXPECT_EQ(w.job.Install.Read("out/haichi.csv"), saved);
}

TEST(CKestoDlgEditing, DragInFourPalletViewMovesTheStackToTheSecondPallet) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Shown().SetMode(PalletView::FourPallet);
    w.Area().Refresh();
    const IntRect r = *w.Drawing().ScreenRect(w.StackNo(0));
    const BlockInfo& target = w.App().Blocks[1];
    ASSERT_EQ(target.PalletNo, 2);
    const IntRect cell = w.Drawing().BlockRects.at(1);
    // Grabbed at its middle; released so that its rectangle's lower left corner meets the
    // second pallet's cell corner 1 exactly.
    const QPoint grab((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
    const QPoint drop(cell.Left + grab.x() - r.Left,
                      cell.Bottom - (r.Bottom - r.Top) + grab.y() - r.Top);
    w.Drag(grab, drop);
    HaichiInfo& moved = w.StackNo(0);
    EXPECT_DOUBLE_EQ(moved.X, 370);
    EXPECT_DOUBLE_EQ(moved.Y, 50);
    EXPECT_EQ(moved.BlockIndex, 1);
    const IntRect now = *w.Drawing().ScreenRect(moved);
    EXPECT_GT(now.Left, w.Drawing().PalletRect[1].Left - 1);
    EXPECT_EQ(w.Picture(now.Left + 3, now.Top + 3), colour::kPicked);
    EXPECT_EQ(w.Picture(r.Left + 3, r.Bottom - 3), colour::kPalletFrame);
}

TEST(CKestoDlgEditing, DraggingAboveTheCaptionStripAbandons) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Drag({830, 718}, {830, 30});
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    EXPECT_EQ(w.Drawing().Selected().Picked(), kNoStack);
    EXPECT_TRUE(w.Area().DragImage().empty());
}

// A refused drop's outline flashes where it was dropped and the status line says why; a
// moment later both are gone and the window rests.
TEST(CKestoDlgEditing, RefusedDropFlashesAndSaysWhyThenGoesQuiet) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    w.Area().ShowRefusal({IntRect{400, 300, 600, 400}}, "Not moved");
    EXPECT_TRUE(w.Area().Flashing());
    QLabel* status = w.Area().StatusLine();
    EXPECT_TRUE(status->isVisible());
    EXPECT_EQ(status->text(), "Not moved");
    EXPECT_GE(status->geometry().top(), w.Area().height() / 2);
    EXPECT_EQ(w.Seen(400, 350), kDragImageColour);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !w.Area().Flashing(); }, 3000));
    EXPECT_NE(w.Seen(400, 350), kDragImageColour);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !status->isVisible(); }, 6000));
    EXPECT_EQ(test::EventsAtRest(), 0);
}

// --- rubber band (Direct on) -------------------------------------------------------------------

struct BandWindow : EditingWindow {
    BandWindow() {
        App().Settings.IsDirect = 1;
        Area().Refresh();
    }
    void Band(QPoint from, QPoint to) {
        QTest::mousePress(&Area(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&Area(), to);
        QTest::mouseRelease(&Area(), Qt::LeftButton, {}, to);
    }
};

TEST(CKestoDlgEditing, BandSelectsTheStacksInsideIt) {
    BandWindow w;
    ASSERT_TRUE(w.opened);
    w.Band({660, 100}, {1000, 830});
    EXPECT_EQ(w.Drawing().Selected().Band(), BandState::InForce);
    EXPECT_EQ(w.Drawing().Selected().BandList().size(), 2u);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    EXPECT_EQ(w.Picture(680, 128), colour::kPicked);
    EXPECT_EQ(w.Selected("LIST-PTALL").size(), 1);
}

TEST(CKestoDlgEditing, TinyBandOrOneAcrossSlotsSelectsNothing) {
    BandWindow w;
    ASSERT_TRUE(w.opened);
    w.Band({660, 100}, {662, 102});
    EXPECT_EQ(w.Drawing().Selected().Band(), BandState::Off);
    w.Shown().SetMode(PalletView::FourPallet);
    w.Area().Refresh();
    // From the first slot's quadrant into the second's (halves of 540).
    w.Band({60, 60}, {700, 400});
    EXPECT_EQ(w.Drawing().Selected().Band(), BandState::Off);
    EXPECT_TRUE(w.Drawing().Selected().BandList().empty());
}

TEST(CKestoDlgEditing, RemovingTheLastBandStackWithShiftEndsTheBand) {
    BandWindow w;
    ASSERT_TRUE(w.opened);
    w.Band({660, 600}, {1000, 830});
    ASSERT_EQ(w.Drawing().Selected().BandList().size(), 1u);
    w.Click({830, 718}, Qt::ShiftModifier);
    EXPECT_EQ(w.Drawing().Selected().Band(), BandState::Off);
    EXPECT_TRUE(w.Drawing().Selected().BandList().empty());
    // The stack hit stays picked, as the hit test left it: lit, its line selected, and MaiChg
    // or left work on it.
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    EXPECT_EQ(w.Selected("LIST-PTALL").size(), 1);
}

TEST(CKestoDlgEditing, ShiftClickOnAnotherPalletNeitherAddsNorRemoves) {
    BandWindow w;
    ASSERT_TRUE(w.opened);
    w.Shown().SetMode(PalletView::FourPallet);
    w.Area().Refresh();
    const IntRect a = *w.Drawing().ScreenRect(w.StackNo(0));
    const IntRect other = *w.Drawing().ScreenRect(w.StackNo(2));
    w.Band({a.Left - 3, a.Top - 3}, {a.Right + 3, a.Bottom + 3});
    ASSERT_EQ(w.Drawing().Selected().BandList().size(), 1u);
    w.Click({(other.Left + other.Right) / 2, (other.Top + other.Bottom) / 2}, Qt::ShiftModifier);
    ASSERT_EQ(w.Drawing().Selected().BandList().size(), 1u);
    EXPECT_EQ(w.Drawing().Selected().BandList()[0].Stack, w.StackNo(0).Id);
    EXPECT_EQ(w.Picture(other.Left + 3, other.Top + 3), colour::kPartNormal);
    EXPECT_EQ(w.Picture(a.Left + 3, a.Top + 3), colour::kPicked);
}

// --- left and right ------------------------------------------------------------------------------

TEST(CKestoDlgEditing, LeftDisablesOkAndRightEnablesItAgain) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QPushButton* ok = w.Button("B-OK");
    ASSERT_TRUE(ok->isEnabled());
    // Picked alone, not with the other stack of its cell.
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});
    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_EQ(w.App().HaichiList.size(), 3u);
    ASSERT_EQ(w.List("LIST-TORIOKI")->count(), 1);
    EXPECT_TRUE(w.List("LIST-TORIOKI")->item(0)->text().startsWith("001    5/10"));
    EXPECT_EQ(w.Picture(680, 628), colour::kPalletFrame);
    // Nothing is picked any more, and the information panel describes nothing.
    EXPECT_EQ(PanelTextPixels(w.job.Dialog->PartsInfoPanel()->Image()), 0);
    // The close box is refused while OK is disabled.
    EXPECT_FALSE(w.job.Dialog->close());
    EXPECT_FALSE(w.job.Session->Ended());
    w.List("LIST-TORIOKI")->setCurrentRow(0);
    QTest::mouseClick(w.Button("B-TTOP"), Qt::LeftButton);
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(w.List("LIST-TORIOKI")->count(), 0);
    EXPECT_EQ(w.StackNo(0).Part->PiecesPlaced, 10);
    EXPECT_EQ(w.Picture(680, 628), colour::kPartNormal);
    EXPECT_TRUE(w.job.Svc.Op.KakuNumbers.empty());
}

// Ctrl+Z takes the left back: the stack stands where it stood, the set-aside list is empty
// again and OK allowed; Ctrl+Y does it again, and Ctrl+Shift+Z after another undo too.
TEST(CKestoDlgEditing, CtrlZTakesLeftBackAndCtrlYDoesItAgain) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QPushButton* ok = w.Button("B-OK");
    QAction* undo = w.job.Dialog->UndoAction();
    QAction* redo = w.job.Dialog->RedoAction();
    EXPECT_FALSE(undo->isEnabled());
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});
    const HaichiInfo before = w.StackNo(0);
    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    ASSERT_FALSE(ok->isEnabled());
    ASSERT_EQ(w.App().HaichiList.size(), 3u);
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_EQ(undo->text(), "Undo Left");
    EXPECT_FALSE(redo->isEnabled());

    w.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(w.App().HaichiList.size(), 4u);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, before.X);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, before.Y);
    EXPECT_EQ(w.StackNo(0).Part->PiecesPlaced, 10);
    EXPECT_EQ(w.List("LIST-TORIOKI")->count(), 0);
    EXPECT_TRUE(ok->isEnabled());
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);  // the pick comes back with the stack
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_EQ(redo->text(), "Redo Left");

    w.Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(w.App().HaichiList.size(), 3u);
    EXPECT_EQ(w.List("LIST-TORIOKI")->count(), 1);
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_EQ(w.Picture(680, 628), colour::kPalletFrame);

    w.Key(Qt::Key_Z, Qt::ControlModifier);
    w.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(w.App().HaichiList.size(), 3u);
    EXPECT_TRUE(w.job.Svc.Op.KakuNumbers.empty());
}

// A drop that moved the stack is a step; one refused moves nothing and is none.
TEST(CKestoDlgEditing, AMoveIsAStepARefusedDropIsNot) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    const HaichiInfo before = w.StackNo(0);
    w.Drag({830, 718}, {260, 718});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_EQ(w.job.Dialog->UndoAction()->text(), "Undo Move");
    EXPECT_EQ(w.job.Session->History().UndoSteps(), 1u);
    // Beside the pallet, below its frame: nothing moves.
    w.Drag({260, 718}, {5, 890});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_EQ(w.job.Session->History().UndoSteps(), 1u);
    w.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, before.X);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, before.Y);
    EXPECT_EQ(w.StackNo(0).BlockIndex, before.BlockIndex);
    EXPECT_EQ(w.Picture(830, 718), colour::kPicked);
}

// left refreshes the lists the stacks left and joined, the drawing and the panels of the pick,
// but not the part view: the set-aside part shown there stays shown.
TEST(CKestoDlgEditing, LeftLeavesThePartViewAsItWas) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});
    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    w.List("LIST-TORIOKI")->setCurrentRow(0);
    const QImage shown = w.job.Dialog->PartsViewPanel()->Image();
    ASSERT_GT(PanelTextPixels(shown), 0);
    const std::optional<IntRect> other = w.Drawing().ScreenRect(w.StackNo(0));
    ASSERT_TRUE(other.has_value());
    w.Click({(other->Left + other->Right) / 2, (other->Top + other->Bottom) / 2});
    ASSERT_NE(w.Drawing().Selected().Picked(), kNoStack);
    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    EXPECT_EQ(w.Drawing().Selected().Picked(), kNoStack);
    EXPECT_EQ(w.job.Dialog->PartsViewPanel()->Image(), shown);
}

// Retry and Auto read the job again: nothing is set aside any more, so OK is allowed again.
TEST(CKestoDlgEditing, LeftThenRetryOrAutoAllowsOkAgain) {
    for (const char* reload : {"B-RETRY", "B-AUTO"}) {
        EditingWindow w;
        ASSERT_TRUE(w.opened);
        QPushButton* ok = w.Button("B-OK");
        QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
        w.Click({830, 718});
        QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
        ASSERT_FALSE(ok->isEnabled());
        QTest::mouseClick(w.Button(reload), Qt::LeftButton);
        EXPECT_TRUE(ok->isEnabled()) << reload;
        // The close box ends the job again, as Cancel.
        w.job.Dialog->close();
        EXPECT_TRUE(w.job.Session->Ended()) << reload;
    }
}

// Retry shows the job from its first pallet; taking it back shows the pallet it was pressed on,
// doing it again the pallet the undo was made on.
TEST(CKestoDlgEditing, UndoAndRedoShowTheStepWhereItWasTaken) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    auto* pallets = w.job.Dialog->findChild<QComboBox*>("LIST-PALLET-SEL");
    pallets->setCurrentIndex(1);
    ASSERT_EQ(w.Shown().Pallet(), 2);
    QTest::mouseClick(w.Button("B-RETRY"), Qt::LeftButton);
    ASSERT_EQ(w.Shown().Pallet(), 1);
    w.Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(w.Shown().Pallet(), 2);
    EXPECT_EQ(pallets->currentIndex(), 1);
    // Pallet 2 is drawn: A2's first stack (300 wide, x 650 to 950) at pixels (690, 618)-(990,
    // 818), where A1's (320 wide) would begin at 670.
    EXPECT_EQ(w.Picture(700, 628), colour::kPartNormal);
    EXPECT_EQ(w.Picture(680, 628), colour::kPalletFrame);
    EXPECT_EQ(w.StackNo(2).Part->Code, "A2");
    w.Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(w.Shown().Pallet(), 1);
    EXPECT_EQ(pallets->currentIndex(), 0);
}

TEST(CKestoDlgEditing, LeftWithABandInForceShowsMessage15) {
    BandWindow w;
    ASSERT_TRUE(w.opened);
    w.Band({660, 100}, {1000, 830});
    QTest::mouseClick(w.Button("B-PTOT"), Qt::LeftButton);
    EXPECT_EQ(w.job.Svc.Op.KakuNumbers, (std::vector<std::pair<int, int>>{{15, 0}}));
    EXPECT_TRUE(w.Button("B-OK")->isEnabled());
    EXPECT_EQ(w.App().HaichiList.size(), 4u);
}

// Answers the sheet-count dialog once it runs: the count typed, then OK.
void AnswerSheetCount(CKestoDlg& dialog, const QString& count) {
    QTimer::singleShot(0, &dialog, [&dialog, count] {
        auto* mai = dialog.findChild<CKs_MaiDlg*>();
        ASSERT_NE(mai, nullptr);
        auto* edit = mai->findChild<QLineEdit*>("MaiSet");
        edit->selectAll();
        QTest::keyClicks(edit, count);
        QTest::mouseClick(mai->findChild<QPushButton*>("ButtonOk"), Qt::LeftButton);
    });
}

TEST(CKestoDlgEditing, MaiChgWithoutAPickDoesNothing) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-MAICHG"), Qt::LeftButton);
    EXPECT_EQ(w.job.Dialog->findChild<CKs_MaiDlg*>(), nullptr);
    EXPECT_EQ(w.App().HaichiList.size(), 4u);
}

TEST(CKestoDlgEditing, MaiChgStacksThePickedPartAgainWithTheNewCount) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});  // A1's stack at X 950, Y 50
    ASSERT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
    // Ten pieces of 10 high under the limit of 500: ten fit, so the dialog gives 10 and asks
    // 206/207 because that differs from the five it opened with.
    // A mark on the all-parts dialog's first line: MaiChg does not fill that dialog again.
    QTest::mouseClick(w.Button("B-INFO"), Qt::LeftButton);
    QListWidget* partsAll = w.job.Dialog->PartsAllDialog()->List();
    ASSERT_GT(partsAll->count(), 0);
    partsAll->item(0)->setText("mark");
    AnswerSheetCount(*w.job.Dialog, "10");
    QTest::mouseClick(w.Button("B-MAICHG"), Qt::LeftButton);
    EXPECT_EQ(w.job.Svc.Op.KakuNumbers, (std::vector<std::pair<int, int>>{{206, 207}}));
    EXPECT_EQ(partsAll->item(0)->text(), "mark");
    // A1 now stands in one stack of ten, in the first corner the cell offers (X 950, Y 50);
    // its own limit of five is back.
    std::vector<const HaichiInfo*> a1;
    for (const HaichiInfo& h : w.App().HaichiList) {
        if (h.Part->Code == "A1")
            a1.push_back(&h);
    }
    ASSERT_EQ(a1.size(), 1u);
    EXPECT_EQ(a1[0]->Pieces, 10);
    EXPECT_DOUBLE_EQ(a1[0]->X, 950);
    EXPECT_DOUBLE_EQ(a1[0]->Y, 50);
    EXPECT_EQ(a1[0]->Part->PiecesPlaced, 10);
    EXPECT_EQ(a1[0]->Part->PerStackLimit, 5);
    EXPECT_EQ(w.Drawing().Selected().Picked(), a1[0]->Id);
    EXPECT_EQ(w.Drawing().Selected().LastPicked(), a1[0]->Id);
    // The new stack is lit as the pick at (670, 618)-(990, 818); its old place above is free.
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
    EXPECT_EQ(w.Picture(680, 128), colour::kPalletFrame);
}

QStringList Lines(QListWidget* list) {
    QStringList lines;
    for (int i = 0; i < list->count(); ++i)
        lines << list->item(i)->text();
    return lines;
}

TEST(CKestoDlgEditing, MaiChgLeavingThePartShortShowsMessage10OverTheNewState) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});  // A1's stack at X 950, Y 50
    ASSERT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
    const QStringList linesBefore = Lines(w.List("LIST-PTALL"));
    const QImage pictureBefore = w.Area().Image();
    // One piece a stack: A1's ten pieces want ten stacks. Pallet 2's cell is A2's, so only
    // pallet 1's cell takes them, one in each corner (4, 8, 1, 2): four stacks, four pieces
    // placed, message 10. The ten pieces are then shared out over the four (3, 3, 2, 2).
    QStringList linesAtMessage;
    QImage pictureAtMessage;
    StackId lastAtMessage = w.StackNo(0).Id;
    w.job.Svc.Op.OnAsk = [&](int no1) {
        if (no1 != 10)
            return;
        linesAtMessage = Lines(w.List("LIST-PTALL"));
        pictureAtMessage = w.Area().Image();
        lastAtMessage = w.Drawing().Selected().LastPicked();
    };
    AnswerSheetCount(*w.job.Dialog, "1");
    QTest::mouseClick(w.Button("B-MAICHG"), Qt::LeftButton);
    EXPECT_EQ(w.job.Svc.Op.KakuNumbers, (std::vector<std::pair<int, int>>{{206, 207}, {10, 0}}));
    std::vector<const HaichiInfo*> a1;
    for (const HaichiInfo& h : w.App().HaichiList) {
        if (h.Part->Code == "A1")
            a1.push_back(&h);
    }
    ASSERT_EQ(a1.size(), 4u);
    const double expected[4][3] = {{950, 50, 3}, {950, 550, 3}, {370, 50, 2}, {370, 550, 2}};
    for (size_t i = 0; i < a1.size(); ++i) {
        EXPECT_DOUBLE_EQ(a1[i]->X, expected[i][0]) << i;
        EXPECT_DOUBLE_EQ(a1[i]->Y, expected[i][1]) << i;
        EXPECT_EQ(a1[i]->Pieces, expected[i][2]) << i;
    }
    EXPECT_EQ(a1[0]->Part->PiecesPlaced, 4);
    // The message came over the lists and the drawing as they stand after the change.
    EXPECT_NE(linesAtMessage, linesBefore);
    EXPECT_EQ(linesAtMessage, Lines(w.List("LIST-PTALL")));
    EXPECT_NE(pictureAtMessage, pictureBefore);
    EXPECT_EQ(pictureAtMessage, w.Area().Image());
    // The stack at the old place (950, 50) becomes the last pick once the message is
    // answered; it is also the first of the part's stacks, the pick.
    EXPECT_EQ(lastAtMessage, kNoStack);
    EXPECT_EQ(w.Drawing().Selected().LastPicked(), a1[0]->Id);
    EXPECT_EQ(w.Drawing().Selected().Picked(), a1[0]->Id);
}

// The block drawing toggle draws the cells, then the picked stack's highlight over them again.
TEST(CKestoDlgEditing, BlockDrawingToggleRedrawsTheHitDisplay) {
    EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.Button("B-HITS"), Qt::LeftButton);
    w.Click({830, 718});
    ASSERT_EQ(w.Picture(680, 628), colour::kPicked);
    const int before = w.Shown().StoredBlockDraw();
    QTest::mouseClick(w.Button("B-BLOCKDRAW"), Qt::LeftButton);
    EXPECT_NE(w.Shown().StoredBlockDraw(), before);
    EXPECT_EQ(w.Picture(680, 628), colour::kPicked);
}

}  // namespace
}  // namespace kesto
