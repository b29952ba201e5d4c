#include "ui/main/ExtentList.h"

#include <gtest/gtest.h>
#include <QScrollBar>

#include "common/EventCounter.h"
#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(ExtentList, ScrollsExactlyToTheExtentWhatEverTheLinesHold) {
    test::EnsureQApplication();
    ExtentList list(720, nullptr);
    list.resize(300, 200);
    list.addItem(QString(400, QChar('x')));
    list.show();
    QApplication::processEvents();
    const int page = list.viewport()->width();
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 720 - page);
    EXPECT_TRUE(list.horizontalScrollBar()->isVisible());
}

TEST(ExtentList, EveryRowIsAsHighAsTheFirstWhateverItsTextHolds) {
    test::EnsureQApplication();
    ExtentList list(650, nullptr);
    list.resize(300, 200);
    list.addItem("006   30 Washer plate");
    list.addItem(QString::fromUtf8("007   12 \xE5\xBA\x95\xE6\x9D\xBF"));  // a Japanese name
    list.addItem("");
    list.show();
    QApplication::processEvents();
    const int first = list.visualItemRect(list.item(0)).height();
    EXPECT_GT(first, 0);
    EXPECT_EQ(list.visualItemRect(list.item(1)).height(), first);
    EXPECT_EQ(list.visualItemRect(list.item(2)).height(), first);
    EXPECT_EQ(list.visualItemRect(list.item(2)).top(), 2 * first);
}

TEST(ExtentList, WiderThanTheExtentHasNothingToScroll) {
    test::EnsureQApplication();
    ExtentList list(650, nullptr);
    list.resize(800, 200);
    list.addItem("006   30 Washer plate");
    list.show();
    QApplication::processEvents();
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0);
    EXPECT_FALSE(list.horizontalScrollBar()->isVisible());
    EXPECT_EQ(list.HorizontalExtent(), 650);
}

TEST(ExtentList, NarrowerThanTheExtentWithShortLinesKeepsItsBarAndGoesQuiet) {
    test::EnsureQApplication();
    ExtentList list(650, nullptr);
    list.resize(250, 120);
    list.addItem("006   30 Washer plate");
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    EXPECT_EQ(test::EventsAtRest(), 0);
    EXPECT_TRUE(list.horizontalScrollBar()->isVisible());
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 650 - list.viewport()->width());
}

TEST(ExtentList, EveryWidthAroundTheExtentGoesQuietWithAndWithoutAVerticalBar) {
    test::EnsureQApplication();
    for (const int lines : {1, 40}) {
        ExtentList list(720, nullptr);
        for (int i = 0; i < lines; ++i)
            list.addItem(QString::number(i) + " Washer plate");
        list.resize(600, 150);
        list.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
        for (const int width : {640, 700, 715, 719, 720, 721, 724, 740, 800, 700}) {
            list.resize(width, 150);
            EXPECT_EQ(test::EventsAtRest(150), 0) << lines << " lines at width " << width;
            EXPECT_EQ(list.horizontalScrollBar()->isVisible(), list.contentsRect().width() < 720)
                << lines << " lines at width " << width;
        }
    }
}

}  // namespace
}  // namespace kesto
