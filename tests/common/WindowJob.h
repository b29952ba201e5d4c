// What every window test needs: one QApplication on the offscreen platform, and a job of a
// test installation run by a session over recording services, with a main window over it.
#pragma once

#include <QApplication>
#include <QImage>
#include <QtTest/QTest>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "common/TestInstallation.h"
#include "common/TestServices.h"
#include "render/FontTable.h"
#include "session/JobSession.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "view/Canvas.h"

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
inline bool ShowLaidOut(CKestoDlg& window, int width, int height) {
    window.resize(width, height);
    window.show();
    return QTest::qWaitFor(
        [&] { return window.Layout() == LayoutStep::LaidOut && window.width() == width; }, 5000);
}

// The colour of one pixel of a window's image.
inline Rgb PixelAt(const QImage& image, int x, int y) {
    const QColor c = image.pixelColor(x, y);
    return Rgb{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()),
               static_cast<uint8_t>(c.blue())};
}

// The message keys of the drawing and the part panels, added to the test installation's
// settings: pallet captions and panel texts in font 1 (16 px), stack labels in font 3 (12 px).
inline std::string KestoIniWithDrawing() {
    std::string ini = kDefaultKestoIni;
    const std::string section = "[MainDlg]\n";
    ini.insert(ini.find(section) + section.size(),
               "L-PALLET-CAP=1,Cap\nDRAW-STRING=3,Draw\nINFO-STRING=1,Info\n"
               "INFO1-STRING=1,pcs\nINFO2-STRING=1,Per\nVIEW-STRING=1,View\n");
    return ini;
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
        Shown_ = ViewState{};
        Session = std::make_unique<JobSession>(
            Svc.Get(), commandLine.empty() ? Install.CommandLine() : commandLine, Shown_);
        // As the program starts it: the outlines are read beside the making of the window and
        // the placement, and waited for once OnInitDialog has placed the job.
        const bool started = Session->StartUp(OutlineFiles::Beside);
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
    // The view the session shows, as its owner (main()) may set it up before a command.
    ViewState& Shown() { return Shown_; }

    TestInstallation Install;
    TestServices Svc;
    ViewState Shown_;  // what the window shows, as main() keeps it
    std::unique_ptr<JobSession> Session;
    FontTable Fonts;
    std::unique_ptr<CKestoDlg> Dialog;
};

// The test job with the settings given (those with the drawing unless told) and jobText when
// given, opened, its window shown and laid out at 1600 x 900: the window as the tests of what it
// shows see it. At that size the drawing area's left is 1600 * 0.2 + 4 = 324, its right
// 1600 - 2 = 1598 and its bottom 900 - 2 = 898.
struct ShownWindowJob {
    explicit ShownWindowJob(const std::string& settings = KestoIniWithDrawing(),
                            const std::string& jobText = {}) {
        job.Install.Write("msg/Kesto.ini", settings);
        if (!jobText.empty())
            job.Install.Write("job/job.txt", jobText);
        shown = job.Open() && ShowLaidOut(*job.Dialog, 1600, 900);
    }
    CKestoDlg& D() { return *job.Dialog; }
    PalletDrawing& Drawing() { return D().DrawArea()->Drawing(); }
    HaichiInfo& FirstStack() { return *job.App().HaichiList.begin(); }
    // The colour at the middle of r in the drawing area's picture.
    Rgb AreaPixel(const IntRect& r) {
        return PixelAt(D().DrawArea()->Image(), (r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
    }

    WindowJob job;
    bool shown = false;
};

// The sample installation of examples/ copied into the job's folder and opened as
// examples/demo_setup.sh starts it: from the system folder (the job names its outline files
// relative to it), offsets A 1400 and B 10, start corner 1. With a language ("ja"), the files
// of examples/<language>/install are laid over it, as the demo does.
inline bool OpenSampleJob(WindowJob& job, const std::string& language = "") {
    const auto options = std::filesystem::copy_options::recursive |
                         std::filesystem::copy_options::overwrite_existing;
    std::filesystem::copy(SourceDir() / "examples" / "install", job.Install.Root(), options);
    if (!language.empty()) {
        std::filesystem::copy(SourceDir() / "examples" / language / "install", job.Install.Root(),
                              options);
    }
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(job.Install.Root());
    const bool opened =
        job.Open("kesto " + job.Install.Path("pallet/pallets.txt").string() + " 0 0 1400 10 1");
    std::filesystem::current_path(before);
    return opened;
}

}  // namespace kesto::test
