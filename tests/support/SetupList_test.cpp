#include "support/SetupList.h"

#include <gtest/gtest.h>

#include <string>

#include "common/ScopedEnv.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/Paths.h"
#include "support/Platform.h"
#include "support/Services.h"

namespace kesto {
namespace {

using test::RecordingOperator;
using test::ScopedWorkingFolder;
using test::TempFolder;
using test::TestServices;
using test::WriteFile;

// A system folder in a temporary folder, its setup list written by each test.
class SetupListTest : public testing::Test {
  protected:
    void WriteList(const std::string& text) { WriteFile(folder / "bin/Ks_Setup.ini", text); }
    // The value, "<null>" when there is none.
    std::string Value(const std::string& key) {
        const std::string value = GetSetupValue(services, key);
        return !value.empty() ? value : "<null>";
    }
    std::string System() const { return folder.Path().string(); }

    TempFolder folder;
    TestServices testServices{folder.Path().string()};
    Services services = testServices.Get();
    RecordingOperator& recorder = testServices.Op;
};

TEST_F(SetupListTest, EntryBetweenFileAndEndGivesItsValue) {
    WriteList("IEJ : before/file.txt\n#File\nIEJ : job/job.txt\nIEK : out/r.csv\n#End\n");
    EXPECT_EQ(Value("IEJ"), NormalizeSeparators("job/job.txt"));
    EXPECT_EQ(Value("IEK"), NormalizeSeparators("out/r.csv"));
    EXPECT_TRUE(recorder.Messages.empty());
}

TEST_F(SetupListTest, ColonAttachedToTheKeyIsNeverFound) {
    WriteList("#File\nIEJ: job.txt\nIEK :out.csv\n#End\n");
    EXPECT_EQ(Value("IEJ"), "<null>");
    EXPECT_EQ(Value("IEJ:"), "<null>");
    EXPECT_EQ(Value("IEK"), "<null>");
}

TEST_F(SetupListTest, CommentAfterTheValueIsRemoved) {
    WriteList("#File\nIEJ : job.txt # the job\nIEK : r.csv#result\n# IEL : x\n#End\n");
    EXPECT_EQ(Value("IEJ"), "job.txt");
    EXPECT_EQ(Value("IEK"), "r.csv");
    EXPECT_EQ(Value("IEL"), "<null>");
}

TEST_F(SetupListTest, EntriesAfterEndAndListsWithoutFileAreNotRead) {
    WriteList("#File\nA : 1\n#End\nB : 2\n");
    EXPECT_EQ(Value("A"), "1");
    EXPECT_EQ(Value("B"), "<null>");
    WriteList("A : 1\n");
    EXPECT_EQ(Value("A"), "<null>");
}

TEST_F(SetupListTest, FirstExactMatchWinsAndCaseCounts) {
    WriteList("#File\nline without colon\nA : first\nA : second\n#End\n");
    EXPECT_EQ(Value("A"), "first");
    EXPECT_EQ(Value("a"), "<null>");
    EXPECT_EQ(Value("line"), "<null>");
}

TEST_F(SetupListTest, KeyWithoutValueGivesNull) {
    WriteList("#File\nA :\nA : later\n#End\n");
    EXPECT_EQ(Value("A"), "<null>");
}

TEST_F(SetupListTest, WordsAreReadLikeFixedWidthScanning) {
    const std::string longKey(70, 'k');
    WriteList("#File\n" + longKey + " : v\n\tB\t:\tb\n#End\n");
    EXPECT_EQ(Value(longKey.substr(0, 63)), ":");
    EXPECT_EQ(Value("B"), "b");
}

TEST_F(SetupListTest, LinesAreCutAt127Characters) {
    const std::string value(200, 'v');
    WriteList("#File\nA : " + value + "\n#End\n");
    EXPECT_EQ(Value("A"), value.substr(0, 127 - 4));
}

TEST_F(SetupListTest, ValuesGetThePlatformSeparator) {
    WriteList("#File\nIEJ : job\\sub\\job.txt\nIEK : out/r.csv\n#End\n");
    EXPECT_EQ(Value("IEJ"),
              std::string("job") + kPathSeparator + "sub" + kPathSeparator + "job.txt");
    EXPECT_EQ(Value("IEK"), std::string("out") + kPathSeparator + "r.csv");
}

TEST_F(SetupListTest, CarriageReturnLineFeedListReadsTheSame) {
    WriteList("#File\r\nIEJ : job.txt\r\n#End\r\n");
    EXPECT_EQ(Value("IEJ"), "job.txt");
}

TEST_F(SetupListTest, MissingListFallsBackToTheCurrentFolder) {
    TempFolder work;
    WriteFile(work / "Ks_Setup.ini", "#File\nIEJ : here.txt\n#End\n");
    ScopedWorkingFolder cwd(work.Path());
    EXPECT_EQ(SetupListPath(services), "Ks_Setup.ini");
    EXPECT_EQ(Value("IEJ"), "here.txt");
    const std::string missing =
        " File Not Found : " + JoinPath(System(), NormalizeSeparators("bin/Ks_Setup.ini"));
    ASSERT_EQ(recorder.Messages.size(), 2u);
    EXPECT_EQ(recorder.Messages[0], missing.substr(0, 127));
}

TEST_F(SetupListTest, NoListAnywhereGivesNullAndAnOpenError) {
    TempFolder work;
    ScopedWorkingFolder cwd(work.Path());
    EXPECT_EQ(GetSetupValue(services, "IEJ"), "");
    ASSERT_EQ(recorder.Messages.size(), 2u);
    EXPECT_EQ(recorder.Messages[1], "Ks_Setup.ini Open Error");
    EXPECT_EQ(GetDataFilePath(services, 94), "");
}

TEST_F(SetupListTest, SetupFolderJoinsSystemFolderAndValue) {
    WriteList("#File\nMSG : msg/\n#End\n");
    std::string out = "stale";
    EXPECT_EQ(GetSetupFolder(services, "MSG", out), 1);
    EXPECT_EQ(out, NormalizeSeparators(System() + "/msg/"));
    EXPECT_EQ(GetSetupFolder(services, "NONE", out), 0);
    EXPECT_EQ(out, "");
}

TEST_F(SetupListTest, SystemFolderEndingInASeparatorGetsNoSecondOne) {
    WriteList("#File\nIEJ : job/job.txt\nMSG : ./\n#End\n");
    testServices.Host.Folder.Folder = System() + "/";
    EXPECT_EQ(GetDataFilePath(services, 94), NormalizeSeparators(System() + "/job/job.txt"));
    std::string out;
    EXPECT_EQ(GetSetupFolder(services, "MSG", out), 1);
    EXPECT_EQ(out, NormalizeSeparators(System() + "/./"));
}

TEST_F(SetupListTest, DataFileKindsOfThisProgram) {
    WriteList("#File\nIEJ : job/j.txt\nIEK : out/r.csv\nIEL : out/h.csv\n#End\n");
    EXPECT_EQ(GetDataFilePath(services, 94), NormalizeSeparators(System() + "/job/j.txt"));
    EXPECT_EQ(GetDataFilePath(services, 96), NormalizeSeparators(System() + "/out/r.csv"));
    EXPECT_EQ(GetDataFilePath(services, 97), NormalizeSeparators(System() + "/out/h.csv"));
}

TEST_F(SetupListTest, DataFileKindsAddTheirParts) {
    WriteList(
        "#File\nOTF : otf/\nTUR : tur/t\nIEA : iea/a\nINF : inf/i\nIE0 : ie0/e\nIE1 : ie1/e\n"
        "TMP : tmp/\n#End\n");
    const std::string s = System();
    EXPECT_EQ(GetDataFilePath(services, 1, "7"), NormalizeSeparators(s + "/otf/mac_para.7"));
    EXPECT_EQ(GetDataFilePath(services, 4, "1", "2"), NormalizeSeparators(s + "/tur/t1"));
    EXPECT_EQ(GetDataFilePath(services, 4), NormalizeSeparators(s + "/tur/t"));
    EXPECT_EQ(GetDataFilePath(services, 8, "1", "2"), NormalizeSeparators(s + "/iea/a1.2"));
    EXPECT_EQ(GetDataFilePath(services, 8, "1"), "");
    EXPECT_EQ(GetDataFilePath(services, 52, "1", "2"), NormalizeSeparators(s + "/inf/i1.2"));
    EXPECT_EQ(GetDataFilePath(services, 52, "1"), NormalizeSeparators(s + "/inf/i1"));
    EXPECT_EQ(GetDataFilePath(services, 50, "1", "2"), NormalizeSeparators(s + "/inf/i"));
    EXPECT_EQ(GetDataFilePath(services, 80, "a", "b"), NormalizeSeparators(s + "/ie0/eab"));
    EXPECT_EQ(GetDataFilePath(services, 81, "a", "b"), NormalizeSeparators(s + "/ie1/e"));
    EXPECT_EQ(GetDataFilePath(services, 98, "a", "b"), NormalizeSeparators(s + "/otf/ab"));
    EXPECT_EQ(GetDataFilePath(services, 99, nullptr, "b"), NormalizeSeparators(s + "/tmp/b"));
    EXPECT_EQ(GetDataFilePath(services, 999), NormalizeSeparators(s + "/otf/debug.dat"));
}

TEST_F(SetupListTest, UnknownKindOrMissingKeyGivesAnEmptyPath) {
    WriteList("#File\nIEJ : job.txt\n#End\n");
    EXPECT_EQ(GetDataFilePath(services, 53), "");
    EXPECT_EQ(GetDataFilePath(services, -1), "");
    EXPECT_EQ(GetDataFilePath(services, 96), "");
}

TEST(GetSystemFolder, GivesTheHostStoreFolder) {
    TempFolder folder;
    TestServices services(folder.Path().string());
    std::string out;
    EXPECT_EQ(GetSystemFolder(services, out), 1);
    EXPECT_EQ(out, folder.Path().string());
    EXPECT_TRUE(services.Op.Messages.empty());
}

TEST(GetSystemFolder, MissingKeyEmptiesTheFolderAndSaysSo) {
    TestServices services;
    services.Host.Folder = {SystemFolderStatus::NoKey, "ignored"};
    std::string out = "stale";
    EXPECT_EQ(GetSystemFolder(services, out), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(services.Op.Messages, std::vector<std::string>{"OrvoFolderGet RegOpen Error"});
}

TEST(GetSystemFolder, MissingValueEmptiesTheFolderAndSaysSo) {
    TestServices services;
    services.Host.Folder = {SystemFolderStatus::NoValue, "ignored"};
    std::string out = "stale";
    EXPECT_EQ(GetSystemFolder(services, out), 0);
    std::string folder = "stale";
    EXPECT_EQ(GetSetupFolder(services, "MSG", folder), 0);
    EXPECT_EQ(out, "");
    EXPECT_EQ(folder, "");
    ASSERT_FALSE(services.Op.Messages.empty());
    EXPECT_EQ(services.Op.Messages[0], "OrvoFolderGet Address Value Get Error");
}

}  // namespace
}  // namespace kesto
