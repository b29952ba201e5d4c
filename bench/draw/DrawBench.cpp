// Drawing benchmarks: the largest generated job drawn in every view, with 3D, the grid, the
// block cells and the cross-section on, into a 1600 x 900 off-screen image as the window
// draws it; and the highlight changes a pick makes.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>

#include "BenchServices.h"
#include "JobGenerator.h"
#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "render/FontTable.h"
#include "render/QtCanvas.h"
#include "session/JobCheck.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"

namespace kesto {
namespace {

constexpr int kWidth = 1600;
constexpr int kHeight = 900;

// The largest generated job, placed, with the texts and fonts the drawing uses. Every part
// gets a small outline so that the outline view has something to draw.
struct PlacedJob {
    PlacedJob() {
        const auto folder = std::filesystem::temp_directory_path() /
                            ("kesto-draw-bench-" + std::to_string(::getpid()));
        std::filesystem::create_directories(folder);
        const auto ini = folder / "Kesto.ini";
        std::ofstream(ini) << "[MainDlg]\nL-PALLET-CAP=2,\"Pallet\"\nDRAW-STRING=1,\"Labels\"\n";
        Messages.Load(ini.string(), Quiet);
        std::filesystem::remove_all(folder);

        FillApp(App, GenerateJob(LargestJobShape()));
        App.FontHeight = {0, 12, 16, 0, 0};
        App.FontNames = {"", "DejaVu Sans", "DejaVu Sans", "", ""};
        App.PalletPrefix = "P";
        const Services services{Quiet, Host, Messages};
        CheckJob(App, services);
        CKs_Haichi(App, services).PlaceAll(0, 0);
        for (PartsInfo& p : App.PartsList) {
            ShapeElement frame;
            frame.Kind = kShapeNoAngRect;
            frame.P = {0, 0, p.SizeX, p.SizeY};
            ShapeElement hole;
            hole.Kind = kShapeCircle;
            hole.P = {p.SizeX / 2, p.SizeY / 2, p.SizeY / 5};
            p.Shapes = {frame, hole};
            p.ShapeCount = 2;
            p.HasOutline = 1;
        }
        App.CurrentKoutei = BusiestProcess();
        App.AreaRect = {0, 0, kWidth, kHeight};
        App.Is3D = 1;
        App.GridFlag = 1;
        App.IsBlockDraw = 1;
        App.IsDirect = 0;
        Fonts.Build(App);
    }

    // The position of the process with the most stacks: the heaviest picture.
    int32_t BusiestProcess() const {
        std::map<int32_t, int> stacks;
        for (const HaichiInfo& h : App.HaichiList)
            if (h.BlockIndex >= 0)
                ++stacks[App.Blocks[static_cast<size_t>(h.BlockIndex)].KouteiNo];
        int32_t best = 1;
        int most = -1;
        int32_t position = 1;
        for (const KouteiInfo& k : App.KouteiList) {
            if (stacks[k.No] > most) {
                most = stacks[k.No];
                best = position;
            }
            ++position;
        }
        return best;
    }

    QuietOperator Quiet;
    BenchHost Host;
    MessageTable Messages;
    CKestoApp App;
    FontTable Fonts;
};

PlacedJob& Job() {
    static PlacedJob job;
    return job;
}

void CountShown(benchmark::State& state, const PalletDrawing& drawing) {
    int onView = 0;
    for (const HaichiInfo& h : Job().App.HaichiList)
        onView += drawing.ScreenRect(h).has_value() ? 1 : 0;
    state.counters["stacks_on_view"] = onView;
}

// A full redraw: what Refresh paints into the window's image.
void BM_Refresh(benchmark::State& state) {
    PlacedJob& job = Job();
    job.App.PalletMode = static_cast<int32_t>(state.range(0));
    job.App.IsDirect = static_cast<int32_t>(state.range(1));
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Messages);
    for (auto _ : state) {
        QPainter painter(&image);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
    }
    CountShown(state, drawing);
    job.App.IsDirect = 0;
}

// The same redraw recorded instead of painted: the share of the work that is the core's.
void BM_RefreshRecorded(benchmark::State& state) {
    PlacedJob& job = Job();
    job.App.PalletMode = static_cast<int32_t>(state.range(0));
    PalletDrawing drawing(job.App, job.Messages);
    DisplayList list;
    for (auto _ : state) {
        list.Clear();
        drawing.Refresh(list);
    }
    state.counters["primitives"] = static_cast<double>(list.Items().size());
}

// A pick's highlight: the old part back in normal colours (mode 3), the new one lit (mode 4).
void BM_HighlightChange(benchmark::State& state) {
    PlacedJob& job = Job();
    job.App.PalletMode = static_cast<int32_t>(state.range(0));
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Messages);
    {
        QPainter painter(&image);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
    }
    std::vector<HaichiInfo*> shown;
    for (HaichiInfo& h : job.App.HaichiList)
        if (drawing.ScreenRect(h))
            shown.push_back(&h);
    if (shown.size() < 2) {
        state.SkipWithError("fewer than two stacks on view");
        return;
    }
    size_t next = 0;
    for (auto _ : state) {
        QPainter painter(&image);
        QtCanvas canvas(painter, job.Fonts);
        drawing.LastPicked = shown[next % shown.size()];
        drawing.Picked = shown[(next + 1) % shown.size()];
        drawing.DrawParts(canvas, drawmode::kUnhighlight);
        drawing.DrawParts(canvas, drawmode::kPartPieces);
        ++next;
    }
    state.counters["stacks_on_view"] = static_cast<double>(shown.size());
}

// Views: FLAT, DANMEN, 4PALLET, 2PALLET; second argument: outlines (IsDirect).
BENCHMARK(BM_Refresh)
    ->ArgsProduct({{view::kFlat, view::kDanmen, view::kFourPallet, view::kTwoPallet}, {0}})
    ->Args({view::kFlat, 1})
    ->Args({view::kFourPallet, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshRecorded)
    ->DenseRange(view::kFlat, view::kTwoPallet)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HighlightChange)
    ->Arg(view::kFlat)
    ->Arg(view::kFourPallet)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kesto

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
