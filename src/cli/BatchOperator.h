// The operator of kesto-batch: every message box and confirmation goes to stderr with its
// number and its text from the message file; questions are answered by the --answer policy.
#pragma once

#include <iosfwd>
#include <string>

#include "support/MessageFile.h"
#include "support/Platform.h"

namespace kesto {

class BatchOperator : public Operator {
  public:
    BatchOperator(const MessageTable& messages, std::ostream& err, OkCancel answer)
        : messages_(messages), err_(err), answer_(answer) {}
    void ShowMessageBox(const std::string& text) override;
    OkCancel AskKaku(int no1, int no2) override;
    bool AskOffsetWarning(const std::string& text) override;

  private:
    void PrintKakuMessage(int no);

    const MessageTable& messages_;
    std::ostream& err_;
    OkCancel answer_;
};

}  // namespace kesto
