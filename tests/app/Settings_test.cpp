#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "common/Installation.h"
#include "support/MessageFile.h"

namespace kesto {
namespace {

class SettingsTest : public ::testing::Test {
  protected:
    Outcome Init(const std::string& settings) {
        installation.WriteDefaultSetupList();
        installation.Write("Kesto.ini", settings);
        return app.InitSettings(installation);
    }
    test::Installation installation;
    CKestoApp app;
};

TEST_F(SettingsTest, FontSetsAreReadAsData) {
    ASSERT_EQ(Init("[FontDefine]\nFontSet1=-12,0,0,128,\"MS Gothic\"\nFontSet2=12,0,0\n"
                   "FontSet3=10,0\nFontSet4=9,1,2,300,Sans,extra\n"),
              Outcome::Done());
    EXPECT_EQ(app.Settings.FontHeight[1], -12);
    EXPECT_EQ(app.Settings.FontCharSet[1], 128);
    EXPECT_EQ(app.Settings.FontNames[1], "MS Gothic");
    EXPECT_EQ(app.Settings.FontHeight[2], 12);
    EXPECT_EQ(app.Settings.FontCharSet[2], 0);
    EXPECT_EQ(app.Settings.FontNames[2], "");
    EXPECT_EQ(app.Settings.FontHeight[3], 0);
    EXPECT_EQ(app.Settings.FontHeight[4], 9);
    EXPECT_EQ(app.Settings.FontCharSet[4], 44);
    EXPECT_EQ(app.Settings.FontNames[4], "Sans");
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(SettingsTest, MissingFontKeyLeavesTheSetUndefined) {
    app.Settings.FontHeight = {7, 7, 7, 7, 7};
    ASSERT_TRUE(Init("[FontDefine]\nFontSet3=14,0,0,0,Mono\n").Ok());
    EXPECT_EQ(app.Settings.FontHeight[0], 0);
    EXPECT_EQ(app.Settings.FontHeight[1], 0);
    EXPECT_EQ(app.Settings.FontHeight[2], 0);
    EXPECT_EQ(app.Settings.FontHeight[3], 14);
    EXPECT_EQ(app.Settings.FontHeight[4], 0);
}

TEST_F(SettingsTest, MessageFileIsLoaded) {
    ASSERT_TRUE(Init("[KakuDlg]\nMsg001=1,Hello\n").Ok());
    EXPECT_EQ(installation.Messages.Get("KakuDlg", "Msg001"), "1,Hello");
}

TEST_F(SettingsTest, PalletSelectionIsRead) {
    ASSERT_TRUE(Init("[PalletSelect]\nPalletInfo=4,P\n").Ok());
    app.ReadPalletSelect(installation.Messages);
    EXPECT_EQ(app.Settings.PalletCount, 4);
    EXPECT_EQ(app.Settings.PalletPrefix, "P");
}

TEST_F(SettingsTest, MissingPalletSelectionGivesNoPallets) {
    app.Settings.PalletCount = 5;
    ASSERT_TRUE(Init("[FontDefine]\n").Ok());
    app.ReadPalletSelect(installation.Messages);
    EXPECT_EQ(app.Settings.PalletCount, 0);
    EXPECT_EQ(app.Settings.PalletPrefix, "");
}

TEST_F(SettingsTest, PalletPrefixIsCut) {
    ASSERT_TRUE(Init("[PalletSelect]\nPalletInfo=2," + std::string(40, 'Q') + "\n").Ok());
    app.ReadPalletSelect(installation.Messages);
    EXPECT_EQ(app.Settings.PalletPrefix, std::string(31, 'Q'));
}

TEST_F(SettingsTest, MissingSettingsFile) {
    installation.WriteDefaultSetupList();
    EXPECT_EQ(app.InitSettings(installation), Outcome::Failed(9001));
    ASSERT_FALSE(installation.Operator.Messages.empty());
    EXPECT_EQ(installation.Operator.Messages.back(), "Initial File Not found");
}

TEST_F(SettingsTest, NoSettingsFolderInTheSetupList) {
    installation.WriteSetupList({"IEJ : job/job.txt"});
    installation.Write("Kesto.ini", "[FontDefine]\n");
    EXPECT_EQ(app.InitSettings(installation), Outcome::Failed(9001));
    EXPECT_EQ(installation.Operator.Messages.back(), "Initial File Not found");
}

TEST_F(SettingsTest, SettingsFolderFromTheSetupList) {
    installation.WriteSetupList({"MSG : msg/"});
    installation.Write("msg/Kesto.ini", "[PalletSelect]\nPalletInfo=2,Q\n");
    ASSERT_TRUE(app.InitSettings(installation).Ok());
    EXPECT_EQ(installation.Messages.Get("PalletSelect", "PalletInfo"), "2,Q");
}

TEST_F(SettingsTest, SettingsFileThatCannotBeLoaded) {
    installation.WriteDefaultSetupList();
    test::MakeUnopenable(installation.Path("Kesto.ini"));
    EXPECT_EQ(app.InitSettings(installation), Outcome::Failed());
    ASSERT_EQ(installation.Operator.Messages.size(), 2u);
    EXPECT_EQ(installation.Operator.Messages[0].rfind("File Open Error!![", 0), 0u);
    EXPECT_EQ(installation.Operator.Messages[1], "Initial File Initial Error");
}

TEST_F(SettingsTest, EmptySettingsFileDefinesNothing) {
    ASSERT_TRUE(Init("").Ok());
    EXPECT_EQ(app.Settings.FontHeight[1], 0);
    app.ReadPalletSelect(installation.Messages);
    EXPECT_EQ(app.Settings.PalletCount, 0);
}

}  // namespace
}  // namespace kesto
