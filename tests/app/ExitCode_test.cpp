#include "app/ExitCode.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

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

std::string FileText(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

#if GTEST_HAS_DEATH_TEST
TEST(EndProcess, EndsAtOnceWithTheProcessCodeAfterTheNotice) {
    if (!kEndsWithoutTeardown)
        GTEST_SKIP() << "this build tears everything down: EndProcess returns";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(EndProcess(9020, std::cerr), testing::ExitedWithCode(60), "kesto: exit code 9020");
    EXPECT_EXIT(EndProcess(0, std::cerr), testing::ExitedWithCode(0), "");
}

TEST(EndProcess, OutputStillInABufferReachesItsFile) {
    if (!kEndsWithoutTeardown)
        GTEST_SKIP() << "this build tears everything down: EndProcess returns";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::filesystem::path out =
        std::filesystem::path(testing::TempDir()) / "EndProcess_buffered.txt";
    std::filesystem::remove(out);
    // Written to a file, the standard output is fully buffered: only a flush writes the line.
    EXPECT_EXIT(
        {
            if (std::freopen(out.string().c_str(), "w", stdout) == nullptr)
                std::abort();
            std::cout << "report line\n";
            std::printf("printed line\n");
            // Not the error stream, whose every use flushes the standard output first.
            std::ostringstream err;
            EndProcess(100, err);
        },
        testing::ExitedWithCode(100), "");
    EXPECT_EQ(FileText(out), "report line\nprinted line\n");
}
#endif

TEST(EndProcess, ReturnsTheProcessCodeWhereEverythingIsTornDown) {
    if (kEndsWithoutTeardown)
        GTEST_SKIP() << "this build ends the process in EndProcess";
    std::ostringstream err;
    EXPECT_EQ(EndProcess(100, err), ProcessExitCode(100));
    EXPECT_EQ(err.str(), kExitNoticePrinted ? "kesto: exit code 100\n" : "");
}

}  // namespace
}  // namespace kesto
