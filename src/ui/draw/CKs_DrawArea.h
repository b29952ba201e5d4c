// The pallet drawing of the main window. The picture is worked out by PalletDrawing and
// painted into an off-screen image of the area's client size, so an expose never loses it;
// the four pallet captions are labels over the image's caption strips.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "render/FontTable.h"
#include "session/DrawingEdit.h"
#include "session/TouchGesture.h"
#include "session/ViewZoom.h"
#include "support/MessageFile.h"
#include "ui/draw/ImagePanel.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"

class QLabel;

class QPainter;
class QTouchEvent;
class QTimer;

namespace kesto {

class DrawingEdit;

// The drag image's and the rubber band's rectangles: a red line, 2 pixels wide, in a white
// border 2 pixels wide on either side.
inline constexpr Rgb kDragImageColour{255, 0, 0};
inline constexpr int kDragImageWidth = 2;
inline constexpr Rgb kDragImageHalo{255, 255, 255};
inline constexpr int kDragImageHaloWidth = 6;

class CKs_DrawArea : public ImagePanel {
    Q_OBJECT
  public:
    CKs_DrawArea(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                 const FontTable& fonts, QWidget* parent);

    // Moves to placement (the main window's client pixels), gives the drawing its client
    // rectangle, keeps its rectangle on the screen and starts a new image of the client size.
    void PlaceArea(const IntRect& placement);
    // Where the area stands on the screen (AreaWindowRect); the dialogs shown over the
    // drawing are placed by it.
    const IntRect& ScreenRect() const { return screenRect_; }
    // Draws the whole view again: background, pallets, blocks, stacks, captions.
    void Refresh();
    // Paints one drawing mode (highlight, back to normal, ...) over the picture.
    void DrawParts(DrawMode mode, int32_t x = 0, int32_t y = 0);
    // Forgets the rubber-band selection and the picks.
    // Runs draw on a canvas over the picture (a command's own drawing modes).
    void Draw(const std::function<void(Canvas&)>& draw) { Paint(draw); }

    PalletDrawing& Drawing() { return drawing_; }
    const PalletDrawing& Drawing() const { return drawing_; }

    // The editing that the left mouse button and one finger drive; none until the main window
    // connects it.
    void SetEditing(DrawingEdit* editing);
    // The zoom and pan that the wheel with Ctrl, the middle button, the space bar with the left
    // button, a double click on the background and two fingers drive; present shows what
    // each step changed. None until the main window connects it.
    void SetZoom(ViewZoom* zoom, std::function<void(ChangeSet)> present);
    // A pan or a pinch is under way.
    bool Panning() const { return zoom_ != nullptr && zoom_->Following(); }
    // The drag image (or the rubber band): drawn over the picture, never into it, so taking it
    // away leaves the picture as it was.
    void ShowDragImage(const std::vector<IntRect>& rects);
    // Takes the landing away too.
    void HideDragImage();
    const std::vector<IntRect>& DragImage() const { return dragImage_; }
    // Where the drag would land: the footprints filled lightly in the landing colour and
    // outlined in it, or a cross over the drag image when the release would be refused.
    void ShowLanding(const std::optional<DropPreview>& landing);
    const std::optional<DropPreview>& Landing() const { return landing_; }
    // A refused drop: its outline flashes where it was dropped and the status line says why,
    // each for a moment only.
    void ShowRefusal(const std::vector<IntRect>& rects, const QString& why);
    // The status line alone, for a while: something the operator should know that no drop did.
    // Takes back a refusal still shown (its outline and status line), when what it answered
    // is no longer the operator's last act.
    void ForgetRefusal();
    void ShowStatus(const QString& text);
    QLabel* StatusLine() const { return status_; }
    bool Flashing() const { return flashesLeft_ > 0; }

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // Touch: one finger through TouchGesture; a second finger lets a drag go.
    bool event(QEvent* event) override;
    static void DrawOutlines(QPainter& painter, const std::vector<IntRect>& rects, Rgb colour,
                             int width);
    void DrawLanding(QPainter& painter) const;
    // The overview of a zoomed view, in the plan's corner.
    void DrawOverview(QPainter& painter) const;

  private:
    void ShowCaptions();
    // Zoom steps are not taken while the left button carries a drag.
    bool CanZoom() const;
    void Zoomed(ChangeSet changed);
    // Two fingers on the drawing: a pinch that zooms and pans; false when it is not one.
    bool Pinch(const QTouchEvent& touch);
    // No stack is drawn at the point.
    bool OnBackground(const QPoint& at) const;
    // One mouse step of the editing. What it draws is kept and painted on the picture after
    // it, so that a Refresh in the middle of the step starts a fresh picture.
    void EditStep(const std::function<void(DrawingEdit&, Canvas&)>& step);

    CKestoApp& app_;
    IntRect screenRect_;
    const FontTable& fonts_;
    PalletDrawing drawing_;
    // Slots 1..4: controls 1045, 1048, 1046, 1047.
    std::array<QLabel*, 4> captions_{};
    DrawingEdit* editing_ = nullptr;
    std::unique_ptr<TouchGesture> touch_;
    QTimer* hold_ = nullptr;  // the long press
    std::vector<IntRect> dragImage_;
    std::optional<DropPreview> landing_;
    std::vector<IntRect> refused_;
    bool refusedShown_ = false;
    int flashesLeft_ = 0;
    QTimer* flash_ = nullptr;
    QTimer* statusEnd_ = nullptr;
    QLabel* status_ = nullptr;
    DisplayList stepDrawing_;
    bool inStep_ = false;
    ViewZoom* zoom_ = nullptr;
    std::function<void(ChangeSet)> present_;
    Qt::MouseButton panButton_ = Qt::NoButton;  // the button of a pan under way
    bool spaceHeld_ = false;
    bool pinching_ = false;    // two fingers are zooming
    bool pinchEnded_ = false;  // the fingers left after a pinch count for nothing more
    double pinchSpread_ = 0;   // the fingers' distance when the pinch began
};

}  // namespace kesto
