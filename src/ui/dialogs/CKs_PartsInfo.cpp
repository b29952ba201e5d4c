#include "ui/dialogs/CKs_PartsInfo.h"

#include "ui/main/RectConvert.h"

namespace kesto {

CKs_PartsInfo::CKs_PartsInfo(CKestoApp& app, QWidget* parent) : QWidget(parent), app_(app) {
    setObjectName("CKs_PartsInfo");
}

void CKs_PartsInfo::Place() {
    setGeometry(ToQRect(app_.InfoRect));
}

}  // namespace kesto
