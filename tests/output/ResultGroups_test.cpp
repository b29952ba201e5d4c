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
    std::vector<std::string> Write() {
        const std::string path = PathOf("result.csv");
        std::FILE* file = std::fopen(path.c_str(), "w");
        const StackIndex stacks(*app_);
        EXPECT_EQ(WriteResultGroups(*app_, stacks, file), Outcome::Done());
        std::fclose(file);
        return ReadLines(path);
    }
    using Lines = std::vector<std::string>;
};

TEST_F(ResultGroups, SecondProcessContinuesTheFirstsLastGroupWhenItEndsOnAnOddPallet) {
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 10});
    HaichiInfo& a1 =
        AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    HaichiInfo& a3 =
        AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    PartsInfo& b = AddPart({.Code = "B", .KouteiNo = 2, .Quantity = 5});
    HaichiInfo& b1 =
        AddStack(*app_, b, {.Block = AddBlock(2, 1), .Pieces = 2, .CountOnPart = true});
    HaichiInfo& b2 =
        AddStack(*app_, b, {.Block = AddBlock(2, 2), .Pieces = 3, .CountOnPart = true});
    PartsInfo& c = AddPart({.Code = "C", .KouteiNo = 2, .Quantity = 7, .GroupKey = "G2"});
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
    AddStack(*app_, AddPart({.Code = "P1", .Quantity = 1, .GroupKey = "G2"}),
             {.Block = AddBlock(1, 1), .Pieces = 1, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "P2", .Quantity = 2}),
             {.Block = AddBlock(1, 2), .Pieces = 2, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "P3", .Quantity = 3, .GroupKey = "G2"}),
             {.Block = AddBlock(1, 2), .Pieces = 3, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "P4", .Quantity = 4}),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "P5", .Quantity = 5, .GroupKey = "G3"}),
             {.Block = AddBlock(1, 4), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"P2,1,NP2,1002,2,PLT001-G1,1,P2", "P1,1,NP1,1002,1,PLT001-G2,1,P1",
                              "P3,1,NP3,1002,3,PLT001-G2,1,P3", "P5,1,NP5,3004,5,PLT002-G3,2,P5",
                              "P4,1,NP4,3004,4,PLT002-G1,2,P4"}));
}

TEST_F(ResultGroups, PartWhoseGroupKeyYieldsZeroIsNeverWrittenButStillUsesAGroup) {
    AddStack(*app_, AddPart({.Code = "Z", .Quantity = 3, .GroupKey = "G0"}),
             {.Block = AddBlock(1, 1), .Pieces = 3, .CountOnPart = true});
    PartsInfo& ungrouped = AddPart({.Code = "E", .Quantity = 2});
    ungrouped.GroupKey = "";  // where no group is named the fixture gives G1
    AddStack(*app_, ungrouped, {.Block = AddBlock(1, 2), .Pieces = 2, .CountOnPart = true});
    AddPart({.Code = "X", .Quantity = 4, .GroupKey = "X"});
    AddStack(*app_, AddPart({.Code = "Y", .Quantity = 5}),
             {.Block = AddBlock(1, 3), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"Y,1,NY,3004,5,PLT002-G1,2,Y"}));
}

TEST_F(ResultGroups, OneBoxGivesOnePalletPerGroupAndNeverContinues) {
    app_->BoxList.Clear();
    app_->BoxList.Count = 0;
    AddBox(0, 10);
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 10});
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "B", .KouteiNo = 2, .Quantity = 2}),
             {.Block = AddBlock(2, 1), .Pieces = 2, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1001,4,PLT001-G1,1,A", "A,1,NA,3003,6,PLT002-G1,2,A",
                              "B,2,NB,1001,2,PLT003-G1,3,B"}));
}

TEST_F(ResultGroups, UnplacedPartsGoIntoTheFirstGroupOfTheirProcess) {
    AddPart({.Code = "U", .Quantity = 9});
    AddStack(*app_, AddPart({.Code = "S", .Quantity = 4, .Destination = 101, .GroupKey = "G2"}),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "O", .Quantity = 0}),
             {.Block = AddBlock(1, 1), .Pieces = 0, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "W", .Quantity = 5, .GroupKey = "G3"}),
             {.Block = AddBlock(1, 3), .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"U,1,NU,0,9,PLT001-G1,1,U", "O,1,NO,0,0,PLT001-G1,1,O",
                              "S,1,NS,0,4,PLT001-G2,1,S", "W,1,NW,3004,5,PLT002-G3,2,W"}));
}

TEST_F(ResultGroups, PalletsBeyondThePalletCountAreNotWritten) {
    app_->Settings.PalletCount = 2;
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 10});
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "B", .Quantity = 1}),
             {.Block = AddBlock(1, 5), .Pieces = 1, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, NoPalletsMeansNothingIsWritten) {
    app_->Settings.PalletCount = 0;
    AddPart({.Code = "U", .Quantity = 9});
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});

    EXPECT_TRUE(Write().empty());
}

TEST_F(ResultGroups, ProcessWithoutPartsCarriesTheLastPalletAndLowersTheGroup) {
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 10});
    AddStack(*app_, a, {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    AddStack(*app_, a, {.Block = AddBlock(1, 3), .Pieces = 6, .CountOnPart = true});
    AddStack(*app_, AddPart({.Code = "D", .KouteiNo = 3, .Quantity = 1}),
             {.Block = AddBlock(3, 1), .Pieces = 1, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,1002,4,PLT001-G1,1,A", "A,1,NA,3004,6,PLT002-G1,2,A",
                              "D,3,ND,1002,1,PLT002-G1,2,D"}));
}

TEST_F(ResultGroups, HugeProcessNumberAndPalletCountFinish) {
    app_->Settings.PalletCount = std::numeric_limits<int32_t>::max();
    const int32_t last = std::numeric_limits<int32_t>::max();
    AddStack(*app_, AddPart({.Code = "A", .KouteiNo = last, .Quantity = 3}),
             {.Block = AddBlock(last, 1), .Pieces = 3, .CountOnPart = true});
    AddPart({.Code = "N", .KouteiNo = 0, .Quantity = 2});
    AddPart({.Code = "M", .KouteiNo = -4, .Quantity = 2});

    EXPECT_EQ(Write(), (Lines{"A,2147483647,NA,1002,3,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, StacksOutsideTheBlockTableAreIgnored) {
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 3});
    AddStack(*app_, a, {.Block = -1, .Pieces = 5, .CountOnPart = true});
    AddStack(*app_, a, {.Block = 7, .Pieces = 5, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"A,1,NA,0,3,PLT001-G1,1,A"}));
}

TEST_F(ResultGroups, DirectCodePartJoinsTheGroupOfItsKeyWhenDirectFlagIsSet) {
    app_->Settings.DirectCodesAllowed = true;
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddPart({.Code = "X", .Quantity = 5, .Destination = 99998});
    AddStack(*app_, AddPart({.Code = "W", .Quantity = 2, .GroupKey = "G2"}),
             {.Block = AddBlock(1, 1), .Pieces = 2, .CountOnPart = true});
    AddPart({.Code = "Y", .Quantity = 6, .Destination = 99999, .GroupKey = "G9"});

    EXPECT_EQ(Write(), (Lines{"W,1,NW,1002,2,PLT001-G2,1,W", "Y,1,NY,0,6,PLT001-G9,1,Y",
                              "A,1,NA,3004,4,PLT002-G1,2,A", "X,1,NX,0,5,PLT002-G1,2,X"}));
}

TEST_F(ResultGroups, DirectCodePartIsAnUnplacedPartWithoutDirectFlag) {
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
             {.Block = AddBlock(1, 3), .Pieces = 4, .CountOnPart = true});
    AddPart({.Code = "X", .Quantity = 5, .Destination = 99998});
    AddStack(*app_, AddPart({.Code = "W", .Quantity = 2, .GroupKey = "G2"}),
             {.Block = AddBlock(1, 1), .Pieces = 2, .CountOnPart = true});

    EXPECT_EQ(Write(), (Lines{"X,1,NX,0,5,PLT001-G1,1,X", "W,1,NW,1002,2,PLT001-G2,1,W",
                              "A,1,NA,3004,4,PLT002-G1,2,A"}));
}

TEST_F(ResultGroups, FailedWriteSets9022) {
    AddStack(*app_, AddPart({.Code = "A", .Quantity = 4}),
             {.Block = AddBlock(1, 1), .Pieces = 4, .CountOnPart = true});
    const std::string path = PathOf("result.csv");
    WriteFile(path, "old\n");
    std::FILE* readOnly = std::fopen(path.c_str(), "r");
    const StackIndex stacks(*app_);

    EXPECT_EQ(WriteResultGroups(*app_, stacks, readOnly), Outcome::Failed(9022));
    std::fclose(readOnly);
}

}  // namespace
}  // namespace kesto::test
