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

    // A part of process 1, 300 x 200, one piece 1 high, with the texts the files show:
    // No = Seq, Code "A<Seq>", Name "N<Seq>", Text1 "T<Seq>", GroupKey "G1".
    PartsInfo& AddPart(int32_t num1, int32_t num2 = 0) {
        PartsInfo& p = job.AddPart(1, 300, 200, num1);
        p.No = p.Seq;
        p.Name = "N" + std::to_string(p.Seq);
        p.DisplayName = "T" + std::to_string(p.Seq);
        p.GroupKey = "G1";
        p.SensitiveSides = "0000";
        p.Destination = num2;
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
