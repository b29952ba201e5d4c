#include "session/DrawingEdit.h"

#include <algorithm>
#include <cstdlib>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "support/MessageFile.h"

namespace kesto {

namespace {

// Cursor positions far beyond any window are cut, so that offsets and sums stay in range.
constexpr int32_t kCursorLimit = 1 << 28;

int32_t Cut(int32_t v) {
    return std::clamp(v, -kCursorLimit, kCursorLimit);
}

IntRect Normalised(const IntRect& r) {
    return IntRect{std::min(r.Left, r.Right), std::min(r.Top, r.Bottom), std::max(r.Left, r.Right),
                   std::max(r.Top, r.Bottom)};
}

IntRect Moved(const IntRect& r, int32_t dx, int32_t dy) {
    return IntRect{r.Left + dx, r.Top + dy, r.Right + dx, r.Bottom + dy};
}

// r with its top-left corner at (x, y), its size kept.
IntRect PlacedAt(const IntRect& r, int32_t x, int32_t y) {
    return Moved(r, x - r.Left, y - r.Top);
}

bool Inside(const IntRect& r, const IntRect& outer) {
    return r.Left >= outer.Left && r.Right <= outer.Right && r.Top >= outer.Top &&
           r.Bottom <= outer.Bottom;
}

}  // namespace

DrawingEdit::DrawingEdit(CKestoApp& app, const Services& services, PalletDrawing& drawing,
                         DrawAreaView& view)
    : app_(app), services_(services), d_(drawing), view_(view) {}

// --- press ----------------------------------------------------------------------------------

void DrawingEdit::Press(Canvas& canvas, int32_t x, int32_t y, bool shift) {
    const StackId before = Sel().Picked();
    PressSteps(canvas, x, y, shift);
    InfoFollowsPick(before);
}

void DrawingEdit::PressSteps(Canvas& canvas, int32_t x, int32_t y, bool shift) {
    x = Cut(x);
    y = Cut(y);
    DragAnchor = kNoStack;
    previewBase_.reset();
    // Every press counts its moves afresh, so a click without moving never drops.
    MoveCount = -1;
    tracking_ = false;
    const bool bandFromPick = shift && app_.Settings.IsDirect.IsOne() &&
                              Sel().Band() == BandState::Off && Sel().LastPicked() != kNoStack;
    if (bandFromPick && !StartBandFromPick(canvas, x, y)) {
        SinglePick(canvas, x, y);
        return;
    }
    if (Sel().Band() == BandState::InForce && !Sel().BandList().empty()) {
        if (shift) {
            ShiftInBand(canvas, x, y);
            return;
        }
        if (GrabBand(canvas, x, y))
            return;
    }
    SinglePick(canvas, x, y);
}

StackId DrawingEdit::PointTestKeepingBand(Canvas& canvas, int32_t x, int32_t y) {
    Sel().SetPicked(kNoStack);
    Sel().SetBand(BandState::Aside);
    d_.DrawParts(canvas, DrawMode::HitTest, x, y);
    Sel().SetBand(BandState::InForce);
    return Sel().Picked();
}

bool DrawingEdit::StartBandFromPick(Canvas& canvas, int32_t x, int32_t y) {
    const StackId oldPicked = Sel().Picked();
    const IntRect oldRect = Sel().PickRect();
    if (PointTestKeepingBand(canvas, x, y) == kNoStack) {
        Sel().SetPicked(oldPicked);
        // A band without entries is not in force: the press is a plain pick.
        Sel().SetBand(BandState::Off);
        return false;
    }
    const HaichiInfo* last = StackOf(Sel().LastPicked());
    const std::optional<IntRect> shown =
        last != nullptr ? d_.ScreenRect(*last) : std::optional<IntRect>();
    Sel().ClearBandList();
    Sel().AddBandEntry(BandEntry{Sel().LastPicked(), shown ? *shown : oldRect});
    return true;
}

void DrawingEdit::ShiftInBand(Canvas& canvas, int32_t x, int32_t y) {
    // The hit test leaves Picked on the record hit, so that MaiChg and left work on it.
    const StackId hit = PointTestKeepingBand(canvas, x, y);
    if (hit != kNoStack && PalletOf(hit) == PalletOf(Sel().BandList().front().Stack)) {
        if (Sel().HasBandEntry(hit)) {
            d_.DrawParts(canvas, DrawMode::Unhighlight);
            Sel().RemoveBandEntry(hit);
        } else {
            Sel().AddBandEntry(BandEntry{hit, Sel().PickRect()});
        }
        d_.DrawParts(canvas, DrawMode::Highlight);
        Sync();
    }
    if (Sel().BandList().empty()) {
        Sel().SetBand(BandState::Off);
        Sel().SetLastPicked(kNoStack);
    }
    Sel().ClearHistory();
}

bool DrawingEdit::GrabBand(Canvas& canvas, int32_t x, int32_t y) {
    const StackId hit = PointTestKeepingBand(canvas, x, y);
    if (hit != kNoStack && Sel().HasBandEntry(hit)) {
        DragAnchor = hit;
        pressAt_ = IntPoint{x, y};
        BandOffsets.clear();
        for (const BandEntry& e : Sel().BandList())
            BandOffsets.push_back(IntPoint{e.Rect.Left - x, e.Rect.Top - y});
        LastMouse = IntPoint{x, y};
        view_.ShowDragImage(DragImageAt(x, y));
        view_.RefreshInfoPanel();
        return true;
    }
    d_.DrawParts(canvas, DrawMode::Unhighlight);
    Sel().ClearBandList();
    BandOffsets.clear();
    Sync();
    Sel().SetBand(BandState::Off);
    return false;
}

void DrawingEdit::SinglePick(Canvas& canvas, int32_t x, int32_t y) {
    view_.HideDragImage();
    Sel().ClearHistory();
    MoveCount = -1;
    Sel().SetPicked(kNoStack);
    // A band whose entries were all dropped is not in force: this is a point test, not a
    // collection in the old band.
    if (Sel().Band() != BandState::Off && Sel().BandList().empty())
        Sel().SetBand(BandState::Off);
    d_.DrawParts(canvas, DrawMode::HitTest, x, y);
    if (Sel().Picked() != kNoStack) {
        PartHit(canvas, x, y);
        return;
    }
    // Nothing hit: the rubber band is tracked from here until the release.
    if (app_.Settings.IsDirect.IsOne()) {
        tracking_ = true;
        trackFrom_ = trackTo_ = IntPoint{x, y};
    }
}

void DrawingEdit::PartHit(Canvas& canvas, int32_t x, int32_t y) {
    if (Sel().LastPicked() != kNoStack)
        d_.DrawParts(canvas, DrawMode::Unhighlight);
    LastMouse = IntPoint{x, y};
    DragOffset = IntPoint{Sel().PickRect().Left - x, Sel().PickRect().Top - y};
    Sync();
    if (const HaichiInfo* picked = StackOf(Sel().Picked());
        picked != nullptr && picked->Part != nullptr)
        view_.SelectPartsAllLine(picked->Part->Seq);
    d_.DrawParts(canvas, DrawMode::Highlight);
    view_.ShowDragImage(DragImageAt(x, y));
    Sel().SetLastPicked(Sel().Picked());
    view_.RefreshInfoPanel();
}

// --- rubber band ----------------------------------------------------------------------------

void DrawingEdit::FinishBand(Canvas& canvas) {
    const IntRect band = Normalised(TrackedBand());
    if (band.Right - band.Left <= 2 || band.Bottom - band.Top <= 2) {
        if (Sel().Band() != BandState::Off)
            d_.DrawParts(canvas, DrawMode::Unhighlight);
        return;
    }
    if (!WithinOneSlot(band))
        return;
    if (Sel().LastPicked() != kNoStack)
        d_.DrawParts(canvas, DrawMode::Unhighlight);
    Sel().StartBand(band);
    d_.DrawParts(canvas, DrawMode::HitTest);
    d_.DrawParts(canvas, DrawMode::Highlight);
    Sync();
    if (Sel().BandList().empty())
        Sel().SetBand(BandState::Off);
}

bool DrawingEdit::WithinOneSlot(const IntRect& band) const {
    const IntRect& a = d_.Area();
    if (d_.ViewPallet.No == -1 || d_.PalletRect[0].Left == kNoSlot)
        return false;
    const int32_t cap = d_.CaptionHeight;
    const int32_t cw = a.Right - a.Left;
    const int32_t ch = a.Bottom - a.Top;
    switch (d_.Shown().Mode()) {
        case PalletView::Flat:
            return Inside(band, IntRect{a.Left, a.Top + cap, a.Right, a.Bottom});
        case PalletView::Danmen:
            return Inside(band, IntRect{a.Left, a.Top + cap, a.Right, a.Bottom - (ch - cap) / 2});
        case PalletView::FourPallet:
        case PalletView::TwoPallet: {
            const int32_t quadrantHeight = (ch - 2 * cap) / 2;
            for (int32_t row = 0; row < 2; ++row) {
                const int32_t top = a.Top + row * (ch / 2) + cap;
                const IntRect left{a.Left, top, a.Left + cw / 2, top + quadrantHeight};
                const IntRect right{a.Left + cw / 2, top, a.Right, top + quadrantHeight};
                if (Inside(band, left) || Inside(band, right))
                    return true;
            }
            return false;
        }
        default:
            return false;
    }
}

// --- move -----------------------------------------------------------------------------------

void DrawingEdit::Move(Canvas& canvas, int32_t x, int32_t y, bool leftButtonOnly) {
    const StackId before = Sel().Picked();
    MoveSteps(canvas, x, y, leftButtonOnly);
    InfoFollowsPick(before);
}

void DrawingEdit::MoveSteps(Canvas& canvas, int32_t x, int32_t y, bool leftButtonOnly) {
    x = Cut(x);
    y = Cut(y);
    if (tracking_) {
        trackTo_ = IntPoint{x, y};
        view_.ShowDragImage({Normalised(TrackedBand())});
        return;
    }
    const bool dragging =
        leftButtonOnly && MoveCount >= 0 && (BandDragInForce() || Sel().Picked() != kNoStack);
    if (Sel().Band() != BandState::Off && DragAnchor != kNoStack && !dragging &&
        Sel().Band() != BandState::Aside && Sel().BandList().empty() && MoveCount >= 1) {
        d_.DrawParts(canvas, DrawMode::AllNormal);
        Sel().ClearBandList();
        Sync();
        Sel().SetBand(BandState::Aside);
        Sel().SetLastPicked(kNoStack);
        Sel().SetPicked(kNoStack);
    }
    if (dragging) {
        // The overlay replaces the image drawn at LastMouse.
        view_.ShowDragImage(DragImageAt(x, y));
        LastMouse = IntPoint{x, y};
        if (!InDrawingZone(x, y))
            LetGoOfDrag();
    }
    MoveCount = MoveCount >= kMoveCountWrap ? 1 : MoveCount + 1;
    if (dragging && (Sel().Picked() != kNoStack || BandDragInForce()))
        view_.ShowLanding(PreviewAt(x, y));
}

std::optional<DropPreview> DrawingEdit::PreviewAt(int32_t x, int32_t y) {
    if (!DropDue() || !InDrawingZone(x, y) || app_.KouteiAt(d_.Shown().Koutei()) == nullptr)
        return std::nullopt;
    return PreviewDrop(DragImageAt(x, y), x - pressAt_.X, y - pressAt_.Y);
}

DropPreview DrawingEdit::PreviewDrop(const std::vector<IntRect>& dropped, int32_t dx, int32_t dy) {
    // The job does not change while the button is held: one copy serves the whole drag.
    if (!previewBase_)
        previewBase_ = JobSnapshot::Take(app_);
    previewBase_->Restore(previewJob_);
    previewJob_.Settings = app_.Settings;
    Selection sel = Sel();
    const DropRun run = RunDrop(previewJob_, sel, dropped, dx, dy);
    DropPreview preview{run.Refused, {}};
    for (const StackId id : run.Carried) {
        const HaichiInfo* h = previewJob_.HaichiList.Find(id);
        if (const std::optional<IntRect> r = h != nullptr ? d_.ScreenRect(*h) : std::nullopt)
            preview.Landing.push_back(*r);
    }
    return preview;
}

void DrawingEdit::LetGoOfDrag() {
    Sel().SetPicked(kNoStack);
    Sel().ClearBandList();
    BandOffsets.clear();
    view_.HideDragImage();
}

bool DrawingEdit::AbandonDrag(Canvas& canvas) {
    if (tracking_) {
        tracking_ = false;
        view_.HideDragImage();
        return true;
    }
    if (LastMouse == kNoMouse)
        return false;
    const StackId before = Sel().Picked();
    const bool bandDrag = BandDragInForce();
    LetGoOfDrag();
    if (bandDrag) {
        d_.DrawParts(canvas, DrawMode::AllNormal);
        Sync();
        Sel().SetBand(BandState::Aside);
        Sel().SetLastPicked(kNoStack);
    }
    InfoFollowsPick(before);
    return true;
}

bool DrawingEdit::InDrawingZone(int32_t x, int32_t y) const {
    const IntRect& a = d_.Area();
    // Zoomed, DANMEN's plan ends above the cross-section, where the pallet runs on unseen.
    const int32_t bottom = d_.Zoomed() ? d_.PlanZone.Bottom : a.Bottom;
    return !(y <= d_.CaptionHeight || y >= bottom - 1 || x < 2 || x >= a.Right - 1);
}

std::string DropRefusalText(DropRefusal why, const MessageTable& messages) {
    const char* key = "S-DROP-OFF";
    const char* fallback = "Not moved: the stack was dropped beside the pallets.";
    if (why == DropRefusal::NoRoom) {
        key = "S-DROP-ROOM";
        fallback = "Not moved: other stacks or the pallet's edge are in the way.";
    } else if (why == DropRefusal::NotOnOnePallet) {
        key = "S-DROP-PALLET";
        fallback = "Not moved: the stacks would not all land on one pallet.";
    }
    return TextOr(messages, "MainDlg", key, fallback);
}

// --- release --------------------------------------------------------------------------------

void DrawingEdit::Release(Canvas& canvas, int32_t x, int32_t y) {
    x = Cut(x);
    y = Cut(y);
    if (tracking_) {
        tracking_ = false;
        trackTo_ = IntPoint{x, y};
        view_.HideDragImage();
        FinishBand(canvas);
        return;
    }
    if (DropDue())
        Drop(canvas, x, y);
    // The copy the landings were worked out on is not kept beyond the drag.
    previewBase_.reset();
    previewJob_.FreeJob();
    LastMouse = kNoMouse;
    if (Sel().Band() == BandState::Aside) {
        Sel().ClearBandList();
        BandOffsets.clear();
        Sel().SetBand(BandState::Off);
    }
    view_.HideDragImage();
}

bool DrawingEdit::DropDue() const {
    if (MoveCount < 1)
        return false;
    if (Sel().Band() == BandState::Off)
        return Sel().Picked() != kNoStack;
    return BandDragInForce() && !Sel().PickHistory().empty();
}

void DrawingEdit::Drop(Canvas& canvas, int32_t x, int32_t y) {
    const std::vector<IntRect> dropped = DragImageAt(x, y);
    view_.HideDragImage();
    MoveCount = -1;
    CarryOutDrop(canvas, dropped, x - pressAt_.X, y - pressAt_.Y, IntPoint{x, y});
}

std::optional<std::string> DrawingEdit::ReplayDrop(Canvas& canvas, const JournalCommand& line) {
    const auto stackAt = [this](int32_t position) -> HaichiInfo* {
        return position < 0 ? nullptr : app_.HaichiList.AtPosition(static_cast<size_t>(position));
    };
    std::vector<StackId> picks;
    for (const int32_t position : line.Stacks) {
        const HaichiInfo* h = stackAt(position);
        if (h == nullptr)
            return "no stack at place " + std::to_string(position);
        picks.push_back(h->Id);
    }
    Sel().Reset();
    for (const StackId id : picks)
        Sel().AddToHistory(id);
    if (line.Verb == JournalVerb::Drop) {
        // No picks: the window dragged a stack picked before Direct was switched, which
        // emptied the history; the drop still rebuilt the corner marks.
        if (!picks.empty()) {
            Sel().SetPicked(picks.front());
            Sel().SetLastPicked(picks.front());
        }
        const IntRect& r = line.Drop;
        CarryOutDrop(canvas, {r}, 0, 0,
                     IntPoint{r.Left + (r.Right - r.Left) / 2, r.Top + (r.Bottom - r.Top) / 2});
        return std::nullopt;
    }
    Sel().StartBand(IntRect{});
    std::vector<IntRect> dropped;
    for (const BandEntryAtPress& e : line.Band) {
        const HaichiInfo* h = stackAt(e.Stack);
        if (h == nullptr)
            return "no stack at place " + std::to_string(e.Stack);
        Sel().AddBandEntry(BandEntry{h->Id, e.Rect});
        dropped.push_back(Moved(e.Rect, line.ShiftX, line.ShiftY));
    }
    if (Sel().BandList().empty())
        return std::string("no band entry");
    CarryOutDrop(canvas, dropped, line.ShiftX, line.ShiftY, kNoMouse);
    return std::nullopt;
}

void DrawingEdit::CarryOutDrop(Canvas& canvas, const std::vector<IntRect>& dropped, int32_t dx,
                               int32_t dy, IntPoint at) {
    std::optional<DropRefusal> refused;
    if (app_.KouteiAt(d_.Shown().Koutei()) != nullptr) {
        // Written down as it reaches the engine, refused or not: a refused drop still rebuilds
        // the corner marks.
        const JournalCommand line = DropLine(dropped.front(), dx, dy);
        if (session_ != nullptr)
            session_->BeginStep(step::kMove, Sel());
        const DropRun run = RunDrop(app_, Sel(), dropped, dx, dy);
        refused = run.Refused;
        if (session_ != nullptr) {
            // The step is kept only when a stack really moved.
            session_->EndStep(run.Moved);
            session_->Journal(line);
        }
    }
    view_.Refresh();
    d_.DrawParts(canvas, DrawMode::Highlight);
    if (Sel().Band() == BandState::Off)
        d_.DrawParts(canvas, DrawMode::HitTest, at.X, at.Y);
    if (refused)
        view_.ShowRefusedDrop(*refused, dropped);
}

DrawingEdit::DropRun DrawingEdit::RunDrop(CKestoApp& job, Selection& sel,
                                          const std::vector<IntRect>& dropped, int32_t dx,
                                          int32_t dy) const {
    DropRun run;
    KouteiInfo* koutei = job.KouteiAt(d_.Shown().Koutei());
    if (koutei == nullptr)
        return run;
    std::vector<HaichiInfo*> moving = StacksIn(job, sel.PickHistory());
    if (sel.Band() != BandState::Off) {
        moving.clear();
        for (const BandEntry& e : sel.BandList())
            moving.push_back(job.HaichiList.Find(e.Stack));
    }
    // The stacks picked up, which the corners are rebuilt without.
    const std::vector<HaichiInfo*> picked = StacksIn(job, sel.PickHistory());
    const auto placesBefore = Positions(moving);
    CKs_Haichi engine(job, services_, CandidatePallets(d_.Shown(), job.Settings.PalletCount));
    engine.RebuildCorners(koutei, picked);
    if (sel.Band() == BandState::Off) {
        const IntRect r = dropped.front();
        const auto before = Positions(picked);
        const DropInput drop{d_.PalletRect, d_.BlockRects, picked, false};
        engine.MoveGroup(koutei, picked, r.Left, r.Top, r.Right, r.Bottom,
                         DropPlacementFor(job.Settings.IsDirect), drop);
        // Put back where it was picked up, nothing had to move.
        const bool inPlace = std::abs(r.Left - sel.PickRect().Left) <= kPutBackPixels &&
                             std::abs(r.Top - sel.PickRect().Top) <= kPutBackPixels;
        if (Positions(picked) == before && !inPlace)
            run.Refused = OnAPallet(r) ? DropRefusal::NoRoom : DropRefusal::OffThePallets;
    } else {
        run.Refused = DropBand(engine, job, sel, koutei, picked, dx, dy);
    }
    const auto placesAfter = Positions(moving);
    for (size_t i = 0; i < moving.size(); ++i) {
        if (moving[i] == nullptr)
            continue;
        run.Carried.push_back(moving[i]->Id);
        if (placesAfter[i] != placesBefore[i])
            moving[i]->Edits |= kEditMoved;
    }
    run.Moved = placesAfter != placesBefore;
    return run;
}

JournalCommand DrawingEdit::DropLine(const IntRect& dropped, int32_t dx, int32_t dy) const {
    JournalCommand line;
    line.ClientWidth = d_.Area().Right - d_.Area().Left;
    line.ClientHeight = d_.Area().Bottom - d_.Area().Top;
    if (session_ != nullptr)
        line.Stacks = session_->PositionsOf(Sel().PickHistory());
    if (Sel().Band() == BandState::Off) {
        line.Verb = JournalVerb::Drop;
        line.Drop = dropped;
        return line;
    }
    line.Verb = JournalVerb::BandDrop;
    line.ShiftX = dx;
    line.ShiftY = dy;
    for (const BandEntry& e : Sel().BandList()) {
        if (session_ == nullptr)
            break;
        const std::vector<int32_t> place = session_->PositionsOf({e.Stack});
        if (!place.empty())
            line.Band.push_back({place.front(), e.Rect});
    }
    return line;
}

std::vector<std::pair<double, double>> DrawingEdit::Positions(
    const std::vector<HaichiInfo*>& stacks) {
    std::vector<std::pair<double, double>> at;
    for (const HaichiInfo* h : stacks)
        at.emplace_back(h != nullptr ? h->X : 0, h != nullptr ? h->Y : 0);
    return at;
}

bool DrawingEdit::OnAPallet(const IntRect& r) const {
    const int32_t cx = r.Left + (r.Right - r.Left) / 2;
    const int32_t cy = r.Top + (r.Bottom - r.Top) / 2;
    return std::any_of(d_.PalletRect.begin(), d_.PalletRect.end(),
                       [&](const IntRect& slot) { return Contains(slot, cx, cy); });
}

std::optional<DropRefusal> DrawingEdit::DropBand(CKs_Haichi& engine, CKestoApp& job, Selection& sel,
                                                 KouteiInfo* koutei,
                                                 const std::vector<HaichiInfo*>& picked, int32_t dx,
                                                 int32_t dy) const {
    // Every entry alone must land on one and the same pallet, or nothing moves.
    std::optional<int32_t> target;
    for (const BandEntry& e : sel.BandList()) {
        const IntRect r = Moved(e.Rect, dx, dy);
        const DropInput probe{d_.PalletRect, d_.BlockRects, picked, true};
        const DropResult res =
            engine.MoveGroup(koutei, {job.HaichiList.Find(e.Stack)}, r.Left, r.Top, r.Right,
                             r.Bottom, DropPlacementFor(job.Settings.IsDirect), probe);
        if (res.Target < 0)
            return DropRefusal::OffThePallets;
        if (target && *target != res.Target)
            return DropRefusal::NotOnOnePallet;
        target = res.Target;
    }
    std::vector<HaichiInfo*> records;
    for (const BandEntry& e : sel.BandList())
        records.push_back(job.HaichiList.Find(e.Stack));
    const auto before = Positions(records);
    for (size_t i = 0; i < sel.BandList().size(); ++i) {
        const BandEntry e = sel.BandList()[i];
        const IntRect r = Moved(e.Rect, dx, dy);
        const DropInput move{d_.PalletRect, d_.BlockRects, picked, false};
        engine.MoveGroup(koutei, {records[i]}, r.Left, r.Top, r.Right, r.Bottom,
                         DropPlacementFor(job.Settings.IsDirect), move);
        sel.MoveBandEntry(i, r);
    }
    if (Positions(records) == before && (dx != 0 || dy != 0))
        return DropRefusal::NoRoom;
    return std::nullopt;
}

// --- shared -----------------------------------------------------------------------------------

void DrawingEdit::InfoFollowsPick(StackId before) {
    if (before != kNoStack && Sel().Picked() == kNoStack)
        view_.RefreshInfoPanel();
}

bool DrawingEdit::SwitchDirect() {
    app_.Settings.IsDirect.Switch();
    if (session_ != nullptr)
        session_->Journal({.Verb = JournalVerb::Direct, .Value = app_.Settings.IsDirect.Stored()});
    if (app_.Settings.IsDirect.IsOne())
        return false;
    if (Sel().Band() == BandState::Off)
        return false;
    Sel().Reset();
    return true;
}

void DrawingEdit::DirectSwitched() {
    Sel().SetLastPicked(kNoStack);
    Sel().ClearHistory();
}

void DrawingEdit::PickAlone(const HaichiInfo& stack) {
    Sel().SetPicked(stack.Id);
    Sel().SetLastPicked(stack.Id);
    Sel().ClearHistory();
    Sel().AddToHistory(stack.Id);
}

std::optional<IntRect> DrawingEdit::ShownUnion(const std::vector<StackId>& stacks) const {
    std::optional<IntRect> all;
    for (const StackId id : stacks) {
        const HaichiInfo* h = StackOf(id);
        const std::optional<IntRect> r = h != nullptr ? d_.ScreenRect(*h) : std::nullopt;
        if (r)
            all = all ? Union(*all, *r) : *r;
    }
    return all;
}

bool DrawingEdit::Nudge(Canvas& canvas, int32_t stepX, int32_t stepY) {
    if (DragInProgress() || app_.KouteiAt(d_.Shown().Koutei()) == nullptr)
        return false;
    // What a drag would carry, and the first carried stack, whose landing must lie that way.
    std::vector<IntRect> from;
    const HaichiInfo* lead = nullptr;
    if (Sel().Band() == BandState::InForce && !Sel().BandList().empty()) {
        for (const BandEntry& e : Sel().BandList())
            from.push_back(e.Rect);
        lead = StackOf(Sel().BandList().front().Stack);
    } else if (Sel().Band() == BandState::Off && Sel().Picked() != kNoStack &&
               !Sel().PickHistory().empty()) {
        from.push_back(Sel().PickRect());
        lead = StackOf(Sel().PickHistory().front());
    }
    const std::optional<IntRect> now = lead != nullptr ? d_.ScreenRect(*lead) : std::nullopt;
    if (!now)
        return false;
    const auto further = [&](const IntRect& r) {
        if (stepX != 0)
            return stepX > 0 ? r.Left > now->Left : r.Left < now->Left;
        return stepY > 0 ? r.Top > now->Top : r.Top < now->Top;
    };
    const IntRect& area = d_.Area();
    const int32_t reach = std::max(area.Right - area.Left, area.Bottom - area.Top);
    previewBase_.reset();
    for (int32_t k = kNudgePixels; k <= reach; k += kNudgePixels) {
        const int32_t dx = stepX * k;
        const int32_t dy = stepY * k;
        std::vector<IntRect> dropped;
        for (const IntRect& r : from)
            dropped.push_back(Moved(r, dx, dy));
        // Off every pallet in view, every step further is refused too.
        if (!OnAPallet(dropped.front()))
            break;
        const DropPreview landing = PreviewDrop(dropped, dx, dy);
        if (landing.Refused || landing.Landing.empty() || !further(landing.Landing.front()))
            continue;
        previewBase_.reset();
        // The picks stay as they were (no point is hit again, which by block would take the
        // block's other stacks along), so the next arrow moves the same stacks on.
        const std::vector<StackId> picks = Sel().PickHistory();
        const StackId picked = Sel().Picked();
        CarryOutDrop(canvas, dropped, dx, dy, kNoMouse);
        if (Sel().Band() == BandState::Off) {
            Sel().ClearHistory();
            for (const StackId id : picks)
                Sel().AddToHistory(id);
            Sel().SetPicked(picked);
            Sel().SetPickRect(ShownUnion(picks).value_or(Sel().PickRect()));
        }
        return true;
    }
    previewBase_.reset();
    view_.ShowRefusedDrop(DropRefusal::NoRoom, from);
    return false;
}

void DrawingEdit::PickFromKeys(Canvas& canvas, const HaichiInfo& stack) {
    const std::optional<IntRect> shown = d_.ScreenRect(stack);
    if (!shown)
        return;
    if (Sel().Band() != BandState::Off || Sel().LastPicked() != kNoStack)
        d_.DrawParts(canvas, DrawMode::Unhighlight);
    Sel().ClearBandList();
    BandOffsets.clear();
    Sel().SetBand(BandState::Off);
    PickAlone(stack);
    Sel().SetPickRect(*shown);
    Sync();
    if (stack.Part != nullptr)
        view_.SelectPartsAllLine(stack.Part->Seq);
    d_.DrawParts(canvas, DrawMode::Highlight);
    view_.RefreshInfoPanel();
}

void DrawingEdit::JobReloaded() {
    // The stacks picked or banded are gone with the old job, and so are the cells of its blocks.
    Sel().Reset();
    d_.BlockRects.clear();
    previewBase_.reset();
}

bool DrawingEdit::BandDragInForce() const {
    return Sel().Band() == BandState::InForce && DragAnchor != kNoStack &&
           !Sel().BandList().empty();
}

std::vector<IntRect> DrawingEdit::DragImageAt(int32_t x, int32_t y) const {
    if (!BandDragInForce())
        return {PlacedAt(Sel().PickRect(), x + DragOffset.X, y + DragOffset.Y)};
    std::vector<IntRect> rects;
    for (size_t i = 0; i < Sel().BandList().size(); ++i) {
        const IntRect& r = Sel().BandList()[i].Rect;
        rects.push_back(i < BandOffsets.size()
                            ? PlacedAt(r, x + BandOffsets[i].X, y + BandOffsets[i].Y)
                            : Moved(r, x - pressAt_.X, y - pressAt_.Y));
    }
    return rects;
}

void DrawingEdit::Sync() {
    std::vector<int32_t> seqs;
    auto addPartOf = [&](StackId id) {
        const HaichiInfo* h = StackOf(id);
        if (h != nullptr && h->Part != nullptr)
            seqs.push_back(h->Part->Seq);
    };
    addPartOf(Sel().Picked());
    if (Sel().Band() != BandState::Off) {
        for (const BandEntry& e : Sel().BandList())
            addPartOf(e.Stack);
    }
    std::sort(seqs.begin(), seqs.end());
    seqs.erase(std::unique(seqs.begin(), seqs.end()), seqs.end());
    view_.SyncPartList(seqs);
}

int32_t DrawingEdit::PalletOf(StackId id) const {
    const HaichiInfo* stack = StackOf(id);
    const BlockInfo* block = stack != nullptr ? app_.BlockOf(*stack) : nullptr;
    return block != nullptr ? block->PalletNo : -1;
}

HaichiInfo* DrawingEdit::StackOf(StackId id) const {
    return app_.HaichiList.Find(id);
}

std::vector<HaichiInfo*> DrawingEdit::StacksIn(CKestoApp& job, const std::vector<StackId>& ids) {
    std::vector<HaichiInfo*> stacks;
    stacks.reserve(ids.size());
    for (const StackId id : ids)
        stacks.push_back(job.HaichiList.Find(id));
    return stacks;
}

}  // namespace kesto
