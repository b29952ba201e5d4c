#include <filesystem>

#include "common/OutputTestKit.h"
#include "output/CKs_FileSave.h"

namespace kesto::test {
namespace {

using Lines = std::vector<std::string>;

class ResultFile : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        AddBox(0, 10);
        AddBox(1, 11);
        path_ = PathOf("result.csv");
    }
    // One part placed exactly over two pallets, one without stacks, one for a small box.
    void AddExactJob() {
        PartsInfo& a = AddPart({.Code = "A01", .Quantity = 10});
        AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
        AddStack(*app_, a, {.Block = AddBlock(1, 2), .Pieces = 6, .CountOnPart = true});
        AddPart({.No = 12, .Code = "B", .Quantity = 3});
        AddPart({.Code = "C", .Quantity = 2, .Destination = 101});
    }
    Outcome Write() { return FileSave().WriteResultFile(path_); }

    std::string path_;
};

TEST_F(ResultFile, EveryPartPlacedExactlyWritesBothFilesWithoutAsking) {
    AddExactJob();

    EXPECT_EQ(Write(), Outcome::Done());

    EXPECT_EQ(ReadLines(path_ + "_tmp"),
              (Lines{"A01,1,NA01,1,4", "A01,1,NA01,2,6", "0012,1,NB,0,3", "0003,1,NC,0,2"}));
    EXPECT_EQ(ReadLines(path_), (Lines{"A01,1,NA01,1002,10,PLT001-G1,1,A01",
                                       "B,1,NB,0,3,PLT001-G1,1,B", "C,1,NC,0,2,PLT001-G1,1,C"}));
    EXPECT_TRUE(operator_.KakuNumbers.empty());
}

TEST_F(ResultFile, StacksOfNoPiecesAreSummarisedWithTheQuantityAfterThem) {
    AddStack(*app_, AddPart({.Code = "D", .Quantity = 5}),
             {.Block = AddBlock(1, 1), .Pieces = 0, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(ReadLines(path_ + "_tmp"), (Lines{"D,1,ND,1,0", "0001,1,ND,0,5"}));
}

TEST_F(ResultFile, SetAsidePiecesAskMessage208AndOkDeletesTheResultFile) {
    AddExactJob();
    app_->PartsList.Head()->PiecesSetAside = 1;
    WriteFile(path_, "old result\n");

    EXPECT_TRUE(Write().Ok());

    EXPECT_EQ(operator_.KakuNumbers, (std::vector<std::pair<int, int>>{{208, 0}}));
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_EQ(ReadLines(path_ + "_tmp").size(), 4u);
}

TEST_F(ResultFile, PartlyStackedPartIsShortAndCancelKeepsTheOldResult) {
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 10}),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    WriteFile(path_, "old result\n");
    operator_.Answer = OkCancel::Cancel;

    EXPECT_EQ(Write(), Outcome::Failed());

    EXPECT_EQ(operator_.KakuNumbers.size(), 1u);
    EXPECT_EQ(ReadFile(path_), "old result\n");
    EXPECT_EQ(ReadLines(path_ + "_tmp"), (Lines{"A,1,NA,1,4"}));
}

TEST_F(ResultFile, PartWithoutPlacedPiecesIsNotShort) {
    AddPart({.Code = "U", .Quantity = 10});
    AddStack(*app_, AddPart({.Code = "Z", .Quantity = 10}),
             {.Block = AddBlock(1, 1), .Pieces = 0, .CountOnPart = true});

    EXPECT_TRUE(Write().Ok());

    EXPECT_TRUE(operator_.KakuNumbers.empty());
    EXPECT_EQ(ReadLines(path_).size(), 2u);
}

TEST_F(ResultFile, EmptyPathCannotBeOpened) {
    AddExactJob();

    EXPECT_EQ(FileSave().WriteResultFile(""), Outcome::Failed(9021));

    EXPECT_FALSE(fs::exists("_tmp"));
}

TEST_F(ResultFile, SideFileInAMissingFolderSets9021) {
    AddExactJob();
    path_ = PathOf("missing/result.csv");

    EXPECT_EQ(Write(), Outcome::Failed(9021));

    EXPECT_FALSE(fs::exists(PathOf("missing")));
}

TEST_F(ResultFile, SideFileThatCannotBeReplacedSets9022AndLeavesTheResult) {
    AddExactJob();
    fs::create_directories(path_ + "_tmp");
    WriteFile(path_, "old result\n");

    EXPECT_EQ(Write(), Outcome::Failed(9022));

    EXPECT_EQ(ReadFile(path_), "old result\n");
    EXPECT_TRUE(fs::is_directory(path_ + "_tmp"));
}

TEST_F(ResultFile, ResultFileThatCannotBeReplacedSets9022) {
    AddExactJob();
    fs::create_directories(path_);

    EXPECT_EQ(Write(), Outcome::Failed(9022));

    EXPECT_TRUE(fs::is_directory(path_));
    EXPECT_EQ(ReadLines(path_ + "_tmp").size(), 4u);
}

TEST_F(ResultFile, FailedSideWriteLeavesTheOldFilesByteForByte) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    AddExactJob();
    WriteFile(path_ + "_tmp", "old side\r\n");
    WriteFile(path_, "old result\n");
    {
        const FileSizeLimit limit(10);
        EXPECT_EQ(Write(), Outcome::Failed(9022));
    }

    EXPECT_EQ(ReadFile(path_ + "_tmp"), "old side\r\n");
    EXPECT_EQ(ReadFile(path_), "old result\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator{}), 3);
}

TEST_F(ResultFile, FailedResultWriteLeavesTheOldResultByteForByte) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 10}),
             {.Block = AddBlock(1, 1), .Pieces = 10, .CountOnPart = true});
    WriteFile(path_, "old result\n");
    {
        const FileSizeLimit limit(20);
        EXPECT_EQ(Write(), Outcome::Failed(9022));
    }

    EXPECT_EQ(ReadLines(path_ + "_tmp"), (Lines{"A,1,NA,1,10"}));
    EXPECT_EQ(ReadFile(path_), "old result\n");
}

}  // namespace
}  // namespace kesto::test
