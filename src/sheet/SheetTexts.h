// The words of the sort sheet and of the pictures' listing: headings, column titles, marks
// and their legend, from the message file's [MainDlg] keys, in English where a key is missing.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "support/MessageFile.h"

namespace kesto {

struct SheetTexts {
    // The page header's captions and the page count ("Page 3 of 12").
    std::string Job, Process, Pallet, Printed, Page, Of, Summary;
    // A pallet's table.
    std::string ColumnNo, ColumnPart, ColumnName, ColumnPieces, ColumnBlock, ColumnCorner,
        ColumnChanges;
    std::array<std::string, 4> Corners;  // lower left, upper left, lower right, upper right
    // The operator's changes: a mark in the table and its line in the legend.
    std::string MarkMoved, MarkRestacked, MarkReturned;
    std::string LegendMoved, LegendRestacked, LegendReturned;
    std::string Total, Stacks, Pieces;
    // The summary.
    std::string SmallBoxes, SetAside, Short, Crossings, None;
    std::string ColumnBox, ColumnProcess, ColumnQuantity, ColumnPlaced, ColumnReason,
        ColumnCrossing;
    std::string BoxPrefix;  // the small-box buttons' caption: "B" of "B1"

    static SheetTexts From(const MessageTable& messages);

    // The corner of a stack (kCorner...) in words; "-" for a code that names none.
    const std::string& CornerText(uint8_t corner) const;
    // The marks of a stack's Edits, in the order of the legend, a blank between them.
    std::string EditMarks(uint8_t edits) const;
    // "Page 3 of 12".
    std::string PageOf(size_t page, size_t pages) const;
};

}  // namespace kesto
