// The sheet-count dialog: the operator picks a new number of pieces per stack for the part of
// the picked stack, helped by five proposal buttons and a picture of the stack height against
// the pallet's height limit. Every decision is MaiChoice's; the dialog shows it.
#pragma once

#include <QDialog>

#include <optional>
#include "app/CKestoApp.h"

#include "app/Rect.h"
#include "render/FontTable.h"
#include "rules/MaiChoice.h"
#include "support/MessageFile.h"
#include "view/MaiPicture.h"

class QGroupBox;
class QLineEdit;
class QPushButton;

namespace kesto {

class CKs_MaiDlg : public QDialog {
    Q_OBJECT
  public:
    // The client size the dialog opens with.
    static constexpr int kWidth = 620;
    static constexpr int kHeight = 410;

    // picked is the drawing area's picked stack; heightLimit the greatest stack height of the
    // pallet it shows; overArea the drawing area's rectangle on the screen while the all-parts
    // list is shown there (the dialog then stands over the list's lower half).
    CKs_MaiDlg(CKestoApp& app, std::optional<IntRect> overArea, const MessageTable& messages,
               const FontTable& fonts, Operator& op, const HaichiInfo& picked, double heightLimit,
               QWidget* parent = nullptr);

    // Captions, size and position; done by Run, callable alone to look at the dialog.
    void Prepare();
    // Runs modally: the confirmed new count, or -1 for no change (also after Cancel).
    int Run();

    const MaiChoice& Choice() const { return choice_; }
    // The controls' rectangles for the present client size.
    MaiLayout Layout() const;
    int NameFontHeight() const { return nameFontHeight_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QPushButton* MakeButton(const char* name, const char* caption);
    void ApplyCaptions();
    void ApplyLayout();
    void PlaceOverArea();
    void Press(MaiButton button);
    void ShowEditText();
    void OnOk();

    CKestoApp& app_;
    std::optional<IntRect> overArea_;
    const MessageTable& messages_;
    const FontTable& fonts_;
    Operator& op_;
    MaiChoice choice_;
    int nameFontHeight_ = 0;
    QLineEdit* name_;
    QPushButton* ok_;
    QPushButton* cancel_;
    QPushButton* buttons_[5];
    QGroupBox* group_;
    QLineEdit* count_;
};

}  // namespace kesto
