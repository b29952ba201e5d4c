#include "support/OperatorRelay.h"

#include <gtest/gtest.h>

#include "common/TestServices.h"

namespace kesto {
namespace {

TEST(OperatorRelay, PassesEveryQuestionToWhomItRelaysToAndCanBeTurned) {
    test::RecordingOperator first(OkCancel::Cancel);
    test::RecordingOperator second(OkCancel::Ok);
    OperatorRelay relay(first);
    EXPECT_EQ(relay.AskKaku(7, 0), OkCancel::Cancel);
    relay.ShowMessageBox("one");
    EXPECT_FALSE(relay.AskOffsetWarning("offset"));
    relay.RelayTo(second);
    EXPECT_EQ(&relay.Target(), &second);
    EXPECT_EQ(relay.AskKaku(9, 10), OkCancel::Ok);
    EXPECT_EQ(first.KakuNumbers, (std::vector<std::pair<int, int>>{{7, 0}}));
    EXPECT_EQ(first.Messages, std::vector<std::string>{"one"});
    EXPECT_EQ(second.KakuNumbers, (std::vector<std::pair<int, int>>{{9, 10}}));
}

TEST(QuietOperator, ShowsNothingAndAnswersEveryQuestionOk) {
    QuietOperator quiet;
    quiet.ShowMessageBox("nothing");
    EXPECT_EQ(quiet.AskKaku(208, 0), OkCancel::Ok);
    EXPECT_TRUE(quiet.AskOffsetWarning("offset"));
}

}  // namespace
}  // namespace kesto
