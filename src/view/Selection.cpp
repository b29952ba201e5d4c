#include "view/Selection.h"

#include <algorithm>

namespace kesto {

void Selection::AddToHistory(StackId stack) {
    if (history_.size() < kPickHistoryCapacity)
        history_.push_back(stack);
}

void Selection::ForgetPicks() {
    picked_ = kNoStack;
    lastPicked_ = kNoStack;
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

bool Selection::RemoveBandEntry(StackId stack) {
    const auto it = std::find_if(bandList_.begin(), bandList_.end(),
                                 [stack](const BandEntry& e) { return e.Stack == stack; });
    if (it == bandList_.end())
        return false;
    bandList_.erase(it);
    return true;
}

bool Selection::HasBandEntry(StackId stack) const {
    return std::any_of(bandList_.begin(), bandList_.end(),
                       [stack](const BandEntry& e) { return e.Stack == stack; });
}

void Selection::Reset() {
    *this = Selection{};
}

size_t Selection::Bytes() const {
    return sizeof(Selection) + history_.capacity() * sizeof(StackId) +
           bandList_.capacity() * sizeof(BandEntry);
}

}  // namespace kesto
