#include "session/JournalReplay.h"

#include <string>
#include <utility>

#include "app/Codes.h"
#include "rules/ListLines.h"

namespace kesto {

namespace {

// The questions of the replay: Retry's and Auto's were answered OK, or their lines would not be
// in the journal; the rest as the caller answers them.
class ReplayAnswers : public Operator {
  public:
    explicit ReplayAnswers(Operator& rest) : rest_(rest) {}
    void ShowMessageBox(const std::string& text) override { rest_.ShowMessageBox(text); }
    OkCancel AskKaku(int no1, int no2) override {
        if (no1 == kaku::kAskRetry || no1 == kaku::kAskAuto)
            return OkCancel::Ok;
        return rest_.AskKaku(no1, no2);
    }
    bool AskOffsetWarning(const std::string& text) override { return rest_.AskOffsetWarning(text); }

  private:
    Operator& rest_;
};

// Puts the relay back to whom it relayed to however the replay ends.
class RelayScope {
  public:
    RelayScope(OperatorRelay& relay, Operator& to) : relay_(relay), before_(relay.Target()) {
        relay_.RelayTo(to);
    }
    ~RelayScope() { relay_.RelayTo(before_); }
    RelayScope(const RelayScope&) = delete;
    RelayScope& operator=(const RelayScope&) = delete;

  private:
    OperatorRelay& relay_;
    Operator& before_;
};

// The journal holds what is replayed already: nothing is written twice.
class JournalScope {
  public:
    explicit JournalScope(JobSession& session)
        : session_(session), journal_(session.JournalTarget()) {
        session_.JournalIn(nullptr);
    }
    ~JournalScope() { session_.JournalIn(journal_); }
    JournalScope(const JournalScope&) = delete;
    JournalScope& operator=(const JournalScope&) = delete;

  private:
    JobSession& session_;
    CommandJournal* journal_;
};

std::string Number(int32_t n) {
    return std::to_string(n);
}

bool NamesClientSize(const JournalCommand& c) {
    return c.Verb == JournalVerb::Area || c.Verb == JournalVerb::Drop ||
           c.Verb == JournalVerb::BandDrop;
}

// The client size the window had when the journal began: that of the first line naming one.
std::pair<int32_t, int32_t> FirstClientSize(const JournalFile& journal) {
    for (const auto& [line, parsed] : journal.Lines) {
        if (parsed.Kind == ParsedJournalLine::Kind::Command && NamesClientSize(parsed.Command))
            return {parsed.Command.ClientWidth, parsed.Command.ClientHeight};
    }
    return {0, 0};
}

}  // namespace

JournalReplay::JournalReplay(JobSession& session, PalletDrawing& drawing, DrawingEdit& edit,
                             OperatorRelay& relay, Operator& answers)
    : session_(session), drawing_(drawing), edit_(edit), relay_(relay), answers_(answers) {}

ReplayOutcome JournalReplay::Run(const JournalFile& journal) {
    ReplayOutcome outcome;
    ReplayAnswers answers(answers_);
    const RelayScope relay(relay_, answers);
    const JournalScope quiet(session_);
    if (const auto [width, height] = FirstClientSize(journal); width > 0 && height > 0) {
        width_ = width;
        height_ = height;
    }
    LayOut();
    for (const auto& [line, parsed] : journal.Lines) {
        const std::string at = "line " + std::to_string(line) + ": ";
        if (parsed.Kind == ParsedJournalLine::Kind::Unknown) {
            outcome.Skipped.push_back(at + "unknown command " + parsed.Word);
            continue;
        }
        if (parsed.Kind == ParsedJournalLine::Kind::CutShort) {
            outcome.Skipped.push_back(at + parsed.Why);
            continue;
        }
        if (parsed.Kind == ParsedJournalLine::Kind::Malformed) {
            outcome.BadLine = line;
            outcome.Why = at + parsed.Why;
            return outcome;
        }
        const JournalCommand& command = parsed.Command;
        if (command.Verb == JournalVerb::Ok || command.Verb == JournalVerb::Cancel) {
            outcome.End = command.Verb == JournalVerb::Ok ? OkCancel::Ok : OkCancel::Cancel;
            return outcome;
        }
        if (const std::optional<std::string> why = Apply(command)) {
            outcome.BadLine = line;
            outcome.Why = at + *why;
            return outcome;
        }
        LayOut();
        ++outcome.Commands;
    }
    return outcome;
}

std::optional<std::string> JournalReplay::PickStacks(const std::vector<int32_t>& places) {
    Selection& selection = drawing_.Select();
    selection.Reset();
    for (const int32_t place : places) {
        const HaichiInfo* h =
            place < 0 ? nullptr : session_.App().HaichiList.AtPosition(static_cast<size_t>(place));
        if (h == nullptr)
            return "no stack at place " + Number(place);
        selection.AddToHistory(h->Id);
        if (selection.Picked() == kNoStack) {
            selection.SetPicked(h->Id);
            selection.SetLastPicked(h->Id);
        }
    }
    return std::nullopt;
}

void JournalReplay::LayOut() {
    if (width_ <= 0 || height_ <= 0)
        return;
    drawing_.SetArea({0, 0, width_, height_});
    scratch_.Clear();
    drawing_.ClearArea(scratch_);
    drawing_.SetUpView(scratch_);
}

void JournalReplay::LayOutAt(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0)
        return;
    width_ = width;
    height_ = height;
    drawing_.SetArea({0, 0, width, height});
    scratch_.Clear();
    drawing_.Refresh(scratch_);
}

std::optional<std::string> JournalReplay::Apply(const JournalCommand& c) {
    CKestoApp& app = session_.App();
    const ViewState& shown = session_.Shown();
    scratch_.Clear();
    switch (c.Verb) {
        case JournalVerb::Process:
            if (c.Value < 1 || c.Value > app.KouteiList.Count)
                return "no process " + Number(c.Value);
            session_.ChooseKoutei(c.Value);
            return std::nullopt;
        case JournalVerb::Pallet:
            if (c.Value < 1 || c.Value > app.Settings.PalletCount)
                return "no pallet " + Number(c.Value);
            session_.ChoosePallet(c.Value);
            return std::nullopt;
        case JournalVerb::View:
            session_.ChooseView(c.View);
            return std::nullopt;
        case JournalVerb::Direct:
            // Two switches at most: a stored number other than 0 and 1 switches to 0 first.
            for (int i = 0; i < 2 && app.Settings.IsDirect.Stored() != c.Value; ++i) {
                edit_.SwitchDirect();
                edit_.DirectSwitched();
            }
            return std::nullopt;
        case JournalVerb::ThreeD:
            session_.Set3D(c.Value != 0);
            return std::nullopt;
        case JournalVerb::Grid:
            session_.SetGrid(c.Value != 0);
            return std::nullopt;
        case JournalVerb::BlockDraw:
            if (shown.BlockDraw() != (c.Value != 0))
                session_.SwitchBlockDraw();
            return std::nullopt;
        case JournalVerb::Hit:
            session_.SetHit(c.Hit);
            return std::nullopt;
        case JournalVerb::Box:
            if (!IsSmallBox(c.Value))
                return "no small box " + Number(c.Value);
            session_.ChooseBox(c.Value);
            return std::nullopt;
        case JournalVerb::Down: {
            const PartsInfo* part = session_.FindPart(c.Value, false);
            if (part == nullptr || !InSmallBox(*part, shown.Box()))
                return "part " + Number(c.Value) + " is not in the small box in view";
            session_.Down(c.Value);
            return std::nullopt;
        }
        case JournalVerb::Up:
        case JournalVerb::Right: {
            const PartsInfo* part = session_.FindPart(c.Value, false);
            if (part == nullptr || !InTorioki(*part))
                return "part " + Number(c.Value) + " is not set aside";
            if (c.Verb == JournalVerb::Up)
                session_.Up(c.Value);
            else
                session_.Right(c.Value);
            return std::nullopt;
        }
        case JournalVerb::Left:
            if (std::optional<std::string> why = PickStacks(c.Stacks))
                return why;
            // The window's pick outlives a Direct switch that empties the history: left then
            // sets nothing aside but still takes its step and rebuilds the corner marks. Any
            // stack stands for that pick, as only that there is one counts.
            if (c.Stacks.empty() && !app.HaichiList.Empty())
                drawing_.Select().SetPicked(app.HaichiList.begin()->Id);
            session_.Left(drawing_, scratch_);
            return std::nullopt;
        case JournalVerb::Sheets: {
            if (c.Value < 1)
                return "no sheet count " + Number(c.Value);
            if (std::optional<std::string> why = PickStacks({c.Stack}))
                return why;
            const std::optional<SheetCountStart> start = session_.BeginSheetCount(drawing_);
            if (!start)
                return "the stack at place " + Number(c.Stack) + " takes no sheet count";
            session_.ApplySheetCount(drawing_, *start, c.Value);
            return std::nullopt;
        }
        case JournalVerb::Area:
            if (c.ClientWidth <= 0 || c.ClientHeight <= 0)
                return std::string("no drawing area of that size");
            width_ = c.ClientWidth;
            height_ = c.ClientHeight;
            return std::nullopt;
        case JournalVerb::Window:
            if (c.Window && !shown.Zoomable())
                return std::string("the view in force does not zoom");
            session_.SetWindow(c.Window);
            return std::nullopt;
        case JournalVerb::Drop:
        case JournalVerb::BandDrop:
            if (c.ClientWidth <= 0 || c.ClientHeight <= 0)
                return std::string("no drawing area of that size");
            LayOutAt(c.ClientWidth, c.ClientHeight);
            return edit_.ReplayDrop(scratch_, c);
        case JournalVerb::Retry:
        case JournalVerb::Auto:
            if (c.Verb == JournalVerb::Retry)
                session_.Retry();
            else
                session_.Auto();
            edit_.JobReloaded();
            return std::nullopt;
        case JournalVerb::Undo:
            session_.Undo(drawing_);
            return std::nullopt;
        case JournalVerb::Redo:
            session_.Redo(drawing_);
            return std::nullopt;
        case JournalVerb::Ok:
        case JournalVerb::Cancel:
            return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace kesto
