#include "app/BlockTable.h"

#include <gtest/gtest.h>

#include <vector>

namespace kesto {
namespace {

BlockInfo Block(int32_t koutei, int32_t pallet) {
    BlockInfo b;
    b.KouteiNo = koutei;
    b.PalletNo = pallet;
    return b;
}

// Process 1 on pallets 1 and 2, process 2 on pallet 1, process 1 on pallet 1 again, in that
// order: a table built process after process, then one block laid out by hand.
BlockTable MixedTable() {
    BlockTable t;
    for (const auto& [koutei, pallet] :
         std::vector<std::pair<int32_t, int32_t>>{{1, 1}, {1, 2}, {2, 1}, {1, 1}})
        t.AddBlock(Block(koutei, pallet));
    return t;
}

std::vector<int32_t> Indexes(auto range) {
    std::vector<int32_t> out;
    for (const int32_t i : range)
        out.push_back(i);
    return out;
}

TEST(BlockTable, FilledIsTheCountWithinTheTable) {
    BlockTable t;
    t.Allocate(3);
    t.SetCount(2);
    EXPECT_EQ(t.Filled(), 2);
    t.SetCount(9);
    EXPECT_EQ(t.Filled(), 3);
    EXPECT_EQ(t.Count(), 9);
    t.SetCount(-4);
    EXPECT_EQ(t.Filled(), 0);
}

TEST(BlockTable, AppendFillsTheNextEntryUntilTheCapacityOrTheTableIsUsedUp) {
    BlockTable t;
    t.SetCapacity(2);
    t.Allocate(3);
    t.SetCount(0);
    BlockInfo* first = t.Append();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, &t[0]);
    ASSERT_NE(t.Append(), nullptr);
    EXPECT_EQ(t.Append(), nullptr);  // the capacity is used up
    EXPECT_EQ(t.Count(), 2);
    t.SetCapacity(10);
    ASSERT_NE(t.Append(), nullptr);
    EXPECT_EQ(t.Append(), nullptr);  // the table is used up
    EXPECT_EQ(t.Count(), 3);
}

TEST(BlockTable, AppendResetsTheEntryItFills) {
    BlockTable t;
    t.SetCapacity(1);
    t.Allocate(1);
    t[0].CornerMask = 0x0F;
    t[0].KouteiNo = 7;
    BlockInfo* b = t.Append();
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->CornerMask, 0);
    EXPECT_EQ(b->KouteiNo, 0);
}

TEST(BlockTable, AllocateKeepsTheCount) {
    BlockTable t;
    t.SetCount(5);
    t.Allocate(2);
    EXPECT_EQ(t.Size(), 2u);
    EXPECT_EQ(t.Count(), 5);
    EXPECT_EQ(t.Filled(), 2);
}

TEST(BlockTable, AtAnswersOnlyForFilledBlocks) {
    BlockTable t;
    t.Allocate(3);
    t.SetCount(2);
    EXPECT_EQ(t.At(0), &t[0]);
    EXPECT_EQ(t.At(1), &t[1]);
    EXPECT_EQ(t.At(2), nullptr);
    EXPECT_EQ(t.At(-1), nullptr);
    EXPECT_EQ(t.At(2000000000), nullptr);
}

TEST(BlockTable, OfProcessGivesTheProcessBlocksInTableOrder) {
    const BlockTable t = MixedTable();
    EXPECT_EQ(Indexes(t.OfProcess(1)), (std::vector<int32_t>{0, 1, 3}));
    EXPECT_EQ(Indexes(t.OfProcess(2)), (std::vector<int32_t>{2}));
    EXPECT_TRUE(Indexes(t.OfProcess(3)).empty());
}

TEST(BlockTable, OfPalletGivesTheProcessBlocksOnThatPallet) {
    const BlockTable t = MixedTable();
    EXPECT_EQ(Indexes(t.OfPallet(1, 1)), (std::vector<int32_t>{0, 3}));
    EXPECT_EQ(Indexes(t.OfPallet(1, 2)), (std::vector<int32_t>{1}));
    EXPECT_TRUE(Indexes(t.OfPallet(2, 2)).empty());
}

TEST(BlockTable, TheLoopsPassOverEntriesBeyondTheCount) {
    BlockTable t = MixedTable();
    t.SetCount(2);
    EXPECT_EQ(Indexes(t.OfProcess(1)), (std::vector<int32_t>{0, 1}));
    EXPECT_TRUE(Indexes(t.OfProcess(2)).empty());
    EXPECT_EQ(t.FilledBlocks().size(), 2u);
    EXPECT_EQ(t.Entries().size(), 4u);
}

TEST(BlockTable, AddBlockGrowsTheTableCapacityAndCount) {
    BlockTable t;
    EXPECT_EQ(t.AddBlock(Block(1, 1)), 0);
    EXPECT_EQ(t.AddBlock(Block(1, 2)), 1);
    EXPECT_EQ(t.Size(), 2u);
    EXPECT_EQ(t.Capacity(), 2);
    EXPECT_EQ(t.Count(), 2);
    EXPECT_EQ(t[1].PalletNo, 2);
}

TEST(BlockTable, ReleaseEntriesKeepsCapacityAndCountClearForgetsThem) {
    BlockTable t = MixedTable();
    t.ReleaseEntries();
    EXPECT_EQ(t.Size(), 0u);
    EXPECT_EQ(t.Capacity(), 4);
    EXPECT_EQ(t.Count(), 4);
    EXPECT_EQ(t.Filled(), 0);
    t.Clear();
    EXPECT_EQ(t.Capacity(), 0);
    EXPECT_EQ(t.Count(), 0);
}

}  // namespace
}  // namespace kesto
