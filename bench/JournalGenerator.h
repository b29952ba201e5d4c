// Random journals for a started job, for the replay benchmark and the replay tests: each
// command is drawn from what the job holds at that moment (the stacks on view, the parts set
// aside, the small box in view) and carried out before the next is drawn, so that every line
// names what is there when it is replayed. Drops land near where their stack is drawn.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "BenchServices.h"
#include "JobGenerator.h"
#include "history/Journal.h"
#include "session/HeadlessDrawing.h"
#include "session/JobSession.h"
#include "support/OperatorRelay.h"

namespace kesto {

// One start of a written installation as the window makes it, without a window: the session
// initialised (its questions answered OK, unseen), with the drawing no window shows.
class HeadlessJob {
  public:
    explicit HeadlessJob(const Installation& inst);
    HeadlessJob(const HeadlessJob&) = delete;
    HeadlessJob& operator=(const HeadlessJob&) = delete;
    bool Started() const { return started_; }
    JobSession& Session() { return session_; }
    HeadlessDrawing& Area() { return *area_; }
    OperatorRelay& Relay() { return relay_; }

  private:
    QuietOperator quiet_;
    OperatorRelay relay_{quiet_};
    BenchHost host_;
    MessageTable messages_;
    ViewState shown_;
    JobSession session_;
    std::unique_ptr<HeadlessDrawing> area_;
    bool started_ = false;
};

struct JournalShape {
    uint32_t Seed = 1;
    int Commands = 1000;
    // The drawing area the drops are made in.
    int32_t Width = 1600;
    int32_t Height = 900;
    // Per thousand commands, Retry and Auto (each reads and places the whole job again).
    int ReloadsPerThousand = 4;
};

// Carries out shape.Commands random commands on the initialised session (its operator is
// relay) and gives them back in the journal's words, in order, after the lines of the
// per-user values they act on (as a window's journal starts).
std::vector<JournalCommand> RandomJournal(JobSession& session, HeadlessDrawing& area,
                                          OperatorRelay& relay, const JournalShape& shape);

// The journal file of commands for job: header and one line each, at one time.
std::string JournalTextOf(const std::string& jobHex, const std::vector<JournalCommand>& commands);

}  // namespace kesto
