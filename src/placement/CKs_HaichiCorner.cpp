// The corner tests: may a stack stand in a block corner, which block corners does a
// rectangle cover, and the corner marks rebuilt from the stacks.
#include <algorithm>
#include <cmath>
#include <new>

#include "placement/CKs_Haichi.h"
#include "placement/CornerQuery.h"
#include "placement/PlacementIndex.h"

namespace kesto {

int CKs_Haichi::TestCorner(KouteiInfo* koutei, PartsInfo* part, CornerTestMode mode, int blockIndex,
                           int corner, const std::vector<HaichiInfo*>& selection) {
    const CallScope call(*this);
    CurKoutei = koutei;
    CurPart = part;
    Selection = selection;
    const int result = Query().TestCorner(mode, blockIndex, corner);
    ClearDrop();
    return result;
}

void CKs_Haichi::IndexStack(HaichiInfo* h) {
    if (index_ != nullptr)
        index_->Add(h);
}

int CKs_Haichi::TestRect(KouteiInfo* koutei, double x0, double y0, double x1, double y1, int pallet,
                         const PartsInfo* part) {
    const CallScope call(*this);
    CurKoutei = koutei;
    return Query().TestRect(x0, y0, x1, y1, pallet, part);
}

void CKs_Haichi::MarkCorners(KouteiInfo* koutei, double x0, double y0, double x1, double y1,
                             int pallet, PartsInfo* part) {
    const CallScope call(*this);
    CurKoutei = koutei;
    MarkCorners(x0, y0, x1, y1, pallet, part);
}

void CKs_Haichi::MarkCorners(double x0, double y0, double x1, double y1, int pallet,
                             PartsInfo* part) {
    if (CurKoutei == nullptr)
        return;
    Query().ForPalletBlocks(pallet, {x0, y0, x1, y1}, [&](int i) {
        BlockInfo& b = app_.Blocks[i];
        for (const BlockCorner& c : CornersOf(b)) {
            if (!CornerIn(c.X, c.Y, x0, y0, x1, y1))
                continue;
            b.CornerMask |= c.Bit;
            if (b.Occupant == kNoOccupant)
                b.Occupant = OccupantOf(part);
        }
        return false;
    });
}

void CKs_Haichi::RebuildCorners(KouteiInfo* koutei, const std::vector<HaichiInfo*>& leaveOut) {
    const CallScope call(*this);
    CurKoutei = koutei;
    if (koutei == nullptr)
        return;
    // Each stack marks the blocks of its process near it; no stack moves meanwhile.
    IndexScope scope(*this, koutei->No);
    for (const int32_t i : app_.Blocks.OfProcess(koutei->No)) {
        BlockInfo& b = app_.Blocks[i];
        b.CornerMask = 0;
        b.Occupant = kNoOccupant;
    }
    const double gx = koutei->Pallet != nullptr ? koutei->Pallet->StackGapX : 0;
    const double gy = koutei->Pallet != nullptr ? koutei->Pallet->StackGapY : 0;
    for (HaichiInfo& h : app_.HaichiList) {
        const BlockInfo* hb = app_.Blocks.At(h.BlockIndex);
        if (hb == nullptr || h.Part == nullptr || hb->KouteiNo != koutei->No)
            continue;
        if (std::find(leaveOut.begin(), leaveOut.end(), &h) != leaveOut.end())
            continue;
        LengthRect r{h.X - h.Part->SizeX, h.Y, h.X, h.Y + h.Part->SizeY};
        if (h.Corner == kCornerMinMin || h.Corner == kCornerMaxMin)
            r.Y1 += gy;
        if (h.Corner == kCornerMinMax || h.Corner == kCornerMaxMax)
            r.Y0 -= gy;
        if (h.Corner == kCornerMinMin || h.Corner == kCornerMinMax)
            r.X1 += gx;
        if (h.Corner == kCornerMaxMin || h.Corner == kCornerMaxMax)
            r.X0 -= gx;
        MarkCorners(r.X0, r.Y0, r.X1, r.Y1, hb->PalletNo, h.Part);
    }
}

}  // namespace kesto
