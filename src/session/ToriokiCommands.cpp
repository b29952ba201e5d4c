// The commands between the pallets and the set-aside area: left and right.
#include <unordered_set>

#include <algorithm>

#include "app/Codes.h"
#include "placement/CKs_Haichi.h"
#include "rules/ListLines.h"
#include "session/JobSession.h"
#include "view/PalletDrawing.h"

namespace kesto {

namespace {

// Every pallet box (numbered below 100) must hold the part's size, bounds included.
bool FitsEveryPalletBox(const CKestoApp& app, const PartsInfo& part) {
    for (const BoxInfo& box : app.BoxList) {
        if (box.No >= destination::kFirstSmallBox)
            continue;
        if (!PartFitsBox(part, box))
            return false;
    }
    return true;
}

// The picked stacks that still exist, each once: a stack picked twice (by its block and by
// itself) is set aside once, and nothing already removed is touched.
std::vector<HaichiInfo*> LiveOnce(CKestoApp& app, const std::vector<StackId>& picked) {
    std::unordered_set<StackId> taken;
    std::vector<HaichiInfo*> out;
    for (const StackId id : picked) {
        HaichiInfo* h = app.HaichiList.Find(id);
        if (h != nullptr && h->Part != nullptr && taken.insert(id).second)
            out.push_back(h);
    }
    return out;
}

}  // namespace

bool JobSession::AnyPartSetAside() const {
    return std::any_of(app_.PartsList.begin(), app_.PartsList.end(),
                       [](const PartsInfo& part) { return part.PiecesSetAside > 0; });
}

ChangeSet JobSession::Left(PalletDrawing& drawing, Canvas& canvas) {
    if (drawing.Selected().Band() != BandState::Off) {
        services_.Op.AskKaku(kaku::kBandSelectionActive, kaku::kNone);
        return {};
    }
    if (drawing.Selected().Picked() == kNoStack || app_.KouteiList.Empty())
        return {};
    RecordStep(step::kLeft, drawing.Selected());
    // Named by their places before they leave the list.
    const std::vector<int32_t> places = PositionsOf(drawing.Selected().PickHistory());
    const std::vector<HaichiInfo*> stacks = LiveOnce(app_, drawing.Selected().PickHistory());
    for (HaichiInfo* h : stacks) {
        h->Part->PiecesSetAside = AddClamped(h->Part->PiecesSetAside, h->Pieces);
        h->Part->PiecesPlaced = AddClamped(h->Part->PiecesPlaced, -int64_t{h->Pieces});
    }
    drawing.DrawParts(canvas, DrawMode::Unhighlight);
    for (HaichiInfo* h : stacks)
        app_.RemoveHaichiInfo(h);
    drawing.Select().ForgetPicks();
    // The freed corners serve again: the process's marks are rebuilt from the stacks left.
    CKs_Haichi(app_, services_).RebuildCorners(app_.KouteiAt(shown_.Koutei()), {});
    Journal({.Verb = JournalVerb::Left, .Stacks = places});
    return Change::Stacks | Change::SetAsideParts | Change::Selection | Change::History;
}

ChangeSet JobSession::Right(std::optional<int32_t> selectedSeq, const ShowChange& show) {
    if (app_.PartsList.Empty())
        return {};
    if (!selectedSeq) {
        services_.Op.AskKaku(kaku::kNoLineSelected, kaku::kNone);
        return {};
    }
    PartsInfo* part = FindPart(*selectedSeq, false);
    if (part == nullptr)
        return {};
    if (!FitsEveryPalletBox(app_, *part)) {
        services_.Op.AskKaku(kaku::kOutsidePalletBoxSize, kaku::kOutsidePalletBoxSize2);
        return {};
    }
    RecordStep(step::kRight);
    part->Destination = 0;
    const int32_t placedBefore = part->PiecesPlaced;
    part->PiecesSetAside = 0;
    const size_t stacksBefore = app_.HaichiList.size();
    // The pieces placed now join the part's stacks as they are, without sharing out.
    errors_.Note(CKs_Haichi(app_, services_, CandidatePallets(shown_, app_.Settings.PalletCount))
                     .PlaceOnePart(part, app_.KouteiAt(shown_.Koutei()), Stacking::PalletsInView,
                                   QuantityShare::AsPlaced));
    MarkStacksFrom(stacksBefore, kEditReturned);
    Journal({.Verb = JournalVerb::Right, .Value = *selectedSeq});
    const ChangeSet changed =
        Change::Parts | Change::SetAsideLine | Change::Stacks | Change::History;
    if (show)
        show(changed);
    if (part->PiecesPlaced != part->Quantity) {
        const int32_t message =
            part->PiecesPlaced == placedBefore ? kaku::kNothingPlacedBack : kaku::kPartlyPlaced;
        services_.Op.AskKaku(message, kaku::kNone);
    }
    return changed;
}

}  // namespace kesto
