// Printing from the window: Ctrl+P and the background menu's item open the print dialog, and
// the pages printed (here into a PDF file, offscreen, without a printer) are the sort sheet
// kesto-batch --picture writes, with the operator's corrections, the window left as it was.
#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <regex>
#include <sstream>

#include "common/E2eCases.h"
#include "common/EditingWindow.h"
#include "common/PdfText.h"
#include "common/PicturePdf.h"
#include "common/WindowJob.h"
#include "render/PictureWriter.h"

namespace kesto {
namespace {

// A printer that writes a PDF file, A4 landscape as the window sets it before its dialog.
std::string PrintToFile(CKestoDlg& window, const std::filesystem::path& file) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file.string()));
    printer.setPageLayout(PicturePageLayout());
    return window.PrintTo(printer);
}

// Each page's words, sorted: the same texts on the same pages, whichever order a reader
// finds them in at the device's resolution; the date they were made (which may differ by a
// minute) left out.
std::vector<std::vector<std::string>> WordsOfPages(const std::vector<std::string>& pages) {
    static const std::regex date("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}");
    std::vector<std::vector<std::string>> out;
    for (const std::string& page : pages) {
        std::istringstream in(std::regex_replace(test::OneBlank(page), date, "DATE"));
        std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
        std::sort(words.begin(), words.end());
        out.push_back(words);
    }
    return out;
}

TEST(CKestoDlgPrint, PrintsTheSampleJobsSortSheetAsTheBatchToolWritesIt) {
    test::WindowJob job;
    ASSERT_TRUE(test::OpenSampleJob(job));
    const std::filesystem::path printed = job.Install.Path("printed.pdf");
    ASSERT_EQ(PrintToFile(*job.Dialog, printed), "");
    // Nine pallets hold stacks (laser cutting two, punching three, bending four), then the
    // summary.
    EXPECT_EQ(test::PdfPages(printed.string()).ContentLengths.size(), 10u);

    // kesto-batch on a copy of the same sample, in a folder of the window's job.
    const std::filesystem::path install = job.Install.Path("batch/install");
    std::filesystem::create_directories(install.parent_path());
    std::filesystem::copy(test::SourceDir() / "examples" / "install", install,
                          std::filesystem::copy_options::recursive);
    const std::filesystem::path log = job.Install.Path("batch/log.txt");
    ASSERT_EQ(test::RunBatchProcess(
                  install, "ok", "--picture out/sheet.pdf pallet/pallets.txt 0 0 1400 10 1", log),
              0)
        << test::ReadFile(log.string());

    const auto window = test::PdfPageTexts(printed);
    const auto written = test::PdfPageTexts(install / "out/sheet.pdf");
    if (!window || !written)
        GTEST_SKIP() << "pdftotext is not installed (poppler-utils)";
    ASSERT_EQ(window->size(), 10u);
    EXPECT_EQ(WordsOfPages(*window), WordsOfPages(*written));
    const std::string first = test::OneBlank(window->front());
    for (const char* text : {"kesto_job.txt", "01 Laser cutting", "P-01", "Page 1 of 10",
                             "No. Part Name Pieces Block Corner Changes", "A003 Side panel 5"})
        EXPECT_NE(first.find(text), std::string::npos) << text << "\n" << first;
    const std::string summary = test::OneBlank(window->back());
    for (const char* text : {"Summary", "Page 10 of 10", "Small boxes", "B1 01 Laser cutting A007",
                             "Set aside", "Parts left short", "Stacks across an offset line"})
        EXPECT_NE(summary.find(text), std::string::npos) << text << "\n" << summary;
}

TEST(CKestoDlgPrint, PrintsTheCorrectedJobAndLeavesTheWindowAsItWas) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    // A1's stacks (picked by block) dragged from the cell's right to its left.
    w.Drag({830, 718}, {260, 718});
    ASSERT_DOUBLE_EQ(w.StackNo(0).X, 370);
    const ViewState shown = w.Shown();
    const QImage picture = w.Area().Image();
    const QString undo = w.job.Dialog->UndoAction()->text();
    const size_t stacks = w.App().HaichiList.size();

    const std::filesystem::path printed = w.job.Install.Path("printed.pdf");
    ASSERT_EQ(PrintToFile(*w.job.Dialog, printed), "");

    EXPECT_TRUE(w.Shown() == shown);
    EXPECT_EQ(w.Area().Image(), picture);
    EXPECT_EQ(w.job.Dialog->UndoAction()->text(), undo);
    EXPECT_EQ(w.App().HaichiList.size(), stacks);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    // A1 on pallet 1, A2 on pallet 2, the summary.
    EXPECT_EQ(test::PdfPages(printed.string()).ContentLengths.size(), 3u);
    const auto pages = test::PdfPageTexts(printed);
    if (!pages)
        GTEST_SKIP() << "pdftotext is not installed (poppler-utils)";
    ASSERT_EQ(pages->size(), 3u);
    const std::string first = test::OneBlank((*pages)[0]);
    // Both stacks of the picked block moved together, each marked, in the corners they
    // stand in now.
    EXPECT_NE(first.find("1 A1 TextA 5 1 lower left M\n"), std::string::npos) << first;
    EXPECT_NE(first.find("2 A1 TextA 5 1 upper left M\n"), std::string::npos) << first;
}

// The background menu's entries as they stand when it opens.
QStringList MenuEntries(CKestoDlg& window) {
    QStringList entries;
    QTimer::singleShot(0, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            for (QAction* action : menu->actions()) {
                if (!action->isSeparator())
                    entries << action->objectName() + "=" + action->text();
            }
            menu->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(&window, &event);
    return entries;
}

TEST(CKestoDlgPrint, TheBackgroundMenuOffersPrintInTheMessageFilesWords) {
    test::WindowJob job;
    ASSERT_TRUE(job.Open());
    job.Dialog->show();
    EXPECT_TRUE(MenuEntries(*job.Dialog).contains("Print=Print..."));
    EXPECT_EQ(job.Dialog->PrintAction()->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));

    test::WindowJob japanese;
    ASSERT_TRUE(test::OpenSampleJob(japanese, "ja"));
    japanese.Dialog->show();
    // "印刷..." from the Japanese installation's message file.
    EXPECT_TRUE(MenuEntries(*japanese.Dialog).contains(QString::fromUtf8("Print=印刷...")));
}

// Ctrl+P opens the platform's print dialog; cancelled, it prints nothing.
TEST(CKestoDlgPrint, CtrlPOpensThePrintDialog) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    QString seen;
    // The dialog comes up once the platform's printers are known: watched for until it does.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget())) {
            seen = QString::fromLatin1(dialog->metaObject()->className());
            watch.stop();
            dialog->reject();
        }
    });
    watch.start(20);
    w.Key(Qt::Key_P, Qt::ControlModifier);
    watch.stop();
    EXPECT_EQ(seen, "QPrintDialog");
    EXPECT_TRUE(w.job.Svc.Op.Messages.empty());
}

}  // namespace
}  // namespace kesto
