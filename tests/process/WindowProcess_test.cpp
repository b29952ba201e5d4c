// The window as its operators run it: `kesto` started as a process on the sample installation
// and on the largest generated job, on Qt's offscreen platform and on an X server of each
// ordinary screen size, with and without a window manager. After start-up and after an
// operator's session of real input events (a zoomed drag and drop among them) it must go quiet
// (CPU and memory at rest), cover the screen, answer every command within half a second, and
// end with OK and its files.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/WindowProcess.h"
#include "common/XDisplay.h"
#include "view/Colours.h"
#include "view/MainLayout.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;
using test::Job;
using test::Screen;

constexpr int kIdleMs = 5000;
constexpr double kIdleCpuShare = 0.02;  // of one core
constexpr long kIdleGrowthKb = 1024;
constexpr double kCoveredShare = 0.90;

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

void OperatorSession(test::Operator& op, test::XServer& x) {
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
    // Three notches closer over the stack, a drag and drop there, three notches back out.
    op.ExpectAnswer("zoom", *stack, [&] { x.CtrlWheel(stack->first, stack->second, 3, true); });
    const auto zoomed = op.StackPoint(colour::kPartNormal);
    ASSERT_TRUE(zoomed.has_value()) << "no stack in the zoomed drawing";
    op.ExpectAnswer("zoomed drag", *zoomed, [&] {
        x.Button(true);
        for (int i = 1; i <= 6; ++i)
            x.MoveTo(zoomed->first - 10 * i, zoomed->second + 6 * i);
    });
    op.ExpectAnswer("zoomed drop", {zoomed->first - 60, zoomed->second + 36},
                    [&] { x.Button(false); });
    op.ExpectAnswer("whole pallet", *zoomed,
                    [&] { x.CtrlWheel(zoomed->first, zoomed->second, 3, false); });
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

class WindowProcess : public ::testing::TestWithParam<Setting> {};

TEST_P(WindowProcess, GoesQuietCoversTheScreenAnswersEveryCommandAndEndsWithOk) {
    const Setting setting = GetParam();
    test::TempFolder folder;
    test::WindowScreen screen(setting.Kind, setting.Width, setting.Height);
    ASSERT_TRUE(screen.Ready()) << "no X server or window manager";
    test::WindowRun run(screen, test::WriteJob(setting.Which, folder.Path() / "install"),
                        folder.Path());
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

    test::Operator op(run.X(), run.Process(), window);
    OperatorSession(op, run.X());
    ASSERT_TRUE(run.Settle());
    ExpectQuietAtRest(run.Process(), "after the operator's session");
    test::EndWithOk(op, run, before);
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
