#include "support/TextFormat.h"

#include <gtest/gtest.h>

#include <string>

namespace kesto {
namespace {

TEST(FormatText, FormatsLikePrintf) {
    EXPECT_EQ(FormatText("%s,%d,%10.4lf,%4.4d", "A", -3, 12.5, 7), "A,-3,   12.5000,0007");
}

TEST(FormatText, TextLongerThanAnyLineIsKeptWhole) {
    const std::string longText(3000, 'x');
    EXPECT_EQ(FormatText("<%s>", longText.c_str()), "<" + longText + ">");
}

TEST(FormatText, EmptyResultIsEmpty) {
    EXPECT_EQ(FormatText("%s", ""), "");
}

}  // namespace
}  // namespace kesto
