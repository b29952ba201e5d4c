#include "support/AtomicFile.h"

#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/WindowsFileHold.h"

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
    EXPECT_EQ(ReadFile(folder / "r.csv"), test::TextModeBytes("new\n"));
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

// Records the steps of the writes while it lives.
class StepRecorder : public WriteWatcher {
  public:
    StepRecorder() { AtomicFile::Watch(this); }
    ~StepRecorder() override { AtomicFile::Watch(nullptr); }
    void Reached(WriteStep step) override { Steps.push_back(step); }
    std::vector<WriteStep> Steps;
};

TEST(AtomicFile, CommitSyncsTheFileBeforeTheRenameAndTheFolderAfterIt) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    StepRecorder recorder;
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    EXPECT_TRUE(out.Commit());
#ifdef _WIN32
    // The rename itself writes through to the disk: there is no folder to sync.
    const std::vector<WriteStep> expected = {WriteStep::TemporaryCreated, WriteStep::FileSynced,
                                             WriteStep::Renamed};
#else
    const std::vector<WriteStep> expected = {WriteStep::TemporaryCreated, WriteStep::FileSynced,
                                             WriteStep::Renamed, WriteStep::FolderSynced};
#endif
    EXPECT_EQ(recorder.Steps, expected);
}

TEST(AtomicFile, FailedCommitNeverReachesTheRename) {
    TempFolder folder;
    StepRecorder recorder;
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    ::close(::fileno(out.get()));
    EXPECT_FALSE(out.Commit());
    EXPECT_EQ(recorder.Steps, std::vector<WriteStep>{WriteStep::TemporaryCreated});
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

TEST(AtomicFile, TemporaryNameIsTheTargetNameMarkerAndSixLettersOrDigits) {
    EXPECT_TRUE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-a1B2c3"));
    EXPECT_TRUE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-ZZZZZZ"));
    EXPECT_TRUE(AtomicFile::IsTemporaryName("result.csv_tmp", "result.csv_tmp.kesto-000000"));
}

TEST(AtomicFile, NamesThatOnlyLookLikeATemporaryAreNotOurs) {
    // "notours" has seven characters; mkstemp always fills exactly six.
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-notours"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-ABC12"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-ABC_12"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv",
                                             "result.csv.kesto-AB\xc3\xa9"
                                             "CD"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv.kesto-"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv.KESTO-ABC123"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "other.csv.kesto-ABC123"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "xresult.csv.kesto-ABC123"));
    // The side file's temporaries belong to the side file, not to the result file.
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv_tmp.kesto-ABC123"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("result.csv", "result.csv"));
    EXPECT_FALSE(AtomicFile::IsTemporaryName("", ".kesto-ABC123"));
}

TEST(AtomicFile, TheTemporaryOpenCreatesHasTheTemporaryName) {
    TempFolder folder;
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    const std::string name = std::filesystem::path(out.TempPath()).filename().string();
    EXPECT_TRUE(AtomicFile::IsTemporaryName("r.csv", name)) << name;
}

TEST(AtomicFile, RemovesOnlyTheStaleTemporariesOfItsTarget) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    for (const char* name : {"r.csv.kesto-ABC123", "r.csv.kesto-x9Y8z7"})
        WriteFile(folder / name, "torn");
    const std::vector<std::string> kept = {"r.csv.kesto-notours", "other.csv.kesto-ABC123",
                                           "r.csv_tmp.kesto-ABC123", "sub/r.csv.kesto-ABC123"};
    for (const std::string& name : kept)
        WriteFile(folder / name, "not ours");
    std::filesystem::create_directory(folder / "r.csv.kesto-DIR123");
#ifndef _WIN32
    std::filesystem::create_symlink(folder / "r.csv", folder / "r.csv.kesto-LNK123");
#endif

    EXPECT_EQ(AtomicFile::RemoveStaleTemporaries(folder / "r.csv"), 2);

    EXPECT_FALSE(std::filesystem::exists(folder / "r.csv.kesto-ABC123"));
    EXPECT_FALSE(std::filesystem::exists(folder / "r.csv.kesto-x9Y8z7"));
    for (const std::string& name : kept)
        EXPECT_EQ(ReadFile(folder / name), "not ours") << name;
    EXPECT_TRUE(std::filesystem::is_directory(folder / "r.csv.kesto-DIR123"));
#ifndef _WIN32
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "r.csv.kesto-LNK123"));
#endif
    EXPECT_EQ(ReadFile(folder / "r.csv"), kOld);
}

TEST(AtomicFile, RemovingTemporariesOfAMissingFolderOrNoNameDoesNothing) {
    TempFolder folder;
    WriteFile(folder / ".kesto-ABC123", "x");
    EXPECT_EQ(AtomicFile::RemoveStaleTemporaries(folder / "no/such/r.csv"), 0);
    EXPECT_EQ(AtomicFile::RemoveStaleTemporaries(""), 0);
    EXPECT_EQ(AtomicFile::RemoveStaleTemporaries(folder.Path().string() + "/"), 0);
    EXPECT_TRUE(std::filesystem::exists(folder / ".kesto-ABC123"));
}

TEST(AtomicFile, AStaleTemporaryDoesNotDisturbTheNextWrite) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    WriteFile(folder / "r.csv.kesto-ABC123", "torn half li");
    AtomicFile::RemoveStaleTemporaries(folder / "r.csv");
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    EXPECT_TRUE(out.Commit());
    EXPECT_EQ(ReadFile(folder / "r.csv"), test::TextModeBytes("new\n"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()),
                            std::filesystem::directory_iterator{}),
              1);
}

#ifdef _WIN32
// The target opened by another program that shares neither writing nor deleting, as an
// editor or a spreadsheet holds a file it shows.
struct HeldOpen : test::HeldOpen {
    explicit HeldOpen(const std::string& path)
        : test::HeldOpen(path, GENERIC_READ, FILE_SHARE_READ) {}
};

TEST(AtomicFile, LinesEndInCarriageReturnLineFeedOnWindows) {
    TempFolder folder;
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("a,1\nb,2\n", out.get());
    EXPECT_TRUE(out.Commit());
    EXPECT_EQ(ReadFile(folder / "r.csv"), "a,1\r\nb,2\r\n");
}

TEST(AtomicFile, TemporaryIsNamedAsTheStaleOnesAreRecognised) {
    TempFolder folder;
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    const std::string name = std::filesystem::path(out.TempPath()).filename().string();
    EXPECT_TRUE(AtomicFile::IsTemporaryName("r.csv", name)) << name;
}

TEST(AtomicFile, TargetHeldOpenWithoutSharingKeepsItsBytesAndTheCommitFails) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    HeldOpen other(folder / "r.csv");
    ASSERT_TRUE(other.IsOpen());
    AtomicFile out(folder / "r.csv");
    ASSERT_TRUE(out.Open());
    std::fputs("new\n", out.get());
    const std::string temp = out.TempPath();
    EXPECT_FALSE(out.Commit());
    EXPECT_FALSE(std::filesystem::exists(temp));
    other.Close();
    EXPECT_EQ(ReadFile(folder / "r.csv"), kOld);
}

TEST(AtomicFile, TargetReleasedByTheOtherProgramIsReplacedOnTheNextCommit) {
    TempFolder folder;
    WriteFile(folder / "r.csv", kOld);
    {
        HeldOpen other(folder / "r.csv");
        AtomicFile out(folder / "r.csv");
        ASSERT_TRUE(out.Open());
        EXPECT_FALSE(out.Commit());
    }
    AtomicFile again(folder / "r.csv");
    ASSERT_TRUE(again.Open());
    std::fputs("new\n", again.get());
    EXPECT_TRUE(again.Commit());
    EXPECT_EQ(ReadFile(folder / "r.csv"), "new\r\n");
}
#endif

}  // namespace
}  // namespace kesto
