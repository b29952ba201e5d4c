// Zoom and pan on the grid job of EditFixture.h, where the whole pallet shows a millimetre a
// pixel: (x, y) at pixel (x + 40, 868 - y), the plan's share (0, 36)-(1080, 900), 1080 x 864.
//
// Twice as close about stack b's centre (630, 35), at pixel (670, 833): 0.5 mm a pixel, the
// window starting 670 pixels to its left and 797 above, x 295..835, y 1.5..433.5. There
// (x, y) is at pixel (2 (x - 295), 2 (433.5 - y) + 36), and b (580..680 x 10..60) at
// (570, 783)-(770, 883).
#include "session/ViewZoom.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "session/JournalReplay.h"

namespace kesto::test {
namespace {

constexpr IntRect kRectB{620, 808, 720, 858};
constexpr IntRect kZoomedB{570, 783, 770, 883};
constexpr IntPoint kCentreB{670, 833};
const std::string kWindowB = "window 295.000 835.000 1.500 433.500";

class ViewZoomTest : public TwoPartsTest {
  protected:
    ViewZoomTest() {
        session.JournalIn(&journal);
        edit.RecordStepsIn(&session);
    }
    std::optional<IntRect> Drawn(const HaichiInfo& h) const { return drawing.ScreenRect(h); }

    RecordedJournal journal;
    ViewZoom zoom{session, drawing};
};

TEST_F(ViewZoomTest, TwiceAsCloseAboutAStackKeepsItUnderThePointerAndIsJournaled) {
    ASSERT_EQ(Drawn(b), kRectB);
    const ChangeSet changed = zoom.ZoomBy(2, kCentreB);
    EXPECT_TRUE(changed.Has(Change::Zoom));
    EXPECT_EQ(journal.Lines, std::vector<std::string>({kWindowB}));
    EXPECT_EQ(shown.Zoom(), (WorldWindow{295, 835, 1.5, 433.5}));
    EXPECT_DOUBLE_EQ(drawing.Scale, 0.5);
    EXPECT_EQ(Drawn(b), kZoomedB);
}

TEST_F(ViewZoomTest, NoCloserThanTheClosestZoom) {
    zoom.ZoomBy(2, kCentreB);
    EXPECT_TRUE(zoom.ZoomBy(kZoomStep, kCentreB).Empty());
    EXPECT_EQ(journal.Lines.size(), 1U);
}

TEST_F(ViewZoomTest, FartherThanTheWholePalletIsTheWholePallet) {
    zoom.ZoomBy(2, kCentreB);
    EXPECT_TRUE(zoom.ZoomBy(1 / 3.0, kCentreB).Has(Change::Zoom));
    EXPECT_FALSE(shown.Zoom().has_value());
    EXPECT_EQ(journal.Lines.back(), "window fit");
    EXPECT_EQ(Drawn(b), kRectB);
    // The whole pallet cannot go farther.
    EXPECT_TRUE(zoom.ZoomBy(0.5, kCentreB).Empty());
}

TEST_F(ViewZoomTest, WholeShowsTheWholePalletAgain) {
    zoom.ZoomBy(2, kCentreB);
    EXPECT_TRUE(zoom.Whole().Has(Change::Zoom));
    EXPECT_EQ(journal.Lines, std::vector<std::string>({kWindowB, "window fit"}));
    EXPECT_TRUE(zoom.Whole().Empty());
}

TEST_F(ViewZoomTest, APanFollowsThePointerAndIsJournaledOnceAtItsEnd) {
    zoom.ZoomBy(2, kCentreB);
    zoom.Begin(kCentreB);
    // 100 pixels to the left are 50 mm: the window goes 50 mm to the right.
    EXPECT_TRUE(zoom.Follow({620, 833}).Has(Change::Zoom));
    EXPECT_TRUE(zoom.Follow({570, 833}).Has(Change::Zoom));
    EXPECT_EQ(shown.Zoom(), (WorldWindow{345, 885, 1.5, 433.5}));
    EXPECT_EQ(journal.Lines.size(), 1U);
    zoom.End();
    EXPECT_FALSE(zoom.Following());
    EXPECT_EQ(journal.Lines,
              std::vector<std::string>({kWindowB, "window 345.000 885.000 1.500 433.500"}));
}

TEST_F(ViewZoomTest, APanStopsAtThePalletsWindow) {
    zoom.ZoomBy(2, kCentreB);
    zoom.Begin(kCentreB);
    zoom.Follow({kCentreB.X - 5000, kCentreB.Y + 5000});
    // Dragged left and down, the window goes right and up, to 1040 and 832, the whole
    // window's edges.
    EXPECT_EQ(shown.Zoom(), (WorldWindow{500, 1040, 400, 832}));
}

TEST_F(ViewZoomTest, ACommandInTheMiddleOfAPanWritesThePansWindowFirst) {
    zoom.ZoomBy(2, kCentreB);
    zoom.Begin(kCentreB);
    zoom.Follow({570, 833});
    session.SetGrid(true);
    EXPECT_EQ(journal.Lines, std::vector<std::string>(
                                 {kWindowB, "window 345.000 885.000 1.500 433.500", "grid 1"}));
}

TEST_F(ViewZoomTest, PinchingTheFingersTogetherZoomsOutAboutTheirCentre) {
    zoom.ZoomBy(2, kCentreB);
    zoom.Begin(kCentreB);
    // Half the spread: twice 0.5 mm a pixel, the whole pallet's scale.
    zoom.Follow(kCentreB, 0.5);
    EXPECT_FALSE(shown.Zoom().has_value());
    zoom.End();
    EXPECT_EQ(journal.Lines.back(), "window fit");
}

TEST_F(ViewZoomTest, NothingPansWhileTheWholePalletIsShown) {
    zoom.Begin(kCentreB);
    EXPECT_TRUE(zoom.Follow({0, 500}).Empty());
    EXPECT_TRUE(zoom.End().Empty());
    EXPECT_TRUE(journal.Lines.empty());
}

TEST_F(ViewZoomTest, FourPalletsDoNotZoom) {
    session.ChooseView(PalletView::FourPallet);
    view.Refresh();
    EXPECT_TRUE(zoom.ZoomBy(2, kCentreB).Empty());
    EXPECT_FALSE(shown.Zoom().has_value());
}

TEST_F(ViewZoomTest, ThePickIsTheSameStackAndItsRectangleFollows) {
    Click(kCentreB.X, kCentreB.Y);
    ASSERT_EQ(drawing.Selected().Picked(), b.Id);
    ASSERT_EQ(drawing.Selected().PickRect(), kRectB);
    zoom.ZoomBy(2, kCentreB);
    EXPECT_EQ(drawing.Selected().Picked(), b.Id);
    EXPECT_EQ(drawing.Selected().PickRect(), kZoomedB);
}

TEST_F(ViewZoomTest, AnotherViewOrPalletShowsTheWholePallet) {
    zoom.ZoomBy(2, kCentreB);
    EXPECT_TRUE(session.ChooseView(PalletView::Danmen).Has(Change::Mode));
    EXPECT_FALSE(shown.Zoom().has_value());
    session.ChooseView(PalletView::Flat);
    view.Refresh();
    zoom.ZoomBy(2, kCentreB);
    ASSERT_TRUE(shown.Zoom().has_value());
    EXPECT_TRUE(session.ChoosePallet(2).Has(Change::Pallet));
    EXPECT_FALSE(shown.Zoom().has_value());
}

// Stack a (890..990 x 10..60) zoomed about its centre (940, 35) at pixel (980, 833): x
// 450..990, y 1.5..433.5, a at (880, 783)-(1080, 883). Dragged 300 zoomed pixels to the
// left, 150 mm, it lands where a 150-pixel drag of the whole pallet lands it: x 790.
TEST_F(ViewZoomTest, ADropWhileZoomedMovesByTheMillimetresTheOperatorSaw) {
    zoom.ZoomBy(2, IntPoint{980, 833});
    ASSERT_EQ(shown.Zoom(), (WorldWindow{450, 990, 1.5, 433.5}));
    ASSERT_EQ(Drawn(a), (IntRect{880, 783, 1080, 883}));
    edit.Press(canvas, 980, 833, false);
    edit.Move(canvas, 979, 833, true);
    edit.Move(canvas, 680, 833, true);
    ASSERT_TRUE(view.Landing.has_value());
    // 690..790 at 0.5 mm a pixel from 450.
    EXPECT_EQ(view.Landing->Landing, std::vector<IntRect>({{480, 783, 680, 883}}));
    edit.Release(canvas, 680, 833);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_DOUBLE_EQ(a.Y, 10);
    ASSERT_EQ(journal.Lines.size(), 2U);
    EXPECT_EQ(journal.Lines[0], "window 450.000 990.000 1.500 433.500");
    EXPECT_EQ(journal.Lines[1].rfind("drop 1080 900 580 783 780 883 ", 0), 0U) << journal.Lines[1];
}

TEST_F(ViewZoomTest, TheJournalOfAZoomedDropReplaysIt) {
    RecordingOperator answers;
    OperatorRelay relay{testServices.Op};
    JournalReplay replay(session, drawing, edit, relay, answers);
    const ReplayOutcome outcome = replay.Run(ReadJournal(
        JournalText("0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef",
                    {"window 450.000 990.000 1.500 433.500", "drop 1080 900 580 783 780 883 0"})));
    EXPECT_TRUE(outcome.Ok()) << outcome.Why;
    EXPECT_EQ(outcome.Commands, 2);
    EXPECT_DOUBLE_EQ(a.X, 790);
    EXPECT_EQ(shown.Zoom(), (WorldWindow{450, 990, 1.5, 433.5}));
}

TEST_F(ViewZoomTest, AWindowLineInFourPalletsStopsTheReplay) {
    RecordingOperator answers;
    OperatorRelay relay{testServices.Op};
    JournalReplay replay(session, drawing, edit, relay, answers);
    const ReplayOutcome outcome = replay.Run(
        ReadJournal(JournalText("0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef",
                                {"view 4pallet", "window 450.000 990.000 1.500 433.500"})));
    EXPECT_EQ(outcome.BadLine, 4);
    EXPECT_EQ(outcome.Why, "line 4: the view in force does not zoom");
}

}  // namespace
}  // namespace kesto::test
