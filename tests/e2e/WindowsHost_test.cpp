// kesto-batch.exe on a Windows host: the system folder from the machine's registry, the per-user
// values in the user's registry key, as the host's installer and the operator's earlier runs
// leave them (set and read with reg.exe).
#include <gtest/gtest.h>

#ifdef _WIN32

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "common/E2eCases.h"
#include "common/TestFiles.h"
#include "common/WindowsFileHold.h"
#include "common/WindowsRegistry.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// The fresh_run installation in a folder of the test's own, started from that folder.
class WindowsHost : public ::testing::Test {
  protected:
    void SetUp() override {
        fs::copy(test::E2eRoot() / "fresh_run" / "install", install_, fs::copy_options::recursive);
        fs::create_directories(install_ / "out");
        test::DeleteKey(test::kMachineKeyName);
        test::DeleteKey(test::kMachineKeyName, "/reg:32");
        test::DeleteKey(test::kUserKeyName);
    }
    void TearDown() override { test::DeleteKey(test::kMachineKeyName); }

    // Runs without touching the registry; the full exit code.
    int Run(const std::string& args) {
        return test::RunCommand("cd /d \"" + install_.string() + "\" && \"" +
                                test::BatchProgram().string() + "\" --answer ok " + args + " >\"" +
                                Log() + "\" 2>&1");
    }
    std::string Log() const { return (temp_.Path() / "log.txt").string(); }
    // The string value name under the program's per-user key holds value, as reg.exe shows it.
    ::testing::AssertionResult UserValueIs(const std::string& name, const std::string& value) {
        const std::string shown =
            test::QueryValue(test::kUserKeyName, name, (temp_.Path() / (name + ".txt")).string());
        if (shown.find("REG_SZ    " + value) != std::string::npos)
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << name << " is not \"" << value << "\": " << shown;
    }

    test::TempFolder temp_;
    fs::path install_ = temp_.Path() / "install";
};

TEST_F(WindowsHost, MissingMachineKeyShowsTheOpenErrorAndEndsWithoutSettings) {
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 9001);
    EXPECT_NE(test::ReadFile(Log()).find("OrvoFolderGet RegOpen Error"), std::string::npos)
        << test::ReadFile(Log());
}

TEST_F(WindowsHost, MachineKeyWithoutTheValueShowsTheValueError) {
    test::SetStringValue(test::kMachineKeyName, "Other", "1");
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 9001);
    EXPECT_NE(test::ReadFile(Log()).find("OrvoFolderGet Address Value Get Error"),
              std::string::npos)
        << test::ReadFile(Log());
}

TEST_F(WindowsHost, RegistryValueWithADriveLetterAndBackslashesIsTheSystemFolder) {
    test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install_.string() + "\\");
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 0) << test::ReadFile(Log());
    EXPECT_TRUE(fs::exists(install_ / "out" / "result.csv"));
}

TEST_F(WindowsHost, PerUserValuesAreWrittenToTheUsersKeyAtExit) {
    test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install_.string());
    ASSERT_EQ(Run("pallet/pallets.txt 0 0 0 0 1"), 0) << test::ReadFile(Log());
    EXPECT_TRUE(UserValueIs("IsDirect", "0"));
    EXPECT_TRUE(UserValueIs("IsBlockDraw", "0"));
}

TEST_F(WindowsHost, PerUserValuesOfAnEarlierRunAreKept) {
    test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install_.string());
    test::SetStringValue(test::kUserKeyName, "IsBlockDraw", "1");
    test::SetStringValue(test::kUserKeyName, "IsDirect", "1");
    ASSERT_EQ(Run("pallet/pallets.txt 0 0 0 0 1"), 0) << test::ReadFile(Log());
    EXPECT_TRUE(UserValueIs("IsBlockDraw", "1"));
    EXPECT_TRUE(UserValueIs("IsDirect", "1"));
}

TEST_F(WindowsHost, StartUpFailureReturnsTheWholeCodeWithoutANotice) {
    test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install_.string());
    EXPECT_EQ(Run("pallet\\none.txt 0 0 0 0 1"), 9020);
    EXPECT_EQ(test::ReadFile(Log()).find("kesto: exit code"), std::string::npos)
        << test::ReadFile(Log());
}

// Held as a spreadsheet holds the file it shows, with share mode 0: no one else may read,
// write, rename or delete it until it is closed.
struct HeldWithoutSharing : test::HeldOpen {
    explicit HeldWithoutSharing(const fs::path& path)
        : HeldOpen(path.string(), GENERIC_READ | GENERIC_WRITE, 0) {}
};

// The files of out/ whose names mark them as a writer's temporaries.
std::vector<std::string> Temporaries(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.find(".kesto-") != std::string::npos)
            names.push_back(name);
    }
    return names;
}

// A previous run's files, then old bytes (a Ctrl-Z and bytes above 127 among them) in the
// file that another program will hold.
class HeldOutputFile : public WindowsHost {
  protected:
    void SetUp() override {
        WindowsHost::SetUp();
        test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install_.string());
        ASSERT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 0) << test::ReadFile(Log());
        for (const char* name : {"result.csv", "result.csv_tmp", "haichi.csv"})
            before_[name] = test::ReadFile(Out(name));
    }
    fs::path Out(const std::string& name) const { return install_ / "out" / name; }
    const std::string& Before(const std::string& name) const { return before_.at(name); }

    const std::string old_ = "old,result\r\n\x1a\x81\x40,\xff\r\n";
    std::map<std::string, std::string> before_;
};

TEST_F(HeldOutputFile, ResultFileHeldWithoutSharingKeepsItsBytesAndLeavesTheJobOpen) {
    test::WriteFile(Out("result.csv"), old_);
    test::WriteFile(Out("result.csv_tmp"), old_);
    HeldWithoutSharing other(Out("result.csv"));
    ASSERT_TRUE(other.IsOpen()) << GetLastError();
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 100) << test::ReadFile(Log());
    other.Close();
    const std::string log = test::ReadFile(Log());
    EXPECT_NE(log.find("not written (error code 9022)"), std::string::npos) << log;
    EXPECT_EQ(test::ReadFile(Out("result.csv")), old_);
    // The side file comes first and is replaced; the save file comes after and is not written.
    EXPECT_EQ(test::ReadFile(Out("result.csv_tmp")), Before("result.csv_tmp"));
    EXPECT_EQ(test::ReadFile(Out("haichi.csv")), Before("haichi.csv"));
    EXPECT_EQ(Temporaries(install_ / "out"), std::vector<std::string>{});
}

TEST_F(HeldOutputFile, ResultFileReleasedByTheOtherProgramIsWrittenByTheNextRun) {
    test::WriteFile(Out("result.csv"), old_);
    {
        HeldWithoutSharing other(Out("result.csv"));
        ASSERT_TRUE(other.IsOpen()) << GetLastError();
        ASSERT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 100) << test::ReadFile(Log());
    }
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 0) << test::ReadFile(Log());
    EXPECT_EQ(test::ReadFile(Out("result.csv")), Before("result.csv"));
    EXPECT_EQ(Temporaries(install_ / "out"), std::vector<std::string>{});
}

TEST_F(HeldOutputFile, SaveFileHeldWithoutSharingKeepsItsBytesAndSetsTheLineCode) {
    test::WriteFile(Out("haichi.csv"), old_);
    test::WriteFile(Out("result.csv"), old_);
    HeldWithoutSharing other(Out("haichi.csv"));
    ASSERT_TRUE(other.IsOpen()) << GetLastError();
    EXPECT_EQ(Run("pallet\\pallets.txt 0 0 0 0 1"), 100) << test::ReadFile(Log());
    other.Close();
    const std::string log = test::ReadFile(Log());
    // The kind of the last line written names the failure of the closing rename: the job's last
    // part has no placed pieces, so its line is one of a part without them.
    EXPECT_NE(log.find("not written (error code 9025)"), std::string::npos) << log;
    EXPECT_EQ(test::ReadFile(Out("haichi.csv")), old_);
    // The result file comes first and is replaced (by a fresh placement: the old bytes are no
    // save file of this job to restore).
    const std::string result = test::ReadFile(Out("result.csv"));
    EXPECT_NE(result, old_);
    EXPECT_EQ(std::count(result.begin(), result.end(), '\n'),
              std::count(Before("result.csv").begin(), Before("result.csv").end(), '\n'));
    EXPECT_EQ(Temporaries(install_ / "out"), std::vector<std::string>{});
}

// The lines of the run's summary that count each part's outline elements.
std::string OutlineCounts(const std::string& log) {
    std::string counts;
    size_t at = 0;
    while ((at = log.find(" outline elements", at)) != std::string::npos) {
        const size_t start = log.rfind('\n', at);
        counts += log.substr(start == std::string::npos ? 0 : start + 1, at - start) + "\n";
        at += 1;
    }
    return counts;
}

TEST(WindowsOutlines, AbsolutePathsWithADriveLetterAndBackslashesAreRead) {
    test::TempFolder temp;
    const fs::path install = temp.Path() / "install";
    fs::copy(test::SourceDir() / "examples" / "install", install, fs::copy_options::recursive);
    test::SetStringValue(test::kMachineKeyName, "ORVOSystemRoot", install.string());
    const std::string job = (install / "job" / "kesto_job.txt").string();
    const std::string original = test::ReadFile(job);
    auto run = [&](const std::string& log) {
        fs::remove_all(install / "out");
        fs::create_directories(install / "out");
        test::RunCommand("cd /d \"" + install.string() + "\" && \"" +
                         test::BatchProgram().string() +
                         "\" --answer ok pallet\\pallets.txt 0 0 0 0 1 >\"" + log + "\" 2>&1");
        return OutlineCounts(test::ReadFile(log));
    };
    const std::string relative = run((temp.Path() / "relative.txt").string());
    std::string rewritten;
    const std::string folder = (install / "outline").string() + "\\";
    for (size_t at = 0, next; at < original.size(); at = next) {
        next = original.find("outline/", at);
        if (next == std::string::npos) {
            rewritten += original.substr(at);
            break;
        }
        rewritten += original.substr(at, next - at) + folder;
        next += std::string("outline/").size();
    }
    ASSERT_NE(rewritten, original);
    test::WriteFile(job, rewritten);
    const std::string absolute = run((temp.Path() / "absolute.txt").string());
    // The sample's parts have outlines: some count is above 0.
    size_t zeros = 0;
    for (size_t at = 0; (at = relative.find(", 0 \n", at)) != std::string::npos; ++at)
        ++zeros;
    const auto lines = static_cast<size_t>(std::count(relative.begin(), relative.end(), '\n'));
    EXPECT_LT(zeros, lines) << relative;
    EXPECT_EQ(absolute, relative);
    test::DeleteKey(test::kMachineKeyName);
}

}  // namespace
}  // namespace kesto

#endif
