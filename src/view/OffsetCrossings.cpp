#include "view/OffsetCrossings.h"

#include <array>
#include <optional>
#include <unordered_map>

#include "support/MessageFile.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

constexpr const char* kSection = "Short";

// How far a stack reaches past a line (negative: it stays inside).
double PastBy(const OffsetLine& line, double x0, double y0, double x1, double y1) {
    switch (line.Side) {
        case OffsetSide::Upper:
            return y1 - line.Position;
        case OffsetSide::Lower:
            return line.Position - y0;
        case OffsetSide::Left:
            return line.Position - x0;
        case OffsetSide::Right:
            return x1 - line.Position;
    }
    return 0;
}

}  // namespace

std::vector<OffsetCrossing> OffsetCrossings(const CKestoApp& app) {
    std::vector<OffsetCrossing> out;
    // The offset lines of each process's pallet, found by the name the drawing finds it by;
    // none for a process whose pallet is missing.
    std::unordered_map<int32_t, std::optional<std::array<OffsetLine, 4>>> lines;
    for (const KouteiInfo& k : app.KouteiList) {
        if (lines.contains(k.No))
            continue;
        const PalletInfo* pallet = app.PalletByName(k.PalletName);
        lines.emplace(k.No,
                      pallet != nullptr ? std::optional(OffsetLinesOf(*pallet)) : std::nullopt);
    }
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo* b = app.BlockOf(h);
        if (h.Part == nullptr || b == nullptr)
            continue;
        const auto it = lines.find(b->KouteiNo);
        if (it == lines.end() || !it->second)
            continue;
        const double x0 = h.X - h.Part->SizeX, y1 = h.Y + h.Part->SizeY;
        for (const OffsetLine& line : *it->second) {
            const double by = PastBy(line, x0, h.Y, h.X, y1);
            // Less than the tolerance past a line is on it.
            if (line.Drawn() && by > kLengthTolerance)
                out.push_back({&h, b->PalletNo, line.Side, by});
        }
    }
    return out;
}

OffsetCrossingTexts::OffsetCrossingTexts(const MessageTable& messages)
    : Upper(TextOr(messages, kSection, "OFFSET-UPPER", "upper offset line")),
      Lower(TextOr(messages, kSection, "OFFSET-LOWER", "lower offset line")),
      Left(TextOr(messages, kSection, "OFFSET-LEFT", "left limit")),
      Right(TextOr(messages, kSection, "OFFSET-RIGHT", "right limit")),
      Crossing(TextOr(messages, kSection, "OFFSET-CROSSING", "%1: %2 past the %3 of pallet %4")) {}

void AppendOffsetCrossingText(TextBuilder& line, const OffsetCrossing& c,
                              const OffsetCrossingTexts& texts) {
    std::string_view side;
    switch (c.Side) {
        case OffsetSide::Upper:
            side = texts.Upper;
            break;
        case OffsetSide::Lower:
            side = texts.Lower;
            break;
        case OffsetSide::Left:
            side = texts.Left;
            break;
        case OffsetSide::Right:
            side = texts.Right;
            break;
    }
    const PartsInfo& part = *c.Stack->Part;
    // %1 the part's code and name, %2 by how much, %3 the line, %4 the pallet.
    texts.Crossing.AppendTo(line, [&](int figure, TextBuilder& out) {
        switch (figure) {
            case 0:
                out.Bytes(part.Code);
                if (!part.DisplayName.empty())
                    out.Char(' ').Bytes(part.DisplayName);
                break;
            case 1:
                out.Length(c.By);
                break;
            case 2:
                out.Bytes(side);
                break;
            case 3:
                out.Int(c.PalletNo);
                break;
            default:
                break;
        }
    });
}

std::string OffsetCrossingText(const OffsetCrossing& c, const MessageTable& messages) {
    TextBuilder line;
    AppendOffsetCrossingText(line, c, OffsetCrossingTexts(messages));
    return line.Take();
}

}  // namespace kesto
