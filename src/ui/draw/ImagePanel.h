// A child panel that shows an off-screen image of its client size: the drawing area and the
// part panels draw into it and the paint handler only copies it, so an expose never loses
// the picture. What is drawn is recorded first and painted into the image when the panel is
// next shown or its image read: a view switch and a toggle in one command paint one picture.
// The panel's very first picture goes straight to the screen instead, so that the window's
// start does not wait for an image to be filled and copied; the image is made at the next
// paint or read.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "app/Rect.h"
#include "render/FontTable.h"
#include "view/Canvas.h"
#include "view/DisplayList.h"

namespace kesto {

class ImagePanel : public QWidget {
    Q_OBJECT
  public:
    ImagePanel(const FontTable& fonts, QWidget* parent);

    // The picture as the panel shows it, with everything drawn so far painted in.
    const QImage& Image() const;

  protected:
    // Moves the panel to placement (shown) and starts a new image of its size; returns the
    // client rectangle, left and top 0.
    IntRect PlaceAt(const IntRect& placement);
    // Runs draw on a canvas over the image (recorded, painted in by the next copy to the
    // screen), then schedules that copy.
    void Paint(const std::function<void(Canvas&)>& draw);
    // Fills the image with the window's background, as an empty child window shows it; what was
    // drawn and not yet painted in is dropped, as it would be painted over.
    void ClearImage();

    void paintEvent(QPaintEvent* event) override;

  private:
    // Paints what was recorded since the last copy into the image.
    void PaintPending() const;
    // The first picture, before any image of it was made: painted onto the screen as the image
    // would have shown it. False when it is not that picture.
    bool PaintStraight();

    const FontTable& fonts_;
    // The image and what is still to be painted into it change when the picture is read, not
    // when it is drawn: reading it is what paints it.
    mutable QImage image_;
    mutable DisplayList pending_;
    mutable bool clearPending_ = false;
    // The first picture has been painted straight to the screen: later ones use the image.
    bool shownStraight_ = false;
};

}  // namespace kesto
