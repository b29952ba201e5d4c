#include "support/Platform.h"

#include <gtest/gtest.h>

#include <string>

#include "common/ScopedEnv.h"
#include "common/TestFiles.h"

namespace kesto {
namespace {

using test::ReadFile;
using test::ScopedEnv;
using test::TempFolder;
using test::WriteFile;

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
