// One finger on the drawing, told to the mouse editing as the mouse would tell it: a tap is a
// click, a finger moved beyond a few pixels is a drag (the press where it came down), a long
// press on a stack is a Shift-click (into the band or out of it), and a long press on the
// background presses there, so that with Direct on the rubber band follows the finger.
// Nothing depends on hover. The window runs the long-press timer while WaitingForHold.
#pragma once

#include <cstdint>

#include "app/CKestoApp.h"
#include "app/Rect.h"
#include "view/Canvas.h"

namespace kesto {

class DrawingEdit;
class PalletDrawing;

// A finger that moves no further than this from where it came down is holding still.
inline constexpr int32_t kTouchSlopPixels = 8;

class TouchGesture {
  public:
    TouchGesture(DrawingEdit& edit, const CKestoApp& app, const PalletDrawing& drawing)
        : edit_(edit), app_(app), d_(drawing) {}

    void Begin(int32_t x, int32_t y);
    void Update(Canvas& canvas, int32_t x, int32_t y);
    // The long-press time went by with the finger still down and still.
    void Held(Canvas& canvas);
    void End(Canvas& canvas, int32_t x, int32_t y);
    // A second finger, or the platform took the touch away: a drag in hand is let go as
    // Escape lets it go, a finger still deciding does nothing.
    void Cancel(Canvas& canvas);
    bool WaitingForHold() const { return state_ == State::Down; }

  private:
    enum class State {
        Idle,
        Down,     // came down, not moved, not held yet
        Pressed,  // pressed in the editing: a drag, or a band tracked after a long press
        Done,     // the long press made its Shift-click; the rest of the touch is ignored
    };
    bool OnAStack(int32_t x, int32_t y) const;
    void PressAtStart(Canvas& canvas, bool shift);

    DrawingEdit& edit_;
    const CKestoApp& app_;
    const PalletDrawing& d_;
    State state_ = State::Idle;
    IntPoint start_{};
};

}  // namespace kesto
