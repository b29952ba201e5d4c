// Benchmarks on seeded generated jobs: reading an installation, building the block table,
// and placing jobs from a few parts to the largest the formats allow.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BenchServices.h"
#include "JobGenerator.h"
#include "app/CKestoApp.h"
#include "app/InputReaders.h"
#include "placement/CKs_Block.h"
#include "placement/CKs_Haichi.h"
#include "session/JobCheck.h"
#include "support/Services.h"

namespace kesto {
namespace {

// The services of one benchmark and a folder for the installations it writes.
struct BenchRun {
    BenchRun()
        : Folder(std::filesystem::temp_directory_path() /
                 ("kesto-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(Folder);
    }
    ~BenchRun() { std::filesystem::remove_all(Folder); }
    Services Get() { return Services{Quiet, Host, Messages}; }

    std::filesystem::path Folder;
    QuietOperator Quiet;
    BenchHost Host;
    MessageTable Messages;
};

std::unique_ptr<CKestoApp> CheckedJob(BenchRun& run, const JobShape& shape) {
    auto app = std::make_unique<CKestoApp>();
    FillApp(*app, GenerateJob(shape));
    // A generated job passes the check; the benchmarks time what comes after it.
    (void)CheckJob(*app, run.Get());
    return app;
}

// Undoes a placement so that the next iteration places the same job again.
void ResetPlacement(CKestoApp& app) {
    app.HaichiList.Clear();
    for (PartsInfo& p : app.PartsList)
        p.PiecesPlaced = 0;
    for (BlockInfo& b : app.Blocks.Entries()) {
        b.CornerMask = 0;
        b.Occupant = kNoOccupant;
    }
}

void PlaceAllBench(benchmark::State& state, const JobShape& shape) {
    BenchRun run;
    auto app = CheckedJob(run, shape);
    const ViewState shown;  // a fresh window's view: FLAT, the first pallet
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(*app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(
            CKs_Haichi(*app, run.Get()).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore));
    }
    state.counters["parts"] = static_cast<double>(app->PartsList.Items.size());
    state.counters["blocks"] = app->Blocks.Count();
    state.counters["stacks"] = static_cast<double>(app->HaichiList.size());
}

void BM_PlaceAllSmall(benchmark::State& s) {
    PlaceAllBench(s, SmallJobShape());
}
void BM_PlaceAllMedium(benchmark::State& s) {
    PlaceAllBench(s, MediumJobShape());
}
void BM_PlaceAllLargest(benchmark::State& s) {
    PlaceAllBench(s, LargestJobShape());
}
void BM_PlaceAllSampleLike(benchmark::State& s) {
    PlaceAllBench(s, SampleLikeJobShape());
}

// The sample installation of examples/, read as the programs read it.
void BM_PlaceAllSample(benchmark::State& state) {
    BenchRun run;
    run.Host.Folder = KESTO_SAMPLE_DIR;
    std::filesystem::current_path(KESTO_SAMPLE_DIR);
    CKestoApp app;
    app.Run.CommandLine = "kesto pallet/pallets.txt 0 0 0 0 1";
    const bool read = app.InitSettings(run.Get()).Ok() && app.ReadInput(run.Get()).Ok();
    // As LoadAndPlace does before the check: the pallet count sizes the block table.
    app.ReadPalletSelect(run.Messages);
    if (!read || !CheckJob(app, run.Get()).Ok()) {
        state.SkipWithError("the sample installation could not be read");
        return;
    }
    const ViewState shown;
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(
            CKs_Haichi(app, run.Get()).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore));
    }
    state.counters["parts"] = static_cast<double>(app.PartsList.Items.size());
    state.counters["blocks"] = app.Blocks.Count();
    state.counters["stacks"] = static_cast<double>(app.HaichiList.size());
}

void BM_BlockTableLargest(benchmark::State& state) {
    BenchRun run;
    auto app = CheckedJob(run, LargestJobShape());
    for (auto _ : state)
        benchmark::DoNotOptimize(CKs_Block(*app, run.Get()).SetUp());
    state.counters["blocks"] = app->Blocks.Count();
}

void BM_ReadInputLargest(benchmark::State& state) {
    BenchRun run;
    const auto root = run.Folder / "largest";
    const Installation inst = WriteInstallation(root.string(), GenerateJob(LargestJobShape()));
    run.Host.Folder = inst.Root;
    for (auto _ : state) {
        CKestoApp app;
        app.Run.CommandLine = inst.CommandLine;
        benchmark::DoNotOptimize(app.ReadInput(run.Get()));
        state.counters["parts"] = app.PartsList.Count;
    }
}

void BM_SortPartsLargest(benchmark::State& state) {
    BenchRun run;
    CKestoApp app;
    FillApp(app, GenerateJob(LargestJobShape()));
    const std::list<PartsInfo> unsorted = app.PartsList.Items;
    for (auto _ : state) {
        state.PauseTiming();
        app.PartsList.Items = unsorted;
        state.ResumeTiming();
        SortParts(app, run.Quiet);
    }
    state.counters["parts"] = static_cast<double>(unsorted.size());
}

// The hardest case for the sort: every part in one process and one group.
void BM_SortPartsOneGroup(benchmark::State& state) {
    BenchRun run;
    JobShape shape = LargestJobShape();
    shape.Processes = 1;
    CKestoApp app;
    FillApp(app, GenerateJob(shape));
    const std::list<PartsInfo> unsorted = app.PartsList.Items;
    for (auto _ : state) {
        state.PauseTiming();
        app.PartsList.Items = unsorted;
        state.ResumeTiming();
        SortParts(app, run.Quiet);
    }
    state.counters["parts"] = static_cast<double>(unsorted.size());
}

// One run of a program as a host starts it: its wall time and peak memory.
struct ProcessRun {
    double Seconds = 0;
    long PeakKb = 0;
    int Status = -1;
};

std::string BesideThisProgram(const std::string& name) {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

// Runs args in folder through kesto-run-peak, which reports the run's own figures.
ProcessRun RunProcess(const std::vector<std::string>& args, const std::string& folder) {
    const std::string launcher = BesideThisProgram("kesto-run-peak");
    std::vector<char*> argv{const_cast<char*>(launcher.c_str()), const_cast<char*>(folder.c_str())};
    for (const std::string& a : args)
        argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    const std::string root = "ORVOSystemRoot=" + folder;
    const std::string config = "XDG_CONFIG_HOME=" + folder + "/config";
    char* envp[] = {const_cast<char*>(root.c_str()), const_cast<char*>(config.c_str()), nullptr};
    int out[2];
    ProcessRun run;
    if (::pipe(out) != 0)
        return run;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    pid_t pid = 0;
    const bool started = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp) == 0;
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    char text[128] = {};
    size_t used = 0;
    for (ssize_t n;
         used + 1 < sizeof text && (n = ::read(out[0], text + used, sizeof text - 1 - used)) > 0;)
        used += static_cast<size_t>(n);
    ::close(out[0]);
    int status = 0;
    if (started && ::waitpid(pid, &status, 0) == pid &&
        std::sscanf(text, "%lf %ld %d", &run.Seconds, &run.PeakKb, &run.Status) != 3)
        run.Status = -1;
    return run;
}

// The whole kesto-batch run on a generated installation, side by side with the floor: a
// process (cat) that only reads the same input files (the outlines that are there). restore:
// the save file of the run before is there and read back (the floor reads it too). extra:
// options of kesto-batch before the job's tokens.
void BatchRunBench(benchmark::State& state, bool restore, const JobShape& shape,
                   const InstallOptions& options, const std::vector<std::string>& extra = {}) {
    BenchRun run;
    const auto root = run.Folder / "installation";
    const Installation inst = WriteInstallation(root.string(), GenerateJob(shape), options);
    std::vector<std::string> batch{BesideThisProgram("kesto-batch"), "--answer", "ok"};
    batch.insert(batch.end(), extra.begin(), extra.end());
    for (std::string rest = inst.CommandLine.substr(inst.CommandLine.find(' ') + 1);
         !rest.empty();) {
        const size_t blank = rest.find(' ');
        batch.push_back(rest.substr(0, blank));
        rest = blank == std::string::npos ? "" : rest.substr(blank + 1);
    }
    std::vector<std::string> floor{"/bin/cat"};
    for (const char* file :
         {"bin/Ks_Setup.ini", "msg/Kesto.ini", "pallet/pallet.txt", "job/job.txt"})
        floor.push_back((root / file).string());
    for (const auto& entry : std::filesystem::directory_iterator(root / "job" / "outline"))
        floor.push_back(entry.path().string());
    const auto save = root / "out" / "save.txt";
    if (restore) {
        RunProcess(batch, inst.Root);
        floor.push_back(save.string());
    }
    double batchSum = 0, floorSum = 0;
    long batchPeak = 0, floorPeak = 0;
    for (auto _ : state) {
        if (!restore)
            std::filesystem::remove(save);
        const ProcessRun f = RunProcess(floor, inst.Root);
        const ProcessRun b = RunProcess(batch, inst.Root);
        if (b.Status != 0 || f.Status != 0) {
            state.SkipWithError("kesto-batch or cat failed on the installation");
            return;
        }
        state.SetIterationTime(b.Seconds);
        batchSum += b.Seconds;
        floorSum += f.Seconds;
        batchPeak = std::max(batchPeak, b.PeakKb);
        floorPeak = std::max(floorPeak, f.PeakKb);
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["batch_ms"] = 1000 * batchSum / n;
    state.counters["floor_ms"] = 1000 * floorSum / n;
    state.counters["ratio"] = floorSum > 0 ? batchSum / floorSum : 0;
    state.counters["batch_peak_kb"] = static_cast<double>(batchPeak);
    state.counters["floor_peak_kb"] = static_cast<double>(floorPeak);
}

void BM_BatchRunLargest(benchmark::State& s) {
    BatchRunBench(s, false, LargestJobShape(), {});
}
void BM_BatchRestoreLargest(benchmark::State& s) {
    BatchRunBench(s, true, LargestJobShape(), {});
}
// Crowded pallets: parts left short, the question 208 answered OK, some outlines missing.
void BM_BatchRunCrowded(benchmark::State& s) {
    BatchRunBench(s, false, CrowdedJobShape(), CrowdedInstallOptions());
}

// The crowded installation run with offsets A and B of 100: about ten thousand stacks lie
// across an offset line, and the report names each.
InstallOptions CrossingInstallOptions() {
    InstallOptions options = CrowdedInstallOptions();
    options.OffsetA = 100;
    options.OffsetB = 100;
    return options;
}
void BM_BatchRunCrossings(benchmark::State& s) {
    BatchRunBench(s, false, CrowdedJobShape(), CrossingInstallOptions());
}

// The same runs with --quiet: the job and its files without the report.
void BM_BatchQuietLargest(benchmark::State& s) {
    BatchRunBench(s, false, LargestJobShape(), {}, {"--quiet"});
}
void BM_BatchQuietCrowded(benchmark::State& s) {
    BatchRunBench(s, false, CrowdedJobShape(), CrowdedInstallOptions(), {"--quiet"});
}
void BM_BatchQuietCrossings(benchmark::State& s) {
    BatchRunBench(s, false, CrowdedJobShape(), CrossingInstallOptions(), {"--quiet"});
}

BENCHMARK(BM_PlaceAllSmall)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllSampleLike)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllSample)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllMedium)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlaceAllLargest)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BlockTableLargest)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadInputLargest)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortPartsLargest)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_SortPartsOneGroup)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_BatchRunLargest)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchRestoreLargest)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchRunCrowded)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchRunCrossings)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchQuietLargest)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchQuietCrowded)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BatchQuietCrossings)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kesto

BENCHMARK_MAIN();
