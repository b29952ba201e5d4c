#include "sheet/SheetTexts.h"

#include "app/JobModel.h"

namespace kesto {

namespace {

constexpr const char* kSection = "MainDlg";

// Each text is written apart from the others (a value of the message file may be Shift_JIS,
// a name from the job UTF-8): only plain ASCII is ever put between them.
std::string Word(const MessageTable& messages, const char* key, const char* english) {
    return TextOr(messages, kSection, key, english);
}

}  // namespace

SheetTexts SheetTexts::From(const MessageTable& m) {
    SheetTexts t;
    t.Job = Word(m, "PR-JOB", "Job");
    t.Process = Word(m, "PR-PROCESS", "Process");
    t.Pallet = Word(m, "PR-PALLET", "Pallet");
    t.Printed = Word(m, "PR-DATE", "Printed");
    t.Page = Word(m, "PR-PAGE", "Page");
    t.Of = Word(m, "PR-OF", "of");
    t.Summary = Word(m, "PR-SUMMARY", "Summary");
    t.ColumnNo = Word(m, "PR-COL-NO", "No.");
    t.ColumnPart = Word(m, "PR-COL-PART", "Part");
    t.ColumnName = Word(m, "PR-COL-NAME", "Name");
    t.ColumnPieces = Word(m, "PR-COL-PIECES", "Pieces");
    t.ColumnBlock = Word(m, "PR-COL-BLOCK", "Block");
    t.ColumnCorner = Word(m, "PR-COL-CORNER", "Corner");
    t.ColumnChanges = Word(m, "PR-COL-CHANGES", "Changes");
    t.Corners = {Word(m, "PR-CORNER-LOWER-LEFT", "lower left"),
                 Word(m, "PR-CORNER-UPPER-LEFT", "upper left"),
                 Word(m, "PR-CORNER-LOWER-RIGHT", "lower right"),
                 Word(m, "PR-CORNER-UPPER-RIGHT", "upper right")};
    t.MarkMoved = Word(m, "PR-MARK-MOVED", "M");
    t.MarkRestacked = Word(m, "PR-MARK-RESTACKED", "R");
    t.MarkReturned = Word(m, "PR-MARK-RETURNED", "B");
    t.LegendMoved = Word(m, "PR-LEGEND-MOVED", "moved by the operator");
    t.LegendRestacked =
        Word(m, "PR-LEGEND-RESTACKED", "stacked again at the operator's sheet count");
    t.LegendReturned = Word(m, "PR-LEGEND-RETURNED", "brought back from the set-aside list");
    t.Total = Word(m, "PR-TOTAL", "Total");
    t.Stacks = Word(m, "PR-STACKS", "stacks");
    t.Pieces = Word(m, "PR-PIECES", "pieces");
    t.SmallBoxes = Word(m, "L-SMALLBOX", "Small boxes");
    t.SetAside = Word(m, "L-TORIOKI", "Set aside");
    t.Short = Word(m, "PR-SHORT", "Parts left short");
    t.Crossings = Word(m, "PR-CROSSINGS", "Stacks across an offset line");
    t.None = Word(m, "PR-NONE", "none");
    t.ColumnBox = Word(m, "PR-COL-BOX", "Box");
    t.ColumnProcess = Word(m, "PR-COL-PROCESS", "Process");
    t.ColumnQuantity = Word(m, "PR-COL-QUANTITY", "Quantity");
    t.ColumnPlaced = Word(m, "PR-COL-PLACED", "Placed");
    t.ColumnReason = Word(m, "PR-COL-REASON", "Reason");
    t.ColumnCrossing = Word(m, "PR-COL-CROSSING", "Across the line");
    t.BoxPrefix = m.GetFontText(kSection, "B-SBOX1").Text;
    return t;
}

const std::string& SheetTexts::CornerText(uint8_t corner) const {
    static const std::string kNoCorner = "-";
    switch (corner) {
        case kCornerMinMin:
            return Corners[0];
        case kCornerMinMax:
            return Corners[1];
        case kCornerMaxMin:
            return Corners[2];
        case kCornerMaxMax:
            return Corners[3];
        default:
            return kNoCorner;
    }
}

std::string SheetTexts::EditMarks(uint8_t edits) const {
    std::string marks;
    const auto add = [&](uint8_t bit, const std::string& mark) {
        if ((edits & bit) != 0)
            marks += (marks.empty() ? "" : " ") + mark;
    };
    add(kEditMoved, MarkMoved);
    add(kEditRestacked, MarkRestacked);
    add(kEditReturned, MarkReturned);
    return marks;
}

std::string SheetTexts::PageOf(size_t page, size_t pages) const {
    return Page + " " + std::to_string(page) + " " + Of + " " + std::to_string(pages);
}

}  // namespace kesto
