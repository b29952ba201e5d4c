#include "ui/dialogs/CAboutDlg.h"

#include <gtest/gtest.h>

#include <QIcon>
#include <QLabel>

#include "common/SpokenControls.h"
#include "common/WindowJob.h"
#include "support/Version.h"

namespace kesto {
namespace {

TEST(CAboutDlg, ShowsTheVersionTextOfTheResourcesWithTheProjectsVersion) {
    test::EnsureQApplication();
    CAboutDlg about(nullptr);
    auto* text = about.findChild<QLabel*>("VersionText");
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->text().startsWith(QString("Kesto Version ") + KestoVersion() + "\n"))
        << text->text().toStdString();
    EXPECT_TRUE(text->text().endsWith("small boxes and the set-aside area"));
    EXPECT_EQ(CAboutDlg::VersionText(), text->text());
}

TEST(CAboutDlg, TheIconIsInTheResources) {
    test::EnsureQApplication();
    EXPECT_FALSE(KestoIcon().isNull());
    EXPECT_EQ(KestoIcon().pixmap(32, 32).width(), 32);
}

TEST(CAboutDlg, EveryControlSpeaksToAScreenReader) {
    test::EnsureQApplication();
    CAboutDlg about(nullptr);
    test::ExpectEveryControlSpoken(about, "About");
    EXPECT_EQ(about.findChild<QLabel*>("VersionText")->accessibleName(), "Version");
}

}  // namespace
}  // namespace kesto
