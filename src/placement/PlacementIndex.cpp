#include "placement/PlacementIndex.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>

namespace kesto {

namespace {

// The extent of a set of blocks and their average size, for the grids over them.
struct BlockExtent {
    LengthRect Bounds{INFINITY, INFINITY, -INFINITY, -INFINITY};
    double SumW = 0, SumH = 0;
    size_t Count = 0;

    void Take(const BlockInfo& b) {
        if (!std::isfinite(b.MinX) || !std::isfinite(b.MaxX) || !std::isfinite(b.MinY) ||
            !std::isfinite(b.MaxY) || b.MinX > b.MaxX || b.MinY > b.MaxY)
            return;
        Bounds.X0 = std::min(Bounds.X0, b.MinX), Bounds.Y0 = std::min(Bounds.Y0, b.MinY);
        Bounds.X1 = std::max(Bounds.X1, b.MaxX), Bounds.Y1 = std::max(Bounds.Y1, b.MaxY);
        SumW += b.MaxX - b.MinX, SumH += b.MaxY - b.MinY;
        ++Count;
    }
    template <class Id>
    RectGrid<Id> Grid(size_t maxCells) const {
        if (Count == 0)
            return {};
        return {Bounds, SumW / Count, SumH / Count, maxCells};
    }
};

LengthRect RectOf(const BlockInfo& b) {
    return {b.MinX, b.MinY, b.MaxX, b.MaxY};
}

// A few cells per block at most: the grids stay small next to the table.
size_t MostCells(size_t blocks) {
    return 4 * blocks + 16;
}

}  // namespace

PlacementIndex::PlacementIndex(const CKestoApp& app, std::optional<int32_t> only)
    : app_(app), only_(only), blockLimit_(app.Blocks.Filled()) {
    std::unordered_map<int32_t, BlockExtent> extents;
    // The table holds each process's blocks one after another: one lookup per run of them.
    Process* run = nullptr;
    BlockExtent* runExtent = nullptr;
    for (int i = 0; i < blockLimit_; ++i) {
        const BlockInfo& b = app.Blocks[i];
        if (only_ && b.KouteiNo != *only_)
            continue;
        if (run == nullptr || app.Blocks[i - 1].KouteiNo != b.KouteiNo) {
            run = &processes_[b.KouteiNo];
            runExtent = &extents[b.KouteiNo];
        }
        run->Blocks.push_back(i);
        // In table order, as a scan of the table takes them.
        run->Bounds.X0 = std::min(run->Bounds.X0, b.MinX);
        run->Bounds.X1 = std::max(run->Bounds.X1, b.MaxX);
        run->Bounds.Y0 = std::min(run->Bounds.Y0, b.MinY);
        run->Bounds.Y1 = std::max(run->Bounds.Y1, b.MaxY);
        runExtent->Take(b);
    }
    for (auto& [no, p] : processes_) {
        const BlockExtent& extent = extents[no];
        p.BlockGrid = extent.Grid<int>(MostCells(p.Blocks.size()));
        p.StackGrid = extent.Grid<const HaichiInfo*>(MostCells(p.Blocks.size()));
        for (int i : p.Blocks) {
            const BlockInfo& b = app.Blocks[i];
            p.PalletBlocks.try_emplace(b.PalletNo, p.BlockGrid).first->second.Add(i, RectOf(b));
        }
    }
    partStacks_.reserve(app.PartsList.Items.size());
    for (const HaichiInfo& h : app.HaichiList)
        Add(&h);
    if (!usable_)
        throw std::bad_alloc();
}

const PlacementIndex::Process* PlacementIndex::Find(int32_t kouteiNo) const {
    const auto it = processes_.find(kouteiNo);
    return it == processes_.end() ? nullptr : &it->second;
}

const std::vector<StackId>* PlacementIndex::StacksOf(const PartsInfo* part) const {
    const auto it = partStacks_.find(part);
    return it == partStacks_.end() ? nullptr : &it->second;
}

void PlacementIndex::Add(const HaichiInfo* h) {
    const BlockInfo* stands = app_.BlockOf(*h);
    if (only_ && (stands == nullptr || stands->KouteiNo != *only_))
        return;
    try {
        partStacks_[h->Part].push_back(h->Id);
        // A stack without a part or block never stands in the way.
        if (h->Part == nullptr || stands == nullptr)
            return;
        const BlockInfo& b = *stands;
        Process& p = processes_[b.KouteiNo];
        p.PalletStacks.try_emplace(b.PalletNo, p.StackGrid)
            .first->second.Add(h, {h->X - h->Part->SizeX, h->Y, h->X, h->Y + h->Part->SizeY});
    } catch (const std::bad_alloc&) {
        usable_ = false;
    }
}

LengthRect ProcessBounds(const CKestoApp& app, const PlacementIndex* index,
                         const KouteiInfo* koutei) {
    if (koutei == nullptr || index == nullptr)
        return ProcessBounds(app, koutei);
    const PlacementIndex::Process* p = index->Find(koutei->No);
    return p != nullptr ? p->Bounds : LengthRect{kNoBound, kNoBound, -kNoBound, -kNoBound};
}

int PlacementIndex::RestoreScanEnd(int32_t kouteiNo, int storedPallet) {
    const int64_t key = (int64_t{kouteiNo} << 32) | static_cast<uint32_t>(storedPallet);
    const auto known = scanEnds_.find(key);
    if (known != scanEnds_.end())
        return known->second;
    int end = blockLimit_;
    if (const Process* p = Find(kouteiNo)) {
        bool met = false;
        for (int i : p->Blocks) {
            const bool stored = app_.Blocks[i].PalletNo == storedPallet;
            if (stored) {
                met = true;
            } else if (met) {
                end = i;
                break;
            }
        }
    }
    scanEnds_.emplace(key, end);
    return end;
}

std::optional<int> PlacementIndex::FindRestoreBlock(int32_t kouteiNo, int storedPallet,
                                                    const LengthRect& r, bool hasPoint, double px,
                                                    double py) {
    int end = 0;
    try {
        if (grid_ == nullptr) {
            BlockExtent extent;
            for (int i = 0; i < blockLimit_; ++i)
                extent.Take(app_.Blocks[i]);
            auto grid = std::make_unique<RectGrid<int>>(extent.Grid<int>(MostCells(blockLimit_)));
            for (int i = 0; i < blockLimit_; ++i)
                grid->Add(i, RectOf(app_.Blocks[i]));
            grid_ = std::move(grid);
        }
        end = RestoreScanEnd(kouteiNo, storedPallet);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
    // The scan passes over the process's blocks on other pallets and stops at its end.
    auto reached = [&](int i, const BlockInfo& b) {
        return i < end && !(b.KouteiNo == kouteiNo && b.PalletNo != storedPallet);
    };
    int found = -1;
    grid_->ForNear(r, [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
        if (i > found && reached(i, b) && r.X0 <= b.MinX && r.X1 >= b.MaxX && r.Y0 <= b.MinY &&
            r.Y1 >= b.MaxY)
            found = i;
        return false;
    });
    if (found >= 0 || !hasPoint)
        return found;
    int first = INT_MAX;
    grid_->ForNear({px, py, px, py}, [&](int i) {
        const BlockInfo& b = app_.Blocks[i];
        if (i < first && reached(i, b) && b.MinX <= px && px <= b.MaxX && b.MinY <= py &&
            py <= b.MaxY)
            first = i;
        return false;
    });
    return first == INT_MAX ? -1 : first;
}

}  // namespace kesto
