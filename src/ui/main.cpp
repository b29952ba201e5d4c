// kesto: the operator window. Reads the job, shows the main window maximised and ends with
// the exit code that tells the host how the job ended.
//
// Screenshot mode (for `make screenshot`): when the environment variable KESTO_SCREENSHOT
// names a PNG file, the main window is shown at 1600 x 900 instead of maximised, laid out,
// grabbed into that file, and the program ends with exit code 100 without writing any result
// or per-user value. KESTO_SCREENSHOT_VIEW chooses the view first: flat (the default),
// danmen, 4pallet, 2pallet, 3d or info (the first stack picked).
#include <QApplication>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <thread>

#include "app/ExitCode.h"
#include "render/FontTable.h"
#include "session/JobSession.h"
#include "support/HeapGrowth.h"
#include "support/Services.h"
#include "support/Version.h"
#include "ui/dialogs/CAboutDlg.h"
#include "ui/main/Application.h"
#include "ui/main/CKestoDlg.h"
#include "ui/main/QtOperator.h"
#include "ui/main/ScreenViews.h"
#include "ui/main/Screenshot.h"
#include "ui/main/WindowJournal.h"

namespace {

constexpr int kScreenshotWidth = 1600;
constexpr int kScreenshotHeight = 900;

// Lays the window out at a fixed size and saves it; the job ends as one left without OK.
int TakeScreenshot(kesto::CKestoDlg& dialog, const QString& path, kesto::ScreenView view) {
    kesto::ShowOffScreen(dialog, kScreenshotWidth, kScreenshotHeight);
    kesto::ShowScreenView(dialog, view);
    return kesto::SaveScreenshot(dialog, path) ? kesto::kExitNotOk : 1;
}

// Whatever the job writes (the result, the save file, the per-user values, the journal's end)
// is on the disk when the window has closed: the window and the job are not taken apart before
// the host has its code. The font list's reader ends first, as it may be writing a cache file.
int EndWindowProcess(int code, std::jthread& fontList) {
    if (fontList.joinable())
        fontList.join();
    return kesto::EndProcess(code, std::cerr);
}

std::optional<kesto::ScreenView> RequestedView() {
    const char* name = std::getenv("KESTO_SCREENSHOT_VIEW");
    if (name == nullptr || *name == '\0')
        return kesto::ScreenView::Flat;
    return kesto::ScreenViewByName(name);
}

}  // namespace

int main(int argc, char** argv) {
    // Only as the whole command line: the host's first token is a pallet file's path. Answered
    // before Qt starts, so that it needs no display.
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::cout << kesto::VersionLine("kesto") << "\n";
        return 0;
    }
    kesto::GrowHeapsInLargeSteps();
    QApplication qapp(argc, argv);
    // Qt takes the C library's locale from the environment; the job files are read with the
    // C library's number conversions and must always use the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    qapp.setWindowIcon(kesto::KestoIcon());
    std::jthread fontList = kesto::LoadFontListAside();
    kesto::MessageTable messages;
    kesto::FontTable fonts;
    kesto::QtOperator op(messages, fonts);
    // A replay of the journal answers some questions itself.
    kesto::OperatorRelay relay(op);
    kesto::DefaultHostStore host;
    std::vector<std::string> words;
    for (const QString& argument : QApplication::arguments())
        words.push_back(argument.toStdString());
    kesto::ViewState shown;  // what the window shows; the window reads and changes it
    kesto::JobSession session(kesto::Services{relay, host, messages}, kesto::JoinCommandLine(words),
                              shown);
    // The outline files are read beside the making of the window and the placement, which do
    // without them; the job waits for them before its first picture.
    if (!session.StartUp(kesto::OutlineFiles::Beside))
        return kesto::FinishProcess(session.Exit(), std::cerr);

    fonts.Build(session.App());
    const char* screenshot = std::getenv("KESTO_SCREENSHOT");
    if (screenshot != nullptr && *screenshot != '\0') {
        const std::optional<kesto::ScreenView> view = RequestedView();
        if (!view) {
            std::cerr << "kesto: KESTO_SCREENSHOT_VIEW is none of flat, danmen, 4pallet, "
                         "2pallet, 3d, info\n";
            return 2;
        }
        // Nothing of the job is written: no result, no save file, no per-user values.
        kesto::CKestoDlg dialog(session, fonts);
        op.SetMainWindow(&dialog);
        dialog.OnInitDialog();
        const int code = TakeScreenshot(dialog, QString::fromLocal8Bit(screenshot), *view);
        op.SetMainWindow(nullptr);
        return EndWindowProcess(code, fontList);
    }
    kesto::WindowJournal journal(session, relay, host.StateFolder());
    kesto::CKestoDlg dialog(session, fonts);
    op.SetMainWindow(&dialog);
    kesto::MaximiseOnScreen(dialog);
    dialog.OnInitDialog();
    dialog.WhenShown([&] { journal.Start(dialog); });
    dialog.Run();
    op.SetMainWindow(nullptr);
    return EndWindowProcess(session.Exit(), fontList);
}
