// Moving a group of stacks that the operator dropped on a pallet slot of the drawing area.
#include <algorithm>
#include <cmath>

#include "placement/CKs_Haichi.h"
#include "placement/CornerQuery.h"
#include "placement/PlacementIndex.h"

namespace kesto {

namespace {

bool InSlot(int x, int y, const SlotRect& s) {
    return s.Left <= x && x <= s.Right && s.Top <= y && y <= s.Bottom;
}

// Pixel distance between two points, truncated.
int PixelDistance(int x0, int y0, int x1, int y1) {
    return static_cast<int>(std::hypot(static_cast<double>(x0) - x1, static_cast<double>(y0) - y1));
}

// The drop rectangle's corner that meets a block corner, and the block's own.
int CornerDistance(const IntRect& b, int corner, int left, int top, int right, int bottom) {
    switch (corner) {
        case kCornerMaxMin:
            return PixelDistance(right, bottom, b.Right, b.Bottom);
        case kCornerMaxMax:
            return PixelDistance(right, top, b.Right, b.Top);
        case kCornerMinMin:
            return PixelDistance(left, bottom, b.Left, b.Bottom);
        default:
            return PixelDistance(left, top, b.Left, b.Top);
    }
}

}  // namespace

int CKs_Haichi::DropTarget(int left, int top, int right, int bottom) const {
    const PalletsOnView& candidates = onView_;
    for (size_t s = 0; s < Slots.size(); ++s) {
        const SlotRect& r = Slots[s];
        if (InSlot(left, bottom, r) || InSlot(left, top, r) || InSlot(right, top, r) ||
            InSlot(right, bottom, r)) {
            return candidates[s];
        }
    }
    return -1;
}

int CKs_Haichi::FreeMove(const std::vector<HaichiInfo*>& stacks, const LengthRect& group,
                         int target, int right, int bottom) {
    int first = -1, last = -1;
    bool metTarget = false;
    const int n = app_.Blocks.Filled();
    for (int i = 0; i < n; ++i) {
        const BlockInfo& b = app_.Blocks[i];
        if (b.KouteiNo == CurKoutei->No && b.PalletNo != target) {
            if (metTarget)
                break;
            continue;
        }
        if (b.KouteiNo == CurKoutei->No)
            metTarget = true;
        if (first < 0)
            first = i;
        last = i;
    }
    if (first < 0)
        return 0;
    const BlockInfo& bf = app_.Blocks[first];
    const BlockInfo& bl = app_.Blocks[last];
    const IntRect pf = BlockPixels(first);
    const IntRect pl = BlockPixels(last);
    // Blocks on one pixel column or row give no scale; that direction then does not stretch.
    const int pixX = std::abs(pf.Left - pl.Left);
    const int pixY = std::abs(pf.Bottom - pl.Bottom);
    const double sx = pixX != 0 ? std::fabs(bf.MinX - bl.MinX) / pixX : 0;
    const double sy = pixY != 0 ? std::fabs(bf.MinY - bl.MinY) / pixY : 0;
    for (HaichiInfo* h : stacks) {
        h->X += (right - pf.Left) * sx + bf.MinX - group.X1;
        h->Y += bf.MinY - (bottom - pf.Bottom) * sy - group.Y0;
        const LengthRect r{h->X - h->Part->SizeX, h->Y, h->X, h->Y + h->Part->SizeY};
        MarkCorners(r.X0, r.Y0, r.X1, r.Y1, bl.PalletNo, CurPart);
        int covered = -1, lastOfPallet = -1;
        for (int i = 0; i < n; ++i) {
            const BlockInfo& b = app_.Blocks[i];
            if (b.KouteiNo != CurKoutei->No || b.PalletNo != target)
                continue;
            lastOfPallet = i;
            if (r.X0 <= b.MinX && b.MaxX <= r.X1 && r.Y0 <= b.MinY && b.MaxY <= r.Y1)
                covered = i;
        }
        if (covered >= 0 || lastOfPallet >= 0)
            h->BlockIndex = covered >= 0 ? covered : lastOfPallet;
    }
    return 1;
}

void CKs_Haichi::MoveToCorner(HaichiInfo& h, const LengthRect& group, int blockIndex, int corner) {
    const BlockInfo& b = app_.Blocks[blockIndex];
    const PalletInfo& pal = *CurKoutei->Pallet;
    const double sx = h.Part->SizeX, sy = h.Part->SizeY;
    const CornerPlace at = PlaceInCorner(b, corner, sx, sy, pal.StackGapX, pal.StackGapY);
    const double offX = (corner == kCornerMinMin || corner == kCornerMinMax) ? (h.X - sx) - group.X0
                                                                             : h.X - group.X1;
    const double offY =
        (corner == kCornerMinMin || corner == kCornerMaxMin) ? group.Y0 - h.Y : group.Y1 - h.Y - sy;
    const double testX = at.X - offX;
    const double newY = at.Y - offY;
    const CornerQuery query = Query();
    const LengthRect& area = query.Bounds();
    const bool fits =
        query.CoversArea(CurPart->SizeX, CurPart->SizeY) ||
        (area.X0 - kLengthTolerance < testX - sx && testX < pal.LengthX + kLengthTolerance &&
         area.Y0 - kLengthTolerance < newY && newY + sy < pal.LengthY + kLengthTolerance);
    if (!fits || newY + sy > area.Y1 + kLengthTolerance || testX > area.X1 + kLengthTolerance)
        return;
    // The test takes the offset off the corner, the move adds it; both are kept as they are.
    h.X = at.X + offX;
    h.Y = newY;
    h.BlockIndex = blockIndex;
    MarkCorners(at.Clear.X0, at.Clear.Y0, at.Clear.X1, at.Clear.Y1, b.PalletNo, CurPart);
}

void CKs_Haichi::SnapMove(const std::vector<HaichiInfo*>& stacks, const LengthRect& group,
                          int target, int left, int top, int right, int bottom) {
    int best = 9999, bestBlock = -1, bestCorner = 0;
    {
        // Every corner of the target pallet is weighed against the process's stacks near it;
        // the stacks move only once the corner is chosen.
        IndexScope scope(*this, CurKoutei->No);
        const CornerQuery query = Query();
        for (const int32_t i : app_.Blocks.OfPallet(CurKoutei->No, target)) {
            const BlockInfo& b = app_.Blocks[i];
            for (uint8_t c : kCornerSearchOrder) {
                if ((b.CornerMask & c) != 0 ||
                    query.TestCorner(CornerTestMode::Dragging, i, c) == 0)
                    continue;
                const int d = CornerDistance(BlockPixels(i), c, left, top, right, bottom);
                if (d < best) {
                    best = d;
                    bestBlock = i;
                    bestCorner = c;
                }
            }
        }
    }
    if (bestBlock < 0)
        return;
    for (HaichiInfo* h : stacks)
        MoveToCorner(*h, group, bestBlock, bestCorner);
}

DropResult CKs_Haichi::MoveGroup(KouteiInfo* koutei, const std::vector<HaichiInfo*>& stacks,
                                 int left, int top, int right, int bottom, DropPlacement placement,
                                 const DropInput& drop) {
    const CallScope call(*this);
    Slots = drop.Slots;
    BlockRects = drop.BlockRects;
    Selection = drop.Selection;
    DropPallet = drop.Probe ? -1 : 0;
    const int result = MoveGroup(koutei, stacks, left, top, right, bottom, placement);
    const DropResult out{result, drop.Probe ? DropPallet : -1};
    ClearDrop();
    return out;
}

void CKs_Haichi::ClearDrop() {
    Selection.clear();
    Slots = {};
    BlockRects = {};
    DropPallet = 0;
}

IntRect CKs_Haichi::BlockPixels(int blockIndex) const {
    if (blockIndex < 0 || static_cast<size_t>(blockIndex) >= BlockRects.size())
        return {};
    return BlockRects[static_cast<size_t>(blockIndex)];
}

int CKs_Haichi::MoveGroup(KouteiInfo* koutei, const std::vector<HaichiInfo*>& stacks, int left,
                          int top, int right, int bottom, DropPlacement placement) {
    CurKoutei = koutei;
    ComputeBounds(koutei);
    std::vector<HaichiInfo*> group;
    for (HaichiInfo* h : stacks) {
        if (h != nullptr && h->Part != nullptr)
            group.push_back(h);
    }
    LengthRect g{kNoBound, kNoBound, -kNoBound, -kNoBound};
    for (const HaichiInfo* h : group) {
        g.X0 = std::min(g.X0, h->X - h->Part->SizeX);
        g.Y0 = std::min(g.Y0, h->Y);
        g.X1 = std::max(g.X1, h->X);
        g.Y1 = std::max(g.Y1, h->Y + h->Part->SizeY);
    }
    // The group moves as one part of its overall size.
    PartsInfo groupPart;
    groupPart.SizeX = g.X1 - g.X0;
    groupPart.SizeY = g.Y1 - g.Y0;
    groupPart.Seq = kGroupMoving;
    CurPart = &groupPart;
    const int target = DropTarget(left, top, right, bottom);
    int result = 0;
    if (DropPallet == -1) {
        DropPallet = target;
    } else if (target >= 0 && koutei != nullptr && koutei->Pallet != nullptr) {
        if (placement == DropPlacement::Free) {
            result = FreeMove(group, g, target, right, bottom);
        } else {
            SnapMove(group, g, target, left, top, right, bottom);
            result = 1;
        }
    }
    // The group part dies with this call; the blocks it marked keep a marker that no part
    // matches, so they stay unusable until the next corner rebuild.
    for (BlockInfo& b : app_.Blocks.Entries()) {
        if (b.Occupant == kGroupMoving)
            b.Occupant = kMovedGroup;
    }
    return result;
}

}  // namespace kesto
