#include "ui/draw/ImagePanel.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPalette>
#include <QWidget>

#include "common/WindowJob.h"
#include "render/FontTable.h"

namespace kesto {
namespace {

constexpr Rgb kRed{200, 0, 0};
constexpr Rgb kBlue{0, 0, 200};

// The panel's drawing calls, as the drawing area and the part panels make them.
class TestPanel : public ImagePanel {
  public:
    explicit TestPanel(const FontTable& fonts, QWidget* parent = nullptr)
        : ImagePanel(fonts, parent) {}
    using ImagePanel::ClearImage;
    using ImagePanel::PlaceAt;
    void Fill(const IntRect& rect, Rgb colour) {
        Paint([&](Canvas& canvas) { canvas.FillRectangle(rect, colour, colour); });
    }
    void Line(IntPoint from, IntPoint to, PenStyle style) {
        Paint([&](Canvas& canvas) { canvas.DrawLinePrim(from, to, kBlue, style, 1); });
    }
};

QColor ColourOf(Rgb rgb) {
    return QColor(rgb.R, rgb.G, rgb.B);
}

class ImagePanelTest : public ::testing::Test {
  protected:
    ImagePanelTest() { test::EnsureQApplication(); }
    FontTable fonts_;
};

// The panel at (10, 10), 40 x 30, in a window of 100 x 80 that is shown.
struct PanelOnScreen {
    explicit PanelOnScreen(const FontTable& fonts) : panel(fonts, &window) {
        window.resize(100, 80);
        window.show();
        panel.PlaceAt({10, 10, 50, 40});
    }
    QImage Picture() { return window.grab().toImage(); }

    QWidget window;
    TestPanel panel;
};

// The window's picture the first and the second time it is painted, and the panel's image.
struct Shown {
    QImage First;
    QImage Second;
    QImage Image;
};

template <typename Draw>
Shown ShowTwice(const FontTable& fonts, Draw draw) {
    PanelOnScreen screen(fonts);
    draw(screen.panel);
    Shown shown{screen.Picture(), screen.Picture(), {}};
    shown.Image = screen.panel.Image().convertToFormat(shown.First.format());
    return shown;
}

TEST_F(ImagePanelTest, DrawnPicturesShowInTheImageInTheOrderDrawn) {
    TestPanel panel(fonts_);
    EXPECT_EQ(panel.PlaceAt({0, 0, 40, 30}), (IntRect{0, 0, 40, 30}));
    panel.Fill({0, 0, 20, 30}, kRed);
    panel.Fill({10, 0, 30, 30}, kBlue);
    const QImage& image = panel.Image();
    EXPECT_EQ(image.pixelColor(5, 15), ColourOf(kRed));
    EXPECT_EQ(image.pixelColor(15, 15), ColourOf(kBlue));
    EXPECT_EQ(image.pixelColor(35, 15), panel.palette().color(QPalette::Window));
}

TEST_F(ImagePanelTest, ClearingDropsWhatWasDrawnBeforeIt) {
    TestPanel panel(fonts_);
    panel.PlaceAt({0, 0, 40, 30});
    panel.Fill({0, 0, 40, 30}, kRed);
    panel.ClearImage();
    panel.Fill({0, 0, 10, 10}, kBlue);
    EXPECT_EQ(panel.Image().pixelColor(5, 5), ColourOf(kBlue));
    EXPECT_EQ(panel.Image().pixelColor(20, 20), panel.palette().color(QPalette::Window));
}

TEST_F(ImagePanelTest, APictureAlreadyShownIsDrawnOverWhereNothingNewIsDrawn) {
    TestPanel panel(fonts_);
    panel.PlaceAt({0, 0, 40, 30});
    panel.Fill({0, 0, 40, 30}, kRed);
    EXPECT_EQ(panel.Image().pixelColor(20, 20), ColourOf(kRed));
    panel.Fill({0, 0, 10, 10}, kBlue);
    EXPECT_EQ(panel.Image().pixelColor(5, 5), ColourOf(kBlue));
    EXPECT_EQ(panel.Image().pixelColor(20, 20), ColourOf(kRed));
}

TEST_F(ImagePanelTest, ThePanelOnTheScreenShowsWhatWasDrawn) {
    PanelOnScreen screen(fonts_);
    screen.panel.Fill({0, 0, 40, 30}, kRed);
    screen.panel.Fill({20, 0, 40, 30}, kBlue);
    const QImage shown = screen.Picture();
    EXPECT_EQ(shown.pixelColor(15, 20), ColourOf(kRed));
    EXPECT_EQ(shown.pixelColor(45, 20), ColourOf(kBlue));
}

// The first picture is painted straight onto the screen, the ones after it copied from the
// image: the window shows the same pixels either way, and the image holds them too.
TEST_F(ImagePanelTest, TheFirstPictureShownStraightIsTheImagesPicture) {
    const Shown shown = ShowTwice(fonts_, [](TestPanel& panel) {
        panel.Fill({0, 0, 20, 30}, kRed);
        panel.Fill({10, 5, 30, 25}, kBlue);
        panel.Line({2, 28}, {38, 2}, PenStyle::Dotted);
    });
    EXPECT_EQ(shown.First.pixelColor(13, 20), ColourOf(kRed));
    EXPECT_EQ(shown.First.pixelColor(35, 18), ColourOf(kBlue));
    EXPECT_EQ(shown.First.pixelColor(45, 45), QWidget().palette().color(QPalette::Window));
    EXPECT_EQ(shown.First, shown.Second);
    EXPECT_EQ(shown.Image, shown.First.copy(10, 10, 40, 30));
}

// A dotted line, or one aslant, that the panel's edge cuts is cut there on the screen as in the
// image: where it is cut decides where its dots fall.
TEST_F(ImagePanelTest, AFirstPictureWithLinesAcrossTheEdgeShowsAsItsImage) {
    const Shown shown = ShowTwice(fonts_, [](TestPanel& panel) {
        panel.Line({-30, -20}, {45, 28}, PenStyle::Dotted);
        panel.Line({-7, 29}, {39, 3}, PenStyle::Solid);
        panel.Line({20, -13}, {20, 45}, PenStyle::Dotted);
    });
    EXPECT_EQ(shown.First, shown.Second);
    EXPECT_EQ(shown.Image, shown.First.copy(10, 10, 40, 30));
    int dots = 0;  // of the upright line, at 20 across in the panel
    for (int y = 10; y < 40; ++y)
        dots += shown.First.pixelColor(30, y) == ColourOf(kBlue) ? 1 : 0;
    EXPECT_GT(dots, 5);
    EXPECT_LT(dots, 30);
}

// A picture drawn after the first one shows is painted into the image over the first.
TEST_F(ImagePanelTest, WhatIsDrawnAfterTheFirstPictureShowsOverIt) {
    PanelOnScreen screen(fonts_);
    screen.panel.Fill({0, 0, 40, 30}, kRed);
    ASSERT_EQ(screen.Picture().pixelColor(40, 30), ColourOf(kRed));
    screen.panel.Fill({20, 10, 40, 30}, kBlue);
    const QImage shown = screen.Picture();
    EXPECT_EQ(shown.pixelColor(15, 15), ColourOf(kRed));
    EXPECT_EQ(shown.pixelColor(40, 30), ColourOf(kBlue));
    EXPECT_EQ(screen.panel.Image().pixelColor(30, 20), ColourOf(kBlue));
}

TEST_F(ImagePanelTest, ANewPlaceStartsFromTheBackground) {
    TestPanel panel(fonts_);
    panel.PlaceAt({0, 0, 40, 30});
    panel.Fill({0, 0, 40, 30}, kRed);
    panel.PlaceAt({0, 0, 60, 20});
    EXPECT_EQ(panel.Image().size(), QSize(60, 20));
    EXPECT_EQ(panel.Image().pixelColor(10, 10), panel.palette().color(QPalette::Window));
}

TEST_F(ImagePanelTest, AManyTimesRedrawnPanelOffTheScreenStillShowsTheLastPicture) {
    TestPanel panel(fonts_);
    panel.PlaceAt({0, 0, 40, 30});
    // Far more than the record keeps before it paints in on its own.
    for (int i = 0; i < 120000; ++i)
        panel.Fill({i % 40, 0, i % 40 + 1, 30}, i % 2 == 0 ? kRed : kBlue);
    EXPECT_EQ(panel.Image().pixelColor(0, 15), ColourOf(kRed));
    EXPECT_EQ(panel.Image().pixelColor(39, 15), ColourOf(kBlue));
}

}  // namespace
}  // namespace kesto
