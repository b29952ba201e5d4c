// The recording canvas: what it keeps, its text form and replaying it on another canvas.
#include "view/DisplayList.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kesto {
namespace {

DisplayList Sample() {
    DisplayList list;
    list.FillRectangle({-3, 4, 250, 1017}, Rgb{69, 79, 122}, Rgb{255, 255, 255});
    list.DrawArcPrim({10, 20, 40, 50}, {25, 50}, {-25, 7}, Rgb{1, 2, 3}, Rgb{204, 102, 51});
    list.DrawLinePrim({128, 641}, {872, 641}, Rgb{255, 0, 0}, PenStyle::Solid, 2);
    list.DrawLinePrim({511, 697}, {511, 30}, Rgb{255, 255, 255}, PenStyle::Dotted, 1);
    list.DrawLabel(LabelMode::Centred, " BRACKET, 7 \"x\" ", 2, {0, 0}, {210, 579, 388, 652},
                   Rgb{0, 0, 0});
    list.DrawLabel(LabelMode::AtPoint, "1234.5679", 4, {261, 400}, {}, Rgb{254, 48, 115});
    list.DrawLabel(LabelMode::AtPoint, "", 1, {-1, -2}, {}, Rgb{9, 8, 7});
    list.DrawLabel(LabelMode::AtPoint, "\xE6\x9D\xBF \x83\x5C", 3, {5, 6}, {}, Rgb{9, 8, 7});
    return list;
}

std::optional<DisplayList> RoundTrip(const DisplayList& list) {
    std::stringstream text;
    list.Write(text);
    return DisplayList::Read(text);
}

TEST(DisplayList, RecordsEveryPrimitiveInOrder) {
    const DisplayList list = Sample();
    const auto& items = list.Items();
    ASSERT_EQ(8u, items.size());
    EXPECT_EQ(PrimitiveKind::Rectangle, items[0].Kind);
    EXPECT_EQ((IntRect{-3, 4, 250, 1017}), items[0].Rect);
    EXPECT_EQ((Rgb{69, 79, 122}), items[0].Fill);
    EXPECT_EQ((Rgb{255, 255, 255}), items[0].Pen);
    EXPECT_EQ(PrimitiveKind::Arc, items[1].Kind);
    EXPECT_EQ((IntRect{10, 20, 40, 50}), items[1].Rect);
    EXPECT_EQ((IntPoint{25, 50}), items[1].A);
    EXPECT_EQ((IntPoint{-25, 7}), items[1].B);
    EXPECT_EQ((Rgb{1, 2, 3}), items[1].Fill);
    EXPECT_EQ((Rgb{204, 102, 51}), items[1].Pen);
    EXPECT_EQ(PrimitiveKind::Line, items[2].Kind);
    EXPECT_EQ((IntPoint{128, 641}), items[2].A);
    EXPECT_EQ((IntPoint{872, 641}), items[2].B);
    EXPECT_EQ((Rgb{255, 0, 0}), items[2].Pen);
    EXPECT_EQ(PenStyle::Solid, items[2].Style);
    EXPECT_EQ(2, items[2].Width);
    EXPECT_EQ(PenStyle::Dotted, items[3].Style);
    EXPECT_EQ(PrimitiveKind::Label, items[4].Kind);
    EXPECT_EQ(LabelMode::Centred, items[4].Mode);
    EXPECT_EQ(" BRACKET, 7 \"x\" ", items[4].Text);
    EXPECT_EQ(2, items[4].FontSlot);
    EXPECT_EQ((IntRect{210, 579, 388, 652}), items[4].Rect);
    EXPECT_EQ(LabelMode::AtPoint, items[5].Mode);
    EXPECT_EQ((IntPoint{261, 400}), items[5].A);
    EXPECT_EQ((Rgb{254, 48, 115}), items[5].Pen);
}

TEST(DisplayList, WriteAndReadGiveTheSamePrimitives) {
    const DisplayList list = Sample();
    const std::optional<DisplayList> back = RoundTrip(list);
    ASSERT_TRUE(back.has_value());
    ASSERT_EQ(list.Items().size(), back->Items().size());
    for (size_t i = 0; i < list.Items().size(); ++i)
        EXPECT_EQ(list.Items()[i], back->Items()[i]) << "primitive " << i;
}

TEST(DisplayList, AnEmptyListRoundTrips) {
    const std::optional<DisplayList> back = RoundTrip(DisplayList{});
    ASSERT_TRUE(back.has_value());
    EXPECT_TRUE(back->Items().empty());
}

TEST(DisplayList, LineBreaksInTextsAreWrittenAsBlanks) {
    DisplayList list;
    list.DrawLabel(LabelMode::AtPoint, "two\nlines\rhere", 1, {1, 2}, {}, Rgb{});
    const std::optional<DisplayList> back = RoundTrip(list);
    ASSERT_TRUE(back.has_value());
    ASSERT_EQ(1u, back->Items().size());
    EXPECT_EQ("two lines here", back->Items()[0].Text);
}

TEST(DisplayList, ReadingStopsAtTheEndLine) {
    std::stringstream text;
    Sample().Write(text);
    text << "this is after the end\n";
    const std::optional<DisplayList> back = DisplayList::Read(text);
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(8u, back->Items().size());
}

TEST(DisplayList, LabelsInEveryModeAndFontSlotRoundTrip) {
    DisplayList list;
    list.DrawLabel(LabelMode::Left, "left", kCanvasFontSlots - 1, {}, {10, 20, 110, 40}, Rgb{});
    list.DrawLabel(LabelMode::Right, "right", 5, {}, {10, 20, 110, 40}, Rgb{1, 2, 3});
    const std::optional<DisplayList> back = RoundTrip(list);
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(list.Items(), back->Items());
}

TEST(DisplayList, AnUnknownModeOrFontSlotIsRefused) {
    std::stringstream text;
    DisplayList list;
    list.DrawLabel(LabelMode::Right, "x", 1, {}, {}, Rgb{});
    list.Write(text);
    const std::string good = text.str();
    // The mode and the font slot are the last two numbers before the text.
    const size_t slot = good.rfind(" 1 x");
    ASSERT_NE(std::string::npos, slot);
    std::string badMode = good;
    badMode[slot - 1] = '4';
    std::stringstream mode(badMode);
    EXPECT_FALSE(DisplayList::Read(mode).has_value());
    std::string badSlot = good;
    badSlot.replace(slot, 2, " " + std::to_string(kCanvasFontSlots));
    std::stringstream font(badSlot);
    EXPECT_FALSE(DisplayList::Read(font).has_value());
}

TEST(DisplayList, MalformedInputIsRefused) {
    std::stringstream empty("");
    EXPECT_FALSE(DisplayList::Read(empty).has_value());
    std::stringstream garbage("this is not a display list\nend\n");
    EXPECT_FALSE(DisplayList::Read(garbage).has_value());

    // Cut before its end line.
    std::stringstream whole;
    Sample().Write(whole);
    const std::string text = whole.str();
    const size_t endLine = text.rfind("end");
    ASSERT_NE(std::string::npos, endLine);
    std::stringstream cut(text.substr(0, endLine));
    EXPECT_FALSE(DisplayList::Read(cut).has_value());

    // A primitive line cut in half.
    const size_t firstBreak = text.find('\n');
    ASSERT_NE(std::string::npos, firstBreak);
    std::stringstream half(text.substr(0, firstBreak / 2) + "\n" + text.substr(firstBreak + 1));
    EXPECT_FALSE(DisplayList::Read(half).has_value());
}

// The area 100 x 50: a pixel is inside from 0 to 99 across and 0 to 49 down.
constexpr IntRect kArea{0, 0, 100, 50};
constexpr Rgb kInk{0, 0, 0};

bool CutAlike(void (*draw)(DisplayList&)) {
    DisplayList list;
    draw(list);
    return list.StrokesCutAlike(kArea);
}

TEST(DisplayList, NothingStrokedIsCutAlikeAnywhere) {
    EXPECT_TRUE(DisplayList().StrokesCutAlike(kArea));
    // Rectangles and texts are cut pixel by pixel, wherever they reach.
    EXPECT_TRUE(CutAlike([](DisplayList& l) {
        l.FillRectangle({-10, -10, 200, 200}, kInk, kInk);
        l.DrawLabel(LabelMode::AtPoint, "far out", 1, {500, 500}, {}, kInk);
    }));
}

TEST(DisplayList, ADashedOrSlantingLineIsCutAlikeOnlyInsideTheAreaWithItsWidth) {
    // A pen one pixel wide keeps one pixel from each edge: 10 - 1 >= 0, 90 + 1 < 100, 41 < 50.
    EXPECT_TRUE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({10, 10}, {90, 40}, kInk, PenStyle::Dotted, 0);
    }));
    EXPECT_FALSE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({10, 10}, {99, 40}, kInk, PenStyle::Solid, 1);  // 99 + 1 reaches 100
    }));
    // Four pixels wide: 40 + 4 = 44 < 50 keeps inside, 46 + 4 = 50 does not.
    EXPECT_TRUE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({10, 10}, {90, 40}, kInk, PenStyle::Solid, 4);
    }));
    EXPECT_FALSE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({10, 10}, {90, 46}, kInk, PenStyle::Solid, 4);
    }));
    EXPECT_FALSE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({50, -20}, {50, 30}, kInk, PenStyle::Dotted, 1);
    }));
}

TEST(DisplayList, ASolidLineAlongAnAxisIsCutAlikeAcrossTheEdges) {
    EXPECT_TRUE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({50, -20}, {50, 75}, kInk, PenStyle::Solid, 4);
        l.DrawLinePrim({-5, 25}, {105, 25}, kInk, PenStyle::Solid, 1);
    }));
}

TEST(DisplayList, AnArcIsCutAlikeOnlyWhenItsBoxIsInside) {
    EXPECT_TRUE(CutAlike([](DisplayList& l) {
        l.DrawArcPrim({10, 10, 60, 40}, {60, 25}, {10, 25}, kInk, kInk);
    }));
    EXPECT_FALSE(CutAlike([](DisplayList& l) {
        l.DrawArcPrim({-5, 10, 60, 40}, {60, 25}, {10, 25}, kInk, kInk);
    }));
    EXPECT_FALSE(CutAlike([](DisplayList& l) {
        l.DrawLinePrim({10, 10}, {20, 20}, kInk, PenStyle::Solid, 1);
        l.DrawArcPrim({10, 10, 60, 49}, {60, 25}, {10, 25}, kInk, kInk);  // 49 + 1 reaches 50
    }));
}

TEST(PictureFile, ALineIsReadWithoutItsLineEnd) {
    std::istringstream in("first\r\nsecond\nlast");
    std::string line;
    ASSERT_TRUE(ReadPictureLine(in, line));
    EXPECT_EQ(line, "first");
    ASSERT_TRUE(ReadPictureLine(in, line));
    EXPECT_EQ(line, "second");
    ASSERT_TRUE(ReadPictureLine(in, line));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(ReadPictureLine(in, line));
}

TEST(PictureFile, ALineTooLongToBeOursIsRefused) {
    std::istringstream in(std::string(65536, 'x') + "\n");
    std::string line;
    ASSERT_TRUE(ReadPictureLine(in, line));
    std::istringstream longer(std::string(65537, 'x') + "\n");
    EXPECT_FALSE(ReadPictureLine(longer, line));
}

TEST(PictureFile, LineBreaksInATextBecomeBlanks) {
    EXPECT_EQ(OnePictureLine("a\nb\rc"), "a b c");
}

TEST(DisplayList, ReplayPaintsThePrimitivesInOrder) {
    const DisplayList list = Sample();
    DisplayList copy;
    list.Replay(copy);
    EXPECT_EQ(list.Items(), copy.Items());
}

TEST(DisplayList, ClearForgetsEverything) {
    DisplayList list = Sample();
    list.Clear();
    EXPECT_TRUE(list.Items().empty());
}

TEST(DisplayList, AClipAndItsLiftingRoundTripAndReplay) {
    DisplayList list;
    list.SetClip(IntRect{0, 36, 1080, 900});
    list.FillRectangle({-500, 0, 3000, 2000}, Rgb{1, 2, 3}, Rgb{4, 5, 6});
    list.SetClip(std::nullopt);
    ASSERT_EQ(list.Items().size(), 3U);
    EXPECT_EQ(list.Items()[0].Kind, PrimitiveKind::Clip);
    EXPECT_EQ(list.Items()[0].Width, 1);
    EXPECT_EQ(list.Items()[2].Width, 0);
    const std::optional<DisplayList> back = RoundTrip(list);
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(back->Items(), list.Items());
    DisplayList replayed;
    list.Replay(replayed);
    EXPECT_EQ(replayed.Items(), list.Items());
}

}  // namespace
}  // namespace kesto
