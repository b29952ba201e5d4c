#include "cli/BatchReplay.h"

#include <ostream>

#include "session/HeadlessDrawing.h"
#include "session/JobJournal.h"
#include "session/JournalReplay.h"

namespace kesto {

namespace {

std::ostream& Told(std::ostream& err, const ReplayRequest& request) {
    return err << "kesto-batch: journal " << request.File << ": ";
}

}  // namespace

std::optional<JournalFile> ReadReplayJournal(const ReplayRequest& request, std::ostream& err) {
    JournalFile journal = ReadJournalFile(request.File);
    if (!journal.Error.empty()) {
        Told(err, request) << journal.Error << "; nothing run\n";
        return std::nullopt;
    }
    return journal;
}

bool JournalFitsJob(const ReplayRequest& request, const JournalFile& journal,
                    const JobSession& session, std::ostream& err) {
    if (request.AnyJob)
        return true;
    const std::string job = JobIdentityOf(session);
    if (journal.Job == job)
        return true;
    Told(err, request) << "written for another job (job " << journal.Job
                       << "), not for this one (job " << job
                       << "); nothing written. --replay-any replays it all the same\n";
    return false;
}

BatchReplayed ReplayOnBatch(const ReplayRequest& request, const JournalFile& journal,
                            JobSession& session, OperatorRelay& relay, Operator& answers,
                            std::ostream& err) {
    HeadlessDrawing area(session);
    JournalReplay replay(session, area.Drawing(), area.Editing(), relay, answers);
    const ReplayOutcome outcome = replay.Run(journal);
    for (const std::string& skipped : outcome.Skipped)
        Told(err, request) << skipped << ", skipped\n";
    if (!outcome.Ok())
        Told(err, request) << outcome.Why << "; nothing written\n";
    return {.Ok = outcome.Ok(), .Commands = outcome.Commands, .End = outcome.End};
}

}  // namespace kesto
