// A job built in code for the placement tests: a temporary folder for the per-user values
// and files, a recording operator, and helpers that add pallets, processes, parts, stacks.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/CKestoApp.h"
#include "placement/CKs_Block.h"
#include "placement/CKs_Haichi.h"
#include "support/RecordingOperator.h"
#include "support/ScopedEnv.h"

namespace kesto::test {

// The grid of the block tests: x extent 1000, margin 10, cells 300 wide with gaps of 10,
// y extent 800, margin 10, cells 200 deep with gaps of 10, five cells each way.
inline PalletInfo GridPallet(const std::string& name) {
    PalletInfo p;
    p.Name = name;
    p.Dims = {0, 0, 1000, 800, 1000, 10, 10, 300, 200, 10, 10};
    p.Param1 = 5;
    p.Param2 = 5;
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

class PlacementTest : public ::testing::Test {
  protected:
    PlacementTest()
        : folder_(FreshFolder("home")),
          config_("XDG_CONFIG_HOME", folder_.c_str()),
          op(),
          scope_(op),
          app(std::make_unique<CKestoApp>()) {
        app->PalletCount = 1;
        app->StartCorner = 3;
        app->CurrentPallet = 1;
    }
    ~PlacementTest() override {
        for (const auto& f : folders_)
            std::filesystem::remove_all(f);
        std::filesystem::remove_all(folder_);
    }

    // A fresh temporary folder of this test, removed at its end.
    std::filesystem::path Folder(const std::string& what) {
        folders_.push_back(FreshFolder(what));
        return folders_.back();
    }

    PalletInfo& AddPallet(const PalletInfo& p) {
        PalletInfo& rec = app->PalletList.Append() = p;
        ++app->PalletList.Count;
        return rec;
    }
    KouteiInfo& AddKoutei(int32_t no, const std::string& palletName) {
        KouteiInfo& k = app->KouteiList.Append();
        k.No = no;
        k.Name1 = "K" + std::to_string(no);
        k.Name2 = palletName;
        ++app->KouteiList.Count;
        return k;
    }
    PartsInfo& AddPart(int32_t kouteiNo, double sx, double sy, int32_t num1, int32_t num4 = 0,
                       double value1 = 1) {
        PartsInfo& p = app->PartsList.Append();
        p.Seq = ++app->PartsList.Count;
        p.Code = "A" + std::to_string(p.Seq);
        p.KouteiNo = kouteiNo;
        p.SizeX = sx;
        p.SizeY = sy;
        p.Num1 = num1;
        p.Num4 = num4;
        p.Value1 = value1;
        return p;
    }
    // One process numbered 1 on the grid pallet, its blocks built.
    KouteiInfo& GridJob(int32_t startCorner = 3) {
        AddPallet(GridPallet("PAL"));
        KouteiInfo& k = AddKoutei(1, "PAL");
        app->StartCorner = startCorner;
        EXPECT_EQ(CKs_Block(*app).SetUp(), 1);
        return k;
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
        app->Blocks.push_back(b);
        app->BlocksCount = static_cast<int32_t>(app->Blocks.size());
        app->BlocksCapacity = app->BlocksCount;
        return app->BlocksCount - 1;
    }
    HaichiInfo& AddStack(PartsInfo& part, int blockIndex, double x, double y, int32_t value,
                         uint8_t flag = 4) {
        HaichiInfo& h = *app->AddHaichiInfo();
        h.Part = &part;
        h.BlockIndex = blockIndex;
        h.X = x;
        h.Y = y;
        h.Value = value;
        h.Flag = flag;
        return h;
    }
    std::vector<HaichiInfo*> StacksOf(const PartsInfo& part) {
        std::vector<HaichiInfo*> out;
        for (HaichiInfo& h : app->HaichiList) {
            if (h.Part == &part)
                out.push_back(&h);
        }
        return out;
    }
    std::vector<int32_t> ValuesOf(const PartsInfo& part) {
        std::vector<int32_t> out;
        for (const HaichiInfo* h : StacksOf(part))
            out.push_back(h->Value);
        return out;
    }

  private:
    std::filesystem::path folder_;
    ScopedEnv config_;
    std::vector<std::filesystem::path> folders_;

  protected:
    RecordingOperator op;

  private:
    ScopedOperator scope_;

  protected:
    std::unique_ptr<CKestoApp> app;
};

}  // namespace kesto::test
