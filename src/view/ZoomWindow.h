// The geometry of a zoomed FLAT or DANMEN view: the window a zoom or a pan about a point
// gives, kept within the whole pallet; the picks' pixels carried from one projection to the
// next; the small overview of where the zoomed window stands.
#pragma once

#include <cstdint>
#include <optional>

#include "app/Rect.h"
#include "app/ViewState.h"
#include "view/Canvas.h"

namespace kesto {

class PalletDrawing;

// The closest zoom: 20 pixels to 10 mm.
inline constexpr double kClosestScale = 0.5;  // millimetres per pixel
// One notch of the wheel, one + or -.
inline constexpr double kZoomStep = 1.25;
// The overview: its largest width, its share of the plan's width at most, its distance from
// the plan's corner, in pixels.
inline constexpr int32_t kOverviewWidth = 160;
inline constexpr int32_t kOverviewShare = 5;
inline constexpr int32_t kOverviewMargin = 8;

// Where the first slot's pixels stand in the world, as a set-up laid them out.
struct Projection {
    double XMin = 0;
    double YMax = 0;
    double Scale = 0;  // millimetres per pixel
    int32_t OriginDX = 0;
    int32_t OriginDY = 0;
    bool operator==(const Projection&) const = default;
};
Projection ProjectionOf(const PalletDrawing& drawing);
// A rectangle of pixels of one projection where the same millimetres show in another.
IntRect Reprojected(const IntRect& rect, const Projection& from, const Projection& to);

// The window of the drawing's plan in which the world point (x, y) shows at pixel at, at
// scale millimetres per pixel (no closer than kClosestScale), moved as little as it takes to
// stay on the whole pallet's window. None (the whole pallet) when the scale is the whole
// pallet's or coarser, or the drawing has no plan laid out.
std::optional<WorldWindow> WindowAround(const PalletDrawing& drawing, double x, double y,
                                        IntPoint at, double scale);

// The overview of a zoomed view: the whole pallet's window in small, in a corner of the plan,
// the pallet in it, and the part the view shows.
struct OverviewMap {
    IntRect Whole;
    IntRect Pallet;
    IntRect Shown;
    bool operator==(const OverviewMap&) const = default;
};
// None when the view is not zoomed.
std::optional<OverviewMap> Overview(const PalletDrawing& drawing);

}  // namespace kesto
