#include "app/DirectMode.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(DirectMode, IsUnreadUntilAValueIsGiven) {
    const DirectMode mode;
    EXPECT_TRUE(mode.Unread());
    EXPECT_EQ(mode.Stored(), -1);
    // Unread is not 0: the questions that ask "not 0" answer yes, as the stored -1 did.
    EXPECT_FALSE(mode.IsOne());
    EXPECT_TRUE(mode.IsNotZero());
}

TEST(DirectMode, ZeroIsOffForBothQuestions) {
    const DirectMode mode(0);
    EXPECT_FALSE(mode.IsOne());
    EXPECT_FALSE(mode.IsNotZero());
}

TEST(DirectMode, OneIsOnForBothQuestions) {
    const DirectMode mode(1);
    EXPECT_TRUE(mode.IsOne());
    EXPECT_TRUE(mode.IsNotZero());
}

TEST(DirectMode, AStoredTwoIsKeptAndAnswersTheTwoQuestionsDifferently) {
    const DirectMode mode(2);
    EXPECT_EQ(mode.Stored(), 2);
    EXPECT_FALSE(mode.IsOne());
    EXPECT_TRUE(mode.IsNotZero());
}

TEST(DirectMode, SwitchTurnsZeroIntoOneAndAnythingElseIntoZero) {
    for (const int32_t stored : {1, 2, -1, 7}) {
        DirectMode mode(stored);
        mode.Switch();
        EXPECT_EQ(mode.Stored(), 0) << stored;
    }
    DirectMode off(0);
    off.Switch();
    EXPECT_EQ(off.Stored(), 1);
}

TEST(DirectMode, ComparesByTheStoredNumber) {
    EXPECT_EQ(DirectMode(2), DirectMode(2));
    EXPECT_NE(DirectMode(2), DirectMode(1));
    EXPECT_TRUE(DirectMode(1) == 1);
}

}  // namespace
}  // namespace kesto
