// The all-parts dialog without a window: sort buttons and keys, the selection sort and its
// ties, the line text, the marks of parts in view, where the dialog lies, its controls, and
// the pick of a line's part in the drawing.
#include "rules/PartsAllList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "common/PartFields.h"
#include "view/Colours.h"
#include "view/DisplayList.h"
#include "view/ViewJob.h"

namespace kesto {
namespace {

using test::AddPart;
using test::AddStack;
using test::MakePart;
using test::PlacedDrawing;

// --- sort buttons ---------------------------------------------------------------------------

TEST(NextSortKey, SizeButtonCyclesFourKeysFromSeqOrder) {
    int32_t key = sortkey::kSeqUp;
    std::vector<int32_t> keys;
    for (int press = 0; press < 5; ++press) {
        key = NextSortKey(SortButton::Size, key);
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (std::vector<int32_t>{30, 31, 32, 33, 30}));
}

TEST(NextSortKey, SizeButtonStartsAt30FromAnyOtherKey) {
    for (int32_t key : {0, 11, 20, 29, 34, 41, 51, -5})
        EXPECT_EQ(NextSortKey(SortButton::Size, key), 30) << key;
}

TEST(NextSortKey, TwoKeyButtonsSetTheirFirstKeyThenToggle) {
    const std::pair<SortButton, std::pair<int32_t, int32_t>> buttons[] = {
        {SortButton::Seq, {10, 11}},
        {SortButton::Material, {21, 20}},
        {SortButton::Quantity, {40, 41}},
        {SortButton::Name, {51, 50}},
    };
    for (const auto& [button, keys] : buttons) {
        const auto [first, second] = keys;
        EXPECT_EQ(NextSortKey(button, 32), first) << first;
        EXPECT_EQ(NextSortKey(button, first), second) << first;
        EXPECT_EQ(NextSortKey(button, second), first) << first;
    }
    // Seq's first key is the start key, so its first press already sorts down.
    EXPECT_EQ(NextSortKey(SortButton::Seq, 10), 11);
}

// --- selection sort -------------------------------------------------------------------------

struct Parts {
    std::vector<int32_t> SortedSeqs(int32_t key) const {
        std::vector<const PartsInfo*> parts;
        for (const PartsInfo& part : app.PartsList)
            parts.push_back(&part);
        SortPartsAll(parts, key);
        std::vector<int32_t> seqs;
        for (const PartsInfo* part : parts)
            seqs.push_back(part->Seq);
        return seqs;
    }
    CKestoApp app;
};

TEST(SortPartsAll, EqualNamesTakeTheOrderTheSwapsLeave) {
    Parts p;
    AddPart(p.app, {.DisplayName = "B"});
    AddPart(p.app, {.DisplayName = "B"});
    AddPart(p.app, {.DisplayName = "A"});
    // Key 51 (Text1 up): position 0 takes "A" (Seq 3) and Seq 1 goes to its place: 3, 2, 1.
    // Position 1: Seq 1's "B" is not strictly smaller than Seq 2's, so Seq 2 stays before it.
    EXPECT_EQ(p.SortedSeqs(sortkey::kNameUp), (std::vector<int32_t>{3, 2, 1}));
    // Key 50 (Text1 down): neither "B" beats the other, and "A" never does: 1, 2, 3.
    EXPECT_EQ(p.SortedSeqs(sortkey::kNameDown), (std::vector<int32_t>{1, 2, 3}));
}

TEST(SortPartsAll, TextColumnsCompareBytes) {
    Parts p;
    AddPart(p.app, {.MaterialName = "b"});
    AddPart(p.app, {.MaterialName = "B"});
    AddPart(p.app, {.MaterialName = "a"});
    // Bytes: 'B' 66 < 'a' 97 < 'b' 98. Key 21 sorts Text3 up, key 20 down.
    EXPECT_EQ(p.SortedSeqs(sortkey::kMaterialUp), (std::vector<int32_t>{2, 3, 1}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kMaterialDown), (std::vector<int32_t>{1, 3, 2}));
}

TEST(SortPartsAll, NumberColumnsUpAndDown) {
    Parts p;
    AddPart(p.app, {.SizeX = 300, .SizeY = 10, .Quantity = 5});
    AddPart(p.app, {.SizeX = 100, .SizeY = 30, .Quantity = 9});
    AddPart(p.app, {.SizeX = 200, .SizeY = 20, .Quantity = 1});
    EXPECT_EQ(p.SortedSeqs(sortkey::kSeqDown), (std::vector<int32_t>{3, 2, 1}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kSeqUp), (std::vector<int32_t>{1, 2, 3}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kSizeXUp), (std::vector<int32_t>{2, 3, 1}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kSizeXDown), (std::vector<int32_t>{1, 3, 2}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kSizeYUp), (std::vector<int32_t>{1, 3, 2}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kSizeYDown), (std::vector<int32_t>{2, 3, 1}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kQuantityUp), (std::vector<int32_t>{3, 1, 2}));
    EXPECT_EQ(p.SortedSeqs(sortkey::kQuantityDown), (std::vector<int32_t>{2, 1, 3}));
}

TEST(SortPartsAll, UnknownKeyKeepsTheListOrder) {
    Parts p;
    AddPart(p.app, {.DisplayName = "C"});
    AddPart(p.app, {.DisplayName = "A"});
    EXPECT_EQ(p.SortedSeqs(0), (std::vector<int32_t>{1, 2}));
    EXPECT_EQ(p.SortedSeqs(34), (std::vector<int32_t>{1, 2}));
}

// --- line text ------------------------------------------------------------------------------

TEST(LocationText, SmallBoxFourShowsBX4) {
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .Destination = 103})), "BX4");  // 103 - 99
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .Destination = 100})), "BX1");
    // Any code from 100 on.
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .Destination = 99999})), "BX99900");
}

TEST(LocationText, PalletPartWithTwoOfThreePlacedShowsPLMinus) {
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .PiecesPlaced = 2, .Destination = 1})), "PL-");
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .PiecesPlaced = 3, .Destination = 1})), "PL ");
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .PiecesPlaced = 3, .Destination = 99})), "PL ");
}

TEST(LocationText, SetAsidePartShowsPLLikeAPalletPart) {
    EXPECT_EQ(LocationText(MakePart({.Quantity = 3, .Destination = 1000})), "PL-");
    EXPECT_EQ(LocationText(MakePart({.Quantity = 0, .Destination = 1000})), "PL ");
}

TEST(DirectionText, TwoCharactersFromTheDirectionCode) {
    const std::pair<int32_t, const char*> cases[] = {{1, "U "}, {10, "D "}, {11, "UD"},
                                                     {0, "  "}, {2, "  "},  {-1, "  "}};
    for (const auto& [code, text] : cases) {
        EXPECT_EQ(DirectionText(MakePart({.DirCode = code})), text) << code;
    }
}

TEST(SheetCountText, NoLimitShowsThreeDashes) {
    PartsInfo part;
    EXPECT_EQ(SheetCountText(part), "---");
    part.PerStackLimit = 4;
    EXPECT_EQ(SheetCountText(part), "  4");
    part.PerStackLimit = 1234;
    EXPECT_EQ(SheetCountText(part), "1234");
}

TEST(PartsAllLine, EveryColumnOfAMarkedPalletPart) {
    const PartsInfo part = MakePart({.Seq = 7,
                                     .DisplayName = "Bracket",
                                     .SizeX = 200,
                                     .SizeY = 150.5,
                                     .DirCode = 11,
                                     .Quantity = 3,
                                     .PiecesPlaced = 2,
                                     .Destination = 1,
                                     .PerStackLimit = 4,
                                     .MaterialName = "SPCC",
                                     .Thickness = 1.6});
    EXPECT_EQ(PartsAllLine(part, true),
              "007"                                  // %.3d
              " * PL-"                               // mark, location
              " SPCC            "                    // %-16s
              "  1.600"                              // %6.3lf
              " UD"                                  // direction
              "   4"                                 // sheet count %3d
              "    2/3   "                           // %4d/%-4d
              "  200.0000 x  150.5000"               // %9.4lf x %9.4lf
              " Bracket                         ");  // %-32.32s: 7 + 25 blanks
}

TEST(PartsAllLine, SmallBoxPartWithoutLimitAndLongTexts) {
    const PartsInfo part = MakePart({.Seq = 12,
                                     .DisplayName = std::string(40, 'x'),  // cut to 32
                                     .SizeX = 1234.5,
                                     .SizeY = 0.25,
                                     .Quantity = 10,
                                     .Destination = 103,
                                     // 19 characters: %-16s does not cut
                                     .MaterialName = "ABCDEFGHIJKLMNOPQRS",
                                     .Thickness = 12.5});
    EXPECT_EQ(PartsAllLine(part, false),
              "012   BX4 ABCDEFGHIJKLMNOPQRS 12.500    ---    0/10  "
              " 1234.5000 x    0.2500 " +
                  std::string(32, 'x'));
}

// --- the lines of a process -----------------------------------------------------------------

struct MarkedJob {
    MarkedJob() {
        for (int32_t no : {1, 2}) {
            KouteiInfo& k = app.KouteiList.Append();
            k.No = no;
            ++app.KouteiList.Count;
        }
        AddBlock(1, 1);  // 0
        AddBlock(1, 2);  // 1
        AddBlock(1, 3);  // 2
        AddBlock(2, 1);  // 3
    }
    void AddBlock(int32_t koutei, int32_t pallet) {
        BlockInfo b;
        b.KouteiNo = koutei;
        b.PalletNo = pallet;
        app.Blocks.AddBlock(b);
    }
    // The mark column of each line (the character after "NNN ").
    std::string Marks(int32_t koutei, int32_t key, std::array<int32_t, 4> inView) const {
        std::string marks;
        const auto lines = PartsAllLines(app, shown, koutei, key, inView);
        for (const std::string& line : lines.value_or(std::vector<std::string>{}))
            marks += line.substr(0, 3) + line[4];
        return marks;
    }
    CKestoApp app;
    ViewState shown;
};

TEST(PartsAllLines, NoSuchProcessLeavesTheListAlone) {
    MarkedJob job;
    EXPECT_FALSE(PartsAllLines(job.app, job.shown, 3, sortkey::kSeqUp, {1, 2, -1, -1}).has_value());
}

TEST(PartsAllLines, NoPartsGiveAnEmptyList) {
    MarkedJob job;
    const auto lines = PartsAllLines(job.app, job.shown, 1, sortkey::kSeqUp, {1, 2, -1, -1});
    ASSERT_TRUE(lines.has_value());
    EXPECT_TRUE(lines->empty());
}

TEST(PartsAllLines, MarksPartsOnTheFirstTwoPalletsOfTheCurrentProcess) {
    MarkedJob job;
    PartsInfo& onOne = AddPart(job.app, {.DisplayName = "A"});
    PartsInfo& onThree = AddPart(job.app, {.DisplayName = "B"});
    PartsInfo& onTwo = AddPart(job.app, {.DisplayName = "C"});
    PartsInfo& badBlock = AddPart(job.app, {.DisplayName = "D"});
    AddPart(job.app, {.KouteiNo = 2, .DisplayName = "E"});
    AddStack(job.app, onOne, {.Block = 0});
    AddStack(job.app, onThree, {.Block = 2});  // pallet 3: the third slot does not count
    AddStack(job.app, onTwo, {.Block = 1});
    AddStack(job.app, onTwo, {.Block = 1});     // marked once
    AddStack(job.app, badBlock, {.Block = 3});  // process 2's block
    AddStack(job.app, badBlock, {.Block = 99});
    AddStack(job.app, badBlock, {.Block = -1});
    job.app.HaichiList.Append().BlockIndex = 0;  // a stack without a part is passed over
    EXPECT_EQ(job.Marks(1, sortkey::kSeqUp, {1, 2, 3, 4}), "001*002 003*004 ");
    EXPECT_EQ(job.Marks(1, sortkey::kSeqDown, {2, -1, -1, -1}), "004 003*002 001 ");
}

TEST(PartsAllLines, MarksFollowTheCurrentProcessNotTheListedOne) {
    MarkedJob job;
    PartsInfo& second = AddPart(job.app, {.KouteiNo = 2, .DisplayName = "E"});
    AddStack(job.app, second, {.Block = 3});  // process 2, pallet 1
    EXPECT_EQ(job.Marks(2, sortkey::kSeqUp, {1, -1, -1, -1}), "001 ");
    job.shown.SetKoutei(2);
    EXPECT_EQ(job.Marks(2, sortkey::kSeqUp, {1, -1, -1, -1}), "001*");
}

TEST(PartsAllLines, SortedByTheKey) {
    MarkedJob job;
    AddPart(job.app, {.DisplayName = "B"});
    AddPart(job.app, {.DisplayName = "C"});
    AddPart(job.app, {.DisplayName = "A"});
    EXPECT_EQ(job.Marks(1, sortkey::kNameUp, {1, 2, -1, -1}), "003 001 002 ");
    EXPECT_EQ(job.Marks(1, sortkey::kNameDown, {1, 2, -1, -1}), "002 001 003 ");
}

// --- place and controls ---------------------------------------------------------------------

// The drawing area on the screen.
constexpr IntRect kPlacedArea{100, 200, 1100, 901};

// The area {100, 200, 1100, 901}: H = 701, x = 102, width = 1000 - 5 = 995; the lower
// half starts at 200 + 701 / 2 = 550 and is 350 - 2 = 348 high.
TEST(PlacePartsAll, HiddenOverTheLowerHalf) {
    const auto place = PlacePartsAll(kPlacedArea, PalletView::Flat, Visibility::Hidden);
    EXPECT_EQ(place.Rect, (ControlRect{102, 550, 995, 348}));
    EXPECT_FALSE(place.Shown);
}

TEST(PlacePartsAll, ShownOverTheLowerHalfOutsideFlat) {
    for (PalletView mode : {PalletView::Danmen, PalletView::FourPallet, PalletView::TwoPallet}) {
        const auto place = PlacePartsAll(kPlacedArea, mode, Visibility::Shown);
        EXPECT_EQ(place.Rect, (ControlRect{102, 550, 995, 348})) << static_cast<int32_t>(mode);
        EXPECT_TRUE(place.Shown);
    }
}

TEST(PlacePartsAll, ShownOverTheWholeAreaInFlat) {
    const auto place = PlacePartsAll(kPlacedArea, PalletView::Flat, Visibility::Shown);
    EXPECT_EQ(place.Rect, (ControlRect{102, 200, 995, 701}));
    EXPECT_TRUE(place.Shown);
}

TEST(LayOutPartsAll, ButtonsTwiceTheFontHighAndTheListBelow) {
    // W 800, Hc 400, font 16: bh 32, bw (800 - 10) / 5 = 158; list at 32 + 10, 400 - 32 - 15.
    const PartsAllControls c = LayOutPartsAll(800, 400, 16);
    const int32_t xs[] = {5, 163, 321, 479, 637};
    for (size_t i = 0; i < 5; ++i)
        EXPECT_EQ(c.Buttons[i], (ControlRect{xs[i], 5, 158, 32})) << i;
    EXPECT_EQ(c.List, (ControlRect{5, 42, 790, 353}));
}

TEST(LayOutPartsAll, WithoutAFontButtonsTakeATenthOfTheHeight) {
    // bh = 400 / 10 = 40; list at 50, 400 - 40 - 15 = 345 high.
    const PartsAllControls c = LayOutPartsAll(800, 400, 0);
    EXPECT_EQ(c.Buttons[0], (ControlRect{5, 5, 158, 40}));
    EXPECT_EQ(c.List, (ControlRect{5, 50, 790, 345}));
}

TEST(LayOutPartsAll, TinyAreaGivesNegativeSizesUnclamped) {
    // W 4, Hc 3: bh 0, bw (4 - 10) / 5 = -1; list 4 - 10 = -6 wide, 3 - 0 - 15 = -12 high.
    const PartsAllControls c = LayOutPartsAll(4, 3, 0);
    EXPECT_EQ(c.Buttons[4], (ControlRect{1, 5, -1, 0}));
    EXPECT_EQ(c.List, (ControlRect{5, 10, -6, -12}));
}

// --- lines and picks ------------------------------------------------------------------------

TEST(SeqOfPartsAllLine, OnlyTheFirstThreeCharactersCount) {
    EXPECT_EQ(SeqOfPartsAllLine("007 * PL-"), 7);
    EXPECT_EQ(SeqOfPartsAllLine("1000 * PL-"), 100);
    EXPECT_EQ(SeqOfPartsAllLine("12"), 12);
    EXPECT_EQ(SeqOfPartsAllLine(""), 0);
    EXPECT_EQ(SeqOfPartsAllLine("abc"), 0);
}

TEST(LineOfPicked, FirstLineWithThePickedPartsSeq) {
    PartsInfo part;
    part.Seq = 1;
    HaichiInfo picked;
    picked.Part = &part;
    const std::vector<std::string> lines = {"003   PL ", "001   PL ", "001 * PL "};
    EXPECT_EQ(LineOfPicked(lines, &picked), std::optional<size_t>(1));
    part.Seq = 5;
    EXPECT_FALSE(LineOfPicked(lines, &picked).has_value());
    EXPECT_FALSE(LineOfPicked(lines, nullptr).has_value());
    picked.Part = nullptr;
    EXPECT_FALSE(LineOfPicked(lines, &picked).has_value());
}

TEST(LineOfSeq, FirstLineWhoseThreeDigitsMatch) {
    const std::vector<std::string> lines = {"1000  PL ", "010 * PL ", "100   BX1", "100 * PL "};
    EXPECT_EQ(LineOfSeq(lines, 100), std::optional<size_t>(0));  // "1000" reads as 100
    EXPECT_EQ(LineOfSeq(lines, 10), std::optional<size_t>(1));
    EXPECT_FALSE(LineOfSeq(lines, 1000).has_value());
    EXPECT_FALSE(LineOfSeq({}, 1).has_value());
}

// What a pick drew: each mode with the drawing's Picked and LastPicked at that moment.
struct Drawn {
    DrawMode Mode;
    StackId Picked;
    StackId LastPicked;
    bool operator==(const Drawn&) const = default;
};

class Picks : public ::testing::Test {
  protected:
    void SetUp() override {
        job.AddPallet("BLK", 1003.7, 840, 900);
        job.AddKoutei(1, "CUT", "BLK");
        job.AddKoutei(2, "BEND", "BLK");
        const int32_t block = job.AddBlock(1, 1, 0, 0, 1003.7, 840);
        bracket = &job.AddPart({.DisplayName = "BRACKET", .SizeX = 240.3, .SizeY = 150.7});
        rail = &job.AddPart(
            {.DisplayName = "RAIL", .SizeX = 200, .SizeY = 150, .SensitiveSides = "0010"});
        railStack = &AddStack(job.app, *rail, {.Block = block, .Pieces = 4, .X = 420.1, .Y = 90.3});
        first = &AddStack(job.app, *bracket, {.Block = block, .Pieces = 7, .X = 350.2, .Y = 30.5});
        far = &AddStack(job.app, *bracket, {.Block = block, .Pieces = 2, .X = 900.6, .Y = 600.4});
    }
    DrawPartsFn Recorder() {
        return [this](DrawMode mode) {
            drawn.push_back({mode, drawing.Selected().Picked(), drawing.Selected().LastPicked()});
        };
    }

    test::ViewJob job;
    PlacedDrawing drawing{job};
    std::vector<Drawn> drawn;
    PartsInfo* bracket = nullptr;
    PartsInfo* rail = nullptr;
    HaichiInfo* railStack = nullptr;
    HaichiInfo* first = nullptr;
    HaichiInfo* far = nullptr;
};

TEST_F(Picks, RemovesTheOldHighlightThenShowsThePartsFirstStack) {
    drawing.Select().SetLastPicked(railStack->Id);
    drawing.Select().SetPicked(railStack->Id);
    EXPECT_TRUE(PickFirstStackOfSeq(job.app, drawing, 1, Recorder()));
    const std::vector<Drawn> expected = {{DrawMode::Unhighlight, railStack->Id, railStack->Id},
                                         {DrawMode::PartPieces, first->Id, railStack->Id}};
    EXPECT_EQ(drawn, expected);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().LastPicked(), first->Id);
}

TEST_F(Picks, WithoutLastPickedNothingIsDrawnBack) {
    EXPECT_TRUE(PickFirstStackOfSeq(job.app, drawing, 2, Recorder()));
    EXPECT_EQ(drawn, (std::vector<Drawn>{{DrawMode::PartPieces, railStack->Id, kNoStack}}));
    EXPECT_EQ(drawing.Selected().LastPicked(), railStack->Id);
}

TEST_F(Picks, UnknownSeqOnlyDrawsBackAndKeepsLastPicked) {
    drawing.Select().SetLastPicked(railStack->Id);
    EXPECT_FALSE(PickFirstStackOfSeq(job.app, drawing, 1000, Recorder()));
    EXPECT_EQ(drawn, (std::vector<Drawn>{{DrawMode::Unhighlight, kNoStack, railStack->Id}}));
    EXPECT_EQ(drawing.Selected().LastPicked(), railStack->Id);
    EXPECT_EQ(drawing.Selected().Picked(), kNoStack);
}

TEST_F(Picks, FirstPartOfThatSeqWithAStackInAnyProcess) {
    PartsInfo& unplaced = job.AddPart({.DisplayName = "UNPLACED", .SizeX = 10, .SizeY = 10});
    unplaced.Seq = 9;
    PartsInfo& other =
        job.AddPart({.KouteiNo = 2, .DisplayName = "OTHER", .SizeX = 10, .SizeY = 10});
    other.Seq = 9;
    HaichiInfo& stack = AddStack(job.app, other, {.Block = 0, .Pieces = 1, .X = 100, .Y = 100});
    EXPECT_TRUE(PickFirstStackOfSeq(job.app, drawing, 9, Recorder()));
    EXPECT_EQ(drawing.Selected().LastPicked(), stack.Id);
}

// The pallet of the drawing tests (tests/view): Scale 1.35, px = trunc((x + 40.148) / 1.35) +
// 99, py = trunc((873.6 - y) / 1.35) + 28. BRACKET at X 350.2, Y 30.5: {210, 540, 388, 652};
// at X 900.6, Y 600.4: {617, 118, 795, 230}; RAIL at X 420.1, Y 90.3: {291, 497, 439, 608}.
TEST_F(Picks, OnACanvasTheOldPartGoesBackAndEveryPieceOfTheNewOneLightsUp) {
    job.app.Settings.PalletCount = 2;
    DisplayList setUp;
    drawing.Refresh(setUp);
    drawing.Select().SetLastPicked(railStack->Id);
    DisplayList canvas;
    EXPECT_TRUE(PickFirstStackOfSeq(job.app, drawing, canvas, 1));
    std::vector<std::pair<IntRect, Rgb>> fills;
    for (const Primitive& p : canvas.Items()) {
        if (p.Kind == PrimitiveKind::Rectangle)
            fills.emplace_back(p.Rect, p.Fill);
    }
    const std::vector<std::pair<IntRect, Rgb>> expected = {
        {IntRect{291, 497, 439, 608}, colour::kMarkedNormal},  // RAIL back, its side marked
        {IntRect{210, 540, 388, 652}, colour::kSamePart},
        {IntRect{617, 118, 795, 230}, colour::kSamePart}};
    EXPECT_EQ(fills, expected);
}

TEST_F(Picks, MainListClickDuringABandSelectionIsRefused) {
    drawing.Select().SetBand(BandState::InForce);
    drawing.Select().SetLastPicked(railStack->Id);
    EXPECT_FALSE(PickFromAllPartsList(job.app, drawing, 1, Recorder()));
    EXPECT_TRUE(drawn.empty());
    EXPECT_EQ(drawing.Selected().LastPicked(), railStack->Id);
}

TEST_F(Picks, MainListClickPicksTheCaretLinesPart) {
    drawing.Select().SetBand(
        BandState::Aside);  // a band kept after a drag is not a selection in force
    EXPECT_TRUE(PickFromAllPartsList(job.app, drawing, 1, Recorder()));
    EXPECT_EQ(drawn, (std::vector<Drawn>{{DrawMode::PartPieces, first->Id, kNoStack}}));
    EXPECT_EQ(drawing.Selected().LastPicked(), first->Id);
}

TEST(OtherSelectedRows, EverySelectedRowButTheCaret) {
    EXPECT_EQ(OtherSelectedRows({0, 3, 5}, 3), (std::vector<int>{0, 5}));
    EXPECT_EQ(OtherSelectedRows({3}, 3), std::vector<int>{});
    EXPECT_EQ(OtherSelectedRows({}, 0), std::vector<int>{});
}

TEST(OtherSelectedRows, LooksAtTheFirstThousandSelectedRowsOnly) {
    std::vector<int> selected(1200);
    for (int i = 0; i < 1200; ++i)
        selected[static_cast<size_t>(i)] = i;
    const std::vector<int> others = OtherSelectedRows(selected, 0);
    ASSERT_EQ(others.size(), 999u);  // rows 1..999
    EXPECT_EQ(others.back(), 999);
}

}  // namespace
}  // namespace kesto
