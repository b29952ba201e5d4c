// kesto-batch killed with SIGKILL at moments spread over its whole write phase: afterwards each
// of the result, side and save files is the old one or the complete new one, byte for byte,
// and the temporaries a killed run leaves never disturb the next run, which removes them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "JobGenerator.h"
#include "common/TestFiles.h"

extern char** environ;

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

// The kill hook of the atomic writes (kesto-batch-killable): the run kills itself at the N-th
// write step.
const std::string kStopVariable = "KESTO_TEST_STOP_AFTER_WRITES";

const std::vector<std::string> kOutputNames = {"result.txt", "result.txt_tmp", "save.txt"};

// The three files of a run in kOutputNames' order; nullopt for a file that does not exist.
using Outputs = std::vector<std::optional<std::string>>;

struct RunEnd {
    bool Killed = false;  // ended by SIGKILL
    int ExitCode = -1;
};

bool HasPrefix(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

// The environment of this test with the installation's system folder and per-user folder,
// and the kill hook armed when stopAfter is above 0.
std::vector<std::string> RunEnvironment(const Installation& install, long stopAfter) {
    std::vector<std::string> env;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string text = *entry;
        if (!HasPrefix(text, "ORVOSystemRoot=") && !HasPrefix(text, "XDG_CONFIG_HOME=") &&
            !HasPrefix(text, kStopVariable + "="))
            env.push_back(text);
    }
    env.push_back("ORVOSystemRoot=" + install.Root);
    env.push_back("XDG_CONFIG_HOME=" + install.Root + "/config");
    if (stopAfter > 0)
        env.push_back(kStopVariable + "=" + std::to_string(stopAfter));
    return env;
}

const std::string kKillable = "kesto-batch-killable";

// program --answer ok and the installation's command line without the program name.
std::vector<std::string> RunArguments(const Installation& install, const std::string& program) {
    std::vector<std::string> args = {(BinaryDir() / program).string(), "--answer", "ok"};
    std::istringstream tokens(install.CommandLine.substr(install.CommandLine.find(' ') + 1));
    for (std::string token; tokens >> token;)
        args.push_back(token);
    return args;
}

std::vector<char*> PointerList(std::vector<std::string>& texts) {
    std::vector<char*> list;
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

// Runs kesto-batch on the installation as a host would, its output thrown away.
RunEnd RunBatchProcess(const Installation& install, long stopAfter,
                       const std::string& program = kKillable) {
    std::vector<std::string> args = RunArguments(install, program);
    std::vector<std::string> env = RunEnvironment(install, stopAfter);
    std::vector<char*> argv = PointerList(args);
    std::vector<char*> envp = PointerList(env);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return {};
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status))
        return {WTERMSIG(status) == SIGKILL, -1};
    return {false, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

// One generated installation with its old files (a first complete run) and the new files an
// unkilled run writes over them after the job changed.
class KilledRuns {
  public:
    KilledRuns(const fs::path& root, const JobShape& shape) {
        GeneratedJob job = GenerateJob(shape);
        install_ = WriteInstallation(root.string(), job);
        first_ = RunBatchProcess(install_, 0);
        old_ = ReadOutputs();
        // New quantities: the next run restores the saved placement and trims or fills it.
        for (size_t i = 0; i < job.Parts.size(); i += 3)
            job.Parts[i].Quantity += 1 + static_cast<int32_t>(i % 2);
        install_ = WriteInstallation(root.string(), job);
        second_ = RunBatchProcess(install_, 0);
        new_ = ReadOutputs();
        WriteOutputs(old_);
    }

    const RunEnd& FirstRun() const { return first_; }
    const RunEnd& SecondRun() const { return second_; }
    const Outputs& Old() const { return old_; }
    const Outputs& New() const { return new_; }
    fs::path OutFolder() const { return fs::path(install_.Root) / "out"; }

    RunEnd Run(long stopAfter) const { return RunBatchProcess(install_, stopAfter); }

    Outputs ReadOutputs() const {
        Outputs outputs;
        for (const std::string& name : kOutputNames) {
            const fs::path path = OutFolder() / name;
            outputs.push_back(fs::exists(path) ? std::optional(ReadFile(path.string()))
                                               : std::nullopt);
        }
        return outputs;
    }

    // Puts the given files back as the three targets; everything else in the folder stays.
    void WriteOutputs(const Outputs& outputs) const {
        for (size_t i = 0; i < kOutputNames.size(); ++i) {
            const fs::path path = OutFolder() / kOutputNames[i];
            fs::remove(path);
            if (outputs[i])
                WriteFile(path.string(), *outputs[i]);
        }
    }

    // Every name in the output folder besides the three targets.
    std::vector<std::string> Strays() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(OutFolder())) {
            const std::string name = entry.path().filename().string();
            if (std::find(kOutputNames.begin(), kOutputNames.end(), name) == kOutputNames.end())
                names.push_back(name);
        }
        return names;
    }

    // Puts the old files back (leaving anything else in the folder) and runs.
    RunEnd RunFromOld(long stopAfter) const {
        WriteOutputs(old_);
        return Run(stopAfter);
    }

    // The number of write steps of a complete run from the old files: the largest armed limit
    // that still kills the run (limits kill from 1 up to the last step, none beyond).
    long CountWriteSteps() const {
        long killedAt = 0;
        long survived = 64;
        for (; survived < (1L << 24) && RunFromOld(survived).Killed; survived *= 2)
            killedAt = survived;
        while (survived - killedAt > 1) {
            const long middle = killedAt + (survived - killedAt) / 2;
            (RunFromOld(middle).Killed ? killedAt : survived) = middle;
        }
        return killedAt;
    }

  private:
    Installation install_;
    RunEnd first_;
    RunEnd second_;
    Outputs old_;
    Outputs new_;
};

// What the trials saw, to show that the kill moments covered the whole write phase.
struct TrialTally {
    std::vector<int> OldSeen = std::vector<int>(kOutputNames.size(), 0);
    std::vector<int> NewSeen = std::vector<int>(kOutputNames.size(), 0);
    int LeftTemporaries = 0;  // trials whose kill left a temporary file behind
};

// One kill at the given write step, then the next normal run from the old files with the
// killed run's leftovers still in the folder.
void KillAndRecover(const KilledRuns& runs, long step, TrialTally& tally) {
    const RunEnd killed = runs.RunFromOld(step);
    ASSERT_TRUE(killed.Killed) << "step " << step;
    const Outputs after = runs.ReadOutputs();
    for (size_t i = 0; i < kOutputNames.size(); ++i) {
        const bool isOld = after[i] == runs.Old()[i];
        const bool isNew = after[i] == runs.New()[i];
        EXPECT_TRUE(isOld || isNew) << kOutputNames[i] << " torn at step " << step;
        tally.OldSeen[i] += isOld ? 1 : 0;
        tally.NewSeen[i] += isNew ? 1 : 0;
    }
    tally.LeftTemporaries += runs.Strays().empty() ? 0 : 1;

    const RunEnd next = runs.RunFromOld(0);
    EXPECT_EQ(next.ExitCode, 0) << "after step " << step;
    EXPECT_EQ(runs.ReadOutputs(), runs.New()) << "after step " << step;
    EXPECT_EQ(runs.Strays(), std::vector<std::string>{}) << "after step " << step;
}

// trials kill moments spread evenly over steps 1..total (both ends included).
std::vector<long> KillSteps(long total, int trials) {
    std::vector<long> steps;
    for (int i = 0; i < trials; ++i)
        steps.push_back(1 + static_cast<long>(i) * (total - 1) / (trials - 1));
    return steps;
}

void RunTrials(const KilledRuns& runs, int trials, TrialTally& tally) {
    const long total = runs.CountWriteSteps();
    // At least one write step per line of the three new files, so the moments are distinct.
    ASSERT_GE(total, trials);
    ::testing::Test::RecordProperty("write_steps", std::to_string(total));
    for (const long step : KillSteps(total, trials)) {
        KillAndRecover(runs, step, tally);
        if (::testing::Test::HasFatalFailure())
            return;
    }
}

// A fresh folder for the installation, in memory where the machine has /dev/shm: every run
// syncs its files to disk, and a SIGKILL keeps written data either way.
class ScratchFolder {
  public:
    ScratchFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        const fs::path memory = "/dev/shm";
        std::error_code ec;
        const fs::path base = fs::is_directory(memory, ec) && ::access("/dev/shm", W_OK) == 0
                                  ? memory
                                  : fs::temp_directory_path();
        path_ = base / ("kesto-kill-" + std::string(info != nullptr ? info->name() : "run") + "-" +
                        std::to_string(::getpid()));
        fs::remove_all(path_, ec);
        fs::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ec;
        fs::remove_all(path_, ec);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    const fs::path& Path() const { return path_; }

  private:
    fs::path path_;
};

class KilledWrites : public ::testing::Test {
  protected:
    ScratchFolder folder_;
};

TEST_F(KilledWrites, FirstAndChangedRunsWriteDifferentCompleteFiles) {
    const KilledRuns runs(folder_.Path(), MediumJobShape());
    EXPECT_EQ(runs.FirstRun().ExitCode, 0);
    EXPECT_EQ(runs.SecondRun().ExitCode, 0);
    for (size_t i = 0; i < kOutputNames.size(); ++i) {
        ASSERT_TRUE(runs.Old()[i].has_value()) << kOutputNames[i];
        ASSERT_TRUE(runs.New()[i].has_value()) << kOutputNames[i];
        EXPECT_NE(*runs.Old()[i], *runs.New()[i]) << kOutputNames[i];
    }
}

TEST_F(KilledWrites, TheInstalledProgramCarriesNoKillHook) {
    GeneratedJob job = GenerateJob(SmallJobShape());
    const Installation install = WriteInstallation(folder_.Path().string(), job);
    const RunEnd run = RunBatchProcess(install, 1, "kesto-batch");
    EXPECT_FALSE(run.Killed);
    EXPECT_EQ(run.ExitCode, 0);
}

TEST_F(KilledWrites, ArmedHookBeyondTheLastStepWritesTheSameBytes) {
    const KilledRuns runs(folder_.Path(), SmallJobShape());
    const long total = runs.CountWriteSteps();
    // The counting, unbuffered stream of the hook writes exactly what the plain one writes.
    const RunEnd run = runs.RunFromOld(total + 1);
    EXPECT_FALSE(run.Killed);
    EXPECT_EQ(run.ExitCode, 0);
    EXPECT_EQ(runs.ReadOutputs(), runs.New());
    EXPECT_EQ(runs.Strays(), std::vector<std::string>{});
}

void ExpectWholePhaseCovered(const TrialTally& tally) {
    for (size_t i = 0; i < kOutputNames.size(); ++i) {
        EXPECT_GT(tally.OldSeen[i], 0) << kOutputNames[i];
        EXPECT_GT(tally.NewSeen[i], 0) << kOutputNames[i];
    }
    EXPECT_GT(tally.LeftTemporaries, 0);
}

TEST_F(KilledWrites, MediumJobKilledAtTwoHundredMomentsKeepsOldOrNewFiles) {
    const KilledRuns runs(folder_.Path(), MediumJobShape());
    TrialTally tally;
    RunTrials(runs, 200, tally);
    ExpectWholePhaseCovered(tally);
    ::testing::Test::RecordProperty("left_temporaries", std::to_string(tally.LeftTemporaries));
}

TEST_F(KilledWrites, LargestJobKilledAtThirtyMomentsKeepsOldOrNewFiles) {
    const KilledRuns runs(folder_.Path(), LargestJobShape());
    TrialTally tally;
    RunTrials(runs, 30, tally);
    ExpectWholePhaseCovered(tally);
}

}  // namespace
}  // namespace kesto::test
