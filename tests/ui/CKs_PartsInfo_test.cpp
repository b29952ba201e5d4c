#include "ui/dialogs/CKs_PartsInfo.h"

#include <gtest/gtest.h>

#include "common/WindowJob.h"

namespace kesto {
namespace {

TEST(CKs_PartsInfo, TakesThePartInformationRectangle) {
    test::EnsureQApplication();
    CKestoApp app;
    QWidget parent;
    CKs_PartsInfo panel(app, &parent);
    app.InfoRect = {681, 2, 1598, 104};
    panel.Place();
    EXPECT_EQ(panel.geometry(), QRect(681, 2, 917, 102));
    EXPECT_EQ(panel.objectName(), "CKs_PartsInfo");
}

}  // namespace
}  // namespace kesto
