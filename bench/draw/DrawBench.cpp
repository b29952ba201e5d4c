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
#include "history/EditHistory.h"
#include "placement/CKs_Haichi.h"
#include "render/FontTable.h"
#include "render/QtCanvas.h"
#include "session/DrawingEdit.h"
#include "session/JobCheck.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ZoomWindow.h"

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
        App.Settings.FontHeight = {0, 12, 16, 0, 0};
        App.Settings.FontNames = {"", "DejaVu Sans", "DejaVu Sans", "", ""};
        App.Settings.PalletPrefix = "P";
        const Services services{Quiet, Host, Messages};
        // The generated job passes the check and is placed whole; the drawing is what is timed.
        (void)CheckJob(App, services);
        (void)CKs_Haichi(App, services).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore);
        for (PartsInfo& p : App.PartsList) {
            ShapeElement frame;
            frame.Kind = kShapeNoAngRect;
            frame.Params = {0, 0, p.SizeX, p.SizeY};
            ShapeElement hole;
            hole.Kind = kShapeCircle;
            hole.Params = {p.SizeX / 2, p.SizeY / 2, p.SizeY / 5};
            p.Shapes = {frame, hole};
            p.ShapeCount = 2;
            p.HasOutline = 1;
        }
        Shown.SetKoutei(BusiestProcess());
        Shown.Set3D(true);
        Shown.SetGrid(true);
        Shown.SetStoredBlockDraw(1);
        App.Settings.IsDirect = 0;
        Fonts.Build(App);
    }

    // The position of the process with the most stacks: the heaviest picture.
    int32_t BusiestProcess() const {
        std::map<int32_t, int> stacks;
        for (const HaichiInfo& h : App.HaichiList)
            if (h.BlockIndex >= 0)
                ++stacks[App.Blocks[h.BlockIndex].KouteiNo];
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
    ViewState Shown;
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
    job.Shown.SetMode(static_cast<PalletView>(state.range(0)));
    job.App.Settings.IsDirect = static_cast<int32_t>(state.range(1));
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
    for (auto _ : state) {
        QPainter painter(&image);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
    }
    CountShown(state, drawing);
    job.App.Settings.IsDirect = 0;
}

// The same redraw recorded instead of painted: the share of the work that is the core's.
void BM_RefreshRecorded(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(static_cast<PalletView>(state.range(0)));
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
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
    job.Shown.SetMode(static_cast<PalletView>(state.range(0)));
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
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
        drawing.Select().SetLastPicked(shown[next % shown.size()]->Id);
        drawing.Select().SetPicked(shown[(next + 1) % shown.size()]->Id);
        drawing.DrawParts(canvas, DrawMode::Unhighlight);
        drawing.DrawParts(canvas, DrawMode::PartPieces);
        ++next;
    }
    state.counters["stacks_on_view"] = static_cast<double>(shown.size());
}

// The window around the drawing for the editing benchmarks: the drag image is kept as the
// widget keeps it; Refresh repaints the whole picture when the benchmark asks for it.
class BenchAreaView : public DrawAreaView {
  public:
    BenchAreaView(PalletDrawing& drawing, QImage& picture, const FontTable& fonts, bool repaint)
        : drawing_(drawing), picture_(picture), fonts_(fonts), repaint_(repaint) {}
    void Refresh() override {
        if (!repaint_)
            return;
        QPainter painter(&picture_);
        QtCanvas canvas(painter, fonts_);
        drawing_.Refresh(canvas);
    }
    void ShowDragImage(const std::vector<IntRect>& rects) override { Image = rects; }
    void HideDragImage() override { Image.clear(); }
    void SyncPartList(const std::vector<int32_t>&) override {}
    void SelectPartsAllLine(int32_t) override {}
    void RefreshInfoPanel() override {}
    void ShowRefusedDrop(DropRefusal, const std::vector<IntRect>&) override {}
    void ShowLanding(const std::optional<DropPreview>& landing) override { Landing = landing; }

    std::vector<IntRect> Image;
    std::optional<DropPreview> Landing;

  private:
    PalletDrawing& drawing_;
    QImage& picture_;
    const FontTable& fonts_;
    bool repaint_;
};

IntPoint Middle(const IntRect& r) {
    return {(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2};
}

// The stacks on view whose middle the operator sees, in list order: something to grab.
std::vector<HaichiInfo*> ShownStacks(PalletDrawing& drawing) {
    const IntRect& seen = drawing.Zoomed() ? drawing.PlanZone : drawing.Area();
    std::vector<HaichiInfo*> shown;
    for (HaichiInfo& h : Job().App.HaichiList) {
        const std::optional<IntRect> r = drawing.ScreenRect(h);
        if (r && Contains(seen, Middle(*r).X, Middle(*r).Y))
            shown.push_back(&h);
    }
    return shown;
}

// The drawing of the largest job at the window's size, drawn once, and its mouse editing.
struct EditingBench {
    explicit EditingBench(PlacedJob& job)
        : drawing(job.App, job.Shown, job.Messages),
          view(drawing, picture, job.Fonts, true),
          edit(job.App, Services{job.Quiet, job.Host, job.Messages}, drawing, view) {
        drawing.SetArea({0, 0, kWidth, kHeight});
        view.Refresh();
    }
    // The first stack on view pressed at its middle and the drag armed; false when that
    // picked nothing.
    bool GrabFirstStack() {
        const std::vector<HaichiInfo*> shown = ShownStacks(drawing);
        if (shown.empty())
            return false;
        const IntPoint grab = Middle(*drawing.ScreenRect(*shown.front()));
        edit.Press(canvas, grab.X, grab.Y, false);
        edit.Move(canvas, grab.X + 1, grab.Y, true);
        return drawing.Selected().Picked() != kNoStack;
    }
    // The drag let go off the pallets and the pick forgotten.
    void LetGo() {
        edit.Release(canvas, 0, 0);
        drawing.Select().Reset();
    }

    QImage picture{kWidth, kHeight, QImage::Format_RGB32};
    PalletDrawing drawing;
    BenchAreaView view;
    DrawingEdit edit;
    DisplayList canvas;
};

// One frame of a drag: a move event through the editing to the drag image's rectangles, and
// the widget's repaint of the picture with the image over it.
void BM_DragFrame(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(PalletView::Flat);
    // Flat stacks: the grab point hits the stack it is the middle of.
    job.Shown.Set3D(false);
    EditingBench bench(job);
    QImage screen(kWidth, kHeight, QImage::Format_RGB32);
    if (!bench.GrabFirstStack()) {
        state.SkipWithError("no stack picked");
        return;
    }
    int32_t step = 0;
    for (auto _ : state) {
        step = (step + 7) % 200;
        bench.edit.Move(bench.canvas, kWidth / 4 + step, kHeight / 2 + step / 2, true);
        QPainter painter(&screen);
        painter.drawImage(0, 0, bench.picture);
        painter.setPen(QPen(QColor(255, 0, 0), 0));
        for (const IntRect& r : bench.view.Image) {
            painter.drawLine(r.Left, r.Top, r.Right, r.Top);
            painter.drawLine(r.Right, r.Top, r.Right, r.Bottom);
            painter.drawLine(r.Right, r.Bottom, r.Left, r.Bottom);
            painter.drawLine(r.Left, r.Bottom, r.Left, r.Top);
        }
    }
    state.counters["image_rects"] = static_cast<double>(bench.view.Image.size());
    bench.LetGo();
    job.Shown.Set3D(true);
}

// The closest zoom on the middle of the first stack on view (FLAT); none when none is.
std::optional<IntPoint> ZoomOnFirstStack(PlacedJob& job, PalletDrawing& drawing) {
    const std::vector<HaichiInfo*> shown = ShownStacks(drawing);
    if (shown.empty())
        return std::nullopt;
    const IntPoint at = Middle(*drawing.ScreenRect(*shown.front()));
    const auto [x, y] = drawing.ScreenToWorld(at.X, at.Y);
    job.Shown.SetZoom(WindowAround(drawing, x, y, at, kClosestScale));
    DisplayList scratch;
    drawing.SetUpView(scratch);
    return at;
}

// One frame of a pan at the closest zoom in FLAT on the busiest pallet: the window moved a few
// pixels, the whole picture laid out and painted again as the window repaints it.
void BM_PanFrame(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(PalletView::Flat);
    job.Shown.Set3D(state.range(0) == 1);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
    DisplayList scratch;
    drawing.SetUpView(scratch);
    const std::optional<IntPoint> at = ZoomOnFirstStack(job, drawing);
    if (!at) {
        state.SkipWithError("no stack on view");
        return;
    }
    const auto [x, y] = drawing.ScreenToWorld(at->X, at->Y);
    int32_t step = 0;
    for (auto _ : state) {
        step = (step + 7) % 300;
        job.Shown.SetZoom(
            WindowAround(drawing, x, y, {at->X + step, at->Y + step / 2}, kClosestScale));
        QPainter painter(&image);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
    }
    CountShown(state, drawing);
    job.Shown.SetZoom(std::nullopt);
    job.Shown.Set3D(true);
}

// One mouse move of a drag with its landing worked out (the drop run on a copy of the job) on
// the busiest process: FLAT (argument 0), 4PALLET with 3D (argument 1), FLAT at the closest
// zoom on the stack dragged (argument 2).
void BM_DragPreview(benchmark::State& state) {
    PlacedJob& job = Job();
    const bool four = state.range(0) == 1;
    job.Shown.SetMode(four ? PalletView::FourPallet : PalletView::Flat);
    job.Shown.Set3D(four);
    job.Shown.SetHit(HitBy::Single);
    EditingBench bench(job);
    if (state.range(0) == 2 && !ZoomOnFirstStack(job, bench.drawing)) {
        state.SkipWithError("no stack on view");
        return;
    }
    if (!bench.GrabFirstStack()) {
        state.SkipWithError("no stack picked");
        return;
    }
    int32_t step = 0;
    int landed = 0;
    for (auto _ : state) {
        step = (step + 7) % 400;
        bench.edit.Move(bench.canvas, kWidth / 8 + step, kHeight / 4 + step / 2, true);
        landed += bench.view.Landing && !bench.view.Landing->Refused ? 1 : 0;
    }
    CountShown(state, bench.drawing);
    state.counters["landed"] = landed;
    bench.LetGo();
    job.Shown.SetZoom(std::nullopt);
    job.Shown.SetHit(HitBy::Block);
    job.Shown.Set3D(true);
}

// The worst arrow key: the search of the first stack of the busiest process in FLAT for a
// landing to the right (argument 0) or down (argument 1) that finds none, every step tried on
// a copy of the job up to the pallet's edge. A landing found would change the job: then the
// case is not the worst and is reported as an error.
void BM_Nudge(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(PalletView::Flat);
    job.Shown.Set3D(false);
    job.Shown.SetHit(HitBy::Single);
    EditingBench bench(job);
    if (!bench.GrabFirstStack()) {
        state.SkipWithError("no stack picked");
        return;
    }
    bench.edit.Release(bench.canvas, 0, 0);
    const bool down = state.range(0) == 1;
    for (auto _ : state) {
        if (bench.edit.Nudge(bench.canvas, down ? 0 : 1, down ? 1 : 0)) {
            state.SkipWithError("a landing was found: not the worst case");
            break;
        }
    }
    bench.drawing.Select().Reset();
    job.Shown.SetHit(HitBy::Block);
    job.Shown.Set3D(true);
}

// A band of stacks dropped 12 pixels on and back: the probe pass, the moving pass and the
// corner rebuild (argument 0), and with the window's full repaint and highlight (argument 1).
void BM_Drop(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(PalletView::Flat);
    job.App.Settings.IsDirect = 1;
    job.Shown.Set3D(false);
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
    BenchAreaView view(drawing, picture, job.Fonts, state.range(0) == 1);
    {
        QPainter painter(&picture);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
    }
    std::vector<HaichiInfo*> shown = ShownStacks(drawing);
    if (shown.size() > 12)
        shown.resize(12);
    if (shown.empty()) {
        state.SkipWithError("no stack on view");
        return;
    }
    drawing.Select().SetBand(BandState::InForce);
    for (HaichiInfo* h : shown)
        drawing.Select().AddBandEntry(BandEntry{h->Id, *drawing.ScreenRect(*h)});
    DrawingEdit edit(job.App, Services{job.Quiet, job.Host, job.Messages}, drawing, view);
    DisplayList canvas;
    int32_t dx = 12;
    for (auto _ : state) {
        const IntPoint grab = Middle(drawing.Selected().BandList().front().Rect);
        canvas.Clear();
        edit.Press(canvas, grab.X, grab.Y, false);
        edit.Move(canvas, grab.X + 1, grab.Y, true);
        edit.Move(canvas, grab.X + dx, grab.Y, true);
        edit.Release(canvas, grab.X + dx, grab.Y);
        if (drawing.Selected().Band() != BandState::InForce) {
            state.SkipWithError("the band was lost");
            break;
        }
        dx = -dx;
    }
    state.counters["band_stacks"] = static_cast<double>(drawing.Selected().BandList().size());
    drawing.Select().Reset();
    job.App.Settings.IsDirect = 0;
    job.Shown.Set3D(true);
}

// Ctrl+Z and Ctrl+Y on the largest job: the step taken back or done again (every record made
// anew from the snapshot) and the picture drawn again, as the window does, in 3D 4PALLET.
void BM_UndoRedo(benchmark::State& state) {
    PlacedJob& job = Job();
    job.Shown.SetMode(PalletView::FourPallet);
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    PalletDrawing drawing(job.App, job.Shown, job.Messages);
    drawing.SetArea({0, 0, kWidth, kHeight});
    EditHistory history;
    // The step: the first stack of the job set aside, as left does.
    history.Record(step::kLeft, job.App, drawing.Selected());
    HaichiInfo& first = job.App.HaichiList.front();
    first.Part->PiecesSetAside += first.Pieces;
    first.Part->PiecesPlaced -= first.Pieces;
    job.App.RemoveHaichiInfo(&first);
    bool undo = true;
    for (auto _ : state) {
        if (!(undo ? history.Undo(job.App, drawing.Select())
                   : history.Redo(job.App, drawing.Select()))) {
            state.SkipWithError("nothing to take back");
            break;
        }
        QPainter painter(&picture);
        QtCanvas canvas(painter, job.Fonts);
        drawing.Refresh(canvas);
        undo = !undo;
    }
    // The job as it was before the step.
    if (!undo)
        history.Redo(job.App, drawing.Select());
    history.Undo(job.App, drawing.Select());
    state.counters["history_bytes"] = static_cast<double>(history.Bytes());
    state.counters["stacks"] = static_cast<double>(job.App.HaichiList.size());
}

// A view as a benchmark's argument.
constexpr int64_t ViewArg(PalletView view) {
    return static_cast<int64_t>(view);
}

// Views: FLAT, DANMEN, 4PALLET, 2PALLET; second argument: outlines (IsDirect).
BENCHMARK(BM_Refresh)
    ->ArgsProduct({{ViewArg(PalletView::Flat), ViewArg(PalletView::Danmen),
                    ViewArg(PalletView::FourPallet), ViewArg(PalletView::TwoPallet)},
                   {0}})
    ->Args({ViewArg(PalletView::Flat), 1})
    ->Args({ViewArg(PalletView::FourPallet), 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshRecorded)
    ->DenseRange(ViewArg(PalletView::Flat), ViewArg(PalletView::TwoPallet))
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HighlightChange)
    ->Arg(ViewArg(PalletView::Flat))
    ->Arg(ViewArg(PalletView::FourPallet))
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DragFrame)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Nudge)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PanFrame)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DragPreview)
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_Drop)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRedo)->Unit(benchmark::kMillisecond);

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
