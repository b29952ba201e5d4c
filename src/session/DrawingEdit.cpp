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

std::vector<BandEntry>::iterator FindEntry(std::vector<BandEntry>& band, const HaichiInfo* h) {
    return std::find_if(band.begin(), band.end(),
                        [h](const BandEntry& e) { return e.Record == h; });
}

}  // namespace

DrawingEdit::DrawingEdit(CKestoApp& app, const Services& services, PalletDrawing& drawing,
                         DrawAreaView& view)
    : app_(app), services_(services), d_(drawing), view_(view) {}

// --- press ----------------------------------------------------------------------------------

void DrawingEdit::Press(Canvas& canvas, int32_t x, int32_t y, bool shift) {
    const HaichiInfo* before = d_.Picked;
    PressSteps(canvas, x, y, shift);
    InfoFollowsPick(before);
}

void DrawingEdit::PressSteps(Canvas& canvas, int32_t x, int32_t y, bool shift) {
    x = Cut(x);
    y = Cut(y);
    DragAnchor = nullptr;
    // Every press counts its moves afresh, so a click without moving never drops.
    MoveCount = -1;
    tracking_ = false;
    const bool bandFromPick =
        shift && app_.IsDirect == 1 && d_.BandActive == 0 && d_.LastPicked != nullptr;
    if (bandFromPick && !StartBandFromPick(canvas, x, y)) {
        SinglePick(canvas, x, y);
        return;
    }
    if (d_.BandActive == 1 && !d_.BandList.empty()) {
        if (shift) {
            ShiftInBand(canvas, x, y);
            return;
        }
        if (GrabBand(canvas, x, y))
            return;
    }
    SinglePick(canvas, x, y);
}

HaichiInfo* DrawingEdit::PointTestKeepingBand(Canvas& canvas, int32_t x, int32_t y) {
    d_.Picked = nullptr;
    d_.BandActive = 2;
    d_.DrawParts(canvas, drawmode::kHitTest, x, y);
    d_.BandActive = 1;
    return d_.Picked;
}

bool DrawingEdit::StartBandFromPick(Canvas& canvas, int32_t x, int32_t y) {
    HaichiInfo* const oldPicked = d_.Picked;
    const IntRect oldRect = d_.PickRect;
    if (PointTestKeepingBand(canvas, x, y) == nullptr) {
        d_.Picked = oldPicked;
        // A band without entries is not in force: the press is a plain pick.
        d_.BandActive = 0;
        return false;
    }
    const std::optional<IntRect> shown = d_.ScreenRect(*d_.LastPicked);
    d_.BandList.assign(1, BandEntry{d_.LastPicked, shown ? *shown : oldRect});
    return true;
}

void DrawingEdit::ShiftInBand(Canvas& canvas, int32_t x, int32_t y) {
    // The hit test leaves Picked on the record hit, so that MaiChg and left work on it.
    HaichiInfo* hit = PointTestKeepingBand(canvas, x, y);
    if (hit != nullptr && PalletOf(*hit) == PalletOf(*d_.BandList.front().Record)) {
        const auto it = FindEntry(d_.BandList, hit);
        if (it != d_.BandList.end()) {
            d_.DrawParts(canvas, drawmode::kUnhighlight);
            d_.BandList.erase(it);
        } else if (d_.BandList.size() < kBandListCapacity) {
            d_.BandList.push_back(BandEntry{hit, d_.PickRect});
        }
        d_.DrawParts(canvas, drawmode::kHighlight);
        Sync();
    }
    if (d_.BandList.empty()) {
        d_.BandActive = 0;
        d_.LastPicked = nullptr;
    }
    d_.PickHistory.clear();
}

bool DrawingEdit::GrabBand(Canvas& canvas, int32_t x, int32_t y) {
    HaichiInfo* hit = PointTestKeepingBand(canvas, x, y);
    if (hit != nullptr && FindEntry(d_.BandList, hit) != d_.BandList.end()) {
        DragAnchor = hit;
        pressAt_ = IntPoint{x, y};
        BandOffsets.clear();
        for (const BandEntry& e : d_.BandList)
            BandOffsets.push_back(IntPoint{e.Rect.Left - x, e.Rect.Top - y});
        LastMouse = IntPoint{x, y};
        view_.ShowDragImage(DragImageAt(x, y));
        view_.RefreshInfoPanel();
        return true;
    }
    d_.DrawParts(canvas, drawmode::kUnhighlight);
    d_.BandList.clear();
    BandOffsets.clear();
    Sync();
    d_.BandActive = 0;
    return false;
}

void DrawingEdit::SinglePick(Canvas& canvas, int32_t x, int32_t y) {
    view_.HideDragImage();
    d_.PickHistory.clear();
    MoveCount = -1;
    d_.Picked = nullptr;
    // A band whose entries were all dropped is not in force: this is a point test, not a
    // collection in the old band.
    if (d_.BandActive != 0 && d_.BandList.empty())
        d_.BandActive = 0;
    d_.DrawParts(canvas, drawmode::kHitTest, x, y);
    if (d_.Picked != nullptr) {
        PartHit(canvas, x, y);
        return;
    }
    // Nothing hit: the rubber band is tracked from here until the release.
    if (app_.IsDirect == 1) {
        tracking_ = true;
        trackFrom_ = trackTo_ = IntPoint{x, y};
    }
}

void DrawingEdit::PartHit(Canvas& canvas, int32_t x, int32_t y) {
    if (d_.LastPicked != nullptr)
        d_.DrawParts(canvas, drawmode::kUnhighlight);
    LastMouse = IntPoint{x, y};
    DragOffset = IntPoint{d_.PickRect.Left - x, d_.PickRect.Top - y};
    Sync();
    if (d_.Picked->Part != nullptr)
        view_.SelectPartsAllLine(d_.Picked->Part->Seq);
    d_.DrawParts(canvas, drawmode::kHighlight);
    view_.ShowDragImage(DragImageAt(x, y));
    d_.LastPicked = d_.Picked;
    view_.RefreshInfoPanel();
}

// --- rubber band ----------------------------------------------------------------------------

void DrawingEdit::FinishBand(Canvas& canvas) {
    const IntRect band = Normalised(TrackedBand());
    if (band.Right - band.Left <= 2 || band.Bottom - band.Top <= 2) {
        if (d_.BandActive != 0)
            d_.DrawParts(canvas, drawmode::kUnhighlight);
        return;
    }
    if (!WithinOneSlot(band))
        return;
    if (d_.LastPicked != nullptr)
        d_.DrawParts(canvas, drawmode::kUnhighlight);
    d_.BandActive = 1;
    d_.BandList.clear();
    d_.BandRect = band;
    d_.DrawParts(canvas, drawmode::kHitTest);
    d_.DrawParts(canvas, drawmode::kHighlight);
    Sync();
    if (d_.BandList.empty())
        d_.BandActive = 0;
}

bool DrawingEdit::WithinOneSlot(const IntRect& band) const {
    const IntRect& a = d_.Shown().AreaRect;
    if (d_.ViewPallet.No == -1 || d_.PalletRect[0].Left == kNoSlot)
        return false;
    const int32_t cap = d_.CaptionHeight;
    const int32_t cw = a.Right - a.Left;
    const int32_t ch = a.Bottom - a.Top;
    switch (d_.Shown().PalletMode) {
        case view::kFlat:
            return Inside(band, IntRect{a.Left, a.Top + cap, a.Right, a.Bottom});
        case view::kDanmen:
            return Inside(band, IntRect{a.Left, a.Top + cap, a.Right, a.Bottom - (ch - cap) / 2});
        case view::kFourPallet:
        case view::kTwoPallet: {
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
    const HaichiInfo* before = d_.Picked;
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
        leftButtonOnly && MoveCount >= 0 && (BandDragInForce() || d_.Picked != nullptr);
    if (d_.BandActive >= 1 && DragAnchor != nullptr && !dragging && d_.BandActive != 2 &&
        d_.BandList.empty() && MoveCount >= 1) {
        d_.DrawParts(canvas, drawmode::kAllNormal);
        d_.BandList.clear();
        Sync();
        d_.BandActive = 2;
        d_.LastPicked = nullptr;
        d_.Picked = nullptr;
    }
    if (dragging) {
        // The overlay replaces the image drawn at LastMouse.
        view_.ShowDragImage(DragImageAt(x, y));
        LastMouse = IntPoint{x, y};
        if (!InDrawingZone(x, y)) {
            d_.Picked = nullptr;
            d_.BandList.clear();
            BandOffsets.clear();
            view_.HideDragImage();
        }
    }
    MoveCount = MoveCount >= kMoveCountWrap ? 1 : MoveCount + 1;
}

bool DrawingEdit::InDrawingZone(int32_t x, int32_t y) const {
    const IntRect& a = d_.Shown().AreaRect;
    return !(y <= d_.CaptionHeight || y >= a.Bottom - 1 || x < 2 || x >= a.Right - 1);
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
    const std::string text = messages.GetFontText("MainDlg", key).Text;
    return text.empty() ? fallback : text;
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
    LastMouse = kNoMouse;
    if (d_.BandActive == 2) {
        d_.BandList.clear();
        BandOffsets.clear();
        d_.BandActive = 0;
    }
    view_.HideDragImage();
}

bool DrawingEdit::DropDue() const {
    if (MoveCount < 1)
        return false;
    if (d_.BandActive == 0)
        return d_.Picked != nullptr;
    return BandDragInForce() && !d_.PickHistory.empty();
}

void DrawingEdit::Drop(Canvas& canvas, int32_t x, int32_t y) {
    const std::vector<IntRect> dropped = DragImageAt(x, y);
    view_.HideDragImage();
    MoveCount = -1;
    std::optional<DropRefusal> refused;
    if (KouteiInfo* koutei = app_.KouteiAt(d_.Shown().CurrentKoutei)) {
        CKs_Haichi engine(app_, services_, d_.Shown());
        engine.RebuildCorners(koutei, d_.PickHistory);
        if (d_.BandActive == 0) {
            const IntRect r = dropped.front();
            const auto before = Positions(d_.PickHistory);
            const DropInput drop{d_.PalletRect, d_.BlockRects, d_.PickHistory, false};
            engine.MoveGroup(koutei, d_.PickHistory, r.Left, r.Top, r.Right, r.Bottom,
                             app_.IsDirect, drop);
            // Put back where it was picked up, nothing had to move.
            const bool inPlace = std::abs(r.Left - d_.PickRect.Left) <= kPutBackPixels &&
                                 std::abs(r.Top - d_.PickRect.Top) <= kPutBackPixels;
            if (Positions(d_.PickHistory) == before && !inPlace)
                refused = OnAPallet(r) ? DropRefusal::NoRoom : DropRefusal::OffThePallets;
        } else {
            refused = DropBand(engine, koutei, x - pressAt_.X, y - pressAt_.Y);
        }
    }
    view_.Refresh();
    d_.DrawParts(canvas, drawmode::kHighlight);
    if (d_.BandActive == 0)
        d_.DrawParts(canvas, drawmode::kHitTest, x, y);
    if (refused)
        view_.ShowRefusedDrop(*refused, dropped);
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
    return std::any_of(d_.PalletRect.begin(), d_.PalletRect.end(), [&](const IntRect& slot) {
        return cx >= slot.Left && cx <= slot.Right && cy >= slot.Top && cy <= slot.Bottom;
    });
}

std::optional<DropRefusal> DrawingEdit::DropBand(CKs_Haichi& engine, KouteiInfo* koutei, int32_t dx,
                                                 int32_t dy) {
    // Every entry alone must land on one and the same pallet, or nothing moves.
    std::optional<int32_t> target;
    for (const BandEntry& e : d_.BandList) {
        const IntRect r = Moved(e.Rect, dx, dy);
        const DropInput probe{d_.PalletRect, d_.BlockRects, d_.PickHistory, true};
        const DropResult res = engine.MoveGroup(koutei, {e.Record}, r.Left, r.Top, r.Right,
                                                r.Bottom, app_.IsDirect, probe);
        if (res.Target < 0)
            return DropRefusal::OffThePallets;
        if (target && *target != res.Target)
            return DropRefusal::NotOnOnePallet;
        target = res.Target;
    }
    std::vector<HaichiInfo*> records;
    for (const BandEntry& e : d_.BandList)
        records.push_back(e.Record);
    const auto before = Positions(records);
    for (BandEntry& e : d_.BandList) {
        const IntRect r = Moved(e.Rect, dx, dy);
        const DropInput move{d_.PalletRect, d_.BlockRects, d_.PickHistory, false};
        engine.MoveGroup(koutei, {e.Record}, r.Left, r.Top, r.Right, r.Bottom, app_.IsDirect, move);
        e.Rect = r;
    }
    if (Positions(records) == before && (dx != 0 || dy != 0))
        return DropRefusal::NoRoom;
    return std::nullopt;
}

// --- shared -----------------------------------------------------------------------------------

void DrawingEdit::InfoFollowsPick(const HaichiInfo* before) {
    if (before != nullptr && d_.Picked == nullptr)
        view_.RefreshInfoPanel();
}

void DrawingEdit::DirectSwitched() {
    d_.LastPicked = nullptr;
    d_.PickHistory.clear();
}

bool DrawingEdit::BandDragInForce() const {
    return d_.BandActive == 1 && DragAnchor != nullptr && !d_.BandList.empty();
}

std::vector<IntRect> DrawingEdit::DragImageAt(int32_t x, int32_t y) const {
    if (!BandDragInForce())
        return {PlacedAt(d_.PickRect, x + DragOffset.X, y + DragOffset.Y)};
    std::vector<IntRect> rects;
    for (size_t i = 0; i < d_.BandList.size(); ++i) {
        const IntRect& r = d_.BandList[i].Rect;
        rects.push_back(i < BandOffsets.size()
                            ? PlacedAt(r, x + BandOffsets[i].X, y + BandOffsets[i].Y)
                            : Moved(r, x - pressAt_.X, y - pressAt_.Y));
    }
    return rects;
}

void DrawingEdit::Sync() {
    std::vector<int32_t> seqs;
    if (d_.Picked != nullptr && d_.Picked->Part != nullptr)
        seqs.push_back(d_.Picked->Part->Seq);
    if (d_.BandActive != 0) {
        for (const BandEntry& e : d_.BandList) {
            if (e.Record != nullptr && e.Record->Part != nullptr)
                seqs.push_back(e.Record->Part->Seq);
        }
    }
    std::sort(seqs.begin(), seqs.end());
    seqs.erase(std::unique(seqs.begin(), seqs.end()), seqs.end());
    view_.SyncPartList(seqs);
}

int32_t DrawingEdit::PalletOf(const HaichiInfo& record) const {
    const BlockInfo* block = app_.BlockOf(record);
    return block != nullptr ? block->PalletNo : -1;
}

}  // namespace kesto
