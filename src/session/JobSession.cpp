#include "session/JobSession.h"
#include "app/Codes.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/ExitCode.h"
#include "output/CKs_FileSave.h"
#include "placement/CKs_Haichi.h"
#include "session/JobCheck.h"
#include "support/SetupList.h"
#include "view/PalletDrawing.h"

namespace kesto {

JobSession::JobSession(const Services& services, std::string commandLine, ViewState& view)
    : services_(services), shown_(view) {
    app_.Run.CommandLine = std::move(commandLine);
}

bool JobSession::StartUp(OutlineFiles outlines) {
    outlines_ = outlines;
    // What constructing the application object did: the per-user values come first.
    app_.ReadRegistrySettings(services_.Host);
    ReadViewSettings(services_.Host, shown_);
    app_.Run.DialogEnd = OkCancel::Cancel;
    const Outcome settings = app_.InitSettings(services_);
    if (!errors_.Note(settings)) {
        app_.Run.ExitParam = settings.Code();
        return false;
    }
    return ReadJobInput();
}

bool JobSession::ReadJobInput() {
    const bool read = errors_.Note(app_.ReadInput(services_, outlines_));
    codesAtRead_ = errors_.Left();
    if (!read || outlines_ != OutlineFiles::Beside)
        return read;
    std::vector<PartsInfo*> parts;
    for (PartsInfo& part : app_.PartsList) {
        if (part.HasOutline == 1)
            parts.push_back(&part);
    }
    outlineReads_ = std::make_unique<OutlineReads>(std::move(parts));
    return read;
}

void JobSession::AwaitOutlines() {
    if (outlineReads_ == nullptr)
        return;
    errors_.NoteAsOf(outlineReads_->Wait(), codesAtRead_);
    outlineReads_.reset();
}

bool JobSession::Init() {
    if (app_.KouteiList.Count < 1) {
        AwaitOutlines();
        Finish(OkCancel::Cancel);
        return false;
    }
    return LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {}) == 1;
}

int JobSession::LoadAndPlace(PlacedCounts counts, SavedPlacement saved,
                             const std::vector<int>& keep) {
    const int placed = CheckAndPlace(counts, saved, keep);
    // Only the placement goes without the outlines; what follows may draw them.
    AwaitOutlines();
    if (placed == 1 && view_ != nullptr)
        view_->ShowPlacedJob();
    return placed;
}

int JobSession::CheckAndPlace(PlacedCounts counts, SavedPlacement saved,
                              const std::vector<int>& keep) {
    shown_.SetHit(HitBy::Block);
    shown_.SetGrid(true);
    shown_.SetKoutei(1);
    ChooseDefaultBox();
    app_.ReadPalletSelect(services_.Messages);
    shown_.SetPallet(1);
    if (view_ != nullptr)
        view_->ShowResetJob();
    // A job that fails its check is ended through Cancel, and the placement still runs.
    if (!errors_.Note(CheckJob(app_, services_))) {
        Finish(OkCancel::Cancel);
        if (aborted_)
            return 0;
    }
    return PlaceJob(counts, saved, keep) == 0 ? 0 : 1;
}

int JobSession::PlaceJob(PlacedCounts counts, SavedPlacement saved, const std::vector<int>& keep) {
    CKs_Haichi haichi(app_, services_);
    // A placement made anew owes nothing to an earlier sheet-count change.
    for (PartsInfo& p : app_.PartsList)
        p.OperatorPerStack = 0;
    if (counts == PlacedCounts::Kept) {
        for (PartsInfo& p : app_.PartsList) {
            // A part beyond the kept table keeps its count.
            if (p.Seq < 0 || static_cast<size_t>(p.Seq) >= keep.size())
                continue;
            p.PartialQuantity = keep[static_cast<size_t>(p.Seq)];
            if (p.PartialQuantity > 0 && !IsPalletCode(p.Destination))
                p.Destination = 0;
        }
    }
    if (saved == SavedPlacement::Restore) {
        if (!errors_.Note(
                haichi.RestorePlacement(GetDataFilePath(services_, DataFile::PlacementSave))))
            return 0;
        if (haichi.TrimExcess() == 0)
            return 0;
        if (haichi.FillShortage() == 0)
            return 0;
    }
    return errors_.Note(haichi.PlaceAll(counts, saved)) ? 1 : 0;
}

void JobSession::RereadJob() {
    AwaitOutlines();
    app_.FreeJob();
    app_.ReadRegistrySettings(services_.Host);
    ReadViewSettings(services_.Host, shown_);
    // A code that a failed re-read stores belongs to the command's own message, not to the
    // one the program ends on.
    const int32_t exitParam = app_.Run.ExitParam;
    ReadJobInput();
    app_.Run.ExitParam = exitParam;
}

ViewPlace JobSession::Place() const {
    return {shown_.Koutei(), shown_.Pallet()};
}

void JobSession::RecordStep(const char* name, const Selection& selection) {
    history_.Record(name, app_, selection, Place());
}

void JobSession::RecordStep(const char* name) {
    static const Selection kNothingPicked;
    RecordStep(name, watched_ != nullptr ? *watched_ : kNothingPicked);
}

void JobSession::BeginStep(const char* name, const Selection& selection) {
    history_.Begin(name, app_, selection, Place());
}

void JobSession::EndStep(bool changed) {
    if (changed)
        history_.Commit();
    else
        history_.Cancel();
}

ChangeSet JobSession::Undo(PalletDrawing& drawing) {
    ViewPlace place = Place();
    if (!history_.Undo(app_, drawing.Select(), &place))
        return {};
    Journal({.Verb = JournalVerb::Undo});
    return ShowAt(place);
}

ChangeSet JobSession::Redo(PalletDrawing& drawing) {
    ViewPlace place = Place();
    if (!history_.Redo(app_, drawing.Select(), &place))
        return {};
    Journal({.Verb = JournalVerb::Redo});
    return ShowAt(place);
}

ChangeSet JobSession::ShowAt(const ViewPlace& place) {
    shown_.SetKoutei(place.Koutei);
    shown_.SetPallet(place.Pallet);
    // A step may have changed any part and stack; it is shown with its picks where it was.
    return Change::Place | Change::Parts | Change::Stacks | Change::History;
}

ChangeSet JobSession::Retry() {
    if (services_.Op.AskKaku(kaku::kAskRetry, kaku::kAskRetry2) != OkCancel::Ok)
        return {};
    RecordStep(step::kRetry);
    RereadJob();
    LoadAndPlace(PlacedCounts::Quantity, SavedPlacement::Restore, {});
    const ChangeSet whole = shown_.SetZoom(std::nullopt);
    Journal({.Verb = JournalVerb::Retry});
    // The lists were filled as the job was placed; the all-parts dialog follows too.
    return Change::Reloaded | Change::Parts | Change::History | whole;
}

ChangeSet JobSession::Auto() {
    if (services_.Op.AskKaku(kaku::kAskAuto, kaku::kAskAuto2) != OkCancel::Ok)
        return {};
    RecordStep(step::kAuto);
    const std::vector<int> keep = KeepTable();
    RereadJob();
    LoadAndPlace(PlacedCounts::Kept, SavedPlacement::Ignore, keep);
    const ChangeSet whole = shown_.SetZoom(std::nullopt);
    Journal({.Verb = JournalVerb::Auto});
    // The lists were filled as the job was placed; the all-parts dialog keeps its lines.
    return Change::Reloaded | Change::History | whole;
}

bool JobSession::PassesExitCheck() {
    if (CKs_FileSave(app_, services_).CheckOffsets(shown_.Koutei()) != 0)
        return true;
    // The operator stopped at the offset warning: the job ends at once, nothing written.
    aborted_ = true;
    ended_ = true;
    return false;
}

bool JobSession::Finish(OkCancel end) {
    if (ended_)
        return true;
    if (!PassesExitCheck())
        return true;
    if (!errors_.Note(CKs_FileSave(app_, services_).SaveAll()))
        return false;
    ended_ = true;
    app_.Run.DialogEnd = end;
    // Written once the files are: a journal that ends so needs no recovery.
    Journal({.Verb = end == OkCancel::Ok ? JournalVerb::Ok : JournalVerb::Cancel});
    return true;
}

bool JobSession::Close() {
    if (ended_)
        return true;
    if (!PassesExitCheck())
        return true;
    return Finish(OkCancel::Cancel);
}

void JobSession::Journal(const JournalCommand& command) {
    if (journal_ == nullptr)
        return;
    // A command acts on the window the operator sees: a pan's window comes first.
    if (windowUnwritten_ && command.Verb != JournalVerb::Window)
        journal_->Write({.Verb = JournalVerb::Window, .Window = shown_.Zoom()});
    windowUnwritten_ = false;
    journal_->Write(command);
}

void JobSession::JournalSettings() {
    const int32_t direct = app_.Settings.IsDirect.Stored();
    if (direct == 0 || direct == 1)
        Journal({.Verb = JournalVerb::Direct, .Value = direct});
    const int32_t blockDraw = shown_.StoredBlockDraw();
    if (blockDraw == 0 || blockDraw == 1)
        Journal({.Verb = JournalVerb::BlockDraw, .Value = blockDraw});
}

void JobSession::JournalArea(int32_t width, int32_t height) {
    if (journal_ == nullptr || journaledArea_ == std::pair{width, height})
        return;
    journaledArea_ = {width, height};
    Journal({.Verb = JournalVerb::Area, .ClientWidth = width, .ClientHeight = height});
}

std::vector<int32_t> JobSession::PositionsOf(const std::vector<StackId>& stacks) const {
    std::vector<int32_t> places;
    for (const StackId id : stacks) {
        if (const std::optional<size_t> at = app_.HaichiList.PositionOf(id))
            places.push_back(static_cast<int32_t>(*at));
    }
    return places;
}

int JobSession::Exit() {
    if (exitCode_)
        return *exitCode_;
    AwaitOutlines();
    if (aborted_) {
        exitCode_ = kExitOffsetAbort;
    } else {
        app_.WriteRegistrySettings(services_.Host);
        WriteViewSettings(services_.Host, shown_);
        exitCode_ = SettleExitCode(app_.Run.ExitParam, app_.Run.DialogEnd);
    }
    app_.FreeJob();
    services_.Messages.Free();
    return *exitCode_;
}

void JobSession::MarkStacksFrom(size_t first, uint8_t edit) {
    // New stacks are appended at the tail of the list.
    auto it = app_.HaichiList.begin();
    std::advance(it, std::min(first, app_.HaichiList.size()));
    for (; it != app_.HaichiList.end(); ++it)
        it->Edits |= edit;
}

}  // namespace kesto
