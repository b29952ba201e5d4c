// The commands of a journal carried out again, each as the window carried it out: the recovery
// of a job after the program ended in the middle of it, and kesto-batch --replay.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "history/Journal.h"
#include "session/DrawingEdit.h"
#include "session/JobSession.h"
#include "support/OperatorRelay.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"

namespace kesto {

struct ReplayOutcome {
    // The line of the file that could not be carried out (0: none) and why; the commands
    // before it were carried out.
    int BadLine = 0;
    std::string Why;
    // Commands carried out.
    int Commands = 0;
    // Lines passed over, for whoever runs the replay to tell: "line 7: unknown command zoom".
    std::vector<std::string> Skipped;
    // The journal's end (ok or cancel), which the replay leaves to its caller.
    std::optional<OkCancel> End;
    bool Ok() const { return BadLine == 0; }
};

class JournalReplay {
  public:
    // The session is driven with the window's drawing and its editing; relay is the operator
    // the session asks. While the journal runs, Retry and Auto are taken as confirmed (their
    // lines are only written once confirmed) and every other question goes to answers.
    JournalReplay(JobSession& session, PalletDrawing& drawing, DrawingEdit& edit,
                  OperatorRelay& relay, Operator& answers);

    // Every command line of journal in order, up to its end line or the first line that cannot
    // be carried out. The drawing is laid out after each command, as the window paints it, at
    // the client size the latest area or drop line names (before the first, the first named,
    // or the size an earlier run of this replay left): a free drop scales by the cells of
    // blocks laid out at earlier commands.
    ReplayOutcome Run(const JournalFile& journal);

  private:
    // Carries out one command; the reason when its line names what the job does not have.
    std::optional<std::string> Apply(const JournalCommand& command);
    std::optional<std::string> PickStacks(const std::vector<int32_t>& places);
    // The whole picture at that size, as before a drop.
    void LayOutAt(int32_t width, int32_t height);
    // The pallets and their cells at the size named last, without the stacks: what a command
    // leaves for the drops after it.
    void LayOut();

    JobSession& session_;
    PalletDrawing& drawing_;
    DrawingEdit& edit_;
    OperatorRelay& relay_;
    Operator& answers_;
    DisplayList scratch_;  // what the commands draw, which no one shows
    int32_t width_ = 0;    // the drawing area's client size; 0 x 0 before the journal names one
    int32_t height_ = 0;
};

}  // namespace kesto
