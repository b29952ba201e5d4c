// The commands of the main window that decide something about the parts.
#include <optional>

#include "app/Codes.h"
#include "placement/ShortReason.h"
#include "session/JobSession.h"

namespace kesto {

namespace {

// Auto's table of placed counts is indexed by Seq, so it keeps parts numbered below this.
constexpr size_t kKeepTableSize = 1000;

// The first part numbered seq in parts, of that process when one is given.
template <typename PartList>
auto FirstPart(PartList& parts, int32_t seq, std::optional<int32_t> koutei)
    -> decltype(&*parts.begin()) {
    for (auto& part : parts) {
        if (part.Seq == seq && (!koutei || part.KouteiNo == *koutei))
            return &part;
    }
    return nullptr;
}

}  // namespace

PartsInfo* JobSession::FindPart(int32_t seq, bool anyKoutei) {
    return FirstPart(app_.PartsList, seq,
                     anyKoutei ? std::nullopt : std::optional<int32_t>(shown_.Koutei()));
}

std::string JobSession::WhyShortText(int32_t seq) const {
    const PartsInfo* part = FirstPart(app_.PartsList, seq, std::nullopt);
    if (part == nullptr)
        return {};
    const std::optional<ShortReason> why = WhyShort(app_, *part);
    return why ? ShortReasonText(*why, services_.Messages) : std::string();
}

ChangeSet JobSession::ChooseKoutei(int32_t position) {
    shown_.SetKoutei(position);
    Journal({.Verb = JournalVerb::Process, .Value = position});
    return Change::Koutei;
}

ChangeSet JobSession::ChoosePallet(int32_t pallet) {
    shown_.SetPallet(pallet);
    Journal({.Verb = JournalVerb::Pallet, .Value = pallet});
    return Change::Pallet;
}

ChangeSet JobSession::ChooseBox(int32_t code) {
    shown_.SetBox(code);
    Journal({.Verb = JournalVerb::Box, .Value = code});
    return Change::Box;
}

ChangeSet JobSession::ChooseView(PalletView mode) {
    shown_.SetMode(mode);
    Journal({.Verb = JournalVerb::View, .View = mode});
    return Change::Mode;
}

ChangeSet JobSession::SetWindow(const std::optional<WorldWindow>& window) {
    const ChangeSet changed = MoveWindow(window);
    if (changed || windowUnwritten_)
        Journal({.Verb = JournalVerb::Window, .Window = shown_.Zoom()});
    return changed;
}

ChangeSet JobSession::MoveWindow(const std::optional<WorldWindow>& window) {
    std::optional<WorldWindow> rounded;
    if (window)
        rounded.emplace(JournalRounded(*window));
    const ChangeSet changed = shown_.SetZoom(rounded);
    if (changed)
        windowUnwritten_ = true;
    return changed;
}

ChangeSet JobSession::SetGrid(bool on) {
    const ChangeSet changed = shown_.SetGrid(on);
    Journal({.Verb = JournalVerb::Grid, .Value = on ? 1 : 0});
    return changed;
}

ChangeSet JobSession::Set3D(bool on) {
    const ChangeSet changed = shown_.Set3D(on);
    Journal({.Verb = JournalVerb::ThreeD, .Value = on ? 1 : 0});
    return changed;
}

ChangeSet JobSession::SetHit(HitBy hit) {
    // The buttons show the choice even when it was already made.
    shown_.SetHit(hit);
    Journal({.Verb = JournalVerb::Hit, .Hit = hit});
    return Change::Hit;
}

ChangeSet JobSession::SwitchBlockDraw() {
    const ChangeSet changed = shown_.SwitchBlockDraw() | Change::BlockCells;
    Journal({.Verb = JournalVerb::BlockDraw, .Value = shown_.BlockDraw() ? 1 : 0});
    return changed;
}

ChangeSet JobSession::Down(std::optional<int32_t> selectedSeq) {
    if (!selectedSeq) {
        services_.Op.AskKaku(kaku::kNoLineSelected, kaku::kNone);
        return {};
    }
    PartsInfo* part = FindPart(*selectedSeq, false);
    if (part == nullptr)
        return Change::Parts;
    RecordStep(step::kToSetAside);
    part->Destination = destination::kTorioki;
    part->PiecesSetAside = part->Quantity;
    Journal({.Verb = JournalVerb::Down, .Value = *selectedSeq});
    return Change::Parts | Change::History;
}

ChangeSet JobSession::Up(std::optional<int32_t> selectedSeq) {
    if (!IsSmallBox(shown_.Box())) {
        services_.Op.AskKaku(kaku::kNotASmallBox, kaku::kNone);
        return {};
    }
    if (!selectedSeq) {
        services_.Op.AskKaku(kaku::kNoLineSelected, kaku::kNone);
        return {};
    }
    const ChangeSet shown = Change::Parts | Change::SetAsideLine;
    PartsInfo* part = FindPart(*selectedSeq, false);
    if (part == nullptr)
        return shown;
    for (const BoxInfo& box : app_.BoxList) {
        if (box.No != shown_.Box())
            continue;
        if (!PartFitsBox(*part, box)) {
            services_.Op.AskKaku(kaku::kOutsideSmallBoxSize, kaku::kOutsideSmallBoxSize2);
            return {};
        }
        break;
    }
    if (part->PiecesPlaced > 0) {
        services_.Op.AskKaku(kaku::kPiecesOnPallets, kaku::kPiecesOnPallets2);
        return shown;
    }
    RecordStep(step::kToSmallBox);
    part->Destination = shown_.Box();
    part->PiecesPlaced = 0;
    part->PiecesSetAside = 0;
    Journal({.Verb = JournalVerb::Up, .Value = *selectedSeq});
    return shown | Change::History;
}

std::vector<int> JobSession::KeepTable() const {
    std::vector<int> keep(kKeepTableSize, 0);
    for (const PartsInfo& part : app_.PartsList) {
        if (part.PiecesPlaced != 0 && part.Seq >= 0 && static_cast<size_t>(part.Seq) < keep.size())
            keep[static_cast<size_t>(part.Seq)] = part.PiecesPlaced;
    }
    return keep;
}

void JobSession::ChooseDefaultBox() {
    for (int32_t n = 1; n <= 3; ++n) {
        if (app_.BoxFlags[n] != 0) {
            shown_.SetBox(SmallBoxCode(n));
            return;
        }
    }
}

bool JobSession::AnySmallBoxDefined() const {
    for (int n = 1; n <= kSmallBoxSlots; ++n) {
        if (app_.BoxFlags[n] != 0)
            return true;
    }
    return false;
}

}  // namespace kesto
