// The main window's own all-parts list: a click picks the line's part in the drawing and
// leaves one line selected; during a rubber-band selection the click is undone.
#include <gtest/gtest.h>

#include <QListWidget>
#include <QPushButton>
#include <QtTest/QTest>

#include "common/WindowJob.h"
#include "ui/draw/CKs_DrawArea.h"
#include "view/Colours.h"

namespace kesto {
namespace {

// The test job at 1600 x 900; the list "LIST-PTALL" shows Seq 1 (on pallet 1) and Seq 2 (in
// small box 1) of process 1.
struct MainListJob : test::ShownWindowJob {
    QListWidget& List() { return *D().findChild<QListWidget*>("LIST-PTALL"); }
    void ClickLine(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers,
                          List().visualItemRect(List().item(row)).center());
    }
    std::vector<int> SelectedRows() {
        std::vector<int> rows;
        for (int i = 0; i < List().count(); ++i) {
            if (List().item(i)->isSelected())
                rows.push_back(i);
        }
        return rows;
    }
    Rgb PixelOf(const HaichiInfo& stack) { return AreaPixel(*Drawing().ScreenRect(stack)); }
};

TEST(CKestoDlgPartsAll, ClickHighlightsThePartAndKeepsItsFirstStack) {
    MainListJob s;
    ASSERT_TRUE(s.shown);
    HaichiInfo& stack = s.FirstStack();
    ASSERT_EQ(stack.Part->Seq, 1);
    EXPECT_EQ(s.PixelOf(stack), colour::kPartNormal);
    s.ClickLine(0);
    EXPECT_EQ(s.SelectedRows(), std::vector<int>{0});
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), stack.Id);
    EXPECT_EQ(s.Drawing().Selected().Picked(), kNoStack);
    EXPECT_EQ(s.PixelOf(stack), colour::kSamePart);  // 252, 255, 108
}

TEST(CKestoDlgPartsAll, AddedLineLeavesOnlyTheCaretLineSelected) {
    MainListJob s;
    ASSERT_TRUE(s.shown);
    s.ClickLine(0);
    s.ClickLine(1, Qt::ControlModifier);
    EXPECT_EQ(s.SelectedRows(), std::vector<int>{1});
    // Seq 2 has no stack: Seq 1's highlight went, its stack stays LastPicked.
    EXPECT_EQ(s.PixelOf(s.FirstStack()), colour::kPartNormal);
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), s.FirstStack().Id);
}

TEST(CKestoDlgPartsAll, ClickDuringABandSelectionIsUndone) {
    MainListJob s;
    ASSERT_TRUE(s.shown);
    s.Drawing().Select().SetBand(BandState::InForce);
    s.ClickLine(0);
    EXPECT_TRUE(s.SelectedRows().empty());
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), kNoStack);
    EXPECT_EQ(s.PixelOf(s.FirstStack()), colour::kPartNormal);
}

TEST(CKestoDlgPartsAll, DroppingTheBandWithDirectPicksNothing) {
    MainListJob s;
    ASSERT_TRUE(s.shown);
    s.ClickLine(0);
    s.job.App().Settings.IsDirect = 1;
    s.Drawing().Select().SetBand(BandState::InForce);
    QTest::mouseClick(s.job.Dialog->findChild<QPushButton*>("B-NEST-A"), Qt::LeftButton);
    EXPECT_TRUE(s.SelectedRows().empty());
    EXPECT_EQ(s.Drawing().Selected().LastPicked(), kNoStack);
}

}  // namespace
}  // namespace kesto
