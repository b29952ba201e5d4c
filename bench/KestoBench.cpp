// Benchmarks on seeded generated jobs: reading an installation, building the block table,
// and placing jobs from a few parts to the largest the formats allow.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "JobGenerator.h"
#include "app/CKestoApp.h"
#include "placement/CKs_Block.h"
#include "placement/CKs_Haichi.h"
#include "placement/JobPlacement.h"
#include "support/Platform.h"

namespace kesto {
namespace {

// Answers every question with OK and says nothing.
class QuietOperator : public Operator {
  public:
    void ShowMessageBox(const std::string&) override {}
    int AskKaku(int, int) override { return 1; }
    bool AskOffsetWarning(const std::string&) override { return true; }
};

// A folder of the benchmark run for per-user values and written installations, removed at
// exit; creating it also installs the quiet operator.
struct BenchRun {
    BenchRun()
        : Folder(std::filesystem::temp_directory_path() /
                 ("kesto-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(Folder);
        ::setenv("XDG_CONFIG_HOME", Folder.c_str(), 1);
        InstallOperator(&Quiet);
    }
    ~BenchRun() {
        InstallOperator(nullptr);
        std::filesystem::remove_all(Folder);
    }
    std::filesystem::path Folder;
    QuietOperator Quiet;
};

std::filesystem::path BenchFolder() {
    static BenchRun run;
    return run.Folder;
}

std::unique_ptr<CKestoApp> CheckedJob(const JobShape& shape) {
    BenchFolder();
    auto app = std::make_unique<CKestoApp>();
    FillApp(*app, GenerateJob(shape));
    CheckJob(*app);
    return app;
}

// Undoes a placement so that the next iteration places the same job again.
void ResetPlacement(CKestoApp& app) {
    app.HaichiList.Clear();
    for (PartsInfo& p : app.PartsList)
        p.Work[1] = 0;
    for (BlockInfo& b : app.Blocks) {
        b.CornerMask = 0;
        b.Occupant = nullptr;
    }
}

void PlaceAllBench(benchmark::State& state, const JobShape& shape) {
    auto app = CheckedJob(shape);
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(*app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(CKs_Haichi(*app).PlaceAll(0, 0));
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
    BenchFolder();
    ::setenv("ORVOSystemRoot", KESTO_SAMPLE_DIR, 1);
    std::filesystem::current_path(KESTO_SAMPLE_DIR);
    CKestoApp app;
    app.CommandLine = "kesto pallet/pallets.txt 0 0 0 0 1";
    if (app.InitSettings() == 0 || app.ReadInput() == 0 || CheckJob(app) == 0) {
        state.SkipWithError("the sample installation could not be read");
        return;
    }
    for (auto _ : state) {
        state.PauseTiming();
        ResetPlacement(app);
        state.ResumeTiming();
        benchmark::DoNotOptimize(CKs_Haichi(app).PlaceAll(0, 0));
    }
    state.counters["parts"] = static_cast<double>(app.PartsList.Items.size());
    state.counters["blocks"] = app.BlocksCount;
    state.counters["stacks"] = static_cast<double>(app.HaichiList.Items.size());
}

void BM_BlockTableLargest(benchmark::State& state) {
    auto app = CheckedJob(LargestJobShape());
    for (auto _ : state)
        benchmark::DoNotOptimize(CKs_Block(*app).SetUp());
    state.counters["blocks"] = app->BlocksCount;
}

void BM_ReadInputLargest(benchmark::State& state) {
    const auto root = BenchFolder() / "largest";
    const Installation inst = WriteInstallation(root.string(), GenerateJob(LargestJobShape()));
    ::setenv("ORVOSystemRoot", inst.Root.c_str(), 1);
    for (auto _ : state) {
        CKestoApp app;
        app.CommandLine = inst.CommandLine;
        benchmark::DoNotOptimize(app.ReadInput());
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
