#include "output/StackIndex.h"

#include "common/OutputTestKit.h"

namespace kesto::test {
namespace {

using StackIndexTest = OutputTest;

TEST_F(StackIndexTest, BlockOfStackIsTheTableEntry) {
    AddBlock(1, 1);
    const int32_t second = AddBlock(2, 3);
    HaichiInfo stack;
    stack.BlockIndex = second;

    const BlockInfo* block = BlockOfStack(*app_, stack);

    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->KouteiNo, 2);
    EXPECT_EQ(block->PalletNo, 3);
}

TEST_F(StackIndexTest, BlockOfStackOutsideTheFilledTableIsNull) {
    AddBlock(1, 1);
    AddBlock(1, 2);
    app_->BlocksCount = 1;
    HaichiInfo stack;

    stack.BlockIndex = -1;
    EXPECT_EQ(BlockOfStack(*app_, stack), nullptr);
    stack.BlockIndex = 1;  // allocated but not filled
    EXPECT_EQ(BlockOfStack(*app_, stack), nullptr);
    stack.BlockIndex = 5;
    EXPECT_EQ(BlockOfStack(*app_, stack), nullptr);
    app_->BlocksCount = 9;  // a count beyond the table itself
    EXPECT_EQ(BlockOfStack(*app_, stack), nullptr);
}

TEST_F(StackIndexTest, StacksOfAPartKeepListOrderAndLeaveOutStacksWithoutBlock) {
    PartsInfo& a = AddPart("A", 1, 9);
    PartsInfo& b = AddPart("B", 1, 9);
    const int32_t block = AddBlock(1, 2);
    HaichiInfo& first = AddStack(a, block, 1);
    AddStack(b, block, 2);
    AddStack(a, -1, 3);
    HaichiInfo& last = AddStack(a, block, 4);
    app_->AddHaichiInfo()->BlockIndex = block;  // a stack without a part

    const StackIndex index(*app_);

    ASSERT_EQ(index.Of(&a).size(), 2u);
    EXPECT_EQ(index.Of(&a)[0].Stack, &first);
    EXPECT_EQ(index.Of(&a)[1].Stack, &last);
    EXPECT_EQ(index.Of(&a)[1].Block->PalletNo, 2);
    EXPECT_EQ(index.Of(&b).size(), 1u);
    EXPECT_TRUE(index.Of(nullptr).empty());
}

}  // namespace
}  // namespace kesto::test
