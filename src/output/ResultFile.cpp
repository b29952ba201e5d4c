// The result file for the machine and its summary side file.
#include <cstdint>
#include <cstdio>
#include <string>

#include "app/Codes.h"
#include "output/CKs_FileSave.h"
#include "output/ResultGroups.h"
#include "output/StackIndex.h"
#include "support/AtomicFile.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {
namespace {

// The summary lines of one part: its stacks, then its quantity when they hold nothing.
// line: cleared and reused for every line of the file.
bool WriteSummary(const PartsInfo& part, const StackIndex& stacks, std::FILE* file,
                  TextBuilder& line) {
    int64_t sum = 0;
    if (IsPalletCode(part.Destination)) {
        size_t head = 0;  // "%s,%d,%s,": the same on each of the part's lines
        for (const PlacedStack& s : stacks.Of(&part)) {
            // "%s,%d,%s,%d,%d"
            if (head == 0) {
                line.Clear();
                line.Str(part.Code).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name);
                head = line.Char(',').Text().size();
            }
            line.Keep(head);
            line.Int(s.Block->PalletNo).Char(',').Int(s.Stack->Pieces);
            if (WriteLine(line.Text(), file) != 1)
                return false;
            sum += s.Stack->Pieces;
        }
    }
    if (sum != 0)
        return true;
    line.Clear();  // "%4.4d,%d,%s,0,%d"
    line.Int(part.No, 4, 4).Char(',').Int(part.KouteiNo).Char(',').Str(part.Name);
    line.Str(",0,").Int(part.Quantity);
    return WriteLine(line.Text(), file) == 1;
}

// Fails with 9021 when the file cannot be created, 9022 when a line or the file is not written.
Outcome WriteSideFile(const CKestoApp& app, const StackIndex& stacks, const std::string& path) {
    AtomicFile file(path);
    if (!file.Open())
        return Outcome::Failed(error::kResultFileUnopened);
    TextBuilder line;
    for (const PartsInfo& part : app.PartsList) {
        if (!WriteSummary(part, stacks, file.get(), line))
            return Outcome::Failed(error::kResultFileUnwritten);
    }
    if (!file.Commit())
        return Outcome::Failed(error::kResultFileUnwritten);
    return Outcome::Done();
}

// Short: pieces set aside, or stacks that hold some but not all of the quantity.
bool IsShort(const PartsInfo& part, const StackIndex& stacks) {
    if (part.PiecesSetAside > 0)
        return true;
    if (!IsPalletCode(part.Destination))
        return false;
    int64_t sum = 0;
    for (const PlacedStack& s : stacks.Of(&part))
        sum += s.Stack->Pieces;
    return sum != 0 && sum != part.Quantity;
}

bool AnyPartShort(const CKestoApp& app, const StackIndex& stacks) {
    for (const PartsInfo& part : app.PartsList) {
        if (IsShort(part, stacks))
            return true;
    }
    return false;
}

Outcome WriteGroupFile(CKestoApp& app, const StackIndex& stacks, const std::string& path) {
    AtomicFile file(path);
    if (!file.Open())
        return Outcome::Failed(error::kResultFileUnopened);
    if (const Outcome written = WriteResultGroups(app, stacks, file.get()); !written.Ok())
        return written;
    if (!file.Commit())
        return Outcome::Failed(error::kResultFileUnwritten);
    return Outcome::Done();
}

}  // namespace

Outcome CKs_FileSave::WriteResultFile(const std::string& path) {
    return WriteResultFile(path, StackIndex(app_));
}

Outcome CKs_FileSave::WriteResultFile(const std::string& path, const StackIndex& stacks) {
    // An empty path would put the files into the current folder.
    if (path.empty())
        return Outcome::Failed(error::kResultFileUnopened);
    if (const Outcome side = WriteSideFile(app_, stacks, path + "_tmp"); !side.Ok())
        return side;
    if (AnyPartShort(app_, stacks)) {
        if (services_.Op.AskKaku(kaku::kAskDeleteResult, kaku::kNone) != OkCancel::Ok)
            return Outcome::Failed();
        // The operator accepts the shortage: no result, and no stale one either.
        std::remove(path.c_str());
        return Outcome::Done();
    }
    return WriteGroupFile(app_, stacks, path);
}

}  // namespace kesto
