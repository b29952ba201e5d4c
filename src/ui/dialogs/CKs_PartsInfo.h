// The part-information panel above the button strip of the main window.
#pragma once

#include <QWidget>

#include "app/CKestoApp.h"

namespace kesto {

class CKs_PartsInfo : public QWidget {
    Q_OBJECT
  public:
    CKs_PartsInfo(CKestoApp& app, QWidget* parent);
    // Takes the part-information rectangle of the application object.
    void Place();

  private:
    CKestoApp& app_;
};

}  // namespace kesto
