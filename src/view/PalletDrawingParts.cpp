#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "support/TextFormat.h"
#include "view/Colours.h"
#include "view/OffsetCrossings.h"
#include "view/PalletDrawing.h"

namespace kesto {

namespace {

constexpr Rgb kBlackPen{0, 0, 0};
// Back edges at or below this are never ordered into the cross-section.
constexpr double kNoBackEdge = -kNoBound;

bool OutlineMode(const CKestoApp& app, const PartsInfo& part) {
    return part.HasOutline == 1 && app.Settings.IsDirect.IsOne();
}

IntRect Shifted(const IntRect& r, int32_t d) {
    return IntRect{r.Left + d, r.Top + d, r.Right + d, r.Bottom + d};
}

bool WithinBand(const IntRect& r, const IntRect& band) {
    return r.Left >= band.Left && r.Right <= band.Right && r.Top >= band.Top &&
           r.Bottom <= band.Bottom;
}

// Distance from the point to the corner of r nearest to it (right and bottom win ties).
double CornerDistance(const IntRect& r, int32_t x, int32_t y) {
    const int64_t px = x, py = y;
    const int64_t cx = std::llabs(r.Right - px) <= std::llabs(px - r.Left) ? r.Right : r.Left;
    const int64_t cy = std::llabs(r.Bottom - py) <= std::llabs(py - r.Top) ? r.Bottom : r.Top;
    const double dx = static_cast<double>(cx - px);
    const double dy = static_cast<double>(cy - py);
    return std::sqrt(dx * dx + dy * dy);
}

// The best hit so far of one hit test.
struct Candidate {
    const HaichiInfo* Record = nullptr;
    IntRect Rect{};
    double Best = 0;
};

// A rectangle under the point becomes the pick; with nearestWins an earlier candidate whose
// corner is at least as near keeps it, so the earlier record wins ties.
void PointHit(const HaichiInfo* record, const IntRect& r, int32_t x, int32_t y, bool nearestWins,
              Candidate& previous, const HaichiInfo*& picked, IntRect& pickRect) {
    picked = record;
    pickRect = r;
    const double d = CornerDistance(r, x, y);
    if (!nearestWins)
        return;
    if (previous.Record != nullptr && previous.Best <= d) {
        picked = previous.Record;
        pickRect = previous.Rect;
    } else {
        previous.Best = d;
    }
    previous.Record = picked;
    previous.Rect = pickRect;
}

Rgb LayerColour(const colour::Palette& palette, int32_t k) {
    if (k < 10)
        return palette.PartNormal;
    return k < 20 ? palette.Layer10 : palette.Layer20;
}

bool BandHasPart(const StackList& stacks, const std::vector<BandEntry>& band,
                 const PartsInfo* part) {
    return std::any_of(band.begin(), band.end(), [&](const BandEntry& e) {
        const HaichiInfo* h = stacks.Find(e.Stack);
        return h != nullptr && h->Part == part;
    });
}

// The stack named a is of b's part.
bool SamePart(const StackList& stacks, StackId a, const HaichiInfo& b) {
    const HaichiInfo* h = stacks.Find(a);
    return h != nullptr && h->Part == b.Part;
}

}  // namespace

Rgb MarkColour(const PartsInfo& part, Rgb colour, const colour::Palette& palette) {
    const char* sides = part.SensitiveSides.c_str();
    const size_t n = std::min<size_t>(std::strlen(sides), 4);
    if (std::find(sides, sides + n, '1') == sides + n)
        return colour;
    if (colour == palette.PartNormal || colour == palette.Layer20 || colour == palette.Layer10)
        return palette.MarkedNormal;
    if (colour == palette.SamePart || colour == palette.Picked)
        return palette.MarkedPicked;
    return colour;
}

void PalletDrawing::HitTest(int32_t x, int32_t y) {
    // Zoomed, what runs past the plan is not shown and so not hit by a point.
    if (app_.HaichiList.Empty() ||
        (zoomed_ && selection_.Band() != BandState::InForce && !Contains(PlanZone, x, y)))
        return;
    Candidate previous;
    // A point test that hits nothing keeps the pick before.
    const HaichiInfo* hit = nullptr;
    IntRect pickRect = selection_.PickRect();
    for (const HaichiInfo& h : app_.HaichiList) {
        const std::optional<IntRect> r = ScreenRect(h);
        if (!r)
            continue;
        if (selection_.Band() == BandState::InForce) {
            if (WithinBand(*r, selection_.BandRect()))
                selection_.AddBandEntry(BandEntry{h.Id, *r});
            continue;
        }
        if (!Contains(*r, x, y))
            continue;
        PointHit(&h, *r, x, y, !shown_.Is3D(), previous, hit, pickRect);
        if (!shown_.Is3D())
            continue;
        IntRect layer = *r;
        for (int32_t k = 2; k <= h.Pieces; ++k) {
            layer = Shifted(layer, -2);
            if (Contains(layer, x, y))
                PointHit(&h, layer, x, y, true, previous, hit, pickRect);
        }
    }
    if (hit != nullptr)
        selection_.SetPicked(hit->Id);
    selection_.SetPickRect(pickRect);
    const StackId picked = selection_.Picked();
    const HaichiInfo* pickedStack = app_.HaichiList.Find(picked);
    if (pickedStack == nullptr)
        return;
    const std::vector<StackId>& history = selection_.PickHistory();
    if (history.empty() || history.back() != picked)
        selection_.AddToHistory(picked);
    if (shown_.Hit() != HitBy::Block || app_.Settings.IsDirect.IsNotZero())
        return;
    // Picking by block takes the block's other stacks along.
    for (const HaichiInfo& h : app_.HaichiList) {
        if (&h == pickedStack || h.BlockIndex != pickedStack->BlockIndex)
            continue;
        selection_.AddToHistory(h.Id);
        if (const std::optional<IntRect> r = ScreenRect(h))
            selection_.SetPickRect(Union(selection_.PickRect(), *r));
    }
}

namespace {

// A part's rectangle in fill (or its marked colour), outlined in the palette's part pen
// unless another pen is given.
void FillPart(const PalletDrawing& d, Canvas& canvas, const IntRect& r, const PartsInfo& part,
              Rgb fill, std::optional<Rgb> pen = std::nullopt) {
    canvas.FillRectangle(r, MarkColour(part, fill, d.Colours()), pen.value_or(d.Colours().PartPen));
}

void DrawNormal(const PalletDrawing& d, Canvas& canvas, const CKestoApp& app, const HaichiInfo& h,
                const IntRect& r) {
    if (OutlineMode(app, *h.Part))
        d.DrawOutline(canvas, r, h, d.Colours().OutlinePen);
    else
        FillPart(d, canvas, r, *h.Part, d.Colours().PartNormal);
}

bool DrawHighlighted(const PalletDrawing& d, Canvas& canvas, const CKestoApp& app,
                     const HaichiInfo& h, const IntRect& r) {
    const Selection& sel = d.Selected();
    const bool band = sel.Band() != BandState::Off;
    const colour::Palette& palette = d.Colours();
    if ((band && sel.HasBandEntry(h.Id)) || sel.Picked() == h.Id) {
        if (OutlineMode(app, *h.Part))
            d.DrawOutline(canvas, r, h, palette.Picked);
        else
            FillPart(d, canvas, r, *h.Part, palette.Picked);
        return true;
    }
    if ((band && BandHasPart(app.HaichiList, sel.BandList(), h.Part)) ||
        SamePart(app.HaichiList, sel.Picked(), h)) {
        if (OutlineMode(app, *h.Part))
            d.DrawOutline(canvas, r, h, palette.SamePartLine);
        else
            FillPart(d, canvas, r, *h.Part, palette.SamePart);
        return true;
    }
    return false;
}

// The base rectangle of one record in the mode's colours; true when the mode drew it.
bool DrawBase(const PalletDrawing& d, Canvas& canvas, const CKestoApp& app, DrawMode mode,
              const HaichiInfo& h, const IntRect& r) {
    switch (mode) {
        case DrawMode::All:
        case DrawMode::AllNormal:
            DrawNormal(d, canvas, app, h, r);
            return true;
        case DrawMode::Highlight:
            return DrawHighlighted(d, canvas, app, h, r);
        case DrawMode::Unhighlight: {
            // The band's parts, and the last pick's part, whose highlight may still be shown.
            const Selection& sel = d.Selected();
            const bool back = (sel.Band() != BandState::Off &&
                               BandHasPart(app.HaichiList, sel.BandList(), h.Part)) ||
                              h.Id == sel.LastPicked() ||
                              SamePart(app.HaichiList, sel.LastPicked(), h);
            if (back)
                DrawNormal(d, canvas, app, h, r);
            return back;
        }
        case DrawMode::PartPieces:
            if (!SamePart(app.HaichiList, d.Selected().Picked(), h))
                return false;
            if (OutlineMode(app, *h.Part))
                d.DrawOutline(canvas, r, h, d.Colours().Picked);
            else
                FillPart(d, canvas, r, *h.Part, d.Colours().SamePart);
            return true;
        default:
            return false;
    }
}

// The stacked pieces of a 3D stack, two pixels up and left per piece; returns the top layer.
IntRect DrawLayers(const PalletDrawing& d, Canvas& canvas, const CKestoApp& app, DrawMode mode,
                   const HaichiInfo& h, const IntRect& r, bool drawn) {
    const bool fills =
        mode == DrawMode::All || mode == DrawMode::Highlight || mode == DrawMode::Unhighlight;
    const PartsInfo& part = *h.Part;
    const colour::Palette& palette = d.Colours();
    IntRect layer = r;
    for (int32_t k = 2; k <= h.Pieces; ++k) {
        layer = Shifted(layer, -2);
        if (fills)
            FillPart(d, canvas, layer, part, LayerColour(palette, k));
        if (k != h.Pieces)
            continue;
        if (mode == DrawMode::Highlight) {
            if (d.Selected().Picked() == h.Id)
                FillPart(d, canvas, layer, part, palette.Picked);
            else if (SamePart(app.HaichiList, d.Selected().Picked(), h))
                FillPart(d, canvas, layer, part, palette.SamePart);
        } else if (mode == DrawMode::PartPieces && drawn) {
            FillPart(d, canvas, layer, part, palette.SamePart, kBlackPen);
        }
    }
    return layer;
}

}  // namespace

void PalletDrawing::DrawParts(Canvas& canvas, DrawMode mode, int32_t x, int32_t y) {
    ClipToPlan(canvas, true);
    if (mode == DrawMode::HitTest) {
        HitTest(x, y);
    } else if (!app_.HaichiList.Empty()) {
        DrawStacks(canvas, mode);
        const bool section =
            shown_.Mode() == PalletView::Danmen || shown_.Mode() == PalletView::TwoPallet;
        if (mode == DrawMode::All && section) {
            ClipToPlan(canvas, false);
            DrawSection(canvas);
            ClipToPlan(canvas, true);
        }
    }
    DrawOffsetLines(canvas);
    ClipToPlan(canvas, false);
}

void PalletDrawing::DrawStacks(Canvas& canvas, DrawMode mode) {
    const int32_t font = LabelFontSlot();
    for (const HaichiInfo& h : app_.HaichiList) {
        const std::optional<IntRect> r = ScreenRect(h);
        if (!r)
            continue;
        // Flat, a stack the mode does not recolour stays on the picture as it is, which keeps
        // a highlight change cheap on a full table. In 3D every stack's layers and label are
        // painted again in list order, so that the stacks keep covering each other as before.
        const bool drawn = DrawBase(*this, canvas, app_, mode, h, *r);
        if (!drawn && !shown_.Is3D())
            continue;
        const IntRect top =
            shown_.Is3D() ? DrawLayers(*this, canvas, app_, mode, h, *r, drawn) : *r;
        DrawPartLabel(canvas, top, h, font);
    }
}

void PalletDrawing::DrawSection(Canvas& canvas) const {
    // Without a height scale there is no side view to draw into.
    if (SectionScale == 0 || !std::isfinite(SectionScale))
        return;
    const std::array<int32_t, 4> p = PalletsInView();
    struct Bar {
        const HaichiInfo* Record;
        double Back;
    };
    std::vector<Bar> bars;
    for (const HaichiInfo& h : app_.HaichiList) {
        const BlockInfo* stands = app_.BlockOf(h);
        if (h.Part == nullptr || stands == nullptr)
            continue;
        const BlockInfo& block = *stands;
        const bool slotPallet =
            block.PalletNo != -1 && (block.PalletNo == p[0] || block.PalletNo == p[1]);
        const double back = h.Y + h.Part->SizeY;
        if (block.KouteiNo == shown_.Koutei() && slotPallet && back > kNoBackEdge)
            bars.push_back(Bar{&h, back});
    }
    // Farthest back first, ties in list order, so that nearer stacks cover those behind.
    std::stable_sort(bars.begin(), bars.end(),
                     [](const Bar& a, const Bar& b) { return a.Back > b.Back; });
    if (bars.size() > kSectionRecordCap)
        bars.resize(kSectionRecordCap);
    for (const Bar& bar : bars) {
        const std::optional<IntRect> r = ScreenRect(*bar.Record);
        if (!r)
            continue;
        const PartsInfo& part = *bar.Record->Part;
        const int32_t height = TruncToPixel(part.PieceHeight * bar.Record->Pieces / SectionScale);
        FillPart(*this, canvas, IntRect{r->Left, SectionTop - height, r->Right, SectionTop}, part,
                 palette_.Layer10);
    }
}

void PalletDrawing::DrawTag(Canvas& canvas, const IntRect& rect, const HaichiInfo& record) const {
    const auto tag = tags_->Texts.find(record.Id);
    if (tag == tags_->Texts.end() || tag->second.empty() || tags_->Fonts.empty())
        return;
    const std::string& text = tag->second;
    const auto fits = [&](const StackTags::Font& f) {
        return TextWidthAtMost(text, f.Height) <= rect.Right - rect.Left &&
               f.Height <= rect.Bottom - rect.Top;
    };
    const auto fitting = std::find_if(tags_->Fonts.begin(), tags_->Fonts.end(), fits);
    const StackTags::Font& font = fitting != tags_->Fonts.end() ? *fitting : tags_->Fonts.back();
    const int32_t height = font.Height;
    // A rectangle of the text's own size round the stack's centre: a tag larger than its
    // stack stands over the stack's edges rather than being cut by them.
    const int32_t halfWidth = TextWidthAtMost(text, height) / 2 + 1;
    const int32_t cx = rect.Left + (rect.Right - rect.Left) / 2;
    const int32_t top = rect.Top + (rect.Bottom - rect.Top - height) / 2;
    canvas.DrawLabel(LabelMode::Centred, text, font.Slot, IntPoint{},
                     IntRect{cx - halfWidth, top, cx + halfWidth, top + height + height / 2},
                     palette_.LabelText);
}

void PalletDrawing::DrawPartLabel(Canvas& canvas, const IntRect& rect, const HaichiInfo& record,
                                  int32_t fontSlot) const {
    if (tags_ != nullptr) {
        DrawTag(canvas, rect, record);
        return;
    }
    if (!FontDefined(app_, fontSlot) || record.Part == nullptr)
        return;
    const int32_t fh = FontPixelHeight(app_, fontSlot);
    const int32_t w = rect.Right - rect.Left;
    const int32_t ht = rect.Bottom - rect.Top;
    const int32_t mid = (rect.Bottom + rect.Top) / 2;
    const char* name = record.Part->DisplayName.c_str();
    // A rough width of the name: half the font height per byte.
    const int64_t nameWidth = static_cast<int64_t>(std::strlen(name)) * fh / 2;
    const std::string count = FormatText("%d", record.Pieces);
    const Rgb text = palette_.LabelText;
    if (ht > TruncToPixel(fh * 2.5) && w > nameWidth) {
        canvas.DrawLabel(LabelMode::Centred, FormatText("%s", name), fontSlot, IntPoint{},
                         IntRect{rect.Left, mid - fh - fh / 4, rect.Right, rect.Bottom}, text);
        canvas.DrawLabel(LabelMode::Centred, count, fontSlot, IntPoint{},
                         IntRect{rect.Left, mid + fh / 4, rect.Right, rect.Bottom}, text);
        return;
    }
    int32_t yt = (rect.Top + fh / 4 + rect.Bottom) / 2 - fh / 2;
    if (yt + fh > rect.Bottom) {
        const int32_t e = (rect.Bottom - rect.Top - fh) / 2;
        yt = e < 0 ? rect.Top : rect.Top - e;
    }
    canvas.DrawLabel(LabelMode::Centred, count, fontSlot, IntPoint{},
                     IntRect{rect.Left, yt, rect.Right, rect.Bottom}, text);
}

void PalletDrawing::DrawOffsetLines(Canvas& canvas) {
    const PalletInfo* pallet = FindViewPallet();
    if (pallet == nullptr)
        return;
    ViewPallet = *pallet;
    if (!ViewReady())
        return;
    const PalletInfo& p = ViewPallet;
    const std::array<OffsetLine, 4> lines = OffsetLinesOf(p);
    for (const Slot& slot : ShownSlots()) {
        auto line = [&](double x1, double y1, double x2, double y2) {
            const IntPoint a = WorldToScreen(x1, y1);
            const IntPoint b = WorldToScreen(x2, y2);
            const int32_t dx = OriginDX + slot.Offset.X;
            const int32_t dy = OriginDY + slot.Offset.Y;
            canvas.DrawLinePrim({a.X + dx, a.Y + dy}, {b.X + dx, b.Y + dy}, palette_.OffsetLine,
                                PenStyle::Solid, colour::kOffsetLineWidth);
        };
        // Drawn in this order: lower, upper, right, left.
        for (const OffsetSide side :
             {OffsetSide::Lower, OffsetSide::Upper, OffsetSide::Right, OffsetSide::Left}) {
            const OffsetLine& l = lines[static_cast<size_t>(side)];
            if (!l.Drawn())
                continue;
            if (l.Horizontal())
                line(0, l.Position, p.LengthX, l.Position);
            else
                line(l.Position, 0, l.Position, p.LengthY);
        }
    }
    // A stack across a line is framed in the line's colour, so that the operator sees which.
    for (const OffsetCrossing& c : OffsetCrossings(app_)) {
        const std::optional<IntRect> r = ScreenRect(*c.Stack);
        if (!r)
            continue;
        const IntPoint corners[4] = {
            {r->Left, r->Top}, {r->Right, r->Top}, {r->Right, r->Bottom}, {r->Left, r->Bottom}};
        for (int i = 0; i < 4; ++i) {
            canvas.DrawLinePrim(corners[i], corners[(i + 1) % 4], palette_.OffsetLine,
                                PenStyle::Solid, colour::kOffsetLineWidth);
        }
    }
}

}  // namespace kesto
