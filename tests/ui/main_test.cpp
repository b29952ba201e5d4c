// The window program as a process: start-up failures, the cancel path and the screenshot mode.
#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>

#include "common/ImageInk.h"
#include "common/WindowJob.h"
#include "support/Platform.h"

namespace kesto {
namespace {

struct Outcome {
    int ExitCode = -1;
    QString Stderr;
};

Outcome RunKesto(const test::TestInstallation& install, const QStringList& arguments,
                 const QString& screenshot = QString(), const QString& scaleFactor = QString()) {
    const char* binaryDir = std::getenv("KESTO_BINARY_DIR");
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ORVOSystemRoot", QString::fromStdString(install.Root().string()));
    env.insert("XDG_CONFIG_HOME", QString::fromStdString(install.Path("config").string()));
    // The journal of the run beside it, never in the tester's own state folder.
    env.insert("XDG_STATE_HOME", QString::fromStdString(install.Path("state").string()));
    env.insert("QT_QPA_PLATFORM", "offscreen");
    if (!screenshot.isEmpty())
        env.insert("KESTO_SCREENSHOT", screenshot);
    if (!scaleFactor.isEmpty())
        env.insert("QT_SCALE_FACTOR", scaleFactor);
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

// The aligned squares of ratio x ratio device pixels, inside a rectangle of window pixels, that
// are not of one colour: a picture enlarged from window pixels has none, one painted at device
// pixels has them wherever a text or a slanted edge passes.
int FineSquares(const QImage& image, int ratio, const QRect& window) {
    int fine = 0;
    for (int y = window.top(); y <= window.bottom(); ++y) {
        for (int x = window.left(); x <= window.right(); ++x) {
            const QRgb first = image.pixel(x * ratio, y * ratio);
            bool same = true;
            for (int dy = 0; dy < ratio && same; ++dy) {
                for (int dx = 0; dx < ratio && same; ++dx)
                    same = image.pixel(x * ratio + dx, y * ratio + dy) == first;
            }
            fine += same ? 0 : 1;
        }
    }
    return fine;
}

TEST(KestoProcess, HighDensityScreenGetsTheDrawingAtDevicePixels) {
    test::TestInstallation install;
    install.Write("msg/Kesto.ini", test::KestoIniWithDrawing());
    test::EnsureQApplication();
    // The drawing area of a 1600 x 900 window, below its combo box whatever the font.
    const QRect area(330, 300, 1260, 590);
    QImage shots[2];
    for (const int ratio : {1, 2}) {
        const QString shot =
            QString::fromStdString(install.Path("shot" + std::to_string(ratio) + ".png").string());
        const Outcome outcome =
            RunKesto(install, JobArguments(install), shot, QString::number(ratio));
        ASSERT_EQ(outcome.ExitCode, 100) << outcome.Stderr.toStdString();
        shots[ratio - 1] = QImage(shot).convertToFormat(QImage::Format_RGB32);
        EXPECT_EQ(shots[ratio - 1].size(), QSize(1600 * ratio, 900 * ratio));
    }
    // The stacks' labels and outlines are drawn at both ratios...
    EXPECT_GT(test::DarkPixels(shots[0].copy(area)), 100);
    // ...and at ratio 2 with detail finer than a window pixel, not as an enlarged picture.
    EXPECT_GT(FineSquares(shots[1], 2, area), 200);
}

}  // namespace
}  // namespace kesto
