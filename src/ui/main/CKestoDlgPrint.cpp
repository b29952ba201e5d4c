// Printing from the window: the sort sheet of the job as it stands, corrections included,
// on the printer the operator picks in the platform's print dialog.
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

#include "render/PictureWriter.h"
#include "render/TextCodec.h"
#include "sheet/SortSheet.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {

void CKestoDlg::ConnectPrinting() {
    printAction_ = new QAction(this);
    printAction_->setObjectName("Print");
    printAction_->setText(
        DecodeText(TextOr(session_.Svc().Messages, "MainDlg", "M-PRINT", "Print...")));
    printAction_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    addAction(printAction_);
    connect(printAction_, &QAction::triggered, this, [this] { OnPrint(); });
}

void CKestoDlg::OnPrint() {
    // Not in the middle of a drag: the dialog would swallow its release.
    if (editing_->Tracking())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(PicturePageLayout());
    printer.setDocName(QString::fromLocal8Bit(PictureJobName(session_).c_str()));
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::string error = PrintTo(printer);
    if (error.empty())
        return;
    const std::string notPrinted =
        TextOr(session_.Svc().Messages, "MainDlg", "S-NOT-PRINTED", "Not printed");
    QMessageBox::warning(this, windowTitle(),
                         DecodeText(notPrinted) + QString::fromStdString(": " + error));
}

std::string CKestoDlg::PrintTo(QPrinter& printer) {
    return PaintPictureDocument(BuildSortSheet(session_), printer);
}

}  // namespace kesto
