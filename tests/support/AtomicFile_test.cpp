#include "support/AtomicFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "common/TestFiles.h"

namespace kesto {
namespace {

using test::ReadFile;
using test::TempFolder;
using test::WriteFile;

const std::string kOld = "old,content\r\n\x01\xff";

TEST(AtomicFile, CommitReplacesTheTarget) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    const std::string temp = out.TempPath();
    EXPECT_TRUE(out.Commit());
    EXPECT_EQ(ReadFile(folder / "r.csv"), "new\n");
    EXPECT_FALSE(std::filesystem::exists(temp));
}

TEST(AtomicFile, CommitCreatesAMissingTarget) {
    TempFolder folder;
    AtomicFile out(folder / "new.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("x", out.get());
    EXPECT_TRUE(out.Commit());
    EXPECT_EQ(ReadFile(folder / "new.csv"), "x");
}

TEST(AtomicFile, FailedCommitLeavesTheOldFileByteForByte) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new content that never lands\n", out.get());
    const std::string temp = out.TempPath();
    // Closing the descriptor underneath makes the final flush fail.
    ::close(::fileno(out.get()));
    EXPECT_FALSE(out.Commit());
    EXPECT_EQ(ReadFile(folder / "r.csv"), kOld);
    EXPECT_FALSE(std::filesystem::exists(temp));
}

TEST(AtomicFile, DiscardedWriteLeavesTheOldFileByteForByte) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    const std::string temp = out.TempPath();
    out.Discard();
    EXPECT_EQ(ReadFile(folder / "r.csv"), kOld);
    EXPECT_FALSE(std::filesystem::exists(temp));
    EXPECT_FALSE(out.Commit());
}

TEST(AtomicFile, DestructionWithoutCommitLeavesTheOldFile) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    std::string temp;
    {
        AtomicFile out(folder / "r.csv");
        ASSERT_TRUE(out.Open());
        std::fputs("new\n", out.get());
        temp = out.TempPath();
    }
    EXPECT_EQ(ReadFile(folder / "r.csv"), kOld);
    EXPECT_FALSE(std::filesystem::exists(temp));
}

TEST(AtomicFile, OpenFailsInAMissingFolder) {
    TempFolder folder;
    AtomicFile out(folder / "no/such/r.csv");
    EXPECT_FALSE(out.Open());
    EXPECT_EQ(out.get(), nullptr);
    EXPECT_FALSE(out.Commit());
}

}  // namespace
}  // namespace kesto
