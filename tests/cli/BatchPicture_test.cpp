// The picture options of kesto-batch, the files a picture goes to, and that a run without
// pictures never loads Qt.
#include "cli/BatchPicture.h"

#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <filesystem>
#include <string>
#include <vector>

#include "cli/BatchRun.h"
#include "cli/ProgramRun.h"
#include "common/E2eCases.h"
#include "common/MiniInstallation.h"
#include "common/TestFiles.h"

namespace kesto {
namespace {

using test::MiniInstallation;
using test::TempFolder;

TEST(PictureOptions, NoPictureUnlessAsked) {
    const BatchOptions o = ParseBatchOptions({"p.txt", "0", "0", "0", "0", "1"});
    EXPECT_FALSE(o.Picture.has_value());
    EXPECT_EQ(o.Tokens.size(), 6u);
}

TEST(PictureOptions, PdfAndPngInBothSpellingsWithTheDefaultSize) {
    BatchOptions o = ParseBatchOptions({"--picture", "out/plan.pdf", "p.txt"});
    ASSERT_TRUE(o.Picture.has_value()) << o.Error;
    EXPECT_EQ(o.Picture->Output, "out/plan.pdf");
    EXPECT_EQ(o.Tokens, (std::vector<std::string>{"p.txt"}));
    o = ParseBatchOptions({"--picture=plan.PNG"});
    ASSERT_TRUE(o.Picture.has_value()) << o.Error;
    EXPECT_EQ(o.Picture->Output, "plan.PNG");
    EXPECT_EQ(o.Picture->Width, 1600);
    EXPECT_EQ(o.Picture->Height, 1000);
}

TEST(PictureOptions, SizeInBothSpellings) {
    BatchOptions o = ParseBatchOptions({"--picture-size", "800x500", "--picture", "a.png"});
    ASSERT_TRUE(o.Picture.has_value()) << o.Error;
    EXPECT_EQ(o.Picture->Width, 800);
    EXPECT_EQ(o.Picture->Height, 500);
    o = ParseBatchOptions({"--picture", "a.png", "--picture-size=1024X768"});
    ASSERT_TRUE(o.Picture.has_value()) << o.Error;
    EXPECT_EQ(o.Picture->Width, 1024);
    EXPECT_EQ(o.Picture->Height, 768);
    EXPECT_TRUE(o.Tokens.empty());
}

TEST(PictureOptions, WrongFilesAndSizesAreErrors) {
    EXPECT_NE(ParseBatchOptions({"--picture"}).Error, "");
    EXPECT_NE(ParseBatchOptions({"--picture", "plan.jpg"}).Error, "");
    EXPECT_NE(ParseBatchOptions({"--picture", "plan"}).Error, "");
    EXPECT_NE(ParseBatchOptions({"--picture", ".pdf"}).Error, "");
    EXPECT_NE(ParseBatchOptions({"--picture=", "p.txt"}).Error, "");
    for (const char* size : {"800", "800x", "x500", "800x500x2", "80x500", "800x20000", "-800x500",
                             "8OOx500", "800 x 500"}) {
        const BatchOptions o = ParseBatchOptions({"--picture", "a.png", "--picture-size", size});
        EXPECT_NE(o.Error, "") << size;
        EXPECT_NE(o.Error.find("--picture-size"), std::string::npos) << o.Error;
    }
    EXPECT_NE(ParseBatchOptions({"--picture", "a.png", "--picture-size"}).Error, "");
    EXPECT_EQ(ParseBatchOptions({"--picture-size", "800x500"}).Error,
              "--picture-size needs --picture");
}

TEST(PictureOptions, UsageNamesThePictureOptions) {
    EXPECT_NE(BatchUsage().find("--picture FILE.pdf|FILE.png"), std::string::npos);
    EXPECT_NE(BatchUsage().find("--picture-size"), std::string::npos);
}

#ifdef _WIN32
TEST(RunProgram, GivesTheFullExitCode) {
    const ProgramResult zero = RunProgram("cmd", {"/c", "exit", "0"}, "");
    EXPECT_EQ(zero.ExitCode, 0) << zero.Error;
    const ProgramResult five = RunProgram("cmd", {"/c", "exit", "5"}, "");
    EXPECT_EQ(five.ExitCode, 5) << five.Error;
    const ProgramResult full = RunProgram("cmd", {"/c", "exit", "9020"}, "");
    EXPECT_EQ(full.ExitCode, 9020) << full.Error;
}

TEST(RunProgram, ArgumentsWithBlanksArriveWholeAndMessagesGoToTheErrorFile) {
    TempFolder folder;
    const std::string errors = folder / "err.txt";
    const ProgramResult run =
        RunProgram(test::BatchProgram().string(), {"--answer", "o k \"q\" \\"}, errors);
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_EQ(run.Error, "");
    EXPECT_NE(test::ReadFile(errors).find("not 'o k \"q\" \\'"), std::string::npos)
        << test::ReadFile(errors);
}

TEST(QuotedArgument, QuotesOnlyWhatTheRuntimeWouldSplit) {
    EXPECT_EQ(QuotedArgument("plain"), "plain");
    EXPECT_EQ(QuotedArgument(""), "\"\"");
    EXPECT_EQ(QuotedArgument("C:\\Program Files\\x"), "\"C:\\Program Files\\x\"");
    EXPECT_EQ(QuotedArgument("a \"b\""), "\"a \\\"b\\\"\"");
    EXPECT_EQ(QuotedArgument("dir with blank\\"), "\"dir with blank\\\\\"");
}
#else
TEST(RunProgram, GivesTheExitStatusAndTheMessages) {
    TempFolder folder;
    const std::string errors = folder / "err.txt";
    ProgramResult run = RunProgram("sh", {"-c", "echo oops >&2; exit 3"}, errors);
    EXPECT_EQ(run.ExitCode, 3);
    EXPECT_EQ(run.Error, "");
    EXPECT_EQ(test::ReadFile(errors), "oops\n");
    run = RunProgram("/bin/true", {}, "");
    EXPECT_EQ(run.ExitCode, 0);
}

#endif

TEST(RunProgram, AMissingProgramIsAnErrorNotACode) {
    TempFolder folder;
    const ProgramResult run = RunProgram(folder / "no-such-program", {}, "");
    EXPECT_EQ(run.ExitCode, -1);
    EXPECT_NE(run.Error.find("cannot start"), std::string::npos) << run.Error;
}

#ifndef _WIN32
// What the loader maps for a kesto-batch run, as it reports it.
std::string LoaderReport(const TempFolder& folder, const std::string& options) {
    const std::string command =
        "cd '" + folder.Path().string() + "' && LD_DEBUG=libs ORVOSystemRoot='" +
        folder.Path().string() + "' XDG_CONFIG_HOME='" + (folder / "config") + "' '" +
        (test::BinaryDir() / "kesto-batch").string() + "' " + options +
        " pallet/pallets.txt 0 0 0 0 1 >'" + (folder / "loader.txt") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << test::ReadFile(folder / "loader.txt");
    return test::ReadFile(folder / "loader.txt");
}

#endif

TEST(BatchWithoutPicture, LoadsNoQtLibrary) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows' loader does not report what it maps (no LD_DEBUG)";
#else
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    const std::string report = LoaderReport(folder, "--answer ok");
    // The loader did report: the C library is always there.
    ASSERT_NE(report.find("libc.so"), std::string::npos) << report;
    EXPECT_EQ(report.find("libQt"), std::string::npos) << report;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
#endif
}

}  // namespace
}  // namespace kesto
