#include "ui/dialogs/CKs_PartsInfo.h"

namespace kesto {

CKs_PartsInfo::CKs_PartsInfo(CKestoApp& app, const MessageTable& messages, const FontTable& fonts,
                             const PalletDrawing& selection, QWidget* parent)
    : ImagePanel(fonts, parent), app_(app), selection_(selection), panel_(app, messages) {
    setObjectName("CKs_PartsInfo");
}

void CKs_PartsInfo::PlacePanel() {
    app_.InfoRect = PlaceAt(app_.InfoPlacement);
    Refresh();
}

void CKs_PartsInfo::Refresh() {
    Paint([this](Canvas& canvas) { panel_.Refresh(canvas, selection_.Picked); });
}

}  // namespace kesto
