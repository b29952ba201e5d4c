// The projection, the world windows and the four layouts of the drawing area: frames,
// captions, separators, cross-section bands and height-limit lines, and which pallets the
// slots show. Every expected pixel is worked out by hand from the drawing rules.
#include "view/PalletDrawing.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "common/RecordingCanvasQueries.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::AddStack;
using test::PlacedDrawing;
using test::ViewJob;

constexpr PalletView kFlat = PalletView::Flat;
constexpr PalletView kDanmen = PalletView::Danmen;
constexpr PalletView kFourPallet = PalletView::FourPallet;
constexpr PalletView kTwoPallet = PalletView::TwoPallet;

constexpr IntRect kHidden{kNoSlot, kNoSlot, kNoSlot, kNoSlot};

Primitive Rect(const IntRect& r, Rgb fill, Rgb pen) {
    Primitive p;
    p.Kind = PrimitiveKind::Rectangle;
    p.Rect = r;
    p.Fill = fill;
    p.Pen = pen;
    return p;
}

Primitive Line(IntPoint a, IntPoint b, Rgb colour, PenStyle style, int32_t width) {
    Primitive p;
    p.Kind = PrimitiveKind::Line;
    p.A = a;
    p.B = b;
    p.Pen = colour;
    p.Style = style;
    p.Width = width;
    return p;
}

void ExpectRect(const Primitive& p, const IntRect& r, Rgb fill, Rgb pen) {
    EXPECT_EQ(PrimitiveKind::Rectangle, p.Kind);
    EXPECT_EQ(r, p.Rect) << "{" << p.Rect.Left << "," << p.Rect.Top << "," << p.Rect.Right << ","
                         << p.Rect.Bottom << "}";
    EXPECT_EQ(fill, p.Fill);
    EXPECT_EQ(pen, p.Pen);
}

void ExpectLine(const Primitive& p, IntPoint a, IntPoint b, Rgb colour, PenStyle style,
                int32_t width) {
    EXPECT_EQ(PrimitiveKind::Line, p.Kind);
    EXPECT_EQ(a, p.A) << "(" << p.A.X << "," << p.A.Y << ")";
    EXPECT_EQ(b, p.B) << "(" << p.B.X << "," << p.B.Y << ")";
    EXPECT_EQ(colour, p.Pen);
    EXPECT_EQ(style, p.Style);
    EXPECT_EQ(width, p.Width);
}

void ExpectHeightLabel(const Primitive& p, const std::string& text, IntPoint at) {
    EXPECT_EQ(PrimitiveKind::Label, p.Kind);
    EXPECT_EQ(LabelMode::AtPoint, p.Mode);
    EXPECT_EQ(text, p.Text);
    EXPECT_EQ(at, p.A) << "(" << p.A.X << "," << p.A.Y << ")";
    EXPECT_EQ(test::kLabelFont, p.FontSlot);
    EXPECT_EQ(colour::kHeightLimit, p.Pen);
}

void ExpectCaption(const PalletCaption& c, const IntRect& rect, bool visible,
                   const std::string& text) {
    EXPECT_EQ(rect, c.Rect) << "{" << c.Rect.Left << "," << c.Rect.Top << "," << c.Rect.Right << ","
                            << c.Rect.Bottom << "}";
    EXPECT_EQ(visible, c.Visible);
    EXPECT_EQ(text, c.Text);
}

// A job with one process (No 1) on pallet type "P1250", W x L and height limit H.
class Layout : public ::testing::Test {
  protected:
    void MakePallet(double w, double l, double h = 1234.56789) {
        job.AddPallet("P1250", w, l, h);
        job.AddKoutei(1, "CUT", "P1250");
    }
    void Area(int32_t cw, int32_t ch) { drawing.SetArea({0, 0, cw, ch}); }

    ViewJob job;
    PlacedDrawing drawing{job};
    DisplayList canvas;
};

// --- projection ---------------------------------------------------------------------------

TEST_F(Layout, WorldToScreenTruncatesTowardZeroWithYPointingUp) {
    drawing.Scale = 2.5;
    drawing.XMin = -10.3;
    drawing.YMax = 500.7;
    // px = trunc((100.1 + 10.3) / 2.5) = trunc(44.16) = 44; py = trunc((500.7 - 20.2) / 2.5)
    // = trunc(192.2) = 192.
    EXPECT_EQ((IntPoint{44, 192}), drawing.WorldToScreen(100.1, 20.2));
    // px = trunc((-21.3 + 10.3) / 2.5) = trunc(-4.4) = -4 (not -5);
    // py = trunc((500.7 - 600.2) / 2.5) = trunc(-39.8) = -39.
    EXPECT_EQ((IntPoint{-4, -39}), drawing.WorldToScreen(-21.3, 600.2));
    // A higher y is further up the screen.
    EXPECT_LT(drawing.WorldToScreen(0, 300).Y, drawing.WorldToScreen(0, 200).Y);
}

TEST_F(Layout, ComputeScaleTakesTheLargerRatioAndSubtractsTheCaptionTwiceInFourPallet) {
    Area(1000, 701);
    drawing.CaptionHeight = 28;
    drawing.XMin = -100;
    drawing.XMax = 2600;
    drawing.YMin = -65.2;
    drawing.YMax = 1695.2;
    // FLAT: sx = 2700 / 1000 = 2.7, sy = 1760.4 / (701 - 28) = 2.6157...: sx is larger.
    job.shown.SetMode(kFlat);
    drawing.ComputeScale();
    EXPECT_DOUBLE_EQ(2.7, drawing.Scale);
    // 4PALLET: sy = 1760.4 / (701 - 28 - 28) = 2.7293... > 2.7.
    job.shown.SetMode(kFourPallet);
    drawing.ComputeScale();
    EXPECT_DOUBLE_EQ(1760.4 / 645, drawing.Scale);
    // 2PALLET subtracts the caption once: 2.7 again.
    job.shown.SetMode(kTwoPallet);
    drawing.ComputeScale();
    EXPECT_DOUBLE_EQ(2.7, drawing.Scale);
}

// --- FLAT ---------------------------------------------------------------------------------

TEST_F(Layout, FlatCentresTheFrameInALargeArea) {
    MakePallet(1250, 830);
    Area(1000, 700);
    drawing.Refresh(canvas);
    // cap = trunc(0.04 * 700) = 28. World: x -50 .. 1300, y -33.2 .. 863.2.
    EXPECT_EQ(28, drawing.CaptionHeight);
    EXPECT_DOUBLE_EQ(-50, drawing.XMin);
    EXPECT_DOUBLE_EQ(1300, drawing.XMax);
    EXPECT_DOUBLE_EQ(-33.2, drawing.YMin);
    EXPECT_DOUBLE_EQ(863.2, drawing.YMax);
    // sx = 1350 / 1000 = 1.35, sy = 896.4 / 672 = 1.3339: Scale 1.35.
    EXPECT_DOUBLE_EQ(1.35, drawing.Scale);
    // A = (trunc(50/1.35), trunc(863.2/1.35)) = (37, 639); B = (trunc(1300/1.35),
    // trunc(33.2/1.35)) = (962, 24); pw = 925, ph = 615.
    // top = (700 - 28 - 615) / 2 + 28 = 56; left = (1000 - 925) / 2 = 37.
    EXPECT_EQ((IntRect{37, 56, 962, 671}), drawing.PalletRect[0]);
    EXPECT_EQ(kHidden, drawing.PalletRect[1]);
    EXPECT_EQ(kHidden, drawing.PalletRect[2]);
    EXPECT_EQ(kHidden, drawing.PalletRect[3]);
    // OriginDX = 37 - 37 = 0, OriginDY = 56 - 24 = 32.
    EXPECT_EQ(0, drawing.OriginDX);
    EXPECT_EQ(32, drawing.OriginDY);
    EXPECT_EQ(0, drawing.HalfW);
    EXPECT_EQ(0, drawing.HalfH);
    EXPECT_EQ(0, drawing.SectionBase);
    EXPECT_EQ(0, drawing.SectionTop);
    EXPECT_DOUBLE_EQ(0, drawing.SectionScale);
    EXPECT_DOUBLE_EQ(1250, drawing.ViewPallet.LengthX);
    EXPECT_EQ(7, drawing.ViewPallet.No);

    // Background below the caption strip, then the frame: nothing else.
    ASSERT_EQ(2u, canvas.Items().size());
    ExpectRect(canvas.Items()[0], {0, 28, 1000, 700}, colour::kAreaBackground,
               colour::kAreaBackground);
    ExpectRect(canvas.Items()[1], {37, 56, 962, 671}, colour::kPalletFrame, colour::kPalletFrame);

    ExpectCaption(drawing.Captions[0], {0, 0, 1000, 28}, true, "PL-01");
    EXPECT_EQ(test::kCaptionFont, drawing.Captions[0].FontSlot);
    for (size_t k = 1; k < 4; ++k) {
        EXPECT_FALSE(drawing.Captions[k].Visible) << k;
        EXPECT_EQ("", drawing.Captions[k].Text) << k;
    }
}

// The height that fits a pallet drawn FLAT at a width: the world window (the frame and its
// margins) fills the area below the caption strip in both directions.
TEST_F(Layout, FlatAreaHeightLeavesNoRoomAboveOrBelowTheFrame) {
    MakePallet(1250, 830);
    // World 1350 x 896.4 at 1000 pixels: 1.35 per pixel, 664 and a rounding pixel below the
    // caption strip; 692 high with a strip of 27. The frame's 615 leave 25 above and below.
    EXPECT_EQ(FlatAreaHeight(job.app.PalletList.Items.front(), 1000), 692);
    Area(1000, 692);
    drawing.Refresh(canvas);
    EXPECT_DOUBLE_EQ(1.35, drawing.Scale);
    EXPECT_EQ(27, drawing.CaptionHeight);
    EXPECT_EQ((IntRect{37, 52, 962, 667}), drawing.PalletRect[0]);
    // A pallet with no length, and no width, gets no height.
    PalletInfo none;
    EXPECT_EQ(FlatAreaHeight(none, 1000), 0);
    EXPECT_EQ(FlatAreaHeight(job.app.PalletList.Items.front(), 0), 0);
}

TEST_F(Layout, FlatCentresTheFrameInASmallArea) {
    MakePallet(1250, 830);
    Area(640, 480);
    drawing.Refresh(canvas);
    // cap = trunc(19.2) = 19; sx = 1350 / 640 = 2.109375, sy = 896.4 / 461 = 1.9445.
    EXPECT_EQ(19, drawing.CaptionHeight);
    EXPECT_DOUBLE_EQ(2.109375, drawing.Scale);
    // A = (trunc(23.70), trunc(409.22)) = (23, 409); B = (trunc(616.30), trunc(15.74))
    // = (616, 15); pw = 593, ph = 394; top = (480 - 19 - 394) / 2 + 19 = 52;
    // left = (640 - 593) / 2 = 23.
    EXPECT_EQ((IntRect{23, 52, 616, 446}), drawing.PalletRect[0]);
    EXPECT_EQ(0, drawing.OriginDX);
    EXPECT_EQ(37, drawing.OriginDY);
    ASSERT_EQ(2u, canvas.Items().size());
    ExpectRect(canvas.Items()[0], {0, 19, 640, 480}, colour::kAreaBackground,
               colour::kAreaBackground);
    ExpectRect(canvas.Items()[1], {23, 52, 616, 446}, colour::kPalletFrame, colour::kPalletFrame);
    ExpectCaption(drawing.Captions[0], {0, 0, 640, 19}, true, "PL-01");
}

TEST_F(Layout, FlatScalesAWidePalletByItsWidthAndCentresItVertically) {
    MakePallet(2000, 500);
    Area(800, 600);
    drawing.Refresh(canvas);
    // cap 24; sx = 2160 / 800 = 2.7 > sy = 540 / 576 = 0.9375.
    EXPECT_DOUBLE_EQ(2.7, drawing.Scale);
    // A = (trunc(80/2.7), trunc(520/2.7)) = (29, 192); B = (trunc(2080/2.7), trunc(20/2.7))
    // = (770, 7); pw = 741, ph = 185; top = (600 - 24 - 185) / 2 + 24 = 219; left = 29.
    EXPECT_EQ((IntRect{29, 219, 770, 404}), drawing.PalletRect[0]);
    // Free space above the frame (219 - 24 = 195) and below it (600 - 404 = 196) differ by
    // the odd pixel only.
}

// --- DANMEN -------------------------------------------------------------------------------

// One DANMEN layout of the pallet 1250 x 815 (height limit 1234.56789) and what it must
// show; what a case leaves empty it does not check.
struct DanmenCase {
    const char* Name{};
    int32_t Width{};
    int32_t Height{};
    int32_t LabelFontHeight{};  // 0: the job's own (14)
    std::optional<int32_t> CaptionHeight{};
    std::optional<std::pair<double, double>> WorldY{};  // YMin, YMax
    std::optional<double> Scale{};
    std::optional<IntRect> Pallet{};
    std::optional<IntPoint> Origin{};                      // OriginDX, OriginDY
    std::optional<std::pair<int32_t, int32_t>> Section{};  // SectionBase, SectionTop
    double SectionScaleDivisor{};                          // SectionScale = H / this
    std::optional<IntRect> Background{};                   // the first item
    std::optional<IntRect> Frame{};                        // the second item
    std::optional<IntRect> Band{};                         // the third item
    IntPoint LineFrom{};                                   // the fourth item, the height-limit line
    IntPoint LineTo{};
    IntPoint LabelAt{};  // the fifth item, its label
    std::optional<IntRect> Caption{};
};

const DanmenCase kDanmenCases[] = {
    // The pallet in the upper half, the band at the bottom.
    // cap = trunc(28.04) = 28; world x -50 .. 1300, y -65.2 .. 1695.2.
    // sx = 1.35, sy = 1760.4 / 673 = 2.6157: Scale = sy.
    // A = (trunc(50*673/1760.4), trunc(1695.2*673/1760.4)) = (trunc(19.12), trunc(648.07))
    // = (19, 648); B = (trunc(1300*673/1760.4), trunc(880.2*673/1760.4)) = (trunc(496.99),
    // trunc(336.5)) = (496, 336); pw = 477, ph = 312.
    // top = ((701 - 28) / 2 - 312) / 2 + 28 = 40; left = (1000 - 477) / 2 = 261.
    // Section: base 352, top trunc(0.95 * 701) = 665, band to trunc(0.98 * 701) = 686.
    // g = max(trunc(0.2 * (665 - 352)) = 62, 14) = 62; line at y = 352 + 62 = 414;
    // SectionScale = H / (665 - 414) = H / 251. Label "%.4lf" of H at (left, y - 14).
    {.Name = "PalletInTheUpperHalfAndTheBandAtTheBottom",
     .Width = 1000,
     .Height = 701,
     .LabelFontHeight = 0,
     .WorldY = std::pair{-65.2, 1695.2},
     .Scale = 1760.4 / 673,
     .Pallet = IntRect{261, 40, 738, 352},
     .Origin = IntPoint{242, -296},
     .Section = std::pair{352, 665},
     .SectionScaleDivisor = 251,
     .Background = IntRect{0, 28, 1000, 701},
     .Frame = IntRect{261, 40, 738, 352},
     .Band = IntRect{261, 665, 738, 686},
     .LineFrom = {261, 414},
     .LineTo = {738, 414},
     .LabelAt = {261, 400},
     .Caption = IntRect{0, 0, 1000, 28}},
    // A taller area.
    // cap = trunc(36.04) = 36; sx = 1350/800 = 1.6875, sy = 1760.4/865 = 2.0351: sy.
    // A = (trunc(24.57), trunc(832.96)) = (24, 832); B = (trunc(638.78), trunc(432.5))
    // = (638, 432); pw = 614, ph = 400; top = ((901 - 36)/2 - 400)/2 + 36 = 52;
    // left = (800 - 614) / 2 = 93.
    // Band y trunc(855.95) = 855 .. trunc(882.98) = 882; g = trunc(0.2 * 403) = 80 -> y 532.
    {.Name = "InATallerArea",
     .Width = 800,
     .Height = 901,
     .LabelFontHeight = 0,
     .CaptionHeight = 36,
     .Scale = 1760.4 / 865,
     .Pallet = IntRect{93, 52, 707, 452},
     .Origin = IntPoint{69, -380},
     .Section = std::pair{452, 855},
     .SectionScaleDivisor = 323,
     .Band = IntRect{93, 855, 707, 882},
     .LineFrom = {93, 532},
     .LineTo = {707, 532},
     .LabelAt = {93, 518}},
    // The label gap is at least the label font height.
    // g = max(62, 70) = 70: line at 352 + 70 = 422, SectionScale = H / (665 - 422),
    // label at 422 - 70 = 352.
    {.Name = "LabelGapIsAtLeastTheLabelFontHeight",
     .Width = 1000,
     .Height = 701,
     .LabelFontHeight = 70,
     .SectionScaleDivisor = 243,
     .LineFrom = {261, 422},
     .LineTo = {738, 422},
     .LabelAt = {261, 352}},
};

// Names the case in the test's name and in failures.
void PrintTo(const DanmenCase& c, std::ostream* out) {
    *out << c.Name;
}

class Danmen : public Layout, public ::testing::WithParamInterface<DanmenCase> {};

TEST_P(Danmen, PlacesThePalletTheSectionBandAndTheHeightLimit) {
    const DanmenCase& c = GetParam();
    MakePallet(1250, 815);
    Area(c.Width, c.Height);
    job.shown.SetMode(kDanmen);
    if (c.LabelFontHeight != 0) {
        job.app.Settings.FontHeight[test::kLabelFont] = c.LabelFontHeight;
    }
    drawing.Refresh(canvas);
    if (c.CaptionHeight) {
        EXPECT_EQ(*c.CaptionHeight, drawing.CaptionHeight);
    }
    if (c.WorldY) {
        EXPECT_DOUBLE_EQ(c.WorldY->first, drawing.YMin);
        EXPECT_DOUBLE_EQ(c.WorldY->second, drawing.YMax);
    }
    if (c.Scale) {
        EXPECT_DOUBLE_EQ(*c.Scale, drawing.Scale);
    }
    if (c.Pallet) {
        EXPECT_EQ(*c.Pallet, drawing.PalletRect[0]);
    }
    if (c.Origin) {
        EXPECT_EQ(c.Origin->X, drawing.OriginDX);
        EXPECT_EQ(c.Origin->Y, drawing.OriginDY);
    }
    if (c.Section) {
        EXPECT_EQ(c.Section->first, drawing.SectionBase);
        EXPECT_EQ(c.Section->second, drawing.SectionTop);
    }
    EXPECT_DOUBLE_EQ(1234.56789 / c.SectionScaleDivisor, drawing.SectionScale);

    ASSERT_EQ(5u, canvas.Items().size());
    if (c.Background) {
        ExpectRect(canvas.Items()[0], *c.Background, colour::kAreaBackground,
                   colour::kAreaBackground);
    }
    if (c.Frame) {
        ExpectRect(canvas.Items()[1], *c.Frame, colour::kPalletFrame, colour::kPalletFrame);
    }
    if (c.Band) {
        ExpectRect(canvas.Items()[2], *c.Band, colour::kPalletFrame, colour::kPalletFrame);
    }
    ExpectLine(canvas.Items()[3], c.LineFrom, c.LineTo, colour::kHeightLimit, PenStyle::Dotted, 0);
    ExpectHeightLabel(canvas.Items()[4], "1234.5679", c.LabelAt);
    if (c.Caption) {
        ExpectCaption(drawing.Captions[0], *c.Caption, true, "PL-01");
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, Danmen, ::testing::ValuesIn(kDanmenCases),
                         [](const auto& tested) { return std::string(tested.param.Name); });

// --- 4PALLET ------------------------------------------------------------------------------

TEST_F(Layout, FourPalletPlacesFourFramesCaptionsAndSeparators) {
    MakePallet(1250, 815);
    Area(1000, 701);
    job.shown.SetMode(kFourPallet);
    job.app.Settings.PalletCount = 4;
    drawing.Refresh(canvas);
    // World x -100 .. 2600, y -65.2 .. 1695.2; sx = 2.7, sy = 1760.4/645 = 2.7293: sy.
    EXPECT_DOUBLE_EQ(-100, drawing.XMin);
    EXPECT_DOUBLE_EQ(2600, drawing.XMax);
    EXPECT_DOUBLE_EQ(1760.4 / 645, drawing.Scale);
    // A = (trunc(36.64), trunc(621.11)) = (36, 621); B = (trunc(494.63), trunc(322.5))
    // = (494, 322); pw = 458, ph = 299; top = ((701 - 56)/2 - 299)/2 + 28 = 39;
    // left = (500 - 458) / 2 = 21; HalfW = 500, HalfH = 350.
    EXPECT_EQ(500, drawing.HalfW);
    EXPECT_EQ(350, drawing.HalfH);
    EXPECT_EQ(-15, drawing.OriginDX);
    EXPECT_EQ(-283, drawing.OriginDY);
    EXPECT_EQ((IntRect{21, 39, 479, 338}), drawing.PalletRect[0]);
    EXPECT_EQ((IntRect{521, 39, 979, 338}), drawing.PalletRect[1]);
    EXPECT_EQ((IntRect{21, 389, 479, 688}), drawing.PalletRect[2]);
    EXPECT_EQ((IntRect{521, 389, 979, 688}), drawing.PalletRect[3]);
    EXPECT_EQ(0, drawing.SectionTop);

    // Two background halves, two separators, frames of slots 1, 3, 4, 2.
    const std::vector<Primitive> expected{
        Rect({0, 28, 1000, 350}, colour::kAreaBackground, colour::kAreaBackground),
        Rect({0, 378, 1000, 701}, colour::kAreaBackground, colour::kAreaBackground),
        Line({500, 28}, {500, 350}, colour::kSeparator, PenStyle::Solid, 4),
        Line({500, 378}, {500, 701}, colour::kSeparator, PenStyle::Solid, 4),
        Rect({21, 39, 479, 338}, colour::kPalletFrame, colour::kPalletFrame),
        Rect({21, 389, 479, 688}, colour::kPalletFrame, colour::kPalletFrame),
        Rect({521, 389, 979, 688}, colour::kPalletFrame, colour::kPalletFrame),
        Rect({521, 39, 979, 338}, colour::kPalletFrame, colour::kPalletFrame),
    };
    ASSERT_EQ(expected.size(), canvas.Items().size());
    for (size_t i = 0; i < expected.size(); ++i) {
        if (expected[i].Kind == PrimitiveKind::Rectangle)
            ExpectRect(canvas.Items()[i], expected[i].Rect, expected[i].Fill, expected[i].Pen);
        else
            ExpectLine(canvas.Items()[i], expected[i].A, expected[i].B, expected[i].Pen,
                       expected[i].Style, expected[i].Width);
    }
    ExpectCaption(drawing.Captions[0], {0, 0, 500, 28}, true, "PL-01");
    ExpectCaption(drawing.Captions[1], {500, 0, 1000, 28}, true, "PL-02");
    ExpectCaption(drawing.Captions[2], {0, 350, 500, 378}, true, "PL-03");
    ExpectCaption(drawing.Captions[3], {500, 350, 1000, 378}, true, "PL-04");
}

TEST_F(Layout, FourPalletInAWideAreaIsScaledByWidth) {
    MakePallet(1250, 815);
    Area(1101, 851);
    job.shown.SetMode(kFourPallet);
    job.app.Settings.PalletCount = 4;
    drawing.Refresh(canvas);
    // cap = trunc(34.04) = 34; sx = 2700/1101 = 2.4523 > sy = 1760.4/783 = 2.2483.
    EXPECT_DOUBLE_EQ(2700.0 / 1101, drawing.Scale);
    // A = (trunc(40.78), trunc(691.26)) = (40, 691); B = (trunc(550.5), trunc(358.93))
    // = (550, 358); pw = 510, ph = 333; top = ((851 - 68)/2 - 333)/2 + 34 = 63;
    // left = (550 - 510)/2 = 20; HalfW = 550, HalfH = 425.
    EXPECT_EQ(550, drawing.HalfW);
    EXPECT_EQ(425, drawing.HalfH);
    EXPECT_EQ(-20, drawing.OriginDX);
    EXPECT_EQ(-295, drawing.OriginDY);
    EXPECT_EQ((IntRect{20, 63, 530, 396}), drawing.PalletRect[0]);
    EXPECT_EQ((IntRect{570, 63, 1080, 396}), drawing.PalletRect[1]);
    EXPECT_EQ((IntRect{20, 488, 530, 821}), drawing.PalletRect[2]);
    EXPECT_EQ((IntRect{570, 488, 1080, 821}), drawing.PalletRect[3]);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(2u, lines.size());
    ExpectLine(lines[0], {550, 34}, {550, 425}, colour::kSeparator, PenStyle::Solid, 4);
    ExpectLine(lines[1], {550, 459}, {550, 851}, colour::kSeparator, PenStyle::Solid, 4);
    ExpectRect(canvas.Items()[0], {0, 34, 1101, 425}, colour::kAreaBackground,
               colour::kAreaBackground);
    ExpectRect(canvas.Items()[1], {0, 459, 1101, 851}, colour::kAreaBackground,
               colour::kAreaBackground);
    ExpectCaption(drawing.Captions[2], {0, 425, 550, 459}, true, "PL-03");
    ExpectCaption(drawing.Captions[3], {550, 425, 1100, 459}, true, "PL-04");
}

TEST_F(Layout, FourPalletWithOnePalletShowsOneFrameAndThreeEmptyCaptions) {
    MakePallet(1250, 815);
    Area(1000, 701);
    job.shown.SetMode(kFourPallet);
    job.app.Settings.PalletCount = 1;
    drawing.Refresh(canvas);
    EXPECT_EQ((IntRect{21, 39, 479, 338}), drawing.PalletRect[0]);
    EXPECT_EQ(kHidden, drawing.PalletRect[1]);
    EXPECT_EQ(kHidden, drawing.PalletRect[2]);
    EXPECT_EQ(kHidden, drawing.PalletRect[3]);
    const std::vector<IntRect> frames = test::RectsFilled(canvas, colour::kPalletFrame);
    ASSERT_EQ(1u, frames.size());
    EXPECT_EQ((IntRect{21, 39, 479, 338}), frames[0]);
    ExpectCaption(drawing.Captions[0], {0, 0, 500, 28}, true, "PL-01");
    ExpectCaption(drawing.Captions[1], {500, 0, 1000, 28}, true, "");
    ExpectCaption(drawing.Captions[2], {0, 350, 500, 378}, true, "");
    ExpectCaption(drawing.Captions[3], {500, 350, 1000, 378}, true, "");
}

TEST_F(Layout, FourPalletFromPalletTwoCaptionsWrapButPalletsInViewDoesNot) {
    MakePallet(1250, 815);
    Area(1000, 701);
    job.shown.SetMode(kFourPallet);
    job.app.Settings.PalletCount = 4;
    job.shown.SetPallet(2);
    drawing.Refresh(canvas);
    EXPECT_EQ("PL-02", drawing.Captions[0].Text);
    EXPECT_EQ("PL-03", drawing.Captions[1].Text);
    EXPECT_EQ("PL-04", drawing.Captions[2].Text);
    EXPECT_EQ("PL-01", drawing.Captions[3].Text);
    EXPECT_EQ((std::array<int32_t, 4>{2, 3, 4, 5}), drawing.PalletsInView());
}

// --- 2PALLET ------------------------------------------------------------------------------

TEST_F(Layout, TwoPalletDrawsTwoFramesTwoBandsAndTwoHeightLimits) {
    MakePallet(1250, 815);
    Area(1001, 701);
    job.shown.SetMode(kTwoPallet);
    job.app.Settings.PalletCount = 2;
    drawing.Refresh(canvas);
    // sx = 2700/1001 = 2.6973 > sy = 1760.4/673 = 2.6157.
    EXPECT_DOUBLE_EQ(2700.0 / 1001, drawing.Scale);
    // A = (trunc(37.07), trunc(628.48)) = (37, 628); B = (trunc(500.5), trunc(326.33))
    // = (500, 326); pw = 463, ph = 302; top = ((701 - 56)/2 - 302)/2 + 28 = 38;
    // left = (500 - 463)/2 = 18; HalfW = 500, HalfH = 350.
    EXPECT_EQ(500, drawing.HalfW);
    EXPECT_EQ(350, drawing.HalfH);
    EXPECT_EQ(-19, drawing.OriginDX);
    EXPECT_EQ(-288, drawing.OriginDY);
    EXPECT_EQ((IntRect{18, 38, 481, 340}), drawing.PalletRect[0]);
    EXPECT_EQ((IntRect{518, 38, 981, 340}), drawing.PalletRect[1]);
    EXPECT_EQ(kHidden, drawing.PalletRect[2]);
    EXPECT_EQ(kHidden, drawing.PalletRect[3]);
    // Section base 340, top 665; g = trunc(0.2 * 325) = 65 -> y 405; H / 260.
    EXPECT_EQ(340, drawing.SectionBase);
    EXPECT_EQ(665, drawing.SectionTop);
    EXPECT_DOUBLE_EQ(1234.56789 / 260, drawing.SectionScale);

    const auto& items = canvas.Items();
    ASSERT_EQ(10u, items.size());
    ExpectRect(items[0], {0, 28, 1001, 701}, colour::kAreaBackground, colour::kAreaBackground);
    ExpectLine(items[1], {500, 28}, {500, 701}, colour::kSeparator, PenStyle::Solid, 4);
    ExpectRect(items[2], {18, 38, 481, 340}, colour::kPalletFrame, colour::kPalletFrame);
    ExpectRect(items[3], {518, 38, 981, 340}, colour::kPalletFrame, colour::kPalletFrame);
    // The band of slot 2 before that of slot 1.
    ExpectRect(items[4], {518, 665, 981, 686}, colour::kPalletFrame, colour::kPalletFrame);
    ExpectRect(items[5], {18, 665, 481, 686}, colour::kPalletFrame, colour::kPalletFrame);
    ExpectLine(items[6], {18, 405}, {481, 405}, colour::kHeightLimit, PenStyle::Dotted, 0);
    ExpectHeightLabel(items[7], "1234.5679", {18, 391});
    ExpectLine(items[8], {518, 405}, {981, 405}, colour::kHeightLimit, PenStyle::Dotted, 0);
    ExpectHeightLabel(items[9], "1234.5679", {518, 391});

    ExpectCaption(drawing.Captions[0], {0, 0, 500, 28}, true, "PL-01");
    ExpectCaption(drawing.Captions[1], {500, 0, 1000, 28}, true, "PL-02");
    EXPECT_FALSE(drawing.Captions[2].Visible);
    EXPECT_FALSE(drawing.Captions[3].Visible);
}

TEST_F(Layout, TwoPalletInALargerArea) {
    MakePallet(1250, 815);
    Area(1201, 901);
    job.shown.SetMode(kTwoPallet);
    job.app.Settings.PalletCount = 3;
    job.shown.SetPallet(3);
    drawing.Refresh(canvas);
    // cap 36; sx = 2700/1201 = 2.2481 > sy = 1760.4/865 = 2.0351.
    EXPECT_DOUBLE_EQ(2700.0 / 1201, drawing.Scale);
    // A = (trunc(44.48), trunc(754.05)) = (44, 754); B = (600, trunc(391.53) = 391);
    // pw = 556, ph = 363; top = ((901 - 72)/2 - 363)/2 + 36 = 61; left = (600 - 556)/2 = 22.
    EXPECT_EQ((IntRect{22, 61, 578, 424}), drawing.PalletRect[0]);
    EXPECT_EQ((IntRect{622, 61, 1178, 424}), drawing.PalletRect[1]);
    EXPECT_EQ(424, drawing.SectionBase);
    EXPECT_EQ(855, drawing.SectionTop);
    // g = trunc(0.2 * 431) = 86 -> y 510; H / (855 - 510).
    EXPECT_DOUBLE_EQ(1234.56789 / 345, drawing.SectionScale);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(3u, lines.size());
    ExpectLine(lines[0], {600, 36}, {600, 901}, colour::kSeparator, PenStyle::Solid, 4);
    ExpectLine(lines[1], {22, 510}, {578, 510}, colour::kHeightLimit, PenStyle::Dotted, 0);
    ExpectLine(lines[2], {622, 510}, {1178, 510}, colour::kHeightLimit, PenStyle::Dotted, 0);
    // Slot 1 shows pallet 3, slot 2 wraps to pallet 1.
    ExpectCaption(drawing.Captions[0], {0, 0, 600, 36}, true, "PL-03");
    ExpectCaption(drawing.Captions[1], {600, 0, 1200, 36}, true, "PL-01");
    EXPECT_EQ((std::array<int32_t, 4>{3, 1, -1, -1}), drawing.PalletsInView());
}

TEST_F(Layout, TwoPalletWithOnePalletDrawsOnlyTheFirstSlot) {
    MakePallet(1250, 815);
    Area(1001, 701);
    job.shown.SetMode(kTwoPallet);
    job.app.Settings.PalletCount = 1;
    drawing.Refresh(canvas);
    EXPECT_EQ((IntRect{18, 38, 481, 340}), drawing.PalletRect[0]);
    EXPECT_EQ(kHidden, drawing.PalletRect[1]);
    const std::vector<IntRect> frames = test::RectsFilled(canvas, colour::kPalletFrame);
    ASSERT_EQ(2u, frames.size());
    EXPECT_EQ((IntRect{18, 38, 481, 340}), frames[0]);
    EXPECT_EQ((IntRect{18, 665, 481, 686}), frames[1]);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(2u, lines.size());
    ExpectLine(lines[1], {18, 405}, {481, 405}, colour::kHeightLimit, PenStyle::Dotted, 0);
    EXPECT_EQ(1u, test::Labels(canvas).size());
    ExpectCaption(drawing.Captions[1], {500, 0, 1000, 28}, true, "");
}

TEST_F(Layout, EveryRefreshHidesTheCaptionsTheNewLayoutDoesNotShow) {
    MakePallet(1250, 815);
    Area(1000, 701);
    job.shown.SetMode(kFourPallet);
    job.app.Settings.PalletCount = 4;
    drawing.Refresh(canvas);
    ASSERT_TRUE(drawing.Captions[3].Visible);
    job.shown.SetMode(kFlat);
    drawing.Refresh(canvas);
    EXPECT_TRUE(drawing.Captions[0].Visible);
    EXPECT_FALSE(drawing.Captions[1].Visible);
    EXPECT_FALSE(drawing.Captions[2].Visible);
    EXPECT_FALSE(drawing.Captions[3].Visible);
    EXPECT_EQ((IntRect{0, 0, 1000, 28}), drawing.Captions[0].Rect);
    EXPECT_EQ(kHidden, drawing.PalletRect[1]);
}

// --- captions and missing data ------------------------------------------------------------

TEST_F(Layout, CaptionsKeepNoTextWhenTheirFontIsNotDefined) {
    ViewJob other("[MainDlg]\nL-PALLET-CAP=0,\"Pallet\"\nDRAW-STRING=2,\"x\"\n");
    other.AddPallet("P1250", 1250, 830, 1000);
    other.AddKoutei(1, "CUT", "P1250");
    PlacedDrawing d(other);
    d.Refresh(canvas);
    // Font slot 0 has height 0: no text, no font, but the caption is still placed and shown.
    ExpectCaption(d.Captions[0], {0, 0, 1000, 28}, true, "");
    EXPECT_EQ(-1, d.Captions[0].FontSlot);
    EXPECT_EQ((IntRect{37, 56, 962, 671}), d.PalletRect[0]);
}

TEST_F(Layout, AProcessNamingNoPalletLeavesOnlyTheBackground) {
    job.AddPallet("OTHER", 1250, 830, 1000);
    job.AddKoutei(1, "CUT", "P1250");
    drawing.Refresh(canvas);
    EXPECT_EQ(-1, drawing.ViewPallet.No);
    ASSERT_EQ(1u, canvas.Items().size());
    ExpectRect(canvas.Items()[0], {0, 28, 1000, 700}, colour::kAreaBackground,
               colour::kAreaBackground);
}

TEST_F(Layout, PalletNamesAreMatchedCaseSensitively) {
    job.AddPallet("p1250", 1250, 830, 1000);
    job.AddPallet("P1250", 1250, 830, 1000).No = 12;
    job.AddKoutei(1, "CUT", "P1250");
    drawing.Refresh(canvas);
    EXPECT_EQ(12, drawing.ViewPallet.No);
}

TEST_F(Layout, AnEmptyProcessListDrawsOnlyTheBackground) {
    job.AddPallet("P1250", 1250, 830, 1000);
    drawing.Refresh(canvas);
    ASSERT_EQ(1u, canvas.Items().size());
    EXPECT_EQ((IntRect{0, 28, 1000, 700}), canvas.Items()[0].Rect);
}

// --- PalletsInView ------------------------------------------------------------------------

TEST_F(Layout, PalletsInViewPerMode) {
    using P = std::array<int32_t, 4>;
    auto view = [&](PalletView mode, int32_t current, int32_t count) {
        job.shown.SetMode(mode);
        job.shown.SetPallet(current);
        job.app.Settings.PalletCount = count;
        return drawing.PalletsInView();
    };
    EXPECT_EQ((P{3, -1, -1, -1}), view(kFlat, 3, 5));
    EXPECT_EQ((P{3, -1, -1, -1}), view(kDanmen, 3, 5));
    // 2PALLET: p2 = p1 + 1, wrapping to 1; -1 with fewer than two pallets.
    EXPECT_EQ((P{2, 3, -1, -1}), view(kTwoPallet, 2, 5));
    EXPECT_EQ((P{3, 1, -1, -1}), view(kTwoPallet, 3, 3));
    EXPECT_EQ((P{1, -1, -1, -1}), view(kTwoPallet, 1, 1));
    // 4PALLET with four or more: p2 and p3 wrap; p4 wraps only when p3 exceeded the count.
    EXPECT_EQ((P{1, 2, 3, 4}), view(kFourPallet, 1, 4));
    EXPECT_EQ((P{2, 3, 4, 5}), view(kFourPallet, 2, 4));
    EXPECT_EQ((P{3, 4, 1, 2}), view(kFourPallet, 3, 4));
    EXPECT_EQ((P{4, 1, 2, 3}), view(kFourPallet, 4, 4));
    EXPECT_EQ((P{3, 4, 5, 6}), view(kFourPallet, 3, 5));
    // 4PALLET with fewer than four: no wrapping, numbers beyond the count become -1.
    EXPECT_EQ((P{2, 3, -1, -1}), view(kFourPallet, 2, 3));
    EXPECT_EQ((P{3, -1, -1, -1}), view(kFourPallet, 3, 3));
    EXPECT_EQ((P{1, 2, -1, -1}), view(kFourPallet, 1, 2));
    EXPECT_EQ((P{1, -1, -1, -1}), view(kFourPallet, 1, 1));
    // Unknown modes show nothing.
    EXPECT_EQ((P{-1, -1, -1, -1}), view(static_cast<PalletView>(7), 1, 4));
}

// --- ScreenRect ---------------------------------------------------------------------------

class ScreenRects : public Layout {
  protected:
    void SetUp() override {
        MakePallet(1250, 815);
        Area(1000, 701);
        job.shown.SetMode(kFourPallet);
        job.app.Settings.PalletCount = 4;
        part = &job.AddPart({.DisplayName = "SHELF", .SizeX = 287.4, .SizeY = 158.6});
        for (int32_t p = 1; p <= 4; ++p)
            blockOf[p] = job.AddBlock(1, p, 0, 0, 1250, 815);
        otherProcessBlock = job.AddBlock(2, 1, 0, 0, 1250, 815);
        drawing.Refresh(canvas);
    }
    HaichiInfo& StackOn(int32_t block) {
        return AddStack(job.app, *part, {.Block = block, .Pieces = 3, .X = 612.5, .Y = 203.3});
    }

    PartsInfo* part = nullptr;
    std::array<int32_t, 5> blockOf{};
    int32_t otherProcessBlock = 0;
};

TEST_F(ScreenRects, AddTheSlotOffsetsOfThePallet) {
    // Scale = 1760.4/645, XMin -100, YMax 1695.2, OriginDX -15, OriginDY -283.
    // A = WorldToScreen(612.5 - 287.4, 203.3) = (trunc(425.1*645/1760.4),
    //     trunc(1491.9*645/1760.4)) = (trunc(155.75), trunc(546.62)) = (155, 546);
    // B = WorldToScreen(612.5, 361.9) = (trunc(261.06), trunc(488.51)) = (261, 488).
    // Slot 1: {155-15, 488-283, 261-15, 546-283} = {140, 205, 246, 263}.
    EXPECT_EQ((IntRect{140, 205, 246, 263}), drawing.ScreenRect(StackOn(blockOf[1])));
    EXPECT_EQ((IntRect{640, 205, 746, 263}), drawing.ScreenRect(StackOn(blockOf[2])));
    EXPECT_EQ((IntRect{140, 555, 246, 613}), drawing.ScreenRect(StackOn(blockOf[3])));
    EXPECT_EQ((IntRect{640, 555, 746, 613}), drawing.ScreenRect(StackOn(blockOf[4])));
}

TEST_F(ScreenRects, RecordsOfOtherProcessesOrHiddenPalletsAreNotOnTheView) {
    EXPECT_FALSE(drawing.ScreenRect(StackOn(otherProcessBlock)).has_value());
    job.shown.SetMode(kFlat);
    drawing.Refresh(canvas);
    EXPECT_TRUE(drawing.ScreenRect(StackOn(blockOf[1])).has_value());
    EXPECT_FALSE(drawing.ScreenRect(StackOn(blockOf[2])).has_value());
}

}  // namespace
}  // namespace kesto
