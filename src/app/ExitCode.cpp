#include "app/ExitCode.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <ostream>

namespace kesto {

namespace {
// The Enter key of the key press that may have closed the dialog; never a result.
constexpr int kEnterKey = 13;
}  // namespace

int SettleExitCode(int param, OkCancel end) {
    if (param == kEnterKey)
        param = kExitOk;
    if (param == kExitOk && end != OkCancel::Ok)
        param = kExitNotOk;
    return param;
}

int ProcessExitCode(int code) {
#ifdef _WIN32
    return code;
#else
    // A POSIX parent sees only the low 8 bits; the defined codes stay distinct there.
    return code & 0xFF;
#endif
}

std::string ExitCodeNotice(int code) {
    if (!kExitNoticePrinted || code == kExitOk)
        return std::string();
    return "kesto: exit code " + std::to_string(code);
}

int FinishProcess(int code, std::ostream& err) {
    const std::string notice = ExitCodeNotice(code);
    if (!notice.empty())
        err << notice << std::endl;
    return ProcessExitCode(code);
}

int EndProcess(int code, std::ostream& err) {
    const int exitCode = FinishProcess(code, err);
    if constexpr (kEndsWithoutTeardown) {
        err.flush();
        std::cout.flush();
        std::fflush(nullptr);
        std::_Exit(exitCode);
    }
    return exitCode;
}

}  // namespace kesto
