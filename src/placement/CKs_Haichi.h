// The placement engine: stacks the parts of every process into block corners.
// A short-lived worker; all state that survives lives in the application object.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"

namespace kesto {

class CornerQuery;
class PlacementIndex;
struct FieldList;

// Screen rectangle of one of the four pallet slots of the drawing area.
using SlotRect = IntRect;

// A rectangle in the job's length unit.
struct LengthRect {
    double X0 = 0;
    double Y0 = 0;
    double X1 = 0;
    double Y1 = 0;
};

// Where a stack stands in a block corner: its reference point (right edge, lower edge) and
// the rectangle that it keeps free around itself.
struct CornerPlace {
    double X = 0;
    double Y = 0;
    LengthRect Clear;
};

// The corners in the order in which every search tries them.
inline constexpr std::array<uint8_t, 4> kCornerSearchOrder{kCornerMaxMin, kCornerMaxMax,
                                                           kCornerMinMin, kCornerMinMax};
// The Occupant of the blocks a group move marked: the group's part lived for the move only,
// and this number matches no part (parts are numbered from 1).
inline constexpr int32_t kMovedGroup = -1;
// The Occupant that the group's part marks blocks with during the move, apart from the marks
// of earlier moves.
inline constexpr int32_t kGroupMoving = -2;

// Most parts and stacks one operation remembers.
inline constexpr size_t kRememberLimit = 1000;

// Whom a corner is tested for. Placing: a block held by another part refuses it. Dragging:
// any block may take the drop, and the stacks being dragged are no obstacle.
enum class CornerTestMode : int { Placing = 0, Dragging = 1 };

// The stack of a part of size sx x sy with gaps gx, gy in corner 1, 2, 4 or 8 of block b.
inline CornerPlace PlaceInCorner(const BlockInfo& b, int corner, double sx, double sy, double gx,
                                 double gy) {
    switch (corner) {
        case kCornerMinMin:
            return {b.MinX + sx, b.MinY, {b.MinX, b.MinY, b.MinX + sx + gx, b.MinY + sy + gy}};
        case kCornerMinMax:
            return {b.MinX + sx, b.MaxY - sy, {b.MinX, b.MaxY - sy - gy, b.MinX + sx + gx, b.MaxY}};
        case kCornerMaxMin:
            return {b.MaxX, b.MinY, {b.MaxX - sx - gx, b.MinY, b.MaxX, b.MinY + sy + gy}};
        default:
            return {b.MaxX, b.MaxY - sy, {b.MaxX - sx - gx, b.MaxY - sy - gy, b.MaxX, b.MaxY}};
    }
}

// The footprint of a stack of size sx x sy in corner 1, 2, 4 or 8 of block b, without gaps.
inline LengthRect Footprint(const BlockInfo& b, int corner, double sx, double sy) {
    const bool low = corner == kCornerMinMin || corner == kCornerMinMax;     // at MinX
    const bool bottom = corner == kCornerMinMin || corner == kCornerMaxMin;  // at MinY
    return {low ? b.MinX : b.MaxX - sx, bottom ? b.MinY : b.MaxY - sy, low ? b.MinX + sx : b.MaxX,
            bottom ? b.MinY + sy : b.MaxY};
}

// The footprint keeps off the pallet's margin and within its lengths.
inline bool OnPallet(const LengthRect& f, const PalletInfo& pal) {
    return !(f.X0 < 0 || f.Y0 < pal.MarginY || f.Y1 > pal.LengthY || f.X1 > pal.LengthX);
}

// A length ratio as a piece count: truncated toward zero, NaN as 0, cut to the int32 range.
int32_t TruncToInt32(double v);
// a + b cut to the int32 range.
int32_t AddClamped(int32_t a, int64_t b);
// Shares num1 pieces out over two or more stacks in turn, the earlier ones holding the more;
// a num1 of 0 or less leaves one piece in the first stack. Fewer than two: unchanged.
void ShareOut(const std::vector<HaichiInfo*>& stacks, int32_t num1);

// What the drawing area hands over for a drop: the screen rectangles of its four pallet slots
// and of the blocks (by block index, as it last drew them; the snap move measures the drop
// against their corners), the stacks it has selected (TestCorner passes over them while
// dragging), and whether the call only probes which pallet the drop would land on.
struct DropInput {
    std::array<SlotRect, 4> Slots{};
    std::span<const IntRect> BlockRects;
    std::vector<HaichiInfo*> Selection;
    bool Probe = false;
};

// Where a drop puts the stacks: where they were let go (free moves, IsDirect 1), or snapped
// into the nearest free block corner.
enum class DropPlacement { Snap, Free };
inline DropPlacement DropPlacementFor(DirectMode direct) {
    return direct.IsOne() ? DropPlacement::Free : DropPlacement::Snap;
}

// The pallets on view that a part is stacked onto (Stacking::PalletsInView) and a drop lands
// on, slot by slot; -1: the slot shows none.
using PalletsOnView = std::array<int, 4>;
inline constexpr PalletsOnView kNoPalletsOnView{-1, -1, -1, -1};

// The pallets c1..c4 of the view's mode from its current pallet, of palletCount pallets.
PalletsOnView CandidatePallets(const ViewState& shown, int32_t palletCount);

// The bounding rectangle of the blocks of koutei; null or a process without blocks: the empty
// bounds (kNoBound, kNoBound)-(-kNoBound, -kNoBound).
LengthRect ProcessBounds(const CKestoApp& app, const KouteiInfo* koutei);

// MoveGroup's result (1 moved, 0 not) and, for a probe, the pallet the drop would land on
// (-1: none).
struct DropResult {
    int Result = 0;
    int32_t Target = -1;
};

// Every operation called from outside takes the process, part and drop data it works on, and
// holds them only for the length of the call: what one call leaves behind is in the job alone.
class CKs_Haichi {
  public:
    // onView: the pallets a part is stacked onto (Stacking::PalletsInView) and a drop lands on.
    CKs_Haichi(CKestoApp& app, const Services& services,
               const PalletsOnView& onView = kNoPalletsOnView);
    virtual ~CKs_Haichi();

    // The operations that make stacks fail with error::kNoMemoryForStack when one cannot be
    // allocated; RestorePlacement also fails, without a code, on a save file that cannot be
    // opened or that holds an unplaced part.
    Outcome PlaceAll(PlacedCounts counts, SavedPlacement saved);
    Outcome StackPart(KouteiInfo* koutei, PartsInfo* part, Stacking mode);
    Outcome RestorePlacement(const std::string& path);
    int TrimExcess();
    int FillShortage();
    Outcome PlaceOnePart(PartsInfo* part, KouteiInfo* koutei, Stacking mode, QuantityShare share);
    void RebuildCorners(KouteiInfo* koutei, const std::vector<HaichiInfo*>& leaveOut);
    double PieceHeight(const PartsInfo& part) const { return part.PieceHeight; }

    // May a stack of part stand in that corner of the block? selection: the stacks being
    // dragged, which the collision test passes over in CornerTestMode::Dragging.
    int TestCorner(KouteiInfo* koutei, PartsInfo* part, CornerTestMode mode, int blockIndex,
                   int corner, const std::vector<HaichiInfo*>& selection = {});
    int TestRect(KouteiInfo* koutei, double x0, double y0, double x1, double y1, int pallet,
                 const PartsInfo* part);
    void MarkCorners(KouteiInfo* koutei, double x0, double y0, double x1, double y1, int pallet,
                     PartsInfo* part);
    // Moves the stacks dropped as the screen rectangle (left, top, right, bottom), where they
    // were let go or into the nearest free block corner.
    DropResult MoveGroup(KouteiInfo* koutei, const std::vector<HaichiInfo*>& stacks, int left,
                         int top, int right, int bottom, DropPlacement placement,
                         const DropInput& drop);

  private:
    // The operations as the engine runs them on its current process and part.
    Outcome PlaceKoutei(PlacedCounts counts, SavedPlacement saved);
    // firstOpen: how many of the process's blocks, in table order, are known to be filled by
    // other parts, so that the search for blocks passes them by.
    Outcome StackPart(Stacking mode, QuantityShare share, size_t firstOpen = 0);
    void MarkCorners(double x0, double y0, double x1, double y1, int pallet, PartsInfo* part);
    int MoveGroup(KouteiInfo* koutei, const std::vector<HaichiInfo*>& stacks, int left, int top,
                  int right, int bottom, DropPlacement placement);

    // The drop in hand, set by the public TestCorner and MoveGroup for the length of the call.
    std::vector<HaichiInfo*> Selection;   // stacks passed over by TestCorner while dragging
    std::array<SlotRect, 4> Slots{};      // screen rectangles of the four pallet slots
    std::span<const IntRect> BlockRects;  // screen rectangles of the blocks
    int32_t DropPallet = 0;               // -1 during a probe; the target pallet after it
    void ClearDrop();

    // The process, part and bounds in hand. Each public operation sets what it needs and, on
    // its way out, puts back what was there before it (nothing, unless it is called by another
    // operation), so that nothing of one call reaches the next.
    double BoundMinX = 0, BoundMaxX = 0, BoundMinY = 0, BoundMaxY = 0;
    KouteiInfo* CurKoutei = nullptr;
    PartsInfo* CurPart = nullptr;
    class CallScope {
      public:
        explicit CallScope(CKs_Haichi& engine)
            : engine_(engine),
              koutei_(engine.CurKoutei),
              part_(engine.CurPart),
              bounds_{engine.BoundMinX, engine.BoundMinY, engine.BoundMaxX, engine.BoundMaxY} {}
        CallScope(const CallScope&) = delete;
        CallScope& operator=(const CallScope&) = delete;
        ~CallScope() {
            engine_.CurKoutei = koutei_;
            engine_.CurPart = part_;
            engine_.BoundMinX = bounds_.X0;
            engine_.BoundMinY = bounds_.Y0;
            engine_.BoundMaxX = bounds_.X1;
            engine_.BoundMaxY = bounds_.Y1;
        }

      private:
        CKs_Haichi& engine_;
        KouteiInfo* koutei_;
        PartsInfo* part_;
        LengthRect bounds_;
    };

    // Bounding rectangle of the blocks of koutei (or the empty bounds for null), from the index
    // while one is up; ComputeBounds makes it the bounds in hand.
    LengthRect BoundsOf(const KouteiInfo* koutei) const;
    void ComputeBounds(const KouteiInfo* koutei);
    // The part's stacks in HaichiList order, at most limit of them.
    std::vector<HaichiInfo*> StacksOf(const PartsInfo* part, size_t limit);

    // StackPart's steps.
    int PiecesFor(int32_t remaining, Stacking mode) const;
    Outcome StackOverBlocks(Stacking mode, const std::array<int, 4>& candidates,
                            std::vector<HaichiInfo*>& made, size_t firstOpen);
    int StackIntoBlock(int blockIndex, Stacking mode, std::vector<HaichiInfo*>& made, int& pieces);
    bool IsCandidate(int pallet, const std::array<int, 4>& candidates) const;

    // The bulk operations (PlaceAll, RestorePlacement, StackPart) keep an index while they
    // run; without one (or when memory for it runs out) every lookup scans the lists, with
    // the same answers.
    class IndexScope;
    // The index when one is up and usable, else null.
    PlacementIndex* Index() const;
    // Files a stack just made in the index, if there is one.
    void IndexStack(HaichiInfo* h);
    // The questions about CurKoutei and CurPart (either may be null) as the job stands, with
    // the process's bounds, the index and the stacks being dragged.
    CornerQuery Query() const;

    // RestorePlacement's steps.
    // The first part of the list with each save key.
    class SaveKeyParts;
    // fields: the split's work space, kept over the lines of one file.
    Outcome RestoreLine(const std::string& line, FieldList& fields, const SaveKeyParts& parts);
    int FindRestoreBlock(const LengthRect& r, int storedPallet, int corner) const;
    // TrimExcess's removal of emptied stacks, with one corner rebuild per touched process.
    void RemoveEmptyStacks();
    void FillPart(PartsInfo& part);

    // MoveGroup's steps.
    int DropTarget(int left, int top, int right, int bottom) const;
    int FreeMove(const std::vector<HaichiInfo*>& stacks, const LengthRect& group, int target,
                 int right, int bottom);
    void SnapMove(const std::vector<HaichiInfo*>& stacks, const LengthRect& group, int target,
                  int left, int top, int right, int bottom);
    void MoveToCorner(HaichiInfo& stack, const LengthRect& group, int blockIndex, int corner);
    // The block's screen rectangle in the drop in hand; all 0 for a block it has none of.
    IntRect BlockPixels(int blockIndex) const;

    CKestoApp& app_;
    Services services_;
    PalletsOnView onView_;
    std::unique_ptr<PlacementIndex> index_;
};

}  // namespace kesto
