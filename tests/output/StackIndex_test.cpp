#include "output/StackIndex.h"

#include "common/OutputTestKit.h"

namespace kesto::test {
namespace {

using StackIndexTest = OutputTest;

TEST_F(StackIndexTest, StacksOfAPartKeepListOrderAndLeaveOutStacksWithoutBlock) {
    PartsInfo& a = AddPart({.Code = "A", .Quantity = 9});
    PartsInfo& b = AddPart({.Code = "B", .Quantity = 9});
    const int32_t block = AddBlock(1, 2);
    HaichiInfo& first = AddStack(*app_, a, {.Block = block, .Pieces = 1, .CountOnPart = true});
    AddStack(*app_, b, {.Block = block, .Pieces = 2, .CountOnPart = true});
    AddStack(*app_, a, {.Block = -1, .Pieces = 3, .CountOnPart = true});
    HaichiInfo& last = AddStack(*app_, a, {.Block = block, .Pieces = 4, .CountOnPart = true});
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
