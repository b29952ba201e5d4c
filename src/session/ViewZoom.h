// Zoom and pan of FLAT and DANMEN: the wheel with Ctrl, + and -, a pinch and the pans of the
// middle button, the space bar and two fingers, each made a window of the session's view.
// The picks keep their stacks; their pixels follow the new projection.
#pragma once

#include <cstdint>
#include <optional>

#include "app/Changes.h"
#include "session/JobSession.h"
#include "view/DisplayList.h"
#include "view/PalletDrawing.h"
#include "view/ZoomWindow.h"

namespace kesto {

class ViewZoom {
  public:
    ViewZoom(JobSession& session, PalletDrawing& drawing);

    // factor times closer (below 1: farther) about the pixel at, which keeps showing the same
    // millimetres; about the plan's centre when at is none or off the plan. Back to the whole
    // pallet when it would show the whole pallet or more.
    ChangeSet ZoomBy(double factor, std::optional<IntPoint> at);
    // The whole pallet again.
    ChangeSet Whole();

    // A pan or a pinch: the millimetres under centre at the start follow the centre, and the
    // scale is the start's divided by factor (the fingers' spread over the start's). Each step
    // is shown at once and written to the journal at the end.
    void Begin(IntPoint centre);
    ChangeSet Follow(IntPoint centre, double factor = 1);
    ChangeSet End();
    bool Following() const { return following_; }

  private:
    // The window shown (and journaled when journal), the picks carried to the new pixels.
    ChangeSet Show(const std::optional<WorldWindow>& window, bool journal);
    bool Ready() const;

    JobSession& session_;
    PalletDrawing& drawing_;
    DisplayList scratch_;  // the set-up that finds the new pixels, which no one shows
    bool following_ = false;
    double anchorX_ = 0;  // the gesture's millimetres under its centre
    double anchorY_ = 0;
    double startScale_ = 0;
};

}  // namespace kesto
