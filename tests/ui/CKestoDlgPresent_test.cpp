// The main window following a command: each change shows in the widgets that display it, and
// a change that is not there leaves the other widgets as they were.
#include <gtest/gtest.h>

#include <QImage>
#include <QListWidget>
#include <QPushButton>

#include "common/WindowJob.h"
#include "rules/PartsAllList.h"
#include "ui/dialogs/CKs_PartsAllDlg.h"
#include "ui/dialogs/CKs_PartsView.h"
#include "ui/draw/CKs_DrawArea.h"
#include "ui/main/CKestoDlg.h"
#include "view/Colours.h"

namespace kesto {
namespace {

struct ShownWindow : test::ShownWindowJob {
    JobSession& Session() { return *job.Session; }
    QImage Picture() { return D().DrawArea()->Image(); }
    bool Checked(ControlId id) { return static_cast<QPushButton*>(D().Control(id))->isChecked(); }
};

TEST(CKestoDlgPresent, NothingChangedLeavesTheDrawingAndThePartViewAsTheyWere) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    w.D().PartsViewPanel()->ShowSize(200, 150);
    const QImage before = w.Picture();
    w.Session().SetGrid(!w.job.Shown().Grid());
    w.D().Present({});
    EXPECT_EQ(w.Picture(), before);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeX(), 200);
}

TEST(CKestoDlgPresent, ASwitchedGridIsDrawnOnceItIsPresented) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    const QImage before = w.Picture();
    const ChangeSet changed = w.Session().SetGrid(!w.job.Shown().Grid());
    EXPECT_TRUE(changed.Has(Change::Display));
    EXPECT_EQ(w.Picture(), before);
    w.D().Present(changed);
    EXPECT_NE(w.Picture(), before);
}

TEST(CKestoDlgPresent, TheSameGridAgainChangesNothing) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    EXPECT_TRUE(w.Session().SetGrid(w.job.Shown().Grid()).Empty());
}

TEST(CKestoDlgPresent, AnotherProcessEmptiesThePartViewAndPartsAloneKeepIt) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    w.D().PartsViewPanel()->ShowSize(200, 150);
    w.D().Present(Change::Parts);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeX(), 200);
    w.D().Present(Change::Box);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeX(), 200);
    w.D().Present(Change::Koutei);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeX(), kNoPartSize);
}

TEST(CKestoDlgPresent, ATakenSetAsideLineEmptiesThePartView) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    w.D().PartsViewPanel()->ShowSize(200, 150);
    w.D().Present(Change::SetAsideLine);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeX(), kNoPartSize);
    EXPECT_EQ(w.D().PartsViewPanel()->SizeY(), kNoPartSize);
}

TEST(CKestoDlgPresent, TheHitChoiceChecksItsButtonAndUnchecksTheOther) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    ASSERT_TRUE(w.Checked(kHitByBlock));
    w.D().Present(w.Session().SetHit(HitBy::Single));
    EXPECT_TRUE(w.Checked(kHitSingle));
    EXPECT_FALSE(w.Checked(kHitByBlock));
    w.D().Present(w.Session().SetHit(HitBy::Block));
    EXPECT_TRUE(w.Checked(kHitByBlock));
    EXPECT_FALSE(w.Checked(kHitSingle));
}

TEST(CKestoDlgPresent, FlatChosenHidesTheAllPartsDialogForGood) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    w.D().Present(w.Session().ChooseView(PalletView::Danmen));
    w.D().OnInfo();
    ASSERT_EQ(w.D().PartsAllState(), Visibility::Shown);
    ASSERT_TRUE(w.D().PartsAllDialog()->isVisible());
    w.D().Present(w.Session().ChooseView(PalletView::FourPallet));
    EXPECT_TRUE(w.D().PartsAllDialog()->isVisible());
    w.D().Present(w.Session().ChooseView(PalletView::Flat));
    EXPECT_EQ(w.D().PartsAllState(), Visibility::Hidden);
    EXPECT_FALSE(w.D().PartsAllDialog()->isVisible());
}

TEST(CKestoDlgPresent, AChosenProcessIsNamedByTheListsAndTheDrawing) {
    ShownWindow w;
    ASSERT_TRUE(w.shown);
    ASSERT_GE(w.job.App().KouteiList.Count, 2);
    const QImage before = w.Picture();
    auto* allParts = static_cast<QListWidget*>(w.D().Control(kAllPartsList));
    const int firstCount = allParts->count();
    w.D().Present(w.Session().ChooseKoutei(2));
    EXPECT_NE(w.Picture(), before);
    int secondProcessParts = 0;
    for (const PartsInfo& part : w.job.App().PartsList)
        secondProcessParts += part.KouteiNo == 2 ? 1 : 0;
    EXPECT_EQ(allParts->count(), secondProcessParts);
    EXPECT_GT(firstCount + secondProcessParts, 0);
}

}  // namespace
}  // namespace kesto
