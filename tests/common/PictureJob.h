// A placed job to draw pictures of: an installation of two processes on one pallet type and
// the job session that read and placed it, as the window does at start.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "common/MiniInstallation.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "session/JobSession.h"
#include "sheet/PlacementPicture.h"
#include "sheet/SortSheet.h"

namespace kesto::test {

// The screen pictures' page size in the tests: the proportions of A4 landscape.
inline constexpr int32_t kPictureWidth = 1684;
inline constexpr int32_t kPictureHeight = 1190;

// Two processes on one pallet type, a choice of pallets, a small-box part and a part far too
// many to place (a piece height of 100 allows five per stack; the plate's group comes first).
inline MiniInstallation PictureInstallation(int pallets) {
    MiniInstallation inst;
    inst.Settings =
        "[FontDefine]\n"
        "FontSet1=-12,0,0,0,Sans\n"
        "FontSet2=13,0,0,0,Mono\n"
        "FontSet4=18,0,0,0,Sans\n"
        "[MainDlg]\n"
        "TitleName=4,\"Kesto\"\n"
        "L-PALLET-CAP=4,\"Pallet\"\n"
        "DRAW-STRING=1,\"Labels\"\n"
        "L-SMALLBOX=1,\"Small boxes\"\n"
        "L-TORIOKI=1,\"Set aside\"\n"
        "B-SBOX1=3,\"Box\"\n"
        "LIST-SBOX=2,\"Small box\"\n"
        "[KakuDlg]\n"
        "Msg008=1,\"Parts left short\"\n"
        "Msg208=1,\"Delete the old result file?\"\n"
        "[PalletSelect]\n"
        "PalletInfo=" +
        std::to_string(pallets) + ",P\n";
    inst.Pallets =
        "P1,PAL-A,0,0,1000,800,500,10,10,300,200,10,10,3,3,5,5,Pallet A\n"
        "B1\nB2\n";
    inst.Job =
        "#BoxInfo\n"
        "PAL,0,1,0,2000,0,2000\n"
        "SB1,100,2,0,500,0,500\n"
        "SB2,101,2,0,500,0,500\n"
        "#End\n"
        "#KouteiInfo\n"
        "1,CUT,PAL-A\n"
        "2,BEND,PAL-A\n"
        "#End\n"
        "#PartsInfo\n"
        "A001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n"
        "A002,2,Plate,PLT-2,280,180,10,3,0,0,0,,,2,G00,0000,,0,,K002,5\n"
        "A003,1,Clip,CLP-3,40,30,11,20,100,0,0,,,1,G02,0000,,0,,K003,1\n"
        "A004,2,Block,BLK-4,290,190,1,500,0,0,0,,,2,G01,0000,,0,,K004,100\n"
        "#End\n";
    return inst;
}

// The job text of one process "CUT" on pallet type PAL-A: the #BoxInfo lines and the
// #PartsInfo lines as given, each line ending in a newline.
inline std::string CutJob(const std::string& boxes, const std::string& parts) {
    return "#BoxInfo\n" + boxes + "#End\n#KouteiInfo\n1,CUT,PAL-A\n#End\n#PartsInfo\n" + parts +
           "#End\n";
}
inline constexpr const char* kPalletBox = "PAL,0,1,0,2000,0,2000\n";
inline constexpr const char* kSmallBox = "SB1,100,2,0,500,0,500\n";

// The picture installation with one part in one stack of four on one pallet; with offset B of
// 100 on the command line that stack, standing from the front margin (y 10), reaches 90 past
// the lower offset line.
inline MiniInstallation OneStackInstallation() {
    MiniInstallation inst = PictureInstallation(1);
    inst.Job =
        CutJob(kPalletBox, "A001,1,Bracket,BRK-1,250,150,1,4,0,0,4,,,2,G01,0000,,0,,K001,10\n");
    return inst;
}

// A job read and placed as the window places it at start.
class PictureJob {
  public:
    // The command line's tokens after the pallet file: direct, inch, offsets, corner.
    explicit PictureJob(const MiniInstallation& inst, const std::string& tokens = " 0 0 0 0 1") {
        inst.Write(folder.Path());
        session = std::make_unique<JobSession>(
            services.Get(), "kesto " + (folder / "pallet/pallets.txt") + tokens, shown);
        EXPECT_TRUE(session->StartUp());
        EXPECT_TRUE(session->Init());
    }
    CKestoApp& App() { return session->App(); }
    ViewState& Shown() { return shown; }
    const MessageTable& Messages() const { return services.Messages; }
    // The screen's pictures.
    PictureDocument Build(int32_t width = kPictureWidth, int32_t height = kPictureHeight) {
        return BuildPlacementPictures(App(), shown, services.Get(), "job.txt", width, height);
    }
    // The sort sheet, dated as a test can know it.
    PictureDocument Sheet() {
        return BuildSortSheet(App(), services.Get(), SheetHeading{"job.txt", "2025-03-04 05:06"});
    }
    const PartsInfo& Part(const std::string& code) {
        for (const PartsInfo& p : App().PartsList) {
            if (p.Code == code)
                return p;
        }
        ADD_FAILURE() << "no part " << code;
        return App().PartsList.Items.front();
    }

    TempFolder folder;
    TestServices services{folder.Path().string()};
    ViewState shown;
    std::unique_ptr<JobSession> session;
};

}  // namespace kesto::test
