// Pixel rectangles shared by the job's dialogs, the view state and the drawing.
#pragma once

#include <algorithm>
#include <cstdint>

namespace kesto {

struct IntRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;
    bool operator==(const IntRect&) const = default;
};

// The point lies in the rectangle, its edges included.
inline bool Contains(const IntRect& r, int32_t x, int32_t y) {
    return r.Left <= x && x <= r.Right && r.Top <= y && y <= r.Bottom;
}

// The smallest rectangle around both.
inline IntRect Union(const IntRect& a, const IntRect& b) {
    return IntRect{std::min(a.Left, b.Left), std::min(a.Top, b.Top), std::max(a.Right, b.Right),
                   std::max(a.Bottom, b.Bottom)};
}

// A control's place in a window: its top-left corner and size, in pixels.
struct ControlRect {
    int32_t X = 0;
    int32_t Y = 0;
    int32_t Width = 0;
    int32_t Height = 0;
    bool operator==(const ControlRect&) const = default;
};

}  // namespace kesto
