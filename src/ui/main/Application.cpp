#include "ui/main/Application.h"

#include <QPixmap>
#include <QWidget>

namespace kesto {

std::string JoinCommandLine(const QStringList& arguments) {
    return arguments.join(QLatin1Char(' ')).toStdString();
}

bool SaveScreenshot(QWidget& window, const QString& path) {
    return window.grab().save(path, "PNG");
}

}  // namespace kesto
