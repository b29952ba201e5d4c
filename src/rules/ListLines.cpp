#include "rules/ListLines.h"
#include "app/Codes.h"

#include <cstdio>

#include "support/TextColumns.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {

std::string StateMark(const PartsInfo& part) {
    const bool pallet = IsPalletCode(part.Destination) || IsTorioki(part.Destination);
    std::string mark(2, ' ');
    if (pallet) {
        mark[0] = 'P';
        if (part.PiecesPlaced != part.Quantity)
            mark[1] = '-';
    }
    return mark;
}

std::string AllPartsLine(const PartsInfo& part) {
    return FormatText("%.3d %4d/%-4d %s %-2s %s %9.4lf x %9.4lf", part.Seq, part.PiecesPlaced,
                      part.Quantity, StateMark(part).c_str(), part.DirText.c_str(),
                      FitColumn(part.DisplayName, kListNameColumn).c_str(), part.SizeX, part.SizeY);
}

std::string SmallBoxLine(const PartsInfo& part) {
    return FormatText("%.3d %4d %s", part.Seq, part.Quantity,
                      CutToBytes(part.DisplayName, kListNameColumn).c_str());
}

std::string ToriokiLine(const PartsInfo& part) {
    return FormatText("%.3d %4d/%-4d %s", part.Seq, part.Quantity - part.PiecesPlaced,
                      part.Quantity, CutToBytes(part.DisplayName, kListNameColumn).c_str());
}

std::string ScheduleLine(const CKestoApp& app, const KouteiInfo& koutei) {
    const PalletInfo* pallet = app.PalletByName(koutei.PalletName);
    const std::string& third = (pallet != nullptr && !pallet->ScheduleText.empty())
                                   ? pallet->ScheduleText
                                   : koutei.PalletName;
    return FormatText("%.2d %s %s", koutei.No, koutei.Name.c_str(), third.c_str());
}

std::string PalletSelectLine(const std::string& prefix, int number) {
    return FormatText("%s-%.2d", prefix.c_str(), number);
}

bool InSmallBox(const PartsInfo& part, int code) {
    return part.Destination == code;
}

bool InTorioki(const PartsInfo& part) {
    return IsTorioki(part.Destination) ||
           (IsPalletCode(part.Destination) && part.PiecesPlaced < part.Quantity);
}

bool LeftShort(const PartsInfo& part) {
    return IsPalletCode(part.Destination) && part.PiecesPlaced != part.Quantity;
}

std::string ShortLine(const PartsInfo& part) {
    return FormatText("%.3d %-7s placed %d of %d", part.Seq, part.Code.c_str(), part.PiecesPlaced,
                      part.Quantity);
}

int32_t SeqOfLine(const std::string& line) {
    return AtoL(line);
}

}  // namespace kesto
