// What the operator's commands do to the job, the lists and the end of the dialog.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "common/WindowJob.h"
#include "ui/dialogs/CKs_PartsInfo.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "view/Colours.h"

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
    // A part set aside holds OK back until its pieces go back.
    EXPECT_FALSE(job.Dialog->findChild<QPushButton*>("B-OK")->isEnabled());
}

TEST(CKestoDlgCommands, UpOutsideASmallBoxShowsMessage4) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Shown().SetBox(99);
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
    job.Shown().SetBox(101);  // box 2 takes 0..50 x 0..50
    Click(*job.Dialog, "B-TTOS");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{5, 6}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 1000);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-TORIOKI").size(), 1);
}

TEST(CKestoDlgCommands, UpWithoutBoxRecordSkipsTheSizeCheck) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.Shown().SetBox(102);
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
    job.Svc.Op.Answer = OkCancel::Cancel;
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{202, 203}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 1000);
}

TEST(CKestoDlgCommands, RetryReadsTheJobAgainAndPlacesItAnew) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    MovePartTwoToTorioki(job);
    job.Dialog->DrawArea()->Drawing().Select().SetBand(BandState::InForce);
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{202, 203}}));
    EXPECT_EQ(PartBySeq(job.App(), 2).Destination, 100);
    EXPECT_EQ(PartBySeq(job.App(), 1).PiecesPlaced, 5);
    EXPECT_EQ(job.Dialog->DrawArea()->Drawing().Selected().Band(), BandState::Off);
    EXPECT_EQ(Lines(*job.Dialog, "LIST-SBOX"), QStringList({"002    3 TextB"}));
    EXPECT_TRUE(Lines(*job.Dialog, "LIST-TORIOKI").isEmpty());
}

TEST(CKestoDlgCommands, RetryKeepsTheChangedDirectSettingAndRereadsBlockDrawing) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.App().Settings.IsDirect = 1;
    job.Shown().SetStoredBlockDraw(1);
    Click(*job.Dialog, "B-RETRY");
    EXPECT_EQ(job.App().Settings.IsDirect, 1);
    EXPECT_EQ(job.Shown().StoredBlockDraw(), 0);
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
    job.Svc.Op.Answer = OkCancel::Cancel;
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
    // The session took the OK: the exit code is 0 without anyone setting the dialog's end.
    EXPECT_EQ(job.App().Run.DialogEnd, OkCancel::Ok);
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
    EXPECT_NE(job.Session->ErrorCode(), 0);
}

TEST(CKestoDlgCommands, DisplayTogglesSetTheirFields) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    Click(d, "B-GRID");
    EXPECT_EQ(job.Shown().Grid(), 0);
    Click(d, "B-3D");
    EXPECT_EQ(job.Shown().Is3D(), 1);
    Click(d, "B-HITS");
    EXPECT_EQ(job.Shown().Hit(), HitBy::Single);
    EXPECT_FALSE(d.findChild<QPushButton*>("B-HITB")->isChecked());
    Click(d, "B-HITB");
    EXPECT_EQ(job.Shown().Hit(), HitBy::Block);
    Click(d, "B-BLOCKDRAW");
    EXPECT_EQ(job.Shown().StoredBlockDraw(), 1);
    d.findChild<QComboBox*>("LIST-PALLET-SEL")->setCurrentIndex(1);
    EXPECT_EQ(job.Shown().Pallet(), 2);
}

TEST(CKestoDlgCommands, ViewButtonsSetThePalletMode) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    Click(d, "B-DANMEN");
    EXPECT_EQ(job.Shown().Mode(), PalletView::Danmen);
    Click(d, "B-PALLET4");
    EXPECT_EQ(job.Shown().Mode(), PalletView::FourPallet);
    Click(d, "B-PALLET2");
    EXPECT_EQ(job.Shown().Mode(), PalletView::TwoPallet);
    Click(d, "B-INFO");
    EXPECT_EQ(job.Dialog->PartsAllState(), Visibility::Shown);
    Click(d, "B-FLAT");
    EXPECT_EQ(job.Shown().Mode(), PalletView::Flat);
    EXPECT_EQ(job.Dialog->PartsAllState(), Visibility::Hidden);
}

TEST(CKestoDlgCommands, ViewAndInfoRefuseDuringABandSelectionWithMessage15) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->DrawArea()->Drawing().Select().SetBand(BandState::InForce);
    Click(*job.Dialog, "B-DANMEN");
    Click(*job.Dialog, "B-INFO");
    EXPECT_EQ(job.Svc.Op.KakuNumbers, std::vector<Kaku>({{15, 0}, {15, 0}}));
    EXPECT_EQ(job.Shown().Mode(), PalletView::Flat);
    EXPECT_EQ(job.Dialog->PartsAllState(), Visibility::Hidden);
}

TEST(CKestoDlgCommands, DirectSwitchesItsCaptionAndDropsABandSelection) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    CKestoDlg& d = *job.Dialog;
    job.Dialog->MarkLayoutDue();
    d.LayoutPass();  // stores both captions
    job.App().Settings.IsDirect = 0;
    Click(d, "B-NEST-A");
    EXPECT_EQ(job.App().Settings.IsDirect, 1);
    EXPECT_EQ(d.findChild<QPushButton*>("B-NEST-A")->text(), "NestD");
    d.DrawArea()->Drawing().Select().SetBand(BandState::InForce);
    Click(d, "B-NEST-A");
    EXPECT_EQ(job.App().Settings.IsDirect, 0);
    EXPECT_EQ(d.findChild<QPushButton*>("B-NEST-A")->text(), "NestA");
    EXPECT_EQ(d.DrawArea()->Drawing().Selected().Band(), BandState::Off);
    EXPECT_EQ(job.Shown().Hit(), HitBy::Single);
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
    ASSERT_EQ(job.App().Settings.OffsetSet, 1);
    job.Dialog->show();
    job.Svc.Op.Answer = OkCancel::Cancel;
    Click(*job.Dialog, "B-OK");
    ExpectStoppedAtTheOffsetWarning(job);
}

TEST(CKestoDlgCommands, CloseStoppedAtTheOffsetWarningEndsWith999AndWritesNothing) {
    test::WindowJob job;
    BreakTheOffsetLimit(job);
    ASSERT_TRUE(job.Open(job.Install.CommandLine("0 799")));
    job.Dialog->show();
    job.Svc.Op.Answer = OkCancel::Cancel;
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

// --- what the commands draw, on the window shown at 1600 x 900 ----------------------------

// The drawing settings with palletCount pallets in the pallet box.
std::string SettingsWithPallets(int palletCount) {
    std::string ini = test::KestoIniWithDrawing();
    ini.replace(ini.find("PalletInfo=2,P"), 14, "PalletInfo=" + std::to_string(palletCount) + ",P");
    return ini;
}

struct ShownJob : test::ShownWindowJob {
    explicit ShownJob(int palletCount = 2) : ShownWindowJob(SettingsWithPallets(palletCount)) {}
    Rgb At(int x, int y) { return test::PixelAt(D().DrawArea()->Image(), x, y); }
    int Count(const QImage& image, Rgb colour) {
        int n = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                n += test::PixelAt(image, x, y) == colour ? 1 : 0;
        }
        return n;
    }
    int CountInArea(Rgb colour) { return Count(D().DrawArea()->Image(), colour); }
    // The screen rectangle of the block cell of process 1, pallet 1 starting at (minX, minY).
    IntRect Cell(double minX, double minY) {
        const std::span<const BlockInfo> blocks = job.App().Blocks.Entries();
        for (size_t i = 0; i < blocks.size(); ++i) {
            const BlockInfo& b = blocks[i];
            if (b.KouteiNo == 1 && b.PalletNo == 1 && b.MinX == minX && b.MinY == minY)
                return Drawing().BlockRects.at(i);
        }
        return {};
    }
};

TEST(CKestoDlgCommands, FourPalletShowsFourCaptionTexts) {
    ShownJob s(4);
    ASSERT_TRUE(s.shown);
    EXPECT_FALSE(s.D().findChild<QLabel*>("1048")->isVisible());
    Click(s.D(), "B-PALLET4");
    EXPECT_EQ(s.job.Shown().Mode(), PalletView::FourPallet);
    const std::pair<const char*, const char*> captions[] = {
        {"1045", "P-01"}, {"1048", "P-02"}, {"1046", "P-03"}, {"1047", "P-04"}};
    for (const auto& [name, text] : captions) {
        auto* label = s.D().findChild<QLabel*>(name);
        ASSERT_NE(label, nullptr) << name;
        EXPECT_TRUE(label->isVisible()) << name;
        EXPECT_EQ(label->text(), text) << name;
    }
    EXPECT_GT(s.CountInArea(colour::kSeparator), 100);
}

TEST(CKestoDlgCommands, GridOffRemovesTheBlackCornerMarks) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    const IntRect cell = s.Cell(80, 520);  // the back left cell, no stack on it
    ASSERT_LT(cell.Left, cell.Right);
    EXPECT_EQ(s.At(cell.Left + 1, cell.Top + 1), colour::kGridMark);
    Click(s.D(), "B-GRID");
    EXPECT_EQ(s.job.Shown().Grid(), 0);
    EXPECT_EQ(s.At(cell.Left + 1, cell.Top + 1), colour::kPalletFrame);
    EXPECT_EQ(s.At(cell.Right - 2, cell.Top + 1), colour::kPalletFrame);
    EXPECT_EQ(s.At(cell.Left + 1, cell.Bottom - 2), colour::kPalletFrame);
    EXPECT_EQ(s.At(cell.Right - 2, cell.Bottom - 2), colour::kPalletFrame);
    Click(s.D(), "B-GRID");
    EXPECT_EQ(s.At(cell.Left + 1, cell.Top + 1), colour::kGridMark);
}

TEST(CKestoDlgCommands, BlockDrawingFillsTheCells) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    s.job.Shown().SetStoredBlockDraw(0);
    s.D().DrawArea()->Refresh();
    const IntRect cell = s.Cell(80, 520);
    const int midX = (cell.Left + cell.Right) / 2;
    const int midY = (cell.Top + cell.Bottom) / 2;
    EXPECT_EQ(s.At(midX, midY), colour::kPalletFrame);
    Click(s.D(), "B-BLOCKDRAW");
    EXPECT_EQ(s.job.Shown().StoredBlockDraw(), 1);
    EXPECT_EQ(s.At(midX, midY), colour::kBlockPlain);
}

TEST(CKestoDlgCommands, ThreeDDrawsTheLayersUpAndLeft) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    const std::optional<IntRect> r = s.Drawing().ScreenRect(s.FirstStack());
    ASSERT_TRUE(r.has_value());
    const int mid = (r->Top + r->Bottom) / 2;
    const int layers = s.FirstStack().Pieces - 1;
    EXPECT_EQ(s.At(r->Left - 2 * layers, mid), colour::kPalletFrame);
    Click(s.D(), "B-3D");
    EXPECT_EQ(s.job.Shown().Is3D(), 1);
    EXPECT_EQ(s.At(r->Left - 2 * layers, mid), colour::kPartPen);
    EXPECT_EQ(s.At(r->Left - 2 * layers - 1, mid), colour::kPalletFrame);
}

TEST(CKestoDlgCommands, DanmenShowsTheHeightLimitLine) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    EXPECT_EQ(s.CountInArea(colour::kHeightLimit), 0);
    Click(s.D(), "B-DANMEN");
    EXPECT_EQ(s.job.Shown().Mode(), PalletView::Danmen);
    EXPECT_GT(s.CountInArea(colour::kHeightLimit), 50);
    EXPECT_GT(s.CountInArea(colour::kLayer10), 20);  // the stack's side-view bar
}

TEST(CKestoDlgCommands, ViewButtonRedrawsThePickedStacksHighlight) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    s.Drawing().Select().SetPicked(s.FirstStack().Id);
    EXPECT_EQ(s.CountInArea(colour::kPicked), 0);
    Click(s.D(), "B-PALLET2");
    EXPECT_GT(s.CountInArea(colour::kPicked), 100);
}

TEST(CKestoDlgCommands, PalletChoiceShowsThatPalletFirst) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    EXPECT_GT(s.CountInArea(colour::kPartNormal), 100);
    s.D().findChild<QComboBox*>("LIST-PALLET-SEL")->setCurrentIndex(1);
    EXPECT_EQ(s.job.Shown().Pallet(), 2);
    EXPECT_EQ(s.D().findChild<QLabel*>("1045")->text(), "P-02");
    EXPECT_EQ(s.CountInArea(colour::kPartNormal), 0);  // every stack is on pallet 1
}

TEST(CKestoDlgCommands, ProcessSelectionClearsThePartViewAndDrawsThatProcess) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    s.D().PartsViewPanel()->ShowSize(200, 150);
    EXPECT_GT(s.Count(s.D().PartsViewPanel()->Image(), colour::kPanelPart), 100);
    List(s.D(), "LIST-SCH")->setCurrentRow(1);
    EXPECT_EQ(s.job.Shown().Koutei(), 2);
    EXPECT_EQ(s.Count(s.D().PartsViewPanel()->Image(), colour::kPanelPart), 0);
    const std::optional<IntRect> first = s.Drawing().ScreenRect(s.FirstStack());
    EXPECT_FALSE(first.has_value());
}

TEST(CKestoDlgCommands, ProcessSelectionRepaintsTheInformationPanelForThatProcess) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    s.Drawing().Select().SetPicked(s.FirstStack().Id);
    s.D().PartsInfoPanel()->Refresh();
    const QImage before = s.D().PartsInfoPanel()->Image().copy();
    EXPECT_GT(s.Count(before, colour::kPanelText), 30);
    // Line 1 names the process in view: "Cut" becomes "Bend".
    List(s.D(), "LIST-SCH")->setCurrentRow(1);
    const QImage& after = s.D().PartsInfoPanel()->Image();
    EXPECT_GT(s.Count(after, colour::kPanelText), 30);
    EXPECT_NE(after, before);
}

TEST(CKestoDlgCommands, SetAsideSelectionDrawsThePartInThePartView) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    MovePartTwoToTorioki(s.job);
    const QImage& image = s.D().PartsViewPanel()->Image();
    EXPECT_GT(s.Count(image, colour::kPanelPart), 100);
    EXPECT_GT(s.Count(image, colour::kPanelText), 10);
}

TEST(CKestoDlgCommands, InfoClosingTheListRepaintsThePanelsAndTheHighlight) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    Click(s.D(), "B-INFO");
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Shown);
    s.Drawing().Select().SetPicked(s.FirstStack().Id);
    EXPECT_EQ(s.Count(s.D().PartsInfoPanel()->Image(), colour::kPanelText), 0);
    Click(s.D(), "B-INFO");
    EXPECT_EQ(s.job.Dialog->PartsAllState(), Visibility::Hidden);
    EXPECT_GT(s.Count(s.D().PartsInfoPanel()->Image(), colour::kPanelText), 30);
    EXPECT_GT(s.CountInArea(colour::kPicked), 100);
}

TEST(CKestoDlgCommands, RetryDrawsTheNewPlacementWithoutHighlight) {
    ShownJob s;
    ASSERT_TRUE(s.shown);
    s.Drawing().Select().SetPicked(s.FirstStack().Id);
    s.D().DrawArea()->DrawParts(DrawMode::Highlight);
    Click(s.D(), "B-RETRY");
    EXPECT_EQ(s.Drawing().Selected().Picked(), kNoStack);
    EXPECT_EQ(s.CountInArea(colour::kPicked), 0);
    EXPECT_GT(s.CountInArea(colour::kPartNormal), 100);
}

}  // namespace
}  // namespace kesto
