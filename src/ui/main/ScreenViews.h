// The views of the main window that `make screenshot` saves and the golden tests compare,
// each reached by the operator's own buttons.
#pragma once

#include <optional>
#include <string_view>

namespace kesto {

class CKestoDlg;

enum class ScreenView { Flat, Danmen, FourPallet, TwoPallet, ThreeD, Info, Drag, Zoom };

inline constexpr ScreenView kScreenViews[] = {
    ScreenView::Flat,   ScreenView::Danmen, ScreenView::FourPallet, ScreenView::TwoPallet,
    ScreenView::ThreeD, ScreenView::Info,   ScreenView::Drag,       ScreenView::Zoom};

// "flat", "danmen", "4pallet", "2pallet", "3d", "info", "drag", "zoom".
const char* ScreenViewName(ScreenView view);
std::optional<ScreenView> ScreenViewByName(std::string_view name);

// On a laid-out main window: clicks the view's buttons. flat: with the parts' outlines;
// danmen, 4pallet, 2pallet: the third process, whose stacks fill four pallets; 3d: 4PALLET
// with 3D on; info: a stack of a part with several stacks picked, highlighted, described in
// the information panel and its size in the part view; drag: in FLAT, the smallest stack on
// view picked alone and carried, the button held, to the nearest point where the drawing shows
// it would land clear of where it stands; zoom: the third process in FLAT, a stack picked as
// for info and the wheel turned four notches closer with Ctrl held over it, the overview in
// the corner.
void ShowScreenView(CKestoDlg& dialog, ScreenView view);

}  // namespace kesto
