// The part-information panel's three lines and the part-view panel's scaled footprint.
#include "view/PartPanels.h"

#include <gtest/gtest.h>

#include "common/RecordingCanvasQueries.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::ViewJob;

void ExpectBackground(const Primitive& p, const IntRect& r) {
    EXPECT_EQ(PrimitiveKind::Rectangle, p.Kind);
    EXPECT_EQ(r, p.Rect);
    EXPECT_EQ(colour::kPanelBackground, p.Fill);
    EXPECT_EQ(colour::kPanelBackground, p.Pen);
}

// --- information panel ----------------------------------------------------------------------

class InfoPanel : public ::testing::Test {
  protected:
    void SetUp() override {
        job.AddKoutei(2, "SAW-2", "P");
        job.AddKoutei(1, "LASER-1", "P");
        job.shown.SetKoutei(1);  // by number: the second process in the list
        panel.SetClient(IntRect{0, 0, 430, 157});
        part = &job.AddPart({.DisplayName = "SIDE PANEL", .SizeX = 1220.75, .SizeY = 607.125});
        part->DirText = "UD";
        part->Quantity = 48;
        part->MaterialName = "BIRCH PLY";
        part->Thickness = 18.5;
        part->SheetText = "S-12";
        part->PerStackLimit = 6;
        stack.Part = part;
        stack.Pieces = 3;
    }

    // "%-20s %-2s %-32s %ld%s" of LASER-1, UD, SIDE PANEL, 48 and "pcs".
    std::string Line1() const {
        return "LASER-1" + std::string(13, ' ') + " UD " + "SIDE PANEL" + std::string(22, ' ') +
               " 48pcs";
    }
    // "%s %8.3lf %s - %8.3lf x %-8.3lf" of BIRCH PLY, 18.5, S-12, 1220.75, 607.125.
    static std::string Line2() { return "BIRCH PLY   18.500 S-12 - 1220.750 x 607.125 "; }

    ViewJob job;
    PartsInfoPanel panel{job.app, job.shown, job.messages};
    PartsInfo* part = nullptr;
    HaichiInfo stack;
};

TEST_F(InfoPanel, ThreeLinesOfThePickedPart) {
    const std::array<std::string, 3> lines = panel.Lines(*part);
    EXPECT_EQ(Line1(), lines[0]);
    EXPECT_EQ(Line2(), lines[1]);
    EXPECT_EQ("Per stack 6 pcs", lines[2]);
}

TEST_F(InfoPanel, AStackLimitOfZeroShowsADash) {
    part->PerStackLimit = 0;
    EXPECT_EQ("Per stack - pcs", panel.Lines(*part)[2]);
    part->PerStackLimit = -4;
    EXPECT_EQ("Per stack - pcs", panel.Lines(*part)[2]);
    part->PerStackLimit = 1;
    EXPECT_EQ("Per stack 1 pcs", panel.Lines(*part)[2]);
}

TEST_F(InfoPanel, ShortDirectionTextsArePadded) {
    part->DirText = "D";
    part->Quantity = 7;
    EXPECT_EQ(
        "LASER-1" + std::string(13, ' ') + " D  " + "SIDE PANEL" + std::string(22, ' ') + " 7pcs",
        panel.Lines(*part)[0]);
}

TEST_F(InfoPanel, RefreshDrawsTheBackgroundAndTheLinesBelowEachOther) {
    DisplayList canvas;
    panel.Refresh(canvas, stack.Part);
    const auto& items = canvas.Items();
    ASSERT_EQ(4u, items.size());
    ExpectBackground(items[0], {0, 0, 430, 157});
    // dx = 430/20 = 21, dy = 157/10 = 15, font height 20: y 15, 2*15 + 20 = 50,
    // 3*15 + 2*20 = 85.
    const std::vector<std::pair<std::string, IntPoint>> expected{
        {Line1(), {21, 15}}, {Line2(), {21, 50}}, {"Per stack 6 pcs", {21, 85}}};
    for (size_t i = 0; i < 3; ++i) {
        const Primitive& p = items[i + 1];
        EXPECT_EQ(PrimitiveKind::Label, p.Kind);
        EXPECT_EQ(LabelMode::AtPoint, p.Mode);
        EXPECT_EQ(expected[i].first, p.Text);
        EXPECT_EQ(expected[i].second, p.A) << p.A.X << "," << p.A.Y;
        EXPECT_EQ(colour::kPanelText, p.Pen);
        EXPECT_EQ(test::kInfoFont, p.FontSlot);
    }
}

TEST_F(InfoPanel, LinePositionsStartAtThePanelsTopLeft) {
    panel.SetClient(IntRect{5, 8, 435, 165});
    DisplayList canvas;
    panel.Refresh(canvas, stack.Part);
    const std::vector<Primitive> labels = test::Labels(canvas);
    ASSERT_EQ(3u, labels.size());
    EXPECT_EQ((IntPoint{26, 23}), labels[0].A);
    EXPECT_EQ((IntPoint{26, 58}), labels[1].A);
    EXPECT_EQ((IntPoint{26, 93}), labels[2].A);
    ExpectBackground(canvas.Items()[0], {5, 8, 435, 165});
}

TEST_F(InfoPanel, WhyAPartIsShortTakesAFourthLineAndTheFourShareTheHeight) {
    DisplayList canvas;
    panel.Refresh(canvas, stack.Part, "Process 4 has no pallet");
    const std::vector<Primitive> labels = test::Labels(canvas);
    ASSERT_EQ(4u, labels.size());
    // dy = (157 - 4 * 20) / 5 = 15 (77 / 5): y 15, 50, 85, 4 * 15 + 3 * 20 = 120.
    EXPECT_EQ((IntPoint{21, 15}), labels[0].A);
    EXPECT_EQ((IntPoint{21, 85}), labels[2].A);
    EXPECT_EQ((IntPoint{21, 120}), labels[3].A);
    EXPECT_EQ("Process 4 has no pallet", labels[3].Text);
    EXPECT_EQ(colour::kPanelShort, labels[3].Pen);
    EXPECT_EQ(colour::kPanelText, labels[2].Pen);
}

TEST_F(InfoPanel, InALowPanelTheReasonMovesTheLinesCloser) {
    panel.SetClient(IntRect{0, 0, 430, 100});
    DisplayList canvas;
    panel.Refresh(canvas, stack.Part, "why");
    const std::vector<Primitive> labels = test::Labels(canvas);
    ASSERT_EQ(4u, labels.size());
    // dy = (100 - 80) / 5 = 4: y 4, 28, 52, 76; the last line ends at 96, inside the panel.
    EXPECT_EQ(4, labels[0].A.Y);
    EXPECT_EQ(28, labels[1].A.Y);
    EXPECT_EQ(52, labels[2].A.Y);
    EXPECT_EQ(76, labels[3].A.Y);
}

TEST_F(InfoPanel, NothingIsWrittenWhileNoPartIsPicked) {
    DisplayList canvas;
    panel.Refresh(canvas, nullptr);
    ASSERT_EQ(1u, canvas.Items().size());
    ExpectBackground(canvas.Items()[0], {0, 0, 430, 157});
}

// --- view panel -----------------------------------------------------------------------------

class ViewPanel : public ::testing::Test {
  protected:
    void SetUp() override { panel.SetClient(IntRect{0, 0, 301, 187}); }

    ViewJob job;
    PartsViewPanel panel{job.app, job.messages};
    DisplayList canvas;
};

TEST_F(ViewPanel, AWidePartIsScaledByItsWidthAndSetTwoThirdsDown) {
    panel.ShowSize(canvas, 1220.75, 607.125);
    // World x -122.075 .. 1342.825, y -60.7125 .. 667.8375.
    EXPECT_DOUBLE_EQ(-122.075, panel.XMin);
    EXPECT_DOUBLE_EQ(1342.825, panel.XMax);
    EXPECT_DOUBLE_EQ(-60.7125, panel.YMin);
    EXPECT_DOUBLE_EQ(667.8375, panel.YMax);
    // sx = 1464.9/301 = 4.8668 > sy = 728.55/(187 - 20) = 4.3626.
    EXPECT_DOUBLE_EQ(1464.9 / 301, panel.Scale);
    EXPECT_EQ(301, panel.ClientWidth);
    // A = (trunc(25.08), trunc(137.22)) = (25, 137); B = (trunc(275.92), trunc(12.47))
    // = (275, 12): pw 250, ph 125; fw = 51, fh = 62: top = (62/3)*2 = 40, left = 25.
    const auto& items = canvas.Items();
    ASSERT_EQ(3u, items.size());
    ExpectBackground(items[0], {0, 0, 301, 187});
    EXPECT_EQ(PrimitiveKind::Rectangle, items[1].Kind);
    EXPECT_EQ((IntRect{25, 40, 275, 165}), items[1].Rect);
    EXPECT_EQ(colour::kPanelPart, items[1].Fill);
    EXPECT_EQ(colour::kPanelPartPen, items[1].Pen);
    EXPECT_EQ(PrimitiveKind::Label, items[2].Kind);
    EXPECT_EQ(LabelMode::Centred, items[2].Mode);
    EXPECT_EQ("1220.750 x  607.125", items[2].Text);
    EXPECT_EQ((IntRect{0, 0, 301, kViewCaptionHeight}), items[2].Rect);
    EXPECT_EQ(colour::kPanelText, items[2].Pen);
    EXPECT_EQ(test::kViewFont, items[2].FontSlot);
    EXPECT_EQ(1, panel.Shown);
    EXPECT_DOUBLE_EQ(1220.75, panel.ShownW);
    EXPECT_DOUBLE_EQ(607.125, panel.ShownL);
}

TEST_F(ViewPanel, ALongPartIsScaledByItsLength) {
    panel.ShowSize(canvas, 80.4, 950.6);
    // sy = 1140.72/167 = 6.8307 > sx = 96.48/301.
    EXPECT_DOUBLE_EQ(1140.72 / 167, panel.Scale);
    // A = (trunc(1.18), trunc(153.08)) = (1, 153); B = (trunc(12.95), trunc(13.92)) = (12, 13):
    // pw 11, ph 140; fw 290, fh 47: top = (47/3)*2 = 30, left = 145.
    const auto& items = canvas.Items();
    ASSERT_EQ(3u, items.size());
    EXPECT_EQ((IntRect{145, 30, 156, 170}), items[1].Rect);
    EXPECT_EQ("  80.400 x  950.600", items[2].Text);
}

TEST_F(ViewPanel, ANegativeSizeOnlyClearsAndKeepsTheLastSize) {
    panel.ShowSize(canvas, -5, 100);
    ASSERT_EQ(1u, canvas.Items().size());
    ExpectBackground(canvas.Items()[0], {0, 0, 301, 187});
    EXPECT_EQ(0, panel.Shown);

    panel.ShowSize(canvas, 1220.75, 607.125);
    canvas.Clear();
    panel.ShowSize(canvas, 100, -1);
    ASSERT_EQ(1u, canvas.Items().size());
    ExpectBackground(canvas.Items()[0], {0, 0, 301, 187});
    EXPECT_EQ(1, panel.Shown);
    EXPECT_DOUBLE_EQ(1220.75, panel.ShownW);
    EXPECT_DOUBLE_EQ(607.125, panel.ShownL);
}

TEST_F(ViewPanel, AZeroSizeDoesNotBreakThePanel) {
    panel.ShowSize(canvas, 0, 0);
    // The scale is 0: at most the background may be drawn.
    ASSERT_LE(canvas.Items().size(), 1u);
    if (!canvas.Items().empty())
        ExpectBackground(canvas.Items()[0], {0, 0, 301, 187});
    canvas.Clear();
    // A later proper size is shown as usual.
    panel.ShowSize(canvas, 1220.75, 607.125);
    ASSERT_EQ(3u, canvas.Items().size());
    EXPECT_EQ((IntRect{25, 40, 275, 165}), canvas.Items()[1].Rect);
}

TEST_F(ViewPanel, APanelTooLowForThePartDrawsNothingButRemembersTheSize) {
    panel.SetClient(IntRect{0, 0, 301, 10});
    // sy = 60/(10 - 20) < 0 < sx = 120/301: Scale sx; ph = trunc(137.96) - trunc(12.54) = 125,
    // fh = 10 - 125 < 1: nothing at all is drawn.
    panel.ShowSize(canvas, 100, 50);
    EXPECT_TRUE(canvas.Items().empty());
    EXPECT_EQ(1, panel.Shown);
    EXPECT_DOUBLE_EQ(100, panel.ShownW);
    EXPECT_DOUBLE_EQ(50, panel.ShownL);
}

TEST_F(ViewPanel, APanelWithoutWidthSurvives) {
    panel.SetClient(IntRect{0, 0, 0, 187});
    panel.ShowSize(canvas, 100, 50);
    ASSERT_LE(canvas.Items().size(), 1u);
}

TEST_F(ViewPanel, RepaintShowsTheLastSizeAgain) {
    panel.Repaint(canvas);
    ASSERT_EQ(1u, canvas.Items().size());
    ExpectBackground(canvas.Items()[0], {0, 0, 301, 187});

    DisplayList first;
    panel.ShowSize(first, 1220.75, 607.125);
    DisplayList again;
    panel.Repaint(again);
    EXPECT_EQ(first.Items(), again.Items());
}

TEST(ViewPanelFont, AMissingFontSkipsOnlyTheText) {
    ViewJob job("[MainDlg]\nVIEW-STRING=0,\"\"\n");
    PartsViewPanel panel(job.app, job.messages);
    panel.SetClient(IntRect{0, 0, 301, 187});
    DisplayList canvas;
    panel.ShowSize(canvas, 1220.75, 607.125);
    ASSERT_EQ(2u, canvas.Items().size());
    EXPECT_EQ((IntRect{25, 40, 275, 165}), canvas.Items()[1].Rect);
}

}  // namespace
}  // namespace kesto
