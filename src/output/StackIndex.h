// The stacks of every part, each with the block it stands in, gathered once per file written.
#pragma once

#include <unordered_map>
#include <vector>

#include "app/CKestoApp.h"

namespace kesto {

struct PlacedStack {
    HaichiInfo* Stack = nullptr;
    const BlockInfo* Block = nullptr;
};

// The stacks of each part in HaichiList order. A stack outside the block table is left out:
// the output names every stack by its block's pallet, so such a stack cannot be written.
class StackIndex {
  public:
    explicit StackIndex(CKestoApp& app);
    // Empty when the part has no stack.
    const std::vector<PlacedStack>& Of(const PartsInfo* part) const;

  private:
    std::unordered_map<const PartsInfo*, std::vector<PlacedStack>> byPart_;
};

}  // namespace kesto
