#include "view/PartPanels.h"

#include <algorithm>
#include <cmath>

#include "support/TextFormat.h"
#include "view/Colours.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";

void ClearPanel(Canvas& canvas, const IntRect& rect) {
    canvas.FillRectangle(rect, colour::kPanelBackground, colour::kPanelBackground);
}

}  // namespace

PartsInfoPanel::PartsInfoPanel(const CKestoApp& app, const ViewState& view,
                               const MessageTable& messages)
    : app_(app), shown_(view), messages_(messages) {}

std::array<std::string, 3> PartsInfoPanel::Lines(const PartsInfo& part) const {
    const std::string u1 = messages_.GetFontText(kSection, "INFO1-STRING").Text;
    const std::string u2 = messages_.GetFontText(kSection, "INFO2-STRING").Text;
    // Found by number, not position; a part of no known process shows an empty name.
    const KouteiInfo* process = app_.KouteiByNo(shown_.Koutei());
    const std::string processName = process != nullptr ? process->Name : std::string();
    std::array<std::string, 3> lines;
    lines[0] = FormatText("%-20s %-2s %-32s %ld%s", processName.c_str(), part.DirText.c_str(),
                          part.DisplayName.c_str(), static_cast<long>(part.Quantity), u1.c_str());
    lines[1] = FormatText("%s %8.3lf %s - %8.3lf x %-8.3lf", part.MaterialName.c_str(),
                          part.Thickness, part.SheetText.c_str(), part.SizeX, part.SizeY);
    lines[2] = part.PerStackLimit < 1
                   ? FormatText("%s - %s", u2.c_str(), u1.c_str())
                   : FormatText("%s %ld %s", u2.c_str(), static_cast<long>(part.PerStackLimit),
                                u1.c_str());
    return lines;
}

void PartsInfoPanel::Refresh(Canvas& canvas, const PartsInfo* part, const std::string& why) const {
    const IntRect& r = client_;
    ClearPanel(canvas, r);
    if (part == nullptr)
        return;
    const int32_t font = messages_.GetFontText(kSection, "INFO-STRING").Font;
    if (!FontDefined(app_, font))
        return;
    const int32_t fh = FontPixelHeight(app_, font);
    const int32_t height = r.Bottom - r.Top;
    const int32_t dx = (r.Right - r.Left) / 20;
    // A reason takes a fourth line: the four share the height with five equal gaps.
    const int32_t dy = why.empty() ? height / 10 : std::max(0, (height - 4 * fh) / 5);
    const std::array<std::string, 3> lines = Lines(*part);
    for (int32_t i = 0; i < 3; ++i) {
        canvas.DrawLabel(LabelMode::AtPoint, lines[static_cast<size_t>(i)], font,
                         IntPoint{r.Left + dx, r.Top + (i + 1) * dy + i * fh}, IntRect{},
                         colour::kPanelText);
    }
    if (!why.empty()) {
        canvas.DrawLabel(LabelMode::AtPoint, why, font,
                         IntPoint{r.Left + dx, r.Top + 4 * dy + 3 * fh}, IntRect{},
                         colour::kPanelShort);
    }
}

PartsViewPanel::PartsViewPanel(const CKestoApp& app, const MessageTable& messages)
    : app_(app), messages_(messages) {}

void PartsViewPanel::ShowSize(Canvas& canvas, double w, double l) {
    const IntRect& client = client_;
    const int32_t width = client.Right - client.Left;
    const int32_t height = client.Bottom - client.Top;
    ClientWidth = width;
    if (w < 0 || l < 0) {
        ClearPanel(canvas, client);
        return;
    }
    Shown = 1;
    ShownW = w;
    ShownL = l;
    // A zero side gives no rectangle to scale (and both at zero a zero scale), so the panel
    // is only cleared rather than divided by zero.
    if (w == 0 || l == 0) {
        ClearPanel(canvas, client);
        return;
    }
    XMin = -0.1 * w, XMax = w + 0.1 * w;
    YMin = -0.1 * l, YMax = l + 0.1 * l;
    // A panel no higher than its caption has no room: like too little free space, nothing.
    if (width <= 0 || height - kViewCaptionHeight <= 0)
        return;
    const double sx = (XMax - XMin) / width;
    const double sy = (YMax - YMin) / (height - kViewCaptionHeight);
    Scale = sy < sx ? sx : sy;
    auto project = [&](double x, double y) {
        return IntPoint{TruncToPixel((x - XMin) / Scale), TruncToPixel((YMax - y) / Scale)};
    };
    const IntPoint a = project(0, 0);
    const IntPoint b = project(w, l);
    const int32_t pw = b.X - a.X;
    const int32_t ph = a.Y - b.Y;
    const int32_t fw = width - pw;
    const int32_t fh = height - ph;
    if (fw < 1 || fh < 1)
        return;
    const int32_t top = (fh / 3) * 2;
    const int32_t left = fw / 2;
    ClearPanel(canvas, client);
    canvas.FillRectangle(IntRect{left, top, left + pw, top + ph}, colour::kPanelPart,
                         colour::kPanelPartPen);
    const int32_t font = messages_.GetFontText(kSection, "VIEW-STRING").Font;
    if (FontDefined(app_, font))
        canvas.DrawLabel(LabelMode::Centred, FormatText("%8.3lf x %8.3lf", w, l), font, IntPoint{},
                         IntRect{0, 0, width, kViewCaptionHeight}, colour::kPanelText);
}

void PartsViewPanel::Repaint(Canvas& canvas) {
    if (Shown == 1)
        ShowSize(canvas, ShownW, ShownL);
    else
        ClearPanel(canvas, client_);
}

}  // namespace kesto
