// The press, move and release rules of the drawing area, on the grid job of EditFixture.h.
//
// Stacks of 100 x 50 used below, with their pixels (x + 40, 868 - y):
//   a  part A in block 0 corner 4, X 990, Y 10: (930, 808)-(1030, 858), centre (980, 833)
//   b  part B in block 3 corner 4, X 680, Y 10: (620, 808)-(720, 858), centre (670, 833)
//   a2 part A in block 6 corner 4, X 370, Y 10: (310, 808)-(410, 858), centre (360, 833)
#include "session/DrawingEdit.h"

#include <gtest/gtest.h>

#include <climits>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "view/Colours.h"

namespace kesto::test {
namespace {

constexpr IntRect kRectA{930, 808, 1030, 858};
constexpr IntRect kRectB{620, 808, 720, 858};

using DrawingEditTest = TwoPartsTest;

// --- picking --------------------------------------------------------------------------------

TEST_F(DrawingEditTest, ClickPicksTheStackAndShowsItEverywhere) {
    edit.Press(canvas, 980, 833, false);
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_EQ(drawing.Selected().LastPicked(), a.Id);
    EXPECT_EQ(drawing.Selected().PickHistory(), std::vector<StackId>({a.Id}));
    EXPECT_EQ(edit.LastMouse, (IntPoint{980, 833}));
    // PickRect (930, 808) less the cursor.
    EXPECT_EQ(edit.DragOffset, (IntPoint{-50, -25}));
    EXPECT_EQ(edit.MoveCount, -1);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partA.Seq}));
    EXPECT_EQ(view.AllPartsLine, partA.Seq);
    EXPECT_EQ(view.InfoRefreshes, 1);
    EXPECT_EQ(view.Image, std::vector<IntRect>({kRectA}));
    // The highlight: the pick in the pick colour, the part's other stack in the part colour.
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPicked));
    EXPECT_TRUE(PickedIn(canvas, IntRect{310, 808, 410, 858}, colour::kSamePart));
    EXPECT_FALSE(PickedIn(canvas, kRectB, colour::kSamePart));
}

TEST_F(DrawingEditTest, PressAndReleaseWithoutMovingIsAPickOnly) {
    Click(980, 833);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(view.Refreshes, 1);  // the fixture's own
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_TRUE(view.Image.empty());
    EXPECT_EQ(edit.LastMouse, kNoMouse);
}

TEST_F(DrawingEditTest, OneMoveOnlyArmsTheDragAndDropsNothing) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 700, 500, true);
    EXPECT_EQ(edit.MoveCount, 0);
    // The image still stands where the press drew it.
    EXPECT_EQ(view.Image, std::vector<IntRect>({kRectA}));
    edit.Release(canvas, 700, 500);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(view.Refreshes, 1);
}

TEST_F(DrawingEditTest, ImageFollowsTheCursorFromTheSecondMoveOn) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 900, 700, true);
    // (900, 700) plus the offset (-50, -25), 100 x 50.
    EXPECT_EQ(view.Image, std::vector<IntRect>({{850, 675, 950, 725}}));
    EXPECT_EQ(edit.LastMouse, (IntPoint{900, 700}));
    // -1 at the press, then one per move.
    EXPECT_EQ(edit.MoveCount, 1);
}

TEST_F(DrawingEditTest, MovesWithAnotherButtonDoNotDrag) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, false);
    edit.Move(canvas, 900, 700, false);
    EXPECT_EQ(view.Image, std::vector<IntRect>({kRectA}));
    EXPECT_EQ(edit.MoveCount, 1);
}

TEST_F(DrawingEditTest, ClickOnNothingClearsThePickButKeepsTheLastOne) {
    Click(980, 833);
    Click(500, 300);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().LastPicked(), a.Id);
    EXPECT_TRUE(drawing.Selected().PickHistory().empty());
    EXPECT_FALSE(edit.Tracking());
}

// The information panel describes the picked stack: a press that picks nothing clears it, a
// press that picks nothing while nothing was picked leaves it alone.
TEST_F(DrawingEditTest, InformationPanelIsClearedOnceNothingIsPicked) {
    Click(980, 833);
    ASSERT_EQ(view.InfoRefreshes, 1);
    Click(500, 300);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(view.InfoRefreshes, 2);
    Click(500, 300);
    EXPECT_EQ(view.InfoRefreshes, 2);
}

TEST_F(DrawingEditTest, AbandonedDragClearsTheInformationPanel) {
    edit.Press(canvas, 980, 833, false);
    ASSERT_EQ(view.InfoRefreshes, 1);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 980, 20, true);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(view.InfoRefreshes, 2);
}

TEST_F(DrawingEditTest, PickingAnotherStackDrawsTheOldPickBack) {
    Click(980, 833);
    canvas.Clear();
    edit.Press(canvas, 670, 833, false);
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPartNormal));
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPicked));
    EXPECT_EQ(drawing.Selected().LastPicked(), b.Id);
}

TEST_F(DrawingEditTest, PickByBlockTakesTheBlocksOtherStacksAlong) {
    shown.SetHit(HitBy::Block);
    // A second stack in block 0, corner 8: X 990, Y 160: (930, 658)-(1030, 708).
    HaichiInfo& mate = AddStack(app, partB,
                                {.Block = 0,
                                 .Pieces = 1,
                                 .X = 990,
                                 .Y = 160,
                                 .Corner = kCornerMaxMax,
                                 .CountOnPart = true});
    Show();
    edit.Press(canvas, 980, 833, false);
    EXPECT_EQ(drawing.Selected().PickHistory(), std::vector<StackId>({a.Id, mate.Id}));
    EXPECT_EQ(drawing.Selected().PickRect(), (IntRect{930, 658, 1030, 858}));
    EXPECT_EQ(view.Image, std::vector<IntRect>({{930, 658, 1030, 858}}));
}

// --- dropping a single pick ---------------------------------------------------------------------

// Released at (830, 833): the drop rectangle is (780, 808)-(880, 858). Block 0's pixels are
// (730, 658)-(1030, 858); its corners in the order 4, 8, 1, 2 lie 150, 212, 50 and 158 pixels
// from the rectangle's matching corners, and no other block comes nearer than 50: corner 1,
// X = 690 + 100, Y = 10.
TEST_F(DrawingEditTest, DragSnapsTheStackToTheNearestFreeCorner) {
    Drag(980, 833, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(a.BlockIndex, 0);
    EXPECT_EQ(view.Refreshes, 2);
    EXPECT_EQ(edit.MoveCount, -1);
    EXPECT_TRUE(view.Image.empty());
    // Highlighted at its new place, (730, 808)-(830, 858), and hit again at the release.
    EXPECT_TRUE(PickedIn(canvas, IntRect{730, 808, 830, 858}, colour::kPicked));
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_EQ(drawing.Selected().PickHistory(), std::vector<StackId>({a.Id}));
    EXPECT_TRUE(view.Refusals.empty());
}

TEST_F(DrawingEditTest, AStackThatMovedIsMarkedAsTheOperatorsAndOneThatStayedIsNot) {
    Drag(980, 833, 980, 833);  // let go where it was picked up
    EXPECT_EQ(a.Edits, 0);
    Drag(980, 833, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_EQ(a.Edits, kEditMoved);
}

// Free move (IsDirect 1): blocks 0 and 8 give the scale |690 - 70| / |730 - 110| = 1 both ways;
// X += (880 - 730) + 690 - 990 = -150, Y += 10 - (858 - 858) - 10 = 0. No block is covered, so
// the stack takes the pallet's last block, 8.
TEST_F(DrawingEditTest, DirectDragMovesTheStackWhereItIsDropped) {
    app.Settings.IsDirect = 1;
    Drag(980, 833, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 840);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(a.BlockIndex, 8);
}

// Released at (52, 40), still in the zone: the rectangle (2, 15)-(102, 65) has no corner in the
// frame (40, 68)-(1040, 868), so no pallet takes it.
TEST_F(DrawingEditTest, DropOutsideThePalletMovesNothing) {
    Drag(980, 833, 52, 40);
    EXPECT_EQ(view.Refreshes, 2);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    // The window is told why, with the rectangle where it was dropped.
    EXPECT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::OffThePallets}));
    EXPECT_EQ(view.RefusedAt, std::vector<IntRect>({IntRect{2, 15, 102, 65}}));
}

TEST_F(DrawingEditTest, RefusalTextsComeFromTheMessageFileOrFallBackToEnglish) {
    EXPECT_EQ(DropRefusalText(DropRefusal::NoRoom, testServices.Messages),
              "Not moved: other stacks or the pallet's edge are in the way.");
    WriteFile(root / "Other.ini", "[MainDlg]\nS-DROP-OFF=1,\"Beside the pallets\"\n");
    MessageTable messages;
    ASSERT_EQ(messages.Load(root / "Other.ini", testServices.Op), 0);
    EXPECT_EQ(DropRefusalText(DropRefusal::OffThePallets, messages), "Beside the pallets");
    EXPECT_EQ(DropRefusalText(DropRefusal::NotOnOnePallet, messages),
              "Not moved: the stacks would not all land on one pallet.");
}

// Put back where it was picked up: nothing moves, and nothing is refused either.
TEST_F(DrawingEditTest, DropWhereTheStackWasPickedUpIsNoRefusal) {
    Drag(980, 833, 981, 834);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_TRUE(view.Refusals.empty());
}

TEST_F(DrawingEditTest, DraggingAboveTheCaptionStripAbandons) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 900, 36, true);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_TRUE(view.Image.empty());
    edit.Release(canvas, 900, 36);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_EQ(view.Refreshes, 1);
}

TEST_F(DrawingEditTest, DraggingToTheAreaEdgeAbandons) {
    // The zone ends at x 1078 (area right 1080 - 1), at y 898 and before x 2.
    for (IntPoint edge : {IntPoint{1079, 500}, IntPoint{1, 500}, IntPoint{500, 899}}) {
        Click(980, 833);
        edit.Press(canvas, 980, 833, false);
        edit.Move(canvas, 981, 833, true);
        edit.Move(canvas, edge.X, edge.Y, true);
        EXPECT_EQ(drawing.Selected().Picked(), kNoStack) << edge.X << "," << edge.Y;
        edit.Release(canvas, edge.X, edge.Y);
        EXPECT_DOUBLE_EQ(a.X, 990);
    }
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 1078, 500, true);
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
}

TEST_F(DrawingEditTest, MoveCountRestartsAtOneAfter30000) {
    edit.MoveCount = 29999;
    edit.Move(canvas, 10, 10, false);
    EXPECT_EQ(edit.MoveCount, 30000);
    edit.Move(canvas, 10, 10, false);
    EXPECT_EQ(edit.MoveCount, 1);
}

// --- rubber band ------------------------------------------------------------------------------
// --- where a drag would land -----------------------------------------------------------------

// The snapped landing of DragSnapsTheStackToTheNearestFreeCorner, X 790 and Y 10, is shown at
// (730, 808)-(830, 858) while the button is held; the job stays as it was until the release,
// which puts the stack there.
TEST_F(DrawingEditTest, TheDragShowsWhereTheReleaseWillLandAndTheReleaseLandsThere) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    // One move only arms the drag: nothing would drop yet.
    EXPECT_FALSE(view.Landing.has_value());
    edit.Move(canvas, 830, 833, true);
    ASSERT_TRUE(view.Landing.has_value());
    EXPECT_FALSE(view.Landing->Refused.has_value());
    EXPECT_EQ(view.Landing->Landing, std::vector<IntRect>({{730, 808, 830, 858}}));
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_EQ(a.Edits, 0);
    EXPECT_EQ(view.Refreshes, 1);
    edit.Release(canvas, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(drawing.ScreenRect(a), (IntRect{730, 808, 830, 858}));
    // Taken away with the drag image.
    EXPECT_FALSE(view.Landing.has_value());
}

// The free move of DirectDragMovesTheStackWhereItIsDropped: X 840, into block 8.
TEST_F(DrawingEditTest, AFreeMoveShowsItsLandingToo) {
    app.Settings.IsDirect = 1;
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 830, 833, true);
    ASSERT_TRUE(view.Landing.has_value());
    EXPECT_EQ(view.Landing->Landing, std::vector<IntRect>({{780, 808, 880, 858}}));
    const HaichiInfo* there = edit.PreviewJob().HaichiList.Find(a.Id);
    ASSERT_NE(there, nullptr);
    EXPECT_EQ(there->BlockIndex, 8);
    EXPECT_EQ(a.BlockIndex, 0);
    // The copy is not kept beyond the drag.
    edit.Release(canvas, 830, 833);
    EXPECT_EQ(a.BlockIndex, 8);
    EXPECT_TRUE(edit.PreviewJob().HaichiList.Empty());
}

// The release of DropOutsideThePalletMovesNothing is shown as refused before it is made.
TEST_F(DrawingEditTest, AReleaseThatWouldBeRefusedIsShownAsRefused) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 52, 40, true);
    ASSERT_TRUE(view.Landing.has_value());
    EXPECT_EQ(view.Landing->Refused, DropRefusal::OffThePallets);
    edit.Release(canvas, 52, 40);
    EXPECT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::OffThePallets}));
}

// A preview leaves the live job, its corner marks and the selection as they were.
TEST_F(DrawingEditTest, APreviewChangesNothing) {
    Click(670, 833);
    const JobSnapshot before = JobSnapshot::Take(app);
    const Selection picks = drawing.Selected();
    edit.Press(canvas, 980, 833, false);
    const Selection pressed = drawing.Selected();
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 982, 833, true);
    for (const IntPoint at : {IntPoint{830, 833}, IntPoint{52, 40}, IntPoint{500, 500}})
        ASSERT_TRUE(edit.PreviewAt(at.X, at.Y).has_value());
    EXPECT_EQ(drawing.Selected(), pressed);
    CKestoApp restored;
    before.Restore(restored);
    ASSERT_EQ(app.HaichiList.size(), restored.HaichiList.size());
    for (const HaichiInfo& h : app.HaichiList) {
        const HaichiInfo* then = restored.HaichiList.Find(h.Id);
        ASSERT_NE(then, nullptr);
        EXPECT_EQ(h.X, then->X);
        EXPECT_EQ(h.Y, then->Y);
        EXPECT_EQ(h.BlockIndex, then->BlockIndex);
    }
    for (int32_t e = 0; e < app.Blocks.Count(); ++e) {
        EXPECT_EQ(app.Blocks.At(e)->CornerMask, restored.Blocks.At(e)->CornerMask) << e;
        EXPECT_EQ(app.Blocks.At(e)->Occupant, restored.Blocks.At(e)->Occupant) << e;
    }
    EXPECT_NE(picks, pressed);
}

// --- keys -------------------------------------------------------------------------------------

TEST_F(DrawingEditTest, EscapeDuringADragLetsTheStackGoAndTheReleaseDropsNothing) {
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 981, 833, true);
    edit.Move(canvas, 700, 600, true);
    ASSERT_EQ(view.Image, std::vector<IntRect>({{650, 575, 750, 625}}));
    EXPECT_TRUE(edit.DragInProgress());
    EXPECT_TRUE(edit.AbandonDrag(canvas));
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_TRUE(view.Image.empty());
    EXPECT_EQ(view.InfoRefreshes, 2);
    // Moves after it carry nothing; the release drops nothing and ends the drag.
    edit.Move(canvas, 690, 600, true);
    EXPECT_TRUE(view.Image.empty());
    edit.Release(canvas, 690, 600);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(view.Refreshes, 1);
    EXPECT_TRUE(view.Refusals.empty());
    EXPECT_FALSE(edit.DragInProgress());
}

TEST_F(DrawingEditTest, EscapeWithoutADragAbandonsNothing) {
    EXPECT_FALSE(edit.AbandonDrag(canvas));
    Click(980, 833);
    EXPECT_FALSE(edit.DragInProgress());
    EXPECT_FALSE(edit.AbandonDrag(canvas));
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
}

// Left from a (X 990, in its block's right front corner): the drop's nearest free corner stays
// a's own until the rectangle is about halfway over, then becomes the block's left front
// corner, X 790, where DragSnapsTheStackToTheNearestFreeCorner put it; a stays picked there.
TEST_F(DrawingEditTest, AnArrowMovesThePickToTheNextCornerThatWay) {
    Click(980, 833);
    EXPECT_TRUE(edit.Nudge(canvas, -1, 0));
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(a.BlockIndex, 0);
    EXPECT_EQ(a.Edits, kEditMoved);
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_TRUE(view.Refusals.empty());
    // And back to the right.
    EXPECT_TRUE(edit.Nudge(canvas, 1, 0));
    EXPECT_DOUBLE_EQ(a.X, 990);
}

// Down from the pallet's front edge nothing takes it: it stays, and the window is told.
TEST_F(DrawingEditTest, AnArrowWithNoLandingThatWayMovesNothing) {
    EXPECT_FALSE(edit.Nudge(canvas, 1, 0));
    EXPECT_TRUE(view.Refusals.empty());
    Click(980, 833);
    EXPECT_FALSE(edit.Nudge(canvas, 0, 1));
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::NoRoom}));
    EXPECT_EQ(view.RefusedAt, std::vector<IntRect>({kRectA}));
}

TEST_F(DrawingEditTest, PickFromKeysLightsTheStackAloneAndDescribesIt) {
    Click(670, 833);
    canvas.Clear();
    view.InfoRefreshes = 0;
    edit.PickFromKeys(canvas, a);
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
    EXPECT_EQ(drawing.Selected().LastPicked(), a.Id);
    EXPECT_EQ(drawing.Selected().PickHistory(), std::vector<StackId>({a.Id}));
    EXPECT_EQ(drawing.Selected().PickRect(), kRectA);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partA.Seq}));
    EXPECT_EQ(view.AllPartsLine, partA.Seq);
    EXPECT_EQ(view.InfoRefreshes, 1);
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPartNormal));
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPicked));
    // Nothing to drag: no drag image, and Escape has nothing to abandon.
    EXPECT_TRUE(view.Image.empty());
    EXPECT_FALSE(edit.AbandonDrag(canvas));
}

class BandTest : public DrawingEditTest {
  protected:
    BandTest() { app.Settings.IsDirect = 1; }
    void Band(int32_t x0, int32_t y0, int32_t x1, int32_t y1) {
        edit.Press(canvas, x0, y0, false);
        edit.Move(canvas, x1, y1, true);
        edit.Release(canvas, x1, y1);
    }
};

TEST_F(BandTest, BandCollectsTheStacksInsideIt) {
    edit.Press(canvas, 1035, 790, false);
    EXPECT_TRUE(edit.Tracking());
    edit.Move(canvas, 600, 860, true);
    // The band follows the cursor, normalised.
    EXPECT_EQ(view.Image, std::vector<IntRect>({{600, 790, 1035, 860}}));
    edit.Release(canvas, 600, 860);
    EXPECT_FALSE(edit.Tracking());
    EXPECT_TRUE(view.Image.empty());
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    EXPECT_EQ(drawing.Selected().BandRect(), (IntRect{600, 790, 1035, 860}));
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    EXPECT_EQ(drawing.Selected().BandList()[0].Stack, a.Id);
    EXPECT_EQ(drawing.Selected().BandList()[0].Rect, kRectA);
    EXPECT_EQ(drawing.Selected().BandList()[1].Stack, b.Id);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partA.Seq, partB.Seq}));
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPicked));
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPicked));
}

TEST_F(BandTest, BandOfTwoPixelsSelectsNothing) {
    Band(500, 500, 502, 502);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    Band(600, 790, 602, 860);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
}

TEST_F(BandTest, BandIntoTheCaptionStripSelectsNothing) {
    Band(600, 30, 1035, 860);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
}

TEST_F(BandTest, BandAroundNothingLeavesNoBand) {
    Band(100, 100, 300, 300);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
}

TEST_F(BandTest, WithoutDirectNoBandIsTracked) {
    app.Settings.IsDirect = 0;
    edit.Press(canvas, 1035, 790, false);
    EXPECT_FALSE(edit.Tracking());
    edit.Move(canvas, 600, 860, true);
    edit.Release(canvas, 600, 860);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
}

// 4PALLET quadrants: halves of 540; rows from 36 and from 450 + 36 = 486, each
// (900 - 72) / 2 = 414 high. DANMEN keeps the upper (900 - 36) / 2 = 432 pixels off the bottom.
TEST_F(BandTest, BandMustLieWithinOnePalletSlot) {
    shown.SetMode(PalletView::FourPallet);
    view.Refresh();
    EXPECT_TRUE(edit.WithinOneSlot({10, 40, 500, 440}));
    EXPECT_TRUE(edit.WithinOneSlot({540, 36, 1080, 450}));
    EXPECT_TRUE(edit.WithinOneSlot({600, 500, 700, 900}));
    EXPECT_FALSE(edit.WithinOneSlot({500, 40, 600, 100}));
    EXPECT_FALSE(edit.WithinOneSlot({10, 440, 100, 500}));
    EXPECT_FALSE(edit.WithinOneSlot({10, 450, 100, 480}));
    shown.SetMode(PalletView::Danmen);
    view.Refresh();
    EXPECT_TRUE(edit.WithinOneSlot({10, 36, 1080, 468}));
    EXPECT_FALSE(edit.WithinOneSlot({10, 36, 1080, 469}));
    shown.SetMode(PalletView::Flat);
    view.Refresh();
    EXPECT_TRUE(edit.WithinOneSlot({0, 36, 1080, 900}));
    EXPECT_FALSE(edit.WithinOneSlot({0, 35, 1080, 900}));
    EXPECT_FALSE(edit.WithinOneSlot({0, 36, 1081, 900}));
}

TEST_F(BandTest, BandAcrossTwoSlotsSelectsNothing) {
    shown.SetMode(PalletView::FourPallet);
    view.Refresh();
    Band(100, 100, 700, 300);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
}

TEST_F(BandTest, NoPalletInViewAcceptsNoBand) {
    pallet->Name = "NONE";
    view.Refresh();
    EXPECT_FALSE(edit.WithinOneSlot({10, 40, 500, 440}));
}

TEST_F(BandTest, ShiftClickAddsAndRemovesStacksOfTheSamePallet) {
    Band(1035, 790, 900, 860);
    ASSERT_EQ(drawing.Selected().BandList().size(), 1u);
    Click(670, 833, true);
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    EXPECT_EQ(drawing.Selected().BandList()[1].Stack, b.Id);
    EXPECT_EQ(drawing.Selected().BandList()[1].Rect, kRectB);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partA.Seq, partB.Seq}));
    EXPECT_TRUE(drawing.Selected().PickHistory().empty());
    Click(670, 833, true);
    ASSERT_EQ(drawing.Selected().BandList().size(), 1u);
    EXPECT_EQ(drawing.Selected().BandList()[0].Stack, a.Id);
    // b, just hit, stays Picked: its line is selected with the band's.
    EXPECT_EQ(drawing.Selected().Picked(), b.Id);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partA.Seq, partB.Seq}));
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
}

TEST_F(BandTest, RemovingTheLastStackWithShiftEndsTheBand) {
    Band(1035, 790, 900, 860);
    drawing.Select().SetLastPicked(a.Id);
    Click(980, 833, true);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_EQ(drawing.Selected().LastPicked(), kNoStack);
    // The hit test left Picked on a, so MaiChg and left still work on it.
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
}

TEST_F(BandTest, ShiftClickInTheBandLeavesThePickOnTheStackHit) {
    Band(1035, 790, 900, 860);
    ASSERT_EQ(drawing.Selected().Picked(), kNoStack);
    Click(670, 833, true);
    EXPECT_EQ(drawing.Selected().Picked(), b.Id);
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    // A Shift-click on nothing in the band hits nothing: no pick.
    Click(500, 300, true);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().BandList().size(), 2u);
}

TEST_F(BandTest, ShiftClickOnAnotherPalletNeitherAddsNorRemoves) {
    shown.SetMode(PalletView::FourPallet);
    // Part B's stack on pallet 2 (block 12 = x 380..680, y 10..210 of the second pallet).
    HaichiInfo& other = AddStack(app, partB,
                                 {.Block = 12,
                                  .Pieces = 1,
                                  .X = 680,
                                  .Y = 10,
                                  .Corner = kCornerMaxMin,
                                  .CountOnPart = true});
    Show();
    const IntRect r = *drawing.ScreenRect(a);
    const IntRect far = *drawing.ScreenRect(other);
    Band(r.Left - 2, r.Top - 2, r.Right + 2, r.Bottom + 2);
    ASSERT_EQ(drawing.Selected().BandList().size(), 1u);
    Click((far.Left + far.Right) / 2, (far.Top + far.Bottom) / 2, true);
    ASSERT_EQ(drawing.Selected().BandList().size(), 1u);
    EXPECT_EQ(drawing.Selected().BandList()[0].Stack, a.Id);
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
}

TEST_F(BandTest, ShiftClickOnASecondStackTurnsTheSinglePickIntoABand) {
    Click(980, 833);
    ASSERT_EQ(drawing.Selected().LastPicked(), a.Id);
    Click(670, 833, true);
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    EXPECT_EQ(drawing.Selected().BandList()[0].Stack, a.Id);
    EXPECT_EQ(drawing.Selected().BandList()[0].Rect, kRectA);
    EXPECT_EQ(drawing.Selected().BandList()[1].Stack, b.Id);
}

TEST_F(BandTest, ShiftClickOnNothingAfterASinglePickIsAPlainClick) {
    Click(980, 833);
    edit.Press(canvas, 500, 300, true);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_TRUE(edit.Tracking());
    edit.Release(canvas, 500, 300);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
}

TEST_F(BandTest, PlainClickOutsideTheBandDropsItAndPicks) {
    Band(1035, 790, 900, 860);
    Click(670, 833);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    EXPECT_EQ(drawing.Selected().Picked(), b.Id);
}

// The band dragged 100 pixels up: with the scale 1 every stack goes 100 mm back.
TEST_F(BandTest, BandDragMovesEveryStackByTheSameAmount) {
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    EXPECT_EQ(edit.DragAnchor, b.Id);
    EXPECT_EQ(edit.BandOffsets, std::vector<IntPoint>({{260, -25}, {-50, -25}}));
    EXPECT_EQ(view.Image, std::vector<IntRect>({kRectA, kRectB}));
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 670, 733, true);
    EXPECT_EQ(view.Image, std::vector<IntRect>({{930, 708, 1030, 758}, {620, 708, 720, 758}}));
    edit.Release(canvas, 670, 733);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 110);
    EXPECT_DOUBLE_EQ(b.X, 680);
    EXPECT_DOUBLE_EQ(b.Y, 110);
    EXPECT_EQ(drawing.Selected().BandList()[0].Rect, (IntRect{930, 708, 1030, 758}));
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    EXPECT_EQ(view.Refreshes, 2);
}

// 62 pixels down: a at (930, 870)-(1030, 920) and b at (620, 870)-(720, 920) lie below the
// frame's bottom 868, so the probe finds no pallet and nothing moves.
// The band drag of BandDragMovesEveryStackByTheSameAmount shows both landings first.
TEST_F(BandTest, ABandDragShowsEveryEntrysLanding) {
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 670, 733, true);
    ASSERT_TRUE(view.Landing.has_value());
    EXPECT_FALSE(view.Landing->Refused.has_value());
    EXPECT_EQ(view.Landing->Landing,
              std::vector<IntRect>({{930, 708, 1030, 758}, {620, 708, 720, 758}}));
    // The band's entries are moved in the copy's selection only.
    EXPECT_EQ(drawing.Selected().BandList()[0].Rect, kRectA);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    edit.Release(canvas, 670, 733);
    EXPECT_DOUBLE_EQ(a.Y, 110);
    EXPECT_DOUBLE_EQ(b.Y, 110);
}

TEST_F(BandTest, BandDragOffThePalletMovesNothing) {
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 670, 895, true);
    edit.Release(canvas, 670, 895);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_DOUBLE_EQ(b.Y, 10);
    EXPECT_EQ(view.Refreshes, 2);
    EXPECT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::OffThePallets}));
    EXPECT_EQ(view.RefusedAt.size(), 2u);
}

// In 4PALLET with two pallets, a band of all three stacks dragged so far right that a reaches
// the second pallet's slot while a2 stays on the first: the targets differ, nothing moves.
TEST_F(BandTest, BandDragLandingOnTwoPalletsMovesNothing) {
    shown.SetMode(PalletView::FourPallet);
    view.Refresh();
    const IntRect ra = *drawing.ScreenRect(a);
    const IntRect ra2 = *drawing.ScreenRect(a2);
    const IntRect second = drawing.PalletRect[1];
    ASSERT_NE(second.Left, kNoSlot);
    Band(ra2.Left - 2, ra.Top - 2, ra.Right + 2, ra.Bottom + 2);
    ASSERT_EQ(drawing.Selected().BandList().size(), 3u);
    const int32_t dx = second.Left - ra.Left + 1;
    ASSERT_LT(ra2.Right + dx, drawing.PalletRect[0].Right);
    const IntPoint grab{(ra.Left + ra.Right) / 2, (ra.Top + ra.Bottom) / 2};
    edit.Press(canvas, grab.X, grab.Y, false);
    edit.Move(canvas, grab.X + 1, grab.Y, true);
    edit.Move(canvas, grab.X + dx, grab.Y, true);
    edit.Release(canvas, grab.X + dx, grab.Y);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a2.X, 370);
    EXPECT_DOUBLE_EQ(b.X, 680);
    EXPECT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::NotOnOnePallet}));
}

TEST_F(BandTest, AbandonedBandDragEndsTheBandAtTheRelease) {
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 670, 20, true);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    edit.Move(canvas, 670, 25, true);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Aside);
    EXPECT_EQ(drawing.Selected().LastPicked(), kNoStack);
    EXPECT_TRUE(view.Synced.empty());
    edit.Release(canvas, 670, 25);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_DOUBLE_EQ(b.Y, 10);
}

TEST_F(BandTest, EscapeWhileTheRubberBandIsTrackedLeavesNoBand) {
    edit.Press(canvas, 1035, 790, false);
    edit.Move(canvas, 600, 860, true);
    EXPECT_TRUE(edit.AbandonDrag(canvas));
    EXPECT_FALSE(edit.Tracking());
    EXPECT_TRUE(view.Image.empty());
    edit.Release(canvas, 600, 860);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
}

TEST_F(BandTest, EscapeDuringABandDragLetsTheBandGoAndMovesNothing) {
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 600, 700, true);
    canvas.Clear();
    EXPECT_TRUE(edit.AbandonDrag(canvas));
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    EXPECT_EQ(drawing.Selected().LastPicked(), kNoStack);
    EXPECT_TRUE(view.Synced.empty());
    EXPECT_TRUE(view.Image.empty());
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPartNormal));
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPartNormal));
    edit.Release(canvas, 600, 700);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_DOUBLE_EQ(b.Y, 10);
    EXPECT_DOUBLE_EQ(b.X, 680);
}

// With Direct on, a stack lands where it is let go: the first step of 2 pixels up already lands
// further up, 2 millimetres at the scale of 1, for both stacks of the band.
TEST_F(BandTest, AnArrowMovesTheBandByOneStepOfFreeMove) {
    Band(1035, 790, 600, 860);
    ASSERT_TRUE(edit.Nudge(canvas, 0, -1));
    EXPECT_DOUBLE_EQ(a.Y, 12);
    EXPECT_DOUBLE_EQ(b.Y, 12);
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_EQ(drawing.Selected().Band(), BandState::InForce);
    EXPECT_EQ(drawing.Selected().BandList()[0].Rect, (IntRect{930, 806, 1030, 856}));
}

TEST_F(BandTest, PickFromKeysLetsTheBandGo) {
    Band(1035, 790, 600, 860);
    ASSERT_EQ(drawing.Selected().BandList().size(), 2u);
    canvas.Clear();
    edit.PickFromKeys(canvas, b);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
    EXPECT_TRUE(drawing.Selected().BandList().empty());
    EXPECT_EQ(drawing.Selected().Picked(), b.Id);
    EXPECT_EQ(view.Synced, std::vector<int32_t>({partB.Seq}));
    EXPECT_TRUE(PickedIn(canvas, kRectA, colour::kPartNormal));
    EXPECT_TRUE(PickedIn(canvas, kRectB, colour::kPicked));
}

TEST_F(BandTest, DirectSwitchForgetsTheLastPickAndTheHistory) {
    Click(980, 833);
    edit.DirectSwitched();
    EXPECT_EQ(drawing.Selected().LastPicked(), kNoStack);
    EXPECT_TRUE(drawing.Selected().PickHistory().empty());
    EXPECT_EQ(drawing.Selected().Picked(), a.Id);
}

// --- the journal
// ----------------------------------------------------------------------------------

class JournalledEditTest : public BandTest {
  protected:
    JournalledEditTest() {
        app.Settings.IsDirect = 0;
        edit.RecordStepsIn(&session);
        session.JournalIn(&journal);
    }
    RecordedJournal journal;
};

// a picked at its centre (980, 833) and let go at (830, 833): its rectangle, 150 pixels to the
// left, in the area of 1080 x 900; a is the first stack of the list.
TEST_F(JournalledEditTest, ADropIsWrittenDownWithTheAreaTheRectangleAndThePicks) {
    Drag(980, 833, 830, 833);
    EXPECT_EQ(journal.Lines, (Lines{"drop 1080 900 780 808 880 858 0"}));
}

// The arrow's drop is written down as the drop a release there makes. Left from a, the
// rectangle (930 - k, 808)-(1030 - k, 858) is k pixels from a's own corner (right edge 1030)
// and 200 - k from the block's left front corner (left edge 730): the left one is nearer from
// k = 101 on, so the first step of 2 pixels that lands that way is k = 102.
TEST_F(JournalledEditTest, AnArrowIsWrittenDownAsOneDrop) {
    Click(980, 833);
    ASSERT_TRUE(edit.Nudge(canvas, -1, 0));
    EXPECT_EQ(journal.Lines, (Lines{"drop 1080 900 828 808 928 858 0"}));
}

TEST_F(JournalledEditTest, ARefusedDropIsWrittenDownToo) {
    Drag(980, 833, 52, 40);
    ASSERT_EQ(view.Refusals, std::vector<DropRefusal>({DropRefusal::OffThePallets}));
    EXPECT_EQ(journal.Lines, (Lines{"drop 1080 900 2 15 102 65 0"}));
}

TEST_F(JournalledEditTest, AClickAndAnAbandonedDragAreNotWrittenDown) {
    Click(980, 833);
    Drag(980, 833, 980, 30);  // above the caption strip: abandoned
    EXPECT_TRUE(journal.Lines.empty());
}

// The band around a and b, b grabbed at (670, 833) and let go 100 pixels higher: each entry
// with its rectangle at the press.
TEST_F(JournalledEditTest, ABandDropIsWrittenDownWithTheShiftAndTheEntriesAtThePress) {
    app.Settings.IsDirect = 1;
    Band(1035, 790, 600, 860);
    edit.Press(canvas, 670, 833, false);
    edit.Move(canvas, 671, 833, true);
    edit.Move(canvas, 670, 733, true);
    edit.Release(canvas, 670, 733);
    ASSERT_DOUBLE_EQ(b.Y, 110);
    ASSERT_EQ(journal.Lines.size(), 1u);
    // b, grabbed, is the pick the corners are rebuilt without.
    EXPECT_EQ(journal.Lines[0],
              "banddrop 1080 900 0 -100 0 930 808 1030 858 1 620 808 720 858 / 1");
}

TEST_F(JournalledEditTest, TheDirectSwitchIsWrittenDownWithItsValueAfterIt) {
    edit.SwitchDirect();
    edit.SwitchDirect();
    EXPECT_EQ(journal.Lines, (Lines{"direct 1", "direct 0"}));
}

TEST_F(DrawingEditTest, WithoutASessionADropIsWrittenNowhere) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    Drag(980, 833, 830, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_TRUE(journal.Lines.empty());
}

// --- bad input ----------------------------------------------------------------------------------

TEST_F(DrawingEditTest, CursorFarOutsideTheAreaChangesNothing) {
    for (int32_t v : {INT32_MIN, -100000, 100000, INT32_MAX}) {
        Click(v, v);
        Drag(980, 833, v, 833);
        edit.Press(canvas, v, v, true);
        edit.Move(canvas, INT32_MAX, INT32_MIN, true);
        edit.Release(canvas, INT32_MIN, INT32_MAX);
    }
    EXPECT_DOUBLE_EQ(a.X, 990);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    EXPECT_DOUBLE_EQ(b.X, 680);
}

TEST_F(DrawingEditTest, EditingAnEmptyJobDoesNothing) {
    app.HaichiList.Clear();
    app.KouteiList.Clear();
    view.Refresh();
    Click(980, 833);
    Drag(980, 833, 500, 500);
    app.Settings.IsDirect = 1;
    Drag(100, 100, 400, 400);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().Band(), BandState::Off);
}

}  // namespace
}  // namespace kesto::test
