#include "cli/BatchOperator.h"
#include "app/Codes.h"

#include <ostream>

#include "cli/TerminalText.h"
#include "support/TextFormat.h"

namespace kesto {

void BatchOperator::ShowMessageBox(const std::string& text) {
    err_ << "kesto: " << TerminalText(text) << std::endl;
}

void BatchOperator::PrintKakuMessage(int no) {
    err_ << "kesto: message " << FormatText("%.3d", no) << ": "
         << TerminalText(messages_.GetFontText("KakuDlg", KakuKey(no)).Text) << std::endl;
}

int BatchOperator::AskKaku(int no1, int no2) {
    PrintKakuMessage(no1);
    if (no2 > 0)
        PrintKakuMessage(no2);
    // Numbers up to 200 only inform: their box has OK alone.
    if (no1 >= 1 && no1 <= kaku::kLastInforming)
        return 1;
    return answer_;
}

bool BatchOperator::AskOffsetWarning(const std::string& text) {
    err_ << "kesto: " << TerminalText(text) << std::endl;
    return answer_ == 1;
}

}  // namespace kesto
