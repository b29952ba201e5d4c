#include <filesystem>

#include "common/OutputTestKit.h"
#include "output/CKs_FileSave.h"

namespace kesto::test {
namespace {

using Lines = std::vector<std::string>;

class PlacementFile : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        path_ = PathOf("save.csv");
    }
    void AddThreeBoxes() {
        AddBox(0, 10);
        AddBox(1, 11);
        AddBox(2, 12);
    }
    // Two processes; the pallet of the first process gives the offsets x 10, y 5.
    void AddProcessesAndPallets() {
        AddKoutei(1, "PAL-A");
        AddKoutei(2, "PAL-B");
        PalletInfo& b = AddPallet(1, "PAL-B");
        b.SaveOffsetX = 100;
        b.SaveOffsetY = 20;
        PalletInfo& a = AddPallet(2, "PAL-A");
        a.SaveOffsetX = 10;
        a.SaveOffsetY = 5;
    }
    Outcome Write() { return FileSave().WritePlacementFile(path_); }
    // A hundred stack lines of one part, some 10 KB: more than the 64-byte disk below holds
    // and more than one write block of the stream.
    void AddHundredStackLines() {
        AddThreeBoxes();
        PartsInfo& a = AddPart({.Code = "A", .Quantity = 1});
        const int32_t block = AddBlock(1, 1);
        for (int i = 0; i < 100; ++i)
            AddStack(*app_, a, {.Block = block, .Pieces = 1, .CountOnPart = true});
    }
    // Writes over an old save file on a disk that holds 64 bytes.
    Outcome WriteOverAnOldFileOnAFullDisk() {
        WriteFile(path_, "old save\n");
        const FileSizeLimit limit(64);
        return Write();
    }

    std::string path_;
};

TEST_F(PlacementFile, StackLinesCarryOffsetsBoxKindsAndTheStackFields) {
    AddThreeBoxes();
    AddProcessesAndPallets();
    PartsInfo& a = AddPart({.Code = "A",
                            .SizeX = 300,
                            .SizeY = 200,
                            .Quantity = 1,
                            .SaveNumber = 7,
                            .PieceHeight = 1.5});
    HaichiInfo& stack =
        AddStack(*app_, a,
                 {.Block = AddBlock(1, 2), .Pieces = 4, .X = 500.25, .Y = 40, .CountOnPart = true});
    stack.Level = 3;
    stack.Corner = 4;
    PartsInfo& b = AddPart(
        {.Code = "B", .KouteiNo = 2, .SizeX = 50, .SizeY = 60, .Quantity = 1, .PieceHeight = 2});
    HaichiInfo& b1 = AddStack(
        *app_, b, {.Block = AddBlock(2, 1), .Pieces = 3, .X = 80, .Y = 0, .CountOnPart = true});
    HaichiInfo& b2 = AddStack(
        *app_, b, {.Block = AddBlock(2, 2), .Pieces = 0, .X = 80, .Y = 0, .CountOnPart = true});
    b1.Level = b2.Level = 5;
    b1.Corner = 1;
    b2.Corner = 2;

    EXPECT_EQ(Write(), Outcome::Done());

    EXPECT_EQ(
        ReadLines(path_),
        (Lines{
            "A,1,NA,2,4,  190.2500,   45.0000,11,TA,  300.0000,  200.0000,    1.5000,7,3,A,0,4",
            "B,2,NB,1,3,   20.0000,    5.0000,12,TB,   50.0000,   60.0000,    2.0000,0,5,B,1,1",
            "B,2,NB,2,0,   20.0000,    5.0000,10,TB,   50.0000,   60.0000,    2.0000,0,5,B,2,2"}));
}

TEST_F(PlacementFile, WithoutAMatchingPalletTheOffsetsAreZero) {
    AddThreeBoxes();
    AddKoutei(1, "NONE");
    AddPallet(1, "PAL-A").SaveOffsetX = 10;
    AddStack(*app_,
             AddPart({.Code = "A", .SizeX = 30, .SizeY = 20, .Quantity = 1, .PieceHeight = 1}),
             {.Block = AddBlock(1, 1), .Pieces = 1, .X = 100, .Y = 7, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_),
              (Lines{"A,1,NA,1,1,   70.0000,    7.0000,10,TA,   30.0000,   20.0000,    "
                     "1.0000,0,0,A,0,0"}));
}

TEST_F(PlacementFile, PartWhoseStacksHoldNoPiecesAlsoGetsAnUnplacedLine) {
    AddThreeBoxes();
    PartsInfo& z = AddPart({.Code = "Z", .SizeX = 5, .SizeY = 5, .Quantity = 6, .PieceHeight = 0});
    AddStack(*app_, z,
             {.Block = AddBlock(1, 1), .Pieces = 0, .X = 10, .Y = 0, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_),
              (Lines{"Z,1,NZ,1,0,    5.0000,    0.0000,10,TZ,    5.0000,    5.0000,    "
                     "0.0000,0,0,Z,0,0",
                     "Z,1,NZ,0,6,0.0000,0.0000,10,TZ,    5.0000,    5.0000,    "
                     "0.0000,0,-1,Z,-1,-1"}));
}

TEST_F(PlacementFile, PartForASmallBoxGetsOnlyTheUnplacedLineWithTheBoxKind) {
    AddThreeBoxes();
    AddBox(101, 77);
    PartsInfo& q = AddPart({.Code = "Q",
                            .SizeX = 1,
                            .SizeY = 2,
                            .Quantity = 2,
                            .Destination = 101,
                            .PieceHeight = 0.25});
    AddStack(*app_, q,
             {.Block = AddBlock(1, 1), .Pieces = 2, .X = 10, .Y = 0, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_), (Lines{"Q,1,NQ,0,2,0.0000,0.0000,77,TQ,    1.0000,    2.0000,    "
                                       "0.2500,0,-1,Q,-1,-1"}));
}

TEST_F(PlacementFile, BoxKindsFollowTheGlobalPalletSequence) {
    AddThreeBoxes();
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 1}),
             {.Block = AddBlock(1, 2), .Pieces = 1, .CountOnPart = true});  // s = 2: box 1
    AddStack(*app_, AddPart({.Code = "B", .KouteiNo = 2, .Quantity = 1}),
             {.Block = AddBlock(2, 1), .Pieces = 1, .CountOnPart = true});  // s = 3: box 2
    AddStack(*app_, AddPart({.Code = "C", .KouteiNo = 2, .Quantity = 1}),
             {.Block = AddBlock(2, 2), .Pieces = 1, .CountOnPart = true});  // s = 4: box 0

    EXPECT_TRUE(Write().Ok());

    const Lines lines = ReadLines(path_);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].substr(0, 38), "A,1,NA,2,1,    0.0000,    0.0000,11,TA");
    EXPECT_EQ(lines[1].substr(0, 38), "B,2,NB,1,1,    0.0000,    0.0000,12,TB");
    EXPECT_EQ(lines[2].substr(0, 38), "C,2,NC,2,1,    0.0000,    0.0000,10,TC");
}

TEST_F(PlacementFile, DirectCodeIsItsOwnBoxKindOnlyWithDirectFlag) {
    AddThreeBoxes();
    AddPart({.Code = "D", .Quantity = 3, .Destination = 99998});
    AddPart({.Code = "E", .Quantity = 4, .Destination = 99999});

    ASSERT_TRUE(Write().Ok());
    EXPECT_EQ(ReadLines(path_)[0].substr(0, 30), "D,1,ND,0,3,0.0000,0.0000,-1,TD");
    app_->Settings.DirectCodesAllowed = true;
    ASSERT_TRUE(Write().Ok());
    EXPECT_EQ(ReadLines(path_)[0].substr(0, 33), "D,1,ND,0,3,0.0000,0.0000,99998,TD");
    EXPECT_EQ(ReadLines(path_)[1].substr(0, 33), "E,1,NE,0,4,0.0000,0.0000,99999,TE");
}

TEST_F(PlacementFile, ProcessNumbersOutsideTheCounterTableAreGuarded) {
    AddThreeBoxes();
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 1}),
             {.Block = AddBlock(1, 2), .Pieces = 1, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "H", .KouteiNo = 150, .Quantity = 1}),
             {.Block = AddBlock(150, 1), .Pieces = 1, .CountOnPart = true});  // s = 1 + 2
    AddStack(*app_, AddPart({.Code = "N", .KouteiNo = -3, .Quantity = 1}),
             {.Block = AddBlock(-3, 1), .Pieces = 1, .CountOnPart = true});  // s = 1

    EXPECT_TRUE(Write().Ok());

    const Lines lines = ReadLines(path_);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].substr(0, 40), "H,150,NH,1,1,    0.0000,    0.0000,12,TH");
    EXPECT_EQ(lines[2].substr(0, 39), "N,-3,NN,1,1,    0.0000,    0.0000,10,TN");
}

TEST_F(PlacementFile, StacksOutsideTheBlockTableAreNotWritten) {
    AddThreeBoxes();
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 5});
    AddStack(*app_, a, {.Block = -1, .Pieces = 2, .CountOnPart = true});
    AddStack(*app_, a, {.Block = 40, .Pieces = 3, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_), (Lines{"A,1,NA,0,5,0.0000,0.0000,10,TA,    0.0000,    0.0000,    "
                                       "0.0000,0,-1,A,-1,-1"}));
}

TEST_F(PlacementFile, NoBoxesGiveKindMinusOne) {
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 1}),
             {.Block = AddBlock(1, 1), .Pieces = 1, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_)[0].substr(0, 38), "A,1,NA,1,1,    0.0000,    0.0000,-1,TA");
}

TEST_F(PlacementFile, EmptyPathOrMissingFolderSets9023) {
    AddPart({.Code = "A", .Quantity = 1});

    EXPECT_EQ(FileSave().WritePlacementFile(""), Outcome::Failed(9023));
    path_ = PathOf("missing/save.csv");
    EXPECT_EQ(Write(), Outcome::Failed(9023));
}

TEST_F(PlacementFile, FailedStackLineSets9024AndKeepsTheOldFile) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    AddHundredStackLines();

    EXPECT_EQ(WriteOverAnOldFileOnAFullDisk(), Outcome::Failed(9024));

    EXPECT_EQ(ReadFile(path_), "old save\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator{}), 2);
}

TEST_F(PlacementFile, AFailedWriteIsNamedByTheLineBeingWrittenWhenItShowsNotByTheLastLine) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    AddHundredStackLines();
    // The line of a part without placed pieces comes last: the disk is full long before it.
    AddPart({.Code = "U", .Quantity = 1});

    EXPECT_EQ(WriteOverAnOldFileOnAFullDisk(), Outcome::Failed(9024));

    EXPECT_EQ(ReadFile(path_), "old save\n");
}

TEST_F(PlacementFile, FailedUnplacedLineSets9025AndKeepsTheOldFile) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    AddThreeBoxes();
    for (int i = 0; i < 100; ++i)
        AddPart({.Code = "U" + std::to_string(i), .Quantity = 1});

    EXPECT_EQ(WriteOverAnOldFileOnAFullDisk(), Outcome::Failed(9025));

    EXPECT_EQ(ReadFile(path_), "old save\n");
}

TEST_F(PlacementFile, FailureOnlySeenWhenClosingIsNamedByTheLastLineWritten) {
    AddThreeBoxes();
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 1}),
             {.Block = AddBlock(1, 1), .Pieces = 1, .CountOnPart = true});
    fs::create_directories(path_);
    EXPECT_EQ(Write(), Outcome::Failed(9024));

    AddPart({.Code = "U", .Quantity = 1});
    EXPECT_EQ(Write(), Outcome::Failed(9025));
    EXPECT_TRUE(fs::is_directory(path_));
}

}  // namespace
}  // namespace kesto::test
