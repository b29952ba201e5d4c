// Benchmarks on seeded generated jobs: reading an installation, building the block table,
// and placing jobs from a few parts to the largest the formats allow.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "BenchServices.h"
#include "JobGenerator.h"
#include "app/CKestoApp.h"
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
    CheckJob(*app, run.Get());
    return app;
}

// Undoes a placement so that the next iteration places the same job again.
void ResetPlacement(CKestoApp& app) {
    app.HaichiList.Clear();
    for (PartsInfo& p : app.PartsList)
        p.PiecesPlaced = 0;
    for (BlockInfo& b : app.Blocks) {
        b.CornerMask = 0;
        b.Occupant = nullptr;
    }
}

void PlaceAllBench(benchmark::State& state, const JobShape& shape) {
    BenchRun run;
    auto app = CheckedJob(run, shape);
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(*app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(CKs_Haichi(*app, run.Get()).PlaceAll(0, 0));
    }
    state.counters["parts"] = static_cast<double>(app->PartsList.Items.size());
    state.counters["blocks"] = app->BlocksCount;
    state.counters["stacks"] = static_cast<double>(app->HaichiList.Items.size());
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
    app.CommandLine = "kesto pallet/pallets.txt 0 0 0 0 1";
    const bool read = app.InitSettings(run.Get()) == 1 && app.ReadInput(run.Get()) == 1;
    // As LoadAndPlace does before the check: the pallet count sizes the block table.
    app.ReadPalletSelect(run.Messages);
    if (!read || CheckJob(app, run.Get()) == 0) {
        state.SkipWithError("the sample installation could not be read");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(CKs_Haichi(app, run.Get()).PlaceAll(0, 0));
    }
    state.counters["parts"] = static_cast<double>(app.PartsList.Items.size());
    state.counters["blocks"] = app.BlocksCount;
    state.counters["stacks"] = static_cast<double>(app.HaichiList.Items.size());
}

void BM_BlockTableLargest(benchmark::State& state) {
    BenchRun run;
    auto app = CheckedJob(run, LargestJobShape());
    for (auto _ : state)
        benchmark::DoNotOptimize(CKs_Block(*app, run.Get()).SetUp());
    state.counters["blocks"] = app->BlocksCount;
}

void BM_ReadInputLargest(benchmark::State& state) {
    BenchRun run;
    const auto root = run.Folder / "largest";
    const Installation inst = WriteInstallation(root.string(), GenerateJob(LargestJobShape()));
    run.Host.Folder = inst.Root;
    for (auto _ : state) {
        CKestoApp app;
        app.CommandLine = inst.CommandLine;
        benchmark::DoNotOptimize(app.ReadInput(run.Get()));
        state.counters["parts"] = app.PartsList.Count;
    }
}

BENCHMARK(BM_PlaceAllSmall)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllSampleLike)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllSample)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlaceAllMedium)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlaceAllLargest)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BlockTableLargest)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReadInputLargest)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kesto

BENCHMARK_MAIN();
