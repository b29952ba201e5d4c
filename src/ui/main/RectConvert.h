// Rectangles of the application object (left, top, right, bottom) as Qt geometry.
#pragma once

#include <QRect>

#include "app/Rect.h"

namespace kesto {

inline QRect ToQRect(const IntRect& r) {
    return QRect(r.Left, r.Top, r.Right - r.Left, r.Bottom - r.Top);
}

}  // namespace kesto
