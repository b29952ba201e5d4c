// The drawing area without a window, on the grid job of EditFixture.h: the journal's drop of
// JournalReplay_test moves stack a (place 0) from x 990 to x 790.
#include "session/HeadlessDrawing.h"

#include <gtest/gtest.h>

#include "common/EditFixture.h"
#include "common/RecordedJournal.h"
#include "session/JournalReplay.h"

namespace kesto::test {
namespace {

class HeadlessDrawingTest : public TwoPartsTest {
  protected:
    ReplayOutcome Replay(HeadlessDrawing& area, const std::vector<std::string>& commands) {
        JournalReplay replay(session, area.Drawing(), area.Editing(), relay, answers);
        return replay.Run(ReadJournal(JournalText(std::string(64, 'a'), commands)));
    }

    RecordingOperator answers;
    OperatorRelay relay{testServices.Op};
};

TEST_F(HeadlessDrawingTest, ItsDrawingShowsTheSessionsJobAndView) {
    HeadlessDrawing area(session);
    EXPECT_EQ(&area.Drawing().Shown(), &session.Shown());
    EXPECT_EQ(area.Drawing().Area(), IntRect{});
}

TEST_F(HeadlessDrawingTest, ADropThroughItMovesTheStackAndIsAStepThatUndoTakesBack) {
    HeadlessDrawing area(session);
    ASSERT_TRUE(Replay(area, {"drop 1080 900 780 808 880 858 0"}).Ok());
    EXPECT_DOUBLE_EQ(a.X, 790);
    ASSERT_EQ(session.History().UndoSteps(), 1u);
    ASSERT_TRUE(Replay(area, {"undo"}).Ok());
    EXPECT_DOUBLE_EQ(app.HaichiList.AtPosition(0)->X, 990);
}

TEST_F(HeadlessDrawingTest, TheSetAsideOfItsPicksIsAStepWithThosePicks) {
    HeadlessDrawing area(session);
    ASSERT_TRUE(Replay(area, {"left 0"}).Ok());
    EXPECT_EQ(partA.PiecesSetAside, 3);
    ASSERT_EQ(session.History().UndoSteps(), 1u);
}

}  // namespace
}  // namespace kesto::test
