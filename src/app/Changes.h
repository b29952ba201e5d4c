// What one command changed: the job, the view, the selection or the history. The session's
// commands return it and the window brings exactly those parts of the screen up to date.
#pragma once

#include <cstdint>

namespace kesto {

enum class Change : uint32_t {
    // What is viewed.
    Koutei = 1u << 0,      // another process in view (chosen again counts)
    Pallet = 1u << 1,      // another first pallet in view
    Box = 1u << 2,         // another small box in view
    Mode = 1u << 3,        // the view (FLAT, DANMEN, ...) chosen
    Display = 1u << 4,     // 3D or the grid switched
    BlockCells = 1u << 5,  // the block cells switched
    Hit = 1u << 6,         // picks take single stacks or whole blocks
    Direct = 1u << 7,      // the Direct mode switched
    // The job.
    Stacks = 1u << 8,          // stacks on the pallets made, moved or removed
    Parts = 1u << 9,           // any part's destination or counts: every part list
    SetAsideParts = 1u << 10,  // stacks went to the set-aside area, nothing else of the parts
    SetAsideLine = 1u << 11,   // the chosen set-aside line's part left the area
    Restacked = 1u << 12,      // a part was stacked anew and its stacks are the pick
    Reloaded = 1u << 13,       // the job was read and placed anew (Retry, Auto)
    // The selection and the history.
    Selection = 1u << 14,  // the picks were dropped or are others
    History = 1u << 15,    // a step was recorded, taken back or done again
    Place = 1u << 16,      // a step was shown where it was taken: process, pallet, picks
    Zoom = 1u << 17,       // the drawing zoomed, panned or back to the whole pallet
};
// The last change above, for those that go through them all.
inline constexpr Change kLastChange = Change::Zoom;

class ChangeSet {
  public:
    constexpr ChangeSet() = default;
    constexpr ChangeSet(Change c) : bits_(static_cast<uint32_t>(c)) {}  // NOLINT: one change

    constexpr bool Has(Change c) const { return (bits_ & static_cast<uint32_t>(c)) != 0; }
    // Whether any change of other is here.
    constexpr bool Any(ChangeSet other) const { return (bits_ & other.bits_) != 0; }
    constexpr bool Empty() const { return bits_ == 0; }
    // Whether the command changed anything at all.
    constexpr explicit operator bool() const { return bits_ != 0; }

    constexpr ChangeSet& operator|=(ChangeSet other) {
        bits_ |= other.bits_;
        return *this;
    }
    friend constexpr ChangeSet operator|(ChangeSet a, ChangeSet b) { return a |= b; }
    friend constexpr bool operator==(ChangeSet, ChangeSet) = default;

  private:
    uint32_t bits_ = 0;
};

constexpr ChangeSet operator|(Change a, Change b) {
    return ChangeSet(a) | ChangeSet(b);
}

}  // namespace kesto
