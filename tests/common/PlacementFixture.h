// A job built in code for the placement tests: the test's own services (a recording operator,
// a host machine in memory), temporary folders, and helpers that add pallets, processes,
// parts (PartFields.h), blocks and stacks (StackFields.h).
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "common/PartFields.h"
#include "common/StackFields.h"
#include "common/TestServices.h"
#include "placement/CKs_Block.h"
#include "placement/CKs_Haichi.h"

namespace kesto::test {

// The grid of the block tests: x extent 1000, margin 10, cells 300 wide with gaps of 10,
// y extent 800, margin 10, cells 200 deep with gaps of 10, five cells each way.
inline PalletInfo GridPallet(const std::string& name) {
    PalletInfo p;
    p.Name = name;
    SetDims(p, {0, 0, 1000, 800, 1000, 10, 10, 300, 200, 10, 10});
    p.CellsX = 5;
    p.CellsY = 5;
    return p;
}

inline std::filesystem::path FreshFolder(const std::string& what) {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = std::string("kesto-") + info->test_suite_name() + "-" + info->name() +
                             "-" + what + "-" + std::to_string(::getpid());
    const auto folder = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

// Adds records to a job as the readers would, and finds a part's stacks. Works on any
// application object: the placement tests' own one or a job session's. Parts are added with
// AddPart of PartFields.h.
class JobBuilder {
  public:
    explicit JobBuilder(CKestoApp& app) : app_(app) {}

    PalletInfo& AddPallet(const PalletInfo& p) {
        PalletInfo& rec = app_.PalletList.Append() = p;
        ++app_.PalletList.Count;
        return rec;
    }
    KouteiInfo& AddKoutei(int32_t no, const std::string& palletName) {
        KouteiInfo& k = app_.KouteiList.Append();
        k.No = no;
        k.Name = "K" + std::to_string(no);
        k.PalletName = palletName;
        ++app_.KouteiList.Count;
        return k;
    }
    // A box; only boxes numbered below 100 are counted, as the job file reader counts them.
    BoxInfo& AddBox(int32_t no, int32_t kind = 0) {
        BoxInfo& b = app_.BoxList.Append();
        b.No = no;
        b.Kind = kind;
        if (no < 100)
            ++app_.BoxList.Count;
        return b;
    }
    // A block appended to the table by hand.
    int AddBlock(int32_t kouteiNo, int32_t pallet, double x0, double y0, double x1, double y1) {
        BlockInfo b;
        b.KouteiNo = kouteiNo;
        b.PalletNo = pallet;
        b.MinX = x0;
        b.MinY = y0;
        b.MaxX = x1;
        b.MaxY = y1;
        return app_.Blocks.AddBlock(b);
    }
    std::vector<HaichiInfo*> StacksOf(const PartsInfo& part) {
        std::vector<HaichiInfo*> out;
        for (HaichiInfo& h : app_.HaichiList) {
            if (h.Part == &part)
                out.push_back(&h);
        }
        return out;
    }
    std::vector<int32_t> ValuesOf(const PartsInfo& part) {
        std::vector<int32_t> out;
        for (const HaichiInfo* h : StacksOf(part))
            out.push_back(h->Pieces);
        return out;
    }

  private:
    CKestoApp& app_;
};

class PlacementTest : public ::testing::Test {
  protected:
    PlacementTest() : app(std::make_unique<CKestoApp>()) {
        app->Settings.PalletCount = 1;
        app->Settings.StartCorner = 3;
    }
    ~PlacementTest() override {
        for (const auto& f : folders_)
            std::filesystem::remove_all(f);
    }

    // A fresh temporary folder of this test, removed at its end.
    std::filesystem::path Folder(const std::string& what) {
        folders_.push_back(FreshFolder(what));
        return folders_.back();
    }

    // The builder of the test's current application object (tests may replace it).
    JobBuilder Job() { return JobBuilder(*app); }

    PalletInfo& AddPallet(const PalletInfo& p) { return Job().AddPallet(p); }
    KouteiInfo& AddKoutei(int32_t no, const std::string& palletName) {
        return Job().AddKoutei(no, palletName);
    }
    // A part of the test's current application object, as named; pieces 1 high where no height
    // is named.
    PartsInfo& AddPart(PartFields fields) {
        if (!fields.PieceHeight)
            fields.PieceHeight = 1;
        return test::AddPart(*app, fields);
    }
    // One process numbered 1 on the grid pallet, its blocks built.
    KouteiInfo& GridJob(int32_t startCorner = 3) {
        AddPallet(GridPallet("PAL"));
        KouteiInfo& k = AddKoutei(1, "PAL");
        app->Settings.StartCorner = startCorner;
        EXPECT_TRUE(CKs_Block(*app, services).SetUp().Ok());
        return k;
    }
    int AddBlock(int32_t kouteiNo, int32_t pallet, double x0, double y0, double x1, double y1) {
        return Job().AddBlock(kouteiNo, pallet, x0, y0, x1, y1);
    }
    // One process numbered 1 on a 1000 x 1000 pallet without gaps or margin, with hand-made
    // blocks: 0 (0,0)-(100,100) and 1 (200,0)-(300,100) on pallet 1, 2 (0,0)-(100,100) on
    // pallet 2; block 3 (0,0)-(100,100) is process 2's.
    KouteiInfo& SmallBlocksJob() {
        PalletInfo pal = GridPallet("PAL");
        pal.LengthX = 1000;
        pal.LengthY = 1000;
        pal.MarginY = 0;
        AddPallet(pal);
        KouteiInfo& k = AddKoutei(1, "PAL");
        k.Pallet = &*app->PalletList.begin();
        AddBlock(1, 1, 0, 0, 100, 100);
        AddBlock(1, 1, 200, 0, 300, 100);
        AddBlock(1, 2, 0, 0, 100, 100);
        AddBlock(2, 1, 0, 0, 100, 100);
        return k;
    }
    std::vector<HaichiInfo*> StacksOf(const PartsInfo& part) { return Job().StacksOf(part); }
    std::vector<int32_t> ValuesOf(const PartsInfo& part) { return Job().ValuesOf(part); }

  private:
    std::vector<std::filesystem::path> folders_;

  protected:
    // The job's services; the host's system folder is empty until a test sets it.
    TestServices testServices;
    RecordingOperator& op = testServices.Op;
    Services services = testServices.Get();
    std::unique_ptr<CKestoApp> app;
    ViewState shown;  // the pallets on view: the first pallet, FLAT
};

}  // namespace kesto::test
