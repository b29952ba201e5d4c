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
    const HaichiInfo* picked = drawing.PickedStack();
    if (picked == nullptr)
        return std::nullopt;
    if (drawing.Selected().Band() != BandState::Off) {
        services_.Op.AskKaku(kaku::kBandSelectionActive, kaku::kNone);
        return std::nullopt;
    }
    return SheetCountStart{picked->X, picked->Y};
}

bool JobSession::ApplySheetCount(PalletDrawing& drawing, const SheetCountStart& start,
                                 int32_t newCount, const ShowChange& show) {
    const HaichiInfo* picked = drawing.PickedStack();
    if (picked == nullptr || picked->Part == nullptr)
        return false;
    RecordStep(step::kSheetCount, drawing.Selected());
    const std::vector<int32_t> place = PositionsOf({picked->Id});
    PartsInfo* part = picked->Part;
    KouteiInfo* koutei = app_.KouteiAt(shown_.Koutei());
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
    // The old stacks are gone: the picks start afresh.
    drawing.Select().ForgetPicks();
    CKs_Haichi haichi(app_, services_);
    haichi.RebuildCorners(koutei, {});
    const size_t stacksBefore = app_.HaichiList.size();
    errors_.Note(
        haichi.PlaceOnePart(part, koutei, Stacking::AllPalletsCapped, QuantityShare::SharedOut));
    part->PerStackLimit = ownLimit;
    part->OperatorPerStack = newCount;
    MarkStacksFrom(stacksBefore, kEditRestacked);

    StackId samePlace = kNoStack;
    for (const HaichiInfo& h : app_.HaichiList) {
        if (h.Part != part)
            continue;
        drawing.Select().AddToHistory(h.Id);
        if (drawing.Selected().Picked() == kNoStack)
            drawing.Select().SetPicked(h.Id);
        if (samePlace == kNoStack && std::fabs(h.X - start.X) <= kSamePlace &&
            std::fabs(h.Y - start.Y) <= kSamePlace)
            samePlace = h.Id;
    }
    Journal({.Verb = JournalVerb::Sheets, .Value = newCount, .Stack = place.front()});
    if (show)
        show(Change::Parts | Change::Stacks | Change::Restacked | Change::History);
    const bool partShort = part->PiecesPlaced != part->Quantity;
    if (partShort)
        services_.Op.AskKaku(kaku::kPartlyPlaced, kaku::kNone);
    // The stack at the old place becomes the last pick only once message 10 is answered.
    drawing.Select().SetLastPicked(samePlace != kNoStack ? samePlace : drawing.Selected().Picked());
    return partShort;
}

}  // namespace kesto
