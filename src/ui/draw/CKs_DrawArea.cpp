#include "ui/draw/CKs_DrawArea.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTimer>
#include <QTouchEvent>

#include "render/TextCodec.h"
#include "session/DrawingEdit.h"
#include "ui/main/RectConvert.h"

namespace kesto {

namespace {

constexpr const char* kCaptionNames[] = {"1045", "1048", "1046", "1047"};
// The refused outline shows and hides three times, then the status line stays a while.
constexpr int kFlashMs = 120;
constexpr int kFlashes = 6;
constexpr int kStatusMs = 4000;
constexpr int kStatusMargin = 4;
// The landing's footprints: a light wash and a line of the landing colour.
constexpr int kLandingFillAlpha = 90;
constexpr int kLandingWidth = 2;

}  // namespace

CKs_DrawArea::CKs_DrawArea(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                           const FontTable& fonts, QWidget* parent)
    : ImagePanel(fonts, parent), app_(app), fonts_(fonts), drawing_(app, shown, messages) {
    setObjectName("CKs_DrawArea");
    for (size_t i = 0; i < captions_.size(); ++i) {
        captions_[i] = new QLabel(this);
        captions_[i]->setObjectName(QString::fromLatin1(kCaptionNames[i]));
        captions_[i]->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        captions_[i]->hide();
    }
    // Every move counts, with or without a button held.
    setMouseTracking(true);
    status_ = new QLabel(this);
    status_->setObjectName("DropStatus");
    status_->setStyleSheet(
        "QLabel { background: #ffff80; color: black; padding: 3px; "
        "border: 1px solid black; }");
    status_->hide();
    flash_ = new QTimer(this);
    flash_->setInterval(kFlashMs);
    connect(flash_, &QTimer::timeout, this, [this] {
        refusedShown_ = --flashesLeft_ > 0 && !refusedShown_;
        if (flashesLeft_ <= 0)
            flash_->stop();
        update();
    });
    // Fingers come as touch events, not as the mouse events made of them.
    setAttribute(Qt::WA_AcceptTouchEvents);
    hold_ = new QTimer(this);
    hold_->setSingleShot(true);
    hold_->setInterval(QGuiApplication::styleHints()->mousePressAndHoldInterval());
    connect(hold_, &QTimer::timeout, this, [this] {
        if (touch_ != nullptr)
            EditStep([this](DrawingEdit&, Canvas& canvas) { touch_->Held(canvas); });
    });
    statusEnd_ = new QTimer(this);
    statusEnd_->setSingleShot(true);
    connect(statusEnd_, &QTimer::timeout, status_, &QWidget::hide);
}

void CKs_DrawArea::ShowRefusal(const std::vector<IntRect>& rects, const QString& why) {
    refused_ = rects;
    refusedShown_ = true;
    flashesLeft_ = kFlashes;
    flash_->start();
    ShowStatus(why);
}

void CKs_DrawArea::ForgetRefusal() {
    refused_.clear();
    refusedShown_ = false;
    flashesLeft_ = 0;
    flash_->stop();
    statusEnd_->stop();
    status_->hide();
    update();
}

void CKs_DrawArea::ShowStatus(const QString& text) {
    status_->setText(text);
    status_->adjustSize();
    status_->move(kStatusMargin, height() - status_->height() - kStatusMargin);
    status_->raise();
    status_->show();
    statusEnd_->start(kStatusMs);
    update();
}

void CKs_DrawArea::PlaceArea(const IntRect& placement) {
    drawing_.SetArea(PlaceAt(placement));
    const IntRect& client = drawing_.Area();
    const QPoint topLeft = isWindow() || parentWidget() == nullptr
                               ? geometry().topLeft()
                               : parentWidget()->mapToGlobal(geometry().topLeft());
    screenRect_ = {topLeft.x(), topLeft.y(), topLeft.x() + client.Right,
                   topLeft.y() + client.Bottom};
}

void CKs_DrawArea::Refresh() {
    // What a mouse step drew before is painted over by the new picture.
    if (inStep_)
        stepDrawing_.Clear();
    // The caption strips show the window's own background.
    ClearImage();
    Paint([this](Canvas& canvas) { drawing_.Refresh(canvas); });
    ShowCaptions();
}

void CKs_DrawArea::DrawParts(DrawMode mode, int32_t x, int32_t y) {
    Paint([&](Canvas& canvas) { drawing_.DrawParts(canvas, mode, x, y); });
}

void CKs_DrawArea::ShowCaptions() {
    for (size_t i = 0; i < captions_.size(); ++i) {
        const PalletCaption& caption = drawing_.Captions[i];
        QLabel* label = captions_[i];
        label->setGeometry(ToQRect(caption.Rect));
        if (caption.FontSlot >= 0)
            label->setFont(fonts_.Font(caption.FontSlot));
        label->setText(DecodeText(caption.Text));
        label->setVisible(caption.Visible);
    }
}

void CKs_DrawArea::ShowDragImage(const std::vector<IntRect>& rects) {
    dragImage_ = rects;
    update();
}

void CKs_DrawArea::HideDragImage() {
    if (dragImage_.empty() && !landing_)
        return;
    dragImage_.clear();
    landing_.reset();
    update();
}

void CKs_DrawArea::ShowLanding(const std::optional<DropPreview>& landing) {
    if (landing == landing_)
        return;
    landing_ = landing;
    update();
}

void CKs_DrawArea::EditStep(const std::function<void(DrawingEdit&, Canvas&)>& step) {
    inStep_ = true;
    stepDrawing_.Clear();
    step(*editing_, stepDrawing_);
    inStep_ = false;
    if (!stepDrawing_.Items().empty())
        Paint([this](Canvas& canvas) { stepDrawing_.Replay(canvas); });
    stepDrawing_.Clear();
}

void CKs_DrawArea::SetEditing(DrawingEdit* editing) {
    editing_ = editing;
    touch_ =
        editing != nullptr ? std::make_unique<TouchGesture>(*editing, app_, drawing_) : nullptr;
}

bool CKs_DrawArea::event(QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::TouchBegin && type != QEvent::TouchUpdate && type != QEvent::TouchEnd &&
        type != QEvent::TouchCancel)
        return ImagePanel::event(event);
    if (touch_ == nullptr)
        return false;
    const auto* touch = static_cast<QTouchEvent*>(event);
    const QList<QEventPoint>& points = touch->points();
    const bool oneFinger = points.size() == 1 && type != QEvent::TouchCancel;
    const QPoint at = points.isEmpty() ? QPoint() : points.first().position().toPoint();
    EditStep([&](DrawingEdit&, Canvas& canvas) {
        if (!oneFinger)
            touch_->Cancel(canvas);
        else if (type == QEvent::TouchBegin)
            touch_->Begin(at.x(), at.y());
        else if (type == QEvent::TouchUpdate)
            touch_->Update(canvas, at.x(), at.y());
        else
            touch_->End(canvas, at.x(), at.y());
    });
    if (touch_->WaitingForHold()) {
        if (type == QEvent::TouchBegin)
            hold_->start();
    } else {
        hold_->stop();
    }
    event->accept();
    return true;
}

void CKs_DrawArea::mousePressEvent(QMouseEvent* event) {
    if (editing_ == nullptr || event->button() != Qt::LeftButton) {
        ImagePanel::mousePressEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    EditStep([&](DrawingEdit& edit, Canvas& canvas) { edit.Press(canvas, at.x(), at.y(), shift); });
}

void CKs_DrawArea::mouseMoveEvent(QMouseEvent* event) {
    if (editing_ == nullptr) {
        ImagePanel::mouseMoveEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    // The left button alone, with neither Shift nor Control held.
    const bool leftOnly = event->buttons() == Qt::LeftButton &&
                          (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) == 0;
    EditStep(
        [&](DrawingEdit& edit, Canvas& canvas) { edit.Move(canvas, at.x(), at.y(), leftOnly); });
}

void CKs_DrawArea::mouseReleaseEvent(QMouseEvent* event) {
    if (editing_ == nullptr || event->button() != Qt::LeftButton) {
        ImagePanel::mouseReleaseEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    EditStep([&](DrawingEdit& edit, Canvas& canvas) { edit.Release(canvas, at.x(), at.y()); });
}

void CKs_DrawArea::paintEvent(QPaintEvent* event) {
    ImagePanel::paintEvent(event);
    const std::vector<IntRect>& outlines =
        dragImage_.empty() && refusedShown_ ? refused_ : dragImage_;
    if (outlines.empty())
        return;
    QPainter painter(this);
    if (!dragImage_.empty())
        DrawLanding(painter);
    // A red line in a white border: it stands out on the pallet, on stacks of every colour and
    // on the background alike.
    DrawOutlines(painter, outlines, kDragImageHalo, kDragImageHaloWidth);
    DrawOutlines(painter, outlines, kDragImageColour, kDragImageWidth);
}

void CKs_DrawArea::DrawLanding(QPainter& painter) const {
    if (!landing_)
        return;
    const Rgb c = drawing_.Colours().Landing;
    if (landing_->Refused) {
        // No: a cross over each outline of the drag, in its own red on the white border.
        for (const auto& [colour, width] : {std::pair{kDragImageHalo, kDragImageHaloWidth},
                                            {kDragImageColour, kDragImageWidth}}) {
            painter.setPen(QPen(QColor(colour.R, colour.G, colour.B), width));
            for (const IntRect& r : dragImage_) {
                painter.drawLine(r.Left, r.Top, r.Right, r.Bottom);
                painter.drawLine(r.Left, r.Bottom, r.Right, r.Top);
            }
        }
        return;
    }
    QColor fill(c.R, c.G, c.B);
    fill.setAlpha(kLandingFillAlpha);
    for (const IntRect& r : landing_->Landing)
        painter.fillRect(QRect(QPoint(r.Left, r.Top), QPoint(r.Right, r.Bottom)), fill);
    DrawOutlines(painter, landing_->Landing, c, kLandingWidth);
}

void CKs_DrawArea::DrawOutlines(QPainter& painter, const std::vector<IntRect>& rects, Rgb colour,
                                int width) {
    QPen pen(QColor(colour.R, colour.G, colour.B), width);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    for (const IntRect& r : rects)
        painter.drawRect(QRect(QPoint(r.Left, r.Top), QPoint(r.Right, r.Bottom)));
}

}  // namespace kesto
