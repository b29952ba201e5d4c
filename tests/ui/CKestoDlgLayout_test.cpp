// The main window's captions, fonts and placement.
#include <gtest/gtest.h>

#include <algorithm>

#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>

#include "common/ImageInk.h"
#include "common/WindowJob.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/ExtentList.h"
#include "view/Controls.h"
#include "view/MainLayout.h"

namespace kesto {
namespace {

QString Text(CKestoDlg& d, const char* name) {
    QWidget* w = d.findChild<QWidget*>(name);
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        return b->text();
    if (auto* l = qobject_cast<QLabel*>(w))
        return l->text();
    return QString();
}

int FontHeight(CKestoDlg& d, const char* name) {
    return d.findChild<QWidget*>(name)->font().pixelSize();
}

struct LabelledJob {
    LabelledJob() {
        Job.Open();
        Job.Dialog->MarkLayoutDue();
        Job.Dialog->LayoutPass();
    }
    test::WindowJob Job;
};

TEST(CKestoDlgLayout, LabelPassSetsTextsAndFontsFromTheMessageFile) {
    LabelledJob l;
    CKestoDlg& d = *l.Job.Dialog;
    EXPECT_EQ(Text(d, "L-SMALLBOX"), "SBoxLabel");
    EXPECT_EQ(Text(d, "L-SCH"), "SchLabel");
    EXPECT_EQ(Text(d, "L-TORIOKI"), "ToriLabel");
    EXPECT_EQ(Text(d, "L-ALLPARTS"), "AllLabel");
    EXPECT_EQ(Text(d, "B-STOT"), "DownX");
    EXPECT_EQ(Text(d, "B-TTOS"), "UpX");
    EXPECT_EQ(Text(d, "B-PTOT"), "LeftX");
    EXPECT_EQ(Text(d, "B-TTOP"), "RightX");
    EXPECT_EQ(Text(d, "B-MAICHG"), "MaiX");
    EXPECT_EQ(Text(d, "L-HIT"), "HitX");
    EXPECT_EQ(Text(d, "B-HITB"), "HitBlock");
    EXPECT_EQ(Text(d, "B-HITS"), "HitSingle");
    EXPECT_EQ(Text(d, "B-3D"), "ThreeD");
    EXPECT_EQ(Text(d, "B-GRID"), "GridX");
    EXPECT_EQ(Text(d, "B-INFO"), "InfoX");
    EXPECT_EQ(Text(d, "B-FLAT"), "FlatX");
    EXPECT_EQ(Text(d, "B-DANMEN"), "DanmenX");
    EXPECT_EQ(Text(d, "B-PALLET2"), "TwoPal");
    EXPECT_EQ(Text(d, "B-PALLET4"), "FourPal");
    EXPECT_EQ(Text(d, "B-OK"), "OkX");
    EXPECT_EQ(Text(d, "B-SBOXP"), "Prev");
    EXPECT_EQ(Text(d, "B-SBOXN"), "Next");
    EXPECT_EQ(Text(d, "B-BLOCKDRAW"), "BlockDraw");
    EXPECT_EQ(FontHeight(d, "L-SMALLBOX"), 16);
    EXPECT_EQ(FontHeight(d, "B-MAICHG"), 12);
    EXPECT_EQ(FontHeight(d, "LIST-PTALL"), 20);
    EXPECT_EQ(FontHeight(d, "LIST-SCH"), 16);
    EXPECT_EQ(FontHeight(d, "LIST-PALLET-SEL"), 12);
}

TEST(CKestoDlgLayout, SmallBoxListScrolls650PixelsAndTheOtherLists720) {
    LabelledJob l;
    CKestoDlg& d = *l.Job.Dialog;
    EXPECT_EQ(d.findChild<ExtentList*>("LIST-SBOX")->HorizontalExtent(), 650);
    EXPECT_EQ(d.findChild<ExtentList*>("LIST-SCH")->HorizontalExtent(), 720);
    EXPECT_EQ(d.findChild<ExtentList*>("LIST-TORIOKI")->HorizontalExtent(), 720);
    EXPECT_EQ(d.findChild<ExtentList*>("LIST-PTALL")->HorizontalExtent(), 720);
}

TEST(CKestoDlgLayout, QuestionMarksChangeTheFontAndKeepTheCaption) {
    LabelledJob l;
    EXPECT_EQ(Text(*l.Job.Dialog, "B-RETRY"), "Retry");
    EXPECT_EQ(FontHeight(*l.Job.Dialog, "B-RETRY"), 20);
}

TEST(CKestoDlgLayout, UndefinedFontLeavesTheControlUntouched) {
    LabelledJob l;
    CKestoDlg& d = *l.Job.Dialog;
    EXPECT_EQ(Text(d, "B-AUTO"), "Auto");  // font 4 is not defined
    EXPECT_EQ(Text(d, "B-CAN"), "Can");    // font 9 is out of range
    EXPECT_NE(FontHeight(d, "B-AUTO"), 16);
}

TEST(CKestoDlgLayout, SmallBoxButtonsTakeTheCaptionPrefixOfTheFirstBox) {
    LabelledJob l;
    CKestoDlg& d = *l.Job.Dialog;
    EXPECT_EQ(Text(d, "B-SBOX1"), "Box1");
    EXPECT_EQ(Text(d, "B-SBOX2"), "Box2");
    EXPECT_EQ(Text(d, "B-SBOX3"), "Box3");
    EXPECT_EQ(FontHeight(d, "B-SBOX3"), 20);
}

TEST(CKestoDlgLayout, ArrangementToggleFollowsIsDirect) {
    LabelledJob l;
    CKestoDlg& d = *l.Job.Dialog;
    CKestoApp& app = l.Job.App();
    app.Settings.IsDirect = 0;
    d.LayoutPass();
    EXPECT_EQ(Text(d, "B-NEST-A"), "NestA");
    EXPECT_EQ(FontHeight(d, "B-NEST-A"), 16);
    app.Settings.IsDirect = 1;
    d.LayoutPass();
    EXPECT_EQ(Text(d, "B-NEST-A"), "NestD");
    EXPECT_EQ(FontHeight(d, "B-NEST-A"), 20);
}

TEST(CKestoDlgLayout, TitleComesFromTitleName) {
    LabelledJob l;
    EXPECT_EQ(l.Job.Dialog->windowTitle(), "KestoMain");
}

TEST(CKestoDlgLayout, ControlsCarryTheirKeysAndNumbers) {
    test::WindowJob job;
    job.Start();
    CKestoDlg& d = *job.Dialog;
    EXPECT_EQ(d.Control(kRetryButton)->objectName(), "B-RETRY");
    EXPECT_EQ(d.Control(kOk)->objectName(), "B-OK");
    EXPECT_EQ(d.Control(kCancel)->objectName(), "B-CAN");
    EXPECT_EQ(d.Control(kPartViewPlace)->objectName(), "1014");
    EXPECT_EQ(d.Control(kInfoPlace)->objectName(), "1040");
    EXPECT_TRUE(d.Control(kPartViewPlace)->isHidden());
    EXPECT_EQ(Text(d, "B-STOT"), "Down");
    EXPECT_EQ(Text(d, "B-SBOX1"), "B1");
    EXPECT_EQ(Text(d, "L-TORIOKI"), "Torioki");
}

void ExpectPlacedAt(int width, int height) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, width, height));
    CKestoDlg& d = *job.Dialog;
    const MainLayout expected = ComputeMainLayout(width, height, d.Control(kPalletCombo)->height());
    for (const auto& [id, r] : expected.Controls) {
        EXPECT_EQ(d.Control(id)->geometry(), QRect(r.X, r.Y, r.Width, r.Height)) << id;
    }
    const IntRect& area = expected.AreaPlacement;
    EXPECT_EQ(job.Dialog->LastLayout().AreaPlacement.Top, area.Top);
    EXPECT_EQ(job.Dialog->LastLayout().InfoPlacement.Bottom, expected.InfoPlacement.Bottom);
    EXPECT_EQ(job.Dialog->LastLayout().ViewPlacement.Top, expected.ViewPlacement.Top);
    EXPECT_EQ(d.DrawArea()->geometry(),
              QRect(area.Left, area.Top, area.Right - area.Left, area.Bottom - area.Top));
    EXPECT_EQ(d.PartsInfoPanel()->geometry().topLeft(),
              QPoint(expected.InfoPlacement.Left, expected.InfoPlacement.Top));
    EXPECT_EQ(d.PartsViewPanel()->geometry(), d.Control(kPartViewPlace)->geometry());
}

TEST(CKestoDlgLayout, ShownAt1600x900EveryControlIsWhereTheRulesPutIt) {
    ExpectPlacedAt(1600, 900);
}

TEST(CKestoDlgLayout, ShownAt1280x1024EveryControlIsWhereTheRulesPutIt) {
    ExpectPlacedAt(1280, 1024);
}

TEST(CKestoDlgLayout, ConcreteRectanglesAt1600x900) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, 1600, 900));
    EXPECT_EQ(job.Dialog->Control(kRetryButton)->geometry(), QRect(564, 24, 115, 42));
    EXPECT_EQ(job.Dialog->Control(kToriokiList)->geometry(), QRect(2, 219, 288, 225));
    EXPECT_EQ(job.Dialog->Control(kOk)->geometry(), QRect(1541, 108, 57, 84));
}

// The pallet box keeps the height it is measured with as the window is first shown, and the
// drawing area starts below it: 900 high, the box's top is 22 + 2 + 135 + 36 + 4 = 199.
TEST(CKestoDlgLayout, ThePalletBoxIsAsHighAsItsTextAndTheAreaStartsBelowIt) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, 1600, 900));
    const QWidget* box = job.Dialog->Control(kPalletCombo);
    const int height = box->sizeHint().height();
    EXPECT_EQ(box->geometry(), QRect(324, 199, 240, height));
    EXPECT_EQ(job.Dialog->DrawArea()->geometry().top(), 199 + height + 2);
}

TEST(CKestoDlgLayout, ResizeLaysTheWindowOutAgain) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, 1600, 900));
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, 1280, 1024));
    EXPECT_EQ(job.Dialog->Control(kRetryButton)->geometry(), QRect(452, 27, 92, 48));
}

TEST(CKestoDlgLayout, ShowingLaysTheWindowOutBeforeItsFirstPicture) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    EXPECT_EQ(job.Dialog->Layout(), LayoutStep::NeverShown);
    job.Dialog->LayoutPass();  // does nothing before the window is shown
    EXPECT_EQ(job.Dialog->Control(kRetryButton)->geometry().topLeft(), QPoint(0, 0));
    job.Dialog->resize(1600, 900);
    job.Dialog->show();
    // No turn of the event loop in between: the first paint finds every control in place.
    EXPECT_EQ(job.Dialog->Layout(), LayoutStep::LaidOut);
    EXPECT_EQ(job.Dialog->Control(kRetryButton)->geometry(), QRect(564, 24, 115, 42));
}

TEST(CKestoDlgLayout, VeryNarrowWindowKeepsTheNegativeRectangles) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->MarkLayoutDue();
    job.Dialog->resize(40, 10);
    job.Dialog->LayoutPass();
    EXPECT_EQ(job.Dialog->LastLayout().InfoPlacement.Bottom, -2);
}

// A text painted alone in a font, black on white.
QImage Painted(const QString& text, const QFont& font) {
    QImage image(400, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(image.rect(), Qt::AlignLeft | Qt::AlignVCenter, text);
    return image;
}

// Every character of a caption has a glyph in the control's font (or its fallback), drawn as
// ink that is neither the font's box for a missing glyph nor a question mark.
void ExpectGlyphs(const QString& caption, const QFont& font, const char* key) {
    const QFontMetrics metrics(font);
    // U+0378 is unassigned: no font has it, so it shows the missing-glyph box.
    const QImage box = Painted(QString(QChar(0x0378)), font);
    const QImage question = Painted("?", font);
    for (const char32_t c : caption.toUcs4()) {
        if (c < 0x80)
            continue;
        const QString one = QString::fromUcs4(&c, 1);
        EXPECT_TRUE(metrics.inFontUcs4(c)) << key << " U+" << std::hex << static_cast<int>(c);
        const QImage glyph = Painted(one, font);
        EXPECT_GT(test::DarkPixels(glyph), 0) << key;
        EXPECT_NE(glyph, box) << key << " U+" << std::hex << static_cast<int>(c);
        EXPECT_NE(glyph, question) << key << " U+" << std::hex << static_cast<int>(c);
    }
}

TEST(CKestoDlgLayout, JapaneseSampleDrawsItsCaptionsWithGlyphs) {
    test::WindowJob job;
    ASSERT_TRUE(test::OpenSampleJob(job, "ja"));
    ASSERT_TRUE(test::ShowLaidOut(*job.Dialog, 1600, 900));
    CKestoDlg& d = *job.Dialog;
    EXPECT_EQ(Text(d, "L-TORIOKI"), QString::fromUtf8("取置"));
    EXPECT_EQ(Text(d, "B-CAN"), QString::fromUtf8("取消"));
    EXPECT_EQ(Text(d, "B-SBOX1"), QString::fromUtf8("箱1"));
    EXPECT_EQ(d.windowTitle(), QString::fromUtf8("Kesto - 2号ライン 部品積付け"));
    const QImage window = d.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int japanese = 0;
    for (size_t i = 0; i < kLabelledControls; ++i) {
        const char* key = kControls[i].Key;
        QWidget* control = d.Control(kControls[i].Id);
        ASSERT_NE(control, nullptr) << key;
        const QString caption = Text(d, control->objectName().toUtf8().constData());
        if (std::all_of(caption.begin(), caption.end(), [](QChar c) { return c.unicode() < 0x80; }))
            continue;
        ++japanese;
        ExpectGlyphs(caption, control->font(), key);
        // The whole caption fits its control: no character is clipped away.
        EXPECT_LE(QFontMetrics(control->font()).horizontalAdvance(caption), control->width())
            << key;
        // The control's place in the window carries the caption's ink.
        EXPECT_GT(test::DarkPixels(window.copy(control->geometry())), 10) << key;
    }
    EXPECT_GE(japanese, 25);
}

}  // namespace
}  // namespace kesto
