#include "app/ExitCode.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(SettleExitCode, OkGivesZero) {
    EXPECT_EQ(SettleExitCode(0, OkCancel::Ok), 0);
}

TEST(SettleExitCode, LeftWithoutOkGivesHundred) {
    EXPECT_EQ(SettleExitCode(0, OkCancel::Cancel), 100);
}

TEST(SettleExitCode, EnterKeyIsNeverAResult) {
    EXPECT_EQ(SettleExitCode(13, OkCancel::Ok), 0);
    EXPECT_EQ(SettleExitCode(13, OkCancel::Cancel), 100);
}

TEST(SettleExitCode, StartUpCodesPassThrough) {
    EXPECT_EQ(SettleExitCode(9020, OkCancel::Cancel), 9020);
    EXPECT_EQ(SettleExitCode(9001, OkCancel::Cancel), 9001);
    EXPECT_EQ(SettleExitCode(999, OkCancel::Cancel), 999);
}

#ifndef _WIN32
TEST(ProcessExitCode, PosixKeepsTheLowEightBitsAndTheCodesStayDistinct) {
    EXPECT_EQ(ProcessExitCode(0), 0);
    EXPECT_EQ(ProcessExitCode(100), 100);
    EXPECT_EQ(ProcessExitCode(999), 231);
    EXPECT_EQ(ProcessExitCode(9001), 41);
    EXPECT_EQ(ProcessExitCode(9010), 50);
    EXPECT_EQ(ProcessExitCode(9015), 55);
    EXPECT_EQ(ProcessExitCode(9020), 60);
    EXPECT_EQ(ProcessExitCode(9026), 66);
    EXPECT_EQ(ProcessExitCode(9101), 141);
    EXPECT_EQ(ProcessExitCode(9102), 142);
}

TEST(ExitCodeNotice, NamesTheFullCode) {
    EXPECT_EQ(ExitCodeNotice(9020), "kesto: exit code 9020");
}
#else
TEST(ProcessExitCode, WindowsReturnsTheFullCode) {
    EXPECT_EQ(ProcessExitCode(999), 999);
    EXPECT_EQ(ProcessExitCode(9020), 9020);
    EXPECT_EQ(ProcessExitCode(9102), 9102);
}

TEST(ExitCodeNotice, NoneOnWindowsWhereTheCodeArrivesWhole) {
    EXPECT_EQ(ExitCodeNotice(9020), "");
    EXPECT_EQ(ExitCodeNotice(100), "");
}
#endif

TEST(ExitCodeNotice, NothingForZero) {
    EXPECT_EQ(ExitCodeNotice(0), "");
}

}  // namespace
}  // namespace kesto
