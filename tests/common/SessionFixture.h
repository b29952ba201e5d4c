// A job session on a small installation in a temporary folder: the setup list names the
// result file out/res.csv and the save file out/save.csv, Kesto.ini gives one pallet to choose
// and the offset warning's text. The job itself is filled into the session's application
// object in code: the grid pallet "PAL" (blocks of 300 x 200, the first (690,10)-(990,210)),
// process 1 on it, and box 0 of kind 10.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "common/PartFields.h"
#include "common/PlacementFixture.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "session/JobSession.h"

namespace kesto::test {

class SessionTest : public ::testing::Test {
  protected:
    using Kaku = std::vector<std::pair<int, int>>;
    using Lines = std::vector<std::string>;

    SessionTest() {
        WriteFile(root / "bin/Ks_Setup.ini",
                  "#File\nIEK : out/res.csv\nIEL : out/save.csv\n#End\n");
        WriteFile(root / "Kesto.ini",
                  "[KakuDlg]\nMsg209=1,\"Offset over\"\n[PalletSelect]\nPalletInfo=1,P\n");
        std::filesystem::create_directories(root.Path() / "out");
        EXPECT_EQ(testServices.Messages.Load(root / "Kesto.ini", testServices.Op), 0);
        pallet = &job.AddPallet(GridPallet("PAL"));
        job.AddKoutei(1, "PAL");
        job.AddBox(0, 10);
    }

    // A part as named, with what the session's files show filled in where not named: 300 x 200,
    // pieces 1 high, No = Seq, Name "N<Seq>", DisplayName "T<Seq>", GroupKey "G1", SensitiveSides
    // "0000" (and, as AddPart gives every part, process 1 and Code "A<Seq>").
    PartsInfo& AddPart(PartFields fields) {
        if (fields.SizeX == 0 && fields.SizeY == 0) {
            fields.SizeX = 300;
            fields.SizeY = 200;
        }
        if (!fields.PieceHeight)
            fields.PieceHeight = 1;
        PartsInfo& p = test::AddPart(app, fields);
        if (p.No == 0)
            p.No = p.Seq;
        if (p.Name.empty())
            p.Name = "N" + std::to_string(p.Seq);
        if (p.DisplayName.empty())
            p.DisplayName = "T" + std::to_string(p.Seq);
        if (p.GroupKey.empty())
            p.GroupKey = "G1";
        if (p.SensitiveSides.empty())
            p.SensitiveSides = "0000";
        return p;
    }
    std::string Out(const std::string& name) const { return root / ("out/" + name); }
    bool Exists(const std::string& name) const { return std::filesystem::exists(Out(name)); }
    bool NothingWritten() const { return std::filesystem::is_empty(root.Path() / "out"); }

    TempFolder root;
    TestServices testServices{root.Path().string()};
    RecordingOperator& op = testServices.Op;
    ViewState shown;
    JobSession session{testServices.Get(), "kesto", shown};
    CKestoApp& app = session.App();
    JobBuilder job{app};
    PalletInfo* pallet = nullptr;
};

}  // namespace kesto::test
