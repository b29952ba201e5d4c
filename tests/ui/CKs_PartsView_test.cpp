#include "ui/dialogs/CKs_PartsView.h"

#include <gtest/gtest.h>

#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(CKs_PartsView, TakesThePartViewRectangle) {
    test::EnsureQApplication();
    CKestoApp app;
    QWidget parent;
    CKs_PartsView panel(app, &parent);
    app.ViewRect = {2, 446, 322, 554};
    panel.Place();
    EXPECT_EQ(panel.geometry(), QRect(2, 446, 320, 108));
}

TEST(CKs_PartsView, ShowPartKeepsTheSizeAndMinusPointOneClears) {
    test::EnsureQApplication();
    CKestoApp app;
    CKs_PartsView panel(app, nullptr);
    EXPECT_DOUBLE_EQ(panel.SizeX(), kNoPartSize);
    panel.ShowPart(200, 150);
    EXPECT_DOUBLE_EQ(panel.SizeX(), 200);
    EXPECT_DOUBLE_EQ(panel.SizeY(), 150);
    panel.ShowPart(kNoPartSize, kNoPartSize);
    EXPECT_DOUBLE_EQ(panel.SizeY(), -0.1);
}

}  // namespace
}  // namespace kesto
