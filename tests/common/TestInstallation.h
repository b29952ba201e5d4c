// A small Kesto installation in a fresh temporary folder: system folder, setup list, settings
// and message file, pallet file and job, for the window tests.
#pragma once

#include <filesystem>
#include <string>

#include "common/MiniInstallation.h"
#include "common/TestFiles.h"

namespace kesto::test {

inline const char* kDefaultKestoIni = R"([FontDefine]
FontSet1=16,0,0,0,DejaVuSans
FontSet2=-20,0,0,128,DejaVuSans
FontSet3=12,0,0
[MainDlg]
TitleName=1,KestoMain
L-SMALLBOX=1,SBoxLabel
L-SCH=1,SchLabel
L-TORIOKI=1,ToriLabel
L-ALLPARTS=1,AllLabel
B-SBOX1=2,Box
B-SBOX2=1,?????
B-SBOX3=1,Box3
B-STOT=1,DownX
B-TTOS=1,UpX
B-PTOT=1,LeftX
B-TTOP=1,RightX
B-RETRY=2,?????
B-AUTO=4,AutoX
B-MAICHG=3,MaiX
L-HIT=1,HitX
B-HITB=1,HitBlock
B-HITS=1,HitSingle
B-3D=1,ThreeD
B-GRID=1,GridX
B-INFO=1,InfoX
B-FLAT=1,FlatX
B-DANMEN=1,DanmenX
B-PALLET2=1,TwoPal
B-OK=1,OkX
LIST-PTALL=2,x
LIST-SCH=1,x
LIST-SBOX=1,x
LIST-TORIOKI=1,x
LIST-PALLET-SEL=3,x
B-PALLET4=1,FourPal
B-SBOXP=1,Prev
B-SBOXN=1,Next
B-NEST-A=1,NestA
B-NEST-D=2,NestD
B-BLOCKDRAW=1,BlockDraw
B-CAN=9,CanX
[KakuDlg]
TitleName=1,Confirm
Msg001=1,NoPallet
Msg002=1,UnknownBox
Msg003=1,NotAllowed
Msg004=1,NotASmallBox
Msg005=1,TooBigForTheBox
Msg006=1,CheckTheSize
Msg007=1,NoLineSelected
Msg011=1,PartIsOnThePallets
Msg012=1,CannotGoToABox
Msg202=1,RetryThePlacementFromTheInputFiles
Msg203=1,ReallyRetry
Msg204=1,AutoPlacement
Msg205=1,KeepThePlacedCounts
Msg209=1,OffsetWarning
ButtonOk=1,Yes
ButtonCan=1,No
[PalletSelect]
PalletInfo=2,P
)";

inline const char* kDefaultPallet =
    "B1\n"
    "B2\n"
    "P1,PAL1,0,0,1000,800,500,0,0,300,250,10,10,3,3,0,0,Pallet-One\n";

inline const char* kDefaultJob =
    "#BoxInfo\n"
    "PAL,1,0,0,2000,0,2000\n"
    "SB1,100,0,10,100,10,100\n"
    "SB2,101,0,0,50,0,50\n"
    "#End\n"
    "#KouteiInfo\n"
    "1,Cut,PAL1\n"
    "2,Bend,PAL1\n"
    "#End\n"
    "#PartsInfo\n"
    "A1,1,PartA,TextA,200,150,1,5,1,0,5,,,1.0,G1,0000,,0,,X0,10\n"
    "A2,1,PartB,TextB,100,100,0,3,100,0,5,,,1.0,G1,0000,,0,,X0,10\n"
    "A3,2,PartC,TextC,50,40,10,2,1,0,5,,,1.0,G2,0000,,0,,X0,10\n"
    "#End\n";

// The window tests' installation: the settings with every text of the main window in msg/,
// the pallet file at the top of the system folder.
inline MiniInstallation WindowInstallation() {
    MiniInstallation files;
    files.SetupList = SetupListText(
        {"IEJ : job/job.txt", "IEK : out/result.csv", "IEL : out/haichi.csv", "MSG : msg/"});
    files.SettingsFile = "msg/Kesto.ini";
    files.Settings = kDefaultKestoIni;
    files.PalletFile = "pallet.txt";
    files.Pallets = kDefaultPallet;
    files.Job = kDefaultJob;
    return files;
}

class TestInstallation {
  public:
    // The files of the installation in a fresh folder named after the running test. Nothing
    // points the program at it: hand Root() to a host store as the system folder.
    TestInstallation() { WindowInstallation().Write(folder_.Path()); }
    TestInstallation(const TestInstallation&) = delete;
    TestInstallation& operator=(const TestInstallation&) = delete;

    const std::filesystem::path& Root() const { return folder_.Path(); }
    std::filesystem::path Path(const std::string& relative) const {
        return folder_.Path() / relative;
    }

    void Write(const std::string& relative, const std::string& text) const {
        WriteFile(folder_ / relative, text);
    }
    std::string Read(const std::string& relative) const { return ReadFile(folder_ / relative); }
    bool Exists(const std::string& relative) const {
        return std::filesystem::exists(folder_.Path() / relative);
    }

    // The command line the host gives: program, pallet file, direct, inch, offsets, corner.
    std::string CommandLine(const std::string& offsets = "0 0") const {
        return "kesto " + Path("pallet.txt").string() + " 0 0 " + offsets + " 1";
    }

  private:
    TempFolder folder_;
};

}  // namespace kesto::test
