// kesto-empty-dialog FILE.png: the floor of the window's start. An empty Qt dialog of the
// screenshot's size is shown, laid out and grabbed into FILE.png, as kesto does with its
// first picture in screenshot mode.
#include <QApplication>
#include <QDialog>
#include <QPixmap>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    QDialog dialog;
    dialog.resize(1600, 900);
    dialog.show();
    QApplication::processEvents();
    return dialog.grab().save(QString::fromLocal8Bit(argv[1]), "PNG") ? 0 : 1;
}
