// What the operator is looking at: the process, pallets and small box on view, the drawing's
// toggles, and where the window put its panels. It belongs to whoever shows the job (the
// window, kesto-batch, the picture writer), never to the job: drawing a picture or changing
// the view leaves the job's records as they were.
#pragma once

#include <cstdint>

#include "app/Codes.h"
#include "app/Rect.h"

namespace kesto {

class HostStore;

// Where the main window's layout stands (LayoutState).
enum class LayoutStep : int32_t {
    NeverShown = 0,
    Due = 2,  // shown or resized: laid out at the next chance
    LaidOut = 3,
};

// Whether a panel is shown (the all-parts dialog's PartsAllState).
enum class Visibility : int32_t { Hidden = 1, Shown = 2 };

struct ViewState {
    PalletView PalletMode = PalletView::Flat;
    int32_t Is3D = 0;
    int32_t GridFlag = 0;
    int32_t HitByBlock = 1;     // a pick takes the whole block's stacks
    int32_t IsBlockDraw = 0;    // the block cells are drawn (a per-user value)
    int32_t CurrentKoutei = 1;  // 1-based position of the process on view
    int32_t CurrentBox = destination::kFirstSmallBox;
    int32_t CurrentPallet = 1;  // the first pallet on view
    LayoutStep LayoutState = LayoutStep::NeverShown;
    Visibility PartsAllState = Visibility::Hidden;
    // Where the main window wants the drawing area and the two part panels (its client
    // pixels), set by its layout pass; each panel then moves itself there.
    IntRect AreaPlacement;
    IntRect InfoPlacement;
    IntRect ViewPlacement;
    // Each panel's own client rectangle (left and top 0), stored when it placed itself: what
    // the drawing reads.
    IntRect AreaRect;
    IntRect InfoRect;
    IntRect ViewRect;
    // The drawing area's rectangle on the screen; the all-parts dialog is placed over it.
    IntRect AreaWindowRect;

    bool operator==(const ViewState&) const = default;
};

// The view's per-user values ("IsBlockDraw"); a missing value reads as 0.
void ReadViewSettings(HostStore& host, ViewState& shown);
void WriteViewSettings(HostStore& host, const ViewState& shown);

}  // namespace kesto
