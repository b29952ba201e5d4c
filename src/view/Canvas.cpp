#include "view/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kesto {

namespace {
constexpr int32_t kMaxFontPixels = 32767;
constexpr double kPixelLimit = 268435456.0;  // 2^28
}  // namespace

int32_t FontPixelHeight(const CKestoApp& app, int32_t slot) {
    if (!FontDefined(app, slot))
        return 0;
    // A negative height asks for the character height; either way it is |h| pixels.
    const int64_t height = std::llabs(static_cast<int64_t>(app.Settings.FontHeight[slot]));
    return static_cast<int32_t>(std::min<int64_t>(height, kMaxFontPixels));
}

bool FontDefined(const CKestoApp& app, int32_t slot) {
    return slot >= 0 && slot < static_cast<int32_t>(app.Settings.FontHeight.size()) &&
           app.Settings.FontHeight[slot] != 0;
}

int32_t TextWidthAtMost(const std::string& text, int32_t fontHeight) {
    const int64_t width = static_cast<int64_t>(text.size()) * std::max(fontHeight, 0) * 5 / 8;
    return static_cast<int32_t>(std::min<int64_t>(width, kPixelLimit));
}

int32_t TruncToPixel(double value) {
    if (std::isnan(value))
        return 0;
    const double cut = std::clamp(std::trunc(value), -kPixelLimit, kPixelLimit);
    return static_cast<int32_t>(cut);
}

}  // namespace kesto
