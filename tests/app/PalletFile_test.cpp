#include <gtest/gtest.h>

#include <string>

#include "app/InputReaders.h"
#include "common/AllocFailure.h"
#include "common/Installation.h"
#include "support/TextFile.h"

namespace kesto {
namespace {

class PalletFileTest : public ::testing::Test {
  protected:
    Outcome Read(const std::string& text) {
        app.Run.PalletFilePath = installation.Write("pallet/pallets.txt", text);
        return ReadPalletFile(app);
    }
    test::Installation installation;
    CKestoApp app;
};

// A 'P' line with SaveOffsetY = d1 and LengthY = d3, the other lengths numbered.
std::string PLine(int no, double d1, double d3) {
    return "P" + std::to_string(no) + ",PAL,10," + std::to_string(d1) + ",12," +
           std::to_string(d3) + ",14,15,16,17,18,19,20,3,4,21,22,Text\n";
}

TEST_F(PalletFileTest, PLineFillsEveryColumn) {
    ASSERT_TRUE(Read("P7,PAL-A,1,2,3,4,5,6,7,8,9,10,11,12,13,14.5,15.5,Pallet A\n").Ok());
    ASSERT_EQ(app.PalletList.Count, 1);
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.No, 7);
    EXPECT_EQ(p.Name, "PAL-A");
    for (int i = 0; i < 11; ++i)
        EXPECT_DOUBLE_EQ(p.*kPalletDims[i], i + 1);
    EXPECT_EQ(p.CellsX, 12);
    EXPECT_EQ(p.CellsY, 13);
    EXPECT_DOUBLE_EQ(p.StackGapX, 14.5);
    EXPECT_DOUBLE_EQ(p.StackGapY, 15.5);
    EXPECT_EQ(p.ScheduleText, "Pallet A");
    EXPECT_DOUBLE_EQ(p.OffsetA, 0);
    EXPECT_DOUBLE_EQ(p.OffsetB, 0);
    EXPECT_DOUBLE_EQ(p.RackPitch, 0);
    EXPECT_EQ(p.RackXCount, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
}

TEST_F(PalletFileTest, OnlyB3AndB100SetOnlyFlag3) {
    ASSERT_TRUE(Read("B3\nB100\n").Ok());
    for (int n = 0; n < 100; ++n)
        EXPECT_EQ(app.BoxFlags[n], n == 3 ? 1 : 0) << n;
    EXPECT_EQ(app.PalletList.Count, 0);
}

TEST_F(PalletFileTest, BlanksAndTabsAroundB3AreTrimmed) {
    ASSERT_TRUE(Read(" \tB3\t \n").Ok());
    EXPECT_EQ(app.BoxFlags[3], 1);
}

TEST_F(PalletFileTest, BLinesMustMatchExactly) {
    ASSERT_TRUE(Read("B07\nB5x\nB 6\nB0\nB99\n").Ok());
    EXPECT_EQ(app.BoxFlags[7], 0);
    EXPECT_EQ(app.BoxFlags[5], 0);
    EXPECT_EQ(app.BoxFlags[6], 0);
    EXPECT_EQ(app.BoxFlags[0], 0);
    EXPECT_EQ(app.BoxFlags[99], 1);
}

TEST_F(PalletFileTest, InchModeConvertsLengths) {
    app.Settings.InchMode = 1;
    ASSERT_TRUE(Read("P1,A,100,200,0,0,0,0,0,0,0,0,0,5,6,10,20,T\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_DOUBLE_EQ(p.SaveOffsetX, 100 * 0.03937);
    EXPECT_DOUBLE_EQ(p.SaveOffsetY, 200 * 0.03937);
    EXPECT_EQ(p.CellsX, 5);
    EXPECT_DOUBLE_EQ(p.StackGapX, 10 * 0.03937);
    EXPECT_DOUBLE_EQ(p.StackGapY, 20 * 0.03937);
}

TEST_F(PalletFileTest, OffsetAZeroComputesNoOffset) {
    app.Settings.OffsetA = 0;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
}

TEST_F(PalletFileTest, NegativeOffsetAComputesNoOffset) {
    app.Settings.OffsetA = -20;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
}

TEST_F(PalletFileTest, OffsetAKeepsTheRemainingDistance) {
    app.Settings.OffsetA = 20;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 130);
    EXPECT_EQ(app.Settings.OffsetSet, 1);
}

TEST_F(PalletFileTest, OffsetAWithInchMode) {
    app.Settings.InchMode = 1;
    app.Settings.OffsetA = 20;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_NEAR(app.PalletList.Items.front().OffsetA, (150 - 20) * 0.03937, 1e-12);
}

TEST_F(PalletFileTest, OffsetABeyondThePalletIsNotStored) {
    app.Settings.OffsetA = 150;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
}

TEST_F(PalletFileTest, OffsetBKeepsTheValueItself) {
    app.Settings.OffsetB = 30;
    ASSERT_TRUE(Read(PLine(1, 100, 50) + PLine(2, 10, 10)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetB, 30);
    EXPECT_DOUBLE_EQ(app.PalletList.Items.back().OffsetB, 0);
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 1);
}

TEST_F(PalletFileTest, OffsetBWithInchModeIsConverted) {
    app.Settings.InchMode = 1;
    app.Settings.OffsetB = 30;
    ASSERT_TRUE(Read(PLine(1, 100, 50)).Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetB, 30 * 0.03937);
}

TEST_F(PalletFileTest, SixPositionsOnOneXLineKeepFive) {
    ASSERT_TRUE(Read(PLine(1, 0, 0) + "R1X,10,20,30,40,50,60\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.RackXCount, 5);
    EXPECT_EQ(p.RackYCount, 0);
    EXPECT_DOUBLE_EQ(p.RackX[0], 10);
    EXPECT_DOUBLE_EQ(p.RackX[4], 50);
    EXPECT_DOUBLE_EQ(p.RackPitch, 30.0);
}

TEST_F(PalletFileTest, TwoXLinesOfThreeKeepFive) {
    ASSERT_TRUE(Read(PLine(1, 0, 0) + "R1X,1,2,3\nR1X,4,5,6\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.RackXCount, 5);
    EXPECT_DOUBLE_EQ(p.RackX[3], 4);
    EXPECT_DOUBLE_EQ(p.RackX[4], 5);
}

TEST_F(PalletFileTest, XYLineFillsBoth) {
    ASSERT_TRUE(Read(PLine(1, 0, 0) + "R1XY,7,8\nR1Y,9\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.RackXCount, 2);
    EXPECT_EQ(p.RackYCount, 3);
    EXPECT_DOUBLE_EQ(p.RackX[1], 8);
    EXPECT_DOUBLE_EQ(p.RackY[2], 9);
}

TEST_F(PalletFileTest, RLineOfAnUndefinedPalletChangesNothing) {
    ASSERT_TRUE(Read(PLine(1, 0, 0) + "R2X,10\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.RackXCount, 0);
    EXPECT_DOUBLE_EQ(p.RackPitch, 0);
}

TEST_F(PalletFileTest, RLineBeforeAnyPalletIsIgnored) {
    ASSERT_TRUE(Read("R0X,10\n").Ok());
    EXPECT_TRUE(app.PalletList.Empty());
}

TEST_F(PalletFileTest, PitchGoesToTheLastPalletPositionsToTheNamedOne) {
    ASSERT_TRUE(Read(PLine(1, 0, 0) + PLine(2, 0, 0) + "R1X,10\n").Ok());
    const PalletInfo& first = app.PalletList.Items.front();
    const PalletInfo& last = app.PalletList.Items.back();
    EXPECT_EQ(first.RackXCount, 1);
    EXPECT_DOUBLE_EQ(first.RackX[0], 10);
    EXPECT_DOUBLE_EQ(first.RackPitch, 0);
    EXPECT_DOUBLE_EQ(last.RackPitch, 30.0);
    EXPECT_EQ(last.RackXCount, 0);
}

TEST_F(PalletFileTest, DuplicateNumberRacksFillTheFirst) {
    ASSERT_TRUE(Read(PLine(4, 0, 0) + PLine(4, 0, 0) + "R4Y,3\n").Ok());
    EXPECT_EQ(app.PalletList.Count, 2);
    EXPECT_EQ(app.PalletList.Items.front().RackYCount, 1);
    EXPECT_EQ(app.PalletList.Items.back().RackYCount, 0);
}

TEST_F(PalletFileTest, InchModeRacks) {
    app.Settings.InchMode = 1;
    ASSERT_TRUE(Read(PLine(1, 0, 0) + "R1X,100\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_DOUBLE_EQ(p.RackPitch, 1.1811);
    EXPECT_DOUBLE_EQ(p.RackX[0], 100 * 0.03937);
}

TEST_F(PalletFileTest, OtherLinesAreIgnored) {
    ASSERT_TRUE(Read("; comment\n\n   \nX1,2\np1,low\n").Ok());
    EXPECT_TRUE(app.PalletList.Empty());
}

TEST_F(PalletFileTest, EmptyFileReadsNothing) {
    ASSERT_EQ(Read(""), Outcome::Done());
    EXPECT_TRUE(app.PalletList.Empty());
}

TEST_F(PalletFileTest, LastLineWithoutLineFeedIsNotRead) {
    ASSERT_TRUE(Read("P1,A\nP2,B").Ok());
    EXPECT_EQ(app.PalletList.Count, 1);
}

TEST_F(PalletFileTest, CrLfLinesReadAsLf) {
    ASSERT_TRUE(Read("P1,A,5\r\nB5\r\n").Ok());
    EXPECT_EQ(app.BoxFlags[5], 1);
    EXPECT_EQ(app.PalletList.Items.front().Name, "A");
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().SaveOffsetX, 5);
}

TEST_F(PalletFileTest, TextColumnsAreCutToTheirFields) {
    ASSERT_TRUE(Read("P1," + std::string(40, 'N') + ",0,0,0,0,0,0,0,0,0,0,0,0,0,0,0," +
                     std::string(50, 'T') + "\n")
                    .Ok());
    EXPECT_EQ(app.PalletList.Items.front().Name, std::string(31, 'N'));
    EXPECT_EQ(app.PalletList.Items.front().ScheduleText, std::string(31, 'T'));
}

TEST_F(PalletFileTest, BytesBeyondTheLineBufferAreNotSeen) {
    ASSERT_TRUE(Read("P7,N" + std::string(1100, ' ') + ",5\n").Ok());
    const PalletInfo& p = app.PalletList.Items.front();
    EXPECT_EQ(p.No, 7);
    EXPECT_EQ(p.Name, "N");
    EXPECT_DOUBLE_EQ(p.SaveOffsetX, 0);
}

TEST_F(PalletFileTest, MoreThan128FieldsAreCut) {
    std::string line = "R1X";
    for (int i = 0; i < 200; ++i)
        line += "," + std::to_string(i + 1);
    ASSERT_TRUE(Read(PLine(1, 0, 0) + line + "\n").Ok());
    EXPECT_EQ(app.PalletList.Items.front().RackXCount, 5);
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().RackX[4], 5);
}

TEST_F(PalletFileTest, BinaryBytesDoNotDisturbTheReader) {
    constexpr char kText[] = "P3,A\0B,1\n\xFF\x01\x7F\nB2\n";
    ASSERT_TRUE(Read(std::string(kText, sizeof kText - 1)).Ok());
    ASSERT_EQ(app.PalletList.Count, 1);
    EXPECT_EQ(app.PalletList.Items.front().No, 3);
    EXPECT_EQ(app.PalletList.Items.front().Name, "A");
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().SaveOffsetX, 0);
    EXPECT_EQ(app.BoxFlags[2], 1);
}

TEST_F(PalletFileTest, NoPathIsNotFound) {
    app.Run.PalletFilePath = "";
    EXPECT_EQ(ReadPalletFile(app), Outcome::Failed(9020));
}

TEST_F(PalletFileTest, MissingFileIsNotFound) {
    app.Run.PalletFilePath = installation.Path("none.txt");
    EXPECT_EQ(ReadPalletFile(app), Outcome::Failed(9020));
}

TEST_F(PalletFileTest, FileThatCannotBeOpened) {
    app.Run.PalletFilePath = installation.Path("pallet.sock");
    test::MakeUnopenable(app.Run.PalletFilePath);
    EXPECT_EQ(ReadPalletFile(app), Outcome::Failed(9021));
}

TEST_F(PalletFileTest, NoMemoryForAPallet) {
    TextFile file;
    ASSERT_EQ(OpenFile(installation.Write("p.txt", "B4\nP1,A\n"), "rt", file), 1);
    Outcome result;
    {
        test::ScopedAllocFailure failure(sizeof(PalletInfo));
        result = ReadPalletLines(app, file.get());
    }
    EXPECT_EQ(result, Outcome::Failed(9022));
    EXPECT_EQ(app.BoxFlags[4], 1);
    EXPECT_EQ(app.PalletList.Count, 0);
}

}  // namespace
}  // namespace kesto
