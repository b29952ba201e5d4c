// An operator that passes every question on to another, which can be changed while a job runs:
// a replay of the journal answers the questions its lines answer, and the operator's own way of
// answering comes back after it.
#pragma once

#include <string>

#include "support/Platform.h"

namespace kesto {

class OperatorRelay : public Operator {
  public:
    explicit OperatorRelay(Operator& to) : to_(&to) {}

    Operator& Target() const { return *to_; }
    void RelayTo(Operator& to) { to_ = &to; }

    void ShowMessageBox(const std::string& text) override { to_->ShowMessageBox(text); }
    OkCancel AskKaku(int no1, int no2) override { return to_->AskKaku(no1, no2); }
    bool AskOffsetWarning(const std::string& text) override { return to_->AskOffsetWarning(text); }

  private:
    Operator* to_;
};

// Shows nothing and answers every question OK: a replay going over what the operator already
// answered once.
class QuietOperator : public Operator {
  public:
    void ShowMessageBox(const std::string&) override {}
    OkCancel AskKaku(int, int) override { return OkCancel::Ok; }
    bool AskOffsetWarning(const std::string&) override { return true; }
};

}  // namespace kesto
