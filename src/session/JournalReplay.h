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
    // be carried out. Drops are made on the drawing laid out at the size their line names.
    ReplayOutcome Run(const JournalFile& journal);

  private:
    // Carries out one command; the reason when its line names what the job does not have.
    std::optional<std::string> Apply(const JournalCommand& command);
    std::optional<std::string> PickStacks(const std::vector<int32_t>& places);
    void LayOutAt(int32_t width, int32_t height);

    JobSession& session_;
    PalletDrawing& drawing_;
    DrawingEdit& edit_;
    OperatorRelay& relay_;
    Operator& answers_;
    DisplayList scratch_;  // what the commands draw, which no one shows
};

}  // namespace kesto
