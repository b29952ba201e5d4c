// What the pallet drawing and the part panels draw on. The drawing routines decide every
// rectangle, line, arc and text; a canvas only paints them (on a window's off-screen image,
// a picture file, or a list that tests read back).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/CKestoApp.h"

namespace kesto {

struct IntPoint {
    int32_t X = 0;
    int32_t Y = 0;
    constexpr bool operator==(const IntPoint&) const = default;
};

// A 24-bit colour.
struct Rgb {
    uint8_t R = 0;
    uint8_t G = 0;
    uint8_t B = 0;
    constexpr bool operator==(const Rgb&) const = default;
};

// A colour given as one number: red | green << 8 | blue << 16.
constexpr Rgb RgbOf(uint32_t number) {
    return Rgb{static_cast<uint8_t>(number & 0xFF), static_cast<uint8_t>((number >> 8) & 0xFF),
               static_cast<uint8_t>((number >> 16) & 0xFF)};
}

enum class PenStyle : int32_t { Solid = 0, Dotted = 2 };

enum class LabelMode : int32_t {
    Centred = 0,  // centred horizontally in the rectangle, its top at the rectangle's top
    AtPoint = 1,  // its top-left corner at the point
    Left = 2,     // at the rectangle's left edge, its top at the rectangle's top
    Right = 3,    // at the rectangle's right edge, its top at the rectangle's top
};

// Font slots a canvas knows: 0..4 those of the settings, the rest fonts a picture defines
// for itself (the sort sheet's print fonts).
inline constexpr int32_t kCanvasFontSlots = 10;

class Canvas {
  public:
    virtual ~Canvas() = default;
    // A solid rectangle covering the pixels Left..Right-1 x Top..Bottom-1, its outermost
    // pixels in the pen colour (a one-pixel pen), the inside in the fill colour.
    virtual void FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) = 0;
    // The arc of the ellipse bounded by box, counter-clockwise from the ray through start to
    // the ray through end (both from the box's centre), one pixel wide; never filled.
    virtual void DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill,
                             Rgb pen) = 0;
    // A line from `from` to `to` (the end point itself not drawn); width 0 is one pixel.
    virtual void DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                              int32_t width) = 0;
    // Text in font slot fontSlot (a defined font: callers skip undefined ones) on a
    // transparent background; Centred, Left and Right use rect (and clip to it; Left and
    // Right end a text too wide in an ellipsis), AtPoint uses at.
    virtual void DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                           const IntRect& rect, Rgb colour) = 0;
    // What is drawn from now on shows only inside clip (none: everywhere). A zoomed pallet
    // runs past its share of the area; the caption strip and the cross-section stay clear.
    virtual void SetClip(const std::optional<IntRect>& clip) = 0;
};

// The pixel height of font slot n, 0 when the settings define no such font (n outside 0..4
// or a height of 0).
int32_t FontPixelHeight(const CKestoApp& app, int32_t slot);
bool FontDefined(const CKestoApp& app, int32_t slot);

// The width a one-line text takes at most in a font of that pixel height, worked out
// without the font: about five eighths of the height per byte, which a character of two or
// three bytes (Shift_JIS, UTF-8) never exceeds.
int32_t TextWidthAtMost(const std::string& text, int32_t fontHeight);

// A pixel coordinate from a double: truncated toward zero and cut to +-2^28 (NaN gives 0), so
// that absurd millimetres cannot overflow the few int32 sums a drawing makes of them.
int32_t TruncToPixel(double value);

}  // namespace kesto
