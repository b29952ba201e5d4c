// MaiChg: the picked part stacked again with another count of pieces per stack.
#include <cmath>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "session/JobSession.h"
#include "view/PalletDrawing.h"

namespace kesto {

namespace {

// The stack that stood at the remembered place before the change (within 1 mm either way).
constexpr double kSamePlace = 1.0;

}  // namespace

std::optional<SheetCountStart> JobSession::BeginSheetCount(const PalletDrawing& drawing) {
    if (drawing.Picked == nullptr)
        return std::nullopt;
    if (drawing.BandActive != 0) {
        services_.Op.AskKaku(kaku::kBandSelectionActive, kaku::kNone);
        return std::nullopt;
    }
    return SheetCountStart{drawing.Picked->X, drawing.Picked->Y};
}

bool JobSession::ApplySheetCount(PalletDrawing& drawing, const SheetCountStart& start,
                                 int32_t newCount, const std::function<void()>& refreshed) {
    if (drawing.Picked == nullptr || drawing.Picked->Part == nullptr)
        return false;
    PartsInfo* part = drawing.Picked->Part;
    KouteiInfo* koutei = app_.KouteiAt(shown_.CurrentKoutei);
    // The new count stands in for the part's own only while it is stacked again.
    const int32_t ownLimit = part->PerStackLimit;
    part->PerStackLimit = newCount;
    part->PiecesPlaced = 0;
    std::vector<HaichiInfo*> old;
    for (HaichiInfo& h : app_.HaichiList) {
        if (h.Part == part)
            old.push_back(&h);
    }
    for (HaichiInfo* h : old)
        app_.RemoveHaichiInfo(h);
    drawing.Picked = nullptr;
    drawing.LastPicked = nullptr;
    CKs_Haichi haichi(app_, services_, shown_);
    haichi.RebuildCorners(koutei, {});
    haichi.PlaceOnePart(part, koutei, stacking::kAllPalletsCapped);
    part->PerStackLimit = ownLimit;

    drawing.PickHistory.clear();
    HaichiInfo* samePlace = nullptr;
    for (HaichiInfo& h : app_.HaichiList) {
        if (h.Part != part)
            continue;
        if (drawing.PickHistory.size() < kPickHistoryCapacity)
            drawing.PickHistory.push_back(&h);
        if (drawing.Picked == nullptr)
            drawing.Picked = &h;
        if (samePlace == nullptr && std::fabs(h.X - start.X) <= kSamePlace &&
            std::fabs(h.Y - start.Y) <= kSamePlace)
            samePlace = &h;
    }
    if (refreshed)
        refreshed();
    const bool partShort = part->PiecesPlaced != part->Quantity;
    if (partShort)
        services_.Op.AskKaku(kaku::kPartlyPlaced, kaku::kNone);
    // The stack at the old place becomes the last pick only once message 10 is answered.
    drawing.LastPicked = samePlace != nullptr ? samePlace : drawing.Picked;
    return partShort;
}

}  // namespace kesto
