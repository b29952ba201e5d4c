#include "view/ZoomWindow.h"

#include <algorithm>
#include <cmath>

#include "view/PalletDrawing.h"

namespace kesto {

namespace {

// A scale this close to the whole pallet's is the whole pallet: as many steps out as in come
// back to it, though each window was rounded to thousandths of a millimetre.
constexpr double kWholeTolerance = 1e-3;

// [low, high] moved as little as it takes into [wholeLow, wholeHigh]; centred on it when
// wider.
void KeepWithin(double& low, double& high, double wholeLow, double wholeHigh) {
    const double span = high - low;
    if (span >= wholeHigh - wholeLow) {
        low = (wholeLow + wholeHigh) / 2 - span / 2;
    } else if (low < wholeLow) {
        low = wholeLow;
    } else if (high > wholeHigh) {
        low = wholeHigh - span;
    }
    high = low + span;
}

int32_t ToPixel(double value) {
    return TruncToPixel(std::floor(value));
}

}  // namespace

Projection ProjectionOf(const PalletDrawing& drawing) {
    return Projection{drawing.XMin, drawing.YMax, drawing.Scale, drawing.OriginDX,
                      drawing.OriginDY};
}

IntRect Reprojected(const IntRect& rect, const Projection& from, const Projection& to) {
    if (!(from.Scale > 0) || !(to.Scale > 0))
        return rect;
    const auto x = [&](int32_t px) {
        const double world = from.XMin + (px - from.OriginDX) * from.Scale;
        return ToPixel((world - to.XMin) / to.Scale) + to.OriginDX;
    };
    const auto y = [&](int32_t py) {
        const double world = from.YMax - (py - from.OriginDY) * from.Scale;
        return ToPixel((to.YMax - world) / to.Scale) + to.OriginDY;
    };
    return IntRect{x(rect.Left), y(rect.Top), x(rect.Right), y(rect.Bottom)};
}

std::optional<WorldWindow> WindowAround(const PalletDrawing& drawing, double x, double y,
                                        IntPoint at, double scale) {
    const IntRect& zone = drawing.PlanZone;
    const int32_t width = zone.Right - zone.Left;
    const int32_t height = zone.Bottom - zone.Top;
    const double whole = drawing.WholeScale;
    if (width <= 0 || height <= 0 || !(whole > 0) || !std::isfinite(scale))
        return std::nullopt;
    const double s = std::max(scale, kClosestScale);
    if (!(s < whole * (1 - kWholeTolerance)))
        return std::nullopt;
    WorldWindow w;
    w.XMin = x - (at.X - zone.Left) * s;
    w.XMax = w.XMin + width * s;
    w.YMax = y + (at.Y - zone.Top) * s;
    w.YMin = w.YMax - height * s;
    const WorldWindow& all = drawing.WholeWindow;
    KeepWithin(w.XMin, w.XMax, all.XMin, all.XMax);
    KeepWithin(w.YMin, w.YMax, all.YMin, all.YMax);
    return w;
}

std::optional<OverviewMap> Overview(const PalletDrawing& drawing) {
    const std::optional<WorldWindow>& zoom = drawing.Shown().Zoom();
    if (!drawing.Zoomed() || !zoom)
        return std::nullopt;
    const IntRect& zone = drawing.PlanZone;
    const WorldWindow& all = drawing.WholeWindow;
    const double allWidth = all.XMax - all.XMin;
    const double allHeight = all.YMax - all.YMin;
    const int32_t width = std::min(kOverviewWidth, (zone.Right - zone.Left) / kOverviewShare);
    const int32_t height = TruncToPixel(width * allHeight / allWidth);
    if (width <= 2 || height <= 2 || height > zone.Bottom - zone.Top - 2 * kOverviewMargin)
        return std::nullopt;
    const IntRect box{zone.Right - kOverviewMargin - width, zone.Bottom - kOverviewMargin - height,
                      zone.Right - kOverviewMargin, zone.Bottom - kOverviewMargin};
    const double s = allWidth / width;
    const auto x = [&](double mm) {
        return std::clamp(box.Left + ToPixel((mm - all.XMin) / s), box.Left, box.Right);
    };
    const auto y = [&](double mm) {
        return std::clamp(box.Top + ToPixel((all.YMax - mm) / s), box.Top, box.Bottom);
    };
    const PalletInfo& pallet = drawing.ViewPallet;
    return OverviewMap{box, IntRect{x(0), y(pallet.LengthY), x(pallet.LengthX), y(0)},
                       IntRect{x(zoom->XMin), y(zoom->YMax), x(zoom->XMax), y(zoom->YMin)}};
}

}  // namespace kesto
