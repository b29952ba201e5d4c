#include "cli/BatchReport.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "app/Codes.h"
#include "cli/TerminalText.h"
#include "placement/ShortReason.h"
#include "rules/ListLines.h"
#include "support/Services.h"
#include "support/TaskThread.h"
#include "support/TextColumns.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"
#include "view/OffsetCrossings.h"

namespace kesto {

namespace {

// The report is built into a text that is written whenever a line ends past kChunk bytes, and
// at its end: the text stays small, and each piece goes out in one write. Job texts reach the
// terminal through TerminalText line by line; a piece that is valid UTF-8 as a whole is so in
// every line, and TerminalText passes such a line as it is, so the pieces come out as the
// whole text would.
class ReportText {
  public:
    explicit ReportText(std::ostream& out) : out_(out) { text_.Reserve(kChunk + kChunk / 4); }
    ReportText(const ReportText&) = delete;
    ReportText& operator=(const ReportText&) = delete;

    // The line being built.
    TextBuilder& Line() { return text_; }
    void EndLine() {
        text_.Char('\n');
        WriteWhenFull();
    }
    // ascii: whole lines, or the start of a line.
    void Append(const std::string& ascii) {
        text_.Str(ascii);
        if (!ascii.empty() && ascii.back() == '\n')
            WriteWhenFull();
    }

    // lines: whole lines, every byte of them. A long text goes out as it is, after the text
    // so far, rather than through a copy.
    void Lines(const std::string& lines) {
        if (lines.size() < kChunk) {
            text_.Bytes(lines);
            WriteWhenFull();
            return;
        }
        Write();
        WritePiece(lines);
    }

    // Writes the text so far and starts it anew; at the end of a report, for what is left.
    void Write() {
        WritePiece(text_.Text());
        text_.Clear();
    }

  private:
    // text: whole lines.
    void WritePiece(const std::string& text) {
        if (IsValidUtf8(text)) {
            out_.write(text.data(), static_cast<std::streamsize>(text.size()));
            return;
        }
        for (size_t at = 0; at < text.size();) {
            const size_t end = std::min(text.find('\n', at), text.size());
            out_ << TerminalText(text.substr(at, end - at)) << '\n';
            at = end + 1;
        }
    }

    static constexpr size_t kChunk = size_t{64} << 10;

    void WriteWhenFull() {
        if (text_.Text().size() >= kChunk)
            Write();
    }

    std::ostream& out_;
    TextBuilder text_;
};

int ElementCount(const PartsInfo& part) {
    int n = 0;
    for (const ShapeElement& e : part.Shapes) {
        if (e.Kind != kShapeNone)
            ++n;
    }
    return n;
}

void ReportPallets(const CKestoApp& app, ReportText& out) {
    out.Append("Pallets: " + std::to_string(app.PalletList.Count) + "\n");
    for (const PalletInfo& p : app.PalletList) {
        // "  P%d %-12s %9.4f x %9.4f, height %9.4f, cells %d x %d, racks X %d Y %d"
        out.Line().Str("  P").Int(p.No).Char(' ').Str(p.Name, 12, -1, true).Char(' ');
        out.Line().Fixed(p.LengthX, 9, 4).Str(" x ").Fixed(p.LengthY, 9, 4).Str(", height ");
        out.Line().Fixed(p.MaxStackHeight, 9, 4).Str(", cells ").Int(p.CellsX).Str(" x ");
        out.Line().Int(p.CellsY).Str(", racks X ").Int(p.RackXCount).Str(" Y ").Int(p.RackYCount);
        out.EndLine();
    }
    std::string boxes = "Small boxes defined:";
    for (int n = 1; n <= 99; ++n) {
        if (app.BoxFlags[n])
            boxes += " B" + std::to_string(n);
    }
    out.Append(boxes + "\n");
}

void ReportBoxesAndProcesses(const CKestoApp& app, ReportText& out) {
    out.Append("Boxes: " + std::to_string(app.BoxList.Items.size()) + " (" +
               std::to_string(app.BoxList.Count) + " counted)\n");
    for (const BoxInfo& b : app.BoxList) {
        // "  %3d %-12s kind %d, x %.1f..%.1f, y %.1f..%.1f"
        out.Line().Str("  ").Int(b.No, 3).Char(' ').Str(b.Name, 12, -1, true).Str(" kind ");
        out.Line()
            .Int(b.Kind)
            .Str(", x ")
            .Fixed(b.PartSizes.MinX, 0, 1)
            .Str("..")
            .Fixed(b.PartSizes.MaxX, 0, 1);
        out.Line()
            .Str(", y ")
            .Fixed(b.PartSizes.MinY, 0, 1)
            .Str("..")
            .Fixed(b.PartSizes.MaxY, 0, 1);
        out.EndLine();
    }
    out.Append("Processes: " + std::to_string(app.KouteiList.Count) + "\n");
    for (const KouteiInfo& k : app.KouteiList) {
        // "  %.2d %s on %s"
        out.Line().Str("  ").Int(k.No, 0, 2).Char(' ').Str(k.Name).Str(" on ").Str(k.PalletName);
        out.EndLine();
    }
}

void ReportParts(const CKestoApp& app, ReportText& out) {
    out.Append("Parts: " + std::to_string(app.PartsList.Count) + " (in placement order)\n");
    for (const PartsInfo& p : app.PartsList) {
        // "  %.3d %-7s process %d group %-4s %9.4f x %9.4f qty %3d dest %5d sheets %2d,
        //  %d outline elements"
        TextBuilder& line = out.Line();
        line.Str("  ").Int(p.Seq, 0, 3).Char(' ').Str(p.Code, 7, -1, true).Str(" process ");
        line.Int(p.KouteiNo).Str(" group ").Str(p.GroupKey, 4, -1, true).Char(' ');
        line.Fixed(p.SizeX, 9, 4).Str(" x ").Fixed(p.SizeY, 9, 4).Str(" qty ").Int(p.Quantity, 3);
        line.Str(" dest ").Int(p.Destination, 5).Str(" sheets ").Int(p.PerStackLimit, 2);
        line.Str(", ").Int(ElementCount(p)).Str(" outline elements");
        out.EndLine();
    }
}

// The stacks of each process and pallet, in the order of the placement list.
using StacksByPlace = std::map<std::pair<int32_t, int32_t>, std::vector<const HaichiInfo*>>;

StacksByPlace StacksOnPallets(const CKestoApp& app) {
    StacksByPlace stacks;
    for (const HaichiInfo& h : app.HaichiList) {
        if (const BlockInfo* b = app.BlockOf(h); b != nullptr)
            stacks[{b->KouteiNo, b->PalletNo}].push_back(&h);
    }
    return stacks;
}

int HighestPallet(const CKestoApp& app, const StacksByPlace& stacks) {
    int highest = app.Settings.PalletCount;
    for (const auto& [place, list] : stacks)
        highest = std::max(highest, place.second);
    return highest;
}

void ReportStack(const HaichiInfo& h, ReportText& out) {
    const PartsInfo& part = *h.Part;
    // "      %-7s %4d pcs  corner %d  x %9.4f..%9.4f  y %9.4f..%9.4f"
    TextBuilder& line = out.Line();
    line.Str("      ").Str(part.Code, 7, -1, true).Char(' ').Int(h.Pieces, 4).Str(" pcs  corner ");
    line.Int(h.Corner).Str("  x ").Fixed(h.X - part.SizeX, 9, 4).Str("..").Fixed(h.X, 9, 4);
    line.Str("  y ").Fixed(h.Y, 9, 4).Str("..").Fixed(h.Y + part.SizeY, 9, 4);
    out.EndLine();
}

void ReportProcessStacks(const KouteiInfo& k, const StacksByPlace& stacks, int highest,
                         ReportText& out) {
    out.Line()
        .Str("  Process ")
        .Int(k.No, 0, 2)
        .Char(' ')
        .Str(k.Name)
        .Str(" on ")
        .Str(k.PalletName);
    out.EndLine();
    for (auto it = stacks.lower_bound({k.No, 1});
         it != stacks.end() && it->first.first == k.No && it->first.second <= highest; ++it) {
        out.Append("    Pallet " + std::to_string(it->first.second) + "\n");
        for (const HaichiInfo* h : it->second)
            ReportStack(*h, out);
    }
}

// The parts with fewer pieces placed than wanted, each with its reason, as lines of text.
// The message texts are looked up once for all lines.
void WordShortParts(const CKestoApp& app, const Services& services, TextBuilder& out) {
    const std::vector<ShortPart> reasons = WhyShortAll(app);  // in list order
    const ShortReasonTexts texts(services.Messages);
    // About the length of a part's two lines, so that the text seldom moves as it grows.
    out.Reserve(reasons.size() * 192);
    auto reason = reasons.begin();
    int shortParts = 0;
    for (const PartsInfo& p : app.PartsList) {
        if (!LeftShort(p))
            continue;
        if (shortParts++ == 0)
            out.Str("Parts short:\n");
        out.Str("  ").Str(ShortLine(p)).Char('\n');
        if (reason != reasons.end() && reason->Part == &p) {
            const size_t from = out.Str("      ").Text().size();
            AppendShortReasonText(out, reason->Reason, texts);
            out.CutAtNul(from);
            out.Char('\n');
            ++reason;
        }
    }
    if (shortParts == 0)
        out.Str("Parts short: none\n");
}

void WordCrossings(const CKestoApp& app, const Services& services, TextBuilder& out) {
    const std::vector<OffsetCrossing> crossings = OffsetCrossings(app);
    out.Str(crossings.empty() ? "Stacks across an offset line: none\n"
                              : "Stacks across an offset line:\n");
    const OffsetCrossingTexts texts(services.Messages);
    // About the length of a line, so that the text seldom moves as it grows.
    out.Reserve(crossings.size() * 80);
    for (const OffsetCrossing& c : crossings) {
        const size_t from = out.Str("  ").Text().size();
        AppendOffsetCrossingText(out, c, texts);
        out.CutAtNul(from);
        out.Char('\n');
    }
}

}  // namespace

void ReportInput(const CKestoApp& app, std::ostream& out) {
    ReportText text(out);
    ReportPallets(app, text);
    ReportBoxesAndProcesses(app, text);
    ReportParts(app, text);
    text.Write();
}

void ReportPlacement(const CKestoApp& app, const Services& services, std::ostream& out) {
    // The parts short are worked out and worded on a second thread while this one lists the
    // stacks and words the crossings: all only read the job, and the reasons' survey costs
    // the other lists' time rather than its own.
    TextBuilder shortParts;
    TaskThread helper;
    helper.Start([&] { WordShortParts(app, services, shortParts); });
    ReportText text(out);
    text.Append("Placement:\n");
    const StacksByPlace stacks = StacksOnPallets(app);
    const int highest = HighestPallet(app, stacks);
    for (const KouteiInfo& k : app.KouteiList)
        ReportProcessStacks(k, stacks, highest, text);
    TextBuilder crossings;
    WordCrossings(app, services, crossings);
    helper.Wait();
    text.Lines(shortParts.Text());
    text.Lines(crossings.Text());
    text.Write();
}

PlacementReportThread::PlacementReportThread(const CKestoApp& app, const Services& services,
                                             std::ostream& out) {
    // The bundle by value: it is a handful of references, and callers hand a temporary.
    thread_.Start([&app, services, &out] { ReportPlacement(app, services, out); });
}

void PlacementReportThread::Wait() {
    thread_.Wait();
}

bool WriteReportFile(const std::string& path, const std::string& report, std::string& error) {
    TextFile file;
    if (OpenFile(path, "wt", file) != 1) {
        error = "cannot open " + path + ": " + std::strerror(errno);
        return false;
    }
    // Flushed here, so that a full disk shows before the file is closed.
    if (std::fwrite(report.data(), 1, report.size(), file.get()) != report.size() ||
        std::fflush(file.get()) != 0) {
        error = "cannot write " + path + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

}  // namespace kesto
