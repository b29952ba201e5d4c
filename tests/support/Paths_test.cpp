#include "support/Paths.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

#ifndef _WIN32

TEST(JoinPath, PutsExactlyOneSeparatorBetweenFolderAndName) {
    EXPECT_EQ(JoinPath("/opt/orvo", "msg/"), "/opt/orvo/msg/");
    EXPECT_EQ(JoinPath("/opt/orvo/", "/x"), "/opt/orvo/x");
    EXPECT_EQ(JoinPath("/opt/orvo/", "x"), "/opt/orvo/x");
    EXPECT_EQ(JoinPath("/opt/orvo", "/x"), "/opt/orvo/x");
    EXPECT_EQ(JoinPath("/opt/orvo//", "//x"), "/opt/orvo/x");
}

TEST(JoinPath, FolderEndingInABackslashGetsNoSecondSeparator) {
    EXPECT_EQ(JoinPath("/opt/orvo\\", "x"), "/opt/orvo/x");
}

TEST(JoinPath, EmptyFolderGivesTheNameAlone) {
    EXPECT_EQ(JoinPath("", "Ks_Setup.ini"), "Ks_Setup.ini");
    EXPECT_EQ(JoinPath("/opt", ""), "/opt/");
}

TEST(NormalizeSeparators, BothSeparatorsBecomeThePlatformOne) {
    EXPECT_EQ(NormalizeSeparators("job\\a/b\\c"), "job/a/b/c");
    EXPECT_EQ(NormalizeSeparators(""), "");
}

TEST(WithTrailingSeparator, AddsOneOnlyWhenMissing) {
    EXPECT_EQ(WithTrailingSeparator("/opt/orvo"), "/opt/orvo/");
    EXPECT_EQ(WithTrailingSeparator("/opt/orvo/"), "/opt/orvo/");
    EXPECT_EQ(WithTrailingSeparator("C:\\orvo\\"), "C:\\orvo\\");
    EXPECT_EQ(WithTrailingSeparator(""), "");
}

#else

TEST(JoinPath, PutsExactlyOneBackslashBetweenFolderAndName) {
    EXPECT_EQ(JoinPath("C:\\ORVO", "msg\\"), "C:\\ORVO\\msg\\");
    EXPECT_EQ(JoinPath("C:\\ORVO\\", "\\x"), "C:\\ORVO\\x");
    EXPECT_EQ(JoinPath("C:\\ORVO", "x"), "C:\\ORVO\\x");
    EXPECT_EQ(JoinPath("C:\\ORVO\\\\", "\\\\x"), "C:\\ORVO\\x");
}

TEST(JoinPath, DriveRootAndForwardSlashesJoinWithOneBackslash) {
    EXPECT_EQ(JoinPath("D:\\", "bin\\Ks_Setup.ini"), "D:\\bin\\Ks_Setup.ini");
    EXPECT_EQ(JoinPath("D:/orvo/", "/job/a.txt"), "D:/orvo\\job/a.txt");
}

TEST(JoinPath, EmptyFolderGivesTheNameAlone) {
    EXPECT_EQ(JoinPath("", "Ks_Setup.ini"), "Ks_Setup.ini");
    EXPECT_EQ(JoinPath("C:\\ORVO", ""), "C:\\ORVO\\");
}

TEST(NormalizeSeparators, BothSeparatorsBecomeBackslashes) {
    EXPECT_EQ(NormalizeSeparators("job\\a/b\\c"), "job\\a\\b\\c");
    EXPECT_EQ(NormalizeSeparators("D:/orvo/job.txt"), "D:\\orvo\\job.txt");
    EXPECT_EQ(NormalizeSeparators(""), "");
}

TEST(WithTrailingSeparator, AddsABackslashOnlyWhenMissing) {
    EXPECT_EQ(WithTrailingSeparator("C:\\orvo"), "C:\\orvo\\");
    EXPECT_EQ(WithTrailingSeparator("C:\\orvo\\"), "C:\\orvo\\");
    EXPECT_EQ(WithTrailingSeparator("C:/orvo/"), "C:/orvo/");
    EXPECT_EQ(WithTrailingSeparator(""), "");
}

#endif

}  // namespace
}  // namespace kesto
