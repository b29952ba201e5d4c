// The services of a job for tests: an operator that records every message box, confirmation
// and warning and answers with a set value, a host machine held in memory, and a message
// table. Each test makes its own, so tests run in parallel without sharing anything.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/Services.h"

namespace kesto::test {

class RecordingOperator : public Operator {
  public:
    explicit RecordingOperator(OkCancel answer = OkCancel::Ok) : Answer(answer) {}

    void ShowMessageBox(const std::string& text) override { Messages.push_back(text); }
    OkCancel AskKaku(int no1, int no2) override {
        KakuNumbers.emplace_back(no1, no2);
        if (OnAsk)
            OnAsk(no1);
        return Answer;
    }
    bool AskOffsetWarning(const std::string& text) override {
        Warnings.push_back(text);
        return Answer == OkCancel::Ok;
    }

    OkCancel Answer;
    // Runs while a numbered message is up: what the operator sees behind it.
    std::function<void(int no1)> OnAsk;
    std::vector<std::string> Messages;
    std::vector<std::pair<int, int>> KakuNumbers;
    std::vector<std::string> Warnings;
};

// A host machine in memory: the system folder (or why there is none), the per-user values and
// the state folder, none unless the test sets one (so nothing outlives a test by default).
class MemoryHostStore : public HostStore {
  public:
    explicit MemoryHostStore(std::string systemFolder = "")
        : Folder{SystemFolderStatus::Ok, std::move(systemFolder)} {}

    SystemFolderResult SystemFolder() override { return Folder; }
    std::optional<std::string> ReadUserValue(const std::string& name) override {
        const auto it = UserValues.find(name);
        if (it == UserValues.end())
            return std::nullopt;
        return it->second;
    }
    bool WriteUserValue(const std::string& name, const std::string& text) override {
        if (FailWrites)
            return false;
        UserValues[name] = text;
        return true;
    }
    std::string StateFolder() override { return State; }

    SystemFolderResult Folder;
    std::map<std::string, std::string> UserValues;
    bool FailWrites = false;
    std::string State;
};

// The three services together; Get() hands them to a session, an application or a worker.
struct TestServices {
    explicit TestServices(std::string systemFolder = "", OkCancel answer = OkCancel::Ok)
        : Op(answer), Host(std::move(systemFolder)) {}
    TestServices(const TestServices&) = delete;
    TestServices& operator=(const TestServices&) = delete;

    Services Get() { return Services{Op, Host, Messages}; }
    operator Services() { return Get(); }

    RecordingOperator Op;
    MemoryHostStore Host;
    MessageTable Messages;
};

}  // namespace kesto::test
