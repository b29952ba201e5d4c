#include "support/Platform.h"

#include <gtest/gtest.h>

#include <string>

#include "common/TestFiles.h"
#include "support/MessageFile.h"
#include "support/RecordingOperator.h"
#include "support/ScopedEnv.h"

namespace kesto {
namespace {

using test::ReadFile;
using test::RecordingOperator;
using test::ScopedEnv;
using test::TempFolder;
using test::WriteFile;

TEST(CurrentOperator, InstalledOperatorIsUsedUntilReset) {
    RecordingOperator recorder;
    EXPECT_NE(dynamic_cast<StderrOperator*>(&CurrentOperator()), nullptr);
    InstallOperator(&recorder);
    EXPECT_EQ(&CurrentOperator(), &recorder);
    CurrentOperator().ShowMessageBox("hello");
    InstallOperator(nullptr);
    EXPECT_NE(dynamic_cast<StderrOperator*>(&CurrentOperator()), nullptr);
    EXPECT_EQ(recorder.Messages, std::vector<std::string>{"hello"});
}

class FixedHostStore : public HostStore {
  public:
    SystemFolderResult SystemFolder() override { return {SystemFolderStatus::Ok, "/fixed"}; }
    std::optional<std::string> ReadUserValue(const std::string&) override { return "7"; }
    bool WriteUserValue(const std::string&, const std::string&) override { return false; }
};

TEST(CurrentHostStore, InstalledStoreIsUsedUntilReset) {
    FixedHostStore fixed;
    EXPECT_NE(dynamic_cast<DefaultHostStore*>(&CurrentHostStore()), nullptr);
    InstallHostStore(&fixed);
    EXPECT_EQ(CurrentHostStore().SystemFolder().Folder, "/fixed");
    InstallHostStore(nullptr);
    EXPECT_NE(dynamic_cast<DefaultHostStore*>(&CurrentHostStore()), nullptr);
}

TEST(StderrOperator, MessageBoxIsPrintedWithTheProgramName) {
    StderrOperator op;
    testing::internal::CaptureStderr();
    op.ShowMessageBox("File Open Error!![x]");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "kesto: File Open Error!![x]\n");
}

// A message file with one informing and one asking message, loaded for the test.
class KakuMessages : public testing::Test {
  protected:
    void SetUp() override {
        WriteFile(folder / "Kesto.ini",
                  "[KakuDlg]\nMsg005=1,\"Parts left\"\nMsg210=1,\"Delete the result?\"\n");
        ASSERT_EQ(LoadMessageFile(folder / "Kesto.ini"), 0);
    }
    void TearDown() override { FreeMessageFile(); }
    TempFolder folder;
};

TEST_F(KakuMessages, StderrAskKakuPrintsBothMessagesAndGivesTheAnswer) {
    StderrOperator op(2);
    testing::internal::CaptureStderr();
    EXPECT_EQ(op.AskKaku(210, 5), 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "kesto: message 210: Delete the result?\nkesto: message 005: Parts left\n");
    op.SetAnswer(1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(op.AskKaku(210, 0), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "kesto: message 210: Delete the result?\n");
}

TEST_F(KakuMessages, StderrAskKakuAnswersOkToInformingMessages) {
    StderrOperator op(2);
    testing::internal::CaptureStderr();
    EXPECT_EQ(op.AskKaku(5, 0), 1);
    EXPECT_EQ(op.AskKaku(200, 0), 1);
    EXPECT_EQ(op.AskKaku(201, 0), 2);
    const std::string out = testing::internal::GetCapturedStderr();
    EXPECT_EQ(out.rfind("kesto: message 005: Parts left\nkesto: message 200: \n", 0), 0u);
}

TEST(StderrOperator, OffsetWarningIsPrintedAndAnsweredAsConfigured) {
    StderrOperator ok;
    StderrOperator cancel(2);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(ok.AskOffsetWarning("Offset over"));
    EXPECT_FALSE(cancel.AskOffsetWarning("Offset over"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "kesto: Offset over\nkesto: Offset over\n");
}

TEST(DefaultHostStore, EnvironmentGivesTheSystemFolder) {
    ScopedEnv root("ORVOSystemRoot", "/opt/orvo");
    const SystemFolderResult result = DefaultHostStore().SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::Ok);
    EXPECT_EQ(result.Folder, "/opt/orvo");
}

TEST(DefaultHostStore, SystemFolderIsCutAt255Characters) {
    const std::string longFolder = "/" + std::string(300, 'f');
    ScopedEnv root("ORVOSystemRoot", longFolder.c_str());
    EXPECT_EQ(DefaultHostStore().SystemFolder().Folder, longFolder.substr(0, 255));
}

TEST(DefaultHostStore, MachineFileGivesTheSystemFolderWithoutEnvironment) {
    ScopedEnv root("ORVOSystemRoot", "");
    TempFolder folder;
    WriteFile(folder / "SystemInformation.ini",
              "; machine\n[Common]\nOther=1\nORVOSystemRoot = /srv/orvo\r\n");
    const SystemFolderResult result =
        DefaultHostStore(folder / "SystemInformation.ini").SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::Ok);
    EXPECT_EQ(result.Folder, "/srv/orvo");
}

TEST(DefaultHostStore, MissingMachineFileIsAMissingKey) {
    ScopedEnv root("ORVOSystemRoot", nullptr);
    TempFolder folder;
    const SystemFolderResult result = DefaultHostStore(folder / "none.ini").SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::NoKey);
    EXPECT_EQ(result.Folder, "");
}

TEST(DefaultHostStore, MachineFileWithoutTheValueIsAMissingValue) {
    ScopedEnv root("ORVOSystemRoot", nullptr);
    TempFolder folder;
    WriteFile(folder / "a.ini", "[Common]\n;ORVOSystemRoot=/x\nOther=1\n");
    WriteFile(folder / "b.ini", "ORVOSystemRoot=\n");
    EXPECT_EQ(DefaultHostStore(folder / "a.ini").SystemFolder().Status,
              SystemFolderStatus::NoValue);
    EXPECT_EQ(DefaultHostStore(folder / "b.ini").SystemFolder().Status,
              SystemFolderStatus::NoValue);
}

TEST(DefaultHostStore, MachineFileDefaultsToTheEtcPath) {
    EXPECT_EQ(DefaultHostStore::MachineIniPath(), "/etc/ORVONetwork/SystemInformation.ini");
}

TEST(DefaultHostStore, UserValuesLiveUnderXdgConfigHomeOrHome) {
    {
        ScopedEnv xdg("XDG_CONFIG_HOME", "/cfg");
        EXPECT_EQ(DefaultHostStore::UserValuesPath(), "/cfg/ORVONetwork/Vardo/Kesto.ini");
    }
    ScopedEnv xdg("XDG_CONFIG_HOME", nullptr);
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(DefaultHostStore::UserValuesPath(), "/home/op/.config/ORVONetwork/Vardo/Kesto.ini");
}

TEST(DefaultHostStore, WrittenUserValuesAreReadBackAndKeepEachOther) {
    TempFolder folder;
    ScopedEnv xdg("XDG_CONFIG_HOME", (folder / "config").c_str());
    DefaultHostStore store;
    EXPECT_EQ(store.ReadUserValue("IsDirect"), std::nullopt);
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "1"));
    EXPECT_TRUE(store.WriteUserValue("IsBlockDraw", "0"));
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "0"));
    EXPECT_EQ(store.ReadUserValue("IsDirect"), "0");
    EXPECT_EQ(store.ReadUserValue("IsBlockDraw"), "0");
    EXPECT_EQ(store.ReadUserValue("Other"), std::nullopt);
    EXPECT_EQ(ReadFile(folder / "config/ORVONetwork/Vardo/Kesto.ini"),
              "IsDirect=0\nIsBlockDraw=0\n");
}

TEST(DefaultHostStore, WritingFailsWhenTheFolderCannotBeMade) {
    TempFolder folder;
    WriteFile(folder / "file", "x");
    ScopedEnv xdg("XDG_CONFIG_HOME", (folder / "file").c_str());
    EXPECT_FALSE(DefaultHostStore().WriteUserValue("IsDirect", "1"));
    EXPECT_EQ(ReadFile(folder / "file"), "x");
}

}  // namespace
}  // namespace kesto
