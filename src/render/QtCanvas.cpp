#include "render/QtCanvas.h"

#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "render/TextCodec.h"

namespace kesto {

namespace {

QColor ToQColor(Rgb c) {
    return QColor(c.R, c.G, c.B);
}

// A rectangle given by its edges, turned the right way round as the platform's rectangle
// calls do.
QRect Normalised(const IntRect& r) {
    const int left = std::min(r.Left, r.Right);
    const int top = std::min(r.Top, r.Bottom);
    return QRect(left, top, std::max(r.Left, r.Right) - left, std::max(r.Top, r.Bottom) - top);
}

// The angle, in degrees counter-clockwise from 3 o'clock, of the ellipse point that the ray
// from the centre through (x, y) meets: Qt measures arcs by the ellipse's own parameter.
double ParameterAngle(const QRectF& box, IntPoint through) {
    const double dx = (through.X - box.center().x()) / (box.width() / 2);
    const double dy = (through.Y - box.center().y()) / (box.height() / 2);
    if (dx == 0 && dy == 0)
        return 0;
    return std::atan2(-dy, dx) * 180.0 / std::numbers::pi;
}

}  // namespace

QtCanvas::QtCanvas(QPainter& painter, const FontTable& fonts) : painter_(painter), fonts_(fonts) {}

void QtCanvas::FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) {
    const QRect r = Normalised(rect);
    if (r.width() <= 0 || r.height() <= 0)
        return;
    // The one-pixel outline on the rectangle's outermost pixels, then the inside over it: two
    // fills cost less than the outline's four edges drawn one by one, and the colours are opaque.
    painter_.fillRect(r, ToQColor(pen));
    if (r.width() > 2 && r.height() > 2)
        painter_.fillRect(r.adjusted(1, 1, -1, -1), ToQColor(fill));
}

void QtCanvas::DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb, Rgb pen) {
    const QRect r = Normalised(box);
    if (r.width() < 1 || r.height() < 1)
        return;
    // The ellipse lies inside the box, its right and bottom edges excluded.
    const QRectF ellipse(r.left(), r.top(), std::max(r.width() - 1, 1),
                         std::max(r.height() - 1, 1));
    const double from = ParameterAngle(ellipse, start);
    double span = ParameterAngle(ellipse, end) - from;
    while (span <= 0)
        span += 360;  // equal rays give the whole ellipse
    painter_.setPen(QPen(ToQColor(pen), 0));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawArc(ellipse, static_cast<int>(std::lround(from * 16)),
                     static_cast<int>(std::lround(span * 16)));
}

void QtCanvas::DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style, int32_t width) {
    QPen pen(ToQColor(colour), std::max(width, 0));
    pen.setStyle(style == PenStyle::Dotted ? Qt::DotLine : Qt::SolidLine);
    pen.setCapStyle(width > 1 ? Qt::RoundCap : Qt::FlatCap);
    painter_.setPen(pen);
    painter_.drawLine(QPoint(from.X, from.Y), QPoint(to.X, to.Y));
}

void QtCanvas::DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                         const IntRect& rect, Rgb colour) {
    if (!fonts_.Defined(fontSlot))
        return;
    painter_.setFont(fonts_.Font(fontSlot));
    painter_.setPen(ToQColor(colour));
    const QString shown = DecodeText(text);
    if (mode != LabelMode::AtPoint) {
        const QRect r(rect.Left, rect.Top, rect.Right - rect.Left, rect.Bottom - rect.Top);
        if (r.width() <= 0 || r.height() <= 0)
            return;
        if (mode == LabelMode::Centred) {
            painter_.drawText(r, Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine, shown);
            return;
        }
        // A text too long for its rectangle (a table's cell) ends in an ellipsis where the
        // rectangle does, rather than writing over the next.
        const QString fitted = painter_.fontMetrics().elidedText(shown, Qt::ElideRight, r.width());
        const Qt::Alignment across = mode == LabelMode::Left ? Qt::AlignLeft : Qt::AlignRight;
        painter_.drawText(r, across | Qt::AlignTop | Qt::TextSingleLine, fitted);
    } else {
        constexpr int kUnbounded = 1 << 20;
        painter_.drawText(QRect(at.X, at.Y, kUnbounded, kUnbounded),
                          Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine | Qt::TextDontClip,
                          shown);
    }
}

void QtCanvas::SetClip(const std::optional<IntRect>& clip) {
    if (!clip) {
        painter_.setClipping(false);
        return;
    }
    painter_.setClipRect(
        QRect(QPoint(clip->Left, clip->Top), QPoint(clip->Right - 1, clip->Bottom - 1)));
}

}  // namespace kesto
