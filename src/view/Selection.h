// The operator's selection in the drawing area: the pick, the stacks picked with it, and the
// rubber band. The hit test and the session's editing operations change it; the window and
// the panels only read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "app/JobModel.h"
#include "app/Rect.h"

namespace kesto {

// Band entries and pick history kept at most.
inline constexpr size_t kBandListCapacity = 999;
inline constexpr size_t kPickHistoryCapacity = 1000;

// The rubber band's state (BandActive).
enum class BandState : int32_t {
    Off = 0,      // no band: the pick is the selection
    InForce = 1,  // the band's entries are the selection; a hit test collects into it
    // The band is set aside: a point test runs inside it, or a drag emptied it and the
    // release lets it go.
    Aside = 2,
};

struct BandEntry {
    HaichiInfo* Record = nullptr;
    IntRect Rect{};
};

class Selection {
  public:
    HaichiInfo* Picked() const { return picked_; }
    HaichiInfo* LastPicked() const { return lastPicked_; }
    // The stacks a pick took: the one hit, then its block's others (picking by block).
    const std::vector<HaichiInfo*>& PickHistory() const { return history_; }
    // The pick's screen rectangle, grown by the stacks picked with it.
    const IntRect& PickRect() const { return pickRect_; }
    BandState Band() const { return band_; }
    const std::vector<BandEntry>& BandList() const { return bandList_; }
    const IntRect& BandRect() const { return bandRect_; }

    void SetPicked(HaichiInfo* stack) { picked_ = stack; }
    void SetLastPicked(HaichiInfo* stack) { lastPicked_ = stack; }
    void SetPickRect(const IntRect& rect) { pickRect_ = rect; }
    // Appends a stack while the history has room.
    void AddToHistory(HaichiInfo* stack);
    void ClearHistory() { history_.clear(); }
    // No pick, no last pick, no history.
    void ForgetPicks();

    void SetBand(BandState state) { band_ = state; }
    // A band in force over rect, its entries still to be collected.
    void StartBand(const IntRect& rect);
    // Appends an entry while the list has room.
    void AddBandEntry(const BandEntry& entry);
    // Takes the stack's entry out; false when it had none.
    bool RemoveBandEntry(const HaichiInfo* stack);
    bool HasBandEntry(const HaichiInfo* stack) const;
    void MoveBandEntry(size_t index, const IntRect& rect) { bandList_.at(index).Rect = rect; }
    void ClearBandList() { bandList_.clear(); }

    // Forgets the rubber band and the picks.
    void Reset();

  private:
    HaichiInfo* picked_ = nullptr;
    HaichiInfo* lastPicked_ = nullptr;
    std::vector<HaichiInfo*> history_;  // at most kPickHistoryCapacity
    IntRect pickRect_{};
    BandState band_ = BandState::Off;
    std::vector<BandEntry> bandList_;  // at most kBandListCapacity
    IntRect bandRect_{};
};

}  // namespace kesto
