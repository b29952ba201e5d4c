// Runs kesto-batch as a process on whole installations and compares the files it writes with
// the expected files beside each case. Case folder layout:
//   case.txt        "args:" the six tokens, "answer:" ok|cancel, "exit:" the process exit status,
//                   "runs:" how many times the job runs in a row (a later run restores the save
//                   file of the one before), "output:" a text the run must print (either stream),
//                   "remove:" a file of install/ to delete before the run; bad-input cases add
//                   (each may be given more than once where it names a path):
//                   "generate:" garbage PATH LINES SEED [PREFIX] | long-line PATH BYTES [lf],
//                   appended to install/PATH at test time so that big inputs are not committed,
//                   or job SIZE SEED, a whole generated installation of SIZE parts;
//                   "fifo:" / "folder:" PATH replaced by a FIFO / a folder; "file-size-limit:"
//                   bytes a written file may reach (RLIMIT_FSIZE, SIGXFSZ ignored, as a full disk);
//                   "hang-limit:" seconds after which the run counts as hung: it is killed there
//                   and the case fails saying so (speed is the benchmarks' business, so the
//                   limit is one only a hang exceeds, also under sanitizers, Wine or load);
//                   "output:" may be given more than once
//   install/        the system folder as the job finds it
//   expected/       files that must exist afterwards, relative to the system folder, byte for
//                   byte; "NAME.absent" means NAME must not exist
// On a mismatch the actual files are kept in e2e-actual/<case>/ of the build folder and a diff
// is printed. KESTO_UPDATE_GOLDEN=1 rewrites expected/ from the actual run instead: every file
// of out/ is copied, and a file that was not written gets (or keeps) its ".absent" marker.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "app/ExitCode.h"
#include "common/E2eCases.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

// The shell's status of a run that "timeout -s KILL" ended (SIGKILL is 9; Windows has no name
// for it).
constexpr int kKilledByHangLimit = 128 + 9;

using CaseValues = std::map<std::string, std::string>;

// Every value of a key that may be given more than once, in file order.
std::vector<std::string> AllValues(const fs::path& caseFile, const std::string& key) {
    std::vector<std::string> values;
    for (const std::string& line : test::ReadLines(caseFile.string())) {
        if (line.rfind(key + ":", 0) != 0)
            continue;
        std::string value = line.substr(key.size() + 1);
        value.erase(0, value.find_first_not_of(' '));
        values.push_back(value);
    }
    return values;
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string w; in >> w;)
        words.push_back(w);
    return words;
}

void Append(const fs::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary | std::ios::app);
    out << bytes;
}

// LINES lines of seeded random bytes (no line feed inside), each after PREFIX when given.
std::string GarbageLines(int lines, unsigned seed, const std::string& prefix) {
    std::mt19937 random(seed);
    std::string bytes;
    for (int i = 0; i < lines; ++i) {
        bytes += prefix;
        const unsigned length = random() % 300;
        for (unsigned k = 0; k < length; ++k) {
            const char c = static_cast<char>(random() & 0xFF);
            bytes += c == '\n' ? ' ' : c;
        }
        bytes += '\n';
    }
    return bytes;
}

void Generate(const fs::path& install, const std::string& generator) {
    const std::vector<std::string> w = Words(generator);
    ASSERT_GE(w.size(), 3u) << generator;
    const fs::path file = install / w[1];
    if (w[0] == "garbage") {
        ASSERT_GE(w.size(), 4u) << generator;
        Append(file, GarbageLines(std::stoi(w[2]), static_cast<unsigned>(std::stoul(w[3])),
                                  w.size() > 4 ? w[4] : ""));
    } else if (w[0] == "job") {
        // A whole generated installation without outline files, as kesto-make-job writes it.
#ifdef _WIN32
        const std::string command =
            "\"" + (test::BinaryDir() / "kesto-make-job.exe").make_preferred().string() + "\" " +
            w[1] + " " + w[2] + " \"" + install.string() + "\" --no-outlines >nul";
        ASSERT_EQ(test::RunCommand(command), 0) << command;
#else
        const std::string command = "'" + (test::BinaryDir() / "kesto-make-job").string() + "' " +
                                    w[1] + " " + w[2] + " '" + install.string() +
                                    "' --no-outlines >/dev/null";
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
#endif
    } else if (w[0] == "long-line") {
        const bool lineFeed = w.size() > 3 && w[3] == "lf";
        Append(file, std::string(std::stoul(w[2]), 'x') + (lineFeed ? "\n" : ""));
    } else {
        FAIL() << "unknown generator " << generator;
    }
}

void Prepare(const fs::path& install, const CaseValues& c, const fs::path& caseFile) {
    if (c.count("remove"))
        fs::remove(install / c.at("remove"));
    for (const std::string& generator : AllValues(caseFile, "generate"))
        Generate(install, generator);
#ifndef _WIN32
    for (const std::string& path : AllValues(caseFile, "fifo")) {
        fs::remove(install / path);
        ASSERT_EQ(::mkfifo((install / path).c_str(), 0600), 0) << path;
    }
#endif
    for (const std::string& path : AllValues(caseFile, "folder")) {
        fs::remove(install / path);
        fs::create_directories(install / path);
    }
}

#ifdef _WIN32
// Windows returns the full code: the one the POSIX run prints, or that of its low 8 bits.
int ExpectedExitCode(const CaseValues& c, const fs::path& caseFile) {
    const std::string notice = "kesto: exit code ";
    for (const std::string& text : AllValues(caseFile, "output")) {
        if (text.rfind(notice, 0) == 0)
            return std::stoi(text.substr(notice.size()));
    }
    const int status = c.count("exit") ? std::stoi(c.at("exit")) : 0;
    return status == (kExitOffsetAbort & 0xFF) ? kExitOffsetAbort : status;
}

// Without FIFOs and file size limits there, those cases have nothing to run on.
std::string UnsupportedHere(const CaseValues& c) {
    for (const char* key : {"fifo", "file-size-limit"}) {
        if (c.count(key))
            return std::string(key) + " needs POSIX";
    }
    return "";
}

// The run as a host would start it; a hang is left to ctest's own timeout.
int RunBatch(const fs::path& install, const CaseValues& c, const fs::path& log) {
    const std::string answer = c.count("answer") ? c.at("answer") : "ok";
    return test::RunBatchProcess(install, answer, c.at("args"), log);
}
#else
int ExpectedExitCode(const CaseValues& c, const fs::path&) {
    return c.count("exit") ? std::stoi(c.at("exit")) : 0;
}

std::string UnsupportedHere(const CaseValues&) {
    return "";
}

// The run as a host would start it, bounded in time and, when asked, in file size.
int RunBatch(const fs::path& install, const CaseValues& c, const fs::path& log) {
    const std::string answer = c.count("answer") ? c.at("answer") : "ok";
    std::string args = c.at("args");
    std::string wrapper;
    if (c.count("hang-limit"))
        wrapper += "timeout -s KILL " + c.at("hang-limit") + " ";
    if (c.count("file-size-limit"))
        wrapper += "prlimit --fsize=" + c.at("file-size-limit") + " ";
    if (wrapper.empty())
        return test::RunBatchProcess(install, answer, args, log);
    // Ignored signals stay ignored across exec: a write beyond the limit fails as on a full
    // disk instead of killing the process. The output goes through a pipe, which the limit
    // does not cut, and the status through a file.
    const fs::path statusFile = log.string() + ".status";
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const std::string command =
        "(cd '" + install.string() + "' && ORVOSystemRoot='" + install.string() +
        "' XDG_CONFIG_HOME='" + (install.parent_path() / "config").string() + "' " + wrapper + "'" +
        (test::BinaryDir() / "kesto-batch").string() + "' --answer " + answer + " " + args +
        " 2>&1; echo $? >'" + statusFile.string() + "') | cat >>'" + log.string() + "'";
    const int status = std::system(command.c_str());
    std::signal(SIGXFSZ, previous);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return -1;
    return std::stoi(test::ReadFile(statusFile.string()));
}

#endif

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

// The expected files are those of a POSIX run. Windows writes the same bytes in text mode, each
// line ending in CR LF; a file the run left alone (the case's own) stays as it was.
bool SameAsExpected(const std::string& actual, const std::string& expected,
                    [[maybe_unused]] const fs::path& caseInput) {
#ifdef _WIN32
    const bool leftAlone = fs::exists(caseInput) && test::ReadFile(caseInput) == expected;
    return actual == test::TextModeBytes(expected) || (leftAlone && actual == expected);
#else
    return actual == expected;
#endif
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
        if (SameAsExpected(test::ReadFile(actual.string()), test::ReadFile(e.path().string()),
                           caseDir / "install" / rel))
            continue;
        const fs::path keep = actualDir / rel;
        fs::create_directories(keep.parent_path());
        fs::copy_file(actual, keep, fs::copy_options::overwrite_existing);
#ifndef _WIN32
        const std::string diff = "diff -u '" + e.path().string() + "' '" + keep.string() + "'";
        std::system(diff.c_str());
#endif
        ADD_FAILURE() << rel << " differs from the expected file; actual kept in " << keep;
    }
}

class GoldenRun : public ::testing::TestWithParam<std::string> {};

TEST_P(GoldenRun, WritesTheExpectedFiles) {
    const fs::path caseDir = test::E2eRoot() / GetParam();
    const auto c = test::ReadCaseFile(caseDir / "case.txt");
    ASSERT_TRUE(c.count("args")) << "case.txt needs an args: line";
    if (const std::string why = UnsupportedHere(c); !why.empty())
        GTEST_SKIP() << why;
    test::ForgetUserValues();
    test::TempFolder temp;
    const fs::path install = temp.Path() / "install";
    fs::copy(caseDir / "install", install, fs::copy_options::recursive);
    fs::create_directories(install / "out");
    ASSERT_NO_FATAL_FAILURE(Prepare(install, c, caseDir / "case.txt"));
    const fs::path log = temp.Path() / "log.txt";
    const int runs = c.count("runs") ? std::stoi(c.at("runs")) : 1;
    int status = -1;
    for (int i = 0; i < runs; ++i)
        status = RunBatch(install, c, log);
    if (c.count("hang-limit")) {
        ASSERT_NE(status, kKilledByHangLimit)
            << "hung: killed after " << c.at("hang-limit") << " s\n"
            << test::ReadFile(log.string());
    }
    EXPECT_EQ(status, ExpectedExitCode(c, caseDir / "case.txt")) << test::ReadFile(log.string());
    for (const std::string& text : AllValues(caseDir / "case.txt", "output")) {
        if (!kExitNoticePrinted && text.rfind("kesto: exit code", 0) == 0)
            continue;
        EXPECT_NE(test::ReadFile(log.string()).find(text), std::string::npos)
            << text << "\n"
            << test::ReadFile(log.string());
    }
    CompareOrUpdate(GetParam(), caseDir, install);
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenRun, ::testing::ValuesIn(test::E2eCaseNames()),
                         [](const auto& testCase) { return testCase.param; });

}  // namespace
}  // namespace kesto
