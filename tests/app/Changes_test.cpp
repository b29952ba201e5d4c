// A command's change set: empty by default, the changes it holds, and their union.
#include "app/Changes.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(ChangeSet, AFreshSetHoldsNothing) {
    const ChangeSet none;
    EXPECT_TRUE(none.Empty());
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_FALSE(none.Has(Change::Koutei));
}

TEST(ChangeSet, OneChangeIsHeldAndNoOther) {
    const ChangeSet one = Change::Stacks;
    EXPECT_TRUE(one.Has(Change::Stacks));
    EXPECT_FALSE(one.Has(Change::Parts));
    EXPECT_TRUE(static_cast<bool>(one));
}

TEST(ChangeSet, TheUnionHoldsBothAndAnyAsksForOneOfMany) {
    ChangeSet both = Change::Koutei | Change::History;
    EXPECT_TRUE(both.Has(Change::Koutei));
    EXPECT_TRUE(both.Has(Change::History));
    EXPECT_TRUE(both.Any(Change::History | Change::Place));
    EXPECT_FALSE(both.Any(Change::Place | Change::Reloaded));
    both |= Change::Place;
    EXPECT_TRUE(both.Has(Change::Place));
    EXPECT_EQ(both, Change::Koutei | Change::History | Change::Place);
}

}  // namespace
}  // namespace kesto
