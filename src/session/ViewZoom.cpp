#include "session/ViewZoom.h"

#include <vector>

#include "app/Rect.h"

namespace kesto {

ViewZoom::ViewZoom(JobSession& session, PalletDrawing& drawing)
    : session_(session), drawing_(drawing) {}

bool ViewZoom::Ready() const {
    return session_.Shown().Zoomable() && drawing_.WholeScale > 0 && drawing_.Scale > 0;
}

ChangeSet ViewZoom::ZoomBy(double factor, std::optional<IntPoint> at) {
    if (!Ready() || !(factor > 0))
        return {};
    const IntRect& zone = drawing_.PlanZone;
    IntPoint about{(zone.Left + zone.Right) / 2, (zone.Top + zone.Bottom) / 2};
    if (at && Contains(zone, at->X, at->Y))
        about = *at;
    const auto [x, y] = drawing_.ScreenToWorld(about.X, about.Y);
    return Show(WindowAround(drawing_, x, y, about, drawing_.Scale / factor), true);
}

ChangeSet ViewZoom::Whole() {
    return Show(std::nullopt, true);
}

void ViewZoom::Begin(IntPoint centre) {
    following_ = Ready();
    if (!following_)
        return;
    const auto [x, y] = drawing_.ScreenToWorld(centre.X, centre.Y);
    anchorX_ = x;
    anchorY_ = y;
    startScale_ = drawing_.Scale;
}

ChangeSet ViewZoom::Follow(IntPoint centre, double factor) {
    if (!following_ || !(factor > 0) || !Ready())
        return {};
    return Show(WindowAround(drawing_, anchorX_, anchorY_, centre, startScale_ / factor), false);
}

ChangeSet ViewZoom::End() {
    if (!following_)
        return {};
    following_ = false;
    return Show(session_.Shown().Zoom(), true);
}

ChangeSet ViewZoom::Show(const std::optional<WorldWindow>& window, bool journal) {
    const Projection before = ProjectionOf(drawing_);
    const ChangeSet changed = journal ? session_.SetWindow(window) : session_.MoveWindow(window);
    if (!changed)
        return changed;
    scratch_.Clear();
    drawing_.SetUpView(scratch_);
    scratch_.Clear();
    const Projection after = ProjectionOf(drawing_);
    // The picks are the same stacks; where they are drawn has changed.
    Selection& sel = drawing_.Select();
    if (sel.Picked() != kNoStack)
        sel.SetPickRect(Reprojected(sel.PickRect(), before, after));
    const std::vector<BandEntry> band = sel.BandList();
    for (size_t i = 0; i < band.size(); ++i)
        sel.MoveBandEntry(i, Reprojected(band[i].Rect, before, after));
    return changed;
}

}  // namespace kesto
