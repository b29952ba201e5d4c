#include "app/BlockTable.h"

#include <algorithm>

namespace kesto {

int32_t BlockTable::Filled() const {
    return std::clamp<int32_t>(count_, 0, static_cast<int32_t>(entries_.size()));
}

BlockInfo* BlockTable::Append() {
    if (count_ >= capacity_ || count_ < 0 || count_ >= static_cast<int32_t>(entries_.size()))
        return nullptr;
    BlockInfo& b = entries_[static_cast<size_t>(count_++)];
    b = BlockInfo{};
    return &b;
}

int32_t BlockTable::AddBlock(const BlockInfo& block) {
    entries_.push_back(block);
    count_ = capacity_ = static_cast<int32_t>(entries_.size());
    return count_ - 1;
}

void BlockTable::Clear() {
    entries_.clear();
    capacity_ = 0;
    count_ = 0;
}

BlockInfo* BlockTable::At(int32_t index) {
    return index >= 0 && index < Filled() ? &entries_[static_cast<size_t>(index)] : nullptr;
}

const BlockInfo* BlockTable::At(int32_t index) const {
    return index >= 0 && index < Filled() ? &entries_[static_cast<size_t>(index)] : nullptr;
}

}  // namespace kesto
