#include "cli/BatchRun.h"

#include <gtest/gtest.h>
#ifdef _WIN32
#include <windows.h>
#endif

#include <sstream>

#include "common/E2eCases.h"
#include "common/FileText.h"
#include "common/MiniInstallation.h"
#include "common/RecordedJournal.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "session/JobJournal.h"
#include "support/Paths.h"
#include "support/SetupList.h"

namespace kesto {
namespace {

using test::MiniInstallation;
using test::TempFolder;

std::vector<std::string> Tokens(const TempFolder& folder) {
    return {folder / "pallet/pallets.txt", "0", "0", "0", "0", "1"};
}

// Runs the batch job on the installation in folder; report gets stdout and stderr.
int RunJob(const TempFolder& folder, const std::vector<std::string>& tokens, OkCancel answer,
           std::string* report = nullptr) {
    BatchOptions options;
    options.Tokens = tokens;
    options.Answer = answer;
    std::ostringstream out;
    test::MemoryHostStore host(folder.Path().string());
    const int code = RunBatch("kesto-batch", options, out, out, host);
    if (report != nullptr)
        *report = out.str();
    return code;
}

// What a run with options writes on stdout and on stderr, apart.
struct Streams {
    int Code = -1;
    std::string Out;
    std::string Err;
};

Streams RunWith(const TempFolder& folder, BatchOptions options) {
    options.Tokens = Tokens(folder);
    std::ostringstream out;
    std::ostringstream err;
    test::MemoryHostStore host(folder.Path().string());
    Streams s;
    s.Code = RunBatch("kesto-batch", options, out, err, host);
    s.Out = out.str();
    s.Err = err.str();
    return s;
}

TEST(ParseBatchOptions, AnswerDefaultsToOkAndKeepsTheTokensInOrder) {
    const BatchOptions o = ParseBatchOptions({"p.txt", "1", "0", "2.5", "3", "2"});
    EXPECT_EQ(o.Answer, OkCancel::Ok);
    EXPECT_EQ(o.Tokens, (std::vector<std::string>{"p.txt", "1", "0", "2.5", "3", "2"}));
    EXPECT_TRUE(o.Error.empty());
}

TEST(ParseBatchOptions, AnswerCancelInBothSpellings) {
    EXPECT_EQ(ParseBatchOptions({"--answer", "cancel", "p.txt"}).Answer, OkCancel::Cancel);
    EXPECT_EQ(ParseBatchOptions({"--answer=cancel"}).Answer, OkCancel::Cancel);
    EXPECT_EQ(ParseBatchOptions({"--answer=cancel"}).Tokens.size(), 0u);
}

TEST(ParseBatchOptions, UnknownAnswerAndMissingValueAreErrors) {
    EXPECT_NE(ParseBatchOptions({"--answer", "maybe"}).Error, "");
    EXPECT_NE(ParseBatchOptions({"--answer"}).Error, "");
}

TEST(ParseBatchOptions, HelpAndVersionAreOptionsNotTokens) {
    const BatchOptions o = ParseBatchOptions({"--version", "p.txt"});
    EXPECT_TRUE(o.Version);
    EXPECT_FALSE(o.Help);
    EXPECT_EQ(o.Tokens, std::vector<std::string>{"p.txt"});
    EXPECT_TRUE(ParseBatchOptions({"--help"}).Help);
    EXPECT_FALSE(ParseBatchOptions({"--help"}).Version);
}

TEST(BatchUsage, NamesHelpAndVersion) {
    EXPECT_NE(BatchUsage().find("kesto-batch --help | --version"), std::string::npos);
}

TEST(ParseBatchOptions, QuietIsAnOptionNotAToken) {
    const BatchOptions o = ParseBatchOptions({"--quiet", "p.txt"});
    EXPECT_TRUE(o.Quiet);
    EXPECT_FALSE(o.ReportFile.has_value());
    EXPECT_EQ(o.Tokens, std::vector<std::string>{"p.txt"});
    EXPECT_TRUE(o.Error.empty());
    EXPECT_FALSE(ParseBatchOptions({"p.txt"}).Quiet);
}

TEST(ParseBatchOptions, ReportFileInBothSpellings) {
    BatchOptions o = ParseBatchOptions({"--report", "out/report.txt", "p.txt"});
    ASSERT_TRUE(o.ReportFile.has_value()) << o.Error;
    EXPECT_EQ(*o.ReportFile, "out/report.txt");
    EXPECT_EQ(o.Tokens, std::vector<std::string>{"p.txt"});
    o = ParseBatchOptions({"--report=r.txt"});
    ASSERT_TRUE(o.ReportFile.has_value()) << o.Error;
    EXPECT_EQ(*o.ReportFile, "r.txt");
    EXPECT_TRUE(o.Tokens.empty());
}

TEST(ParseBatchOptions, ReportWithoutAFileIsAnError) {
    EXPECT_EQ(ParseBatchOptions({"--report"}).Error, "--report needs a value: a file");
    EXPECT_EQ(ParseBatchOptions({"--report=", "p.txt"}).Error,
              "--report takes a file name, not ''");
}

TEST(OutlinesOf, AQuietRunLeavesThemUnreadAJournalReadsThemFirstTheRestBesideThePlacement) {
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"p.txt"})), OutlineFiles::Beside);
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"--report", "r.txt", "p.txt"})), OutlineFiles::Beside);
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"--quiet", "p.txt"})), OutlineFiles::Unread);
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"--quiet", "--picture", "pic.pdf", "p.txt"})),
              OutlineFiles::Beside);
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"--quiet", "--replay", "j.journal", "p.txt"})),
              OutlineFiles::Read);
    EXPECT_EQ(OutlinesOf(ParseBatchOptions({"--replay", "j.journal", "p.txt"})),
              OutlineFiles::Read);
}

TEST(ParseBatchOptions, QuietAndReportTogetherAreAnError) {
    EXPECT_EQ(ParseBatchOptions({"--quiet", "--report", "r.txt"}).Error,
              "--quiet and --report exclude each other");
    EXPECT_EQ(ParseBatchOptions({"--report=r.txt", "p.txt", "--quiet"}).Error,
              "--quiet and --report exclude each other");
}

TEST(BatchUsage, NamesQuietAndReportAndWhatThePicturesHold) {
    const std::string usage = BatchUsage();
    EXPECT_NE(usage.find("[--quiet | --report FILE]"), std::string::npos) << usage;
    EXPECT_NE(usage.find("sort sheet"), std::string::npos) << usage;
    EXPECT_NE(usage.find("page per pallet that holds stacks"), std::string::npos) << usage;
    EXPECT_NE(usage.find("summary pages"), std::string::npos) << usage;
    EXPECT_NE(usage.find("the listing"), std::string::npos) << usage;
}

TEST(RunBatch, MissingSettingsFileEndsWith9001) {
    TempFolder folder;
    MiniInstallation inst;
    inst.Write(folder.Path());
    std::filesystem::remove(folder / "Kesto.ini");
    EXPECT_EQ(RunJob(folder, Tokens(folder), OkCancel::Ok), 9001);
}

TEST(RunBatch, MissingPalletFileEndsWith9020) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    EXPECT_EQ(RunJob(folder, {folder / "pallet/none.txt", "0", "0", "0", "0", "1"}, OkCancel::Ok),
              9020);
    EXPECT_EQ(RunJob(folder, {}, OkCancel::Ok), 9020);
}

TEST(RunBatch, MissingJobFileEndsWith9010) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    std::filesystem::remove(folder / "job/job.txt");
    EXPECT_EQ(RunJob(folder, Tokens(folder), OkCancel::Ok), 9010);
}

TEST(RunBatch, CompleteJobWritesResultSideAndSaveFiles) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    std::string report;
    ASSERT_EQ(RunJob(folder, Tokens(folder), OkCancel::Ok, &report), 0) << report;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv_tmp"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/haichi.csv"));
    EXPECT_NE(report.find("Parts short: none"), std::string::npos) << report;
    EXPECT_NE(report.find("result file " + NormalizeSeparators(folder / "out/result.csv")),
              std::string::npos)
        << report;
}

TEST(RunBatch, CancelAnswerEndsACompleteJobWith100AfterWritingTheFiles) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    std::string report;
    ASSERT_EQ(RunJob(folder, Tokens(folder), OkCancel::Cancel, &report), 100) << report;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/haichi.csv"));
}

// As the window does: the check's message, then Cancel writes the state of that moment (no
// part placed yet, so none is short and the result file is written). The placement then goes
// on, but its restore reads the save file just written, whose lines of unplaced parts carry
// block index -1, so it fails before placing (no message 8). Plate is larger than Bracket in
// the same group, so it comes first.
TEST(RunBatch, JobCheckFailureEndsWith100AfterWritingTheUnplacedJob) {
    TempFolder folder;
    MiniInstallation inst;
    inst.Pallets = "P1,OTHER,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,x\n";
    inst.Write(folder.Path());
    std::string report;
    EXPECT_EQ(RunJob(folder, Tokens(folder), OkCancel::Ok, &report), 100);
    EXPECT_NE(report.find("message 001"), std::string::npos) << report;
    EXPECT_EQ(report.find("message 008"), std::string::npos) << report;
    EXPECT_EQ(
        test::ReadLines(folder / "out/result.csv_tmp"),
        (std::vector<std::string>{"0002,1,Plate,0,3", "0001,1,Bracket,0,8", "0003,1,Clip,0,20"}));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/haichi.csv"));
}

// One cell on one pallet, and a stack height limit of five pieces: one stack of 5 of 7.
MiniInstallation ShortPartInstallation() {
    MiniInstallation inst;
    inst.Settings.replace(inst.Settings.find("PalletInfo=2"), 12, "PalletInfo=1");
    inst.Pallets = "P1,PAL-A,0,0,1000,800,500,10,10,300,200,10,10,1,1,5,5,Pallet A\n";
    inst.Job =
        "#BoxInfo\nPAL,0,1,0,2000,0,2000\n#End\n"
        "#KouteiInfo\n1,CUT,PAL-A\n#End\n"
        "#PartsInfo\n"
        "A001,1,Block,BLK-1,290,190,1,7,0,0,0,,,2,G01,0000,,0,,K001,100\n"
        "#End\n";
    return inst;
}

TEST(RunBatch, ShortPartsAnsweredWithCancelEndWith100WithoutResultFile) {
    TempFolder folder;
    ShortPartInstallation().Write(folder.Path());
    EXPECT_EQ(RunJob(folder, Tokens(folder), OkCancel::Cancel), 100);
    EXPECT_FALSE(std::filesystem::exists(folder / "out/result.csv"));
}

// The report is worked out while the files are written; the question those ask still comes
// after the report's parts short and before the files it names.
TEST(RunBatch, QuestionOfTheFilesComesBetweenTheReportAndItsFiles) {
    TempFolder folder;
    ShortPartInstallation().Write(folder.Path());
    std::string report;
    ASSERT_EQ(RunJob(folder, Tokens(folder), OkCancel::Ok, &report), 0) << report;
    const size_t shortParts = report.find("placed 5 of 7");
    const size_t question = report.find("kesto: message 208");
    const size_t files = report.find("Files:\n");
    ASSERT_NE(shortParts, std::string::npos) << report;
    ASSERT_NE(question, std::string::npos) << report;
    ASSERT_NE(files, std::string::npos) << report;
    EXPECT_LT(shortParts, question) << report;
    EXPECT_LT(question, files) << report;
}

TEST(RunBatch, QuietWritesNothingOnOutButTheMessagesAndTheFiles) {
    TempFolder folder;
    MiniInstallation inst;
    inst.Pallets = "P1,OTHER,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,x\n";
    inst.Write(folder.Path());
    BatchOptions options;
    options.Quiet = true;
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, 100);
    EXPECT_EQ(s.Out, "");
    EXPECT_NE(s.Err.find("message 001"), std::string::npos) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/haichi.csv"));
}

// The job names a readable, a missing and an unopenable outline: a quiet run, which reads none
// of them, writes what a run with the report writes.
TEST(RunBatch, QuietWritesTheFilesOfARunThatReadsTheOutlines) {
    auto run = [](bool quiet) {
        TempFolder folder;
        MiniInstallation inst;
        const std::string shapes = folder / "shape";
        std::string& job = inst.Job;
        job.replace(job.find("0000,,0,,K001"), 13, "0000," + shapes + "/a.txt,1,,K001");
        job.replace(job.find("0000,,0,,K002"), 13, "0000," + shapes + "/none.txt,1,,K002");
        job.replace(job.find("0000,,0,,K003"), 13, "0000," + shapes + "/c.sock,1,,K003");
        inst.Others.emplace_back("shape/a.txt", "Line 0 0 0 0 0 0 250 150\n");
        inst.Write(folder.Path());
        test::MakeUnopenable(shapes + "/c.sock");
        BatchOptions options;
        options.Quiet = quiet;
        const Streams s = RunWith(folder, options);
        return std::vector<std::string>{std::to_string(s.Code), s.Err,
                                        test::ReadFile(folder / "out/result.csv"),
                                        test::ReadFile(folder / "out/haichi.csv")};
    };
    const std::vector<std::string> plain = run(false);
    EXPECT_EQ(plain[0], "0") << plain[1];
    EXPECT_FALSE(plain[3].empty());
    EXPECT_EQ(run(true), plain);
}

TEST(RunBatch, ReportFileHoldsWhatOutWouldHaveHeld) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    const Streams plain = RunWith(folder, {});
    ASSERT_EQ(plain.Code, 0) << plain.Err;
    BatchOptions options;
    options.ReportFile = folder / "report.txt";
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, 0) << s.Err;
    EXPECT_EQ(s.Out, "");
    EXPECT_EQ(s.Err, plain.Err);
    // Written in text mode, as stdout is: CR LF on Windows.
    EXPECT_EQ(test::ReadFile(folder / "report.txt"), test::TextModeBytes(plain.Out));
    EXPECT_NE(plain.Out.find("Parts short: none"), std::string::npos) << plain.Out;
}

// The report file is written last: named as the save file, it is what that file holds after
// the run.
TEST(RunBatch, ReportFileIsWrittenAfterTheResultFiles) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    BatchOptions options;
    options.ReportFile = folder / "out/haichi.csv";
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, 0) << s.Err;
    const std::string saved = test::ReadFile(folder / "out/haichi.csv");
    EXPECT_EQ(saved.rfind("Pallets: ", 0), 0u) << saved;
    EXPECT_NE(saved.find("save file   "), std::string::npos) << saved;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
}

TEST(RunBatch, AReportFileThatCannotBeWrittenEndsWith2AndKeepsTheResultFiles) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    BatchOptions options;
    options.ReportFile = folder / "no-such-folder/report.txt";
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_EQ(s.Out, "");
    EXPECT_NE(s.Err.find("kesto-batch: report not written: cannot open " +
                         (folder / "no-such-folder/report.txt")),
              std::string::npos)
        << s.Err;
    EXPECT_NE(s.Err.find("(the job itself ended with exit code 0)"), std::string::npos) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/haichi.csv"));
    EXPECT_FALSE(std::filesystem::exists(folder / "no-such-folder"));
}

TEST(RunBatch, AReportFileThatIsAFolderEndsWith2AndKeepsTheResultFiles) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    std::filesystem::create_directories(folder / "report");
    BatchOptions options;
    options.ReportFile = folder / "report";
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_NE(s.Err.find("report not written"), std::string::npos) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
}

#ifndef _WIN32
TEST(RunBatch, AReportFileOnAFullDiskEndsWith2) {
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here";
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    BatchOptions options;
    options.ReportFile = "/dev/full";
    const Streams s = RunWith(folder, options);
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_NE(s.Err.find("report not written: cannot write /dev/full"), std::string::npos) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
}
#endif

// The program as a host starts it: the options' exit codes reach the host.
TEST(BatchProcess, QuietPrintsOnlyTheMessagesAndBadOptionsEndWith2) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    const std::filesystem::path log = folder / "log.txt";
    EXPECT_EQ(
        test::RunBatchProcess(folder.Path(), "ok", "--quiet pallet/pallets.txt 0 0 0 0 1", log), 0);
    EXPECT_EQ(test::ReadFile(log), "");
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_EQ(test::RunBatchProcess(folder.Path(), "ok",
                                    "--quiet --report r.txt pallet/pallets.txt 0 0 0 0 1", log),
              kExitBadUsage);
    EXPECT_NE(test::ReadFile(log).find(
                  test::TextModeBytes("--quiet and --report exclude each other\nusage:")),
              std::string::npos)
        << test::ReadFile(log);
    EXPECT_FALSE(std::filesystem::exists(folder / "r.txt"));
}

TEST(BatchProcess, AReportFileThatCannotBeWrittenEndsWith2) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    std::filesystem::remove_all(folder / "out");
    std::filesystem::create_directories(folder / "out");
    const std::filesystem::path log = folder / "log.txt";
    EXPECT_EQ(
        test::RunBatchProcess(folder.Path(), "ok",
                              "--report missing/report.txt pallet/pallets.txt 0 0 0 0 1", log),
        kExitBadUsage);
    EXPECT_NE(test::ReadFile(log).find("report not written: cannot open missing/report.txt"),
              std::string::npos)
        << test::ReadFile(log);
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
}

#ifdef _WIN32
TEST(RunBatch, ResultFileHeldOpenByAnotherProgramEndsWith100And9022KeepingTheOldFile) {
    TempFolder folder;
    MiniInstallation().Write(folder.Path());
    test::WriteFile(folder / "out/result.csv", "old result\n");
    // Another program shows the file and shares neither writing nor deleting.
    const HANDLE other =
        CreateFileA((folder / "out/result.csv").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    std::string report;
    const int code = RunJob(folder, Tokens(folder), OkCancel::Ok, &report);
    CloseHandle(other);
    EXPECT_EQ(code, 100) << report;
    EXPECT_NE(report.find("The result files were not written (error code 9022)"), std::string::npos)
        << report;
    EXPECT_EQ(test::ReadFile(folder / "out/result.csv"), "old result\n");
    for (const auto& entry : std::filesystem::directory_iterator(folder / "out"))
        EXPECT_EQ(entry.path().filename().string().find(".kesto-"), std::string::npos)
            << entry.path();
}
#endif

// --- --replay ---------------------------------------------------------------------------

TEST(ParseBatchOptions, ReplayInBothSpellingsWithOrWithoutAnyJob) {
    BatchOptions o = ParseBatchOptions({"--replay", "j.journal", "p.txt"});
    ASSERT_TRUE(o.Replay.has_value()) << o.Error;
    EXPECT_EQ(o.Replay->File, "j.journal");
    EXPECT_FALSE(o.Replay->AnyJob);
    EXPECT_EQ(o.Tokens, std::vector<std::string>{"p.txt"});
    o = ParseBatchOptions({"--replay-any", "--replay=k.journal"});
    ASSERT_TRUE(o.Replay.has_value()) << o.Error;
    EXPECT_EQ(o.Replay->File, "k.journal");
    EXPECT_TRUE(o.Replay->AnyJob);
    EXPECT_FALSE(ParseBatchOptions({"p.txt"}).Replay.has_value());
}

TEST(ParseBatchOptions, ReplayWithoutAFileAndReplayAnyAloneAreErrors) {
    EXPECT_EQ(ParseBatchOptions({"--replay"}).Error, "--replay needs a value: a journal file");
    EXPECT_EQ(ParseBatchOptions({"--replay="}).Error, "--replay takes a journal file, not ''");
    EXPECT_EQ(ParseBatchOptions({"--replay-any", "p.txt"}).Error, "--replay-any needs --replay");
}

TEST(BatchUsage, NamesReplayAndHowItEnds) {
    const std::string usage = BatchUsage();
    EXPECT_NE(usage.find("[--replay JOURNAL [--replay-any]]"), std::string::npos) << usage;
    EXPECT_NE(usage.find("without an end line as --answer says"), std::string::npos) << usage;
}

class BatchReplayRun : public ::testing::Test {
  protected:
    BatchReplayRun() { MiniInstallation().Write(folder.Path()); }

    // The identity the window gives the job of Tokens(folder).
    std::string ThisJob() {
        MessageTable messages;
        test::RecordingOperator op;
        test::MemoryHostStore store(folder.Path().string());
        ViewState shown;
        std::vector<std::string> words{"kesto"};
        const std::vector<std::string> tokens = Tokens(folder);
        words.insert(words.end(), tokens.begin(), tokens.end());
        JobSession session(Services{op, store, messages}, JoinCommandLine(words), shown);
        EXPECT_TRUE(session.StartUp());
        return JobIdentityOf(session);
    }
    // Runs the job with the journal of these commands (for job, this job's when empty).
    Streams Replay(const std::vector<std::string>& commands, OkCancel answer = OkCancel::Ok,
                   std::string job = "", bool anyJob = false) {
        const std::string journal = folder / "replayed.journal";
        test::WriteFile(journal, test::JournalText(job.empty() ? ThisJob() : job, commands));
        BatchOptions options;
        options.Tokens = Tokens(folder);
        options.Answer = answer;
        options.Replay = ReplayRequest{.File = journal, .AnyJob = anyJob};
        options.ReportFile = report;
        std::ostringstream out;
        std::ostringstream err;
        Streams s;
        s.Code = RunBatch("kesto-batch", options, out, err, host);
        s.Out = out.str();
        s.Err = err.str();
        return s;
    }
    bool WroteNothing() const {
        return !std::filesystem::exists(folder / "out/result.csv") &&
               !std::filesystem::exists(folder / "out/result.csv_tmp") &&
               !std::filesystem::exists(folder / "out/haichi.csv") && host.UserValues.empty() &&
               (!report || !std::filesystem::exists(*report));
    }

    TempFolder folder;
    test::MemoryHostStore host{folder.Path().string()};
    std::optional<std::string> report;
};

TEST_F(BatchReplayRun, TheJobsOwnJournalIsCarriedOutAndEndsAsItsEndLine) {
    report = folder / "report.txt";
    const Streams s = Replay({"view danmen", "ok"}, OkCancel::Cancel);
    EXPECT_EQ(s.Code, 0) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
    EXPECT_NE(test::ReadFile(*report).find("Replayed: 1 commands of "), std::string::npos);
}

TEST_F(BatchReplayRun, ACancelLineEndsTheJobAsCancelWhateverTheAnswer) {
    EXPECT_EQ(Replay({"cancel"}, OkCancel::Ok).Code, 100);
}

TEST_F(BatchReplayRun, WithoutAnEndLineTheAnswerEndsTheJob) {
    EXPECT_EQ(Replay({"view danmen"}, OkCancel::Cancel).Code, 100);
    EXPECT_EQ(Replay({"view danmen"}, OkCancel::Ok).Code, 0);
}

TEST_F(BatchReplayRun, AJournalOfAnotherJobEndsWith2AndWritesNothing) {
    report = folder / "report.txt";
    const std::string other(64, '0');
    const Streams s = Replay({"ok"}, OkCancel::Ok, other);
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_TRUE(WroteNothing());
    EXPECT_NE(s.Err.find("written for another job (job " + other + "), not for this one (job " +
                         ThisJob() + "); nothing written. --replay-any replays it all the same"),
              std::string::npos)
        << s.Err;
}

TEST_F(BatchReplayRun, ReplayAnyCarriesOutAJournalOfAnyJob) {
    const Streams s = Replay({"ok"}, OkCancel::Cancel, std::string(64, '0'), true);
    EXPECT_EQ(s.Code, 0) << s.Err;
    EXPECT_TRUE(std::filesystem::exists(folder / "out/result.csv"));
}

TEST_F(BatchReplayRun, AMalformedLineIsToldWithItsNumberAndNothingIsWritten) {
    report = folder / "report.txt";
    const Streams s = Replay({"view danmen", "left x", "ok"});
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_TRUE(WroteNothing());
    EXPECT_NE(s.Err.find("replayed.journal: line 4: "), std::string::npos) << s.Err;
    EXPECT_NE(s.Err.find("; nothing written"), std::string::npos) << s.Err;
}

TEST_F(BatchReplayRun, AStackBeyondTheListIsToldWithItsNumberAndNothingIsWritten) {
    const Streams s = Replay({"left 99", "ok"});
    EXPECT_EQ(s.Code, kExitBadUsage);
    EXPECT_TRUE(WroteNothing());
    EXPECT_NE(s.Err.find("line 3: no stack at place 99; nothing written"), std::string::npos)
        << s.Err;
}

TEST_F(BatchReplayRun, AnUnknownCommandIsSkippedAndTold) {
    const Streams s = Replay({"zoom 2", "ok"});
    EXPECT_EQ(s.Code, 0) << s.Err;
    EXPECT_NE(s.Err.find("replayed.journal: line 3: unknown command zoom, skipped"),
              std::string::npos)
        << s.Err;
}

// A window killed while it wrote a line leaves it without its line end: what came before is
// carried out, and the job ends as --answer says.
TEST_F(BatchReplayRun, ALastLineCutShortIsPassedOverAndTheJobEndsAsAnswered) {
    const std::filesystem::path journal = folder / "replayed.journal";
    test::WriteFile(journal,
                    test::JournalText(ThisJob(), {"left 0"}) + "2026-11-26T10:00:01.000 ok");
    BatchOptions options;
    options.Tokens = Tokens(folder);
    options.Answer = OkCancel::Cancel;
    options.Replay = ReplayRequest{.File = journal.string()};
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunBatch("kesto-batch", options, out, err, host), 100) << err.str();
    EXPECT_NE(err.str().find("line 4: the last line has no line end: its write was cut short, "
                             "skipped"),
              std::string::npos)
        << err.str();
    EXPECT_EQ(test::ReadLines(folder / "out/result.csv_tmp").front(), "0002,1,Plate,0,3");
}

TEST_F(BatchReplayRun, AJournalThatCannotBeReadEndsWith2BeforeTheJobRuns) {
    BatchOptions options;
    options.Tokens = Tokens(folder);
    options.Replay = ReplayRequest{.File = folder / "none.journal"};
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunBatch("kesto-batch", options, out, err, host), kExitBadUsage);
    EXPECT_EQ(out.str(), "");
    EXPECT_NE(err.str().find("none.journal: "), std::string::npos) << err.str();
    EXPECT_TRUE(WroteNothing());
}

// Plate, the larger part of the group, is placed first: its stack is place 0. Set aside, it
// is written as a part with nothing placed (its number in place of its code), the result is
// incomplete (message 208, answered OK) and the job ends with OK.
TEST_F(BatchReplayRun, ASetAsideStackIsWrittenAsNotPlacedAsInTheWindow) {
    const Streams plain = Replay({});
    ASSERT_EQ(plain.Code, 0) << plain.Err;
    std::vector<std::string> lines = test::ReadLines(folder / "out/result.csv_tmp");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "A002,1,Plate,1,3");
    const Streams s = Replay({"left 0", "ok"});
    EXPECT_EQ(s.Code, 0) << s.Err;
    EXPECT_NE(s.Err.find("message 208"), std::string::npos) << s.Err;
    lines[0] = "0002,1,Plate,0,3";
    EXPECT_EQ(test::ReadLines(folder / "out/result.csv_tmp"), lines);
}

}  // namespace
}  // namespace kesto
