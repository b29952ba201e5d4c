// The window program around the main window: the command line as Qt hands it over, and the
// screenshot it can take of itself.
#pragma once

#include <QStringList>
#include <string>

class QWidget;
class QString;

namespace kesto {

// The program path and its arguments joined by single blanks, as the command line is read.
std::string JoinCommandLine(const QStringList& arguments);

// Grabs window into a PNG file; true when written.
bool SaveScreenshot(QWidget& window, const QString& path);

}  // namespace kesto
