#include "ui/draw/ImagePanel.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "render/QtCanvas.h"
#include "ui/main/RectConvert.h"

namespace kesto {

namespace {

// Primitives recorded at most before they are painted in without waiting for the screen: a few
// pictures of the largest job.
constexpr size_t kMostPending = 50000;

}  // namespace

ImagePanel::ImagePanel(const FontTable& fonts, QWidget* parent) : QWidget(parent), fonts_(fonts) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    // Commands may draw before the first layout gives the panel its size.
    image_ = QImage(1, 1, QImage::Format_RGB32);
    ClearImage();
}

IntRect ImagePanel::PlaceAt(const IntRect& placement) {
    setGeometry(ToQRect(placement));
    show();
    const int w = std::max(width(), 0);
    const int h = std::max(height(), 0);
    // Until the panel draws, it shows the window's background, as an empty child window does.
    // The image holds the screen's device pixels, so that lines and texts are drawn sharp on
    // a high-density screen while the drawing keeps working in the panel's own pixels.
    const qreal ratio = devicePixelRatioF();
    image_ = QImage(std::max(qRound(w * ratio), 1), std::max(qRound(h * ratio), 1),
                    QImage::Format_RGB32);
    image_.setDevicePixelRatio(ratio);
    ClearImage();
    update();
    return {0, 0, w, h};
}

const QImage& ImagePanel::Image() const {
    PaintPending();
    return image_;
}

void ImagePanel::ClearImage() {
    pending_.Clear();
    clearPending_ = true;
}

void ImagePanel::Paint(const std::function<void(Canvas&)>& draw) {
    draw(pending_);
    // A panel long off the screen (a minimised window) is painted in now and then, so that
    // the record of a shift's highlights stays small.
    if (pending_.Items().size() > kMostPending)
        PaintPending();
    update();
}

void ImagePanel::PaintPending() const {
    if (clearPending_)
        image_.fill(palette().color(QPalette::Window));
    clearPending_ = false;
    if (pending_.Items().empty())
        return;
    {
        QPainter painter(&image_);
        QtCanvas canvas(painter, fonts_);
        pending_.Replay(canvas);
    }
    pending_.Clear();
}

bool ImagePanel::PaintStraight() {
    // Only on the image's own size (elsewhere the copy leaves the window's background showing)
    // and with nothing stroked across the panel's edges, where the screen, which goes on beyond
    // them, would cut the lines elsewhere than the image does.
    if (shownStraight_ || !clearPending_ || image_.deviceIndependentSize().toSize() != size() ||
        !pending_.StrokesCutAlike({0, 0, width(), height()}))
        return false;
    shownStraight_ = true;
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QtCanvas canvas(painter, fonts_);
    pending_.Replay(canvas);
    return true;
}

void ImagePanel::paintEvent(QPaintEvent* event) {
    if (PaintStraight())
        return;
    PaintPending();
    QPainter painter(this);
    if (image_.deviceIndependentSize().toSize() != size())
        painter.fillRect(event->rect(), palette().color(QPalette::Window));
    painter.drawImage(0, 0, image_);
}

}  // namespace kesto
