#include "ui/dialogs/CKs_KakuDlg.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QtTest/QTest>

#include "common/SpokenControls.h"
#include "common/WindowJob.h"

namespace kesto {
namespace {

struct KakuFixture {
    KakuFixture() { Job.Start(); }
    CKs_KakuDlg& Make(int no1, int no2, QWidget* owner) {
        Dialog = std::make_unique<CKs_KakuDlg>(no1, no2, Job.Svc.Messages, Job.Fonts, owner);
        return *Dialog;
    }
    test::WindowJob Job;
    std::unique_ptr<CKs_KakuDlg> Dialog;
};

QPushButton* Button(QWidget& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(name);
}

TEST(CKs_KakuDlg, InformationShowsOneLineAndOneWideOkButton) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(7, 0, nullptr);
    dialog.Prepare();
    auto* line1 = dialog.findChild<QLabel*>("1043");
    auto* line2 = dialog.findChild<QLabel*>("1044");
    EXPECT_EQ(line1->text(), "NoLineSelected");
    EXPECT_TRUE(line2->isHidden());
    EXPECT_TRUE(Button(dialog, "ButtonCan")->isHidden());
    EXPECT_EQ(Button(dialog, "ButtonOk")->text(), "Yes");
    EXPECT_EQ(Button(dialog, "ButtonOk")->geometry(), QRect(300 / 2 - 105, 200 - 35, 205, 30));
    EXPECT_EQ(dialog.windowTitle(), "Confirm");
}

// The first column of a label's picture with ink darker than middle grey; -1 when none.
int FirstInkColumn(QLabel* label) {
    const QImage image = label->grab().toImage();
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (qGray(image.pixel(x, y)) < 128)
                return x;
        }
    }
    return -1;
}

TEST(CKs_KakuDlg, LinesKeepTheMessageBoxMarginsFromTheEdges) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(202, 203, nullptr);
    dialog.Prepare();
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    const int margin = dialog.style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    ASSERT_GE(margin, 6);
    for (const char* name : {"1043", "1044"}) {
        auto* line = dialog.findChild<QLabel*>(name);
        EXPECT_EQ(line->geometry().left(), 0) << name;
        EXPECT_GE(FirstInkColumn(line), margin) << name;
    }
}

TEST(CKs_KakuDlg, QuestionShowsTwoLinesWithOkAndCancel) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(202, 203, nullptr);
    dialog.Prepare();
    EXPECT_EQ(dialog.findChild<QLabel*>("1043")->text(), "RetryThePlacementFromTheInputFiles");
    EXPECT_EQ(dialog.findChild<QLabel*>("1044")->text(), "ReallyRetry");
    EXPECT_FALSE(dialog.findChild<QLabel*>("1044")->isHidden());
    EXPECT_FALSE(Button(dialog, "ButtonCan")->isHidden());
    EXPECT_EQ(Button(dialog, "ButtonCan")->text(), "No");
    // 34 characters of a 16-pixel font: (34 * 16) / 7 * 4 = 308 wide, 160 high -> 200.
    EXPECT_EQ(dialog.width(), 308);
    EXPECT_EQ(dialog.height(), 200);
    EXPECT_EQ(Button(dialog, "ButtonOk")->geometry(), QRect(154 - 105, 165, 100, 30));
    EXPECT_EQ(Button(dialog, "ButtonCan")->geometry(), QRect(154 + 5, 165, 100, 30));
    EXPECT_EQ(dialog.findChild<QLabel*>("1043")->geometry(), QRect(0, 50, 308, 32));
    EXPECT_EQ(dialog.findChild<QLabel*>("1044")->geometry(), QRect(0, 92, 308, 32));
}

TEST(CKs_KakuDlg, ShortMessageGetsTheFloorSizeCentredOnTheMainWindow) {
    test::EnsureQApplication();
    QWidget owner;  // made first: it deletes the dialog it owns before the fixture goes
    KakuFixture f;
    owner.setGeometry(100, 50, 1000, 600);
    CKs_KakuDlg& dialog = f.Make(4, 0, &owner);
    dialog.Prepare();
    const QRect frame = owner.frameGeometry();
    const int cx = (frame.left() + frame.left() + frame.width()) / 2;
    const int cy = (frame.top() + frame.top() + frame.height()) / 2;
    EXPECT_EQ(dialog.geometry(), QRect(cx - 150, cy - 100, 300, 200));
}

TEST(CKs_KakuDlg, CancelReturnsTwoAndOkReturnsOne) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(202, 203, nullptr);
    QTimer::singleShot(0, &dialog,
                       [&] { QTest::mouseClick(Button(dialog, "ButtonCan"), Qt::LeftButton); });
    EXPECT_EQ(dialog.Run(), OkCancel::Cancel);
    QTimer::singleShot(0, &dialog,
                       [&] { QTest::mouseClick(Button(dialog, "ButtonOk"), Qt::LeftButton); });
    EXPECT_EQ(dialog.Run(), OkCancel::Ok);
}

TEST(CKs_KakuDlg, ReturnAnswersOkAndEscapeCancel) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(202, 203, nullptr);
    QTimer::singleShot(0, &dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Return); });
    // A Return that answers nothing must not leave the test waiting.
    QTimer::singleShot(2000, &dialog, [&] { dialog.done(3); });
    EXPECT_EQ(dialog.Run(), OkCancel::Ok);
    QTimer::singleShot(0, &dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(dialog.Run(), OkCancel::Cancel);
}

TEST(CKs_KakuDlg, ClosingCountsAsCancel) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(7, 0, nullptr);
    QTimer::singleShot(0, &dialog, [&] { dialog.close(); });
    EXPECT_EQ(dialog.Run(), OkCancel::Cancel);
}

TEST(CKs_KakuDlg, UndefinedFontKeepsTheTemplateTextAndNoTitle) {
    KakuFixture f;
    f.Job.Install.Write("msg/Kesto.ini",
                        "[FontDefine]\nFontSet1=16,0,0,0,DejaVuSans\n[KakuDlg]\nTitleName=4,T\n"
                        "Msg007=4,Hidden\nButtonOk=4,Never\n");
    f.Job.Start();
    CKs_KakuDlg& dialog = f.Make(7, 0, nullptr);
    dialog.Prepare();
    EXPECT_EQ(dialog.findChild<QLabel*>("1043")->text(), "Static");
    EXPECT_EQ(Button(dialog, "ButtonOk")->text(), "OK");
    EXPECT_TRUE(dialog.windowTitle().isEmpty());
    EXPECT_EQ(dialog.CharHeight(), QFontMetrics(dialog.font()).height());
}

TEST(CKs_KakuDlg, MissingKeyShowsTheDefaultText) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(150, 0, nullptr);
    dialog.Prepare();
    // "Message Not Define" has one field: font 0, which is never defined.
    EXPECT_EQ(dialog.findChild<QLabel*>("1043")->text(), "Static");
}

TEST(CKs_KakuDlg, EveryControlSpeaksToAScreenReader) {
    KakuFixture f;
    CKs_KakuDlg& dialog = f.Make(kaku::kAskRetry, kaku::kAskRetry2, nullptr);
    test::ExpectEveryControlSpoken(dialog, "KakuDlg");
}

}  // namespace
}  // namespace kesto
