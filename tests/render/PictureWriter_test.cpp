// Painting picture documents into PNG images and PDF pages.
#include "render/PictureWriter.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <filesystem>
#include <string>

#include "common/GuiApplication.h"
#include "common/ImageInk.h"
#include "common/TestFiles.h"
#include "render/FontTable.h"
#include "render/PicturePdf.h"
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
