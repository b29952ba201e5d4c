#include <gtest/gtest.h>

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

}  // namespace
}  // namespace kesto
