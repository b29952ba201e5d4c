// What an operation that reads, places or writes the job hands back: whether it did its work,
// and the error code (error::) it leaves for the exit parameter and the batch report. The two
// are apart on purpose: an outline that cannot be opened leaves 9026 and the job goes on, and
// a failure the operator chose, or one a message already named, leaves no code.
#pragma once

#include <cstdint>

#include "app/Codes.h"

namespace kesto {

class [[nodiscard]] Outcome {
  public:
    // Done, leaving no code.
    constexpr Outcome() = default;
    static constexpr Outcome Done(int32_t code = error::kNone) { return Outcome(true, code); }
    static constexpr Outcome Failed(int32_t code = error::kNone) { return Outcome(false, code); }

    constexpr bool Ok() const { return ok_; }
    // error::kNone when the operation left no code.
    constexpr int32_t Code() const { return code_; }

    friend constexpr bool operator==(const Outcome&, const Outcome&) = default;

  private:
    constexpr Outcome(bool ok, int32_t code) : ok_(ok), code_(code) {}

    bool ok_ = true;
    int32_t code_ = error::kNone;
};

// The error code a run reports: the one the latest operation that left a code left.
class LatestErrorCode {
  public:
    // Keeps outcome's code if it left one; true when the operation did its work.
    bool Note(Outcome outcome) {
        if (outcome.Code() != error::kNone) {
            code_ = outcome.Code();
            ++left_;
        }
        return outcome.Ok();
    }
    // Keeps outcome's code as Note would have when left() was codesLeft: only while no
    // operation has left a code since. For an operation that ended after later ones started.
    bool NoteAsOf(Outcome outcome, uint32_t codesLeft) {
        if (left_ != codesLeft)
            return outcome.Ok();
        return Note(outcome);
    }
    // How many noted operations left a code.
    uint32_t Left() const { return left_; }
    // error::kNone while no operation left a code.
    int32_t Code() const { return code_; }

  private:
    int32_t code_ = error::kNone;
    uint32_t left_ = 0;
};

}  // namespace kesto
