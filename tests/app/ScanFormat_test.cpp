#include "app/ScanFormat.h"

#include <gtest/gtest.h>

#include <limits>

namespace kesto {
namespace {

TEST(ScanInt, ReadsTheLeadingInteger) {
    int32_t value = 5;
    EXPECT_TRUE(ScanInt("12abc", value));
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(ScanInt("  -7", value));
    EXPECT_EQ(value, -7);
}

TEST(ScanInt, TextWithoutNumberLeavesTheValue) {
    int32_t value = 5;
    EXPECT_FALSE(ScanInt("x1", value));
    EXPECT_FALSE(ScanInt("", value));
    EXPECT_EQ(value, 5);
}

TEST(ScanInt, SaturatesBeyondInt32) {
    int32_t value = 0;
    EXPECT_TRUE(ScanInt("99999999999", value));
    EXPECT_EQ(value, std::numeric_limits<int32_t>::max());
    EXPECT_TRUE(ScanInt("-99999999999", value));
    EXPECT_EQ(value, std::numeric_limits<int32_t>::min());
}

TEST(ScanDouble, ReadsTheLeadingNumber) {
    double value = 1;
    EXPECT_TRUE(ScanDouble("-2.5e1mm", value));
    EXPECT_DOUBLE_EQ(value, -25.0);
}

TEST(ScanDouble, TextWithoutNumberLeavesTheValue) {
    double value = 1.5;
    EXPECT_FALSE(ScanDouble("abc", value));
    EXPECT_FALSE(ScanDouble("", value));
    EXPECT_DOUBLE_EQ(value, 1.5);
}

TEST(AtoLFromSecond, SkipsTheFirstCharacter) {
    EXPECT_EQ(AtoLFromSecond("P12"), 12);
    EXPECT_EQ(AtoLFromSecond("R3XY"), 3);
    EXPECT_EQ(AtoLFromSecond("A-5"), -5);
}

TEST(AtoLFromSecond, ShortTextGivesZero) {
    EXPECT_EQ(AtoLFromSecond("P"), 0);
    EXPECT_EQ(AtoLFromSecond(""), 0);
}

}  // namespace
}  // namespace kesto
