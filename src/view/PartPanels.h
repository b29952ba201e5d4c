// The two part panels of the main window: three lines about the picked or chosen part, and the
// size of a part as a proportional rectangle with its dimensions above it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "support/MessageFile.h"
#include "view/Canvas.h"

namespace kesto {

// The part-information panel: background, then a part in three lines, and for a part left
// short a fourth with why.
class PartsInfoPanel {
  public:
    PartsInfoPanel(const CKestoApp& app, const ViewState& view, const MessageTable& messages);
    // The panel's client rectangle (InfoRect), set as the panel places itself.
    void SetClient(const IntRect& client) { client_ = client; }
    const IntRect& Client() const { return client_; }
    // Draws the panel for part (null: background only); why, when
    // not empty, on a fourth line in the shortage colour.
    void Refresh(Canvas& canvas, const PartsInfo* part, const std::string& why = {}) const;
    // The three lines of a part in the view's process position (found by number).
    std::array<std::string, 3> Lines(const PartsInfo& part) const;

  private:
    const CKestoApp& app_;
    const ViewState& shown_;
    const MessageTable& messages_;
    IntRect client_;
};

// The part-view panel: a part's footprint scaled into the panel below a 20-pixel caption.
class PartsViewPanel {
  public:
    PartsViewPanel(const CKestoApp& app, const MessageTable& messages);
    // The panel's client rectangle (ViewRect), set as the panel places itself.
    void SetClient(const IntRect& client) { client_ = client; }
    const IntRect& Client() const { return client_; }
    // Shows a part of width w and length l (millimetres);
    // a negative w or l only clears the panel.
    void ShowSize(Canvas& canvas, double w, double l);
    // Shows the last size again once one was shown; else only clears.
    void Repaint(Canvas& canvas);

    int32_t Shown = 0;
    double ShownW = 0;
    double ShownL = 0;
    double XMin = 0, XMax = 0, YMin = 0, YMax = 0;
    double Scale = 0;
    int32_t ClientWidth = 0;

  private:
    const CKestoApp& app_;
    const MessageTable& messages_;
    IntRect client_;
};

// The caption strip at the top of the part view, in pixels.
inline constexpr int32_t kViewCaptionHeight = 20;

}  // namespace kesto
