// Random journals on generated jobs: the commands drawn on a live start of the job, carried out
// again on a fresh start of it, leave the same job and write the same files.
#include "JournalGenerator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "JobGenerator.h"
#include "common/TestFiles.h"
#include "session/JournalReplay.h"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

// The job's three files after OK, by name.
std::map<std::string, std::string> Outputs(const fs::path& root) {
    std::map<std::string, std::string> files;
    for (const auto& e : fs::directory_iterator(root / "out"))
        files[e.path().filename().string()] = ReadFile(e.path().string());
    return files;
}

JobShape Shape(uint32_t seed) {
    JobShape shape = seed % 2 == 0 ? SampleLikeJobShape() : MediumJobShape();
    shape.Seed = seed;
    return shape;
}

class JournalGeneratorTest : public ::testing::TestWithParam<uint32_t> {};

TEST_P(JournalGeneratorTest, ItsCommandsReplayedOnAFreshStartWriteWhatTheLiveRunWrote) {
    TempFolder folder;
    const GeneratedJob job = GenerateJob(Shape(GetParam()));
    const Installation live = WriteInstallation(folder / "live", job, {});
    const Installation again = WriteInstallation(folder / "again", job, {});

    HeadlessJob first(live);
    ASSERT_TRUE(first.Started());
    const std::vector<JournalCommand> commands =
        RandomJournal(first.Session(), first.Area(), first.Relay(),
                      {.Seed = GetParam(), .Commands = 250, .ReloadsPerThousand = 8});
    // The per-user values first (none stored: Direct and the block cells off), then the
    // drawing area's size, as the window's.
    ASSERT_EQ(commands.size(), 253u);
    EXPECT_EQ(FormatJournalCommand(commands[0]), "direct 0");
    EXPECT_EQ(FormatJournalCommand(commands[1]), "blockdraw 0");
    EXPECT_EQ(FormatJournalCommand(commands[2]), "area 1600 900");
    ASSERT_TRUE(first.Session().Finish(OkCancel::Ok));

    HeadlessJob second(again);
    ASSERT_TRUE(second.Started());
    QuietOperator answers;
    JournalReplay replay(second.Session(), second.Area().Drawing(), second.Area().Editing(),
                         second.Relay(), answers);
    const ReplayOutcome outcome =
        replay.Run(ReadJournal(JournalTextOf(std::string(64, 'a'), commands)));
    ASSERT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 253);
    ASSERT_TRUE(second.Session().Finish(OkCancel::Ok));

    // The side and save files always; the result file only when nothing is left short.
    const auto a = Outputs(live.Root);
    EXPECT_EQ(a.count("save.txt"), 1u);
    EXPECT_EQ(a.count("result.txt_tmp"), 1u);
    EXPECT_EQ(a, Outputs(again.Root));
}

INSTANTIATE_TEST_SUITE_P(Seeds, JournalGeneratorTest, ::testing::Range(1u, 7u));

TEST(JournalGenerator, TheSameSeedDrawsTheSameCommandsAndEveryKindComes) {
    TempFolder folder;
    const GeneratedJob job = GenerateJob(Shape(2));
    std::vector<std::vector<JournalCommand>> drawn;
    for (const char* name : {"a", "b"}) {
        HeadlessJob started(WriteInstallation(folder / name, job, {}));
        ASSERT_TRUE(started.Started());
        drawn.push_back(RandomJournal(started.Session(), started.Area(), started.Relay(),
                                      {.Seed = 9, .Commands = 400, .ReloadsPerThousand = 10}));
    }
    EXPECT_EQ(drawn[0], drawn[1]);
    std::set<JournalVerb> kinds;
    for (const JournalCommand& c : drawn[0])
        kinds.insert(c.Verb);
    for (const JournalVerb verb :
         {JournalVerb::Drop, JournalVerb::BandDrop, JournalVerb::Left, JournalVerb::Right,
          JournalVerb::Sheets, JournalVerb::Undo, JournalVerb::Redo, JournalVerb::Process,
          JournalVerb::Pallet, JournalVerb::View, JournalVerb::Direct})
        EXPECT_TRUE(kinds.count(verb) > 0) << JournalWord(verb);
}

}  // namespace
}  // namespace kesto::test
