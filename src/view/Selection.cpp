#include "view/Selection.h"

#include <algorithm>

namespace kesto {

void Selection::AddToHistory(HaichiInfo* stack) {
    if (history_.size() < kPickHistoryCapacity)
        history_.push_back(stack);
}

void Selection::ForgetPicks() {
    picked_ = nullptr;
    lastPicked_ = nullptr;
    history_.clear();
}

void Selection::StartBand(const IntRect& rect) {
    band_ = BandState::InForce;
    bandList_.clear();
    bandRect_ = rect;
}

void Selection::AddBandEntry(const BandEntry& entry) {
    if (bandList_.size() < kBandListCapacity)
        bandList_.push_back(entry);
}

bool Selection::RemoveBandEntry(const HaichiInfo* stack) {
    const auto it = std::find_if(bandList_.begin(), bandList_.end(),
                                 [stack](const BandEntry& e) { return e.Record == stack; });
    if (it == bandList_.end())
        return false;
    bandList_.erase(it);
    return true;
}

bool Selection::HasBandEntry(const HaichiInfo* stack) const {
    return std::any_of(bandList_.begin(), bandList_.end(),
                       [stack](const BandEntry& e) { return e.Record == stack; });
}

void Selection::Reset() {
    *this = Selection{};
}

}  // namespace kesto
