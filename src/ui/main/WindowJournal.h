// The job's journal in the window: the journal of a run that ended in the middle of this job is
// offered back once the placement is shown, and every command from then on is written.
#pragma once

#include <optional>
#include <string>

#include "session/JobJournal.h"
#include "session/JobSession.h"
#include "support/OperatorRelay.h"

namespace kesto {

class CKestoDlg;

class WindowJournal {
  public:
    // relay: the operator the session asks; stateFolder: the per-user state folder (empty: the
    // job is not journaled, which the window says once).
    WindowJournal(JobSession& session, OperatorRelay& relay, std::string stateFolder);
    ~WindowJournal();
    WindowJournal(const WindowJournal&) = delete;
    WindowJournal& operator=(const WindowJournal&) = delete;

    // Once the window shows the placement: the job's identity is worked out (it reads every
    // input again, which the start's first picture never waits for), a journal this job's
    // earlier run left unfinished is offered back (Yes replays it under the window and goes on
    // writing it, No sets it aside), and the commands from now on are written.
    void Start(CKestoDlg& window);
    // The journal the commands are written into, once started.
    const JobJournal* Journal() const { return journal_ ? &*journal_ : nullptr; }

  private:
    // The question, Yes being the default button; true for Yes.
    bool AskRestore(CKestoDlg& window, const std::string& question);

    JobSession& session_;
    OperatorRelay& relay_;
    std::string stateFolder_;
    std::optional<JobJournal> journal_;
};

}  // namespace kesto
