// Stacking one part into the free corners of its process's blocks.
#include <algorithm>
#include <cstdint>
#include <iterator>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "placement/CornerQuery.h"
#include "placement/PlacementIndex.h"

namespace kesto {

bool CKs_Haichi::IsCandidate(int pallet, const std::array<int, 4>& candidates) const {
    return std::find(candidates.begin(), candidates.end(), pallet) != candidates.end();
}

int CKs_Haichi::PiecesFor(int32_t remaining, Stacking mode) const {
    int64_t pieces = remaining;
    const int32_t num4 = CurPart->PerStackLimit;
    if (num4 >= 1) {
        if (remaining % num4 == 0) {
            pieces = num4;
        } else {
            // The fewest stacks of at most num4 that hold remaining, filled evenly.
            const int64_t k = remaining / num4 + 1;
            pieces = (remaining + k - 1) / k;
        }
        if (mode != Stacking::AllPallets && remaining > num4)
            pieces = num4;
    }
    const double v1 = CurPart->PieceHeight;
    // A piece without height sets no cap.
    if (v1 != 0 && CurKoutei->Pallet->MaxStackHeight < static_cast<double>(pieces) * v1) {
        pieces = TruncToInt32(CurKoutei->Pallet->MaxStackHeight / v1);
    }
    return static_cast<int>(pieces);
}

// Up to four stacks of CurPart in the free corners of one block. Returns -1 when a stack
// cannot be allocated, 0 when the part is done, 1 to go on with the next block; pieces is
// the last stack size worked out.
int CKs_Haichi::StackIntoBlock(int blockIndex, Stacking mode, std::vector<HaichiInfo*>& made,
                               int& pieces) {
    BlockInfo& b = app_.Blocks[blockIndex];
    const CornerQuery query = Query();
    uint8_t blocked = 0;
    for (int attempt = 0; attempt < 4; ++attempt) {
        const int64_t remaining =
            int64_t{CurPart->Quantity} - CurPart->PiecesPlaced - int64_t{CurPart->PiecesSetAside};
        if (remaining < 1)
            return 0;
        pieces = PiecesFor(static_cast<int32_t>(std::min<int64_t>(remaining, INT32_MAX)), mode);
        CornerPlace at;
        const int corner = query.NextCorner(blockIndex, blocked, at);
        // A failed attempt changes nothing, so the remaining attempts would fail alike.
        if (corner == 0)
            return 1;
        HaichiInfo* h = app_.AddHaichiInfo();
        if (h == nullptr)
            return -1;
        h->X = at.X;
        h->Y = at.Y;
        h->BlockIndex = blockIndex;
        h->Part = CurPart;
        h->Pieces = pieces;
        h->Corner = static_cast<uint8_t>(corner);
        b.Occupant = CurPart->Seq;
        CurPart->PiecesPlaced = AddClamped(CurPart->PiecesPlaced, pieces);
        const LengthRect& r = at.Clear;
        MarkCorners(r.X0, r.Y0, r.X1, r.Y1, b.PalletNo, CurPart);
        IndexStack(h);
        if (mode != Stacking::AllPallets && made.size() < kRememberLimit)
            made.push_back(h);
    }
    return 1;
}

Outcome CKs_Haichi::StackPart(KouteiInfo* koutei, PartsInfo* part, Stacking mode) {
    const CallScope call(*this);
    CurKoutei = koutei;
    CurPart = part;
    return StackPart(mode, QuantityShare::SharedOut);
}

Outcome CKs_Haichi::StackPart(Stacking mode, QuantityShare share, size_t firstOpen) {
    ComputeBounds(CurKoutei);
    // A process without a pallet has nowhere to stack.
    if (CurKoutei == nullptr || CurKoutei->Pallet == nullptr || CurPart == nullptr)
        return Outcome::Done();
    std::array<int, 4> candidates{-1, -1, -1, -1};
    if (mode == Stacking::PalletsInView)
        candidates = onView_;
    std::vector<HaichiInfo*> made;
    Outcome stacked;
    {
        IndexScope scope(*this);
        stacked = StackOverBlocks(mode, candidates, made, firstOpen);
    }
    if (!stacked.Ok())
        return stacked;
    if (mode != Stacking::AllPallets && !made.empty() && share == QuantityShare::SharedOut)
        ShareOut(made, CurPart->Quantity);
    return Outcome::Done();
}

// StackPart's block loop: failed with 9015 when a stack cannot be allocated.
Outcome CKs_Haichi::StackOverBlocks(Stacking mode, const std::array<int, 4>& candidates,
                                    std::vector<HaichiInfo*>& made, size_t firstOpen) {
    Outcome result;
    // One block of the process; true ends the loop.
    auto stackInto = [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
        if (b.Occupant != kNoOccupant && b.Occupant != CurPart->Seq)
            return false;
        if (mode == Stacking::PalletsInView && !IsCandidate(b.PalletNo, candidates))
            return false;
        int pieces = 0;
        const int step = StackIntoBlock(i, mode, made, pieces);
        if (step < 0)
            result = Outcome::Failed(error::kNoMemoryForStack);
        return step <= 0 || pieces < 1;
    };
    // The index's block lists stay valid while stacks are added, even if it stops being usable.
    if (index_ != nullptr) {
        if (const PlacementIndex::Process* p = index_->Find(CurKoutei->No)) {
            const std::vector<int>& blocks = p->Blocks;
            for (size_t k = std::min(firstOpen, blocks.size()); k < blocks.size(); ++k) {
                if (stackInto(blocks[k]))
                    break;
            }
        }
        return result;
    }
    for (const int32_t i : app_.Blocks.OfProcess(CurKoutei->No)) {
        if (stackInto(i))
            break;
    }
    return result;
}

}  // namespace kesto
