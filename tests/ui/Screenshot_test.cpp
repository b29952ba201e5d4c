#include "ui/main/Screenshot.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPalette>
#include <QWidget>

#include "common/TestFiles.h"
#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(SaveScreenshot, WritesTheWindowAsPngOfItsSizeAndColours) {
    test::TempFolder folder;
    test::EnsureQApplication();
    QWidget window;
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, QColor(12, 200, 34));
    window.setPalette(palette);
    window.setAutoFillBackground(true);
    window.resize(120, 80);
    const QString path = QString::fromStdString(folder / "shot.png");
    ASSERT_TRUE(SaveScreenshot(window, path));
    const QImage shot(path);
    EXPECT_EQ(shot.size(), QSize(120, 80));
    EXPECT_EQ(shot.pixelColor(60, 40), QColor(12, 200, 34));
}

TEST(ShowOffScreen, LaysTheWindowOutAtTheSizeWithoutPuttingItOnAScreen) {
    test::EnsureQApplication();
    QWidget window;
    ShowOffScreen(window, 200, 100);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.size(), QSize(200, 100));
    EXPECT_TRUE(window.testAttribute(Qt::WA_DontShowOnScreen));
}

TEST(SaveScreenshot, AFolderThatIsNotThereIsReportedAsNotWritten) {
    test::TempFolder folder;
    test::EnsureQApplication();
    QWidget window;
    window.resize(20, 20);
    EXPECT_FALSE(SaveScreenshot(window, QString::fromStdString(folder / "missing/shot.png")));
}

}  // namespace
}  // namespace kesto
