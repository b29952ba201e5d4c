#include "ui/main/Application.h"

#include <gtest/gtest.h>

#include <QFontDatabase>

#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "app/ExitCode.h"
#include "common/TestFiles.h"
#include "common/TestInstallation.h"
#include "common/TestServices.h"
#include "common/WindowJob.h"
#include "session/JobSession.h"

namespace kesto {
namespace {

TEST(LoadFontListAside, ReadsTheFontListOnAThreadOfItsOwnThatEndsWithIt) {
    test::EnsureQApplication();
    std::jthread reading = LoadFontListAside();
    ASSERT_TRUE(reading.joinable());
    EXPECT_NE(reading.get_id(), std::this_thread::get_id());
    reading.join();
    EXPECT_FALSE(QFontDatabase::families().isEmpty());
}

TEST(WindowStartUp, OnlyTheProgramPathEndsWith9020) {
    test::TestInstallation install;
    test::TestServices services(install.Root().string());
    ViewState shown;
    JobSession session(services, "kesto", shown);
    EXPECT_FALSE(session.StartUp());
    EXPECT_EQ(session.App().Run.ExitParam, 9020);
    EXPECT_EQ(session.Exit(), 9020);
}

TEST(WindowStartUp, MissingSettingsFileEndsWith9001) {
    test::TestInstallation install;
    std::filesystem::remove(install.Path("msg/Kesto.ini"));
    test::TestServices services(install.Root().string());
    ViewState shown;
    JobSession session(services, install.CommandLine(), shown);
    EXPECT_FALSE(session.StartUp());
    EXPECT_EQ(session.App().Run.ExitParam, 9001);
    EXPECT_EQ(services.Op.Messages, std::vector<std::string>({"Initial File Not found"}));
}

TEST(WindowStartUp, ReadsTheJob) {
    test::TestInstallation install;
    test::TestServices services(install.Root().string());
    ViewState shown;
    JobSession session(services, install.CommandLine(), shown);
    EXPECT_TRUE(session.StartUp());
    EXPECT_EQ(session.App().KouteiList.Items.size(), 2u);
    EXPECT_EQ(session.App().Run.DialogEnd, OkCancel::Cancel);
}

TEST(WindowExit, WritesThePerUserValuesAndSettlesTheCode) {
    test::TestInstallation install;
    test::TestServices services(install.Root().string());
    {
        ViewState shown;
        JobSession session(services, install.CommandLine(), shown);
        ASSERT_TRUE(session.StartUp());
        EXPECT_EQ(session.App().Settings.IsDirect, 0);
        session.App().Settings.IsDirect = 1;
        session.SwitchBlockDraw();
        EXPECT_EQ(session.Exit(), 100);
    }
    EXPECT_EQ(services.Host.ReadUserValue("IsDirect"), std::optional<std::string>("1"));
    EXPECT_EQ(services.Host.ReadUserValue("IsBlockDraw"), std::optional<std::string>("1"));
    // Each session settles its code once, at its end.
    const auto settled = [&](int exitParam, OkCancel end) {
        ViewState shown;
        JobSession session(services, install.CommandLine(), shown);
        session.App().Run.ExitParam = exitParam;
        session.App().Run.DialogEnd = end;
        return session.Exit();
    };
    EXPECT_EQ(settled(0, OkCancel::Ok), 0);
    EXPECT_EQ(settled(13, OkCancel::Cancel), 100);
}

TEST(FinishProcess, KeepsTheLowBitsOfTheCode) {
    std::ostringstream err;
    EXPECT_EQ(FinishProcess(0, err), 0);
    EXPECT_EQ(FinishProcess(100, err), 100);
    EXPECT_EQ(FinishProcess(9020, err), 60);
}

// The offset stop no longer ends the process from inside the window: the session settles
// 999, and main hands it to FinishProcess like any other code.
TEST(FinishProcess, OffsetStopEndsWithTheCodeAndItsNotice) {
    std::ostringstream err;
    EXPECT_EQ(FinishProcess(kExitOffsetAbort, err), 231);
    EXPECT_NE(err.str().find("kesto: exit code 999"), std::string::npos);
}

}  // namespace
}  // namespace kesto
