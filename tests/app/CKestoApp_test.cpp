#include "app/CKestoApp.h"
#include "app/ViewState.h"

#include <gtest/gtest.h>

#include "common/AllocFailure.h"
#include "common/Installation.h"
#include "common/PartFields.h"

namespace kesto {
namespace {

class CKestoAppTest : public ::testing::Test {
  protected:
    test::Installation installation;
    CKestoApp app;
    ViewState shown;
};

// What start-up does first: the per-user values of an empty host store are read as 0.
TEST_F(CKestoAppTest, StartedEmptyWithItsDefaults) {
    app.ReadRegistrySettings(installation.Host);
    ReadViewSettings(installation.Host, shown);
    EXPECT_EQ(app.Settings.IsDirect, 0);
    EXPECT_EQ(shown.StoredBlockDraw(), 0);
    EXPECT_EQ(app.Settings.InchMode, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
    EXPECT_TRUE(app.PartsList.Empty());
    EXPECT_EQ(app.HaichiList.Count, 0);
}

TEST_F(CKestoAppTest, AddHaichiInfoAppendsAFreshStack) {
    HaichiInfo* first = app.AddHaichiInfo();
    HaichiInfo* second = app.AddHaichiInfo();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->BlockIndex, -1);
    EXPECT_EQ(first->Corner, 0);
    EXPECT_EQ(first->Part, nullptr);
    EXPECT_EQ(app.HaichiList.Count, 2);
    EXPECT_EQ(&app.HaichiList.back(), second);
    EXPECT_EQ(app.HaichiList.Head(), first);
}

TEST_F(CKestoAppTest, AddHaichiInfoWithoutMemory) {
    HaichiInfo* rec = nullptr;
    {
        test::ScopedAllocFailure failure(sizeof(HaichiInfo));
        rec = app.AddHaichiInfo();
    }
    EXPECT_EQ(rec, nullptr);
    EXPECT_EQ(app.HaichiList.Count, 0);
}

TEST_F(CKestoAppTest, RemovingTheOnlyStackKeepsTheCountAndAStartsANewList) {
    HaichiInfo* only = app.AddHaichiInfo();
    app.RemoveHaichiInfo(only);
    EXPECT_EQ(app.HaichiList.Head(), nullptr);
    EXPECT_EQ(app.HaichiList.Count, 1);
    HaichiInfo* next = app.AddHaichiInfo();
    EXPECT_EQ(app.HaichiList.Head(), next);
    EXPECT_EQ(app.HaichiList.size(), 1u);
    EXPECT_EQ(app.HaichiList.Count, 2);
}

TEST_F(CKestoAppTest, RemovingAMiddleStackKeepsTheOrder) {
    HaichiInfo* a = app.AddHaichiInfo();
    HaichiInfo* b = app.AddHaichiInfo();
    HaichiInfo* c = app.AddHaichiInfo();
    app.RemoveHaichiInfo(b);
    ASSERT_EQ(app.HaichiList.size(), 2u);
    EXPECT_EQ(&app.HaichiList.front(), a);
    EXPECT_EQ(&app.HaichiList.back(), c);
}

TEST_F(CKestoAppTest, RemovingAStackNotInTheListChangesNothing) {
    app.AddHaichiInfo();
    HaichiInfo stranger;
    app.RemoveHaichiInfo(&stranger);
    EXPECT_EQ(app.HaichiList.size(), 1u);
}

TEST_F(CKestoAppTest, HasKoutei) {
    EXPECT_EQ(app.HasKoutei(0), 0);
    app.KouteiList.Append().No = 4;
    EXPECT_EQ(app.HasKoutei(4), 1);
    EXPECT_EQ(app.HasKoutei(5), 0);
}

TEST_F(CKestoAppTest, FreeJobEmptiesTheListsButKeepsTheCounts) {
    app.BoxList.Append();
    app.BoxList.Count = 1;
    test::AddPart(app, {}).Shapes.resize(2);
    app.PalletList.Append();
    app.AddHaichiInfo();
    app.Blocks.Allocate(4);
    app.FreeJob();
    EXPECT_TRUE(app.BoxList.Empty() && app.PartsList.Empty() && app.PalletList.Empty());
    EXPECT_TRUE(app.HaichiList.Empty() && app.KouteiList.Empty());
    EXPECT_EQ(app.Blocks.Size(), 0u);
    EXPECT_EQ(app.BoxList.Count, 1);
    EXPECT_EQ(app.PartsList.Count, 1);
    EXPECT_EQ(app.HaichiList.Count, 1);
}

// Two blocks in a table of three: process 2 on pallet 3, then process 1 on pallet 1.
void FillTwoOfThreeBlocks(CKestoApp& app) {
    app.Blocks.Allocate(3);
    app.Blocks[0].KouteiNo = 2;
    app.Blocks[0].PalletNo = 3;
    app.Blocks[1].KouteiNo = 1;
    app.Blocks[1].PalletNo = 1;
    app.Blocks.SetCount(2);
}

TEST_F(CKestoAppTest, AStackStandsInTheFilledBlockItsIndexNames) {
    FillTwoOfThreeBlocks(app);
    HaichiInfo stack;
    stack.BlockIndex = 0;
    ASSERT_EQ(app.BlockOf(stack), &app.Blocks[0]);
    stack.BlockIndex = 1;
    ASSERT_EQ(app.BlockOf(stack), &app.Blocks[1]);
    EXPECT_EQ(app.BlockOf(stack)->PalletNo, 1);
    EXPECT_EQ(app.Blocks.Filled(), 2);
}

TEST_F(CKestoAppTest, AStackWhoseIndexIsOutOfRangeStandsInNoBlock) {
    struct Case {
        const char* What;
        int32_t Index;
        int32_t Count;  // the table's count
    };
    const Case cases[] = {
        {"no block yet", -1, 2},
        {"a negative index", -7, 2},
        {"in the table but not filled", 2, 2},
        {"beyond the table", 3, 2},
        {"far beyond the table", 2000000000, 2},
        {"a count beyond the table", 3, 9},
        {"a negative count", 0, -1},
    };
    for (const Case& c : cases) {
        FillTwoOfThreeBlocks(app);
        app.Blocks.SetCount(c.Count);
        HaichiInfo stack;
        stack.BlockIndex = c.Index;
        EXPECT_EQ(app.BlockOf(stack), nullptr) << c.What;
        EXPECT_EQ(app.Blocks.At(c.Index), nullptr) << c.What;
    }
}

TEST_F(CKestoAppTest, KouteiAtCountsFromOne) {
    app.KouteiList.Append().No = 10;
    app.KouteiList.Append().No = 20;
    ASSERT_NE(app.KouteiAt(2), nullptr);
    EXPECT_EQ(app.KouteiAt(1)->No, 10);
    EXPECT_EQ(app.KouteiAt(2)->No, 20);
    EXPECT_EQ(app.KouteiAt(0), nullptr);
    EXPECT_EQ(app.KouteiAt(3), nullptr);
}

TEST_F(CKestoAppTest, PalletByNameFindsTheFirst) {
    app.PalletList.Append().Name = "A";
    PalletInfo& first = app.PalletList.Append();
    first.Name = "B";
    app.PalletList.Append().Name = "B";
    EXPECT_EQ(app.PalletByName("B"), &first);
    EXPECT_EQ(app.PalletByName("C"), nullptr);
}

}  // namespace
}  // namespace kesto
