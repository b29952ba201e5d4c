// The editing rules of the drawing area: what a press, a move and a release of the left mouse
// button do to the picks, the rubber band and the placement. The window only translates its
// mouse events into these calls; what is drawn goes through the canvas the caller passes, and
// what the window must do besides goes through DrawAreaView.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/CKestoApp.h"
#include "history/JobSnapshot.h"
#include "session/JobSession.h"
#include "support/Services.h"
#include "view/Canvas.h"
#include "view/PalletDrawing.h"

namespace kesto {

class CKs_Haichi;

// Why a drop moved nothing.
enum class DropRefusal {
    OffThePallets,   // the dropped rectangle is on no pallet in view
    NoRoom,          // on a pallet, but other stacks or the pallet's edge are in the way
    NotOnOnePallet,  // the stacks of a band would not all land on one pallet
};

// The status line's text of a refusal: the value of its key in section "MainDlg" ("S-DROP-OFF",
// "S-DROP-ROOM", "S-DROP-PALLET"), or an English text when the message file has none.
std::string DropRefusalText(DropRefusal why, const MessageTable& messages);

// Where a release at the cursor would leave the carried stacks, worked out by the drop itself on
// a copy of the job: so the preview is the result.
struct DropPreview {
    std::optional<DropRefusal> Refused;  // the release would move nothing, for this reason
    // Each carried stack's rectangle where it would stand; none for one that would leave the
    // view.
    std::vector<IntRect> Landing;
    bool operator==(const DropPreview&) const = default;
};

// What the editing asks of the window around the drawing area.
class DrawAreaView {
  public:
    virtual ~DrawAreaView() = default;
    // Draws the whole area again (background, pallets, stacks); the drag image stays.
    virtual void Refresh() = 0;
    // Shows the drag image (or the rubber band) as these rectangles over the picture, in place
    // of the one shown before; it never becomes part of the picture.
    virtual void ShowDragImage(const std::vector<IntRect>& rects) = 0;
    virtual void HideDragImage() = 0;
    // Selects exactly the lines of the main part list whose number is one of seqs.
    virtual void SyncPartList(const std::vector<int32_t>& seqs) = 0;
    // Selects the part's line in the all-parts dialog.
    virtual void SelectPartsAllLine(int32_t seq) = 0;
    // Describes the picked stack in the part information panel again (none: clears it).
    virtual void RefreshInfoPanel() = 0;
    // While a drag is carried: where its release would land (none: nothing to show). Taken
    // away with the drag image.
    virtual void ShowLanding(const std::optional<DropPreview>& landing) = 0;
    // A drop moved nothing: says why, with the rectangles where they were dropped.
    virtual void ShowRefusedDrop(DropRefusal why, const std::vector<IntRect>& rects) = 0;
};

// MoveCount restarts at 1 after this many moves.
inline constexpr int32_t kMoveCountWrap = 30000;
// An arrow key tries the drop this many pixels further at a time.
inline constexpr int32_t kNudgePixels = 2;
// A drop this close to where the stack was picked up puts it back, it is not refused.
inline constexpr int32_t kPutBackPixels = 2;
// LastMouse when no drag image was drawn.
inline constexpr IntPoint kNoMouse{-1000, -1000};

class DrawingEdit {
  public:
    DrawingEdit(CKestoApp& app, const Services& services, PalletDrawing& drawing,
                DrawAreaView& view);

    // Left button down at (x, y) of the area's client pixels.
    void Press(Canvas& canvas, int32_t x, int32_t y, bool shift);
    // Mouse move; leftButtonOnly: the left button is the only button or key held.
    void Move(Canvas& canvas, int32_t x, int32_t y, bool leftButtonOnly);
    // Left button up.
    void Release(Canvas& canvas, int32_t x, int32_t y);
    // Drops become steps of the session's undo history (none: drops are not recorded).
    void RecordStepsIn(JobSession* session) { session_ = session; }
    // The Direct command: switches IsDirect; leaving free moves drops a band in force with
    // the picks (true: the window then shows no pick and picks single stacks).
    bool SwitchDirect();
    // After the Direct command: the last pick and the pick history are forgotten.
    void DirectSwitched();
    // The stack picked as a click on it would pick it, without drawing.
    void PickAlone(const HaichiInfo& stack);
    // The stack picked from the keyboard: lit and described as a click on it would, alone (a
    // band in force is let go); a stack not on screen is not picked.
    void PickFromKeys(Canvas& canvas, const HaichiInfo& stack);
    // The left button went down in the drawing and is not up yet.
    bool DragInProgress() const { return tracking_ || LastMouse != kNoMouse; }
    // Escape: the stacks or the rubber band carried are let go where they stood, as leaving
    // the drawing zone lets them go (a band's entries drawn back as the move after it would);
    // the release then drops nothing. False when no drag was in progress.
    bool AbandonDrag(Canvas& canvas);
    // Retry or Auto placed the job anew: nothing is picked, no band is in force.
    void JobReloaded();
    // A drop or band drop of the journal made again: the picks and the band entries the line
    // names, dropped where it says, on the drawing as it is laid out now. The reason when the
    // line names a stack the list does not have (nothing is then changed).
    std::optional<std::string> ReplayDrop(Canvas& canvas, const JournalCommand& line);

    // --- mouse state --------------------------------------------------------------------
    IntPoint LastMouse = kNoMouse;      // where the drag image was last drawn
    int32_t MoveCount = 0;              // -1 at a press, +1 per move; a drop needs 1 or more
    IntPoint DragOffset{};              // PickRect's top-left corner from the cursor at the press
    StackId DragAnchor = kNoStack;      // the band's stack grabbed; only compared with none
    std::vector<IntPoint> BandOffsets;  // each BandList entry's corner from the cursor
    bool Tracking() const { return tracking_; }
    // The rubber band being tracked, as the cursor has drawn it so far (not normalised).
    IntRect TrackedBand() const {
        return IntRect{trackFrom_.X, trackFrom_.Y, trackTo_.X, trackTo_.Y};
    }

    // The release at (x, y) of the drag in hand, run on a copy of the job; none when no drop
    // is due there (nothing carried, or the cursor off the drawing zone). Changes nothing.
    std::optional<DropPreview> PreviewAt(int32_t x, int32_t y);
    // An arrow key: the pick (or the band) dropped where a drag that way would first land it
    // further that way, in steps of kNudgePixels, tried on a copy first; then dropped as a
    // release there is, journaled as one drop. (stepX, stepY) is the direction, one of them
    // 1 or -1. False when nothing is picked or no landing that way accepts it (the window is
    // told, as of a refused drop).
    bool Nudge(Canvas& canvas, int32_t stepX, int32_t stepY);
    // The copy of the job the last preview ran on: the job as that release would leave it;
    // emptied at the release.
    const CKestoApp& PreviewJob() const { return previewJob_; }

    // Does the rectangle lie within one pallet slot of the current view?
    bool WithinOneSlot(const IntRect& band) const;

  private:
    void PressSteps(Canvas& canvas, int32_t x, int32_t y, bool shift);
    void MoveSteps(Canvas& canvas, int32_t x, int32_t y, bool leftButtonOnly);
    // The information panel describes no stack once nothing is picked.
    void InfoFollowsPick(StackId before);
    // Press steps: a single pick becoming a band, Shift and plain presses in a band, a pick.
    bool StartBandFromPick(Canvas& canvas, int32_t x, int32_t y);
    void ShiftInBand(Canvas& canvas, int32_t x, int32_t y);
    bool GrabBand(Canvas& canvas, int32_t x, int32_t y);
    void SinglePick(Canvas& canvas, int32_t x, int32_t y);
    void PartHit(Canvas& canvas, int32_t x, int32_t y);
    // The rubber band let go at the release.
    void FinishBand(Canvas& canvas);
    // Release steps.
    bool DropDue() const;
    void Drop(Canvas& canvas, int32_t x, int32_t y);
    // The rectangle around the stacks shown on the screen; none when none is.
    std::optional<IntRect> ShownUnion(const std::vector<StackId>& stacks) const;
    // The drop of dropped, shifted by (dx, dy) from the press, on a copy of the job.
    DropPreview PreviewDrop(const std::vector<IntRect>& dropped, int32_t dx, int32_t dy);
    // What a drop did to the job it ran on.
    struct DropRun {
        std::optional<DropRefusal> Refused;
        std::vector<StackId> Carried;  // the stacks it carried, in pick or band order
        bool Moved = false;            // one of them stands elsewhere
    };
    // The drop's rules on job, with sel's picks and band (whose entries a band drop moves):
    // the live job for a release, a copy for a preview.
    DropRun RunDrop(CKestoApp& job, Selection& sel, const std::vector<IntRect>& dropped, int32_t dx,
                    int32_t dy) const;
    // The drop itself, for the mouse and for the journal: dropped, the rectangles let go (the
    // single pick's first); (dx, dy), a band's shift; at, the release, where the pick is hit
    // again.
    void CarryOutDrop(Canvas& canvas, const std::vector<IntRect>& dropped, int32_t dx, int32_t dy,
                      IntPoint at);
    // Nothing when every entry moved, else why none did.
    // picked: the stacks picked up, which the tests pass over.
    std::optional<DropRefusal> DropBand(CKs_Haichi& engine, CKestoApp& job, Selection& sel,
                                        KouteiInfo* koutei, const std::vector<HaichiInfo*>& picked,
                                        int32_t dx, int32_t dy) const;

    // A point hit test with a band kept: the band set aside around it. Picked is cleared first, so
    // the result tells whether anything was hit.
    StackId PointTestKeepingBand(Canvas& canvas, int32_t x, int32_t y);
    // The drag image at the cursor: PickRect, or every band entry at its offset.
    std::vector<IntRect> DragImageAt(int32_t x, int32_t y) const;
    // The journal's line of the drop about to be made: a single pick dropped at dropped, or the
    // band shifted by (dx, dy), with the picks left out of the corner marks.
    JournalCommand DropLine(const IntRect& dropped, int32_t dx, int32_t dy) const;
    // Where the stacks stand, to tell a drop that moved nothing (and so is no step to undo).
    static std::vector<std::pair<double, double>> Positions(const std::vector<HaichiInfo*>& stacks);
    // The rectangle's centre lies on a pallet in view.
    bool OnAPallet(const IntRect& r) const;
    bool BandDragInForce() const;
    void Sync();
    // The pallet of a stack's block, -1 when it has none (or the stack is gone).
    int32_t PalletOf(StackId stack) const;
    // The stacks the selection names, null for one that is gone; the commands work on these.
    HaichiInfo* StackOf(StackId id) const;
    static std::vector<HaichiInfo*> StacksIn(CKestoApp& job, const std::vector<StackId>& ids);
    bool InDrawingZone(int32_t x, int32_t y) const;
    // What leaving the drawing zone with a drag does: the pick and the band entries let go.
    void LetGoOfDrag();

    // The drawing's selection, which these operations change.
    const Selection& Sel() const { return d_.Selected(); }
    Selection& Sel() { return d_.Select(); }

    CKestoApp& app_;
    Services services_;
    PalletDrawing& d_;
    JobSession* session_ = nullptr;
    DrawAreaView& view_;
    bool tracking_ = false;
    IntPoint trackFrom_{};
    IntPoint trackTo_{};
    IntPoint pressAt_{};  // the cursor at the press that grabbed a band
    // The job as it stood at the press, taken at the drag's first preview; each preview runs
    // on previewJob_ made from it anew.
    std::optional<JobSnapshot> previewBase_;
    CKestoApp previewJob_;
};

}  // namespace kesto
