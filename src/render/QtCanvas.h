// The drawing primitives on a QPainter: the window's off-screen image, a PNG image or a PDF
// page all paint through this one class, so they show the same picture.
#pragma once

#include "render/FontTable.h"
#include "view/Canvas.h"

class QPainter;

namespace kesto {

class QtCanvas : public Canvas {
  public:
    // Paints with painter (which stays the caller's) in the fonts of fonts.
    QtCanvas(QPainter& painter, const FontTable& fonts);

    void FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) override;
    void DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill, Rgb pen) override;
    void DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                      int32_t width) override;
    void DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                   const IntRect& rect, Rgb colour) override;
    void SetClip(const std::optional<IntRect>& clip) override;

  private:
    QPainter& painter_;
    const FontTable& fonts_;
};

}  // namespace kesto
