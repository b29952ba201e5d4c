// The part-information panel above the button strip of the main window: three lines about the
// part of the stack picked in the drawing area, or of the line chosen in an all-parts list, and
// for a part left short a fourth line with why (the panel's tooltip holds it whole).
#pragma once

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "render/FontTable.h"
#include "support/MessageFile.h"
#include "ui/dialogs/ShortTipItem.h"
#include "ui/draw/ImagePanel.h"
#include "view/PalletDrawing.h"
#include "view/PartPanels.h"

namespace kesto {

class CKs_PartsInfo : public ImagePanel {
    Q_OBJECT
  public:
    // selection is the drawing whose Picked the panel shows; why tells why a part is short.
    CKs_PartsInfo(CKestoApp& app, const ViewState& shown, const MessageTable& messages,
                  const FontTable& fonts, const PalletDrawing& selection, WhyShortFn why,
                  QWidget* parent);
    // Moves to placement (the main window's client pixels), keeps its client rectangle and
    // draws again.
    void PlacePanel(const IntRect& placement);
    // Draws the panel for the drawing's present Picked, else for the chosen part (background
    // only without either).
    void Refresh();
    // Shows part seq while no stack is picked (0: none) and draws again.
    void Choose(int32_t seq);
    const PartsInfoPanel& Panel() const { return panel_; }

  private:
    const PartsInfo* Shown() const;

    CKestoApp& app_;
    const PalletDrawing& selection_;
    WhyShortFn why_;
    PartsInfoPanel panel_;
    int32_t chosen_ = 0;
};

}  // namespace kesto
