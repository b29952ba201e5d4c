#include "ui/dialogs/CKs_PartsInfo.h"

namespace kesto {

CKs_PartsInfo::CKs_PartsInfo(CKestoApp& app, ViewState& shown, const MessageTable& messages,
                             const FontTable& fonts, const PalletDrawing& selection,
                             QWidget* parent)
    : ImagePanel(fonts, parent),
      app_(app),
      shown_(shown),
      selection_(selection),
      panel_(app, shown, messages) {
    setObjectName("CKs_PartsInfo");
}

void CKs_PartsInfo::PlacePanel() {
    shown_.InfoRect = PlaceAt(shown_.InfoPlacement);
    Refresh();
}

void CKs_PartsInfo::Refresh() {
    Paint([this](Canvas& canvas) { panel_.Refresh(canvas, selection_.Selected().Picked()); });
}

}  // namespace kesto
