#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "view/PalletDrawing.h"

namespace kesto {

namespace {

// The block grid of a pallet as the set-up lays it out.
struct Grid {
    double W = 0, L = 0;    // pallet width (x) and length (y)
    double M0 = 0, M1 = 0;  // margins
    double Bw = 0, Bl = 0;  // cell width and length
    double Gx = 0, Gy = 0;  // gaps
    int32_t Columns = 0, Rows = 0;
};

Grid GridOf(const PalletInfo& p) {
    return Grid{p.LengthX,   p.LengthY,  p.MarginX,  p.MarginY, p.CellWidth,
                p.CellDepth, p.CellGapX, p.CellGapY, p.CellsX,  p.CellsY};
}

// The right edge of the first column. Counted from the left (corners 0 and 1) the grid still
// keeps its right margin, so the first column is the leftmost one that fits.
double ColumnOrigin(const Grid& g, int32_t corner) {
    double ox = g.M0;
    if (corner != 0 && corner != 1)
        return ox;
    double previous = 0;
    for (int32_t k = 0; k < g.Columns; ++k) {
        const double v = g.W - ox - k * g.Bw - k * g.Gx;
        if (g.Bw + kLengthTolerance >= v)
            return previous > 0 ? previous : ox;
        previous = v;
    }
    return g.Columns > 0 ? previous : ox;
}

// The front edge of the first row. Counted from the back (corners 1 and 2) the grid still
// starts at the front margin, so the first row is the backmost one that fits.
double RowOrigin(const Grid& g, int32_t corner) {
    double oy = g.M1;
    if (corner != 1 && corner != 2)
        return oy;
    double previous = 0;
    for (int32_t k = 0; k < g.Rows; ++k) {
        const double v = k * g.Bl + oy + k * g.Gy;
        if (v > g.L - g.Bl - kLengthTolerance)
            return previous > 0 ? g.L - previous : oy;
        previous = v;
    }
    return g.Rows > 0 ? g.L - previous : oy;
}

// Calls cell(x, y, i, j) for every existing cell (right edge x, front edge y; column i, row j),
// columns outer.
template <class F>
void ForEachCell(const Grid& g, int32_t corner, F&& cell) {
    const double ox = ColumnOrigin(g, corner);
    const double oy = RowOrigin(g, corner);
    const bool fromLeft = corner == 0 || corner == 1;
    const bool fromFront = corner == 0 || corner == 3;
    for (int32_t i = 0; i < g.Columns; ++i) {
        const double x = fromLeft ? i * g.Bw + ox + i * g.Gx : g.W - ox - i * g.Bw - i * g.Gx;
        if (fromLeft ? !(x <= g.W - g.M0 + kLengthTolerance) : !(x > g.Bw))
            continue;
        for (int32_t j = 0; j < g.Rows; ++j) {
            const double y = fromFront ? j * g.Bl + oy + j * g.Gy : g.L - oy - j * g.Bl - j * g.Gy;
            if (fromFront ? !(y <= g.L - g.Bl) : !(y > g.M1 - kLengthTolerance))
                continue;
            cell(x, y, i, j);
        }
    }
}

bool Contains(const BlockInfo& b, double left, double front, double right, double back) {
    return b.MinX - kLengthTolerance < left && b.MinY - kLengthTolerance < front &&
           b.MaxX + kLengthTolerance >= right && b.MaxY + kLengthTolerance >= back;
}

// The block each cell of the grid shows: the first of blocks (in their order) that contains
// it, -1 for none; indexed [column * Rows + row]. A block contains a run of columns and a run
// of rows, found by halving, so a pallet of n cells and n blocks costs n log n, not n squared.
std::vector<int32_t> CellOwners(const Grid& g, int32_t corner, const std::vector<int32_t>& blocks,
                                const BlockTable& table) {
    std::vector<std::pair<double, int32_t>> columns, rows;  // edge, index; sorted by edge
    // The pallet's cells are no more than the block table holds, which is bounded.
    const auto columnCount = static_cast<size_t>(std::max(g.Columns, 0));
    const auto rowCount = static_cast<size_t>(std::max(g.Rows, 0));
    std::vector<bool> seenColumn(columnCount);
    std::vector<bool> seenRow(rowCount);
    ForEachCell(g, corner, [&](double x, double y, int32_t i, int32_t j) {
        if (!seenColumn[static_cast<size_t>(i)]) {
            seenColumn[static_cast<size_t>(i)] = true;
            columns.emplace_back(x, i);
        }
        if (!seenRow[static_cast<size_t>(j)]) {
            seenRow[static_cast<size_t>(j)] = true;
            rows.emplace_back(y, j);
        }
    });
    std::sort(columns.begin(), columns.end());
    std::sort(rows.begin(), rows.end());
    std::vector<int32_t> owner(columnCount * rowCount, -1);
    for (const int32_t e : blocks) {
        const BlockInfo& b = table[e];
        // The tests of Contains, each monotone in the cell's edge.
        const auto c0 = std::partition_point(columns.begin(), columns.end(), [&](const auto& c) {
            return !(b.MinX - kLengthTolerance < c.first - g.Bw);
        });
        const auto c1 = std::partition_point(
            c0, columns.end(), [&](const auto& c) { return b.MaxX + kLengthTolerance >= c.first; });
        const auto r0 = std::partition_point(rows.begin(), rows.end(), [&](const auto& r) {
            return !(b.MinY - kLengthTolerance < r.first);
        });
        const auto r1 = std::partition_point(r0, rows.end(), [&](const auto& r) {
            return b.MaxY + kLengthTolerance >= r.first + g.Bl;
        });
        for (auto c = c0; c != c1; ++c) {
            for (auto r = r0; r != r1; ++r) {
                int32_t& cell = owner[static_cast<size_t>(c->second) * static_cast<size_t>(g.Rows) +
                                      static_cast<size_t>(r->second)];
                if (cell < 0)
                    cell = e;
            }
        }
    }
    return owner;
}

struct Zone {
    double X0, Y0, X1, Y1;
};

// The rectangle the blocks span, in lengths; none without a block.
std::optional<Zone> ZoneOf(const BlockTable& table, const std::vector<int32_t>& blocks) {
    if (blocks.empty())
        return std::nullopt;
    const BlockInfo& first = table[blocks.front()];
    Zone zone{first.MinX, first.MinY, first.MaxX, first.MaxY};
    for (const int32_t e : blocks) {
        const BlockInfo& b = table[e];
        zone = {std::min(zone.X0, b.MinX), std::min(zone.Y0, b.MinY), std::max(zone.X1, b.MaxX),
                std::max(zone.Y1, b.MaxY)};
    }
    return zone;
}

}  // namespace

void PalletDrawing::DrawBlocks(Canvas& canvas) {
    const Grid g = GridOf(ViewPallet);
    const int32_t count = app_.Blocks.Filled();
    if (BlockRects.size() < static_cast<size_t>(count))
        BlockRects.resize(static_cast<size_t>(count));
    for (const Slot& slot : ShownSlots()) {
        std::vector<int32_t> blocks;
        for (const int32_t e : app_.Blocks.OfPallet(shown_.Koutei(), slot.PalletNo))
            blocks.push_back(e);
        ShadeOutsideZone(canvas, slot, blocks);
        const std::vector<int32_t> owner =
            CellOwners(g, app_.Settings.StartCorner, blocks, app_.Blocks);
        ForEachCell(g, app_.Settings.StartCorner, [&](double x, double y, int32_t i, int32_t j) {
            const int32_t e = owner[static_cast<size_t>(i) * static_cast<size_t>(g.Rows) +
                                    static_cast<size_t>(j)];
            if (e < 0)
                return;
            const IntPoint a = WorldToScreen(x - g.Bw, y);
            const IntPoint b = WorldToScreen(x, y + g.Bl);
            const int32_t dx = OriginDX + slot.Offset.X;
            const int32_t dy = OriginDY + slot.Offset.Y;
            const IntRect r{a.X + dx, b.Y + dy, b.X + dx, a.Y + dy};
            if (shown_.StoredBlockDraw() != 0) {
                const bool marked = (app_.Blocks[e].CornerMask & 0x0F) != 0;
                canvas.FillRectangle(r, marked ? palette_.BlockMarked : palette_.BlockPlain,
                                     palette_.BlockPen);
            }
            // Stored whether drawn or not: the drops need the cells either way.
            BlockRects[static_cast<size_t>(e)] = r;
        });
    }
    if (static_cast<int64_t>(g.Columns) * g.Rows < 100)
        DrawGridMarks(canvas);
    DrawRackLines(canvas);
}

void PalletDrawing::ShadeOutsideZone(Canvas& canvas, const Slot& slot,
                                     const std::vector<int32_t>& blocks) const {
    const auto at = static_cast<size_t>(slot.Index);
    const std::optional<Zone> zone = ZoneOf(app_.Blocks, blocks);
    if (palette_.OutsideZone == palette_.PalletFrame || at >= PalletRect.size() || !zone)
        return;
    // Inside the frame's outline, which stays as it is.
    const IntRect& f = PalletRect[at];
    const IntRect frame{f.Left + 1, f.Top + 1, f.Right - 1, f.Bottom - 1};
    const IntPoint a = WorldToScreen(zone->X0, zone->Y0);
    const IntPoint b = WorldToScreen(zone->X1, zone->Y1);
    const int32_t dx = OriginDX + slot.Offset.X;
    const int32_t dy = OriginDY + slot.Offset.Y;
    const auto clampX = [&](int32_t x) { return std::clamp(x, frame.Left, frame.Right); };
    const auto clampY = [&](int32_t y) { return std::clamp(y, frame.Top, frame.Bottom); };
    const IntRect z{clampX(a.X + dx), clampY(b.Y + dy), clampX(b.X + dx), clampY(a.Y + dy)};
    const Rgb shade = palette_.OutsideZone;
    for (const IntRect& strip : {IntRect{frame.Left, frame.Top, frame.Right, z.Top},
                                 IntRect{frame.Left, z.Bottom, frame.Right, frame.Bottom},
                                 IntRect{frame.Left, z.Top, z.Left, z.Bottom},
                                 IntRect{z.Right, z.Top, frame.Right, z.Bottom}}) {
        if (strip.Right > strip.Left && strip.Bottom > strip.Top)
            canvas.FillRectangle(strip, shade, shade);
    }
}

IntRect PalletDrawing::LocateBlock(int32_t index) const {
    IntRect found{-1, -1, -1, -1};
    const int32_t count = app_.Blocks.Filled();
    if (!ViewReady() || index < 0 || index >= count)
        return found;
    const Grid g = GridOf(ViewPallet);
    bool done = false;
    for (const Slot& slot : ShownSlots()) {
        ForEachCell(g, app_.Settings.StartCorner, [&](double x, double y, int32_t, int32_t) {
            if (done)
                return;
            const BlockInfo& block = app_.Blocks[index];
            if (block.KouteiNo != shown_.Koutei() || block.PalletNo != slot.PalletNo ||
                !Contains(block, x - g.Bw, y, x, y + g.Bl))
                return;
            const IntPoint a = WorldToScreen(x - g.Bw, y);
            const IntPoint b = WorldToScreen(x, y + g.Bl);
            const int32_t dx = OriginDX + slot.Offset.X;
            const int32_t dy = OriginDY + slot.Offset.Y;
            found = IntRect{a.X + dx, b.Y + dy, b.X + dx, a.Y + dy};
            done = true;
        });
        if (done)
            break;
    }
    return found;
}

}  // namespace kesto

namespace kesto {

void PalletDrawing::DrawGridMarks(Canvas& canvas) const {
    if (!shown_.Grid())
        return;
    const Grid g = GridOf(ViewPallet);
    const Rgb black = palette_.GridMark;
    for (const Slot& slot : ShownSlots()) {
        const int32_t dx = OriginDX + slot.Offset.X;
        const int32_t dy = OriginDY + slot.Offset.Y;
        // Always laid out from the right and the front, whatever the start corner.
        for (int32_t i = 0; i < g.Columns; ++i) {
            const double x = g.W - g.M0 - i * g.Bw - i * g.Gx;
            if (!(g.Bw < x))
                continue;
            for (int32_t j = 0; j < g.Rows; ++j) {
                const double y = j * g.Bl + g.M1 + j * g.Gy;
                if (!(g.L - g.Bl >= y))
                    continue;
                const IntPoint a = WorldToScreen(x - g.Bw, y);
                const IntPoint b = WorldToScreen(x, y + g.Bl);
                const int32_t left = a.X + dx, top = b.Y + dy, right = b.X + dx, bottom = a.Y + dy;
                canvas.FillRectangle({left, bottom - 3, left + 3, bottom}, black, black);
                canvas.FillRectangle({left, top, left + 3, top + 3}, black, black);
                canvas.FillRectangle({right - 3, bottom - 3, right, bottom}, black, black);
                canvas.FillRectangle({right - 3, top, right, top + 3}, black, black);
            }
        }
    }
}

void PalletDrawing::DrawRackLines(Canvas& canvas) const {
    const PalletInfo& p = ViewPallet;
    if (p.No == -1 || (p.RackXCount == 0 && p.RackYCount == 0))
        return;
    const int32_t xCount = std::clamp<int32_t>(p.RackXCount, 0, 5);
    const int32_t yCount = std::clamp<int32_t>(p.RackYCount, 0, 5);
    for (const Slot& slot : ShownSlots()) {
        const IntPoint shift{OriginDX + slot.Offset.X, OriginDY + slot.Offset.Y};
        auto line = [&](double x1, double y1, double x2, double y2) {
            const IntPoint a = WorldToScreen(x1, y1);
            const IntPoint b = WorldToScreen(x2, y2);
            canvas.DrawLinePrim({a.X + shift.X, a.Y + shift.Y}, {b.X + shift.X, b.Y + shift.Y},
                                palette_.RackLine, PenStyle::Dotted, 1);
        };
        for (int32_t k = 0; k < xCount; ++k) {
            const double x = p.RackX[static_cast<size_t>(k)];
            line(x, -p.RackPitch, x, p.LengthY + p.RackPitch);
        }
        for (int32_t k = 0; k < yCount; ++k) {
            const double y = p.RackY[static_cast<size_t>(k)];
            line(-p.RackPitch, y, p.LengthX + p.RackPitch, y);
        }
    }
}

}  // namespace kesto
