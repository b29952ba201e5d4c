// An operator who gives the window as a process random commands through real input events:
// views, toggles, drags and drops, stacks set aside and put back, sheet counts, Retry and Auto
// confirmed, undo and redo. Each command is drawn with a seeded die from what the window shows,
// so that a seed repeats a session command for command on the same job and screen. A command is
// a few inputs; after each the window is left to answer and come to rest, and a dialog a
// command leaves open is answered with Return.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/RandomOperator.h"
#include "common/WindowProcess.h"
#include "common/XDisplay.h"
#include "view/Colours.h"
#include "view/Controls.h"
#include "view/MaiPicture.h"

namespace kesto::test {

// One input of a command: the pointer is brought to Point (none: left where it is) and the
// window left at rest, then Input runs. Both are worked out when the input is given, from what
// the window shows then.
struct CommandStep {
    std::function<std::optional<std::pair<int, int>>()> Point;
    std::function<void()> Input;
    bool ChangesScreen = true;  // false: the window may well leave the screen as it was
};

struct WindowCommand {
    std::string Name;
    std::vector<CommandStep> Steps;
};

class WindowCommands {
  public:
    WindowCommands(uint32_t seed, XServer& x, ChildProcess& process, Operator& op, Window window)
        : dice_(seed), x_(x), process_(process), op_(op), window_(window) {}

    // The next command, drawn from those that what the window shows allows.
    WindowCommand Next() {
        std::optional<WindowCommand> command;
        const std::vector<WeightedStep> kinds = {
            {2, [&] { command = View(); }},
            {1, [&] { command = Toggle("3D", k3DToggle); }},
            {1, [&] { command = Toggle("Grid", kGridToggle); }},
            {1, [&] { command = Toggle("Block drawing", kBlockDrawToggle); }},
            {1, [&] { command = Toggle("Direct", kNestToggle); }},
            {1, [&] { command = Hit(); }},
            {6, [&] { command = DragAndDrop(); }},
            {4, [&] { command = SetAside(); }},
            {4, [&] { command = PutBack(); }},
            {2, [&] { command = SheetCount(); }},
            {1, [&] { command = Confirmed("Retry", kRetryButton); }},
            {1, [&] { command = Confirmed("Auto", kAutoButton); }},
            {2, [&] { command = WithKey("Undo", XK_z); }},
            {1, [&] { command = WithKey("Redo", XK_y); }},
            {1, [&] { command = Process(dice_.Uniform(0, kProcessLines - 1)); }},
        };
        while (!command)
            dice_.RunOneOf(kinds);
        return *command;
    }

    // Every input, each answered, then Return to each dialog the command left open. false when
    // the process ended on the way.
    bool Give(const WindowCommand& command) {
        for (const CommandStep& step : command.Steps) {
            if (!GiveStep(step, true))
                return false;
        }
        for (int turn = 0; turn < kDialogTurns && process_.Running(); ++turn) {
            const std::vector<Window> dialogs = op_.Dialogs();
            if (dialogs.empty())
                break;
            const std::vector<uint32_t> before = x_.GrabScreen();
            x_.Key(dialogs.back(), XK_Return);
            AnswerAndRest(before, true);
        }
        return process_.Running();
    }

    // The inputs up to `last`, each answered but the last, which is only sent.
    void GiveUpTo(const WindowCommand& command, size_t last) {
        for (size_t i = 0; i <= last && i < command.Steps.size(); ++i) {
            if (!GiveStep(command.Steps[i], i < last))
                return;
        }
    }

    // The set-aside list shows a part: its first line holds more than the list's background.
    bool SetAsideListShowsAPart() const {
        const ScreenRect list = op_.Rect(kToriokiList);
        const std::vector<uint32_t> row = x_.Grab(
            {list.X + kFirstLineTop, list.Y + kFirstLineTop, list.Width / 2, kFirstLineBand});
        return std::any_of(row.begin(), row.end(), [&](uint32_t p) { return p != row.front(); });
    }

    // Puts every set-aside part of the process in view back onto the pallets; Retry confirmed
    // when some will not go back.
    void PutEverythingBack() {
        for (int round = 0; round < 2 && SetAsideListShowsAPart(); ++round) {
            for (int part = 0; part < kPutBackMost && SetAsideListShowsAPart(); ++part)
                Give(*PutBack());
            if (SetAsideListShowsAPart())
                Give(Confirmed("Retry", kRetryButton));
        }
    }

    // Ends the job with OK. The set-aside list shows the parts of the process in view only,
    // and OK is refused while any part is set aside: when it is, the parts are put back in
    // each process the commands reach, and OK pressed again. The process then ends, once it
    // has asked what it asks, answered with Return (ExpectEndedWithOk).
    void PressOkWithNothingSetAside() {
        PutEverythingBack();
        if (!Give({"OK", {ClickOn(kOk, false)}}))
            return;
        for (int line = 0; line < kProcessLines; ++line) {
            Give(Process(line));
            PutEverythingBack();
        }
        Give({"OK", {ClickOn(kOk, false)}});
    }

    // Waits until the window is at rest: its screen the same over a while in which the process
    // waited for input all along (a hang guard of kAnswerMs).
    bool Rest() const {
        std::vector<uint32_t> last = x_.GrabScreen();
        return WaitUntil(
            kAnswerMs,
            [&] {
                if (!process_.Running())
                    return true;
                const char before = ProcessState(process_.Pid());
                SleepMs(kRestMs);
                std::vector<uint32_t> now = x_.GrabScreen();
                const bool still =
                    now == last && before == 'S' && ProcessState(process_.Pid()) == 'S';
                last = std::move(now);
                return still;
            },
            0);
    }

  private:
    static constexpr int kRestMs = 100;
    static constexpr int kChangeMs = 3000;  // how long an input that changes the screen may take
    static constexpr int kQuietMs = 300;    // how long one that may not is given to
    static constexpr int kDialogTurns = 4;
    static constexpr int kPutBackMost = 12;
    // A list's first line, from the list's top, whatever the font: clicked there, and looked
    // at for text over the band from kFirstLineTop.
    static constexpr int kFirstLineY = 8;
    static constexpr int kFirstLineTop = 3;
    static constexpr int kFirstLineBand = 10;
    // The schedule lines the commands choose: the processes whose parts they set aside.
    static constexpr int kProcessLines = 3;
    static constexpr int kStackChoices = 6;

    bool GiveStep(const CommandStep& step, bool answered) {
        if (!process_.Running())
            return false;
        if (const auto point = step.Point()) {
            x_.MoveTo(point->first, point->second);
            Rest();
        }
        const std::vector<uint32_t> before = x_.GrabScreen();
        step.Input();
        if (answered)
            AnswerAndRest(before, step.ChangesScreen);
        return process_.Running();
    }

    void AnswerAndRest(const std::vector<uint32_t>& before, bool changes) const {
        WaitUntil(
            changes ? kChangeMs : kQuietMs,
            [&] { return !process_.Running() || x_.GrabScreen() != before; }, 10);
        Rest();
    }

    static std::function<std::optional<std::pair<int, int>>()> At(std::pair<int, int> point) {
        return [point] { return std::optional(point); };
    }
    std::function<std::optional<std::pair<int, int>>()> AtControl(ControlId id) const {
        return At(op_.At(id));
    }
    static std::optional<std::pair<int, int>> Nowhere() { return std::nullopt; }

    CommandStep ClickOn(std::pair<int, int> point, bool changes = true) const {
        return {At(point), [this, point] { x_.Click(point.first, point.second); }, changes};
    }
    CommandStep ClickOn(ControlId id, bool changes = true) const {
        return ClickOn(op_.At(id), changes);
    }
    // A click at a place of the dialog that is open, worked out from its client rectangle.
    CommandStep ClickInDialog(std::function<IntRect(const MaiLayout&)> place, bool changes) const {
        auto point = [this, place]() -> std::optional<std::pair<int, int>> {
            const std::vector<Window> dialogs = op_.Dialogs();
            if (dialogs.empty())
                return std::nullopt;
            const ScreenRect r = x_.Geometry(dialogs.back());
            const IntRect c = place(LayOutMaiDlg(IntRect{0, 0, r.Width, r.Height}, 0));
            return std::make_pair(r.X + (c.Left + c.Right) / 2, r.Y + (c.Top + c.Bottom) / 2);
        };
        return {point,
                [this, point] {
                    if (const auto p = point())
                        x_.Click(p->first, p->second);
                },
                changes};
    }
    CommandStep ReturnInDialog() const {
        return {Nowhere,
                [this] {
                    const std::vector<Window> dialogs = op_.Dialogs();
                    if (!dialogs.empty())
                        x_.Key(dialogs.back(), XK_Return);
                },
                true};
    }

    std::optional<std::pair<int, int>> AnyStack() {
        return op_.StackPoint(colour::kPartNormal, dice_.Uniform(0, kStackChoices - 1));
    }

    WindowCommand View() {
        const ControlId views[] = {kFlatButton, kDanmenButton, kTwoPalletButton, kFourPalletButton};
        const char* names[] = {"view FLAT", "view DANMEN", "view 2PALLET", "view 4PALLET"};
        int next = dice_.Uniform(0, 2);
        next += next >= view_ ? 1 : 0;
        view_ = next;
        return WindowCommand{names[next], {ClickOn(views[next])}};
    }

    WindowCommand Toggle(const std::string& name, ControlId id) const {
        return WindowCommand{name, {ClickOn(id)}};
    }

    WindowCommand Hit() {
        single_ = !single_;
        return WindowCommand{single_ ? "hit single" : "hit block",
                             {ClickOn(single_ ? kHitSingle : kHitByBlock, false)}};
    }

    std::optional<WindowCommand> DragAndDrop() {
        const auto from = AnyStack();
        if (!from)
            return std::nullopt;
        const int stepX = 8 * dice_.Uniform(-3, 3);
        const int stepY = stepX == 0 ? 5 * (dice_.Chance(50) ? 1 : -1) : 5 * dice_.Uniform(-3, 3);
        const int moves = dice_.Uniform(3, 8);
        // The window merges the moves it finds queued together, and a drop needs two moves
        // after the press: the first two are given one by one.
        auto moveTo = [this, from = *from, stepX, stepY](int first, int last) {
            return [this, from, stepX, stepY, first, last] {
                for (int i = first; i <= last; ++i)
                    x_.MoveTo(from.first + stepX * i, from.second + stepY * i);
            };
        };
        CommandStep press{At(*from), [this] { x_.Button(true); }, false};
        CommandStep drop{Nowhere, [this] { x_.Button(false); }, true};
        return WindowCommand{"drag and drop",
                             {press,
                              {Nowhere, moveTo(1, 1), false},
                              {Nowhere, moveTo(2, 2), false},
                              {Nowhere, moveTo(3, moves), false},
                              drop}};
    }

    std::optional<WindowCommand> SetAside() {
        const auto stack = AnyStack();
        if (!stack)
            return std::nullopt;
        return WindowCommand{"pick and set aside", {ClickOn(*stack, false), ClickOn(kLeftButton)}};
    }

    std::optional<WindowCommand> PutBack() const {
        if (!SetAsideListShowsAPart())
            return std::nullopt;
        const ScreenRect list = op_.Rect(kToriokiList);
        const std::pair<int, int> firstLine = {list.X + list.Width / 3, list.Y + kFirstLineY};
        return WindowCommand{"put back", {ClickOn(firstLine, false), ClickOn(kRightButton)}};
    }

    std::optional<WindowCommand> SheetCount() {
        const auto stack = AnyStack();
        if (!stack)
            return std::nullopt;
        const size_t proposal = static_cast<size_t>(dice_.Uniform(0, 4));
        return WindowCommand{
            "sheet count",
            {ClickOn(*stack, false), ClickOn(kMaiChgButton),
             ClickInDialog([proposal](const MaiLayout& l) { return l.Buttons[proposal]; }, false),
             ClickInDialog([](const MaiLayout& l) { return l.Ok; }, true)}};
    }

    WindowCommand Confirmed(const std::string& name, ControlId id) const {
        return WindowCommand{name + " confirmed", {ClickOn(id), ReturnInDialog()}};
    }

    WindowCommand WithKey(const std::string& name, KeySym key) const {
        return WindowCommand{
            name, {{Nowhere, [this, key] { x_.Key(window_, key, XK_Control_L); }, false}}};
    }

    // The first line of the schedule clicked, then Down pressed `line` times: the window's
    // lines are as high as its font makes them.
    WindowCommand Process(int line) const {
        const ScreenRect list = op_.Rect(kScheduleList);
        WindowCommand command{"process line " + std::to_string(line + 1),
                              {ClickOn({list.X + list.Width / 3, list.Y + kFirstLineY}, false)}};
        for (int i = 0; i < line; ++i)
            command.Steps.push_back({Nowhere, [this] { x_.Key(window_, XK_Down); }, false});
        return command;
    }

    RandomOperator dice_;
    XServer& x_;
    ChildProcess& process_;
    Operator& op_;
    Window window_;
    int view_ = 0;  // the view button last pressed, FLAT at the start
    bool single_ = false;
};

}  // namespace kesto::test
