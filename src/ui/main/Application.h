// The window program around the main window: the command line as Qt hands it over, and the
// screenshot it can take of itself.
#pragma once

#include <QStringList>
#include <string>

class QWidget;
class QString;

namespace kesto {

// Makes the window open maximised. It first covers the available area of its screen, which is
// where it stays in an X session without a window manager (no one there maximises it); it
// covers that area again whenever the screen's available area changes.
void MaximiseOnScreen(QWidget& window);

// Grabs window into a PNG file; true when written.
bool SaveScreenshot(QWidget& window, const QString& path);

}  // namespace kesto
