#include "ui/dialogs/CKs_PartsView.h"

#include "ui/main/RectConvert.h"

namespace kesto {

CKs_PartsView::CKs_PartsView(CKestoApp& app, QWidget* parent) : QWidget(parent), app_(app) {
    setObjectName("CKs_PartsView");
}

void CKs_PartsView::Place() {
    setGeometry(ToQRect(app_.ViewRect));
}

void CKs_PartsView::ShowPart(double sizeX, double sizeY) {
    sizeX_ = sizeX;
    sizeY_ = sizeY;
    update();
}

}  // namespace kesto
