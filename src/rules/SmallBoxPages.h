// The small-box buttons show the defined small boxes three to a page; the page arrows turn it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace kesto {

// What a turn does to the page arrows: enabled or disabled, or left as they are (none).
struct PageArrows {
    std::optional<bool> Previous;
    std::optional<bool> Next;
};

class SmallBoxPages {
  public:
    static constexpr int kPerPage = 3;

    // The pages from the highest defined small box (boxFlags[n] for box n, 1..99): one page
    // up to box 3, else enough for it. The page stays where it is.
    void Count(const std::array<int32_t, 100>& boxFlags);
    // direction -1 back, 1 on, 0 none: what becomes of the arrows, or none when there is no
    // page that way (the page stays). Reaching the first or last page disables its arrow.
    std::optional<PageArrows> Turn(int direction);

    int Page() const { return page_; }
    int PageCount() const { return count_; }
    // The small box on button k (1..3) of the page.
    int BoxOnButton(int k) const { return (page_ - 1) * kPerPage + k; }
    // Whether that box is defined, so its button is enabled.
    bool Defined(const std::array<int32_t, 100>& boxFlags, int k) const;

  private:
    int page_ = 1;
    int count_ = 1;
};

}  // namespace kesto
