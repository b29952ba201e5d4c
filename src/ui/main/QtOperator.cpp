#include "ui/main/QtOperator.h"

#include <QMessageBox>

#include "render/TextCodec.h"
#include "ui/dialogs/CKs_KakuDlg.h"

namespace kesto {

void QtOperator::ShowMessageBox(const std::string& text) {
    QMessageBox box(QMessageBox::NoIcon, QString(), DecodeText(text), QMessageBox::Ok, mainWindow_);
    box.setObjectName("MessageBox");
    box.exec();
}

OkCancel QtOperator::AskKaku(int no1, int no2) {
    CKs_KakuDlg dialog(no1, no2, messages_, fonts_, mainWindow_);
    return dialog.Run();
}

bool QtOperator::AskOffsetWarning(const std::string& text) {
    QMessageBox box(QMessageBox::Critical, QString(), DecodeText(text),
                    QMessageBox::Ok | QMessageBox::Cancel, mainWindow_);
    box.setObjectName("OffsetWarning");
    return box.exec() == QMessageBox::Ok;
}

}  // namespace kesto
