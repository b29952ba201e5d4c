// The sort sheet of a placed job: a page per pallet holding stacks, the header on each, the
// table of the pallet's stacks with the operator's changes, the stacks numbered in the
// drawing in the print palette, tables running on over further pages, the fonts.
#include "sheet/SortSheet.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "common/PictureJob.h"
#include "common/RecordingCanvasQueries.h"
#include "sheet/SheetTable.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::CutJob;
using test::kPalletBox;
using test::kSmallBox;
using test::MiniInstallation;
using test::PictureInstallation;
using test::PictureJob;

std::vector<std::string> Texts(const PicturePage& page) {
    return test::LabelTexts(page.Drawing);
}

bool HasText(const PicturePage& page, const std::string& text) {
    const std::vector<std::string> texts = Texts(page);
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// The labels of a page in one font slot.
std::vector<Primitive> InFont(const PicturePage& page, const SheetFont& font) {
    std::vector<Primitive> found;
    for (const Primitive& p : test::Labels(page.Drawing)) {
        if (p.FontSlot == font.Slot)
            found.push_back(p);
    }
    return found;
}

// The stacks' numbers in the drawing: centred labels in the palette's text colour (the
// cells' numbers are grey).
std::vector<Primitive> Tags(const PicturePage& page) {
    std::vector<Primitive> found;
    for (const Primitive& p : test::Labels(page.Drawing)) {
        if (p.Mode == LabelMode::Centred && p.Pen == colour::kPrintPalette.LabelText)
            found.push_back(p);
    }
    return found;
}

// The texts of the table's row that starts with number n (the row's cells in order).
std::vector<std::string> Row(const PicturePage& page, const std::string& n) {
    const std::vector<std::string> texts = Texts(page);
    // The table's cells follow the column titles; the row's number is its first cell.
    const auto titles = std::find(texts.begin(), texts.end(), "Changes");
    const auto at = std::find(titles, texts.end(), n);
    if (at == texts.end())
        return {};
    std::vector<std::string> row;
    for (auto it = at; it != texts.end() && row.size() < 7; ++it)
        row.push_back(*it);
    return row;
}

TEST(SortSheet, APagePerPalletHoldingStacksThenTheSummary) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Sheet();
    // CUT has its brackets on pallet 1; BEND its plate and blocks on all four; the summary.
    ASSERT_EQ(doc.Pages.size(), 6u);
    const std::vector<std::string> titles{"01 CUT P-01",  "02 BEND P-01", "02 BEND P-02",
                                          "02 BEND P-03", "02 BEND P-04", "Summary"};
    for (size_t i = 0; i < titles.size(); ++i) {
        EXPECT_EQ(doc.Pages[i].Title, titles[i]);
        EXPECT_EQ(doc.Pages[i].Width, 1684);
        EXPECT_EQ(doc.Pages[i].Height, 1190);
        EXPECT_TRUE(HasText(doc.Pages[i], "job.txt")) << i;
        EXPECT_TRUE(HasText(doc.Pages[i], "2025-03-04 05:06")) << i;
        EXPECT_TRUE(HasText(doc.Pages[i], "Page " + std::to_string(i + 1) + " of 6")) << i;
    }
    EXPECT_TRUE(HasText(doc.Pages[0], "01 CUT"));
    EXPECT_TRUE(HasText(doc.Pages[0], "P-01"));
    EXPECT_TRUE(HasText(doc.Pages[3], "02 BEND"));
    EXPECT_TRUE(HasText(doc.Pages[3], "P-03"));
}

TEST(SortSheet, ThePalletsTableListsItsStacksWithTheOperatorsChanges) {
    PictureJob job(PictureInstallation(4));
    // The two bracket stacks, as the operator left them.
    std::vector<HaichiInfo*> brackets;
    for (HaichiInfo& h : job.App().HaichiList) {
        if (h.Part->Code == "A001")
            brackets.push_back(&h);
    }
    ASSERT_EQ(brackets.size(), 2u);
    brackets[0]->Edits = kEditMoved;
    brackets[1]->Edits = kEditRestacked | kEditReturned;
    const PictureDocument doc = job.Sheet();
    const PicturePage& page = doc.Pages[0];
    for (const char* title : {"No.", "Part", "Name", "Pieces", "Block", "Corner", "Changes"})
        EXPECT_TRUE(HasText(page, title)) << title;
    // Four brackets to a stack, each stack in a block of its own, from the start corner on.
    EXPECT_EQ(Row(page, "1"),
              (std::vector<std::string>{"1", "A001", "BRK-1", "4", "1", "lower right", "M"}));
    EXPECT_EQ(Row(page, "2"),
              (std::vector<std::string>{"2", "A001", "BRK-1", "4", "2", "lower right", "R B"}));
    EXPECT_TRUE(HasText(page, "Total: 2 stacks, 8 pieces"));
    // The legend of the marks.
    EXPECT_TRUE(HasText(page, "moved by the operator"));
    EXPECT_TRUE(HasText(page, "stacked again at the operator's sheet count"));
    EXPECT_TRUE(HasText(page, "brought back from the set-aside list"));
}

TEST(SortSheet, EachStackIsNumberedInTheDrawingAfterItsRowInThePrintPalette) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Sheet();
    const PicturePage& page = doc.Pages[1];  // BEND on pallet 1: the plate and eight blocks
    std::vector<std::string> tags;
    for (const Primitive& p : Tags(page)) {
        tags.push_back(p.Text);
        // Blocks of 290 x 190 are drawn large enough for the large numbers.
        EXPECT_EQ(p.FontSlot, sheetfont::kTag.Slot);
    }
    EXPECT_EQ(tags, (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
    // Every stack is filled in the print palette's light colour with its dark outline; the
    // screen's colours are nowhere on the page.
    const std::vector<IntRect> stacks =
        test::RectsFilled(page.Drawing, colour::kPrintPalette.PartNormal);
    EXPECT_EQ(stacks.size(), 9u);
    for (const Primitive& p : test::Rectangles(page.Drawing)) {
        EXPECT_NE(p.Fill, colour::kAreaBackground);
        EXPECT_NE(p.Fill, colour::kPalletFrame);
        EXPECT_NE(p.Fill, colour::kPartNormal);
        if (p.Fill == colour::kPrintPalette.PartNormal) {
            EXPECT_EQ(p.Pen, colour::kPrintPalette.PartPen);
        }
    }
    // Each number stands on its stack, within the drawing left of the table.
    for (const Primitive& tag : InFont(page, sheetfont::kTag)) {
        const int32_t cx = (tag.Rect.Left + tag.Rect.Right) / 2;
        const int32_t cy = tag.Rect.Top + sheetfont::kTag.Height / 2;
        EXPECT_TRUE(std::any_of(stacks.begin(), stacks.end(), [&](const IntRect& r) {
            return r.Left <= cx && cx <= r.Right && r.Top <= cy && cy <= r.Bottom;
        })) << tag.Text;
        EXPECT_LT(tag.Rect.Right, 776);
    }
}

TEST(SortSheet, CellsAreNumberedWhereTheirStacksLeaveRoom) {
    PictureJob job(PictureInstallation(4));
    const PictureDocument doc = job.Sheet();
    // CUT's pallet 1: the brackets stand in blocks 1 and 2, the other seven are empty.
    std::vector<std::string> numbers;
    for (const Primitive& p : InFont(doc.Pages[0], sheetfont::kSmall)) {
        if (p.Mode == LabelMode::Centred)
            numbers.push_back(p.Text);
    }
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(numbers, (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
    // BEND's pallet 2: a block of 290 x 190 fills every cell of 300 x 200.
    for (const Primitive& p : InFont(doc.Pages[2], sheetfont::kSmall))
        EXPECT_NE(p.Mode, LabelMode::Centred) << p.Text;
}

// A stack's corner is where it stands in its block: a moved stack keeps its record's corner.
TEST(SortSheet, AStacksCornerIsTheOneOfItsBlockItStandsNearest) {
    CKestoApp app;
    BlockInfo block;
    block.MinX = 100;
    block.MinY = 50;
    block.MaxX = 500;
    block.MaxY = 350;
    app.Blocks.AddBlock(block);
    PartsInfo part;
    part.SizeX = 100;
    part.SizeY = 80;
    HaichiInfo stack;
    stack.Part = &part;
    stack.BlockIndex = 0;
    stack.Corner = kCornerMaxMax;  // as placed, before it was moved
    const auto at = [&](double x, double y) {
        stack.X = x;  // the right edge
        stack.Y = y;  // the front edge
        return StandingCorner(app, stack);
    };
    EXPECT_EQ(at(200, 50), kCornerMinMin);
    EXPECT_EQ(at(200, 270), kCornerMinMax);
    EXPECT_EQ(at(500, 50), kCornerMaxMin);
    EXPECT_EQ(at(500, 270), kCornerMaxMax);
    // In the middle: left and front win.
    EXPECT_EQ(at(350, 160), kCornerMinMin);
    EXPECT_EQ(at(351, 161), kCornerMaxMax);
    stack.BlockIndex = 1;
    EXPECT_EQ(StandingCorner(app, stack), 0);
}

// Two cells on pallet 1 of process 1 and one on pallet 2: the stacks of pallet 1 come by
// cell number, then by the corner each stands in, then in list order; the others are left out.
TEST(SortSheet, APalletsStacksAreWalkedByCellThenCornerThenListOrder) {
    CKestoApp app;
    const auto cell = [&](int32_t pallet, double minX) {
        BlockInfo block;
        block.KouteiNo = 1;
        block.PalletNo = pallet;
        block.MinX = minX;
        block.MinY = 0;
        block.MaxX = minX + 400;
        block.MaxY = 300;
        app.Blocks.AddBlock(block);
    };
    cell(1, 0);
    cell(1, 500);
    cell(2, 0);
    PartsInfo part;
    part.SizeX = 100;
    part.SizeY = 80;
    // Each stack by its right and front edges.
    const auto stack = [&](int32_t blockIndex, double x, double y) -> const HaichiInfo* {
        HaichiInfo* h = app.AddHaichiInfo();
        h->Part = &part;
        h->BlockIndex = blockIndex;
        h->X = x;
        h->Y = y;
        return h;
    };
    const HaichiInfo* secondCellFront = stack(1, 600, 0);
    const HaichiInfo* firstCellBack = stack(0, 100, 220);
    const HaichiInfo* otherPallet = stack(2, 100, 0);
    const HaichiInfo* firstCellFront = stack(0, 100, 0);
    const HaichiInfo* firstCellFrontToo = stack(0, 100, 0);
    const std::vector<const HaichiInfo*> order = SheetOrder(app, 1, 1);
    EXPECT_EQ(order, (std::vector<const HaichiInfo*>{firstCellFront, firstCellFrontToo,
                                                     firstCellBack, secondCellFront}));
    EXPECT_EQ(SheetOrder(app, 1, 2), (std::vector<const HaichiInfo*>{otherPallet}));
    EXPECT_TRUE(SheetOrder(app, 2, 1).empty());
}

TEST(SortSheet, BlocksAreNumberedPerPalletFromTheStartCorner) {
    PictureJob job(PictureInstallation(2));
    const std::vector<int32_t> numbers = BlockNumbers(job.App());
    // Two processes on two pallets of nine cells each.
    ASSERT_EQ(numbers.size(), 36u);
    for (size_t e = 0; e < numbers.size(); ++e)
        EXPECT_EQ(numbers[e], static_cast<int32_t>(e % 9) + 1) << e;
}

// Nine parts of four clips, one clip a stack: each part takes a cell, a stack to a corner.
MiniInstallation ManyStacks() {
    MiniInstallation inst = PictureInstallation(1);
    std::string parts;
    for (int i = 1; i <= 9; ++i) {
        parts += "C" + std::to_string(100 + i) + ",1,Clip,CLIP-" + std::to_string(i) +
                 ",40,30,1,4,0,0,1,,,1,G02,0000,,0,,K" + std::to_string(100 + i) + ",1\n";
    }
    inst.Job = CutJob(kPalletBox, parts);
    return inst;
}

TEST(SortSheet, ALongTableRunsOnOverPagesOfTheSameHeaderInTwoColumns) {
    PictureJob job(ManyStacks());
    ASSERT_EQ(job.App().HaichiList.size(), 36u);
    const PictureDocument doc = job.Sheet();
    // The pallet's two pages and the summary.
    ASSERT_EQ(doc.Pages.size(), 3u);
    EXPECT_EQ(doc.Pages[0].Title, "01 CUT P-01");
    EXPECT_EQ(doc.Pages[1].Title, "01 CUT P-01");
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_TRUE(HasText(doc.Pages[i], "01 CUT"));
        EXPECT_TRUE(HasText(doc.Pages[i], "P-01"));
        EXPECT_TRUE(HasText(doc.Pages[i], "Page " + std::to_string(i + 1) + " of 3"));
        EXPECT_TRUE(HasText(doc.Pages[i], "moved by the operator"));
    }
    // The first page: the drawing and 23 rows; the second: the other 13 in its left column,
    // the titles over it, no drawing; the total after the last row.
    const std::vector<Primitive> tags = Tags(doc.Pages[0]);
    ASSERT_EQ(tags.size(), 36u);
    // A clip of 40 x 30 is too small for any but the smallest numbers.
    EXPECT_EQ(tags[35].FontSlot, sheetfont::kSmall.Slot);
    EXPECT_TRUE(HasText(doc.Pages[0], "23"));
    EXPECT_FALSE(Row(doc.Pages[0], "24").size() == 7);
    EXPECT_TRUE(Tags(doc.Pages[1]).empty());
    EXPECT_EQ(Row(doc.Pages[1], "24").size(), 7u);
    EXPECT_EQ(Row(doc.Pages[1], "36").size(), 7u);
    EXPECT_FALSE(HasText(doc.Pages[0], "Total: 36 stacks, 36 pieces"));
    EXPECT_TRUE(HasText(doc.Pages[1], "Total: 36 stacks, 36 pieces"));
    const std::vector<Primitive> rules = test::Lines(doc.Pages[1].Drawing);
    // The header's rule and the table's two.
    EXPECT_EQ(rules.size(), 3u);
}

TEST(SortSheet, APalletMuchWiderThanDeepIsDrawnAcrossThePageAboveItsTable) {
    MiniInstallation inst = PictureInstallation(1);
    inst.Pallets = "P1,PAL-A,0,0,3000,700,500,10,10,300,200,10,10,3,3,5,5,Wide\nB1\nB2\n";
    PictureJob job(inst);
    const PictureDocument doc = job.Sheet();
    const PicturePage& page = doc.Pages[0];
    const std::vector<IntRect> frames =
        test::RectsFilled(page.Drawing, colour::kPrintPalette.PalletFrame);
    ASSERT_EQ(frames.size(), 1u);
    // Across the page's width; the table's titles below it at the left margin.
    EXPECT_GT(frames[0].Right - frames[0].Left, 1400);
    const std::vector<IntRect> band = test::RectsFilled(page.Drawing, sheetcolour::kTitleBand);
    ASSERT_EQ(band.size(), 1u);
    EXPECT_EQ(band[0].Left, 28);
    EXPECT_GT(band[0].Top, frames[0].Bottom);
    EXPECT_EQ(band[0].Right, 1684 - 28);
}

TEST(SortSheet, APalletOfOrdinaryShapeIsDrawnBesideItsTable) {
    PictureJob job(PictureInstallation(1));
    const PictureDocument doc = job.Sheet();
    const PicturePage& page = doc.Pages[0];
    const std::vector<IntRect> frames =
        test::RectsFilled(page.Drawing, colour::kPrintPalette.PalletFrame);
    ASSERT_EQ(frames.size(), 1u);
    const std::vector<IntRect> band = test::RectsFilled(page.Drawing, sheetcolour::kTitleBand);
    ASSERT_EQ(band.size(), 1u);
    EXPECT_LT(frames[0].Right, band[0].Left);
    EXPECT_EQ(band[0].Top, kSheetBodyTop);
    // The drawing stands at the top of the page's body, not in the middle of it.
    EXPECT_LT(frames[0].Top, kSheetBodyTop + 100);
}

TEST(SortSheet, TheSheetsFontsAreInTheFaceOfTheSettingsLabelFont) {
    PictureJob job(PictureInstallation(1));
    const PictureDocument doc = job.Sheet();
    // The settings' own fonts stay in slots 0 to 4.
    EXPECT_EQ(doc.Fonts[1].Height, -12);
    EXPECT_EQ(doc.Fonts[4].Height, 18);
    // L-SMALLBOX is font 1: "Sans", character set 0.
    for (const SheetFont& font : {sheetfont::kText, sheetfont::kBold, sheetfont::kSmall,
                                  sheetfont::kHeading, sheetfont::kTag}) {
        const PictureFont& f = doc.Fonts[static_cast<size_t>(font.Slot)];
        EXPECT_EQ(f.Height, font.Height);
        EXPECT_EQ(f.Name, "Sans");
        EXPECT_EQ(f.CharSet, 0);
    }
    EXPECT_FALSE(doc.Fonts[static_cast<size_t>(sheetfont::kText.Slot)].Bold);
    EXPECT_TRUE(doc.Fonts[static_cast<size_t>(sheetfont::kBold.Slot)].Bold);
    EXPECT_TRUE(doc.Fonts[static_cast<size_t>(sheetfont::kTag.Slot)].Bold);
}

TEST(SortSheet, AJapaneseInstallationPrintsItsOwnWordsInItsOwnFace) {
    MiniInstallation inst = PictureInstallation(1);
    // "工程" and "ページ" in Shift_JIS; font 1 asks for the Japanese character set.
    inst.Settings.replace(inst.Settings.find("FontSet1=-12,0,0,0,Sans"), 23,
                          "FontSet1=-12,0,0,128,Gothic");
    inst.Settings +=
        "[MainDlg]\nPR-PROCESS=1,\"\x8D\x48\x92\xF6\"\nPR-PAGE=1,\"\x83\x79\x81\x5B\x83\x57\"\n"
        "PR-OF=1,\"/\"\n";
    PictureJob job(inst);
    const PictureDocument doc = job.Sheet();
    ASSERT_FALSE(doc.Pages.empty());
    EXPECT_TRUE(HasText(doc.Pages[0], "\x8D\x48\x92\xF6"));
    EXPECT_TRUE(
        HasText(doc.Pages[0], "\x83\x79\x81\x5B\x83\x57 1 / " + std::to_string(doc.Pages.size())));
    EXPECT_EQ(doc.Fonts[static_cast<size_t>(sheetfont::kText.Slot)].CharSet, 128);
    EXPECT_EQ(doc.Fonts[static_cast<size_t>(sheetfont::kText.Slot)].Name, "Gothic");
}

TEST(SortSheet, AJobWithoutStacksIsOnlyItsSummary) {
    MiniInstallation inst = PictureInstallation(1);
    inst.Job = CutJob(std::string(kPalletBox) + kSmallBox,
                      "A003,1,Clip,CLP-3,40,30,11,20,100,0,0,,,1,G02,0000,,0,,K003,1\n");
    PictureJob job(inst);
    const PictureDocument doc = job.Sheet();
    ASSERT_EQ(doc.Pages.size(), 1u);
    EXPECT_EQ(doc.Pages[0].Title, "Summary");
    EXPECT_TRUE(HasText(doc.Pages[0], "Page 1 of 1"));
}

}  // namespace
}  // namespace kesto
