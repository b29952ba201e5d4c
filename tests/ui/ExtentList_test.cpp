#include "ui/main/ExtentList.h"

#include <gtest/gtest.h>
#include <QScrollBar>

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

TEST(ExtentList, WiderThanTheExtentHasNothingToScroll) {
    test::EnsureQApplication();
    ExtentList list(650, nullptr);
    list.resize(800, 200);
    list.addItem("006   30 Washer plate");
    list.show();
    QApplication::processEvents();
    EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(list.HorizontalExtent(), 650);
}

}  // namespace
}  // namespace kesto
