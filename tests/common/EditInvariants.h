// The invariants the editing of a job keeps, checked after every step of the random runs of
// the session and of the window.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "view/PalletDrawing.h"

namespace kesto::test {

// No stack refers to a part that is gone or to a block outside the table, and the pick, the
// pick history and the band hold only stacks of the job.
inline std::string CheckReferences(CKestoApp& app, const PalletDrawing& d) {
    std::set<const PartsInfo*> parts;
    for (const PartsInfo& p : app.PartsList)
        parts.insert(&p);
    for (const HaichiInfo& h : app.HaichiList) {
        if (app.HaichiList.Find(h.Id) != &h)
            return "a stack is not found by its id " + std::to_string(static_cast<int32_t>(h.Id));
        if (parts.count(h.Part) == 0)
            return "a stack refers to a part that is not in the job";
        if (h.BlockIndex < 0 || h.BlockIndex >= app.Blocks.Count())
            return "a stack's block index is outside the table: " + std::to_string(h.BlockIndex);
    }
    auto live = [&](StackId id) { return id == kNoStack || app.HaichiList.Find(id) != nullptr; };
    if (!live(d.Selected().Picked()) || !live(d.Selected().LastPicked()))
        return "the pick is not a stack of the job";
    for (const StackId h : d.Selected().PickHistory()) {
        if (!live(h))
            return "the pick history holds a record that is gone";
    }
    for (const BandEntry& e : d.Selected().BandList()) {
        if (!live(e.Stack))
            return "the band holds a record that is gone";
    }
    return "";
}

// Every part's placed pieces are the pieces of its stacks, except for the parts in sharedOut:
// a part that did not fit wholly into two or more stacks has its whole quantity shared out
// over them, so from then on its stacks hold more than it counts as placed. Such a part is
// added to sharedOut when it is first seen; any other difference is reported.
inline std::string CheckCounts(CKestoApp& app, std::set<int32_t>* sharedOut = nullptr) {
    std::map<const PartsInfo*, int64_t> sums;
    std::map<const PartsInfo*, int> stacks;
    for (const HaichiInfo& h : app.HaichiList) {
        sums[h.Part] += h.Pieces;
        ++stacks[h.Part];
    }
    for (const PartsInfo& p : app.PartsList) {
        if (sums[&p] == p.PiecesPlaced)
            continue;
        if (sharedOut != nullptr && sharedOut->count(p.Seq) == 1)
            continue;
        const bool shared = p.PiecesPlaced < p.Quantity && sums[&p] == p.Quantity && stacks[&p] > 1;
        if (sharedOut != nullptr && shared) {
            sharedOut->insert(p.Seq);
            continue;
        }
        return "part " + std::to_string(p.Seq) + " counts " + std::to_string(p.PiecesPlaced) +
               " placed pieces, its stacks hold " + std::to_string(sums[&p]);
    }
    return "";
}

// A block corner point lies in a stack's footprint (edges included).
inline bool Holds(const HaichiInfo& h, double x, double y) {
    constexpr double e = 0.0001;
    return h.X - h.Part->SizeX - e <= x && x <= h.X + e && h.Y - e <= y &&
           y <= h.Y + h.Part->SizeY + e;
}

inline std::string CheckCorners(const CKestoApp& app) {
    std::map<std::pair<int32_t, int32_t>, std::vector<const HaichiInfo*>> byPallet;
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo& b = app.Blocks[static_cast<size_t>(h.BlockIndex)];
        byPallet[{b.KouteiNo, b.PalletNo}].push_back(&h);
    }
    for (int32_t i = 0; i < app.Blocks.Count(); ++i) {
        const BlockInfo& b = app.Blocks[static_cast<size_t>(i)];
        const auto it = byPallet.find({b.KouteiNo, b.PalletNo});
        if (it == byPallet.end())
            continue;
        for (const auto& [x, y] : {std::pair{b.MinX, b.MinY}, std::pair{b.MinX, b.MaxY},
                                   std::pair{b.MaxX, b.MinY}, std::pair{b.MaxX, b.MaxY}}) {
            int holders = 0;
            for (const HaichiInfo* h : it->second)
                holders += Holds(*h, x, y) ? 1 : 0;
            if (holders > 1)
                return "a corner of block " + std::to_string(i) + " holds " +
                       std::to_string(holders) + " stacks";
        }
    }
    return "";
}

}  // namespace kesto::test
