#include "output/ResultGroups.h"

#include <cstdio>
#include <limits>

#include "common/OutputTestKit.h"

namespace kesto::test {
namespace {

class ResultGroups : public OutputTest {
  protected:
    void SetUp() override {
        OutputTest::SetUp();
        AddBox(0, 10);
        AddBox(1, 11);
    }
    // Runs the writer into a file of the test folder and returns the lines written.
    std::vector<std::string> Write(int expectedResult = 1) {
        const std::string path = PathOf("result.csv");
        std::FILE* file = std::fopen(path.c_str(), "w");
        const StackIndex stacks(*app_);
        EXPECT_EQ(WriteResultGroups(*app_, stacks, file), expectedResult);
        std::fclose(file);
        return ReadLines(path);
    }
    using Lines = std::vector<std::string>;
};

TEST_F(ResultGroups, SecondProcessContinuesTheFirstsLastGroupWhenItEndsOnAnOddPallet) {
    PartsInfo& a = AddPart("A", 1, 10);
    HaichiInfo& a1 =
        AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    HaichiInfo& a3 =
        AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    PartsInfo& b = AddPart("B", 2, 5);
    HaichiInfo& b1 =
        AddStack(*app_, b, {.Block = AddBlock(2, 1), .Pieces = 2, .CountOnPart = true});
    HaichiInfo& b2 =
        AddStack(*app_, b, {.Block = AddBlock(2, 2), .Pieces = 3, .CountOnPart = true});
    PartsInfo& c = AddPart("C", 2, 7, "G2");
    HaichiInfo& c3 =
        AddStack(*app_, c, {.Block = AddBlock(2, 3), .Pieces = 7, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A", "A,1,NA,3004,6,PLT002-G1,2,A",
                              "B,2,NB,1001,2,PLT002-G1,2,B", "C,2,NC,2003,7,PLT003-G2,3,C",
                              "B,2,NB,2003,3,PLT003-G1,3,B"}));
    EXPECT_EQ(a1.Level, 1);
    EXPECT_EQ(a3.Level, 2);
    EXPECT_EQ(b1.Level, 2);
    EXPECT_EQ(b2.Level, 3);
    EXPECT_EQ(c3.Level, 3);
}

TEST_F(ResultGroups, GroupsAlternateBetweenAscendingAndDescendingKeys) {
    AddStack(*app_, AddPart("P1", 1, 1, "G2"),
             {.Block = AddBlock(1, 1), .Pieces = 1, .CountOnPart = true});
    AddStack(*app_, AddPart("P2", 1, 2, "G1"),
             {.Block = AddBlock(1, 2), .Pieces = 2, .CountOnPart = true});
    AddStack(*app_, AddPart("P3", 1, 3, "G2"),
             {.Block = AddBlock(1, 2), .Pieces = 3, .CountOnPart = true});
    AddStack(*app_, AddPart("P4", 1, 4, "G1"),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, AddPart("P5", 1, 5, "G3"),
             {.Block = AddBlock(1, 4), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"P2,1,NP2,1002,2,PLT001-G1,1,P2", "P1,1,NP1,1002,1,PLT001-G2,1,P1",
                              "P3,1,NP3,1002,3,PLT001-G2,1,P3", "P5,1,NP5,3004,5,PLT002-G3,2,P5",
                              "P4,1,NP4,3004,4,PLT002-G1,2,P4"}));
}

TEST_F(ResultGroups, PartWhoseGroupKeyYieldsZeroIsNeverWrittenButStillUsesAGroup) {
    AddStack(*app_, AddPart("Z", 1, 3, "G0"),
             {.Block = AddBlock(1, 1), .Pieces = 3, .CountOnPart = true});
    AddStack(*app_, AddPart("E", 1, 2, ""),
             {.Block = AddBlock(1, 2), .Pieces = 2, .CountOnPart = true});
    AddPart("X", 1, 4, "X");
    AddStack(*app_, AddPart("Y", 1, 5),
             {.Block = AddBlock(1, 3), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"Y,1,NY,3004,5,PLT002-G1,2,Y"}));
}

TEST_F(ResultGroups, OneBoxGivesOnePalletPerGroupAndNeverContinues) {
    app_->BoxList.Clear();
    app_->BoxList.Count = 0;
    AddBox(0, 10);
    PartsInfo& a = AddPart("A", 1, 10);
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart("B", 2, 2),
             {.Block = AddBlock(2, 1), .Pieces = 2, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1001,4,PLT001-G1,1,A", "A,1,NA,3003,6,PLT002-G1,2,A",
                              "B,2,NB,1001,2,PLT003-G1,3,B"}));
}

TEST_F(ResultGroups, UnplacedPartsGoIntoTheFirstGroupOfTheirProcess) {
    AddPart("U", 1, 9);
    AddStack(*app_, AddPart("S", 1, 4, "G2", 101),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, AddPart("O", 1, 0),
             {.Block = AddBlock(1, 1), .Pieces = 0, .CountOnPart = true});
    AddStack(*app_, AddPart("W", 1, 5, "G3"),
             {.Block = AddBlock(1, 3), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"U,1,NU,0,9,PLT001-G1,1,U", "O,1,NO,0,0,PLT001-G1,1,O",
                              "S,1,NS,0,4,PLT001-G2,1,S", "W,1,NW,3004,5,PLT002-G3,2,W"}));
}

TEST_F(ResultGroups, PalletsBeyondThePalletCountAreNotWritten) {
    app_->PalletCount = 2;
    PartsInfo& a = AddPart("A", 1, 10);
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart("B", 1, 1),
             {.Block = AddBlock(1, 5), .Pieces = 1, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, NoPalletsMeansNothingIsWritten) {
    app_->PalletCount = 0;
    AddPart("U", 1, 9);
    AddStack(*app_, AddPart("A", 1, 4),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});

    EXPECT_TRUE(Write().empty());
}

TEST_F(ResultGroups, ProcessWithoutPartsCarriesTheLastPalletAndLowersTheGroup) {
    PartsInfo& a = AddPart("A", 1, 10);
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart("D", 3, 1),
             {.Block = AddBlock(3, 1), .Pieces = 1, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A", "A,1,NA,3004,6,PLT002-G1,2,A",
                              "D,3,ND,1002,1,PLT002-G1,2,D"}));
}

TEST_F(ResultGroups, HugeProcessNumberAndPalletCountFinish) {
    app_->PalletCount = std::numeric_limits<int32_t>::max();
    const int32_t last = std::numeric_limits<int32_t>::max();
    AddStack(*app_, AddPart("A", last, 3),
             {.Block = AddBlock(last, 1), .Pieces = 3, .CountOnPart = true});
    AddPart("N", 0, 2);
    AddPart("M", -4, 2);

    EXPECT_EQ(Write(), (Lines{"A,2147483647,NA,1002,3,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, StacksOutsideTheBlockTableAreIgnored) {
    PartsInfo& a = AddPart("A", 1, 3);
    AddStack(*app_, a, {.Block = -1, .Pieces = 5, .CountOnPart = true});
    AddStack(*app_, a, {.Block = 7, .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,0,3,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, DirectCodePartJoinsTheGroupOfItsKeyWhenDirectFlagIsSet) {
    app_->DirectCodesAllowed = true;
    AddStack(*app_, AddPart("A", 1, 4),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddPart("X", 1, 5, "G1", 99998);
    AddStack(*app_, AddPart("W", 1, 2, "G2"),
             {.Block = AddBlock(1, 1), .Pieces = 2, .CountOnPart = true});
    AddPart("Y", 1, 6, "G9", 99999);

    EXPECT_EQ(Write(), (Lines{"W,1,NW,1002,2,PLT001-G2,1,W", "Y,1,NY,0,6,PLT001-G9,1,Y",
                              "A,1,NA,3004,4,PLT002-G1,2,A", "X,1,NX,0,5,PLT002-G1,2,X"}));
}

TEST_F(ResultGroups, DirectCodePartIsAnUnplacedPartWithoutDirectFlag) {
    AddStack(*app_, AddPart("A", 1, 4),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddPart("X", 1, 5, "G1", 99998);
    AddStack(*app_, AddPart("W", 1, 2, "G2"),
             {.Block = AddBlock(1, 1), .Pieces = 2, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"X,1,NX,0,5,PLT001-G1,1,X", "W,1,NW,1002,2,PLT001-G2,1,W",
                              "A,1,NA,3004,4,PLT002-G1,2,A"}));
}

TEST_F(ResultGroups, FailedWriteSets9022) {
    AddStack(*app_, AddPart("A", 1, 4),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    const std::string path = PathOf("result.csv");
    WriteFile(path, "old\n");
    std::FILE* readOnly = std::fopen(path.c_str(), "r");
    const StackIndex stacks(*app_);

    EXPECT_EQ(WriteResultGroups(*app_, stacks, readOnly), 0);
    EXPECT_EQ(app_->ErrorCode, 9022);
    std::fclose(readOnly);
}

}  // namespace
}  // namespace kesto::test
