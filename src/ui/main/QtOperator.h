// The operator seam of the window program: the confirmation dialog and Qt message boxes.
#pragma once

#include <string>

#include "render/FontTable.h"
#include "support/MessageFile.h"
#include "support/Platform.h"

class QWidget;

namespace kesto {

class QtOperator : public Operator {
  public:
    // The texts and fonts may still be empty; they are read when a box is shown.
    QtOperator(const MessageTable& messages, const FontTable& fonts)
        : messages_(messages), fonts_(fonts) {}

    // The window the confirmation dialog is centred on (none before the main window exists).
    void SetMainWindow(QWidget* window) { mainWindow_ = window; }

    void ShowMessageBox(const std::string& text) override;
    OkCancel AskKaku(int no1, int no2) override;
    bool AskOffsetWarning(const std::string& text) override;

  private:
    const MessageTable& messages_;
    const FontTable& fonts_;
    QWidget* mainWindow_ = nullptr;
};

}  // namespace kesto
