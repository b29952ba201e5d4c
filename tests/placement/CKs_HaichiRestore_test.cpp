#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "common/PlacementFixture.h"
#include "common/TestFiles.h"

namespace kesto::test {
namespace {

// A save-file stack line as the result output writes it, with zero offsets.
std::string SaveLine(const HaichiInfo& h, int32_t pallet) {
    const PartsInfo& p = *h.Part;
    char buf[1024];
    std::snprintf(buf, sizeof buf,
                  "%s,%d,%s,%d,%d,%10.4lf,%10.4lf,%d,%s,%10.4lf,%10.4lf,%10.4lf,%d,%d,%s,%ld,%d",
                  p.Code.c_str(), p.KouteiNo, p.Name.c_str(), pallet, h.Pieces, h.X - p.SizeX, h.Y,
                  -1, p.DisplayName.c_str(), p.SizeX, p.SizeY, p.PieceHeight, p.SaveNumber, h.Level,
                  p.Code.c_str(), static_cast<long>(h.BlockIndex), int{h.Corner});
    return buf;
}

// A line for part code with the rectangle (x0,y0) size (sx,sy), stored block and corner.
std::string Line(const std::string& code, double x0, double y0, double sx, double sy, int count,
                 int block, int corner, int level = 0) {
    char buf[512];
    std::snprintf(buf, sizeof buf, "%s,1,N,1,%d,%.4f,%.4f,-1,T,%.4f,%.4f,1,0,%d,%s,%d,%d",
                  code.c_str(), count, x0, y0, sx, sy, level, code.c_str(), block, corner);
    return buf;
}

class RestoreTest : public PlacementTest {
  protected:
    std::string WriteSave(const std::vector<std::string>& lines) {
        const auto path = Folder("save") / "save.txt";
        std::ofstream out(path);
        for (const std::string& l : lines)
            out << l << "\n";
        return path.string();
    }
    // A part whose save key is its Seq, as the save file names it.
    PartsInfo& KeyedPart(const PartFields& fields) {
        PartsInfo& p = AddPart(fields);
        p.SaveKey = p.Seq;
        return p;
    }
    Outcome Restore(const std::vector<std::string>& lines) {
        return CKs_Haichi(*app, services).RestorePlacement(WriteSave(lines));
    }
};

using StackKey = std::tuple<int, double, double, int, int, int>;

std::vector<StackKey> Snapshot(const CKestoApp& a) {
    std::vector<StackKey> out;
    for (const HaichiInfo& h : a.HaichiList) {
        out.emplace_back(h.Part->Seq, h.X, h.Y, h.Pieces, h.BlockIndex, h.Corner);
    }
    return out;
}

TEST_F(RestoreTest, SavedStacksComeBackTheSame) {
    GridJob();
    KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4});
    KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6, .PerStackLimit = 2});
    ASSERT_TRUE(
        CKs_Haichi(*app, services).PlaceAll(PlacedCounts::Quantity, SavedPlacement::Ignore).Ok());
    std::vector<std::string> lines;
    for (const HaichiInfo& h : app->HaichiList) {
        lines.push_back(SaveLine(h, app->Blocks[h.BlockIndex].PalletNo));
    }
    const auto before = Snapshot(*app);
    std::vector<uint8_t> masks;
    for (const BlockInfo& b : app->Blocks.Entries())
        masks.push_back(b.CornerMask);
    const std::string path = WriteSave(lines);

    app = std::make_unique<CKestoApp>();
    app->Settings.PalletCount = 1;
    GridJob();
    PartsInfo& a = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 4});
    PartsInfo& b = KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6, .PerStackLimit = 2});
    ASSERT_TRUE(CKs_Haichi(*app, services).RestorePlacement(path).Ok());
    EXPECT_EQ(Snapshot(*app), before);
    EXPECT_EQ(a.PiecesPlaced, 10);
    EXPECT_EQ(b.PiecesPlaced, 6);
    for (size_t i = 0; i < masks.size(); ++i)
        EXPECT_EQ(app->Blocks[i].CornerMask, masks[i]) << i;
    EXPECT_EQ(app->Blocks[0].Occupant, a.Seq);
}

TEST_F(RestoreTest, LineWithBlockMinusOneFailsTheRestore) {
    GridJob();
    KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6});
    EXPECT_FALSE(Restore({Line("A1", 0, 0, 50, 50, 6, -1, -1)}).Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(RestoreTest, LinesOfUnknownOrBoxedPartsOrMissingProcessesAreIgnored) {
    GridJob();
    KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6, .Destination = 100});
    KeyedPart({.KouteiNo = 5, .SizeX = 50, .SizeY = 50, .Quantity = 6});
    EXPECT_TRUE(Restore({Line("A9", 0, 0, 50, 50, 6, -1, -1), Line("A1", 0, 0, 50, 50, 6, -1, -1),
                         Line("A2", 0, 0, 50, 50, 6, -1, -1)})
                    .Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(RestoreTest, StoredBlockOutsideTheTableIgnoresTheLine) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6});
    EXPECT_TRUE(Restore({Line("A1", 940, 10, 50, 50, 6, 999, 4)}).Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
    EXPECT_EQ(p.PiecesPlaced, 0);
}

TEST_F(RestoreTest, MissingFileOrEmptyListsSucceedWithoutStacks) {
    EXPECT_TRUE(CKs_Haichi(*app, services).RestorePlacement("/nonexistent/kesto/save.txt").Ok());
    GridJob();
    EXPECT_TRUE(Restore({Line("A1", 940, 10, 50, 50, 6, 0, 4)}).Ok());
    KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6});
    EXPECT_TRUE(CKs_Haichi(*app, services).RestorePlacement("").Ok());
    EXPECT_TRUE(app->HaichiList.Empty());
}

TEST_F(RestoreTest, FileThatCannotBeOpenedFailsTheRestore) {
    GridJob();
    KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6});
    const auto path = Folder("sock") / "s";
    ASSERT_NO_FATAL_FAILURE(test::MakeUnopenable(path.string()));
    EXPECT_FALSE(CKs_Haichi(*app, services).RestorePlacement(path.string()).Ok());
}

TEST_F(RestoreTest, RestoredStackTakesItsFieldsFromTheLine) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 6});
    ASSERT_TRUE(Restore({Line("A1", 940, 160, 50, 50, 4, 0, 8, 3)}).Ok());
    const HaichiInfo& h = *StacksOf(p).at(0);
    EXPECT_DOUBLE_EQ(h.X, 990);
    EXPECT_DOUBLE_EQ(h.Y, 160);
    EXPECT_EQ(h.Pieces, 4);
    EXPECT_EQ(h.Level, 3);
    EXPECT_EQ(h.Corner, 8);
    EXPECT_EQ(h.BlockIndex, 0);
    EXPECT_EQ(p.PiecesPlaced, 4);
    EXPECT_EQ(app->Blocks[0].Occupant, p.Seq);
    EXPECT_EQ(app->Blocks[0].CornerMask, 8);
}

TEST_F(RestoreTest, ALineGoesToTheFirstPartWithItsSaveKey) {
    GridJob();
    PartsInfo& first = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 6, .SaveKey = 1});
    PartsInfo& second = AddPart({.SizeX = 50, .SizeY = 50, .Quantity = 6, .SaveKey = 1});
    ASSERT_TRUE(Restore({Line("A1", 940, 160, 50, 50, 4, 0, 8)}).Ok());
    EXPECT_EQ(first.PiecesPlaced, 4);
    EXPECT_EQ(second.PiecesPlaced, 0);
}

TEST_F(RestoreTest, LastCoveredBlockWins) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 410, .Quantity = 1});
    ASSERT_TRUE(Restore({Line("A1", 690, 10, 300, 410, 1, 5, 4)}).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 1);
}

TEST_F(RestoreTest, CornerPointFindsTheBlockWhenNoneIsCovered) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    ASSERT_TRUE(Restore({Line("A1", 700, 230, 50, 50, 1, 5, 4)}).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 1);
}

TEST_F(RestoreTest, StoredBlockIsKeptWhenNoBlockIsFound) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 50, .SizeY = 50, .Quantity = 1});
    ASSERT_TRUE(Restore({Line("A1", 5000, 5000, 50, 50, 1, 5, 4)}).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 5);
    EXPECT_EQ(app->Blocks[5].Occupant, p.Seq);
}

TEST_F(RestoreTest, SearchStaysOnTheStoredBlocksPallet) {
    app->Settings.PalletCount = 2;
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    ASSERT_TRUE(Restore({Line("A1", 690, 10, 300, 200, 1, 9, 4)}).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 9);
}

TEST_F(RestoreTest, BlocksOfOtherProcessesAreTakenToo) {
    AddPallet(GridPallet("PAL"));
    AddKoutei(1, "PAL");
    AddKoutei(2, "PAL");
    ASSERT_TRUE(CKs_Block(*app, services).SetUp().Ok());
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 1});
    ASSERT_TRUE(Restore({Line("A1", 690, 10, 300, 200, 1, 0, 4)}).Ok());
    EXPECT_EQ(StacksOf(p).at(0)->BlockIndex, 9);
}

class TrimTest : public RestoreTest {
  protected:
    // Stacks in corner 4 of blocks 0.. with the given values and levels.
    void Stacks(PartsInfo& p, const std::vector<std::pair<int, int>>& valueLevel) {
        int block = 0;
        for (auto [value, level] : valueLevel) {
            const BlockInfo& b = app->Blocks[block];
            AddStack(*app, p,
                     {.Block = block++,
                      .Pieces = value,
                      .X = b.MaxX,
                      .Y = b.MinY,
                      .Corner = kCornerMaxMin})
                .Level = level;
            app->Blocks[block - 1].Occupant = p.Seq;
            p.PiecesPlaced += value;
        }
    }
};

TEST_F(TrimTest, ExcessComesOffTheHighestLevelLastStackFirst) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 4});
    Stacks(p, {{3, 1}, {2, 2}, {2, 2}, {2, 1}});
    ASSERT_EQ(CKs_Haichi(*app, services).TrimExcess(), 1);
    EXPECT_EQ(p.PiecesPlaced, 4);
    ASSERT_EQ(StacksOf(p).size(), 2u);
    EXPECT_EQ(StacksOf(p)[0]->BlockIndex, 0);
    EXPECT_EQ(StacksOf(p)[1]->BlockIndex, 3);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{2, 2}));
    EXPECT_EQ(app->Blocks[1].Occupant, kNoOccupant);
}

TEST_F(TrimTest, StacksOfLevelZeroAreNotTrimmed) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 2});
    Stacks(p, {{3, 0}, {3, 0}});
    ASSERT_EQ(CKs_Haichi(*app, services).TrimExcess(), 1);
    EXPECT_EQ(p.PiecesPlaced, 6);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{1, 1}));
}

TEST_F(TrimTest, EmptyStacksOfAnyPartAreRemoved) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 3});
    PartsInfo& q = AddPart({.SizeX = 300, .SizeY = 200, .Quantity = 3});
    Stacks(p, {{3, 1}});
    AddStack(*app, q, {.Block = 4, .Pieces = 0, .X = 680, .Y = 220, .Corner = kCornerMaxMin});
    ASSERT_EQ(CKs_Haichi(*app, services).TrimExcess(), 1);
    EXPECT_TRUE(StacksOf(q).empty());
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3}));
}

TEST_F(TrimTest, EmptyListsSucceed) {
    EXPECT_EQ(CKs_Haichi(*app, services).TrimExcess(), 1);
}

TEST_F(TrimTest, ShortageGoesToTheLowestStackBelowTheLimit) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 5});
    Stacks(p, {{1, 0}, {3, 0}});
    ASSERT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{5, 5}));
    EXPECT_EQ(p.PiecesPlaced, 10);
}

TEST_F(TrimTest, ShortageBeyondTheLimitIsLeft) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 3});
    Stacks(p, {{1, 0}, {3, 0}});
    ASSERT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{3, 3}));
    EXPECT_EQ(p.PiecesPlaced, 6);
}

TEST_F(TrimTest, PalletHeightLimitsTheFill) {
    GridJob();
    app->PalletList.begin()->MaxStackHeight = 10;
    PartsInfo& p = KeyedPart(
        {.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 5, .PieceHeight = 4});
    Stacks(p, {{1, 0}, {1, 0}});
    ASSERT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{2, 2}));
}

TEST_F(TrimTest, Num4OfZeroIsSmallerThanAnyLimitSoNothingIsFilled) {
    GridJob();
    PartsInfo& p = KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 10, .PerStackLimit = 0});
    Stacks(p, {{1, 0}});
    ASSERT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
    EXPECT_EQ(ValuesOf(p), (std::vector<int32_t>{1}));
}

TEST_F(TrimTest, FillMatchesOnePieceAtATime) {
    std::mt19937 rng(7);
    for (int trial = 0; trial < 40; ++trial) {
        app = std::make_unique<CKestoApp>();
        app->Settings.PalletCount = 1;
        GridJob();
        const int limit = std::uniform_int_distribution<int>(1, 12)(rng);
        PartsInfo& p =
            KeyedPart({.SizeX = 300, .SizeY = 200, .Quantity = 0, .PerStackLimit = limit});
        std::vector<std::pair<int, int>> stacks;
        std::vector<int> expected;
        for (int i = 0; i < 7; ++i) {
            expected.push_back(std::uniform_int_distribution<int>(0, 14)(rng));
            stacks.emplace_back(expected.back(), 0);
        }
        Stacks(p, stacks);
        p.Quantity = p.PiecesPlaced + std::uniform_int_distribution<int>(1, 40)(rng);
        int shortfall = p.Quantity - p.PiecesPlaced;
        while (shortfall > 0) {
            int pick = -1;
            for (int i = 0; i < 7; ++i) {
                if (expected[i] < limit && (pick < 0 || expected[i] < expected[pick]))
                    pick = i;
            }
            if (pick < 0)
                break;
            ++expected[pick];
            --shortfall;
        }
        ASSERT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
        EXPECT_EQ(ValuesOf(p), std::vector<int32_t>(expected.begin(), expected.end())) << trial;
        EXPECT_EQ(p.PiecesPlaced, p.Quantity - shortfall) << trial;
    }
}

TEST_F(TrimTest, FillWithEmptyListsSucceeds) {
    EXPECT_EQ(CKs_Haichi(*app, services).FillShortage(), 1);
}

}  // namespace
}  // namespace kesto::test
