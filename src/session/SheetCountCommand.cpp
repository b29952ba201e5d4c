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
    if (drawing.Selected().Picked() == nullptr)
        return std::nullopt;
    if (drawing.Selected().Band() != BandState::Off) {
        services_.Op.AskKaku(kaku::kBandSelectionActive, kaku::kNone);
        return std::nullopt;
    }
    return SheetCountStart{drawing.Selected().Picked()->X, drawing.Selected().Picked()->Y};
}

bool JobSession::ApplySheetCount(PalletDrawing& drawing, const SheetCountStart& start,
                                 int32_t newCount, const std::function<void()>& refreshed) {
    if (drawing.Selected().Picked() == nullptr || drawing.Selected().Picked()->Part == nullptr)
        return false;
    RecordStep(step::kSheetCount, drawing.Selected());
    PartsInfo* part = drawing.Selected().Picked()->Part;
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
    // The old stacks are gone: no pick may point at them.
    drawing.Select().ForgetPicks();
    CKs_Haichi haichi(app_, services_, shown_);
    haichi.RebuildCorners(koutei, {});
    const size_t stacksBefore = app_.HaichiList.Items.size();
    haichi.PlaceOnePart(part, koutei, Stacking::AllPalletsCapped, QuantityShare::SharedOut);
    part->PerStackLimit = ownLimit;
    part->OperatorPerStack = newCount;
    MarkStacksFrom(stacksBefore, kEditRestacked);

    HaichiInfo* samePlace = nullptr;
    for (HaichiInfo& h : app_.HaichiList) {
        if (h.Part != part)
            continue;
        drawing.Select().AddToHistory(&h);
        if (drawing.Selected().Picked() == nullptr)
            drawing.Select().SetPicked(&h);
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
    drawing.Select().SetLastPicked(samePlace != nullptr ? samePlace : drawing.Selected().Picked());
    return partShort;
}

}  // namespace kesto
