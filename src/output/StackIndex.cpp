#include "output/StackIndex.h"

#include <algorithm>

namespace kesto {

const BlockInfo* BlockOfStack(const CKestoApp& app, const HaichiInfo& stack) {
    const auto filled =
        std::min<size_t>(static_cast<size_t>(std::max(app.BlocksCount, 0)), app.Blocks.size());
    if (stack.BlockIndex < 0 || static_cast<size_t>(stack.BlockIndex) >= filled)
        return nullptr;
    return &app.Blocks[static_cast<size_t>(stack.BlockIndex)];
}

StackIndex::StackIndex(CKestoApp& app) {
    for (HaichiInfo& stack : app.HaichiList) {
        const BlockInfo* block = BlockOfStack(app, stack);
        if (stack.Part != nullptr && block != nullptr) {
            byPart_[stack.Part].push_back(PlacedStack{&stack, block});
        }
    }
}

const std::vector<PlacedStack>& StackIndex::Of(const PartsInfo* part) const {
    static const std::vector<PlacedStack> kNone;
    const auto found = byPart_.find(part);
    return found == byPart_.end() ? kNone : found->second;
}

}  // namespace kesto
