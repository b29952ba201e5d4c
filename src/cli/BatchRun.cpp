#include "cli/BatchRun.h"

#include <ostream>

#include "cli/BatchOperator.h"
#include "cli/BatchReport.h"
#include "session/JobSession.h"
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

// The files a job that ended through SaveAll leaves behind.
void ReportFiles(const Services& services, std::ostream& out) {
    const std::string result = GetDataFilePath(services, DataFile::Result);
    out << "Files:\n";
    out << "  side file   " << result << "_tmp\n";
    out << "  result file " << result << "\n";
    out << "  save file   " << GetDataFilePath(services, DataFile::PlacementSave) << "\n";
}

void ReportEnd(const JobSession& session, std::ostream& out) {
    const CKestoApp& app = session.App();
    if (session.Aborted()) {
        out << "Stopped at the offset warning; nothing was written.\n";
    } else if (!session.Ended()) {
        out << "The result files were not written";
        if (app.ErrorCode != 0)
            out << " (error code " << app.ErrorCode << ")";
        out << "; the job was left without OK.\n";
    } else if (!app.PartsList.Empty()) {
        ReportFiles(session.Svc(), out);
    }
}

}  // namespace

int RunBatch(const std::string& programPath, const BatchOptions& options, std::ostream& out,
             std::ostream& err, HostStore& host) {
    MessageTable messages;
    BatchOperator op(messages, err, options.Answer);
    JobSession session(Services{op, host, messages}, JoinCommandLine(programPath, options.Tokens));
    if (!session.StartUp())
        return session.Exit();
    ReportInput(session.App(), out);
    // The window with the operator pressing OK (or Cancel) as soon as it is up.
    session.Init();
    if (!session.Aborted())
        ReportPlacement(session.App(), out);
    if (!session.Ended())
        session.Finish(options.Answer == 1 ? JobEnd::Ok : JobEnd::Cancel);
    ReportEnd(session, out);
    return session.Exit();
}

}  // namespace kesto
