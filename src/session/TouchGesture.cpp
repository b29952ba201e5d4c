#include "session/TouchGesture.h"

#include <cstdlib>

#include "session/DrawingEdit.h"
#include "view/PalletDrawing.h"

namespace kesto {

void TouchGesture::Begin(int32_t x, int32_t y) {
    state_ = State::Down;
    start_ = IntPoint{x, y};
}

void TouchGesture::PressAtStart(Canvas& canvas, bool shift) {
    edit_.Press(canvas, start_.X, start_.Y, shift);
}

void TouchGesture::Update(Canvas& canvas, int32_t x, int32_t y) {
    if (state_ == State::Down) {
        if (std::abs(x - start_.X) <= kTouchSlopPixels &&
            std::abs(y - start_.Y) <= kTouchSlopPixels)
            return;
        // The drag starts where the finger came down; a move there arms it, as the mouse's
        // first move does.
        PressAtStart(canvas, false);
        edit_.Move(canvas, start_.X, start_.Y, true);
        state_ = State::Pressed;
    }
    if (state_ == State::Pressed)
        edit_.Move(canvas, x, y, true);
}

void TouchGesture::Held(Canvas& canvas) {
    if (state_ != State::Down)
        return;
    if (OnAStack(start_.X, start_.Y)) {
        PressAtStart(canvas, true);
        edit_.Release(canvas, start_.X, start_.Y);
        state_ = State::Done;
        return;
    }
    PressAtStart(canvas, false);
    state_ = State::Pressed;
}

void TouchGesture::End(Canvas& canvas, int32_t x, int32_t y) {
    if (state_ == State::Down) {
        PressAtStart(canvas, false);
        edit_.Release(canvas, start_.X, start_.Y);
    } else if (state_ == State::Pressed) {
        edit_.Release(canvas, x, y);
    }
    state_ = State::Idle;
}

void TouchGesture::Cancel(Canvas& canvas) {
    if (state_ == State::Pressed) {
        edit_.AbandonDrag(canvas);
        edit_.Release(canvas, start_.X, start_.Y);
    }
    state_ = State::Idle;
}

bool TouchGesture::OnAStack(int32_t x, int32_t y) const {
    for (const HaichiInfo& h : app_.HaichiList) {
        const std::optional<IntRect> r = d_.ScreenRect(h);
        if (r && Contains(*r, x, y))
            return true;
    }
    return false;
}

}  // namespace kesto
