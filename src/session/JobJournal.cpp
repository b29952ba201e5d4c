#include "session/JobJournal.h"

#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "app/InputReaders.h"
#include "support/JobIdentity.h"
#include "support/SetupList.h"
#include "support/TextFile.h"

namespace kesto {

namespace {

void AddFileIfRead(JobIdentity& identity, const std::string& path) {
    std::string bytes;
    if (!path.empty() && ReadWholeFile(path, bytes) == WholeFile::Read)
        identity.AddFile(bytes);
}

// The command line's values: the tokens after the program's path.
void AddCommandLine(JobIdentity& identity, std::string_view line) {
    size_t at = line.find(' ');
    while (at != std::string_view::npos) {
        const size_t next = line.find(' ', at + 1);
        identity.AddValue(
            line.substr(at + 1, next == std::string_view::npos ? next : next - at - 1));
        at = next;
    }
}

}  // namespace

std::string JobIdentityOf(const JobSession& session) {
    const CKestoApp& app = session.App();
    const Services& services = session.Svc();
    JobIdentity identity;
    AddCommandLine(identity, app.Run.CommandLine);
    AddFileIfRead(identity, SetupListPath(services));
    AddFileIfRead(identity, SettingsFilePath(services));
    AddFileIfRead(identity, app.Run.PalletFilePath);
    AddFileIfRead(identity, GetDataFilePath(services, DataFile::Job));
    AddFileIfRead(identity, GetDataFilePath(services, DataFile::PlacementSave));
    for (const PartsInfo& part : app.PartsList) {
        if (part.HasOutline != 0)
            AddFileIfRead(identity, part.OutlinePath);
    }
    return identity.Hex();
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
        ++found.Commands;
        found.LastTime = parsed.Time;
    }
    if (found.Commands == 0)
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
