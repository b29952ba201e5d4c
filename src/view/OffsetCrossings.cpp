#include "view/OffsetCrossings.h"

#include <unordered_map>

#include "support/MessageFile.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

constexpr const char* kSection = "Short";
// Offset lines of 0.01 or less are not drawn and so not crossed.
constexpr double kLeastLine = 0.01;
// Less than this past a line is on it.
constexpr double kTolerance = 0.0001;

}  // namespace

std::vector<OffsetCrossing> OffsetCrossings(const CKestoApp& app) {
    std::vector<OffsetCrossing> out;
    // The pallet of each process, by the name the drawing finds it by.
    std::unordered_map<int32_t, const PalletInfo*> pallets;
    for (const KouteiInfo& k : app.KouteiList)
        pallets.try_emplace(k.No, app.PalletByName(k.PalletName));
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo* b = app.BlockOf(h);
        if (h.Part == nullptr || b == nullptr)
            continue;
        const auto it = pallets.find(b->KouteiNo);
        if (it == pallets.end() || it->second == nullptr)
            continue;
        const PalletInfo& p = *it->second;
        const double x0 = h.X - h.Part->SizeX, y1 = h.Y + h.Part->SizeY;
        auto cross = [&](char side, double line, double by) {
            if (line > kLeastLine && by > kTolerance)
                out.push_back({&h, b->PalletNo, side, by});
        };
        cross('A', p.OffsetA, y1 - (p.LengthY - p.OffsetA));
        cross('B', p.OffsetB, p.OffsetB - h.Y);
        cross('L', p.LimitLeft, p.LimitLeft - x0);
        cross('R', p.LimitRight, h.X - (p.LengthX - p.LimitRight));
    }
    return out;
}

std::string OffsetCrossingText(const OffsetCrossing& c, const MessageTable& messages) {
    std::string side;
    switch (c.Side) {
        case 'A':
            side = TextOr(messages, kSection, "OFFSET-UPPER", "upper offset line");
            break;
        case 'B':
            side = TextOr(messages, kSection, "OFFSET-LOWER", "lower offset line");
            break;
        case 'L':
            side = TextOr(messages, kSection, "OFFSET-LEFT", "left limit");
            break;
        default:
            side = TextOr(messages, kSection, "OFFSET-RIGHT", "right limit");
            break;
    }
    const PartsInfo& part = *c.Stack->Part;
    const std::string name =
        part.DisplayName.empty() ? part.Code : part.Code + " " + part.DisplayName;
    return FillFigures(
        TextOr(messages, kSection, "OFFSET-CROSSING", "%1: %2 past the %3 of pallet %4"),
        {name, ShortLength(c.By), side, std::to_string(c.PalletNo)});
}

}  // namespace kesto
