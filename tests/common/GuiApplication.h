// One QGuiApplication on the offscreen platform for the tests that paint without widgets.
#pragma once

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace kesto::test {

inline QGuiApplication& EnsureGuiApplication() {
    if (auto* existing = qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return *existing;
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static int argc = 1;
    static char name[] = "test_render";
    static char* argv[] = {name, nullptr};
    // Never destroyed: Qt's font database caches must not outlive it at exit.
    static QGuiApplication* app = std::make_unique<QGuiApplication>(argc, argv).release();
    return *app;
}

}  // namespace kesto::test
