// A canvas that keeps every primitive in order, so that a picture worked out in one program
// can be painted by another (kesto-batch hands the placement to the picture program this
// way) and tests can read back exactly what was drawn.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "view/Canvas.h"

namespace kesto {

// Clip: Rect clips what follows when Width is 1; Width 0 lifts the clip.
enum class PrimitiveKind : int32_t { Rectangle, Arc, Line, Label, Clip };

struct Primitive {
    PrimitiveKind Kind = PrimitiveKind::Rectangle;
    IntRect Rect{};  // the rectangle, the arc's box, or the label's rectangle
    IntPoint A{};    // the line's start, the arc's start ray, the label's point
    IntPoint B{};    // the line's end, the arc's end ray
    Rgb Fill{};      // rectangle and arc fill
    Rgb Pen{};       // rectangle and arc pen, line and text colour
    PenStyle Style = PenStyle::Solid;
    int32_t Width = 0;
    LabelMode Mode = LabelMode::Centred;
    int32_t FontSlot = 0;
    std::string Text;
    bool operator==(const Primitive&) const = default;
};

// A line of a picture file: its text with line feeds and carriage returns made blanks.
std::string OnePictureLine(std::string text);
// One line of a picture file without its line feed (and the carriage return of a CRLF
// file); false at the end of the input or on a line too long to be one of ours.
bool ReadPictureLine(std::istream& in, std::string& line);

class DisplayList : public Canvas {
  public:
    void FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) override;
    void DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill, Rgb pen) override;
    void DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                      int32_t width) override;
    void DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                   const IntRect& rect, Rgb colour) override;
    void SetClip(const std::optional<IntRect>& clip) override;

    const std::vector<Primitive>& Items() const { return items_; }
    void Clear() { items_.clear(); }
    // Paints every primitive, in order, on another canvas.
    void Replay(Canvas& canvas) const;
    // True when a surface that ends at area's edges shows the lines and arcs as one that goes
    // on beyond them does: where a line is cut decides where its dashes fall and which pixels
    // a slanting line takes. So every arc and every dashed or slanting line, with its pen's
    // width, lies inside area (its right and bottom edges excluded); a solid line along an
    // axis may cross them.
    bool StrokesCutAlike(const IntRect& area) const;

    // One primitive a line, text last (its bytes as they are, a line feed or carriage
    // return in it written as a blank).
    void Write(std::ostream& out) const;
    // Reads lines that Write wrote until a line "end"; nullopt on anything else.
    static std::optional<DisplayList> Read(std::istream& in);

  private:
    std::vector<Primitive> items_;
};

}  // namespace kesto
