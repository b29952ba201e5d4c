// The journal is the operator's work: for random walks of an operator on the window over
// generated jobs, the files the window writes when the walk ends are those that
// `kesto-batch --replay` writes from the journal the window kept, byte for byte.
#include <gtest/gtest.h>
#include <QApplication>
#include <QPushButton>
#include <QtTest/QTest>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "JobGenerator.h"
#include "app/ExitCode.h"
#include "common/E2eCases.h"
#include "common/TestFiles.h"
#include "common/WindowJob.h"
#include "common/WindowMonkey.h"
#include "history/Journal.h"
#include "session/JobJournal.h"
#include "ui/main/WindowJournal.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// The walk's steps and the jobs walked: KESTO_REPLAY_STEPS and KESTO_REPLAY_JOBS for longer
// runs (120 jobs of 2,000 steps: 2 minutes).
int EnvOr(const char* name, int fallback) {
    const char* value = std::getenv(name);
    return value != nullptr && std::atoi(value) > 0 ? std::atoi(value) : fallback;
}
const int kSteps = EnvOr("KESTO_REPLAY_STEPS", 400);
const int kJobs = EnvOr("KESTO_REPLAY_JOBS", 12);

std::map<std::string, std::string> FilesIn(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& e : fs::directory_iterator(folder))
        files[e.path().filename().string()] = test::ReadFile(e.path().string());
    return files;
}

JobShape Shape(int i) {
    JobShape shape = SampleLikeJobShape();
    shape.Seed = static_cast<uint32_t>(500 + i);
    shape.Parts = 10 + (i * 13) % 40;
    shape.Pallets = 1 + i % 4;
    shape.SmallBoxes = i % 3;
    return shape;
}

class WindowJournalReplay : public ::testing::TestWithParam<int> {};

TEST_P(WindowJournalReplay, TheWindowsFilesAreThoseItsJournalReplaysTo) {
    test::TempFolder state;
    test::WindowJob job;
    const Installation inst =
        WriteInstallation(job.Install.Root().string(), GenerateJob(Shape(GetParam())), {});
    job.Svc.Host.State = state.Path().string();
    ASSERT_TRUE(job.Open(inst.CommandLine) && test::ShowLaidOut(*job.Dialog, 1600, 900));
    OperatorRelay relay(job.Svc.Op);
    WindowJournal journal(*job.Session, relay, job.Svc.Host.State);
    journal.Start(*job.Dialog);
    ASSERT_NE(journal.Journal(), nullptr);
    const std::string path = journal.Journal()->Path();

    test::WindowMonkey monkey(job, static_cast<uint32_t>(GetParam()));
    // Halfway, the operator gives the window another size: the drops after it are made on
    // another layout, and the cells of the views before it stay where they were drawn.
    bool resized = false;
    for (int i = 0; i < kSteps && !job.Dialog->Ended(); ++i) {
        if (i == kSteps / 2) {
            resized = true;
            job.Dialog->resize(1366, 768);
            QApplication::processEvents();
        }
        monkey.Step();
    }
    // The walk ends with OK, or with Cancel while parts are set aside (OK is not allowed then);
    // every question is answered OK.
    job.Svc.Op.Answer = OkCancel::Ok;
    auto* ok = job.Dialog->findChild<QPushButton*>("B-OK");
    if (!job.Dialog->Ended()) {
        QTest::mouseClick(ok->isEnabled() ? ok : job.Dialog->findChild<QPushButton*>("B-CAN"),
                          Qt::LeftButton);
    }
    ASSERT_TRUE(job.Dialog->Ended());
    const int windowCode = job.Session->Exit();
    const JournalFile written = ReadJournalFile(path);
    ASSERT_EQ(written.Error, "");
    ASSERT_TRUE(written.End.has_value()) << "the journal has no end line";
    int corrections = 0;
    int areas = 0;
    for (const auto& [number, line] : written.Lines) {
        corrections += IsCorrection(line.Command.Verb) ? 1 : 0;
        areas += line.Command.Verb == JournalVerb::Area ? 1 : 0;
    }
    EXPECT_GT(corrections, 0) << "the walk corrected nothing";
    EXPECT_GE(areas, resized ? 2 : 1) << "the drawing area's sizes are not all written down";
    RecordProperty("corrections", corrections);

    // The batch tool on the same installation, as the window found it: without the window's
    // files, so that nothing is restored from its save file.
    const fs::path out = job.Install.Path("out");
    const fs::path windowOut = job.Install.Path("out-window");
    fs::rename(out, windowOut);
    fs::create_directories(out);
    const fs::path log = job.Install.Path("batch.log");
    const std::string args =
        "--replay '" + path + "' " + inst.CommandLine.substr(inst.CommandLine.find(' ') + 1);
    const int status = test::RunBatchProcess(inst.Root, "ok", args, log);
    EXPECT_EQ(status, ProcessExitCode(windowCode)) << test::ReadFile(log.string());
    EXPECT_EQ(FilesIn(out), FilesIn(windowOut)) << "journal:\n"
                                                << test::ReadFile(path) << "batch:\n"
                                                << test::ReadFile(log.string());
}

INSTANTIATE_TEST_SUITE_P(GeneratedJobs, WindowJournalReplay, ::testing::Range(0, kJobs));

}  // namespace
}  // namespace kesto
