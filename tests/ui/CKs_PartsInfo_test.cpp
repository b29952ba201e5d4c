// The information panel at 600 x 100: dy = 10, dx = 30; font 1 is 16 px high, so the three
// lines start at (30, 10), (30, 36) and (30, 62).
#include "ui/dialogs/CKs_PartsInfo.h"

#include <gtest/gtest.h>

#include "common/WindowJob.h"
#include "ui/draw/CKs_DrawArea.h"
#include "view/Colours.h"

namespace kesto {
namespace {

using test::PixelAt;

struct InfoJob {
    InfoJob() {
        job.Install.Write("msg/Kesto.ini", test::KestoIniWithDrawing());
        opened = job.Open();
        Panel().PlacePanel({0, 0, 600, 100});
    }
    CKs_PartsInfo& Panel() { return *job.Dialog->PartsInfoPanel(); }
    PalletDrawing& Drawing() { return job.Dialog->DrawArea()->Drawing(); }
    int WhiteIn(int x0, int y0, int x1, int y1) {
        int n = 0;
        for (int y = y0; y < y1; ++y) {
            for (int x = x0; x < x1; ++x)
                n += PixelAt(Panel().Image(), x, y) == colour::kPanelText ? 1 : 0;
        }
        return n;
    }
    int NotBackgroundIn(int x0, int y0, int x1, int y1) {
        int n = 0;
        for (int y = y0; y < y1; ++y) {
            for (int x = x0; x < x1; ++x)
                n += PixelAt(Panel().Image(), x, y) != colour::kPanelBackground ? 1 : 0;
        }
        return n;
    }

    test::WindowJob job;
    bool opened = false;
};

TEST(CKs_PartsInfo, PlacePanelTakesThePlacementAndStoresTheClientRectangle) {
    InfoJob info;
    ASSERT_TRUE(info.opened);
    info.Panel().PlacePanel({681, 2, 1598, 104});
    EXPECT_EQ(info.Panel().geometry(), QRect(681, 2, 917, 102));
    EXPECT_EQ(info.Panel().Panel().Client(), (IntRect{0, 0, 917, 102}));
    EXPECT_EQ(info.Panel().Image().size(), QSize(917, 102));
    EXPECT_EQ(info.Panel().objectName(), "CKs_PartsInfo");
}

TEST(CKs_PartsInfo, WithoutAPickOnlyTheBackgroundIsPainted) {
    InfoJob info;
    ASSERT_TRUE(info.opened);
    info.Panel().Refresh();
    EXPECT_EQ(info.NotBackgroundIn(0, 0, 600, 100), 0);
}

TEST(CKs_PartsInfo, PickedStackIsDescribedInThreeWhiteLines) {
    InfoJob info;
    ASSERT_TRUE(info.opened);
    info.Drawing().Select().SetPicked(info.job.App().HaichiList.front().Id);
    info.Panel().Refresh();
    EXPECT_GT(info.WhiteIn(30, 10, 600, 26), 30);
    EXPECT_GT(info.WhiteIn(30, 36, 600, 52), 30);
    EXPECT_GT(info.WhiteIn(30, 62, 600, 78), 10);
    EXPECT_EQ(info.NotBackgroundIn(0, 0, 600, 10), 0);
    EXPECT_EQ(info.NotBackgroundIn(0, 0, 30, 100), 0);
    EXPECT_EQ(info.NotBackgroundIn(0, 80, 600, 100), 0);
}

TEST(CKs_PartsInfo, ForgettingThePickClearsThePanelOnTheNextRefresh) {
    InfoJob info;
    ASSERT_TRUE(info.opened);
    info.Drawing().Select().SetPicked(info.job.App().HaichiList.front().Id);
    info.Panel().Refresh();
    info.Drawing().Select().SetPicked(kNoStack);
    info.Panel().Refresh();
    EXPECT_EQ(info.NotBackgroundIn(0, 0, 600, 100), 0);
}

}  // namespace
}  // namespace kesto
