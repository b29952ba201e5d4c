#include "cli/BatchReport.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

#include "common/PartFields.h"
#include "common/StackFields.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"

namespace kesto {
namespace {

using test::AddPart;

using test::AddStack;

// A job with one pallet, one process and two parts, one of them placed in two stacks.
class BatchReportTest : public ::testing::Test {
  protected:
    void SetUp() override {
        app_ = std::make_unique<CKestoApp>();
        PalletInfo& pallet = app_->PalletList.Append();
        pallet.No = 1;
        pallet.Name = "PAL-A";
        pallet.LengthX = 1000;
        pallet.LengthY = 800;
        pallet.CellsX = 3;
        pallet.CellsY = 2;
        app_->PalletList.Count = 1;
        app_->BoxFlags[2] = 1;
        KouteiInfo& koutei = app_->KouteiList.Append();
        koutei.No = 1;
        koutei.Name = "CUT";
        koutei.PalletName = "PAL-A";
        app_->KouteiList.Count = 1;
        bracket_ = &AddPart(*app_, {.Code = "A001", .SizeX = 250, .SizeY = 150, .Quantity = 5});
        AddPart(*app_, {.Code = "A002", .SizeX = 250, .SizeY = 150, .Quantity = 3});
        app_->Settings.PalletCount = 2;
        app_->Blocks.Allocate(2);
        app_->Blocks.SetCount(2);
        app_->Blocks[0] = {1, 1, 0, 0, 300, 200};
        app_->Blocks[1] = {1, 2, 0, 0, 300, 200};
        AddStack(*app_, *bracket_,
                 {.Block = 0,
                  .Pieces = 3,
                  .X = 300,
                  .Y = 0,
                  .Corner = kCornerMaxMin,
                  .CountOnPart = true});
        AddStack(*app_, *bracket_,
                 {.Block = 1,
                  .Pieces = 2,
                  .X = 300,
                  .Y = 50,
                  .Corner = kCornerMaxMin,
                  .CountOnPart = true});
    }

    test::TempFolder folder_;
    test::TestServices services_;
    std::unique_ptr<CKestoApp> app_;
    PartsInfo* bracket_ = nullptr;
};

TEST_F(BatchReportTest, InputSummaryListsPalletsBoxesProcessesAndParts) {
    std::ostringstream out;
    ReportInput(*app_, out);
    const std::string text = out.str();
    EXPECT_NE(text.find("Pallets: 1\n  P1 PAL-A"), std::string::npos) << text;
    EXPECT_NE(text.find("Small boxes defined: B2\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  01 CUT on PAL-A\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  001 A001 "), std::string::npos) << text;
    EXPECT_NE(text.find("  002 A002 "), std::string::npos) << text;
}

TEST_F(BatchReportTest, PlacementGroupsStacksByPalletAndNamesShortParts) {
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    const std::string text = out.str();
    EXPECT_NE(
        text.find("  Process 01 CUT on PAL-A\n    Pallet 1\n      A001       3 pcs  corner 4"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("    Pallet 2\n      A001       2 pcs"), std::string::npos) << text;
    EXPECT_NE(text.find("x   50.0000.. 300.0000  y   50.0000.. 200.0000"), std::string::npos)
        << text;
    // The process's pallet was never looked up in this job.
    EXPECT_NE(
        text.find("Parts short:\n  002 A002    placed 0 of 3\n      Process 1 has no pallet\n"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("Stacks across an offset line: none\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("A001    placed"), std::string::npos) << text;
}

TEST_F(BatchReportTest, PlacementReportOnItsThreadWritesWhatReportPlacementWrites) {
    app_->PalletList.Items.front().OffsetB = 20;
    std::ostringstream direct;
    ReportPlacement(*app_, services_.Get(), direct);
    std::ostringstream beside;
    PlacementReportThread report(*app_, services_.Get(), beside);
    report.Wait();
    EXPECT_EQ(beside.str(), direct.str());
    EXPECT_NE(direct.str().find("Parts short:\n"), std::string::npos) << direct.str();
}

TEST_F(BatchReportTest, AShortPartIsFollowedByWhyWithTheFiguresOfTheBlocksTaken) {
    app_->KouteiList.Items.front().Pallet = &app_->PalletList.Items.front();
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    // A002 (250 x 150) would fit either block of 300 x 200, but in every corner it meets the
    // stack of A001 (250 x 150) that stands in it.
    EXPECT_NE(out.str().find("  002 A002    placed 0 of 3\n      Every block that would hold it "
                             "is taken: blocks 2, stacks in them 2 (A001: 2)\n"),
              std::string::npos)
        << out.str();
}

TEST_F(BatchReportTest, StacksAcrossAnOffsetLineAreNamedWithTheAmount) {
    // The lower line at y 20: the stack at y 0 reaches below it by 20, the one at y 50 not.
    app_->PalletList.Items.front().OffsetB = 20;
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    EXPECT_NE(out.str().find("Stacks across an offset line:\n  A001: 20 past the lower offset "
                             "line of pallet 1\n"),
              std::string::npos)
        << out.str();
}

TEST_F(BatchReportTest, ACrossingOrReasonLineEndsAtANulByteOfAName) {
    app_->PalletList.Items.front().OffsetB = 20;
    app_->KouteiList.Items.front().Pallet = &app_->PalletList.Items.front();
    bracket_->Code = std::string("A0\0X1", 5);
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    const std::string text = out.str();
    EXPECT_NE(text.find("stacks in them 2 (A0\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Stacks across an offset line:\n  A0\n"), std::string::npos) << text;
    EXPECT_EQ(text.find('\0'), std::string::npos) << text;
}

TEST_F(BatchReportTest, StackWithoutValidBlockIsLeftOutOfThePalletGroups) {
    app_->HaichiList.front().BlockIndex = 7;
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    EXPECT_EQ(out.str().find("3 pcs"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("2 pcs"), std::string::npos) << out.str();
}

TEST_F(BatchReportTest, ShiftJisNameIsConvertedOnItsLineAndUtf8LinesStayAsTheyAre) {
    // "取置" as the machine's Windows tools write it, and a process name already in UTF-8.
    app_->PalletList.Items.front().Name = "\x8E\xE6\x92\x75";
    app_->KouteiList.Items.front().Name = "\xE5\x88\x87\xE6\x96\xAD";
    std::ostringstream out;
    ReportInput(*app_, out);
    const std::string text = out.str();
    EXPECT_NE(text.find("  P1 \xE5\x8F\x96\xE7\xBD\xAE         1000.0000 x"), std::string::npos)
        << text;
    EXPECT_NE(text.find("  01 \xE5\x88\x87\xE6\x96\xAD on PAL-A\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("\x8E\xE6"), std::string::npos) << text;
}

TEST_F(BatchReportTest, ProcessesInListOrderEachWithItsPalletsInAscendingOrder) {
    KouteiInfo& first = app_->KouteiList.Items.front();
    first.No = 2;
    first.Name = "BEND";
    KouteiInfo& second = app_->KouteiList.Append();
    second.No = 1;
    second.Name = "CUT";
    second.PalletName = "PAL-A";
    app_->KouteiList.Count = 2;
    // Block 1 (pallet 2) of process 2 comes first in the placement list, then block 0.
    app_->Blocks[0].KouteiNo = 2;
    app_->Blocks[1].KouteiNo = 2;
    std::swap(app_->HaichiList.front(), app_->HaichiList.back());
    std::swap(app_->HaichiList.front().Id, app_->HaichiList.back().Id);  // ids stay in list order
    std::ostringstream out;
    ReportPlacement(*app_, services_.Get(), out);
    EXPECT_NE(out.str().find("  Process 02 BEND on PAL-A\n    Pallet 1\n      A001       3 pcs"
                             "  corner 4  x   50.0000.. 300.0000  y    0.0000.. 150.0000\n"
                             "    Pallet 2\n      A001       2 pcs"),
              std::string::npos)
        << out.str();
    EXPECT_NE(out.str().find("  Process 01 CUT on PAL-A\nParts short:"), std::string::npos)
        << out.str();
}

}  // namespace
}  // namespace kesto
