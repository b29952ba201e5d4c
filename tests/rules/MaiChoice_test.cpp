#include "rules/MaiChoice.h"

#include <gtest/gtest.h>

#include <climits>
#include <utility>
#include <vector>

#include "common/PartFields.h"
#include "common/StackFields.h"
#include "common/TestServices.h"

namespace kesto {
namespace {

using test::AddStack;

// One part as named in `part` (its size plays no part in the choice) in `stacks` stacks (the
// first one picked, holding `value` pieces), under the height limit heightLimit.
struct MaiJob {
    MaiJob(const test::PartFields& part, double heightLimit, int32_t stacks = 1, int32_t value = 1)
        : Part(test::AddPart(App, part)) {
        // Another part's stack never counts as one of the part's.
        PartsInfo& other =
            test::AddPart(App, {.SizeX = 50, .SizeY = 50, .Quantity = 3, .PieceHeight = 1});
        AddStack(App, other, {.Block = -1, .Pieces = 3, .X = 0, .Y = 0, .Corner = kCornerMaxMin});
        for (int32_t i = 0; i < stacks; ++i)
            Stacks.push_back(&AddStack(
                App, Part,
                {.Block = -1, .Pieces = value, .X = 10.0 * i, .Y = 0, .Corner = kCornerMaxMin}));
        Picked = Stacks.front();
        Choice = std::make_unique<MaiChoice>(App, *Picked, heightLimit);
    }
    MaiChoice& C() { return *Choice; }

    CKestoApp App;
    PartsInfo& Part;
    std::vector<HaichiInfo*> Stacks;
    HaichiInfo* Picked = nullptr;
    std::unique_ptr<MaiChoice> Choice;
};

TEST(MaiChoice, OpensWithThePerStackLimitCutToTheHeightLimit) {
    // PerStackLimit 8 x 10 high = 80 > 50: 50 / 10 = 5 fit.
    MaiJob j({.Quantity = 20, .PerStackLimit = 8, .PieceHeight = 10}, 50);
    EXPECT_EQ(j.C().Count(), 5);
    EXPECT_EQ(j.C().StartCount(), 5);
    EXPECT_EQ(j.C().CompareCount(), 5);
    EXPECT_EQ(j.C().EditText(), "5");
}

TEST(MaiChoice, OkAtOnceReturnsNoChangeWithoutAsking) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 8, .PieceHeight = 10}, 50);
    test::RecordingOperator op(OkCancel::Ok);
    EXPECT_EQ(j.C().Confirm(op), -1);
    EXPECT_EQ(j.C().Count(), -1);
    EXPECT_EQ(j.C().EditText(), "-1");
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST(MaiChoice, LimitCountKeepsACountThatFitsAndCutsOneThatDoesNot) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 0, .PieceHeight = 10}, 55);
    EXPECT_EQ(j.C().LimitCount(3), 3);  // 30 <= 55
    EXPECT_EQ(j.C().LimitCount(5), 5);  // 50 <= 55
    EXPECT_EQ(j.C().LimitCount(6), 5);  // 60 > 55: 55 / 10 = 5.5 -> 5
    EXPECT_EQ(j.C().LimitCount(0), 5);  // below 1: as many as fit
    EXPECT_EQ(j.C().LimitCount(-4), 5);
}

TEST(MaiChoice, LimitCountAtTheLimitExactlyKeepsTheCount) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 0, .PieceHeight = 12.5}, 50);
    EXPECT_EQ(j.C().LimitCount(4), 4);  // 4 x 12.5 = 50, not above 50
    EXPECT_EQ(j.C().LimitCount(5), 4);  // 62.5 > 50: 50 / 12.5 = 4
}

TEST(MaiChoice, TypedCountAboveTheLimitIsReducedButTheTextStays) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 3, .PieceHeight = 10}, 50);
    j.C().Type("9");  // 90 > 50: 5
    EXPECT_EQ(j.C().Count(), 5);
    EXPECT_EQ(j.C().EditText(), "9");
    j.C().Type("2");  // 20 <= 50
    EXPECT_EQ(j.C().Count(), 2);
}

TEST(MaiChoice, TypedTextIsReadAsAtolDoes) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 3, .PieceHeight = 10}, 50);
    j.C().Type("  4x");
    EXPECT_EQ(j.C().Count(), 4);
    j.C().Type("abc");  // 0: as many as fit, 5
    EXPECT_EQ(j.C().Count(), 5);
    j.C().Type("");
    EXPECT_EQ(j.C().Count(), 5);
    j.C().Type("99999999999999");  // saturates at 2147483647, then cut to 5
    EXPECT_EQ(j.C().Count(), 5);
    j.C().Type("-7");
    EXPECT_EQ(j.C().Count(), 5);
}

TEST(MaiChoice, MaxButtonProposesTheCountThatFits) {
    // PerStackLimit 8: 80 > 50, so 5 pieces.
    MaiJob j({.Quantity = 20, .PerStackLimit = 8, .PieceHeight = 10}, 50);
    j.C().Type("2");
    j.C().Press(MaiButton::Max);
    EXPECT_EQ(j.C().Count(), 5);
    EXPECT_EQ(j.C().EditText(), "5");
    EXPECT_EQ(j.C().CompareCount(), 5);
}

TEST(MaiChoice, MaxButtonProposesAtLeastOne) {
    // One piece of 10 is already above the limit 5: LimitCount 0, proposed 1; the edit box's
    // change notice limits it again to 5 / 10 = 0.
    MaiJob j({.Quantity = 20, .PerStackLimit = 3, .PieceHeight = 10}, 5);
    EXPECT_EQ(j.C().Proposal(MaiButton::Max), 1);
    j.C().Press(MaiButton::Max);
    EXPECT_EQ(j.C().EditText(), "1");
    EXPECT_EQ(j.C().Count(), 0);
}

TEST(MaiChoice, EvenButtonWithQuantity10AndCap4Proposes4) {
    // Cap: PerStackLimit 0 -> 45 / 10 = 4. c = min(10, 4) = 4; n = ceil(10 / 4) = 3; 10 % 4 = 2, so
    // ceil(10 / 3) = 4.
    MaiJob j({.Quantity = 10, .PerStackLimit = 0, .PieceHeight = 10}, 45);
    EXPECT_EQ(j.C().Proposal(MaiButton::Even), 4);
    j.C().Press(MaiButton::Even);
    EXPECT_EQ(j.C().Count(), 4);
    EXPECT_EQ(j.C().EditText(), "4");
}

TEST(MaiChoice, EvenButtonWithQuantity12AndCap5Proposes4) {
    // Cap 50 / 10 = 5; c = 5; n = ceil(12 / 5) = 3; 12 % 5 = 2: ceil(12 / 3) = 4.
    MaiJob j({.Quantity = 12, .PerStackLimit = 0, .PieceHeight = 10}, 50);
    EXPECT_EQ(j.C().Proposal(MaiButton::Even), 4);
}

TEST(MaiChoice, EvenButtonKeepsTheCapWhenItDividesTheQuantity) {
    // Cap 5, 10 % 5 = 0: 5.
    MaiJob j({.Quantity = 10, .PerStackLimit = 0, .PieceHeight = 10}, 50);
    EXPECT_EQ(j.C().Proposal(MaiButton::Even), 5);
}

TEST(MaiChoice, EvenButtonGivingTheSameStacksBackIsNoChange) {
    // 12 pieces, cap 5: 3 stacks of 4; the part has 3 stacks and the picked one holds 4.
    MaiJob j({.Quantity = 12, .PerStackLimit = 0, .PieceHeight = 10}, 50, 3, 4);
    EXPECT_EQ(j.C().StartCount(), 5);
    j.C().Press(MaiButton::Even);
    EXPECT_EQ(j.C().Count(), 4);
    EXPECT_EQ(j.C().CompareCount(), -1);
    test::RecordingOperator op(OkCancel::Ok);
    EXPECT_EQ(j.C().Confirm(op), -1);
    EXPECT_TRUE(op.KakuNumbers.empty());
}

TEST(MaiChoice, EvenButtonWithOtherStacksKeepsCompareCountAndAsks) {
    // 3 stacks of 4 proposed, but the part has 2: CompareCount stays 5, 4 differs.
    MaiJob j({.Quantity = 12, .PerStackLimit = 0, .PieceHeight = 10}, 50, 2, 6);
    j.C().Press(MaiButton::Even);
    EXPECT_EQ(j.C().CompareCount(), 5);
    test::RecordingOperator op(OkCancel::Ok);
    EXPECT_EQ(j.C().Confirm(op), 4);
    ASSERT_EQ(op.KakuNumbers.size(), 1u);
    EXPECT_EQ(op.KakuNumbers[0], (std::pair<int, int>{206, 207}));
}

TEST(MaiChoice, HalfButtonWith10InOneStackProposes5CappedByNum4) {
    // ceil(10 / (1 x 2)) = 5; below PerStackLimit 8: 5. With PerStackLimit 3: 3.
    MaiJob j({.Quantity = 10, .PerStackLimit = 8, .PieceHeight = 1}, 1000);
    EXPECT_EQ(j.C().Proposal(MaiButton::Half), 5);
    j.C().Press(MaiButton::Half);
    EXPECT_EQ(j.C().Count(), 5);
    EXPECT_EQ(j.C().CompareCount(), 8);
    MaiJob capped({.Quantity = 10, .PerStackLimit = 3, .PieceHeight = 1}, 1000);
    EXPECT_EQ(capped.C().Proposal(MaiButton::Half), 3);
}

TEST(MaiChoice, ThirdAndQuarterButtonsShareOverTheStacks) {
    // 25 pieces in 1 stack: ceil(25 / 3) = 9, ceil(25 / 4) = 7; in 2 stacks: ceil(25 / 6) = 5,
    // ceil(25 / 8) = 4.
    MaiJob one({.Quantity = 25, .PerStackLimit = 30, .PieceHeight = 1}, 1000);
    EXPECT_EQ(one.C().Proposal(MaiButton::Third), 9);
    EXPECT_EQ(one.C().Proposal(MaiButton::Quarter), 7);
    MaiJob two({.Quantity = 25, .PerStackLimit = 30, .PieceHeight = 1}, 1000, 2);
    EXPECT_EQ(two.C().StackCount(), 2);
    EXPECT_EQ(two.C().Proposal(MaiButton::Third), 5);
    EXPECT_EQ(two.C().Proposal(MaiButton::Quarter), 4);
}

TEST(MaiChoice, ShareButtonAboveTheLimitIsReducedThroughTheEditBox) {
    // Raw cap PerStackLimit 30: ceil(40 / 2) = 20 proposed and shown; 20 x 10 = 200 > 50: Count 5.
    MaiJob j({.Quantity = 40, .PerStackLimit = 30, .PieceHeight = 10}, 50);
    EXPECT_EQ(j.C().Proposal(MaiButton::Half), 20);
    j.C().Press(MaiButton::Half);
    EXPECT_EQ(j.C().EditText(), "20");
    EXPECT_EQ(j.C().Count(), 5);
}

TEST(MaiChoice, ShareButtonResetsCompareCountToTheStartCount) {
    // Even split gives the stacks back (CompareCount -1); the half button restores 5.
    MaiJob j({.Quantity = 12, .PerStackLimit = 0, .PieceHeight = 10}, 50, 3, 4);
    j.C().Press(MaiButton::Even);
    ASSERT_EQ(j.C().CompareCount(), -1);
    j.C().Press(MaiButton::Max);
    EXPECT_EQ(j.C().CompareCount(), -1);
    j.C().Press(MaiButton::Half);  // ceil(12 / 6) = 2, PerStackLimit 0 caps it to 0
    EXPECT_EQ(j.C().EditText(), "0");
    EXPECT_EQ(j.C().Count(), 5);  // 0 typed: as many as fit
    EXPECT_EQ(j.C().CompareCount(), 5);
}

TEST(MaiChoice, ChangedCountConfirmedWithOkIsReturned) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 8, .PieceHeight = 10}, 50);
    j.C().Type("3");
    test::RecordingOperator op(OkCancel::Ok);
    EXPECT_EQ(j.C().Confirm(op), 3);
    EXPECT_EQ(j.C().EditText(), "3");
    EXPECT_EQ(op.KakuNumbers.size(), 1u);
}

TEST(MaiChoice, CancelToTheQuestionReturnsNoChange) {
    MaiJob j({.Quantity = 20, .PerStackLimit = 8, .PieceHeight = 10}, 50);
    j.C().Type("3");
    test::RecordingOperator op(OkCancel::Cancel);
    EXPECT_EQ(j.C().Confirm(op), -1);
    EXPECT_EQ(j.C().EditText(), "-1");
    EXPECT_EQ(op.KakuNumbers, (std::vector<std::pair<int, int>>{{206, 207}}));
}

TEST(MaiChoice, PieceHeightZeroNeverReachesTheLimit) {
    // Any count fits; "as many as fit" is the quantity 10.
    MaiJob j({.Quantity = 10, .PerStackLimit = 0, .PieceHeight = 0}, 50);
    EXPECT_EQ(j.C().Count(), 10);
    EXPECT_EQ(j.C().LimitCount(25), 25);
    EXPECT_EQ(j.C().Proposal(MaiButton::Max), 10);
    EXPECT_EQ(j.C().Proposal(MaiButton::Even), 10);  // c = 10, one stack
    j.C().Type("7");
    EXPECT_EQ(j.C().Count(), 7);
}

TEST(MaiChoice, ZeroQuantityAndZeroCapDivideByNothing) {
    // Quantity 0: even split of at least 1 a stack; shares ceil(0 / 2) = 0.
    MaiJob none({.Quantity = 0, .PerStackLimit = 4, .PieceHeight = 1}, 100);
    EXPECT_EQ(none.C().Proposal(MaiButton::Even), 1);
    EXPECT_EQ(none.C().Proposal(MaiButton::Half), 0);
    // Cap 0 (a piece of 10 under a limit of 5): c = 0 becomes 1, so 7 stacks of 1.
    MaiJob tall({.Quantity = 7, .PerStackLimit = 0, .PieceHeight = 10}, 5);
    EXPECT_EQ(tall.C().Proposal(MaiButton::Even), 1);
    // A negative quantity counts as none.
    MaiJob negative({.Quantity = -9, .PerStackLimit = 4, .PieceHeight = 1}, 100);
    EXPECT_EQ(negative.C().Proposal(MaiButton::Even), 1);
    EXPECT_EQ(negative.C().Proposal(MaiButton::Quarter), 0);
}

TEST(MaiChoice, EvenCountGuardsItsDivisor) {
    EXPECT_EQ(MaiChoice::EvenCount(10, 5, 0, 2), 5);     // no stacks: 10 in one, cap 5
    EXPECT_EQ(MaiChoice::EvenCount(10, 100, 1, 0), 10);  // no share: 10
    EXPECT_EQ(MaiChoice::EvenCount(10, 100, 3, 1), 4);   // ceil(10 / 3)
    EXPECT_EQ(MaiChoice::EvenCount(10, 4, 3, 1), 4);     // c = 4 is not below 4: cap 4
    EXPECT_EQ(MaiChoice::EvenCount(INT_MAX, INT_MAX, INT_MAX, INT_MAX), 1);
}

TEST(MaiChoice, ExtremeHeightsStayInRange) {
    MaiJob huge({.Quantity = 5, .PerStackLimit = 0, .PieceHeight = 1e-300}, 1e300);
    EXPECT_EQ(huge.C().Count(), INT_MAX);
    MaiJob negative({.Quantity = 5, .PerStackLimit = 3, .PieceHeight = 10},
                    -50);  // a negative limit lets nothing fit
    EXPECT_EQ(negative.C().Count(), 0);
    EXPECT_EQ(negative.C().LimitCount(0), 0);
}

TEST(MaiChoice, RecordWithoutPartCountsNothing) {
    CKestoApp app;
    HaichiInfo picked;
    picked.Pieces = 3;
    MaiChoice choice(app, picked, 50);
    EXPECT_EQ(choice.Count(), 0);
    EXPECT_EQ(choice.LimitCount(4), 4);
    EXPECT_EQ(choice.Proposal(MaiButton::Even), 1);
    EXPECT_EQ(choice.StackCount(), 0);
    EXPECT_EQ(choice.Proposal(MaiButton::Half), 0);
}

}  // namespace
}  // namespace kesto
