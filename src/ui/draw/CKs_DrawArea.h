// The pallet drawing of the main window. The picture is worked out by PalletDrawing and
// painted into an off-screen image of the area's client size, so an expose never loses it;
// the four pallet captions are labels over the image's caption strips.
#pragma once

#include <array>

#include "app/CKestoApp.h"
#include "render/FontTable.h"
#include "support/MessageFile.h"
#include "ui/draw/ImagePanel.h"
#include "view/PalletDrawing.h"

class QLabel;

namespace kesto {

class CKs_DrawArea : public ImagePanel {
    Q_OBJECT
  public:
    CKs_DrawArea(CKestoApp& app, const MessageTable& messages, const FontTable& fonts,
                 QWidget* parent);

    // Takes AreaPlacement, stores the client rectangle in AreaRect and the screen rectangle
    // in AreaWindowRect, and starts a new image of the client size.
    void PlaceArea();
    // Draws the whole view again: background, pallets, blocks, stacks, captions.
    void Refresh();
    // Paints one drawing mode (highlight, back to normal, ...) over the picture.
    void DrawParts(int mode, int32_t x = 0, int32_t y = 0);
    // Forgets the rubber-band selection and the picks.
    void ResetSelection() { drawing_.ResetSelection(); }

    PalletDrawing& Drawing() { return drawing_; }
    const PalletDrawing& Drawing() const { return drawing_; }

  private:
    void ShowCaptions();

    CKestoApp& app_;
    const FontTable& fonts_;
    PalletDrawing drawing_;
    // Slots 1..4: controls 1045, 1048, 1046, 1047.
    std::array<QLabel*, 4> captions_{};
};

}  // namespace kesto
