// The operator's "Direct" mode, the per-user value "IsDirect". It keeps the number it was read
// with: some rules ask whether it is 1 and others whether it is not 0, so a stored 2 (which
// the operator's store may hold) gives snapped drops and no outlines under an arrangement
// toggle that shows Direct on.
#pragma once

#include <cstdint>

namespace kesto {

class DirectMode {
  public:
    static constexpr int32_t kUnread = -1;  // not read from the per-user store yet this run

    constexpr DirectMode() = default;
    // The number as stored; 0 is off and 1 on, any other is kept as it is.
    constexpr DirectMode(int32_t stored) : stored_(stored) {}  // NOLINT: a stored number

    // "Is 1": drops move freely, stacks show their parts' outlines, a Shift-click on a pick
    // starts a band.
    constexpr bool IsOne() const { return stored_ == 1; }
    // "Is not 0": the arrangement toggle shows Direct on, and hits fall on single stacks.
    constexpr bool IsNotZero() const { return stored_ != 0; }
    constexpr bool Unread() const { return stored_ == kUnread; }
    constexpr int32_t Stored() const { return stored_; }

    // The Direct command: from 0 to 1, from anything else to 0.
    constexpr void Switch() { stored_ = stored_ == 0 ? 1 : 0; }

    friend constexpr bool operator==(DirectMode, DirectMode) = default;

  private:
    int32_t stored_ = kUnread;
};

}  // namespace kesto
