// The invariants the editing of a job keeps, checked after every step of the random runs of
// the session and of the window.
#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "history/EditHistory.h"
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

// The parts seen shared out, for CheckCounts, as the job's own history holds them. Retry and
// Auto read every part anew, so none is shared out after them; but taking one of them back
// brings back the job from before it, with the parts shared out then (and maybe set aside
// since, so that their stacks hold less than they count), and doing it again brings back
// those of the job it read.
class SharedOutParts {
  public:
    std::set<int32_t>* Now() { return &now_; }

    // Retry or Auto was carried out.
    void Reloaded() {
        earlier_.push_back(now_);
        now_.clear();
        later_.clear();
        // No more reloads can be taken back than the history keeps steps.
        while (earlier_.size() > kEditHistorySteps)
            earlier_.pop_front();
    }
    // Around Undo or Redo: the step it took back or did again, if any.
    void BeforeUndoOrRedo(const EditHistory& history) {
        undoSteps_ = history.UndoSteps();
        redoSteps_ = history.RedoSteps();
        undoName_ = history.UndoName();
        redoName_ = history.RedoName();
    }
    void AfterUndoOrRedo(const EditHistory& history) {
        if (history.RedoSteps() == redoSteps_ + 1 && IsReload(undoName_))
            Swap(earlier_, later_);
        else if (history.RedoSteps() + 1 == redoSteps_ && IsReload(redoName_))
            Swap(later_, earlier_);
    }
    // After every command: a step recorded anew leaves nothing to do again.
    void Settle(const EditHistory& history) {
        if (history.RedoSteps() == 0)
            later_.clear();
    }

  private:
    static bool IsReload(const std::string& name) {
        return name == step::kRetry || name == step::kAuto;
    }
    // The job on the other side of a reload comes back with the parts shared out in it.
    void Swap(std::deque<std::set<int32_t>>& from, std::deque<std::set<int32_t>>& to) {
        to.push_back(now_);
        now_ = from.empty() ? std::set<int32_t>() : from.back();
        if (!from.empty())
            from.pop_back();
    }

    std::set<int32_t> now_;
    std::deque<std::set<int32_t>> earlier_;  // of the jobs before the reloads Undo takes back
    std::deque<std::set<int32_t>> later_;    // of the jobs read by the reloads Redo does again
    size_t undoSteps_ = 0;
    size_t redoSteps_ = 0;
    std::string undoName_;
    std::string redoName_;
};

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
