// Stacks across the offset lines: which side, by how much, and the line that names them.
#include "view/OffsetCrossings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "common/PartFields.h"
#include "common/TestFiles.h"
#include "common/TestServices.h"
#include "support/MessageFile.h"

namespace kesto {
namespace {

using test::AddPart;

// Process 1 on a pallet "PAL" of 1000 x 800 with one block over the whole of it.
class OffsetCrossingTest : public ::testing::Test {
  protected:
    OffsetCrossingTest() {
        PalletInfo& p = app.PalletList.Append();
        p.Name = "PAL";
        p.LengthX = 1000;
        p.LengthY = 800;
        KouteiInfo& k = app.KouteiList.Append();
        k.No = 1;
        k.PalletName = "PAL";
        BlockInfo b;
        b.KouteiNo = 1;
        b.PalletNo = 1;
        b.MaxX = 1000;
        b.MaxY = 800;
        app.Blocks.AddBlock(b);
    }
    PalletInfo& Pallet() { return app.PalletList.Items.front(); }
    // A stack's reference point is its right edge and lower edge.
    HaichiInfo& StackAt(PartsInfo& part, double x, double y) {
        HaichiInfo& h = app.HaichiList.Append();
        h.Part = &part;
        h.BlockIndex = 0;
        h.X = x;
        h.Y = y;
        h.Pieces = 1;
        return h;
    }

    CKestoApp app;
    MessageTable messages;  // nothing loaded: the English texts
    test::TempFolder folder;
};

TEST_F(OffsetCrossingTest, AStackBelowTheLowerLineCrossesItByTheDifference) {
    Pallet().OffsetB = 50;
    PartsInfo& p = AddPart(app, {.DisplayName = "Bracket", .SizeX = 100, .SizeY = 100});
    const HaichiInfo& h = StackAt(p, 300, 10);  // y 10..110, the line at 50
    StackAt(p, 600, 50);                        // on the line: not across
    const std::vector<OffsetCrossing> all = OffsetCrossings(app);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].Stack, &h);
    EXPECT_EQ(all[0].Side, OffsetSide::Lower);
    EXPECT_EQ(all[0].PalletNo, 1);
    EXPECT_DOUBLE_EQ(all[0].By, 40);
    EXPECT_EQ(OffsetCrossingText(all[0], messages),
              "A1 Bracket: 40 past the lower offset line of pallet 1");
}

TEST_F(OffsetCrossingTest, TheUpperLineLiesItsOffsetBelowThePalletsFarEdge) {
    Pallet().OffsetA = 100;  // the line at y = 800 - 100 = 700
    PartsInfo& p = AddPart(app, {.SizeX = 100, .SizeY = 100});
    StackAt(p, 300, 650.5);  // reaches 750.5
    const std::vector<OffsetCrossing> all = OffsetCrossings(app);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].Side, OffsetSide::Upper);
    EXPECT_DOUBLE_EQ(all[0].By, 50.5);
    EXPECT_EQ(OffsetCrossingText(all[0], messages),
              "A1: 50.5 past the upper offset line of pallet 1");
}

TEST_F(OffsetCrossingTest, LinesOfAHundredthOrLessAreNotDrawnAndNotCrossed) {
    Pallet().OffsetB = 0.01;
    PartsInfo& p = AddPart(app, {.SizeX = 100, .SizeY = 100});
    StackAt(p, 300, 0);
    EXPECT_TRUE(OffsetCrossings(app).empty());
}

TEST_F(OffsetCrossingTest, AStackPastTwoLimitsIsNamedForEach) {
    Pallet().LimitLeft = 20;   // x = 20
    Pallet().LimitRight = 30;  // x = 1000 - 30 = 970
    PartsInfo& wide = AddPart(app, {.SizeX = 990, .SizeY = 100});
    StackAt(wide, 995, 200);  // x 5..995
    const std::vector<OffsetCrossing> all = OffsetCrossings(app);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].Side, OffsetSide::Left);
    EXPECT_DOUBLE_EQ(all[0].By, 15);
    EXPECT_EQ(all[1].Side, OffsetSide::Right);
    EXPECT_DOUBLE_EQ(all[1].By, 25);
    EXPECT_EQ(OffsetCrossingText(all[1], messages), "A1: 25 past the right limit of pallet 1");
}

TEST_F(OffsetCrossingTest, AProcessWhosePalletIsMissingHasNoLinesToCross) {
    Pallet().OffsetB = 50;
    app.KouteiList.Items.front().PalletName = "OTHER";
    PartsInfo& p = AddPart(app, {.SizeX = 100, .SizeY = 100});
    StackAt(p, 300, 10);
    EXPECT_TRUE(OffsetCrossings(app).empty());
}

TEST_F(OffsetCrossingTest, AStackWithoutAPartOrBlockIsPassedOver) {
    Pallet().OffsetB = 50;
    PartsInfo& p = AddPart(app, {.SizeX = 100, .SizeY = 100});
    StackAt(p, 300, 10).BlockIndex = 7;
    StackAt(p, 300, 10).Part = nullptr;
    EXPECT_TRUE(OffsetCrossings(app).empty());
}

TEST_F(OffsetCrossingTest, TheMessageFilesLineTakesTheFiguresInItsOwnOrder) {
    const std::filesystem::path path = folder.Path() / "Kesto.ini";
    {
        std::ofstream out(path);
        out << "[Short]\nOFFSET-CROSSING=1,\"%4|%3|%2|%1|%5|%%1|%\"\nOFFSET-LOWER=1,unten\n";
    }
    test::RecordingOperator op;
    MessageTable table;
    ASSERT_EQ(table.Load(path.string(), op), 0);
    Pallet().OffsetB = 50;
    PartsInfo& p = AddPart(app, {.DisplayName = "Bracket", .SizeX = 100, .SizeY = 100});
    StackAt(p, 300, 10);
    const std::vector<OffsetCrossing> all = OffsetCrossings(app);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(OffsetCrossingText(all[0], table), "1|unten|40|A1 Bracket||%A1 Bracket|%");
}

TEST_F(OffsetCrossingTest, TextsLookedUpOnceGiveTheSameLineAppended) {
    Pallet().OffsetA = 100;
    Pallet().OffsetB = 50;
    Pallet().LimitLeft = 20;
    Pallet().LimitRight = 30;
    PartsInfo& p = AddPart(app, {.SizeX = 1000, .SizeY = 800});
    StackAt(p, 1000, 0);  // past all four
    const std::vector<OffsetCrossing> all = OffsetCrossings(app);
    ASSERT_EQ(all.size(), 4u);
    const OffsetCrossingTexts texts(messages);
    for (const OffsetCrossing& c : all) {
        TextBuilder line;
        line.Str("  ");
        AppendOffsetCrossingText(line, c, texts);
        EXPECT_EQ(line.Text(), "  " + OffsetCrossingText(c, messages));
    }
}

}  // namespace
}  // namespace kesto
