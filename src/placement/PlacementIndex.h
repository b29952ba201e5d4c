// Lookups that the engine keeps while one of its bulk operations runs, so that placing or
// restoring a stack costs what its own process and pallet hold rather than the whole job.
// During such an operation the blocks never move and stacks are only appended to the list,
// so the index follows every change through Add alone. It only reads the job: the short
// reasons, which change nothing, ask their questions through one as well.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <unordered_map>
#include <vector>

#include "placement/CKs_Haichi.h"

namespace kesto {

// Rectangles filed under the cells of a uniform grid: a rectangle under every cell its closed
// extent touches (coordinates beyond the grid count in its edge cells), one that is not
// finite or not in order under no cell but visited by every query.
template <class Id>
class RectGrid {
  public:
    RectGrid() = default;
    // A grid over bounds of cells of about cellW x cellH, at most maxCells of them.
    RectGrid(const LengthRect& bounds, double cellW, double cellH, size_t maxCells) {
        if (!Fileable(bounds))
            return;
        columns_ = CellsAlong(bounds.X1 - bounds.X0, cellW);
        rows_ = CellsAlong(bounds.Y1 - bounds.Y0, cellH);
        while (static_cast<size_t>(columns_) * rows_ > std::max<size_t>(maxCells, 1)) {
            columns_ = (columns_ + 1) / 2;
            rows_ = (rows_ + 1) / 2;
        }
        originX_ = bounds.X0;
        originY_ = bounds.Y0;
        cellW_ = bounds.X1 > bounds.X0 ? (bounds.X1 - bounds.X0) / columns_ : 1;
        cellH_ = bounds.Y1 > bounds.Y0 ? (bounds.Y1 - bounds.Y0) / rows_ : 1;
    }

    // Throws std::bad_alloc.
    void Add(Id id, const LengthRect& r) {
        if (!Fileable(r)) {
            unfiled_.push_back(id);
            return;
        }
        // The heads last: a grid with heads has its tails.
        if (heads_.empty()) {
            tails_.assign(static_cast<size_t>(columns_) * rows_, kNone);
            heads_.assign(tails_.size(), kNone);
            // Room for a chunk a cell at once: the pool seldom moves, and room not used is
            // never touched.
            chunks_.reserve(tails_.size());
        }
        for (int y = Row(r.Y0, 0); y <= Row(r.Y1, 0); ++y) {
            for (int x = Column(r.X0, 0); x <= Column(r.X1, 0); ++x)
                File(static_cast<size_t>(y) * columns_ + x, id);
        }
    }

    // Calls visit(id) for every rectangle that meets the closed rectangle q, and for some that
    // do not, some more than once; visit returns true to stop.
    template <class Visit>
    void ForNear(const LengthRect& q, Visit&& visit) const {
        for (const Id& id : unfiled_) {
            if (visit(id))
                return;
        }
        if (heads_.empty())
            return;
        // A corner that is not a number gives the whole extent on its axis.
        const int x0 = Column(q.X0, 0), x1 = Column(q.X1, columns_ - 1);
        const int y0 = Row(q.Y0, 0), y1 = Row(q.Y1, rows_ - 1);
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                for (int32_t c = heads_[static_cast<size_t>(y) * columns_ + x]; c != kNone;) {
                    const Chunk& chunk = chunks_[static_cast<size_t>(c)];
                    for (uint32_t k = 0; k < chunk.Count; ++k) {
                        if (visit(chunk.Ids[k]))
                            return;
                    }
                    c = chunk.Next;
                }
            }
        }
    }

  private:
    // A cell's rectangles in the order they were filed, in chunks chained through one pool:
    // one allocation now and then for all cells rather than one per cell.
    static constexpr uint32_t kChunkRoom = 4;
    static constexpr int32_t kNone = -1;
    struct Chunk {
        std::array<Id, kChunkRoom> Ids{};
        uint32_t Count = 0;
        int32_t Next = kNone;
    };

    // Throws std::bad_alloc before it changes anything.
    void File(size_t cell, Id id) {
        int32_t& tail = tails_[cell];
        if (tail == kNone || chunks_[static_cast<size_t>(tail)].Count == kChunkRoom) {
            const auto added = static_cast<int32_t>(chunks_.size());
            chunks_.emplace_back();
            if (tail == kNone)
                heads_[cell] = added;
            else
                chunks_[static_cast<size_t>(tail)].Next = added;
            tail = added;
        }
        Chunk& last = chunks_[static_cast<size_t>(tail)];
        last.Ids[last.Count++] = id;
    }

    static bool Fileable(const LengthRect& r) {
        return std::isfinite(r.X0) && std::isfinite(r.X1) && std::isfinite(r.Y0) &&
               std::isfinite(r.Y1) && r.X0 <= r.X1 && r.Y0 <= r.Y1;
    }
    static int CellsAlong(double extent, double cell) {
        if (!(cell > 0) || !std::isfinite(extent / cell))
            return 1;
        return static_cast<int>(std::clamp(extent / cell, 1.0, 256.0));
    }
    // The cell of v on an axis, cut to the grid; a NaN gives unknown.
    static int CellOn(double v, double origin, double size, int n, int unknown) {
        if (std::isnan(v))
            return unknown;
        const double t = (v - origin) / size;
        if (!(t > 0))
            return 0;
        return t >= n - 1 ? n - 1 : static_cast<int>(t);
    }
    int Column(double x, int unknown) const {
        return CellOn(x, originX_, cellW_, columns_, unknown);
    }
    int Row(double y, int unknown) const { return CellOn(y, originY_, cellH_, rows_, unknown); }

    double originX_ = 0, originY_ = 0, cellW_ = 1, cellH_ = 1;
    int columns_ = 1, rows_ = 1;
    std::vector<int32_t> heads_;  // each cell's first chunk (made by the first Add)
    std::vector<int32_t> tails_;  // and its last
    std::vector<Chunk> chunks_;
    std::vector<Id> unfiled_;
};

class PlacementIndex {
  public:
    // The blocks of one process, and its blocks and stacks by pallet: blocks under their
    // rectangles, stacks under their footprints without the gaps.
    struct Process {
        std::vector<int> Blocks;  // in table order
        std::unordered_map<int, RectGrid<int>> PalletBlocks;
        std::unordered_map<int, RectGrid<const HaichiInfo*>> PalletStacks;
        LengthRect Bounds{kNoBound, kNoBound, -kNoBound, -kNoBound};
        // Empty grids over the process's blocks, copied for each pallet.
        RectGrid<int> BlockGrid;
        RectGrid<const HaichiInfo*> StackGrid;
    };

    // Indexes the job's filled blocks and every stack; with only, the blocks and stacks of
    // that process alone, for an operation that asks of no other. Throws std::bad_alloc.
    explicit PlacementIndex(const CKestoApp& app, std::optional<int32_t> only = std::nullopt);

    // The process's entry, or null when it has no block.
    const Process* Find(int32_t kouteiNo) const;
    // The ids of the part's stacks in list order, or null when it has none.
    const std::vector<StackId>* StacksOf(const PartsInfo* part) const;
    // Files a stack just appended to the list. Without memory for it the index stops being
    // usable (its block lists stay valid until it is destroyed).
    void Add(const HaichiInfo* h);
    bool Usable() const { return usable_; }

    // The restore's block search over the table: the last block inside r, else the first
    // block holding the corner point (px, py) (when hasPoint), among the blocks that the
    // restore's scan for this process and stored pallet reaches. -1 when none; nothing when
    // memory for the search ran out.
    std::optional<int> FindRestoreBlock(int32_t kouteiNo, int storedPallet, const LengthRect& r,
                                        bool hasPoint, double px, double py);

  private:
    // The end of the restore's scan: the first block of the process on another pallet after
    // its blocks on the stored pallet, or the end of the table.
    int RestoreScanEnd(int32_t kouteiNo, int storedPallet);

    const CKestoApp& app_;
    std::optional<int32_t> only_;  // the one process indexed, when not all are
    int blockLimit_;               // the filled blocks when the index was made
    bool usable_ = true;
    std::unordered_map<int32_t, Process> processes_;
    std::unordered_map<const PartsInfo*, std::vector<StackId>> partStacks_;
    std::unique_ptr<RectGrid<int>> grid_;  // every block; built by the first restore search
    std::unordered_map<int64_t, int> scanEnds_;
};

// The bounds of the blocks of koutei as ProcessBounds gives them, from the index when there is
// one (a process without blocks there has the empty bounds).
LengthRect ProcessBounds(const CKestoApp& app, const PlacementIndex* index,
                         const KouteiInfo* koutei);

// Builds the engine's index for the length of an operation, unless one is up already.
class CKs_Haichi::IndexScope {
  public:
    // only: the operation asks of that process alone (its corners, its stacks).
    explicit IndexScope(CKs_Haichi& engine, std::optional<int32_t> only = std::nullopt)
        : engine_(engine), owner_(engine.index_ == nullptr) {
        if (!owner_)
            return;
        try {
            engine.index_ = std::make_unique<PlacementIndex>(engine.app_, only);
        } catch (const std::bad_alloc&) {
            engine.index_.reset();
        }
    }
    ~IndexScope() {
        if (owner_)
            engine_.index_.reset();
    }
    IndexScope(const IndexScope&) = delete;
    IndexScope& operator=(const IndexScope&) = delete;

  private:
    CKs_Haichi& engine_;
    bool owner_;
};

}  // namespace kesto
