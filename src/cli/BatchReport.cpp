#include "cli/BatchReport.h"
#include "app/Codes.h"

#include <ostream>
#include <string>

#include "cli/TerminalText.h"
#include "session/ListLines.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

int ElementCount(const PartsInfo& part) {
    int n = 0;
    for (const ShapeElement& e : part.Shapes) {
        if (e.Kind != kShapeNone)
            ++n;
    }
    return n;
}

void ReportPallets(const CKestoApp& app, std::ostream& out) {
    out << "Pallets: " << app.PalletList.Count << "\n";
    for (const PalletInfo& p : app.PalletList) {
        out << TerminalText(
            FormatText("  P%d %-12s %9.4f x %9.4f, height %9.4f, cells %d x %d, racks X %d Y %d\n",
                       p.No, p.Name.c_str(), p.LengthX, p.LengthY, p.MaxStackHeight, p.CellsX,
                       p.CellsY, p.RackXCount, p.RackYCount));
    }
    out << "Small boxes defined:";
    for (int n = 1; n <= 99; ++n) {
        if (app.BoxFlags[n])
            out << " B" << n;
    }
    out << "\n";
}

void ReportBoxesAndProcesses(const CKestoApp& app, std::ostream& out) {
    out << "Boxes: " << app.BoxList.Items.size() << " (" << app.BoxList.Count << " counted)\n";
    for (const BoxInfo& b : app.BoxList) {
        out << TerminalText(FormatText("  %3d %-12s kind %d, x %.1f..%.1f, y %.1f..%.1f\n", b.No,
                                       b.Name.c_str(), b.Kind, b.Size[0], b.Size[1], b.Size[2],
                                       b.Size[3]));
    }
    out << "Processes: " << app.KouteiList.Count << "\n";
    for (const KouteiInfo& k : app.KouteiList) {
        out << TerminalText(
            FormatText("  %.2d %s on %s\n", k.No, k.Name1.c_str(), k.Name2.c_str()));
    }
}

void ReportParts(const CKestoApp& app, std::ostream& out) {
    out << "Parts: " << app.PartsList.Count << " (in placement order)\n";
    for (const PartsInfo& p : app.PartsList) {
        out << TerminalText(FormatText(
            "  %.3d %-7s process %d group %-4s %9.4f x %9.4f qty %3d dest %5d sheets %2d, "
            "%d outline elements\n",
            p.Seq, p.Code.c_str(), p.KouteiNo, p.GroupKey.c_str(), p.SizeX, p.SizeY, p.Quantity,
            p.Destination, p.PerStackLimit, ElementCount(p)));
    }
}

const BlockInfo* BlockOf(const CKestoApp& app, const HaichiInfo& h) {
    if (h.BlockIndex < 0 || h.BlockIndex >= app.BlocksCount)
        return nullptr;
    return &app.Blocks[static_cast<size_t>(h.BlockIndex)];
}

int HighestPallet(const CKestoApp& app) {
    int highest = app.PalletCount;
    for (const HaichiInfo& h : app.HaichiList) {
        if (const BlockInfo* b = BlockOf(app, h); b != nullptr && b->PalletNo > highest) {
            highest = b->PalletNo;
        }
    }
    return highest;
}

void ReportStack(const HaichiInfo& h, std::ostream& out) {
    const PartsInfo& part = *h.Part;
    out << TerminalText(FormatText(
        "      %-7s %4d pcs  corner %d  x %9.4f..%9.4f  y %9.4f..%9.4f\n", part.Code.c_str(),
        h.Value, h.Flag, h.X - part.SizeX, h.X, h.Y, h.Y + part.SizeY));
}

void ReportProcessStacks(const CKestoApp& app, const KouteiInfo& k, int highest,
                         std::ostream& out) {
    out << TerminalText(
        FormatText("  Process %.2d %s on %s\n", k.No, k.Name1.c_str(), k.Name2.c_str()));
    for (int pallet = 1; pallet <= highest; ++pallet) {
        int stacks = 0;
        for (const HaichiInfo& h : app.HaichiList) {
            const BlockInfo* b = BlockOf(app, h);
            if (b == nullptr || b->KouteiNo != k.No || b->PalletNo != pallet)
                continue;
            if (stacks++ == 0)
                out << "    Pallet " << pallet << "\n";
            ReportStack(h, out);
        }
    }
}

}  // namespace

void ReportInput(const CKestoApp& app, std::ostream& out) {
    ReportPallets(app, out);
    ReportBoxesAndProcesses(app, out);
    ReportParts(app, out);
}

void ReportPlacement(const CKestoApp& app, std::ostream& out) {
    out << "Placement:\n";
    const int highest = HighestPallet(app);
    for (const KouteiInfo& k : app.KouteiList)
        ReportProcessStacks(app, k, highest, out);
    int shortParts = 0;
    for (const PartsInfo& p : app.PartsList) {
        if (!LeftShort(p))
            continue;
        if (shortParts++ == 0)
            out << "Parts short:\n";
        out << "  " << TerminalText(ShortLine(p)) << "\n";
    }
    if (shortParts == 0)
        out << "Parts short: none\n";
}

}  // namespace kesto
