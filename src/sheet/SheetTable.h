// The tables of the sort sheet: columns of fixed width, a row of column titles, rows whose
// long texts are cut (or run on in further lines), drawn a page's worth at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "view/Canvas.h"

namespace kesto {

// A font of the sheet: its slot in the picture and its pixel height.
struct SheetFont {
    int32_t Slot = -1;
    int32_t Height = 0;
};

// The sort sheet's own fonts, in the picture's slots after the settings' five. On an A4
// page of 1684 pixels two pixels are about a point: the table reads at 11 points, the
// header's values and the stacks' numbers at 14 and 15.
namespace sheetfont {
inline constexpr SheetFont kText{5, 22};
inline constexpr SheetFont kBold{6, 22};
inline constexpr SheetFont kSmall{7, 16};
inline constexpr SheetFont kHeading{8, 28};
inline constexpr SheetFont kTag{9, 30};
}  // namespace sheetfont

// The sheet's grey tones besides the palette's.
namespace sheetcolour {
inline constexpr Rgb kInk{0, 0, 0};
inline constexpr Rgb kCaption{90, 90, 90};       // captions above the header's values
inline constexpr Rgb kTitleBand{222, 222, 222};  // behind the column titles
inline constexpr Rgb kShadedRow{243, 243, 243};  // every other row
inline constexpr Rgb kRule{40, 40, 40};          // lines under the titles and the last row
}  // namespace sheetcolour

// Up to count lines of text, each at most width pixels in a font of fontHeight: broken at
// blanks where it can, between characters where it must; the last line is cut.
std::vector<std::string> WrapText(const std::string& text, int32_t width, int32_t fontHeight,
                                  size_t count);

enum class CellAlign { Left, Right };

struct SheetColumn {
    std::string Title;
    int32_t Width = 0;  // pixels, padding included
    CellAlign Align = CellAlign::Left;
    bool Wraps = false;  // a long text runs on in up to three lines, else it ends at the edge
};

class SheetTable {
  public:
    explicit SheetTable(std::vector<SheetColumn> columns);

    // One row: a text per column (missing ones are empty).
    void AddRow(const std::vector<std::string>& cells);
    size_t Rows() const { return rows_.size(); }
    int32_t Width() const;
    int32_t TitleHeight() const;
    int32_t RowHeight(size_t row) const;
    // The cell's lines as they are drawn.
    const std::vector<std::string>& Lines(size_t row, size_t column) const {
        return rows_[row][column];
    }

    struct Drawn {
        size_t Next = 0;     // the first row not drawn
        int32_t Bottom = 0;  // the y below the last line drawn
    };
    // The titles and the rows from first on at (left, top), as many as fit above bottom (at
    // least one, so that a page always gets on).
    Drawn Draw(Canvas& page, int32_t left, int32_t top, int32_t bottom, size_t first) const;

  private:
    std::vector<SheetColumn> columns_;
    std::vector<std::vector<std::vector<std::string>>> rows_;  // row, column, lines
};

}  // namespace kesto
