#include <gtest/gtest.h>

#include <string>

#include "app/CKestoApp.h"
#include "common/Installation.h"

namespace kesto {
namespace {

// Parses a command line in a fresh application of a test installation.
class CommandLineTest : public ::testing::Test {
  protected:
    void Parse(const std::string& commandLine) {
        app.Run.CommandLine = commandLine;
        app.ParseCommandLine();
    }
    test::Installation installation;
    CKestoApp app;
};

TEST(JoinCommandLine, ProgramAndArgumentsSeparatedByBlanks) {
    EXPECT_EQ(JoinCommandLine({"/opt/kesto", "p.txt", "0", "1"}), "/opt/kesto p.txt 0 1");
    EXPECT_EQ(JoinCommandLine({"/opt/kesto"}), "/opt/kesto");
    EXPECT_EQ(JoinCommandLine({"", "p.txt"}), " p.txt");
    EXPECT_EQ(JoinCommandLine({}), "");
}

TEST_F(CommandLineTest, OnlyTheProgramPathLeavesEverythingEmpty) {
    app.Settings.OffsetA = 4;
    Parse("kesto.exe");
    EXPECT_EQ(app.Run.PalletFilePath, "");
    EXPECT_FALSE(app.Settings.DirectCodesAllowed);
    EXPECT_EQ(app.Settings.InchMode, 0);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetA, 4);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetB, 0);
    EXPECT_EQ(app.Settings.StartCorner, 3);
}

TEST_F(CommandLineTest, AllSevenTokens) {
    Parse("kesto.exe /data/pallet.txt 1 1 12.5 -3 2");
    EXPECT_EQ(app.Run.PalletFilePath, "/data/pallet.txt");
    EXPECT_TRUE(app.Settings.DirectCodesAllowed);
    EXPECT_EQ(app.Settings.InchMode, 1);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetA, 12.5);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetB, -3);
    EXPECT_EQ(app.Settings.StartCorner, 2);
}

TEST_F(CommandLineTest, StartCornerMapping) {
    const std::pair<const char*, int> cases[] = {{"1", 0}, {"2", 2}, {"3", 1},   {"5", 3},
                                                 {"x", 3}, {"0", 3}, {"2abc", 2}};
    for (const auto& [token, corner] : cases) {
        Parse(std::string("k p 0 0 0 0 ") + token);
        EXPECT_EQ(app.Settings.StartCorner, corner) << token;
    }
}

TEST_F(CommandLineTest, MissingStartCornerGivesThree) {
    app.Settings.StartCorner = 0;
    Parse("k p 0 0 0 0");
    EXPECT_EQ(app.Settings.StartCorner, 3);
}

TEST_F(CommandLineTest, InchTokenBeginningWithOneSetsInchMode) {
    Parse("k p 0 1abc");
    EXPECT_EQ(app.Settings.InchMode, 1);
}

TEST_F(CommandLineTest, InchTokenZeroOrMissingLeavesInchMode) {
    Parse("k p 0 0");
    EXPECT_EQ(app.Settings.InchMode, 0);
    Parse("k p 0");
    EXPECT_EQ(app.Settings.InchMode, 0);
    app.Settings.InchMode = 1;
    Parse("k p 0 0");
    EXPECT_EQ(app.Settings.InchMode, 1);
}

TEST_F(CommandLineTest, DirectFlagOnlyForALeadingOne) {
    Parse("k p 1x");
    EXPECT_TRUE(app.Settings.DirectCodesAllowed);
    Parse("k p 01");
    EXPECT_FALSE(app.Settings.DirectCodesAllowed);
    app.Settings.DirectCodesAllowed = true;
    Parse("k p");
    EXPECT_FALSE(app.Settings.DirectCodesAllowed);
}

TEST_F(CommandLineTest, NonNumericOffsetsLeaveTheValues) {
    app.Settings.OffsetA = 7;
    app.Settings.OffsetB = 8;
    Parse("k p 0 0 abc -");
    EXPECT_DOUBLE_EQ(app.Settings.OffsetA, 7);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetB, 8);
}

TEST_F(CommandLineTest, AnyRunOfWhiteSpaceSeparates) {
    Parse("  k \t\n p.txt   1\r\n 0  5\t6 3  ");
    EXPECT_EQ(app.Run.PalletFilePath, "p.txt");
    EXPECT_TRUE(app.Settings.DirectCodesAllowed);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetA, 5);
    EXPECT_DOUBLE_EQ(app.Settings.OffsetB, 6);
    EXPECT_EQ(app.Settings.StartCorner, 1);
}

TEST_F(CommandLineTest, QuotesAreNotHonoured) {
    Parse("k \"my pallets.txt\" 1");
    EXPECT_EQ(app.Run.PalletFilePath, "\"my");
    EXPECT_FALSE(app.Settings.DirectCodesAllowed);
}

TEST_F(CommandLineTest, LongTokenIsCutAndItsRestIsNoToken) {
    Parse("k " + std::string(300, 'a') + " 1");
    EXPECT_EQ(app.Run.PalletFilePath, std::string(255, 'a'));
    EXPECT_TRUE(app.Settings.DirectCodesAllowed);
}

TEST_F(CommandLineTest, TokensAfterTheSeventhAreIgnored) {
    Parse("k p 0 0 0 0 1 9 9");
    EXPECT_EQ(app.Settings.StartCorner, 0);
}

TEST_F(CommandLineTest, ZeroByteEndsTheCommandLine) {
    Parse(std::string("k p\0 1 1", 8));
    EXPECT_EQ(app.Run.PalletFilePath, "p");
    EXPECT_FALSE(app.Settings.DirectCodesAllowed);
}

}  // namespace
}  // namespace kesto
