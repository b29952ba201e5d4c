// The block table: one grid of equal cells per process and pallet.
#include "placement/CKs_Block.h"
#include "app/Codes.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include "placement/CKs_Haichi.h"
#include "support/Platform.h"

namespace kesto {

namespace {

// With columns numbered from the left the grid still ends at the right margin: the start
// moves to the right edge of the last column that fits when counted from the right.
double ColumnStart(const PalletInfo& p, int32_t startCorner) {
    double x0 = p.MarginX;
    if (startCorner != 0 && startCorner != 1)
        return x0;
    const double w = p.CellWidth, gx = p.CellGapX;
    double last = 0;
    for (int32_t i = 0; i < p.CellsX; ++i) {
        const double v = p.LengthX - x0 - i * w - i * gx;
        if (v < w + kLengthTolerance)
            return last > 0 ? last : x0;
        last = v;
    }
    return last;
}

// With rows numbered from the top the start becomes the distance of the top row from the top.
double RowStart(const PalletInfo& p, int32_t startCorner) {
    double y0 = p.MarginY;
    if (startCorner != 1 && startCorner != 2)
        return y0;
    const double d = p.CellDepth, gy = p.CellGapY;
    double last = 0;
    for (int32_t j = 0; j < p.CellsY; ++j) {
        const double v = j * gy + j * d + y0;
        if (p.LengthY - d - kLengthTolerance <= v)
            return last > 0 ? p.LengthY - last : y0;
        last = v;
    }
    return p.LengthY - last;
}

}  // namespace

Outcome CKs_Block::SetUp() {
    int64_t capacity = 0;
    for (KouteiInfo& k : app_.KouteiList) {
        k.Pallet = app_.PalletByName(k.PalletName);
        if (k.Pallet == nullptr) {
            services_.Op.AskKaku(kaku::kNoPalletForKoutei, kaku::kNone);
            return Outcome::Failed();
        }
        capacity += int64_t{k.Pallet->CellsX} * k.Pallet->CellsY;
    }
    capacity *= app_.Settings.PalletCount;
    // Beyond the int32 range the capacity is absurd; the builder refuses it.
    app_.Blocks.SetCapacity(
        static_cast<int32_t>(std::clamp<int64_t>(capacity, INT32_MIN, INT32_MAX)));
    return Build();
}

Outcome CKs_Block::Build() {
    const int32_t capacity = app_.Blocks.Capacity();
    try {
        if (capacity < 0 || capacity > kMaxBlockCapacity)
            throw std::bad_alloc();
        app_.Blocks.Allocate(static_cast<size_t>(capacity));
    } catch (const std::bad_alloc&) {
        return Outcome::Failed(error::kBlockTableAlloc);
    }
    // The count is not reset here; it is only cut so that it never exceeds the table.
    if (app_.KouteiList.Empty()) {
        app_.Blocks.SetCount(std::clamp(app_.Blocks.Count(), 0, capacity));
        return Outcome::Done();
    }
    app_.Blocks.SetCount(0);
    for (const KouteiInfo& k : app_.KouteiList) {
        if (k.Pallet == nullptr)
            continue;
        if (const Outcome built = BuildKoutei(k, *k.Pallet); !built.Ok())
            return built;
    }
    return Outcome::Done();
}

Outcome CKs_Block::BuildKoutei(const KouteiInfo& koutei, const PalletInfo& p) {
    const int32_t sc = app_.Settings.StartCorner;
    const int32_t nx = p.CellsX, ny = p.CellsY;
    // Without cells nothing is built, and the start computations have nothing to move.
    if (nx < 1 || ny < 1 || app_.Settings.PalletCount < 1)
        return Outcome::Done();
    const double x0 = ColumnStart(p, sc), y0 = RowStart(p, sc);
    const double w = p.CellWidth, d = p.CellDepth, gx = p.CellGapX, gy = p.CellGapY;
    const bool fromLeft = sc == 0 || sc == 1;
    const bool fromBottom = sc == 0 || sc == 3;
    for (int32_t pallet = 1; pallet <= app_.Settings.PalletCount; ++pallet) {
        for (int32_t i = 0; i < nx; ++i) {
            const double x = fromLeft ? i * gx + i * w + x0 : p.LengthX - x0 - i * w - i * gx;
            const bool colValid = fromLeft ? x < p.LengthX - p.MarginX + kLengthTolerance : w <= x;
            if (!colValid)
                continue;
            for (int32_t j = 0; j < ny; ++j) {
                const double y = fromBottom ? j * gy + j * d + y0 : p.LengthY - y0 - j * d - j * gy;
                const bool rowValid =
                    fromBottom ? y < p.LengthY - d : p.MarginY - kLengthTolerance <= y;
                if (!rowValid)
                    continue;
                BlockInfo* added = app_.Blocks.Append();
                if (added == nullptr) {
                    services_.Op.ShowMessageBox("Block Data Area Set Count Over");
                    return Outcome::Failed(error::kBlockTableOverflow);
                }
                BlockInfo& b = *added;
                b.KouteiNo = koutei.No;
                b.PalletNo = pallet;
                b.MinX = x - w;
                b.MinY = y;
                b.MaxX = x;
                b.MaxY = y + d;
            }
        }
    }
    return Outcome::Done();
}

}  // namespace kesto
