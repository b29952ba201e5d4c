// Where the session writes down each command it carries out, in the journal's words: once the
// command has changed the job in memory and before anyone shows its result, so that nothing
// the operator has seen is missing from it.
#pragma once

#include "history/Journal.h"

namespace kesto {

class CommandJournal {
  public:
    virtual ~CommandJournal() = default;
    virtual void Write(const JournalCommand& command) = 0;
};

}  // namespace kesto
