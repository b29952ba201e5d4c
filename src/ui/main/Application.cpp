#include "ui/main/Application.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <system_error>

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

std::jthread LoadFontListAside() {
    try {
        return std::jthread([] { QFontDatabase::families(); });
    } catch (const std::system_error&) {
        return {};  // no thread to be had: the list is read when the first text needs it
    }
}

}  // namespace kesto
