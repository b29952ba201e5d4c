// The drawing area's image, checked at pixels worked out by hand for the test installation:
// a 1000 x 800 pallet with 3 x 3 cells of 300 x 250 (gaps 10), drawn in a 1000 x 500 area.
//
// FLAT: caption strip 20; world x -40..1040, y -32..832; scale max(1080/1000, 864/480) = 1.8;
// the frame 555 x 445 centred: (222, 37)-(777, 482); origin offset (200, 20). The stack of
// part 1 (200 x 150, right-front corner at x 380, y 0) is at (322, 398)-(433, 482).
#include "ui/draw/CKs_DrawArea.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QStyleHints>
#include <QtTest/QTest>
#include <initializer_list>

#include "common/EditingWindow.h"
#include "common/WheelEvents.h"
#include "common/WindowJob.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::PixelAt;

// A pixel of the drawing area's image and the colour it must have.
struct Pixel {
    int X = 0;
    int Y = 0;
    Rgb Colour{};
};

// The job of the test installation, placed, with its drawing area alone at 1000 x 500.
struct AreaJob {
    explicit AreaJob(const std::string& pallet = test::kDefaultPallet,
                     const std::string& ini = test::KestoIniWithDrawing()) {
        job.Install.Write("pallet.txt", pallet);
        job.Install.Write("msg/Kesto.ini", ini);
        opened = job.Open();
        Area().PlaceArea({0, 0, 1000, 500});
    }
    CKs_DrawArea& Area() { return *job.Dialog->DrawArea(); }
    Rgb At(int x, int y) { return PixelAt(Area().Image(), x, y); }
    QLabel* Caption(const char* name) { return Area().findChild<QLabel*>(name); }
    HaichiInfo& FirstStack() { return *job.App().HaichiList.begin(); }
    // Each pixel of the image has its colour.
    void ExpectPixels(std::initializer_list<Pixel> pixels) {
        for (const Pixel& p : pixels) {
            SCOPED_TRACE(testing::Message() << "pixel " << p.X << "," << p.Y);
            EXPECT_EQ(At(p.X, p.Y), p.Colour);
        }
    }

    test::WindowJob job;
    bool opened = false;
};

int CountOnRow(const QImage& image, int y, int x0, int x1, Rgb colour) {
    int n = 0;
    for (int x = x0; x < x1; ++x)
        n += PixelAt(image, x, y) == colour ? 1 : 0;
    return n;
}

int CountOnColumn(const QImage& image, int x, int y0, int y1, Rgb colour) {
    int n = 0;
    for (int y = y0; y < y1; ++y)
        n += PixelAt(image, x, y) == colour ? 1 : 0;
    return n;
}

// Pixels much darker than the colours around them: label text.
int DarkPixels(const QImage& image, int x0, int y0, int x1, int y1) {
    int n = 0;
    for (int y = y0; y < y1; ++y) {
        for (int x = x0; x < x1; ++x) {
            const Rgb c = PixelAt(image, x, y);
            n += c.R + c.G + c.B < 150 ? 1 : 0;
        }
    }
    return n;
}

TEST(CKs_DrawArea, PlaceAreaTakesThePlacementAndStoresTheClientAndScreenRectangles) {
    test::EnsureQApplication();
    CKestoApp app;
    ViewState shown;
    MessageTable messages;
    FontTable fonts;
    QWidget parent;
    parent.move(100, 50);
    CKs_DrawArea area(app, shown, messages, fonts, &parent);
    area.PlaceArea({324, 231, 1598, 898});
    EXPECT_EQ(area.geometry(), QRect(324, 231, 1274, 667));
    EXPECT_EQ(area.Drawing().Area(), (IntRect{0, 0, 1274, 667}));
    const QPoint screen = parent.mapToGlobal(QPoint(324, 231));
    EXPECT_EQ(area.ScreenRect(),
              (IntRect{screen.x(), screen.y(), screen.x() + 1274, screen.y() + 667}));
    EXPECT_EQ(area.Image().size(), QSize(1274, 667));
    EXPECT_EQ(area.objectName(), "CKs_DrawArea");
}

// A drawing area of 600 x 400 over an empty job, shown.
struct LoneArea {
    LoneArea() {
        area.PlaceArea({0, 0, 600, 400});
        parent.show();
    }
    // What the operator sees: the picture with what is drawn over it.
    Rgb Seen(int x, int y) {
        return PixelAt(area.grab().toImage().convertToFormat(QImage::Format_RGB32), x, y);
    }
    QApplication& application = test::EnsureQApplication();
    CKestoApp app;
    ViewState shown;
    MessageTable messages;
    FontTable fonts;
    QWidget parent;
    CKs_DrawArea area{app, shown, messages, fonts, &parent};
};

TEST(CKs_DrawArea, AStatusTextIsShownAtTheBottomLeftWithoutFlashingAnyRectangle) {
    LoneArea lone;
    CKs_DrawArea& area = lone.area;
    area.ShowStatus("The corrections are not journaled");
    auto* status = area.findChild<QLabel*>("DropStatus");
    ASSERT_NE(status, nullptr);
    EXPECT_TRUE(status->isVisible());
    EXPECT_EQ(status->text(), "The corrections are not journaled");
    // Its margin from the area's bottom left corner.
    EXPECT_LT(status->x(), 20);
    EXPECT_LT(status->geometry().bottom(), 400);
    EXPECT_GT(status->geometry().bottom(), 380);
}

// The landing of a drag over the picture: its footprint outlined 2 pixels wide in the landing
// colour (column 300 and the one left of it), or a red cross over the drag outline when the
// release would be refused; both go with the drag image.
TEST(CKs_DrawArea, TheLandingIsOutlinedOrTheDragCrossedOut) {
    LoneArea lone;
    CKs_DrawArea& area = lone.area;
    const auto seen = [&](int x, int y) { return lone.Seen(x, y); };
    area.ShowDragImage({{100, 100, 200, 150}});
    area.ShowLanding(DropPreview{std::nullopt, {{300, 100, 400, 150}}});
    EXPECT_EQ(seen(300, 125), colour::kLanding);
    EXPECT_EQ(seen(299, 125), colour::kLanding);
    EXPECT_EQ(seen(350, 100), colour::kLanding);
    EXPECT_NE(seen(150, 125), kDragImageColour);
    area.ShowLanding(DropPreview{DropRefusal::NoRoom, {}});
    EXPECT_NE(seen(300, 125), colour::kLanding);
    // The centre of the outline lies on both of its diagonals.
    EXPECT_EQ(seen(150, 125), kDragImageColour);
    EXPECT_EQ(seen(100, 125), kDragImageColour);
    area.HideDragImage();
    EXPECT_FALSE(area.Landing().has_value());
    EXPECT_NE(seen(150, 125), kDragImageColour);
}

TEST(CKs_DrawArea, FlatShowsBackgroundFrameAndCaptionStripInTheWindowColour) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.Area().Refresh();
    const Rgb window = PixelAt(a.Area().Image(), 500, 5);
    const QColor palette = a.Area().palette().color(QPalette::Window);
    EXPECT_EQ(window,
              (Rgb{static_cast<uint8_t>(palette.red()), static_cast<uint8_t>(palette.green()),
                   static_cast<uint8_t>(palette.blue())}));
    a.ExpectPixels({
        {500, 19, window},
        {500, 20, colour::kAreaBackground},
        {100, 300, colour::kAreaBackground},
        {221, 300, colour::kAreaBackground},
        {222, 300, colour::kPalletFrame},
        {776, 300, colour::kPalletFrame},
        {777, 300, colour::kAreaBackground},
        {600, 36, colour::kAreaBackground},
        {600, 37, colour::kPalletFrame},
        {600, 481, colour::kPalletFrame},
        {600, 482, colour::kAreaBackground},
    });
}

TEST(CKs_DrawArea, FlatCaptionReadsPrefixAndPalletNumberOverTheWholeStrip) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.Area().Refresh();
    QLabel* first = a.Caption("1045");
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisibleTo(&a.Area()));
    EXPECT_EQ(first->text(), "P-01");
    EXPECT_EQ(first->geometry(), QRect(0, 0, 1000, 20));
    EXPECT_EQ(first->font().pixelSize(), 16);
    for (const char* name : {"1048", "1046", "1047"}) {
        ASSERT_NE(a.Caption(name), nullptr) << name;
        EXPECT_FALSE(a.Caption(name)->isVisibleTo(&a.Area())) << name;
    }
}

TEST(CKs_DrawArea, StackIsFilledWithAWhiteOutlineAndTwoLabelLines) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.Area().Refresh();
    a.ExpectPixels({
        {322, 440, colour::kPartPen},
        {432, 440, colour::kPartPen},
        {380, 398, colour::kPartPen},
        {380, 481, colour::kPartPen},
        {321, 440, colour::kPalletFrame},
        {433, 440, colour::kPalletFrame},
        {326, 402, colour::kPartNormal},
        {428, 478, colour::kPartNormal},
    });
    // Font 3 is 12 px high; the middle is 440: the name from 425, the count from 443.
    EXPECT_EQ(DarkPixels(a.Area().Image(), 323, 399, 432, 425), 0);
    EXPECT_GT(DarkPixels(a.Area().Image(), 323, 425, 432, 440), 10);
    EXPECT_GT(DarkPixels(a.Area().Image(), 323, 443, 432, 458), 3);
    EXPECT_EQ(DarkPixels(a.Area().Image(), 323, 460, 432, 481), 0);
}

TEST(CKs_DrawArea, BlockCellsFollowTheirCornerMaskWhenBlockDrawingIsOn) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetStoredBlockDraw(1);
    // The middle cell (x 390..690, y 260..510) is at (438, 198)-(605, 337).
    for (BlockInfo& block : a.job.App().Blocks.Entries()) {
        if (block.KouteiNo == 1 && block.PalletNo == 1 && block.MinX == 390 && block.MinY == 260)
            block.CornerMask = 0x02;
    }
    a.Area().Refresh();
    a.ExpectPixels({
        {520, 270, colour::kBlockMarked},
        {438, 270, colour::kBlockPlain},
        {604, 270, colour::kBlockPlain},
        {437, 270, colour::kPalletFrame},
        {605, 270, colour::kPalletFrame},
        // The left cell of that row, (266, 198)-(433, 337), has no corner bits; left of it the
        // pallet lies outside the blocks of the process, shaded.
        {350, 270, colour::kBlockPlain},
        {265, 270, colour::kOutsideZone},
    });
}

TEST(CKs_DrawArea, NoBlockCellsWhileBlockDrawingIsOff) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetStoredBlockDraw(0);
    a.Area().Refresh();
    a.ExpectPixels({
        {520, 270, colour::kPalletFrame},
        {350, 270, colour::kPalletFrame},
        {265, 270, colour::kOutsideZone},  // the zone is shaded with or without the cells
    });
}

TEST(CKs_DrawArea, GridMarksAreBlackThreePixelSquaresInTheCellCorners) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetGrid(true);
    a.Area().Refresh();
    // The back left cell (266, 54)-(433, 193).
    for (int y = 54; y < 57; ++y) {
        for (int x = 266; x < 269; ++x)
            EXPECT_EQ(a.At(x, y), colour::kGridMark) << x << "," << y;
    }
    a.ExpectPixels({
        {269, 55, colour::kPalletFrame},
        {267, 57, colour::kPalletFrame},
        {266, 190, colour::kGridMark},
        {432, 55, colour::kGridMark},
        {432, 192, colour::kGridMark},
    });
    a.job.Shown().SetGrid(false);
    a.Area().Refresh();
    EXPECT_EQ(a.At(267, 55), colour::kPalletFrame);
}

TEST(CKs_DrawArea, RackLinesAreDottedWhiteAndRunPastThePalletEdge) {
    AreaJob a(std::string(test::kDefaultPallet) + "R1X,500\nR1Y,400\n");
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetGrid(false);
    a.Area().Refresh();
    const QImage& image = a.Area().Image();
    // x 500 mm is column 500; y 400 mm is row 260; 30 mm past the edges: rows 21..498,
    // columns 205..794.
    EXPECT_GT(CountOnColumn(image, 500, 40, 380, colour::kRackLine), 50);
    EXPECT_GT(CountOnColumn(image, 500, 40, 380, colour::kPalletFrame), 50);
    EXPECT_GT(CountOnColumn(image, 500, 22, 36, colour::kRackLine), 0);
    EXPECT_EQ(CountOnColumn(image, 500, 0, 20, colour::kRackLine), 0);
    EXPECT_EQ(CountOnColumn(image, 499, 40, 250, colour::kRackLine), 0);
    EXPECT_GT(CountOnRow(image, 260, 230, 770, colour::kRackLine), 100);
    EXPECT_GT(CountOnRow(image, 260, 230, 770, colour::kPalletFrame), 100);
    EXPECT_GT(CountOnRow(image, 260, 206, 221, colour::kRackLine), 0);
    EXPECT_EQ(CountOnRow(image, 260, 0, 204, colour::kRackLine), 0);
    EXPECT_EQ(CountOnRow(image, 261, 230, 490, colour::kRackLine), 0);
}

// DANMEN: world y -64..1664, scale 3.6; frame 277 x 222 at (361, 29)-(638, 251); the band
// from row 475 to 490; the height limit at 251 + max(trunc(0.2 x 224), 12) = 295.
TEST(CKs_DrawArea, DanmenShowsTheSectionBandTheHeightLimitAndTheStackBar) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetMode(PalletView::Danmen);
    a.job.Shown().SetGrid(false);
    a.Area().Refresh();
    const QImage& image = a.Area().Image();
    a.ExpectPixels({
        {500, 29, colour::kPalletFrame},
        {500, 28, colour::kAreaBackground},
        {500, 250, colour::kPalletFrame},
        {500, 251, colour::kAreaBackground},
        {360, 100, colour::kAreaBackground},
        {361, 100, colour::kPalletFrame},
        {500, 475, colour::kPalletFrame},
        {500, 489, colour::kPalletFrame},
        {500, 490, colour::kAreaBackground},
        {500, 474, colour::kAreaBackground},
        {360, 480, colour::kAreaBackground},
    });
    EXPECT_GT(CountOnRow(image, 295, 361, 638, colour::kHeightLimit), 50);
    EXPECT_GT(CountOnRow(image, 295, 361, 638, colour::kAreaBackground), 50);
    EXPECT_EQ(CountOnRow(image, 296, 361, 638, colour::kHeightLimit), 0);
    EXPECT_EQ(CountOnRow(image, 295, 0, 360, colour::kHeightLimit), 0);
    // The limit's label "500.0000" stands on the line, from the frame's left edge.
    int labelPixels = 0;
    for (int y = 283; y < 295; ++y)
        labelPixels += CountOnRow(image, y, 361, 440, colour::kHeightLimit) > 0 ? 1 : 0;
    EXPECT_GT(labelPixels, 3);
    // The stack (x 180..380 mm: columns 411..466) stands 5 x 10 mm = 18 px on the band.
    a.ExpectPixels({
        {438, 466, colour::kLayer10},
        {411, 466, colour::kPartPen},
        {438, 440, colour::kAreaBackground},
    });
}

TEST(CKs_DrawArea, ThreeDStacksEveryLayerTwoPixelsUpAndLeft) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.job.Shown().Set3D(true);
    a.job.Shown().SetGrid(false);
    a.Area().Refresh();
    // Five pieces: the top layer is 8 px up and left, at (314, 390)-(425, 474).
    a.ExpectPixels({
        {314, 430, colour::kPartPen},
        {313, 430, colour::kPalletFrame},
        {380, 390, colour::kPartPen},
        {380, 389, colour::kPalletFrame},
        {318, 394, colour::kPartNormal},
    });
    // Layers 4, 3, 2 and the base show their right edges at 426, 428, 430 and 432.
    for (int x : {426, 428, 430, 432})
        EXPECT_EQ(a.At(x, 440), colour::kPartPen) << x;
    EXPECT_EQ(a.At(433, 440), colour::kPalletFrame);
    // The label stands on the top layer (middle 432): nothing dark below row 450.
    EXPECT_GT(DarkPixels(a.Area().Image(), 315, 417, 424, 432), 10);
    EXPECT_EQ(DarkPixels(a.Area().Image(), 315, 452, 424, 473), 0);
}

TEST(CKs_DrawArea, HighlightModePaintsThePickedStackGreen) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.Area().Refresh();
    a.Area().Drawing().Select().SetPicked(a.FirstStack().Id);
    a.Area().DrawParts(DrawMode::Highlight);
    a.ExpectPixels({
        {326, 402, colour::kPicked},
        {322, 440, colour::kPartPen},
    });
    a.Area().DrawParts(DrawMode::AllNormal);
    EXPECT_EQ(a.At(326, 402), colour::kPartNormal);
}

TEST(CKs_DrawArea, FourPalletCaptionsNameFourPalletsFromTheCurrentOne) {
    std::string ini = test::KestoIniWithDrawing();
    ini.replace(ini.find("PalletInfo=2,P"), 14, "PalletInfo=4,P");
    AreaJob a(test::kDefaultPallet, ini);
    ASSERT_TRUE(a.opened);
    a.job.Shown().SetMode(PalletView::FourPallet);
    a.job.Shown().SetPallet(2);
    a.Area().Refresh();
    // Captions 1045, 1048, 1046, 1047: top left, top right, bottom left, bottom right.
    const std::pair<const char*, QRect> expected[] = {{"1045", QRect(0, 0, 500, 20)},
                                                      {"1048", QRect(500, 0, 500, 20)},
                                                      {"1046", QRect(0, 250, 500, 20)},
                                                      {"1047", QRect(500, 250, 500, 20)}};
    const char* texts[] = {"P-02", "P-03", "P-04", "P-01"};
    for (size_t i = 0; i < 4; ++i) {
        QLabel* caption = a.Caption(expected[i].first);
        EXPECT_EQ(caption->geometry(), expected[i].second) << i;
        EXPECT_EQ(caption->text(), texts[i]) << i;
        EXPECT_TRUE(caption->isVisibleTo(&a.Area())) << i;
    }
    // The lower caption strip keeps the window's colour, the separators are grey.
    a.ExpectPixels({
        {250, 255, a.At(250, 5)},
        {250, 270, colour::kAreaBackground},
        {500, 100, colour::kSeparator},
    });
}

TEST(CKs_DrawArea, ImageSurvivesAnExpose) {
    AreaJob a;
    ASSERT_TRUE(a.opened);
    a.Area().Refresh();
    a.Area().Drawing().Select().SetPicked(a.FirstStack().Id);
    a.Area().DrawParts(DrawMode::Highlight);
    const QImage before = a.Area().Image();
    const QImage shown = a.Area().grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(PixelAt(shown, 326, 402), colour::kPicked);
    EXPECT_EQ(a.Area().Image(), before);
}

// --- touch, on the job of common/EditingWindow.h ----------------------------------------------
// The offscreen screen is 800 x 600: the fingers stay on it.

// A finger as the touch screen gives it.
QPointingDevice* TouchScreen() {
    static QPointingDevice* device = QTest::createTouchDevice();
    return device;
}

// A1's back stack, (670, 118)-(990, 318), tapped at (700, 218) and dragged by the finger to
// (130, 218): the drop rectangle (100, 118)-(420, 318) is 10 pixels from the cell's left back
// corner, so it lands at X 50 + 320, its Y 550 kept, and by block the front stack goes along.
TEST(CKs_DrawArea, ATapPicksAndAFingerDragMovesAsTheMouseDoes) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, QPoint(700, 218));
    QTest::touchEvent(&w.Area(), TouchScreen()).release(0, QPoint(700, 218));
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(1).Id);
    EXPECT_EQ(w.Picture(680, 128), colour::kPicked);
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, QPoint(700, 218));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(400, 218));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(130, 218));
    ASSERT_TRUE(w.Area().Landing().has_value());
    EXPECT_EQ(w.Seen(90, 200), colour::kLanding);
    QTest::touchEvent(&w.Area(), TouchScreen()).release(0, QPoint(130, 218));
    EXPECT_DOUBLE_EQ(w.StackNo(1).X, 370);
    EXPECT_DOUBLE_EQ(w.StackNo(1).Y, 550);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 370);
    EXPECT_TRUE(w.Area().DragImage().empty());
}

TEST(CKs_DrawArea, ASecondFingerLetsTheDragGo) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, QPoint(700, 218));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(400, 218));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(130, 218));
    ASSERT_FALSE(w.Area().DragImage().empty());
    QTest::touchEvent(&w.Area(), TouchScreen()).stationary(0).press(1, QPoint(500, 500));
    EXPECT_TRUE(w.Area().DragImage().empty());
    QTest::touchEvent(&w.Area(), TouchScreen())
        .release(0, QPoint(130, 218))
        .release(1, QPoint(500, 500));
    EXPECT_DOUBLE_EQ(w.StackNo(1).X, 950);
    EXPECT_FALSE(w.Area().Flashing());
}

// With Direct on, in 4PALLET, a tap on one stack of A1 and a long press on the other make a band
// of the two, as a click and a Shift-click do.
TEST(CKs_DrawArea, ALongPressOnAStackIsAShiftClick) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::mouseClick(w.job.Dialog->findChild<QPushButton*>("B-NEST-A"), Qt::LeftButton);
    QTest::mouseClick(w.job.Dialog->findChild<QPushButton*>("B-PALLET4"), Qt::LeftButton);
    ASSERT_TRUE(w.App().Settings.IsDirect.IsOne());
    const std::optional<IntRect> front = w.Drawing().ScreenRect(w.StackNo(0));
    const std::optional<IntRect> back = w.Drawing().ScreenRect(w.StackNo(1));
    ASSERT_TRUE(front && back);
    const auto middle = [](const IntRect& r) {
        return QPoint((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
    };
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, middle(*back));
    QTest::touchEvent(&w.Area(), TouchScreen()).release(0, middle(*back));
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, middle(*front));
    QTest::qWait(QGuiApplication::styleHints()->mousePressAndHoldInterval() + 200);
    QTest::touchEvent(&w.Area(), TouchScreen()).release(0, middle(*front));
    EXPECT_EQ(w.Drawing().Selected().Band(), BandState::InForce);
    EXPECT_EQ(w.Drawing().Selected().BandList().size(), 2u);
    EXPECT_EQ(w.Picture(front->Left + 2, front->Top + 2), colour::kPicked);
    EXPECT_EQ(w.Picture(back->Left + 2, back->Top + 2), colour::kPicked);
}

// --- zoom and pan, on the job of common/EditingWindow.h -----------------------------------------
// The whole pallet shows a millimetre a pixel, (x, y) at (x + 40, 868 - y); the plan's share is
// (0, 36)-(1080, 900), the whole window x -40..1040, y -32..832.

void Wheel(CKs_DrawArea& area, QPoint at, int eighths, Qt::KeyboardModifiers keys) {
    test::SendWheel(area, at, eighths, keys);
}

// One notch closer at (400, 468), which shows (360, 400): 0.8 mm a pixel, the window starting
// 400 pixels to the left and 432 above, x 40..904, y 745.6 - 691.2 = 54.4..745.6.
constexpr WorldWindow kOneNotch{40, 904, 54.4, 745.6};

TEST(CKs_DrawArea, CtrlAndTheWheelZoomAboutThePointer) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    // A1's front stack near its left front corner, (640, 68) in millimetres.
    const Rgb stack = w.Picture(680, 800);
    const Rgb caption = w.Picture(500, 10);
    Wheel(w.Area(), {400, 468}, 120, Qt::NoModifier);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    ASSERT_EQ(w.Shown().Zoom(), kOneNotch);
    // (640, 68) is now at ((640 - 40) / 0.8, (745.6 - 68) / 0.8 + 36) = (750, 883).
    EXPECT_EQ(w.Picture(750, 883), stack);
    // (300, 400), in the cell clear of the stacks, is at (325, 468).
    EXPECT_NE(w.Picture(325, 468), stack);
    // The pallet runs past the plan, not over the caption strip.
    EXPECT_EQ(w.Picture(500, 10), caption);
    // A notch back is the whole pallet again.
    Wheel(w.Area(), {400, 468}, -120, Qt::ControlModifier);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    EXPECT_EQ(w.Picture(680, 800), stack);
}

TEST(CKs_DrawArea, TheMiddleButtonPansAndNothingIsPicked) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    QTest::mousePress(&w.Area(), Qt::MiddleButton, {}, QPoint(750, 800));
    QTest::mouseMove(&w.Area(), QPoint(700, 800));
    QTest::mouseMove(&w.Area(), QPoint(650, 800));
    QTest::mouseRelease(&w.Area(), Qt::MiddleButton, {}, QPoint(650, 800));
    // 100 pixels to the left are 80 mm: x 120..984.
    ASSERT_TRUE(w.Shown().Zoom().has_value());
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->XMin, 120);
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->XMax, 984);
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->YMin, 54.4);
    EXPECT_EQ(w.Drawing().Selected().Picked(), kNoStack);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
}

TEST(CKs_DrawArea, TheLeftButtonPansWhileTheSpaceBarIsHeld) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    // On A1's front stack: with the space bar held it is not dragged, the view is.
    QTest::keyPress(&w.Area(), Qt::Key_Space);
    w.Drag(QPoint(750, 800), QPoint(750, 700));
    QTest::keyRelease(&w.Area(), Qt::Key_Space);
    ASSERT_TRUE(w.Shown().Zoom().has_value());
    // 100 pixels up are 80 mm: the window goes down, y -25.6..665.6.
    EXPECT_NEAR(w.Shown().Zoom()->YMin, -25.6, 1e-9);
    EXPECT_NEAR(w.Shown().Zoom()->YMax, 665.6, 1e-9);
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
    EXPECT_DOUBLE_EQ(w.StackNo(0).Y, 50);
    // Let go of the space bar, the left button picks again.
    w.Click(QPoint(750, 800));
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
}

TEST(CKs_DrawArea, ADoubleClickOnTheBackgroundShowsTheWholePallet) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    // On a stack it is two clicks: the stack is picked and the zoom stays.
    QTest::mouseDClick(&w.Area(), Qt::LeftButton, {}, QPoint(750, 800));
    EXPECT_TRUE(w.Shown().Zoom().has_value());
    EXPECT_EQ(w.Drawing().Selected().Picked(), w.StackNo(0).Id);
    QTest::mouseDClick(&w.Area(), Qt::LeftButton, {}, QPoint(300, 300));
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    EXPECT_DOUBLE_EQ(w.StackNo(0).X, 950);
}

// Fingers at (300, 300) and (500, 300), their centre showing (360, 568), drawn apart to (200,
// 300) and (600, 300): twice the spread, 0.5 mm a pixel about the centre, x 160..700, y
// 268..700.
TEST(CKs_DrawArea, TwoFingersPinchToZoom) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, QPoint(300, 300));
    QTest::touchEvent(&w.Area(), TouchScreen())
        .move(0, QPoint(300, 300))
        .press(1, QPoint(500, 300));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(250, 300)).move(1, QPoint(550, 300));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(200, 300)).move(1, QPoint(600, 300));
    QTest::touchEvent(&w.Area(), TouchScreen())
        .release(0, QPoint(200, 300))
        .release(1, QPoint(600, 300));
    EXPECT_EQ(w.Shown().Zoom(), (WorldWindow{160, 700, 268, 700}));
    EXPECT_EQ(w.Drawing().Selected().Picked(), kNoStack);
    EXPECT_TRUE(w.Area().DragImage().empty());
}

// Two fingers moved together pan: 100 pixels to the right at 0.8 mm a pixel, x -40..824.
TEST(CKs_DrawArea, TwoFingersMovedTogetherPan) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    QTest::touchEvent(&w.Area(), TouchScreen()).press(0, QPoint(300, 300));
    QTest::touchEvent(&w.Area(), TouchScreen())
        .move(0, QPoint(300, 300))
        .press(1, QPoint(500, 300));
    QTest::touchEvent(&w.Area(), TouchScreen()).move(0, QPoint(400, 300)).move(1, QPoint(600, 300));
    QTest::touchEvent(&w.Area(), TouchScreen())
        .release(0, QPoint(400, 300))
        .release(1, QPoint(600, 300));
    ASSERT_TRUE(w.Shown().Zoom().has_value());
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->XMin, -40);
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->XMax, 824);
    EXPECT_DOUBLE_EQ(w.Shown().Zoom()->YMax, 745.6);
}

// The overview, 160 x 128 pixels for the whole window's 1080 x 864 mm, 8 from the plan's
// corner: (912, 764)-(1072, 892), 6.75 mm a pixel. One notch closer it outlines x 40..904 from
// 912 + 11 = 923 to 912 + 139 = 1051, y 745.6..54.4 from 764 + 12 = 776 to 764 + 115 = 879.
TEST(CKs_DrawArea, AZoomedViewShowsWhereItIsInTheOverview) {
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    const Rgb outline{0, 0, 160};
    EXPECT_NE(w.Seen(923, 830), outline);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    EXPECT_EQ(w.Seen(923, 830), outline);
    EXPECT_EQ(w.Seen(1051, 830), outline);
    EXPECT_EQ(w.Seen(990, 776), outline);
    EXPECT_EQ(w.Seen(990, 879), outline);
    // Inside the outline the pallet in small, outside it the card.
    EXPECT_NE(w.Seen(990, 830), outline);
    // The overview is drawn over the picture, never into it.
    EXPECT_NE(w.Picture(923, 830), outline);
}

// Retry, Auto, another view and another pallet each show the whole pallet again.
TEST(CKs_DrawArea, RetryAutoAnotherViewOrPalletShowTheWholePallet) {
    for (const char* button : {"B-RETRY", "B-AUTO", "B-DANMEN"}) {
        test::EditingWindow w;
        ASSERT_TRUE(w.opened);
        Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
        ASSERT_TRUE(w.Shown().Zoom().has_value()) << button;
        QTest::mouseClick(w.Button(button), Qt::LeftButton);
        EXPECT_FALSE(w.Shown().Zoom().has_value()) << button;
        EXPECT_FALSE(w.Drawing().Zoomed()) << button;
    }
    test::EditingWindow w;
    ASSERT_TRUE(w.opened);
    Wheel(w.Area(), {400, 468}, 120, Qt::ControlModifier);
    w.job.Dialog->findChild<QComboBox*>("LIST-PALLET-SEL")->setCurrentIndex(1);
    EXPECT_FALSE(w.Shown().Zoom().has_value());
    EXPECT_DOUBLE_EQ(w.Drawing().Scale, 1);
}

}  // namespace
}  // namespace kesto
