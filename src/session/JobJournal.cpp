#include "session/JobJournal.h"

#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "app/InputReaders.h"
#include "support/JobIdentity.h"
#include "support/MessageFile.h"
#include "support/SetupList.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

// The command line's values: the tokens after the program's path.
std::vector<std::string> ValuesOf(std::string_view line) {
    std::vector<std::string> values;
    size_t at = line.find(' ');
    while (at != std::string_view::npos) {
        const size_t next = line.find(' ', at + 1);
        values.emplace_back(
            line.substr(at + 1, next == std::string_view::npos ? next : next - at - 1));
        at = next;
    }
    return values;
}

// text with every {name} replaced by value.
std::string Filled(std::string text, const std::string& name, const std::string& value) {
    const std::string mark = "{" + name + "}";
    for (size_t at = text.find(mark); at != std::string::npos;
         at = text.find(mark, at + value.size())) {
        text.replace(at, mark.size(), value);
    }
    return text;
}

}  // namespace

std::string RecoveryQuestion(const MessageTable& messages, const UnfinishedJournal& found) {
    // 2026-11-26T10:05:00.500 is shown as 2026-11-26 10:05:00.
    std::string time = found.LastTime.substr(0, 19);
    if (time.size() > 10)
        time[10] = ' ';
    const std::string text = TextOr(messages, "MainDlg", "M-RECOVER",
                                    "Kesto ended while this job was open, at {time}, after {n} "
                                    "corrections. Restore them?");
    return Filled(Filled(text, "time", time), "n", std::to_string(found.Corrections));
}

std::string NoJournalText(const MessageTable& messages, const std::string& path) {
    const std::string text = TextOr(messages, "MainDlg", "S-NO-JOURNAL",
                                    "The corrections are not journaled: {path} cannot be written.");
    return Filled(text, "path", path.empty() ? std::string("no state folder") : path);
}

JobInputs InputsOf(const JobSession& session) {
    const CKestoApp& app = session.App();
    const Services& services = session.Svc();
    JobInputs inputs{ValuesOf(app.Run.CommandLine),
                     {SetupListPath(services), SettingsFilePath(services), app.Run.PalletFilePath,
                      GetDataFilePath(services, DataFile::Job),
                      GetDataFilePath(services, DataFile::PlacementSave)}};
    for (const PartsInfo& part : app.PartsList) {
        if (part.HasOutline != 0)
            inputs.Files.push_back(part.OutlinePath);
    }
    return inputs;
}

std::string IdentityOf(const JobInputs& inputs) {
    JobIdentity identity;
    for (const std::string& value : inputs.Values)
        identity.AddValue(value);
    std::string bytes;
    for (const std::string& path : inputs.Files) {
        if (!path.empty() && ReadWholeFile(path, bytes) == WholeFile::Read)
            identity.AddFile(bytes);
    }
    return identity.Hex();
}

std::string JobIdentityOf(const JobSession& session) {
    return IdentityOf(InputsOf(session));
}

JobJournal::JobJournal(const std::string& stateFolder, const std::string& jobHex)
    : folder_(stateFolder), jobHex_(jobHex) {
    if (!folder_.empty())
        path_ = JournalPath(folder_, jobHex_);
}

std::optional<UnfinishedJournal> JobJournal::Unfinished() const {
    std::error_code error;
    if (path_.empty() || !std::filesystem::exists(path_, error))
        return std::nullopt;
    UnfinishedJournal found;
    found.File = ReadJournalFile(path_);
    if (!found.File.Error.empty() || found.File.Job != jobHex_ || found.File.End)
        return std::nullopt;
    for (const auto& [line, parsed] : found.File.Lines) {
        if (parsed.Kind != ParsedJournalLine::Kind::Command)
            continue;
        found.Corrections += IsCorrection(parsed.Command.Verb) ? 1 : 0;
        found.LastTime = parsed.Time;
    }
    if (found.Corrections == 0)
        return std::nullopt;
    return found;
}

void JobJournal::Discard() {
    if (!path_.empty())
        DiscardJournal(path_);
}

bool JobJournal::Open() {
    if (path_.empty()) {
        Fail();
        return false;
    }
    const std::filesystem::path journals = std::filesystem::path(path_).parent_path();
    KeepEndedJournalAside(path_);
    PruneEndedJournals(journals.string());
    // A journal the writer will not append to (an ended one, another job's) starts afresh.
    open_ = writer_.Open(path_, jobHex_);
    if (!open_) {
        DiscardJournal(path_);
        open_ = writer_.Open(path_, jobHex_);
    }
    if (!open_)
        Fail();
    return open_;
}

void JobJournal::Write(const JournalCommand& command) {
    if (!open_)
        return;
    if (!writer_.Append(JournalLine(JournalTimeText(std::chrono::system_clock::now()), command))) {
        open_ = false;
        Fail();
    }
}

void JobJournal::Fail() {
    if (told_)
        return;
    told_ = true;
    if (tell_)
        tell_(path_);
}

}  // namespace kesto
