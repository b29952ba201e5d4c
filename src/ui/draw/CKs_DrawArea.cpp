#include "ui/draw/CKs_DrawArea.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleHints>
#include <QTimer>
#include <QTouchEvent>
#include <QWheelEvent>
#include <cmath>

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
// A wheel notch is 120 eighths of a degree; a finer wheel zooms in smaller steps.
constexpr double kWheelNotch = 120;
// The overview: a light card, the pallet in its frame colour, the part shown outlined.
constexpr Rgb kOverviewCard{255, 255, 255};
constexpr int kOverviewCardAlpha = 210;
constexpr Rgb kOverviewShown{0, 0, 160};
constexpr int kOverviewShownWidth = 2;

IntPoint Centre(const QPointF& a, const QPointF& b) {
    const QPoint c = ((a + b) / 2).toPoint();
    return IntPoint{c.x(), c.y()};
}

IntPoint At(const QMouseEvent& event) {
    const QPoint p = event.position().toPoint();
    return IntPoint{p.x(), p.y()};
}

double Spread(const QPointF& a, const QPointF& b) {
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

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

void CKs_DrawArea::SetZoom(ViewZoom* zoom, std::function<void(ChangeSet)> present) {
    zoom_ = zoom;
    present_ = std::move(present);
}

bool CKs_DrawArea::CanZoom() const {
    return zoom_ != nullptr && (editing_ == nullptr || !editing_->DragInProgress());
}

void CKs_DrawArea::Zoomed(ChangeSet changed) {
    if (changed && present_)
        present_(changed);
}

bool CKs_DrawArea::OnBackground(const QPoint& at) const {
    for (const HaichiInfo& h : app_.HaichiList) {
        const std::optional<IntRect> r = drawing_.ScreenRect(h);
        if (r && Contains(*r, at.x(), at.y()))
            return false;
    }
    return true;
}

bool CKs_DrawArea::Pinch(const QTouchEvent& touch) {
    const QEvent::Type type = touch.type();
    const QList<QEventPoint>& points = touch.points();

    int held = 0;
    for (const QEventPoint& p : points)
        held += p.state() != QEventPoint::Released ? 1 : 0;
    if (pinching_) {
        if (held >= 2 && type == QEvent::TouchUpdate) {
            const double spread = Spread(points[0].position(), points[1].position());
            if (pinchSpread_ > 0 && spread > 0)
                Zoomed(zoom_->Follow(Centre(points[0].position(), points[1].position()),
                                     spread / pinchSpread_));
        } else {
            pinching_ = false;
            pinchEnded_ = true;
            Zoomed(zoom_->End());
        }
    } else if (held >= 2 && CanZoom() && points.size() >= 2) {
        // A drag the first finger began is let go; the two fingers zoom from here.
        EditStep([this](DrawingEdit&, Canvas& canvas) { touch_->Cancel(canvas); });
        hold_->stop();
        pinching_ = true;
        pinchSpread_ = Spread(points[0].position(), points[1].position());
        zoom_->Begin(Centre(points[0].position(), points[1].position()));
    }
    if (type == QEvent::TouchEnd || type == QEvent::TouchCancel) {
        const bool was = pinching_ || pinchEnded_;
        if (pinching_)
            Zoomed(zoom_->End());
        pinching_ = pinchEnded_ = false;
        return was;
    }
    return pinching_ || pinchEnded_;
}

bool CKs_DrawArea::event(QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::TouchBegin && type != QEvent::TouchUpdate && type != QEvent::TouchEnd &&
        type != QEvent::TouchCancel)
        return ImagePanel::event(event);
    if (touch_ == nullptr)
        return false;
    const auto* touch = static_cast<QTouchEvent*>(event);
    if (zoom_ != nullptr && Pinch(*touch)) {
        event->accept();
        return true;
    }
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
    const bool pan =
        event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && spaceHeld_);
    if (pan && CanZoom() && panButton_ == Qt::NoButton) {
        zoom_->Begin(At(*event));
        panButton_ = event->button();
        setCursor(Qt::ClosedHandCursor);
        event->accept();
        return;
    }
    if (panButton_ != Qt::NoButton)
        return;
    if (editing_ == nullptr || event->button() != Qt::LeftButton) {
        ImagePanel::mousePressEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    EditStep([&](DrawingEdit& edit, Canvas& canvas) { edit.Press(canvas, at.x(), at.y(), shift); });
}

void CKs_DrawArea::mouseMoveEvent(QMouseEvent* event) {
    if (panButton_ != Qt::NoButton) {
        Zoomed(zoom_->Follow(At(*event)));
        return;
    }
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
    if (panButton_ != Qt::NoButton) {
        if (event->button() == panButton_) {
            panButton_ = Qt::NoButton;
            setCursor(spaceHeld_ ? Qt::OpenHandCursor : Qt::ArrowCursor);
            Zoomed(zoom_->End());
        }
        return;
    }
    if (editing_ == nullptr || event->button() != Qt::LeftButton) {
        ImagePanel::mouseReleaseEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    EditStep([&](DrawingEdit& edit, Canvas& canvas) { edit.Release(canvas, at.x(), at.y()); });
}

void CKs_DrawArea::mouseDoubleClickEvent(QMouseEvent* event) {
    // On the background a double click shows the whole pallet; on a stack it is a press. The
    // second press has begun a rubber band there, which the double click lets go.
    if (event->button() == Qt::LeftButton && !spaceHeld_ && zoom_ != nullptr &&
        editing_ != nullptr && drawing_.Shown().Zoom() &&
        OnBackground(event->position().toPoint())) {
        EditStep([](DrawingEdit& edit, Canvas& canvas) { edit.AbandonDrag(canvas); });
        Zoomed(zoom_->Whole());
        event->accept();
        return;
    }
    ImagePanel::mouseDoubleClickEvent(event);
}

void CKs_DrawArea::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier) || !CanZoom()) {
        ImagePanel::wheelEvent(event);
        return;
    }
    // The keys follow the zoom (+, -, 0, the space bar), also for a wheel the platform did not
    // send (a replay, a test), which the focus policy does not see.
    if ((focusPolicy() & Qt::WheelFocus) == Qt::WheelFocus)
        setFocus(Qt::MouseFocusReason);
    const double notches = event->angleDelta().y() / kWheelNotch;
    const QPoint at = event->position().toPoint();
    Zoomed(zoom_->ZoomBy(std::pow(kZoomStep, notches), IntPoint{at.x(), at.y()}));
    event->accept();
}

void CKs_DrawArea::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || zoom_ == nullptr) {
        ImagePanel::keyPressEvent(event);
        return;
    }
    // Held, the space bar makes the left button pan.
    if (!event->isAutoRepeat() && !spaceHeld_) {
        spaceHeld_ = true;
        if (panButton_ == Qt::NoButton)
            setCursor(Qt::OpenHandCursor);
    }
    event->accept();
}

void CKs_DrawArea::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space || zoom_ == nullptr) {
        ImagePanel::keyReleaseEvent(event);
        return;
    }
    if (!event->isAutoRepeat()) {
        spaceHeld_ = false;
        if (panButton_ == Qt::NoButton)
            setCursor(Qt::ArrowCursor);
    }
    event->accept();
}

void CKs_DrawArea::paintEvent(QPaintEvent* event) {
    ImagePanel::paintEvent(event);
    const std::vector<IntRect>& outlines =
        dragImage_.empty() && refusedShown_ ? refused_ : dragImage_;
    const std::optional<OverviewMap> overview = Overview(drawing_);
    if (outlines.empty() && !overview)
        return;
    QPainter painter(this);
    DrawOverview(painter);
    if (outlines.empty())
        return;
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

void CKs_DrawArea::DrawOverview(QPainter& painter) const {
    const std::optional<OverviewMap> map = Overview(drawing_);
    if (!map)
        return;
    QColor card(kOverviewCard.R, kOverviewCard.G, kOverviewCard.B);
    card.setAlpha(kOverviewCardAlpha);
    painter.fillRect(ToQRect(map->Whole), card);
    const Rgb frame = drawing_.Colours().PalletFrame;
    painter.fillRect(ToQRect(map->Pallet), QColor(frame.R, frame.G, frame.B));
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(ToQRect(map->Whole).adjusted(0, 0, -1, -1));
    DrawOutlines(painter, {map->Shown}, kOverviewShown, kOverviewShownWidth);
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
