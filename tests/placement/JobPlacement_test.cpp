#include "placement/JobPlacement.h"

#include <gtest/gtest.h>

#include <fstream>

#include "PlacementFixture.h"

namespace kesto::test {
namespace {

using Kaku = std::vector<std::pair<int, int>>;

class CheckJobTest : public PlacementTest {
  protected:
    CheckJobTest() {
        AddPallet(GridPallet("PAL"));
        AddKoutei(1, "PAL");
        app->PalletCount = 2;
    }
    void AddBox(int32_t no) {
        BoxInfo& b = app->BoxList.Append();
        b.No = no;
        if (no < 100)
            ++app->BoxList.Count;
    }
};

TEST_F(CheckJobTest, ConsistentJobPassesAndBuildsTheBlocks) {
    AddBox(0);
    AddPart(1, 10, 10, 1);
    EXPECT_EQ(CheckJob(*app), 1);
    EXPECT_EQ(app->BlocksCapacity, 50);
    EXPECT_EQ(app->BlocksCount, 18);
    EXPECT_EQ(app->KouteiList.begin()->Mark, &*app->PalletList.begin());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(CheckJobTest, ProcessWithoutPalletGivesMessageOne) {
    AddKoutei(2, "OTHER");
    AddBox(0);
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{1, 0}}));
}

TEST_F(CheckJobTest, BlockTableFailureEndsTheCheckWithoutMessage) {
    app->PalletList.begin()->Param1 = 100000;
    app->PalletList.begin()->Param2 = 100000;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(app->ErrorCode, 9101);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(CheckJobTest, DestinationWithoutBoxGivesMessageTwo) {
    AddBox(0);
    AddPart(1, 10, 10, 1).Num2 = 5;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, EmptyBoxListFailsEveryPartEvenSpecialCodes) {
    app->DirectFlag = 1;
    AddPart(1, 10, 10, 1).Num2 = 99999;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, PartOfAMissingProcessGivesMessageTwo) {
    AddBox(0);
    AddPart(4, 10, 10, 1);
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, SpecialCodesPassOnlyWithDirectFlag) {
    AddBox(0);
    AddPart(1, 10, 10, 1).Num2 = 99998;
    app->DirectFlag = 1;
    EXPECT_EQ(CheckJob(*app), 1);
    app->DirectFlag = 0;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, SetAsideDestinationGivesMessageThree) {
    AddBox(1000);
    AddPart(1, 10, 10, 1).Num2 = 1000;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
}

TEST_F(CheckJobTest, SmallBoxNeedsItsFlag) {
    AddBox(0);
    AddBox(101);
    AddPart(1, 10, 10, 1).Num2 = 101;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
    app->BoxFlags[2] = 1;
    EXPECT_EQ(CheckJob(*app), 1);
}

TEST_F(CheckJobTest, CodeAboveTheSmallBoxesGivesMessageThree) {
    AddBox(199);
    AddPart(1, 10, 10, 1).Num2 = 199;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
}

TEST_F(CheckJobTest, EveryPartIsCheckedForABoxBeforeAnyIsCheckedForItsCode) {
    AddBox(1000);
    AddPart(1, 10, 10, 1).Num2 = 1000;
    AddPart(1, 10, 10, 1).Num2 = 7;
    EXPECT_EQ(CheckJob(*app), 0);
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

class PlaceJobTest : public CheckJobTest {
  protected:
    PlaceJobTest() : root_(Folder("root")), env_("ORVOSystemRoot", root_.c_str()) {
        std::filesystem::create_directories(root_ / "bin");
        std::ofstream(root_ / "bin" / "Ks_Setup.ini") << "#File\nIEL : save.txt\n#End\n";
        app->PalletCount = 1;
        AddBox(0);
    }
    void WriteSave(const std::string& text) { std::ofstream(root_ / "save.txt") << text; }

    std::filesystem::path root_;
    ScopedEnv env_;
};

TEST_F(PlaceJobTest, KeptCountsBecomeThePartialQuantities) {
    PartsInfo& a = AddPart(1, 300, 200, 9);
    PartsInfo& boxed = AddPart(1, 300, 200, 9);
    boxed.Num2 = 100;
    PartsInfo& beyond = AddPart(1, 300, 200, 9);
    beyond.Work[0] = 1;
    AddBox(100);
    app->BoxFlags[1] = 1;
    ASSERT_EQ(CheckJob(*app), 1);
    EXPECT_EQ(PlaceJob(*app, 1, 0, {0, 2, 3}), 1);
    EXPECT_EQ(a.Work[0], 2);
    EXPECT_EQ(a.Work[1], 2);
    EXPECT_EQ(boxed.Work[0], 3);
    EXPECT_EQ(boxed.Num2, 0);
    EXPECT_EQ(boxed.Work[1], 3);
    EXPECT_EQ(beyond.Work[0], 1);
    EXPECT_EQ(beyond.Work[1], 1);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(PlaceJobTest, FullRunRestoresTheSaveFileBeforePlacing) {
    PartsInfo& a = AddPart(1, 300, 200, 2);
    a.Num5 = 1;
    PartsInfo& b = AddPart(1, 300, 200, 1);
    ASSERT_EQ(CheckJob(*app), 1);
    WriteSave("A1,1,N,1,2,690.0000,10.0000,-1,T,300.0000,200.0000,1.0000,0,0,A1,0,4\n");
    EXPECT_EQ(PlaceJob(*app, 0, 1, {}), 1);
    ASSERT_EQ(StacksOf(a).size(), 1u);
    EXPECT_EQ(StacksOf(a)[0]->BlockIndex, 0);
    EXPECT_EQ(a.Work[1], 2);
    EXPECT_EQ(StacksOf(b).at(0)->BlockIndex, 1);
}

TEST_F(PlaceJobTest, SaveFileOfAnUnplacedPartFailsTheRun) {
    AddPart(1, 300, 200, 2).Num5 = 1;
    ASSERT_EQ(CheckJob(*app), 1);
    WriteSave("A1,1,N,0,2,0.0000,0.0000,-1,T,300.0000,200.0000,1.0000,0,-1,A1,-1,-1\n");
    EXPECT_EQ(PlaceJob(*app, 0, 1, {}), 0);
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(PlaceJobTest, WithoutFullRunTheSaveFileIsNotRead) {
    PartsInfo& a = AddPart(1, 300, 200, 2);
    a.Num5 = 1;
    ASSERT_EQ(CheckJob(*app), 1);
    WriteSave("A1,1,N,0,2,0.0000,0.0000,-1,T,300.0000,200.0000,1.0000,0,-1,A1,-1,-1\n");
    EXPECT_EQ(PlaceJob(*app, 0, 0, {}), 1);
    EXPECT_EQ(a.Work[1], 2);
}

}  // namespace
}  // namespace kesto::test
