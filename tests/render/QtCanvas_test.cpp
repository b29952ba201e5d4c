#include "render/QtCanvas.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QRect>
#include <cmath>
#include <functional>

#include "common/GuiApplication.h"

namespace kesto {
namespace {

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kBlue{0, 0, 255};
constexpr Rgb kGreen{0, 200, 0};

Rgb At(const QImage& image, int x, int y) {
    const QColor c = image.pixelColor(x, y);
    return Rgb{static_cast<uint8_t>(c.red()), static_cast<uint8_t>(c.green()),
               static_cast<uint8_t>(c.blue())};
}

// A white 200 x 120 image painted through a QtCanvas with font 1 of 20 pixels defined.
struct Painted {
    Painted() {
        test::EnsureGuiApplication();
        app.Settings.FontHeight = {0, 20, 0, 0, 0};
        app.Settings.FontNames = {"", "DejaVu Sans", "", "", ""};
        fonts.Build(app);
        image.fill(Qt::white);
    }
    void Paint(const std::function<void(Canvas&)>& draw) {
        QPainter painter(&image);
        QtCanvas canvas(painter, fonts);
        draw(canvas);
    }
    // The smallest rectangle around every pixel that is not white, null when there is none.
    QRect Inked() const {
        QRect box;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (At(image, x, y) != kWhite)
                    box = box.united(QRect(x, y, 1, 1));
            }
        }
        return box;
    }

    CKestoApp app;
    FontTable fonts;
    QImage image{200, 120, QImage::Format_RGB32};
};

TEST(QtCanvas, RectangleFillsInsideAndOutlinesTheOuterPixels) {
    Painted p;
    p.Paint([](Canvas& c) { c.FillRectangle({10, 20, 30, 35}, kBlue, kRed); });
    EXPECT_EQ(At(p.image, 10, 20), kRed);
    EXPECT_EQ(At(p.image, 29, 20), kRed);
    EXPECT_EQ(At(p.image, 10, 34), kRed);
    EXPECT_EQ(At(p.image, 29, 34), kRed);
    EXPECT_EQ(At(p.image, 11, 21), kBlue);
    EXPECT_EQ(At(p.image, 28, 33), kBlue);
    EXPECT_EQ(p.Inked(), QRect(QPoint(10, 20), QPoint(29, 34)));
}

// Two pixels wide or high there is no inside: the outline covers it all.
TEST(QtCanvas, RectangleTwoPixelsAcrossIsAllOutline) {
    Painted p;
    p.Paint([](Canvas& c) {
        c.FillRectangle({10, 10, 12, 20}, kBlue, kRed);
        c.FillRectangle({20, 10, 30, 12}, kBlue, kRed);
    });
    for (int y = 10; y < 20; ++y) {
        EXPECT_EQ(At(p.image, 10, y), kRed) << y;
        EXPECT_EQ(At(p.image, 11, y), kRed) << y;
    }
    for (int x = 20; x < 30; ++x) {
        EXPECT_EQ(At(p.image, x, 10), kRed) << x;
        EXPECT_EQ(At(p.image, x, 11), kRed) << x;
    }
    EXPECT_EQ(At(p.image, 12, 15), kWhite);
    EXPECT_EQ(At(p.image, 25, 12), kWhite);
}

TEST(QtCanvas, RectangleRightAndBottomEdgesAreExclusive) {
    Painted p;
    p.Paint([](Canvas& c) { c.FillRectangle({50, 50, 53, 52}, kBlue, kBlue); });
    EXPECT_EQ(At(p.image, 52, 51), kBlue);
    EXPECT_EQ(At(p.image, 53, 51), kWhite);
    EXPECT_EQ(At(p.image, 52, 52), kWhite);
}

TEST(QtCanvas, EmptyRectangleDrawsNothing) {
    Painted p;
    p.Paint([](Canvas& c) { c.FillRectangle({50, 50, 50, 60}, kBlue, kRed); });
    EXPECT_TRUE(p.Inked().isNull());
}

TEST(QtCanvas, RectangleGivenUpsideDownIsTurnedRound) {
    Painted p;
    p.Paint([](Canvas& c) { c.FillRectangle({30, 35, 10, 20}, kBlue, kRed); });
    EXPECT_EQ(p.Inked(), QRect(QPoint(10, 20), QPoint(29, 34)));
}

TEST(QtCanvas, ThinLineInItsColourWithoutItsEndPoint) {
    Painted p;
    p.Paint([](Canvas& c) { c.DrawLinePrim({20, 40}, {60, 40}, kRed, PenStyle::Solid, 0); });
    for (int x = 20; x < 60; ++x)
        EXPECT_EQ(At(p.image, x, 40), kRed) << x;
    EXPECT_EQ(At(p.image, 60, 40), kWhite);
    EXPECT_EQ(At(p.image, 40, 39), kWhite);
    EXPECT_EQ(At(p.image, 40, 41), kWhite);
}

TEST(QtCanvas, WideLineCoversTwoRows) {
    Painted p;
    p.Paint([](Canvas& c) { c.DrawLinePrim({20, 40}, {60, 40}, kRed, PenStyle::Solid, 2); });
    const QRect inked = p.Inked();
    EXPECT_EQ(inked.height(), 2);
    EXPECT_EQ(At(p.image, 40, inked.top()), kRed);
    EXPECT_EQ(At(p.image, 40, inked.bottom()), kRed);
}

TEST(QtCanvas, DottedLineHasGaps) {
    Painted p;
    p.Paint([](Canvas& c) { c.DrawLinePrim({10, 60}, {110, 60}, kRed, PenStyle::Dotted, 1); });
    int inked = 0;
    int gaps = 0;
    for (int x = 10; x < 110; ++x)
        (At(p.image, x, 60) == kRed ? inked : gaps) += 1;
    EXPECT_GT(inked, 20);
    EXPECT_GT(gaps, 20);
    EXPECT_EQ(At(p.image, 10, 60), kRed);
}

// How far a pixel lies from the ellipse inside the box, in units of the half axes.
double EllipseError(const QRectF& e, int x, int y) {
    const double nx = (x + 0.5 - e.center().x()) / (e.width() / 2);
    const double ny = (y + 0.5 - e.center().y()) / (e.height() / 2);
    return std::abs(std::sqrt(nx * nx + ny * ny) - 1.0);
}

TEST(QtCanvas, FullArcPixelsLieOnTheEllipse) {
    Painted p;
    // Equal rays give the whole ellipse; the fill colour is never used.
    p.Paint([](Canvas& c) { c.DrawArcPrim({40, 20, 121, 81}, {80, 81}, {80, 81}, kBlue, kRed); });
    const QRectF ellipse(40, 20, 80, 60);
    int count = 0;
    for (int y = 0; y < p.image.height(); ++y) {
        for (int x = 0; x < p.image.width(); ++x) {
            const Rgb c = At(p.image, x, y);
            EXPECT_NE(c, kBlue);
            if (c == kWhite)
                continue;
            ++count;
            EXPECT_LT(EllipseError(ellipse, x, y), 0.08) << x << "," << y;
        }
    }
    EXPECT_GT(count, 150);
    EXPECT_EQ(At(p.image, 80, 50), kWhite);  // never filled
    const QRect inked = p.Inked();
    EXPECT_GE(inked.left(), 40);
    EXPECT_LE(inked.right(), 120);
    EXPECT_GE(inked.top(), 20);
    EXPECT_LE(inked.bottom(), 80);
}

TEST(QtCanvas, ArcRunsCounterClockwiseFromStartRayToEndRay) {
    Painted p;
    // From the ray to the right round to the ray upwards: the upper right quarter only.
    p.Paint([](Canvas& c) { c.DrawArcPrim({40, 20, 121, 81}, {200, 50}, {80, 0}, kBlue, kRed); });
    const QRect inked = p.Inked();
    ASSERT_FALSE(inked.isNull());
    EXPECT_GE(inked.left(), 79);
    EXPECT_LE(inked.bottom(), 51);
    EXPECT_GE(inked.right(), 118);
    EXPECT_LE(inked.top(), 21);
}

TEST(QtCanvas, CentredLabelIsCentredInItsRectangleFromItsTop) {
    Painted p;
    p.Paint([](Canvas& c) {
        c.DrawLabel(LabelMode::Centred, "MMMM", 1, {0, 0}, {20, 30, 180, 80}, kGreen);
    });
    const QRect inked = p.Inked();
    ASSERT_FALSE(inked.isNull());
    EXPECT_NEAR((inked.left() + inked.right()) / 2.0, 100.0, 2.0);
    EXPECT_GE(inked.top(), 30);
    EXPECT_LE(inked.top(), 30 + 8);
    EXPECT_LE(inked.bottom(), 30 + 20);
}

TEST(QtCanvas, CentredLabelIsClippedToItsRectangle) {
    Painted p;
    p.Paint([](Canvas& c) {
        c.DrawLabel(LabelMode::Centred, "MMMMMMMMMMMMMMMMMMMM", 1, {0, 0}, {60, 30, 140, 40},
                    kGreen);
    });
    const QRect inked = p.Inked();
    ASSERT_FALSE(inked.isNull());
    EXPECT_GE(inked.left(), 60);
    EXPECT_LE(inked.right(), 139);
    EXPECT_GE(inked.top(), 30);
    EXPECT_LE(inked.bottom(), 39);
}

TEST(QtCanvas, PointLabelHasItsTopLeftCornerAtThePoint) {
    Painted p;
    p.Paint([](Canvas& c) { c.DrawLabel(LabelMode::AtPoint, "HHH", 1, {50, 60}, {}, kGreen); });
    const QRect inked = p.Inked();
    ASSERT_FALSE(inked.isNull());
    EXPECT_GE(inked.left(), 50);
    EXPECT_LE(inked.left(), 50 + 4);
    EXPECT_GE(inked.top(), 60);
    EXPECT_LE(inked.top(), 60 + 8);
    EXPECT_LE(inked.bottom(), 60 + 20);
}

TEST(QtCanvas, LabelInAnUndefinedFontDrawsNothing) {
    Painted p;
    p.Paint([](Canvas& c) {
        c.DrawLabel(LabelMode::AtPoint, "HHH", 2, {50, 60}, {}, kGreen);
        c.DrawLabel(LabelMode::Centred, "HHH", 7, {0, 0}, {0, 0, 200, 100}, kGreen);
    });
    EXPECT_TRUE(p.Inked().isNull());
}

TEST(QtCanvas, LabelTextIsInTheTextColourOnATransparentBackground) {
    Painted p;
    p.image.fill(QColor(69, 79, 122));
    p.Paint([](Canvas& c) { c.DrawLabel(LabelMode::AtPoint, "HHHH", 1, {10, 10}, {}, kWhite); });
    int white = 0;
    for (int y = 10; y < 30; ++y) {
        for (int x = 10; x < 60; ++x)
            white += At(p.image, x, y) == kWhite ? 1 : 0;
    }
    EXPECT_GT(white, 20);
    EXPECT_EQ(At(p.image, 9, 9), (Rgb{69, 79, 122}));
}

// A clip keeps what is drawn inside its pixels Left..Right-1 x Top..Bottom-1; lifted, the
// whole image is drawn on again.
TEST(QtCanvas, ClipKeepsDrawingInsideItsRectangleUntilLifted) {
    Painted p;
    p.Paint([](Canvas& c) {
        c.SetClip(IntRect{20, 30, 60, 50});
        c.FillRectangle({0, 0, 200, 120}, kBlue, kBlue);
        c.SetClip(std::nullopt);
        c.FillRectangle({100, 100, 110, 110}, kRed, kRed);
    });
    EXPECT_EQ(At(p.image, 20, 30), kBlue);
    EXPECT_EQ(At(p.image, 59, 49), kBlue);
    EXPECT_EQ(At(p.image, 60, 49), kWhite);
    EXPECT_EQ(At(p.image, 59, 50), kWhite);
    EXPECT_EQ(At(p.image, 19, 30), kWhite);
    EXPECT_EQ(At(p.image, 105, 105), kRed);
}

}  // namespace
}  // namespace kesto
