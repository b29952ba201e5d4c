// MaiChg as the session carries it out: the picked part stacked again with a new count.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "common/StackIds.h"
#include "session/JobSession.h"

namespace kesto::test {
namespace {

class SheetCountTest : public TwoPartsTest {
  protected:
    std::vector<HaichiInfo*> StacksOf(const PartsInfo& part) {
        std::vector<HaichiInfo*> found;
        for (HaichiInfo& h : app.HaichiList) {
            if (h.Part == &part)
                found.push_back(&h);
        }
        return found;
    }
};

TEST_F(SheetCountTest, NothingBeginsWithoutAPick) {
    EXPECT_FALSE(session.BeginSheetCount(drawing).has_value());
    EXPECT_TRUE(testServices.Op.KakuNumbers.empty());
}

TEST_F(SheetCountTest, ARubberBandInForceRefusesWithMessage15) {
    Click(980, 833);  // a: pixels (930, 808)-(1030, 858)
    ASSERT_EQ(drawing.Selected().Picked(), a.Id);
    drawing.Select().SetBand(BandState::InForce);
    EXPECT_FALSE(session.BeginSheetCount(drawing).has_value());
    EXPECT_EQ(testServices.Op.KakuNumbers, Kaku({{15, 0}}));
}

TEST_F(SheetCountTest, BeginRemembersWhereThePickedStackStands) {
    Click(980, 833);
    const std::optional<SheetCountStart> start = session.BeginSheetCount(drawing);
    ASSERT_TRUE(start.has_value());
    EXPECT_DOUBLE_EQ(start->X, 990);
    EXPECT_DOUBLE_EQ(start->Y, 10);
}

TEST_F(SheetCountTest, ThePartIsStackedAgainWithTheNewCountAndPickedAgain) {
    Click(980, 833);
    const SheetCountStart start = *session.BeginSheetCount(drawing);
    // Six pieces at two per stack: three stacks of two; the part's own limit comes back.
    EXPECT_FALSE(session.ApplySheetCount(drawing, start, 2));
    const std::vector<HaichiInfo*> stacks = StacksOf(partA);
    ASSERT_EQ(stacks.size(), 3u);
    for (const HaichiInfo* h : stacks)
        EXPECT_EQ(h->Pieces, 2);
    EXPECT_EQ(partA.PiecesPlaced, 6);
    EXPECT_EQ(partA.PerStackLimit, 0);
    // Every stack of the part is picked, the first in the list as Picked.
    EXPECT_EQ(drawing.Selected().PickHistory(), IdsOf(stacks));
    EXPECT_EQ(drawing.Selected().Picked(), stacks.front()->Id);
    // LastPicked is the stack standing where the picked one stood, within 1 mm.
    const HaichiInfo* last = app.HaichiList.Find(drawing.Selected().LastPicked());
    ASSERT_NE(last, nullptr);
    EXPECT_LE(std::fabs(last->X - 990), 1.0);
    EXPECT_LE(std::fabs(last->Y - 10), 1.0);
    // The other part is not touched.
    EXPECT_EQ(StacksOf(partB), std::vector<HaichiInfo*>({&b}));
    EXPECT_EQ(partB.PiecesPlaced, 2);
}

TEST_F(SheetCountTest, IsWrittenDownWithThePickedStacksPlaceBeforeTheChangeIsShown) {
    RecordedJournal journal;
    session.JournalIn(&journal);
    Click(360, 833);  // a2, the third stack of the list
    const SheetCountStart start = *session.BeginSheetCount(drawing);
    std::vector<std::string> whenShown;
    session.ApplySheetCount(drawing, start, 2, [&](ChangeSet) { whenShown = journal.Lines; });
    EXPECT_EQ(whenShown, (std::vector<std::string>{"sheets 2 2"}));
    EXPECT_EQ(journal.Lines, whenShown);
}

TEST_F(SheetCountTest, TheNewStacksAndThePartRememberTheOperatorsCount) {
    Click(980, 833);
    const SheetCountStart start = *session.BeginSheetCount(drawing);
    session.ApplySheetCount(drawing, start, 2);
    EXPECT_EQ(partA.OperatorPerStack, 2);
    for (const HaichiInfo* h : StacksOf(partA))
        EXPECT_EQ(h->Edits, kEditRestacked);
    EXPECT_EQ(b.Edits, 0);
    EXPECT_EQ(partB.OperatorPerStack, 0);
}

TEST_F(SheetCountTest, WithoutAStackAtTheOldPlaceTheFirstStackIsLastPicked) {
    Click(980, 833);
    SheetCountStart elsewhere = *session.BeginSheetCount(drawing);
    elsewhere.X = 5000;  // no stack can stand there
    session.ApplySheetCount(drawing, elsewhere, 3);
    ASSERT_NE(drawing.Selected().Picked(), kNoStack);
    EXPECT_EQ(drawing.Selected().LastPicked(), drawing.Selected().Picked());
}

TEST_F(SheetCountTest, ApplyWithoutAPickChangesNothing) {
    EXPECT_FALSE(session.ApplySheetCount(drawing, SheetCountStart{990, 10}, 2));
    EXPECT_EQ(StacksOf(partA), std::vector<HaichiInfo*>({&a, &a2}));
}

TEST_F(SheetCountTest, APartLeftShortIsReportedWithMessage10AfterTheRefresh) {
    Click(980, 833);
    const SheetCountStart start = *session.BeginSheetCount(drawing);
    // Two hundred pieces one a stack want two hundred stacks. The eighteen cells of the two
    // pallets take four each, in corners 4, 8, 1 and 2, but for corner 4 of block 3 where B
    // stands: 71 stacks, 71 pieces placed. The quantity is then shared out over those stacks
    // (58 of three, 13 of two), which leaves the placed count as it was: the part is short.
    partA.Quantity = 200;
    std::vector<std::string> order;
    StackId lastAtMessage = a.Id;
    testServices.Op.OnAsk = [&](int no1) {
        order.push_back("message " + std::to_string(no1));
        lastAtMessage = drawing.Selected().LastPicked();
    };
    EXPECT_TRUE(session.ApplySheetCount(drawing, start, 1, [&](ChangeSet) {
        // The lists and the drawing show the new stacks before the message is read.
        order.push_back("refresh " + std::to_string(StacksOf(partA).size()));
    }));
    const std::vector<HaichiInfo*> stacks = StacksOf(partA);
    ASSERT_EQ(stacks.size(), 71u);
    EXPECT_EQ(partA.PiecesPlaced, 71);
    for (size_t i = 0; i < stacks.size(); ++i)
        EXPECT_EQ(stacks[i]->Pieces, i < 58 ? 3 : 2) << i;
    EXPECT_EQ(order,
              std::vector<std::string>({"refresh " + std::to_string(stacks.size()), "message 10"}));
    EXPECT_EQ(testServices.Op.KakuNumbers, Kaku({{10, 0}}));
    // The last pick is set only once the message is answered: the stack at the old place.
    EXPECT_EQ(lastAtMessage, kNoStack);
    const HaichiInfo* last = app.HaichiList.Find(drawing.Selected().LastPicked());
    ASSERT_NE(last, nullptr);
    EXPECT_LE(std::fabs(last->X - 990), 1.0);
    EXPECT_LE(std::fabs(last->Y - 10), 1.0);
}

TEST_F(SheetCountTest, APartPlacedWhollyGetsNoMessage) {
    Click(980, 833);
    const SheetCountStart start = *session.BeginSheetCount(drawing);
    int refreshes = 0;
    EXPECT_FALSE(session.ApplySheetCount(drawing, start, 1, [&](ChangeSet) { ++refreshes; }));
    EXPECT_EQ(refreshes, 1);
    EXPECT_EQ(partA.PiecesPlaced, 6);
    EXPECT_TRUE(testServices.Op.KakuNumbers.empty());
}

}  // namespace
}  // namespace kesto::test
