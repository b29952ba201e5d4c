#include "cli/TerminalText.h"

#include <gtest/gtest.h>

namespace kesto {
namespace {

TEST(TerminalText, AsciiAndUtf8StayAsTheyAre) {
    EXPECT_EQ(TerminalText("kesto: message 209"), "kesto: message 209");
    EXPECT_EQ(TerminalText("\xE5\x8F\x96\xE7\xBD\xAE"), "\xE5\x8F\x96\xE7\xBD\xAE");
}

TEST(TerminalText, ShiftJisIsPrintedAsUtf8) {
    // "取置へ" and "キャンセル" as the machine's tools write them.
    EXPECT_EQ(TerminalText("\x8E\xE6\x92\x75\x82\xD6"), "取置へ");
    EXPECT_EQ(TerminalText("\x83\x4C\x83\x83\x83\x93\x83\x5A\x83\x8B"), "キャンセル");
}

TEST(TerminalText, TrailByte5CIsPartOfItsCharacter) {
    EXPECT_EQ(TerminalText("\x95\x5C\x8E\xA6"), "表示");
}

TEST(TerminalText, HalfWidthKatakanaAndAsciiMix) {
    EXPECT_EQ(TerminalText("A026 \xD9\xB0\xC0\xB0"), "A026 ﾙｰﾀｰ");
}

TEST(TerminalText, LeadByteWithoutItsSecondHalfBecomesTheReplacementCharacter) {
    EXPECT_EQ(TerminalText("\x83\x65\x83"), "テ\xEF\xBF\xBD");
}

}  // namespace
}  // namespace kesto
