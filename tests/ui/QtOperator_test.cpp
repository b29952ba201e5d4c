#include "ui/main/QtOperator.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include "common/WindowJob.h"

namespace kesto {
namespace {

// Clicks the named button of the modal window once it is up, and remembers what it saw.
struct ModalClicker {
    void Arm(const char* button) {
        QTimer::singleShot(0, [this, button] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal == nullptr)
                return;
            Seen = modal;
            Name = modal->objectName();
            if (auto* box = qobject_cast<QMessageBox*>(modal)) {
                Text = box->text();
                Icon = box->icon();
            }
            if (auto* b = modal->findChild<QPushButton*>(button)) {
                QTest::mouseClick(b, Qt::LeftButton);
            } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
                QString wanted = QString::fromLatin1(button);
                box->button(wanted == "Cancel" ? QMessageBox::Cancel : QMessageBox::Ok)->click();
            }
        });
    }
    QWidget* Seen = nullptr;
    QString Name;
    QString Text;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
};

TEST(QtOperator, AskKakuRunsTheConfirmationDialogAndReturnsItsAnswer) {
    test::WindowJob job;
    job.Start();
    QtOperator op(job.Svc.Messages, job.Fonts);
    ModalClicker clicker;
    clicker.Arm("ButtonCan");
    EXPECT_EQ(op.AskKaku(202, 203), OkCancel::Cancel);
    EXPECT_EQ(clicker.Name, "CKs_KakuDlg");
    clicker.Arm("ButtonOk");
    EXPECT_EQ(op.AskKaku(204, 205), OkCancel::Ok);
}

TEST(QtOperator, MessageBoxShowsTheFixedText) {
    test::EnsureQApplication();
    MessageTable messages;
    FontTable fonts;
    QtOperator op(messages, fonts);
    ModalClicker clicker;
    clicker.Arm("OK");
    op.ShowMessageBox("Initial File Not found");
    EXPECT_EQ(clicker.Name, "MessageBox");
    EXPECT_EQ(clicker.Text, "Initial File Not found");
}

TEST(QtOperator, OffsetWarningHasTheStopIconAndAnswersOkOrCancel) {
    test::EnsureQApplication();
    MessageTable messages;
    FontTable fonts;
    QtOperator op(messages, fonts);
    ModalClicker clicker;
    clicker.Arm("Cancel");
    EXPECT_FALSE(op.AskOffsetWarning("Offset"));
    EXPECT_EQ(clicker.Icon, QMessageBox::Critical);
    EXPECT_EQ(clicker.Text, "Offset");
    clicker.Arm("OK");
    EXPECT_TRUE(op.AskOffsetWarning("Offset"));
}

}  // namespace
}  // namespace kesto
