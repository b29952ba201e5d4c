// Runs kesto-batch as a process on whole installations and compares the files it writes with
// the expected files beside each case. Case folder layout:
//   case.txt        "args:" the six tokens, "answer:" ok|cancel, "exit:" the process exit status,
//                   "runs:" how many times the job runs in a row (a later run restores the save
//                   file of the one before), "output:" a text the run must print (either stream),
//                   "remove:" a file of install/ to delete before the run
//   install/        the system folder as the job finds it
//   expected/       files that must exist afterwards, relative to the system folder, byte for
//                   byte; "NAME.absent" means NAME must not exist
// On a mismatch the actual files are kept in e2e-actual/<case>/ of the build folder and a diff
// is printed. KESTO_UPDATE_GOLDEN=1 rewrites expected/ from the actual run instead: every file
// of out/ is copied, and a file that was not written gets (or keeps) its ".absent" marker.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "common/E2eCases.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

int RunBatch(const fs::path& install, const std::map<std::string, std::string>& c,
             const fs::path& log) {
    const std::string answer = c.count("answer") ? c.at("answer") : "ok";
    return test::RunBatchProcess(install, answer, c.at("args"), log);
}

// The expected files as the run left them: out/ copied, missing files marked ".absent".
void UpdateExpected(const fs::path& expected, const fs::path& install) {
    std::vector<fs::path> wanted;  // every file the case has ever named, relative
    for (const auto& e : fs::recursive_directory_iterator(expected)) {
        if (!e.is_regular_file())
            continue;
        fs::path rel = fs::relative(e.path(), expected);
        if (rel.extension() == ".absent")
            rel.replace_extension();
        wanted.push_back(rel);
    }
    for (const auto& e : fs::directory_iterator(install / "out")) {
        // A dot file only keeps the folder in version control.
        if (e.path().filename().string().front() != '.')
            wanted.push_back(fs::path("out") / e.path().filename());
    }
    fs::remove_all(expected);
    for (const fs::path& rel : wanted) {
        const fs::path target = expected / rel;
        fs::create_directories(target.parent_path());
        if (fs::exists(install / rel)) {
            fs::copy_file(install / rel, target, fs::copy_options::overwrite_existing);
        } else {
            test::WriteFile(target.string() + ".absent", "");
        }
    }
}

void CompareOrUpdate(const std::string& name, const fs::path& caseDir, const fs::path& install) {
    const fs::path expected = caseDir / "expected";
    if (std::getenv("KESTO_UPDATE_GOLDEN") != nullptr) {
        UpdateExpected(expected, install);
        return;
    }
    const fs::path actualDir = test::BinaryDir() / "e2e-actual" / name;
    fs::remove_all(actualDir);
    for (const auto& e : fs::recursive_directory_iterator(expected)) {
        if (!e.is_regular_file())
            continue;
        fs::path rel = fs::relative(e.path(), expected);
        if (rel.extension() == ".absent") {
            rel.replace_extension();
            EXPECT_FALSE(fs::exists(install / rel)) << rel << " should not have been written";
            continue;
        }
        const fs::path actual = install / rel;
        ASSERT_TRUE(fs::exists(actual)) << rel << " was not written";
        if (test::ReadFile(actual.string()) == test::ReadFile(e.path().string()))
            continue;
        const fs::path keep = actualDir / rel;
        fs::create_directories(keep.parent_path());
        fs::copy_file(actual, keep, fs::copy_options::overwrite_existing);
        const std::string diff = "diff -u '" + e.path().string() + "' '" + keep.string() + "'";
        std::system(diff.c_str());
        ADD_FAILURE() << rel << " differs from the expected file; actual kept in " << keep;
    }
}

class GoldenRun : public ::testing::TestWithParam<std::string> {};

TEST_P(GoldenRun, WritesTheExpectedFiles) {
    const fs::path caseDir = test::E2eRoot() / GetParam();
    const auto c = test::ReadCaseFile(caseDir / "case.txt");
    ASSERT_TRUE(c.count("args")) << "case.txt needs an args: line";
    test::TempFolder temp;
    const fs::path install = temp.Path() / "install";
    fs::copy(caseDir / "install", install, fs::copy_options::recursive);
    fs::create_directories(install / "out");
    if (c.count("remove"))
        fs::remove(install / c.at("remove"));
    const fs::path log = temp.Path() / "log.txt";
    const int runs = c.count("runs") ? std::stoi(c.at("runs")) : 1;
    int status = -1;
    for (int i = 0; i < runs; ++i)
        status = RunBatch(install, c, log);
    const int expectedStatus = c.count("exit") ? std::stoi(c.at("exit")) : 0;
    EXPECT_EQ(status, expectedStatus) << test::ReadFile(log.string());
    if (c.count("output")) {
        EXPECT_NE(test::ReadFile(log.string()).find(c.at("output")), std::string::npos)
            << test::ReadFile(log.string());
    }
    CompareOrUpdate(GetParam(), caseDir, install);
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenRun, ::testing::ValuesIn(test::E2eCaseNames()),
                         [](const auto& testCase) { return testCase.param; });

}  // namespace
}  // namespace kesto
