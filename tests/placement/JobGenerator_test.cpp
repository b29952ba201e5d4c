#include "JobGenerator.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

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

TEST_F(GeneratedInstallationTest, WrittenInstallationReadsBackAsTheJob) {
    const auto root = Folder("inst");
    const GeneratedJob job = GenerateJob(SampleLikeJobShape());
    const Installation inst = WriteInstallation(root.string(), job);
    testServices.Host.Folder.Folder = inst.Root;
    app->CommandLine = inst.CommandLine;
    ASSERT_EQ(app->ReadInput(services), 1);
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
