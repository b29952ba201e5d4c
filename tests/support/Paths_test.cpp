#include "support/Paths.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

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

}  // namespace
}  // namespace kesto
