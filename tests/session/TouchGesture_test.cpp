// One finger on the drawing, on the grid job of EditFixture.h (stacks a and b as in
// DrawingEdit_test.cpp): taps, drags and long presses as the mouse editing sees them.
#include "session/TouchGesture.h"

#include <gtest/gtest.h>

#include "common/EditFixture.h"
#include "view/Colours.h"

namespace kesto::test {
namespace {

constexpr IntRect kRectA{930, 808, 1030, 858};
constexpr IntRect kRectB{620, 808, 720, 858};

class TouchGestureTest : public TwoPartsTest {
  protected:
    TouchGesture touch{edit, app, drawing};
};

TEST_F(TouchGestureTest, ATapPicksTheStack) {
    touch.Begin(980, 833);
    EXPECT_TRUE(touch.WaitingForHold());
    // Nothing is picked before the finger is lifted: it may yet hold or move.
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    touch.Update(canvas, 983, 836);
    touch.End(canvas, 983, 836);
    EXPECT_FALSE(touch.WaitingForHold());
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_DOUBLE_EQ(a.X, 990);
}

// The drag of DragSnapsTheStackToTheNearestFreeCorner, made with a finger.
TEST_F(TouchGestureTest, AFingerMovedBeyondTheSlopDragsTheStack) {
    touch.Begin(980, 833);
    touch.Update(canvas, 980 - kTouchSlopPixels - 1, 833);
    EXPECT_FALSE(touch.WaitingForHold());
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    touch.Update(canvas, 830, 833);
    ASSERT_TRUE(view.Landing.has_value());
    EXPECT_EQ(view.Landing->Landing, std::vector<IntRect>({{730, 808, 830, 858}}));
    touch.End(canvas, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    // A long-press time going by afterwards does nothing.
    touch.Held(canvas);
    EXPECT_DOUBLE_EQ(a.X, 790);
}

class TouchBandTest : public TouchGestureTest {
  protected:
    TouchBandTest() { app.Settings.IsDirect = 1; }
};

// With Direct on, a long press on the background starts a rubber band that follows the
// finger; a long press on a stack then takes it out of the band, and another puts it back.
TEST_F(TouchBandTest, LongPressesStartABandAndTakeStacksInAndOut) {
    touch.Begin(1035, 790);
    touch.Held(canvas);
    EXPECT_TRUE(edit.Tracking());
    touch.Update(canvas, 600, 860);
    touch.End(canvas, 600, 860);
    ASSERT_EQ(drawing.Selected().Band(), BandState::InForce);
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    touch.Begin(670, 833);
    touch.Held(canvas);
    EXPECT_FALSE(touch.WaitingForHold());
    ASSERT_EQ(drawing.Selected().BandList().size(), 1u);
    EXPECT_EQ(drawing.Selected().BandList()[0].Stack, a.Id);
    // The rest of that touch changes nothing.
    touch.Update(canvas, 500, 500);
    touch.End(canvas, 500, 500);
    EXPECT_DOUBLE_EQ(b.X, 680);
    EXPECT_EQ(drawing.Selected().BandList().size(), 1u);
    touch.Begin(670, 833);
    touch.Held(canvas);
    touch.End(canvas, 670, 833);
    EXPECT_EQ(drawing.Selected().BandList().size(), 2u);
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPicked));
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPicked));
}

// A second finger lets the drag in hand go, as Escape does: nothing moves.
TEST_F(TouchGestureTest, ASecondFingerLetsTheDragGo) {
    touch.Begin(980, 833);
    touch.Update(canvas, 900, 833);
    touch.Update(canvas, 830, 833);
    touch.Cancel(canvas);
    EXPECT_FALSE(edit.DragInProgress());
    EXPECT_TRUE(view.Image.empty());
    EXPECT_DOUBLE_EQ(a.X, 990);
    // And a finger still deciding is simply forgotten.
    touch.Begin(980, 833);
    touch.Cancel(canvas);
    EXPECT_FALSE(touch.WaitingForHold());
    touch.End(canvas, 980, 833);
    EXPECT_DOUBLE_EQ(a.X, 990);
}

}  // namespace
}  // namespace kesto::test
