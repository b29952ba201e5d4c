// One job from start-up to exit code. The window and kesto-batch both drive a JobSession, so
// the batch tool is the window with the operator pressing OK: every decision lives here, the
// window only turns events into these calls and shows the state.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/CKestoApp.h"
#include "app/InputReaders.h"
#include "app/ViewState.h"
#include "history/EditHistory.h"
#include "session/CommandJournal.h"
#include "support/Services.h"

namespace kesto {

class Canvas;
class PalletDrawing;
class Selection;

// Where the picked stack stood when MaiChg began.
struct SheetCountStart {
    double X = 0;
    double Y = 0;
};

// What a view of the session does when the session changes the whole job under it.
// Shows a change in the middle of a command, before the command's closing message.
using ShowChange = std::function<void(ChangeSet)>;

class SessionView {
  public:
    virtual ~SessionView() = default;
    // LoadAndPlace has reset the selection state: show the schedule, the current process's
    // parts, the small box and the pallet choice as they now are.
    virtual void ShowResetJob() {}
    // LoadAndPlace has placed the job: show the parts and the set-aside list.
    virtual void ShowPlacedJob() {}
};

class JobSession {
  public:
    // Keeps the services and the view state of whoever shows the job (the window, kesto-batch)
    // for the life of the session; reads nothing yet.
    JobSession(const Services& services, std::string commandLine, ViewState& view);
    JobSession(const JobSession&) = delete;
    JobSession& operator=(const JobSession&) = delete;

    CKestoApp& App() { return app_; }
    const CKestoApp& App() const { return app_; }
    const Services& Svc() const { return services_; }
    // What the operator looks at: the commands act on the process and pallets on view. Only
    // the session's commands change it.
    const ViewState& Shown() const { return shown_; }
    void SetView(SessionView* view) { view_ = view; }

    // --- start-up -------------------------------------------------------------------
    // Per-user values, settings and message file, command line, pallet and job files, and
    // the outlines unless unread (then for Retry and Auto too).
    // false when the job cannot be shown; Exit() then gives the start-up code.
    bool StartUp(OutlineFiles outlines = OutlineFiles::Read);
    // The window's initialisation: a job without processes ends through Cancel; otherwise
    // the first LoadAndPlace. false when the initialisation stops early (no processes, or
    // the placement failed, leaving the lists as far as they were filled).
    bool Init();
    // Resets the selection state, checks the job (a failed check runs the Cancel handling
    // and goes on), then restores, trims, fills (SavedPlacement::Restore) and places. keep:
    // the counts by Seq that PlacedCounts::Kept places. 1 on success.
    int LoadAndPlace(PlacedCounts counts, SavedPlacement saved, const std::vector<int>& keep);

    // --- what the operator looks at -----------------------------------------------------
    // Each reports what it changed. The process, pallet, box and view commands report their
    // change even when the same one was chosen again: the window shows it anew.
    ChangeSet ChooseKoutei(int32_t position);
    ChangeSet ChoosePallet(int32_t pallet);
    ChangeSet ChooseBox(int32_t code);
    ChangeSet ChooseView(PalletView mode);
    ChangeSet SetGrid(bool on);
    ChangeSet Set3D(bool on);
    ChangeSet SetHit(HitBy hit);
    ChangeSet SwitchBlockDraw();
    // FLAT or DANMEN zoomed to window (none: the whole pallet), rounded as the journal writes
    // it, and written to the journal at once.
    ChangeSet SetWindow(const std::optional<WorldWindow>& window);
    // The same for each step of a pan or a pinch, whose window is written once, by the
    // SetWindow that ends it or before the next command's line.
    ChangeSet MoveWindow(const std::optional<WorldWindow>& window);

    // --- deciding commands ------------------------------------------------------------
    // The part of a list line: its Seq, in the current process unless anyKoutei.
    PartsInfo* FindPart(int32_t seq, bool anyKoutei);
    // Small box to set-aside for the selected small-box line (none: message 7, nothing
    // changed). The part lists change, also when the line's part is not found.
    ChangeSet Down(std::optional<int32_t> selectedSeq);
    // Set-aside to the current small box for the selected set-aside line. The part lists
    // change and the line is gone (also after message 11/12, which changes no part).
    ChangeSet Up(std::optional<int32_t> selectedSeq);
    // Asks 202/203; on OK reads the job again and places it anew (the reset shows through the
    // SessionView as it happens).
    ChangeSet Retry();
    // Asks 204/205; on OK reads the job again and places it keeping each part's placed count.
    ChangeSet Auto();
    // left: the stacks picked in the drawing from the pallets to the set-aside area (message
    // 15 while a rubber band is in force). The pick is drawn back on canvas before its stacks
    // go; the process's corners are rebuilt from the stacks that remain.
    ChangeSet Left(PalletDrawing& drawing, Canvas& canvas);
    // right: the selected set-aside part back onto the pallets in view (messages 7, 13/14, and
    // 9 or 10 when it does not fit wholly).
    // show gets the change once the part is back, before message 9 or 10 reports what was
    // not: the operator reads the message over the lists and the drawing as they now stand.
    ChangeSet Right(std::optional<int32_t> selectedSeq, const ShowChange& show = {});
    // Whether any part of the job has pieces set aside (by left or Down). OK and the close box
    // are allowed exactly while none has, however the pieces came back or the job was re-read.
    bool AnyPartSetAside() const;
    // Why part seq (of any process) is short, from the message file; empty when it is not.
    std::string WhyShortText(int32_t seq) const;
    // MaiChg before its dialog: the picked stack's position, remembered for the pick after
    // the change; none without a pick, or after message 15 while a rubber band is in force.
    std::optional<SheetCountStart> BeginSheetCount(const PalletDrawing& drawing);
    // MaiChg after its dialog gave newCount: the picked part re-stacked with newCount pieces
    // per stack and its stacks picked again; show gets the change next, then message 10 when
    // the part is now short (the result), and last LastPicked becomes the stack nearest the
    // remembered place.
    bool ApplySheetCount(PalletDrawing& drawing, const SheetCountStart& start, int32_t newCount,
                         const ShowChange& show = {});
    // Each part's placed count by Seq (1000 entries), as Auto carries it over.
    std::vector<int> KeepTable() const;
    // The small box shown after a reset: box 1, 2 or 3, whichever is defined first.
    void ChooseDefaultBox();
    bool AnySmallBoxDefined() const;

    // --- undo and redo ----------------------------------------------------------------
    // Every correction (a drop, left, right, To set-aside, To small box, a sheet count, Retry,
    // Auto) is a step once its checks have passed. The commands that take no drawing record
    // the selection the window shows, given here once (none: an empty selection).
    void WatchSelection(const Selection* selection) { watched_ = selection; }
    const EditHistory& History() const { return history_; }
    // A drop's step: begun before the stacks move, kept only when they did.
    void BeginStep(const char* name, const Selection& selection);
    void EndStep(bool changed);
    // The last step taken back, or done again: the job and the drawing's selection become
    // what they were, and the process and pallet on view those where the step was taken (or
    // taken back). Nothing changes when there is none.
    ChangeSet Undo(PalletDrawing& drawing);
    ChangeSet Redo(PalletDrawing& drawing);

    // --- the journal -----------------------------------------------------------------
    // Every command carried out from now on is written into journal (none: not written).
    void JournalIn(CommandJournal* journal) {
        journal_ = journal;
        journaledArea_ = {};
    }
    CommandJournal* JournalTarget() const { return journal_; }
    // Writes a command carried out outside the session's own calls (a drop in the drawing).
    void Journal(const JournalCommand& command);
    // Writes the per-user values the commands act on (Direct, the block cells) as the lines
    // that set them, at the head of a journal: its replay then starts from them wherever it
    // runs. A stored number other than 0 and 1 has no line; the replay keeps its own.
    void JournalSettings();
    // Writes the drawing area's client size when it is not the one written last in this
    // journal: the drawing is laid out at that size until the next one.
    void JournalArea(int32_t width, int32_t height);
    // The stacks' places in the stack list, in order, as the journal names them; a stack
    // that is gone is left out.
    std::vector<int32_t> PositionsOf(const std::vector<StackId>& stacks) const;

    // --- finishing --------------------------------------------------------------------
    // OK or Cancel: the offset check, then the result and save files. true when the job
    // ended (the dialog closes); false when it stays open.
    bool Finish(OkCancel end);
    // The window's close box: the offset check, then Cancel.
    bool Close();
    // The job ended: by OK or Cancel, or by the operator's stop at the offset warning.
    bool Ended() const { return ended_; }
    bool Aborted() const { return aborted_; }
    // The code the latest reading, placement or writing that left one left (error::kNone while
    // none did): what kesto-batch reports when the result files were not written.
    int32_t ErrorCode() const { return errors_.Code(); }
    // Saves the per-user values, frees the job and returns the settled exit code (the full
    // code; 999 after the offset stop, which saves nothing). A second call only repeats the code.
    int Exit();

  private:
    // Frees the job and reads the per-user values and the input files again.
    void RereadJob();
    // The input files (the outlines too unless they are left); starts the outline reads that
    // go on beside the placement.
    bool ReadJobInput();
    // Waits for the outlines read beside the placement, and keeps their code as of the read.
    void AwaitOutlines();
    // The job's check, then the placement: 1 when placed.
    int CheckAndPlace(PlacedCounts counts, SavedPlacement saved, const std::vector<int>& keep);
    // The offset check; false after the operator's stop, which ends the job.
    bool PassesExitCheck();
    // Records the step of a correction about to change the job.
    void RecordStep(const char* name, const Selection& selection);
    void RecordStep(const char* name);
    // Where the operator looks now, and showing a step where it was taken.
    ViewPlace Place() const;
    ChangeSet ShowAt(const ViewPlace& place);
    // Marks the stacks from position first of the stack list on (those just made) with edit.
    void MarkStacksFrom(size_t first, uint8_t edit);
    int PlaceJob(PlacedCounts counts, SavedPlacement saved, const std::vector<int>& keep);

    Services services_;
    CKestoApp app_;
    ViewState& shown_;
    SessionView* view_ = nullptr;
    EditHistory history_;
    const Selection* watched_ = nullptr;
    CommandJournal* journal_ = nullptr;
    std::pair<int32_t, int32_t> journaledArea_{};  // the client size written last, 0 x 0: none
    bool windowUnwritten_ = false;                 // a pan or pinch moved the window
    LatestErrorCode errors_;
    OutlineFiles outlines_ = OutlineFiles::Read;
    // The outlines being read beside the placement, and how many codes were left when the
    // input was read. Declared after the job, so that its threads end before the job goes.
    std::unique_ptr<OutlineReads> outlineReads_;
    uint32_t codesAtRead_ = 0;
    bool ended_ = false;
    bool aborted_ = false;
    std::optional<int> exitCode_;
};

}  // namespace kesto
