#include "placement/PlacementIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <span>
#include <vector>

#include "app/CKestoApp.h"
#include "common/PartFields.h"

namespace kesto {
namespace {

bool Meets(const LengthRect& a, const LengthRect& q) {
    return a.X0 <= q.X1 && q.X0 <= a.X1 && a.Y0 <= q.Y1 && q.Y0 <= a.Y1;
}

std::set<int> Near(const RectGrid<int>& grid, const LengthRect& q) {
    std::set<int> seen;
    grid.ForNear(q, [&](int id) {
        seen.insert(id);
        return false;
    });
    return seen;
}

TEST(RectGrid, VisitsEveryRectangleThatMeetsTheQuery) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> coord(-200, 1200), size(0, 150);
    std::vector<LengthRect> rects;
    RectGrid<int> grid({0, 0, 1000, 800}, 100, 80, 1000);
    for (int i = 0; i < 400; ++i) {
        const double x = coord(random), y = coord(random);
        rects.push_back({x, y, x + size(random), y + size(random)});
        grid.Add(i, rects.back());
    }
    for (int k = 0; k < 300; ++k) {
        const double x = coord(random), y = coord(random);
        const LengthRect q{x, y, x + size(random), y + size(random)};
        const std::set<int> seen = Near(grid, q);
        for (int i = 0; i < static_cast<int>(rects.size()); ++i) {
            if (Meets(rects[i], q)) {
                EXPECT_TRUE(seen.count(i)) << "rectangle " << i << " query " << k;
            }
        }
    }
}

TEST(RectGrid, PassesOverRectanglesFarFromTheQuery) {
    RectGrid<int> grid({0, 0, 1000, 1000}, 100, 100, 1000);
    grid.Add(1, {0, 0, 50, 50});
    grid.Add(2, {900, 900, 950, 950});
    EXPECT_EQ(Near(grid, {10, 10, 20, 20}), (std::set<int>{1}));
    EXPECT_EQ(Near(grid, {920, 920, 930, 930}), (std::set<int>{2}));
}

TEST(RectGrid, RectanglesOutsideTheGridCountInItsEdgeCells) {
    RectGrid<int> grid({0, 0, 100, 100}, 10, 10, 1000);
    grid.Add(1, {-500, -500, -400, -400});
    grid.Add(2, {5000, 50, 6000, 60});
    EXPECT_TRUE(Near(grid, {-450, -450, -449, -449}).count(1));
    EXPECT_TRUE(Near(grid, {5500, 55, 5501, 56}).count(2));
}

TEST(RectGrid, RectanglesThatAreNotFiniteOrInOrderAreAlwaysVisited) {
    RectGrid<int> grid({0, 0, 100, 100}, 10, 10, 1000);
    grid.Add(1, {NAN, 0, 10, 10});
    grid.Add(2, {50, 50, 40, 60});  // inverted
    grid.Add(3, {0, 0, INFINITY, 10});
    grid.Add(4, {0, 0, 1, 1});
    const std::set<int> seen = Near(grid, {90, 90, 95, 95});
    EXPECT_TRUE(seen.count(1) && seen.count(2) && seen.count(3));
    EXPECT_FALSE(seen.count(4));
}

TEST(RectGrid, AQueryWithANanCornerSearchesTheWholeAxis) {
    RectGrid<int> grid({0, 0, 100, 100}, 10, 10, 1000);
    grid.Add(1, {0, 0, 1, 1});
    grid.Add(2, {95, 0, 99, 1});
    EXPECT_EQ(Near(grid, {NAN, 0, NAN, 1}), (std::set<int>{1, 2}));
}

TEST(RectGrid, InfiniteQueryReachesTheEdgeCells) {
    RectGrid<int> grid({0, 0, 100, 100}, 10, 10, 1000);
    grid.Add(1, {0, 0, 1, 1});
    grid.Add(2, {95, 95, 99, 99});
    EXPECT_EQ(Near(grid, {-INFINITY, -INFINITY, INFINITY, INFINITY}), (std::set<int>{1, 2}));
}

TEST(RectGrid, CappedCellsStillSeparateFarRectangles) {
    RectGrid<int> fine({0, 0, 1e6, 1e6}, 1e-9, 1e-9, 16);  // 4 x 4 cells of 250000
    fine.Add(1, {0, 0, 1, 1});
    fine.Add(2, {9e5, 9e5, 9e5, 9e5});
    EXPECT_EQ(Near(fine, {2e5, 2e5, 2e5, 2e5}), (std::set<int>{1}));
    EXPECT_EQ(Near(fine, {8e5, 8e5, 8e5, 8e5}), (std::set<int>{2}));
}

TEST(RectGrid, AnExtentThatIsNotFiniteGivesOneCell) {
    RectGrid<int> none({NAN, 0, 1, 1}, 1, 1, 100);
    none.Add(1, {0, 0, 1, 1});
    EXPECT_EQ(Near(none, {50, 50, 60, 60}), (std::set<int>{1}));
}

TEST(RectGrid, VisitingStopsWhenVisitSaysSo) {
    RectGrid<int> grid({0, 0, 100, 100}, 100, 100, 1000);
    for (int i = 0; i < 10; ++i)
        grid.Add(i, {0, 0, 1, 1});
    int visits = 0;
    grid.ForNear({0, 0, 1, 1}, [&](int) { return ++visits == 3; });
    EXPECT_EQ(visits, 3);
}

// The restore's scan as written: blocks of the process on other pallets are passed over,
// and once its blocks on the stored pallet were met, such a block ends the scan; the last
// block inside r wins, else the first that holds the point.
int ScanRestore(std::span<const BlockInfo> blocks, int32_t koutei, int pallet, const LengthRect& r,
                bool hasPoint, double px, double py) {
    std::vector<int> reached;
    bool met = false;
    for (int i = 0; i < static_cast<int>(blocks.size()); ++i) {
        const BlockInfo& b = blocks[static_cast<size_t>(i)];
        if (b.KouteiNo == koutei && b.PalletNo != pallet) {
            if (met)
                break;
            continue;
        }
        met = met || b.KouteiNo == koutei;
        reached.push_back(i);
    }
    int found = -1;
    for (int i : reached) {
        const BlockInfo& b = blocks[static_cast<size_t>(i)];
        if (r.X0 <= b.MinX && r.X1 >= b.MaxX && r.Y0 <= b.MinY && r.Y1 >= b.MaxY)
            found = i;
    }
    if (found >= 0 || !hasPoint)
        return found;
    for (int i : reached) {
        const BlockInfo& b = blocks[static_cast<size_t>(i)];
        if (b.MinX <= px && px <= b.MaxX && b.MinY <= py && py <= b.MaxY)
            return i;
    }
    return -1;
}

// Three processes of two pallets each, every pallet a 4 x 3 grid at the same place, as the
// block table lays them out.
CKestoApp AppWithBlocks() {
    CKestoApp app;
    for (int k = 1; k <= 3; ++k) {
        for (int pallet = 1; pallet <= 2; ++pallet) {
            for (int j = 0; j < 3; ++j) {
                for (int i = 0; i < 4; ++i) {
                    BlockInfo b;
                    b.KouteiNo = k;
                    b.PalletNo = pallet;
                    b.MinX = 10 + i * 210.0;
                    b.MaxX = b.MinX + 200;
                    b.MinY = 10 + j * 160.0;
                    b.MaxY = b.MinY + 150;
                    app.Blocks.AddBlock(b);
                }
            }
        }
    }
    return app;
}

TEST(PlacementIndex, RestoreSearchFindsWhatTheScanFinds) {
    CKestoApp app = AppWithBlocks();
    PlacementIndex index(app);
    std::mt19937 random(3);
    std::uniform_real_distribution<double> coord(-50, 900), size(0, 450);
    for (int n = 0; n < 2000; ++n) {
        const int32_t koutei = 1 + static_cast<int32_t>(random() % 3);
        const int pallet = 1 + static_cast<int>(random() % 3);  // 3: a pallet with no block
        const double x = coord(random), y = coord(random);
        const LengthRect r{x, y, x + size(random), y + size(random)};
        const bool hasPoint = random() % 4 != 0;
        const double px = random() % 2 ? r.X0 : r.X1, py = random() % 2 ? r.Y0 : r.Y1;
        EXPECT_EQ(index.FindRestoreBlock(koutei, pallet, r, hasPoint, px, py),
                  ScanRestore(app.Blocks.FilledBlocks(), koutei, pallet, r, hasPoint, px, py))
            << "case " << n;
    }
}

TEST(PlacementIndex, RestoreSearchPrefersTheLastBlockInsideTheRectangle) {
    CKestoApp app = AppWithBlocks();
    PlacementIndex index(app);
    // Block 0 of every process and pallet (0, 12, 24, ..., 60) lies inside. The scan of
    // process 2, pallet 1 reaches process 1's blocks and its own pallet 1, and stops at its
    // pallet 2 (36). That of process 1, pallet 2 has no later block of its own to stop it and
    // runs on through processes 2 and 3.
    const LengthRect r{10, 10, 210, 160};
    EXPECT_EQ(index.FindRestoreBlock(2, 1, r, true, 10, 10), 24);
    EXPECT_EQ(index.FindRestoreBlock(1, 2, r, true, 10, 10), 60);
    EXPECT_EQ(index.FindRestoreBlock(3, 1, r, true, 10, 10), 48);
}

TEST(PlacementIndex, RestoreSearchFallsBackToTheFirstBlockHoldingThePoint) {
    CKestoApp app = AppWithBlocks();
    PlacementIndex index(app);
    const LengthRect r{20, 20, 30, 30};  // inside block 0, holds none
    EXPECT_EQ(index.FindRestoreBlock(2, 1, r, true, 20, 20), 0);
    EXPECT_EQ(index.FindRestoreBlock(2, 1, r, false, 20, 20), -1);
    EXPECT_EQ(index.FindRestoreBlock(2, 1, {NAN, 20, 30, 30}, true, NAN, 20), -1);
}

TEST(PlacementIndex, BoundsAreThoseOfTheProcessBlocks) {
    CKestoApp app = AppWithBlocks();
    app.Blocks[30].MaxX = 5000;  // process 2 only
    PlacementIndex index(app);
    const PlacementIndex::Process* p = index.Find(2);
    ASSERT_NE(p, nullptr);
    EXPECT_DOUBLE_EQ(p->Bounds.X0, 10);
    EXPECT_DOUBLE_EQ(p->Bounds.X1, 5000);
    EXPECT_DOUBLE_EQ(p->Bounds.Y1, 480);
    EXPECT_DOUBLE_EQ(index.Find(1)->Bounds.X1, 840);
    EXPECT_EQ(index.Find(4), nullptr);
}

TEST(PlacementIndex, StacksAreFiledByPartInListOrderAndByPallet) {
    CKestoApp app = AppWithBlocks();
    PartsInfo& part = test::AddPart(app, {.SizeX = 100, .SizeY = 80, .SaveKey = 5});
    PartsInfo& twin = test::AddPart(app, {.SaveKey = 5});
    HaichiInfo& first = app.HaichiList.Append();
    first.Part = &part;
    first.BlockIndex = 13;  // process 1, pallet 2
    first.X = 210;
    first.Y = 10;
    PlacementIndex index(app);
    HaichiInfo& second = app.HaichiList.Append();
    second.Part = &part;
    second.BlockIndex = 99;  // no block: filed by part only
    index.Add(&second);
    ASSERT_NE(index.StacksOf(&part), nullptr);
    EXPECT_EQ(*index.StacksOf(&part), (std::vector<StackId>{first.Id, second.Id}));
    EXPECT_EQ(index.StacksOf(&twin), nullptr);
    const auto& stacks = index.Find(1)->PalletStacks;
    ASSERT_EQ(stacks.count(2), 1u);
    EXPECT_EQ(stacks.count(1), 0u);
    int visited = 0;
    stacks.at(2).ForNear({150, 20, 160, 30}, [&](const HaichiInfo* h) {
        EXPECT_EQ(h, &first);
        ++visited;
        return false;
    });
    EXPECT_EQ(visited, 1);
    EXPECT_TRUE(index.Usable());
}

TEST(PlacementIndex, AnIndexOfOneProcessHoldsItsBlocksAndStacksAlone) {
    CKestoApp app = AppWithBlocks();
    PartsInfo& part = test::AddPart(app, {.SizeX = 100, .SizeY = 80});
    for (const int block : {13, 30}) {  // process 1 pallet 2, process 2 pallet 1
        HaichiInfo& h = app.HaichiList.Append();
        h.Part = &part;
        h.BlockIndex = block;
        h.X = 210;
        h.Y = 10;
    }
    PlacementIndex index(app, 2);
    EXPECT_EQ(index.Find(1), nullptr);
    EXPECT_EQ(index.Find(3), nullptr);
    const PlacementIndex::Process* p = index.Find(2);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->Blocks.size(), 24u);
    EXPECT_EQ(p->Blocks.front(), 24);
    ASSERT_EQ(p->PalletStacks.count(1), 1u);
    EXPECT_EQ(p->PalletStacks.count(2), 0u);
    ASSERT_NE(index.StacksOf(&part), nullptr);
    EXPECT_EQ(index.StacksOf(&part)->size(), 1u);
}

}  // namespace
}  // namespace kesto
