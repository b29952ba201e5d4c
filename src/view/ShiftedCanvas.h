// A canvas that passes everything on to another one moved by (dx, dy): a drawing keeps its
// own coordinates (starting at 0, 0) wherever a page puts it.
#pragma once

#include "view/Canvas.h"

namespace kesto {

class ShiftedCanvas : public Canvas {
  public:
    ShiftedCanvas(Canvas& target, int32_t dx, int32_t dy) : target_(target), dx_(dx), dy_(dy) {}
    void FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) override;
    void DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill, Rgb pen) override;
    void DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                      int32_t width) override;
    void DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                   const IntRect& rect, Rgb colour) override;
    void SetClip(const std::optional<IntRect>& clip) override;

  private:
    IntRect Shift(const IntRect& r) const;
    IntPoint Shift(IntPoint p) const;

    Canvas& target_;
    int32_t dx_;
    int32_t dy_;
};

}  // namespace kesto
