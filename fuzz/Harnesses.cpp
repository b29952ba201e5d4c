#include "Harnesses.h"

#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "cli/BatchRun.h"
#include "session/JobSession.h"
#include "support/SetupList.h"

namespace kesto::fuzz {

namespace {

// A small installation whose job places well: one pallet type, a box, three parts in one
// process. The placement harness puts its input beside it as the save file.
constexpr const char* kSetupList =
    "#File\n"
    "IEJ : job/job.txt\n"
    "IEK : out/result.csv\n"
    "IEL : out/haichi.csv\n"
    "MSG : ./\n"
    "#End\n";
constexpr const char* kSettings =
    "[FontDefine]\n"
    "FontSet1=-12,0,0,0,Sans\n"
    "[KakuDlg]\n"
    "TitleName=1,Kesto\n"
    "Msg001=1,\"No pallet for a process\"\n"
    "Msg008=1,\"Parts left short\"\n"
    "Msg209=1,\"A stack lies beyond the offset limit\"\n"
    "[PalletSelect]\n"
    "PalletInfo=2,P\n";
constexpr const char* kPallets =
    "P1,PAL-A,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,Pallet A\n"
    "B1\n";
constexpr const char* kJob =
    "#BoxInfo\n"
    "PAL,0,1,0,2000,0,2000\n"
    "SB1,100,2,0,500,0,500\n"
    "#End\n"
    "#KouteiInfo\n"
    "1,CUT,PAL-A\n"
    "#End\n"
    "#PartsInfo\n"
    "A001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n"
    "A002,1,Plate,PLT-2,280,180,10,3,0,0,0,,,2,G01,0000,,0,,K002,5\n"
    "A003,1,Clip,CLP-3,40,30,11,20,100,0,0,,,1,G02,0000,,0,,K003,1\n"
    "#End\n";

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
    app.CommandLine = "kesto " + site.Path("pallet/pallets.txt") + " 0 0 0 0 1";
    app.ParseCommandLine();
    if (ReadPalletFile(app) == 0)
        return -1;
    return app.PalletList.Count;
}

int FuzzJobFile(FuzzSite& site, const uint8_t* data, size_t size) {
    if (NamesMachineFile(data, size))
        return -1;
    site.Write("bin/Ks_Setup.ini", kSetupList);
    site.Write("job/job.txt", data, size);
    MessageTable messages;
    CKestoApp app;
    if (ReadJobFile(app, site.Make(messages)) == 0)
        return -1;
    return app.PartsList.Count;
}

int FuzzOutlineFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("outline/part.txt", data, size);
    CKestoApp app;
    PartsInfo part;
    part.OutlinePath = site.Path("outline/part.txt");
    part.HasOutline = 1;
    if (ReadOutline(app, part) == 0)
        return -1;
    return part.ShapeCount;
}

int FuzzMessageFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("bin/Ks_Setup.ini", kSetupList);
    site.Write("Kesto.ini", data, size);
    MessageTable messages;
    const Services services = site.Make(messages);
    CKestoApp app;
    if (app.InitSettings(services) == 0)
        return -1;
    // What the window looks up first: its title, a message and the pallet choice.
    messages.GetFontText("KakuDlg", "TitleName");
    messages.Get("KakuDlg", KakuKey(1));
    app.ReadPalletSelect(messages);
    return app.PalletCount;
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
    app.CommandLine = "kesto";
    for (const std::string& token : options.Tokens)
        app.CommandLine += " " + token;
    app.ParseCommandLine();
    return app.StartCorner;
}

int FuzzPlacementFile(FuzzSite& site, const uint8_t* data, size_t size) {
    site.Write("bin/Ks_Setup.ini", kSetupList);
    site.Write("Kesto.ini", kSettings);
    site.Write("pallet/pallets.txt", kPallets);
    site.Write("job/job.txt", kJob);
    site.Write("out/haichi.csv", data, size);
    MessageTable messages;
    ViewState shown;
    JobSession session(site.Make(messages),
                       "kesto " + site.Path("pallet/pallets.txt") + " 0 0 0 0 1", shown);
    if (!session.StartUp())
        return -1;
    session.Init();
    session.Finish(OkCancel::Ok);
    return static_cast<int>(session.App().HaichiList.Items.size());
}

}  // namespace kesto::fuzz
