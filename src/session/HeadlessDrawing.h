// The drawing area without a window: the pallet drawing and its editing wired to the session as
// the window wires them, for a replay of a journal that no one watches (kesto-batch --replay).
#pragma once

#include <cstdint>
#include <vector>

#include "session/DrawingEdit.h"
#include "session/JobSession.h"
#include "view/PalletDrawing.h"

namespace kesto {

class HeadlessDrawing : private DrawAreaView {
  public:
    explicit HeadlessDrawing(JobSession& session)
        : drawing_(session.App(), session.Shown(), session.Svc().Messages),
          edit_(session.App(), session.Svc(), drawing_, *this),
          session_(session) {
        // Drops are steps of the undo history and commands see the picks, as in the window.
        edit_.RecordStepsIn(&session);
        session.WatchSelection(&drawing_.Selected());
    }
    ~HeadlessDrawing() override { session_.WatchSelection(nullptr); }
    HeadlessDrawing(const HeadlessDrawing&) = delete;
    HeadlessDrawing& operator=(const HeadlessDrawing&) = delete;

    PalletDrawing& Drawing() { return drawing_; }
    DrawingEdit& Editing() { return edit_; }

  private:
    // Nothing is shown. The only commands that read the drawing's pixels are the drops, and
    // the replay lays the drawing out at their size before each.
    void Refresh() override {}
    void ShowDragImage(const std::vector<IntRect>&) override {}
    void HideDragImage() override {}
    void SyncPartList(const std::vector<int32_t>&) override {}
    void SelectPartsAllLine(int32_t) override {}
    void RefreshInfoPanel() override {}
    void ShowRefusedDrop(DropRefusal, const std::vector<IntRect>&) override {}
    void ShowLanding(const std::optional<DropPreview>&) override {}

    PalletDrawing drawing_;
    DrawingEdit edit_;
    JobSession& session_;
};

}  // namespace kesto
