// The confirmation dialog: one or two numbered message lines with OK, and Cancel for
// questions (numbers above 200). The caller hands it the two message numbers it set.
#pragma once

#include <QDialog>
#include <string>

#include "render/FontTable.h"
#include "support/MessageFile.h"

class QLabel;
class QPushButton;

namespace kesto {

class CKs_KakuDlg : public QDialog {
    Q_OBJECT
  public:
    // no2 below 1: one line only.
    CKs_KakuDlg(int no1, int no2, const MessageTable& messages, const FontTable& fonts,
                QWidget* mainWindow);

    // Texts, size and position; done by Run, callable alone to look at the box.
    void Prepare();
    // Runs modally: 1 for OK, 2 for Cancel or closing.
    OkCancel Run();
    int CharHeight() const { return charHeight_; }

    void reject() override;

  private:
    bool ApplyLine(QLabel* label, int number, std::string& shown);
    void ApplyButton(QPushButton* button, const char* key);
    void PlaceBox(int textLength);

    int no1_;
    int no2_;
    const MessageTable& messages_;
    const FontTable& fonts_;
    QWidget* mainWindow_;
    QLabel* line1_;
    QLabel* line2_;
    QPushButton* ok_;
    QPushButton* cancel_;
    int charHeight_ = 0;
};

}  // namespace kesto
