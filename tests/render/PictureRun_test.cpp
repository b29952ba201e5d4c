// kesto-batch --picture on whole installations, as a host runs it: the PDF and PNG files,
// the report, a failing picture, and that only the picture program loads Qt.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <filesystem>
#include <map>
#include <string>

#include "common/E2eCases.h"
#include "common/GuiApplication.h"
#include "common/ImageInk.h"
#include "common/MiniInstallation.h"
#include "common/PdfText.h"
#include "common/PicturePdf.h"
#include "common/TestFiles.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::MiniInstallation;
using test::TempFolder;

// Two processes on two pallets to choose (the 4PALLET layout), fonts for every label.
MiniInstallation TwoProcesses() {
    MiniInstallation inst;
    inst.Settings =
        "[FontDefine]\n"
        "FontSet1=-12,0,0,0,DejaVu Sans\n"
        "FontSet2=13,0,0,0,DejaVu Sans Mono\n"
        "FontSet4=18,0,0,0,DejaVu Sans\n"
        "[MainDlg]\n"
        "L-PALLET-CAP=4,\"Pallet\"\n"
        "DRAW-STRING=1,\"Labels\"\n"
        "[KakuDlg]\n"
        "Msg208=1,\"Delete the old result file?\"\n"
        "Msg209=1,\"A stack lies beyond the offset limit\"\n"
        "[PalletSelect]\n"
        "PalletInfo=2,P\n";
    inst.Job =
        "#BoxInfo\n"
        "PAL,0,1,0,2000,0,2000\n"
        "SB1,100,2,0,500,0,500\n"
        "#End\n"
        "#KouteiInfo\n"
        "1,CUT,PAL-A\n"
        "2,BEND,PAL-A\n"
        "#End\n"
        "#PartsInfo\n"
        "A001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n"
        "A002,2,Plate,PLT-2,280,180,10,3,0,0,0,,,2,G01,0000,,0,,K002,5\n"
        "A003,1,Clip,CLP-3,40,30,11,20,100,0,0,,,1,G02,0000,,0,,K003,1\n"
        "#End\n";
    return inst;
}

struct BatchRun {
    int Code = -1;
    std::string Log;
};

BatchRun RunBatch(const TempFolder& folder, const std::string& answer, const std::string& options) {
    const std::filesystem::path log = folder.Path() / "log.txt";
    std::filesystem::remove(log);
    BatchRun run;
    run.Code = test::RunBatchProcess(folder.Path() / "install", answer,
                                     options + " pallet/pallets.txt 0 0 0 0 1", log);
    run.Log = test::ReadFile(log.string());
    return run;
}

class PictureRun : public ::testing::Test {
  protected:
    PictureRun() : installation(TwoProcesses()) {}
    // The installation in install/, its per-user values beside it in config/.
    void Write() { installation.Write(folder.Path() / "install"); }
    std::string Out(const std::string& name) const { return folder / ("install/out/" + name); }

    TempFolder folder;
    MiniInstallation installation;
};

// The sort sheet: CUT's brackets and BEND's plate each on pallet 1, then the summary.
TEST_F(PictureRun, PdfIsTheSortSheetAPagePerPalletAndTheSummary) {
    Write();
    const BatchRun run = RunBatch(folder, "ok", "--picture out/plan.pdf");
    ASSERT_EQ(run.Code, 0) << run.Log;
    EXPECT_NE(run.Log.find("Picture (3 pages):\n  out/plan.pdf\n"), std::string::npos) << run.Log;
    const test::PdfPages pdf(Out("plan.pdf"));
    ASSERT_EQ(pdf.ContentLengths.size(), 3u);
    // Two pallets with frames, cells, stacks and tables, then the summary's tables.
    EXPECT_GT(pdf.ContentLengths[0], 1000u);
    EXPECT_GT(pdf.ContentLengths[1], 1000u);
    EXPECT_GT(pdf.ContentLengths[2], 500u);
    const std::optional<std::vector<std::string>> pages = test::PdfPageTexts(Out("plan.pdf"));
    if (!pages)
        GTEST_SKIP() << "pdftotext is not installed (poppler-utils)";
    ASSERT_EQ(pages->size(), 3u);
    const std::string first = test::OneBlank((*pages)[0]);
    for (const char* text :
         {"job.txt", "01 CUT", "P-01", "Page 1 of 3", "No. Part Name Pieces", "1 A001 BRK-1 4",
          "2 A001 BRK-1 4", "Total: 2 stacks, 8 pieces", "moved by the operator"})
        EXPECT_NE(first.find(text), std::string::npos) << text << "\n" << first;
    const std::string second = test::OneBlank((*pages)[1]);
    EXPECT_NE(second.find("02 BEND"), std::string::npos) << second;
    EXPECT_NE(second.find("1 A002 PLT-2 3"), std::string::npos) << second;
    const std::string summary = test::OneBlank((*pages)[2]);
    for (const char* text : {"Summary", "Page 3 of 3", "Small boxes", "01 CUT A003 CLP-3 20",
                             "Set aside", "Parts left short", "Stacks across an offset line"})
        EXPECT_NE(summary.find(text), std::string::npos) << text << "\n" << summary;
    EXPECT_TRUE(std::filesystem::exists(Out("result.csv")));
    // The document handed to the picture program is gone.
    for (const auto& entry : std::filesystem::directory_iterator(Out("")))
        EXPECT_EQ(entry.path().filename().string().rfind("kesto-picture", 0), std::string::npos);
}

TEST_F(PictureRun, CancelledJobIsDrawnToo) {
    Write();
    const BatchRun run = RunBatch(folder, "cancel", "--picture=out/plan.pdf");
    ASSERT_EQ(run.Code, 100) << run.Log;
    EXPECT_EQ(test::PdfPages(Out("plan.pdf")).ContentLengths.size(), 3u);
}

Rgb PixelAt(const QImage& image, int x, int y) {
    const QColor c = image.pixelColor(x, y);
    return Rgb{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()),
               static_cast<uint8_t>(c.blue())};
}

TEST_F(PictureRun, PngGivesAnImagePerProcessAndTheListingAtTheAskedSize) {
    test::EnsureGuiApplication();
    Write();
    const BatchRun run = RunBatch(folder, "ok", "--picture out/plan.png --picture-size 800x500");
    ASSERT_EQ(run.Code, 0) << run.Log;
    EXPECT_NE(run.Log.find("Pictures:\n  out/plan-01.png\n  out/plan-02.png\n  out/plan-03.png\n"),
              std::string::npos)
        << run.Log;
    EXPECT_FALSE(std::filesystem::exists(Out("plan-04.png")));
    // The listing: black lines of text on white.
    QImage listing;
    ASSERT_TRUE(listing.load(QString::fromStdString(Out("plan-03.png"))));
    EXPECT_EQ(listing.size(), QSize(800, 500));
    EXPECT_EQ(PixelAt(listing, 790, 490), (Rgb{255, 255, 255}));
    EXPECT_GT(test::DarkPixels(listing.convertToFormat(QImage::Format_RGB32)), 500);
    for (const char* name : {"plan-01.png", "plan-02.png"}) {
        QImage image;
        ASSERT_TRUE(image.load(QString::fromStdString(Out(name)))) << name;
        EXPECT_EQ(image.width(), 800);
        EXPECT_EQ(image.height(), 500);
        // Title strip 36 (twice the 18-pixel title font), area 464 high, caption strips 18:
        // the lower quadrants' background reaches the image's bottom edge, and slot 1's
        // frame (pallet 1000 x 800 in a world window 2.16 times as wide) is centred in the
        // upper left quadrant.
        EXPECT_EQ(PixelAt(image, 2, 498), colour::kAreaBackground) << name;
        EXPECT_EQ(PixelAt(image, 200, 36 + 18 + 3), colour::kAreaBackground) << name;
        EXPECT_EQ(PixelAt(image, 400, 480), colour::kSeparator) << name;
        int frame = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                frame += PixelAt(image, x, y) == colour::kPalletFrame ? 1 : 0;
        }
        // Two pallets of about 180 x 144 pixels, less what stands on them.
        EXPECT_GT(frame, 2 * 100 * 100) << name;
    }
}

TEST_F(PictureRun, FailingPictureKeepsTheJobsCodeAndSaysWhy) {
    Write();
    const BatchRun run = RunBatch(folder, "ok", "--picture no-such-folder/plan.pdf");
    EXPECT_EQ(run.Code, 0) << run.Log;
    EXPECT_NE(
        run.Log.find("kesto-batch: picture not written: cannot write no-such-folder/plan.pdf"),
        std::string::npos)
        << run.Log;
    EXPECT_TRUE(std::filesystem::exists(Out("result.csv")));
}

TEST_F(PictureRun, WrongPictureOptionEndsWithTwoBeforeAnythingIsWritten) {
    Write();
    const BatchRun run = RunBatch(folder, "ok", "--picture out/plan.gif");
    EXPECT_EQ(run.Code, 2) << run.Log;
    EXPECT_NE(run.Log.find("kesto-batch: --picture takes a file ending in .pdf or .png"),
              std::string::npos)
        << run.Log;
    EXPECT_FALSE(std::filesystem::exists(Out("result.csv")));
}

// The golden runs' offset-warning installation: the operator stops there, nothing is written
// and nothing is drawn.
TEST_F(PictureRun, OffsetStopDrawsNothing) {
    const std::filesystem::path install = folder.Path() / "install";
    std::filesystem::copy(test::E2eRoot() / "offset_warning_cancel" / "install", install,
                          std::filesystem::copy_options::recursive);
    const std::map<std::string, std::string> e2eCase =
        test::ReadCaseFile(test::E2eRoot() / "offset_warning_cancel" / "case.txt");
    const std::filesystem::path log = folder.Path() / "log.txt";
    const int code = test::RunBatchProcess(install, "cancel",
                                           "--picture out/plan.pdf " + e2eCase.at("args"), log);
    const std::string text = test::ReadFile(log.string());
    EXPECT_EQ(code, 999 & 0xFF) << text;
    EXPECT_NE(text.find("Stopped at the offset warning"), std::string::npos) << text;
    EXPECT_EQ(text.find("picture"), std::string::npos) << text;
    EXPECT_FALSE(std::filesystem::exists(install / "out/plan.pdf"));
}

// With LD_DEBUG_OUTPUT the loader reports per process, in a file named after its id.
TEST_F(PictureRun, OnlyThePictureProgramLoadsQt) {
    Write();
    const std::string install = folder / "install";
    const std::string command = "cd '" + install + "' && LD_DEBUG=libs LD_DEBUG_OUTPUT='" +
                                (folder / "loader") + "' ORVOSystemRoot='" + install +
                                "' XDG_CONFIG_HOME='" + (folder / "config") + "' '" +
                                (test::BinaryDir() / "kesto-batch").string() +
                                "' --picture out/plan.pdf pallet/pallets.txt 0 0 0 0 1 >'" +
                                (folder / "log.txt") + "' 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << test::ReadFile(folder / "log.txt");
    std::map<std::string, bool> qtByProgram;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        if (entry.path().filename().string().rfind("loader.", 0) != 0)
            continue;
        const std::string report = test::ReadFile(entry.path().string());
        const size_t at = report.find("initialize program: ");
        if (at == std::string::npos)
            continue;
        const std::string program =
            std::filesystem::path(report.substr(at + 20, report.find('\n', at) - at - 20))
                .filename()
                .string();
        qtByProgram[program] = report.find("libQt") != std::string::npos;
    }
    if (qtByProgram.empty())
        GTEST_SKIP() << "the loader reports nothing here";
    ASSERT_EQ(qtByProgram.count("kesto-batch"), 1u);
    ASSERT_EQ(qtByProgram.count("kesto-picture"), 1u);
    EXPECT_FALSE(qtByProgram["kesto-batch"]);
    EXPECT_TRUE(qtByProgram["kesto-picture"]);
}

}  // namespace
}  // namespace kesto
