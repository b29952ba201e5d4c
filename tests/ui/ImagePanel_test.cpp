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
};

QColor ColourOf(Rgb rgb) {
    return QColor(rgb.R, rgb.G, rgb.B);
}

class ImagePanelTest : public ::testing::Test {
  protected:
    ImagePanelTest() { test::EnsureQApplication(); }
    FontTable fonts_;
};

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
    QWidget window;
    window.resize(100, 80);
    TestPanel panel(fonts_, &window);
    window.show();
    panel.PlaceAt({10, 10, 50, 40});
    panel.Fill({0, 0, 40, 30}, kRed);
    panel.Fill({20, 0, 40, 30}, kBlue);
    const QImage shown = window.grab().toImage();
    EXPECT_EQ(shown.pixelColor(15, 20), ColourOf(kRed));
    EXPECT_EQ(shown.pixelColor(45, 20), ColourOf(kBlue));
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
