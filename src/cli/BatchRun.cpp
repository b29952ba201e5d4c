#include "cli/BatchRun.h"

#include <ostream>

#include "app/CKestoApp.h"
#include "app/ExitCode.h"
#include "cli/BatchReport.h"
#include "output/CKs_FileSave.h"
#include "placement/JobPlacement.h"
#include "support/MessageFile.h"
#include "support/Platform.h"
#include "support/SetupList.h"

namespace kesto {

BatchOptions ParseBatchOptions(const std::vector<std::string>& args) {
    BatchOptions options;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.Help = true;
        } else if (arg == "--answer" || arg.rfind("--answer=", 0) == 0) {
            std::string value;
            if (arg == "--answer") {
                if (i + 1 >= args.size()) {
                    options.Error = "--answer needs a value: ok or cancel";
                    return options;
                }
                value = args[++i];
            } else {
                value = arg.substr(9);
            }
            if (value == "ok") {
                options.Answer = 1;
            } else if (value == "cancel") {
                options.Answer = 2;
            } else {
                options.Error = "--answer takes ok or cancel, not '" + value + "'";
                return options;
            }
        } else {
            options.Tokens.push_back(arg);
        }
    }
    return options;
}

std::string BatchUsage() {
    return "usage: kesto-batch [--answer ok|cancel] PALLET DIRECT INCH OFFSET_A OFFSET_B CORNER\n"
           "Runs a Kesto job without a window: reads the settings, the pallet file and the job,\n"
           "places every part, checks the offsets and writes the result and save files.\n"
           "Questions are answered with --answer (default ok); messages go to stderr.\n";
}

namespace {

std::string JoinCommandLine(const std::string& programPath,
                            const std::vector<std::string>& tokens) {
    std::string line = programPath;
    for (const std::string& t : tokens) {
        line += ' ';
        line += t;
    }
    return line;
}

// The files a successful SaveAll leaves behind.
void ReportFiles(std::ostream& out) {
    const std::string result = GetDataFilePath(96);
    out << "Files:\n";
    out << "  side file   " << result << "_tmp\n";
    out << "  result file " << result << "\n";
    out << "  save file   " << GetDataFilePath(97) << "\n";
}

int StartUpFailure(const CKestoApp& app) {
    return app.ExitParam != 0 ? app.ExitParam : kExitNotOk;
}

}  // namespace

int RunBatch(const std::string& programPath, const BatchOptions& options, std::ostream& out) {
    StderrOperator op(options.Answer);
    InstallOperator(&op);
    struct Uninstall {
        ~Uninstall() {
            InstallOperator(nullptr);
            FreeMessageFile();
        }
    } uninstall;

    CKestoApp app;
    app.CommandLine = JoinCommandLine(programPath, options.Tokens);
    if (!app.InitSettings()) {
        app.ExitParam = app.ErrorCode;
        return StartUpFailure(app);
    }
    if (!app.ReadInput())
        return StartUpFailure(app);
    ReportInput(app, out);

    if (!CheckJob(app)) {
        out << "The job check failed (message " << app.KakuMsgNo1 << "); nothing was written.\n";
        return kExitNotOk;
    }
    if (!PlaceJob(app, 0, 1, {})) {
        out << "The placement failed (error code " << app.ErrorCode << "); nothing was written.\n";
        return kExitNotOk;
    }
    ReportPlacement(app, out);

    CKs_FileSave save(app);
    if (!save.CheckOffsets()) {
        out << "Stopped at the offset warning; nothing was written.\n";
        return kExitOffsetAbort;
    }
    if (!save.SaveAll()) {
        out << "The result files were not written";
        if (app.ErrorCode != 0)
            out << " (error code " << app.ErrorCode << ")";
        out << ".\n";
        return kExitNotOk;
    }
    if (!app.PartsList.Empty())
        ReportFiles(out);
    return kExitOk;
}

}  // namespace kesto
