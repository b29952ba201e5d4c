// Painting picture documents into PNG images and PDF pages.
#include "render/PictureWriter.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <filesystem>
#include <string>

#include "common/GuiApplication.h"
#include "common/ImageInk.h"
#include "common/PdfText.h"
#include "common/PictureJob.h"
#include "common/PicturePdf.h"
#include "common/TestFiles.h"
#include "render/FontTable.h"
#include "sheet/SheetTable.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::TempFolder;

Rgb PixelAt(const QImage& image, int x, int y) {
    const QColor c = image.pixelColor(x, y);
    return Rgb{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()),
               static_cast<uint8_t>(c.blue())};
}

// Pages of 200 x 100 pixels: a background rectangle at (10, 10)-(60, 50), a label.
PictureDocument Document(size_t pages) {
    PictureDocument doc;
    doc.Fonts[1] = PictureFont{14, 0, "DejaVu Sans"};
    for (size_t i = 0; i < pages; ++i) {
        PicturePage& page = doc.Pages.emplace_back();
        page.Title = "page " + std::to_string(i + 1);
        page.Width = 200;
        page.Height = 100;
        page.Drawing.FillRectangle({10, 10, 60, 50}, colour::kAreaBackground, colour::kPalletFrame);
        page.Drawing.DrawLabel(LabelMode::AtPoint, page.Title, 1, {100, 60}, {100, 60, 200, 80},
                               Rgb{0, 0, 0});
    }
    return doc;
}

TEST(PictureFonts, AreTheDocumentsFonts) {
    test::EnsureGuiApplication();
    PictureDocument doc;
    doc.Fonts[2] = PictureFont{-16, 0, "DejaVu Sans"};
    FontTable fonts;
    BuildPictureFonts(doc, fonts);
    EXPECT_FALSE(fonts.Defined(1));
    ASSERT_TRUE(fonts.Defined(2));
    EXPECT_EQ(fonts.PixelHeight(2), 16);
}

TEST(PictureWriter, PngGivesOneImagePerPageAtThePageSize) {
    test::EnsureGuiApplication();
    TempFolder folder;
    const PictureWriteResult result = WritePictures(Document(2), folder / "plan.png");
    ASSERT_EQ(result.Error, "");
    ASSERT_EQ(result.Files,
              (std::vector<std::string>{folder / "plan-01.png", folder / "plan-02.png"}));
    for (const std::string& file : result.Files) {
        QImage image;
        ASSERT_TRUE(image.load(QString::fromStdString(file)));
        EXPECT_EQ(image.width(), 200);
        EXPECT_EQ(image.height(), 100);
        EXPECT_EQ(PixelAt(image, 30, 30), colour::kAreaBackground);
        EXPECT_EQ(PixelAt(image, 10, 10), colour::kPalletFrame);  // the outline
        EXPECT_EQ(PixelAt(image, 59, 49), colour::kPalletFrame);
        EXPECT_EQ(PixelAt(image, 60, 50), (Rgb{255, 255, 255}));  // the page around it
        EXPECT_EQ(PixelAt(image, 5, 90), (Rgb{255, 255, 255}));
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "plan.png"));
}

TEST(PictureWriter, PdfGivesOnePagePerDocumentPageEachWithDrawing) {
    test::EnsureGuiApplication();
    TempFolder folder;
    const PictureWriteResult result = WritePictures(Document(3), folder / "plan.pdf");
    ASSERT_EQ(result.Error, "");
    EXPECT_EQ(result.Files, (std::vector<std::string>{folder / "plan.pdf"}));
    const test::PdfPages pdf(folder / "plan.pdf");
    EXPECT_EQ(pdf.ContentLengths.size(), 3u);
    for (const size_t length : pdf.ContentLengths)
        EXPECT_GT(length, 50u);
}

// One page of 300 x 80 pixels with one label in a font of character set 128, as PNG.
QImage LabelPicture(const std::string& label, const TempFolder& folder, const std::string& name) {
    PictureDocument doc;
    doc.Fonts[1] = PictureFont{-32, 128, "Noto Sans CJK JP"};
    PicturePage& page = doc.Pages.emplace_back();
    page.Width = 300;
    page.Height = 80;
    page.Drawing.DrawLabel(LabelMode::AtPoint, label, 1, {20, 20}, {20, 20, 280, 70}, Rgb{0, 0, 0});
    const PictureWriteResult result = WritePictures(doc, folder / name);
    QImage image;
    EXPECT_EQ(result.Error, "");
    if (result.Files.size() == 1)
        image.load(QString::fromStdString(result.Files.front()));
    return image.convertToFormat(QImage::Format_RGB32);
}

TEST(PictureWriter, ShiftJisLabelIsDrawnInJapaneseGlyphs) {
    test::EnsureGuiApplication();
    TempFolder folder;
    // "部品" as the machine's tools write it; the same in UTF-8; question marks; and U+0378,
    // which no font has, so it shows the missing-glyph box.
    const QImage shiftJis = LabelPicture("\x95\x94\x95\x69", folder, "sjis.png");
    const QImage utf8 = LabelPicture("\xE9\x83\xA8\xE5\x93\x81", folder, "utf8.png");
    const QImage questions = LabelPicture("??", folder, "questions.png");
    const QImage boxes = LabelPicture("\xCD\xB8\xCD\xB8", folder, "boxes.png");
    ASSERT_FALSE(shiftJis.isNull());
    EXPECT_GT(test::DarkPixels(shiftJis), 100);
    EXPECT_EQ(shiftJis, utf8);
    EXPECT_NE(shiftJis, questions);
    EXPECT_NE(shiftJis, boxes);
}

TEST(PictureWriter, UnwritableFileIsAnError) {
    test::EnsureGuiApplication();
    TempFolder folder;
    const std::string missing = folder / "no-such-folder/plan";
    EXPECT_NE(WritePictures(Document(1), missing + ".pdf").Error, "");
    EXPECT_NE(WritePictures(Document(1), missing + ".png").Error, "");
    EXPECT_NE(WritePictures(Document(1), folder / "plan.jpg").Error, "");
}

// A page painted at its own size, as a PNG image would be.
QImage Painted(const PictureDocument& doc, size_t page) {
    FontTable fonts;
    BuildPictureFonts(doc, fonts);
    const PicturePage& p = doc.Pages[page];
    QImage image(p.Width, p.Height, QImage::Format_RGB32);
    QPainter painter(&image);
    PaintPicturePage(p, fonts, painter, p.Width, p.Height);
    return image;
}

// The first rectangle of a page filled in fill.
IntRect FirstFilled(const PicturePage& page, Rgb fill) {
    for (const Primitive& p : page.Drawing.Items()) {
        if (p.Kind == PrimitiveKind::Rectangle && p.Fill == fill)
            return p.Rect;
    }
    ADD_FAILURE() << "nothing filled in " << int(fill.R) << "," << int(fill.G) << ","
                  << int(fill.B);
    return IntRect{};
}

// The same job on the screen's pictures and on the sort sheet: the screen's navy area and
// white-edged stacks, the sheet's white paper, light stacks with dark outlines, a dark rule.
TEST(PictureWriter, ThePrintStyleIsAWhitePageWithDarkOutlinesTheScreensIsNot) {
    test::EnsureGuiApplication();
    test::PictureJob job(test::PictureInstallation(1));
    const PictureDocument screen = job.Build();
    const PictureDocument sheet = job.Sheet();

    const QImage onScreen = Painted(screen, 0);
    const IntRect area = FirstFilled(screen.Pages[0], colour::kAreaBackground);
    EXPECT_EQ(PixelAt(onScreen, area.Left + 3, area.Bottom - 3), colour::kAreaBackground);
    const IntRect screenStack = FirstFilled(screen.Pages[0], colour::kPartNormal);
    EXPECT_EQ(PixelAt(onScreen, screenStack.Left, screenStack.Top), colour::kPartPen);
    EXPECT_EQ(PixelAt(onScreen, screenStack.Left + 3, screenStack.Top + 3), colour::kPartNormal);

    const QImage onPaper = Painted(sheet, 0);
    const colour::Palette& paper = colour::kPrintPalette;
    // Paper wherever nothing is drawn: the margins, below the drawing, the legend's right.
    EXPECT_EQ(PixelAt(onPaper, 5, 5), (Rgb{255, 255, 255}));
    EXPECT_EQ(PixelAt(onPaper, 100, 1150), (Rgb{255, 255, 255}));
    const IntRect frame = FirstFilled(sheet.Pages[0], paper.PalletFrame);
    EXPECT_EQ(PixelAt(onPaper, frame.Left, frame.Top + 40), paper.PalletFramePen);
    const IntRect stack = FirstFilled(sheet.Pages[0], paper.PartNormal);
    EXPECT_EQ(PixelAt(onPaper, stack.Left, stack.Top + 2), paper.PartPen);
    EXPECT_EQ(PixelAt(onPaper, stack.Left + 3, stack.Top + 3), paper.PartNormal);
    // The header's rule is dark across the page.
    EXPECT_EQ(PixelAt(onPaper, 842, 86), sheetcolour::kRule);
    // Dark enough to see in black and white: the outlines; light enough to read on: the fills.
    for (const Rgb dark : {paper.PartPen, paper.PalletFramePen, sheetcolour::kRule})
        EXPECT_LT(dark.R + dark.G + dark.B, 3 * 60);
    for (const Rgb light : {paper.PartNormal, paper.PalletFrame, sheetcolour::kShadedRow})
        EXPECT_GT(light.R + light.G + light.B, 3 * 200);
}

TEST(PictureWriter, ADocumentGoesOntoAnyPagedDeviceAPageEach) {
    test::EnsureGuiApplication();
    TempFolder folder;
    test::PictureJob job(test::PictureInstallation(1));
    const PictureDocument sheet = job.Sheet();
    const std::string path = folder / "device.pdf";
    {
        QPdfWriter writer(QString::fromStdString(path));
        writer.setPageLayout(PicturePageLayout());
        EXPECT_EQ(PaintPictureDocument(sheet, writer), "");
    }
    EXPECT_EQ(test::PdfPages(path).ContentLengths.size(), sheet.Pages.size());
    const std::optional<std::vector<std::string>> pages = test::PdfPageTexts(path);
    if (!pages)
        GTEST_SKIP() << "pdftotext is not installed (poppler-utils)";
    ASSERT_EQ(pages->size(), sheet.Pages.size());
    EXPECT_NE(test::OneBlank(pages->front()).find("Page 1 of 3"), std::string::npos);
    EXPECT_NE(test::OneBlank(pages->back()).find("Summary"), std::string::npos);
}

TEST(PictureWriter, PageIsScaledToFitTheDevice) {
    test::EnsureGuiApplication();
    FontTable fonts;
    BuildPictureFonts(Document(1), fonts);
    QImage image(400, 400, QImage::Format_RGB32);
    {
        QPainter painter(&image);
        PaintPicturePage(Document(1).Pages[0], fonts, painter, 400, 400);
    }
    // Twice the page's size, centred vertically: (20, 20)-(120, 100) moved down by 100.
    EXPECT_EQ(PixelAt(image, 70, 160), colour::kAreaBackground);
    EXPECT_EQ(PixelAt(image, 70, 110), (Rgb{255, 255, 255}));
    EXPECT_EQ(PixelAt(image, 70, 50), (Rgb{255, 255, 255}));
}

}  // namespace
}  // namespace kesto
