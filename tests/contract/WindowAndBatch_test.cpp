// The promise to a host that scripts Kesto: `kesto-batch --answer ok` writes byte for byte what
// the window writes when the operator presses OK as soon as it is up and answers every question
// with OK, and ends with the same exit code; `--answer cancel` is the same for Cancel. Each
// installation is copied twice: the window runs in-process on one copy (offscreen), the batch
// tool as a process on the other, and every file of both copies is compared after each run.
#include <gtest/gtest.h>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "JobGenerator.h"
#include "app/ExitCode.h"
#include "common/E2eCases.h"
#include "common/ScopedEnv.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "common/WindowJob.h"
#include "render/FontTable.h"
#include "session/JobSession.h"
#include "ui/main/CKestoDlg.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// One job to run both ways: the installation, the tokens after the program's path, the
// operator's answer and how many runs follow one another on the same installation.
struct ContractCase {
    std::string Name;
    fs::path Install;  // prepared installation, copied for each side
    std::string Args;
    bool Ok = true;
    int Runs = 1;
};

// The window program on install, with the operator pressing OK (or Cancel) at once.
// Returns the full exit code.
int RunWindow(const fs::path& install, const ContractCase& c) {
    test::EnsureQApplication();
    const test::ScopedWorkingFolder here(install);
    test::TestServices services(install.string(), c.Ok ? OkCancel::Ok : OkCancel::Cancel);
    ViewState shown;
    JobSession session(services.Get(), "kesto " + c.Args, shown);
    if (session.StartUp()) {
        FontTable fonts;
        fonts.Build(session.App());
        CKestoDlg dialog(session, fonts);
        dialog.OnInitDialog();
        if (!dialog.Ended()) {
            QTimer::singleShot(0, &dialog, [&dialog, &c] {
                auto* button = dialog.findChild<QPushButton*>(c.Ok ? "B-OK" : "B-CAN");
                QTest::mouseClick(button, Qt::LeftButton);
                // A job that stays open after the answer is ended by the host.
                if (!dialog.Ended())
                    dialog.done(2);
            });
            dialog.Run();
        }
    }
    return session.Exit();
}

struct BatchResult {
    int Status = -1;
    std::string Log;
};

BatchResult RunBatch(const fs::path& install, const ContractCase& c) {
    const fs::path log = install.parent_path() / (install.filename().string() + ".log");
    fs::remove(log);
    const int status = test::RunBatchProcess(install, c.Ok ? "ok" : "cancel", c.Args, log);
    return {status, test::ReadFile(log.string())};
}

// Every file below root by its relative path, with its bytes.
std::map<std::string, std::string> FilesBelow(const fs::path& root) {
    std::map<std::string, std::string> files;
    for (const auto& e : fs::recursive_directory_iterator(root)) {
        if (e.is_regular_file())
            files[fs::relative(e.path(), root).string()] = test::ReadFile(e.path().string());
    }
    return files;
}

void ExpectSameFiles(const fs::path& window, const fs::path& batch, int run) {
    const auto a = FilesBelow(window);
    const auto b = FilesBelow(batch);
    for (const auto& [name, bytes] : a) {
        const auto other = b.find(name);
        if (other == b.end()) {
            ADD_FAILURE() << "run " << run << ": only the window wrote " << name;
        } else {
            EXPECT_EQ(bytes, other->second) << "run " << run << ": " << name << " differs";
        }
    }
    for (const auto& [name, bytes] : b) {
        if (a.count(name) == 0)
            ADD_FAILURE() << "run " << run << ": only the batch tool wrote " << name;
    }
}

// Runs the case in work/window and work/batch.
void RunBothWays(const ContractCase& c, const fs::path& work) {
    const fs::path window = work / "window";
    const fs::path batch = work / "batch";
    fs::copy(c.Install, window, fs::copy_options::recursive);
    fs::copy(c.Install, batch, fs::copy_options::recursive);
    for (int run = 1; run <= c.Runs; ++run) {
        const int code = RunWindow(window, c);
        const BatchResult result = RunBatch(batch, c);
        EXPECT_EQ(ProcessExitCode(code), result.Status) << "run " << run << "\n" << result.Log;
        const std::string notice = ExitCodeNotice(code);
        if (!notice.empty()) {
            EXPECT_NE(result.Log.find(notice), std::string::npos) << result.Log;
        }
        ExpectSameFiles(window, batch, run);
    }
}

// --- the end-to-end installations -----------------------------------------------------------

class E2eInstallation : public ::testing::TestWithParam<std::string> {};

TEST_P(E2eInstallation, BatchWritesWhatTheWindowWrites) {
    const fs::path dir = test::E2eRoot() / GetParam();
    const auto values = test::ReadCaseFile(dir / "case.txt");
    test::TempFolder prepared;
    const fs::path install = prepared.Path() / "install";
    fs::copy(dir / "install", install, fs::copy_options::recursive);
    fs::create_directories(install / "out");
    if (values.count("remove"))
        fs::remove(install / values.at("remove"));
    ContractCase c;
    c.Name = GetParam();
    c.Install = install;
    c.Args = values.at("args");
    c.Ok = !values.count("answer") || values.at("answer") == "ok";
    c.Runs = values.count("runs") ? std::stoi(values.at("runs")) : 1;
    RunBothWays(c, prepared.Path());
}

INSTANTIATE_TEST_SUITE_P(Cases, E2eInstallation, ::testing::ValuesIn(test::E2eCaseNames()),
                         [](const auto& testCase) { return testCase.param; });

// --- generated installations ----------------------------------------------------------------

// Installation i of the generated set: every start corner, inch mode, offsets with parts that
// ask for the check, backslash paths in the setup list, jobs that fail the check, jobs too
// large for their pallets (parts left short), second runs that restore the first, and Cancel.
struct GeneratedCase {
    JobShape Shape;
    InstallOptions Options;
    bool Ok = true;
    int Runs = 1;
};

GeneratedCase Generated(int i) {
    GeneratedCase g;
    g.Shape.Seed = static_cast<uint32_t>(100 + i);
    g.Shape.Processes = 1 + i % 3;
    g.Shape.Parts = 5 + (i * 37) % 60;
    g.Shape.Pallets = 1 + i % 4;
    g.Shape.CellsX = 2 + i % 3;
    g.Shape.CellsY = 2 + (i / 3) % 3;
    g.Shape.SmallBoxes = i % 4;
    g.Shape.BoxPercent = 10;
    g.Options.Corner = 1 + i % 4;
    g.Options.Inch = i % 10 == 7;
    if (i % 5 == 2) {
        g.Options.OffsetA = 150;
        g.Options.OffsetB = 40;
        g.Options.SensitiveSides = true;
    }
    g.Options.BackslashPaths = i % 2 == 1;
    g.Options.UnknownDestination = i % 8 == 5;
    g.Options.UndefinedSmallBox = i % 8 == 1;
    g.Runs = i % 3 == 0 ? 2 : 1;
    g.Ok = i % 6 != 4;
    return g;
}

constexpr int kGeneratedCount = 60;

class GeneratedInstallation : public ::testing::TestWithParam<int> {};

TEST_P(GeneratedInstallation, BatchWritesWhatTheWindowWrites) {
    const GeneratedCase g = Generated(GetParam());
    test::TempFolder prepared;
    const Installation inst =
        WriteInstallation((prepared.Path() / "install").string(), GenerateJob(g.Shape), g.Options);
    ContractCase c;
    c.Name = "generated-" + std::to_string(GetParam());
    c.Install = inst.Root;
    // The tokens after the program's own path.
    c.Args = inst.CommandLine.substr(inst.CommandLine.find(' ') + 1);
    c.Ok = g.Ok;
    c.Runs = g.Runs;
    RunBothWays(c, prepared.Path());
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedInstallation, ::testing::Range(0, kGeneratedCount));

// The generated set is only worth as much as the situations it reaches: run each case through
// the batch tool and count what happened.
TEST(GeneratedInstallations, ReachEveryKindOfEnding) {
    std::map<std::string, int> seen;
    for (int i = 0; i < kGeneratedCount; ++i) {
        const GeneratedCase g = Generated(i);
        test::TempFolder prepared;
        const fs::path root = prepared.Path() / std::to_string(i);
        const Installation inst = WriteInstallation(root.string(), GenerateJob(g.Shape), g.Options);
        ContractCase c;
        c.Args = inst.CommandLine.substr(inst.CommandLine.find(' ') + 1);
        c.Ok = g.Ok;
        for (int run = 1; run <= g.Runs; ++run) {
            const BatchResult r = RunBatch(root, c);
            ++seen["exit " + std::to_string(r.Status)];
            for (const char* what : {"message 001", "message 002", "message 003", "message 008",
                                     "message 208", "Initial File Not found", "Parts short: none"})
                seen[what] += r.Log.find(what) != std::string::npos ? 1 : 0;
            // A second run that could not restore the first one's save file places nothing.
            if (run == 2 && r.Log.find("Placement:") != std::string::npos &&
                r.Log.find("pcs") == std::string::npos)
                ++seen["restore failed"];
        }
    }
    std::string tally;
    for (const auto& [what, n] : seen)
        tally += what + ": " + std::to_string(n) + "\n";
    for (const char* what :
         {"exit 0", "exit 100", "exit 231", "message 002", "message 003", "message 008",
          "message 208", "Initial File Not found", "Parts short: none", "restore failed"})
        EXPECT_GT(seen[what], 0) << what << "\n" << tally;
}

}  // namespace
}  // namespace kesto
