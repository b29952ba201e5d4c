#include "view/Selection.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(Selection, StartsWithNothingPickedAndNoBand) {
    const Selection s;
    EXPECT_EQ(s.Picked(), kNoStack);
    EXPECT_EQ(s.LastPicked(), kNoStack);
    EXPECT_TRUE(s.PickHistory().empty());
    EXPECT_EQ(s.Band(), BandState::Off);
    EXPECT_TRUE(s.BandList().empty());
    EXPECT_EQ(s.BandRect(), IntRect{});
    EXPECT_EQ(s.PickRect(), IntRect{});
}

TEST(Selection, BandStatesKeepTheirStoredNumbers) {
    EXPECT_EQ(static_cast<int>(BandState::Off), 0);
    EXPECT_EQ(static_cast<int>(BandState::InForce), 1);
    EXPECT_EQ(static_cast<int>(BandState::Aside), 2);
}

TEST(Selection, ResetForgetsTheBandAndThePicks) {
    const StackId stack{7};
    Selection s;
    s.StartBand(IntRect{1, 2, 3, 4});
    s.AddBandEntry(BandEntry{stack, IntRect{5, 6, 7, 8}});
    s.SetPicked(stack);
    s.SetLastPicked(stack);
    s.SetPickRect(IntRect{9, 9, 10, 10});
    s.AddToHistory(stack);
    s.AddToHistory(stack);
    s.Reset();
    EXPECT_EQ(s.Band(), BandState::Off);
    EXPECT_EQ(s.Picked(), kNoStack);
    EXPECT_EQ(s.LastPicked(), kNoStack);
    EXPECT_TRUE(s.PickHistory().empty());
    EXPECT_TRUE(s.BandList().empty());
    EXPECT_EQ(s.BandRect(), IntRect{});
    EXPECT_EQ(s.PickRect(), IntRect{});
}

TEST(Selection, StartingABandEmptiesItsListAndPutsItInForce) {
    const StackId stack{7};
    Selection s;
    s.AddBandEntry(BandEntry{stack, {}});
    s.StartBand(IntRect{10, 20, 30, 40});
    EXPECT_EQ(s.Band(), BandState::InForce);
    EXPECT_TRUE(s.BandList().empty());
    EXPECT_EQ(s.BandRect(), (IntRect{10, 20, 30, 40}));
}

TEST(Selection, TheHistoryHoldsAThousandStacksAndTheBand999Entries) {
    const StackId stack{7};
    Selection s;
    for (int i = 0; i < 1005; ++i) {
        s.AddToHistory(stack);
        s.AddBandEntry(BandEntry{stack, {}});
    }
    EXPECT_EQ(s.PickHistory().size(), 1000u);
    EXPECT_EQ(s.BandList().size(), 999u);
}

TEST(Selection, BandEntriesAreFoundMovedAndTakenOutFirstFirst) {
    const StackId a{1};
    const StackId b{2};
    Selection s;
    s.AddBandEntry(BandEntry{a, IntRect{0, 0, 1, 1}});
    s.AddBandEntry(BandEntry{b, IntRect{2, 2, 3, 3}});
    s.AddBandEntry(BandEntry{a, IntRect{4, 4, 5, 5}});
    EXPECT_TRUE(s.HasBandEntry(b));
    s.MoveBandEntry(1, IntRect{7, 7, 8, 8});
    EXPECT_EQ(s.BandList()[1].Rect, (IntRect{7, 7, 8, 8}));
    EXPECT_TRUE(s.RemoveBandEntry(a));
    ASSERT_EQ(s.BandList().size(), 2u);
    EXPECT_EQ(s.BandList()[0].Stack, b);
    EXPECT_EQ(s.BandList()[1].Rect, (IntRect{4, 4, 5, 5}));
    EXPECT_TRUE(s.RemoveBandEntry(a));
    EXPECT_FALSE(s.RemoveBandEntry(a));
    EXPECT_FALSE(s.HasBandEntry(a));
}

TEST(Selection, ForgettingThePicksKeepsTheBand) {
    const StackId stack{7};
    Selection s;
    s.StartBand(IntRect{1, 1, 9, 9});
    s.AddBandEntry(BandEntry{stack, {}});
    s.SetPicked(stack);
    s.SetLastPicked(stack);
    s.AddToHistory(stack);
    s.ForgetPicks();
    EXPECT_EQ(s.Picked(), kNoStack);
    EXPECT_EQ(s.LastPicked(), kNoStack);
    EXPECT_TRUE(s.PickHistory().empty());
    EXPECT_EQ(s.Band(), BandState::InForce);
    EXPECT_EQ(s.BandList().size(), 1u);
}

}  // namespace
}  // namespace kesto
