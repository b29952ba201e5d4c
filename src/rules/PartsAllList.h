// The all-parts dialog worked out without a window: its sort keys and the five buttons that
// cycle them, the order and text of its lines with the marks of the parts on a pallet in view,
// where it lies over the drawing area, how its controls are laid out, and the pick of a line's
// part in the drawing (also for the main window's own all-parts list).
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "view/Canvas.h"
#include "view/PalletDrawing.h"

namespace kesto {

// The orders of the list. For the two text columns the even key sorts down, so that the
// buttons, which start on the odd key, always sort up on their first press.
namespace sortkey {
inline constexpr int32_t kSeqUp = 10;
inline constexpr int32_t kSeqDown = 11;
inline constexpr int32_t kMaterialDown = 20;  // Text3
inline constexpr int32_t kMaterialUp = 21;
inline constexpr int32_t kSizeXUp = 30;
inline constexpr int32_t kSizeXDown = 31;
inline constexpr int32_t kSizeYUp = 32;
inline constexpr int32_t kSizeYDown = 33;
inline constexpr int32_t kQuantityUp = 40;
inline constexpr int32_t kQuantityDown = 41;
inline constexpr int32_t kNameDown = 50;  // Text1
inline constexpr int32_t kNameUp = 51;
}  // namespace sortkey

// The sort buttons from left to right ("BT4", "BT1", "BT2", "BT3", "BT5").
enum class SortButton { Seq, Material, Size, Quantity, Name };

// The key a press of the button gives when the list is sorted by key.
int32_t NextSortKey(SortButton button, int32_t key);

// Selection sort by key: each position takes the first entry that beats every earlier
// candidate strictly, so equal entries stay as the swaps leave them. An unknown key sorts
// nothing.
void SortPartsAll(std::vector<const PartsInfo*>& parts, int32_t key);

// The parts that have a stack in a block of process number koutei on pallet1 or pallet2.
std::vector<const PartsInfo*> PartsOnPalletsInView(const CKestoApp& app, int32_t koutei,
                                                   int32_t pallet1, int32_t pallet2);

// "BX<n>" for small box n (any destination from 100 on but the set-aside one), otherwise "PL "
// or, while pieces are missing, "PL-".
std::string LocationText(const PartsInfo& part);
// Two characters from DirCode: "U ", "D ", "UD" or blanks.
std::string DirectionText(const PartsInfo& part);
// The sheet count as "%3d", or "---" for no limit.
std::string SheetCountText(const PartsInfo& part);
std::string PartsAllLine(const PartsInfo& part, bool inView);

// The lines of process koutei in the order of sortKey, with the parts on the first two
// pallets in view marked: those of the view's process position, taken as a process number.
// None when there is no such process (the list keeps its lines).
std::optional<std::vector<std::string>> PartsAllLines(const CKestoApp& app, const ViewState& shown,
                                                      int32_t koutei, int32_t sortKey,
                                                      const std::array<int32_t, 4>& inView);

// Whether the all-parts dialog is shown (PartsAllState).
enum class Visibility : int32_t { Hidden = 1, Shown = 2 };

struct PartsAllPlacement {
    ControlRect Rect;  // screen pixels, from the drawing area on the screen
    bool Shown = false;
};

// Where the dialog goes hidden (over the lower half of the drawing area, area on the screen)
// or shown (there, or over the whole area in FLAT).
PartsAllPlacement PlacePartsAll(const IntRect& area, PalletView mode, Visibility state);

struct PartsAllControls {
    std::array<ControlRect, 5> Buttons;  // in the order of SortButton
    ControlRect List;
};

// The controls in a client area of width x height; buttonFontHeight is the pixel height of
// the "BT1" font, 0 when it names no defined font.
PartsAllControls LayOutPartsAll(int32_t width, int32_t height, int32_t buttonFontHeight);

// The number of the first three characters of a line (so Seq 1000 reads as 100).
int32_t SeqOfPartsAllLine(const std::string& line);
// The first line of part seq; none without a match.
std::optional<size_t> LineOfSeq(const std::vector<std::string>& lines, int32_t seq);
// The first line of the part of picked; none without a pick or a match.
std::optional<size_t> LineOfPicked(const std::vector<std::string>& lines, const HaichiInfo* picked);

// Paints one DrawParts mode over the drawing area's picture.
using DrawPartsFn = std::function<void(DrawMode mode)>;

// Picks the first stack of the first part numbered seq (any process) that has one: the old
// highlight goes, the part's pieces are shown (mode 4) and the stack stays LastPicked, while
// Picked is cleared again. true when a stack was found.
bool PickFirstStackOfSeq(CKestoApp& app, PalletDrawing& drawing, int32_t seq,
                         const DrawPartsFn& draw);
bool PickFirstStackOfSeq(CKestoApp& app, PalletDrawing& drawing, Canvas& canvas, int32_t seq);

// A changed selection of the main window's all-parts list, the caret on the line of caretSeq:
// false while a rubber-band selection is in force (the click is to be undone); otherwise the
// line's part is picked and true (only the caret line is to stay selected).
bool PickFromAllPartsList(CKestoApp& app, PalletDrawing& drawing, int32_t caretSeq,
                          const DrawPartsFn& draw);
// The selected rows to un-select so that only the caret's stays; at most the first 1000
// selected rows are looked at.
std::vector<int> OtherSelectedRows(const std::vector<int>& selected, int caret);

}  // namespace kesto
