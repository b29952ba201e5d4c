#include "ui/dialogs/CKs_PartsView.h"

namespace kesto {

CKs_PartsView::CKs_PartsView(CKestoApp& app, const MessageTable& messages, const FontTable& fonts,
                             QWidget* parent)
    : ImagePanel(fonts, parent), app_(app), panel_(app, messages) {
    setObjectName("CKs_PartsView");
}

void CKs_PartsView::PlacePanel(const IntRect& placement) {
    panel_.SetClient(PlaceAt(placement));
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
