// The journal on the disk: the writer's file, line by line and after a stop midway, and the
// housekeeping of the journal folder.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "common/OutputTestKit.h"
#include "common/TestFiles.h"
#include "history/Journal.h"
#include "support/Paths.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::TempFolder;
using test::WriteFile;

const std::string kJob = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef";
const std::string kOtherJob = std::string(64, 'e');
const std::string kTime = "2024-05-06T07:08:09.010";
const std::string kHeader = "kesto-journal 1\njob " + kJob + "\n";

// The journal lines of commands, each at kTime.
std::string Lines(std::initializer_list<std::string> commands) {
    std::string text;
    for (const std::string& command : commands)
        text += kTime + " " + command + "\n";
    return text;
}

TEST(JournalWriter, MakesTheFoldersAndWritesTheHeaderOfANewJournal) {
    TempFolder folder;
    const std::string path = JournalPath(folder / "state/kesto", kJob);
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_EQ(ReadFile(path), kHeader);
    EXPECT_TRUE(writer.Append(
        JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Process, .Value = 2}))));
    EXPECT_TRUE(writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Ok}))));
    EXPECT_FALSE(writer.Failed());
    // Each line is in the file when Append returns.
    EXPECT_EQ(ReadFile(path), kHeader + Lines({"process 2", "ok"}));
    writer.Close();
    EXPECT_FALSE(writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Ok}))));
    EXPECT_EQ(ReadJournalFile(path).End, JournalVerb::Ok);
}

TEST(JournalWriter, AppendsToTheJournalOfTheSameJob) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    {
        JournalWriter first;
        ASSERT_TRUE(first.Open(path, kJob));
        ASSERT_TRUE(first.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Retry}))));
    }
    JournalWriter again;
    ASSERT_TRUE(again.Open(path, kJob));
    ASSERT_TRUE(again.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Auto}))));
    EXPECT_EQ(ReadFile(path), kHeader + Lines({"retry", "auto"}));
}

TEST(JournalWriter, EmptyFileGetsTheHeader) {
    TempFolder folder;
    WriteFile(folder / "j.journal", "");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader);
}

TEST(JournalWriter, JournalOfAnotherJobOrNoJournalIsLeftAlone) {
    TempFolder folder;
    const std::string other = JournalHeader(kOtherJob) + Lines({"retry"});
    WriteFile(folder / "other.journal", other);
    WriteFile(folder / "text.journal", "notes\n");
    WriteFile(folder / "crlf.journal", "kesto-journal 1\r\njob " + kOtherJob + "\r\n");
    WriteFile(folder / "cut.journal", JournalHeader(kOtherJob).substr(0, 30));
    for (const char* name : {"other.journal", "text.journal", "crlf.journal", "cut.journal"}) {
        const std::string before = ReadFile(folder / name);
        JournalWriter writer;
        EXPECT_FALSE(writer.Open(folder / name, kJob)) << name;
        EXPECT_TRUE(writer.Failed());
        EXPECT_FALSE(writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Ok}))));
        EXPECT_EQ(ReadFile(folder / name), before) << name;
    }
}

TEST(JournalWriter, JournalWithCrLfHeaderIsAppendedTo) {
    TempFolder folder;
    WriteFile(folder / "j.journal", "kesto-journal 1\r\njob " + kJob + "\r\n");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    ASSERT_TRUE(writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Undo}))));
    EXPECT_EQ(ReadJournalFile(folder / "j.journal").Lines.size(), 1u);
}

TEST(JournalWriter, LineCutShortIsCutOffBeforeTheNextLine) {
    TempFolder folder;
    // "left 5" of "left 5 6": never read as a command, before or after the next line.
    WriteFile(folder / "j.journal", kHeader + Lines({"retry"}) + kTime + " left 5");
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"retry"}));
    ASSERT_TRUE(writer.Append(
        JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Left, .Stacks = {4}}))));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"retry", "left 4"}));
}

TEST(JournalWriter, HeaderCutShortIsWrittenAgain) {
    TempFolder folder;
    for (const size_t cut : {size_t{1}, size_t{16}, size_t{30}, kHeader.size() - 1}) {
        WriteFile(folder / "j.journal", kHeader.substr(0, cut));
        JournalWriter writer;
        ASSERT_TRUE(writer.Open(folder / "j.journal", kJob)) << cut;
        EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader) << cut;
    }
}

TEST(JournalWriter, FileWithoutALineEndNearItsEndIsLeftAlone) {
    TempFolder folder;
    const std::string text = kHeader + kTime + " left" + std::string(kJournalLineMax + 5, '1');
    WriteFile(folder / "j.journal", text);
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "j.journal", kJob));
    EXPECT_EQ(ReadFile(folder / "j.journal"), text);
}

TEST(JournalWriter, RefusesABadJobName) {
    TempFolder folder;
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "j.journal", "ABC"));
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(fs::exists(folder / "j.journal"));
}

TEST(JournalWriter, RefusesWhatIsNotOneLineAndFailsFromThenOn) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    for (const std::string& bad : std::vector<std::string>{
             std::string(), std::string("retry"), kTime + " retry\n" + kTime + " ok\n",
             kTime + " left" + std::string(kJournalLineMax, '1') + "\n"}) {
        JournalWriter writer;
        ASSERT_TRUE(writer.Open(path, kJob));
        EXPECT_FALSE(writer.Append(bad));
        EXPECT_TRUE(writer.Failed());
        EXPECT_FALSE(
            writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Retry}))));
        EXPECT_EQ(ReadFile(path), kHeader);
    }
}

TEST(JournalWriter, FailedWriteFailsEveryLaterAppendWithoutWriting) {
    KESTO_NEEDS_FILE_SIZE_LIMIT();
    TempFolder folder;
    const std::string path = folder / "j.journal";
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(path, kJob));
    const std::string line = JournalLine(kTime, JournalCommand{.Verb = JournalVerb::Retry});
    {
        // Room for the header and half a line, as a disk that fills up.
        test::FileSizeLimit limit(kHeader.size() + line.size() / 2);
        EXPECT_FALSE(writer.Append(line));
    }
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(writer.Append(line));
    // What the disk took stays a line cut short, never a command; the next open cuts it off.
    const JournalFile file = ReadJournalFile(path);
    ASSERT_EQ(file.Lines.size(), 1u);
    EXPECT_EQ(file.Lines[0].second.Kind, ParsedJournalLine::Kind::CutShort);
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_FALSE(writer.Failed());
    EXPECT_EQ(ReadFile(path), kHeader);
}

TEST(JournalWriter, OpenFailsWhereNoFileCanBeMade) {
    TempFolder folder;
    // Under a regular file no folder can be made, not even by the super-user.
    WriteFile(folder / "file", "x");
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(JournalPath(folder / "file", kJob), kJob));
    EXPECT_TRUE(writer.Failed());
    EXPECT_FALSE(writer.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Retry}))));
    EXPECT_EQ(ReadFile(folder / "file"), "x");
    // A folder in the place of the file.
    fs::create_directories(folder.Path() / "dir.journal");
    EXPECT_FALSE(writer.Open(folder / "dir.journal", kJob));
}

#ifndef _WIN32
TEST(JournalWriter, OpenFailsInAFolderThatCannotBeWritten) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "the super-user writes into read-only folders";
    TempFolder folder;
    fs::create_directories(folder.Path() / "locked");
    ASSERT_EQ(::chmod((folder / "locked").c_str(), 0500), 0);
    JournalWriter writer;
    EXPECT_FALSE(writer.Open(folder / "locked/j.journal", kJob));
    EXPECT_FALSE(writer.Open(folder / "locked/deeper/j.journal", kJob));
    ::chmod((folder / "locked").c_str(), 0700);
    EXPECT_FALSE(fs::exists(folder / "locked/j.journal"));
}

TEST(JournalWriter, JournalIsReadableByItsOwnerOnly) {
    TempFolder folder;
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(folder / "j.journal", kJob));
    struct stat status {};
    ASSERT_EQ(::stat((folder / "j.journal").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0u);
}
#endif

// Counts the appends it is told of, and what the file held at each.
class AppendCounter : public JournalWatcher {
  public:
    explicit AppendCounter(std::string path) : path_(std::move(path)) {}
    void Appended() override { Seen.push_back(ReadFile(path_)); }
    std::vector<std::string> Seen;

  private:
    std::string path_;
};

TEST(JournalWriter, WatcherIsToldOfEachLineOnceItIsInTheFileAndOfNoRefusedLine) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    AppendCounter counter(path);
    JournalWriter::Watch(&counter);
    JournalWriter writer;
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_TRUE(writer.Append(JournalLine(kTime, {.Verb = JournalVerb::Retry})));
    EXPECT_TRUE(writer.Append(JournalLine(kTime, {.Verb = JournalVerb::Process, .Value = 2})));
    EXPECT_FALSE(writer.Append("retry"));
    JournalWriter::Watch(nullptr);
    ASSERT_TRUE(writer.Open(path, kJob));
    EXPECT_TRUE(writer.Append(JournalLine(kTime, {.Verb = JournalVerb::Undo})));
    const std::vector<std::string> seen = {kHeader + Lines({"retry"}),
                                           kHeader + Lines({"retry", "process 2"})};
    EXPECT_EQ(counter.Seen, seen);
}

TEST(JournalWriter, MovedWriterKeepsTheFile) {
    TempFolder folder;
    JournalWriter first;
    ASSERT_TRUE(first.Open(folder / "j.journal", kJob));
    JournalWriter second = std::move(first);
    EXPECT_TRUE(second.Append(JournalLine(kTime, (JournalCommand{.Verb = JournalVerb::Redo}))));
    EXPECT_EQ(ReadFile(folder / "j.journal"), kHeader + Lines({"redo"}));
}

// --- the folder ---

TEST(JournalPath, IsTheJobsFileInTheJournalFolder) {
    const std::string sep(1, kPathSeparator);
    EXPECT_EQ(JournalPath("state", kJob), "state" + sep + "journal" + sep + kJob + ".journal");
    EXPECT_EQ(JournalPath("state" + sep, kJob),
              "state" + sep + "journal" + sep + kJob + ".journal");
}

TEST(DiscardJournal, RenamesToTheFirstFreeDiscardedName) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    for (const std::string& text : std::vector<std::string>{"first", "second", "third"}) {
        WriteFile(path, text);
        EXPECT_TRUE(DiscardJournal(path)) << text;
        EXPECT_FALSE(fs::exists(path));
    }
    EXPECT_EQ(ReadFile(path + ".discarded"), "first");
    EXPECT_EQ(ReadFile(path + ".discarded.1"), "second");
    EXPECT_EQ(ReadFile(path + ".discarded.2"), "third");
}

TEST(KeepEndedJournalAside, RenamesAnEndedJournalToTheFirstFreeNumber) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    const std::string ended = kHeader + "2026-11-26T10:00:00.000 ok\n";
    WriteFile(folder / "j.1.journal", "taken");
    WriteFile(path, ended);
    EXPECT_TRUE(KeepEndedJournalAside(path));
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(ReadFile(folder / "j.1.journal"), "taken");
    EXPECT_EQ(ReadFile(folder / "j.2.journal"), ended);
}

TEST(KeepEndedJournalAside, LeavesAJournalNotEndedOrNoneAlone) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    EXPECT_FALSE(KeepEndedJournalAside(path));
    WriteFile(path, kHeader + "2026-11-26T10:00:00.000 left 0\n");
    EXPECT_FALSE(KeepEndedJournalAside(path));
    EXPECT_TRUE(fs::exists(path));
}

TEST(DiscardJournal, NeverReplacesAnotherFile) {
    TempFolder folder;
    const std::string path = folder / "j.journal";
    WriteFile(path + ".discarded", "old");
    WriteFile(path + ".discarded.1", "older");
    WriteFile(path, "new");
    EXPECT_TRUE(DiscardJournal(path));
    EXPECT_EQ(ReadFile(path + ".discarded"), "old");
    EXPECT_EQ(ReadFile(path + ".discarded.1"), "older");
    EXPECT_EQ(ReadFile(path + ".discarded.2"), "new");
}

TEST(DiscardJournal, NothingToDiscardIsFalse) {
    TempFolder folder;
    EXPECT_FALSE(DiscardJournal(folder / "none.journal"));
    EXPECT_FALSE(fs::exists(folder / "none.journal.discarded"));
    fs::create_directories(folder.Path() / "dir.journal");
    EXPECT_FALSE(DiscardJournal(folder / "dir.journal"));
    EXPECT_TRUE(fs::is_directory(folder / "dir.journal"));
}

// A journal file whose modification time is hoursAgo hours before now.
void WriteJournalAged(const fs::path& path, const std::string& text, int hoursAgo) {
    WriteFile(path, text);
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(hoursAgo));
}

std::string JobNumber(int n) {
    std::string hex = std::to_string(n);
    return std::string(64 - hex.size(), '0') + hex;
}

TEST(PruneEndedJournals, KeepsTheFiftyNewestEndedJournalsAndEverythingElse) {
    TempFolder folder;
    const fs::path dir = folder.Path() / "journal";
    // 53 ended journals, number 0 the newest; the unfinished and discarded ones older still.
    for (int n = 0; n < 53; ++n) {
        const std::string end = n % 2 == 0 ? "ok" : "cancel";
        WriteJournalAged(dir / (JobNumber(n) + ".journal"),
                         JournalHeader(JobNumber(n)) + Lines({"retry", end}), n + 1);
    }
    WriteJournalAged(dir / "a.journal", JournalHeader(kJob) + Lines({"retry"}), 100);
    WriteJournalAged(dir / "b.journal", JournalHeader(kJob) + Lines({"ok", "undo"}), 101);
    WriteJournalAged(dir / "c.journal", JournalHeader(kJob) + Lines({"retry"}) + kTime + " ok",
                     102);
    WriteJournalAged(dir / "d.journal", "kesto-journal 2\njob " + kJob + "\n" + Lines({"ok"}), 103);
    WriteJournalAged(dir / "e.journal.discarded", JournalHeader(kJob) + Lines({"ok"}), 104);
    WriteJournalAged(dir / "f.journal.discarded.1", JournalHeader(kJob) + Lines({"ok"}), 105);
    WriteJournalAged(dir / "notes.txt", JournalHeader(kJob) + Lines({"ok"}), 106);
    fs::create_directories(dir / "g.journal");

    PruneEndedJournals(dir.string());

    for (int n = 0; n < 53; ++n)
        EXPECT_EQ(fs::exists(dir / (JobNumber(n) + ".journal")), n < 50) << n;
    for (const char* name :
         {"a.journal", "b.journal", "c.journal", "d.journal", "e.journal.discarded",
          "f.journal.discarded.1", "notes.txt", "g.journal"})
        EXPECT_TRUE(fs::exists(dir / name)) << name;
}

TEST(PruneEndedJournals, KeepsAsManyAsAsked) {
    TempFolder folder;
    for (int n = 0; n < 5; ++n) {
        WriteJournalAged(folder.Path() / (JobNumber(n) + ".journal"),
                         JournalHeader(JobNumber(n)) + Lines({"ok"}), 10 - n);
    }
    PruneEndedJournals(folder.Path().string(), 2);
    // The newest are those written last: 4 and 3.
    for (int n = 0; n < 5; ++n)
        EXPECT_EQ(fs::exists(folder.Path() / (JobNumber(n) + ".journal")), n >= 3) << n;
    PruneEndedJournals(folder.Path().string(), 0);
    EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PruneEndedJournals, MissingFolderIsNothingToDo) {
    TempFolder folder;
    PruneEndedJournals(folder / "none");
    PruneEndedJournals("");
    EXPECT_FALSE(fs::exists(folder / "none"));
}

}  // namespace
}  // namespace kesto
