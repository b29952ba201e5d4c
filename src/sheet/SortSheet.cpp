#include "sheet/SortSheet.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <optional>
#include <span>
#include <utility>

#include "rules/ListLines.h"
#include "session/JobSession.h"
#include "sheet/SheetTable.h"
#include "support/TextFormat.h"
#include "view/PalletDrawing.h"
#include "view/ShiftedCanvas.h"

namespace kesto {

namespace {

constexpr int32_t kBodyWidth = kSheetWidth - 2 * kSheetMargin;
constexpr int32_t kBodyHeight = kSheetBodyBottom - kSheetBodyTop;
// Beside the table the drawing gets this much of the page's width, above it this much of
// the page's height.
constexpr int32_t kDrawingBesideWidth = 720;
constexpr int32_t kDrawingAboveHeight = 430;
constexpr int32_t kGap = 28;
// A drawing above the table must come out this much larger than beside it: it costs the
// table many of its rows.
constexpr double kAboveGain = 1.3;
// Each of the two columns of rows on a page that runs a pallet's table on.
constexpr int32_t kHalfWidth = (kBodyWidth - 2 * kGap) / 2;
constexpr int32_t kLegendLine = 30;
constexpr int32_t kLegendTop = kSheetBodyBottom - 3 * kLegendLine;
constexpr int32_t kTotalHeight = 44;
constexpr int32_t kMarkWidth = 56;
constexpr Rgb kBlockNumber{110, 110, 110};
// The table's columns but the name's, which takes the rest of the table's width.
constexpr int32_t kNoWidth = 64, kPartWidth = 104, kPiecesWidth = 98, kBlockWidth = 112,
                  kCornerWidth = 140, kChangesWidth = 126;
constexpr int32_t kFixedColumns =
    kNoWidth + kPartWidth + kPiecesWidth + kBlockWidth + kCornerWidth + kChangesWidth;

// Where a pallet's page puts its drawing and its table: side by side, or for a pallet much
// wider than deep the drawing across the page above the table.
struct PalletLayout {
    IntRect Drawing;
    int32_t TableLeft = 0;
    int32_t TableTop = 0;
    int32_t TableWidth = 0;
};

// Pixels per length unit of the pallet drawn FLAT in a box of width x height.
double DrawnScale(const PalletInfo& pallet, int32_t width, int32_t height) {
    const int32_t full = FlatAreaHeight(pallet, width);
    if (full <= 0)
        return 0;
    return static_cast<double>(width) / pallet.LengthX * std::min(1.0, 1.0 * height / full);
}

// The drawing's box only as high as the pallet needs, so that it stands at the top.
IntRect DrawingBox(const PalletInfo& pallet, int32_t left, int32_t width, int32_t height) {
    const int32_t needed = FlatAreaHeight(pallet, width);
    return IntRect{left, kSheetBodyTop, left + width,
                   kSheetBodyTop + (needed > 0 ? std::min(needed, height) : height)};
}

PalletLayout LayOutPalletPage(const PalletInfo& pallet) {
    const double beside = DrawnScale(pallet, kDrawingBesideWidth, kBodyHeight);
    const double above = DrawnScale(pallet, kBodyWidth, kDrawingAboveHeight);
    PalletLayout layout;
    if (above > kAboveGain * beside) {
        layout.Drawing = DrawingBox(pallet, kSheetMargin, kBodyWidth, kDrawingAboveHeight);
        layout.TableLeft = kSheetMargin;
        layout.TableTop = layout.Drawing.Bottom + kGap;
        layout.TableWidth = kBodyWidth;
    } else {
        layout.Drawing = DrawingBox(pallet, kSheetMargin, kDrawingBesideWidth, kBodyHeight);
        layout.TableLeft = kSheetMargin + kDrawingBesideWidth + kGap;
        layout.TableTop = kSheetBodyTop;
        layout.TableWidth = kSheetWidth - kSheetMargin - layout.TableLeft;
    }
    return layout;
}

// The sheet's fonts in the face of the settings' label font (or any font they define), so
// that a Japanese installation prints in its own characters.
void DefineSheetFonts(const CKestoApp& app, const MessageTable& messages,
                      PictureDocument& document) {
    int32_t face = messages.GetFontText("MainDlg", "L-SMALLBOX").Font;
    const auto slots = static_cast<int32_t>(app.Settings.FontHeight.size());
    for (int32_t slot = 0; !FontDefined(app, face) && slot < slots; ++slot)
        face = slot;
    const bool found = FontDefined(app, face);
    const std::string name =
        found ? app.Settings.FontNames[static_cast<size_t>(face)] : std::string();
    const int32_t charSet = found ? app.Settings.FontCharSet[static_cast<size_t>(face)] : 0;
    const auto define = [&](const SheetFont& font, bool bold) {
        document.Fonts[static_cast<size_t>(font.Slot)] =
            PictureFont{font.Height, charSet, name, bold};
    };
    define(sheetfont::kText, false);
    define(sheetfont::kBold, true);
    define(sheetfont::kSmall, false);
    define(sheetfont::kHeading, true);
    define(sheetfont::kTag, true);
}

using PalletKey = std::pair<int32_t, int32_t>;  // process No, pallet number

// One pallet's stacks ordered by block and corner (then list order): the order an operator
// walks its cells in.
void SortAsWalked(const CKestoApp& app, const std::vector<int32_t>& numbers,
                  std::vector<const HaichiInfo*>& stacks) {
    std::stable_sort(stacks.begin(), stacks.end(), [&](const HaichiInfo* a, const HaichiInfo* b) {
        const int32_t na = numbers[static_cast<size_t>(a->BlockIndex)];
        const int32_t nb = numbers[static_cast<size_t>(b->BlockIndex)];
        return na != nb ? na < nb : StandingCorner(app, *a) < StandingCorner(app, *b);
    });
}

// The stacks of every pallet, each pallet's in the order an operator walks its cells in.
std::map<PalletKey, std::vector<const HaichiInfo*>> StacksByPallet(
    const CKestoApp& app, const std::vector<int32_t>& numbers) {
    std::map<PalletKey, std::vector<const HaichiInfo*>> pallets;
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo* block = app.BlockOf(h);
        if (h.Part != nullptr && block != nullptr)
            pallets[{block->KouteiNo, block->PalletNo}].push_back(&h);
    }
    for (auto& [key, stacks] : pallets)
        SortAsWalked(app, numbers, stacks);
    return pallets;
}

SheetTable PalletTable(const CKestoApp& app, const std::vector<const HaichiInfo*>& stacks,
                       const SheetTexts& texts, const std::vector<int32_t>& numbers,
                       int32_t width) {
    SheetTable table({{texts.ColumnNo, kNoWidth, CellAlign::Right},
                      {texts.ColumnPart, kPartWidth},
                      {texts.ColumnName, std::max(width - kFixedColumns, kPartWidth)},
                      {texts.ColumnPieces, kPiecesWidth, CellAlign::Right},
                      {texts.ColumnBlock, kBlockWidth, CellAlign::Right},
                      {texts.ColumnCorner, kCornerWidth},
                      {texts.ColumnChanges, kChangesWidth}});
    for (size_t i = 0; i < stacks.size(); ++i) {
        const HaichiInfo& h = *stacks[i];
        table.AddRow({std::to_string(i + 1), h.Part->Code, h.Part->DisplayName,
                      std::to_string(h.Pieces),
                      std::to_string(numbers[static_cast<size_t>(h.BlockIndex)]),
                      texts.CornerText(StandingCorner(app, h)), texts.EditMarks(h.Edits)});
    }
    return table;
}

bool Overlap(const IntRect& a, const IntRect& b) {
    return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

// Where a cell's number can stand clear of the cell's stacks: its centre, else the middle
// of one of its edges; nullopt when the stacks cover all of them.
std::optional<IntRect> FreeSpot(const IntRect& cell, int32_t width, int32_t height,
                                const std::vector<IntRect>& stacks) {
    const int32_t cx = (cell.Left + cell.Right) / 2;
    const int32_t cy = (cell.Top + cell.Bottom) / 2;
    const IntPoint centres[] = {{cx, cy},
                                {cx, cell.Top + height / 2 + 2},
                                {cx, cell.Bottom - height / 2 - 2},
                                {cell.Left + width / 2 + 2, cy},
                                {cell.Right - width / 2 - 2, cy}};
    for (const IntPoint& c : centres) {
        const IntRect spot{c.X - width / 2, c.Y - height / 2, c.X + width / 2, c.Y + height / 2};
        const bool inside = spot.Left >= cell.Left && spot.Right <= cell.Right &&
                            spot.Top >= cell.Top && spot.Bottom <= cell.Bottom;
        if (inside && std::none_of(stacks.begin(), stacks.end(),
                                   [&](const IntRect& s) { return Overlap(s, spot); }))
            return spot;
    }
    return std::nullopt;
}

// Every cell's number where its stacks leave room for it.
void DrawBlockNumbers(const CKestoApp& app, const PalletDrawing& drawing,
                      const std::vector<const HaichiInfo*>& stacks,
                      const std::vector<int32_t>& numbers, Canvas& canvas) {
    std::map<int32_t, std::vector<IntRect>> standing;  // by block index
    for (const HaichiInfo* h : stacks) {
        if (const std::optional<IntRect> r = drawing.ScreenRect(*h))
            standing[h->BlockIndex].push_back(*r);
    }
    const BlockInfo& any = app.Blocks[stacks.front()->BlockIndex];
    const std::span<const BlockInfo> blocks = app.Blocks.Entries();
    const size_t count = std::min(drawing.BlockRects.size(), numbers.size());
    const SheetFont& font = sheetfont::kSmall;
    for (size_t e = 0; e < count; ++e) {
        const BlockInfo& block = blocks[e];
        const IntRect& cell = drawing.BlockRects[e];
        if (block.KouteiNo != any.KouteiNo || block.PalletNo != any.PalletNo ||
            cell.Right <= cell.Left)
            continue;
        const std::string text = std::to_string(numbers[e]);
        const std::optional<IntRect> spot =
            FreeSpot(cell, TextWidthAtMost(text, font.Height) + 4, font.Height + 4,
                     standing[static_cast<int32_t>(e)]);
        if (spot) {
            canvas.DrawLabel(LabelMode::Centred, text, font.Slot, {},
                             {spot->Left, spot->Top + 2, spot->Right, spot->Bottom + 4},
                             kBlockNumber);
        }
    }
}

// The pallet as the window's FLAT view would show it with its cells, in the print palette,
// each stack tagged with its row of the table.
void DrawPallet(const CKestoApp& app, const MessageTable& messages, int32_t position,
                int32_t pallet, const std::vector<const HaichiInfo*>& stacks, const StackTags& tags,
                const std::vector<int32_t>& numbers, const IntRect& box, PicturePage& page) {
    ViewState view;
    view.SetMode(PalletView::Flat);
    view.SetStoredBlockDraw(1);
    view.SetKoutei(position);
    view.SetPallet(pallet);
    PalletDrawing drawing(app, view, messages, colour::kPrintPalette);
    drawing.SetArea({0, 0, box.Right - box.Left, box.Bottom - box.Top});
    drawing.TagStacks(&tags);
    ShiftedCanvas area(page.Drawing, box.Left, box.Top);
    drawing.ClearArea(area);
    drawing.SetUpView(area);
    drawing.DrawParts(area, DrawMode::All);
    DrawBlockNumbers(app, drawing, stacks, numbers, area);
}

void DrawTotal(const SheetTexts& texts, const std::vector<const HaichiInfo*>& stacks, int32_t left,
               int32_t y, PicturePage& page) {
    int64_t pieces = 0;
    for (const HaichiInfo* h : stacks)
        pieces += h->Pieces;
    const std::string text = texts.Total + ": " + std::to_string(stacks.size()) + " " +
                             texts.Stacks + ", " + std::to_string(pieces) + " " + texts.Pieces;
    const SheetFont& font = sheetfont::kBold;
    page.Drawing.DrawLabel(LabelMode::Left, text, font.Slot, {left + 8, y},
                           {left + 8, y, kSheetWidth - kSheetMargin, y + font.Height * 3 / 2},
                           sheetcolour::kInk);
}

void DrawLegend(const SheetTexts& texts, int32_t left, PicturePage& page) {
    const std::pair<const std::string*, const std::string*> lines[] = {
        {&texts.MarkMoved, &texts.LegendMoved},
        {&texts.MarkRestacked, &texts.LegendRestacked},
        {&texts.MarkReturned, &texts.LegendReturned}};
    int32_t y = kLegendTop;
    const int32_t right = kSheetWidth - kSheetMargin;
    for (const auto& [mark, meaning] : lines) {
        const int32_t bottom = y + kLegendLine;
        page.Drawing.DrawLabel(LabelMode::Left, *mark, sheetfont::kBold.Slot, {left + 8, y},
                               {left + 8, y, left + kMarkWidth, bottom}, sheetcolour::kInk);
        page.Drawing.DrawLabel(LabelMode::Left, *meaning, sheetfont::kText.Slot,
                               {left + kMarkWidth, y}, {left + kMarkWidth, y, right, bottom},
                               sheetcolour::kInk);
        y = bottom;
    }
}

// Draws the table's rows from next on at left, as many as fit above the legend and the
// total, and the total below the last row; returns the row after the last drawn.
size_t DrawRows(const SheetTable& table, const SheetTexts& texts,
                const std::vector<const HaichiInfo*>& stacks, int32_t left, int32_t top,
                size_t next, PicturePage& page) {
    const SheetTable::Drawn drawn =
        table.Draw(page.Drawing, left, top, kLegendTop - kTotalHeight, next);
    if (drawn.Next == table.Rows())
        DrawTotal(texts, stacks, left, drawn.Bottom + 10, page);
    return drawn.Next;
}

// The pages of one pallet: the drawing and the table's first rows, then as many pages as
// the rest of the table needs, two columns of rows on each; the same header on every one.
void AddPalletPages(const CKestoApp& app, const MessageTable& messages, const SheetTexts& texts,
                    int32_t position, const KouteiInfo& koutei, int32_t pallet,
                    const std::vector<const HaichiInfo*>& stacks,
                    const std::vector<int32_t>& numbers, SheetBook& book) {
    const PalletLayout layout = LayOutPalletPage(*app.PalletByName(koutei.PalletName));
    const SheetTable table = PalletTable(app, stacks, texts, numbers, layout.TableWidth);
    StackTags tags;
    for (size_t i = 0; i < stacks.size(); ++i)
        tags.Texts[stacks[i]->Id] = std::to_string(i + 1);
    for (const SheetFont& font : {sheetfont::kTag, sheetfont::kBold, sheetfont::kSmall})
        tags.Fonts.push_back({font.Slot, font.Height});
    const std::string process = SheetProcessText(koutei);
    const std::string palletText = PalletSelectLine(app.Settings.PalletPrefix, pallet);
    const std::string title = process + " " + palletText;
    PicturePage& first = book.NewPalletPage(process, palletText, title);
    DrawPallet(app, messages, position, pallet, stacks, tags, numbers, layout.Drawing, first);
    size_t next = DrawRows(table, texts, stacks, layout.TableLeft, layout.TableTop, 0, first);
    DrawLegend(texts, layout.TableLeft, first);
    if (next == table.Rows())
        return;
    const SheetTable half = PalletTable(app, stacks, texts, numbers, kHalfWidth);
    while (next < table.Rows()) {
        PicturePage& page = book.NewPalletPage(process, palletText, title);
        for (const int32_t left : {kSheetMargin, kSheetWidth - kSheetMargin - kHalfWidth}) {
            if (next < table.Rows())
                next = DrawRows(half, texts, stacks, left, kSheetBodyTop, next, page);
        }
        DrawLegend(texts, kSheetMargin, page);
    }
}

}  // namespace

uint8_t StandingCorner(const CKestoApp& app, const HaichiInfo& stack) {
    const BlockInfo* block = app.BlockOf(stack);
    if (block == nullptr || stack.Part == nullptr)
        return 0;
    // Ties go to the left and the front, where the cells are measured from.
    const bool left = stack.X - stack.Part->SizeX - block->MinX <= block->MaxX - stack.X;
    const bool lower = stack.Y - block->MinY <= block->MaxY - (stack.Y + stack.Part->SizeY);
    if (left)
        return lower ? kCornerMinMin : kCornerMinMax;
    return lower ? kCornerMaxMin : kCornerMaxMax;
}

std::string SheetProcessText(const KouteiInfo& koutei) {
    return FormatText("%.2d ", koutei.No) + koutei.Name;
}

std::vector<int32_t> BlockNumbers(const CKestoApp& app) {
    const std::span<const BlockInfo> blocks = app.Blocks.FilledBlocks();
    std::vector<int32_t> numbers(blocks.size(), 0);
    std::map<PalletKey, int32_t> counted;
    for (size_t e = 0; e < blocks.size(); ++e)
        numbers[e] = ++counted[{blocks[e].KouteiNo, blocks[e].PalletNo}];
    return numbers;
}

std::vector<const HaichiInfo*> SheetOrder(const CKestoApp& app, int32_t kouteiNo, int32_t pallet) {
    std::vector<const HaichiInfo*> stacks;
    for (const HaichiInfo& h : app.HaichiList) {
        const BlockInfo* block = app.BlockOf(h);
        if (h.Part != nullptr && block != nullptr && block->KouteiNo == kouteiNo &&
            block->PalletNo == pallet)
            stacks.push_back(&h);
    }
    SortAsWalked(app, BlockNumbers(app), stacks);
    return stacks;
}

PictureDocument BuildSortSheet(const CKestoApp& app, const Services& services,
                               const SheetHeading& heading) {
    PictureDocument document;
    TakeSettingsFonts(app, document);
    DefineSheetFonts(app, services.Messages, document);
    const SheetTexts texts = SheetTexts::From(services.Messages);
    const std::vector<int32_t> numbers = BlockNumbers(app);
    const auto stacks = StacksByPallet(app, numbers);
    SheetBook book(document, texts, heading);
    int32_t position = 0;
    for (const KouteiInfo& koutei : app.KouteiList) {
        ++position;
        // The drawing shows the process's stacks on the pallet type it names.
        if (app.PalletByName(koutei.PalletName) == nullptr)
            continue;
        for (int32_t pallet = 1; pallet <= app.Settings.PalletCount; ++pallet) {
            const auto on = stacks.find({koutei.No, pallet});
            if (on != stacks.end()) {
                AddPalletPages(app, services.Messages, texts, position, koutei, pallet, on->second,
                               numbers, book);
            }
        }
    }
    AddSummaryPages(app, services, texts, numbers, book);
    book.Finish();
    return document;
}

PictureDocument BuildSortSheet(const JobSession& session) {
    return BuildSortSheet(
        session.App(), session.Svc(),
        SheetHeading{PictureJobName(session), LocalDateTimeText(std::time(nullptr))});
}

}  // namespace kesto
