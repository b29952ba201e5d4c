// What assistive technology says of the main window's controls: a name and a description,
// both from the message file (section "MainDlg") so that they speak the installation's
// language, with English where the file has none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/MessageFile.h"

namespace kesto {

struct ControlText {
    std::string Name;
    std::string Description;
};

// The name and description of the control whose caption (or list) key is key, one of
// kControls' keys, or "DRAWING", "INFO-STRING", "VIEW-STRING" for the drawing and the two
// part panels. The name is "AN-<key>"'s text; else the caption's own text when it is more
// than signs ("<", ">>"); else a word for the control; else the template's caption.
// The description is "AD-<key>"'s text, else English. Empty for a key of no control.
ControlText AccessibleText(std::string_view key, const MessageTable& messages);

// The keys AccessibleText knows, in the order of the window's controls.
std::vector<std::string_view> AccessibleKeys();

// The same for the controls of the dialogs over the main window, each in its own section
// ("MaihenDlg", "PartsAlInfDlg", "KakuDlg", "About"): "AN-<key>" and "AD-<key>" of the section,
// else a word and English. A button has no built-in name: its caption speaks for it.
ControlText DialogControlText(std::string_view section, std::string_view key,
                              const MessageTable& messages);
// The keys of section's dialog that DialogControlText knows.
std::vector<std::string_view> DialogControlKeys(std::string_view section);

}  // namespace kesto
