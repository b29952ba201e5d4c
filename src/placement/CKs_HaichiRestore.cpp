// Bringing back the placement of an earlier run: restore its stacks from the save file, trim
// what now exceeds a quantity, fill up what now falls short.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <optional>
#include <set>
#include <span>
#include <unordered_map>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "placement/PlacementIndex.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

// The restore's block scan: blocks of the process on another pallet than the stored one are
// passed over, and once the stored pallet's blocks were met such a block ends the scan.
// visit returns true to stop.
template <class Visit>
void ScanRestoreBlocks(std::span<const BlockInfo> blocks, int32_t kouteiNo, int storedPallet,
                       Visit&& visit) {
    bool met = false;
    for (int i = 0; i < static_cast<int>(blocks.size()); ++i) {
        const BlockInfo& b = blocks[static_cast<size_t>(i)];
        if (b.KouteiNo == kouteiNo) {
            if (b.PalletNo != storedPallet) {
                if (met)
                    return;
                continue;
            }
            met = true;
        }
        if (visit(i))
            return;
    }
}

}  // namespace

int CKs_Haichi::FindRestoreBlock(const LengthRect& r, int storedPallet, int corner) const {
    const bool cornerKnown = corner == kCornerMinMin || corner == kCornerMinMax ||
                             corner == kCornerMaxMin || corner == kCornerMaxMax;
    const double px = (corner == kCornerMinMin || corner == kCornerMinMax) ? r.X0 : r.X1;
    const double py = (corner == kCornerMinMin || corner == kCornerMaxMin) ? r.Y0 : r.Y1;
    if (PlacementIndex* index = Index()) {
        if (const std::optional<int> found =
                index->FindRestoreBlock(CurKoutei->No, storedPallet, r, cornerKnown, px, py))
            return *found;
    }
    const std::span<const BlockInfo> blocks = app_.Blocks.FilledBlocks();
    int found = -1;
    ScanRestoreBlocks(blocks, CurKoutei->No, storedPallet, [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
        if (r.X0 <= b.MinX && r.X1 >= b.MaxX && r.Y0 <= b.MinY && r.Y1 >= b.MaxY)
            found = i;
        return false;
    });
    if (found >= 0 || !cornerKnown)
        return found;
    ScanRestoreBlocks(blocks, CurKoutei->No, storedPallet, [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
        if (b.MinX <= px && px <= b.MaxX && b.MinY <= py && py <= b.MaxY)
            found = i;
        return found >= 0;
    });
    return found;
}

// Every line of a save file asks for its part by save key: a table of them, or, without memory
// for one, a scan of the list with the same answer.
class CKs_Haichi::SaveKeyParts {
  public:
    explicit SaveKeyParts(RecordList<PartsInfo>& parts) : parts_(parts) {
        try {
            byKey_.reserve(parts.Items.size());
            for (PartsInfo& part : parts)
                byKey_.try_emplace(part.SaveKey, &part);
        } catch (const std::bad_alloc&) {
            byKey_.clear();
            scan_ = true;
        }
    }
    PartsInfo* Find(int32_t key) const {
        if (!scan_) {
            const auto it = byKey_.find(key);
            return it != byKey_.end() ? it->second : nullptr;
        }
        const auto it = std::find_if(parts_.begin(), parts_.end(),
                                     [key](const PartsInfo& p) { return p.SaveKey == key; });
        return it != parts_.end() ? &*it : nullptr;
    }

  private:
    RecordList<PartsInfo>& parts_;
    std::unordered_map<int32_t, PartsInfo*> byKey_;
    bool scan_ = false;
};

// One save-file line: done when restored or ignored, failed when the restore fails.
Outcome CKs_Haichi::RestoreLine(const std::string& line, FieldList& f, const SaveKeyParts& parts) {
    SplitLine(line, f);
    const int32_t key = AtoL(f[0].empty() ? f[0] : f[0].substr(1));
    PartsInfo* part = parts.Find(key);
    if (part == nullptr || !IsPalletCode(part->Destination))
        return Outcome::Done();
    KouteiInfo* koutei = app_.KouteiByNo(part->KouteiNo);
    if (koutei == nullptr)
        return Outcome::Done();
    CurKoutei = koutei;
    ComputeBounds(koutei);
    const int32_t count = AtoL(f[4]);
    const double x0 = AtoF(f[5]), y0 = AtoF(f[6]);
    const LengthRect r{x0, y0, x0 + AtoF(f[9]), y0 + AtoF(f[10])};
    const int32_t stored = AtoL(f[15]);
    const auto corner = static_cast<uint8_t>(AtoL(f[16]));
    // Unplaced parts are saved with block -1: such a file is not restored.
    if (stored == -1)
        return Outcome::Failed();
    // A block that this job's table does not hold names no pallet: the line is ignored.
    const BlockInfo* storedBlock = app_.Blocks.At(stored);
    if (storedBlock == nullptr)
        return Outcome::Done();
    HaichiInfo* h = app_.AddHaichiInfo();
    if (h == nullptr)
        return Outcome::Failed(error::kNoMemoryForStack);
    h->X = r.X1;
    h->Y = r.Y0;
    h->Corner = corner;
    const int found = FindRestoreBlock(r, storedBlock->PalletNo, corner);
    BlockInfo& b = app_.Blocks[found >= 0 ? found : stored];
    h->BlockIndex = found >= 0 ? found : stored;
    h->Level = AtoL(f[13]);
    h->Part = part;
    h->Pieces = count;
    IndexStack(h);
    b.Occupant = part->Seq;
    part->PiecesPlaced = AddClamped(part->PiecesPlaced, count);
    MarkCorners(r.X0, r.Y0, r.X1, r.Y1, b.PalletNo, part);
    return Outcome::Done();
}

Outcome CKs_Haichi::RestorePlacement(const std::string& path) {
    const CallScope call(*this);
    if (app_.PartsList.Empty() || app_.KouteiList.Empty())
        return Outcome::Done();
    if (path.empty() || FileExists(path) == 0)
        return Outcome::Done();
    TextFile file;
    if (OpenFile(path, "rt", file) == 0)
        return Outcome::Failed();
    IndexScope scope(*this);
    const SaveKeyParts parts(app_.PartsList);
    std::string line;
    FieldList fields;
    while (ReadLine(line, file.get()) >= 0) {
        if (const Outcome restored = RestoreLine(line, fields, parts); !restored.Ok())
            return restored;
    }
    return Outcome::Done();
}

namespace {

// Takes excess pieces off the stacks, highest output group first, later stacks first.
void TrimStacks(PartsInfo& part, const std::vector<HaichiInfo*>& stacks) {
    int64_t excess = int64_t{part.PiecesPlaced} - part.Quantity;
    std::set<int32_t, std::greater<>> levels;
    for (const HaichiInfo* h : stacks) {
        if (h->Level >= 1)
            levels.insert(h->Level);
    }
    for (int32_t level : levels) {
        for (auto it = stacks.rbegin(); it != stacks.rend() && excess != 0; ++it) {
            HaichiInfo& h = **it;
            if (h.Level != level)
                continue;
            const int64_t take = h.Pieces < excess ? int64_t{h.Pieces} : excess;
            excess -= take;
            part.PiecesPlaced = AddClamped(part.PiecesPlaced, -take);
            h.Pieces = AddClamped(h.Pieces, -take);
        }
        if (excess == 0)
            return;
    }
}

}  // namespace

void CKs_Haichi::RemoveEmptyStacks() {
    // Rebuilding a process's corners depends only on the stacks that remain, so one rebuild
    // per touched process after all removals gives what a rebuild after each removal gives.
    std::vector<KouteiInfo*> touched;
    for (auto it = app_.HaichiList.begin(); it != app_.HaichiList.end();) {
        HaichiInfo* rec = &*it++;
        if (rec->Pieces >= 1)
            continue;
        KouteiInfo* koutei = rec->Part != nullptr ? app_.KouteiByNo(rec->Part->KouteiNo) : nullptr;
        app_.RemoveHaichiInfo(rec);
        touched.erase(std::remove(touched.begin(), touched.end(), koutei), touched.end());
        touched.push_back(koutei);
    }
    for (KouteiInfo* koutei : touched)
        RebuildCorners(koutei, {});
}

int CKs_Haichi::TrimExcess() {
    const CallScope call(*this);
    if (app_.PartsList.Empty() || app_.KouteiList.Empty() || app_.HaichiList.Empty())
        return 1;
    std::vector<PartsInfo*> trimmed;
    for (PartsInfo& p : app_.PartsList) {
        if (p.SaveKey == 0 || p.Quantity >= p.PiecesPlaced)
            continue;
        if (trimmed.size() >= kRememberLimit)
            break;
        trimmed.push_back(&p);
        TrimStacks(p, StacksOf(&p, kRememberLimit));
    }
    RemoveEmptyStacks();
    for (PartsInfo* p : trimmed)
        ShareOut(StacksOf(p, SIZE_MAX), p->Quantity);
    return 1;
}

void CKs_Haichi::FillPart(PartsInfo& part) {
    const std::vector<HaichiInfo*> stacks = StacksOf(&part, kRememberLimit);
    int64_t shortfall = int64_t{part.Quantity} - part.PiecesPlaced;
    int64_t limit = 999;
    const KouteiInfo* koutei = app_.KouteiByNo(part.KouteiNo);
    const double height =
        koutei != nullptr && koutei->Pallet != nullptr ? koutei->Pallet->MaxStackHeight : 0;
    // A piece without height sets no cap.
    if (height > 0 && PieceHeight(part) != 0)
        limit = TruncToInt32(height / PieceHeight(part));
    limit = std::min<int64_t>(limit, part.PerStackLimit);
    // One piece at a time onto the lowest stack below the limit (the first on ties), done
    // level by level: the lowest stacks are raised together to the next value above them.
    while (shortfall > 0) {
        int64_t low = INT64_MAX, next = limit;
        for (const HaichiInfo* h : stacks) {
            if (h->Pieces < limit)
                low = std::min<int64_t>(low, h->Pieces);
        }
        if (low == INT64_MAX)
            return;
        std::vector<HaichiInfo*> lows;
        for (HaichiInfo* h : stacks) {
            if (h->Pieces == low)
                lows.push_back(h);
            if (h->Pieces > low && h->Pieces < next)
                next = h->Pieces;
        }
        const int64_t c = static_cast<int64_t>(lows.size());
        const int64_t add = std::min(shortfall, (next - low) * c);
        for (int64_t i = 0; i < c; ++i) {
            lows[i]->Pieces = AddClamped(lows[i]->Pieces, add / c + (i < add % c ? 1 : 0));
        }
        part.PiecesPlaced = AddClamped(part.PiecesPlaced, add);
        shortfall -= add;
    }
}

int CKs_Haichi::FillShortage() {
    const CallScope call(*this);
    if (app_.PartsList.Empty() || app_.KouteiList.Empty() || app_.HaichiList.Empty())
        return 1;
    std::vector<PartsInfo*> parts;
    for (PartsInfo& p : app_.PartsList) {
        if (p.SaveKey == 0 || !IsPalletCode(p.Destination) || p.Quantity <= p.PiecesPlaced)
            continue;
        if (parts.size() >= kRememberLimit)
            break;
        parts.push_back(&p);
    }
    for (PartsInfo* p : parts)
        FillPart(*p);
    return 1;
}

}  // namespace kesto
