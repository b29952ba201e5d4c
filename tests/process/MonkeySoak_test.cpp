// The window through a long shift: the random operator of the window tests run as a process on
// an X server for KESTO_SOAK_SECONDS (30 in the suite, 600 in make soak), its resident memory
// read every second. Once the first minute (or the first third of a shorter run) is over, the
// memory may grow by 2 MB in all, no more.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/XDisplay.h"
#include "support/Sanitizers.h"

namespace kesto {
namespace {

constexpr int kDefaultSeconds = 30;
constexpr int kWarmUpSeconds = 60;
constexpr long kGrowthKb = 2048;

int SoakSeconds() {
    const char* value = std::getenv("KESTO_SOAK_SECONDS");
    const int seconds = value != nullptr ? std::atoi(value) : 0;
    return seconds > 0 ? seconds : kDefaultSeconds;
}

TEST(MonkeySoak, ResidentMemoryStaysFlatAfterTheWarmUp) {
    const int seconds = SoakSeconds();
    const int warmUp = std::min(kWarmUpSeconds, seconds / 3);
    test::TempFolder folder;
    test::XServer x(1920, 1080);
    ASSERT_TRUE(x.Ready()) << "no X server";
    const std::string log = (folder.Path() / "monkey.log").string();
    test::ChildProcess monkey(
        {(test::BinaryDir() / "test_ui").string(), "--gtest_filter=CKestoDlgMonkey.*"},
        {"DISPLAY=" + x.Name(), "QT_QPA_PLATFORM=xcb",
         "KESTO_SOAK_SECONDS=" + std::to_string(seconds),
         "XDG_RUNTIME_DIR=" + folder.Path().string()},
        folder.Path().string(), log);
    std::vector<long> samples;  // kB, one a second
    while (monkey.Running() && samples.size() < static_cast<size_t>(seconds)) {
        test::SleepMs(1000);
        const long rss = test::ReadProcessUse(monkey.Pid()).ResidentKb;
        if (rss > 0)
            samples.push_back(rss);
    }
    const std::optional<int> code = monkey.WaitExit(120000);
    ASSERT_TRUE(code.has_value()) << "the monkey did not end";
    const std::string output = test::ReadFile(log);
    EXPECT_EQ(*code, 0) << output;
    const size_t steps = output.find("monkey: ");
    ASSERT_NE(steps, std::string::npos) << output;
    std::printf("%s", output.substr(steps, output.find('\n', steps) + 1 - steps).c_str());
    ASSERT_GT(samples.size(), static_cast<size_t>(warmUp)) << test::ReadFile(log);

    // The curve, every tenth second, for the record.
    std::string curve;
    for (size_t i = 0; i < samples.size(); i += 10)
        curve += std::to_string(i) + "s " + std::to_string(samples[i] / 1024) + " MB, ";
    std::printf("resident memory: %s\n", curve.c_str());
    const long atWarmUp = samples[static_cast<size_t>(warmUp)];
    const long highest = *std::max_element(samples.begin() + warmUp, samples.end());
    std::printf("after %d s: %ld kB; highest after it: %ld kB (+%ld kB)\n", warmUp, atWarmUp,
                highest, highest - atWarmUp);
    if (kAddressSanitizer) {
        // Its quarantine keeps freed memory resident by design; the run's worth here is that
        // the monkey ended cleanly under it.
        std::printf("resident memory not held flat: AddressSanitizer build\n");
        return;
    }
    EXPECT_LE(highest - atWarmUp, kGrowthKb);
}

}  // namespace
}  // namespace kesto
