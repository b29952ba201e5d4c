// The drawing area's picture, worked out without a window: the projection from pallet
// millimetres to pixels, the four layouts with their frames, captions, separators and
// cross-section bands, the block cells, grid marks and rack lines, the stacks in every
// drawing mode, and the hit tests. CKs_DrawArea paints it on its off-screen image, the
// picture program on a page; tests read it back from a recording canvas.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "support/MessageFile.h"
#include "view/Canvas.h"
#include "view/Colours.h"
#include "view/Selection.h"

namespace kesto {

// The modes of DrawParts.
enum class DrawMode {
    All,          // everything, normal colours
    HitTest,      // the point, or the rubber band when one is active
    Highlight,    // the selection and the other pieces of its parts
    Unhighlight,  // LastPicked's part back in normal colours
    AllNormal,    // every record back in normal colours
    PartPieces,   // every piece of Picked's part
};

// Rectangles of a slot that is not shown.
inline constexpr int32_t kNoSlot = -1000;
// Records ordered for the cross-section at most.
inline constexpr size_t kSectionRecordCap = 5000;

// One caption control of the drawing area (1045, 1048, 1046, 1047 for slots 1 to 4).
struct PalletCaption {
    IntRect Rect{};         // in the area's client pixels
    bool Visible = false;   // hidden at the start of every Refresh, shown by the layout
    int32_t FontSlot = -1;  // -1 until a defined font was set
    std::string Text;       // "%s-%.2d" of the prefix and the slot's pallet number
};

// Labels of the stacks in place of the part's name and pieces: the sort sheet marks every
// stack with its row in the sheet's table, a number that reads from farther away than a name.
struct StackTags {
    struct Font {
        int32_t Slot = -1;
        int32_t Height = 0;  // pixels
    };
    std::unordered_map<StackId, std::string> Texts;  // by stack; a stack without one: no label
    // Largest first: a tag takes the first font it fits its stack in, else the last.
    std::vector<Font> Fonts;
};

class PalletDrawing {
  public:
    // Draws the job as view shows it, in the palette's colours; neither is changed by drawing.
    PalletDrawing(const CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                  const colour::Palette& palette = colour::kScreenPalette);
    const ViewState& Shown() const { return shown_; }
    // The drawing area's client rectangle in pixels, set by whoever places the area (the
    // widget, a page of the picture); empty until then.
    const IntRect& Area() const { return area_; }
    void SetArea(const IntRect& area) { area_ = area; }
    const colour::Palette& Colours() const { return palette_; }

    // --- view state (recomputed by every Refresh) -------------------------------------
    PalletInfo ViewPallet;  // the current process's pallet, its No -1 when none matched
    std::array<IntRect, 4> PalletRect{};            // each slot's frame; all -1000 when not shown
    double Scale = 0;                               // millimetres per pixel
    double XMin = 0, XMax = 0, YMin = 0, YMax = 0;  // world window in millimetres
    int32_t OriginDX = 0, OriginDY = 0;             // pixel offset added to transformed points
    int32_t HalfW = 0, HalfH = 0;                   // quadrant offsets; 0 in FLAT and DANMEN
    int32_t CaptionHeight = 0;
    int32_t SectionBase = 0;  // y of the frame's bottom edge; 0 without a section
    int32_t SectionTop = 0;   // y of the top of the cross-section band; 0 without a section
    double SectionScale = 0;  // millimetres per pixel on the section's vertical axis
    std::array<PalletCaption, 4> Captions;  // slots 1..4 (controls 1045, 1048, 1046, 1047)
    // FLAT and DANMEN: the plan's share of the area (below the captions; in DANMEN above the
    // cross-section), the world window that shows the whole pallet there and its scale. A zoom
    // shows its window in the same share.
    IntRect PlanZone{};
    WorldWindow WholeWindow{};
    double WholeScale = 0;
    // Each block's cell on the screen by block index, as DrawBlocks last found it; a block
    // off the view keeps the cell it had. The drops measure against them.
    std::vector<IntRect> BlockRects;

    // --- the selection (changed by the hit test and the session's editing operations) ------
    const Selection& Selected() const { return selection_; }
    Selection& Select() { return selection_; }
    // The picked stack, null when there is none (or it is gone).
    const HaichiInfo* PickedStack() const { return app_.HaichiList.Find(selection_.Picked()); }

    // --- operations ---------------------------------------------------------------------
    // Clears and draws the whole area: ClearArea, SetUpView, DrawParts(All).
    void Refresh(Canvas& canvas);
    // The area's background; the captions are hidden until the next set-up places them.
    void ClearArea(Canvas& canvas);
    // The layout of the current process's pallets in the current view, drawn on canvas.
    void SetUpView(Canvas& canvas);
    void ComputeScale();
    // World millimetres to pixels, before the origin and slot offsets are added.
    IntPoint WorldToScreen(double x, double y) const;
    // The world millimetres of a pixel of the first slot, the origin taken away.
    std::pair<double, double> ScreenToWorld(int32_t x, int32_t y) const;
    // The last set-up laid out a zoomed window (FLAT or DANMEN only).
    bool Zoomed() const { return zoomed_; }
    // What is drawn next stays within the plan's share (on) or not (off); only a zoomed view
    // needs it, so nothing is drawn otherwise.
    void ClipToPlan(Canvas& canvas, bool on) const;
    // Draws the block cells of every shown slot (when the view draws them), stores each block's
    // cell in BlockRects, then the grid marks and rack lines.
    void DrawBlocks(Canvas& canvas);
    // The screen rectangle of block index as the last set-up laid it out; all -1 when no
    // cell of a shown slot belongs to it.
    IntRect LocateBlock(int32_t index) const;
    // The pallet numbers of slots 1..4, -1 for an empty slot.
    std::array<int32_t, 4> PalletsInView() const;

    // Draws (or, in mode 1, hit-tests) every placement record on the view.
    void DrawParts(Canvas& canvas, DrawMode mode, int32_t x = 0, int32_t y = 0);
    // DrawParts mode 1 without drawing anything: the point (x, y), or the records inside
    // the band's rectangle while a band is in force.
    void HitTest(int32_t x, int32_t y);
    // The part's outline elements fitted to rect; no colour means each element's own.
    void DrawOutline(Canvas& canvas, const IntRect& rect, const HaichiInfo& record,
                     std::optional<Rgb> colour) const;
    void DrawPartLabel(Canvas& canvas, const IntRect& rect, const HaichiInfo& record,
                       int32_t fontSlot) const;
    // From now on the stacks are labelled with tags (kept by the caller; null: the part's
    // name and pieces again).
    void TagStacks(const StackTags* tags) { tags_ = tags; }
    void DrawOffsetLines(Canvas& canvas);

    // The screen rectangle of a record when it is on the view (its block is of the current
    // process and on one of the slots' pallets), with the slot's offsets added.
    std::optional<IntRect> ScreenRect(const HaichiInfo& record) const;

  private:
    // One shown slot: its index 0..3, its pallet number and its quadrant offset.
    struct Slot {
        int32_t Index = 0;
        int32_t PalletNo = 0;
        IntPoint Offset{};
    };
    // Slots 1, 2 or 4 by mode, at most PalletCount, numbered from the view's pallet with wrap.
    std::vector<Slot> ShownSlots() const;
    // The slot's pallet outside the zone of blocks (those of the process in view on it) in a
    // colour of its own.
    void ShadeOutsideZone(Canvas& canvas, const Slot& slot,
                          const std::vector<int32_t>& blocks) const;
    // The zoomed window in place of the whole pallet's: its scale and its origin, centred in
    // the plan's share. Returns the first slot's frame.
    IntRect ZoomInto(const WorldWindow& window);
    // The first pallet named by the current process's Name2; null when there is none.
    const PalletInfo* FindViewPallet();
    // The stack label font: the first field of "DRAW-STRING".
    int32_t LabelFontSlot() const;
    // False until a set-up found a pallet and a usable scale.
    bool ViewReady() const;
    // The parts of DrawBlocks after the cells (grid marks only with the grid on).
    void DrawGridMarks(Canvas& canvas) const;
    void DrawRackLines(Canvas& canvas) const;
    // Every stack on the view in the mode's colours (DrawParts but the hit test).
    void DrawStacks(Canvas& canvas, DrawMode mode);
    // The side view of the stacks in the cross-section band (DrawParts with DrawMode::All).
    void DrawSection(Canvas& canvas) const;
    // The record's tag centred on rect, in the largest font it fits there in.
    void DrawTag(Canvas& canvas, const IntRect& rect, const HaichiInfo& record) const;

    const CKestoApp& app_;
    const ViewState& shown_;
    const MessageTable& messages_;
    const colour::Palette& palette_;
    IntRect area_;
    bool zoomed_ = false;
    const StackTags* tags_ = nullptr;
    Selection selection_;
};

// The height of a FLAT area width pixels wide in which the pallet fills the width: the
// least that leaves no room above and below its world window (frame and margins); a narrow
// pallet needs much.
int32_t FlatAreaHeight(const PalletInfo& pallet, int32_t width);

// The fill of a part's rectangle: a part with a '1' among the first four characters of its
// sensitive sides is drawn in the palette's marked colours.
Rgb MarkColour(const PartsInfo& part, Rgb colour,
               const colour::Palette& palette = colour::kScreenPalette);

}  // namespace kesto
