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

#include "app/CKestoApp.h"
#include "app/ExitCode.h"
#include "support/Platform.h"
#include "ui/dialogs/CAboutDlg.h"
#include "ui/main/Application.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/FontTable.h"
#include "ui/main/QtOperator.h"

namespace {

constexpr int kScreenshotWidth = 1600;
constexpr int kScreenshotHeight = 900;

constexpr int kLayoutTurns = 100;

int TakeScreenshot(kesto::CKestoApp& app, kesto::CKestoDlg& dialog, const QString& path) {
    dialog.resize(kScreenshotWidth, kScreenshotHeight);
    dialog.show();
    // The first paint asks for the layout; a few turns of the event loop place the controls.
    for (int i = 0; i < kLayoutTurns && app.LayoutState != 3; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    QApplication::processEvents();
    const bool saved = kesto::SaveScreenshot(dialog, path);
    return saved ? kesto::kExitNotOk : 1;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication qapp(argc, argv);
    // Qt takes the C library's locale from the environment; the job files are read with the
    // C library's number conversions and must always use the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    qapp.setWindowIcon(kesto::KestoIcon());
    kesto::CKestoApp app;
    app.CommandLine = kesto::JoinCommandLine(QApplication::arguments());
    kesto::FontTable fonts;
    kesto::QtOperator op(app, fonts);
    kesto::InstallOperator(&op);

    if (kesto::StartUp(app)) {
        fonts.Build(app);
        kesto::CKestoDlg dialog(app, fonts);
        op.SetMainWindow(&dialog);
        const char* screenshot = std::getenv("KESTO_SCREENSHOT");
        if (screenshot != nullptr && *screenshot != '\0') {
            dialog.OnInitDialog();
            return TakeScreenshot(app, dialog, QString::fromLocal8Bit(screenshot));
        }
        dialog.setWindowState(Qt::WindowMaximized);
        dialog.OnInitDialog();
        if (dialog.Run() == 1)
            app.DialogOk = 1;
        op.SetMainWindow(nullptr);
    }
    const int code = kesto::ExitInstance(app);
    kesto::InstallOperator(nullptr);
    return kesto::FinishProcess(code);
}
