#include "ui/draw/CKs_DrawArea.h"

#include "ui/main/RectConvert.h"

namespace kesto {

CKs_DrawArea::CKs_DrawArea(CKestoApp& app, QWidget* parent) : QWidget(parent), app_(app) {
    setObjectName("CKs_DrawArea");
}

void CKs_DrawArea::Place() {
    setGeometry(ToQRect(app_.AreaRect));
}

void CKs_DrawArea::Refresh() {}

void CKs_DrawArea::ResetSelection() {
    BandActive = 0;
    BandList.clear();
    PickHistory.clear();
    Picked = nullptr;
    LastPicked = nullptr;
}

}  // namespace kesto
