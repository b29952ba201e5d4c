// The plug pulled between a command's journal line and its showing. `kesto-killable`, the
// window with a test-only hook, kills itself as soon as the N-th journal line is on the disk:
// the command ran in memory and is journaled, but the operator never saw it. Driven on Xvfb with
// openbox through a seeded random sequence of commands by real input events, it must die at
// that line with exactly N lines in its journal; `kesto` started again on the same job with the
// same state folder asks the recovery question when they hold corrections, Return restores
// them, and after OK the result, side and save files are byte for byte those of kesto-batch
// --replay of the journal it ended with.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/WindowCommands.h"
#include "common/WindowProcess.h"
#include "common/WindowRestore.h"

namespace kesto {
namespace {

using test::Job;

// The hook of kesto-killable: the process kills itself after that many journal lines.
const std::string kStopVariable = "KESTO_TEST_STOP_AFTER_APPENDS";

struct AppendCase {
    std::string Name;
    Job Which;
    int Parts;  // of the generated job
    uint32_t Seed;
    int MostCommands;  // given before the run must have died
    std::vector<int> StopAfter;
};

void PrintTo(const AppendCase& c, std::ostream* out) {
    *out << c.Name;
}

class JournalKill : public test::KillTest<AppendCase> {
  protected:
    // One run stopped by the hook after `lines` journal lines and its restart; what happened
    // in one line.
    std::string StopAndRestore(int lines) {
        const auto [runFolder, job] = bench_->RunFolder("after" + std::to_string(lines));
        test::Stage("stop after line " + std::to_string(lines) + ": the driven run");
        std::string last = "the start";
        bool killed = false;
        {
            test::DrivenRun driven(bench_->XScreen(), job, runFolder, GetParam().Seed,
                                   {.Log = "killed.log",
                                    .Program = "kesto-killable",
                                    .Environment = {kStopVariable + "=" + std::to_string(lines)}});
            // The first lines are written as the window shows itself: it may die settling.
            for (int c = 0; driven.Started() && c < GetParam().MostCommands &&
                            driven.Run().Process().Running();
                 ++c) {
                const test::WindowCommand command = driven.Commands().Next();
                last = command.Name;
                driven.Commands().Give(command);
            }
            killed = driven.Run().Process().Killed();
            EXPECT_TRUE(killed) << "still running after " << GetParam().MostCommands
                                << " commands\n"
                                << driven.Run().Log();
            // A press the kill cut short stays down on the X server.
            driven.Run().X().Button(false);
        }
        if (!killed)
            return "not stopped";
        const test::Restored restored =
            test::RestoreAndReplay(bench_->XScreen(), bench_->Pristine(), job, runFolder);
        const std::vector<std::string> held = test::JournalCommands(restored.Killed);
        EXPECT_EQ(held.size(), static_cast<size_t>(lines)) << "not killed at its line";
        return "during " + last + ", last line '" + (held.empty() ? "" : held.back()) + "', " +
               test::RestoredText(restored);
    }
};

TEST_P(JournalKill, DeathAfterTheNthLineRestoresItsCommandsAndOkWritesTheReplaysFiles) {
    const AppendCase& c = GetParam();
    for (const int lines : c.StopAfter) {
        const std::string what = StopAndRestore(lines);
        std::printf("after %d lines: %s\n", lines, what.c_str());
        std::fflush(stdout);
    }
    std::printf("%s: %zu stops, %.0f s in all\n", c.Name.c_str(), c.StopAfter.size(),
                bench_->Seconds());
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, JournalKill,
    ::testing::Values(
        AppendCase{
            "Sample", Job::Sample, 0, 5, 24, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 16}},
        AppendCase{"Largest", Job::Largest, 999, 29, 12, {2, 4, 5, 7, 9}}),
    [](const auto& param) { return param.param.Name; });

}  // namespace
}  // namespace kesto
