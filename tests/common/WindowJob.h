// What every window test needs: one QApplication on the offscreen platform, and a job of a
// test installation run by a session over recording services, with a main window over it.
#pragma once

#include <QApplication>
#include <QtTest/QTest>
#include <cstdlib>
#include <memory>
#include <string>

#include "app/CKestoApp.h"
#include "common/TestInstallation.h"
#include "common/TestServices.h"
#include "session/JobSession.h"
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

// A test installation, services that record the operator's questions and keep the host in
// memory (its system folder is the installation), the session of the job read from it and a
// main window over it. Change the installation's files, or Svc.Op.Answer, before Start().
struct WindowJob {
    WindowJob() : Svc(Install.Root().string()) { EnsureQApplication(); }
    WindowJob(const WindowJob&) = delete;
    WindowJob& operator=(const WindowJob&) = delete;

    // A new session: per-user values, settings and input; true when that succeeded. The
    // window is made either way.
    bool Start(const std::string& commandLine = "") {
        Dialog.reset();
        Session = std::make_unique<JobSession>(
            Svc.Get(), commandLine.empty() ? Install.CommandLine() : commandLine);
        const bool started = Session->StartUp();
        Fonts.Build(Session->App());
        Dialog = std::make_unique<CKestoDlg>(*Session, Fonts);
        return started;
    }
    // Start() and the dialog's initialisation with the first placement.
    bool Open(const std::string& commandLine = "") {
        if (!Start(commandLine))
            return false;
        Dialog->OnInitDialog();
        return true;
    }

    CKestoApp& App() { return Session->App(); }

    TestInstallation Install;
    TestServices Svc;
    std::unique_ptr<JobSession> Session;
    FontTable Fonts;
    std::unique_ptr<CKestoDlg> Dialog;
};

}  // namespace kesto::test
