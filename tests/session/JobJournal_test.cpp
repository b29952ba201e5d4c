// The journal of one job in the state folder: the job's identity from its inputs, what an
// earlier run left, and the writing of the commands.
#include "session/JobJournal.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "common/TestFiles.h"
#include "common/TestInstallation.h"
#include "common/TestServices.h"

namespace kesto::test {
namespace {

namespace fs = std::filesystem;

std::string IdentityOf(const TestInstallation& install, const std::string& offsets = "0 0") {
    TestServices svc(install.Root().string());
    ViewState shown;
    JobSession session(svc.Get(), install.CommandLine(offsets), shown);
    EXPECT_TRUE(session.StartUp());
    return JobIdentityOf(session);
}

TEST(JobIdentityOf, TheSameInputsGiveTheSameIdentityOf64HexDigits) {
    TestInstallation install;
    const std::string first = IdentityOf(install);
    EXPECT_TRUE(IsJobHex(first));
    EXPECT_EQ(IdentityOf(install), first);
}

TEST(JobIdentityOf, AnotherByteInAnyInputOrAnotherValueGivesAnotherIdentity) {
    TestInstallation install;
    const std::string first = IdentityOf(install);
    EXPECT_NE(IdentityOf(install, "0 1"), first);
    install.Write("job/job.txt", install.Read("job/job.txt") + "\n");
    const std::string changedJob = IdentityOf(install);
    EXPECT_NE(changedJob, first);
    // The placement save file counts once there is one.
    install.Write("out/haichi.csv", "x\n");
    EXPECT_NE(IdentityOf(install), changedJob);
}

class JobJournalTest : public ::testing::Test {
  protected:
    static constexpr const char* kHex =
        "00112233445566778899aabbccddeeff00112233445566778899aabbccddeeff";
    std::string Path() const { return JournalPath(state.Path().string(), kHex); }
    void WriteJournal(const std::string& commands) {
        WriteFile(fs::path(Path()), JournalHeader(kHex) + commands);
    }

    TempFolder state;
};

TEST_F(JobJournalTest, WritesEachCommandWithItsTimeAfterTheHeader) {
    JobJournal journal(state.Path().string(), kHex);
    ASSERT_TRUE(journal.Open());
    journal.Write({.Verb = JournalVerb::Process, .Value = 2});
    journal.Write({.Verb = JournalVerb::Undo});
    const JournalFile read = ReadJournalFile(Path());
    ASSERT_TRUE(read.Error.empty()) << read.Error;
    EXPECT_EQ(read.Job, kHex);
    ASSERT_EQ(read.Lines.size(), 2u);
    EXPECT_EQ(read.Lines[0].second.Command,
              (JournalCommand{.Verb = JournalVerb::Process, .Value = 2}));
    EXPECT_EQ(read.Lines[1].second.Command.Verb, JournalVerb::Undo);
    EXPECT_EQ(read.Lines[0].second.Time.size(), 23u);
}

TEST_F(JobJournalTest, AnUnfinishedJournalIsFoundWithItsCorrectionsAndLastTime) {
    WriteJournal(
        "2026-11-26T10:00:00.000 view danmen\n2026-11-26T10:04:00.000 left 0\n"
        "2026-11-26T10:05:00.500 grid 0\n");
    JobJournal journal(state.Path().string(), kHex);
    const std::optional<UnfinishedJournal> found = journal.Unfinished();
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->Corrections, 1);
    EXPECT_EQ(found->LastTime, "2026-11-26T10:05:00.500");
}

TEST_F(JobJournalTest, AJournalOfViewsAloneIsNothingToOfferBack) {
    WriteJournal("2026-11-26T10:00:00.000 view danmen\n2026-11-26T10:05:00.500 grid 0\n");
    JobJournal journal(state.Path().string(), kHex);
    EXPECT_FALSE(journal.Unfinished().has_value());
}

TEST_F(JobJournalTest, AnEndedEmptyOrMissingJournalIsNothingToRecover) {
    JobJournal journal(state.Path().string(), kHex);
    EXPECT_FALSE(journal.Unfinished().has_value());
    WriteJournal("");
    EXPECT_FALSE(journal.Unfinished().has_value());
    WriteJournal("2026-11-26T10:00:00.000 left 0\n2026-11-26T10:00:01.000 ok\n");
    EXPECT_FALSE(journal.Unfinished().has_value());
}

TEST_F(JobJournalTest, AnotherJobsJournalIsNeverOffered) {
    WriteFile(fs::path(Path()),
              JournalHeader(std::string(64, 'f')) + "2026-11-26T10:00:00.000 left 0\n");
    JobJournal journal(state.Path().string(), kHex);
    EXPECT_FALSE(journal.Unfinished().has_value());
}

TEST_F(JobJournalTest, GoingOnAfterARecoveryAppendsToTheSameJournal) {
    WriteJournal("2026-11-26T10:00:00.000 left 0\n");
    JobJournal journal(state.Path().string(), kHex);
    ASSERT_TRUE(journal.Open());
    journal.Write({.Verb = JournalVerb::Redo});
    const JournalFile read = ReadJournalFile(Path());
    ASSERT_EQ(read.Lines.size(), 2u);
    EXPECT_EQ(read.Lines[0].second.Command.Verb, JournalVerb::Left);
    EXPECT_EQ(read.Lines[1].second.Command.Verb, JournalVerb::Redo);
}

TEST_F(JobJournalTest, DiscardingKeepsTheOldJournalAsideAndStartsANewOne) {
    WriteJournal("2026-11-26T10:00:00.000 left 0\n");
    JobJournal journal(state.Path().string(), kHex);
    journal.Discard();
    EXPECT_TRUE(fs::exists(Path() + ".discarded"));
    ASSERT_TRUE(journal.Open());
    EXPECT_TRUE(ReadJournalFile(Path()).Lines.empty());
}

TEST_F(JobJournalTest, TheSameJobStartedAfterItEndedGetsAJournalOfItsOwn) {
    WriteJournal("2026-11-26T10:00:00.000 left 0\n2026-11-26T10:00:01.000 ok\n");
    JobJournal journal(state.Path().string(), kHex);
    ASSERT_TRUE(journal.Open());
    journal.Write({.Verb = JournalVerb::Undo});
    const std::string stem = Path().substr(0, Path().size() - 8);
    EXPECT_EQ(ReadJournalFile(stem + ".1.journal").End, JournalVerb::Ok);
    ASSERT_EQ(ReadJournalFile(Path()).Lines.size(), 1u);
}

TEST_F(JobJournalTest, AJournalThatCannotBeWrittenIsToldOnceAndTheCommandsGoOn) {
    // A file where the journal's folder should be.
    WriteFile(state.Path() / "journal", "not a folder");
    JobJournal journal(state.Path().string(), kHex);
    int told = 0;
    journal.OnFailure([&](const std::string&) { ++told; });
    EXPECT_FALSE(journal.Open());
    journal.Write({.Verb = JournalVerb::Undo});
    journal.Write({.Verb = JournalVerb::Redo});
    EXPECT_EQ(told, 1);
}

TEST_F(JobJournalTest, NoStateFolderMeansNoJournalAndIsToldOnce) {
    JobJournal journal("", kHex);
    int told = 0;
    journal.OnFailure([&](const std::string&) { ++told; });
    EXPECT_FALSE(journal.Unfinished().has_value());
    EXPECT_FALSE(journal.Open());
    journal.Write({.Verb = JournalVerb::Undo});
    EXPECT_EQ(told, 1);
}

TEST(RecoveryQuestion, FillsInTheTimeToTheSecondAndTheCommandsInEnglishWithoutAMessageFile) {
    MessageTable messages;
    UnfinishedJournal found;
    found.Corrections = 12;
    found.LastTime = "2026-11-26T10:05:00.500";
    EXPECT_EQ(RecoveryQuestion(messages, found),
              "Kesto ended while this job was open, at 2026-11-26 10:05:00, after 12 corrections. "
              "Restore them?");
}

TEST(RecoveryQuestion, TakesTheMessageFilesWordsWithEveryMarkFilledIn) {
    TempFolder folder;
    WriteFile(folder / "Kesto.ini", "[MainDlg]\nM-RECOVER=3,\"{n} at {time}, {n}\"\n");
    MessageTable messages;
    RecordingOperator op;
    ASSERT_EQ(messages.Load(folder / "Kesto.ini", op), 0);
    UnfinishedJournal found;
    found.Corrections = 3;
    found.LastTime = "2026-11-26T10:05:00.500";
    EXPECT_EQ(RecoveryQuestion(messages, found), "3 at 2026-11-26 10:05:00, 3");
}

TEST(NoJournalText, NamesTheFileThatCannotBeWritten) {
    MessageTable messages;
    EXPECT_EQ(NoJournalText(messages, "/x/j.journal"),
              "The corrections are not journaled: /x/j.journal cannot be written.");
}

}  // namespace
}  // namespace kesto::test
