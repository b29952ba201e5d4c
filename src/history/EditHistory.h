// The steps of the operator's corrections, to be taken back and done again. A step holds the
// job and the selection as they were before the correction it is named after; taking it back
// keeps the state it leaves, so that it can be done again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "history/JobSnapshot.h"
#include "support/MessageFile.h"
#include "view/Selection.h"

namespace kesto {

class CKestoApp;

// The names of the steps, as the commands are called.
namespace step {
inline constexpr const char* kMove = "Move";
inline constexpr const char* kLeft = "Left";
inline constexpr const char* kRight = "Right";
inline constexpr const char* kToSetAside = "To set-aside";
inline constexpr const char* kToSmallBox = "To small box";
inline constexpr const char* kSheetCount = "Sheet count";
inline constexpr const char* kRetry = "Retry";
inline constexpr const char* kAuto = "Auto";
}  // namespace step

// The background menu's items: "Undo <step>" and "Redo <step>" in the words of the message
// file's "MainDlg" keys "M-UNDO", "M-REDO" and "STEP-<name>" ("STEP-MOVE", "STEP-LEFT",
// "STEP-RIGHT", "STEP-TO-SET-ASIDE", "STEP-TO-SMALL-BOX", "STEP-SHEET-COUNT", "STEP-RETRY",
// "STEP-AUTO"), English where it has none; the word alone when there is no step.
class EditHistory;
std::string UndoMenuText(const EditHistory& history, const MessageTable& messages);
std::string RedoMenuText(const EditHistory& history, const MessageTable& messages);

// Where the operator looked when a step was taken: the process (position in the list) and the
// pallet on view. Taking the step back or doing it again shows it there.
struct ViewPlace {
    int32_t Koutei = 0;
    int32_t Pallet = 0;
};

inline constexpr size_t kEditHistorySteps = 100;
// Beyond this many bytes the oldest steps go too, however few the steps are (one stays).
inline constexpr size_t kEditHistoryBytes = size_t{64} << 20;

class EditHistory {
  public:
    explicit EditHistory(size_t maxSteps = kEditHistorySteps, size_t maxBytes = kEditHistoryBytes);

    // Before a correction: the job and selection it starts from become the step to take
    // back. The steps that were taken back are gone; beyond the limits the oldest go.
    void Record(const std::string& name, const CKestoApp& app, const Selection& selection,
                ViewPlace view = {});
    // For a correction that may turn out to change nothing (a drop that is refused): Begin
    // keeps the state it starts from aside, Commit makes it the step (as Record), Cancel
    // forgets it and leaves the history as it was.
    void Begin(const std::string& name, const CKestoApp& app, const Selection& selection,
               ViewPlace view = {});
    void Commit();
    void Cancel() { pending_.reset(); }
    // Takes the last step back: app and selection become what they were before it, and view
    // (when given: where the operator looks now) where the step was taken. false, and nothing
    // changes, when there is none.
    bool Undo(CKestoApp& app, Selection& selection, ViewPlace* view = nullptr);
    // Does the last step taken back again, view back where the undo was. false when there is
    // none.
    bool Redo(CKestoApp& app, Selection& selection, ViewPlace* view = nullptr);

    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    // The name of the step Undo or Redo would take; empty when there is none.
    std::string UndoName() const { return CanUndo() ? undo_.back().Name : std::string(); }
    std::string RedoName() const { return CanRedo() ? redo_.back().Name : std::string(); }
    size_t UndoSteps() const { return undo_.size(); }
    size_t RedoSteps() const { return redo_.size(); }
    // The names of the steps to take back, the oldest first.
    std::vector<std::string> UndoNames() const;
    // What the steps hold, parts shared between them counted once.
    size_t Bytes() const;
    void Clear();

  private:
    struct Step {
        std::string Name;
        JobSnapshot Job;
        Selection Picks;
        ViewPlace View;
    };
    static Step Capture(const std::string& name, const CKestoApp& app, const Selection& selection,
                        ViewPlace view, const JobSnapshot* like);
    // Moves the last step of from to the back of to, taken as the state now, and applies it.
    void Swap(std::deque<Step>& from, std::deque<Step>& to, CKestoApp& app, Selection& selection,
              ViewPlace* view);
    static void Apply(const Step& step, CKestoApp& app, Selection& selection);
    void Trim();
    // The steps join and leave the two lists only through these, which keep bytes_ counted.
    void PushBack(std::deque<Step>& steps, Step step);
    Step PopBack(std::deque<Step>& steps);
    void PopFront(std::deque<Step>& steps);
    void ClearSteps(std::deque<Step>& steps);
    // Adds (by 1) or takes away (by -1) the step's bytes, a shared copy counted while any step
    // holds it.
    void Count(const Step& step, int by);

    size_t maxSteps_;
    size_t maxBytes_;
    std::deque<Step> undo_;  // the last step at the back
    std::deque<Step> redo_;  // the step taken back last at the back
    std::optional<Step> pending_;
    // How many steps hold each shared copy, and the bytes of all the steps.
    std::unordered_map<const void*, size_t> holders_;
    size_t bytes_ = sizeof(EditHistory);
};

}  // namespace kesto
