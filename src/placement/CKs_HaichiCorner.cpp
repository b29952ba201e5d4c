// The corner tests: may a stack stand in a block corner, which block corners does a
// rectangle cover, and the corner marks rebuilt from the stacks.
#include <algorithm>
#include <cmath>
#include <new>

#include "placement/CKs_Haichi.h"
#include "placement/PlacementIndex.h"

namespace kesto {

namespace {

// Open at the low side, closed at the high side.
bool CornerIn(double cx, double cy, double x0, double y0, double x1, double y1) {
    return x0 < cx && cx <= x1 && y0 < cy && cy <= y1;
}

// The block corners in the order the rectangle tests take them, with their mask bits.
struct BlockCorner {
    double X;
    double Y;
    uint8_t Bit;
};

std::array<BlockCorner, 4> CornersOf(const BlockInfo& b) {
    return {{{b.MinX, b.MinY, kCornerMinMin},
             {b.MinX, b.MaxY, kCornerMinMax},
             {b.MaxX, b.MaxY, kCornerMaxMax},
             {b.MaxX, b.MinY, kCornerMaxMin}}};
}

// Strictly inside the rectangle widened by the tolerance.
bool PointIn(double px, double py, const LengthRect& r) {
    return r.X0 - kLengthTolerance < px && px < r.X1 + kLengthTolerance &&
           r.Y0 - kLengthTolerance < py && py < r.Y1 + kLengthTolerance;
}

bool Between(double lo, double v, double hi) {
    return lo - kLengthTolerance < v && v < hi + kLengthTolerance;
}

}  // namespace

bool CKs_Haichi::InSelection(const HaichiInfo* stack) const {
    return std::find(Selection.begin(), Selection.end(), stack) != Selection.end();
}

bool CKs_Haichi::Collides(const HaichiInfo& stack, const LengthRect& f, double gx,
                          double gy) const {
    const LengthRect s{stack.X - stack.Part->SizeX - gx, stack.Y - gy, stack.X + gx,
                       stack.Y + stack.Part->SizeY + gy};
    if (PointIn(f.X0, f.Y0, s) || PointIn(f.X0, f.Y1, s) || PointIn(f.X1, f.Y1, s) ||
        PointIn(f.X1, f.Y0, s)) {
        return true;
    }
    if (f.X0 - kLengthTolerance < s.X0 && s.X1 < f.X1 + kLengthTolerance &&
        f.Y0 - kLengthTolerance < s.Y0 && s.Y1 < f.Y1 + kLengthTolerance) {
        return true;
    }
    const bool spansY = f.Y0 < s.Y0 + kLengthTolerance && s.Y1 - kLengthTolerance < f.Y1;
    if (spansY && (Between(s.X0, f.X0, s.X1) || Between(s.X0, f.X1, s.X1)))
        return true;
    const bool spansX = f.X0 < s.X0 + kLengthTolerance && s.X1 - kLengthTolerance < f.X1;
    return spansX && (Between(s.Y0, f.Y0, s.Y1) || Between(s.Y0, f.Y1, s.Y1));
}

int CKs_Haichi::TestCorner(KouteiInfo* koutei, PartsInfo* part, CornerTestMode mode, int blockIndex,
                           int corner, const std::vector<HaichiInfo*>& selection) {
    const CallScope call(*this);
    CurKoutei = koutei;
    CurPart = part;
    Selection = selection;
    const int result = TestCorner(mode, blockIndex, corner);
    ClearDrop();
    return result;
}

int CKs_Haichi::TestCorner(CornerTestMode mode, int blockIndex, int corner) {
    const BlockInfo* b = app_.Blocks.At(blockIndex);
    if (b == nullptr || CurKoutei == nullptr || CurKoutei->Pallet == nullptr ||
        CurPart == nullptr) {
        return 0;
    }
    if (mode != CornerTestMode::Dragging && b->Occupant != kNoOccupant &&
        b->Occupant != CurPart->Seq)
        return 0;
    if (corner != kCornerMinMin && corner != kCornerMinMax && corner != kCornerMaxMin &&
        corner != kCornerMaxMax)
        return 0;
    const PalletInfo& pal = *CurKoutei->Pallet;
    const LengthRect f = Footprint(*b, corner, CurPart->SizeX, CurPart->SizeY);
    if (!OnPallet(f, pal))
        return 0;
    if (const PlacementIndex* index = Index()) {
        const PlacementIndex::Process* p = index->Find(CurKoutei->No);
        if (p == nullptr)
            return 1;
        const auto it = p->PalletStacks.find(b->PalletNo);
        if (it == p->PalletStacks.end())
            return 1;
        // A stack that collides meets the footprint widened by the gaps and the tolerance.
        const double wx = std::abs(pal.StackGapX) + 2 * kLengthTolerance;
        const double wy = std::abs(pal.StackGapY) + 2 * kLengthTolerance;
        const bool known = std::isfinite(f.X0) && std::isfinite(f.X1) && std::isfinite(f.Y0) &&
                           std::isfinite(f.Y1);
        const LengthRect near =
            known ? LengthRect{std::min(f.X0, f.X1) - wx, std::min(f.Y0, f.Y1) - wy,
                               std::max(f.X0, f.X1) + wx, std::max(f.Y0, f.Y1) + wy}
                  : LengthRect{NAN, NAN, NAN, NAN};
        bool obstructed = false;
        it->second.ForNear(near, [&](const HaichiInfo* h) {
            obstructed = Obstructs(*h, *b, mode, f);
            return obstructed;
        });
        return obstructed ? 0 : 1;
    }
    return std::none_of(app_.HaichiList.begin(), app_.HaichiList.end(),
                        [&](const HaichiInfo& h) { return Obstructs(h, *b, mode, f); });
}

bool CKs_Haichi::Obstructs(const HaichiInfo& h, const BlockInfo& tested, CornerTestMode mode,
                           const LengthRect& foot) const {
    const BlockInfo* stands = app_.BlockOf(h);
    if (h.Part == nullptr || stands == nullptr)
        return false;
    const BlockInfo& hb = *stands;
    if (hb.KouteiNo != CurKoutei->No || hb.PalletNo != tested.PalletNo)
        return false;
    if (mode == CornerTestMode::Dragging && InSelection(&h))
        return false;
    return Collides(h, foot, CurKoutei->Pallet->StackGapX, CurKoutei->Pallet->StackGapY);
}

void CKs_Haichi::IndexStack(HaichiInfo* h) {
    if (index_ != nullptr)
        index_->Add(h);
}

template <class Visit>
void CKs_Haichi::ForPalletBlocks(int pallet, const LengthRect& near, Visit&& visit) {
    if (index_ != nullptr) {
        const PlacementIndex::Process* p = index_->Find(CurKoutei->No);
        if (p == nullptr)
            return;
        const auto it = p->PalletBlocks.find(pallet);
        if (it == p->PalletBlocks.end())
            return;
        it->second.ForNear(near, [&](int i) { return visit(app_.Blocks[i]); });
        return;
    }
    for (const int32_t i : app_.Blocks.OfPallet(CurKoutei->No, pallet)) {
        if (visit(app_.Blocks[i]))
            return;
    }
}

int CKs_Haichi::TestRect(KouteiInfo* koutei, double x0, double y0, double x1, double y1, int pallet,
                         const PartsInfo* part) {
    const CallScope call(*this);
    CurKoutei = koutei;
    return TestRect(x0, y0, x1, y1, pallet, part);
}

int CKs_Haichi::TestRect(double x0, double y0, double x1, double y1, int pallet,
                         const PartsInfo* part) {
    if (CurKoutei == nullptr)
        return 1;
    bool blocked = false;
    ForPalletBlocks(pallet, {x0, y0, x1, y1}, [&](BlockInfo& b) {
        if (b.Occupant == kNoOccupant || b.Occupant == OccupantOf(part))
            return false;
        for (const BlockCorner& c : CornersOf(b)) {
            if (CornerIn(c.X, c.Y, x0, y0, x1, y1))
                blocked = true;
        }
        return blocked;
    });
    return blocked ? 0 : 1;
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
    ForPalletBlocks(pallet, {x0, y0, x1, y1}, [&](BlockInfo& b) {
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
