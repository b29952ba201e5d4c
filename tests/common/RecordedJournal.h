// Journals for the tests: one kept in memory (the lines of the commands a session wrote down,
// without their time), and a journal's text as the window writes it.
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

// The header for job, then each command line at the same time.
inline std::string JournalText(const std::string& job, const std::vector<std::string>& commands) {
    std::string text = JournalHeader(job);
    for (const std::string& c : commands)
        text += "2026-11-26T10:00:00.000 " + c + "\n";
    return text;
}

}  // namespace kesto::test
