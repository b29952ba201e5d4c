// The pallet drawing of the main window. This first version only takes its place and keeps
// the selection state the main window's commands read and reset.
#pragma once

#include <QWidget>
#include <vector>

#include "app/CKestoApp.h"

namespace kesto {

class CKs_DrawArea : public QWidget {
    Q_OBJECT
  public:
    CKs_DrawArea(CKestoApp& app, QWidget* parent);

    // Takes the drawing-area rectangle of the application object.
    void Place();
    // Draws the current view again.
    void Refresh();
    // Forgets the rubber-band selection and the picks.
    void ResetSelection();

    int32_t BandActive = 0;
    HaichiInfo* Picked = nullptr;
    HaichiInfo* LastPicked = nullptr;
    std::vector<HaichiInfo*> PickHistory;
    std::vector<HaichiInfo*> BandList;

  private:
    CKestoApp& app_;
};

}  // namespace kesto
