// What the operator is looking at: the process, pallets and small box in view and the
// drawing's toggles. It belongs to whoever shows the job (the window, kesto-batch, the picture
// writer), never to the job: drawing a picture or changing the view leaves the job's records as
// they were. Where the widgets stand is the widgets' own business. Each setter says what it
// changed (nothing when the value was already there).
#pragma once

#include <cstdint>
#include <optional>

#include "app/Changes.h"
#include "app/Codes.h"

namespace kesto {

class HostStore;

// What a click in the drawing picks: the stack under it, or every stack of its block.
enum class HitBy : uint8_t { Single, Block };

// The part of the pallet a zoomed FLAT or DANMEN view shows, in pallet millimetres.
struct WorldWindow {
    double XMin = 0;
    double XMax = 0;
    double YMin = 0;
    double YMax = 0;
    bool operator==(const WorldWindow&) const = default;
};

class ViewState {
  public:
    // Another view, process or pallet shows the whole pallet again.
    PalletView Mode() const { return mode_; }
    ChangeSet SetMode(PalletView mode) { return Unzoomed(Set(mode_, mode, Change::Mode)); }
    // 1-based position of the process in view in the schedule.
    int32_t Koutei() const { return koutei_; }
    ChangeSet SetKoutei(int32_t position) {
        return Unzoomed(Set(koutei_, position, Change::Koutei));
    }
    // The first pallet in view (1-based).
    int32_t Pallet() const { return pallet_; }
    ChangeSet SetPallet(int32_t pallet) { return Unzoomed(Set(pallet_, pallet, Change::Pallet)); }
    // The zoomed part of the pallet; none: the whole pallet. Only FLAT and DANMEN zoom, the
    // other views keep none.
    const std::optional<WorldWindow>& Zoom() const { return zoom_; }
    ChangeSet SetZoom(const std::optional<WorldWindow>& window) {
        const bool on = window.has_value() && Zoomable();
        if (on == zoom_.has_value() && (!on || *zoom_ == *window))
            return {};
        if (on)
            zoom_.emplace(*window);
        else
            zoom_.reset();
        return Change::Zoom;
    }
    bool Zoomable() const { return mode_ == PalletView::Flat || mode_ == PalletView::Danmen; }
    // The code of the small box in view (100..198).
    int32_t Box() const { return box_; }
    ChangeSet SetBox(int32_t code) { return Set(box_, code, Change::Box); }

    bool Is3D() const { return is3D_; }
    ChangeSet Set3D(bool on) { return Set(is3D_, on, Change::Display); }
    bool Grid() const { return grid_; }
    ChangeSet SetGrid(bool on) { return Set(grid_, on, Change::Display); }
    HitBy Hit() const { return hit_; }
    ChangeSet SetHit(HitBy hit) { return Set(hit_, hit, Change::Hit); }
    // The block cells are drawn. A per-user value ("IsBlockDraw") that keeps the number it was
    // read with until the operator switches it: only "is it 0" is ever asked of it.
    bool BlockDraw() const { return blockDraw_ != 0; }
    int32_t StoredBlockDraw() const { return blockDraw_; }
    ChangeSet SetStoredBlockDraw(int32_t stored) {
        return Set(blockDraw_, stored, Change::Display);
    }
    // The block-draw toggle: from 0 to 1, from anything else to 0.
    ChangeSet SwitchBlockDraw() { return SetStoredBlockDraw(blockDraw_ == 0 ? 1 : 0); }

    bool operator==(const ViewState&) const = default;

  private:
    template <class T>
    static ChangeSet Set(T& field, T value, Change change) {
        if (field == value)
            return {};
        field = value;
        return change;
    }

    ChangeSet Unzoomed(ChangeSet changed) {
        if (changed)
            changed |= SetZoom(std::nullopt);
        return changed;
    }

    PalletView mode_ = PalletView::Flat;
    int32_t koutei_ = 1;
    int32_t pallet_ = 1;
    int32_t box_ = destination::kFirstSmallBox;
    bool is3D_ = false;
    bool grid_ = false;
    HitBy hit_ = HitBy::Block;
    int32_t blockDraw_ = 0;
    std::optional<WorldWindow> zoom_;
};

// The view's per-user values ("IsBlockDraw"); a missing value reads as 0.
void ReadViewSettings(HostStore& host, ViewState& shown);
void WriteViewSettings(HostStore& host, const ViewState& shown);

}  // namespace kesto
