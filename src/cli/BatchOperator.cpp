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

OkCancel BatchOperator::AskKaku(int no1, int no2) {
    PrintKakuMessage(no1);
    if (no2 > 0)
        PrintKakuMessage(no2);
    if (kaku::OnlyInforms(no1))
        return OkCancel::Ok;
    return answer_;
}

bool BatchOperator::AskOffsetWarning(const std::string& text) {
    err_ << "kesto: " << TerminalText(text) << std::endl;
    return answer_ == OkCancel::Ok;
}

}  // namespace kesto
