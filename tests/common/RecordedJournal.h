// A journal kept in memory: the lines of the commands a session wrote down, without their time.
#pragma once

#include <string>
#include <vector>

#include "history/Journal.h"
#include "session/CommandJournal.h"

namespace kesto::test {

class RecordedJournal : public CommandJournal {
  public:
    void Write(const JournalCommand& command) override {
        Lines.push_back(FormatJournalCommand(command));
    }
    std::vector<std::string> Lines;
};

}  // namespace kesto::test
