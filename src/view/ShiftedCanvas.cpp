#include "view/ShiftedCanvas.h"

namespace kesto {

void ShiftedCanvas::FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) {
    target_.FillRectangle(Shift(rect), fill, pen);
}

void ShiftedCanvas::DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill,
                                Rgb pen) {
    target_.DrawArcPrim(Shift(box), Shift(start), Shift(end), fill, pen);
}

void ShiftedCanvas::DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                                 int32_t width) {
    target_.DrawLinePrim(Shift(from), Shift(to), colour, style, width);
}

void ShiftedCanvas::DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot,
                              IntPoint at, const IntRect& rect, Rgb colour) {
    target_.DrawLabel(mode, text, fontSlot, Shift(at), Shift(rect), colour);
}

void ShiftedCanvas::SetClip(const std::optional<IntRect>& clip) {
    target_.SetClip(clip ? std::optional(Shift(*clip)) : std::nullopt);
}

IntRect ShiftedCanvas::Shift(const IntRect& r) const {
    return {r.Left + dx_, r.Top + dy_, r.Right + dx_, r.Bottom + dy_};
}

IntPoint ShiftedCanvas::Shift(IntPoint p) const {
    return {p.X + dx_, p.Y + dy_};
}

}  // namespace kesto
