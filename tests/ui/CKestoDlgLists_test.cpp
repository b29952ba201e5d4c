// The main window's lists, paging and LoadAndPlace.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>

#include "common/WindowJob.h"
#include "rules/ListLines.h"

namespace kesto {
namespace {

QStringList Lines(CKestoDlg& dialog, const char* name) {
    QStringList lines;
    auto* list = dialog.findChild<QListWidget*>(name);
    for (int i = 0; i < list->count(); ++i)
        lines << list->item(i)->text();
    return lines;
}

QPushButton* Button(CKestoDlg& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(name);
}

PartsInfo& PartBySeq(CKestoApp& app, int seq) {
    for (PartsInfo& part : app.PartsList) {
        if (part.Seq == seq)
            return part;
    }
    throw std::runtime_error("no such part");
}

TEST(CKestoDlgLists, ScheduleAndPalletComboAfterTheFirstPlacement) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SCH"),
              QStringList({"01 Cut Pallet-One", "02 Bend Pallet-One"}));
    EXPECT_EQ(job.Dialog->findChild<QListWidget*>("LIST-SCH")->currentRow(), 0);
    auto* combo = job.Dialog->findChild<QComboBox*>("LIST-PALLET-SEL");
    ASSERT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->itemText(0), "P-01");
    EXPECT_EQ(combo->itemText(1), "P-02");
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(job.Shown().Pallet(), 1);
    EXPECT_EQ(job.Shown().Koutei(), 1);
    EXPECT_FALSE(job.Dialog->Ended());
    EXPECT_TRUE(job.Svc.Op.KakuNumbers.empty());
}

TEST(CKestoDlgLists, AllPartsLineOfAShortPartSaysWhyInItsTooltip) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    // Five more pieces of Seq 1 than were placed: its blocks have room for them.
    PartBySeq(job.App(), 1).Quantity = 10;
    auto* list = job.Dialog->findChild<QListWidget*>("LIST-PTALL");
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->toolTip(),
              QStringLiteral("A block has room for it: Retry or Auto places the rest"));
    // Seq 2 goes to a small box: not short on the pallets.
    EXPECT_TRUE(list->item(1)->toolTip().isEmpty());
}

TEST(CKestoDlgLists, AllPartsListShowsThePlacedJobOfTheProcess) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    const PartsInfo& a1 = PartBySeq(job.App(), 1);
    EXPECT_EQ(a1.PiecesPlaced, 5);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-PTALL"),
              QStringList(
                  {"001    5/5    P  U  TextA                             200.0000 x  150.0000",
                   "002    0/3          TextB                             100.0000 x  100.0000"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-TORIOKI").isEmpty());
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX"), QStringList({"002    3 TextB"}));
}

TEST(CKestoDlgLists, PartlyPlacedPartShowsPMinusAndItsRemainderSetAside) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    PartBySeq(job.App(), 1).PiecesPlaced = 3;
    job.Dialog->FillAllParts(1);
    job.Dialog->FillTorioki(1);
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-PTALL").value(0).startsWith("001    3/5    P- U  TextA"));
    EXPECT_EQ(Lines(*job.Dialog, "LIST-TORIOKI"), QStringList({"001    2/5    TextA"}));
}

TEST(CKestoDlgLists, FillForAMissingProcessKeepsTheOldLines) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->FillAllParts(7);
    job.Dialog->FillSmallBox(7, 100);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-PTALL").size(), 2);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX").size(), 1);
}

TEST(CKestoDlgLists, LinesAreSortedCaseInsensitively) {
    test::WindowJob job;
    job.Install.Write("job/job.txt",
                      "#BoxInfo\nPAL,1,0,0,2000,0,2000\n#End\n#KouteiInfo\n2,b,PAL1\n1,a,PAL1\n"
                      "3,C,PAL1\n#End\n");
    ASSERT_TRUE(job.Open());
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SCH"),
              QStringList({"01 a Pallet-One", "02 b Pallet-One", "03 C Pallet-One"}));
}

TEST(CKestoDlgLists, SelectingAProcessShowsItsParts) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->findChild<QListWidget*>("LIST-SCH")->setCurrentRow(1);
    EXPECT_EQ(job.Shown().Koutei(), 2);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-PTALL"),
              QStringList(
                  {"003    2/2    P  D  TextC                              50.0000 x   40.0000"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-SBOX").isEmpty());
}

TEST(CKestoDlgLists, SmallBoxButtonSelectsItsBox) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    QTest::mouseClick(Button(*job.Dialog, "B-SBOX2"), Qt::LeftButton);
    EXPECT_EQ(job.Shown().Box(), 101);
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-SBOX").isEmpty());
    QTest::mouseClick(Button(*job.Dialog, "B-SBOX1"), Qt::LeftButton);
    EXPECT_EQ(job.Shown().Box(), 100);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX").size(), 1);
}

// Paging on a started window whose box flags the test sets.
struct PagingJob {
    explicit PagingJob(std::initializer_list<int> boxes) {
        Job.Start();
        Job.App().BoxFlags.fill(0);
        for (int n : boxes)
            Job.App().BoxFlags[n] = 1;
        Job.Dialog->LabelPass();
        Job.Dialog->CountBoxPages();
        Job.Dialog->TurnBoxPage(0);
        Job.Dialog->UpdateBoxButtons();
    }
    test::WindowJob Job;
};

TEST(CKestoDlgLists, HighestBoxThreeGivesOnePage) {
    PagingJob p({1, 3});
    CKestoDlg& d = *p.Job.Dialog;
    EXPECT_EQ(d.BoxPageCount(), 1);
    EXPECT_FALSE(Button(d, "B-SBOXN")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOXP")->isEnabled());
    EXPECT_TRUE(Button(d, "B-SBOX1")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOX2")->isEnabled());
    EXPECT_TRUE(Button(d, "B-SBOX3")->isEnabled());
    EXPECT_EQ(d.TurnBoxPage(1), 0);
    EXPECT_EQ(d.TurnBoxPage(-1), 0);
}

TEST(CKestoDlgLists, HighestBoxFourGivesTwoPagesAndPageTwoShowsFourToSix) {
    PagingJob p({1, 4});
    CKestoDlg& d = *p.Job.Dialog;
    EXPECT_EQ(d.BoxPageCount(), 2);
    EXPECT_TRUE(Button(d, "B-SBOXN")->isEnabled());
    QTest::mouseClick(Button(d, "B-SBOXN"), Qt::LeftButton);
    EXPECT_EQ(d.BoxPage(), 2);
    EXPECT_EQ(Button(d, "B-SBOX1")->text(), "Box4");
    EXPECT_EQ(Button(d, "B-SBOX2")->text(), "Box5");
    EXPECT_EQ(Button(d, "B-SBOX3")->text(), "Box6");
    EXPECT_TRUE(Button(d, "B-SBOX1")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOX2")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOX3")->isEnabled());
    EXPECT_TRUE(Button(d, "B-SBOX1")->isChecked());
    EXPECT_EQ(p.Job.Shown().Box(), 103);
    EXPECT_FALSE(Button(d, "B-SBOXN")->isEnabled());
    EXPECT_TRUE(Button(d, "B-SBOXP")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOXN")->isChecked());
    EXPECT_EQ(d.TurnBoxPage(1), 0);
    EXPECT_EQ(d.BoxPage(), 2);
    QTest::mouseClick(Button(d, "B-SBOXP"), Qt::LeftButton);
    EXPECT_EQ(d.BoxPage(), 1);
    EXPECT_EQ(p.Job.Shown().Box(), 100);
    EXPECT_FALSE(Button(d, "B-SBOXP")->isEnabled());
    EXPECT_EQ(Button(d, "B-SBOX1")->text(), "Box1");
}

TEST(CKestoDlgLists, BoxesOneAndFiveGiveTwoPages) {
    PagingJob p({1, 5});
    EXPECT_EQ(p.Job.Dialog->BoxPageCount(), 2);
}

TEST(CKestoDlgLists, NoBoxGivesOnePageWithAllButtonsDisabled) {
    PagingJob p({});
    CKestoDlg& d = *p.Job.Dialog;
    EXPECT_EQ(d.BoxPageCount(), 1);
    EXPECT_FALSE(Button(d, "B-SBOX1")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOX2")->isEnabled());
    EXPECT_FALSE(Button(d, "B-SBOX3")->isEnabled());
    EXPECT_EQ(p.Job.Shown().Box(), 100);
    EXPECT_EQ(Lines(d, "LIST-SBOX"), QStringList({"002    3 TextB"}));
}

TEST(CKestoDlgLists, NoSmallBoxDefinedDisablesDownAndUp) {
    test::WindowJob job;
    job.Install.Write("pallet.txt",
                      "P1,PAL1,0,0,1000,800,500,0,0,300,250,10,10,3,3,0,0,Pallet-One\n");
    job.Install.Write("job/job.txt",
                      "#BoxInfo\nPAL,1,0,0,2000,0,2000\n#End\n#KouteiInfo\n1,Cut,PAL1\n#End\n"
                      "#PartsInfo\nA1,1,PartA,TextA,200,150,1,5,1,0,5,,,1.0,G1,0000,,0,,X0,10\n"
                      "#End\n");
    ASSERT_TRUE(job.Open());
    EXPECT_FALSE(job.Dialog->findChild<QPushButton*>("B-STOT")->isEnabled());
    EXPECT_FALSE(job.Dialog->findChild<QPushButton*>("B-TTOS")->isEnabled());
}

TEST(CKestoDlgLists, PalletCountZeroLeavesTheComboEmptyAndNoBlocks) {
    test::WindowJob job;
    std::string ini = test::kDefaultKestoIni;
    ini.replace(ini.find("PalletInfo=2,P"), 14, "PalletInfo=0,P");
    job.Install.Write("msg/Kesto.ini", ini);
    job.Start();
    job.Dialog->FillPalletSelect();
    EXPECT_EQ(job.Dialog->findChild<QComboBox*>("LIST-PALLET-SEL")->count(), 0);
    EXPECT_EQ(job.Shown().Pallet(), 1);
    job.Dialog->OnInitDialog();
    EXPECT_EQ(job.App().Blocks.Count(), 0);
}

TEST(CKestoDlgLists, JobCheckFailureRunsTheCancelHandling) {
    test::WindowJob job;
    job.Install.Write("job/job.txt",
                      "#BoxInfo\nPAL,1,0,0,2000,0,2000\n#End\n#KouteiInfo\n1,Cut,NOPAL\n#End\n"
                      "#PartsInfo\nA1,1,PartA,TextA,200,150,1,5,1,0,5,,,1.0,G1,0000,,0,,X0,10\n"
                      "#End\n");
    ASSERT_TRUE(job.Open());
    ASSERT_FALSE(job.Svc.Op.KakuNumbers.empty());
    EXPECT_EQ(job.Svc.Op.KakuNumbers.front(), std::make_pair(1, 0));
    EXPECT_TRUE(job.Dialog->Ended());
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_TRUE(job.Install.Exists("out/result.csv"));
}

TEST(CKestoDlgLists, JobWithoutScheduleEndsWithCancelBeforePlacing) {
    test::WindowJob job;
    job.Install.Write("job/job.txt", "#BoxInfo\nPAL,1,0,0,2000,0,2000\n#End\n");
    ASSERT_TRUE(job.Open());
    EXPECT_TRUE(job.Dialog->Ended());
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_TRUE(job.Svc.Op.KakuNumbers.empty());
    EXPECT_EQ(job.Dialog->findChild<QListWidget*>("LIST-SCH")->count(), 0);
}

TEST(CKestoDlgLists, LoadAndPlaceResetsTheToggles) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    EXPECT_TRUE(Button(d, "B-HITB")->isChecked());
    EXPECT_FALSE(Button(d, "B-HITS")->isChecked());
    EXPECT_TRUE(Button(d, "B-GRID")->isChecked());
    EXPECT_TRUE(Button(d, "B-NEST-A")->isChecked());
    EXPECT_FALSE(Button(d, "B-3D")->isChecked());
    EXPECT_FALSE(Button(d, "B-BLOCKDRAW")->isChecked());
    EXPECT_TRUE(Button(d, "B-SBOX1")->isChecked());
    EXPECT_EQ(job.Shown().Hit(), HitBy::Block);
    EXPECT_EQ(job.Shown().Grid(), 1);
}

}  // namespace
}  // namespace kesto
