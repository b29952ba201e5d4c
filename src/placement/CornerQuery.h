// The engine's questions about one process and one part, asked of the job as it stands: may a
// stack stand in this block corner, does a rectangle reach a corner of a block that another
// part holds, which corner takes the next stack, could a block hold a stack at all. A query
// reads the job and never changes it; the engine asks one for each step and acts on the answer.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "app/CKestoApp.h"
#include "placement/PlacementIndex.h"

namespace kesto {

// Open at the low side, closed at the high side.
inline bool CornerIn(double cx, double cy, double x0, double y0, double x1, double y1) {
    return x0 < cx && cx <= x1 && y0 < cy && cy <= y1;
}

// The block corners in the order the rectangle tests take them, with their mask bits.
struct BlockCorner {
    double X;
    double Y;
    uint8_t Bit;
};

inline std::array<BlockCorner, 4> CornersOf(const BlockInfo& b) {
    return {{{b.MinX, b.MinY, kCornerMinMin},
             {b.MinX, b.MaxY, kCornerMinMax},
             {b.MaxX, b.MaxY, kCornerMaxMax},
             {b.MaxX, b.MinY, kCornerMaxMin}}};
}

// The blocks of a process by their rectangles. Whether a block could hold a stack asks its
// rectangle alone, and the pallets of a process, all of one type, repeat the same rectangles:
// one answer serves every block of a rectangle. It asks the rectangle's span across (x) and
// its span along (y) apart, and the rectangles of a grid share their spans.
struct BlockShapes {
    std::vector<int> Blocks;        // the process's blocks in table order
    std::vector<int> ShapeOf;       // the rectangle of each of Blocks, numbered as Firsts
    std::vector<int> Firsts;        // the first block of each rectangle
    std::vector<int> AcrossOf;      // the span across of each rectangle, numbered as below
    std::vector<int> AlongOf;       // the span along of each rectangle
    std::vector<int> AcrossFirsts;  // the first block of each span across
    std::vector<int> AlongFirsts;   // the first block of each span along
};
// index: as for CornerQuery.
BlockShapes BlockShapesOf(const CKestoApp& app, const PlacementIndex* index,
                          const KouteiInfo& koutei);

class CornerQuery {
  public:
    // koutei and part may be null: then no corner takes a stack and no rectangle is refused.
    // index: the engine's index while one is up (else every question scans the lists);
    // bounds: the process's (ProcessBounds); passOver: the stacks being dragged.
    CornerQuery(const CKestoApp& app, const PlacementIndex* index, const KouteiInfo* koutei,
                const PartsInfo* part, const LengthRect& bounds,
                std::span<HaichiInfo* const> passOver = {})
        : app_(app),
          index_(index),
          koutei_(koutei),
          part_(part),
          bounds_(bounds),
          passOver_(passOver) {}

    // May a stack of the part stand in that corner of the block? 1 yes, 0 no.
    int TestCorner(CornerTestMode mode, int blockIndex, int corner) const;
    // 0 when the rectangle reaches a corner of a block of the pallet that a part other than
    // part holds, else 1.
    int TestRect(double x0, double y0, double x1, double y1, int pallet,
                 const PartsInfo* part) const;
    // The corner of the block that the next stack of the part takes, 0 when none: the first
    // corner in search order that is free and that TestCorner allows, provided the stack there
    // stays inside the process's area and covers no corner of a block another part holds.
    // blocked: the corners found blocked so far; each stack added can only block more, so they
    // stay blocked. at: where the stack stands in the corner found.
    int NextCorner(int blockIndex, uint8_t& blocked, CornerPlace& at) const;
    // Some corner of block b could take a stack of size sx x sy on an empty pallet; anywhere:
    // the part covers the process's area, so that the area does not bound it.
    bool CouldHold(const BlockInfo& b, double sx, double sy, const PalletInfo& pal,
                   bool anywhere) const {
        return HoldsAcross(b, sx, pal, anywhere) && HoldsAlong(b, sy, pal, anywhere);
    }
    // CouldHold on one axis. A corner pairs one of the block's x sides with one of its y
    // sides, and each is tested on its own axis: some corner holds the stack exactly when
    // some x side and some y side do.
    bool HoldsAcross(const BlockInfo& b, double sx, const PalletInfo& pal, bool anywhere) const;
    bool HoldsAlong(const BlockInfo& b, double sy, const PalletInfo& pal, bool anywhere) const;
    // A part at least as large as the process's area in one direction fits anywhere.
    bool CoversArea(double sx, double sy) const {
        return bounds_.X1 - bounds_.X0 - kLengthTolerance <= sx ||
               bounds_.Y1 - bounds_.Y0 - kLengthTolerance <= sy;
    }
    // A stack of size sx x sy with its reference point at x, y lies within the process's blocks.
    bool WithinBounds(double x, double y, double sx, double sy) const {
        return bounds_.X0 - kLengthTolerance < x - sx && x < bounds_.X1 + kLengthTolerance &&
               bounds_.Y0 - kLengthTolerance < y && y + sy < bounds_.Y1 + kLengthTolerance;
    }
    const LengthRect& Bounds() const { return bounds_; }
    // For each rectangle of shapes (of the process's blocks): could a block of it take a stack
    // of the part on empty pallets (CouldHold, as RoomFor asks it).
    std::vector<char> HoldingShapes(const BlockShapes& shapes) const;
    // Would one of blocks that the part may use (no part or the part itself holds it) take
    // its next stack now?
    bool TakesNext(std::span<const int> blocks) const;

    // Calls visit with the index of each block of the process on pallet until it returns true;
    // with an index only those near the rectangle (the others' corners lie outside it), some
    // twice.
    template <class Visit>
    void ForPalletBlocks(int pallet, const LengthRect& near, Visit&& visit) const {
        if (koutei_ == nullptr)
            return;
        // The index's block lists stay valid even when it stopped being usable.
        if (index_ != nullptr) {
            const PlacementIndex::Process* p = IndexedProcess();
            if (p == nullptr)
                return;
            const auto it = p->PalletBlocks.find(pallet);
            if (it == p->PalletBlocks.end())
                return;
            it->second.ForNear(near, [&](int i) { return visit(i); });
            return;
        }
        for (const int32_t i : app_.Blocks.OfPallet(koutei_->No, pallet)) {
            if (visit(i))
                return;
        }
    }

  private:
    // The stack stays within the process's blocks, or the part is too large for that to matter.
    bool InsideArea(const CornerPlace& at, double sx, double sy) const {
        return WithinBounds(at.X, at.Y, sx, sy) || CoversArea(sx, sy);
    }
    // A stack that TestCorner weighs against a footprint on the tested block's pallet.
    bool Obstructs(const HaichiInfo& h, const BlockInfo& tested, CornerTestMode mode,
                   const LengthRect& foot) const;
    bool PassedOver(const HaichiInfo* stack) const;

    const CKestoApp& app_;
    // The index's entry of the process, looked up once for the query's many questions; the
    // entry of a process stays where it is while the index lives.
    const PlacementIndex::Process* IndexedProcess() const {
        if (process_ == nullptr)
            process_ = index_->Find(koutei_->No);
        return process_;
    }

    const PlacementIndex* index_;
    mutable const PlacementIndex::Process* process_ = nullptr;
    const KouteiInfo* koutei_;
    const PartsInfo* part_;
    LengthRect bounds_;
    std::span<HaichiInfo* const> passOver_;
};

// What the blocks of koutei offer a stack of part as the job stands: those that could take one
// on empty pallets (in some corner the pallet's edges and the process's area allow it), and
// whether one of them would take the next stack now.
struct BlockRoom {
    std::vector<int> Fitting;  // block indexes
    bool Free = false;
};
// index: as for CornerQuery.
BlockRoom RoomFor(const CKestoApp& app, const PlacementIndex* index, const KouteiInfo& koutei,
                  const PartsInfo& part);

// TestCorner's collision test of one stack against the footprint, with the gaps gx, gy.
bool Collides(const HaichiInfo& stack, const LengthRect& foot, double gx, double gy);

}  // namespace kesto
