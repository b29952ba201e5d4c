// The all-parts dialog over the drawing area: where Info and the views put it, its buttons and
// list, the sort buttons, the marks of the parts in view, and the pick of a clicked line.
#include "ui/dialogs/CKs_PartsAllDlg.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <string>
#include <vector>

#include "common/SpokenControls.h"
#include "common/WindowJob.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/ExtentList.h"
#include "view/Colours.h"

namespace kesto {
namespace {

// BT1's font 1 is 16 pixels high (FontSet1=16), so the buttons are 32 high.
const char* const kPartsAllSection =
    "[PartsAlInfDlg]\n"
    "BT1=1,Material\n"
    "BT2=1,?????\n"
    "BT3=2,Qty\n"
    "BT4=1,No\n"
    "BT5=1,Name\n"
    "LIST=1,x\n";

// The test job's boxes, processes and first three parts, before a fourth of each test's own.
const std::string kJobHead =
    "#BoxInfo\n"
    "PAL,1,0,0,2000,0,2000\n"
    "SB1,100,0,10,100,10,100\n"
    "SB2,101,0,0,50,0,50\n"
    "#End\n"
    "#KouteiInfo\n"
    "1,Cut,PAL1\n"
    "2,Bend,PAL1\n"
    "#End\n"
    "#PartsInfo\n"
    "A1,1,PartA,TextA,200,150,1,5,1,0,5,,,1.0,G1,0000,,0,,X0,10\n"
    "A2,1,PartB,TextB,100,100,0,3,100,0,5,,,1.0,G1,0000,,0,,X0,10\n"
    "A3,2,PartC,TextC,50,40,10,2,1,0,5,,,1.0,G2,0000,,0,,X0,10\n";

// A fourth part in process 1 (Seq 4): the same Text1 as Seq 1, Text3 "SUS", no sheet limit.
const std::string kJobWithFourthPart =
    kJobHead + "A4,1,PartD,TextA,150,50,11,4,1,0,0,,SUS,2.0,G1,0000,,0,,X0,10\n#End\n";

// Seq 4 is 1200 long, more than pallet PAL1's 1000: no corner of any block can take it.
const std::string kJobWithWidePart =
    kJobHead + "A4,1,PartW,TextW,1200,100,1,3,1,0,5,,,1.0,G1,0000,,0,,X0,10\n#End\n";

// PAL1's blocks are its cells, 300 x 250.
const QString kWidePartWhy =
    QStringLiteral("No block is large enough: part 1200 x 100, largest block 300 x 250");

// The drawing area's top follows the combo box.
struct PartsAllJob : test::ShownWindowJob {
    explicit PartsAllJob(const std::string& jobText = {})
        : ShownWindowJob(test::KestoIniWithDrawing() + kPartsAllSection, jobText) {}
    CKs_PartsAllDlg& Dlg() { return *D().PartsAllDialog(); }
    QListWidget& List() { return *Dlg().List(); }
    void Click(QWidget* parent, const char* name) {
        QTest::mouseClick(parent->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    void ClickMain(const char* name) { Click(&D(), name); }
    void ClickSort(const char* name) { Click(&Dlg(), name); }
    void ClickLine(int row) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::NoModifier,
                          List().visualItemRect(List().item(row)).center());
    }
    // The Seq column of every line.
    std::vector<std::string> Seqs() {
        std::vector<std::string> seqs;
        for (int i = 0; i < List().count(); ++i)
            seqs.push_back(List().item(i)->text().left(3).toStdString());
        return seqs;
    }
    QStringList Lines() {
        QStringList lines;
        for (int i = 0; i < List().count(); ++i)
            lines << List().item(i)->text();
        return lines;
    }
    int AreaTop() { return D().DrawArea()->geometry().top(); }
    HaichiInfo& FirstStackOf(int seq) {
        for (HaichiInfo& h : job.App().HaichiList) {
            if (h.Part->Seq == seq)
                return h;
        }
        throw std::runtime_error("no stack");
    }
};

// Process 1 of the test job, Seq 1 on pallet 1 (in view), Seq 2 in small box 1:
// "%.3d %s %s %-16s %6.3lf %s %s %4d/%-4d %9.4lf x %9.4lf %-32.32s".
const std::string kBlank16(16, ' ');
const QString kLineOne = QString::fromStdString(
    "001 * PL  " + kBlank16 + "  1.000 U    5    5/5     200.0000 x  150.0000 TextA" +
    std::string(27, ' '));
const QString kLineTwo = QString::fromStdString("002   BX1 " + kBlank16 +
                                                "  1.000      5    0/3     100.0000 x  100.0000 "
                                                "TextB" +
                                                std::string(27, ' '));

TEST(CKs_PartsAllDlg, MadeHiddenWithSortKey10) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    EXPECT_FALSE(s.Dlg().isVisible());
    EXPECT_EQ(s.Dlg().SortKey(), 10);
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Hidden);
    EXPECT_EQ(s.List().count(), 0);
    EXPECT_EQ(s.List().selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_FALSE(s.List().isSortingEnabled());
    auto* extentList = qobject_cast<ExtentList*>(s.Dlg().List());
    ASSERT_NE(extentList, nullptr);
    EXPECT_EQ(extentList->HorizontalExtent(), 850);
}

TEST(CKs_PartsAllDlg, EveryControlSpeaksToAScreenReader) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    test::ExpectEveryControlSpoken(s.Dlg(), "PartsAlInfDlg");
    EXPECT_EQ(s.List().accessibleName(), "All parts");
}

TEST(CKs_PartsAllDlg, InfoInDanmenShowsItOverTheLowerHalfOfTheDrawingArea) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Shown);
    ASSERT_TRUE(s.Dlg().isVisible());
    // x = 324 + 2, width = 1598 - 324 - 5 = 1269; H = 898 - top, y = top + H / 2, H / 2 - 2.
    const int top = s.AreaTop();
    const int h = 898 - top;
    EXPECT_EQ(s.Dlg().geometry(), QRect(326, top + h / 2, 1269, h / 2 - 2));
    EXPECT_EQ(s.Lines(), QStringList({kLineOne, kLineTwo}));
}

TEST(CKs_PartsAllDlg, InfoInFlatShowsItOverTheWholeDrawingArea) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    ASSERT_TRUE(s.Dlg().isVisible());
    const int top = s.AreaTop();
    EXPECT_EQ(s.Dlg().geometry(), QRect(326, top, 1269, 898 - top));
}

TEST(CKs_PartsAllDlg, FlatHidesItAndAnotherViewKeepsItShown) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    s.ClickMain("B-PALLET4");
    EXPECT_TRUE(s.Dlg().isVisible());
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Shown);
    s.ClickMain("B-FLAT");
    EXPECT_FALSE(s.Dlg().isVisible());
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Hidden);
    // Hidden, it lies over the lower half again.
    const int top = s.AreaTop();
    const int h = 898 - top;
    EXPECT_EQ(s.Dlg().geometry(), QRect(326, top + h / 2, 1269, h / 2 - 2));
}

TEST(CKs_PartsAllDlg, InfoAgainHidesIt) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.ClickMain("B-INFO");
    EXPECT_FALSE(s.Dlg().isVisible());
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Hidden);
}

TEST(CKs_PartsAllDlg, ButtonsAndListFromTheClientSizeWithTheirCaptions) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    // bh = 2 x 16 = 32, bw = (1269 - 10) / 5 = 251; the list from y 42, 1259 wide.
    const std::pair<const char*, const char*> buttons[] = {
        {"BT4", "No"}, {"BT1", "Material"}, {"BT2", "Size"}, {"BT3", "Qty"}, {"BT5", "Name"}};
    for (int i = 0; i < 5; ++i) {
        auto* button = s.Dlg().findChild<QPushButton*>(buttons[i].first);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->geometry(), QRect(5 + 251 * i, 5, 251, 32)) << buttons[i].first;
        EXPECT_EQ(button->text(), buttons[i].second);  // "?????" keeps the template's "Size"
    }
    EXPECT_EQ(s.List().geometry(), QRect(5, 42, 1259, s.Dlg().height() - 47));
    EXPECT_EQ(s.List().font().pixelSize(), 16);
    EXPECT_EQ(s.Dlg().findChild<QPushButton*>("BT3")->font().pixelSize(), 20);
}

TEST(CKs_PartsAllDlg, ResizeLaysTheShownDialogOutAgain) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    // At 1400 x 800: left 1400 * 0.2 + 4 = 284, right 1398: x 286, width 1398 - 284 - 5 = 1109.
    s.D().resize(1400, 800);
    QTRY_COMPARE(s.Dlg().geometry().width(), 1109);
    EXPECT_EQ(s.Dlg().geometry().x(), 286);
}

TEST(CKs_PartsAllDlg, SortButtonsReorderTheVisibleLines) {
    PartsAllJob s(kJobWithFourthPart);
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    using Seqs = std::vector<std::string>;
    EXPECT_EQ(s.Seqs(), Seqs({"001", "002", "004"}));
    // Each fill sorts the parts in PartsList order, which the job's own sort made 1, 4, 2
    // (process, group, decreasing size). Press by press, the key and the selection sort:
    const std::pair<const char*, Seqs> presses[] = {
        {"BT4", {"004", "002", "001"}},  // 11
        {"BT4", {"001", "002", "004"}},  // 10
        {"BT5", {"001", "004", "002"}},  // 51: TextA, TextA, TextB: nothing moves
        {"BT5", {"002", "004", "001"}},  // 50: TextB swapped with Seq 1, so 4 before 1
        {"BT2", {"002", "004", "001"}},  // 30: SizeX 100, 150, 200
        {"BT2", {"001", "004", "002"}},  // 31
        {"BT2", {"004", "002", "001"}},  // 32: SizeY 50, 100, 150
        {"BT2", {"001", "002", "004"}},  // 33
        {"BT3", {"002", "004", "001"}},  // 40: Num1 3, 4, 5
        {"BT3", {"001", "004", "002"}},  // 41
        {"BT1", {"001", "002", "004"}},  // 21: "", "SUS", "": "SUS" goes last
        {"BT1", {"004", "001", "002"}},  // 20: "SUS" swapped with Seq 1
    };
    for (const auto& [button, order] : presses) {
        s.ClickSort(button);
        EXPECT_EQ(s.Seqs(), order) << button << " key " << s.Dlg().SortKey();
    }
    EXPECT_EQ(s.Dlg().SortKey(), 20);
}

TEST(CKs_PartsAllDlg, FourthPartShowsNoSheetLimitAndDirectionUD) {
    PartsAllJob s(kJobWithFourthPart);
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    ASSERT_EQ(s.List().count(), 3);
    // After "004 * PL- ": Text3 "SUS" in 16, thickness " 2.000", "UD", "---".
    const QString expected =
        QString::fromStdString("SUS" + std::string(13, ' ') + "  2.000 UD ---");
    EXPECT_TRUE(s.List().item(2)->text().mid(10).startsWith(expected))
        << s.List().item(2)->text().toStdString();
}

TEST(CKs_PartsAllDlg, LineClickShowsEveryPieceOfThePartAndKeepsItsFirstStack) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    HaichiInfo& stack = s.FirstStackOf(1);
    const std::optional<IntRect> r = s.Drawing().ScreenRect(stack);
    ASSERT_TRUE(r.has_value());
    EXPECT_EQ(s.AreaPixel(*r), colour::kPartNormal);
    s.ClickLine(0);
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), stack.Id);
    EXPECT_EQ(s.Drawing().Selected().Picked(), kNoStack);
    EXPECT_EQ(s.AreaPixel(*r), colour::kSamePart);  // 252, 255, 108
}

TEST(CKs_PartsAllDlg, LineOfAPartWithoutStacksOnlyDrawsTheOldPickBack) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    HaichiInfo& stack = s.FirstStackOf(1);
    const IntRect r = *s.Drawing().ScreenRect(stack);
    s.ClickLine(0);
    s.ClickLine(1);  // Seq 2 is in a small box
    EXPECT_EQ(s.AreaPixel(r), colour::kPartNormal);
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), stack.Id);
}

TEST(CKs_PartsAllDlg, MarkFollowsThePalletInViewAndTheProcess) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    EXPECT_TRUE(s.List().item(0)->text().startsWith("001 * PL "));
    s.D().findChild<QComboBox*>("LIST-PALLET-SEL")->setCurrentIndex(1);
    EXPECT_TRUE(s.List().item(0)->text().startsWith("001   PL "));  // pallet 2 holds nothing
    s.D().findChild<QListWidget*>("LIST-SCH")->setCurrentRow(1);
    ASSERT_EQ(s.List().count(), 1);
    EXPECT_TRUE(s.List().item(0)->text().startsWith("003 "));
}

TEST(CKs_PartsAllDlg, DownRefillsItWithTheSetAsidePart) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.D().findChild<QListWidget*>("LIST-SBOX")->setCurrentRow(0);
    s.ClickMain("B-STOT");
    EXPECT_TRUE(s.List().item(1)->text().startsWith("002   PL- "));  // set aside, 0 of 3
}

TEST(CKs_PartsAllDlg, RetryKeepsTheSortKeyAndRefills) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.ClickSort("BT4");
    s.ClickMain("B-RETRY");
    EXPECT_EQ(s.Dlg().SortKey(), 11);
    EXPECT_EQ(s.Seqs(), (std::vector<std::string>{"002", "001"}));
}

TEST(CKs_PartsAllDlg, SelectLineOfPartSelectsThePickedPartsLineWithoutPicking) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.Drawing().Select().SetPicked(s.FirstStackOf(1).Id);
    s.Dlg().SelectLineOfPart();
    EXPECT_EQ(s.List().currentRow(), 0);
    EXPECT_TRUE(s.List().item(0)->isSelected());
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), kNoStack);
    s.Drawing().Select().SetPicked(kNoStack);
    s.Dlg().SelectLineOfPart();
    EXPECT_TRUE(s.List().selectedItems().isEmpty());
}

TEST(CKs_PartsAllDlg, PickInTheDrawingSelectsThePartsLine) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-DANMEN");
    s.ClickMain("B-INFO");
    HaichiInfo& stack = s.FirstStackOf(1);
    const IntRect r = *s.Drawing().ScreenRect(stack);
    EXPECT_TRUE(s.List().selectedItems().isEmpty());
    QTest::mouseClick(s.D().DrawArea(), Qt::LeftButton, Qt::NoModifier,
                      QPoint((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2));
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), stack.Id);
    ASSERT_EQ(s.List().selectedItems().size(), 1);
    EXPECT_EQ(s.List().currentRow(), 0);
}

TEST(CKs_PartsAllDlg, SelectLineOfSeqFromTheDrawingsPick) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.Dlg().SelectLineOfSeq(2);
    EXPECT_EQ(s.List().currentRow(), 1);
    EXPECT_TRUE(s.List().item(1)->isSelected());
    s.Dlg().SelectLineOfSeq(9);
    EXPECT_TRUE(s.List().selectedItems().isEmpty());
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), kNoStack);
}

TEST(CKs_PartsAllDlg, FillForAnUnknownProcessKeepsTheLines) {
    PartsAllJob s;
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.Dlg().Fill(7);
    EXPECT_EQ(s.List().count(), 2);
}

TEST(CKs_PartsAllDlg, AShortPartsLineSaysWhyInItsTooltipAndOtherLinesSayNothing) {
    PartsAllJob s(kJobWithWidePart);
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    ASSERT_TRUE(s.Dlg().isVisible());
    ASSERT_EQ(s.Seqs(), (std::vector<std::string>{"001", "002", "004"}));
    EXPECT_EQ(s.List().item(2)->toolTip(), kWidePartWhy);
    // Seq 1 is wholly placed, Seq 2 goes to a small box.
    EXPECT_TRUE(s.List().item(0)->toolTip().isEmpty());
    EXPECT_TRUE(s.List().item(1)->toolTip().isEmpty());
}

TEST(CKs_PartsAllDlg, ChoosingTheLineOfAPartWithoutStacksShowsItAndWhyInTheInformationPanel) {
    PartsAllJob s(kJobWithWidePart);
    ASSERT_TRUE(s.shown);
    s.ClickMain("B-INFO");
    s.ClickLine(2);
    CKs_PartsInfo& info = *s.D().PartsInfoPanel();
    EXPECT_EQ(info.toolTip(), kWidePartWhy);
    // The fourth line is written in the shortage colour.
    int shortPixels = 0;
    const QImage& image = info.Image();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            shortPixels += test::PixelAt(image, x, y) == colour::kPanelShort ? 1 : 0;
    }
    EXPECT_GT(shortPixels, 50);
    // A line of a wholly placed part shows that part, with nothing to explain.
    s.ClickLine(0);
    EXPECT_TRUE(info.toolTip().isEmpty());
}

}  // namespace
}  // namespace kesto
