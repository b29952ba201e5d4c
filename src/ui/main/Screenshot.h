// The picture the window takes of itself (and the start benchmark's empty dialog, which writes
// its picture the same way so that it stays a fair floor).
#pragma once

#include <QImageWriter>
#include <QPixmap>
#include <QString>
#include <QWidget>

namespace kesto {

// Qt's PNG quality 80 is deflate's fastest level: a screenshot of the window is written in about
// two thirds of the default level's time, for a file about a sixth larger; the pixels are the same.
inline constexpr int kScreenshotPngQuality = 80;

// Shows window at width x height, laid out, but never on a screen: the grab that follows is then
// its only painting.
inline void ShowOffScreen(QWidget& window, int width, int height) {
    window.resize(width, height);
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.show();
}

// Grabs window into a PNG file; true when written.
inline bool SaveScreenshot(QWidget& window, const QString& path) {
    QImageWriter writer(path, "png");
    writer.setQuality(kScreenshotPngQuality);
    return writer.write(window.grab().toImage());
}

}  // namespace kesto
