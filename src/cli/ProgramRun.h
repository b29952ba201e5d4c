// Starts another program and waits for it, without a shell: kesto-batch hands its pictures
// to the picture program this way.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kesto {

struct ProgramResult {
    int ExitCode = -1;  // the program's exit status; -1 when it did not run to its end
    std::string Error;  // why it did not start or end, empty otherwise
};

// Runs program (a path, or a name looked up in PATH) with args; its standard error goes to
// errorFile when one is given.
ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& args,
                         const std::string& errorFile);

#ifdef _WIN32
// arg quoted for a Windows command line, so that the started program gets it back whole.
std::string QuotedArgument(const std::string& arg);
#endif

// The picture program for a kesto-batch whose file is self (links resolved; empty when the
// system cannot tell) started as argv0: beside self, which is where the build and every
// installation put both programs; else beside argv0, a link to kesto-batch kept with it; else
// the bare name, looked up in PATH.
std::string FindPictureProgram(const std::filesystem::path& self, const std::string& argv0);

// FindPictureProgram for the running executable.
std::string PictureProgramPath(const std::string& argv0);

}  // namespace kesto
