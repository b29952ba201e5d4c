// A small but complete installation (setup list, settings, pallets, job) for tests that run
// whole jobs. Each file can be replaced before Write().
#pragma once

#include <string>

#include "common/TestFiles.h"

namespace kesto::test {

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

    // Writes the installation below folder (a host store points the system folder at it).
    void Write(const TempFolder& folder) const {
        WriteFile(folder / "bin/Ks_Setup.ini", SetupList);
        WriteFile(folder / "Kesto.ini", Settings);
        WriteFile(folder / "pallet/pallets.txt", Pallets);
        WriteFile(folder / "job/job.txt", Job);
        std::filesystem::create_directories(folder.Path() / "out");
    }
};

}  // namespace kesto::test
