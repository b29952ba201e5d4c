#include "JournalGenerator.h"

#include <algorithm>
#include <optional>
#include <random>

#include "app/Codes.h"
#include "rules/ListLines.h"
#include "session/JournalReplay.h"
#include "view/DisplayList.h"

namespace kesto {

namespace {

class Generator {
  public:
    Generator(JobSession& session, HeadlessDrawing& area, OperatorRelay& relay,
              const JournalShape& shape)
        : session_(session), area_(area), relay_(relay), shape_(shape), rng_(shape.Seed) {}

    // The drawing area's size, as the window's journal names it first, then the commands.
    std::vector<JournalCommand> Run() {
        const JournalCommand area{
            .Verb = JournalVerb::Area, .ClientWidth = shape_.Width, .ClientHeight = shape_.Height};
        std::vector<JournalCommand> done;
        if (CarryOut(area))
            done.push_back(area);
        const size_t wanted = done.size() + static_cast<size_t>(std::max(0, shape_.Commands));
        // A draw that finds nothing to name (no stack on view) is drawn again.
        for (int tries = 0; done.size() < wanted && tries < 20 * shape_.Commands; ++tries) {
            const std::optional<JournalCommand> command = Draw();
            if (command && CarryOut(*command))
                done.push_back(*command);
        }
        return done;
    }

  private:
    int Uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }

    std::optional<JournalCommand> Draw() {
        const int reloads = shape_.ReloadsPerThousand;
        const int roll = Uniform(0, 999);
        if (roll < reloads)
            return JournalCommand{.Verb = roll % 2 == 0 ? JournalVerb::Retry : JournalVerb::Auto};
        switch (Uniform(0, 99) / 5) {
            case 0:
            case 1:
            case 2:
            case 3:
                return Drop();
            case 4:
                return BandDrop();
            case 5:
                return Left();
            case 6:
                return SetAsidePart(Uniform(0, 1) == 0 ? JournalVerb::Right : JournalVerb::Up);
            case 7:
                return SmallBoxPart();
            case 8:
                return Sheets();
            case 9:
                return JournalCommand{.Verb = JournalVerb::Undo};
            case 10:
                return JournalCommand{.Verb = JournalVerb::Redo};
            case 11:
            case 12:
                return JournalCommand{.Verb = JournalVerb::Process,
                                      .Value = Uniform(1, session_.App().KouteiList.Count)};
            case 13:
            case 14:
                return JournalCommand{
                    .Verb = JournalVerb::Pallet,
                    .Value = Uniform(1, std::max(1, session_.App().Settings.PalletCount))};
            case 15:
            case 16:
                return JournalCommand{.Verb = JournalVerb::View,
                                      .View = static_cast<PalletView>(Uniform(0, 3))};
            case 17:
                return JournalCommand{.Verb = JournalVerb::Hit,
                                      .Hit = Uniform(0, 1) == 0 ? HitBy::Block : HitBy::Single};
            case 18:
                return JournalCommand{
                    .Verb = Uniform(0, 1) == 0 ? JournalVerb::ThreeD : JournalVerb::Grid,
                    .Value = Uniform(0, 1)};
            default:
                return JournalCommand{
                    .Verb = Uniform(0, 1) == 0 ? JournalVerb::Direct : JournalVerb::BlockDraw,
                    .Value = Uniform(0, 1)};
        }
    }

    // The stacks drawn in the area laid out as the drops' lines name it, with their places.
    std::vector<std::pair<int32_t, IntRect>> StacksOnView() {
        PalletDrawing& drawing = area_.Drawing();
        drawing.SetArea({0, 0, shape_.Width, shape_.Height});
        scratch_.Clear();
        drawing.Refresh(scratch_);
        std::vector<std::pair<int32_t, IntRect>> shown;
        int32_t place = 0;
        for (const HaichiInfo& h : session_.App().HaichiList) {
            if (const std::optional<IntRect> r = drawing.ScreenRect(h))
                shown.emplace_back(place, *r);
            ++place;
        }
        return shown;
    }
    std::optional<std::pair<int32_t, IntRect>> SomeStackOnView() {
        const auto shown = StacksOnView();
        if (shown.empty())
            return std::nullopt;
        return shown[static_cast<size_t>(Uniform(0, static_cast<int>(shown.size()) - 1))];
    }
    IntRect Moved(const IntRect& r, int32_t dx, int32_t dy) const {
        return {r.Left + dx, r.Top + dy, r.Right + dx, r.Bottom + dy};
    }

    std::optional<JournalCommand> Drop() {
        const auto stack = SomeStackOnView();
        if (!stack)
            return std::nullopt;
        return JournalCommand{.Verb = JournalVerb::Drop,
                              .ClientWidth = shape_.Width,
                              .ClientHeight = shape_.Height,
                              .Drop = Moved(stack->second, Uniform(-150, 150), Uniform(-150, 150)),
                              .Stacks = {stack->first}};
    }
    std::optional<JournalCommand> BandDrop() {
        const auto shown = StacksOnView();
        if (shown.empty())
            return std::nullopt;
        JournalCommand c{.Verb = JournalVerb::BandDrop,
                         .ClientWidth = shape_.Width,
                         .ClientHeight = shape_.Height,
                         .ShiftX = Uniform(-60, 60),
                         .ShiftY = Uniform(-60, 60)};
        // A few neighbours in the list, as a rubber band takes stacks that stand together.
        const size_t first = static_cast<size_t>(Uniform(0, static_cast<int>(shown.size()) - 1));
        for (size_t i = first; i < shown.size() && i < first + 3; ++i)
            c.Band.push_back({shown[i].first, shown[i].second});
        return c;
    }
    std::optional<JournalCommand> Left() {
        const auto stack = SomeStackOnView();
        if (!stack)
            return std::nullopt;
        return JournalCommand{.Verb = JournalVerb::Left, .Stacks = {stack->first}};
    }
    std::optional<JournalCommand> Sheets() {
        const auto stack = SomeStackOnView();
        if (!stack)
            return std::nullopt;
        return JournalCommand{
            .Verb = JournalVerb::Sheets, .Value = Uniform(1, 30), .Stack = stack->first};
    }
    // A part of the process in view that the command takes from: set aside, or in the box.
    template <class Takes>
    std::optional<int32_t> SomePart(Takes takes) {
        std::vector<int32_t> seqs;
        for (const PartsInfo& p : session_.App().PartsList) {
            if (takes(p) && session_.FindPart(p.Seq, false) != nullptr)
                seqs.push_back(p.Seq);
        }
        if (seqs.empty())
            return std::nullopt;
        return seqs[static_cast<size_t>(Uniform(0, static_cast<int>(seqs.size()) - 1))];
    }
    std::optional<JournalCommand> SetAsidePart(JournalVerb verb) {
        const auto seq = SomePart([](const PartsInfo& p) { return InTorioki(p); });
        if (!seq)
            return std::nullopt;
        return JournalCommand{.Verb = verb, .Value = *seq};
    }
    std::optional<JournalCommand> SmallBoxPart() {
        const int32_t box = session_.Shown().Box();
        const auto seq = SomePart([box](const PartsInfo& p) { return InSmallBox(p, box); });
        if (!seq)
            return std::nullopt;
        return JournalCommand{.Verb = JournalVerb::Down, .Value = *seq};
    }

    // The command carried out as its replay does, by one replay that keeps the area's size
    // from line to line; false when it names what is not there.
    bool CarryOut(const JournalCommand& command) {
        ParsedJournalLine line;
        line.Kind = ParsedJournalLine::Kind::Command;
        line.Command = command;
        JournalFile one;
        one.Lines.emplace_back(3, line);
        return replay_.Run(one).Ok();
    }

    JobSession& session_;
    HeadlessDrawing& area_;
    OperatorRelay& relay_;
    JournalShape shape_;
    std::mt19937 rng_;
    DisplayList scratch_;
    QuietOperator answers_;
    JournalReplay replay_{session_, area_.Drawing(), area_.Editing(), relay_, answers_};
};

}  // namespace

HeadlessJob::HeadlessJob(const Installation& inst)
    : session_(Services{relay_, host_, messages_}, inst.CommandLine, shown_) {
    host_.Folder = inst.Root;
    started_ = session_.StartUp() && session_.Init();
    area_ = std::make_unique<HeadlessDrawing>(session_);
}

std::vector<JournalCommand> RandomJournal(JobSession& session, HeadlessDrawing& area,
                                          OperatorRelay& relay, const JournalShape& shape) {
    // As the window's journal starts: with the per-user values the commands act on.
    class Recorder : public CommandJournal {
      public:
        void Write(const JournalCommand& command) override { Commands.push_back(command); }
        std::vector<JournalCommand> Commands;
    } settings;
    CommandJournal* before = session.JournalTarget();
    session.JournalIn(&settings);
    session.JournalSettings();
    session.JournalIn(before);
    std::vector<JournalCommand> commands = std::move(settings.Commands);
    for (JournalCommand& c : Generator(session, area, relay, shape).Run())
        commands.push_back(std::move(c));
    return commands;
}

std::string JournalTextOf(const std::string& jobHex, const std::vector<JournalCommand>& commands) {
    std::string text = JournalHeader(jobHex);
    for (const JournalCommand& c : commands)
        text += JournalLine("2026-11-26T10:00:00.000", c);
    return text;
}

}  // namespace kesto
