#include "ui/dialogs/CAboutDlg.h"

#include <QFile>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "support/Version.h"
#include "ui/dialogs/DialogTexts.h"

// Resources of a static library are registered by hand, outside any namespace.
static void InitKestoResources() {
    Q_INIT_RESOURCE(kesto);
}

namespace kesto {

namespace {

void EnsureResources() {
    static const bool done = [] {
        InitKestoResources();
        return true;
    }();
    (void)done;
}

}  // namespace

QIcon KestoIcon() {
    EnsureResources();
    // Read as the PNG it is, by Qt's own reader: asked to find out what the file is, Qt would
    // load every image plugin at the window's start to ask each.
    QImageReader reader(QStringLiteral(":/kesto/kesto.png"), "png");
    reader.setAutoDetectImageFormat(false);
    return QIcon(QPixmap::fromImage(reader.read()));
}

QString CAboutDlg::VersionText() {
    EnsureResources();
    QFile file(":/kesto/version.txt");
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    // The resource holds the text; the version in it is the project's, as --version prints it.
    return QString::fromUtf8(file.readAll()).trimmed().arg(QString::fromLatin1(KestoVersion()));
}

CAboutDlg::CAboutDlg(QWidget* parent) : QDialog(parent) {
    setObjectName("CAboutDlg");
    setWindowTitle("About Kesto");
    auto* icon = new QLabel(this);
    icon->setPixmap(KestoIcon().pixmap(32, 32));
    auto* text = new QLabel(VersionText(), this);
    text->setObjectName("VersionText");
    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("OK");
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addWidget(icon);
    row->addWidget(text, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(ok, 0, Qt::AlignRight);
    // The box reads no message file: it speaks English.
    SpeakDialogControls(*this, "About", MessageTable());
}

}  // namespace kesto
