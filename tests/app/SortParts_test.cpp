#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "common/Installation.h"
#include "common/PartFields.h"

namespace kesto {
namespace {

using test::AddPart;

class SortPartsTest : public ::testing::Test {
  protected:
    void AddKoutei(int32_t no) { app.KouteiList.Append().No = no; }
    std::vector<std::string> Codes() const {
        std::vector<std::string> codes;
        for (const PartsInfo& p : app.PartsList)
            codes.push_back(p.Code);
        return codes;
    }
    test::Installation installation;
    CKestoApp app;
};

TEST_F(SortPartsTest, DecreasingSizeXWithinAGroup) {
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 10, .SizeY = 5, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 30, .SizeY = 5, .GroupKey = "G"});
    AddPart(app, {.Code = "c", .SizeX = 20, .SizeY = 5, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "c", "a"}));
    for (const PartsInfo& p : app.PartsList)
        EXPECT_EQ(p.SortDone, 1);
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(SortPartsTest, NearlyEqualSizeXOrderedByDecreasingSizeY) {
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 100.00005, .SizeY = 10, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 100, .SizeY = 20, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "a"}));
}

TEST_F(SortPartsTest, StrictlyGreaterSizeXWinsEvenWithinTheTolerance) {
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 100, .SizeY = 20, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 100.00005, .SizeY = 10, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "a"}));
}

TEST_F(SortPartsTest, CompleteTiesKeepFileOrder) {
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 100, .SizeY = 20, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 100, .SizeY = 20, .GroupKey = "G"});
    AddPart(app, {.Code = "c", .SizeX = 100.00001, .SizeY = 20, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"c", "a", "b"}));
}

TEST_F(SortPartsTest, GroupsAreNotInterleaved) {
    AddKoutei(1);
    AddPart(app, {.Code = "g1", .SizeX = 10, .SizeY = 1, .GroupKey = "G2"});
    AddPart(app, {.Code = "h1", .SizeX = 50, .SizeY = 1, .GroupKey = "G1"});
    AddPart(app, {.Code = "g2", .SizeX = 20, .SizeY = 1, .GroupKey = "G2"});
    AddPart(app, {.Code = "h2", .SizeX = 60, .SizeY = 1, .GroupKey = "G1"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"g2", "g1", "h2", "h1"}));
}

TEST_F(SortPartsTest, ProcessesInKouteiListOrder) {
    AddKoutei(2);
    AddKoutei(1);
    AddPart(app, {.Code = "p1", .SizeX = 10, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "p2", .KouteiNo = 2, .SizeX = 10, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "q1", .SizeX = 20, .SizeY = 1, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"p2", "q1", "p1"}));
}

TEST_F(SortPartsTest, PartOfNoProcessStaysBehind) {
    AddKoutei(1);
    AddPart(app, {.Code = "z", .KouteiNo = 0, .SizeX = 99, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "y", .KouteiNo = 7, .SizeX = 98, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "a", .SizeX = 10, .SizeY = 1, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"a", "z", "y"}));
    EXPECT_EQ(app.PartsList.Items.back().SortDone, 0);
}

TEST_F(SortPartsTest, SortedListStaysAsItIs) {
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 30, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 20, .SizeY = 1, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(SortPartsTest, DuplicateProcessNumberSortsOnce) {
    AddKoutei(1);
    AddKoutei(1);
    AddPart(app, {.Code = "a", .SizeX = 10, .SizeY = 1, .GroupKey = "G"});
    AddPart(app, {.Code = "b", .SizeX = 20, .SizeY = 1, .GroupKey = "G"});
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "a"}));
}

// The sort as the rule states it, one choice at a time over the whole list: among the
// unsorted parts of the process, a walk in list order from the first one that stays in its
// group and steps to every part that outranks the one in hand; the part it ends on moves in
// front of the first unsorted part of the list.
void SortByTheRule(CKestoApp& app) {
    auto& parts = app.PartsList.Items;
    auto outranks = [](const PartsInfo& p, const PartsInfo& ref) {
        return p.SizeX > ref.SizeX ||
               (ref.SizeX >= p.SizeX && ref.SizeX - p.SizeX < 0.0001 && p.SizeY > ref.SizeY);
    };
    for (const KouteiInfo& koutei : app.KouteiList) {
        for (;;) {
            auto best = parts.end();
            for (auto it = parts.begin(); it != parts.end(); ++it) {
                if (it->KouteiNo != koutei.No || it->SortDone != 0)
                    continue;
                if (best == parts.end() || (it->GroupKey == best->GroupKey && outranks(*it, *best)))
                    best = it;
            }
            if (best == parts.end())
                break;
            auto first = std::find_if(parts.begin(), parts.end(),
                                      [](const PartsInfo& p) { return p.SortDone == 0; });
            parts.splice(first, parts, best);
            best->SortDone = 1;
        }
    }
}

// Random jobs with interleaved groups, widths within the tolerance of each other, exact ties,
// parts sorted beforehand, repeated and missing processes.
TEST(SortPartsOrder, SameOrderAsTheRuleOnRandomJobs) {
    std::mt19937 random(11);
    for (int job = 0; job < 300; ++job) {
        CKestoApp app;
        const int kouteis = 1 + static_cast<int>(random() % 5);
        for (int k = 0; k < kouteis; ++k)
            app.KouteiList.Append().No = 1 + static_cast<int32_t>(random() % 6);
        const int count = static_cast<int>(random() % 80);
        for (int i = 0; i < count; ++i) {
            // Drawn in this order, whatever the order of the fields.
            const int32_t koutei = 1 + static_cast<int32_t>(random() % 7);
            const std::string group(1, static_cast<char>('A' + random() % 3));
            // Widths on a grid finer than the tolerance, so that near-ties are common.
            const double sizeX = 10 + static_cast<double>(random() % 8) * 0.00004;
            const double sizeY = static_cast<double>(random() % 4);
            const int32_t sortDone = random() % 10 == 0 ? 1 : 0;
            AddPart(app, {.Code = std::to_string(i),
                          .KouteiNo = koutei,
                          .SizeX = sizeX,
                          .SizeY = sizeY,
                          .GroupKey = group,
                          .SortDone = sortDone});
        }
        CKestoApp expected = app;
        SortByTheRule(expected);
        test::Installation installation;
        SortParts(app, installation.Operator);
        std::vector<std::string> got, want;
        for (const PartsInfo& p : app.PartsList)
            got.push_back(p.Code + (p.SortDone ? "*" : ""));
        for (const PartsInfo& p : expected.PartsList)
            want.push_back(p.Code + (p.SortDone ? "*" : ""));
        ASSERT_EQ(got, want) << "job " << job;
    }
}

}  // namespace
}  // namespace kesto
