// The window killed in the middle of an operator's session. `kesto` on Xvfb with openbox is
// driven through a seeded random sequence of commands by real input events and killed with
// SIGKILL at random points of it, in the middle of a command too; then it is started again on
// the same job with the same state folder. The journal the killed run left must hold every
// command the window had answered before the kill, at most the one in flight besides, in the
// order an unkilled run of the same sequence wrote them. The recovery question must come up
// when they include corrections, Return restores them, and after OK the result, side and save
// files must be byte for byte those of kesto-batch --replay of the journal the window ended
// with. The unkilled run's own files are those of the replay of its journal too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "common/RandomOperator.h"
#include "common/TestFiles.h"
#include "common/WindowCommands.h"
#include "common/WindowProcess.h"
#include "common/WindowRestore.h"
#include "common/XDisplay.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;
using test::Job;

// From the last input to the kill: half the kills within kShortDelayMs, where most commands
// are still being carried out, the others up to kLongestDelayMs.
constexpr int kShortDelayMs = 20;
constexpr int kLongestDelayMs = 300;

// Where a run is killed: while command Command is given, StepRoll (modulo its inputs) picks
// the input after which it is killed, DelayMs after that input.
struct KillPoint {
    int Command = 0;
    int StepRoll = 0;
    int DelayMs = 0;
};

struct KillCase {
    std::string Name;
    Job Which;
    int Parts;  // of the generated job
    uint32_t Seed;
    int Commands;  // in the sequence
    int Kills;     // at points drawn with the seed
    // Kills at points named besides: the last input of a command that takes its time, at once.
    std::vector<KillPoint> Named;
};

void PrintTo(const KillCase& c, std::ostream* out) {
    *out << c.Name;
}

// The whole sequence given without a kill: the journal's commands once the window answered
// each (Answered[0] after the start), and the commands' names.
struct WholeRun {
    std::vector<size_t> Answered;
    std::vector<std::string> Journal;  // its command lines without time, before the end
    std::vector<std::string> Names;
};

size_t JournalCommandCount(const fs::path& runFolder) {
    return test::JournalCommands(test::ReadFile(test::JournalIn(runFolder))).size();
}

class WindowKill : public test::KillTest<KillCase> {
  protected:
    // The sequence without a kill, then every part put back and OK; its files against the
    // replay of its journal.
    WholeRun RunWhole() {
        WholeRun whole;
        const auto [runFolder, job] = bench_->RunFolder("whole");
        test::Stage("the whole run");
        {
            const auto before = fs::file_time_type::clock::now();
            test::DrivenRun driven(bench_->XScreen(), job, runFolder, GetParam().Seed);
            if (!driven.Started()) {
                ADD_FAILURE() << "the window never settled\n" << driven.Run().Log();
                return whole;
            }
            whole.Answered.push_back(JournalCommandCount(runFolder));
            for (int c = 0; c < GetParam().Commands; ++c) {
                const test::WindowCommand command = driven.Commands().Next();
                whole.Names.push_back(command.Name);
                EXPECT_TRUE(driven.Commands().Give(command)) << command.Name;
                whole.Answered.push_back(JournalCommandCount(runFolder));
            }
            whole.Journal = test::JournalCommands(test::ReadFile(test::JournalIn(runFolder)));
            driven.Commands().PressOkWithNothingSetAside();
            test::ExpectEndedWithOk(driven.Op(), driven.Run(), before);
        }
        const test::BatchReplay replay = test::ReplayOnBatch(
            bench_->Pristine(), test::ReadFile(test::JournalIn(runFolder)), runFolder / "replay");
        EXPECT_EQ(replay.ExitCode, std::optional(0)) << replay.Log;
        EXPECT_EQ(test::OutputsDiffer(test::OutputsOf(job), replay.Outputs), "")
            << "the unkilled run against the replay of its journal";
        std::printf("whole sequence: %d commands, %zu journal lines\n", GetParam().Commands,
                    whole.Journal.size());
        for (size_t c = 0; c < whole.Names.size(); ++c)
            std::printf("  %2zu %-20s journal %zu\n", c + 1, whole.Names[c].c_str(),
                        whole.Answered[c + 1]);
        return whole;
    }

    // One killed run and its restart; what happened in one line.
    std::string KillAndRestore(int index, const KillPoint& point, const WholeRun& whole) {
        const auto [runFolder, job] = bench_->RunFolder("kill" + std::to_string(index));
        test::Stage("kill " + std::to_string(index) + ": the driven run");
        std::string seen;
        std::string name;
        size_t step = 0;
        size_t steps = 0;
        {
            test::DrivenRun driven(bench_->XScreen(), job, runFolder, GetParam().Seed,
                                   {.Log = "killed.log"});
            if (!driven.Started()) {
                ADD_FAILURE() << "the window never settled\n" << driven.Run().Log();
                return "not started";
            }
            for (int c = 0; c < point.Command; ++c)
                driven.Commands().Give(driven.Commands().Next());
            seen = test::ReadFile(test::JournalIn(runFolder));
            const test::WindowCommand command = driven.Commands().Next();
            name = command.Name;
            steps = command.Steps.size();
            step = static_cast<size_t>(point.StepRoll) % steps;
            driven.Commands().GiveUpTo(command, step);
            test::SleepMs(point.DelayMs);
            driven.Run().Process().Kill();
            // A press the kill cut short stays down on the X server.
            driven.Run().X().Button(false);
        }
        const std::vector<std::string> held =
            test::JournalCommands(test::ReadFile(test::JournalIn(runFolder)));
        const size_t answered = whole.Answered[static_cast<size_t>(point.Command)];
        const size_t withInFlight = whole.Answered[static_cast<size_t>(point.Command) + 1];
        EXPECT_EQ(test::JournalCommands(seen).size(), answered) << "not the unkilled run's way";
        EXPECT_GE(held.size(), answered) << "a command the window had answered is missing";
        EXPECT_LE(held.size(), withInFlight) << "more than the command in flight";
        const std::vector<std::string> prefix(
            whole.Journal.begin(),
            whole.Journal.begin() + static_cast<long>(std::min(held.size(), whole.Journal.size())));
        EXPECT_EQ(held, prefix) << "not the unkilled run's commands";
        const test::Restored restored =
            test::RestoreAndReplay(bench_->XScreen(), bench_->Pristine(), job, runFolder);
        EXPECT_EQ(restored.Killed.substr(0, seen.size()), seen) << "the journal lost lines";

        const std::string flight = withInFlight == answered ? ""
                                   : held.size() > answered
                                       ? " (the one in flight kept)"
                                       : " (the one in flight not yet written)";
        return "command " + std::to_string(point.Command + 1) + " (" + name + "), input " +
               std::to_string(step + 1) + "/" + std::to_string(steps) + " + " +
               std::to_string(point.DelayMs) + " ms: journal " + std::to_string(held.size()) +
               " commands" + flight + ", " + test::RestoredText(restored);
    }
};

TEST_P(WindowKill, EveryKillRestoresWhatTheJournalHeldAndOkWritesTheReplaysFiles) {
    const KillCase& c = GetParam();
    const WholeRun whole = RunWhole();
    ASSERT_EQ(whole.Answered.size(), static_cast<size_t>(c.Commands) + 1);
    test::RandomOperator dice(c.Seed * 7919u + 1u);
    std::vector<KillPoint> points;
    for (int k = 0; k < c.Kills; ++k) {
        KillPoint& point = points.emplace_back();
        point.Command = dice.Uniform(0, c.Commands - 1);
        point.StepRoll = dice.Uniform(0, 99);
        point.DelayMs = dice.Uniform(0, dice.Chance(50) ? kShortDelayMs : kLongestDelayMs);
    }
    points.insert(points.end(), c.Named.begin(), c.Named.end());
    for (size_t k = 0; k < points.size(); ++k) {
        const std::string what = KillAndRestore(static_cast<int>(k), points[k], whole);
        std::printf("kill %zu: %s\n", k + 1, what.c_str());
        std::fflush(stdout);
    }
    std::printf("%s: %zu kills, %.0f s in all\n", c.Name.c_str(), points.size(), bench_->Seconds());
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, WindowKill,
    ::testing::Values(
        // Command 8 is Retry: killed as Return confirms it.
        KillCase{"Sample", Job::Sample, 0, 124, 14, 10, {{7, 1, 0}}},
        // Command 2 is Auto, which places the 999 parts anew: killed as Return confirms it.
        KillCase{"Largest", Job::Largest, 999, 67, 10, 4, {{1, 1, 0}}},
        // Command 8 is a drag and drop: killed at the release.
        KillCase{"LargestAgain", Job::Largest, 999, 23, 10, 4, {{7, 4, 0}}}),
    [](const auto& param) { return param.param.Name; });

}  // namespace
}  // namespace kesto
