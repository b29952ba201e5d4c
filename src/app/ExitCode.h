// The process exit code from the code the job ended with.
#pragma once

#include <iosfwd>
#include <string>

#include "support/Platform.h"
#include "support/Sanitizers.h"

namespace kesto {

inline constexpr int kExitOk = 0;
inline constexpr int kExitNotOk = 100;
inline constexpr int kExitOffsetAbort = 999;

// Only the low 8 bits of a code reach a POSIX host, so there the full code is also printed;
// Windows returns it whole.
#ifdef _WIN32
inline constexpr bool kExitNoticePrinted = false;
#else
inline constexpr bool kExitNoticePrinted = true;
#endif

// 13 (the Enter key) becomes 0; 0 without OK becomes 100.
int SettleExitCode(int param, OkCancel end);
// What a POSIX host sees: the low 8 bits (the full code on Windows).
int ProcessExitCode(int code);
// "kesto: exit code NNNN" for a code other than 0 where kExitNoticePrinted, else "".
std::string ExitCodeNotice(int code);
// What a program returns from main for a settled code, after printing its notice on err.
int FinishProcess(int code, std::ostream& err);

// Builds that look for leaks at the process's end (AddressSanitizer) and Windows (where the
// libraries' own objects end before the window would) tear everything down.
#ifdef _WIN32
inline constexpr bool kEndsWithoutTeardown = false;
#else
inline constexpr bool kEndsWithoutTeardown = !kAddressSanitizer;
#endif

// FinishProcess, then the process ends at once with its code, the output streams flushed, where
// kEndsWithoutTeardown: whatever the job writes is written and synced before, and taking the
// window and the job's records apart would only keep the host waiting for the code. Elsewhere it
// returns the code for main to return.
int EndProcess(int code, std::ostream& err);

}  // namespace kesto
