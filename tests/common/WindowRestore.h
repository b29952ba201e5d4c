// A window run that ended in the middle of its job, brought back: the journal it left in its
// state folder, the next start on the same job answering the recovery question with Return and
// ending with OK, and what the journal says the files must be: kesto-batch --replay of the same
// journal on a fresh copy of the job.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/StageWatch.h"
#include "common/TestFiles.h"
#include "common/WindowCommands.h"
#include "common/WindowProcess.h"
#include "common/XDisplay.h"
#include "history/Journal.h"

namespace kesto::test {

// The names in a run folder's journal folder.
inline std::vector<std::string> JournalFolderNames(const std::filesystem::path& runFolder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator it(runFolder / "state" / "kesto" / "journal", error),
         end;
         !error && it != end; it.increment(error)) {
        names.push_back(it->path().filename().string());
    }
    return names;
}

// The job's journal in a run folder's state folder; empty when there is none.
inline std::filesystem::path JournalIn(const std::filesystem::path& runFolder) {
    for (const std::string& name : JournalFolderNames(runFolder)) {
        // <identity>.journal: 64 hexadecimal digits and the extension, nothing between.
        if (name.size() == 64 + 8 && name.ends_with(".journal"))
            return runFolder / "state" / "kesto" / "journal" / name;
    }
    return {};
}

// True when the run folder's journal folder holds a journal set aside (No to the question).
inline bool HasDiscardedJournal(const std::filesystem::path& runFolder) {
    const std::vector<std::string> names = JournalFolderNames(runFolder);
    return std::any_of(names.begin(), names.end(), [](const std::string& name) {
        return name.find(".discarded") != std::string::npos;
    });
}

// A journal's command lines without their time.
inline std::vector<std::string> JournalCommands(const std::string& text) {
    std::vector<std::string> commands;
    for (const auto& [number, line] : ReadJournal(text).Lines)
        commands.push_back(line.Kind == ParsedJournalLine::Kind::Command
                               ? FormatJournalCommand(line.Command)
                               : "(not a command: " + line.Why + ")");
    return commands;
}

// How many of a journal's commands correct the job: the recovery question offers those back.
inline int Corrections(const std::string& text) {
    int corrections = 0;
    for (const auto& [number, line] : ReadJournal(text).Lines)
        corrections +=
            line.Kind == ParsedJournalLine::Kind::Command && IsCorrection(line.Command.Verb);
    return corrections;
}

// The result, side and save files of a job; none for a file that does not exist.
using JobOutputs = std::vector<std::optional<std::string>>;

inline JobOutputs OutputsOf(const JobFolder& job) {
    JobOutputs outputs;
    for (const std::filesystem::path& file :
         {job.ResultFile, std::filesystem::path(job.ResultFile.string() + "_tmp"), job.SaveFile}) {
        outputs.push_back(std::filesystem::exists(file) ? std::optional(ReadFile(file))
                                                        : std::nullopt);
    }
    return outputs;
}

// Where two runs' files part: empty when they are the same byte for byte.
inline std::string OutputsDiffer(const JobOutputs& got, const JobOutputs& want) {
    const char* names[] = {"result file", "side file", "save file"};
    std::string differ;
    for (size_t i = 0; i < got.size() && i < want.size(); ++i) {
        if (got[i] == want[i])
            continue;
        differ += std::string(names[i]) + ": ";
        if (!got[i] || !want[i]) {
            differ += got[i] ? "written, expected none; " : "missing; ";
            continue;
        }
        size_t at = 0;
        while (at < got[i]->size() && at < want[i]->size() && (*got[i])[at] == (*want[i])[at])
            ++at;
        differ += "differs from byte " + std::to_string(at) + " of " +
                  std::to_string(want[i]->size()) + "; ";
    }
    return differ;
}

// kesto-batch --answer ok --replay of a journal's text (of this job in another folder:
// --replay-any) on a fresh copy of the job in `folder`, with per-user folders of its own.
struct BatchReplay {
    std::optional<int> ExitCode;
    JobOutputs Outputs;
    std::string Log;
};

inline BatchReplay ReplayOnBatch(const JobFolder& pristine, const std::string& journal,
                                 const std::filesystem::path& folder) {
    const JobFolder job = CopyJob(pristine, folder / "install");
    const std::filesystem::path journalFile = folder / "replayed.journal";
    WriteFile(journalFile, journal);
    std::vector<std::string> argv = {(BinaryDir() / "kesto-batch").string(),
                                     "--answer",
                                     "ok",
                                     "--replay",
                                     journalFile.string(),
                                     "--replay-any"};
    argv.insert(argv.end(), job.Tokens.begin(), job.Tokens.end());
    const std::string log = (folder / "kesto-batch.log").string();
    ChildProcess batch(
        argv,
        {"ORVOSystemRoot=" + job.Root.string(), "XDG_CONFIG_HOME=" + (folder / "config").string(),
         "XDG_STATE_HOME=" + (folder / "state").string()},
        job.Root.string(), log);
    BatchReplay replay;
    replay.ExitCode = batch.WaitExit(kStartMs);
    replay.Outputs = OutputsOf(job);
    replay.Log = ReadFile(log);
    return replay;
}

// A window run given the random commands of a seed, once it has settled.
class DrivenRun {
  public:
    DrivenRun(WindowScreen& screen, const JobFolder& job, const std::filesystem::path& folder,
              uint32_t seed, const RunOptions& options = {})
        : run_(screen, job, folder, options) {
        if (!run_.Settle())
            return;
        window_ = *run_.MainWindow();
        op_.emplace(run_.X(), run_.Process(), window_);
        commands_.emplace(seed, run_.X(), run_.Process(), *op_, window_);
        commands_->Rest();
    }
    // The window settled; false when it ended or never came up.
    bool Started() const { return commands_.has_value(); }
    WindowRun& Run() { return run_; }
    Operator& Op() { return *op_; }
    WindowCommands& Commands() { return *commands_; }

  private:
    WindowRun run_;
    Window window_ = 0;
    std::optional<Operator> op_;
    std::optional<WindowCommands> commands_;
};

// What the start after a kill met and did.
struct Restart {
    bool Asked = false;  // the recovery question came up and was answered with Return
    std::optional<int> ExitCode;
    std::string Journal;  // the journal once the job ended
};

// Starts the window again on the job of a run folder whose run ended midway; when the journal
// it left has corrections in it the recovery question must come up, and Return restores them.
// The job is ended with OK, every set-aside part put back first.
inline Restart RestartAndEnd(WindowScreen& screen, const JobFolder& job,
                             const std::filesystem::path& runFolder, bool questionExpected) {
    Restart restart;
    const auto before = std::filesystem::file_time_type::clock::now();
    Stage("restart: the window comes up");
    WindowRun run(screen, job, runFolder, {.Log = "restart.log"});
    if (!WaitUntil(
            kStartMs, [&] { return run.MainWindow().has_value() || !run.Process().Running(); },
            50) ||
        !run.Process().Running()) {
        ADD_FAILURE() << "the window did not come back\n" << run.Log();
        return restart;
    }
    const Window window = *run.MainWindow();
    Operator op(run.X(), run.Process(), window);
    if (questionExpected) {
        Stage("restart: the recovery question");
        restart.Asked = WaitUntil(
            kStartMs, [&] { return !op.Dialogs().empty(); }, 50);
        EXPECT_TRUE(restart.Asked) << "no recovery question";
        if (restart.Asked)
            run.X().Key(op.Dialogs().back(), XK_Return);
    }
    Stage("restart: settling");
    EXPECT_TRUE(run.Settle()) << run.Log();
    WindowCommands commands(0, run.X(), run.Process(), op, window);
    commands.Rest();
    EXPECT_TRUE(op.Dialogs().empty()) << "a dialog is open after the start";
    Stage("restart: OK with nothing set aside");
    commands.PressOkWithNothingSetAside();
    ExpectEndedWithOk(op, run, before);
    restart.ExitCode = run.Process().WaitExit(0);
    restart.Journal = ReadFile(JournalIn(runFolder));
    return restart;
}

// What the start after a kill restored, against the replay of its journal.
struct Restored {
    std::string Killed;  // the journal the killed run left
    int Corrections = 0;
    bool Asked = false;
    std::string Differ;  // where the files part from the replay's; empty when they do not
};

// The restart of a killed run's job (RestartAndEnd): the journal must go on from the killed
// run's, none is set aside, and the files must be those of the replay of the journal the
// restart ended with, exit code too.
inline Restored RestoreAndReplay(WindowScreen& screen, const JobFolder& pristine,
                                 const JobFolder& job, const std::filesystem::path& runFolder) {
    Restored restored;
    restored.Killed = ReadFile(JournalIn(runFolder));
    restored.Corrections = Corrections(restored.Killed);
    const Restart restart = RestartAndEnd(screen, job, runFolder, restored.Corrections > 0);
    restored.Asked = restart.Asked;
    EXPECT_EQ(restart.Journal.substr(0, restored.Killed.size()), restored.Killed)
        << "the journal does not go on from the killed run's";
    EXPECT_FALSE(HasDiscardedJournal(runFolder));
    Stage("kesto-batch --replay of the journal");
    const BatchReplay replay = ReplayOnBatch(pristine, restart.Journal, runFolder / "replay");
    EXPECT_EQ(replay.ExitCode, restart.ExitCode) << replay.Log;
    restored.Differ = OutputsDiffer(OutputsOf(job), replay.Outputs);
    EXPECT_EQ(restored.Differ, "") << runFolder;
    return restored;
}

// "5 corrections restored; files identical", or what went otherwise.
inline std::string RestoredText(const Restored& restored) {
    return std::to_string(restored.Corrections) + " corrections" +
           (restored.Asked ? " restored" : ", no question") + "; files " +
           (restored.Differ.empty() ? "identical" : "DIFFER: " + restored.Differ);
}

// What the kill tests share: a temporary folder, an X server of a laptop's screen with openbox,
// and the job every run copies.
class KillBench {
  public:
    static constexpr int kWidth = 1366;
    static constexpr int kHeight = 768;

    // Xvfb and openbox are installed: else the tests skip.
    static bool CanRun() { return OnPath("Xvfb") && OnPath("openbox"); }

    KillBench(Job which, int parts) : screen_(Screen::Managed, kWidth, kHeight) {
        if (screen_.Ready())
            pristine_ = WriteJob(which, folder_.Path() / "job", parts);
    }

    bool Ready() const { return screen_.Ready(); }
    WindowScreen& XScreen() { return screen_; }
    const JobFolder& Pristine() const { return pristine_; }
    // A fresh folder for one run and its restart, with a copy of the job in it.
    std::pair<std::filesystem::path, JobFolder> RunFolder(const std::string& name) const {
        const std::filesystem::path folder = folder_.Path() / name;
        return {folder, CopyJob(pristine_, folder / "install")};
    }
    double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    TempFolder folder_;
    WindowScreen screen_;
    JobFolder pristine_;
};

// The fixture of the kill tests, whose cases name the job (Which, Parts): the bench of the
// case's job, the test skipped where Xvfb or openbox is missing.
template <typename Case>
class KillTest : public ::testing::TestWithParam<Case> {
  protected:
    void SetUp() override {
        if (!KillBench::CanRun())
            GTEST_SKIP() << "Xvfb and openbox are needed";
        bench_.emplace(this->GetParam().Which, this->GetParam().Parts);
        ASSERT_TRUE(bench_->Ready()) << "no X server or window manager";
    }

    std::optional<KillBench> bench_;
};

}  // namespace kesto::test
