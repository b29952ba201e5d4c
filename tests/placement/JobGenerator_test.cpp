#include "JobGenerator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "app/Codes.h"
#include "common/PlacementFixture.h"

namespace kesto::test {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(JobGenerator, SameSeedGivesTheSameJob) {
    const GeneratedJob a = GenerateJob(MediumJobShape());
    const GeneratedJob b = GenerateJob(MediumJobShape());
    ASSERT_EQ(a.Parts.size(), 200u);
    for (size_t i = 0; i < a.Parts.size(); ++i) {
        EXPECT_EQ(a.Parts[i].SizeX, b.Parts[i].SizeX);
        EXPECT_EQ(a.Parts[i].Quantity, b.Parts[i].Quantity);
    }
}

TEST(JobGenerator, LargestJobHas999PartsOverTwelveProcesses) {
    const GeneratedJob job = GenerateJob(LargestJobShape());
    ASSERT_EQ(job.Parts.size(), 999u);
    EXPECT_EQ(job.Koutei.size(), 12u);
    EXPECT_EQ(job.PalletCount, 4);
    EXPECT_EQ(job.Parts.front().KouteiNo, 1);
    EXPECT_EQ(job.Parts.back().KouteiNo, 12);
    EXPECT_EQ(job.Parts.back().Code, "A999");
    EXPECT_EQ(job.Parts.back().SaveKey, 999);
}

// Jobs beyond what the lists take are generated whole: the readers' cut is what they test.
TEST(JobGenerator, PartCountBeyond999IsGeneratedWhole) {
    JobShape shape = LargestJobShape();
    shape.Parts = 5000;
    const GeneratedJob job = GenerateJob(shape);
    ASSERT_EQ(job.Parts.size(), 5000u);
    EXPECT_EQ(job.Parts.back().Code, "A5000");
    EXPECT_EQ(job.Parts.back().KouteiNo, 12);
}

TEST(JobGenerator, InstallationWithoutOutlinesNamesNoOutlineFile) {
    JobShape shape = SmallJobShape();
    const auto root = std::filesystem::temp_directory_path() / "kesto-jobgen-no-outlines";
    std::filesystem::remove_all(root);
    InstallOptions options;
    options.OutlineFiles = false;
    WriteInstallation(root.string(), GenerateJob(shape), options);
    EXPECT_FALSE(std::filesystem::exists(root / "job" / "outline"));
    std::ifstream job(root / "job" / "job.txt");
    const std::string text((std::istreambuf_iterator<char>(job)), {});
    EXPECT_EQ(text.find("outline"), std::string::npos);
    EXPECT_NE(text.find("A001,1,PART001"), std::string::npos);
    job.close();  // Windows removes no file that is still open
    std::filesystem::remove_all(root);
}

// The same parts as the largest job, only five times as many pieces of each.
TEST(JobGenerator, CrowdedJobIsTheLargestWithFiveTimesTheQuantities) {
    const GeneratedJob plain = GenerateJob(LargestJobShape());
    const GeneratedJob crowded = GenerateJob(CrowdedJobShape());
    ASSERT_EQ(crowded.Parts.size(), plain.Parts.size());
    for (size_t i = 0; i < plain.Parts.size(); ++i) {
        EXPECT_EQ(crowded.Parts[i].Code, plain.Parts[i].Code);
        EXPECT_EQ(crowded.Parts[i].SizeX, plain.Parts[i].SizeX);
        EXPECT_EQ(crowded.Parts[i].PerStackLimit, plain.Parts[i].PerStackLimit);
        EXPECT_EQ(crowded.Parts[i].Quantity, 5 * plain.Parts[i].Quantity);
    }
}

TEST(JobGenerator, SampleLikeJobHasThreeProcessesFortyPartsFourPallets) {
    const GeneratedJob job = GenerateJob(SampleLikeJobShape());
    EXPECT_EQ(job.Koutei.size(), 3u);
    EXPECT_EQ(job.Parts.size(), 40u);
    EXPECT_EQ(job.PalletCount, 4);
}

class GeneratedInstallationTest : public PlacementTest {};

TEST_F(GeneratedInstallationTest, FillAppCountsBoxesBelow100Only) {
    FillApp(*app, GenerateJob(SampleLikeJobShape()));
    EXPECT_EQ(app->BoxList.Count, 4);
    EXPECT_EQ(app->BoxList.Items.size(), 7u);
    EXPECT_EQ(app->PartsList.Count, 40);
    EXPECT_EQ(app->BoxFlags[3], 1);
    EXPECT_EQ(app->BoxFlags[4], 0);
}

TEST_F(GeneratedInstallationTest, WrittenFilesFollowTheInstallationLayout) {
    const auto root = Folder("inst");
    const Installation inst = WriteInstallation(root.string(), GenerateJob(SmallJobShape()));
    EXPECT_EQ(ReadAll(root / "bin" / "Ks_Setup.ini"),
              "; generated installation\n#File\nIEJ : job/job.txt\nIEK : out/result.txt\n"
              "IEL : out/save.txt\nMSG : msg/\n#End\n");
    EXPECT_NE(ReadAll(root / "msg" / "Kesto.ini").find("[PalletSelect]\nPalletInfo=4,P\n"),
              std::string::npos);
    EXPECT_EQ(ReadAll(inst.PalletFile).substr(0, 8), "P1,PAL01");
    const std::string job = ReadAll(root / "job" / "job.txt");
    EXPECT_EQ(job.substr(0, 9), "#BoxInfo\n");
    EXPECT_NE(job.find("#KouteiInfo\n1,PROC01,PAL01\n#End\n"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(root / "job" / "outline" / "A005.txt"));
    EXPECT_EQ(inst.CommandLine, "kesto " + inst.PalletFile + " 0 0 0.0 0.0 4");
}

// Every part names its outline; every seventh file is not there, so its part reads without one.
// The job file keeps 127 bytes of a path: the test's own name keeps the temporary folder short
// enough for Windows' longer temporary path.
TEST_F(GeneratedInstallationTest, CrowdedOutlinesMissEverySeventh) {
    const auto root = Folder("inst");
    JobShape shape = CrowdedJobShape();
    shape.Parts = 40;
    const Installation inst =
        WriteInstallation(root.string(), GenerateJob(shape), CrowdedInstallOptions());
    const std::string job = ReadAll(root / "job" / "job.txt");
    EXPECT_NE(job.find((root / "job" / "outline" / "A007.txt").string()), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(root / "job" / "outline" / "A007.txt"));
    EXPECT_FALSE(std::filesystem::exists(root / "job" / "outline" / "A035.txt"));
    EXPECT_TRUE(std::filesystem::exists(root / "job" / "outline" / "A006.txt"));
    EXPECT_TRUE(std::filesystem::exists(root / "job" / "outline" / "A040.txt"));
    testServices.Host.Folder.Folder = inst.Root;
    app->Run.CommandLine = inst.CommandLine;
    ASSERT_TRUE(app->ReadInput(services).Ok());
    int without = 0;
    for (const PartsInfo& p : app->PartsList) {
        const bool missing = p.SaveKey % 7 == 0;
        EXPECT_EQ(p.HasOutline, missing ? 0 : 1) << p.Code << " " << p.OutlinePath;
        without += p.HasOutline == 0 ? 1 : 0;
    }
    EXPECT_EQ(without, 5);
}

// Read and placed as a fresh run does it (a full run without a save file), the crowded job leaves
// parts unplaced (message 8) and one part in a single stack that holds less than its quantity: the
// result file's shortage, so the run asks 208.
TEST_F(GeneratedInstallationTest, CrowdedJobLeavesPartsShort) {
    const auto root = Folder("inst");
    const Installation inst =
        WriteInstallation(root.string(), GenerateJob(CrowdedJobShape()), CrowdedInstallOptions());
    testServices.Host.Folder.Folder = inst.Root;
    app->Run.CommandLine = inst.CommandLine;
    ASSERT_TRUE(app->InitSettings(services).Ok());
    ASSERT_TRUE(app->ReadInput(services).Ok());
    app->ReadPalletSelect(testServices.Messages);
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    ASSERT_TRUE(
        CKs_Haichi(*app, services).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Restore).Ok());
    ASSERT_EQ(op.KakuNumbers.size(), 1u);
    EXPECT_EQ(op.KakuNumbers[0].first, kaku::kPartsLeftShort);
    std::map<const PartsInfo*, std::pair<int, int64_t>> stacks;  // count, pieces
    for (const HaichiInfo& h : app->HaichiList) {
        ++stacks[h.Part].first;
        stacks[h.Part].second += h.Pieces;
    }
    int unplaced = 0, shortInOne = 0;
    for (const PartsInfo& p : app->PartsList) {
        const auto it = stacks.find(&p);
        unplaced += it == stacks.end() ? 1 : 0;
        shortInOne +=
            it != stacks.end() && it->second.first == 1 && it->second.second < p.Quantity ? 1 : 0;
    }
    EXPECT_GT(unplaced, 100);
    EXPECT_GE(shortInOne, 1);
}

TEST_F(GeneratedInstallationTest, WrittenInstallationReadsBackAsTheJob) {
    const auto root = Folder("inst");
    const GeneratedJob job = GenerateJob(SampleLikeJobShape());
    const Installation inst = WriteInstallation(root.string(), job);
    testServices.Host.Folder.Folder = inst.Root;
    app->Run.CommandLine = inst.CommandLine;
    ASSERT_TRUE(app->ReadInput(services).Ok());
    EXPECT_EQ(app->PartsList.Count, 40);
    EXPECT_EQ(app->PalletList.Count, 3);
    EXPECT_EQ(app->KouteiList.Count, 3);
    std::set<int> keys;
    for (const PartsInfo& p : app->PartsList) {
        keys.insert(p.SaveKey);
        EXPECT_EQ(p.HasOutline, 1) << p.Code;
    }
    EXPECT_EQ(keys.size(), 40u);
    EXPECT_EQ(app->PalletList.begin()->CellsX, 6);
}

}  // namespace
}  // namespace kesto::test
