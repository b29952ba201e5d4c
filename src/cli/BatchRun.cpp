#include "cli/BatchRun.h"

#include <ostream>
#include <sstream>

#include "cli/BatchOperator.h"
#include "cli/BatchReport.h"
#include "cli/ProgramRun.h"
#include "session/JobSession.h"
#include "sheet/PlacementPicture.h"
#include "support/OperatorRelay.h"
#include "support/SetupList.h"
#include "support/TextFormat.h"

namespace kesto {

namespace {

// The value of option name at args[i], given as "name value" or "name=value"; nullopt (and
// error set) when it is missing.
std::optional<std::string> OptionValue(const std::vector<std::string>& args, size_t& i,
                                       const std::string& name, const std::string& needs,
                                       std::string& error) {
    const std::string& arg = args[i];
    if (arg.size() > name.size())
        return arg.substr(name.size() + 1);
    if (i + 1 >= args.size()) {
        error = name + " needs a value: " + needs;
        return std::nullopt;
    }
    return args[++i];
}

bool IsOption(const std::string& arg, const std::string& name) {
    return arg == name || arg.rfind(name + "=", 0) == 0;
}

}  // namespace

BatchOptions ParseBatchOptions(const std::vector<std::string>& args) {
    BatchOptions options;
    std::optional<std::string> picture;
    std::optional<std::string> size;
    ReplayRequest replay;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--help" || arg == "-h") {
            options.Help = true;
        } else if (arg == "--version") {
            options.Version = true;
        } else if (IsOption(arg, "--answer")) {
            const auto value = OptionValue(args, i, "--answer", "ok or cancel", options.Error);
            if (!value)
                return options;
            if (*value == "ok") {
                options.Answer = OkCancel::Ok;
            } else if (*value == "cancel") {
                options.Answer = OkCancel::Cancel;
            } else {
                options.Error = "--answer takes ok or cancel, not '" + *value + "'";
                return options;
            }
        } else if (IsOption(arg, "--replay")) {
            const auto file = OptionValue(args, i, "--replay", "a journal file", options.Error);
            if (!file)
                return options;
            if (file->empty()) {
                options.Error = "--replay takes a journal file, not ''";
                return options;
            }
            replay.File = *file;
        } else if (arg == "--replay-any") {
            replay.AnyJob = true;
        } else if (arg == "--quiet") {
            options.Quiet = true;
        } else if (IsOption(arg, "--report")) {
            options.ReportFile = OptionValue(args, i, "--report", "a file", options.Error);
            if (!options.ReportFile)
                return options;
            if (options.ReportFile->empty()) {
                options.Error = "--report takes a file name, not ''";
                return options;
            }
        } else if (IsOption(arg, "--picture")) {
            picture =
                OptionValue(args, i, "--picture", "a file ending in .pdf or .png", options.Error);
            if (!picture)
                return options;
        } else if (IsOption(arg, "--picture-size")) {
            size = OptionValue(args, i, "--picture-size", "WIDTHxHEIGHT", options.Error);
            if (!size)
                return options;
        } else {
            options.Tokens.push_back(arg);
        }
    }
    if (!replay.File.empty()) {
        options.Replay = replay;
    } else if (replay.AnyJob) {
        options.Error = "--replay-any needs --replay";
        return options;
    }
    if (options.Quiet && options.ReportFile) {
        options.Error = "--quiet and --report exclude each other";
        return options;
    }
    if (picture) {
        if (!PictureFormatOf(*picture)) {
            options.Error = "--picture takes a file ending in .pdf or .png, not '" + *picture + "'";
            return options;
        }
        options.Picture = PictureRequest{*picture};
    }
    if (size) {
        const auto pixels = ParsePictureSize(*size);
        if (!pixels) {
            options.Error =
                FormatText("--picture-size takes WIDTHxHEIGHT in pixels, %d to %d each, not '%s'",
                           kPictureSideMin, kPictureSideMax, size->c_str());
            return options;
        }
        if (!options.Picture) {
            options.Error = "--picture-size needs --picture";
            return options;
        }
        options.Picture->Width = pixels->first;
        options.Picture->Height = pixels->second;
    }
    return options;
}

std::string BatchUsage() {
    return "usage: kesto-batch [--answer ok|cancel] [--quiet | --report FILE]\n"
           "                   [--replay JOURNAL [--replay-any]]\n"
           "                   [--picture FILE.pdf|FILE.png [--picture-size WxH]]\n"
           "                   PALLET DIRECT INCH OFFSET_A OFFSET_B CORNER\n"
           "       kesto-batch --help | --version\n"
           "Runs a Kesto job without a window: reads the settings, the pallet file and the job,\n"
           "places every part, checks the offsets and writes the result and save files.\n"
           "Questions are answered with --answer (default ok); messages go to stderr.\n"
           "The report (what was read, the stacks, the parts left short with why, the stacks\n"
           "across an offset line, the files written) goes to stdout. --report FILE writes it\n"
           "into FILE instead, after the result files (a FILE that cannot be written: exit\n"
           "code 2, the result files stay written); --quiet leaves it out.\n"
           "--replay carries out the commands of a journal the window wrote (see the README,\n"
           "\"The journal\") once the placement is made, and ends the job as the journal\n"
           "ends: ok, cancel, or without an end line as --answer says. A journal of another\n"
           "job, or a line that cannot be carried out, ends with exit code 2 and nothing\n"
           "written; --replay-any does not check the journal's job line.\n"
           "--picture draws the written placement. FILE.pdf gets the sort sheet: an A4\n"
           "landscape page per pallet that holds stacks (its drawing and the table of its\n"
           "stacks, a long table going on over more pages), then the summary pages: small\n"
           "boxes, set-aside parts, parts left short with why, stacks across an offset line.\n"
           "FILE.png gets the screen's pictures: an image per process and four of its pallets,\n"
           "then the listing of the same four lists, as FILE-01.png, FILE-02.png, ... of\n"
           "--picture-size pixels (default 1600x1000).\n";
}

OutlineFiles OutlinesOf(const BatchOptions& options) {
    if (options.Replay)
        return OutlineFiles::Read;
    if (!options.Quiet || options.Picture)
        return OutlineFiles::Beside;
    return OutlineFiles::Unread;
}

namespace {

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
        if (session.ErrorCode() != error::kNone)
            out << " (error code " << session.ErrorCode() << ")";
        out << "; the job was left without OK.\n";
    } else if (!app.PartsList.Empty()) {
        ReportFiles(session.Svc(), out);
    }
}

}  // namespace

namespace {

// The operator's messages of a stretch of the job held back from the moment this is made, so
// that a report of that stretch, worked out meanwhile or after it, can come out first.
class HeldMessages {
  public:
    HeldMessages(OperatorRelay& relay, const MessageTable& messages, OkCancel answer)
        : relay_(relay), speaking_(relay.Target()), holding_(messages, held_, answer) {
        relay_.RelayTo(holding_);
    }
    HeldMessages(const HeldMessages&) = delete;
    HeldMessages& operator=(const HeldMessages&) = delete;
    ~HeldMessages() { relay_.RelayTo(speaking_); }

    // Messages go out again; those held are written on err.
    void Release(std::ostream& err) {
        relay_.RelayTo(speaking_);
        err << held_.str() << std::flush;
        held_.str("");
    }

  private:
    OperatorRelay& relay_;
    Operator& speaking_;
    std::ostringstream held_;
    BatchOperator holding_;
};

// The placement, then the input report: the outlines it counts are read beside the placement.
void PlaceAfterInputReport(JobSession& session, OperatorRelay& relay, const MessageTable& messages,
                           OkCancel answer, std::ostream& report, std::ostream& err) {
    HeldMessages held(relay, messages, answer);
    session.Init();
    ReportInput(session.App(), report);
    held.Release(err);
}

// The placement report, then the end of the job (the files written, its messages). Finishing
// only reads what the report reads and writes nothing on report, so the report is written
// beside it.
void FinishAfterReport(JobSession& session, OkCancel end, OperatorRelay& relay,
                       const MessageTable& messages, OkCancel answer, std::ostream& report,
                       std::ostream& err) {
    PlacementReportThread placement(session.App(), session.Svc(), report);
    HeldMessages held(relay, messages, answer);
    if (!session.Ended())
        session.Finish(end);
    placement.Wait();
    held.Release(err);
}

// The job, with its report on report; without a report (none worked out) when it is null.
int RunJob(const std::string& programPath, const BatchOptions& options, std::ostream* report,
           std::ostream& err, HostStore& host) {
    std::optional<JournalFile> journal;
    if (options.Replay) {
        journal = ReadReplayJournal(*options.Replay, err);
        if (!journal)
            return kExitBadUsage;
    }
    MessageTable messages;
    BatchOperator op(messages, err, options.Answer);
    // A replay answers Retry's and Auto's questions itself.
    OperatorRelay relay(op);
    std::vector<std::string> words{programPath};
    words.insert(words.end(), options.Tokens.begin(), options.Tokens.end());
    // What a window would show: the pictures take their toggles from it.
    ViewState shown;
    JobSession session(Services{relay, host, messages}, JoinCommandLine(words), shown);
    if (!session.StartUp(OutlinesOf(options)))
        return session.Exit();
    // Refused before anything of the job is written, the per-user values included.
    if (journal && !JournalFitsJob(*options.Replay, *journal, session, err))
        return kExitBadUsage;
    // The window with the operator pressing OK (or Cancel) as soon as it is up, or after the
    // journal's commands.
    if (report != nullptr)
        PlaceAfterInputReport(session, relay, messages, options.Answer, *report, err);
    else
        session.Init();
    OkCancel end = options.Answer;
    if (journal && !session.Ended()) {
        const BatchReplayed replayed =
            ReplayOnBatch(*options.Replay, *journal, session, relay, op, err);
        if (!replayed.Ok)
            return kExitBadUsage;
        end = replayed.End.value_or(end);
        if (report != nullptr)
            *report << "Replayed: " << replayed.Commands << " commands of " << options.Replay->File
                    << "\n";
    }
    if (report != nullptr && !session.Aborted())
        FinishAfterReport(session, end, relay, messages, options.Answer, *report, err);
    else if (!session.Ended())
        session.Finish(end);
    if (report != nullptr)
        ReportEnd(session, *report);
    // Drawn before Exit, which frees the job; only a job whose files were written.
    if (options.Picture && session.Ended() && !session.Aborted()) {
        std::ostream nowhere(nullptr);
        WriteBatchPictures(session, *options.Picture, PictureProgramPath(programPath),
                           report != nullptr ? *report : nowhere, err);
    }
    return session.Exit();
}

}  // namespace

int RunBatch(const std::string& programPath, const BatchOptions& options, std::ostream& out,
             std::ostream& err, HostStore& host) {
    if (!options.ReportFile)
        return RunJob(programPath, options, options.Quiet ? nullptr : &out, err, host);
    std::ostringstream report;
    const int code = RunJob(programPath, options, &report, err, host);
    // A refused journal writes nothing, the report neither.
    if (code == kExitBadUsage)
        return code;
    std::string error;
    if (!WriteReportFile(*options.ReportFile, report.str(), error)) {
        err << "kesto-batch: report not written: " << error
            << " (the job itself ended with exit code " << code << ")\n";
        return kExitBadUsage;
    }
    return code;
}

}  // namespace kesto
