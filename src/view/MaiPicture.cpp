#include "view/MaiPicture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "support/TextFile.h"
#include "support/TextFormat.h"
#include "view/Colours.h"

namespace kesto {

namespace {

constexpr int32_t kGap = 5;
constexpr int32_t kLineWidth = 2;

// The part of a record that has one, else a part with nothing set.
const PartsInfo& PartOf(const HaichiInfo* picked) {
    static const PartsInfo kNoPart{};
    return picked != nullptr && picked->Part != nullptr ? *picked->Part : kNoPart;
}

void Line(Canvas& canvas, int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb colour) {
    canvas.DrawLinePrim(IntPoint{x0, y0}, IntPoint{x1, y1}, colour, PenStyle::Solid, kLineWidth);
}

// A box of height bh below top in the column from left to right.
IntRect Slot(int32_t left, int32_t right, int32_t top, int32_t bh) {
    return IntRect{left, top, right, top + bh};
}

}  // namespace

MaiLayout LayOutMaiDlg(const IntRect& client, int32_t nameFontHeight) {
    const int32_t u = (client.Right - client.Left - 20) / 10;
    const int32_t bh = ((client.Bottom - client.Top - 50) / 15) * 2;
    const int32_t pictureRight = 7 * u + 5;
    MaiLayout l;
    l.NameEdit = IntRect{5, 5, pictureRight, 5 + nameFontHeight + 5};
    l.Picture = IntRect{5, 7, pictureRight, client.Bottom - 5};
    const int32_t bw = (client.Right - pictureRight - 15) / 2;
    const int32_t okRight = client.Right - 5;
    l.Ok = Slot(okRight - bw, okRight, 5, bh);
    l.Cancel = Slot(okRight - bw, okRight, l.Ok.Bottom + kGap, bh);
    const int32_t columnRight = l.Ok.Left - kGap;
    int32_t top = 5;
    for (IntRect& button : l.Buttons) {
        button = Slot(columnRight - bw, columnRight, top, bh);
        top = button.Bottom + kGap;
    }
    l.Group = Slot(columnRight - bw, columnRight, top, bh);
    l.CountEdit =
        IntRect{l.Group.Left + 4, l.Group.Top + 20, l.Group.Right - 4, l.Group.Bottom - 4};
    return l;
}

MaiText ReadMaiText(const MessageTable& messages, const char* key, int32_t field) {
    FieldList fields;
    SplitLine(messages.Get(kMaiSection, key), fields);
    return MaiText{AtoL(fields[0]), fields[field]};
}

int32_t MaiNameFontHeight(const CKestoApp& app, const MessageTable& messages) {
    return FontPixelHeight(app, ReadMaiText(messages, "PartsName", kMaiSecondField).Font);
}

// The picture's units: uy and ux, the floor at y0, the stack between xa and xb.
struct MaiPicture::Axes {
    int32_t Uy = 0;
    int32_t Ux = 0;
    double Scale = 0;
    int32_t Y0 = 0;
    int32_t X1 = 0;
    int32_t Xa = 0;
    int32_t Xb = 0;
    int32_t LineEnd = 0;  // right end of the floor and the limit line

    // A height in pixels; without a usable scale (no limit, no room) every height is 0.
    int32_t Pixels(double length) const {
        if (Scale == 0 || !std::isfinite(Scale))
            return 0;
        return TruncToPixel(length / Scale);
    }
};

MaiPicture::MaiPicture(const CKestoApp& app, const MessageTable& messages, MaiTextWidth textWidth)
    : app_(app), messages_(messages), textWidth_(std::move(textWidth)) {}

double MaiPicture::HeightScale(const IntRect& picture, double heightLimit) {
    const int32_t uy = (picture.Bottom - picture.Top) / 20;
    return uy == 0 ? 0.0 : heightLimit / (15.0 * uy);
}

void MaiPicture::Draw(Canvas& canvas, const IntRect& p, const MaiScene& scene) const {
    DrawFrame(canvas, p);
    Axes a;
    a.Uy = (p.Bottom - p.Top) / 20;
    a.Ux = (p.Right - p.Left) / 10;
    a.Scale = HeightScale(p, scene.HeightLimit);
    a.Y0 = p.Bottom - 2 * a.Uy;
    a.X1 = (p.Right - p.Left) / 2 + a.Ux;
    a.Xa = a.X1 + a.Ux;
    a.Xb = a.X1 + 2 * a.Ux;
    a.LineEnd = p.Right - 3 * a.Uy;  // a vertical unit, as the operators know the picture
    DrawLimit(canvas, a, scene);
    DrawNewStack(canvas, a, scene);
    DrawCurrentStack(canvas, a, scene);
    DrawLabels(canvas, p, scene);
    // Texts may run over the right edge; the white edge is drawn again over them.
    Line(canvas, p.Right, p.Top, p.Right, p.Bottom, colour::kMaiLight);
}

void MaiPicture::DrawFrame(Canvas& canvas, const IntRect& p) const {
    canvas.FillRectangle(p, colour::kMaiBackground, colour::kMaiBackground);
    Line(canvas, p.Left, p.Top, p.Right, p.Top, colour::kMaiDark);
    Line(canvas, p.Left, p.Top, p.Left, p.Bottom, colour::kMaiDark);
    Line(canvas, p.Left, p.Bottom, p.Right, p.Bottom, colour::kMaiLight);
    Line(canvas, p.Right, p.Top, p.Right, p.Bottom, colour::kMaiLight);
}

void MaiPicture::DrawLimit(Canvas& canvas, const Axes& a, const MaiScene& scene) const {
    Line(canvas, a.X1, a.Y0, a.LineEnd, a.Y0, colour::kMaiLight);
    const int32_t hp = a.Pixels(scene.HeightLimit);
    Line(canvas, a.X1, a.Y0 - hp, a.LineEnd, a.Y0 - hp, colour::kMaiLimit);
    const int32_t font = ReadMaiText(messages_, "HightST", kMaiSecondField).Font;
    Text(canvas, FormatText("%.3lf", scene.HeightLimit), font,
         IntPoint{a.X1, a.Y0 - hp - scene.NameFontHeight - 8}, colour::kMaiLimit);
}

void MaiPicture::DrawNewStack(Canvas& canvas, const Axes& a, const MaiScene& scene) const {
    const double t = scene.Count * PartOf(scene.Picked).PieceHeight;
    const int32_t top = a.Y0 - a.Pixels(t);
    const Rgb white = colour::kMaiLight;
    Line(canvas, a.Xa, top, a.Xb, top, white);
    Line(canvas, a.Xb, top, a.Xb, a.Y0, white);
    Line(canvas, a.Xb, a.Y0, a.Xa, a.Y0, white);
    Line(canvas, a.Xa, a.Y0, a.Xa, top, white);
    Line(canvas, a.Xb + 5, top, a.Xb + 12, top, white);
    // The stack values are written in the part name's font, whose height spaces them.
    const int32_t font = ReadMaiText(messages_, "PartsName", kMaiSecondField).Font;
    const int32_t f = scene.NameFontHeight;
    const IntPoint at{a.Xb + 14, top - f / 2};
    Text(canvas, FormatText("%.3lf", t), font, at, white);
    Text(canvas, FormatText("(%ld)", static_cast<long>(scene.Count)), font,
         IntPoint{at.X, at.Y + f + 2}, white);
}

void MaiPicture::DrawCurrentStack(Canvas& canvas, const Axes& a, const MaiScene& scene) const {
    const int32_t value = scene.Picked != nullptr ? scene.Picked->Pieces : 0;
    const double t2 = value * PartOf(scene.Picked).PieceHeight;
    const int32_t top = a.Y0 - a.Pixels(t2);
    // An empty stack (or no room between the edges) fills nothing.
    const IntRect fill{a.Xa + 2, top, a.Xb - 2, a.Y0 - 2};
    if (fill.Left < fill.Right && fill.Top < fill.Bottom)
        canvas.FillRectangle(fill, colour::kMaiCurrentStack, colour::kMaiCurrentStack);
    Line(canvas, a.Xa - 5, top, a.Xa - 12, top, colour::kMaiValue);
    const int32_t font = ReadMaiText(messages_, "PartsName", kMaiSecondField).Font;
    const int32_t f = scene.NameFontHeight;
    const std::string height = FormatText("%.3lf", t2);
    const std::string count = FormatText("(%ld)", static_cast<long>(value));
    // Right of the text is estimated from its length in characters of the name font.
    const int32_t length = static_cast<int32_t>(std::min<size_t>(height.size(), 1024));
    IntPoint at{a.Xa - 19 - (length / 2) * f, top - f / 2};
    if (textWidth_) {
        // Where the estimate falls short of the font, the texts are moved left so that they
        // end before the tick, and before the limit's value when they stand at its height.
        const int32_t width = std::max(textWidth_(height, font), textWidth_(count, font));
        at.X = std::min(at.X, a.Xa - 12 - kGap - width);
        const int32_t limitFont = ReadMaiText(messages_, "HightST", kMaiSecondField).Font;
        const int32_t limitTop = a.Y0 - a.Pixels(scene.HeightLimit) - f - 8;
        const int32_t limitBottom = limitTop + FontPixelHeight(app_, limitFont);
        if (at.Y < limitBottom && at.Y + 2 * f + 2 > limitTop)
            at.X = std::min(at.X, a.X1 - kGap - width);
    }
    Text(canvas, height, font, at, colour::kMaiValue);
    Text(canvas, count, font, IntPoint{at.X, at.Y + f + 2}, colour::kMaiValue);
}

void MaiPicture::DrawLabels(Canvas& canvas, const IntRect& p, const MaiScene& scene) const {
    const PartsInfo& part = PartOf(scene.Picked);
    const int32_t m = (p.Bottom - p.Top) / 2;
    const int32_t f = scene.NameFontHeight;
    const MaiText label04 = ReadMaiText(messages_, "Label04", kMaiSecondField);
    // "Label05" is written in the font of "Label04": its own font number is never read.
    const MaiText label05{label04.Font, ReadMaiText(messages_, "Label05", kMaiSecondField).Text};
    const struct {
        MaiText Label;
        int32_t Y;
        std::string Value;
    } rows[] = {
        {ReadMaiText(messages_, "Label02", kMaiSecondField), m - 2 * f,
         FormatText(" %8.3lf", part.Thickness)},
        {ReadMaiText(messages_, "Label03", kMaiSecondField), m,
         FormatText(" %8.3lf", part.PieceHeight)},
        {label04, m + 2 * f, FormatText(" %8ld", static_cast<long>(scene.CompareCount))},
        {label05, m + 4 * f, FormatText(" %8s", part.DirText.c_str())},
    };
    for (const auto& row : rows) {
        if (!FontDefined(app_, row.Label.Font))
            continue;
        const IntPoint at{p.Left + 5, row.Y};
        Text(canvas, row.Label.Text, row.Label.Font, at, colour::kMaiLight);
        const int32_t width = textWidth_ ? textWidth_(row.Label.Text, row.Label.Font) : 0;
        Text(canvas, row.Value, row.Label.Font, IntPoint{at.X + width + 5, at.Y},
             colour::kMaiValue);
    }
}

void MaiPicture::Text(Canvas& canvas, const std::string& text, int32_t font, IntPoint at,
                      Rgb colour) const {
    if (FontDefined(app_, font))
        canvas.DrawLabel(LabelMode::AtPoint, text, font, at, IntRect{}, colour);
}

}  // namespace kesto
