// The operator's selection in the drawing area: the pick, the stacks picked with it, and the
// rubber band. The hit test and the session's editing operations change it; the window and
// the panels only read it. It names stacks by id, so that it outlives any command: a stack
// that is gone is found as nothing (StackList::Find).
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
    StackId Stack = kNoStack;
    IntRect Rect{};
    bool operator==(const BandEntry&) const = default;
};

class Selection {
  public:
    StackId Picked() const { return picked_; }
    StackId LastPicked() const { return lastPicked_; }
    // The stacks a pick took: the one hit, then its block's others (picking by block).
    const std::vector<StackId>& PickHistory() const { return history_; }
    // The pick's screen rectangle, grown by the stacks picked with it.
    const IntRect& PickRect() const { return pickRect_; }
    BandState Band() const { return band_; }
    const std::vector<BandEntry>& BandList() const { return bandList_; }
    const IntRect& BandRect() const { return bandRect_; }

    void SetPicked(StackId stack) { picked_ = stack; }
    void SetLastPicked(StackId stack) { lastPicked_ = stack; }
    void SetPickRect(const IntRect& rect) { pickRect_ = rect; }
    // Appends a stack while the history has room.
    void AddToHistory(StackId stack);
    void ClearHistory() { history_.clear(); }
    // No pick, no last pick, no history.
    void ForgetPicks();

    void SetBand(BandState state) { band_ = state; }
    // A band in force over rect, its entries still to be collected.
    void StartBand(const IntRect& rect);
    // Appends an entry while the list has room.
    void AddBandEntry(const BandEntry& entry);
    // Takes the stack's entry out; false when it had none.
    bool RemoveBandEntry(StackId stack);
    bool HasBandEntry(StackId stack) const;
    void MoveBandEntry(size_t index, const IntRect& rect) { bandList_.at(index).Rect = rect; }
    void ClearBandList() { bandList_.clear(); }

    // Forgets the rubber band and the picks.
    void Reset();

    // Heap and object bytes it holds (a history keeps one per step).
    size_t Bytes() const;

    bool operator==(const Selection&) const = default;

  private:
    StackId picked_ = kNoStack;
    StackId lastPicked_ = kNoStack;
    std::vector<StackId> history_;  // at most kPickHistoryCapacity
    IntRect pickRect_{};
    BandState band_ = BandState::Off;
    std::vector<BandEntry> bandList_;  // at most kBandListCapacity
    IntRect bandRect_{};
};

}  // namespace kesto
