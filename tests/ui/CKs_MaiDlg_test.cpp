// The sheet-count dialog at its opening client size 620 x 410 with the "PartsName" font 16 px:
// picture {5, 7, 425, 405}; uy = 398 / 20 = 19, ux = 42; with the limit 570 the scale is
// 570 / (15 x 19) = 2; floor y0 = 405 - 38 = 367; the stack between xa 294 and xb 336; the
// limit line at 367 - 285 = 82 from x1 252 to 425 - 57 = 368.
// The part: 30 pieces, at most 20 per stack, 60 high, in two stacks of 4 (the first picked). Count
// opens at 570 / 60 = 9 (20 x 60 = 1200 > 570): the new stack is 540 high, 270 px, its top at 97;
// the current one 240 high, 120 px, filled from 247 to 365.
#include "ui/dialogs/CKs_MaiDlg.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <memory>

#include "common/EventCounter.h"
#include "common/PartFields.h"
#include "common/SpokenControls.h"
#include "common/StackFields.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "common/WindowJob.h"

namespace kesto {
namespace {

using test::AddStack;
using test::PixelAt;

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kBackground{136, 146, 172};
constexpr double kLimit = 570;

// Fonts 1 (16 px) and 2 (12 px); font 3 is not defined.
constexpr const char* kMessages =
    "[MaihenDlg]\n"
    "TitleName=1,SheetCount\n"
    "PartsName=1,x\n"
    "ButtonOk=1,Accept\n"
    "ButtonCan=1,Reject\n"
    "BTKAI=2,Highest,Never\n"
    "BT1=1,Second1,Even\n"
    "BT2=1,Second2,Half\n"
    "BT3=1,Second3,Third\n"
    "BT4=3,Second4,Quarter\n"
    "Label1=1,Pieces\n"
    "MaiSet=2,x\n"
    "HightST=1,x\n"
    "Label02=1,Thick\n"
    "Label03=1,Height\n"
    "Label04=1,Compare\n"
    "Label05=1,Dir\n";

struct MaiDialogJob {
    // overArea: the drawing area on the screen while the all-parts dialog is shown there.
    explicit MaiDialogJob(OkCancel answer = OkCancel::Ok,
                          std::optional<IntRect> overArea = std::nullopt)
        : Op(answer) {
        test::EnsureQApplication();
        App.Settings.FontHeight = {0, 16, 12, 0, 0};
        App.Settings.FontNames = {"", "DejaVuSans", "DejaVuSans", "", ""};
        Fonts.Build(App);
        test::WriteFile(Folder / "Kesto.ini", kMessages);
        EXPECT_EQ(Messages.Load(Folder / "Kesto.ini", Op), 0);
        PartsInfo& part = test::AddPart(App, {.DisplayName = "Bracket",
                                              .SizeX = 100,
                                              .SizeY = 100,
                                              .Quantity = 30,
                                              .PerStackLimit = 20,
                                              .PieceHeight = 60});
        Picked = &AddStack(App, part,
                           {.Block = -1, .Pieces = 4, .X = 0, .Y = 0, .Corner = kCornerMaxMin});
        AddStack(App, part, {.Block = -1, .Pieces = 4, .X = 200, .Y = 0, .Corner = kCornerMaxMin});
        Dialog = std::make_unique<CKs_MaiDlg>(App, overArea, Messages, Fonts, Op, *Picked, kLimit);
    }
    CKs_MaiDlg& D() { return *Dialog; }
    QLineEdit* Count() { return Dialog->findChild<QLineEdit*>("MaiSet"); }
    QPushButton* Button(const char* name) { return Dialog->findChild<QPushButton*>(name); }
    // Shows the dialog prepared at its opening size.
    bool Show() {
        Dialog->Prepare();
        Dialog->show();
        return QTest::qWaitForWindowExposed(Dialog.get());
    }
    Rgb Pixel(int x, int y) { return PixelAt(Dialog->grab().toImage(), x, y); }
    void TypeCount(const char* text) {
        Count()->selectAll();
        QTest::keyClicks(Count(), text);
    }

    test::TempFolder Folder;
    test::RecordingOperator Op;
    CKestoApp App;
    MessageTable Messages;
    FontTable Fonts;
    HaichiInfo* Picked = nullptr;
    std::unique_ptr<CKs_MaiDlg> Dialog;
};

TEST(CKs_MaiDlg, CaptionsComeFromTheMessageFile) {
    MaiDialogJob j;
    j.D().Prepare();
    EXPECT_EQ(j.D().windowTitle(), "SheetCount");
    EXPECT_EQ(j.Button("ButtonOk")->text(), "Accept");
    EXPECT_EQ(j.Button("ButtonCan")->text(), "Reject");
    EXPECT_EQ(j.Button("BTKAI")->text(), "Highest");  // second field
    EXPECT_EQ(j.Button("BTKAI")->font().pixelSize(), 12);
    EXPECT_EQ(j.Button("BT1")->text(), "Even");  // third field
    EXPECT_EQ(j.Button("BT2")->text(), "Half");
    EXPECT_EQ(j.Button("BT3")->text(), "Third");
    EXPECT_EQ(j.Button("BT4")->text(), "1/4");  // font 3 is not defined: template caption
    EXPECT_EQ(j.D().findChild<QGroupBox*>("Label1")->title(), "Pieces");
    auto* name = j.D().findChild<QLineEdit*>("PartsName");
    EXPECT_EQ(name->text(), "Bracket");
    EXPECT_TRUE(name->isReadOnly());
    EXPECT_EQ(j.Count()->text(), "9");
    EXPECT_EQ(j.Count()->font().pixelSize(), 12);
    EXPECT_EQ(j.D().NameFontHeight(), 16);
}

TEST(CKs_MaiDlg, ControlsFollowTheLayout) {
    MaiDialogJob j;
    ASSERT_TRUE(j.Show());
    ASSERT_EQ(j.D().size(), QSize(620, 410));
    // u = 60, bh = 48, bw = 90 (see the picture's layout): OK at 525..615, the column at
    // 430..520, the count's box 4 inside the group box below the fifth button.
    EXPECT_EQ(j.Button("ButtonOk")->geometry(), QRect(525, 5, 90, 48));
    EXPECT_EQ(j.Button("ButtonCan")->geometry(), QRect(525, 58, 90, 48));
    EXPECT_EQ(j.Button("BTKAI")->geometry(), QRect(430, 5, 90, 48));
    EXPECT_EQ(j.Button("BT4")->geometry(), QRect(430, 217, 90, 48));
    EXPECT_EQ(j.D().findChild<QGroupBox*>("Label1")->geometry(), QRect(430, 270, 90, 48));
    EXPECT_EQ(j.Count()->geometry(), QRect(434, 290, 82, 24));
    EXPECT_EQ(j.D().findChild<QLineEdit*>("PartsName")->geometry(), QRect(5, 5, 420, 21));
}

TEST(CKs_MaiDlg, GoesQuietOnceShownAndAfterAResize) {
    MaiDialogJob j;
    ASSERT_TRUE(j.Show());
    EXPECT_EQ(test::EventsAtRest(), 0);
    j.D().resize(800, 500);
    EXPECT_EQ(test::EventsAtRest(), 0);
    EXPECT_EQ(j.Button("ButtonOk")->geometry().right(), 800 - 6);
}

TEST(CKs_MaiDlg, FrameAndPictureColoursAtTheirPositions) {
    MaiDialogJob j;
    ASSERT_TRUE(j.Show());
    EXPECT_EQ(j.Pixel(30, 120), kBackground);
    EXPECT_EQ(j.Pixel(5, 200), kBlack);                  // left edge
    EXPECT_EQ(j.Pixel(425, 200), kWhite);                // right edge
    EXPECT_EQ(j.Pixel(200, 405), kWhite);                // bottom edge
    EXPECT_EQ(j.Pixel(350, 367), kWhite);                // floor
    EXPECT_EQ(j.Pixel(300, 82), (Rgb{255, 0, 0}));       // height limit
    EXPECT_EQ(j.Pixel(315, 300), (Rgb{150, 180, 207}));  // current stack
    EXPECT_EQ(j.Pixel(315, 97), kWhite);                 // new stack's top
    EXPECT_EQ(j.Pixel(315, 150), kBackground);           // inside the new stack's outline
}

TEST(CKs_MaiDlg, TypingChangesThePictureButNotTheText) {
    MaiDialogJob j;
    ASSERT_TRUE(j.Show());
    // 6 x 60 = 360 high, 180 px: the top moves from 97 to 187.
    j.TypeCount("6");
    EXPECT_EQ(j.Count()->text(), "6");
    EXPECT_EQ(j.D().Choice().Count(), 6);
    EXPECT_EQ(j.Pixel(315, 187), kWhite);
    EXPECT_EQ(j.Pixel(315, 97), kBackground);
    // 15 x 60 = 900 > 570: the picture shows 9 again, the box keeps 15.
    j.TypeCount("15");
    EXPECT_EQ(j.Count()->text(), "15");
    EXPECT_EQ(j.D().Choice().Count(), 9);
    EXPECT_EQ(j.Pixel(315, 97), kWhite);
    EXPECT_EQ(j.Pixel(315, 187), kBackground);
    // Not a number: as many as fit.
    j.TypeCount("abc");
    EXPECT_EQ(j.Count()->text(), "abc");
    EXPECT_EQ(j.D().Choice().Count(), 9);
}

TEST(CKs_MaiDlg, ButtonsWriteTheProposedCountIntoTheEditBox) {
    MaiDialogJob j;
    ASSERT_TRUE(j.Show());
    const struct {
        const char* Name;
        const char* Shown;
    } cases[] = {
        {"BT2", "8"},    // ceil(30 / (2 stacks x 2)) = 8, below the per-stack limit 20
        {"BTKAI", "9"},  // 570 / 60 = 9
        {"BT1", "8"},    // cap 9: ceil(30 / 9) = 4 stacks, ceil(30 / 4) = 8
        {"BT3", "5"},    // ceil(30 / 6)
        {"BT4", "4"},    // ceil(30 / 8)
    };
    for (const auto& c : cases) {
        QTest::mouseClick(j.Button(c.Name), Qt::LeftButton);
        EXPECT_EQ(j.Count()->text(), c.Shown) << c.Name;
    }
    // 4 x 60 = 240 high: the new stack's top meets the current one's at 247.
    EXPECT_EQ(j.D().Choice().Count(), 4);
    EXPECT_EQ(j.Pixel(315, 97), kBackground);
}

TEST(CKs_MaiDlg, OkAtOnceReturnsNoChange) {
    MaiDialogJob j;
    QTimer::singleShot(0, j.Dialog.get(),
                       [&] { QTest::mouseClick(j.Button("ButtonOk"), Qt::LeftButton); });
    EXPECT_EQ(j.D().Run(), -1);
    EXPECT_TRUE(j.Op.KakuNumbers.empty());
    EXPECT_EQ(j.Count()->text(), "-1");
}

TEST(CKs_MaiDlg, OkAfterAChangeAsksAndReturnsTheCount) {
    MaiDialogJob j(OkCancel::Ok);
    QTimer::singleShot(0, j.Dialog.get(), [&] {
        j.TypeCount("6");
        QTest::mouseClick(j.Button("ButtonOk"), Qt::LeftButton);
    });
    EXPECT_EQ(j.D().Run(), 6);
    EXPECT_EQ(j.Op.KakuNumbers, (std::vector<std::pair<int, int>>{{206, 207}}));
}

TEST(CKs_MaiDlg, CancelToTheQuestionReturnsNoChange) {
    MaiDialogJob j(OkCancel::Cancel);
    QTimer::singleShot(0, j.Dialog.get(), [&] {
        j.TypeCount("6");
        QTest::mouseClick(j.Button("ButtonOk"), Qt::LeftButton);
    });
    EXPECT_EQ(j.D().Run(), -1);
    EXPECT_EQ(j.Op.KakuNumbers.size(), 1u);
}

TEST(CKs_MaiDlg, CancelAndEscapeReturnNoChangeWithoutAsking) {
    MaiDialogJob j;
    QTimer::singleShot(0, j.Dialog.get(), [&] {
        j.TypeCount("6");
        QTest::mouseClick(j.Button("ButtonCan"), Qt::LeftButton);
    });
    EXPECT_EQ(j.D().Run(), -1);
    QTimer::singleShot(0, j.Dialog.get(), [&] { QTest::keyClick(j.Dialog.get(), Qt::Key_Escape); });
    EXPECT_EQ(j.D().Run(), -1);
    EXPECT_TRUE(j.Op.KakuNumbers.empty());
}

TEST(CKs_MaiDlg, OverTheAllPartsDialogItSitsOnTheDrawingAreasUpperHalf) {
    MaiDialogJob j(OkCancel::Ok, IntRect{100, 50, 900, 650});
    j.D().Prepare();
    // Left 100 + 2; bottom at 50 + 600 / 2 = 350.
    const QRect frame = j.D().frameGeometry();
    EXPECT_EQ(frame.left(), 102);
    EXPECT_EQ(frame.top() + frame.height(), 350);
    EXPECT_EQ(j.D().size(), QSize(620, 410));
}

TEST(CKs_MaiDlg, EveryControlSpeaksToAScreenReader) {
    MaiDialogJob j;
    j.D().Prepare();
    test::ExpectEveryControlSpoken(j.D(), kMaiSection);
    EXPECT_EQ(j.Count()->accessibleName(), "Sheet count");
    // A button's caption is its name, in the installation's words.
    EXPECT_EQ(j.Button("ButtonOk")->text(), "Accept");
    EXPECT_TRUE(j.Button("ButtonOk")->accessibleName().isEmpty());
}

}  // namespace
}  // namespace kesto
