// The summary pages of the sort sheet: the small boxes and what is in them, the set-aside
// parts, the parts left short with why, the stacks across an offset line with by how much,
// each a table under its heading, going on over further pages.
#include <gtest/gtest.h>

#include <algorithm>

#include "common/PictureJob.h"
#include "common/RecordingCanvasQueries.h"
#include "sheet/SheetTable.h"
#include "sheet/SortSheet.h"

namespace kesto {
namespace {

using test::CutJob;
using test::kPalletBox;
using test::MiniInstallation;
using test::OneStackInstallation;
using test::PictureInstallation;
using test::PictureJob;

// The summary's labels below the header, in drawing order.
std::vector<std::string> Body(const PicturePage& page) {
    std::vector<std::string> texts;
    for (const Primitive& p : test::Labels(page.Drawing)) {
        if (p.Rect.Top >= kSheetBodyTop)
            texts.push_back(p.Text);
    }
    return texts;
}

TEST(SortSheetSummary, TablesOfBoxesSetAsideShortPartsWithWhyAndCrossings) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Sheet();
    ASSERT_EQ(doc.Pages.back().Title, "Summary");
    const std::vector<std::string> expected{
        "Small boxes", "Box", "Process", "Part", "Name", "Pieces", "Box1", "01 CUT", "A003",
        "CLP-3", "20", "Set aside", "Process", "Part", "Name", "Set aside", "Quantity", "02 BEND",
        "A004", "BLK-4", "325", "500", "Parts left short", "Process", "Part", "Name", "Placed",
        "Quantity", "Reason", "02 BEND", "A004", "BLK-4", "175", "500",
        // 762 pixels of 22-pixel text: 58 bytes a line.
        "The stacking height allows 5 per stack where 500 were",
        "needed: piece height 100, limit 500", "Stacks across an offset line", "none"};
    EXPECT_EQ(Body(doc.Pages.back()), expected);
}

TEST(SortSheetSummary, ACrossingNamesItsPalletBlockCornerAndByHowMuch) {
    const MiniInstallation inst = OneStackInstallation();
    // Offset B of 100: the stack standing from the front margin (y 10) reaches 90 past it.
    PictureJob job(inst, " 0 0 0 100 1");
    const PictureDocument doc = job.Sheet();
    const std::vector<std::string> body = Body(doc.Pages.back());
    const auto heading = std::find(body.begin(), body.end(), "Stacks across an offset line");
    ASSERT_NE(heading, body.end());
    const std::vector<std::string> section(heading, body.end());
    EXPECT_EQ(section, (std::vector<std::string>{
                           "Stacks across an offset line", "Process", "Pallet", "Block", "Corner",
                           "Across the line", "01 CUT", "P-01", "1", "lower right",
                           "A001 BRK-1: 90 past the lower offset line of pallet 1"}));
}

TEST(SortSheetSummary, SmallBoxesAreListedBoxByBoxThenProcessByProcess) {
    MiniInstallation inst = PictureInstallation(1);
    inst.Job =
        "#BoxInfo\nPAL,0,1,0,2000,0,2000\nSB1,100,2,0,500,0,500\nSB2,101,2,0,500,0,500\n#End\n"
        "#KouteiInfo\n1,CUT,PAL-A\n2,BEND,PAL-A\n#End\n"
        "#PartsInfo\n"
        "A001,2,Clip,CLIP-1,40,30,11,5,101,0,0,,,1,G02,0000,,0,,K001,1\n"
        "A002,2,Clip,CLIP-2,40,30,11,6,100,0,0,,,1,G02,0000,,0,,K002,1\n"
        "A003,1,Clip,CLIP-3,40,30,11,7,100,0,0,,,1,G02,0000,,0,,K003,1\n"
        "#End\n";
    PictureJob job(inst);
    const PictureDocument doc = job.Sheet();
    ASSERT_EQ(doc.Pages.size(), 1u);
    const std::vector<std::string> body = Body(doc.Pages[0]);
    const std::vector<std::string> boxes(body.begin() + 6, body.begin() + 21);
    EXPECT_EQ(boxes, (std::vector<std::string>{"Box1", "01 CUT", "A003", "CLIP-3", "7", "Box1",
                                               "02 BEND", "A002", "CLIP-2", "6", "Box2", "02 BEND",
                                               "A001", "CLIP-1", "5"}));
    EXPECT_EQ(body[21], "Set aside");
}

// Forty short parts of ten pieces each: the short table runs on to a second page, under its
// heading again.
TEST(SortSheetSummary, ASectionTooLongForAPageGoesOnUnderItsHeadingAgain) {
    MiniInstallation inst = PictureInstallation(1);
    std::string parts;
    for (int i = 1; i <= 40; ++i) {
        parts += "S" + std::to_string(100 + i) + ",1,Slab,SLAB-" + std::to_string(i) +
                 ",900,700,1,10,0,0,0,,,2,G01,0000,,0,,K" + std::to_string(100 + i) + ",100\n";
    }
    inst.Job = CutJob(kPalletBox, parts);
    PictureJob job(inst);
    const PictureDocument doc = job.Sheet();
    size_t summaries = 0;
    size_t rows = 0;
    for (const PicturePage& page : doc.Pages) {
        if (page.Title != "Summary")
            continue;
        ++summaries;
        const std::vector<std::string> body = Body(page);
        // A page goes on under a heading, never with bare rows.
        ASSERT_FALSE(body.empty());
        EXPECT_TRUE(body[0] == "Set aside" || body[0] == "Parts left short" ||
                    body[0] == "Small boxes")
            << body[0];
        for (const std::string& text : body)
            rows += text.rfind("SLAB-", 0) == 0 ? 1 : 0;
    }
    EXPECT_GE(summaries, 2u);
    // Every slab is short (and set aside), once in each table.
    EXPECT_EQ(rows, 80u);
    // Nothing is written below the page's body.
    for (const PicturePage& page : doc.Pages) {
        for (const Primitive& p : page.Drawing.Items())
            EXPECT_LE(p.Rect.Top, kSheetBodyBottom) << page.Title << " " << p.Text;
    }
}

}  // namespace
}  // namespace kesto
