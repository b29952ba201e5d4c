#include "app/BlockTable.h"

namespace kesto {

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

}  // namespace kesto
