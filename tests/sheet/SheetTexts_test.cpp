// The sort sheet's words: English without a message file's keys, the message file's own
// words where it has them, the corners, the marks of the operator's changes, the page count.
#include "sheet/SheetTexts.h"

#include <gtest/gtest.h>

#include "app/JobModel.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"

namespace kesto {
namespace {

// A message table read from text written to a temporary file.
struct Messages {
    explicit Messages(const std::string& text) {
        const std::string path = folder / "Kesto.ini";
        test::WriteFile(path, text);
        EXPECT_EQ(table.Load(path, op), 0);
    }
    test::TempFolder folder;
    test::RecordingOperator op;
    MessageTable table;
};

TEST(SheetTexts, AreEnglishWhenTheMessageFileLacksTheKeys) {
    const Messages none("[MainDlg]\nB-SBOX1=3,\"B\"\n");
    const SheetTexts t = SheetTexts::From(none.table);
    EXPECT_EQ(t.Job, "Job");
    EXPECT_EQ(t.Process, "Process");
    EXPECT_EQ(t.Pallet, "Pallet");
    EXPECT_EQ(t.Printed, "Printed");
    EXPECT_EQ(t.Summary, "Summary");
    EXPECT_EQ(t.ColumnNo, "No.");
    EXPECT_EQ(t.ColumnChanges, "Changes");
    EXPECT_EQ(t.SmallBoxes, "Small boxes");
    EXPECT_EQ(t.SetAside, "Set aside");
    EXPECT_EQ(t.Short, "Parts left short");
    EXPECT_EQ(t.Crossings, "Stacks across an offset line");
    EXPECT_EQ(t.ColumnReason, "Reason");
    EXPECT_EQ(t.LegendReturned, "brought back from the set-aside list");
    EXPECT_EQ(t.BoxPrefix, "B");
    EXPECT_EQ(t.PageOf(3, 12), "Page 3 of 12");
}

TEST(SheetTexts, TakeTheMessageFilesWords) {
    // Shift_JIS "ページ" and "工程" as the Japanese installation writes them.
    const Messages japanese(
        "[MainDlg]\n"
        "PR-PAGE=1,\"\x83\x79\x81\x5B\x83\x57\"\n"
        "PR-OF=1,\"/\"\n"
        "PR-PROCESS=1,\"\x8D\x48\x92\xF6\"\n"
        "PR-MARK-MOVED=1,\"X\"\n"
        "L-SMALLBOX=1,\"Boxes\"\n");
    const SheetTexts t = SheetTexts::From(japanese.table);
    EXPECT_EQ(t.Process, "\x8D\x48\x92\xF6");
    EXPECT_EQ(t.PageOf(2, 9), "\x83\x79\x81\x5B\x83\x57 2 / 9");
    EXPECT_EQ(t.MarkMoved, "X");
    EXPECT_EQ(t.SmallBoxes, "Boxes");
    EXPECT_EQ(t.Pallet, "Pallet");
}

TEST(SheetTexts, NameTheFourCornersAsTheyAreDrawn) {
    const Messages none("");
    const SheetTexts t = SheetTexts::From(none.table);
    EXPECT_EQ(t.CornerText(kCornerMinMin), "lower left");
    EXPECT_EQ(t.CornerText(kCornerMinMax), "upper left");
    EXPECT_EQ(t.CornerText(kCornerMaxMin), "lower right");
    EXPECT_EQ(t.CornerText(kCornerMaxMax), "upper right");
    EXPECT_EQ(t.CornerText(0), "-");
    EXPECT_EQ(t.CornerText(3), "-");
}

TEST(SheetTexts, MarkEachChangeOfTheOperatorInTheLegendsOrder) {
    const Messages none("");
    const SheetTexts t = SheetTexts::From(none.table);
    EXPECT_EQ(t.EditMarks(0), "");
    EXPECT_EQ(t.EditMarks(kEditMoved), "M");
    EXPECT_EQ(t.EditMarks(kEditRestacked), "R");
    EXPECT_EQ(t.EditMarks(kEditReturned), "B");
    EXPECT_EQ(t.EditMarks(kEditReturned | kEditMoved), "M B");
    EXPECT_EQ(t.EditMarks(kEditMoved | kEditRestacked | kEditReturned), "M R B");
}

}  // namespace
}  // namespace kesto
