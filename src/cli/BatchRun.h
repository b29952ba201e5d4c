// kesto-batch: the whole job without a window, on the same core as the window program.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/BatchPicture.h"
#include "cli/BatchReplay.h"
#include "support/Platform.h"

namespace kesto {

// Wrong options, or a report file that cannot be written: the run's own codes are never 2.
inline constexpr int kExitBadUsage = 2;

struct BatchOptions {
    OkCancel Answer = OkCancel::Ok;         // how questions are answered
    std::vector<std::string> Tokens;        // the window program's command line after its own path
    bool Help = false;                      // --help: the usage text, nothing run
    bool Version = false;                   // --version: the version line, nothing run
    bool Quiet = false;                     // --quiet: no report, not even worked out
    std::optional<std::string> ReportFile;  // --report FILE: the report there, not on out
    std::optional<PictureRequest> Picture;  // --picture FILE, --picture-size WxH
    std::optional<ReplayRequest> Replay;    // --replay FILE [--replay-any]
    std::string Error;                      // set when the options cannot be understood
};

BatchOptions ParseBatchOptions(const std::vector<std::string>& args);

// How the run reads the parts' outline files: the report, the pictures and a journal's identity
// take them in, the identity before the placement, the others after it (so they are read beside
// it); a quiet run's files do not depend on them.
OutlineFiles OutlinesOf(const BatchOptions& options);

// Runs the job as the window does when the operator answers OK (or Cancel) at once: settings,
// input, check, restore/trim/fill, place, offset check, SaveAll. Writes the report on out and
// every message on err; with a picture asked for, the pictures of the written job follow the
// report (a failed picture is reported on err and leaves the code as it is); returns the full exit
// code (0, 100, 999 or a start-up code). With a journal to replay, its commands are carried out
// once the placement is made, and the job ends as the journal ends (without an end line, as
// answer says); a journal that cannot be read, is of another job or has a line that cannot be
// carried out ends the run with kExitBadUsage and nothing written. Quiet: nothing on out. A report
// file is written once the job has ended, after its result files, so that it never costs them; when
// it cannot be written, that is said on err and the code is kExitBadUsage.
int RunBatch(const std::string& programPath, const BatchOptions& options, std::ostream& out,
             std::ostream& err, HostStore& host);

std::string BatchUsage();

}  // namespace kesto
