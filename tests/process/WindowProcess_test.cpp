// The window as its operators run it: `kesto` started as a process on the sample installation
// and on the largest generated job, on Qt's offscreen platform and on an X server of each
// ordinary screen size, with and without a window manager. After start-up and after an
// operator's session of real input events it must go quiet (CPU and memory at rest), cover
// the screen, answer every command within half a second, and end with OK and its files.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "JobGenerator.h"
#include "common/TestFiles.h"
#include "common/XDisplay.h"
#include "view/Colours.h"
#include "view/MainLayout.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

constexpr int kIdleMs = 5000;
constexpr double kIdleCpuShare = 0.02;  // of one core
constexpr long kIdleGrowthKb = 1024;
constexpr double kCoveredShare = 0.90;
// Hang guards: only a window that does not answer at all exceeds them, however busy the machine
// or slow the build (AddressSanitizer). How fast it answers and starts is for the benchmarks.
constexpr int kAnswerMs = 20000;
constexpr int kStartMs = 300000;

enum class Job { Sample, Largest };
enum class Screen { Offscreen, Bare, Managed };

struct Setting {
    Job Which;
    Screen Kind;
    int Width;
    int Height;
};

std::string Name(const Setting& s) {
    std::string name = s.Which == Job::Sample ? "Sample" : "Largest";
    if (s.Kind == Screen::Offscreen)
        return name + "Offscreen";
    name += s.Kind == Screen::Bare ? "NoWindowManager" : "Openbox";
    return name + std::to_string(s.Width) + "x" + std::to_string(s.Height);
}

// The job's folder (the system folder), its command-line tokens and its save file.
struct JobFolder {
    fs::path Root;
    std::vector<std::string> Tokens;
    fs::path SaveFile;
};

JobFolder WriteJob(Job which, const fs::path& root) {
    if (which == Job::Sample) {
        fs::copy(test::SourceDir() / "examples" / "install", root, fs::copy_options::recursive);
        return {root,
                {"pallet/pallets.txt", "0", "0", "1400", "10", "1"},
                root / "out" / "kesto_haichi.csv"};
    }
    JobShape shape = LargestJobShape();
    shape.Parts = 999;
    shape.Seed = 1;
    const Installation inst = WriteInstallation(root.string(), GenerateJob(shape), {});
    std::vector<std::string> tokens;
    std::istringstream words(inst.CommandLine);
    for (std::string word; words >> word;)
        tokens.push_back(word);
    tokens.erase(tokens.begin());  // the program's own path
    return {root, tokens, root / "out" / "save.txt"};
}

// `kesto` on one job and one screen, and what the test sees of it.
class WindowRun {
  public:
    WindowRun(const Setting& setting, const fs::path& folder)
        : setting_(setting), job_(WriteJob(setting.Which, folder / "install")) {
        const fs::path runtime = folder / "runtime";
        fs::create_directories(runtime);
        fs::permissions(runtime, fs::perms::owner_all, fs::perm_options::replace);
        std::vector<std::string> env = {
            "ORVOSystemRoot=" + job_.Root.string(),
            "XDG_CONFIG_HOME=" + (folder / "config").string(),
            "XDG_STATE_HOME=" + (folder / "state").string(),
            "XDG_RUNTIME_DIR=" + runtime.string(),
        };
        if (setting.Kind == Screen::Offscreen) {
            env.push_back("QT_QPA_PLATFORM=offscreen");
        } else {
            x_ = std::make_unique<test::XServer>(setting.Width, setting.Height);
            if (!x_->Ready())
                return;
            env.push_back("DISPLAY=" + x_->Name());
            env.push_back("QT_QPA_PLATFORM=xcb");
            if (setting.Kind == Screen::Managed) {
                wm_ = test::ChildProcess({"openbox", "--sm-disable"}, {"DISPLAY=" + x_->Name()});
                if (!test::WaitUntil(10000, [&] { return x_->HasWindowManager(); }))
                    return;
            }
        }
        std::vector<std::string> argv = {(test::BinaryDir() / "kesto").string()};
        argv.insert(argv.end(), job_.Tokens.begin(), job_.Tokens.end());
        log_ = (folder / "kesto.log").string();
        kesto_ = test::ChildProcess(argv, env, job_.Root.string(), log_);
        started_ = true;
    }

    bool Started() const { return started_; }
    test::XServer& X() { return *x_; }
    test::ChildProcess& Process() { return kesto_; }
    const JobFolder& Folder() const { return job_; }
    std::string Log() const { return test::ReadFile(log_); }

    // Waits for the main window (on a display) and for the process to stop working: its CPU
    // time unchanged over a second.
    bool Settle() {
        if (x_ && !test::WaitUntil(
                      kStartMs, [&] { return MainWindow().has_value(); }, 50))
            return false;
        double last = -1;
        return test::WaitUntil(
            kStartMs,
            [&] {
                const double now = test::ReadProcessUse(kesto_.Pid()).CpuSeconds;
                const bool still = now == last;
                last = now;
                return still;
            },
            1000);
    }

    std::optional<Window> MainWindow() const { return x_->MainWindowOf(kesto_.Pid()); }

  private:
    Setting setting_;
    JobFolder job_;
    std::unique_ptr<test::XServer> x_;
    test::ChildProcess wm_;
    test::ChildProcess kesto_;
    std::string log_;
    bool started_ = false;
};

// Five seconds untouched: CPU time and resident memory of the process.
void ExpectQuietAtRest(test::ChildProcess& process, const std::string& when) {
    const test::ProcessUse before = test::ReadProcessUse(process.Pid());
    test::SleepMs(kIdleMs);
    const test::ProcessUse after = test::ReadProcessUse(process.Pid());
    EXPECT_LE(after.CpuSeconds - before.CpuSeconds, kIdleCpuShare * kIdleMs / 1000.0)
        << when << ": CPU time at rest";
    EXPECT_LE(after.ResidentKb - before.ResidentKb, kIdleGrowthKb)
        << when << ": resident memory from " << before.ResidentKb << " kB";
}

// Drives the window through real input events at the places its layout gives the controls.
class Operator {
  public:
    Operator(test::XServer& x, test::ChildProcess& process, Window window)
        : x_(x),
          process_(process),
          window_(window),
          client_(x.Geometry(window)),
          layout_(ComputeMainLayout(client_.Width, client_.Height, 0)) {}

    // The centre of a control on the screen.
    std::pair<int, int> At(ControlId id) const {
        const ControlRect& r = layout_.Controls.at(id);
        return {client_.X + r.X + r.Width / 2, client_.Y + r.Y + r.Height / 2};
    }

    // The drawing area on the screen, below the pallet combo box whatever its height.
    test::ScreenRect Area() const {
        const ControlRect& combo = layout_.Controls.at(kPalletCombo);
        const int top = combo.Y + combo.Height + 40;
        return {client_.X + layout_.AreaPlacement.Left, client_.Y + top,
                layout_.AreaPlacement.Right - layout_.AreaPlacement.Left,
                layout_.AreaPlacement.Bottom - top};
    }

    // The middle of a 9 x 9 patch of a stack's colour in the drawing area, if any.
    std::optional<std::pair<int, int>> StackPoint(Rgb colour) const {
        const test::ScreenRect area = Area();
        const std::vector<uint32_t> pixels = x_.Grab(area);
        const uint32_t want = (uint32_t{colour.R} << 16) | (uint32_t{colour.G} << 8) | colour.B;
        auto is = [&](int x, int y) { return pixels[size_t(y) * area.Width + x] == want; };
        for (int y = 4; y + 4 < area.Height; y += 3) {
            for (int x = 4; x + 4 < area.Width; x += 3) {
                bool patch = true;
                for (int dy = -4; dy <= 4 && patch; dy += 2) {
                    for (int dx = -4; dx <= 4 && patch; dx += 2)
                        patch = is(x + dx, y + dy);
                }
                if (patch)
                    return std::make_pair(area.X + x, area.Y + y);
            }
        }
        return std::nullopt;
    }

    // Runs an action and expects the screen to change (kAnswerMs: a hang guard). The pointer is
    // brought to `point` and the screen left to settle first, so that a button's hover look
    // is not taken for the command's answer.
    void ExpectAnswer(const std::string& step, std::pair<int, int> point,
                      const std::function<void()>& action) {
        x_.MoveTo(point.first, point.second);
        test::SleepMs(150);
        const std::vector<uint32_t> before = x_.GrabScreen();
        action();
        const bool changed = test::WaitUntil(
            kAnswerMs, [&] { return x_.GrabScreen() != before; }, 10);
        EXPECT_TRUE(changed) << step << ": the window did not change within " << kAnswerMs << " ms";
        test::SleepMs(150);
    }

    void Click(const std::string& step, ControlId id) {
        const auto p = At(id);
        ExpectAnswer(step, p, [&] { x_.Click(p.first, p.second); });
    }

    // The process's windows other than the main one: its dialogs.
    std::vector<Window> Dialogs() const {
        std::vector<Window> dialogs = x_.WindowsOf(process_.Pid());
        dialogs.erase(std::remove(dialogs.begin(), dialogs.end(), window_), dialogs.end());
        return dialogs;
    }

    // A key in the dialog that is open, which must then close (kAnswerMs: a hang guard).
    void AnswerDialog(const std::string& step, KeySym key) {
        const std::vector<Window> dialogs = Dialogs();
        ASSERT_FALSE(dialogs.empty()) << step << ": no dialog open";
        const test::ScreenRect r = x_.Geometry(dialogs.back());
        ExpectAnswer(step, {r.X + r.Width / 2, r.Y + 2}, [&] { x_.Key(dialogs.back(), key); });
        EXPECT_TRUE(test::WaitUntil(kAnswerMs, [&] { return Dialogs().size() < dialogs.size(); }))
            << step << ": the dialog stayed open";
    }

  private:
    test::XServer& x_;
    test::ChildProcess& process_;
    Window window_;
    test::ScreenRect client_;
    MainLayout layout_;
};

void OperatorSession(Operator& op, test::XServer& x) {
    op.Click("4 pallets", kFourPalletButton);
    op.Click("3D on", k3DToggle);
    op.Click("Grid", kGridToggle);
    op.Click("3D off", k3DToggle);
    op.Click("Plan", kFlatButton);
    const auto stack = op.StackPoint(colour::kPartNormal);
    ASSERT_TRUE(stack.has_value()) << "no stack in the drawing area";
    op.ExpectAnswer("pick", *stack, [&] { x.Click(stack->first, stack->second); });
    op.ExpectAnswer("drag", *stack, [&] {
        x.Button(true);
        for (int i = 1; i <= 6; ++i)
            x.MoveTo(stack->first + 8 * i, stack->second + 5 * i);
    });
    op.ExpectAnswer("drop", {stack->first + 48, stack->second + 30}, [&] { x.Button(false); });
    op.Click("Info shown", kInfoButton);
    op.Click("Info hidden", kInfoButton);
    const auto again = op.StackPoint(colour::kPartNormal);
    ASSERT_TRUE(again.has_value()) << "no stack left to pick";
    op.ExpectAnswer("pick again", *again, [&] { x.Click(again->first, again->second); });
    op.Click("sheet-count dialog", kMaiChgButton);
    op.AnswerDialog("sheet-count dialog closed", XK_Escape);
    op.Click("Retry asks", kRetryButton);
    op.AnswerDialog("Retry confirmed", XK_Return);
}

// OK, answering with Return whatever it asks (the largest job has parts left short), ends the
// process with 0 and writes the save file.
void EndWithOk(Operator& op, WindowRun& run, fs::file_time_type before) {
    const auto ok = op.At(kOk);
    run.X().Click(ok.first, ok.second);
    std::optional<int> code;
    for (int turn = 0; turn < 40 && !code; ++turn) {
        code = run.Process().WaitExit(500);
        if (!code && !op.Dialogs().empty())
            run.X().Key(op.Dialogs().back(), XK_Return);
    }
    ASSERT_TRUE(code.has_value()) << "OK did not end the window";
    EXPECT_EQ(*code, 0) << run.Log();
    ASSERT_TRUE(fs::exists(run.Folder().SaveFile));
    EXPECT_GT(fs::last_write_time(run.Folder().SaveFile), before);
}

class WindowProcess : public ::testing::TestWithParam<Setting> {};

TEST_P(WindowProcess, GoesQuietCoversTheScreenAnswersEveryCommandAndEndsWithOk) {
    const Setting setting = GetParam();
    test::TempFolder folder;
    WindowRun run(setting, folder.Path());
    ASSERT_TRUE(run.Started()) << "no X server or window manager";
    const fs::file_time_type before = fs::file_time_type::clock::now();
    ASSERT_TRUE(run.Settle()) << "the window never settled\n" << run.Log();
    ExpectQuietAtRest(run.Process(), "after start-up");
    if (setting.Kind == Screen::Offscreen)
        return;

    const Window window = *run.MainWindow();
    const test::ScreenRect r = run.X().Geometry(window);
    const double covered = static_cast<double>(r.Width) * r.Height /
                           (static_cast<double>(setting.Width) * setting.Height);
    EXPECT_GE(covered, kCoveredShare) << r.Width << "x" << r.Height;

    Operator op(run.X(), run.Process(), window);
    OperatorSession(op, run.X());
    ASSERT_TRUE(run.Settle());
    ExpectQuietAtRest(run.Process(), "after the operator's session");
    EndWithOk(op, run, before);
}

std::vector<Setting> Settings() {
    const std::pair<int, int> screens[] = {
        {1024, 768}, {1366, 768}, {1600, 900}, {1920, 1080}, {2560, 1440}};
    std::vector<Setting> settings;
    for (const Job job : {Job::Sample, Job::Largest}) {
        settings.push_back({job, Screen::Offscreen, 0, 0});
        for (const Screen kind : {Screen::Bare, Screen::Managed}) {
            for (const auto& [w, h] : screens)
                settings.push_back({job, kind, w, h});
        }
    }
    return settings;
}

INSTANTIATE_TEST_SUITE_P(EveryScreen, WindowProcess, ::testing::ValuesIn(Settings()),
                         [](const auto& param) { return Name(param.param); });

}  // namespace
}  // namespace kesto
