#include "view/MaiPicture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/RecordingCanvasQueries.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "view/DisplayList.h"

namespace kesto {
namespace {

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kCyan{72, 255, 255};
constexpr Rgb kBackground{136, 146, 172};
constexpr Rgb kCurrent{150, 180, 207};

// Fonts 1 (16 px), 2 (12 px) and 4 (20 px) defined, 3 not.
constexpr const char* kMessages =
    "[MaihenDlg]\n"
    "PartsName=1,Name\n"
    "HightST=2,Limit\n"
    "Label02=1,Thick\n"
    "Label03=1,Height\n"
    "Label04=4,Compare\n"
    "Label05=2,Dir\n"
    "BT1=1,Second,Third\n";

// Every character 7 pixels wide.
int32_t FixedWidth(const std::string& text, int32_t) {
    return static_cast<int32_t>(text.size()) * 7;
}

struct PictureJob {
    explicit PictureJob(const std::string& messages = kMessages) {
        App.Settings.FontHeight = {0, 16, 12, 0, 20};
        test::WriteFile(Folder / "Kesto.ini", messages);
        EXPECT_EQ(Messages.Load(Folder / "Kesto.ini", Op), 0);
        Part.PieceHeight = 4;
        Part.Thickness = 1.5;
        Part.DirText = "UD";
        Picked.Part = &Part;
        Picked.Pieces = 30;
    }
    // Picture 420 x 400 under the limit 600 with Count 50 and CompareCount 25.
    DisplayList Draw(IntRect picture = IntRect{5, 7, 425, 407}, double limit = 600) {
        const MaiScene scene{&Picked, limit, 50, 25, MaiNameFontHeight(App, Messages)};
        DisplayList list;
        MaiPicture(App, Messages, FixedWidth).Draw(list, picture, scene);
        return list;
    }

    test::TempFolder Folder;
    test::RecordingOperator Op;
    CKestoApp App;
    MessageTable Messages;
    PartsInfo Part;
    HaichiInfo Picked;
};

Primitive LinePrim(int32_t x0, int32_t y0, int32_t x1, int32_t y1, Rgb colour) {
    Primitive p;
    p.Kind = PrimitiveKind::Line;
    p.A = IntPoint{x0, y0};
    p.B = IntPoint{x1, y1};
    p.Pen = colour;
    p.Width = 2;
    return p;
}

Primitive TextPrim(const std::string& text, int32_t font, int32_t x, int32_t y, Rgb colour) {
    Primitive p;
    p.Kind = PrimitiveKind::Label;
    p.Mode = LabelMode::AtPoint;
    p.Text = text;
    p.FontSlot = font;
    p.A = IntPoint{x, y};
    p.Pen = colour;
    return p;
}

Primitive FillPrim(const IntRect& rect, Rgb colour) {
    Primitive p;
    p.Kind = PrimitiveKind::Rectangle;
    p.Rect = rect;
    p.Fill = colour;
    p.Pen = colour;
    return p;
}

void ExpectPrimitives(const DisplayList& list, const std::vector<Primitive>& expected) {
    ASSERT_EQ(list.Items().size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(list.Items()[i], expected[i]) << "primitive " << i;
}

TEST(LayOutMaiDlg, WideClientPlacesEveryControl) {
    // u = (620 - 20) / 10 = 60, bh = ((410 - 50) / 15) x 2 = 48, picture right 7u + 5 = 425,
    // bw = (620 - 425 - 15) / 2 = 90; the button column ends 5 left of OK's left 525.
    const MaiLayout l = LayOutMaiDlg(IntRect{0, 0, 620, 410}, 16);
    EXPECT_EQ(l.NameEdit, (IntRect{5, 5, 425, 26}));  // 5 + 16 + 5
    EXPECT_EQ(l.Picture, (IntRect{5, 7, 425, 405}));
    EXPECT_EQ(l.Ok, (IntRect{525, 5, 615, 53}));
    EXPECT_EQ(l.Cancel, (IntRect{525, 58, 615, 106}));
    EXPECT_EQ(l.Buttons[0], (IntRect{430, 5, 520, 53}));
    EXPECT_EQ(l.Buttons[1], (IntRect{430, 58, 520, 106}));
    EXPECT_EQ(l.Buttons[2], (IntRect{430, 111, 520, 159}));
    EXPECT_EQ(l.Buttons[3], (IntRect{430, 164, 520, 212}));
    EXPECT_EQ(l.Buttons[4], (IntRect{430, 217, 520, 265}));
    EXPECT_EQ(l.Group, (IntRect{430, 270, 520, 318}));
    EXPECT_EQ(l.CountEdit, (IntRect{434, 290, 516, 314}));
}

TEST(LayOutMaiDlg, SmallClientTruncatesItsUnits) {
    // u = 417 / 10 = 41, bh = (250 / 15 = 16) x 2 = 32, picture right 292,
    // bw = (437 - 292 - 15) / 2 = 65; OK from 432 - 65 = 367, the column from 362 - 65 = 297.
    const MaiLayout l = LayOutMaiDlg(IntRect{0, 0, 437, 300}, 0);
    EXPECT_EQ(l.NameEdit, (IntRect{5, 5, 292, 10}));
    EXPECT_EQ(l.Picture, (IntRect{5, 7, 292, 295}));
    EXPECT_EQ(l.Ok, (IntRect{367, 5, 432, 37}));
    EXPECT_EQ(l.Cancel, (IntRect{367, 42, 432, 74}));
    EXPECT_EQ(l.Buttons[0], (IntRect{297, 5, 362, 37}));
    EXPECT_EQ(l.Buttons[4], (IntRect{297, 153, 362, 185}));
    EXPECT_EQ(l.Group, (IntRect{297, 190, 362, 222}));
    EXPECT_EQ(l.CountEdit, (IntRect{301, 210, 358, 218}));
}

TEST(LayOutMaiDlg, EmptyClientGivesRectanglesWithoutFailing) {
    const MaiLayout l = LayOutMaiDlg(IntRect{0, 0, 0, 0}, 0);
    // u = -20 / 10 = -2, bh = (-50 / 15) x 2 = -6: degenerate but defined.
    EXPECT_EQ(l.Picture, (IntRect{5, 7, -9, -5}));
    EXPECT_EQ(l.Ok.Bottom, 5 - 6);
}

TEST(MaiCaptions, ShareButtonsTakeTheThirdField) {
    PictureJob job;
    EXPECT_EQ(ReadMaiText(job.Messages, "BT1", kMaiThirdField).Text, "Third");
    EXPECT_EQ(ReadMaiText(job.Messages, "BT1", kMaiSecondField).Text, "Second");
    EXPECT_EQ(ReadMaiText(job.Messages, "BT1", kMaiSecondField).Font, 1);
    for (const MaiCaption& c : kMaiCaptions) {
        const bool share = c.Control >= kMaiEvenButton && c.Control <= kMaiQuarterButton;
        EXPECT_EQ(c.TextField, share ? kMaiThirdField : kMaiSecondField) << c.Key;
    }
    EXPECT_EQ(MaiNameFontHeight(job.App, job.Messages), 16);
}

TEST(MaiPicture, DrawsFrameLimitStacksAndLabels) {
    PictureJob job;
    // uy = 400 / 20 = 20, ux = 420 / 10 = 42; scale 600 / (15 x 20) = 2; y0 = 407 - 40 = 367;
    // x1 = 420 / 2 + 42 = 252, xa = 294, xb = 336; line end 425 - 3 x 20 = 365.
    // Limit: 600 / 2 = 300 px, y 67, text at 67 - 16 - 8 = 43.
    // New stack: 50 x 4 = 200 -> 100 px, top 267; texts at 267 - 8 = 259 and 259 + 18 = 277.
    // Current: 30 x 4 = 120 -> 60 px, top 307; "120.000" has 7 characters: x = 294 - 19 -
    // (7 / 2) x 16 = 227, y = 307 - 8 = 299, then 317.
    // Labels: m = 200, f = 16 -> y 168, 200, 232, 264; values 5 right of 7 px a character.
    const DisplayList list = job.Draw();
    ExpectPrimitives(list, {FillPrim(IntRect{5, 7, 425, 407}, kBackground),
                            LinePrim(5, 7, 425, 7, kBlack),
                            LinePrim(5, 7, 5, 407, kBlack),
                            LinePrim(5, 407, 425, 407, kWhite),
                            LinePrim(425, 7, 425, 407, kWhite),
                            LinePrim(252, 367, 365, 367, kWhite),
                            LinePrim(252, 67, 365, 67, kRed),
                            TextPrim("600.000", 2, 252, 43, kRed),
                            LinePrim(294, 267, 336, 267, kWhite),
                            LinePrim(336, 267, 336, 367, kWhite),
                            LinePrim(336, 367, 294, 367, kWhite),
                            LinePrim(294, 367, 294, 267, kWhite),
                            LinePrim(341, 267, 348, 267, kWhite),
                            TextPrim("200.000", 1, 350, 259, kWhite),
                            TextPrim("(50)", 1, 350, 277, kWhite),
                            FillPrim(IntRect{296, 307, 334, 365}, kCurrent),
                            LinePrim(289, 307, 282, 307, kCyan),
                            TextPrim("120.000", 1, 227, 299, kCyan),
                            TextPrim("(30)", 1, 227, 317, kCyan),
                            TextPrim("Thick", 1, 10, 168, kWhite),
                            TextPrim("    1.500", 1, 10 + 35 + 5, 168, kCyan),
                            TextPrim("Height", 1, 10, 200, kWhite),
                            TextPrim("    4.000", 1, 10 + 42 + 5, 200, kCyan),
                            TextPrim("Compare", 4, 10, 232, kWhite),
                            TextPrim("       25", 4, 10 + 49 + 5, 232, kCyan),
                            TextPrim("Dir", 4, 10, 264, kWhite),
                            TextPrim("       UD", 4, 10 + 21 + 5, 264, kCyan),
                            LinePrim(425, 7, 425, 407, kWhite)});
}

// The texts drawn, each as the box it covers: 7 pixels a character, its font's height.
std::vector<IntRect> TextBoxes(const DisplayList& list, const CKestoApp& app) {
    std::vector<IntRect> boxes;
    for (const Primitive& item : list.Items()) {
        if (item.Kind == PrimitiveKind::Label) {
            const int32_t width = static_cast<int32_t>(item.Text.size()) * 7;
            const int32_t height = FontPixelHeight(app, item.FontSlot);
            boxes.push_back(IntRect{item.A.X, item.A.Y, item.A.X + width, item.A.Y + height});
        }
    }
    return boxes;
}

bool Overlap(const IntRect& a, const IntRect& b) {
    return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

TEST(MaiPicture, NoTwoTextsOverlapWhereverTheCurrentStackEnds) {
    // The current stack from the floor up to the limit (600) in steps of 10: where it ends near
    // the limit, its values move left of the limit's value (x1 = 252, here in the 20-pixel
    // font) instead of covering it.
    std::string messages = kMessages;
    messages.replace(messages.find("HightST=2"), 9, "HightST=4");
    PictureJob job(messages);
    job.Part.PieceHeight = 10;
    for (int32_t value = 0; value <= 60; ++value) {
        job.Picked.Pieces = value;
        const std::vector<IntRect> boxes = TextBoxes(job.Draw(), job.App);
        for (size_t i = 0; i < boxes.size(); ++i) {
            for (size_t j = i + 1; j < boxes.size(); ++j) {
                const bool sameColumn = boxes[i].Left == boxes[j].Left;  // one value's lines
                EXPECT_TRUE(sameColumn || !Overlap(boxes[i], boxes[j]))
                    << "value " << value << ": texts " << i << " and " << j << " overlap";
            }
        }
    }
}

TEST(MaiPicture, Label05IsDrawnInTheFontOfLabel04) {
    PictureJob job;
    const std::vector<Primitive> labels = test::Labels(job.Draw());
    ASSERT_EQ(labels.size(), 13u);  // limit, 2 + 2 stack texts, 4 labels with their values
    // Label05 names font 2 itself, but is written in Label04's font 4.
    EXPECT_EQ(labels[11].Text, "Dir");
    EXPECT_EQ(labels[11].FontSlot, 4);
    EXPECT_EQ(labels[12].FontSlot, 4);
}

TEST(MaiPicture, Label05IsLeftOutWhenLabel04HasNoFont) {
    // Label04 in the undefined font 3: neither it nor Label05 (font 1 of its own) is drawn.
    PictureJob job(
        "[MaihenDlg]\nPartsName=1,Name\nHightST=2,Limit\nLabel02=1,Thick\nLabel03=1,Height\n"
        "Label04=3,Compare\nLabel05=1,Dir\n");
    const std::vector<Primitive> labels = test::Labels(job.Draw());
    ASSERT_EQ(labels.size(), 9u);  // limit, 2 + 2 stack texts, 2 labels with their values
    for (const Primitive& p : labels) {
        EXPECT_NE(p.Text, "Dir");
        EXPECT_NE(p.Text, "Compare");
    }
}

TEST(MaiPicture, UndefinedFontsDrawNoTexts) {
    PictureJob job("[MaihenDlg]\nPartsName=3,Name\nHightST=0,Limit\n");
    const DisplayList list = job.Draw();
    EXPECT_TRUE(test::Labels(list).empty());
    // 4 frame edges, floor, limit, 4 outline edges and a tick, the current tick, the closing
    // line.
    EXPECT_EQ(test::Lines(list).size(), 13u);
}

TEST(MaiPicture, EmptyCurrentStackFillsNothing) {
    PictureJob job;
    job.Picked.Pieces = 0;
    const DisplayList list = job.Draw();
    EXPECT_TRUE(test::RectsFilled(list, kCurrent).empty());
    // Its tick lies on the floor y0 = 367.
    const std::vector<Primitive> lines = test::Lines(list);
    EXPECT_EQ(lines[11], LinePrim(289, 367, 282, 367, kCyan));
}

TEST(MaiPicture, NoLimitOrNoRoomPutsEveryHeightOnTheFloor) {
    // H 0: scale 0; a picture 10 high: uy 0. Every height is 0 pixels, no division by zero.
    PictureJob job;
    EXPECT_EQ(MaiPicture::HeightScale(IntRect{5, 7, 425, 17}, 600), 0.0);
    EXPECT_EQ(MaiPicture::HeightScale(IntRect{5, 7, 425, 407}, 600), 2.0);
    for (const auto& [rect, limit] :
         {std::pair{IntRect{5, 7, 425, 407}, 0.0}, std::pair{IntRect{5, 7, 425, 17}, 600.0}}) {
        const std::vector<Primitive> lines = test::Lines(job.Draw(rect, limit));
        const int32_t y0 = rect.Bottom - 2 * ((rect.Bottom - rect.Top) / 20);
        EXPECT_EQ(lines[4].A.Y, y0);  // floor
        EXPECT_EQ(lines[5].A.Y, y0);  // limit
        EXPECT_EQ(lines[6].A.Y, y0);  // new stack's top
    }
}

TEST(MaiPicture, RecordWithoutPartDrawsEmptyStacks) {
    PictureJob job;
    job.Picked.Part = nullptr;
    const std::vector<Primitive> labels = test::Labels(job.Draw());
    ASSERT_EQ(labels.size(), 13u);
    EXPECT_EQ(labels[1].Text, "0.000");
    EXPECT_EQ(labels[12].Text, "         ");  // " %8s" of an empty direction
}

}  // namespace
}  // namespace kesto
