#include "view/PalletDrawing.h"

#include <algorithm>
#include <cmath>

#include "support/TextFormat.h"
#include "view/Colours.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";
constexpr double kMarginShare = 0.04;
constexpr double kCaptionShare = 0.04;  // of the area's height, the caption strip
constexpr double kTallestArea = 1e6;    // pixels

bool IsKnownMode(PalletView mode) {
    return mode == PalletView::Flat || mode == PalletView::Danmen ||
           mode == PalletView::FourPallet || mode == PalletView::TwoPallet;
}

// The next pallet number of a slot row: one up, back to 1 past the last pallet.
int32_t NextPallet(int32_t number, int32_t count) {
    const int32_t next = number + 1;
    return next > count ? 1 : next;
}

IntRect Shifted(const IntRect& r, int32_t dx, int32_t dy) {
    return IntRect{r.Left + dx, r.Top + dy, r.Right + dx, r.Bottom + dy};
}

// Pallet frames and cross-section bands are filled and outlined in the pallet colours.
void FillFrame(const PalletDrawing& d, Canvas& canvas, const IntRect& rect) {
    canvas.FillRectangle(rect, d.Colours().PalletFrame, d.Colours().PalletFramePen);
}

// What a set-up that stops early leaves: no pallet, no frames, no scale (so nothing but the
// background is drawn until the next set-up succeeds).
void ClearView(PalletDrawing& d) {
    d.ViewPallet.No = -1;
    d.PalletRect.fill(IntRect{kNoSlot, kNoSlot, kNoSlot, kNoSlot});
    d.Scale = 0;
    d.HalfW = d.HalfH = 0;
    d.SectionBase = d.SectionTop = 0;
    d.SectionScale = 0;
    d.PlanZone = {};
    d.WholeScale = 0;
}

// The plan's share of the area in FLAT and DANMEN, as CentredFrame centres the frame in it.
IntRect PlanZoneOf(PalletView mode, int32_t cw, int32_t ch, int32_t cap) {
    const int32_t bottom = mode == PalletView::Danmen ? (ch - cap) / 2 + cap : ch;
    return IntRect{0, cap, cw, bottom};
}

void SetWorldWindow(PalletDrawing& d, PalletView mode, double w, double l) {
    const double mx = kMarginShare * w;
    const double my = kMarginShare * l;
    if (mode == PalletView::Flat) {
        d.XMin = -mx, d.XMax = w + mx, d.YMin = -my, d.YMax = l + my;
    } else if (mode == PalletView::Danmen) {
        d.XMin = -mx, d.XMax = w + mx, d.YMin = -2 * my, d.YMax = 2 * l + 2 * my;
    } else {
        d.XMin = -2 * mx, d.XMax = 2 * w + 2 * mx, d.YMin = -2 * my, d.YMax = 2 * l + 2 * my;
    }
}

// The first slot's frame centred in its share of the area; sets the quadrant offsets.
IntRect CentredFrame(PalletDrawing& d, PalletView mode, int32_t cw, int32_t ch, int32_t pw,
                     int32_t ph) {
    const int32_t cap = d.CaptionHeight;
    int32_t top = 0;
    int32_t left = 0;
    if (mode == PalletView::Flat) {
        top = (ch - cap - ph) / 2 + cap;
        left = (cw - pw) / 2;
    } else if (mode == PalletView::Danmen) {
        top = ((ch - cap) / 2 - ph) / 2 + cap;
        left = (cw - pw) / 2;
    } else {
        top = ((ch - 2 * cap) / 2 - ph) / 2 + cap;
        left = (cw / 2 - pw) / 2;
        d.HalfW = cw / 2;
        d.HalfH = ch / 2;
    }
    return IntRect{left, top, left + pw, top + ph};
}

void SetCaptionTexts(PalletDrawing& d, const CKestoApp& app, const MessageTable& messages) {
    const int32_t font = messages.GetFontText(kSection, "L-PALLET-CAP").Font;
    if (!FontDefined(app, font))
        return;
    int32_t pallet = d.Shown().Pallet();
    for (int32_t k = 1; k <= 4; ++k) {
        PalletCaption& caption = d.Captions[static_cast<size_t>(k - 1)];
        caption.FontSlot = font;
        caption.Text = app.Settings.PalletCount < k
                           ? std::string()
                           : FormatText("%s-%.2d", app.Settings.PalletPrefix.c_str(), pallet);
        pallet = NextPallet(pallet, app.Settings.PalletCount);
    }
}

void PlaceCaption(PalletDrawing& d, size_t slot, const IntRect& rect) {
    d.Captions[slot].Rect = rect;
    d.Captions[slot].Visible = true;
}

// A slot's frame exists only for a pallet of the job.
void SlotFrame(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, size_t slot,
               const IntRect& rect) {
    if (app.Settings.PalletCount < static_cast<int32_t>(slot) + 1)
        return;
    FillFrame(d, canvas, rect);
    d.PalletRect[slot] = rect;
}

void SectionBand(const PalletDrawing& d, Canvas& canvas, const IntRect& frame, int32_t ch) {
    FillFrame(d, canvas,
              IntRect{frame.Left, TruncToPixel(0.95 * ch), frame.Right, TruncToPixel(0.98 * ch)});
}

// Room between the frame and the height-limit line: a fifth of the gap, at least a label.
int32_t LabelGap(const PalletDrawing& d, const CKestoApp& app, int32_t font) {
    const int32_t share = TruncToPixel(0.2 * (d.SectionTop - d.SectionBase));
    return std::max(share, FontPixelHeight(app, font));
}

struct AreaSize {
    int32_t Width = 0;
    int32_t Height = 0;
    int32_t Caption = 0;
};

void LayOutFlat(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, const AreaSize& a,
                const IntRect& frame) {
    SlotFrame(d, canvas, app, 0, frame);
    PlaceCaption(d, 0, IntRect{0, 0, a.Width, a.Caption});
}

void LayOutDanmen(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, const AreaSize& a,
                  const IntRect& frame) {
    SlotFrame(d, canvas, app, 0, frame);
    // A zoomed plan runs past its share; the section starts below the share then.
    d.SectionBase = d.Zoomed() ? std::min(frame.Bottom, d.PlanZone.Bottom) : frame.Bottom;
    d.ClipToPlan(canvas, false);
    SectionBand(d, canvas, frame, a.Height);
    d.ClipToPlan(canvas, true);
    d.SectionTop = TruncToPixel(0.95 * a.Height);
    PlaceCaption(d, 0, IntRect{0, 0, a.Width, a.Caption});
}

void LayOutFourPallet(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, const AreaSize& a,
                      const IntRect& frame) {
    const int32_t midX = a.Width / 2;
    const int32_t midY = a.Height / 2;
    const auto width = colour::kSeparatorWidth;
    const Rgb separator = d.Colours().Separator;
    canvas.DrawLinePrim({midX, a.Caption}, {midX, midY}, separator, PenStyle::Solid, width);
    canvas.DrawLinePrim({midX, midY + a.Caption}, {midX, a.Height}, separator, PenStyle::Solid,
                        width);
    // Captions of slots 1, 3, 4, 2 in the order the frame travels round the quadrants.
    PlaceCaption(d, 0, IntRect{0, 0, midX, a.Caption});
    SlotFrame(d, canvas, app, 0, frame);
    PlaceCaption(d, 2, IntRect{0, midY, midX, midY + a.Caption});
    SlotFrame(d, canvas, app, 2, Shifted(frame, 0, d.HalfH));
    PlaceCaption(d, 3, IntRect{midX, midY, midX + midX, midY + a.Caption});
    SlotFrame(d, canvas, app, 3, Shifted(frame, d.HalfW, d.HalfH));
    PlaceCaption(d, 1, IntRect{midX, 0, midX + midX, a.Caption});
    SlotFrame(d, canvas, app, 1, Shifted(frame, d.HalfW, 0));
}

void LayOutTwoPallet(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, const AreaSize& a,
                     const IntRect& frame) {
    const int32_t midX = a.Width / 2;
    canvas.DrawLinePrim({midX, a.Caption}, {midX, a.Height}, d.Colours().Separator, PenStyle::Solid,
                        colour::kSeparatorWidth);
    SlotFrame(d, canvas, app, 0, frame);
    d.SectionBase = frame.Bottom;
    PlaceCaption(d, 0, IntRect{0, 0, midX, a.Caption});
    const IntRect second = Shifted(frame, d.HalfW, 0);
    SlotFrame(d, canvas, app, 1, second);
    PlaceCaption(d, 1, IntRect{midX, 0, midX + midX, a.Caption});
    if (app.Settings.PalletCount >= 2)
        SectionBand(d, canvas, second, a.Height);
    if (app.Settings.PalletCount >= 1)
        SectionBand(d, canvas, frame, a.Height);
    d.SectionTop = TruncToPixel(0.95 * a.Height);
}

// The dotted line at stacking height H over one section and its label; it also fixes the
// section's vertical scale.
void HeightLimit(PalletDrawing& d, Canvas& canvas, const CKestoApp& app, int32_t font, int32_t gap,
                 const IntRect& frame) {
    const int32_t y = d.SectionBase + gap;
    const Rgb limitColour = d.Colours().HeightLimit;
    canvas.DrawLinePrim({frame.Left, y}, {frame.Right, y}, limitColour, PenStyle::Dotted, 0);
    const double limit = d.ViewPallet.MaxStackHeight;
    const int32_t span = d.SectionTop - y;
    // A line on the band itself leaves no height to scale; no bars are drawn then.
    d.SectionScale = span == 0 ? 0 : limit / span;
    if (!FontDefined(app, font))
        return;
    canvas.DrawLabel(LabelMode::AtPoint, FormatText("%.4lf", limit), font,
                     IntPoint{frame.Left, y - FontPixelHeight(app, font)}, IntRect{}, limitColour);
}

}  // namespace

int32_t FlatAreaHeight(const PalletInfo& pallet, int32_t width) {
    const double w = (1 + 2 * kMarginShare) * pallet.LengthX;
    const double l = (1 + 2 * kMarginShare) * pallet.LengthY;
    if (!(w > 0) || !(l > 0) || width <= 0)
        return 0;
    // Below the caption strip the world window's height at the width's scale; an absurd
    // pallet (a line, NaN) gets none.
    const double below = std::ceil(l * width / w);
    if (!(below < kTallestArea))
        return 0;
    auto height = static_cast<int32_t>(below / (1 - kCaptionShare));
    while (height - static_cast<int32_t>(kCaptionShare * height) < below)
        ++height;
    return height;
}

PalletDrawing::PalletDrawing(const CKestoApp& app, const ViewState& shown,
                             const MessageTable& messages, const colour::Palette& palette)
    : app_(app), shown_(shown), messages_(messages), palette_(palette) {}

void PalletDrawing::Refresh(Canvas& canvas) {
    ClearArea(canvas);
    SetUpView(canvas);
    DrawParts(canvas, DrawMode::All);
}

void PalletDrawing::ClearArea(Canvas& canvas) {
    const IntRect& area = area_;
    const int32_t clientHeight = area.Bottom - area.Top;
    CaptionHeight = static_cast<int32_t>(kCaptionShare * clientHeight);
    for (PalletCaption& caption : Captions)
        caption.Visible = false;
    const Rgb back = palette_.AreaBackground;
    if (shown_.Mode() == PalletView::FourPallet) {
        const int32_t half = clientHeight / 2;
        canvas.FillRectangle({area.Left, area.Top + CaptionHeight, area.Right, half}, back, back);
        canvas.FillRectangle({area.Left, half + CaptionHeight, area.Right, area.Bottom}, back,
                             back);
    } else {
        canvas.FillRectangle({area.Left, area.Top + CaptionHeight, area.Right, area.Bottom}, back,
                             back);
    }
}

void PalletDrawing::SetUpView(Canvas& canvas) {
    ClearView(*this);
    zoomed_ = false;
    const PalletView mode = shown_.Mode();
    const PalletInfo* pallet = FindViewPallet();
    if (pallet == nullptr || !IsKnownMode(mode))
        return;
    ViewPallet = *pallet;
    const double w = ViewPallet.LengthX;
    const double l = ViewPallet.LengthY;
    SetWorldWindow(*this, mode, w, l);
    ComputeScale();
    if (!ViewReady())
        return;
    const IntPoint a = WorldToScreen(0, 0);
    const IntPoint b = WorldToScreen(w, l);
    const AreaSize area{area_.Right - area_.Left, area_.Bottom - area_.Top, CaptionHeight};
    IntRect frame = CentredFrame(*this, mode, area.Width, area.Height, b.X - a.X, a.Y - b.Y);
    SetCaptionTexts(*this, app_, messages_);
    OriginDX = frame.Left - a.X;
    OriginDY = frame.Top - b.Y;
    if (shown_.Zoomable()) {
        PlanZone = PlanZoneOf(mode, area.Width, area.Height, CaptionHeight);
        const double mx = kMarginShare * w;
        const double my = kMarginShare * l;
        WholeWindow = WorldWindow{-mx, w + mx, -my, l + my};
        WholeScale = Scale;
        if (shown_.Zoom())
            frame = ZoomInto(*shown_.Zoom());
    }
    ClipToPlan(canvas, true);
    if (mode == PalletView::Flat)
        LayOutFlat(*this, canvas, app_, area, frame);
    else if (mode == PalletView::Danmen)
        LayOutDanmen(*this, canvas, app_, area, frame);
    else if (mode == PalletView::FourPallet)
        LayOutFourPallet(*this, canvas, app_, area, frame);
    else
        LayOutTwoPallet(*this, canvas, app_, area, frame);
    DrawBlocks(canvas);
    ClipToPlan(canvas, false);
    const int32_t font = LabelFontSlot();
    if (mode == PalletView::Danmen) {
        HeightLimit(*this, canvas, app_, font, LabelGap(*this, app_, font), frame);
    } else if (mode == PalletView::TwoPallet) {
        const int32_t gap = LabelGap(*this, app_, font);
        if (app_.Settings.PalletCount >= 1)
            HeightLimit(*this, canvas, app_, font, gap, frame);
        if (app_.Settings.PalletCount >= 2)
            HeightLimit(*this, canvas, app_, font, gap, Shifted(frame, HalfW, 0));
    }
}

IntRect PalletDrawing::ZoomInto(const WorldWindow& window) {
    XMin = window.XMin, XMax = window.XMax, YMin = window.YMin, YMax = window.YMax;
    const int32_t zoneWidth = PlanZone.Right - PlanZone.Left;
    const int32_t zoneHeight = PlanZone.Bottom - PlanZone.Top;
    if (zoneWidth <= 0 || zoneHeight <= 0)
        return {};
    Scale = std::max((XMax - XMin) / zoneWidth, (YMax - YMin) / zoneHeight);
    zoomed_ = true;
    OriginDX = PlanZone.Left + TruncToPixel((zoneWidth - (XMax - XMin) / Scale) / 2);
    OriginDY = PlanZone.Top + TruncToPixel((zoneHeight - (YMax - YMin) / Scale) / 2);
    const IntPoint a = WorldToScreen(0, 0);
    const IntPoint b = WorldToScreen(ViewPallet.LengthX, ViewPallet.LengthY);
    return IntRect{a.X + OriginDX, b.Y + OriginDY, b.X + OriginDX, a.Y + OriginDY};
}

std::pair<double, double> PalletDrawing::ScreenToWorld(int32_t x, int32_t y) const {
    return {XMin + (x - OriginDX) * Scale, YMax - (y - OriginDY) * Scale};
}

void PalletDrawing::ClipToPlan(Canvas& canvas, bool on) const {
    if (zoomed_)
        canvas.SetClip(on ? std::optional(PlanZone) : std::nullopt);
}

const PalletInfo* PalletDrawing::FindViewPallet() {
    // A position beyond the list finds no process and so no pallet.
    const KouteiInfo* process = app_.KouteiAt(shown_.Koutei());
    if (process == nullptr)
        return nullptr;
    return app_.PalletByName(process->PalletName);
}

int32_t PalletDrawing::LabelFontSlot() const {
    return messages_.GetFontText(kSection, "DRAW-STRING").Font;
}

bool PalletDrawing::ViewReady() const {
    return std::isfinite(Scale) && Scale > 0;
}

void PalletDrawing::ComputeScale() {
    const IntRect& area = area_;
    const int32_t width = area.Right - area.Left;
    int32_t height = area.Bottom - area.Top - CaptionHeight;
    if (shown_.Mode() == PalletView::FourPallet)
        height -= CaptionHeight;
    // An area with no room left has no scale; the set-up then draws nothing past the
    // background rather than divide by zero.
    if (width <= 0 || height <= 0) {
        Scale = 0;
        return;
    }
    const double sx = (XMax - XMin) / width;
    const double sy = (YMax - YMin) / height;
    Scale = sy < sx ? sx : sy;
}

IntPoint PalletDrawing::WorldToScreen(double x, double y) const {
    return IntPoint{TruncToPixel((x - XMin) / Scale), TruncToPixel((YMax - y) / Scale)};
}

std::vector<PalletDrawing::Slot> PalletDrawing::ShownSlots() const {
    int32_t slots = 1;
    if (shown_.Mode() == PalletView::FourPallet)
        slots = 4;
    else if (shown_.Mode() == PalletView::TwoPallet)
        slots = 2;
    slots = std::min(slots, app_.Settings.PalletCount);
    const std::array<IntPoint, 4> offsets{IntPoint{0, 0}, IntPoint{HalfW, 0}, IntPoint{0, HalfH},
                                          IntPoint{HalfW, HalfH}};
    std::vector<Slot> shown;
    int32_t pallet = shown_.Pallet();
    for (int32_t s = 0; s < slots; ++s) {
        shown.push_back(Slot{s, pallet, offsets[static_cast<size_t>(s)]});
        pallet = NextPallet(pallet, app_.Settings.PalletCount);
    }
    return shown;
}

std::array<int32_t, 4> PalletDrawing::PalletsInView() const {
    std::array<int32_t, 4> p{-1, -1, -1, -1};
    const int32_t count = app_.Settings.PalletCount;
    switch (shown_.Mode()) {
        case PalletView::Flat:
        case PalletView::Danmen:
            p[0] = shown_.Pallet();
            break;
        case PalletView::TwoPallet:
            p[0] = shown_.Pallet();
            p[1] = count < 2 ? -1 : NextPallet(p[0], count);
            break;
        case PalletView::FourPallet:
            p[0] = shown_.Pallet();
            p[1] = p[0] + 1;
            if (count >= 4) {
                if (p[1] > count)
                    p[1] = 1;
                p[2] = p[1] + 1;
                if (p[2] > count)
                    p[2] = 1;
                p[3] = p[2] + 1;
                // Tested on p3, which is already wrapped: the fourth slot can name the pallet
                // past the last one, and then shows none of its parts. Kept as operators know it.
                if (p[2] > count)
                    p[3] = 1;
            } else {
                p[2] = p[1] + 1;
                p[3] = p[2] + 1;
                for (size_t i = 1; i < p.size(); ++i) {
                    if (p[i] > count)
                        p[i] = -1;
                }
            }
            break;
        default:
            break;
    }
    return p;
}

std::optional<IntRect> PalletDrawing::ScreenRect(const HaichiInfo& record) const {
    if (!ViewReady() || record.Part == nullptr)
        return std::nullopt;
    const BlockInfo* stands = app_.BlockOf(record);
    if (stands == nullptr)
        return std::nullopt;
    const BlockInfo& block = *stands;
    if (block.KouteiNo != shown_.Koutei() || block.PalletNo == -1)
        return std::nullopt;
    const std::array<int32_t, 4> p = PalletsInView();
    const int32_t no = block.PalletNo;
    if (no != p[0] && no != p[1] && no != p[2] && no != p[3])
        return std::nullopt;
    const PartsInfo& part = *record.Part;
    const IntPoint a = WorldToScreen(record.X - part.SizeX, record.Y);
    const IntPoint b = WorldToScreen(record.X, record.Y + part.SizeY);
    IntRect r{a.X + OriginDX, b.Y + OriginDY, b.X + OriginDX, a.Y + OriginDY};
    const int32_t dx = (no == p[1] || no == p[3]) ? HalfW : 0;
    const int32_t dy = (no == p[2] || no == p[3]) ? HalfH : 0;
    return Shifted(r, dx, dy);
}

}  // namespace kesto
