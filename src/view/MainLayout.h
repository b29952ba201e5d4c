// Where every control of the main window goes, computed from the client size alone.
#pragma once

#include <map>

#include "app/Rect.h"
#include "view/Controls.h"

namespace kesto {

struct MainLayout {
    std::map<ControlId, ControlRect> Controls;
    IntRect AreaPlacement;  // drawing area
    IntRect InfoPlacement;  // part-information panel
    IntRect ViewPlacement;  // part-view panel
};

// Client width and height and the present height of the pallet combo box. Products are
// truncated toward zero and nothing is clamped, so a tiny client gives zero or negative sizes.
MainLayout ComputeMainLayout(int width, int height, int comboHeight);

}  // namespace kesto
