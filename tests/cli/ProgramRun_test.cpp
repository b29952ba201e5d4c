#include "cli/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "common/TestFiles.h"

namespace kesto {
namespace {

using test::TempFolder;
using test::WriteFile;

#ifdef _WIN32
constexpr const char* kBatch = "kesto-batch.exe";
constexpr const char* kPicture = "kesto-picture.exe";
#else
constexpr const char* kBatch = "kesto-batch";
constexpr const char* kPicture = "kesto-picture";
#endif

TEST(FindPictureProgram, TakesTheOneBesideTheProgramsOwnFile) {
    TempFolder folder;
    const std::filesystem::path bin = folder.Path() / "usr" / "bin";
    WriteFile(bin / kBatch, "");
    WriteFile(bin / kPicture, "");
    EXPECT_EQ(FindPictureProgram(bin / kBatch, "kesto-batch"), (bin / kPicture).string());
    // Also when started by a path where no picture program stands.
    EXPECT_EQ(FindPictureProgram(bin / kBatch, (folder.Path() / "elsewhere" / kBatch).string()),
              (bin / kPicture).string());
}

TEST(FindPictureProgram, TakesTheOneBesideTheLinkItWasStartedByWhenItsOwnFolderHasNone) {
    TempFolder folder;
    const std::filesystem::path real = folder.Path() / "opt" / "kesto";
    const std::filesystem::path links = folder.Path() / "links";
    WriteFile(real / kBatch, "");
    WriteFile(links / kPicture, "");
    EXPECT_EQ(FindPictureProgram(real / kBatch, (links / kBatch).string()),
              (links / kPicture).string());
}

TEST(FindPictureProgram, LooksInThePathWhenNeitherFolderHasIt) {
    TempFolder folder;
    WriteFile(folder.Path() / kBatch, "");
    EXPECT_EQ(FindPictureProgram(folder.Path() / kBatch, "kesto-batch"), kPicture);
    EXPECT_EQ(FindPictureProgram("", "kesto-batch"), kPicture);
}

TEST(FindPictureProgram, AFolderOfThatNameIsNoProgram) {
    TempFolder folder;
    std::filesystem::create_directories(folder.Path() / kPicture);
    EXPECT_EQ(FindPictureProgram(folder.Path() / kBatch, "kesto-batch"), kPicture);
}

}  // namespace
}  // namespace kesto
