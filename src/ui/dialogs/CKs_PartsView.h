// The part-view panel of the left column: the size of a part as a proportional rectangle
// with its dimensions above it.
#pragma once

#include "app/CKestoApp.h"
#include "render/FontTable.h"
#include "support/MessageFile.h"
#include "ui/draw/ImagePanel.h"
#include "view/PartPanels.h"

namespace kesto {

// The size handed over when no part is shown.
inline constexpr double kNoPartSize = -0.1;

class CKs_PartsView : public ImagePanel {
    Q_OBJECT
  public:
    CKs_PartsView(CKestoApp& app, const MessageTable& messages, const FontTable& fonts,
                  QWidget* parent);
    // Moves to placement (the main window's client pixels), keeps its client rectangle and
    // shows the last size again.
    void PlacePanel(const IntRect& placement);
    // Shows a part of width w and length l (millimetres); kNoPartSize for both clears.
    void ShowSize(double w, double l);
    // Shows the last size again once one was shown; else only clears.
    void Repaint();

    // The size last asked for (kNoPartSize after a clear).
    double SizeX() const { return sizeX_; }
    double SizeY() const { return sizeY_; }
    const PartsViewPanel& Panel() const { return panel_; }

  private:
    CKestoApp& app_;
    PartsViewPanel panel_;
    double sizeX_ = kNoPartSize;
    double sizeY_ = kNoPartSize;
};

}  // namespace kesto
