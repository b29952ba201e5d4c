// An operator for tests: records every message box, confirmation and warning and answers
// with a configurable value. ScopedOperator installs one for the life of a test.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/Platform.h"

namespace kesto::test {

class RecordingOperator : public Operator {
  public:
    explicit RecordingOperator(int answer = 1) : Answer(answer) {}

    void ShowMessageBox(const std::string& text) override { Messages.push_back(text); }
    int AskKaku(int no1, int no2) override {
        KakuNumbers.emplace_back(no1, no2);
        return Answer;
    }
    bool AskOffsetWarning(const std::string& text) override {
        Warnings.push_back(text);
        return Answer == 1;
    }

    int Answer;  // 1 OK, 2 Cancel
    std::vector<std::string> Messages;
    std::vector<std::pair<int, int>> KakuNumbers;
    std::vector<std::string> Warnings;
};

// Installs an operator and restores the default at the end of the scope.
class ScopedOperator {
  public:
    explicit ScopedOperator(Operator& op) { InstallOperator(&op); }
    ~ScopedOperator() { InstallOperator(nullptr); }
    ScopedOperator(const ScopedOperator&) = delete;
    ScopedOperator& operator=(const ScopedOperator&) = delete;
};

// An operator that records and installs itself for the life of a test.
struct InstalledRecorder : RecordingOperator {
    explicit InstalledRecorder(int answer = 1) : RecordingOperator(answer), scope(*this) {}
    ScopedOperator scope;
};

}  // namespace kesto::test
