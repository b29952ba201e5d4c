#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "app/InputReaders.h"
#include "common/Installation.h"

namespace kesto {
namespace {

class SortPartsTest : public ::testing::Test {
  protected:
    void AddKoutei(int32_t no) { app.KouteiList.Append().No = no; }
    void AddPart(const std::string& code, int32_t koutei, const std::string& group, double x,
                 double y) {
        PartsInfo& p = app.PartsList.Append();
        p.Code = code;
        p.KouteiNo = koutei;
        p.GroupKey = group;
        p.SizeX = x;
        p.SizeY = y;
    }
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
    AddPart("a", 1, "G", 10, 5);
    AddPart("b", 1, "G", 30, 5);
    AddPart("c", 1, "G", 20, 5);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "c", "a"}));
    for (const PartsInfo& p : app.PartsList)
        EXPECT_EQ(p.SortDone, 1);
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(SortPartsTest, NearlyEqualSizeXOrderedByDecreasingSizeY) {
    AddKoutei(1);
    AddPart("a", 1, "G", 100.00005, 10);
    AddPart("b", 1, "G", 100, 20);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "a"}));
}

TEST_F(SortPartsTest, StrictlyGreaterSizeXWinsEvenWithinTheTolerance) {
    AddKoutei(1);
    AddPart("a", 1, "G", 100, 20);
    AddPart("b", 1, "G", 100.00005, 10);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"b", "a"}));
}

TEST_F(SortPartsTest, CompleteTiesKeepFileOrder) {
    AddKoutei(1);
    AddPart("a", 1, "G", 100, 20);
    AddPart("b", 1, "G", 100, 20);
    AddPart("c", 1, "G", 100.00001, 20);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"c", "a", "b"}));
}

TEST_F(SortPartsTest, GroupsAreNotInterleaved) {
    AddKoutei(1);
    AddPart("g1", 1, "G2", 10, 1);
    AddPart("h1", 1, "G1", 50, 1);
    AddPart("g2", 1, "G2", 20, 1);
    AddPart("h2", 1, "G1", 60, 1);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"g2", "g1", "h2", "h1"}));
}

TEST_F(SortPartsTest, ProcessesInKouteiListOrder) {
    AddKoutei(2);
    AddKoutei(1);
    AddPart("p1", 1, "G", 10, 1);
    AddPart("p2", 2, "G", 10, 1);
    AddPart("q1", 1, "G", 20, 1);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"p2", "q1", "p1"}));
}

TEST_F(SortPartsTest, PartOfNoProcessStaysBehind) {
    AddKoutei(1);
    AddPart("z", 0, "G", 99, 1);
    AddPart("y", 7, "G", 98, 1);
    AddPart("a", 1, "G", 10, 1);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"a", "z", "y"}));
    EXPECT_EQ(app.PartsList.Items.back().SortDone, 0);
}

TEST_F(SortPartsTest, SortedListStaysAsItIs) {
    AddKoutei(1);
    AddPart("a", 1, "G", 30, 1);
    AddPart("b", 1, "G", 20, 1);
    SortParts(app, installation.Operator);
    EXPECT_EQ(Codes(), (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(installation.Operator.Messages.empty());
}

TEST_F(SortPartsTest, DuplicateProcessNumberSortsOnce) {
    AddKoutei(1);
    AddKoutei(1);
    AddPart("a", 1, "G", 10, 1);
    AddPart("b", 1, "G", 20, 1);
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
            PartsInfo& p = app.PartsList.Append();
            p.Code = std::to_string(i);
            p.KouteiNo = 1 + static_cast<int32_t>(random() % 7);
            p.GroupKey = std::string(1, static_cast<char>('A' + random() % 3));
            // Widths on a grid finer than the tolerance, so that near-ties are common.
            p.SizeX = 10 + static_cast<double>(random() % 8) * 0.00004;
            p.SizeY = static_cast<double>(random() % 4);
            p.SortDone = random() % 10 == 0 ? 1 : 0;
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
