// What the dialogs' controls tell a screen reader, set on their widgets.
#pragma once

#include <string_view>

#include "support/MessageFile.h"
#include "view/ControlTexts.h"

class QWidget;

namespace kesto {

// The widget's accessible name (when text has one; a button keeps its caption) and description.
void Speak(QWidget& widget, const ControlText& text);
// Every control of dialog that section's texts name, found by its object name.
void SpeakDialogControls(QWidget& dialog, std::string_view section, const MessageTable& messages);

}  // namespace kesto
