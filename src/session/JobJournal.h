// The journal of one job in the per-user state folder: the file named after the job's identity,
// what an earlier run left in it, and the writing of the commands from now on. A journal that
// cannot be written never stops the job: it is told once and the job goes on without one.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "history/Journal.h"
#include "session/CommandJournal.h"
#include "session/JobSession.h"

namespace kesto {

// What names a job: the command line's values and every input the start read (setup list,
// message file, pallet file, job file, the placement save file when there is one, every outline
// read), in that order.
struct JobInputs {
    std::vector<std::string> Values;
    std::vector<std::string> Files;  // paths
};
JobInputs InputsOf(const JobSession& session);
// The SHA-256 of the values and of the files' bytes (a file that cannot be read is left out):
// it reads every input again, so the window works it out beside its own start.
std::string IdentityOf(const JobInputs& inputs);
std::string JobIdentityOf(const JobSession& session);

// What a run that ended in the middle of the job left: its journal, read.
struct UnfinishedJournal {
    JournalFile File;
    int Corrections = 0;   // the commands in it that corrected the job
    std::string LastTime;  // the time of the last command, as written
};

// The question that offers an unfinished journal back: the message file's "M-RECOVER" of
// [MainDlg], its {time} (the last command's, to the second) and {n} (the commands) filled in;
// English when the file has none.
std::string RecoveryQuestion(const MessageTable& messages, const UnfinishedJournal& found);
// The status line's word that the journal cannot be written ("S-NO-JOURNAL", {path} filled in).
std::string NoJournalText(const MessageTable& messages, const std::string& path);

class JobJournal : public CommandJournal {
  public:
    // stateFolder: where the per-user state lives (empty: no journal at all).
    JobJournal(const std::string& stateFolder, const std::string& jobHex);

    const std::string& Path() const { return path_; }
    // A journal of this job that an earlier run left without its end, with corrections in it
    // (one of views alone is nothing to offer back: it is written on after).
    std::optional<UnfinishedJournal> Unfinished() const;
    // Moves that journal aside (kept as "<name>.discarded"), so that a new one starts.
    void Discard();
    // Opens the journal for the commands from now on, after those already in it; the folder's
    // ended journals beyond the newest 50 are removed. false when it cannot be written.
    bool Open();
    // Called once, with the file's path, when the journal cannot be written.
    void OnFailure(std::function<void(const std::string&)> tell) { tell_ = std::move(tell); }

    void Write(const JournalCommand& command) override;

  private:
    void Fail();

    std::string folder_;
    std::string jobHex_;
    std::string path_;
    JournalWriter writer_;
    bool open_ = false;
    bool told_ = false;
    std::function<void(const std::string&)> tell_;
};

}  // namespace kesto
