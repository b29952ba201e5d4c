#include "rules/SmallBoxPages.h"

#include "app/Codes.h"

namespace kesto {

void SmallBoxPages::Count(const std::array<int32_t, 100>& boxFlags) {
    int highest = 0;
    for (int n = 1; n <= kSmallBoxSlots; ++n) {
        if (boxFlags[static_cast<size_t>(n)] != 0)
            highest = n;
    }
    count_ = highest > kPerPage ? (highest + kPerPage - 1) / kPerPage : 1;
}

std::optional<PageArrows> SmallBoxPages::Turn(int direction) {
    PageArrows arrows;
    if (direction == -1) {
        if (page_ == 1)
            return std::nullopt;
        if (--page_ == 1)
            arrows.Previous = false;
    } else if (direction == 1) {
        if (page_ == count_)
            return std::nullopt;
        if (++page_ == count_)
            arrows.Next = false;
    } else if (page_ == 1) {
        arrows.Previous = false;
    }
    if (page_ > 1)
        arrows.Previous = true;
    if (page_ < count_)
        arrows.Next = true;
    return arrows;
}

bool SmallBoxPages::Defined(const std::array<int32_t, 100>& boxFlags, int k) const {
    const int n = BoxOnButton(k);
    return n >= 1 && n <= kSmallBoxSlots && boxFlags[static_cast<size_t>(n)] != 0;
}

}  // namespace kesto
