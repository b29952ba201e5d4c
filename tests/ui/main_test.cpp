// The window program as a process: start-up failures, the cancel path and the screenshot mode.
#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>

#include "common/WindowJob.h"
#include "support/Platform.h"

namespace kesto {
namespace {

struct Outcome {
    int ExitCode = -1;
    QString Stderr;
};

Outcome RunKesto(const test::TestInstallation& install, const QStringList& arguments,
                 const QString& screenshot = QString()) {
    const char* binaryDir = std::getenv("KESTO_BINARY_DIR");
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ORVOSystemRoot", QString::fromStdString(install.Root().string()));
    env.insert("XDG_CONFIG_HOME", QString::fromStdString(install.Path("config").string()));
    env.insert("QT_QPA_PLATFORM", "offscreen");
    if (!screenshot.isEmpty())
        env.insert("KESTO_SCREENSHOT", screenshot);
    process.setProcessEnvironment(env);
    // The window program is built next to this test program.
    const QString dir = binaryDir != nullptr ? QString::fromLocal8Bit(binaryDir)
                                             : QCoreApplication::applicationDirPath();
    process.start(dir + "/kesto", arguments);
    Outcome outcome;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return outcome;
    }
    outcome.ExitCode = process.exitCode();
    outcome.Stderr = QString::fromLocal8Bit(process.readAllStandardError());
    return outcome;
}

QStringList JobArguments(const test::TestInstallation& install) {
    return {QString::fromStdString(install.Path("pallet.txt").string()), "0", "0", "0", "0", "1"};
}

TEST(KestoProcess, OnlyTheProgramPathEndsWith9020WithoutAWindow) {
    test::TestInstallation install;
    test::EnsureQApplication();
    const Outcome outcome = RunKesto(install, {});
    EXPECT_EQ(outcome.ExitCode, 60);
    EXPECT_TRUE(outcome.Stderr.contains("kesto: exit code 9020"));
}

TEST(KestoProcess, PerUserValuesExistAfterARun) {
    test::TestInstallation install;
    test::EnsureQApplication();
    RunKesto(install, {});
    const std::string values = install.Read("config/ORVONetwork/Vardo/Kesto.ini");
    EXPECT_NE(values.find("IsDirect"), std::string::npos);
    EXPECT_NE(values.find("IsBlockDraw"), std::string::npos);
}

TEST(KestoProcess, JobWithoutScheduleEndsAsCancelWith100AndWritesTheResult) {
    test::TestInstallation install;
    install.Write("job/job.txt",
                  "#PartsInfo\nA1,1,PartA,TextA,200,150,1,5,1,0,5,,,1.0,G1,0000,,0,,X0,10\n#End\n");
    test::EnsureQApplication();
    const Outcome outcome = RunKesto(install, JobArguments(install));
    EXPECT_EQ(outcome.ExitCode, 100);
    EXPECT_TRUE(outcome.Stderr.contains("kesto: exit code 100"));
    EXPECT_TRUE(install.Exists("out/result.csv"));
    EXPECT_TRUE(install.Exists("out/haichi.csv"));
}

TEST(KestoProcess, ScreenshotModeWritesThePictureAndNoResult) {
    test::TestInstallation install;
    test::EnsureQApplication();
    const QString shot = QString::fromStdString(install.Path("shot.png").string());
    const Outcome outcome = RunKesto(install, JobArguments(install), shot);
    EXPECT_EQ(outcome.ExitCode, 100);
    EXPECT_EQ(QImage(shot).size(), QSize(1600, 900));
    EXPECT_FALSE(install.Exists("out/result.csv"));
    EXPECT_FALSE(install.Exists("config/ORVONetwork/Vardo/Kesto.ini"));
}

}  // namespace
}  // namespace kesto
