// What the operator's commands do to the job, the lists and the end of the dialog.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <filesystem>
#include <string>
#include <vector>

#include "common/WindowJob.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"

namespace kesto {
namespace {

using Kaku = std::pair<int, int>;

QListWidget* List(CKestoDlg& d, const char* name) {
    return d.findChild<QListWidget*>(name);
}

QStringList Lines(CKestoDlg& d, const char* name) {
    QStringList lines;
    for (int i = 0; i < List(d, name)->count(); ++i)
        lines << List(d, name)->item(i)->text();
    return lines;
}

void Click(CKestoDlg& d, const char* name) {
    QTest::mouseClick(d.findChild<QPushButton*>(name), Qt::LeftButton);
}

PartsInfo& PartBySeq(CKestoApp& app, int seq) {
    for (PartsInfo& part : app.PartsList) {
        if (part.Seq == seq)
            return part;
    }
    throw std::runtime_error("no such part");
}

// The part of Seq 2 (3 pieces, 100 x 100) moved from small box 1 into the set-aside list and
// selected.
void MovePartTwoToTorioki(test::WindowJob& job) {
    List(*job.Dialog, "LIST-SBOX")->setCurrentRow(0);
    Click(*job.Dialog, "B-STOT");
    List(*job.Dialog, "LIST-TORIOKI")->setCurrentRow(0);
}

TEST(CKestoDlgCommands, DownWithoutSelectedLineShowsMessage7) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    Click(*job.Dialog, "B-STOT");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{7, 0}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 100);
}

TEST(CKestoDlgCommands, DownSetsThePartAside) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    const PartsInfo& part = PartBySeq(job.App(), 2);
    EXPECT_EQ(part.Destination, 1000);
    EXPECT_EQ(part.PiecesSetAside, 3);
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-SBOX").isEmpty());
    EXPECT_EQ(Lines(*job.Dialog, "LIST-TORIOKI"), QStringList({"002    3/3    TextB"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-PTALL").value(1).startsWith("002    0/3    P- "));
    EXPECT_TRUE(job.Dialog->findChild<QPushButton*>("B-OK")->isEnabled());
}

TEST(CKestoDlgCommands, UpOutsideASmallBoxShowsMessage4) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.App().CurrentBox = 99;
    Click(*job.Dialog, "B-TTOS");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{4, 0}}));
}

TEST(CKestoDlgCommands, UpWithoutSelectedLineShowsMessage7) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    Click(*job.Dialog, "B-TTOS");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{7, 0}}));
}

TEST(CKestoDlgCommands, UpAcceptsASizeEqualToTheUpperBound) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    Click(*job.Dialog, "B-TTOS");  // box 1 takes 10..100 x 10..100; the part is 100 x 100
    EXPECT_TRUE(job.Svc.Op.KakuNumbers.empty());
    const PartsInfo& part = PartBySeq(job.App(), 2);
    EXPECT_EQ(part.Destination, 100);
    EXPECT_EQ(part.PiecesPlaced, 0);
    EXPECT_EQ(part.PiecesSetAside, 0);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX"), QStringList({"002    3 TextB"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-TORIOKI").isEmpty());
    EXPECT_DOUBLE_EQ(job.Dialog->PartsViewPanel()->SizeX(), kNoPartSize);
}

TEST(CKestoDlgCommands, UpRefusesAPartTooBigForTheBoxWithMessages5And6) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.App().CurrentBox = 101;  // box 2 takes 0..50 x 0..50
    Click(*job.Dialog, "B-TTOS");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{5, 6}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 1000);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-TORIOKI").size(), 1);
}

TEST(CKestoDlgCommands, UpWithoutBoxRecordSkipsTheSizeCheck) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.App().CurrentBox = 102;
    Click(*job.Dialog, "B-TTOS");
    EXPECT_TRUE(job.Svc.Op.KakuNumbers.empty());
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 102);
}

TEST(CKestoDlgCommands, UpRefusesAPartWithPiecesOnThePalletsWithMessages11And12) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    PartsInfo& part = PartBySeq(job.App(), 1);
    part.PiecesPlaced = 1;
    job.Dialog->FillTorioki(1);
    part.SizeX = 50;  // fits box 1, so only the pieces on the pallets stop it
    part.SizeY = 50;
    List(*job.Dialog, "LIST-TORIOKI")->setCurrentRow(0);
    Click(*job.Dialog, "B-TTOS");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{11, 12}}));
    EXPECT_EQ(part.Destination, 1);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-TORIOKI"), QStringList({"001    4/5    TextA"}));
}

TEST(CKestoDlgCommands, SetAsideSelectionShowsThePartSize) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    EXPECT_DOUBLE_EQ(job.Dialog->PartsViewPanel()->SizeX(), 100);
    EXPECT_DOUBLE_EQ(job.Dialog->PartsViewPanel()->SizeY(), 100);
}

TEST(CKestoDlgCommands, RetryCancelledChangesNothing) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.Svc.Op.Answer = 2;
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{202, 203}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 1000);
}

TEST(CKestoDlgCommands, RetryReadsTheJobAgainAndPlacesItAnew) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.Dialog->DrawArea()->BandActive = 1;
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{202, 203}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 100);
    EXPECT_EQ(PartBySeq(job.App(), 1).PiecesPlaced, 5);
    EXPECT_EQ(job.Dialog->DrawArea()->BandActive, 0);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX"), QStringList({"002    3 TextB"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-TORIOKI").isEmpty());
}

TEST(CKestoDlgCommands, RetryKeepsTheChangedDirectSettingAndRereadsBlockDrawing) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.App().IsDirect = 1;
    job.App().IsBlockDraw = 1;
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.App().IsDirect, 1);
    EXPECT_EQ(job.App().IsBlockDraw, 0);
    EXPECT_FALSE(job.Dialog->findChild<QPushButton*>("B-BLOCKDRAW")->isChecked());
}

TEST(CKestoDlgCommands, AutoCarriesThePlacedCountsOver) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    PartBySeq(job.App(), 1).PiecesPlaced = 3;
    PartBySeq(job.App(), 2).PiecesPlaced =
        2;  // bound for a box yet placed: goes back to the pallets
    Click(*job.Dialog, "B-AUTO");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{204, 205}}));
    EXPECT_EQ(PartBySeq(job.App(), 1).PartialQuantity, 3);
    EXPECT_EQ(PartBySeq(job.App(), 2).PartialQuantity, 2);
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 0);
    EXPECT_EQ(PartBySeq(job.App(), 3).PartialQuantity, 2);  // its first placement put both pieces
}

TEST(CKestoDlgCommands, AutoCancelledChangesNothing) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    PartBySeq(job.App(), 1).PiecesPlaced = 3;
    job.Svc.Op.Answer = 2;
    Click(*job.Dialog, "B-AUTO");
    EXPECT_EQ(PartBySeq(job.App(), 1).PiecesPlaced, 3);
    EXPECT_EQ(PartBySeq(job.App(), 1).PartialQuantity, 0);
}

TEST(CKestoDlgCommands, OkWritesTheFilesAndEndsWithOne) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    Click(*job.Dialog, "B-OK");
    EXPECT_TRUE(job.Dialog->Ended());
    EXPECT_EQ(job.Dialog->Run(), 1);
    EXPECT_TRUE(job.Install.Exists("out/result.csv"));
    EXPECT_TRUE(job.Install.Exists("out/haichi.csv"));
    // The session took the OK: the exit code is 0 without anyone setting DialogOk.
    EXPECT_EQ(job.App().DialogOk, 1);
    EXPECT_EQ(job.Session->Exit(), 0);
}

TEST(CKestoDlgCommands, CancelWritesTheFilesAndEndsWithTwo) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    Click(*job.Dialog, "B-CAN");
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_TRUE(job.Install.Exists("out/result.csv"));
    EXPECT_EQ(job.Session->Exit(), 100);
}

TEST(CKestoDlgCommands, CloseRunsTheCancelCommand) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->close();
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_TRUE(job.Install.Exists("out/haichi.csv"));
    EXPECT_EQ(job.Session->Exit(), 100);
}

TEST(CKestoDlgCommands, EscapeRunsTheCancelCommand) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->show();
    QTest::keyClick(job.Dialog.get(), Qt::Key_Escape);
    EXPECT_TRUE(job.Dialog->Ended());
    EXPECT_TRUE(job.Install.Exists("out/result.csv"));
}

TEST(CKestoDlgCommands, OkStaysWhenTheResultCannotBeWritten) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    std::filesystem::remove_all(job.Install.Path("out"));
    job.Install.Write("out", "a file where the folder should be");
    Click(*job.Dialog, "B-OK");
    EXPECT_FALSE(job.Dialog->Ended());
    EXPECT_NE(job.App().ErrorCode, 0);
}

TEST(CKestoDlgCommands, DisplayTogglesSetTheirFields) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    Click(d, "B-GRID");
    EXPECT_EQ(job.App().GridFlag, 0);
    Click(d, "B-3D");
    EXPECT_EQ(job.App().Is3D, 1);
    Click(d, "B-HITS");
    EXPECT_EQ(job.App().HitByBlock, 0);
    EXPECT_FALSE(d.findChild<QPushButton*>("B-HITB")->isChecked());
    Click(d, "B-HITB");
    EXPECT_EQ(job.App().HitByBlock, 1);
    Click(d, "B-BLOCKDRAW");
    EXPECT_EQ(job.App().IsBlockDraw, 1);
    d.findChild<QComboBox*>("LIST-PALLET-SEL")->setCurrentIndex(1);
    EXPECT_EQ(job.App().CurrentPallet, 2);
}

TEST(CKestoDlgCommands, ViewButtonsSetThePalletMode) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    Click(d, "B-DANMEN");
    EXPECT_EQ(job.App().PalletMode, 1);
    Click(d, "B-PALLET4");
    EXPECT_EQ(job.App().PalletMode, 2);
    Click(d, "B-PALLET2");
    EXPECT_EQ(job.App().PalletMode, 3);
    Click(d, "B-INFO");
    EXPECT_EQ(job.App().PartsAllState, 2);
    Click(d, "B-FLAT");
    EXPECT_EQ(job.App().PalletMode, 0);
    EXPECT_EQ(job.App().PartsAllState, 1);
}

TEST(CKestoDlgCommands, ViewAndInfoRefuseDuringABandSelectionWithMessage15) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->DrawArea()->BandActive = 1;
    Click(*job.Dialog, "B-DANMEN");
    Click(*job.Dialog, "B-INFO");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{15, 0}, {15, 0}}));
    EXPECT_EQ(job.App().PalletMode, 0);
    EXPECT_EQ(job.App().PartsAllState, 1);
}

TEST(CKestoDlgCommands, DirectSwitchesItsCaptionAndDropsABandSelection) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    job.App().LayoutState = 2;
    d.LayoutPass();  // stores both captions
    job.App().IsDirect = 0;
    Click(d, "B-NEST-A");
    EXPECT_EQ(job.App().IsDirect, 1);
    EXPECT_EQ(d.findChild<QPushButton*>("B-NEST-A")->text(), "NestD");
    d.DrawArea()->BandActive = 1;
    Click(d, "B-NEST-A");
    EXPECT_EQ(job.App().IsDirect, 0);
    EXPECT_EQ(d.findChild<QPushButton*>("B-NEST-A")->text(), "NestA");
    EXPECT_EQ(d.DrawArea()->BandActive, 0);
    EXPECT_EQ(job.App().HitByBlock, 0);
    EXPECT_TRUE(d.findChild<QPushButton*>("B-HITS")->isChecked());
}

// An offset limit the first stack of part 1 breaks: the part checks its lower side against
// OffsetB 799 of an 800 mm pallet. The warning reads its text from Kesto.ini in the system
// folder itself.
void BreakTheOffsetLimit(test::WindowJob& job) {
    job.Install.Write("Kesto.ini", "[KakuDlg]\nMsg209=1,OffsetWarning\n");
    std::string jobFile = test::kDefaultJob;
    const std::string part = "1.0,G1,0000,";
    jobFile.replace(jobFile.find(part), part.size(), "1.0,G1,0100,");
    job.Install.Write("job/job.txt", jobFile);
}

void ExpectStoppedAtTheOffsetWarning(test::WindowJob& job) {
    EXPECT_EQ(job.Svc.Op.Warnings, std::vector<std::string>({"OffsetWarning"}));
    EXPECT_TRUE(job.Session->Ended());
    EXPECT_TRUE(job.Session->Aborted());
    EXPECT_TRUE(job.Dialog->Ended());
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_FALSE(job.Dialog->isVisible());
    EXPECT_EQ(job.Session->Exit(), 999);
    EXPECT_FALSE(job.Install.Exists("out/result.csv"));
    EXPECT_FALSE(job.Install.Exists("out/result.csv_tmp"));
    EXPECT_FALSE(job.Install.Exists("out/haichi.csv"));
    EXPECT_TRUE(job.Svc.Host.UserValues.empty());
}

TEST(CKestoDlgCommands, OkStoppedAtTheOffsetWarningEndsWith999AndWritesNothing) {
    test::WindowJob job;
    BreakTheOffsetLimit(job);
    ASSERT_TRUE(job.Open(job.Install.CommandLine("0 799")));
    ASSERT_EQ(job.App().OffsetSet, 1);
    job.Dialog->show();
    job.Svc.Op.Answer = 2;
    Click(*job.Dialog, "B-OK");
    ExpectStoppedAtTheOffsetWarning(job);
}

TEST(CKestoDlgCommands, CloseStoppedAtTheOffsetWarningEndsWith999AndWritesNothing) {
    test::WindowJob job;
    BreakTheOffsetLimit(job);
    ASSERT_TRUE(job.Open(job.Install.CommandLine("0 799")));
    job.Dialog->show();
    job.Svc.Op.Answer = 2;
    job.Dialog->close();
    ExpectStoppedAtTheOffsetWarning(job);
}

TEST(CKestoDlgCommands, OkPastTheOffsetWarningWritesTheFilesAndEndsWithOne) {
    test::WindowJob job;
    BreakTheOffsetLimit(job);
    ASSERT_TRUE(job.Open(job.Install.CommandLine("0 799")));
    Click(*job.Dialog, "B-OK");
    EXPECT_EQ(job.Svc.Op.Warnings.size(), 1u);
    EXPECT_FALSE(job.Session->Aborted());
    EXPECT_EQ(job.Dialog->Run(), 1);
    EXPECT_TRUE(job.Install.Exists("out/haichi.csv"));
    EXPECT_EQ(job.Session->Exit(), 0);
}

TEST(CKestoDlgCommands, ClosePastTheOffsetWarningChecksAgainInTheCancelCommand) {
    test::WindowJob job;
    BreakTheOffsetLimit(job);
    ASSERT_TRUE(job.Open(job.Install.CommandLine("0 799")));
    job.Dialog->close();
    EXPECT_EQ(job.Svc.Op.Warnings.size(), 2u);
    EXPECT_EQ(job.Dialog->Run(), 2);
    EXPECT_TRUE(job.Install.Exists("out/haichi.csv"));
    EXPECT_EQ(job.Session->Exit(), 100);
}

}  // namespace
}  // namespace kesto
