// The ink of a picture: its pixels darker than middle grey.
#pragma once

#include <QImage>

namespace kesto::test {

inline int DarkPixels(const QImage& image) {
    int dark = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            dark += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    }
    return dark;
}

}  // namespace kesto::test
