#include "ui/main/Application.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace kesto {

namespace {

void CoverAvailableArea(QWidget& window, const QScreen& screen) {
    window.setGeometry(screen.availableGeometry());
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

}  // namespace

void MaximiseOnScreen(QWidget& window) {
    QScreen* screen = QGuiApplication::primaryScreen();
    if (screen != nullptr) {
        CoverAvailableArea(window, *screen);
        QObject::connect(screen, &QScreen::availableGeometryChanged, &window,
                         [&window, screen] { CoverAvailableArea(window, *screen); });
    }
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

bool SaveScreenshot(QWidget& window, const QString& path) {
    return window.grab().save(path, "PNG");
}

}  // namespace kesto
