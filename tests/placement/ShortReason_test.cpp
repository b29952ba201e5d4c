#include "placement/ShortReason.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "common/PlacementFixture.h"
#include "common/TestFiles.h"
#include "support/MessageFile.h"

namespace kesto::test {
namespace {

// A pallet 1000 x 800 without margins or gaps, stacks up to 1000 high.
PalletInfo OpenPallet(const std::string& name) {
    PalletInfo p;
    p.Name = name;
    SetDims(p, {0, 0, 1000, 800, 1000, 0, 0, 0, 0, 0, 0});
    return p;
}

class ShortReasonTest : public PlacementTest {
  protected:
    // Process 1 on an open pallet whose one block is the whole pallet: a part of 600 x 500
    // takes a single stack there, since every other corner's footprint meets that stack.
    KouteiInfo& OneBlockJob() {
        KouteiInfo& k = OpenJob(1);
        AddBlock(1, 1, 0, 0, 1000, 800);
        return k;
    }
    // Process no on an open pallet, its blocks left to the test.
    KouteiInfo& OpenJob(int32_t no) {
        PalletInfo& pallet = AddPallet(OpenPallet("PAL"));
        KouteiInfo& k = AddKoutei(no, "PAL");
        k.Pallet = &pallet;
        return k;
    }
    // Seven blocks of 100 x 100 in a row on pallet 1 of process 1, gap apart.
    void BlockRow(double gap) {
        OpenJob(1);
        for (int i = 0; i < 7; ++i)
            AddBlock(1, 1, i * (100 + gap), 0, i * (100 + gap) + 100, 100);
    }
    void PlaceAll() {
        ASSERT_TRUE(CKs_Haichi(*app, services)
                        .PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore)
                        .Ok());
    }
    ShortReason Why(const PartsInfo& part) {
        std::optional<ShortReason> r = WhyShort(*app, part);
        EXPECT_TRUE(r.has_value());
        return r.value_or(ShortReason{});
    }
    std::string Text(const PartsInfo& part) { return ShortReasonText(Why(part), messages); }

    MessageTable messages;  // nothing loaded: the English texts
};

TEST_F(ShortReasonTest, AWhollyPlacedPartHasNoReason) {
    OneBlockJob();
    PartsInfo& p = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 5});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 5);
    EXPECT_FALSE(WhyShort(*app, p).has_value());
}

TEST_F(ShortReasonTest, APartForASmallBoxHasNoReason) {
    OneBlockJob();
    PartsInfo& p = AddPart(
        {.SizeX = 600, .SizeY = 500, .Quantity = 5, .Destination = destination::kFirstSmallBox});
    EXPECT_FALSE(WhyShort(*app, p).has_value());
}

TEST_F(ShortReasonTest, PiecesTheOperatorSetAsideAreTheReasonWhenTheyAreAllThatIsMissing) {
    OneBlockJob();
    PartsInfo& p = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 10});
    PlaceAll();
    // Four of the ten pieces taken off the stack and set aside: 6 placed, 4 aside.
    p.PiecesPlaced = 6;
    p.PiecesSetAside = 4;
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::SetAside);
    EXPECT_EQ(r.Missing, 4);
    EXPECT_EQ(Text(p), "Pieces set aside by the operator: 4");
}

TEST_F(ShortReasonTest, AProcessWhosePalletIsNotInThePalletFileHasNoPallet) {
    OneBlockJob();
    AddKoutei(2, "NOSUCH");
    PartsInfo& p = AddPart({.KouteiNo = 2, .SizeX = 100, .SizeY = 100, .Quantity = 3});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 0);
    EXPECT_EQ(Why(p).Cause, ShortCause::NoPallet);
    EXPECT_EQ(Text(p), "Process 2 has no pallet");
}

TEST_F(ShortReasonTest, APartWiderThanThePalletFindsNoBlockAndTheLargestBlockIsNamed) {
    OpenJob(1);
    AddBlock(1, 1, 0, 0, 300, 200);    // 60,000
    AddBlock(1, 1, 300, 0, 800, 400);  // 500 x 400 = 200,000, the largest
    AddBlock(1, 1, 0, 400, 600, 700);  // 600 x 300 = 180,000
    // 1200 long: from a low corner it ends at x >= 1200, from a high one it starts below 0.
    PartsInfo& p = AddPart({.SizeX = 1200, .SizeY = 100, .Quantity = 2});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 0);
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::NoFittingBlock);
    EXPECT_DOUBLE_EQ(r.BlockX, 500);
    EXPECT_DOUBLE_EQ(r.BlockY, 400);
    EXPECT_EQ(Text(p), "No block is large enough: part 1200 x 100, largest block 500 x 400");
}

TEST_F(ShortReasonTest, AProcessWithAPalletButNoBlocksSaysSo) {
    OpenJob(3);
    PartsInfo& p = AddPart({.KouteiNo = 3, .SizeX = 120.5, .SizeY = 80, .Quantity = 2});
    PlaceAll();
    EXPECT_EQ(Why(p).Cause, ShortCause::NoFittingBlock);
    EXPECT_EQ(Text(p), "Process 3 has no blocks: part 120.5 x 80");
}

TEST_F(ShortReasonTest, AStackingHeightBelowOnePieceAllowsNoPiece) {
    KouteiInfo& k = OneBlockJob();
    k.Pallet->MaxStackHeight = 0.5;
    PartsInfo& p = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 10, .PieceHeight = 1.0});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 0);
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::NoPieceHigh);
    EXPECT_EQ(r.PerStack, 0);
    EXPECT_EQ(Text(p), "The stacking height allows no piece: piece height 1, limit 0.5");
}

TEST_F(ShortReasonTest, AStackingHeightOfTwoPiecesLeavesEightOfTenWhenOneStackFits) {
    KouteiInfo& k = OneBlockJob();
    // 10 / 4 = 2.5: two pieces of height 4 in a stack, where the ten wanted one stack of ten.
    k.Pallet->MaxStackHeight = 10;
    PartsInfo& p = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 10, .PieceHeight = 4.0});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 2);
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::FewPerStack);
    EXPECT_EQ(r.Missing, 8);
    EXPECT_EQ(r.PerStack, 2);
    EXPECT_EQ(r.PerStackNeeded, 10);
    EXPECT_EQ(Text(p),
              "The stacking height allows 2 per stack where 10 were needed: piece height 4, "
              "limit 10");
}

TEST_F(ShortReasonTest, NeededPiecesPerStackFollowThePartsOwnLimit) {
    KouteiInfo& k = OneBlockJob();
    // Ten pieces at most four a stack: three stacks of 4, 3, 3; four pieces of 4 are 16 high.
    k.Pallet->MaxStackHeight = 10;
    PartsInfo& p = AddPart(
        {.SizeX = 600, .SizeY = 500, .Quantity = 10, .PerStackLimit = 4, .PieceHeight = 4.0});
    PlaceAll();
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::FewPerStack);
    EXPECT_EQ(r.PerStackNeeded, 4);
}

TEST_F(ShortReasonTest, ABlockHeldByAnotherPartIsTakenAndItsStacksAreCounted) {
    OneBlockJob();
    PartsInfo& a = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 5});
    PartsInfo& b = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 3});
    PlaceAll();
    ASSERT_EQ(a.PiecesPlaced, 5);
    ASSERT_EQ(b.PiecesPlaced, 0);
    const ShortReason r = Why(b);
    EXPECT_EQ(r.Cause, ShortCause::BlocksTaken);
    EXPECT_EQ(r.Blocks, 1);
    EXPECT_EQ(r.Stacks, 1);
    ASSERT_EQ(r.Takers.size(), 1u);
    EXPECT_EQ(r.Takers[0].Part, &a);
    EXPECT_EQ(Text(b),
              "Every block that would hold it is taken: blocks 1, stacks in them 1 (A1: 1)");
}

TEST_F(ShortReasonTest, TakersAreListedMostStacksFirstAndBeyondFiveAreCounted) {
    // Seven blocks of 100 x 100 in a row, 50 apart so that a stack marks no neighbour's
    // corner; a part of 100 x 100 fills a block with one stack. Part 1 gets two blocks
    // (quantity 2, one per stack), the next five one each, and the seventh part none.
    BlockRow(50);
    AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 2, .PerStackLimit = 1});
    for (int i = 0; i < 5; ++i)
        AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 1});
    PartsInfo& last = AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 1});
    PlaceAll();
    ASSERT_EQ(last.PiecesPlaced, 0);
    const ShortReason r = Why(last);
    EXPECT_EQ(r.Cause, ShortCause::BlocksTaken);
    EXPECT_EQ(r.Blocks, 7);
    EXPECT_EQ(r.Stacks, 7);
    EXPECT_EQ(Text(last),
              "Every block that would hold it is taken: blocks 7, stacks in them 7 (A1: 2, A2: 1, "
              "A3: 1, A4: 1, A5: 1, and 1 more)");
}

TEST_F(ShortReasonTest, AStackHoldsTheTouchingBlockTooSoFewerStacksTakeEveryBlock) {
    // Seven touching blocks of 100 x 100. A stack in block 0 covers the corner (100, 100) that
    // block 1 shares, so block 1 is held by the same part, and a stack there would touch the
    // first one. Part 1 (two stacks of one) takes blocks 0 to 3, part 2 blocks 4 and 5,
    // part 3 block 6: four stacks, and the parts after them find every block taken.
    BlockRow(0);
    AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 2, .PerStackLimit = 1});
    AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 1});
    AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 1});
    PartsInfo& fourth = AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 1});
    PlaceAll();
    ASSERT_EQ(fourth.PiecesPlaced, 0);
    EXPECT_EQ(Text(fourth),
              "Every block that would hold it is taken: blocks 7, stacks in them 4 (A1: 2, A2: 1, "
              "A3: 1)");
}

TEST_F(ShortReasonTest, TheOperatorsSheetCountIsNamedWhenTheRestackedPartFallsShort) {
    KouteiInfo& k = OneBlockJob();
    PartsInfo& p = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 10});
    PlaceAll();
    ASSERT_EQ(p.PiecesPlaced, 10);
    // The part stacked again at four a stack, as the sheet-count change does: one stack of 4.
    for (HaichiInfo* h : StacksOf(p))
        app->RemoveHaichiInfo(h);
    p.PiecesPlaced = 0;
    CKs_Haichi engine(*app, services, CandidatePallets(shown, app->Settings.PalletCount));
    engine.RebuildCorners(&k, {});
    p.PerStackLimit = 4;
    ASSERT_TRUE(
        engine.PlaceOnePart(&p, &k, Stacking::AllPalletsCapped, QuantityShare::SharedOut).Ok());
    p.PerStackLimit = 0;
    p.OperatorPerStack = 4;
    ASSERT_EQ(p.PiecesPlaced, 4);
    const ShortReason r = Why(p);
    EXPECT_EQ(r.Cause, ShortCause::SheetCount);
    EXPECT_EQ(r.Missing, 6);
    EXPECT_EQ(Text(p),
              "Stacked again by the operator at 4 per stack: blocks that would hold it 1, stacks "
              "in them 1 (A1: 1)");
}

TEST_F(ShortReasonTest, AQuantityRaisedAfterThePlacementLeavesRoom) {
    OneBlockJob();
    PartsInfo& p = AddPart({.SizeX = 100, .SizeY = 100, .Quantity = 2});
    PlaceAll();
    p.Quantity = 5;
    EXPECT_EQ(Why(p).Cause, ShortCause::Room);
    EXPECT_EQ(Text(p), "A block has room for it: Retry or Auto places the rest");
}

TEST_F(ShortReasonTest, AskingLeavesTheJobAsItWas) {
    OneBlockJob();
    AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 5});
    PartsInfo& b = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 3});
    PlaceAll();
    const BlockInfo before = app->Blocks[0];
    const size_t stacks = app->HaichiList.size();
    (void)Why(b);
    EXPECT_EQ(app->Blocks[0].CornerMask, before.CornerMask);
    EXPECT_EQ(app->Blocks[0].Occupant, before.Occupant);
    EXPECT_EQ(app->HaichiList.size(), stacks);
    EXPECT_EQ(b.PiecesPlaced, 0);
}

TEST_F(ShortReasonTest, AllShortPartsComeInListOrderWithTheirOwnReasons) {
    OneBlockJob();
    AddKoutei(2, "NOSUCH");
    PartsInfo& a = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 5});
    PartsInfo& b = AddPart({.SizeX = 600, .SizeY = 500, .Quantity = 3});
    PartsInfo& c = AddPart({.KouteiNo = 2, .SizeX = 10, .SizeY = 10, .Quantity = 1});
    PlaceAll();
    const std::vector<ShortPart> all = WhyShortAll(*app);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].Part, &b);
    EXPECT_EQ(all[0].Reason.Cause, ShortCause::BlocksTaken);
    EXPECT_EQ(all[1].Part, &c);
    EXPECT_EQ(all[1].Reason.Cause, ShortCause::NoPallet);
    EXPECT_EQ(a.PiecesPlaced, 5);
}

TEST_F(ShortReasonTest, TextsComeFromTheMessageFileWithTheFiguresInPlace) {
    const auto folder = Folder("ini");
    const auto path = folder / "Kesto.ini";
    {
        std::ofstream out(path);
        out << "[Short]\nSHORT-NO-PALLET=1,\"Kein Palette fur Prozess %1 (%1)\"\n";
    }
    MessageTable table;
    ASSERT_EQ(table.Load(path.string(), op), 0);
    ShortReason r;
    r.Cause = ShortCause::NoPallet;
    r.ProcessNo = 7;
    EXPECT_EQ(ShortReasonText(r, table), "Kein Palette fur Prozess 7 (7)");
    r.Cause = ShortCause::Room;
    EXPECT_EQ(ShortReasonText(r, table), "A block has room for it: Retry or Auto places the rest");
}

// Every cause once, with figures that make each text distinct.
std::vector<ShortReason> EveryCause() {
    std::vector<ShortReason> all;
    for (ShortCause c : {ShortCause::SetAside, ShortCause::NoPallet, ShortCause::NoFittingBlock,
                         ShortCause::NoPieceHigh, ShortCause::FewPerStack, ShortCause::SheetCount,
                         ShortCause::BlocksTaken, ShortCause::Room}) {
        ShortReason r;
        r.Cause = c;
        r.SetAside = 3;
        r.ProcessNo = 2;
        r.PartX = 120;
        r.PartY = 80;
        r.BlockX = 300;
        r.BlockY = 250;
        r.PieceHeight = 4;
        r.HeightLimit = 10;
        r.PerStack = 2;
        r.PerStackNeeded = 5;
        r.OperatorPerStack = 1;
        r.Blocks = 9;
        r.Stacks = 9;
        all.push_back(r);
    }
    ShortReason noBlocks = all[2];
    noBlocks.BlockX = noBlocks.BlockY = 0;
    all.push_back(noBlocks);
    return all;
}

TEST_F(ShortReasonTest, TheSampleInstallationsTextsAreTheEnglishOnes) {
    MessageTable sample;
    ASSERT_EQ(sample.Load((SourceDir() / "examples" / "install" / "Kesto.ini").string(), op), 0);
    for (const ShortReason& r : EveryCause())
        EXPECT_EQ(ShortReasonText(r, sample), ShortReasonText(r, messages));
}

TEST_F(ShortReasonTest, TheJapaneseInstallationHasATextOfItsOwnForEveryCause) {
    MessageTable ja;
    ASSERT_EQ(ja.Load((SourceDir() / "examples" / "ja" / "install" / "Kesto.ini").string(), op), 0);
    for (const ShortReason& r : EveryCause()) {
        const std::string text = ShortReasonText(r, ja);
        EXPECT_NE(text, ShortReasonText(r, messages));
        // Shift_JIS: a lead byte of 0x81 or above somewhere in the text.
        EXPECT_TRUE(std::any_of(text.begin(), text.end(), [](char c) {
            return static_cast<unsigned char>(c) >= 0x81;
        })) << text;
    }
}

TEST_F(ShortReasonTest, TextsLookedUpOnceGiveEveryCauseItsOwnLineAppended) {
    MessageTable ja;
    ASSERT_EQ(ja.Load((SourceDir() / "examples" / "ja" / "install" / "Kesto.ini").string(), op), 0);
    for (const MessageTable* table : {&messages, &ja}) {
        const ShortReasonTexts texts(*table);
        for (const ShortReason& r : EveryCause()) {
            TextBuilder line;
            line.Str("  ");
            AppendShortReasonText(line, r, texts);
            EXPECT_EQ(line.Text(), "  " + ShortReasonText(r, *table));
        }
    }
}

// Two pallets of one type repeat the rectangles of their blocks; parts of several sizes, some
// of them too large for the narrow blocks, ask about them all.
TEST_F(ShortReasonTest, TheReasonsOfAllPartsAreEachPartsOwn) {
    OpenJob(1);
    for (int32_t pallet = 1; pallet <= 2; ++pallet) {
        AddBlock(1, pallet, 0, 0, 300, 400);
        AddBlock(1, pallet, 300, 0, 450, 400);
        AddBlock(1, pallet, 450, 0, 1000, 800);
    }
    for (double x : {280.0, 140.0, 500.0, 140.0, 280.0, 600.0})
        AddPart({.SizeX = x, .SizeY = 350, .Quantity = 40});
    PlaceAll();
    const std::vector<ShortPart> all = WhyShortAll(*app);
    ASSERT_FALSE(all.empty());
    for (const ShortPart& s : all) {
        const ShortReason one = Why(*s.Part);
        EXPECT_EQ(s.Reason.Cause, one.Cause) << s.Part->Seq;
        EXPECT_EQ(s.Reason.Blocks, one.Blocks) << s.Part->Seq;
        EXPECT_EQ(s.Reason.Stacks, one.Stacks) << s.Part->Seq;
        EXPECT_EQ(ShortReasonText(s.Reason, messages), ShortReasonText(one, messages));
    }
}

}  // namespace
}  // namespace kesto::test
