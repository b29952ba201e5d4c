#include "Harnesses.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "cli/BatchRun.h"
#include "common/MiniInstallation.h"
#include "history/Journal.h"
#include "session/JobSession.h"
#include "support/SetupList.h"

namespace kesto::fuzz {

namespace {

// The tests' small installation, whose job places well: one pallet type, a box, three parts in
// one process. The placement harness puts its input beside it as the save file.
const test::MiniInstallation& Installation() {
    static const test::MiniInstallation files;
    return files;
}

// The arguments of a process: the bytes split at NUL (an argument cannot hold one).
std::vector<std::string> Arguments(const uint8_t* data, size_t size) {
    std::vector<std::string> args(1);
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == 0)
            args.emplace_back();
        else
            args.back() += static_cast<char>(data[i]);
    }
    return args;
}

}  // namespace

int FuzzPalletFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("pallet/pallets.txt", data, size);
    CKestoApp app;
    app.Run.CommandLine = "kesto " + site.Path("pallet/pallets.txt") + " 0 0 0 0 1";
    app.ParseCommandLine();
    if (!ReadPalletFile(app).Ok())
        return -1;
    return app.PalletList.Count;
}

int FuzzJobFile(FuzzSite& site, const uint8_t* data, size_t size) {
    if (NamesMachineFile(data, size))
        return -1;
    site.Write("bin/Ks_Setup.ini", Installation().SetupList);
    site.Write("job/job.txt", data, size);
    MessageTable messages;
    CKestoApp app;
    if (!ReadJobFile(app, site.Make(messages)).Ok())
        return -1;
    return app.PartsList.Count;
}

int FuzzOutlineFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("outline/part.txt", data, size);
    PartsInfo part;
    part.OutlinePath = site.Path("outline/part.txt");
    part.HasOutline = 1;
    if (!ReadOutline(part).Ok())
        return -1;
    return part.ShapeCount;
}

int FuzzMessageFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("bin/Ks_Setup.ini", Installation().SetupList);
    site.Write("Kesto.ini", data, size);
    MessageTable messages;
    const Services services = site.Make(messages);
    CKestoApp app;
    if (!app.InitSettings(services).Ok())
        return -1;
    // What the window looks up first: its title, a message and the pallet choice.
    messages.GetFontText("KakuDlg", "TitleName");
    messages.Get("KakuDlg", KakuKey(1));
    app.ReadPalletSelect(messages);
    return app.Settings.PalletCount;
}

int FuzzSetupList(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("bin/Ks_Setup.ini", data, size);
    MessageTable messages;
    const Services services = site.Make(messages);
    int found = 0;
    for (const DataFile file : {DataFile::Job, DataFile::Result, DataFile::PlacementSave})
        found += GetDataFilePath(services, file).empty() ? 0 : 1;
    std::string folder;
    found += GetSetupFolder(services, "MSG", folder);
    return found;
}

int FuzzCommandLine(FuzzSite& /*site*/, const uint8_t* data, size_t size) {
    const BatchOptions options = ParseBatchOptions(Arguments(data, size));
    if (!options.Error.empty())
        return -1;
    CKestoApp app;
    app.Run.CommandLine = "kesto";
    for (const std::string& token : options.Tokens)
        app.Run.CommandLine += " " + token;
    app.ParseCommandLine();
    return app.Settings.StartCorner;
}

int FuzzPlacementFile(FuzzSite& site, const uint8_t* data, size_t size) {
    Installation().Write(site.Folder());
    site.Write("out/haichi.csv", data, size);
    MessageTable messages;
    ViewState shown;
    JobSession session(site.Make(messages),
                       "kesto " + site.Path(Installation().PalletFile) + " 0 0 0 0 1", shown);
    if (!session.StartUp())
        return -1;
    session.Init();
    session.Finish(OkCancel::Ok);
    return static_cast<int>(session.App().HaichiList.size());
}

int FuzzJournal(FuzzSite& site, const uint8_t* data, size_t size) {
    // Where the session keeps the journal of a job, below the state folder.
    const std::string relative = "state/journal/" + std::string(64, '0') + ".journal";
    site.Write(relative, data, size);
    const JournalFile journal = ReadJournalFile(site.Path(relative));
    if (!journal.Error.empty())
        return -1;
    for (const auto& numbered : journal.Lines) {
        const ParsedJournalLine& line = numbered.second;
        if (line.Kind != ParsedJournalLine::Kind::Command)
            continue;
        const ParsedJournalLine again = ParseJournalLine(JournalLine(line.Time, line.Command));
        if (again.Kind != ParsedJournalLine::Kind::Command || !(again.Command == line.Command))
            std::abort();
    }
    return static_cast<int>(journal.Lines.size());
}

}  // namespace kesto::fuzz
