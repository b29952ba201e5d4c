// The window program as its operators run it, for the tests that start it as a process: a job
// folder (the sample installation or the largest generated job), the screen it shows on (Qt's
// offscreen platform, or an Xvfb server with or without openbox), the running program, an
// operator who drives it through real input events at the places its layout gives the
// controls, and the end with OK.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "JobGenerator.h"
#include "common/TestFiles.h"
#include "common/XDisplay.h"
#include "view/Colours.h"
#include "view/MainLayout.h"

namespace kesto::test {

// Hang guards: only a window that does not answer at all exceeds them, however busy the machine
// or slow the build (AddressSanitizer). How fast it answers and starts is for the benchmarks.
// A start's two waits (the window shown, then at rest) together stay under the tests' own time
// limit (300 s), so that a start that never settles fails with the window's log instead of
// being cut off without a word.
constexpr int kAnswerMs = 20000;
constexpr int kStartMs = 120000;

enum class Job { Sample, Largest };

// The job's folder (the system folder), its command-line tokens and the files it writes: the
// result file (its side file is "<result>_tmp") and the save file.
struct JobFolder {
    std::filesystem::path Root;
    std::vector<std::string> Tokens;
    std::filesystem::path ResultFile;
    std::filesystem::path SaveFile;
};

// The sample installation, or the largest generated job with its first `parts` parts.
inline JobFolder WriteJob(Job which, const std::filesystem::path& root, int parts = 999) {
    namespace fs = std::filesystem;
    if (which == Job::Sample) {
        fs::copy(SourceDir() / "examples" / "install", root, fs::copy_options::recursive);
        return {root,
                {"pallet/pallets.txt", "0", "0", "1400", "10", "1"},
                root / "out" / "kesto_result.csv",
                root / "out" / "kesto_haichi.csv"};
    }
    JobShape shape = LargestJobShape();
    shape.Parts = parts;
    shape.Seed = 1;
    const Installation inst = WriteInstallation(root.string(), GenerateJob(shape), {});
    std::vector<std::string> tokens;
    std::istringstream words(inst.CommandLine);
    for (std::string word; words >> word;)
        tokens.push_back(word);
    tokens.erase(tokens.begin());  // the program's own path
    return {root, tokens, root / "out" / "result.txt", root / "out" / "save.txt"};
}

// The same job in another folder: the copy of a folder WriteJob wrote, its command line naming
// the copy's files.
inline JobFolder CopyJob(const JobFolder& job, const std::filesystem::path& root) {
    namespace fs = std::filesystem;
    fs::create_directories(root.parent_path());
    fs::copy(job.Root, root, fs::copy_options::recursive);
    auto moved = [&](const fs::path& file) { return root / file.lexically_relative(job.Root); };
    std::vector<std::string> tokens;
    for (const std::string& token : job.Tokens) {
        const bool inJob = token.starts_with(job.Root.string() + "/");
        tokens.push_back(inJob ? moved(token).string() : token);
    }
    return {root, tokens, moved(job.ResultFile), moved(job.SaveFile)};
}

// True when a program of that name is in PATH.
inline bool OnPath(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::error_code error;
        if (!folder.empty() && std::filesystem::exists(std::filesystem::path(folder) / name, error))
            return true;
    }
    return false;
}

enum class Screen { Offscreen, Bare, Managed };

// Where the window shows: Qt's offscreen platform, or an X server of one size, with openbox
// (Managed) or without a window manager (Bare). Several runs may show on it one after another.
class WindowScreen {
  public:
    WindowScreen(Screen kind, int width, int height) {
        if (kind == Screen::Offscreen) {
            ready_ = true;
            return;
        }
        x_ = std::make_unique<XServer>(width, height);
        if (!x_->Ready())
            return;
        if (kind == Screen::Managed) {
            wm_ = ChildProcess({"openbox", "--sm-disable"}, {"DISPLAY=" + x_->Name()});
            if (!WaitUntil(10000, [&] { return x_->HasWindowManager(); }))
                return;
        }
        ready_ = true;
    }

    bool Ready() const { return ready_; }
    bool Offscreen() const { return x_ == nullptr; }
    XServer& X() { return *x_; }
    // What the window's process needs in its environment to show here.
    std::vector<std::string> Environment() const {
        if (x_ == nullptr)
            return {"QT_QPA_PLATFORM=offscreen"};
        return {"DISPLAY=" + x_->Name(), "QT_QPA_PLATFORM=xcb"};
    }

  private:
    std::unique_ptr<XServer> x_;
    ChildProcess wm_;
    bool ready_ = false;
};

// Which program runs, what it is given beside the job, and where its output goes.
struct RunOptions {
    std::string Log = "kesto.log";              // in the run's folder
    std::string Program = "kesto";              // in the build folder
    std::vector<std::string> Environment = {};  // added to the run's own
};

// A window program on a job, its per-user folders (configuration, state, runtime) in `folder`:
// a second run in the same folder finds what the first left there.
class WindowRun {
  public:
    WindowRun(WindowScreen& screen, JobFolder job, const std::filesystem::path& folder,
              const RunOptions& options = {})
        : screen_(screen), job_(std::move(job)), log_((folder / options.Log).string()) {
        namespace fs = std::filesystem;
        const fs::path runtime = folder / "runtime";
        fs::create_directories(runtime);
        fs::permissions(runtime, fs::perms::owner_all, fs::perm_options::replace);
        std::vector<std::string> env = {
            "ORVOSystemRoot=" + job_.Root.string(),
            "XDG_CONFIG_HOME=" + (folder / "config").string(),
            "XDG_STATE_HOME=" + (folder / "state").string(),
            "XDG_RUNTIME_DIR=" + runtime.string(),
        };
        const std::vector<std::string> shown = screen.Environment();
        env.insert(env.end(), shown.begin(), shown.end());
        env.insert(env.end(), options.Environment.begin(), options.Environment.end());
        std::vector<std::string> argv = {(BinaryDir() / options.Program).string()};
        argv.insert(argv.end(), job_.Tokens.begin(), job_.Tokens.end());
        kesto_ = ChildProcess(argv, env, job_.Root.string(), log_);
    }

    XServer& X() { return screen_.X(); }
    ChildProcess& Process() { return kesto_; }
    const JobFolder& Folder() const { return job_; }
    std::string Log() const { return ReadFile(log_); }

    // Waits for the main window (on a display) and for the process to stop working: its CPU
    // time unchanged over a second.
    bool Settle() {
        if (!screen_.Offscreen() &&
            !WaitUntil(
                kStartMs, [&] { return MainWindow().has_value() || !kesto_.Running(); }, 50))
            return false;
        if (!kesto_.Running())
            return false;
        double last = -1;
        return WaitUntil(
            kStartMs,
            [&] {
                const double now = ReadProcessUse(kesto_.Pid()).CpuSeconds;
                const bool still = now == last;
                last = now;
                return still;
            },
            1000);
    }

    std::optional<Window> MainWindow() const { return screen_.X().MainWindowOf(kesto_.Pid()); }

  private:
    WindowScreen& screen_;
    JobFolder job_;
    ChildProcess kesto_;
    std::string log_;
};

// Drives the window through real input events at the places its layout gives the controls.
class Operator {
  public:
    Operator(XServer& x, ChildProcess& process, Window window)
        : x_(x),
          process_(process),
          window_(window),
          client_(x.Geometry(window)),
          layout_(ComputeMainLayout(client_.Width, client_.Height, 0)) {}

    // A control's rectangle on the screen.
    ScreenRect Rect(ControlId id) const {
        const ControlRect& r = layout_.Controls.at(id);
        return {client_.X + r.X, client_.Y + r.Y, r.Width, r.Height};
    }

    // The centre of a control on the screen.
    std::pair<int, int> At(ControlId id) const {
        const ScreenRect r = Rect(id);
        return {r.X + r.Width / 2, r.Y + r.Height / 2};
    }

    // The drawing area on the screen, below the pallet combo box whatever its height.
    ScreenRect Area() const {
        const ControlRect& combo = layout_.Controls.at(kPalletCombo);
        const int top = combo.Y + combo.Height + 40;
        return {client_.X + layout_.AreaPlacement.Left, client_.Y + top,
                layout_.AreaPlacement.Right - layout_.AreaPlacement.Left,
                layout_.AreaPlacement.Bottom - top};
    }

    // The middle of a 9 x 9 patch of a stack's colour in the drawing area, if any. Patches
    // farther apart than a stack's patch are told apart; `which` counts round them, top down.
    std::optional<std::pair<int, int>> StackPoint(Rgb colour, int which = 0) const {
        const ScreenRect area = Area();
        const std::vector<uint32_t> pixels = x_.Grab(area);
        const uint32_t want = (uint32_t{colour.R} << 16) | (uint32_t{colour.G} << 8) | colour.B;
        auto is = [&](int x, int y) { return pixels[size_t(y) * area.Width + x] == want; };
        std::vector<std::pair<int, int>> found;
        auto apart = [&](int x, int y) {
            return std::none_of(found.begin(), found.end(), [&](const auto& p) {
                return std::abs(p.first - x) < kPatchApart && std::abs(p.second - y) < kPatchApart;
            });
        };
        for (int y = 4; y + 4 < area.Height; y += 3) {
            for (int x = 4; x + 4 < area.Width; x += 3) {
                bool patch = apart(area.X + x, area.Y + y);
                for (int dy = -4; dy <= 4 && patch; dy += 2) {
                    for (int dx = -4; dx <= 4 && patch; dx += 2)
                        patch = is(x + dx, y + dy);
                }
                if (patch)
                    found.emplace_back(area.X + x, area.Y + y);
            }
            if (found.size() > static_cast<size_t>(which))
                return found[static_cast<size_t>(which)];
        }
        if (found.empty())
            return std::nullopt;
        return found[static_cast<size_t>(which) % found.size()];
    }

    // Runs an action and expects the screen to change (kAnswerMs: a hang guard). The pointer is
    // brought to `point` and the screen left to settle first, so that a button's hover look
    // is not taken for the command's answer.
    void ExpectAnswer(const std::string& step, std::pair<int, int> point,
                      const std::function<void()>& action) {
        x_.MoveTo(point.first, point.second);
        SleepMs(150);
        const std::vector<uint32_t> before = x_.GrabScreen();
        action();
        const bool changed = WaitUntil(
            kAnswerMs, [&] { return x_.GrabScreen() != before; }, 10);
        EXPECT_TRUE(changed) << step << ": the window did not change within " << kAnswerMs << " ms";
        SleepMs(150);
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
        const ScreenRect r = x_.Geometry(dialogs.back());
        ExpectAnswer(step, {r.X + r.Width / 2, r.Y + 2}, [&] { x_.Key(dialogs.back(), key); });
        EXPECT_TRUE(WaitUntil(kAnswerMs, [&] { return Dialogs().size() < dialogs.size(); }))
            << step << ": the dialog stayed open";
    }

  private:
    static constexpr int kPatchApart = 24;

    XServer& x_;
    ChildProcess& process_;
    Window window_;
    ScreenRect client_;
    MainLayout layout_;
};

// After OK: the process, answered with Return whatever it asks (the largest job has parts
// left short), ends with 0 and has written the save file.
inline void ExpectEndedWithOk(Operator& op, WindowRun& run,
                              std::filesystem::file_time_type before) {
    std::optional<int> code;
    for (int turn = 0; turn < 40 && !code; ++turn) {
        code = run.Process().WaitExit(500);
        if (!code && !op.Dialogs().empty())
            run.X().Key(op.Dialogs().back(), XK_Return);
    }
    ASSERT_TRUE(code.has_value()) << "OK did not end the window";
    EXPECT_EQ(*code, 0) << run.Log();
    ASSERT_TRUE(std::filesystem::exists(run.Folder().SaveFile));
    EXPECT_GT(std::filesystem::last_write_time(run.Folder().SaveFile), before);
}

// OK pressed, and the process ended as ExpectEndedWithOk says.
inline void EndWithOk(Operator& op, WindowRun& run, std::filesystem::file_time_type before) {
    const auto ok = op.At(kOk);
    run.X().Click(ok.first, ok.second);
    ExpectEndedWithOk(op, run, before);
}

}  // namespace kesto::test
