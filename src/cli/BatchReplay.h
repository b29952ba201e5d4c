// kesto-batch --replay: the commands of a window's journal carried out again on the job of the
// command line, as the window carried them out, before the job ends as the journal ended.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "history/Journal.h"
#include "session/JobSession.h"
#include "support/OperatorRelay.h"

namespace kesto {

struct ReplayRequest {
    std::string File;     // --replay FILE
    bool AnyJob = false;  // --replay-any: the journal's job line is not checked
};

// The journal the request names, read; nullopt when it cannot be read (why on err).
std::optional<JournalFile> ReadReplayJournal(const ReplayRequest& request, std::ostream& err);

// Whether the journal may be replayed on the started job: it names this job, or any job was
// asked for. When not, err says which job each is.
bool JournalFitsJob(const ReplayRequest& request, const JournalFile& journal,
                    const JobSession& session, std::ostream& err);

struct BatchReplayed {
    bool Ok = false;              // false: a line could not be carried out (told on err)
    int Commands = 0;             // the commands carried out
    std::optional<OkCancel> End;  // the journal's end line, when it has one
};

// Carries out the journal's commands on the initialised session, whose operator is relay;
// questions no line answers go to answers. Skipped lines are told on err.
BatchReplayed ReplayOnBatch(const ReplayRequest& request, const JournalFile& journal,
                            JobSession& session, OperatorRelay& relay, Operator& answers,
                            std::ostream& err);

}  // namespace kesto
