#include "sheet/SheetTable.h"

#include <algorithm>

#include "support/TextColumns.h"

namespace kesto {

namespace {

constexpr int32_t kPadding = 8;    // left and right of a cell's text
constexpr int32_t kLineGap = 4;    // between the lines of a row
constexpr int32_t kRowMargin = 6;  // above and below a row's lines
constexpr size_t kMostLines = 3;   // of a cell that runs on
constexpr int32_t kRuleWidth = 2;

int32_t LineStep(const SheetFont& font) {
    return font.Height + kLineGap;
}

// The most bytes of a line that surely fit width pixels.
size_t BytesWithin(int32_t width, int32_t fontHeight) {
    const int32_t perByte = std::max(1, TextWidthAtMost("x", fontHeight));
    return static_cast<size_t>(std::max(1, width / perByte));
}

}  // namespace

std::vector<std::string> WrapText(const std::string& text, int32_t width, int32_t fontHeight,
                                  size_t count) {
    const size_t most = BytesWithin(width, fontHeight);
    std::vector<std::string> lines;
    std::string rest = text;
    while (!rest.empty() && lines.size() < count) {
        std::string line = CutToBytes(rest, most);
        if (line.empty())
            line = CutToBytes(rest, most + 2);  // one wide character wider than the column
        const bool last = lines.size() + 1 == count;
        if (line.size() < rest.size() && rest[line.size()] != ' ' && !last) {
            // A word cut: the line's last blank breaks it instead, unless the line is one
            // word. Neither a Shift_JIS nor a UTF-8 character has a byte that is a blank.
            const size_t blank = line.rfind(' ');
            if (blank != std::string::npos && blank > 0)
                line.resize(blank);
        }
        rest.erase(0, line.size());
        while (!rest.empty() && rest.front() == ' ')
            rest.erase(0, 1);
        lines.push_back(line);
    }
    return lines;
}

SheetTable::SheetTable(std::vector<SheetColumn> columns) : columns_(std::move(columns)) {}

void SheetTable::AddRow(const std::vector<std::string>& cells) {
    std::vector<std::vector<std::string>>& row = rows_.emplace_back();
    for (size_t c = 0; c < columns_.size(); ++c) {
        const std::string text = c < cells.size() ? cells[c] : std::string();
        const SheetColumn& column = columns_[c];
        // A cell of one line is cut where it is painted, by the font's own widths.
        if (!column.Wraps) {
            row.push_back({text});
            continue;
        }
        row.push_back(
            WrapText(text, column.Width - 2 * kPadding, sheetfont::kText.Height, kMostLines));
    }
}

int32_t SheetTable::Width() const {
    int32_t width = 0;
    for (const SheetColumn& c : columns_)
        width += c.Width;
    return width;
}

int32_t SheetTable::TitleHeight() const {
    return LineStep(sheetfont::kBold) + 2 * kRowMargin;
}

int32_t SheetTable::RowHeight(size_t row) const {
    size_t lines = 1;
    for (const std::vector<std::string>& cell : rows_[row])
        lines = std::max(lines, cell.size());
    return static_cast<int32_t>(lines) * LineStep(sheetfont::kText) + 2 * kRowMargin;
}

namespace {

void DrawLine(Canvas& page, const std::string& text, const SheetFont& font, CellAlign align,
              int32_t left, int32_t width, int32_t top) {
    if (text.empty())
        return;
    const IntRect rect{left + kPadding, top, left + width - kPadding, top + LineStep(font) + 2};
    page.DrawLabel(align == CellAlign::Right ? LabelMode::Right : LabelMode::Left, text, font.Slot,
                   {rect.Left, rect.Top}, rect, sheetcolour::kInk);
}

void Rule(Canvas& page, int32_t left, int32_t right, int32_t y) {
    page.DrawLinePrim({left, y}, {right, y}, sheetcolour::kRule, PenStyle::Solid, kRuleWidth);
}

}  // namespace

SheetTable::Drawn SheetTable::Draw(Canvas& page, int32_t left, int32_t top, int32_t bottom,
                                   size_t first) const {
    const int32_t right = left + Width();
    int32_t y = top;
    page.FillRectangle({left, y, right, y + TitleHeight()}, sheetcolour::kTitleBand,
                       sheetcolour::kTitleBand);
    int32_t x = left;
    for (const SheetColumn& c : columns_) {
        DrawLine(page, c.Title, sheetfont::kBold, c.Align, x, c.Width, y + kRowMargin);
        x += c.Width;
    }
    y += TitleHeight();
    Rule(page, left, right, y);
    size_t row = first;
    for (; row < rows_.size(); ++row) {
        const int32_t height = RowHeight(row);
        if (y + height > bottom && row > first)
            break;
        if ((row - first) % 2 == 1)
            page.FillRectangle({left, y, right, y + height}, sheetcolour::kShadedRow,
                               sheetcolour::kShadedRow);
        x = left;
        for (size_t c = 0; c < columns_.size(); ++c) {
            const std::vector<std::string>& lines = rows_[row][c];
            for (size_t i = 0; i < lines.size(); ++i) {
                DrawLine(page, lines[i], sheetfont::kText, columns_[c].Align, x, columns_[c].Width,
                         y + kRowMargin + static_cast<int32_t>(i) * LineStep(sheetfont::kText));
            }
            x += columns_[c].Width;
        }
        y += height;
    }
    Rule(page, left, right, y);
    return Drawn{row, y + kRuleWidth};
}

}  // namespace kesto
