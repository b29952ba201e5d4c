// kesto: the operator window. Reads the job, shows the main window maximised and ends with
// the exit code that tells the host how the job ended.
//
// Screenshot mode (for `make screenshot`): when the environment variable KESTO_SCREENSHOT
// names a PNG file, the main window is shown at 1600 x 900 instead of maximised, laid out,
// grabbed into that file, and the program ends with exit code 100 without writing any result
// or per-user value.
#include <QApplication>
#include <clocale>
#include <cstdlib>
#include <iostream>

#include "app/ExitCode.h"
#include "session/JobSession.h"
#include "support/Services.h"
#include "ui/dialogs/CAboutDlg.h"
#include "ui/main/Application.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/FontTable.h"
#include "ui/main/QtOperator.h"

namespace {

constexpr int kScreenshotWidth = 1600;
constexpr int kScreenshotHeight = 900;

constexpr int kLayoutTurns = 100;

// Lays the window out at a fixed size and saves it; the job ends as one left without OK.
int TakeScreenshot(kesto::CKestoDlg& dialog, const kesto::CKestoApp& app, const QString& path) {
    dialog.resize(kScreenshotWidth, kScreenshotHeight);
    dialog.show();
    // The first paint asks for the layout; a few turns of the event loop place the controls.
    for (int i = 0; i < kLayoutTurns && app.LayoutState != kesto::layout::kLaidOut; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    QApplication::processEvents();
    return kesto::SaveScreenshot(dialog, path) ? kesto::kExitNotOk : 1;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication qapp(argc, argv);
    // Qt takes the C library's locale from the environment; the job files are read with the
    // C library's number conversions and must always use the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    qapp.setWindowIcon(kesto::KestoIcon());
    kesto::MessageTable messages;
    kesto::FontTable fonts;
    kesto::QtOperator op(messages, fonts);
    kesto::DefaultHostStore host;
    kesto::JobSession session(kesto::Services{op, host, messages},
                              kesto::JoinCommandLine(QApplication::arguments()));
    if (!session.StartUp())
        return kesto::FinishProcess(session.Exit(), std::cerr);

    fonts.Build(session.App());
    const char* screenshot = std::getenv("KESTO_SCREENSHOT");
    if (screenshot != nullptr && *screenshot != '\0') {
        // Nothing of the job is written: no result, no save file, no per-user values.
        kesto::CKestoDlg dialog(session, fonts);
        op.SetMainWindow(&dialog);
        dialog.OnInitDialog();
        const int code = TakeScreenshot(dialog, session.App(), QString::fromLocal8Bit(screenshot));
        op.SetMainWindow(nullptr);
        return kesto::FinishProcess(code, std::cerr);
    }
    {
        kesto::CKestoDlg dialog(session, fonts);
        op.SetMainWindow(&dialog);
        dialog.setWindowState(Qt::WindowMaximized);
        dialog.OnInitDialog();
        dialog.Run();
        op.SetMainWindow(nullptr);
    }
    return kesto::FinishProcess(session.Exit(), std::cerr);
}
