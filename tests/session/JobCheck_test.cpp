#include "session/JobCheck.h"

#include <gtest/gtest.h>

#include "JobGenerator.h"
#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

using Kaku = std::vector<std::pair<int, int>>;

class CheckJobTest : public PlacementTest {
  protected:
    CheckJobTest() {
        AddPallet(GridPallet("PAL"));
        AddKoutei(1, "PAL");
        app->Settings.PalletCount = 2;
    }
    void AddBox(int32_t no) { Job().AddBox(no); }
};

TEST_F(CheckJobTest, ConsistentJobPassesAndBuildsTheBlocks) {
    AddBox(0);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1});
    EXPECT_TRUE(CheckJob(*app, services).Ok());
    EXPECT_EQ(app->Blocks.Capacity(), 50);
    EXPECT_EQ(app->Blocks.Count(), 18);
    EXPECT_EQ(app->KouteiList.begin()->Pallet, &*app->PalletList.begin());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(CheckJobTest, ProcessWithoutPalletGivesMessageOne) {
    AddKoutei(2, "OTHER");
    AddBox(0);
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{1, 0}}));
}

TEST_F(CheckJobTest, BlockTableFailureEndsTheCheckWithoutMessage) {
    app->PalletList.begin()->CellsX = 100000;
    app->PalletList.begin()->CellsY = 100000;
    EXPECT_EQ(CheckJob(*app, services), Outcome::Failed(9101));
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST_F(CheckJobTest, DestinationWithoutBoxGivesMessageTwo) {
    AddBox(0);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 5});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, EmptyBoxListFailsEveryPartEvenSpecialCodes) {
    app->Settings.DirectCodesAllowed = true;
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 99999});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, PartOfAMissingProcessGivesMessageTwo) {
    AddBox(0);
    AddPart({.KouteiNo = 4, .SizeX = 10, .SizeY = 10, .Quantity = 1});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, SpecialCodesPassOnlyWithDirectFlag) {
    AddBox(0);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 99998});
    app->Settings.DirectCodesAllowed = true;
    EXPECT_TRUE(CheckJob(*app, services).Ok());
    app->Settings.DirectCodesAllowed = false;
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

TEST_F(CheckJobTest, SetAsideDestinationGivesMessageThree) {
    AddBox(1000);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 1000});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
}

TEST_F(CheckJobTest, SmallBoxNeedsItsFlag) {
    AddBox(0);
    AddBox(101);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 101});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
    app->BoxFlags[2] = 1;
    EXPECT_TRUE(CheckJob(*app, services).Ok());
}

TEST_F(CheckJobTest, CodeAboveTheSmallBoxesGivesMessageThree) {
    AddBox(199);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 199});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{3, 0}}));
}

TEST_F(CheckJobTest, EveryPartIsCheckedForABoxBeforeAnyIsCheckedForItsCode) {
    AddBox(1000);
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 1000});
    AddPart({.SizeX = 10, .SizeY = 10, .Quantity = 1, .Destination = 7});
    EXPECT_FALSE(CheckJob(*app, services).Ok());
    EXPECT_EQ(op.KakuNumbers, (Kaku{{2, 0}}));
}

// The seeded jobs of the benchmarks are consistent: every one passes the whole check.
class GeneratedJobCheckTest : public PlacementTest,
                              public ::testing::WithParamInterface<JobShape> {};

TEST_P(GeneratedJobCheckTest, GeneratedJobPassesTheCheck) {
    FillApp(*app, GenerateJob(GetParam()));
    EXPECT_TRUE(CheckJob(*app, services).Ok());
    EXPECT_TRUE(op.KakuNumbers.empty());
}

std::string SizeName(const ::testing::TestParamInfo<JobShape>& info) {
    static const char* const names[] = {"Small", "Medium", "Largest", "SampleLike"};
    return names[info.index];
}

INSTANTIATE_TEST_SUITE_P(Sizes, GeneratedJobCheckTest,
                         ::testing::Values(SmallJobShape(), MediumJobShape(), LargestJobShape(),
                                           SampleLikeJobShape()),
                         SizeName);

}  // namespace
}  // namespace kesto::test
