// A child panel that shows an off-screen image of its client size: the drawing area and the
// part panels draw into it and the paint handler only copies it, so an expose never loses
// the picture.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "app/Rect.h"
#include "render/FontTable.h"
#include "view/Canvas.h"

namespace kesto {

class ImagePanel : public QWidget {
    Q_OBJECT
  public:
    ImagePanel(const FontTable& fonts, QWidget* parent);

    const QImage& Image() const { return image_; }

  protected:
    // Moves the panel to placement (shown) and starts a new image of its size; returns the
    // client rectangle, left and top 0.
    IntRect PlaceAt(const IntRect& placement);
    // Runs draw on a canvas over the image, then schedules the copy to the screen.
    void Paint(const std::function<void(Canvas&)>& draw);
    // Fills the image with the window's background, as an empty child window shows it.
    void ClearImage();

    void paintEvent(QPaintEvent* event) override;

  private:
    const FontTable& fonts_;
    QImage image_;
};

}  // namespace kesto
