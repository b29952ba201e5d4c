#include "Harnesses.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "history/Journal.h"

namespace kesto::fuzz {
namespace {

using test::ReadFile;
using test::SourceDir;
using test::TempFolder;

using Harness = int (*)(FuzzSite&, const uint8_t*, size_t);

// Runs a harness on text in a site of its own below temp.
int RunOn(Harness harness, const TempFolder& temp, const std::string& text) {
    FuzzSite site(temp.Path() / "site");
    return harness(site, reinterpret_cast<const uint8_t*>(text.data()), text.size());
}

constexpr const char* kPalletLine =
    "P1,PAL-A,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,Pallet A\n";

TEST(FuzzPalletFile, CountsThePalletRecordsOfTheNamedFile) {
    TempFolder temp;
    // Two P lines are two records; the box line B1 is no pallet.
    EXPECT_EQ(
        RunOn(FuzzPalletFile, temp, std::string(kPalletLine) + "P2" + (kPalletLine + 2) + "B1\n"),
        2);
    // The last line without a line feed is not read.
    EXPECT_EQ(RunOn(FuzzPalletFile, temp, std::string(kPalletLine, strlen(kPalletLine) - 1)), 0);
    EXPECT_EQ(RunOn(FuzzPalletFile, temp, ""), 0);
}

TEST(FuzzJobFile, CountsThePartsOfTheJobFile) {
    TempFolder temp;
    const std::string job =
        "#KouteiInfo\n1,CUT,PAL-A\n#End\n#PartsInfo\n"
        "A001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n"
        "A002,1,Plate,PLT-2,280,180,10,3,0,0,0,,,2,G01,0000,,0,,K002,5\n"
        "#End\n";
    EXPECT_EQ(RunOn(FuzzJobFile, temp, job), 2);
    // A part line outside a section is not a part.
    EXPECT_EQ(RunOn(FuzzJobFile, temp, "A001,1,Bracket\n"), 0);
}

TEST(FuzzJobFile, RefusesAnInputNamingAMachineFile) {
    TempFolder temp;
    const std::string job = "#PartsInfo\nA001,1,B,B,1,1,1,1,0,0,0,,,1,G,0,/dev/zero,1,,K,1\n#End\n";
    EXPECT_EQ(RunOn(FuzzJobFile, temp, job), -1);
}

TEST(FuzzOutlineFile, CountsEveryLineReadCommentsIncluded) {
    TempFolder temp;
    // Line, comment, Circle: three lines, each ended by a line feed.
    EXPECT_EQ(RunOn(FuzzOutlineFile, temp, "Line 0 255 0 0 0 0 10 10\n$ c\nCircle 0 0 0 0 5 5 3\n"),
              3);
    // The last line without a line feed is not read.
    EXPECT_EQ(RunOn(FuzzOutlineFile, temp, "Line 0 255 0 0 0 0 10 10\nCircle 0 0 0 0 5 5 3"), 1);
}

TEST(FuzzMessageFile, ReadsThePalletCountOfThePalletChoice) {
    TempFolder temp;
    EXPECT_EQ(RunOn(FuzzMessageFile, temp, "[PalletSelect]\nPalletInfo=4,P\n"), 4);
    // No such key: "Message Not Define", whose atol is 0.
    EXPECT_EQ(RunOn(FuzzMessageFile, temp, "[KakuDlg]\nMsg001=1,x\n"), 0);
}

TEST(FuzzSetupList, CountsTheKeysThatGiveAPath) {
    TempFolder temp;
    EXPECT_EQ(RunOn(FuzzSetupList, temp,
                    "#File\nIEJ : job/j.txt\nIEK : out/r.csv\nIEL : out/h.csv\nMSG : ./\n#End\n"),
              4);
    // Entries count only between #File and #End.
    EXPECT_EQ(RunOn(FuzzSetupList, temp, "IEJ : job/j.txt\n#File\nIEK : out/r.csv\n#End\n"), 1);
    EXPECT_EQ(RunOn(FuzzSetupList, temp, ""), 0);
}

TEST(FuzzCommandLine, ReadsTheStartCornerOfTheWindowsCommandLine) {
    TempFolder temp;
    using namespace std::string_literals;
    // Token 7: 1 -> 0, 2 -> 2, 3 -> 1, anything else -> 3.
    EXPECT_EQ(RunOn(FuzzCommandLine, temp,
                    "p.txt\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "1"s),
              0);
    EXPECT_EQ(RunOn(FuzzCommandLine, temp,
                    "p.txt\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "2"s),
              2);
    EXPECT_EQ(RunOn(FuzzCommandLine, temp,
                    "p.txt\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "0\0"
                    "3"s),
              1);
    EXPECT_EQ(RunOn(FuzzCommandLine, temp, "p.txt"), 3);
    EXPECT_EQ(RunOn(FuzzCommandLine, temp, "--answer\0maybe"s), -1);
}

TEST(FuzzPlacementFile, AnEmptySaveFilePlacesTheJobAfresh) {
    TempFolder temp;
    FuzzSite site(temp.Path() / "site");
    // A001: 8 pieces, 4 a stack -> 2 stacks; A002: 3 pieces -> 1 stack: 3 stacks. A003 goes
    // to small box 1, no stack, but the save file has a line for it: 4 lines.
    EXPECT_EQ(FuzzPlacementFile(site, nullptr, 0), 3);
    EXPECT_EQ(test::ReadLines(site.Path("out/haichi.csv")).size(), 4u);
    EXPECT_TRUE(std::filesystem::exists(site.Path("out/result.csv")));
}

constexpr const char* kJournalHeader =
    "kesto-journal 1\njob 0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef\n";

TEST(FuzzJournal, CountsTheLinesAfterTheHeader) {
    TempFolder temp;
    const std::string lines =
        "2024-05-06T07:08:09.010 left 5 2\n2024-05-06T07:08:09.011 zoom\n"
        "2024-05-06T07:08:09.012 ok\n";
    EXPECT_EQ(RunOn(FuzzJournal, temp, kJournalHeader + lines), 3);
    // A last line cut short is a line too; an empty journal has none.
    EXPECT_EQ(RunOn(FuzzJournal, temp, kJournalHeader + lines + "2024-05"), 4);
    EXPECT_EQ(RunOn(FuzzJournal, temp, kJournalHeader), 0);
}

TEST(FuzzJournal, RefusedHeaderIsMinusOne) {
    TempFolder temp;
    EXPECT_EQ(RunOn(FuzzJournal, temp, ""), -1);
    EXPECT_EQ(RunOn(FuzzJournal, temp, "kesto-journal 2\njob 00\n"), -1);
}

// Every file of the seed corpus and of the past findings goes through its harness again: it
// must return within the harness's range (and, under the sanitizers, without a finding).
struct Replay {
    const char* Name;
    Harness Function;
    int Lowest;
    int Highest;
};

class CorpusReplay : public ::testing::TestWithParam<Replay> {};

std::vector<std::filesystem::path> InputsOf(const std::string& name) {
    std::vector<std::filesystem::path> inputs;
    for (const char* folder : {"corpus", "regressions"}) {
        const auto dir = SourceDir() / "fuzz" / folder / name;
        if (!std::filesystem::is_directory(dir))
            continue;
        for (const auto& entry : std::filesystem::directory_iterator(dir)) {
            if (entry.is_regular_file())
                inputs.push_back(entry.path());
        }
    }
    return inputs;
}

TEST_P(CorpusReplay, EveryInputRunsWithinTheHarnessRange) {
    const Replay& replay = GetParam();
    const auto inputs = InputsOf(replay.Name);
    ASSERT_FALSE(inputs.empty()) << "no seed corpus for " << replay.Name;
    TempFolder temp;
    for (const auto& input : inputs) {
        const int result = RunOn(replay.Function, temp, ReadFile(input.string()));
        EXPECT_GE(result, replay.Lowest) << input;
        EXPECT_LE(result, replay.Highest) << input;
    }
}

constexpr int kAny = 2147483647;

INSTANTIATE_TEST_SUITE_P(
    Harnesses, CorpusReplay,
    ::testing::Values(Replay{"PalletFile", FuzzPalletFile, 0, kAny},
                      Replay{"JobFile", FuzzJobFile, -1, kAny},
                      Replay{"OutlineFile", FuzzOutlineFile, 0, kAny},
                      Replay{"MessageFile", FuzzMessageFile, -kAny - 1, kAny},
                      Replay{"SetupList", FuzzSetupList, 0, 4},
                      Replay{"CommandLine", FuzzCommandLine, -1, 3},
                      Replay{"PlacementFile", FuzzPlacementFile, 0, kAny},
                      Replay{"Journal", FuzzJournal, -1, static_cast<int>(kJournalLinesMax)}),
    [](const ::testing::TestParamInfo<Replay>& replay) { return std::string(replay.param.Name); });

}  // namespace
}  // namespace kesto::fuzz
