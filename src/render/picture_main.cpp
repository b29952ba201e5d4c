// kesto-picture: paints a picture document that kesto-batch worked out into a PDF or PNG
// files. A program of its own, so that only runs that ask for pictures load Qt.
#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>

#include "render/PictureWriter.h"
#include "support/Version.h"
#include "view/PictureDocument.h"

namespace {

constexpr int kFailed = 1;
constexpr int kUsageError = 2;

constexpr const char* kUsage =
    "usage: kesto-picture DOCUMENT OUTPUT.pdf|OUTPUT.png\n"
    "       kesto-picture --help | --version\n"
    "Paints a picture document written by kesto-batch --picture.\n";

// Qt's own warnings (no runtime folder, a painter that did not start) say nothing the
// program's messages do not say better; only its critical messages go through.
void QuietQtMessages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::cerr << "kesto-picture: " << message.toLocal8Bit().constData() << "\n";
}

int Fail(const std::string& message) {
    std::cerr << "kesto-picture: " << message << "\n";
    return kFailed;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        std::cout << kUsage;
        return EXIT_SUCCESS;
    }
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::cout << kesto::VersionLine("kesto-picture") << "\n";
        return EXIT_SUCCESS;
    }
    if (argc != 3) {
        std::cerr << kUsage;
        return kUsageError;
    }
    const std::string documentPath = argv[1];
    const std::string output = argv[2];
    if (!kesto::PictureFormatOf(output))
        return Fail("the picture file must end in .pdf or .png: " + output);
    std::ifstream in(documentPath, std::ios::binary);
    if (!in)
        return Fail("cannot read " + documentPath);
    const std::optional<kesto::PictureDocument> document = kesto::ReadPictureDocument(in);
    if (!document)
        return Fail(documentPath + " is not a picture document");

        // Nothing is shown: the fonts need a Gui application, not a display.
#ifdef _WIN32
    _putenv_s("QT_QPA_PLATFORM", "offscreen");
#else
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
#endif
    qInstallMessageHandler(QuietQtMessages);
    QGuiApplication app(argc, argv);
    const kesto::PictureWriteResult result = kesto::WritePictures(*document, output);
    if (!result.Error.empty())
        return Fail(result.Error);
    return EXIT_SUCCESS;
}
