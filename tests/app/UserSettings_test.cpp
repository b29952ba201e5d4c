#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "app/ViewState.h"
#include "common/PartFields.h"
#include "common/TestServices.h"
#include "support/Platform.h"

namespace kesto {
namespace {

using test::MemoryHostStore;

std::string StoredValue(MemoryHostStore& host, const std::string& name) {
    return host.ReadUserValue(name).value_or("<missing>");
}

// The per-user values as a session reads and writes them: the job's and the view's.
void ReadAll(MemoryHostStore& host, CKestoApp& app, ViewState& shown) {
    app.ReadRegistrySettings(host);
    ReadViewSettings(host, shown);
}
void WriteAll(MemoryHostStore& host, CKestoApp& app, const ViewState& shown) {
    app.WriteRegistrySettings(host);
    WriteViewSettings(host, shown);
}

TEST(UserSettings, ConstructionReadsNothing) {
    MemoryHostStore host;
    host.UserValues["IsDirect"] = "1";
    host.UserValues["IsBlockDraw"] = "1";
    CKestoApp app;
    ViewState shown;
    EXPECT_EQ(app.Settings.IsDirect, -1);
    EXPECT_EQ(shown.StoredBlockDraw(), 0);
}

TEST(UserSettings, FirstRunReadsZeroAndExitWritesBoth) {
    MemoryHostStore host;
    CKestoApp app;
    ViewState shown;
    ReadAll(host, app, shown);
    EXPECT_EQ(app.Settings.IsDirect, 0);
    EXPECT_EQ(shown.StoredBlockDraw(), 0);
    EXPECT_EQ(StoredValue(host, "IsDirect"), "<missing>");
    WriteAll(host, app, shown);
    EXPECT_EQ(StoredValue(host, "IsDirect"), "0");
    EXPECT_EQ(StoredValue(host, "IsBlockDraw"), "0");
}

TEST(UserSettings, StoredValuesAreRead) {
    MemoryHostStore host;
    host.WriteUserValue("IsDirect", "1");
    host.WriteUserValue("IsBlockDraw", "1");
    CKestoApp app;
    ViewState shown;
    ReadAll(host, app, shown);
    EXPECT_EQ(app.Settings.IsDirect, 1);
    EXPECT_EQ(shown.StoredBlockDraw(), 1);
}

TEST(UserSettings, AStoredTwoIsKeptAndWrittenBackAsTwo) {
    MemoryHostStore host;
    host.WriteUserValue("IsDirect", "2");
    CKestoApp app;
    ViewState shown;
    ReadAll(host, app, shown);
    EXPECT_EQ(app.Settings.IsDirect.Stored(), 2);
    EXPECT_FALSE(app.Settings.IsDirect.IsOne());
    EXPECT_TRUE(app.Settings.IsDirect.IsNotZero());
    WriteAll(host, app, shown);
    EXPECT_EQ(StoredValue(host, "IsDirect"), "2");
}

TEST(UserSettings, RetryKeepsTheDirectSettingButRereadsBlockDraw) {
    MemoryHostStore host;
    host.WriteUserValue("IsDirect", "1");
    host.WriteUserValue("IsBlockDraw", "1");
    CKestoApp app;
    ViewState shown;
    ReadAll(host, app, shown);
    app.Settings.IsDirect = 0;
    shown.SetStoredBlockDraw(1);
    host.WriteUserValue("IsBlockDraw", "0");
    ReadAll(host, app, shown);
    EXPECT_EQ(app.Settings.IsDirect, 0);
    EXPECT_EQ(shown.StoredBlockDraw(), 0);
}

TEST(UserSettings, ValuesAreWrittenAsDecimalText) {
    MemoryHostStore host;
    CKestoApp app;
    ViewState shown;
    app.Settings.IsDirect = 1;
    shown.SetStoredBlockDraw(-3);
    WriteAll(host, app, shown);
    EXPECT_EQ(StoredValue(host, "IsDirect"), "1");
    EXPECT_EQ(StoredValue(host, "IsBlockDraw"), "-3");
}

TEST(UserSettings, TextWithoutNumberChangesNothing) {
    MemoryHostStore host;
    host.WriteUserValue("IsDirect", "abc");
    host.WriteUserValue("IsBlockDraw", "7x");
    CKestoApp app;
    ViewState shown;
    ReadAll(host, app, shown);
    EXPECT_EQ(app.Settings.IsDirect, -1);
    EXPECT_EQ(shown.StoredBlockDraw(), 7);
}

TEST(UserSettings, ReadingEmptiesTheJobAndItsFlags) {
    MemoryHostStore host;
    CKestoApp app;
    app.BoxList.Append();
    app.BoxList.Count = 1;
    app.KouteiList.Append();
    app.KouteiList.Count = 1;
    test::AddPart(app, {});
    app.AddHaichiInfo();
    app.PalletList.Append();
    app.PalletList.Count = 1;
    app.BoxFlags[5] = 1;
    app.Blocks.Allocate(3);
    app.Blocks.SetCapacity(3);
    app.Blocks.SetCount(2);
    app.ReadRegistrySettings(host);
    EXPECT_TRUE(app.BoxList.Empty() && app.KouteiList.Empty() && app.PartsList.Empty());
    EXPECT_TRUE(app.HaichiList.Empty() && app.PalletList.Empty());
    EXPECT_EQ(app.BoxList.Count + app.KouteiList.Count + app.PartsList.Count, 0);
    EXPECT_EQ(app.HaichiList.Count + app.PalletList.Count, 0);
    EXPECT_EQ(app.BoxFlags[5], 0);
    EXPECT_EQ(app.Blocks.Size(), 0u);
    EXPECT_EQ(app.Blocks.Capacity(), 0);
    EXPECT_EQ(app.Blocks.Count(), 0);
}

TEST(UserSettings, FailedWriteIsIgnored) {
    MemoryHostStore host;
    host.FailWrites = true;
    CKestoApp app;
    app.Settings.IsDirect = 1;
    app.WriteRegistrySettings(host);
    EXPECT_EQ(StoredValue(host, "IsDirect"), "<missing>");
    EXPECT_EQ(app.Settings.IsDirect, 1);
}

}  // namespace
}  // namespace kesto
