// The placement save file, from which the next run restores the stacks.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "app/Codes.h"
#include "output/CKs_FileSave.h"
#include "output/StackIndex.h"
#include "support/AtomicFile.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {
namespace {

constexpr int kProcessSlots = 100;

// Highest pallet used by each process number; numbers outside the table are not counted.
using PalletCounts = std::array<int64_t, kProcessSlots>;

PalletCounts CountPallets(const CKestoApp& app) {
    PalletCounts counts{};
    for (const HaichiInfo& stack : app.HaichiList) {
        const BlockInfo* block = app.BlockOf(stack);
        if (block == nullptr || block->KouteiNo < 0 || block->KouteiNo >= kProcessSlots)
            continue;
        counts[block->KouteiNo] = std::max<int64_t>(counts[block->KouteiNo], block->PalletNo);
    }
    return counts;
}

struct SaveOffsets {
    double X = 0;
    double Y = 0;
};

// The first process that has a pallet of its name gives the offsets of every line.
SaveOffsets FindOffsets(const CKestoApp& app) {
    for (const KouteiInfo& process : app.KouteiList) {
        for (const PalletInfo& pallet : app.PalletList) {
            if (pallet.Name == process.PalletName)
                return {pallet.SaveOffsetX, pallet.SaveOffsetY};
        }
    }
    return {};
}

int32_t BoxKind(const CKestoApp& app, int64_t boxNo) {
    for (const BoxInfo& box : app.BoxList) {
        if (box.No == boxNo)
            return box.Kind;
    }
    return -1;
}

// The boxes are taken in turn over the pallets of all processes counted one after another.
int32_t StackBoxKind(const CKestoApp& app, const PalletCounts& counts, const BlockInfo& block) {
    const int64_t boxes = app.BoxList.Count;
    if (boxes <= 0)
        return -1;
    int64_t s = block.PalletNo;
    const int32_t before = std::min(block.KouteiNo, kProcessSlots);
    for (int32_t k = 1; k < before; ++k)
        s += counts[k];
    const int64_t r = s % boxes;
    return BoxKind(app, r == 0 ? boxes - 1 : r - 1);
}

// What each stack line of a part repeats, worded once for all of them.
struct PartPieces {
    TextBuilder Head;    // "%s,%d,%s,": code, process, name
    TextBuilder Middle;  // "%s,%10.4lf,%10.4lf,%10.4lf,%d,": display name, sizes, piece height,
                         // save number
    TextBuilder Tail;    // "%s,": code

    void Word(const PartsInfo& part) {
        Head.Clear();
        Head.Str(part.Code).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name).Char(',');
        Middle.Clear();
        Middle.Str(part.DisplayName).Char(',').Fixed(part.SizeX, 10, 4).Char(',');
        Middle.Fixed(part.SizeY, 10, 4).Char(',').Fixed(part.PieceHeight, 10, 4).Char(',');
        Middle.Int(part.SaveNumber).Char(',');
        Tail.Clear();
        Tail.Str(part.Code).Char(',');
    }
};

// line: cleared and reused for every line of the file.
void StackLine(const CKestoApp& app, const PalletCounts& counts, const SaveOffsets& off,
               const PartsInfo& part, const PartPieces& pieces, const PlacedStack& s,
               TextBuilder& line) {
    const HaichiInfo& h = *s.Stack;
    // "%s,%d,%s,%d,%d,%10.4lf,%10.4lf,%d,%s,%10.4lf,%10.4lf,%10.4lf,%d,%d,%s,%ld,%d"
    line.Clear();
    line.Bytes(pieces.Head.Text());
    line.Int(s.Block->PalletNo).Char(',').Int(h.Pieces).Char(',');
    line.Fixed(h.X - part.SizeX - off.X, 10, 4).Char(',').Fixed(h.Y + off.Y, 10, 4).Char(',');
    line.Int(StackBoxKind(app, counts, *s.Block)).Char(',');
    line.Bytes(pieces.Middle.Text());
    line.Int(h.Level).Char(',');
    line.Bytes(pieces.Tail.Text());
    line.Int(h.BlockIndex).Char(',').Int(h.Corner);
}

std::string UnplacedLine(const CKestoApp& app, const PartsInfo& part) {
    const bool direct = IsDirectCode(part.Destination) && app.Settings.DirectCodesAllowed;
    const int32_t kind = direct ? part.Destination : BoxKind(app, part.Destination);
    // "%s,%d,%s,0,%d,0.0000,0.0000,%d,%s,%10.4lf,%10.4lf,%10.4lf,0,-1,%s,-1,-1"
    TextBuilder line;
    line.Str(part.Code).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name).Char(',');
    line.Str("0,").Int(part.Quantity).Str(",0.0000,0.0000,").Int(kind).Char(',');
    line.Str(part.DisplayName).Char(',').Fixed(part.SizeX, 10, 4).Char(',');
    line.Fixed(part.SizeY, 10, 4).Char(',').Fixed(part.PieceHeight, 10, 4).Str(",0,-1,");
    line.Str(part.Code).Str(",-1,-1");
    return line.Take();
}

// What every line of one file needs, and the kind of line written last: buffered writes may
// only fail when the file is closed, and then that kind names the failure.
struct SaveContext {
    const CKestoApp& App;
    const StackIndex& Stacks;
    PalletCounts Counts;
    SaveOffsets Offsets;
    std::FILE* File;
    int LastKind = error::kSaveFileUnopened;
    TextBuilder Line;
    PartPieces Pieces;
};

// 0 when the part's lines were written, else the code of the line that failed.
int WritePartLines(SaveContext& ctx, const PartsInfo& part) {
    int64_t sum = 0;
    if (IsPalletCode(part.Destination)) {
        bool worded = false;
        for (const PlacedStack& s : ctx.Stacks.Of(&part)) {
            ctx.LastKind = error::kSaveFileStackLine;
            if (!worded)
                ctx.Pieces.Word(part);
            worded = true;
            StackLine(ctx.App, ctx.Counts, ctx.Offsets, part, ctx.Pieces, s, ctx.Line);
            if (WriteLine(ctx.Line.Text(), ctx.File) != 1)
                return error::kSaveFileStackLine;
            sum += s.Stack->Pieces;
        }
    }
    if (sum != 0)
        return 0;
    ctx.LastKind = error::kSaveFileUnplacedLine;
    return WriteLine(UnplacedLine(ctx.App, part), ctx.File) == 1 ? 0 : error::kSaveFileUnplacedLine;
}

}  // namespace

Outcome CKs_FileSave::WritePlacementFile(const std::string& path) {
    return WritePlacementFile(path, StackIndex(app_));
}

Outcome CKs_FileSave::WritePlacementFile(const std::string& path, const StackIndex& stacks) {
    AtomicFile file(path);
    if (path.empty() || !file.Open())
        return Outcome::Failed(error::kSaveFileUnopened);
    SaveContext ctx{app_,
                    stacks,
                    CountPallets(app_),
                    FindOffsets(app_),
                    file.get(),
                    error::kSaveFileUnopened,
                    TextBuilder(),
                    PartPieces()};
    for (const PartsInfo& part : app_.PartsList) {
        if (const int failed = WritePartLines(ctx, part); failed != 0)
            return Outcome::Failed(failed);
    }
    if (!file.Commit())
        return Outcome::Failed(ctx.LastKind);
    return Outcome::Done();
}

}  // namespace kesto
