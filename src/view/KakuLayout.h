// Where the confirmation dialog and its parts go: its size from the length of its text, centred
// on the window it belongs to.
#pragma once

#include <optional>

#include "app/Rect.h"

namespace kesto {

struct KakuLayout {
    ControlRect Box;    // the dialog, on the screen
    ControlRect Line1;  // the message lines, within the dialog
    ControlRect Line2;
    ControlRect Ok;                     // the buttons, within the dialog
    std::optional<ControlRect> Cancel;  // none when the message only informs
};

// textLength: the bytes of the longer line; charHeight: the pixel height of the font of the
// last line shown; owner: the main window's frame (or the screen) on the screen.
KakuLayout LayOutKakuDlg(int textLength, int charHeight, const ControlRect& owner,
                         bool onlyInforms);

}  // namespace kesto
