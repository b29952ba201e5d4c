// kesto-batch: runs a Kesto job from the command line to the exit code, without a window.
#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

#include "app/ExitCode.h"
#include "cli/BatchRun.h"
#include "support/HeapGrowth.h"
#include "support/Version.h"

int main(int argc, char** argv) {
    kesto::GrowHeapsInLargeSteps();
#ifdef _WIN32
    // The messages and summaries are UTF-8: a console shows them so only in code page 65001.
    SetConsoleOutputCP(CP_UTF8);
#endif
    std::vector<std::string> args(argv + 1, argv + argc);
    const kesto::BatchOptions options = kesto::ParseBatchOptions(args);
    if (options.Help) {
        std::cout << kesto::BatchUsage();
        return 0;
    }
    if (options.Version) {
        std::cout << kesto::VersionLine("kesto-batch") << "\n";
        return 0;
    }
    if (!options.Error.empty()) {
        std::cerr << "kesto-batch: " << options.Error << "\n" << kesto::BatchUsage();
        return kesto::kExitBadUsage;
    }
    kesto::DefaultHostStore host;
    const int code =
        kesto::RunBatch(argc > 0 ? argv[0] : "kesto-batch", options, std::cout, std::cerr, host);
    std::cout.flush();
    return kesto::FinishProcess(code, std::cerr);
}
