// The view's state: a fresh window's view, setters that report what they changed, and the
// block-cell toggle that keeps the number it was read with.
#include "app/ViewState.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(ViewState, AFreshViewIsFlatOnTheFirstProcessPalletAndSmallBox) {
    const ViewState view;
    EXPECT_EQ(view.Mode(), PalletView::Flat);
    EXPECT_EQ(view.Koutei(), 1);
    EXPECT_EQ(view.Pallet(), 1);
    EXPECT_EQ(view.Box(), destination::kFirstSmallBox);
    EXPECT_FALSE(view.Is3D());
    EXPECT_FALSE(view.Grid());
    EXPECT_EQ(view.Hit(), HitBy::Block);
    EXPECT_FALSE(view.BlockDraw());
}

TEST(ViewState, ASetterReportsItsChangeOnlyWhenTheValueIsNew) {
    ViewState view;
    EXPECT_EQ(view.SetKoutei(3), ChangeSet(Change::Koutei));
    EXPECT_TRUE(view.SetKoutei(3).Empty());
    EXPECT_EQ(view.SetPallet(2), ChangeSet(Change::Pallet));
    EXPECT_EQ(view.SetBox(101), ChangeSet(Change::Box));
    EXPECT_EQ(view.SetMode(PalletView::TwoPallet), ChangeSet(Change::Mode));
    EXPECT_EQ(view.Set3D(true), ChangeSet(Change::Display));
    EXPECT_EQ(view.SetGrid(true), ChangeSet(Change::Display));
    EXPECT_TRUE(view.SetGrid(true).Empty());
    EXPECT_EQ(view.SetHit(HitBy::Single), ChangeSet(Change::Hit));
    EXPECT_EQ(view.Koutei(), 3);
    EXPECT_EQ(view.Pallet(), 2);
    EXPECT_EQ(view.Box(), 101);
    EXPECT_EQ(view.Mode(), PalletView::TwoPallet);
    EXPECT_TRUE(view.Is3D());
    EXPECT_TRUE(view.Grid());
    EXPECT_EQ(view.Hit(), HitBy::Single);
}

TEST(ViewState, AStoredTwoDrawsTheCellsAndIsKeptUntilSwitched) {
    ViewState view;
    EXPECT_EQ(view.SetStoredBlockDraw(2), ChangeSet(Change::Display));
    EXPECT_TRUE(view.BlockDraw());
    EXPECT_EQ(view.StoredBlockDraw(), 2);
    view.SwitchBlockDraw();
    EXPECT_EQ(view.StoredBlockDraw(), 0);
    view.SwitchBlockDraw();
    EXPECT_EQ(view.StoredBlockDraw(), 1);
}

}  // namespace
}  // namespace kesto
