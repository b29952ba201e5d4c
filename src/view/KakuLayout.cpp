#include "view/KakuLayout.h"

#include <algorithm>

namespace kesto {

namespace {

constexpr int kMinWidth = 300;
constexpr int kMinHeight = 200;

}  // namespace

KakuLayout LayOutKakuDlg(int textLength, int charHeight, const ControlRect& owner,
                         bool onlyInforms) {
    const int h = charHeight;
    const int width = std::max((textLength * h) / 7 * 4, kMinWidth);
    const int height = std::max(h * 10, kMinHeight);
    const int left = owner.X;
    const int right = owner.X + owner.Width;
    const int top = owner.Y;
    const int bottom = owner.Y + owner.Height;
    KakuLayout l;
    l.Box = {(left + right) / 2 - width / 2, (top + bottom) / 2 - height / 2, width, height};
    l.Line1 = {0, 50, width, 2 * h};
    l.Line2 = {0, 50 + 2 * h + 10, width, 2 * h};
    // One wide OK when the message only informs, else OK and Cancel side by side.
    if (onlyInforms) {
        l.Ok = {width / 2 - 105, height - 35, 205, 30};
    } else {
        l.Ok = {width / 2 - 105, height - 35, 100, 30};
        l.Cancel = ControlRect{width / 2 + 5, height - 35, 100, 30};
    }
    return l;
}

}  // namespace kesto
