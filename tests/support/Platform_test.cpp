#include "support/Platform.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include <ctime>
#include <filesystem>
#include <string>

#include "common/ScopedEnv.h"
#include "common/TestFiles.h"
#include "common/WindowsRegistry.h"

namespace kesto {
namespace {

using test::ReadFile;
using test::ScopedEnv;
using test::TempFolder;
using test::WriteFile;

#ifndef _WIN32

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

// The file's identity: a rewrite replaces it with a new file.
ino_t FileIdentity(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

TEST(DefaultHostStore, ValueTheFileAlreadyHoldsIsNotWrittenAgain) {
    TempFolder folder;
    ScopedEnv xdg("XDG_CONFIG_HOME", (folder / "config").c_str());
    const auto path = folder / "config/ORVONetwork/Vardo/Kesto.ini";
    DefaultHostStore store;
    ASSERT_TRUE(store.WriteUserValue("IsDirect", "1"));
    ASSERT_TRUE(store.WriteUserValue("IsBlockDraw", "0"));
    const ino_t written = FileIdentity(path);
    ASSERT_NE(written, 0u);
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "1"));
    EXPECT_TRUE(store.WriteUserValue("IsBlockDraw", "0"));
    EXPECT_EQ(FileIdentity(path), written);
    EXPECT_EQ(ReadFile(path), "IsDirect=1\nIsBlockDraw=0\n");
    // The same value spelled otherwise is written as the program writes it.
    WriteFile(path, "IsDirect = 1\nIsBlockDraw=0\n");
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "1"));
    EXPECT_EQ(ReadFile(path), "IsDirect=1\nIsBlockDraw=0\n");
}

TEST(DefaultHostStore, StateFolderIsUnderAnAbsoluteXdgStateHome) {
    ScopedEnv state("XDG_STATE_HOME", "/var/state/op");
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "/var/state/op/kesto");
    ScopedEnv trailing("XDG_STATE_HOME", "/var/state/op/");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "/var/state/op/kesto");
}

TEST(DefaultHostStore, StateFolderIsUnderHomeWithoutXdgStateHome) {
    ScopedEnv state("XDG_STATE_HOME", nullptr);
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "/home/op/.local/state/kesto");
    ScopedEnv empty("XDG_STATE_HOME", "");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "/home/op/.local/state/kesto");
}

TEST(DefaultHostStore, RelativeXdgStateHomeIsIgnored) {
    ScopedEnv state("XDG_STATE_HOME", "state/op");
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "/home/op/.local/state/kesto");
}

TEST(DefaultHostStore, NoStateFolderWithoutXdgStateHomeOrHome) {
    ScopedEnv state("XDG_STATE_HOME", "relative");
    ScopedEnv home("HOME", nullptr);
    EXPECT_EQ(DefaultHostStore().StateFolder(), "");
}

TEST(DefaultHostStore, WritingFailsWhenTheFolderCannotBeMade) {
    TempFolder folder;
    WriteFile(folder / "file", "x");
    ScopedEnv xdg("XDG_CONFIG_HOME", (folder / "file").c_str());
    EXPECT_FALSE(DefaultHostStore().WriteUserValue("IsDirect", "1"));
    EXPECT_EQ(ReadFile(folder / "file"), "x");
}

#else

using test::DeleteKey;
using test::kMachineKeyName;
using test::kUserKeyName;
using test::SetStringValue;

// The machine as a fresh one: no system folder key in either view of the registry.
void ForgetMachineKey() {
    DeleteKey(kMachineKeyName);
    DeleteKey(kMachineKeyName, "/reg:32");
}

TEST(DefaultHostStore, RegistryValueGivesTheSystemFolder) {
    ForgetMachineKey();
    SetStringValue(kMachineKeyName, "ORVOSystemRoot", "D:\\ORVO\\System");
    const SystemFolderResult result = DefaultHostStore().SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::Ok);
    EXPECT_EQ(result.Folder, "D:\\ORVO\\System");
}

TEST(DefaultHostStore, MissingMachineKeyIsAMissingKey) {
    ForgetMachineKey();
    const SystemFolderResult result = DefaultHostStore().SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::NoKey);
    EXPECT_EQ(result.Folder, "");
}

TEST(DefaultHostStore, MachineKeyWithoutTheValueIsAMissingValue) {
    ForgetMachineKey();
    SetStringValue(kMachineKeyName, "Other", "1");
    const SystemFolderResult result = DefaultHostStore().SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::NoValue);
    EXPECT_EQ(result.Folder, "");
}

TEST(DefaultHostStore, SystemFolderIsCutAt255Characters) {
    ForgetMachineKey();
    const std::string longFolder = "C:\\" + std::string(300, 'f');
    SetStringValue(kMachineKeyName, "ORVOSystemRoot", longFolder);
    EXPECT_EQ(DefaultHostStore().SystemFolder().Folder, longFolder.substr(0, 255));
}

TEST(DefaultHostStore, ThirtyTwoBitViewServesWhenTheNativeViewHasNoKey) {
    ForgetMachineKey();
    SetStringValue(kMachineKeyName, "ORVOSystemRoot", "E:\\Orvo32", "/reg:32");
    const SystemFolderResult result = DefaultHostStore().SystemFolder();
    EXPECT_EQ(result.Status, SystemFolderStatus::Ok);
    EXPECT_EQ(result.Folder, "E:\\Orvo32");
    ForgetMachineKey();
}

TEST(DefaultHostStore, KeyNamesAreThoseOfTheRegistry) {
    EXPECT_EQ(DefaultHostStore::MachineIniPath(),
              "HKEY_LOCAL_MACHINE\\SOFTWARE\\ORVONetwork\\Common\\SystemInformation");
    EXPECT_EQ(DefaultHostStore::UserValuesPath(),
              "HKEY_CURRENT_USER\\Software\\ORVONetwork\\Vardo\\Kesto");
}

TEST(DefaultHostStore, WrittenUserValuesAreReadBackAndKeepEachOther) {
    DeleteKey(kUserKeyName);
    DefaultHostStore store;
    EXPECT_EQ(store.ReadUserValue("IsDirect"), std::nullopt);
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "1"));
    EXPECT_TRUE(store.WriteUserValue("IsBlockDraw", "0"));
    EXPECT_TRUE(store.WriteUserValue("IsDirect", "0"));
    EXPECT_EQ(store.ReadUserValue("IsDirect"), "0");
    EXPECT_EQ(store.ReadUserValue("IsBlockDraw"), "0");
    EXPECT_EQ(store.ReadUserValue("Other"), std::nullopt);
}

TEST(DefaultHostStore, UserValuesAreDecimalStringsOfTheProgramsKey) {
    DeleteKey(kUserKeyName);
    EXPECT_TRUE(DefaultHostStore().WriteUserValue("IsBlockDraw", "12"));
    TempFolder folder;
    const std::string shown = test::QueryValue(kUserKeyName, "IsBlockDraw", folder / "q.txt");
    EXPECT_NE(shown.find("IsBlockDraw"), std::string::npos) << shown;
    EXPECT_NE(shown.find("REG_SZ"), std::string::npos) << shown;
    EXPECT_NE(shown.find("12"), std::string::npos) << shown;
}

TEST(DefaultHostStore, StateFolderIsUnderLocalAppData) {
    ScopedEnv local("LOCALAPPDATA", "C:\\Users\\op\\AppData\\Local");
    EXPECT_EQ(DefaultHostStore().StateFolder(), "C:\\Users\\op\\AppData\\Local\\Kesto");
}

TEST(DefaultHostStore, NoStateFolderWithoutLocalAppData) {
    ScopedEnv local("LOCALAPPDATA", nullptr);
    EXPECT_EQ(DefaultHostStore().StateFolder(), "");
}

TEST(DefaultHostStore, UserValueSetByAnotherProgramIsRead) {
    DeleteKey(kUserKeyName);
    SetStringValue(kUserKeyName, "IsDirect", "1");
    EXPECT_EQ(DefaultHostStore().ReadUserValue("IsDirect"), "1");
    EXPECT_EQ(DefaultHostStore().ReadUserValue("IsBlockDraw"), std::nullopt);
}

#endif

// The time zone is the environment's; the clock of the test is fixed.
void SetTimeZone() {
#ifdef _WIN32
    _tzset();
#else
    tzset();
#endif
}

TEST(LocalDateTimeText, IsTheDateAndTimeOfTheMachinesTimeZone) {
    constexpr std::time_t kNewYear2000 = 946684800;  // 2000-01-01 00:00:00 UTC
    {
        const ScopedEnv utc("TZ", "UTC0");
        SetTimeZone();
        EXPECT_EQ(LocalDateTimeText(kNewYear2000 + 3723), "2000-01-01 01:02");
        EXPECT_EQ(LocalDateTimeText(kNewYear2000 - 60), "1999-12-31 23:59");
    }
    {
        // Three hours west of Greenwich.
        const ScopedEnv west("TZ", "XYZ3");
        SetTimeZone();
        EXPECT_EQ(LocalDateTimeText(kNewYear2000 + 3723), "1999-12-31 22:02");
    }
    SetTimeZone();
}

}  // namespace
}  // namespace kesto
