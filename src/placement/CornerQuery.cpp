#include "placement/CornerQuery.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

namespace kesto {

namespace {

// Strictly inside the rectangle widened by the tolerance.
bool PointIn(double px, double py, const LengthRect& r) {
    return r.X0 - kLengthTolerance < px && px < r.X1 + kLengthTolerance &&
           r.Y0 - kLengthTolerance < py && py < r.Y1 + kLengthTolerance;
}

bool Between(double lo, double v, double hi) {
    return lo - kLengthTolerance < v && v < hi + kLengthTolerance;
}

// The bits of n doubles, to tell them apart exactly.
template <size_t N>
std::array<uint64_t, N> Bits(const std::array<double, N>& values) {
    std::array<uint64_t, N> bits{};
    std::memcpy(bits.data(), values.data(), sizeof bits);
    return bits;
}

// The number of key in numbers, a new one (with block as its first) when it has none.
template <class Key>
int Number(std::map<Key, int>& numbers, const Key& key, int block, std::vector<int>& firsts) {
    const auto [at, added] = numbers.try_emplace(key, static_cast<int>(firsts.size()));
    if (added)
        firsts.push_back(block);
    return at->second;
}

}  // namespace

bool Collides(const HaichiInfo& stack, const LengthRect& f, double gx, double gy) {
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

bool CornerQuery::PassedOver(const HaichiInfo* stack) const {
    return std::find(passOver_.begin(), passOver_.end(), stack) != passOver_.end();
}

int CornerQuery::TestCorner(CornerTestMode mode, int blockIndex, int corner) const {
    const BlockInfo* b = app_.Blocks.At(blockIndex);
    if (b == nullptr || koutei_ == nullptr || koutei_->Pallet == nullptr || part_ == nullptr)
        return 0;
    if (mode != CornerTestMode::Dragging && b->Occupant != kNoOccupant && b->Occupant != part_->Seq)
        return 0;
    if (corner != kCornerMinMin && corner != kCornerMinMax && corner != kCornerMaxMin &&
        corner != kCornerMaxMax)
        return 0;
    const PalletInfo& pal = *koutei_->Pallet;
    const LengthRect f = Footprint(*b, corner, part_->SizeX, part_->SizeY);
    if (!OnPallet(f, pal))
        return 0;
    if (index_ != nullptr && index_->Usable()) {
        const PlacementIndex::Process* p = IndexedProcess();
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

bool CornerQuery::Obstructs(const HaichiInfo& h, const BlockInfo& tested, CornerTestMode mode,
                            const LengthRect& foot) const {
    const BlockInfo* stands = app_.BlockOf(h);
    if (h.Part == nullptr || stands == nullptr)
        return false;
    const BlockInfo& hb = *stands;
    if (hb.KouteiNo != koutei_->No || hb.PalletNo != tested.PalletNo)
        return false;
    if (mode == CornerTestMode::Dragging && PassedOver(&h))
        return false;
    return Collides(h, foot, koutei_->Pallet->StackGapX, koutei_->Pallet->StackGapY);
}

int CornerQuery::TestRect(double x0, double y0, double x1, double y1, int pallet,
                          const PartsInfo* part) const {
    if (koutei_ == nullptr)
        return 1;
    bool blocked = false;
    ForPalletBlocks(pallet, {x0, y0, x1, y1}, [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
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

int CornerQuery::NextCorner(int blockIndex, uint8_t& blocked, CornerPlace& at) const {
    const BlockInfo& b = app_.Blocks[blockIndex];
    int corner = 0;
    for (uint8_t c : kCornerSearchOrder) {
        if ((b.CornerMask & c) != 0 || (blocked & c) != 0)
            continue;
        if (TestCorner(CornerTestMode::Placing, blockIndex, c) != 0) {
            corner = c;
            break;
        }
        blocked |= c;
    }
    if (corner == 0)
        return 0;
    const PalletInfo& pal = *koutei_->Pallet;
    at = PlaceInCorner(b, corner, part_->SizeX, part_->SizeY, pal.StackGapX, pal.StackGapY);
    if (!InsideArea(at, part_->SizeX, part_->SizeY))
        return 0;
    const LengthRect& r = at.Clear;
    return TestRect(r.X0, r.Y0, r.X1, r.Y1, b.PalletNo, part_) != 0 ? corner : 0;
}

bool CornerQuery::HoldsAcross(const BlockInfo& b, double sx, const PalletInfo& pal,
                              bool anywhere) const {
    // The footprint's x sides at the block's low side, then at its high side; the stack's
    // reference point is the footprint's right side.
    for (const bool low : {true, false}) {
        const double x0 = low ? b.MinX : b.MaxX - sx;
        const double x1 = low ? b.MinX + sx : b.MaxX;
        const bool onPallet = !(x0 < 0 || x1 > pal.LengthX);
        const bool inside =
            bounds_.X0 - kLengthTolerance < x1 - sx && x1 < bounds_.X1 + kLengthTolerance;
        if (onPallet && (anywhere || inside))
            return true;
    }
    return false;
}

bool CornerQuery::HoldsAlong(const BlockInfo& b, double sy, const PalletInfo& pal,
                             bool anywhere) const {
    // At the block's bottom, then at its top; the reference point is the footprint's bottom.
    for (const bool bottom : {true, false}) {
        const double y0 = bottom ? b.MinY : b.MaxY - sy;
        const double y1 = bottom ? b.MinY + sy : b.MaxY;
        const bool onPallet = !(y0 < pal.MarginY || y1 > pal.LengthY);
        const bool inside =
            bounds_.Y0 - kLengthTolerance < y0 && y0 + sy < bounds_.Y1 + kLengthTolerance;
        if (onPallet && (anywhere || inside))
            return true;
    }
    return false;
}

BlockShapes BlockShapesOf(const CKestoApp& app, const PlacementIndex* index,
                          const KouteiInfo& koutei) {
    BlockShapes shapes;
    const PlacementIndex::Process* p = index != nullptr ? index->Find(koutei.No) : nullptr;
    if (p != nullptr)
        shapes.Blocks = p->Blocks;
    else if (index == nullptr) {
        for (const int32_t i : app.Blocks.OfProcess(koutei.No))
            shapes.Blocks.push_back(i);
    }
    // Rectangles and spans told apart by their bits: a NaN is one with itself.
    std::map<std::array<uint64_t, 4>, int> rectangles;
    std::map<std::array<uint64_t, 2>, int> across;
    std::map<std::array<uint64_t, 2>, int> along;
    shapes.ShapeOf.reserve(shapes.Blocks.size());
    for (int i : shapes.Blocks) {
        const BlockInfo& b = app.Blocks[i];
        const auto [at, added] = rectangles.try_emplace(Bits<4>({b.MinX, b.MinY, b.MaxX, b.MaxY}),
                                                        static_cast<int>(shapes.Firsts.size()));
        shapes.ShapeOf.push_back(at->second);
        if (!added)
            continue;
        shapes.Firsts.push_back(i);
        shapes.AcrossOf.push_back(
            Number(across, Bits<2>({b.MinX, b.MaxX}), i, shapes.AcrossFirsts));
        shapes.AlongOf.push_back(Number(along, Bits<2>({b.MinY, b.MaxY}), i, shapes.AlongFirsts));
    }
    return shapes;
}

std::vector<char> CornerQuery::HoldingShapes(const BlockShapes& shapes) const {
    std::vector<char> holding(shapes.Firsts.size());
    if (koutei_ == nullptr || koutei_->Pallet == nullptr || part_ == nullptr)
        return holding;
    const double sx = part_->SizeX, sy = part_->SizeY;
    const PalletInfo& pal = *koutei_->Pallet;
    const bool anywhere = CoversArea(sx, sy);
    std::vector<char> across(shapes.AcrossFirsts.size());
    for (size_t k = 0; k < across.size(); ++k)
        across[k] = HoldsAcross(app_.Blocks[shapes.AcrossFirsts[k]], sx, pal, anywhere) ? 1 : 0;
    std::vector<char> along(shapes.AlongFirsts.size());
    for (size_t k = 0; k < along.size(); ++k)
        along[k] = HoldsAlong(app_.Blocks[shapes.AlongFirsts[k]], sy, pal, anywhere) ? 1 : 0;
    for (size_t s = 0; s < holding.size(); ++s) {
        holding[s] = across[static_cast<size_t>(shapes.AcrossOf[s])] != 0 &&
                             along[static_cast<size_t>(shapes.AlongOf[s])] != 0
                         ? 1
                         : 0;
    }
    return holding;
}

bool CornerQuery::TakesNext(std::span<const int> blocks) const {
    if (part_ == nullptr)
        return false;
    for (int i : blocks) {
        const BlockInfo& b = app_.Blocks[i];
        if (b.Occupant != kNoOccupant && b.Occupant != part_->Seq)
            continue;
        uint8_t blocked = 0;
        CornerPlace at;
        if (NextCorner(i, blocked, at) != 0)
            return true;
    }
    return false;
}

BlockRoom RoomFor(const CKestoApp& app, const PlacementIndex* index, const KouteiInfo& koutei,
                  const PartsInfo& part) {
    BlockRoom room;
    if (koutei.Pallet == nullptr)
        return room;
    const CornerQuery query(app, index, &koutei, &part, ProcessBounds(app, index, &koutei));
    const BlockShapes shapes = BlockShapesOf(app, index, koutei);
    const std::vector<char> holding = query.HoldingShapes(shapes);
    room.Fitting.reserve(shapes.Blocks.size());
    for (size_t k = 0; k < shapes.Blocks.size(); ++k) {
        if (holding[static_cast<size_t>(shapes.ShapeOf[k])] != 0)
            room.Fitting.push_back(shapes.Blocks[k]);
    }
    room.Free = query.TakesNext(room.Fitting);
    return room;
}

}  // namespace kesto
