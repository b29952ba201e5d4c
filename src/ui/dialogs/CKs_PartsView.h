// The part-view panel of the left column: the size of the part chosen in the set-aside list.
#pragma once

#include <QWidget>

#include "app/CKestoApp.h"

namespace kesto {

// The size handed over when no part is shown.
inline constexpr double kNoPartSize = -0.1;

class CKs_PartsView : public QWidget {
    Q_OBJECT
  public:
    CKs_PartsView(CKestoApp& app, QWidget* parent);
    // Takes the part-view rectangle of the application object.
    void Place();
    // The part to show by its size; kNoPartSize for both clears the panel.
    void ShowPart(double sizeX, double sizeY);

    double SizeX() const { return sizeX_; }
    double SizeY() const { return sizeY_; }

  private:
    CKestoApp& app_;
    double sizeX_ = kNoPartSize;
    double sizeY_ = kNoPartSize;
};

}  // namespace kesto
