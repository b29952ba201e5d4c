#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "app/Installation.h"
#include "support/Platform.h"

namespace kesto {
namespace {

std::string StoredValue(const std::string& name) {
    return CurrentHostStore().ReadUserValue(name).value_or("<missing>");
}

TEST(UserSettings, FirstRunReadsZeroAndExitWritesBoth) {
    test::Installation installation;
    CKestoApp app;
    EXPECT_EQ(app.IsDirect, 0);
    EXPECT_EQ(app.IsBlockDraw, 0);
    EXPECT_EQ(StoredValue("IsDirect"), "<missing>");
    app.WriteRegistrySettings();
    EXPECT_EQ(StoredValue("IsDirect"), "0");
    EXPECT_EQ(StoredValue("IsBlockDraw"), "0");
}

TEST(UserSettings, StoredValuesAreRead) {
    test::Installation installation;
    CurrentHostStore().WriteUserValue("IsDirect", "1");
    CurrentHostStore().WriteUserValue("IsBlockDraw", "1");
    CKestoApp app;
    EXPECT_EQ(app.IsDirect, 1);
    EXPECT_EQ(app.IsBlockDraw, 1);
}

TEST(UserSettings, RetryKeepsTheDirectSettingButRereadsBlockDraw) {
    test::Installation installation;
    CurrentHostStore().WriteUserValue("IsDirect", "1");
    CurrentHostStore().WriteUserValue("IsBlockDraw", "1");
    CKestoApp app;
    app.IsDirect = 0;
    app.IsBlockDraw = 1;
    CurrentHostStore().WriteUserValue("IsBlockDraw", "0");
    app.ReadRegistrySettings();
    EXPECT_EQ(app.IsDirect, 0);
    EXPECT_EQ(app.IsBlockDraw, 0);
}

TEST(UserSettings, ValuesAreWrittenAsDecimalText) {
    test::Installation installation;
    CKestoApp app;
    app.IsDirect = 1;
    app.IsBlockDraw = -3;
    app.WriteRegistrySettings();
    EXPECT_EQ(StoredValue("IsDirect"), "1");
    EXPECT_EQ(StoredValue("IsBlockDraw"), "-3");
}

TEST(UserSettings, TextWithoutNumberChangesNothing) {
    test::Installation installation;
    CurrentHostStore().WriteUserValue("IsDirect", "abc");
    CurrentHostStore().WriteUserValue("IsBlockDraw", "7x");
    CKestoApp app;
    EXPECT_EQ(app.IsDirect, -1);
    EXPECT_EQ(app.IsBlockDraw, 7);
}

TEST(UserSettings, ReadingEmptiesTheJobAndItsFlags) {
    test::Installation installation;
    CKestoApp app;
    app.BoxList.Append();
    app.BoxList.Count = 1;
    app.KouteiList.Append();
    app.KouteiList.Count = 1;
    app.PartsList.Append();
    app.PartsList.Count = 1;
    app.AddHaichiInfo();
    app.PalletList.Append();
    app.PalletList.Count = 1;
    app.BoxFlags[5] = 1;
    app.Blocks.resize(3);
    app.BlocksCapacity = 3;
    app.BlocksCount = 2;
    app.ReadRegistrySettings();
    EXPECT_TRUE(app.BoxList.Empty() && app.KouteiList.Empty() && app.PartsList.Empty());
    EXPECT_TRUE(app.HaichiList.Empty() && app.PalletList.Empty());
    EXPECT_EQ(app.BoxList.Count + app.KouteiList.Count + app.PartsList.Count, 0);
    EXPECT_EQ(app.HaichiList.Count + app.PalletList.Count, 0);
    EXPECT_EQ(app.BoxFlags[5], 0);
    EXPECT_TRUE(app.Blocks.empty());
    EXPECT_EQ(app.BlocksCapacity, 0);
    EXPECT_EQ(app.BlocksCount, 0);
}

TEST(UserSettings, DisplayMembersResetOnlyOnTheFirstRead) {
    test::Installation installation;
    CKestoApp app;
    EXPECT_EQ(app.DisplayFlags, (std::array<int32_t, 2>{1, 1}));
    app.DisplayFlags = {0, 0};
    app.DisplayTexts = {"a", "b"};
    app.BlockDrawState = {1, 2, 3};
    app.ReadRegistrySettings();
    EXPECT_EQ(app.DisplayFlags, (std::array<int32_t, 2>{0, 0}));
    EXPECT_EQ(app.DisplayTexts[0], "a");
    EXPECT_EQ(app.BlockDrawState, (std::array<int32_t, 3>{0, 0, 0}));
    app.IsDirect = -1;
    app.ReadRegistrySettings();
    EXPECT_EQ(app.DisplayFlags, (std::array<int32_t, 2>{1, 1}));
    EXPECT_EQ(app.DisplayTexts[0], "");
}

TEST(UserSettings, FailedWriteIsIgnored) {
    test::Installation installation;
    test::WriteFile(installation.Path("blocked"), "a file, not a folder");
    ::setenv("XDG_CONFIG_HOME", installation.Path("blocked").c_str(), 1);
    CKestoApp app;
    app.IsDirect = 1;
    app.WriteRegistrySettings();
    EXPECT_EQ(StoredValue("IsDirect"), "<missing>");
    EXPECT_EQ(app.IsDirect, 1);
}

}  // namespace
}  // namespace kesto
