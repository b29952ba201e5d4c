// kesto-empty-dialog FILE.png: the floor of the window's start. An empty Qt dialog of the
// screenshot's size is shown, laid out and grabbed into FILE.png by the window's own screenshot
// writer, as kesto does with its first picture in screenshot mode.
#include <QApplication>
#include <QDialog>

#include "ui/main/Screenshot.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    QDialog dialog;
    kesto::ShowOffScreen(dialog, 1600, 900);
    QApplication::processEvents();
    return kesto::SaveScreenshot(dialog, QString::fromLocal8Bit(argv[1])) ? 0 : 1;
}
