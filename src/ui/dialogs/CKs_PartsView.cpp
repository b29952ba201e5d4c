#include "ui/dialogs/CKs_PartsView.h"

namespace kesto {

CKs_PartsView::CKs_PartsView(CKestoApp& app, ViewState& shown, const MessageTable& messages,
                             const FontTable& fonts, QWidget* parent)
    : ImagePanel(fonts, parent), app_(app), shown_(shown), panel_(app, shown, messages) {
    setObjectName("CKs_PartsView");
}

void CKs_PartsView::PlacePanel() {
    shown_.ViewRect = PlaceAt(shown_.ViewPlacement);
    Repaint();
}

void CKs_PartsView::ShowSize(double w, double l) {
    sizeX_ = w;
    sizeY_ = l;
    Paint([this, w, l](Canvas& canvas) { panel_.ShowSize(canvas, w, l); });
}

void CKs_PartsView::Repaint() {
    Paint([this](Canvas& canvas) { panel_.Repaint(canvas); });
}

}  // namespace kesto
