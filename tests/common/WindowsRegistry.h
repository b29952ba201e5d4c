// The registry of a Windows test machine, set up as an installer or an administrator would:
// through reg.exe (Wine's own under Wine), never by the code under test.
#pragma once

#ifdef _WIN32

#include <cstdio>
#include <cstdlib>
#include <string>

#include "common/TestFiles.h"

namespace kesto::test {

inline constexpr const char* kMachineKeyName =
    "HKLM\\SOFTWARE\\ORVONetwork\\Common\\SystemInformation";
inline constexpr const char* kUserKeyName = "HKCU\\Software\\ORVONetwork\\Vardo\\Kesto";

// Runs a command line through the command interpreter; its full exit code.
inline int RunCommand(const std::string& command) {
    // cmd /c drops the outer quotes of its line: the whole line is quoted once more. -1 means
    // the interpreter itself could not be started, so nothing ran: Wine on a busy machine
    // fails that now and then, and the line is tried again.
    int status = -1;
    for (int attempt = 0; attempt < 3 && status == -1; ++attempt) {
        status = std::system(("\"" + command + "\"").c_str());
        if (status == -1)
            std::fprintf(stderr, "the command interpreter did not start; trying again\n");
    }
    return status;
}

// reg.exe with arguments (view: "" for the native one, "/reg:32" for the 32-bit one), quiet.
inline int Reg(const std::string& arguments, const std::string& view = "") {
    return RunCommand("reg " + arguments + (view.empty() ? "" : " " + view) + " >nul 2>&1");
}

inline void DeleteKey(const std::string& key, const std::string& view = "") {
    Reg("delete \"" + key + "\" /f", view);
}

inline void SetStringValue(const std::string& key, const std::string& name, const std::string& text,
                           const std::string& view = "") {
    // reg.exe reads a backslash before the closing quote as an escaped quote: doubled there.
    const size_t trailing = text.size() - text.find_last_not_of('\\') - 1;
    const std::string quoted = text + std::string(trailing, '\\');
    Reg("add \"" + key + "\" /v " + name + " /t REG_SZ /d \"" + quoted + "\" /f", view);
}

// What `reg query KEY /v NAME` prints.
inline std::string QueryValue(const std::string& key, const std::string& name,
                              const std::string& outputFile) {
    RunCommand("reg query \"" + key + "\" /v " + name + " >\"" + outputFile + "\" 2>&1");
    return ReadFile(outputFile);
}

}  // namespace kesto::test

#endif
