#include "cli/ProgramRun.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
extern char** environ;
#endif

namespace kesto {

namespace {

#ifdef _WIN32
constexpr const char* kPictureProgram = "kesto-picture.exe";
#else
constexpr const char* kPictureProgram = "kesto-picture";
#endif

#ifndef _WIN32
std::vector<char*> ArgumentVector(const std::string& program, std::vector<std::string>& args) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (std::string& a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    return argv;
}
#endif

}  // namespace

#ifdef _WIN32

// One argument as the C runtime of the started program splits its command line again: quoted
// when it is empty or holds a blank, a tab or a quote; backslashes doubled before a quote.
std::string QuotedArgument(const std::string& arg) {
    if (!arg.empty() && arg.find_first_of(" \t\"") == std::string::npos)
        return arg;
    std::string quoted = "\"";
    size_t backslashes = 0;
    for (const char c : arg) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(2 * backslashes, '\\');
    return quoted + "\"";
}

namespace {

// The error file as an inheritable handle for the started program; invalid when not asked.
HANDLE OpenErrorFile(const std::string& errorFile) {
    if (errorFile.empty())
        return INVALID_HANDLE_VALUE;
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileA(errorFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& errorFile) {
    // The started program splits its command line again: every argument is quoted for that.
    std::string line = QuotedArgument(program);
    for (const std::string& a : args)
        line += " " + QuotedArgument(a);
    std::vector<char> commandLine(line.begin(), line.end());
    commandLine.push_back('\0');
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    const HANDLE errors = OpenErrorFile(errorFile);
    if (errors != INVALID_HANDLE_VALUE) {
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
        startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
        startup.hStdError = errors;
    }
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0,
                                        nullptr, nullptr, &startup, &process);
    const DWORD startError = GetLastError();
    if (errors != INVALID_HANDLE_VALUE)
        CloseHandle(errors);
    ProgramResult result;
    if (!started) {
        result.Error = "cannot start " + program + ": system error " + std::to_string(startError);
        return result;
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    if (GetExitCodeProcess(process.hProcess, &code))
        result.ExitCode = static_cast<int>(code);
    else
        result.Error = "lost " + program;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result;
}

#else

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& errorFile) {
    std::vector<std::string> copy = args;
    const std::vector<char*> argv = ArgumentVector(program, copy);
    ProgramResult result;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (!errorFile.empty()) {
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
    }
    pid_t pid = 0;
    const int started =
        posix_spawnp(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (started != 0) {
        result.Error = "cannot start " + program + ": " + std::strerror(started);
        return result;
    }
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) {
            result.Error = "lost " + program + ": " + std::strerror(errno);
            return result;
        }
    }
    if (WIFEXITED(status))
        result.ExitCode = WEXITSTATUS(status);
    else
        result.Error = program + " stopped by signal " + std::to_string(WTERMSIG(status));
    return result;
}

#endif

std::string FindPictureProgram(const std::filesystem::path& self, const std::string& argv0) {
    std::error_code ec;
    for (const std::filesystem::path& folder :
         {self.parent_path(), std::filesystem::path(argv0).parent_path()}) {
        const std::filesystem::path candidate = folder / kPictureProgram;
        if (!folder.empty() && std::filesystem::is_regular_file(candidate, ec))
            return candidate.string();
    }
    return kPictureProgram;
}

std::string PictureProgramPath(const std::string& argv0) {
    std::filesystem::path self;
#ifdef _WIN32
    char module[MAX_PATH + 1] = {};
    const DWORD length = GetModuleFileNameA(nullptr, module, MAX_PATH);
    if (length > 0 && length < MAX_PATH)
        self = module;
#else
    std::error_code ec;
    self = std::filesystem::read_symlink("/proc/self/exe", ec);
#endif
    return FindPictureProgram(self, argv0);
}

}  // namespace kesto
