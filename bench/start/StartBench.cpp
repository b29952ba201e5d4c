// kesto-start-bench [ROUNDS]: the window's start on the largest generated job (999 parts, the
// 3D 4PALLET view) against an empty Qt dialog of the same size, each from process start to its
// first complete picture written. The two run in turn, round after round, so that both see the
// same machine; it prints both medians, and the median and middle half of the rounds' ratios.
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "JobGenerator.h"

namespace {

namespace fs = std::filesystem;

// Runs argv in dir with the extra environment and returns the wall time in seconds, or a
// negative number when the program could not run or ended otherwise than expected.
double TimeRun(const std::vector<std::string>& argv, const std::vector<std::string>& env,
               const std::string& dir, int expected) {
    timespec start{}, end{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    const pid_t pid = fork();
    if (pid == 0) {
        if (chdir(dir.c_str()) != 0 || !freopen("/dev/null", "w", stdout) ||
            !freopen("/dev/null", "w", stderr)) {
            _exit(126);
        }
        for (const std::string& e : env)
            putenv(const_cast<char*>(e.c_str()));
        std::vector<char*> args;
        for (const std::string& a : argv)
            args.push_back(const_cast<char*>(a.c_str()));
        args.push_back(nullptr);
        execv(args[0], args.data());
        _exit(127);
    }
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid)
        return -1;
    clock_gettime(CLOCK_MONOTONIC, &end);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != expected)
        return -1;
    return static_cast<double>(end.tv_sec - start.tv_sec) + (end.tv_nsec - start.tv_nsec) / 1e9;
}

// The value a fraction q of the way through the sorted values (0.5: the median).
double Quantile(std::vector<double> values, double q) {
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(q * static_cast<double>(values.size() - 1) + 0.5)];
}

double Median(const std::vector<double>& values) {
    return Quantile(values, 0.5);
}

}  // namespace

int main(int argc, char** argv) {
    const int rounds = argc > 1 ? std::max(3, std::atoi(argv[1])) : 15;
    const fs::path self = fs::canonical("/proc/self/exe").parent_path();
    const fs::path work =
        fs::temp_directory_path() / ("kesto-start-bench-" + std::to_string(getpid()));
    fs::remove_all(work);
    kesto::JobShape shape = kesto::LargestJobShape();
    shape.Parts = 999;
    shape.Seed = 1;
    const kesto::Installation inst =
        kesto::WriteInstallation((work / "install").string(), kesto::GenerateJob(shape), {});
    std::vector<std::string> kesto = {(self / "kesto").string()};
    for (size_t at = inst.CommandLine.find(' '); at != std::string::npos;) {
        const size_t next = inst.CommandLine.find(' ', at + 1);
        kesto.push_back(inst.CommandLine.substr(at + 1, next - at - 1));
        at = next;
    }
    const std::vector<std::string> env = {
        "QT_QPA_PLATFORM=offscreen", "ORVOSystemRoot=" + inst.Root,
        "XDG_CONFIG_HOME=" + (work / "config").string(),
        "KESTO_SCREENSHOT=" + (work / "kesto.png").string(), "KESTO_SCREENSHOT_VIEW=3d"};
    const std::vector<std::string> empty = {(self / "kesto-empty-dialog").string(),
                                            (work / "empty.png").string()};
    std::vector<double> window, floor, ratio;
    // One round of each first, not counted: the libraries come into the page cache.
    TimeRun(kesto, env, inst.Root, 100);
    TimeRun(empty, env, inst.Root, 0);
    for (int i = 0; i < rounds; ++i) {
        const double a = TimeRun(kesto, env, inst.Root, 100);
        const double b = TimeRun(empty, env, inst.Root, 0);
        if (a < 0 || b < 0) {
            std::fprintf(stderr, "kesto-start-bench: a run failed\n");
            fs::remove_all(work);
            return 1;
        }
        window.push_back(a);
        floor.push_back(b);
        ratio.push_back(a / b);
    }
    fs::remove_all(work);
    std::printf("start to first picture, median of %d rounds:\n", rounds);
    std::printf("  kesto, largest job, 3D 4PALLET  %7.1f ms\n", Median(window) * 1000);
    std::printf("  empty dialog of the same size   %7.1f ms\n", Median(floor) * 1000);
    std::printf("  ratio (median of the rounds)    %7.2f\n", Median(ratio));
    // This machine's timings drift between runs minutes apart: the spread says how far to trust
    // a difference between two runs.
    std::printf("  ratio, middle half of rounds    %7.2f to %.2f\n", Quantile(ratio, 0.25),
                Quantile(ratio, 0.75));
    return 0;
}
