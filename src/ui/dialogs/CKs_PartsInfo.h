// The part-information panel above the button strip of the main window: three lines about the
// stack picked in the drawing area.
#pragma once

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "render/FontTable.h"
#include "support/MessageFile.h"
#include "ui/draw/ImagePanel.h"
#include "view/PalletDrawing.h"
#include "view/PartPanels.h"

namespace kesto {

class CKs_PartsInfo : public ImagePanel {
    Q_OBJECT
  public:
    // selection is the drawing whose Picked the panel shows.
    CKs_PartsInfo(CKestoApp& app, ViewState& shown, const MessageTable& messages,
                  const FontTable& fonts, const PalletDrawing& selection, QWidget* parent);
    // Takes InfoPlacement, stores the client rectangle in InfoRect and draws again.
    void PlacePanel();
    // Draws the panel for the drawing's present Picked (background only without one).
    void Refresh();

  private:
    CKestoApp& app_;
    ViewState& shown_;
    const PalletDrawing& selection_;
    PartsInfoPanel panel_;
};

}  // namespace kesto
