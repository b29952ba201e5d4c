// The one writer of an installation on disk, for the tests and the fuzz harnesses alike: setup
// list, settings, pallet file, job and any outlines below a system folder. The texts given
// here make a small but complete job; each text and where it goes can be replaced before
// Write(). Free of the test framework, as the fuzzers build it too.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "common/FileText.h"

namespace kesto::test {

// A setup list naming the given "KEY : value" entries.
inline std::string SetupListText(const std::vector<std::string>& entries) {
    std::string text = "#File\n";
    for (const std::string& entry : entries)
        text += entry + "\n";
    return text + "#End\n";
}

struct MiniInstallation {
    std::string SetupList =
        "; setup list of a test installation\n"
        "#File\n"
        "IEJ : job/job.txt\n"
        "IEK : out/result.csv\n"
        "IEL : out/haichi.csv\n"
        "MSG : ./\n"
        "#End\n";
    std::string Settings =
        "[FontDefine]\n"
        "FontSet1=-12,0,0,0,Sans\n"
        "[KakuDlg]\n"
        "TitleName=1,Kesto\n"
        "Msg001=1,\"No pallet for a process\"\n"
        "Msg002=1,\"Unknown box\"\n"
        "Msg003=1,\"Destination not allowed\"\n"
        "Msg008=1,\"Parts left short\"\n"
        "Msg208=1,\"Result incomplete: delete the old result file?\"\n"
        "Msg209=1,\"A stack lies beyond the offset limit\"\n"
        "[PalletSelect]\n"
        "PalletInfo=2,P\n";
    // One pallet type 1000 x 800, 3 x 3 cells of 300 x 200 with 10 mm gaps.
    std::string Pallets =
        "P1,PAL-A,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,Pallet A\n"
        "B1\n";
    std::string Job =
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

    // Where the settings, the pallet file and the job go, below the system folder; the setup
    // list is always bin/Ks_Setup.ini.
    std::string SettingsFile = "Kesto.ini";
    std::string PalletFile = "pallet/pallets.txt";
    std::string JobFile = "job/job.txt";
    // Further files (outlines, a save file): path below the system folder, text.
    std::vector<std::pair<std::string, std::string>> Others;

    // Writes the installation below root, with an empty out/ for the results (a host store
    // points the system folder at root).
    void Write(const std::filesystem::path& root) const {
        WriteFile(root / "bin/Ks_Setup.ini", SetupList);
        WriteFile(root / SettingsFile, Settings);
        WriteFile(root / PalletFile, Pallets);
        WriteFile(root / JobFile, Job);
        for (const auto& [path, text] : Others)
            WriteFile(root / path, text);
        std::filesystem::create_directories(root / "out");
    }
};

}  // namespace kesto::test
