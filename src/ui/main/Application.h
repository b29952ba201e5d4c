// The window program around the main window: how it opens on its screen.
#pragma once

#include <thread>

class QWidget;

namespace kesto {

// Makes the window open maximised. It first covers the available area of its screen, which is
// where it stays in an X session without a window manager (no one there maximises it); it
// covers that area again whenever the screen's available area changes.
void MaximiseOnScreen(QWidget& window);

// Reads the system's font list on a thread of its own (the font database is thread-safe), so
// that it is ready when the window measures its first text while this thread reads the job,
// makes the window and places the job; a text measured sooner waits for the list. Joined when
// the returned thread is destroyed.
std::jthread LoadFontListAside();

}  // namespace kesto
