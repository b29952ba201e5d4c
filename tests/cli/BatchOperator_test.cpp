#include "cli/BatchOperator.h"

#include <gtest/gtest.h>

#include <sstream>

#include "common/TestFiles.h"
#include "common/TestServices.h"

namespace kesto {
namespace {

// A message file with one informing and one asking message.
class BatchOperatorTest : public testing::Test {
  protected:
    void SetUp() override {
        test::WriteFile(folder / "Kesto.ini",
                        "[KakuDlg]\nMsg005=1,\"Parts left\"\nMsg210=1,\"Delete the result?\"\n");
        test::RecordingOperator loading;
        ASSERT_EQ(messages.Load(folder / "Kesto.ini", loading), 0);
    }
    test::TempFolder folder;
    MessageTable messages;
    std::ostringstream err;
};

TEST_F(BatchOperatorTest, MessageBoxIsPrintedWithTheProgramName) {
    BatchOperator op(messages, err, OkCancel::Ok);
    op.ShowMessageBox("File Open Error!![x]");
    EXPECT_EQ(err.str(), "kesto: File Open Error!![x]\n");
}

TEST_F(BatchOperatorTest, QuestionPrintsBothMessagesAndGivesTheAnswer) {
    BatchOperator cancel(messages, err, OkCancel::Cancel);
    EXPECT_EQ(cancel.AskKaku(210, 5), OkCancel::Cancel);
    EXPECT_EQ(err.str(),
              "kesto: message 210: Delete the result?\nkesto: message 005: Parts left\n");
    err.str("");
    BatchOperator ok(messages, err, OkCancel::Ok);
    EXPECT_EQ(ok.AskKaku(210, 0), OkCancel::Ok);
    EXPECT_EQ(err.str(), "kesto: message 210: Delete the result?\n");
}

TEST_F(BatchOperatorTest, InformingMessagesUpTo200AreAnsweredWithOk) {
    BatchOperator op(messages, err, OkCancel::Cancel);
    EXPECT_EQ(op.AskKaku(5, 0), OkCancel::Ok);
    EXPECT_EQ(op.AskKaku(200, 0), OkCancel::Ok);
    EXPECT_EQ(op.AskKaku(201, 0), OkCancel::Cancel);
    EXPECT_EQ(err.str().rfind("kesto: message 005: Parts left\nkesto: message 200: \n", 0), 0u);
}

TEST_F(BatchOperatorTest, OffsetWarningIsPrintedAndAnsweredAsConfigured) {
    BatchOperator ok(messages, err, OkCancel::Ok);
    BatchOperator cancel(messages, err, OkCancel::Cancel);
    EXPECT_TRUE(ok.AskOffsetWarning("Offset over"));
    EXPECT_FALSE(cancel.AskOffsetWarning("Offset over"));
    EXPECT_EQ(err.str(), "kesto: Offset over\nkesto: Offset over\n");
}

TEST(BatchOperator, ShiftJisMessagesReachTheTerminalAsUtf8) {
    test::TempFolder folder;
    // Msg209 "続けますか？" and a caption in Shift_JIS, as the machine's tools save them.
    test::WriteFile(folder / "Kesto.ini",
                    "[KakuDlg]\nMsg209=1,\"\x91\xB1\x82\xAF\x82\xDC\x82\xB7\x82\xA9\x81\x48\"\n");
    test::RecordingOperator loading;
    MessageTable messages;
    ASSERT_EQ(messages.Load(folder / "Kesto.ini", loading), 0);
    std::ostringstream err;
    BatchOperator op(messages, err, OkCancel::Ok);
    op.AskKaku(209, 0);
    op.AskOffsetWarning("\x83\x70\x83\x8C\x83\x62\x83\x67");
    EXPECT_EQ(err.str(), "kesto: message 209: 続けますか？\nkesto: パレット\n");
}

}  // namespace
}  // namespace kesto
