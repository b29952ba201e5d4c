// The version box, reached from the main window's context menu.
#pragma once

#include <QDialog>

namespace kesto {

// The menu entry that opens the version box.
inline constexpr const char* kAboutMenuText = "&About Kesto...";

class CAboutDlg : public QDialog {
    Q_OBJECT
  public:
    explicit CAboutDlg(QWidget* parent);
    // The version text of the program's resources, with the project's version.
    static QString VersionText();
};

// The program's icon from its resources.
QIcon KestoIcon();

}  // namespace kesto
