#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "common/Installation.h"

namespace kesto {
namespace {

const char* const kJob =
    "#BoxInfo\nPAL,0,1,0,2000,0,2000\n#End\n"
    "#KouteiInfo\n1,CUT,PAL-A\n#End\n"
    "#PartsInfo\nA001,1,Bracket,BRK-1,250,150,1,8,0,0,4,,,2,G01,0000,,0,,K001,10\n#End\n";

class InputTest : public ::testing::Test {
  protected:
    InputTest() {
        installation.WriteDefaultSetupList();
        pallets = installation.Write("pallet/pallets.txt",
                                     "P1,PAL-A,0,100,0,50,0,0,0,0,0,0,0,3,3,5,5,Pallet A\nB1\n");
    }
    Outcome Run(const std::string& arguments) {
        app.Run.CommandLine = "kesto.exe " + arguments;
        return app.ReadInput(installation);
    }
    test::Installation installation;
    CKestoApp app;
    std::string pallets;
};

TEST_F(InputTest, WholeInputIsRead) {
    installation.Write("job/job.txt", kJob);
    ASSERT_EQ(Run(pallets + " 1 0 20 0 2"), Outcome::Done());
    EXPECT_EQ(app.Run.ExitParam, 0);
    EXPECT_TRUE(app.Settings.DirectCodesAllowed);
    EXPECT_EQ(app.Settings.StartCorner, 2);
    EXPECT_EQ(app.PalletList.Count, 1);
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 130);
    EXPECT_EQ(app.BoxFlags[1], 1);
    EXPECT_EQ(app.BoxList.Count, 1);
    EXPECT_EQ(app.KouteiList.Count, 1);
    EXPECT_EQ(app.PartsList.Count, 1);
}

TEST_F(InputTest, OnlyTheProgramPathIsPalletNotFound) {
    app.Run.CommandLine = "kesto.exe";
    EXPECT_EQ(app.ReadInput(installation), Outcome::Failed(9020));
    EXPECT_EQ(app.Run.ExitParam, 9020);
}

TEST_F(InputTest, OffsetAZeroOrNegativeAppliesNoOffset) {
    installation.Write("job/job.txt", kJob);
    ASSERT_TRUE(Run(pallets + " 0 0 0").Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    app.FreeJob();
    app.ReadRegistrySettings(installation.Host);
    ASSERT_TRUE(Run(pallets + " 0 0 -5").Ok());
    EXPECT_DOUBLE_EQ(app.PalletList.Items.front().OffsetA, 0);
    EXPECT_EQ(app.Settings.OffsetSet, 0);
}

TEST_F(InputTest, PalletFileThatCannotBeOpenedStopsBeforeTheJob) {
    installation.Write("job/job.txt", kJob);
    const std::string path = installation.Path("pallet/p.sock");
    test::MakeUnopenable(path);
    EXPECT_FALSE(Run(path).Ok());
    EXPECT_EQ(app.Run.ExitParam, 9021);
    EXPECT_TRUE(app.PartsList.Empty());
}

TEST_F(InputTest, MissingJobFile) {
    EXPECT_FALSE(Run(pallets).Ok());
    EXPECT_EQ(app.Run.ExitParam, 9010);
    EXPECT_EQ(app.PalletList.Count, 1);
}

TEST_F(InputTest, JobFileThatCannotBeOpened) {
    test::MakeUnopenable(installation.Path("job/job.txt"));
    EXPECT_FALSE(Run(pallets).Ok());
    EXPECT_EQ(app.Run.ExitParam, 9011);
}

TEST_F(InputTest, UnreadableOutlineIsStoredWithoutStopping) {
    const std::string outline = installation.Path("shape/a.sock");
    test::MakeUnopenable(outline);
    installation.Write("job/job.txt", "#PartsInfo\nA1,1,N,T,1,1,1,1,0,0,0,,,1,G,0000," + outline +
                                          ",1,,K1,1\n#End\n");
    EXPECT_EQ(Run(pallets), Outcome::Done(9026));
    EXPECT_EQ(app.Run.ExitParam, 0);
    EXPECT_EQ(app.PartsList.Items.front().HasOutline, 0);
}

TEST_F(InputTest, RetryReadsTheInputAgain) {
    installation.Write("job/job.txt", kJob);
    ASSERT_TRUE(Run(pallets).Ok());
    app.FreeJob();
    app.ReadRegistrySettings(installation.Host);
    ASSERT_TRUE(app.ReadInput(installation).Ok());
    EXPECT_EQ(app.PalletList.Count, 1);
    EXPECT_EQ(app.PartsList.Count, 1);
    EXPECT_EQ(app.PartsList.Items.front().Seq, 1);
}

}  // namespace
}  // namespace kesto
