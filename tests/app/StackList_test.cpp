#include "app/StackList.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace kesto {
namespace {

int32_t Raw(StackId id) {
    return static_cast<int32_t>(id);
}

TEST(StackList, NewStacksGetIdsFromOneInListOrderAndAreFoundByThem) {
    StackList list;
    HaichiInfo& a = list.Append();
    HaichiInfo& b = list.Append();
    EXPECT_EQ(Raw(a.Id), 1);
    EXPECT_EQ(Raw(b.Id), 2);
    EXPECT_EQ(list.Find(a.Id), &a);
    EXPECT_EQ(list.Find(b.Id), &b);
    EXPECT_EQ(list.Find(kNoStack), nullptr);
    EXPECT_EQ(list.Find(StackId{3}), nullptr);
    EXPECT_EQ(list.Find(StackId{-5}), nullptr);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_EQ(&list.front(), &a);
    EXPECT_EQ(&list.back(), &b);
}

TEST(StackList, AStackIsNamedByItsPlaceInTheListAndFoundByIt) {
    StackList list;
    HaichiInfo& a = list.Append();
    HaichiInfo& b = list.Append();
    HaichiInfo& c = list.Append();
    EXPECT_EQ(list.PositionOf(a.Id), 0u);
    EXPECT_EQ(list.PositionOf(c.Id), 2u);
    const StackId gone = b.Id;  // b's record goes with it
    list.Remove(&b);
    // The places close up behind a stack taken out.
    EXPECT_EQ(list.PositionOf(c.Id), 1u);
    EXPECT_EQ(list.PositionOf(gone), std::nullopt);
    EXPECT_EQ(list.PositionOf(kNoStack), std::nullopt);
    EXPECT_EQ(list.AtPosition(0), &a);
    EXPECT_EQ(list.AtPosition(1), &c);
    EXPECT_EQ(list.AtPosition(2), nullptr);
}

TEST(StackList, ARemovedStackIsFoundAsNothingAndItsIdIsNotGivenAgain) {
    StackList list;
    HaichiInfo& a = list.Append();
    const StackId gone = list.Append().Id;
    list.Remove(list.Find(gone));
    EXPECT_EQ(list.Find(gone), nullptr);
    EXPECT_EQ(list.Find(a.Id), &a);
    EXPECT_EQ(Raw(list.Append().Id), 3);
    EXPECT_EQ(list.size(), 2u);
}

TEST(StackList, RemovingAStackNotInTheListChangesNothing) {
    StackList list;
    list.Append();
    HaichiInfo stranger;
    stranger.Id = StackId{1};
    list.Remove(&stranger);
    EXPECT_EQ(list.size(), 1u);
    EXPECT_NE(list.Find(StackId{1}), nullptr);
}

TEST(StackList, ClearingForgetsEveryStackButNotTheIdsGiven) {
    StackList list;
    const StackId old = list.Append().Id;
    list.Append();
    list.Clear();
    EXPECT_TRUE(list.Empty());
    EXPECT_EQ(list.Find(old), nullptr);
    EXPECT_EQ(Raw(list.FirstId()), 3);
    HaichiInfo& next = list.Append();
    EXPECT_EQ(Raw(next.Id), 3);
    EXPECT_EQ(list.Find(next.Id), &next);
    EXPECT_EQ(list.Find(old), nullptr);
}

TEST(StackList, AListPutBackGivesEveryStackItsOwnIdAndGoesOnFromTheNextOne) {
    StackList list;
    list.ResetIds(StackId{5}, StackId{10});
    HaichiInfo& six = list.AppendWithId(StackId{6});
    HaichiInfo& nine = list.AppendWithId(StackId{9});
    EXPECT_EQ(list.Find(StackId{6}), &six);
    EXPECT_EQ(list.Find(StackId{9}), &nine);
    EXPECT_EQ(list.Find(StackId{5}), nullptr);
    EXPECT_EQ(list.Find(StackId{4}), nullptr);
    EXPECT_EQ(Raw(list.Append().Id), 10);
}

TEST(StackList, ACopyFindsItsOwnStacks) {
    StackList list;
    list.Append().Pieces = 4;
    list.Count = 1;
    const StackList copy = list;
    const HaichiInfo* found = copy.Find(StackId{1});
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found, &copy.front());
    EXPECT_NE(found, &list.front());
    EXPECT_EQ(found->Pieces, 4);
    EXPECT_EQ(copy.Count, 1);
    StackList assigned;
    assigned = list;
    EXPECT_EQ(assigned.Find(StackId{1}), &assigned.front());
}

TEST(StackList, AMovedListKeepsItsStacksWhereTheyAre) {
    StackList list;
    HaichiInfo& a = list.Append();
    StackList moved = std::move(list);
    EXPECT_EQ(moved.Find(a.Id), &a);
}

}  // namespace
}  // namespace kesto
