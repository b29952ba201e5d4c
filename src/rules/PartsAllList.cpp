#include "rules/PartsAllList.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "app/Codes.h"
#include "rules/ListLines.h"
#include "support/TextColumns.h"
#include "support/TextFile.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

// A selection of the main list examines at most this many selected lines.
constexpr size_t kSelectedRowsExamined = 1000;

template <class T>
int Order(T a, T b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

int BySeq(const PartsInfo& a, const PartsInfo& b) {
    return Order(a.Seq, b.Seq);
}
int ByMaterial(const PartsInfo& a, const PartsInfo& b) {
    return std::strcmp(a.MaterialName.c_str(), b.MaterialName.c_str());
}
int BySizeX(const PartsInfo& a, const PartsInfo& b) {
    return Order(a.SizeX, b.SizeX);
}
int BySizeY(const PartsInfo& a, const PartsInfo& b) {
    return Order(a.SizeY, b.SizeY);
}
int ByQuantity(const PartsInfo& a, const PartsInfo& b) {
    return Order(a.Quantity, b.Quantity);
}
int ByName(const PartsInfo& a, const PartsInfo& b) {
    return std::strcmp(a.DisplayName.c_str(), b.DisplayName.c_str());
}

// A column of the list with its two keys; a button's first key is always the one sorting up.
struct SortColumn {
    int32_t UpKey;
    int32_t DownKey;
    int (*Compare)(const PartsInfo&, const PartsInfo&);
};

constexpr SortColumn kSeqColumn{sortkey::kSeqUp, sortkey::kSeqDown, BySeq};
constexpr SortColumn kMaterialColumn{sortkey::kMaterialUp, sortkey::kMaterialDown, ByMaterial};
constexpr SortColumn kQuantityColumn{sortkey::kQuantityUp, sortkey::kQuantityDown, ByQuantity};
constexpr SortColumn kNameColumn{sortkey::kNameUp, sortkey::kNameDown, ByName};
constexpr SortColumn kColumns[] = {
    kSeqColumn,
    kMaterialColumn,
    {sortkey::kSizeXUp, sortkey::kSizeXDown, BySizeX},
    {sortkey::kSizeYUp, sortkey::kSizeYDown, BySizeY},
    kQuantityColumn,
    kNameColumn,
};

const SortColumn* ColumnOf(int32_t key) {
    for (const SortColumn& column : kColumns) {
        if (key == column.UpKey || key == column.DownKey)
            return &column;
    }
    return nullptr;
}

// The column of a two-key button (every button but the size button).
const SortColumn& ButtonColumn(SortButton button) {
    switch (button) {
        case SortButton::Material:
            return kMaterialColumn;
        case SortButton::Quantity:
            return kQuantityColumn;
        case SortButton::Name:
            return kNameColumn;
        case SortButton::Seq:
        case SortButton::Size:
            break;
    }
    return kSeqColumn;
}

}  // namespace

int32_t NextSortKey(SortButton button, int32_t key) {
    if (button == SortButton::Size) {
        const bool sizeKey = key >= sortkey::kSizeXUp && key < sortkey::kSizeYDown;
        return sizeKey ? key + 1 : sortkey::kSizeXUp;
    }
    const SortColumn& column = ButtonColumn(button);
    return key == column.UpKey ? column.DownKey : column.UpKey;
}

void SortPartsAll(std::vector<const PartsInfo*>& parts, int32_t key) {
    const SortColumn* column = ColumnOf(key);
    if (column == nullptr)
        return;
    const bool up = key == column->UpKey;
    for (size_t i = 0; i < parts.size(); ++i) {
        size_t best = i;
        for (size_t j = i + 1; j < parts.size(); ++j) {
            const int order = column->Compare(*parts[j], *parts[best]);
            if (up ? order < 0 : order > 0)
                best = j;
        }
        if (best != i)
            std::swap(parts[i], parts[best]);
    }
}

std::vector<const PartsInfo*> PartsOnPalletsInView(const CKestoApp& app, int32_t koutei,
                                                   int32_t pallet1, int32_t pallet2) {
    std::vector<const PartsInfo*> marked;
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo* stands = app.BlockOf(h);
        if (h.Part == nullptr || stands == nullptr)
            continue;
        const BlockInfo& block = *stands;
        if (block.KouteiNo != koutei)
            continue;
        if (block.PalletNo != pallet1 && block.PalletNo != pallet2)
            continue;
        if (std::find(marked.begin(), marked.end(), h.Part) == marked.end())
            marked.push_back(h.Part);
    }
    return marked;
}

std::string LocationText(const PartsInfo& part) {
    if (part.Destination >= destination::kFirstSmallBox && !IsTorioki(part.Destination))
        return FormatText("BX%d", SmallBoxNumber(part.Destination));
    return part.PiecesPlaced != part.Quantity ? "PL-" : "PL ";
}

std::string DirectionText(const PartsInfo& part) {
    switch (part.DirCode) {
        case 1:
            return "U ";
        case 10:
            return "D ";
        case 11:
            return "UD";
        default:
            return "  ";
    }
}

std::string SheetCountText(const PartsInfo& part) {
    return part.PerStackLimit == 0 ? "---" : FormatText("%3d", part.PerStackLimit);
}

std::string PartsAllLine(const PartsInfo& part, bool inView) {
    return FormatText("%.3d %s %s %-16s %6.3lf %s %s %4d/%-4d %9.4lf x %9.4lf %s", part.Seq,
                      inView ? "*" : " ", LocationText(part).c_str(), part.MaterialName.c_str(),
                      part.Thickness, DirectionText(part).c_str(), SheetCountText(part).c_str(),
                      part.PiecesPlaced, part.Quantity, part.SizeX, part.SizeY,
                      FitColumn(part.DisplayName, kListNameColumn).c_str());
}

std::optional<std::vector<std::string>> PartsAllLines(const CKestoApp& app, const ViewState& shown,
                                                      int32_t koutei, int32_t sortKey,
                                                      const std::array<int32_t, 4>& inView) {
    if (!app.HasKoutei(koutei))
        return std::nullopt;
    std::vector<std::string> lines;
    if (app.PartsList.Empty())
        return lines;
    std::vector<const PartsInfo*> parts;
    for (const PartsInfo& part : app.PartsList) {
        if (part.KouteiNo == koutei)
            parts.push_back(&part);
    }
    SortPartsAll(parts, sortKey);
    const std::vector<const PartsInfo*> marked =
        PartsOnPalletsInView(app, shown.Koutei(), inView[0], inView[1]);
    for (const PartsInfo* part : parts) {
        const bool onView = std::find(marked.begin(), marked.end(), part) != marked.end();
        lines.push_back(PartsAllLine(*part, onView));
    }
    return lines;
}

PartsAllPlacement PlacePartsAll(const IntRect& area, PalletView mode, Visibility state) {
    const int32_t height = area.Bottom - area.Top;
    const int32_t x = area.Left + 2;
    const int32_t width = area.Right - area.Left - 5;
    const ControlRect lowerHalf{x, area.Top + height / 2, width, height / 2 - 2};
    if (state == Visibility::Hidden)
        return PartsAllPlacement{lowerHalf, false};
    if (mode == PalletView::Flat)
        return PartsAllPlacement{ControlRect{x, area.Top, width, height}, true};
    return PartsAllPlacement{lowerHalf, true};
}

PartsAllControls LayOutPartsAll(int32_t width, int32_t height, int32_t buttonFontHeight) {
    const int32_t buttonHeight = buttonFontHeight > 0 ? 2 * buttonFontHeight : height / 10;
    const int32_t buttonWidth = (width - 10) / 5;
    PartsAllControls controls;
    for (size_t i = 0; i < controls.Buttons.size(); ++i) {
        controls.Buttons[i] =
            ControlRect{5 + static_cast<int32_t>(i) * buttonWidth, 5, buttonWidth, buttonHeight};
    }
    controls.List = ControlRect{5, buttonHeight + 10, width - 10, height - buttonHeight - 15};
    return controls;
}

int32_t SeqOfPartsAllLine(const std::string& line) {
    return AtoL(line.substr(0, 3));
}

std::optional<size_t> LineOfPicked(const std::vector<std::string>& lines,
                                   const HaichiInfo* picked) {
    if (picked == nullptr || picked->Part == nullptr)
        return std::nullopt;
    return LineOfSeq(lines, picked->Part->Seq);
}

std::optional<size_t> LineOfSeq(const std::vector<std::string>& lines, int32_t seq) {
    for (size_t i = 0; i < lines.size(); ++i) {
        if (SeqOfPartsAllLine(lines[i]) == seq)
            return i;
    }
    return std::nullopt;
}

bool PickFirstStackOfSeq(CKestoApp& app, PalletDrawing& drawing, int32_t seq,
                         const DrawPartsFn& draw) {
    if (drawing.Selected().LastPicked() != kNoStack)
        draw(DrawMode::Unhighlight);
    drawing.Select().SetPicked(kNoStack);
    bool found = false;
    for (const PartsInfo& part : app.PartsList) {
        if (part.Seq != seq)
            continue;
        auto stack = std::find_if(app.HaichiList.begin(), app.HaichiList.end(),
                                  [&](const HaichiInfo& h) { return h.Part == &part; });
        if (stack == app.HaichiList.end())
            continue;
        drawing.Select().SetPicked(stack->Id);
        draw(DrawMode::PartPieces);
        drawing.Select().SetLastPicked(drawing.Selected().Picked());
        found = true;
        break;
    }
    drawing.Select().SetPicked(kNoStack);
    return found;
}

bool PickFirstStackOfSeq(CKestoApp& app, PalletDrawing& drawing, Canvas& canvas, int32_t seq) {
    return PickFirstStackOfSeq(app, drawing, seq,
                               [&](DrawMode mode) { drawing.DrawParts(canvas, mode); });
}

bool PickFromAllPartsList(CKestoApp& app, PalletDrawing& drawing, int32_t caretSeq,
                          const DrawPartsFn& draw) {
    if (drawing.Selected().Band() == BandState::InForce)
        return false;
    PickFirstStackOfSeq(app, drawing, caretSeq, draw);
    return true;
}

std::vector<int> OtherSelectedRows(const std::vector<int>& selected, int caret) {
    std::vector<int> others;
    const size_t examined = std::min(selected.size(), kSelectedRowsExamined);
    for (size_t i = 0; i < examined; ++i) {
        if (selected[i] != caret)
            others.push_back(selected[i]);
    }
    return others;
}

}  // namespace kesto
