// printf-style formatting of a line of text into a string of any length, and a builder that
// gives the same bytes for the few conversions the output files use without parsing a format.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace kesto {

#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string
FormatText(const char* format, ...);

// A length as the operator reads it: at most two decimals, no trailing zeros ("12.5", "1200").
std::string ShortLength(double v);

// The text with %1 .. %9 replaced by figures 1 to 9 (a missing figure by nothing).
std::string FillFigures(const std::string& text, const std::vector<std::string>& figures);

// Appends to one string what printf's conversions give:
//   Str(s)                    "%s" (a C string: up to the first NUL byte)
//   Str(s, width, prec, left) "%W.Ps" / "%-W.Ps" (prec < 0: none)
//   Int(v, width, digits, left) "%W.Dd" / "%-W.Dd"
//   Fixed(v, width, prec)     "%W.Plf", through std::to_chars: both round the exact binary
//                             value to the nearest, ties to even
//   Length(v)                 what ShortLength(v) gives
//   Figures(text, figures)    what FillFigures(text, figures) gives
class TextBuilder {
  public:
    // Room for a line of the files at once: a line grows without moving.
    TextBuilder() { text_.reserve(kLineRoom); }

    TextBuilder& Char(char c) {
        text_ += c;
        return *this;
    }
    TextBuilder& Str(const std::string& s);
    // A literal goes in as it is, without a string made of it first.
    TextBuilder& Str(const char* s) {
        text_.append(s);
        return *this;
    }
    TextBuilder& Str(const std::string& s, int width, int precision, bool left);
    TextBuilder& Int(int64_t v, int width = 0, int digits = 1, bool left = false);
    TextBuilder& Fixed(double v, int width, int precision);
    TextBuilder& Length(double v);
    TextBuilder& Figures(std::string_view text, std::initializer_list<std::string_view> figures);
    // Every byte of s, NUL bytes too.
    TextBuilder& Bytes(std::string_view s) {
        text_.append(s);
        return *this;
    }
    // Keeps of what was appended from position from on only the bytes before its first NUL:
    // the text that Str would have appended had it been given all of it as one string.
    void CutAtNul(size_t from);

    const std::string& Text() const { return text_; }
    std::string Take() { return std::move(text_); }
    void Clear() { text_.clear(); }
    // Keeps the first bytes of the text, drops the rest.
    void Keep(size_t bytes) { text_.resize(std::min(bytes, text_.size())); }
    void Reserve(size_t bytes) { text_.reserve(bytes); }

  private:
    // Appends [begin, end) padded with blanks to width, on the left unless left is set.
    void Padded(const char* begin, const char* end, int width, bool left);

    static constexpr size_t kLineRoom = 256;
    std::string text_;
};

// A text with the figures %1 .. %9 in it, taken apart once for many lines: AppendTo gives
// what FillFigures gives, each figure appended in place by fill(number, out), number 0 for %1.
// fill appends nothing for a number it has no figure for.
class FigureText {
  public:
    explicit FigureText(std::string text);

    template <class Fill>
    void AppendTo(TextBuilder& out, Fill&& fill) const {
        for (const Piece& piece : pieces_) {
            if (piece.Figure < 0)
                out.Bytes(std::string_view(text_).substr(piece.Begin, piece.Length));
            else
                fill(piece.Figure, out);
        }
    }

  private:
    struct Piece {
        size_t Begin = 0;  // a run of the text's own bytes
        size_t Length = 0;
        int Figure = -1;  // or a figure's number
    };

    std::string text_;
    std::vector<Piece> pieces_;
};

}  // namespace kesto
