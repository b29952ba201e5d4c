// The stacks on the pallets: fills in every drawing mode, marked parts, 3D layers, labels,
// the hit test and the rubber band, the cross-section bars and the offset lines. Expected
// pixels are worked out by hand from the projection and the drawing rules.
#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "common/RecordingCanvasQueries.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::AddStack;
using test::PlacedDrawing;
using test::ViewJob;

void ExpectFill(const Primitive& p, const IntRect& r, Rgb fill, Rgb pen = colour::kPartPen) {
    EXPECT_EQ(PrimitiveKind::Rectangle, p.Kind);
    EXPECT_EQ(r, p.Rect) << "{" << p.Rect.Left << "," << p.Rect.Top << "," << p.Rect.Right << ","
                         << p.Rect.Bottom << "}";
    EXPECT_EQ(fill, p.Fill) << int(p.Fill.R) << "," << int(p.Fill.G) << "," << int(p.Fill.B);
    EXPECT_EQ(pen, p.Pen);
}

void ExpectLabel(const Primitive& p, const std::string& text, const IntRect& r,
                 int32_t font = test::kLabelFont) {
    EXPECT_EQ(PrimitiveKind::Label, p.Kind);
    EXPECT_EQ(LabelMode::Centred, p.Mode);
    EXPECT_EQ(text, p.Text);
    EXPECT_EQ(r, p.Rect) << "{" << p.Rect.Left << "," << p.Rect.Top << "," << p.Rect.Right << ","
                         << p.Rect.Bottom << "}";
    EXPECT_EQ(colour::kLabelText, p.Pen);
    EXPECT_EQ(font, p.FontSlot);
}

// --- MarkColour ---------------------------------------------------------------------------

TEST(MarkColour, ReplacesFillsOfPartsWithAMarkedSide) {
    PartsInfo plain;
    plain.SensitiveSides = "0000";
    PartsInfo marked;
    marked.SensitiveSides = "0010";
    EXPECT_EQ(colour::kPartNormal, MarkColour(plain, colour::kPartNormal));
    EXPECT_EQ(colour::kSamePart, MarkColour(plain, colour::kSamePart));
    EXPECT_EQ(colour::kMarkedNormal, MarkColour(marked, colour::kPartNormal));
    EXPECT_EQ(colour::kMarkedPicked, MarkColour(marked, colour::kSamePart));
    EXPECT_EQ(colour::kMarkedPicked, MarkColour(marked, colour::kPicked));
    EXPECT_EQ(colour::kMarkedNormal, MarkColour(marked, colour::kLayer20));
    EXPECT_EQ(colour::kMarkedNormal, MarkColour(marked, colour::kLayer10));
    EXPECT_EQ((Rgb{1, 2, 3}), MarkColour(marked, Rgb{1, 2, 3}));
    EXPECT_EQ((Rgb{224, 48, 186}), MarkColour(marked, Rgb{96, 141, 191}));
}

TEST(MarkColour, TakesTheColoursOfThePalette) {
    PartsInfo marked;
    marked.SensitiveSides = "1000";
    const colour::Palette& paper = colour::kPrintPalette;
    EXPECT_EQ(paper.MarkedNormal, MarkColour(marked, paper.PartNormal, paper));
    EXPECT_EQ(paper.MarkedNormal, MarkColour(marked, paper.Layer10, paper));
    EXPECT_EQ(paper.MarkedPicked, MarkColour(marked, paper.SamePart, paper));
    // The screen's colours are not the print palette's.
    EXPECT_EQ(colour::kPartNormal, MarkColour(marked, colour::kPartNormal, paper));
}

TEST(MarkColour, OnlyTheFirstFourCharactersCount) {
    PartsInfo part;
    for (const char* sides : {"1000", "0100", "0001", "1", "01"}) {
        part.SensitiveSides = sides;
        EXPECT_EQ(colour::kMarkedNormal, MarkColour(part, colour::kPartNormal)) << sides;
    }
    for (const char* sides : {"", "0000", "00001", "2222"}) {
        part.SensitiveSides = sides;
        EXPECT_EQ(colour::kPartNormal, MarkColour(part, colour::kPartNormal)) << sides;
    }
}

// --- FLAT job on pallet "BLK" ---------------------------------------------------------------
//
// Pallet W 1003.7, L 840 in FLAT at 1000 x 700: Scale 1.35, XMin -40.148, YMax 873.6,
// OriginDX 99, OriginDY 28 (px = trunc((x + 40.148)/1.35) + 99, py = trunc((873.6 - y)/1.35)
// + 28).
//
// BRACKET 240.3 x 150.7 at X 350.2, Y 30.5: x 109.9 -> trunc(111.15) = 111, 350.2 ->
// trunc(289.15) = 289; y 30.5 -> trunc(624.52) = 624, 181.2 -> trunc(512.89) = 512:
// {210, 540, 388, 652}.
constexpr IntRect kBracket{210, 540, 388, 652};
// RAIL 200 x 150 at X 420.1, Y 90.3: x 220.1 -> trunc(192.78) = 192, 420.1 -> trunc(340.92)
// = 340; y 90.3 -> trunc(580.22) = 580, 240.3 -> trunc(469.11) = 469: {291, 497, 439, 608}.
constexpr IntRect kRail{291, 497, 439, 608};
// BRACKET at X 900.6, Y 600.4: x 660.3 -> trunc(518.85) = 518, 900.6 -> trunc(696.85) = 696;
// y 600.4 -> trunc(202.37) = 202, 751.1 -> trunc(90.74) = 90: {617, 118, 795, 230}.
constexpr IntRect kBracketFar{617, 118, 795, 230};
// SMALLPART 120.6 x 30.3 at X 700.4, Y 300.8: x 579.8 -> trunc(459.22) = 459, 700.4 ->
// trunc(548.55) = 548; y 300.8 -> trunc(424.30) = 424, 331.1 -> trunc(401.85) = 401:
// {558, 429, 647, 452}.
constexpr IntRect kSmall{558, 429, 647, 452};

class FlatParts : public ::testing::Test {
  protected:
    void SetUp() override {
        pallet = &job.AddPallet("BLK", 1003.7, 840, 900);
        job.AddKoutei(1, "CUT", "BLK");
        job.app.Settings.PalletCount = 2;
        block = job.AddBlock(1, 1, 0, 0, 1003.7, 840);
        otherPallet = job.AddBlock(1, 2, 0, 0, 1003.7, 840);
        bracket = &job.AddPart({.DisplayName = "BRACKET", .SizeX = 240.3, .SizeY = 150.7});
        rail = &job.AddPart(
            {.DisplayName = "RAIL", .SizeX = 200, .SizeY = 150, .SensitiveSides = "0010"});
        small = &job.AddPart({.DisplayName = "SMALLPART", .SizeX = 120.6, .SizeY = 30.3});
    }
    void LayOut() {
        DisplayList setUp;
        drawing.Refresh(setUp);
    }
    HaichiInfo& Bracket(int32_t pieces = 7) {
        return AddStack(job.app, *bracket,
                        {.Block = block, .Pieces = pieces, .X = 350.2, .Y = 30.5});
    }
    HaichiInfo& Rail(int32_t pieces = 4) {
        return AddStack(job.app, *rail, {.Block = block, .Pieces = pieces, .X = 420.1, .Y = 90.3});
    }
    HaichiInfo& BracketFar() {
        return AddStack(job.app, *bracket, {.Block = block, .Pieces = 2, .X = 900.6, .Y = 600.4});
    }
    HaichiInfo& Small() {
        return AddStack(job.app, *small, {.Block = block, .Pieces = 12, .X = 700.4, .Y = 300.8});
    }

    ViewJob job;
    PlacedDrawing drawing{job};
    DisplayList canvas;
    PalletInfo* pallet = nullptr;
    int32_t block = 0;
    int32_t otherPallet = 0;
    PartsInfo* bracket = nullptr;
    PartsInfo* rail = nullptr;
    PartsInfo* small = nullptr;
};

TEST_F(FlatParts, ScreenRectsOfTheStacks) {
    HaichiInfo& a = Bracket();
    HaichiInfo& b = Rail();
    HaichiInfo& c = BracketFar();
    HaichiInfo& d = Small();
    LayOut();
    EXPECT_EQ(kBracket, drawing.ScreenRect(a));
    EXPECT_EQ(kRail, drawing.ScreenRect(b));
    EXPECT_EQ(kBracketFar, drawing.ScreenRect(c));
    EXPECT_EQ(kSmall, drawing.ScreenRect(d));
}

TEST_F(FlatParts, ModeZeroFillsEveryStackAndLabelsIt) {
    Bracket();
    Rail();
    AddStack(
        job.app, *bracket,
        {.Block = otherPallet, .Pieces = 5, .X = 350.2, .Y = 30.5});  // pallet 2: not on the view
    Small();
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    const auto& items = canvas.Items();
    ASSERT_EQ(8u, items.size());
    // BRACKET: fh 14, w 178 > 7 * 14 / 2 = 49, ht 112 > trunc(35) = 35: two lines;
    // mid = (652 + 540)/2 = 596; name at 596 - 14 - 3 = 579, count at 596 + 3 = 599.
    ExpectFill(items[0], kBracket, colour::kPartNormal);
    ExpectLabel(items[1], "BRACKET", {210, 579, 388, 652});
    ExpectLabel(items[2], "7", {210, 599, 388, 652});
    // RAIL's sides "0010": drawn in 224, 48, 186. w 148 > 28, ht 111: two lines;
    // mid = 1105/2 = 552: 535 and 555.
    ExpectFill(items[3], kRail, colour::kMarkedNormal);
    ExpectLabel(items[4], "RAIL", {291, 535, 439, 608});
    ExpectLabel(items[5], "4", {291, 555, 439, 608});
    // SMALLPART: ht 23 is too low for two lines: count only at
    // yt = (429 + 3 + 452)/2 - 7 = 435 (435 + 14 <= 452).
    ExpectFill(items[6], kSmall, colour::kPartNormal);
    ExpectLabel(items[7], "12", {558, 435, 647, 452});
}

// The same stacks on paper: light fills, dark outlines, the print's marked colour.
TEST_F(FlatParts, ThePrintPaletteFillsStacksLightWithDarkOutlines) {
    Bracket();
    Rail();
    PlacedDrawing paper(job, colour::kPrintPalette);
    DisplayList setUp;
    paper.Refresh(setUp);
    const std::vector<Primitive> rects = test::Rectangles(setUp);
    // Background, frame, the two stacks.
    ASSERT_EQ(4u, rects.size());
    ExpectFill(rects[0], {0, 28, 1000, 700}, Rgb{255, 255, 255}, Rgb{255, 255, 255});
    EXPECT_EQ(colour::kPrintPalette.PalletFramePen, rects[1].Pen);
    EXPECT_EQ(colour::kPrintPalette.PalletFrame, rects[1].Fill);
    ExpectFill(rects[2], kBracket, colour::kPrintPalette.PartNormal, colour::kPrintPalette.PartPen);
    ExpectFill(rects[3], kRail, colour::kPrintPalette.MarkedNormal, colour::kPrintPalette.PartPen);
    // Light enough to read black on in black and white, the outline dark.
    for (const Rgb fill : {colour::kPrintPalette.PartNormal, colour::kPrintPalette.MarkedNormal}) {
        EXPECT_GT(0.299 * fill.R + 0.587 * fill.G + 0.114 * fill.B, 200.0);
    }
    const Rgb pen = colour::kPrintPalette.PartPen;
    EXPECT_LT(0.299 * pen.R + 0.587 * pen.G + 0.114 * pen.B, 60.0);
}

// Tags replace the name and the count: in the largest font that fits the stack, centred on
// it in a rectangle of the text's own size.
TEST_F(FlatParts, TaggedStacksShowTheirTagsInPlaceOfNameAndCount) {
    const HaichiInfo& bracketStack = Bracket();
    const HaichiInfo& smallStack = Small();
    Rail();
    StackTags tags;
    tags.Texts = {{bracketStack.Id, "1"}, {smallStack.Id, "12"}};
    tags.Fonts = {{7, 30}, {6, 16}, {5, 12}};
    drawing.TagStacks(&tags);
    LayOut();
    DisplayList parts;
    drawing.DrawParts(parts, DrawMode::All);
    const std::vector<Primitive> drawn = test::Labels(parts);
    // The rail has no tag and so no label.
    ASSERT_EQ(2u, drawn.size());
    // BRACKET {210, 540, 388, 652}: "1" is 30 * 5 / 8 = 18 wide, fits: half 10 round x 299,
    // top (540 + 652 - 30) / 2 = 581.
    ExpectLabel(drawn[0], "1", {289, 581, 309, 626}, 7);
    // SMALLPART {558, 429, 647, 452} is 23 high: the 16-pixel font, "12" 20 wide, half 11
    // round x 602, top 429 + (23 - 16) / 2 = 432.
    ExpectLabel(drawn[1], "12", {591, 432, 613, 456}, 6);
    // A stack no font fits takes the last, standing over its edges.
    tags.Texts = {{bracketStack.Id, "123456789012345678901234567890"}};
    DisplayList tight;
    drawing.DrawParts(tight, DrawMode::All);
    ASSERT_EQ(1u, test::Labels(tight).size());
    // 30 bytes at 12 pixels: 225 wide, wider than the bracket's 178.
    ExpectLabel(test::Labels(tight)[0], "123456789012345678901234567890", {186, 590, 412, 608}, 5);
    drawing.TagStacks(nullptr);
    DisplayList again;
    drawing.DrawParts(again, DrawMode::All);
    EXPECT_EQ(test::LabelTexts(again),
              (std::vector<std::string>{"BRACKET", "7", "12", "RAIL", "4"}));
}

TEST_F(FlatParts, AMarkedPartIsDrawnInTheMarkedColour) {
    Rail();
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    ASSERT_EQ(1u, rects.size());
    ExpectFill(rects[0], kRail, Rgb{224, 48, 186});
}

TEST_F(FlatParts, ThreeDStackOfTwentyFivePiecesHasTwentyFourLayers) {
    Bracket(25);
    job.shown.Set3D(true);
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    const auto& items = canvas.Items();
    ASSERT_EQ(27u, items.size());
    ExpectFill(items[0], kBracket, colour::kPartNormal);
    // Layer k sits 2(k - 1) pixels up and left of the base.
    for (int32_t k = 2; k <= 25; ++k) {
        const int32_t d = 2 * (k - 1);
        const Rgb fill = k < 10   ? colour::kPartNormal
                         : k < 20 ? colour::kLayer10
                                  : colour::kLayer20;
        SCOPED_TRACE(k);
        ExpectFill(items[static_cast<size_t>(k - 1)],
                   {kBracket.Left - d, kBracket.Top - d, kBracket.Right - d, kBracket.Bottom - d},
                   fill);
    }
    // Spot checks: layer 9 {194, 524, 372, 636}, layer 10 {192, 522, 370, 634},
    // layer 20 {172, 502, 350, 614}, layer 25 {162, 492, 340, 604}.
    ExpectFill(items[8], {194, 524, 372, 636}, colour::kPartNormal);
    ExpectFill(items[9], {192, 522, 370, 634}, colour::kLayer10);
    ExpectFill(items[19], {172, 502, 350, 614}, colour::kLayer20);
    ExpectFill(items[24], {162, 492, 340, 604}, colour::kLayer20);
    // The label on layer 25: mid = (604 + 492)/2 = 548: 531 and 551.
    ExpectLabel(items[25], "BRACKET", {162, 531, 340, 604});
    ExpectLabel(items[26], "25", {162, 551, 340, 604});
}

TEST_F(FlatParts, ThreeDLayersOfAMarkedPartAreMarked) {
    Rail(12);
    job.shown.Set3D(true);
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    ASSERT_EQ(12u, rects.size());
    for (const Primitive& p : rects)
        EXPECT_EQ(colour::kMarkedNormal, p.Fill);
    EXPECT_EQ((IntRect{269, 475, 417, 586}), rects[11].Rect);  // 22 pixels up and left
}

TEST_F(FlatParts, WithoutThreeDOnlyTheBaseIsDrawn) {
    Bracket(25);
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    ASSERT_EQ(1u, test::Rectangles(canvas).size());
    ExpectLabel(test::Labels(canvas)[1], "25", {210, 599, 388, 652});
}

// --- labels ---------------------------------------------------------------------------------

class PartLabels : public FlatParts {
  protected:
    void SetUp() override {
        FlatParts::SetUp();
        PartsInfo& ab = job.AddPart({.DisplayName = "AB", .SizeX = 10, .SizeY = 10});
        record = &AddStack(job.app, ab, {.Block = block, .Pieces = 5, .X = 100, .Y = 100});
    }
    std::vector<Primitive> Label(const IntRect& r, int32_t font) {
        DisplayList list;
        drawing.DrawPartLabel(list, r, *record, font);
        return list.Items();
    }
    HaichiInfo* record = nullptr;
};

// A part's label in a rectangle with a font: the lines it draws (text and rectangle), none
// when the label is skipped.
struct LabelCase {
    const char* Name{};
    IntRect Rect{};
    int32_t Font{};
    std::vector<std::pair<std::string, IntRect>> Lines{};
};

// Names the case in the test's name and in failures.
void PrintTo(const LabelCase& c, std::ostream* out) {
    *out << c.Name;
}

const LabelCase kLabelCases[] = {
    // Two lines need more than two and a half font heights and room for the name.
    // fh 20: two lines when ht > 50 and w > 2 * 20 / 2 = 20. mid = 451/2 = 225:
    // name at 225 - 20 - 5 = 200, count at 225 + 5 = 230.
    {"TwoLinesWhenTallAndWideEnough",
     {100, 200, 121, 251},
     3,
     {{"AB", {100, 200, 121, 251}}, {"5", {100, 230, 121, 251}}}},
    // w = 20 is not wider than the name: count only at (200 + 5 + 251)/2 - 10 = 218.
    {"CountOnlyWhenNoWiderThanTheName", {100, 200, 120, 251}, 3, {{"5", {100, 218, 120, 251}}}},
    // ht = 50 is not more than 50: count only at (200 + 5 + 250)/2 - 10 = 217.
    {"CountOnlyWhenNotTallerThanTwoAndAHalfFontHeights",
     {100, 200, 121, 250},
     3,
     {{"5", {100, 217, 121, 250}}}},
    // The two and a half height limit is truncated.
    // fh 15: trunc(37.5) = 37. ht 38: two lines, mid 19, name at 19 - 15 - 3 = 1, count at 22.
    {"TwoLinesAboveTheTruncatedLimit",
     {0, 0, 100, 38},
     4,
     {{"AB", {0, 1, 100, 38}}, {"5", {0, 22, 100, 38}}}},
    // ht 37: count only at (0 + 3 + 37)/2 - 7 = 13.
    {"CountOnlyAtTheTruncatedLimit", {0, 0, 100, 37}, 4, {{"5", {0, 13, 100, 37}}}},
    // A count that would overflow the rectangle moves up.
    // fh 20, ht 22: yt = (200 + 5 + 222)/2 - 10 = 203; 223 > 222, e = (22 - 20)/2 = 1:
    // yt = 200 - 1 = 199.
    {"OverflowingCountMovesUp", {100, 200, 160, 222}, 3, {{"5", {100, 199, 160, 222}}}},
    // ht 10: yt = 207 - 10 = 197; 217 > 210, e = (10 - 20)/2 = -5 < 0: yt = top = 200.
    {"OverflowingCountStopsAtTheTop", {100, 200, 160, 210}, 3, {{"5", {100, 200, 160, 210}}}},
    // An undefined font skips the label.
    {"UndefinedFontSkipsTheLabel", {100, 200, 160, 300}, 0, {}},
};

class PartLabelCases : public PartLabels, public ::testing::WithParamInterface<LabelCase> {};

TEST_P(PartLabelCases, DrawsTheNameAndTheCountWhereTheyFit) {
    const LabelCase& c = GetParam();
    const auto items = Label(c.Rect, c.Font);
    ASSERT_EQ(c.Lines.size(), items.size());
    for (size_t i = 0; i < items.size(); ++i)
        ExpectLabel(items[i], c.Lines[i].first, c.Lines[i].second, c.Font);
}

INSTANTIATE_TEST_SUITE_P(Labels, PartLabelCases, ::testing::ValuesIn(kLabelCases),
                         [](const auto& tested) { return std::string(tested.param.Name); });

// --- hit test and rubber band ---------------------------------------------------------------

TEST_F(FlatParts, TheStackWithTheNearerCornerIsPicked) {
    HaichiInfo& a = Bracket();
    HaichiInfo& b = Rail();
    LayOut();
    // (300, 550): BRACKET's nearest corner (388, 540): d = sqrt(88^2 + 10^2) = 88.6;
    // RAIL's (291, 497): d = sqrt(9^2 + 53^2) = 53.8. RAIL wins.
    drawing.HitTest(300, 550);
    EXPECT_EQ(b.Id, drawing.Selected().Picked());
    EXPECT_EQ(kRail, drawing.Selected().PickRect());
    // (380, 600): BRACKET (388, 652): sqrt(8^2 + 52^2) = 52.6; RAIL (439, 608):
    // sqrt(59^2 + 8^2) = 59.5. BRACKET, the earlier one, stays.
    drawing.HitTest(380, 600);
    EXPECT_EQ(a.Id, drawing.Selected().Picked());
    EXPECT_EQ(kBracket, drawing.Selected().PickRect());
    ASSERT_EQ(2u, drawing.Selected().PickHistory().size());
    EXPECT_EQ(b.Id, drawing.Selected().PickHistory()[0]);
    EXPECT_EQ(a.Id, drawing.Selected().PickHistory()[1]);
}

TEST_F(FlatParts, AtEqualDistanceTheEarlierStackStaysPicked) {
    HaichiInfo& first = Bracket();
    Bracket(3);  // the same place, later in the list
    LayOut();
    drawing.HitTest(300, 560);
    EXPECT_EQ(first.Id, drawing.Selected().Picked());
    EXPECT_EQ(kBracket, drawing.Selected().PickRect());
}

TEST_F(FlatParts, PickingTheSameStackAgainDoesNotGrowTheHistory) {
    Bracket();
    HaichiInfo& b = Rail();
    LayOut();
    drawing.HitTest(300, 550);
    drawing.HitTest(300, 551);
    ASSERT_EQ(1u, drawing.Selected().PickHistory().size());
    EXPECT_EQ(b.Id, drawing.Selected().PickHistory()[0]);
}

TEST_F(FlatParts, AMissLeavesThePickAlone) {
    Bracket();
    LayOut();
    drawing.HitTest(50, 50);
    EXPECT_EQ(kNoStack, drawing.Selected().Picked());
    EXPECT_TRUE(drawing.Selected().PickHistory().empty());
    // The edges belong to the rectangle.
    drawing.HitTest(388, 652);
    EXPECT_NE(kNoStack, drawing.Selected().Picked());
}

TEST_F(FlatParts, HitTestModeDrawsNothing) {
    Bracket();
    Rail();
    LayOut();
    drawing.DrawParts(canvas, DrawMode::HitTest, 300, 550);
    EXPECT_TRUE(canvas.Items().empty());
    EXPECT_EQ(kRail, drawing.Selected().PickRect());
}

TEST_F(FlatParts, PickingByBlockAddsTheOtherStacksOfTheBlock) {
    HaichiInfo& a = Bracket();
    HaichiInfo& b = Rail();
    job.shown.SetHit(HitBy::Block);
    LayOut();
    drawing.HitTest(300, 550);
    EXPECT_EQ(b.Id, drawing.Selected().Picked());
    ASSERT_EQ(2u, drawing.Selected().PickHistory().size());
    EXPECT_EQ(b.Id, drawing.Selected().PickHistory()[0]);
    EXPECT_EQ(a.Id, drawing.Selected().PickHistory()[1]);
    // Union of {291, 497, 439, 608} and {210, 540, 388, 652}.
    EXPECT_EQ((IntRect{210, 497, 439, 652}), drawing.Selected().PickRect());
}

TEST_F(FlatParts, TheRubberBandCollectsTheStacksInsideIt) {
    HaichiInfo& a = Bracket();
    Rail();
    LayOut();
    drawing.Select().StartBand(IntRect{200, 530, 400, 660});
    drawing.HitTest(0, 0);
    // BRACKET {210, 540, 388, 652} lies inside; RAIL's top 497 is above the band.
    ASSERT_EQ(1u, drawing.Selected().BandList().size());
    EXPECT_EQ(a.Id, drawing.Selected().BandList()[0].Stack);
    EXPECT_EQ(kBracket, drawing.Selected().BandList()[0].Rect);
    EXPECT_EQ(kNoStack, drawing.Selected().Picked());
}

TEST_F(FlatParts, ARectangleOnTheBandsEdgesIsInside) {
    Bracket();
    LayOut();
    drawing.Select().StartBand(kBracket);
    drawing.HitTest(0, 0);
    EXPECT_EQ(1u, drawing.Selected().BandList().size());
}

// --- highlight modes --------------------------------------------------------------------------

class Highlights : public FlatParts {
  protected:
    void SetUp() override {
        FlatParts::SetUp();
        a = &Bracket();
        b = &Rail();
        c = &BracketFar();
        LayOut();
    }
    std::vector<Primitive> Draw(DrawMode mode) {
        canvas.Clear();
        drawing.DrawParts(canvas, mode);
        return test::Rectangles(canvas);
    }
    HaichiInfo* a = nullptr;  // BRACKET
    HaichiInfo* b = nullptr;  // RAIL, marked
    HaichiInfo* c = nullptr;  // BRACKET, far
};

TEST_F(Highlights, HighlightDrawsThePickedStackAndTheOtherPiecesOfItsPart) {
    drawing.Select().SetPicked(a->Id);
    auto rects = Draw(DrawMode::Highlight);
    ASSERT_EQ(2u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kPicked);
    ExpectFill(rects[1], kBracketFar, colour::kSamePart);
    drawing.Select().SetPicked(b->Id);
    rects = Draw(DrawMode::Highlight);
    ASSERT_EQ(1u, rects.size());
    ExpectFill(rects[0], kRail, colour::kMarkedPicked);
}

TEST_F(Highlights, InThreeDEveryStackGetsItsLayersAndLabelAgainInListOrder) {
    job.shown.Set3D(true);
    drawing.Select().SetPicked(a->Id);
    canvas.Clear();
    drawing.DrawParts(canvas, DrawMode::Highlight);
    // BRACKET (7 pieces): base, layers 2..7 and the top highlight (8); RAIL (4 pieces, not
    // recoloured): its layers 2..4 only (3); BRACKET far (2 pieces): base, layer 2 and its top
    // highlight (3). In list order, so that the stacks cover each other as in the full drawing.
    const auto rects = test::Rectangles(canvas);
    ASSERT_EQ(14u, rects.size());
    // The top layer of BRACKET sits 2 x 6 pixels up and left of its base.
    EXPECT_EQ((IntRect{198, 528, 376, 640}), rects[7].Rect);
    EXPECT_EQ(colour::kPicked, rects[7].Fill);
    // RAIL's first layer, 2 pixels up and left of its base, in its marked normal colour.
    EXPECT_EQ((IntRect{289, 495, 437, 606}), rects[8].Rect);
    EXPECT_EQ(colour::kMarkedNormal, rects[8].Fill);
    EXPECT_EQ((IntRect{285, 491, 433, 602}), rects[10].Rect);
    for (const Primitive& r : rects)
        EXPECT_FALSE(r.Rect == kRail);  // its base is not drawn again
    // A label on every top layer: BRACKET's from x 198, RAIL's from 291 - 6, BRACKET far's from
    // 617 - 2.
    std::set<int32_t> lefts;
    for (const Primitive& label : test::Labels(canvas))
        lefts.insert(label.Rect.Left);
    EXPECT_EQ(lefts, (std::set<int32_t>{198, 285, 615}));
}

TEST_F(Highlights, InThreeDUnhighlightAndPartPiecesAlsoLabelEveryStack) {
    job.shown.Set3D(true);
    drawing.Select().SetLastPicked(c->Id);
    canvas.Clear();
    drawing.DrawParts(canvas, DrawMode::Unhighlight);
    // BRACKET and BRACKET far in normal colours with their layers; RAIL's layers alone:
    // 1 + 6 + 3 + 1 + 1 = 12.
    EXPECT_EQ(12u, test::Rectangles(canvas).size());
    std::set<int32_t> lefts;
    for (const Primitive& label : test::Labels(canvas))
        lefts.insert(label.Rect.Left);
    EXPECT_EQ((std::set<int32_t>{198, 285, 615}), lefts);

    // Mode 4 fills no layers but the top one of the part's stacks (black pen); every stack is
    // labelled.
    drawing.Select().SetPicked(a->Id);
    canvas.Clear();
    drawing.DrawParts(canvas, DrawMode::PartPieces);
    const auto rects = test::Rectangles(canvas);
    ASSERT_EQ(4u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kSamePart);
    ExpectFill(rects[1], IntRect{198, 528, 376, 640}, colour::kSamePart, Rgb{0, 0, 0});
    ExpectFill(rects[2], kBracketFar, colour::kSamePart);
    ExpectFill(rects[3], IntRect{615, 116, 793, 228}, colour::kSamePart, Rgb{0, 0, 0});
    lefts.clear();
    for (const Primitive& label : test::Labels(canvas))
        lefts.insert(label.Rect.Left);
    EXPECT_EQ((std::set<int32_t>{198, 285, 615}), lefts);
}

TEST_F(Highlights, FlatOnlyTheRecolouredStacksAreLabelledAgain) {
    drawing.Select().SetPicked(b->Id);
    canvas.Clear();
    drawing.DrawParts(canvas, DrawMode::Highlight);
    for (const Primitive& label : test::Labels(canvas))
        EXPECT_EQ(kRail.Left, label.Rect.Left);
    EXPECT_FALSE(test::Labels(canvas).empty());
}

TEST_F(Highlights, HighlightWithTheRubberBand) {
    drawing.Select().SetBand(BandState::InForce);
    drawing.Select().AddBandEntry(BandEntry{a->Id, kBracket});
    const auto rects = Draw(DrawMode::Highlight);
    ASSERT_EQ(2u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kPicked);
    ExpectFill(rects[1], kBracketFar, colour::kSamePart);
}

TEST_F(Highlights, UnhighlightDrawsTheLastPickedPartInNormalColours) {
    drawing.Select().SetLastPicked(b->Id);
    auto rects = Draw(DrawMode::Unhighlight);
    ASSERT_EQ(1u, rects.size());
    ExpectFill(rects[0], kRail, colour::kMarkedNormal);
    drawing.Select().SetLastPicked(a->Id);
    rects = Draw(DrawMode::Unhighlight);
    ASSERT_EQ(2u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kPartNormal);
    ExpectFill(rects[1], kBracketFar, colour::kPartNormal);
}

TEST_F(Highlights, UnhighlightWithTheRubberBandRedrawsTheBandsParts) {
    drawing.Select().SetBand(BandState::InForce);
    drawing.Select().AddBandEntry(BandEntry{b->Id, kRail});
    const auto rects = Draw(DrawMode::Unhighlight);
    ASSERT_EQ(1u, rects.size());
    ExpectFill(rects[0], kRail, colour::kMarkedNormal);
}

// The previous pick's part is drawn back too, so its highlight does not stay on screen.
TEST_F(Highlights, UnhighlightWithTheRubberBandAlsoRedrawsTheLastPickedPart) {
    drawing.Select().SetBand(BandState::InForce);
    drawing.Select().AddBandEntry(BandEntry{b->Id, kRail});
    drawing.Select().SetLastPicked(a->Id);
    const auto rects = Draw(DrawMode::Unhighlight);
    ASSERT_EQ(3u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kPartNormal);
    ExpectFill(rects[1], kRail, colour::kMarkedNormal);
    ExpectFill(rects[2], kBracketFar, colour::kPartNormal);
}

TEST_F(Highlights, AllNormalRedrawsEveryStack) {
    drawing.Select().SetPicked(a->Id);
    const auto rects = Draw(DrawMode::AllNormal);
    ASSERT_EQ(3u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kPartNormal);
    ExpectFill(rects[1], kRail, colour::kMarkedNormal);
    ExpectFill(rects[2], kBracketFar, colour::kPartNormal);
}

TEST_F(Highlights, PartPiecesDrawsEveryPieceOfThePickedPart) {
    drawing.Select().SetPicked(a->Id);
    auto rects = Draw(DrawMode::PartPieces);
    ASSERT_EQ(2u, rects.size());
    ExpectFill(rects[0], kBracket, colour::kSamePart);
    ExpectFill(rects[1], kBracketFar, colour::kSamePart);
    drawing.Select().SetPicked(b->Id);
    rects = Draw(DrawMode::PartPieces);
    ASSERT_EQ(1u, rects.size());
    ExpectFill(rects[0], kRail, colour::kMarkedPicked);
}

// --- offset lines ---------------------------------------------------------------------------

TEST_F(FlatParts, OffsetLinesAreDrawnInRedInTheirOrder) {
    pallet->OffsetA = 60.3;
    pallet->OffsetB = 45.7;
    pallet->LimitLeft = 80.9;
    pallet->LimitRight = 95.2;
    LayOut();
    drawing.DrawParts(canvas, DrawMode::All);
    const auto& items = canvas.Items();
    ASSERT_EQ(4u, items.size());
    auto expectLine = [](const Primitive& p, IntPoint from, IntPoint to) {
        EXPECT_EQ(PrimitiveKind::Line, p.Kind);
        EXPECT_EQ(from, p.A) << p.A.X << "," << p.A.Y;
        EXPECT_EQ(to, p.B) << p.B.X << "," << p.B.Y;
        EXPECT_EQ(colour::kOffsetLine, p.Pen);
        EXPECT_EQ(PenStyle::Solid, p.Style);
        EXPECT_EQ(2, p.Width);
    };
    // x 0 -> 128, 1003.7 -> 872; y 0 -> 675, 840 -> 52.
    // OffsetB: y 45.7 -> trunc(613.26) + 28 = 641.
    expectLine(items[0], {128, 641}, {872, 641});
    // OffsetA: y 840 - 60.3 = 779.7 -> trunc(69.56) + 28 = 97.
    expectLine(items[1], {128, 97}, {872, 97});
    // Work2: x 1003.7 - 95.2 = 908.5 -> trunc(702.70) + 99 = 801.
    expectLine(items[2], {801, 675}, {801, 52});
    // Work1: x 80.9 -> trunc(89.67) + 99 = 188.
    expectLine(items[3], {188, 675}, {188, 52});
}

TEST_F(FlatParts, OffsetsOfAHundredthOfAMillimetreOrLessAreNotDrawn) {
    pallet->OffsetA = 0.01;
    pallet->OffsetB = 45.7;
    LayOut();
    Rail();  // y 90.3 and up: clear of the line at 45.7
    drawing.DrawParts(canvas, DrawMode::All);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ((IntPoint{128, 641}), lines[0].A);
    // The offset lines come after the stacks.
    EXPECT_EQ(PrimitiveKind::Line, canvas.Items().back().Kind);
}

TEST_F(FlatParts, AStackAcrossAnOffsetLineIsFramedInTheLinesColourAfterTheLines) {
    pallet->OffsetB = 45.7;
    LayOut();
    Bracket();  // y 30.5 to 181.2: across the line at 45.7
    Rail();     // y 90.3 and up: clear of it
    drawing.DrawParts(canvas, DrawMode::All);
    const std::vector<Primitive> lines = test::Lines(canvas);
    ASSERT_EQ(5u, lines.size());
    const std::array<IntPoint, 4> corners{
        IntPoint{kBracket.Left, kBracket.Top}, IntPoint{kBracket.Right, kBracket.Top},
        IntPoint{kBracket.Right, kBracket.Bottom}, IntPoint{kBracket.Left, kBracket.Bottom}};
    for (size_t i = 0; i < 4; ++i) {
        const Primitive& frame = lines[1 + i];
        EXPECT_EQ(corners[i], frame.A);
        EXPECT_EQ(corners[(i + 1) % 4], frame.B);
        EXPECT_EQ(colour::kOffsetLine, frame.Pen);
        EXPECT_EQ(2, frame.Width);
    }
    // Drawn again for a highlight, the frame stays on top.
    canvas.Clear();
    drawing.Select().SetPicked(job.app.HaichiList.front().Id);
    drawing.DrawParts(canvas, DrawMode::Highlight);
    EXPECT_EQ(5u, test::Lines(canvas).size());
}

// --- cross-section --------------------------------------------------------------------------

TEST(CrossSection, BarsAreDrawnFromTheBackToTheFront) {
    ViewJob job;
    job.AddPallet("P1250", 1250, 815, 1234.5);
    job.AddKoutei(1, "CUT", "P1250");
    job.shown.SetMode(PalletView::Danmen);
    const int32_t block = job.AddBlock(1, 1, 0, 0, 1250, 815);
    PartsInfo& front =
        job.AddPart({.DisplayName = "FRONT", .SizeX = 300.1, .SizeY = 100.4, .PieceHeight = 12.7});
    PartsInfo& back =
        job.AddPart({.DisplayName = "BACK", .SizeX = 250.2, .SizeY = 200.3, .PieceHeight = 3.2});
    PartsInfo& mid = job.AddPart({.DisplayName = "MID",
                                  .SizeX = 150.6,
                                  .SizeY = 120.5,
                                  .SensitiveSides = "1000",
                                  .PieceHeight = 5.5});
    AddStack(job.app, front,
             {.Block = block, .Pieces = 9, .X = 400.3, .Y = 50.2});  // back edge 150.6
    AddStack(job.app, back,
             {.Block = block, .Pieces = 40, .X = 900.7, .Y = 500.9});  // back edge 701.2
    AddStack(job.app, mid,
             {.Block = block, .Pieces = 31, .X = 1100.1, .Y = 300.4});  // back edge 420.9
    PlacedDrawing drawing(job, colour::kScreenPalette, IntRect{0, 0, 1000, 701});
    DisplayList canvas;
    drawing.Refresh(canvas);
    // DANMEN at 1000 x 701: Scale 1760.4/673, XMin -50, OriginDX 242; SectionTop 665,
    // SectionScale 1234.5/251.
    EXPECT_EQ(665, drawing.SectionTop);
    EXPECT_DOUBLE_EQ(1234.5 / 251, drawing.SectionScale);
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    // Background, frame, band, three plan fills, three bars.
    ASSERT_EQ(9u, rects.size());
    // BACK: x 650.5 -> trunc(267.80) = 267, 900.7 -> trunc(363.45) = 363, + 242;
    // height trunc(3.2 * 40 / (1234.5/251)) = trunc(26.03) = 26.
    ExpectFill(rects[6], {509, 639, 605, 665}, colour::kLayer10);
    // MID (marked): x 949.5 -> trunc(382.11) = 382, 1100.1 -> trunc(439.68) = 439;
    // height trunc(5.5 * 31 * 251 / 1234.5) = trunc(34.67) = 34.
    ExpectFill(rects[7], {624, 631, 681, 665}, colour::kMarkedNormal);
    // FRONT: x 100.2 -> trunc(57.42) = 57, 400.3 -> trunc(172.15) = 172;
    // height trunc(12.7 * 9 * 251 / 1234.5) = trunc(23.24) = 23.
    ExpectFill(rects[8], {299, 642, 414, 665}, colour::kLayer10);
}

TEST(CrossSection, OnlyModeZeroDrawsTheBars) {
    ViewJob job;
    job.AddPallet("P1250", 1250, 815, 1234.5);
    job.AddKoutei(1, "CUT", "P1250");
    job.shown.SetMode(PalletView::Danmen);
    const int32_t block = job.AddBlock(1, 1, 0, 0, 1250, 815);
    PartsInfo& back =
        job.AddPart({.DisplayName = "BACK", .SizeX = 250.2, .SizeY = 200.3, .PieceHeight = 3.2});
    AddStack(job.app, back, {.Block = block, .Pieces = 40, .X = 900.7, .Y = 500.9});
    PlacedDrawing drawing(job, colour::kScreenPalette, IntRect{0, 0, 1000, 701});
    DisplayList setUp;
    drawing.Refresh(setUp);
    DisplayList canvas;
    drawing.DrawParts(canvas, DrawMode::AllNormal);
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    ASSERT_EQ(1u, rects.size());
    EXPECT_EQ(colour::kPartNormal, rects[0].Fill);
}

TEST(CrossSection, TwoPalletBarsOfTheSecondSlotAreShiftedAndTiesKeepListOrder) {
    ViewJob job;
    job.AddPallet("P1250", 1250, 815, 1234.5);
    job.AddKoutei(1, "CUT", "P1250");
    job.shown.SetMode(PalletView::TwoPallet);
    job.app.Settings.PalletCount = 2;
    PartsInfo& back =
        job.AddPart({.DisplayName = "BACK", .SizeX = 250.2, .SizeY = 200.3, .PieceHeight = 3.2});
    AddStack(job.app, back,
             {.Block = job.AddBlock(1, 2, 0, 0, 1250, 815), .Pieces = 40, .X = 900.9, .Y = 500.9});
    AddStack(job.app, back,
             {.Block = job.AddBlock(1, 1, 0, 0, 1250, 815), .Pieces = 40, .X = 900.9, .Y = 500.9});
    PlacedDrawing drawing(job, colour::kScreenPalette, IntRect{0, 0, 1001, 701});
    DisplayList canvas;
    drawing.Refresh(canvas);
    // 2PALLET at 1001 x 701: Scale 2700/1001, XMin -100, OriginDX -19, HalfW 500,
    // SectionTop 665, SectionScale 1234.5/260.
    // x 650.7 -> trunc(750.7 * 1001/2700) = trunc(278.31) = 278, 900.9 -> trunc(371.07) = 371;
    // height trunc(3.2 * 40 * 260/1234.5) = trunc(26.96) = 26.
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    ASSERT_GE(rects.size(), 2u);
    // Equal back edges: the earlier record (on pallet 2) first, then pallet 1.
    ExpectFill(rects[rects.size() - 2], {759, 639, 852, 665}, colour::kLayer10);
    ExpectFill(rects[rects.size() - 1], {259, 639, 352, 665}, colour::kLayer10);
}

// --- 4PALLET --------------------------------------------------------------------------------

TEST(FourPalletParts, ThePalletOfASlotNumberBeyondTheCountIsNotDrawn) {
    ViewJob job;
    job.AddPallet("P1250", 1250, 815, 1000);
    job.AddKoutei(1, "CUT", "P1250");
    job.shown.SetMode(PalletView::FourPallet);
    job.app.Settings.PalletCount = 4;
    job.shown.SetPallet(2);
    PartsInfo& shelf = job.AddPart({.DisplayName = "SHELF", .SizeX = 287.4, .SizeY = 158.6});
    for (int32_t p = 1; p <= 4; ++p)
        AddStack(
            job.app, shelf,
            {.Block = job.AddBlock(1, p, 0, 0, 1250, 815), .Pieces = 3, .X = 612.5, .Y = 203.3});
    PlacedDrawing drawing(job, colour::kScreenPalette, IntRect{0, 0, 1000, 701});
    DisplayList setUp;
    drawing.Refresh(setUp);
    DisplayList canvas;
    drawing.DrawParts(canvas, DrawMode::All);
    // Slots show 2, 3, 4 and "5": pallet 1 is nowhere. Rectangles as in the 4PALLET layout:
    // slot 1 {140, 205, 246, 263}, slot 2 + HalfW, slot 3 + HalfH.
    const std::vector<Primitive> rects = test::Rectangles(canvas);
    ASSERT_EQ(3u, rects.size());
    ExpectFill(rects[0], {140, 205, 246, 263}, colour::kPartNormal);
    ExpectFill(rects[1], {640, 205, 746, 263}, colour::kPartNormal);
    ExpectFill(rects[2], {140, 555, 246, 613}, colour::kPartNormal);
}

}  // namespace
}  // namespace kesto
