// The document that carries pictures to the picture program: its file read back as written,
// damaged files refused, and the files a picture is written to.
#include "view/PictureDocument.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "common/PictureDocumentIo.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::ReadBack;
using test::Written;

PictureDocument SmallDocument() {
    PictureDocument doc;
    doc.Fonts[1] = PictureFont{-12, 128, "Noto Sans CJK JP"};
    doc.Fonts[3] = PictureFont{14, 0, ""};
    PicturePage& page = doc.Pages.emplace_back();
    page.Title = "01 CUT line\nbreak";
    page.Width = 300;
    page.Height = 200;
    page.Drawing.FillRectangle({1, 2, 30, 40}, colour::kAreaBackground, colour::kPalletFrame);
    page.Drawing.DrawLabel(LabelMode::AtPoint, "text with blanks", 1, {5, 6}, {5, 6, 300, 30},
                           Rgb{0, 0, 0});
    doc.Pages.push_back(page);
    doc.Pages.back().Title = "";
    return doc;
}

TEST(PictureDocumentFile, TitlesAndFontNamesKeepTheirBlanksAndLoseLineBreaks) {
    const PictureDocument doc = SmallDocument();
    const std::optional<PictureDocument> back = ReadBack(Written(doc));
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(back->Pages[0].Title, "01 CUT line break");
    EXPECT_EQ(back->Pages[1].Title, "");
    EXPECT_EQ(back->Fonts[1].Name, "Noto Sans CJK JP");
    EXPECT_EQ(back->Fonts[1].CharSet, 128);
    EXPECT_EQ(back->Fonts[3].Name, "");
    EXPECT_EQ(back->Pages[0].Drawing.Items(), doc.Pages[0].Drawing.Items());
}

TEST(PictureDocumentFile, EmptyDocumentReadsBack) {
    const std::optional<PictureDocument> back = ReadBack(Written(PictureDocument{}));
    ASSERT_TRUE(back.has_value());
    EXPECT_TRUE(back->Pages.empty());
}

TEST(PictureDocumentFile, DamagedDocumentsAreRejected) {
    const std::string good = Written(SmallDocument());
    ASSERT_TRUE(ReadBack(good).has_value());
    EXPECT_FALSE(ReadBack("").has_value());
    EXPECT_FALSE(ReadBack("something else\n").has_value());
    // Cut short anywhere: before the fonts, in the pages, before the last page's end.
    EXPECT_FALSE(ReadBack(good.substr(0, good.find("font 2"))).has_value());
    EXPECT_FALSE(ReadBack(good.substr(0, good.find("page 300"))).has_value());
    EXPECT_FALSE(ReadBack(good.substr(0, good.rfind("end"))).has_value());
    // More pages announced than follow, something after the last page.
    std::string more = good;
    more.replace(more.find("pages 2"), 7, "pages 3");
    EXPECT_FALSE(ReadBack(more).has_value());
    EXPECT_FALSE(ReadBack(good + "page 1 1 x\n").has_value());
    // A font out of order, a page without size, a size beyond any page.
    std::string font = good;
    font.replace(font.find("font 1"), 6, "font 2");
    EXPECT_FALSE(ReadBack(font).has_value());
    std::string size = good;
    size.replace(size.find("page 300 200"), 12, "page 0 200");
    EXPECT_FALSE(ReadBack(size).has_value());
    size = good;
    size.replace(size.find("page 300 200"), 12, "page 300 99999");
    EXPECT_FALSE(ReadBack(size).has_value());
    size = good;
    size.replace(size.find("page 300 200"), 12, "page 300x200");
    EXPECT_FALSE(ReadBack(size).has_value());
}

TEST(PictureFormat, IsTakenFromTheExtensionInAnyCase) {
    EXPECT_EQ(PictureFormatOf("a/b.pdf"), PictureFormat::Pdf);
    EXPECT_EQ(PictureFormatOf("b.PDF"), PictureFormat::Pdf);
    EXPECT_EQ(PictureFormatOf("dir.x/b.Png"), PictureFormat::Png);
    EXPECT_FALSE(PictureFormatOf("b.jpg").has_value());
    EXPECT_FALSE(PictureFormatOf("pdf").has_value());
    EXPECT_FALSE(PictureFormatOf("dir.png/").has_value());
}

TEST(PictureFiles, PdfIsOneFilePngOneImagePerPageNumberedFromOne) {
    EXPECT_EQ(PictureFiles("out/plan.pdf", 4), (std::vector<std::string>{"out/plan.pdf"}));
    EXPECT_EQ(PictureFiles("out/plan.png", 3),
              (std::vector<std::string>{"out/plan-01.png", "out/plan-02.png", "out/plan-03.png"}));
    EXPECT_EQ(PictureFiles("x.y/plan.PNG", 100).back(), "x.y/plan-100.PNG");
    EXPECT_TRUE(PictureFiles("plan.png", 0).empty());
}

}  // namespace
}  // namespace kesto
