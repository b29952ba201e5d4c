#include <algorithm>

#include "view/PalletDrawing.h"

namespace kesto {

namespace {

// The least side of a circle's box, so that a tiny hole stays visible.
constexpr int32_t kLeastCircle = 2;

IntRect Normalised(IntPoint a, IntPoint b) {
    return IntRect{std::min(a.X, b.X), std::min(a.Y, b.Y), std::max(a.X, b.X), std::max(a.Y, b.Y)};
}

IntRect CircleBox(IntPoint topLeft, IntPoint bottomRight) {
    IntRect box{topLeft.X, topLeft.Y, bottomRight.X, bottomRight.Y};
    if (box.Right - box.Left < kLeastCircle)
        box.Right = box.Left + kLeastCircle;
    if (box.Bottom - box.Top < kLeastCircle)
        box.Bottom = box.Top + kLeastCircle;
    const int32_t w = box.Right - box.Left;
    const int32_t h = box.Bottom - box.Top;
    if (w < h)
        box.Right = box.Left + h;
    else if (h < w)
        box.Bottom = box.Top + w;
    return box;
}

}  // namespace

void PalletDrawing::DrawOutline(Canvas& canvas, const IntRect& rect, const HaichiInfo& record,
                                std::optional<Rgb> colour) const {
    if (record.Part == nullptr)
        return;
    const PartsInfo& part = *record.Part;
    const double ox = record.X - part.SizeX;
    const double oy = record.Y;
    const IntPoint base = WorldToScreen(ox, oy);
    // Element points are relative to the part's origin; placed relative to rect so that the
    // outline follows the rectangle wherever it was moved (3D layers, drag image).
    auto at = [&](double px, double py) {
        const IntPoint t = WorldToScreen(px + ox, py + oy);
        return IntPoint{rect.Left + t.X - base.X, rect.Bottom + t.Y - base.Y};
    };
    for (const ShapeElement& e : part.Shapes) {
        const Rgb pen = colour ? *colour : RgbOf(e.Color);
        const auto& p = e.Params;
        auto line = [&](IntPoint a, IntPoint b) {
            canvas.DrawLinePrim(a, b, pen, PenStyle::Solid, 1);
        };
        switch (e.Kind) {
            case kShapeLine:
                line(at(p[0], p[1]), at(p[2], p[3]));
                break;
            case kShapeCcwArc:
                canvas.DrawArcPrim(Normalised(at(p[7], p[8]), at(p[9], p[10])), at(p[0], p[1]),
                                   at(p[2], p[3]), pen, pen);
                break;
            case kShapeCircle: {
                const double r = p[2];
                const IntRect box = CircleBox(at(p[0] - r, p[1] + r), at(p[0] + r, p[1] - r));
                const IntPoint start{(box.Left + box.Right) / 2, box.Bottom};
                canvas.DrawArcPrim(box, start, start, pen, pen);
                break;
            }
            case kShapeNoAngRect: {
                const IntPoint a = at(p[0], p[3]), b = at(p[0], p[1]), c = at(p[2], p[1]),
                               d = at(p[2], p[3]);
                line(a, b), line(b, c), line(c, d), line(d, a);
                break;
            }
            case kShapeAngRect: {
                const IntPoint a = at(p[0], p[1]), b = at(p[6], p[7]), c = at(p[4], p[5]),
                               d = at(p[2], p[3]);
                line(a, b), line(b, c), line(c, d), line(d, a);
                break;
            }
            default:
                // Pixels and the unscaled kinds have no drawing in the plan.
                break;
        }
    }
}

}  // namespace kesto
