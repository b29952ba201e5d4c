// Pixel rectangles shared by the job's dialogs, the view state and the drawing.
#pragma once

#include <cstdint>

namespace kesto {

struct IntRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;
    bool operator==(const IntRect&) const = default;
};

// A control's place in a window: its top-left corner and size, in pixels.
struct ControlRect {
    int32_t X = 0;
    int32_t Y = 0;
    int32_t Width = 0;
    int32_t Height = 0;
    bool operator==(const ControlRect&) const = default;
};

}  // namespace kesto
