// The sort sheet's tables: long texts broken into lines, the titles, the rows with every other
// one shaded, and a table cut where a page ends.
#include "sheet/SheetTable.h"

#include <gtest/gtest.h>

#include "common/RecordingCanvasQueries.h"
#include "view/DisplayList.h"

namespace kesto {
namespace {

// At 16 pixels a byte is counted 10 wide: a line of 100 pixels takes 10 bytes.
constexpr int32_t kFont = 16;

TEST(WrapText, BreaksAtBlanksAndCutsTheLastLine) {
    EXPECT_EQ(WrapText("short", 100, kFont, 3), (std::vector<std::string>{"short"}));
    EXPECT_EQ(WrapText("one two three four five six", 100, kFont, 3),
              (std::vector<std::string>{"one two", "three four", "five six"}));
    EXPECT_EQ(WrapText("one two three four five six seven", 100, kFont, 2),
              (std::vector<std::string>{"one two", "three four"}));
    // One word longer than a line is broken inside it.
    EXPECT_EQ(WrapText("abcdefghijklmnop", 100, kFont, 3),
              (std::vector<std::string>{"abcdefghij", "klmnop"}));
    EXPECT_TRUE(WrapText("", 100, kFont, 3).empty());
}

TEST(WrapText, NeverBreaksInsideACharacter) {
    // Six Shift_JIS characters ("部品" three times) of two bytes: five to a line of ten bytes.
    const std::string sjis = "\x95\x94\x95\x69\x95\x94\x95\x69\x95\x94\x95\x69";
    const std::vector<std::string> lines = WrapText(sjis, 110, kFont, 3);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], sjis.substr(0, 10));
    EXPECT_EQ(lines[1], sjis.substr(10));
    // UTF-8 "部" is three bytes: three to a line of ten.
    const std::string utf8 = "\xE9\x83\xA8\xE9\x83\xA8\xE9\x83\xA8\xE9\x83\xA8";
    EXPECT_EQ(WrapText(utf8, 100, kFont, 3),
              (std::vector<std::string>{utf8.substr(0, 9), utf8.substr(9)}));
}

SheetTable Sample() {
    SheetTable table(
        {{"No.", 60, CellAlign::Right}, {"Name", 200}, {"Why", 200, CellAlign::Left, true}});
    table.AddRow({"1", "Bracket", "short"});
    table.AddRow({"2", "A name far too long for its column of two hundred pixels",
                  "one two three four five six seven eight nine ten eleven twelve"});
    table.AddRow({"3"});
    return table;
}

TEST(SheetTable, CellsOfOneLineKeepTheirTextAndWrappingCellsRunOn) {
    const SheetTable table = Sample();
    ASSERT_EQ(table.Rows(), 3u);
    EXPECT_EQ(table.Width(), 460);
    // The painter ends a long name at its column's edge.
    EXPECT_EQ(
        table.Lines(1, 1),
        (std::vector<std::string>{"A name far too long for its column of two hundred pixels"}));
    // 184 pixels of 22-pixel text are 14 bytes a line, three lines at most.
    EXPECT_EQ(table.Lines(1, 2),
              (std::vector<std::string>{"one two three", "four five six", "seven eight ni"}));
    EXPECT_EQ(table.Lines(2, 1), (std::vector<std::string>{""}));
    EXPECT_TRUE(table.Lines(2, 2).empty());
    // Lines of 26 pixels, 6 above and below.
    EXPECT_EQ(table.RowHeight(0), 38);
    EXPECT_EQ(table.RowHeight(1), 3 * 26 + 12);
    EXPECT_EQ(table.TitleHeight(), 38);
}

TEST(SheetTable, DrawsTitlesRowsAndShadesEveryOtherRow) {
    const SheetTable table = Sample();
    DisplayList page;
    const SheetTable::Drawn drawn = table.Draw(page, 100, 200, 1000, 0);
    EXPECT_EQ(drawn.Next, 3u);
    // Titles 38, rows 38, 90 and 38; the closing rule's width below.
    EXPECT_EQ(drawn.Bottom, 200 + 38 + 38 + 90 + 38 + 2);
    const std::vector<Primitive> labels = test::Labels(page);
    ASSERT_GE(labels.size(), 3u);
    EXPECT_EQ(labels[0].Text, "No.");
    EXPECT_EQ(labels[0].Mode, LabelMode::Right);
    EXPECT_EQ(labels[0].FontSlot, sheetfont::kBold.Slot);
    EXPECT_EQ(labels[0].Rect, (IntRect{108, 206, 152, 234}));
    EXPECT_EQ(labels[1].Text, "Name");
    EXPECT_EQ(labels[1].Mode, LabelMode::Left);
    EXPECT_EQ(labels[1].Rect.Left, 168);
    EXPECT_EQ(test::LabelTexts(page),
              (std::vector<std::string>{"No.", "Name", "Why", "1", "Bracket", "short", "2",
                                        "A name far too long for its column of two hundred pixels",
                                        "one two three", "four five six", "seven eight ni", "3"}));
    // The rows' text in the table's font, the third line of row 2 two lines below its first.
    EXPECT_EQ(labels[3].FontSlot, sheetfont::kText.Slot);
    EXPECT_EQ(labels[10].Rect.Top, 200 + 38 + 38 + 6 + 2 * 26);
    // The title band, then the second row shaded, not the first or third.
    EXPECT_EQ(test::RectsFilled(page, sheetcolour::kTitleBand),
              (std::vector<IntRect>{{100, 200, 560, 238}}));
    EXPECT_EQ(test::RectsFilled(page, sheetcolour::kShadedRow),
              (std::vector<IntRect>{{100, 276, 560, 366}}));
    // Rules under the titles and the last row.
    const std::vector<Primitive> rules = test::Lines(page);
    ASSERT_EQ(rules.size(), 2u);
    EXPECT_EQ(rules[0].A, (IntPoint{100, 238}));
    EXPECT_EQ(rules[1].B, (IntPoint{560, 404}));
}

TEST(SheetTable, StopsWhereThePageEndsAndGoesOnFromThere) {
    const SheetTable table = Sample();
    DisplayList first;
    // Room for the titles and the first row only.
    const SheetTable::Drawn drawn = table.Draw(first, 0, 0, 100, 0);
    EXPECT_EQ(drawn.Next, 1u);
    DisplayList second;
    const SheetTable::Drawn rest = table.Draw(second, 0, 0, 1000, drawn.Next);
    EXPECT_EQ(rest.Next, 3u);
    // Each page has the titles again; the first row of a page is never shaded.
    EXPECT_EQ(test::LabelTexts(second)[3], "2");
    EXPECT_EQ(test::RectsFilled(second, sheetcolour::kShadedRow),
              (std::vector<IntRect>{{0, 128, 460, 166}}));
}

TEST(SheetTable, AlwaysDrawsOneRowSoThatAPageGetsOn) {
    const SheetTable table = Sample();
    DisplayList page;
    EXPECT_EQ(table.Draw(page, 0, 0, 10, 1).Next, 2u);
}

}  // namespace
}  // namespace kesto
