// What every window test needs: one QApplication on the offscreen platform and an operator
// that records the questions instead of showing them.
#pragma once

#include <QApplication>
#include <QtTest/QTest>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <memory>

#include "app/CKestoApp.h"
#include "support/MessageFile.h"
#include "support/Platform.h"
#include "support/RecordingOperator.h"
#include "ui/TestInstallation.h"
#include "ui/main/Application.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/FontTable.h"

namespace kesto::test {

inline QApplication& EnsureQApplication() {
    if (auto* existing = qobject_cast<QApplication*>(QCoreApplication::instance()))
        return *existing;
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static int argc = 1;
    static char name[] = "test_ui";
    static char* argv[] = {name, nullptr};
    // Never destroyed: QTest's input devices are statics that must not outlive it at exit.
    static QApplication* app = std::make_unique<QApplication>(argc, argv).release();
    return *app;
}

// Shows the window at the given client size and waits until its layout pass ran.
inline bool ShowLaidOut(CKestoApp& app, QWidget& window, int width, int height) {
    window.resize(width, height);
    window.show();
    return QTest::qWaitFor([&] { return app.LayoutState == 3 && window.width() == width; }, 5000);
}

// An installation, a recording operator, the job read from it and a main window over it.
// Change the installation's files before Start().
struct WindowJob {
    explicit WindowJob(const std::string& name) : Install(name) { EnsureQApplication(); }
    ~WindowJob() {
        Dialog.reset();
        FreeMessageFile();
    }
    WindowJob(const WindowJob&) = delete;
    WindowJob& operator=(const WindowJob&) = delete;

    // Reads settings and input; true when that succeeded. The window is made either way.
    bool Start() {
        App = std::make_unique<CKestoApp>();
        App->CommandLine = Install.CommandLine();
        const bool started = StartUp(*App) == 1;
        Fonts.Build(*App);
        Dialog = std::make_unique<CKestoDlg>(*App, Fonts);
        return started;
    }
    // Start() and the dialog's initialisation with the first placement.
    bool Open() {
        if (!Start())
            return false;
        Dialog->OnInitDialog();
        return true;
    }

    TestInstallation Install;
    InstalledRecorder Operator;
    std::unique_ptr<CKestoApp> App;
    FontTable Fonts;
    std::unique_ptr<CKestoDlg> Dialog;
};

}  // namespace kesto::test
