#include "session/ListLines.h"
#include "app/Codes.h"

#include <cstdio>

#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {

std::string StateMark(const PartsInfo& part) {
    const bool pallet = IsPalletCode(part.Num2) || IsTorioki(part.Num2);
    std::string mark(2, ' ');
    if (pallet) {
        mark[0] = 'P';
        if (part.Work[1] != part.Num1)
            mark[1] = '-';
    }
    return mark;
}

std::string AllPartsLine(const PartsInfo& part) {
    return FormatText("%.3d %4d/%-4d %s %-2s %-32.32s %9.4lf x %9.4lf", part.Seq, part.Work[1],
                      part.Num1, StateMark(part).c_str(), part.DirText.c_str(), part.Text1.c_str(),
                      part.SizeX, part.SizeY);
}

std::string SmallBoxLine(const PartsInfo& part) {
    return FormatText("%.3d %4d %-.32s", part.Seq, part.Num1, part.Text1.c_str());
}

std::string ToriokiLine(const PartsInfo& part) {
    return FormatText("%.3d %4d/%-4d %-.32s", part.Seq, part.Num1 - part.Work[1], part.Num1,
                      part.Text1.c_str());
}

std::string ScheduleLine(const CKestoApp& app, const KouteiInfo& koutei) {
    const PalletInfo* pallet = app.PalletByName(koutei.Name2);
    const std::string& third =
        (pallet != nullptr && !pallet->Text2.empty()) ? pallet->Text2 : koutei.Name2;
    return FormatText("%.2d %s %s", koutei.No, koutei.Name1.c_str(), third.c_str());
}

std::string PalletSelectLine(const std::string& prefix, int number) {
    return FormatText("%s-%.2d", prefix.c_str(), number);
}

bool InSmallBox(const PartsInfo& part, int code) {
    return part.Num2 == code;
}

bool InTorioki(const PartsInfo& part) {
    return IsTorioki(part.Num2) || (IsPalletCode(part.Num2) && part.Work[1] < part.Num1);
}

int32_t SeqOfLine(const std::string& line) {
    return AtoL(line);
}

}  // namespace kesto
