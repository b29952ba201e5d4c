#include "output/StackIndex.h"

namespace kesto {

StackIndex::StackIndex(CKestoApp& app) {
    for (HaichiInfo& stack : app.HaichiList) {
        const BlockInfo* block = app.BlockOf(stack);
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
