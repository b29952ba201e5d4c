// What kesto-batch --replay tells of a journal; the runs themselves are in BatchRun_test.
#include "cli/BatchReplay.h"

#include <gtest/gtest.h>

#include <sstream>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "common/TestFiles.h"

namespace kesto::test {
namespace {

TEST(ReadReplayJournal, AMissingFileIsToldWithItsPathAndNothingRuns) {
    TempFolder folder;
    std::ostringstream err;
    const std::string path = folder / "none.journal";
    EXPECT_FALSE(ReadReplayJournal({.File = path}, err).has_value());
    EXPECT_EQ(err.str().rfind("kesto-batch: journal " + path + ": ", 0), 0u) << err.str();
    EXPECT_TRUE(err.str().ends_with("; nothing run\n")) << err.str();
}

TEST(ReadReplayJournal, AFileThatIsNoJournalIsToldWithWhy) {
    TempFolder folder;
    const std::string path = folder / "notes.txt";
    WriteFile(path, "shopping list\n");
    std::ostringstream err;
    EXPECT_FALSE(ReadReplayJournal({.File = path}, err).has_value());
    EXPECT_NE(err.str().find("not a journal"), std::string::npos) << err.str();
}

TEST(ReadReplayJournal, AJournalIsReadWithItsJobAndLines) {
    TempFolder folder;
    const std::string path = folder / "a.journal";
    const std::string job(64, 'c');
    WriteFile(path, JournalText(job, {"view danmen", "ok"}));
    std::ostringstream err;
    const std::optional<JournalFile> journal = ReadReplayJournal({.File = path}, err);
    ASSERT_TRUE(journal.has_value()) << err.str();
    EXPECT_EQ(journal->Job, job);
    EXPECT_EQ(journal->Lines.size(), 2u);
    EXPECT_EQ(err.str(), "");
}

class BatchReplayTest : public TwoPartsTest {
  protected:
    BatchReplayed Replay(const std::vector<std::string>& commands) {
        return ReplayOnBatch(request, ReadJournal(JournalText(std::string(64, 'a'), commands)),
                             session, relay, answers, err);
    }

    ReplayRequest request{.File = "shift.journal"};
    RecordingOperator answers;
    OperatorRelay relay{testServices.Op};
    std::ostringstream err;
};

TEST_F(BatchReplayTest, AJournalOfAnyJobFitsWhenAnyJobIsAsked) {
    request.AnyJob = true;
    EXPECT_TRUE(
        JournalFitsJob(request, ReadJournal(JournalText(std::string(64, '0'), {})), session, err));
    EXPECT_EQ(err.str(), "");
}

TEST_F(BatchReplayTest, CommandsAreCountedAndTheEndLineIsGivenBack) {
    const BatchReplayed replayed = Replay({"view danmen", "left 0", "cancel", "view flat"});
    EXPECT_TRUE(replayed.Ok);
    EXPECT_EQ(replayed.Commands, 2);
    EXPECT_EQ(replayed.End, OkCancel::Cancel);
    EXPECT_EQ(partA.PiecesSetAside, 3);
    EXPECT_EQ(err.str(), "");
}

TEST_F(BatchReplayTest, SkippedLinesAndTheBadLineAreToldWithTheJournalsName) {
    const BatchReplayed replayed = Replay({"zoom 2", "left 9"});
    EXPECT_FALSE(replayed.Ok);
    EXPECT_EQ(err.str(),
              "kesto-batch: journal shift.journal: line 3: unknown command zoom, skipped\n"
              "kesto-batch: journal shift.journal: line 4: no stack at place 9; nothing "
              "written\n");
}

}  // namespace
}  // namespace kesto::test
