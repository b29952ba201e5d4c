// The sample job of examples/install in every view of `make screenshot`, rendered here on the
// offscreen platform at 1600 x 900 and compared with the golden images in tests/ui/golden.
// KESTO_UPDATE_GOLDEN=1 writes the images anew; on a mismatch the actual image is written to
// <build folder>/ui-actual/.
#include "ui/main/ScreenViews.h"

#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "common/WindowJob.h"

namespace kesto {
namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 1600;
constexpr int kHeight = 900;
// Font antialiasing may differ a little between machines: a pixel counts as different only
// beyond this channel difference, and a few of them are allowed.
constexpr int kChannelTolerance = 48;
constexpr double kDifferentShare = 0.005;

bool Updating() {
    const char* update = std::getenv("KESTO_UPDATE_GOLDEN");
    return update != nullptr && std::string(update) == "1";
}

// The window over the sample installation, shown, laid out and switched to view.
QImage RenderSampleJob(ScreenView view) {
    test::WindowJob job;
    if (!test::OpenSampleJob(job) || !test::ShowLaidOut(*job.Dialog, kWidth, kHeight))
        return {};
    ShowScreenView(*job.Dialog, view);
    QApplication::processEvents();
    return job.Dialog->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

int DifferentPixels(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* ra = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* rb = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            const int d = std::max({std::abs(qRed(ra[x]) - qRed(rb[x])),
                                    std::abs(qGreen(ra[x]) - qGreen(rb[x])),
                                    std::abs(qBlue(ra[x]) - qBlue(rb[x]))});
            different += d > kChannelTolerance ? 1 : 0;
        }
    }
    return different;
}

void ExpectMatchesGolden(ScreenView view) {
    const std::string name = std::string("main-") + ScreenViewName(view) + ".png";
    const QImage actual = RenderSampleJob(view);
    ASSERT_EQ(actual.size(), QSize(kWidth, kHeight)) << "the window was not laid out";
    const fs::path golden = test::SourceDir() / "tests" / "ui" / "golden" / name;
    if (Updating()) {
        fs::create_directories(golden.parent_path());
        ASSERT_TRUE(actual.save(QString::fromStdString(golden.string()), "PNG")) << golden;
        return;
    }
    ASSERT_TRUE(fs::exists(golden)) << golden << " is missing; run with KESTO_UPDATE_GOLDEN=1";
    const QImage expected =
        QImage(QString::fromStdString(golden.string())).convertToFormat(QImage::Format_RGB32);
    const int allowed = static_cast<int>(kWidth * kHeight * kDifferentShare);
    const int different =
        expected.size() == actual.size() ? DifferentPixels(expected, actual) : kWidth * kHeight;
    if (different <= allowed)
        return;
    const fs::path out = test::BinaryDir() / "ui-actual" / name;
    fs::create_directories(out.parent_path());
    actual.save(QString::fromStdString(out.string()), "PNG");
    ADD_FAILURE() << name << ": " << different << " pixels differ (at most " << allowed
                  << " may); the actual image is " << out;
}

TEST(ScreenViews, NamesAreTheScreenshotVariableValues) {
    for (ScreenView view : kScreenViews)
        EXPECT_EQ(ScreenViewByName(ScreenViewName(view)), view);
    EXPECT_EQ(ScreenViewByName("3d"), ScreenView::ThreeD);
    EXPECT_FALSE(ScreenViewByName("FLAT").has_value());
    EXPECT_FALSE(ScreenViewByName("").has_value());
}

TEST(ScreenViews, SampleJobInFlatMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::Flat);
}

TEST(ScreenViews, SampleJobInDanmenMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::Danmen);
}

TEST(ScreenViews, SampleJobInFourPalletMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::FourPallet);
}

TEST(ScreenViews, SampleJobInTwoPalletMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::TwoPallet);
}

TEST(ScreenViews, SampleJobInThreeDMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::ThreeD);
}

TEST(ScreenViews, SampleJobWithAPickedStackMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::Info);
}

TEST(ScreenViews, SampleJobWithAStackDraggedToItsLandingMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::Drag);
}

TEST(ScreenViews, SampleJobZoomedOnAPickMatchesItsGoldenImage) {
    ExpectMatchesGolden(ScreenView::Zoom);
}

}  // namespace
}  // namespace kesto
