// The stacks that lie across an offset line of their pallet. The offset warning covers only
// the parts with sensitive sides; these are every part's, marked in the drawing and named in
// the report and on the summary page.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/OffsetLines.h"
#include "support/TextFormat.h"

namespace kesto {

class MessageTable;

// A stack that reaches past an offset line of its pallet, and by how much (length unit).
struct OffsetCrossing {
    const HaichiInfo* Stack = nullptr;
    int32_t PalletNo = 0;
    OffsetSide Side = OffsetSide::Lower;
    double By = 0;
};

// Every stack that crosses an offset line of its process's pallet, in stack list order; a
// stack past two lines is named for each. Only lines that are drawn count (more than 0.01).
std::vector<OffsetCrossing> OffsetCrossings(const CKestoApp& app);

// The [Short] texts of the crossings, from the message file or their English defaults: looked
// up once for a list of many crossings.
struct OffsetCrossingTexts {
    explicit OffsetCrossingTexts(const MessageTable& messages);

    std::string Upper;    // OFFSET-UPPER
    std::string Lower;    // OFFSET-LOWER
    std::string Left;     // OFFSET-LEFT
    std::string Right;    // OFFSET-RIGHT
    FigureText Crossing;  // OFFSET-CROSSING: the line, with the figures
};

// "P001 Name: 12.5 past the lower offset line of pallet 2", appended to line.
void AppendOffsetCrossingText(TextBuilder& line, const OffsetCrossing& crossing,
                              const OffsetCrossingTexts& texts);
// The same line on its own, from the [Short] texts of the message file.
std::string OffsetCrossingText(const OffsetCrossing& crossing, const MessageTable& messages);

}  // namespace kesto
