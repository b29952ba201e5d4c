#include "output/StackIndex.h"

#include "common/OutputTestKit.h"

namespace kesto::test {
namespace {

using StackIndexTest = OutputTest;

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
