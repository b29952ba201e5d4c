#include "cli/ProgramRun.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#ifdef _WIN32
#include <process.h>

#include <cstdint>
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

std::vector<char*> ArgumentVector(const std::string& program, std::vector<std::string>& args) {
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (std::string& a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    return argv;
}

}  // namespace

#ifdef _WIN32

// The error file is not used here: the program's messages go to this console.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string&) {
    std::vector<std::string> copy = args;
    const std::vector<char*> argv = ArgumentVector(program, copy);
    ProgramResult result;
    const intptr_t status = _spawnvp(_P_WAIT, program.c_str(), argv.data());
    if (status == -1)
        result.Error = "cannot start " + program + ": " + std::strerror(errno);
    else
        result.ExitCode = static_cast<int>(status);
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

std::string PictureProgramPath(const std::string& argv0) {
    std::error_code ec;
#ifndef _WIN32
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec && !self.empty())
        return (self.parent_path() / kPictureProgram).string();
#endif
    const std::filesystem::path folder = std::filesystem::path(argv0).parent_path();
    // Started through PATH: the picture program is looked up there too.
    if (folder.empty())
        return kPictureProgram;
    return (folder / kPictureProgram).string();
}

}  // namespace kesto
