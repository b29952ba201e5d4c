#include "ui/main/Application.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QWidget>

#include "support/Platform.h"
#include "ui/UiTestSupport.h"

namespace kesto {
namespace {

TEST(JoinCommandLine, ProgramAndArgumentsSeparatedByBlanks) {
    EXPECT_EQ(JoinCommandLine({"/opt/kesto", "p.txt", "0", "1"}), "/opt/kesto p.txt 0 1");
    EXPECT_EQ(JoinCommandLine({"/opt/kesto"}), "/opt/kesto");
}

TEST(StartUp, OnlyTheProgramPathEndsWith9020) {
    test::TestInstallation install("AppOnlyProgram");
    test::InstalledRecorder op;
    CKestoApp app;
    app.CommandLine = "kesto";
    EXPECT_EQ(StartUp(app), 0);
    EXPECT_EQ(app.ExitParam, 9020);
    EXPECT_EQ(ExitInstance(app), 9020);
}

TEST(StartUp, MissingSettingsFileEndsWith9001) {
    test::TestInstallation install("AppNoSettings");
    std::filesystem::remove(install.Path("msg/Kesto.ini"));
    test::InstalledRecorder op;
    CKestoApp app;
    app.CommandLine = install.CommandLine();
    EXPECT_EQ(StartUp(app), 0);
    EXPECT_EQ(app.ExitParam, 9001);
    EXPECT_EQ(op.Messages, std::vector<std::string>({"Initial File Not found"}));
}

TEST(StartUp, ReadsTheJob) {
    test::TestInstallation install("AppReads");
    test::InstalledRecorder op;
    CKestoApp app;
    app.CommandLine = install.CommandLine();
    EXPECT_EQ(StartUp(app), 1);
    EXPECT_EQ(app.KouteiList.Items.size(), 2u);
    EXPECT_EQ(app.DialogOk, 0);
    FreeMessageFile();
}

TEST(ExitInstance, WritesThePerUserValuesAndSettlesTheCode) {
    test::TestInstallation install("AppExit");
    test::InstalledRecorder op;
    CKestoApp app;
    EXPECT_EQ(app.IsDirect, 0);
    app.IsDirect = 1;
    app.IsBlockDraw = 1;
    EXPECT_EQ(ExitInstance(app), 100);
    DefaultHostStore store;
    EXPECT_EQ(store.ReadUserValue("IsDirect"), std::optional<std::string>("1"));
    EXPECT_EQ(store.ReadUserValue("IsBlockDraw"), std::optional<std::string>("1"));
    app.DialogOk = 1;
    EXPECT_EQ(ExitInstance(app), 0);
    app.ExitParam = 13;
    app.DialogOk = 0;
    EXPECT_EQ(ExitInstance(app), 100);
}

TEST(FinishProcess, KeepsTheLowBitsOfTheCode) {
    EXPECT_EQ(FinishProcess(0), 0);
    EXPECT_EQ(FinishProcess(100), 100);
    EXPECT_EQ(FinishProcess(9020), 60);
}

TEST(EndProcess, EndsAtOnceWithTheCodeAndItsNotice) {
    EXPECT_EXIT(EndProcess(999), ::testing::ExitedWithCode(231), "kesto: exit code 999");
}

TEST(SaveScreenshot, WritesTheWindowAsPng) {
    test::TestInstallation install("AppScreenshot");
    test::EnsureQApplication();
    QWidget window;
    window.resize(120, 80);
    const QString path = QString::fromStdString(install.Path("shot.png").string());
    ASSERT_TRUE(SaveScreenshot(window, path));
    EXPECT_EQ(QImage(path).size(), QSize(120, 80));
}

}  // namespace
}  // namespace kesto
