// The end-to-end installations of tests/e2e: each case folder holds case.txt, install/ and
// expected/. Shared by the golden runs and the window-and-batch contract.
#pragma once

#ifndef _WIN32
#include <sys/wait.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "common/TestFiles.h"
#include "common/WindowsRegistry.h"

namespace kesto::test {

inline std::filesystem::path E2eRoot() {
    return SourceDir() / "tests" / "e2e";
}

// The names of the case folders, sorted.
inline std::vector<std::string> E2eCaseNames() {
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(E2eRoot(), ec)) {
        if (std::filesystem::exists(entry.path() / "case.txt"))
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The "key: value" lines of a case.txt.
inline std::map<std::string, std::string> ReadCaseFile(const std::filesystem::path& file) {
    std::map<std::string, std::string> values;
    for (const std::string& line : ReadLines(file.string())) {
        const auto colon = line.find(':');
        if (colon == std::string::npos)
            continue;
        std::string value = line.substr(colon + 1);
        value.erase(0, value.find_first_not_of(' '));
        values[line.substr(0, colon)] = value;
    }
    return values;
}

#ifdef _WIN32

// The batch tool of this build folder.
inline std::filesystem::path BatchProgram() {
    return (BinaryDir() / "kesto-batch.exe").make_preferred();
}

// A fresh user: the per-user values of earlier runs are gone.
inline void ForgetUserValues() {
    DeleteKey(kUserKeyName);
}

// Makes folder the machine's system folder, as the installation of the host program does.
inline void SetSystemFolder(const std::filesystem::path& folder) {
    SetStringValue(kMachineKeyName, "ORVOSystemRoot", folder.string());
}

// Runs kesto-batch as a host would, in install with it as the system folder (the machine's
// registry value); stdout and stderr are appended to log. Returns the full exit code.
inline int RunBatchProcess(const std::filesystem::path& install, const std::string& answer,
                           const std::string& args, const std::filesystem::path& log) {
    SetSystemFolder(install);
    return RunCommand("cd /d \"" + install.string() + "\" && \"" + BatchProgram().string() +
                      "\" --answer " + answer + " " + args + " >>\"" + log.string() + "\" 2>&1");
}

#else

inline std::filesystem::path BatchProgram() {
    return BinaryDir() / "kesto-batch";
}

// Every run has a per-user folder of its own (XDG_CONFIG_HOME beside the installation).
inline void ForgetUserValues() {}

// Runs kesto-batch as a host would, in install with it as the system folder and per-user
// values beside it; stdout and stderr are appended to log. Returns the exit status.
inline int RunBatchProcess(const std::filesystem::path& install, const std::string& answer,
                           const std::string& args, const std::filesystem::path& log) {
    const std::string command = "cd '" + install.string() + "' && ORVOSystemRoot='" +
                                install.string() + "' XDG_CONFIG_HOME='" +
                                (install.parent_path() / "config").string() + "' '" +
                                BatchProgram().string() + "' --answer " + answer + " " + args +
                                " >>'" + log.string() + "' 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif

}  // namespace kesto::test
