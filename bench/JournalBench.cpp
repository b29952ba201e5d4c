// The journal's costs: one command appended and synced to the disk (the window waits for it
// before it shows the command's result), and a shift's worth of commands replayed on the
// largest generated job (what a recovery and kesto-batch --replay take).
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "JobGenerator.h"
#include "JournalGenerator.h"
#include "history/Journal.h"
#include "session/HeadlessDrawing.h"
#include "session/JobJournal.h"
#include "session/JournalReplay.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// A folder on the disk the state folder lives on, removed afterwards.
struct BenchFolder {
    BenchFolder()
        : Path(fs::temp_directory_path() / ("kesto-journal-bench-" + std::to_string(::getpid()))) {
        fs::create_directories(Path);
    }
    ~BenchFolder() { fs::remove_all(Path); }
    fs::path Path;
};

// A drop of a pick of three stacks: one of the longer lines a shift writes.
void BM_JournalAppend(benchmark::State& state) {
    BenchFolder folder;
    JournalWriter writer;
    const std::string hex(64, 'a');
    if (!writer.Open(JournalPath(folder.Path.string(), hex), hex)) {
        state.SkipWithError("the journal cannot be opened");
        return;
    }
    const JournalCommand drop{.Verb = JournalVerb::Drop,
                              .ClientWidth = 1600,
                              .ClientHeight = 900,
                              .Drop = {612, 340, 688, 391},
                              .Stacks = {1204, 88, 3071}};
    for (auto _ : state) {
        const std::string line =
            JournalLine(JournalTimeText(std::chrono::system_clock::now()), drop);
        if (!writer.Append(line)) {
            state.SkipWithError("an append failed");
            break;
        }
    }
}

// Where every stack stands, to tell that two runs ended alike.
std::vector<double> Places(const JobSession& session) {
    std::vector<double> at;
    for (const HaichiInfo& h : session.App().HaichiList) {
        at.push_back(h.X);
        at.push_back(h.Y);
        at.push_back(h.Pieces);
    }
    return at;
}

// 1,000 random commands (drops, bands, set-asides, sheet counts, undo, views, four Retry or
// Auto) drawn on one start of the largest job and replayed on fresh starts of it; only the
// replay is timed.
void BM_ReplayLargest(benchmark::State& state) {
    BenchFolder folder;
    const Installation inst =
        WriteInstallation((folder.Path / "install").string(), GenerateJob(LargestJobShape()), {});
    std::vector<JournalCommand> commands;
    std::vector<double> live;
    {
        HeadlessJob drawn(inst);
        if (!drawn.Started()) {
            state.SkipWithError("the largest job did not start");
            return;
        }
        commands = RandomJournal(drawn.Session(), drawn.Area(), drawn.Relay(),
                                 {.Seed = 20261126, .Commands = static_cast<int>(state.range(0))});
        live = Places(drawn.Session());
    }
    const JournalFile journal = ReadJournal(JournalTextOf(std::string(64, 'a'), commands));
    for (auto _ : state) {
        state.PauseTiming();
        auto fresh = std::make_unique<HeadlessJob>(inst);
        QuietOperator answers;
        JournalReplay replay(fresh->Session(), fresh->Area().Drawing(), fresh->Area().Editing(),
                             fresh->Relay(), answers);
        state.ResumeTiming();
        const ReplayOutcome outcome = replay.Run(journal);
        state.PauseTiming();
        if (!outcome.Ok() || Places(fresh->Session()) != live) {
            state.SkipWithError("the replay did not end where the live run did");
            break;
        }
        fresh.reset();
        state.ResumeTiming();
    }
    state.counters["commands"] = static_cast<double>(commands.size());
}

// The job's identity on the largest job with its 999 outline files: what the window works out
// once its first picture is shown, before it opens the journal.
void BM_JobIdentityLargest(benchmark::State& state) {
    BenchFolder folder;
    const Installation inst =
        WriteInstallation((folder.Path / "install").string(), GenerateJob(LargestJobShape()), {});
    HeadlessJob job(inst);
    if (!job.Started()) {
        state.SkipWithError("the largest job did not start");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(JobIdentityOf(job.Session()));
    state.counters["files"] = static_cast<double>(InputsOf(job.Session()).Files.size());
}

BENCHMARK(BM_JournalAppend)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JobIdentityLargest)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReplayLargest)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kesto

BENCHMARK_MAIN();
