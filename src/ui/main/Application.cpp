#include "ui/main/Application.h"

#include <QPixmap>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

#include "app/ExitCode.h"
#include "support/MessageFile.h"

namespace kesto {

std::string JoinCommandLine(const QStringList& arguments) {
    return arguments.join(QLatin1Char(' ')).toStdString();
}

int StartUp(CKestoApp& app) {
    app.DialogOk = 0;
    if (!app.InitSettings()) {
        app.ExitParam = app.ErrorCode;
        return 0;
    }
    return app.ReadInput();
}

int ExitInstance(CKestoApp& app) {
    app.WriteRegistrySettings();
    app.FreeJob();
    FreeMessageFile();
    return SettleExitCode(app.ExitParam, app.DialogOk);
}

int FinishProcess(int code) {
    const std::string notice = ExitCodeNotice(code);
    if (!notice.empty())
        std::fprintf(stderr, "%s\n", notice.c_str());
    return ProcessExitCode(code);
}

void EndProcess(int code) {
    std::fflush(stdout);
    std::exit(FinishProcess(code));
}

bool SaveScreenshot(QWidget& window, const QString& path) {
    return window.grab().save(path, "PNG");
}

}  // namespace kesto
