#include "view/DisplayList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <istream>
#include <ostream>

namespace kesto {

namespace {

// Guards for files from elsewhere: no line or list may grow without bound.
constexpr size_t kMaxLineBytes = 65536;
constexpr size_t kMaxPrimitives = 4'000'000;
// Kind, rectangle, two points, fill, pen, style, width, mode, font slot.
constexpr size_t kFieldCount = 19;

bool ValidColour(int32_t v) {
    return v >= 0 && v <= 255;
}

Rgb ColourOf(const std::array<int32_t, kFieldCount>& f, size_t at) {
    return Rgb{static_cast<uint8_t>(f[at]), static_cast<uint8_t>(f[at + 1]),
               static_cast<uint8_t>(f[at + 2])};
}

// The numbers of a line, each followed by one blank or the end; pos is left after them.
bool ParseFields(const std::string& line, std::array<int32_t, kFieldCount>& f, size_t& pos) {
    const char* const begin = line.data();
    const char* const end = begin + line.size();
    const char* p = begin;
    for (size_t i = 0; i < kFieldCount; ++i) {
        if (i > 0) {
            if (p == end || *p != ' ')
                return false;
            ++p;
        }
        const auto [next, ec] = std::from_chars(p, end, f[i]);
        if (ec != std::errc() || next == p)
            return false;
        p = next;
    }
    pos = static_cast<size_t>(p - begin);
    return true;
}

bool ValidFields(const std::array<int32_t, kFieldCount>& f) {
    if (f[0] < 0 || f[0] > static_cast<int32_t>(PrimitiveKind::Clip))
        return false;
    for (size_t i = 9; i < 15; ++i) {
        if (!ValidColour(f[i]))
            return false;
    }
    const bool style = f[15] == static_cast<int32_t>(PenStyle::Solid) ||
                       f[15] == static_cast<int32_t>(PenStyle::Dotted);
    const bool mode = f[17] >= static_cast<int32_t>(LabelMode::Centred) &&
                      f[17] <= static_cast<int32_t>(LabelMode::Right);
    return style && f[16] >= 0 && mode && f[18] >= 0 && f[18] < kCanvasFontSlots;
}

std::optional<Primitive> ParsePrimitive(const std::string& line) {
    std::array<int32_t, kFieldCount> f{};
    size_t pos = 0;
    if (!ParseFields(line, f, pos) || !ValidFields(f))
        return std::nullopt;
    Primitive p;
    p.Kind = static_cast<PrimitiveKind>(f[0]);
    p.Rect = IntRect{f[1], f[2], f[3], f[4]};
    p.A = IntPoint{f[5], f[6]};
    p.B = IntPoint{f[7], f[8]};
    p.Fill = ColourOf(f, 9);
    p.Pen = ColourOf(f, 12);
    p.Style = static_cast<PenStyle>(f[15]);
    p.Width = f[16];
    p.Mode = static_cast<LabelMode>(f[17]);
    p.FontSlot = f[18];
    // Only a label has text, written after one blank (which an empty text still has).
    if (p.Kind != PrimitiveKind::Label)
        return pos == line.size() ? std::optional<Primitive>(p) : std::nullopt;
    if (pos == line.size() || line[pos] != ' ')
        return std::nullopt;
    p.Text = line.substr(pos + 1);
    return p;
}

// True when p, widened by margin on every side, lies inside area, its right and bottom edges
// excluded.
bool Inside(IntPoint p, const IntRect& area, int32_t margin) {
    return p.X - margin >= area.Left && p.X + margin < area.Right && p.Y - margin >= area.Top &&
           p.Y + margin < area.Bottom;
}

}  // namespace

std::string OnePictureLine(std::string text) {
    for (char& c : text) {
        if (c == '\n' || c == '\r')
            c = ' ';
    }
    return text;
}

bool ReadPictureLine(std::istream& in, std::string& line) {
    line.clear();
    char c = 0;
    bool any = false;
    while (in.get(c)) {
        any = true;
        if (c == '\n')
            break;
        if (line.size() >= kMaxLineBytes)
            return false;
        line.push_back(c);
    }
    if (!any)
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

void DisplayList::FillRectangle(const IntRect& rect, Rgb fill, Rgb pen) {
    Primitive p;
    p.Kind = PrimitiveKind::Rectangle;
    p.Rect = rect;
    p.Fill = fill;
    p.Pen = pen;
    items_.push_back(std::move(p));
}

void DisplayList::DrawArcPrim(const IntRect& box, IntPoint start, IntPoint end, Rgb fill, Rgb pen) {
    Primitive p;
    p.Kind = PrimitiveKind::Arc;
    p.Rect = box;
    p.A = start;
    p.B = end;
    p.Fill = fill;
    p.Pen = pen;
    items_.push_back(std::move(p));
}

void DisplayList::DrawLinePrim(IntPoint from, IntPoint to, Rgb colour, PenStyle style,
                               int32_t width) {
    Primitive p;
    p.Kind = PrimitiveKind::Line;
    p.A = from;
    p.B = to;
    p.Pen = colour;
    p.Style = style;
    p.Width = width;
    items_.push_back(std::move(p));
}

void DisplayList::DrawLabel(LabelMode mode, const std::string& text, int32_t fontSlot, IntPoint at,
                            const IntRect& rect, Rgb colour) {
    Primitive p;
    p.Kind = PrimitiveKind::Label;
    p.Mode = mode;
    p.Text = text;
    p.FontSlot = fontSlot;
    p.A = at;
    p.Rect = rect;
    p.Pen = colour;
    items_.push_back(std::move(p));
}

void DisplayList::SetClip(const std::optional<IntRect>& clip) {
    Primitive p;
    p.Kind = PrimitiveKind::Clip;
    p.Rect = clip.value_or(IntRect{});
    p.Width = clip ? 1 : 0;
    items_.push_back(std::move(p));
}

bool DisplayList::StrokesCutAlike(const IntRect& area) const {
    return std::all_of(items_.begin(), items_.end(), [&](const Primitive& p) {
        switch (p.Kind) {
            case PrimitiveKind::Line: {
                // A solid line along an axis loses whole rows or columns wherever it is cut.
                if (p.Style == PenStyle::Solid && (p.A.X == p.B.X || p.A.Y == p.B.Y))
                    return true;
                const int32_t margin = std::max(p.Width, 1);
                return Inside(p.A, area, margin) && Inside(p.B, area, margin);
            }
            case PrimitiveKind::Arc:
                return Inside({p.Rect.Left, p.Rect.Top}, area, 1) &&
                       Inside({p.Rect.Right, p.Rect.Bottom}, area, 1);
            default:
                return true;
        }
    });
}

void DisplayList::Replay(Canvas& canvas) const {
    for (const Primitive& p : items_) {
        switch (p.Kind) {
            case PrimitiveKind::Rectangle:
                canvas.FillRectangle(p.Rect, p.Fill, p.Pen);
                break;
            case PrimitiveKind::Arc:
                canvas.DrawArcPrim(p.Rect, p.A, p.B, p.Fill, p.Pen);
                break;
            case PrimitiveKind::Line:
                canvas.DrawLinePrim(p.A, p.B, p.Pen, p.Style, p.Width);
                break;
            case PrimitiveKind::Label:
                canvas.DrawLabel(p.Mode, p.Text, p.FontSlot, p.A, p.Rect, p.Pen);
                break;
            case PrimitiveKind::Clip:
                canvas.SetClip(p.Width != 0 ? std::optional(p.Rect) : std::nullopt);
                break;
        }
    }
}

void DisplayList::Write(std::ostream& out) const {
    for (const Primitive& p : items_) {
        const std::array<int32_t, kFieldCount> f{static_cast<int32_t>(p.Kind),
                                                 p.Rect.Left,
                                                 p.Rect.Top,
                                                 p.Rect.Right,
                                                 p.Rect.Bottom,
                                                 p.A.X,
                                                 p.A.Y,
                                                 p.B.X,
                                                 p.B.Y,
                                                 p.Fill.R,
                                                 p.Fill.G,
                                                 p.Fill.B,
                                                 p.Pen.R,
                                                 p.Pen.G,
                                                 p.Pen.B,
                                                 static_cast<int32_t>(p.Style),
                                                 p.Width,
                                                 static_cast<int32_t>(p.Mode),
                                                 p.FontSlot};
        for (size_t i = 0; i < f.size(); ++i)
            out << (i > 0 ? " " : "") << f[i];
        if (p.Kind == PrimitiveKind::Label)
            out << ' ' << OnePictureLine(p.Text);
        out << '\n';
    }
    out << "end\n";
}

std::optional<DisplayList> DisplayList::Read(std::istream& in) {
    DisplayList list;
    std::string line;
    while (ReadPictureLine(in, line)) {
        if (line == "end")
            return list;
        if (list.items_.size() >= kMaxPrimitives)
            return std::nullopt;
        std::optional<Primitive> p = ParsePrimitive(line);
        if (!p)
            return std::nullopt;
        list.items_.push_back(std::move(*p));
    }
    return std::nullopt;
}

}  // namespace kesto
